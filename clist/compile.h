// From a compiler's command line to assembly text: which command makes the assembly of a
// source, running it, and what the compiler says that it read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/text_file.h"
#include "clist/arguments.h"

namespace clist {

struct compile_settings {
    bool intel = false;  // Intel's syntax
    // The real compile is another one: this one writes no other files, and says nothing.
    bool is_extra = false;
    bool tells_dependencies = false;  // with is_extra: the files that it reads
};

// The words of a command that compiles one of the sources to the assembly `file`, with line
// information. All else is as given but for -o, -c, the other inputs and link time
// optimisation, and for an extra compile what would write more files.
std::vector<std::string> assembly_command(const arguments& given, std::size_t source,
                                          const compile_settings& settings,
                                          const std::string& file);

// Where the command as given puts what it makes of a source.
std::string output_of(const arguments& given, std::size_t source);

// Whether a file, by whatever name, is one that the compile reads or the rule that it writes.
bool uses_file(const arguments& given, const std::string& name);

// The folders that the compiler takes for a system's when it compiles a source: by options, and
// by the variables of the environment for the source's language. Those that hold the source
// itself are left out: it is no system's. First as given, then by their real names.
std::vector<std::string> system_folders(const arguments& given, std::size_t source);

// What a compile gave.
struct compiled {
    int status = 0;  // for clist: 0 when there is assembly
    std::optional<assembly::text_file> assembly;
    std::string error;                      // what went wrong, where the compiler did not tell
    std::string messages;                   // of an extra compile
    std::vector<std::string> dependencies;  // the files that it read, where asked for
};

// Compiles one of the sources. The compiler's messages pass through to standard error, those
// of an extra compile are kept.
compiled compile(const arguments& given, std::size_t source, const compile_settings& settings);

// The files named by the first rule that a compiler wrote for make.
std::vector<std::string> read_dependencies(std::string_view rule);

// Such a rule, for make and Ninja.
std::string dependency_rule(const std::string& target, const std::vector<std::string>& files);

}  // namespace clist
