// Turns the text that the C++ run-time library's own demangler gives for a name into the
// way this decoder writes the same declaration, where the two differ by rule alone.
// README.md in this folder lists the rules and what they cannot cover.
#pragma once

#include <string>

// The other demangler's text of `name`, empty when it refuses the name.
std::string black_box_text(const std::string& name);

// That text in this decoder's style. `name` is the mangled name, from which come the
// call offsets of thunks, which the other text leaves out.
std::string house_style(const std::string& name, const std::string& text);

// This decoder's text without what the other one never shows: the kind of a constructor
// or destructor at its end, and the numbers of local entities.
std::string without_kinds(const std::string& text);

// How one name compares.
enum class Agreement {
    same,                   // the same declaration, the same way
    template_parameters,    // refers to them: here by number, there by argument
    expression,             // holds an expression: parentheses are placed differently
    enclosing_result,       // a local name in a template, whose result stands here only
    inherited_constructor,  // the other repeats the name of the base class
    unnamed_class,          // a constructor of an unnamed class: the other repeats its scope
    different               // none of these: one of the two is wrong
};
Agreement compare(const std::string& name, const std::string& other_text,
                  const std::string& our_text);
