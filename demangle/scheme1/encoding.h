// The top of scheme 1's grammar: functions and data, special names, thunks.
#pragma once

#include "demangle/scheme1/names.h"

// What stands behind "_Z". `print_params` not set leaves return type and parameters out.
const char* eabi_encoding(const char* at, bool print_params, eabi_decode_state* state);

// One of the two passes over a function or variable in the order of the text: the first
// enters what can be substituted and prints the return type, the second prints all the rest.
const char* eabi_function_encoding(const char* at, bool print_params, bool first_pass,
                                   eabi_decode_state* state);

// [ return type ] parameter type+: the one printed with mode_record, the others with
// mode_print.
const char* eabi_bare_function_type(const char* at, const scheme1::name_record& record,
                                    unsigned mode, eabi_decode_state* state);

// "h" offset "_"  |  "v" offset "_" virtual-offset "_"
const char* eabi_call_offset(const char* at, eabi_decode_state* state);
