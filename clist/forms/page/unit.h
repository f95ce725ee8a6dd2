// The data of one compile for a page: its rows of code, what each is and where it came
// from, as texts in the form that page/README.md tells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clist/forms/forms.h"

namespace clist::page {

// The sources of a page that were found, each by the chunk that has its text.
class source_texts {
  public:
    explicit source_texts(source_list& sources) : sources_(sources), known_(sources.size()) {}

    struct entry {
        std::string chunk;        // its name; empty where there is no text
        std::uint32_t lines = 0;  // how many the text has
    };
    // Of the source with this index.
    const entry& of(std::uint32_t source);

    // What the chunks hold, each once.
    struct named_text {
        std::string_view chunk;
        std::string_view text;
    };
    const std::vector<named_text>& all() const { return all_; }

  private:
    source_list& sources_;
    std::vector<std::optional<entry>> known_;
    std::vector<named_text> all_;
};

struct unit {
    std::string head;    // JSON
    std::string rows;    // JSON
    std::string code;    // a row a line
    std::string hidden;  // the lines of the assembly that the rows leave out
};

// Of the model with this index. `made` is when, as ISO 8601 tells it.
unit make_unit(const form_input& from, std::size_t model, source_texts& texts,
               std::string_view made);

}  // namespace clist::page
