// Puts arguments in the place of template parameters, which the other demangler of the
// corpus shows and this decoder does not.
#pragma once

#include <optional>
#include <string>

// A function's text with each "T1" in its result and parameters replaced by the argument
// that its name's list gives; nothing where that is not to be had from the text alone: no
// list, a pack, a parameter of an enclosing template, an expression.
std::optional<std::string> with_arguments(const std::string& text);
