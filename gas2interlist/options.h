// The command line of gas2interlist: its options, its usage text, its exit statuses.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "assembly/sources.h"

namespace gas2interlist {

enum exit_status : int {
    exit_success = 0,
    exit_failure = 1,  // unusable input, or a file that cannot be read or written
    exit_usage = 2,    // a command line that makes no sense
};

// "-" stands for standard input and standard output.
struct options {
    std::string input = "-";
    std::string output = "-";
    assembly::prefix_map source_map;
    bool warnings = true;
    bool help = false;
    bool version = false;
    std::string error;  // what is wrong with the command line; empty when nothing is
};

// Reads the arguments, the program's own name not among them. --help and --version
// end the reading.
options read_options(const std::vector<std::string_view>& arguments);

// The text of --help.
std::string_view usage_text();

}  // namespace gas2interlist
