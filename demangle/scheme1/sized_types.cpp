// Arrays, vectors and the numeric types whose names carry a size.
#include "demangle/scheme1/sized_types.h"

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

// digits "_" | expression "_" | "_", the bound of an array or the size of a vector.
static const char* put_bound(const char* at, eabi_decode_state* state) {
    if (const char* const digits_end = bound_digits_end(at)) {
        emit_text({at, static_cast<std::size_t>(digits_end - at)}, state);
        return digits_end + 1;
    }
    return expect(expression(at, state), '_', state);
}

static const char* skip_bound(const char* at, bool* shows_greater, eabi_decode_state* state) {
    if (const char* const digits_end = bound_digits_end(at)) {
        return digits_end + 1;
    }
    return expect(skip_expression(at, shows_greater, state), '_', state);
}

// The bound between parentheses.
static const char* put_enclosed_bound(const char* at, eabi_decode_state* state) {
    ++state->parentheses;
    emit_char('(', state);
    at = put_bound(at, state);
    emit_char(')', state);
    --state->parentheses;
    return at;
}

// array-type ::= "A" bound type
const char* array_prefix(const char* at, unsigned cv, bool allow_template_args,
                         eabi_decode_state* state) {
    bool shows_greater = false;
    at = skip_bound(at + 1, &shows_greater, state);
    at = eabi_type(at, cv, allow_template_args, state);
    state->shape = (state->shape & (shape_mark | shape_greater)) | shape_suffix | shape_direct;
    if (shows_greater) {
        show_greater(state);
        state->shape |= shape_greater;
    }
    return at;
}

const char* array_suffix(const char* at, bool marked, eabi_decode_state* state) {
    emit_text(marked ? ")[" : "[", state);
    // The bound's "_" is read; the bracket still belongs to it.
    at = put_bound(at + 1, state);
    emit_char(']', state);
    return at;
}

// "Dv" size type, "DB" and "DU" size "_", "DF" width ( "_" | "x" | "b" ).
const char* sized_type(const char* at, unsigned cv, bool allow_template_args,
                       eabi_decode_state* state) {
    const char* const start = at;
    const char kind = at[1];
    eabi_cv_qualifiers(cv, true, state);
    if (kind == 'v') {
        const std::uint64_t text_at = state->out_len;
        const char* const bound = at[2] == '_' ? at + 3 : at + 2;
        bool ignored = false;
        at = whole_type(skip_bound(bound, &ignored, state), state, allow_template_args);
        emit_text(" __vector", state);
        if (state->suppress_depth == 0) {
            const no_record unrecorded(state);
            put_enclosed_bound(bound, state);
        }
        state->shape = 0;
        enter_type(start, text_at, true, allow_template_args, state);
        return at;
    }
    if (kind != 'F') {
        if (at[2] == '_') {
            report_bad_name(state);
            return at;
        }
        emit_text(kind == 'B' ? "_BitInt" : "unsigned _BitInt", state);
        return put_enclosed_bound(at + 2, state);
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
