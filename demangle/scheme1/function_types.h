// Scheme 1's function types, and the parameter lists that functions and lambdas share with
// them.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// Whether a function type starts here, its exception specification in front.
inline bool at_function(const char* at) {
    return *at == 'F' ||
           (*at == 'D' && (at[1] == 'o' || at[1] == 'O' || at[1] == 'w' || at[1] == 'x'));
}

// Its return type's prefix part; gives the end of the whole type.
const char* function_prefix(const char* at, eabi_decode_state* state);

// Its parameters and qualifiers; gives the position of its return type.
const char* function_suffix(const char* at, unsigned cv, bool marked, eabi_decode_state* state);

// The parameter types up to their end, without parentheses.
const char* parameters(const char* at, eabi_decode_state* state);

}  // namespace scheme1
