// Getting past what scheme 1 does not print where it stands. Such a part is read once; where
// it ends is kept for the passes that meet it again, so that nested parts are not read once
// for each part around them.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// Pass over the type or the expression at `at`, entering what can be substituted.
const char* skip_type(const char* at, eabi_decode_state* state);
const char* skip_expression(const char* at, bool* shows_greater, eabi_decode_state* state);

// What is known of the type or expression at `at`; null before it was skipped. Known
// or not, it must be read once more while substitutions are entered.
const skip_record* find_skipped(const char* at, const eabi_decode_state* state);

// The same whether or not substitutions are entered.
const skip_record* recall_skipped(const char* at, const eabi_decode_state* state);

void remember_skipped(const char* at, const char* end, bool flag, eabi_decode_state* state);

}  // namespace scheme1
