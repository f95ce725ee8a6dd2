// Scheme-1 declarations drawn at random: the same seed gives the same declaration
// everywhere. Used by the encoder, mutation and hostile-name tests.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "tests/demangle/scheme1/parts.h"

namespace scheme1 {

// A declaration with its name and what it must read as.
struct Declaration {
    std::string name;
    std::string uncompressed;  // the same without substitutions
    std::string decorated;
    std::string undecorated;
    bool house_form = false;       // holds a form that other decoders do not know
    bool template_params = false;  // refers to template parameters
};

// The state of one drawing.
struct Drawing {
    std::mt19937_64 engine;
    bool extended = false;   // draw what only extended names may hold, too
    bool in_lambda = false;  // inside a lambda's parameter list
    bool retry = false;      // conversion types need the second attempt
    bool house_form = false;
    bool template_params = false;
    std::vector<Tree> objects;  // types drawn so far, to be met again
    std::vector<Name> classes;
};

// A number below `limit`; true in `percent` of a hundred cases.
unsigned draw(Drawing& drawing, unsigned limit);
bool chance(Drawing& drawing, unsigned percent);

Tree draw_parameter_type(Drawing& drawing);     // a template parameter
Tree draw_type(Drawing& drawing, int depth);    // any type
Tree draw_object(Drawing& drawing, int depth);  // no reference, function, array or void
Tree draw_literal(Drawing& drawing, int depth);
Tree draw_expression(Drawing& drawing, int depth);
std::vector<Tree> draw_arguments(Drawing& drawing, int depth);
std::vector<Tree> draw_parameters(Drawing& drawing, int depth);
Name draw_class(Drawing& drawing, int depth);
Encoding draw_encoding(Drawing& drawing, int depth);  // a function, data or special name

// Whole declarations: "_Z" names and, now and then, bare types.
Declaration draw_declaration(std::uint64_t seed, bool extended);

// What every operator code reads as, for names ("operator " in front).
struct OperatorRow {
    const char* code;
    const char* text;
    const char* closer;
};
extern const OperatorRow operator_rows[];
extern const unsigned operator_count;

}  // namespace scheme1
