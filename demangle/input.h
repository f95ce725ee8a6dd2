// Reading the mangled name, for both schemes. What stands at a position is peek_char's to
// say, which each scheme has for its own state, as it has report_bad_name.
#pragma once

#include <cstdint>

inline bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

// Reads a decimal number into `value` and returns the position after it. Without a digit: a
// bad name, value 0, the position unchanged. Wraps past 64 bits.
template <typename State>
const char* read_number(const char* at, std::uint64_t* value, State* state) {
    *value = 0;
    if (!is_digit(peek_char(at, state))) {
        report_bad_name(state);
        return at;
    }
    do {
        *value = *value * 10 + static_cast<std::uint64_t>(*at - '0');
        ++at;
    } while (is_digit(peek_char(at, state)));
    return at;
}

// Consumes `expected`; anything else is a bad name and stays.
template <typename State>
inline const char* expect(const char* at, char expected, State* state) {
    if (peek_char(at, state) == expected) {
        return at + 1;
    }
    report_bad_name(state);
    return at;
}
