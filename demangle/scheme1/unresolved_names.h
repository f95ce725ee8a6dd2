// Names in scheme 1's expressions that depend on template parameters and so stand as they
// were written: "T1::x", "f<T1>".
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// source-name { ABI tag } [ template-args ]
const char* simple_id(const char* at, eabi_decode_state* state);

// simple-id | [ "on" ] operator-name [ args ] | "dn" destructor-name
const char* base_unresolved_name(const char* at, eabi_decode_state* state);

// "sr" ...: the same behind a class or namespace.
const char* scoped_name(const char* at, eabi_decode_state* state);

}  // namespace scheme1
