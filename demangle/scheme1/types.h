// Scheme 1's types. A type is printed in two parts around where a declarator would stand:
// the prefix routine reads it and prints up to its pointer marks; the suffix routine, run on
// the same position where the prefix says that there is something left, prints parameter
// lists and array bounds.
#pragma once

#include "demangle/scheme1/substitutions.h"

// The prefix part of a type; sets state->shape. `allow_template_args` lets a
// template argument list follow a template parameter.
const char* eabi_type(const char* at, unsigned cv_qualifiers, bool allow_template_args,
                      eabi_decode_state* state);

// The suffix part of the type at `at`. `marked` says that a mark stands in front of it.
void eabi_type_suffix(const char* at, unsigned cv_qualifiers, bool marked,
                      eabi_decode_state* state);

namespace scheme1 {

// Prints the words of a set of qualifiers that is not empty.
void emit_qualifiers(unsigned qualifiers, bool trailing_blank, eabi_decode_state* state);

}  // namespace scheme1

// Prints the words of a set of qualifiers, and a blank behind them if asked for.
inline void eabi_cv_qualifiers(unsigned qualifiers, bool trailing_blank, eabi_decode_state* state) {
    if (qualifiers != 0) {
        scheme1::emit_qualifiers(qualifiers, trailing_blank, state);
    }
}

namespace scheme1 {

// Prints the suffix that the prefix part left in state->shape.
void finish_type(const char* at, unsigned cv_qualifiers, eabi_decode_state* state);

// Both parts in turn.
inline const char* whole_type(const char* at, eabi_decode_state* state,
                              bool allow_template_args = true) {
    const char* const end = eabi_type(at, 0, allow_template_args, state);
    if ((state->shape & shape_suffix) != 0) {
        finish_type(at, 0, state);
    }
    return end;
}

// The shape of a type that reads as a name, with its qualifiers in front.
inline unsigned named_shape(unsigned cv_qualifiers) {
    return cv_qualifiers != 0 ? static_cast<unsigned>(shape_qualified) : 0U;
}

// What a mark leaves of the shape of the type in front of it.
inline constexpr unsigned shape_behind_mark = shape_suffix | shape_greater;

// Enters the type at `start`, which was decoded with that permission and has the shape that
// state->shape gives. A text that a suffix will still be added to, or that carries qualifiers
// from outside, is not its own.
inline void enter_type(const char* start, std::uint64_t text_at, bool own_text,
                       bool allow_template_args, eabi_decode_state* state) {
    if (may_enter(state)) {
        const bool whole = own_text && (state->shape & shape_suffix) == 0;
        const unsigned flags = state->lambda_flag | static_cast<unsigned>(is_complete) |
                               (allow_template_args ? 0U : static_cast<unsigned>(without_args));
        state->subst_table[state->subst_count++] = {
            start,
            subst_type,
            static_cast<std::uint32_t>(text_at),
            whole ? length_since(text_at, state) : no_text,
            0,
            {.flags = static_cast<unsigned char>(flags),
             .shape = static_cast<unsigned char>(state->shape)}};
    }
}

}  // namespace scheme1
