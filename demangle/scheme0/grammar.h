// The grammar routines of scheme 0, as they call each other. Each takes the input
// position and the state and returns the position after what it consumed. A routine
// that meets an error reports it and returns; nothing is printed after that.
//
// A type prints in two passes over the same input: the prefix pass what stands before
// a declarator, the suffix pass what stands behind it. While output is suppressed the
// prefix pass alone reads the whole type, and a length-prefixed name is stepped over
// unless it is asked whether this is a type at all.
#pragma once

#include "demangle/scheme0/state.h"

namespace scheme0 {

// ---- names.cpp ----

// How a class name prints: whole, or what a constructor or destructor repeats of it.
struct class_options {
    bool last_component_only = false;
    bool destructor = false;
    bool without_arguments = false;
};

const char* full_entity(const char* at, grammar_state* state);
const char* name_only(const char* at, grammar_state* state);
const char* operand_name(const char* at, grammar_state* state);
const char* scope_name(const char* at, class_options options, grammar_state* state);
const char* qualified_name(const char* at, class_options options, grammar_state* state);
const char* simple_name(const char* at, class_options options, grammar_state* state);
const char* table_classes(const char* at, grammar_state* state);

// ---- types.cpp ----

// Bits of a set of qualifiers. The last two belong to functions only.
enum qualifier : unsigned {
    is_const = 1,
    is_volatile = 2,
    is_restrict = 4,
    is_lvalue = 8,
    is_rvalue = 16,
};

// Reads a run of "C", "V", "Dr", "DL", "DR" (and "S", where `statics` says so).
const char* read_qualifiers(const char* at, bool statics, unsigned* bits,
                            const grammar_state* state);
void emit_function_qualifiers(unsigned bits, grammar_state* state);

const char* type_prefix(const char* at, unsigned qualifiers, grammar_state* state);
void type_suffix(const char* at, grammar_state* state);
const char* whole_type(const char* at, grammar_state* state);
const char* skip_type(const char* at, grammar_state* state);
const char* builtin_type(const char* at, grammar_state* state);

struct template_param {
    std::uint64_t index = 0;
    std::uint64_t level = 1;
};
const char* read_template_param(const char* at, template_param* param, grammar_state* state);
const char* type_template_param(const char* at, grammar_state* state);

// ---- parameters.cpp ----

const char* parameter_list(const char* at, grammar_state* state);
const char* skip_parameters(const char* at, grammar_state* state);

// ---- expressions.cpp ----

const char* expression(const char* at, bool as_operand, grammar_state* state);
const char* template_argument(const char* at, grammar_state* state);

}  // namespace scheme0

// Names a template parameter of a level; a kind other than 0 says that it is a value.
void emit_template_param_name(std::uint64_t level, std::uint64_t index, int kind,
                              output_state* state);

// ---- literals.cpp ----

// Reads the length in front of a literal's payload and narrows the input to its end.
const char* read_literal_length(const char* at, std::uint64_t* length, const char** saved_end,
                                decode_state* state);

// Prints the literal at `at`: as it is written, as a word, or as "nullptr".
const char* emit_literal_value(const char* at, bool boolean, bool null_pointer,
                               decode_state* state);

// An operand of an expression. With `as_operand` an operator expression goes into
// parentheses.
const char* decode_operand(const char* at, bool as_operand, scheme0::grammar_state* state);
