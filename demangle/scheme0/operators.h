// The operator codes of scheme 0, for the names of operator functions and for
// expressions.
#pragma once

#include "demangle/scheme0/state.h"

namespace scheme0 {

// How an expression prints the operator and its operands.
enum class operator_form : unsigned char {
    infix,           // a + b
    greater,         // a > b: it would close an argument list
    comma,           // a, b
    member,          // a.b
    member_pointer,  // a.*b
    prefix,          // -a
    prefix_word,     // co_await a
    postfix,         // a++
    conditional,     // a ? b : c
    call,            // f(a, b)
    second_call,     // (f)(a, b)
    subscript,       // a[b]
    function,        // text(a, b)
    named_cast,      // text T>(a)
    cast,            // (T)a
    enclosing,       // text a) or text T)
    type_of,         // T::typeid
    creation,        // new T(a, b)
    deletion,        // delete a
    braces,          // {a, b}
    typed_braces,    // T{a, b}
    expansion,       // a...
    literal,         // a literal operator's name, not an expression
};

struct operator_code {
    const char* code;
    const char* text;
    operator_form form;
};

}  // namespace scheme0

// The operator whose code stands at the position, or null; `length` is the number of
// characters that the code takes, 2 when there is none.
const scheme0::operator_code* lookup_operator_code(const char* at, const decode_state* state,
                                                   int* length);
