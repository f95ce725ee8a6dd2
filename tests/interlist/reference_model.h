// A second, deliberately slow interlister that works on strings: every line is
// read byte by byte, the assembly is read again from each look-ahead's start,
// the C file is read again from its first line at each rewind. What the program
// does with windows, tables and blocks is held against it.
#pragma once

#include <map>
#include <string>

struct ModelOptions {
    bool skip_blanks = false;
    bool keep_indentation = false;
    int width = 0;
};

struct ModelResult {
    std::string listing;
    std::string warnings;  // what goes to standard error
};

// `sources` are the C files that exist, by name. The assembly must not name an
// empty source file: that ends the program.
ModelResult model_listing(const std::string& assembly,
                          const std::map<std::string, std::string>& sources,
                          const ModelOptions& options);
