// The command line of clist: which of its ways of working is asked for, the options, and
// where they end and the compiler's own words begin.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clist/listing.h"

namespace clist {

enum exit_status : int {
    exit_success = 0,
    exit_failure = 1,  // of clist itself; a compiler's failure keeps the compiler's status
    exit_usage = 2,    // a command line that makes no sense
};

enum class work : std::uint8_t {
    compile,   // COMPILER ARGS..., or a source alone: compile to assembly and list that
    assembly,  // FILE.s..., or -: list assembly at hand
    launcher,  // --launcher COMPILER ARGS...: compile as told, leave a listing by the object
    project,   // -p BUILD_DIR: list everything that a compile database names
    help,
    version,
};

enum class color_choice : std::uint8_t { when_terminal, always, never };

struct options {
    work what = work::compile;
    listing_options listing;
    color_choice color = color_choice::when_terminal;
    bool intel = false;
    std::string output;   // -o; empty: standard output, or a folder of its own for a project
    std::string depfile;  // --depfile
    std::string suffix;   // --suffix, or what the form asks for
    bool strict = false;
    std::string build_dir;                // -p
    std::string jobs;                     // -j; empty: as Ninja sees fit
    std::vector<std::string> through;     // --through, in words
    std::vector<std::string> words;       // the compiler and its arguments, or the assembly files
    std::vector<std::string> form_words;  // the options that say what a listing looks like
    std::string error;  // what is wrong with the command line; empty when nothing is
};

// The variables of the environment that matter here.
struct environment {
    std::string c_compiler = "cc";
    std::string cxx_compiler = "c++";
};

// $CC and $CXX where they are set.
environment environment_of_process();

// Reads the arguments, the program's own name not among them. Its options end at the first
// word that is none; all words from a compiler's name on are the compiler's. Options may
// also stand between and behind assembly files.
options read_options(const std::vector<std::string>& arguments, const environment& surroundings);

// Whether a listing on standard output is to be coloured: as chosen, or else on a terminal
// unless $NO_COLOR is set.
bool wants_color(const options& given);

// Whether a word is an option that no compiler has.
bool is_own_option(std::string_view word);

// The text of --help.
std::string_view usage_text();

}  // namespace clist
