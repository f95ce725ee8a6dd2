// What code refers to: which labels are jumped to or used, and the data (strings, tables)
// that are shown behind a function.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembly/label_index.h"
#include "assembly/reader.h"

namespace clist {

// What a line that may belong to data has.
struct data_line {
    bool has_label = false;
    bool is_anchor = false;  // a label that was set
    bool has_data = false;
    bool is_foreign = false;  // anything that data do not go past
};
data_line read_data_line(std::string_view line);

class references {
  public:
    // Both must outlive it.
    references(const assembly::assembly_file& code, const assembly::label_index& labels);

    bool is_used(std::uint32_t label) const { return is_used_[label]; }

    // The labels of the data that a function of the model refers to, by itself or through
    // other data, in the order of the text: those that no call has given before.
    std::vector<std::uint32_t> take_data_of(std::uint32_t function);

    // The lines of the data at a label that code leads to: from the start of its own line to
    // behind its last.
    assembly::text_range extent_of(std::uint32_t label) const {
        return stretches_.at(label).extent;
    }

  private:
    // The data at a label.
    struct stretch {
        assembly::text_range extent;
        std::vector<std::uint32_t> data;  // other ones that they refer to
    };

    // Call `use` with the index of each label that is named.
    void visit(std::string_view text, const auto& use) const;
    void visit_data(const assembly::text_range& range, const auto& use) const;
    void visit_function(const assembly::function_code& function, const auto& use) const;

    bool is_data(std::uint32_t label) const;
    assembly::text_range find_extent(std::uint32_t label) const;

    const assembly::assembly_file& code_;
    const assembly::label_index& labels_;
    std::vector<bool> is_used_;                             // by index of a label
    std::vector<bool> is_taken_;                            // the same, of data
    std::unordered_map<std::uint32_t, stretch> stretches_;  // by label: data that code leads to
    std::vector<std::uint32_t> data_;        // that functions refer to, one after another
    std::vector<std::uint32_t> data_begin_;  // by function: where its own begin
};

}  // namespace clist
