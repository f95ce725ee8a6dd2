// Where the tokens and comments of C and C++ end. `at` is the offset that the token
// begins at; every function gives the offset behind it, at most the text's size.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <string_view>

namespace assembly {

inline constexpr bool is_word_start(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' ||
           static_cast<unsigned char>(c) >= 0x80;
}

inline constexpr auto word_parts = [] {
    std::array<bool, 256> is_part{};
    for (std::size_t c = 0; c < is_part.size(); ++c) {
        is_part[c] = is_word_start(static_cast<char>(c)) || (c >= '0' && c <= '9');
    }
    return is_part;
}();

inline bool is_word_part(char c) {
    return word_parts[static_cast<unsigned char>(c)];
}

// Whether a backslash splices the newline at `at` to the next line.
bool is_spliced(std::string_view text, std::size_t at);

inline std::size_t end_of_word(std::string_view text, std::size_t at) {
    // Several characters at once: the processor cannot foresee where a word ends.
    constexpr unsigned step = 8;
    for (; at + step <= text.size(); at += step) {
        unsigned parts = 0;
        for (unsigned i = 0; i < step; ++i) {
            parts |= unsigned{is_word_part(text[at + i])} << i;
        }
        if (const int count = std::countr_one(parts); count != step) {
            return at + static_cast<unsigned>(count);
        }
    }
    while (at < text.size() && is_word_part(text[at])) {
        ++at;
    }
    return at;
}

std::size_t end_of_block_comment(std::string_view text, std::size_t at);

// The newline that ends the logical line.
std::size_t end_of_logical_line(std::string_view text, std::size_t at);

// A string or character literal. One without an end is taken to end with its line.
std::size_t end_of_literal(std::string_view text, std::size_t at);

// raw-string ::= R " delimiter ( anything ) delimiter "
// `at` is the offset of the first quote.
std::size_t end_of_raw_string(std::string_view text, std::size_t at);

// number ::= digit (digit | letter | "." | "'" part | exponent-sign)*
std::size_t end_of_number(std::string_view text, std::size_t at);

}  // namespace assembly
