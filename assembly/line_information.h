// What to tell a user whose assembly has no line information.
#pragma once

#include <string_view>

#include "assembly/reader.h"

namespace assembly {

// Why no function of an assembly text has a position, and what to do about it; empty where
// one has, and where there are no functions at all.
std::string_view missing_lines(const assembly_file& assembly, std::string_view text);

}  // namespace assembly
