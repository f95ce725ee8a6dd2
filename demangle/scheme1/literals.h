// Scheme 1's literals, as template arguments and in expressions.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// "L" ... "E"
const char* literal(const char* at, eabi_decode_state* state);

}  // namespace scheme1
