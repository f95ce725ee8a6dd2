// Scheme 1's requires-expressions.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// "rQ" ... | "rq" ...
const char* requires_expression(const char* at, eabi_decode_state* state);

}  // namespace scheme1
