// Pieces of JSON, put together by hand: a listing has one object for each line of code.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace clist {

// Adds a string in quotes. Bytes that are no UTF-8 become U+FFFD.
void append_json(std::string& text, std::string_view value);

inline void append_json(std::string& text, std::uint64_t value) {
    char digits[20];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

}  // namespace clist
