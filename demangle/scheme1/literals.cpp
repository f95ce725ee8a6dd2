// Literals: integers, words, floating values from their images, casts of all else.
#include "demangle/scheme1/literals.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "demangle/scheme1/encoding.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

namespace {

// How the literals of the integer types read.
struct integer_suffix {
    char code;
    std::string_view suffix;
};

}  // namespace

static constexpr integer_suffix integer_suffixes[] = {
    {'i', ""}, {'j', "U"}, {'l', "L"}, {'m', "UL"}, {'x', "LL"}, {'y', "ULL"},
};

// ---- Floating values ----

// The fewest digits of "%.*g" that give the value back.
template <typename Number>
static void put_floating(Number value, eabi_decode_state* state) {
    std::array<char, 64> text{};
    std::size_t length = 0;
    for (int digits = 1; digits <= std::numeric_limits<Number>::max_digits10; ++digits) {
        const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::general, digits);
        length = static_cast<std::size_t>(end.ptr - text.data());
        Number back = 0;
        std::from_chars(text.data(), end.ptr, back);
        if (back == value || std::isnan(value)) {
            break;
        }
    }
    emit_text({text.data(), length}, state);
}

static std::uint64_t hexadecimal(std::string_view digits) {
    std::uint64_t value = 0;
    for (const char digit : digits) {
        value = value << 4U |
                static_cast<std::uint64_t>(is_digit(digit) ? digit - '0' : digit - 'a' + 10);
    }
    return value;
}

// A value with an exponent of 15 bits, its fraction given as high and low parts of
// 64 bits each below `scale` powers of two.
static long double wide_value(bool negative, std::uint64_t exponent, long double fraction,
                              bool fraction_is_zero) {
    constexpr std::uint64_t special = 0x7FFF;
    long double value = 0;
    if (exponent == special) {
        value = fraction_is_zero ? std::numeric_limits<long double>::infinity()
                                 : std::numeric_limits<long double>::quiet_NaN();
    } else {
        value = std::ldexp(fraction, static_cast<int>(exponent == 0 ? 1 : exponent) - 16383);
    }
    return negative ? -value : value;
}

// The image of a long double: 20 digits, or these at the end of 24 or 32, for the
// extended format; 32 for the quadruple one; 16 where it is a double.
static void put_long_double(std::string_view image, eabi_decode_state* state) {
    if (image.size() == 16) {
        put_floating(std::bit_cast<double>(hexadecimal(image)), state);
        return;
    }
    const std::size_t padding = image.size() - 20;
    const bool padded = image.substr(0, padding).find_first_not_of('0') == std::string_view::npos;
    if (image.size() != 32 || padded) {
        const std::string_view digits = image.substr(padding);
        const std::uint64_t head = hexadecimal(digits.substr(0, 4));
        const std::uint64_t significand = hexadecimal(digits.substr(4));
        const long double fraction = std::ldexp(static_cast<long double>(significand), -63);
        put_floating(
            wide_value((head & 0x8000U) != 0, head & 0x7FFFU, fraction, (significand << 1U) == 0),
            state);
        return;
    }
    const std::uint64_t high = hexadecimal(image.substr(0, 16));
    const std::uint64_t low = hexadecimal(image.substr(16));
    const std::uint64_t exponent = high >> 48U & 0x7FFFU;
    const std::uint64_t top = high & 0xFFFFFFFFFFFFU;
    const long double fraction = std::ldexp(static_cast<long double>(top), -48) +
                                 std::ldexp(static_cast<long double>(low), -112) +
                                 (exponent != 0 ? 1.0L : 0.0L);
    put_floating(wide_value((high >> 63U) != 0, exponent, fraction, top == 0 && low == 0), state);
}

static bool is_floating(char code) {
    return code == 'f' || code == 'd' || code == 'e';
}

static bool valid_image_length(char code, std::size_t length) {
    switch (code) {
        case 'f':
            return length == 8;
        case 'd':
            return length == 16;
        default:
            return length == 16 || length == 20 || length == 24 || length == 32;
    }
}

