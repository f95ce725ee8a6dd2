// What the files of scheme 1's expressions share beside the expressions themselves.
#pragma once

#include <string_view>

#include "demangle/scheme1/input.h"
#include "demangle/scheme1/operators.h"

namespace scheme1 {

inline bool code_is(const char* at, const char (&code)[3]) {
    return at[0] == code[0] && at[1] == code[1];
}

inline bool at_new_or_delete(const char* at) {
    return code_is(at, "nw") || code_is(at, "na") || code_is(at, "dl") || code_is(at, "da");
}

inline void open_parenthesis(eabi_decode_state* state) {
    ++state->parentheses;
    emit_char('(', state);
}

inline void close_parenthesis(eabi_decode_state* state) {
    --state->parentheses;
    emit_char(')', state);
}

// { expression } up to and with `end`, in parentheses, or in braces with "E" as the end.
const char* enclosed_list(const char* at, char end, eabi_decode_state* state);
const char* braced_list(const char* at, eabi_decode_state* state);

// An operator between its operands, with the blanks around it.
void emit_infix(const found_operator& op, eabi_decode_state* state);

// callee { argument } "E", the callee in parentheses if asked for.
const char* call(const char* at, bool in_parentheses, eabi_decode_state* state);

// object member, with `text` between them.
const char* member_access(const char* at, std::string_view text, eabi_decode_state* state);

}  // namespace scheme1
