// Scheme 1's arrays, vectors and the numeric types whose names carry a size.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// The prefix part of the element; gives the end of the whole type.
const char* array_prefix(const char* at, unsigned cv, bool allow_template_args,
                         eabi_decode_state* state);

// Where the element of the array at `at` stands.
const char* array_element(const char* at, eabi_decode_state* state);

// The bounds in brackets; gives the position of the element.
const char* array_suffix(const char* at, bool marked, eabi_decode_state* state);

// "Dv", "DB", "DU", "DF", and the fixed-point types "DA", "DR" and "DS".
const char* sized_type(const char* at, unsigned cv, bool allow_template_args,
                       eabi_decode_state* state);

}  // namespace scheme1
