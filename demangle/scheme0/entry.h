// Scheme 0 as the list of schemes has it: see schemes.h for what the two promise.
#pragma once

#include "demangle/schemes.h"

namespace scheme0 {

// A leading underscore and a "__" anywhere.
bool looks_mangled(const char* name);

decode_result decode(std::string_view name, const decode_options& options, std::span<char> buffer);

}  // namespace scheme0
