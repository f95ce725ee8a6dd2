// The functions that a compiler's debugging data tell of, and what was inlined where: for
// every line of code the chain of functions that it came through.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "assembly/label_index.h"
#include "assembly/reader.h"

namespace assembly {

// A function of the source. Names are views into the assembly's debugging sections.
struct source_function {
    std::string_view name;           // as its declaration spells it; may be empty
    std::string_view linkage_name;   // empty where the name serves
    std::uint32_t decl_file = none;  // a file number of the assembly
    std::uint32_t decl_line = 0;
};

// A function's own code, or what was inlined at one place of another scope.
struct code_scope {
    std::uint32_t function;       // index
    std::uint32_t parent = none;  // the scope that it was inlined into; none for a whole function
    std::uint32_t call_file = none;  // where: a file number, line and column; 0 where not told
    std::uint32_t call_line = 0;
    std::uint32_t call_column = 0;
};

struct debug_info {
    std::string_view compilation_directory;  // empty where the data do not tell
    std::vector<source_function> functions;
    std::vector<code_scope> scopes;  // each behind its parent
    // By index of an instruction: the innermost scope that it lies in, or none.
    std::vector<std::uint32_t> scope_of;
    // Something was not understood, and what it says is missing.
    bool is_partial = false;
};

// Reads the debugging data of an assembly that was read with them.
debug_info read_debug_info(const assembly_file& assembly, const label_index& labels);

// The file that was compiled and the directory that the compiler ran in, by the first unit
// of code alone: what file 0 tells from version 5 of the format on. Empty where it does not
// tell.
file_entry compiled_file(const assembly_file& assembly, const label_index& labels);

}  // namespace assembly
