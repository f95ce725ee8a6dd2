// The lines of a function that are left when what is not code is taken away: the model's
// view that listings without noise are made of.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "clist/annotate.h"
#include "clist/references.h"
#include "clist/selection.h"

namespace clist {

enum class line_kind : std::uint8_t {
    label,  // that something refers to, or that others can see
    code,
    data,    // among code, or behind the function
    inlined  // of inline assembly: anything but code
};

struct function_line {
    line_kind kind;
    std::uint32_t at;            // where the line begins in the text
    std::uint32_t index = none;  // of the label, the line of code, or the inline assembly
};

// Replaces `lines` by those of a function in the order of the text.
void read_function_lines(const annotation& model, const references& used,
                         const assembly::function_code& function,
                         std::vector<function_line>& lines);

// Leaves out the lines of code that were not chosen, and the labels that none of the others
// is behind; the function's own stays. Inline assembly stays whole, or not at all.
void keep_chosen_lines(const selection& chosen, std::size_t model, std::uint32_t own_label,
                       std::vector<function_line>& lines);

// Replaces `lines` by those of the data that the function with this index refers to, as
// far as no function before it has taken them.
void take_data_lines(const annotation& model, references& used, std::uint32_t function,
                     std::vector<function_line>& lines);

// How a line reads: its label's name and a colon, or its text, symbols demangled.
void append_line(const annotation& model, const function_line& line, std::string& text);

}  // namespace clist
