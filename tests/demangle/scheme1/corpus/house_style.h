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
