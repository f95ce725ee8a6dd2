// The rows of a unit: the lines of its functions that a page shows, where each stands in the
// assembly and where it came from; and the lines that they leave out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clist/forms/forms.h"
#include "clist/forms/page/frames.h"

namespace clist::page {

struct row {
    std::uint32_t at;  // where its line begins in the assembly; none for a blank one
    char kind;         // as the data have it: f, l, i, d, c or b
    std::uint32_t frame = none;
    std::uint32_t line = 0;  // of the assembly, counted from 1; 0 where it is on none
};

struct function_row {
    std::uint32_t function;  // index in the model's assembly
    std::uint32_t row;       // its first
    std::uint32_t rows = 0;
    std::uint32_t instructions = 0;
    std::uint32_t inlined = 0;   // of these
    std::uint32_t frame = none;  // where its own code begins
};

// What stands behind a label on its line, and is not part of its row.
struct label_tail {
    std::uint32_t row;
    std::string_view text;
};

struct unit_rows {
    std::vector<row> rows;
    std::vector<function_row> functions;
    std::vector<label_tail> tails;
    frame_table frames;
    std::string code;    // a line for each row
    std::string hidden;  // the other lines
};

// Of what is shown of the model with this index.
unit_rows make_rows(const form_input& from, std::size_t model);

}  // namespace clist::page