// The image of a floating value of the type `code`, in lower-case hexadecimal.
static const char* floating_image(const char* at, char code, eabi_decode_state* state) {
    const char* const start = at;
    while (is_digit(*at) || (*at >= 'a' && *at <= 'f')) {
        ++at;
    }
    const std::string_view image(start, static_cast<std::size_t>(at - start));
    if (!valid_image_length(code, image.size())) {
        report_bad_name(state);
    } else if (state->suppress_depth == 0) {
        if (code == 'f') {
            put_floating(std::bit_cast<float>(static_cast<std::uint32_t>(hexadecimal(image))),
                         state);
        } else if (code == 'd') {
            put_floating(std::bit_cast<double>(hexadecimal(image)), state);
        } else {
            put_long_double(image, state);
        }
    }
    return at;
}

// "C" floating-type image "_" image "E", behind the type.
static const char* complex_value(const char* at, char code, eabi_decode_state* state) {
    emit_char('(', state);
    at = floating_image(at, code, state);
    at = expect(at, '_', state);
    emit_text(", ", state);
    at = floating_image(at, code, state);
    emit_char(')', state);
    return at;
}

// ---- Everything else ----

// [ "n" ] digits, as they are written.
static const char* signed_digits(const char* at, eabi_decode_state* state) {
    if (*at == 'n') {
        emit_char('-', state);
        ++at;
    }
    const char* const start = at;
    while (is_digit(*at)) {
        ++at;
    }
    if (at == start) {
        report_bad_name(state);
    }
    emit_text({start, static_cast<std::size_t>(at - start)}, state);
    return at;
}

// The value behind the type of a cast.
static const char* cast_value(const char* type, const char* at, eabi_decode_state* state) {
    if (is_floating(*type)) {
        return floating_image(at, *type, state);
    }
    if (*type == 'C' && is_floating(type[1])) {
        return complex_value(at, type[1], state);
    }
    // A string shows its type and no characters.
    const bool is_array = *type == 'A' || (*type == 'K' && type[1] == 'A');
    if (*at == 'E' && is_array) {
        emit_text("\"...\"", state);
        return at;
    }
    return signed_digits(at, state);
}

// encoding "E"
static const char* entity(const char* at, eabi_decode_state* state) {
    const unsigned char lambda_flag = state->lambda_flag;
    state->lambda_flag = 0;
    at = eabi_encoding(at, true, state);
    state->lambda_flag = lambda_flag;
    return expect(at, 'E', state);
}

// lambda "E": an argument by itself, its type without a value. Null where a value follows.
static const char* lambda_literal(const char* type, eabi_decode_state* state) {
    const std::uint64_t entries = state->subst_count;
    const char* const end = skip_type(type, state);
    if (*end != 'E') {
        state->subst_count = entries;
        return nullptr;
    }
    if (state->suppress_depth == 0) {
        const no_record unrecorded(state);
        whole_type(type, state);
    }
    return end + 1;
}

// literal ::= "L" type value "E" | "L_Z" encoding "E" | "L" lambda "E"
const char* literal(const char* at, eabi_decode_state* state) {
    ++at;
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    if (at[0] == '_' && at[1] == 'Z') {
        return entity(at + 2, state);
    }
    if (at[0] == 'Z' && state->extended && reads_otherwise(doubt_literal, state)) {
        return entity(at + 1, state);
    }
    for (const integer_suffix& row : integer_suffixes) {
        if (row.code == *at) {
            at = signed_digits(at + 1, state);
            emit_text(row.suffix, state);
            return expect(at, 'E', state);
        }
    }
    if (at[0] == 'b' && (at[1] == '0' || at[1] == '1') && at[2] == 'E') {
        emit_text(at[1] == '0' ? "false" : "true", state);
        return at + 3;
    }
    if (at[0] == 'D' && at[1] == 'n') {
        emit_text("nullptr", state);
        return expect(at[2] == '0' ? at + 3 : at + 2, 'E', state);
    }
    if (at[0] == 'U' && at[1] == 'l' && state->extended) {
        if (const char* const end = lambda_literal(at, state)) {
            return end;
        }
    }
    const char* const type = at;
    emit_char('(', state);
    at = whole_type(at, state);
    emit_char(')', state);
    at = cast_value(spelled_type(type, state), at, state);
    return expect(at, 'E', state);
}

}  // namespace scheme1
