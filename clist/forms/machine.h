// The figures that llvm-mca has for a function's code.
#pragma once

#include <string>
#include <vector>

#include "clist/annotate.h"
#include "clist/function_lines.h"

namespace clist {

// The comment lines behind a function's code: cycles and pressure as llvm-mca tells them,
// or why it told none.
std::string machine_analysis(const annotation& model, const std::vector<function_line>& lines);

// Whether there is an llvm-mca to ask.
bool has_machine_analysis();

}  // namespace clist
