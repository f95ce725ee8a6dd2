// Scheme 1 as the list of schemes has it: see schemes.h for what the two promise.
#pragma once

#include "demangle/schemes.h"

namespace scheme1 {

// "_Z" in front.
bool looks_mangled(const char* name);

// A name that does not begin with "_Z" is decoded as a type.
decode_result decode(std::string_view name, const decode_options& options, std::span<char> buffer);

}  // namespace scheme1
