// Scheme 1's operators, for the names of operator functions and for expressions.
#pragma once

#include <string_view>

#include "demangle/scheme1/state.h"

namespace scheme1 {

// How an expression prints the operator and its operands.
enum class operator_form : unsigned char {
    infix,           // a + b
    greater,         // a > b: outside parentheses it would close an argument list
    comma,           // a, b
    member_pointer,  // a.*b
    member,          // a->b
    prefix,          // -a
    prefix_word,     // co_await a
    step,            // ++a or a++
    conditional,     // a ? b : c
    word,            // throw
    subscript,       // a[b]
    call,            // f(a, b)
    operation,       // text(a, b)
    conversion,      // T(a)
    named_cast,      // static_cast<T>(a)
    enclosing,       // sizeof(a)
    enclosing_type,  // sizeof(T)
    type_of,         // T::typeid
    creation,        // new T(a, b)
    deletion,        // delete a
    literal,         // a literal operator's name, not an expression
};

// What stands at a position where an operator's code is expected.
struct found_operator {
    std::string_view text;    // empty for an unknown code
    std::string_view tail;    // the rest of a text that ends in the input's own letters
    std::string_view closer;  // printed after the operand
    operator_form form = operator_form::infix;
    unsigned arity = 2;
    std::size_t code_length = 2;
};

}  // namespace scheme1

// The operator whose code stands at `at`. A code that is cut off is a bad name; an unknown
// one is the caller's to report.
scheme1::found_operator eabi_operator_info(const char* at, eabi_decode_state* state);
