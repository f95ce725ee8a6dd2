// Compares this decoder's text of a name with that of the C++ run-time library's own
// demangler. Called by the test of the corpus and by the program that counts it.
#pragma once

#include <string>

// This decoder's text without what the other one never shows: the kind of a constructor
// or destructor at its end, and the numbers of local entities.
std::string without_kinds(const std::string& text);

// How one name compares.
enum class Agreement {
    same,                   // the same declaration, the same way
    with_arguments,         // the same, once arguments stand for template parameters
    template_parameters,    // refers to them: here by number, there by argument
    expression,             // holds an expression: parentheses are placed differently
    enclosing_result,       // a local name in a template, whose result stands here only
    inherited_constructor,  // the other repeats the name of the base class
    unnamed_class,          // a constructor of an unnamed class: the other repeats its scope
    different               // none of these: one of the two is wrong
};
Agreement compare(const std::string& name, const std::string& other_text,
                  const std::string& our_text);
