// Scheme 1's expressions: what stands in template arguments, in decltype, in array bounds
// and in exception specifications.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

const char* expression(const char* at, eabi_decode_state* state);

// An expression as one of a list, where a comma expression goes into parentheses.
bool is_comma_at(const char* at, eabi_decode_state* state);
const char* list_item(const char* at, eabi_decode_state* state);

// An expression in the place of an operand: an operator expression in parentheses.
const char* operand(const char* at, eabi_decode_state* state);

// An expression in parentheses.
const char* enclosed_expression(const char* at, eabi_decode_state* state);

// ( "Dt" | "DT" ) expression "E", without entering it.
const char* decltype_of(const char* at, eabi_decode_state* state);

// A ">" shows: it counts for the argument list around where no parenthesis is between.
inline void show_greater(eabi_decode_state* state) {
    if (state->parentheses == 0) {
        state->greater_seen = true;
    }
}

}  // namespace scheme1
