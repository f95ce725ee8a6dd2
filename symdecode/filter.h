// symdecode's passes over text: replace every mangled name in place, decode one symbol
// a line, or report what was found as JSON. They work on memory; main reads and writes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "symdecode/names.h"

// What is known between two pieces of a text. Memory does not grow with the text.
struct text_filter {
    name_decoder decoder;
    bool json = false;      // objects in place of the text
    bool skipping = false;  // inside a run or line that is too long to hold a name
    std::size_t line = 1;   // where the next byte stands, for JSON
    std::size_t column = 1;
};

// Each pass takes the next piece of the text, appends what it gives to `out`, and
// returns how many bytes of the piece are done with. The others are to come again, in
// front of what follows; they are fewer than longest_name and none when `last` says
// that nothing follows. A pass may stop early, with more than output_step bytes in
// `out`: it is then called again with the rest at once, `out` having been emptied.
constexpr std::size_t output_step = 65536;

// The text with every mangled name replaced, or under `json` one object for each.
std::size_t filter_text(text_filter& filter, std::string_view text, bool last, std::string& out);

// One symbol a line: what it reads as, or itself; under `json` an object for each.
std::size_t filter_lines(text_filter& filter, std::string_view text, bool last, std::string& out);

// One symbol and a newline, in the same forms.
void filter_symbol(text_filter& filter, std::string_view symbol, std::string& out);
