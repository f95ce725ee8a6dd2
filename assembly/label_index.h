// Finds labels by their names, and what expressions of them stand for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembly/reader.h"

namespace assembly {

// An expression as far as it is understood: one label, or the difference of two, with a
// number added. Labels are null where there are none.
struct label_value {
    const label* plus = nullptr;
    const label* minus = nullptr;
    std::uint64_t number = 0;  // a negative one as its two's complement
    bool is_known = true;      // false when it has anything else in it
};

// The assembly must outlive the index and stay as it is.
class label_index {
  public:
    explicit label_index(const assembly_file& assembly);

    // The first label of that name, under another name of it too; null when there is none.
    const label* find(std::string_view name) const;

    // The expression that begins at this offset of the text.
    label_value value_at(std::uint32_t text_at) const;

  private:
    // Labels that a compiler counts up, ".LVL7": by their number. They are most of all, and
    // come in their order, so that this is much faster than a table of any names.
    struct family {
        std::uint64_t prefix;  // its letters, the last one lowest
        std::vector<std::uint32_t> index_of;
    };
    const std::uint32_t* find_numbered(std::string_view name) const;
    std::uint32_t* place_numbered(std::string_view name);

    struct entry {
        std::uint32_t tag = 0;  // of the name's hash
        std::uint32_t index = none;
    };
    std::size_t place_of(std::string_view name, std::uint64_t hash) const;
    const label* find_label(std::string_view name) const;
    void add_expression(std::string_view& rest, bool is_negative, unsigned depth,
                        label_value& value) const;
    void add_symbol(std::string_view name, bool is_negative, unsigned depth,
                    label_value& value) const;

    const assembly_file& assembly_;
    std::vector<family> families_;
    std::uint32_t greatest_number_ = 0;  // that a family has room for
    std::vector<entry> table_;           // of others: at the place that the name tells, or the next
    std::unordered_map<std::string_view, std::string_view> aliases_;
};

}  // namespace assembly
