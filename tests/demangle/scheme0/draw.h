// Scheme-0 declarations drawn at random: the same seed gives the same declaration
// everywhere. Used by the encoder, mutation, thread and hostile-name tests.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/demangle/scheme0/parts.h"

namespace scheme0 {

// A declaration with its name and what it must read as.
struct Declaration {
    std::string name;
    std::string decorated;
    std::string undecorated;
    bool plain_name = true;  // `undecorated` is known
};

// A class or a namespace, as a scope and as a type.
struct Scope {
    std::string code;
    std::string text;
    std::string repeated;  // what a constructor calls itself; empty: there is none
    unsigned nesting = 0;  // of the operand names around it, which its text depends on
};

// The state of one drawing.
struct Drawing {
    std::mt19937_64 engine;
    std::vector<Scope> classes;  // drawn so far, to be met again
    unsigned nesting = 0;        // how many operand names surround what is drawn
    bool clash = false;          // neighbours would be misread: this drawing is not used
};

// A function or variable, alone and without scope and signature.
struct Entity {
    std::string code;
    std::string text;
    std::string name_text;
};

// A number below `limit`; true in `percent` of a hundred cases; one of a row.
unsigned draw(Drawing& drawing, unsigned limit);
bool chance(Drawing& drawing, unsigned percent);
template <class Row, std::size_t count>
const Row& draw_row(Drawing& drawing, const Row (&rows)[count]) {
    return rows[draw(drawing, static_cast<unsigned>(count))];
}

// Settles letters that a length bounds.
std::string bounded(Drawing& drawing, std::string letters);

std::string draw_identifier(Drawing& drawing);  // without "__", no underscore at its end
Arguments draw_arguments(Drawing& drawing, int depth);
// The letters and text of a function named by an operator. "ct" and "dt" name none: they
// are constructor and destructor there.
bool names_function(const Coded& row);
std::string operator_name_code(Drawing& drawing, const Coded& row, std::string& text);
std::string draw_template_param(Drawing& drawing, std::string_view letters, std::string& text);

Type draw_type(Drawing& drawing, int depth);    // any type but plain void
Type draw_object(Drawing& drawing, int depth);  // no reference, function, array or void
Scope draw_scope(Drawing& drawing, int depth);
Parameters draw_parameters(Drawing& drawing, int depth);
FunctionQualifiers draw_function_qualifiers(Drawing& drawing, bool of_signature);
Expression draw_expression(Drawing& drawing, int depth);
Expression draw_operand(Drawing& drawing, int depth);
Entity draw_entity(Drawing& drawing, int depth);

// A whole symbol; the same for the same seed.
Declaration draw_declaration(std::uint64_t seed);

}  // namespace scheme0
