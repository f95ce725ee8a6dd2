// Scheme 1's module names: what a name is attached to. For extended names only.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// The end of the name of a module, which begins with "W" or a reference to a module.
const char* module_end(const char* at, eabi_decode_state* state);

// Prints the name of a module: "foo.bar:part".
void emit_module(const char* at, const char* end, eabi_decode_state* state);

// What "GI" stands in front of.
const char* module_initializer(const char* at, eabi_decode_state* state);

}  // namespace scheme1
