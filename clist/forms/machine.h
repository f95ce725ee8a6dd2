// The figures that llvm-mca has for a function's code.
#pragma once

#include <string>
#include <vector>

#include "clist/annotate.h"
#include "clist/function_lines.h"

namespace clist {

struct machine_figures {
    std::string comments;  // lines for behind the code: cycles and pressure, or why there are none
    std::string failure;   // why there are none, on one line
};

// What llvm-mca tells of a function's code.
machine_figures machine_analysis(const annotation& model, const std::vector<function_line>& lines);

// Whether there is an llvm-mca to ask.
bool has_machine_analysis();

}  // namespace clist
