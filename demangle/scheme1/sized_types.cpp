// Arrays, vectors and the numeric types whose names carry a size.
#include "demangle/scheme1/sized_types.h"

#include <algorithm>
#include <iterator>

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

// The "_" behind digits at `at`, null where there is none: digits without one begin
// a name.
static const char* bound_digits_end(const char* at) {
    while (is_digit(*at)) {
        ++at;
    }
    return *at == '_' ? at : nullptr;
}

// digits "_", nothing but "_", or expression "_", as it is said.
static const char* put_bound(const char* at, bool counted, eabi_decode_state* state) {
    if (counted) {
        const char* const digits_end = bound_digits_end(at);
        emit_text({at, static_cast<std::size_t>(digits_end - at)}, state);
        return digits_end + 1;
    }
    return expect(expression(at, state), '_', state);
}

// digits "_" | expression "_" | "_", the bound of an array
static const char* put_array_bound(const char* at, eabi_decode_state* state) {
    return put_bound(at, bound_digits_end(at) != nullptr, state);
}

static const char* skip_array_bound(const char* at, bool* shows_greater, eabi_decode_state* state) {
    if (const char* const digits_end = bound_digits_end(at)) {
        return digits_end + 1;
    }
    return expect(skip_expression(at, shows_greater, state), '_', state);
}

// digits "_" where the size is counted, else expression "_"
static const char* skip_vector_bound(const char* at, bool counted, eabi_decode_state* state) {
    bool ignored = false;
    if (!counted) {
        return expect(skip_expression(at, &ignored, state), '_', state);
    }
    const char* const digits_end = bound_digits_end(at);
    if (digits_end == nullptr) {
        report_bad_name(state);
        return at;
    }
    return digits_end + 1;
}

// The bound between parentheses.
static const char* put_enclosed_bound(const char* at, bool counted, eabi_decode_state* state) {
    ++state->parentheses;
    emit_char('(', state);
    at = put_bound(at, counted, state);
    emit_char(')', state);
    --state->parentheses;
    return at;
}

// array-type ::= "A" bound type
const char* array_prefix(const char* at, unsigned cv, bool allow_template_args,
                         eabi_decode_state* state) {
    bool shows_greater = false;
    at = skip_array_bound(at + 1, &shows_greater, state);
    at = eabi_type(at, cv, allow_template_args, state);
    state->shape = (state->shape & (shape_mark | shape_mark_qualified | shape_greater)) |
                   shape_suffix | shape_direct;
    if (shows_greater) {
        show_greater(state);
        state->shape |= shape_greater;
    }
    return at;
}

const char* array_element(const char* at, eabi_decode_state* state) {
    bool ignored = false;
    return skip_array_bound(at + 1, &ignored, state);
}

const char* array_suffix(const char* at, bool marked, eabi_decode_state* state) {
    emit_text(marked ? ")[" : "[", state);
    // The bound's "_" is read; the bracket still belongs to it.
    at = put_array_bound(at + 1, state);
    emit_char(']', state);
    return at;
}

namespace {

// The size and sign of a fixed-point type.
struct fixed_point_size {
    char code;
    std::string_view text;
};

}  // namespace

static constexpr fixed_point_size fixed_point_sizes[] = {
    {'s', "short "},    {'t', "unsigned short "}, {'i', ""},
    {'j', "unsigned "}, {'l', "long "},           {'m', "unsigned long "},
};

// [ "DS" ] ( "DA" | "DR" ) size
static const char* fixed_point_type(const char* at, eabi_decode_state* state) {
    if (at[1] == 'S') {
        emit_text("_Sat ", state);
        at += 2;
    }
    const bool is_type = at[0] == 'D' && (at[1] == 'A' || at[1] == 'R');
    const auto* const size =
        std::ranges::find(fixed_point_sizes, is_type ? at[2] : '\0', &fixed_point_size::code);
    if (size == std::end(fixed_point_sizes)) {
        report_bad_name(state);
        return at;
    }
    emit_text(size->text, state);
    emit_text(at[1] == 'A' ? "_Accum" : "_Fract", state);
    return at + 3;
}

// "Dv" ( digits | [ "_" ] expression ) "_" type, "DB" and "DU" size "_",
// "DF" width ( "_" | "x" | "b" ). GCC writes a vector's expression without the "_" in front.
const char* sized_type(const char* at, unsigned cv, bool allow_template_args,
                       eabi_decode_state* state) {
    const char* const start = at;
    const char kind = at[1];
    eabi_cv_qualifiers(cv, true, state);
    if (kind == 'v') {
        const std::uint64_t text_at = state->out_len;
        const bool counted = is_digit(at[2]);
        const char* const bound = at[2] == '_' ? at + 3 : at + 2;
        at = whole_type(skip_vector_bound(bound, counted, state), state, allow_template_args);
        emit_text(" __vector", state);
        if (state->suppress_depth == 0) {
            const no_record unrecorded(state);
            put_enclosed_bound(bound, counted, state);
        }
        state->shape = 0;
        enter_type(start, text_at, true, allow_template_args, state);
        return at;
    }
    if (kind == 'A' || kind == 'R' || kind == 'S') {
        return fixed_point_type(at, state);
    }
    if (kind != 'F') {
        if (at[2] == '_') {
            report_bad_name(state);
            return at;
        }
        const std::uint64_t text_at = state->out_len;
        emit_text(kind == 'B' ? "_BitInt" : "unsigned _BitInt", state);
        at = put_enclosed_bound(at + 2, bound_digits_end(at + 2) != nullptr, state);
        // Builtin types are not entered, but Clang enters these.
        if (state->extended && reads_otherwise(doubt_bit_types, state)) {
            state->shape = 0;
            enter_type(start, text_at, true, allow_template_args, state);
        }
        return at;
    }
    std::uint64_t width = 0;
    const char* const digits = at + 2;
    at = read_number(digits, &width, state);
    const std::string_view text(digits, static_cast<std::size_t>(at - digits));
    if (*at == 'b' && text == "16") {
        emit_text("std::bfloat16_t", state);
    } else if (*at == '_' || *at == 'x') {
        emit_text("_Float", state);
        emit_text(text, state);
        if (*at == 'x') {
            emit_char('x', state);
        }
    } else {
        report_bad_name(state);
        return at;
    }
    return at + 1;
}

}  // namespace scheme1
