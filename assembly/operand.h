// The words, numbers, strings and symbols that an assembly line is made of. Each
// function takes what it reads off the front of `rest`.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
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

namespace detail {
inline constexpr auto symbol_characters = [] {
    std::array<bool, 256> is_part{};
    for (unsigned c = 0; c < is_part.size(); ++c) {
        is_part[c] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                     c == '_' || c == '.' || c == '$' || c == '@' || c == '?' || c >= 0x80;
    }
    return is_part;
}();
}  // namespace detail

inline bool is_symbol_character(char c) {
    return detail::symbol_characters[static_cast<unsigned char>(c)];
}

// Where the line ends that `at` lies in: at its newline, or at the text's end.
inline std::size_t end_of_line(std::string_view text, std::size_t at) {
    const void* const end = std::memchr(text.data() + at, '\n', text.size() - at);
    return end == nullptr ? text.size()
                          : static_cast<std::size_t>(static_cast<const char*>(end) - text.data());
}

// Has the processor fetch what will be read soon by a reader who has come to `at`: large texts
// lie far from it, and its own foresight ends with each page.
inline void prefetch(std::string_view text, std::size_t at) {
    constexpr std::size_t ahead = 2048;
    __builtin_prefetch(text.data() + at + ahead);
}

inline void skip_blanks(std::string_view& rest) {
    while (!rest.empty() && is_blank(rest.front())) {
        rest.remove_prefix(1);
    }
}

// A decimal number without a sign. Nothing when there is none or it does not fit.
inline std::optional<std::uint32_t> take_number(std::string_view& rest) {
    constexpr std::size_t most_digits = 10;
    skip_blanks(rest);
    std::uint64_t value = 0;
    std::size_t size = 0;
    for (; size < rest.size() && is_digit(rest[size]); ++size) {
        if (size == most_digits) {
            return std::nullopt;
        }
        value = value * 10 + static_cast<unsigned>(rest[size] - '0');
    }
    if (size == 0 || value > std::numeric_limits<std::uint32_t>::max() ||
        (size != rest.size() && is_symbol_character(rest[size]))) {
        return std::nullopt;
    }
    rest.remove_prefix(size);
    return static_cast<std::uint32_t>(value);
}

// A number as the assembler reads it: decimal, octal, hexadecimal or binary, perhaps with
// a sign, cut to 64 bits. Nothing when there is none.
std::optional<std::uint64_t> take_value(std::string_view& rest);

// A string in double quotes, its escapes resolved. Nothing when `rest` does not begin
// with one or it has no end.
std::optional<std::string> take_string(std::string_view& rest);

// The same, at the end of `into`. False when there is none.
bool append_string(std::string_view& rest, std::string& into);

// A symbol, in quotes or bare. A view into the text; empty when there is none.
std::string_view take_symbol(std::string_view& rest);

}  // namespace assembly
