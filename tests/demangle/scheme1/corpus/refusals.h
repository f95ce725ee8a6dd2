// Why strict decoding refuses a name that extended names open.
#pragma once

#include <string>

// The form beyond the fixed tables that the name holds, "" when there is none. Found
// from the name and from the other demangler's text, never from this decoder.
std::string extended_form(const std::string& name, const std::string& other_text);
