// Scheme 1's expressions that are no operators: each code with the routine that reads it.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

struct expression_form {
    char code[3];
    const char* (*read)(const char* at, eabi_decode_state* state);  // from the code on
    bool operation = false;  // goes into parentheses where it is an operand
    names_mode mode = always;
};

// The form whose code stands at `at`, null for none.
const expression_form* find_expression_form(const char* at, const eabi_decode_state* state);

}  // namespace scheme1
