// Reading the mangled name in scheme 1: the grammar reads it up to its NUL. See
// demangle/input.h for what both schemes read alike.
#pragma once

#include <array>

#include "demangle/input.h"
#include "demangle/scheme1/state.h"

inline char peek_char(const char* at, const eabi_decode_state* /*state*/) {
    return *at;
}

namespace scheme1 {

// Cv-qualifiers travel as a bit set.
enum cv_qualifier : unsigned { is_const = 1, is_volatile = 2, is_restrict = 4 };

inline constexpr std::array<unsigned char, 256> qualifier_bits = [] {
    std::array<unsigned char, 256> bits{};
    bits['K'] = is_const;
    bits['V'] = is_volatile;
    bits['r'] = is_restrict;
    return bits;
}();

// The bit of "K", "V" or "r", else 0.
inline unsigned qualifier_bit(char letter) {
    return qualifier_bits[static_cast<unsigned char>(letter)];
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

// The values of 0 to 9 and A to Z plus 1, and 0 for anything else.
inline constexpr std::array<unsigned char, 256> base36_ordinals = [] {
    std::array<unsigned char, 256> ordinals{};
    for (unsigned value = 0; value < 36; ++value) {
        ordinals[value < 10 ? '0' + value : 'A' + value - 10] =
            static_cast<unsigned char>(value + 1);
    }
    return ordinals;
}();

// Reads "_", or base-36 digits and "_": 0, or the number that they make plus 1. Gives the
// position of the "_"; null where something else stands in front of it, and for a number
// that is past any table.
inline const char* read_sequence_number(const char* at, std::uint64_t* number) {
    constexpr std::uint64_t limit = std::uint64_t{1} << 40;
    // Most have one digit or none, and no branch tells the two apart: (ordinal + 63) / 64 is 1
    // for a digit and not a condition, which compilers make a branch of.
    *number = base36_ordinals[static_cast<unsigned char>(*at)];
    at += (*number + 63) / 64;
    if (*at == '_') {
        return at;
    }
    if (*number == 0) {
        return nullptr;
    }
    for (--*number; *at != '_'; ++at) {
        const unsigned ordinal = base36_ordinals[static_cast<unsigned char>(*at)];
        if (ordinal == 0 || *number > limit) {
            return nullptr;
        }
        *number = *number * 36 + ordinal - 1;
    }
    ++*number;
    return at;
}

}  // namespace scheme1
