// Scheme 1's template argument lists, and the declarations of template parameters.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// The list at "I". A name that ends in "<" keeps a blank before it.
const char* template_args(const char* at, bool blank_before, eabi_decode_state* state);

// One argument, or a pack of them. `*first` says that no comma is due, and is kept.
const char* template_arg(const char* at, bool* first, eabi_decode_state* state);

// { template-arg } "E", in parentheses.
const char* enclosed_args(const char* at, eabi_decode_state* state);

// Template parameter declarations in front of a lambda's parameters or an argument: they
// print nothing.
const char* template_param_decl(const char* at, eabi_decode_state* state);
bool at_template_param_decl(const char* at, const eabi_decode_state* state);

}  // namespace scheme1
