// What the expression files of the Itanium ABI decoder share beyond the general grammar.
#pragma once

#include "demangle/scheme1/state.h"

inline bool eabi_code_is(const char* at, const char (&code)[3]) {
    return at[0] == code[0] && at[1] == code[1];
}

inline void eabi_open_parenthesis(eabi_decode_state* state) {
    ++state->parentheses;
    eabi_put('(', state);
}

inline void eabi_close_parenthesis(eabi_decode_state* state) {
    --state->parentheses;
    eabi_put(')', state);
}

// --- Unresolved names (decode_eabi_unresolved_names.cpp) ------------------------

// source-name { ABI tag } [ template-args ]
const char* eabi_simple_id(const char* at, eabi_decode_state* state);

// simple-id | [ "on" ] operator-name [ args ] | "dn" destructor-name
const char* eabi_base_unresolved_name(const char* at, eabi_decode_state* state);

// "sr" ...: the same behind a class or namespace.
const char* eabi_scoped_name(const char* at, eabi_decode_state* state);

// --- Requirements (decode_eabi_requirements.cpp) --------------------------------

// "rQ" ... | "rq" ...
const char* eabi_requires_expression(const char* at, eabi_decode_state* state);
