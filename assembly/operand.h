// The words, numbers, strings and symbols that an assembly line is made of. Each
// function takes what it reads off the front of `rest`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace assembly {

inline bool is_blank(char c) {
    return c == ' ' || c == '\t';
}

inline bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

void skip_blanks(std::string_view& rest);

// The name of a directive: what stands before the next blank or separator.
std::string_view take_word(std::string_view& rest);

// A decimal number without a sign. Nothing when there is none or it does not fit.
std::optional<std::uint32_t> take_number(std::string_view& rest);

// A string in double quotes, its escapes resolved. Nothing when `rest` does not begin
// with one or it has no end.
std::optional<std::string> take_string(std::string_view& rest);

// A symbol, in quotes or bare. A view into the text; empty when there is none.
std::string_view take_symbol(std::string_view& rest);

}  // namespace assembly
