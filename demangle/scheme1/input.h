// Reading the mangled name in scheme 1: the grammar reads it up to its NUL. See
// demangle/input.h for what both schemes read alike.
#pragma once

#include "demangle/input.h"
#include "demangle/scheme1/state.h"

inline char peek_char(const char* at, const eabi_decode_state* /*state*/) {
    return *at;
}

namespace scheme1 {

// Cv-qualifiers travel as a bit set.
enum cv_qualifier : unsigned { is_const = 1, is_volatile = 2, is_restrict = 4 };

// The bit of "K", "V" or "r", else 0.
inline unsigned qualifier_bit(char letter) {
    switch (letter) {
        case 'K':
            return is_const;
        case 'V':
            return is_volatile;
        case 'r':
            return is_restrict;
        default:
            return 0;
    }
}

struct signed_number {
    bool negative = false;
    std::uint64_t size = 0;

    // Wraps at 64 bits.
    std::int64_t value() const { return static_cast<std::int64_t>(negative ? 0 - size : size); }
};

// [ "n" ] number
inline const char* read_signed_number(const char* at, signed_number* number,
                                      eabi_decode_state* state) {
    number->negative = *at == 'n';
    return read_number(at + (number->negative ? 1 : 0), &number->size, state);
}

// [ number ] "_": 1, or the number plus 2, the way unnamed types and parameters count.
inline const char* read_ordinal(const char* at, std::int64_t* number, eabi_decode_state* state) {
    *number = 1;
    if (*at != '_') {
        std::uint64_t value = 0;
        at = read_number(at, &value, state);
        *number = static_cast<std::int64_t>(value + 2);
    }
    return expect(at, '_', state);
}

// The value of one of 0 to 9 and A to Z.
inline std::uint64_t base36_digit(char digit) {
    return static_cast<std::uint64_t>(is_digit(digit) ? digit - '0' : digit - 'A' + 10);
}

// Reads "_", or base-36 digits and "_": 0, or the number that they make plus 1. Gives the
// position of the "_"; null where something else stands in front of it, and for a number
// that is past any table.
inline const char* read_sequence_number(const char* at, std::uint64_t* number) {
    constexpr std::uint64_t limit = std::uint64_t{1} << 40;
    *number = 0;
    if (*at == '_') {
        return at;
    }
    do {
        if ((!is_digit(*at) && (*at < 'A' || *at > 'Z')) || *number > limit) {
            return nullptr;
        }
        *number = *number * 36 + base36_digit(*at);
        ++at;
    } while (*at != '_');
    ++*number;
    return at;
}

}  // namespace scheme1
