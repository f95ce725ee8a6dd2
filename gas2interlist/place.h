// Decides which interlist directives an assembly text gets, and where: the heart of
// gas2interlist. Works on texts in memory; files are reached through SourceAccess.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assembly/reader.h"

namespace gas2interlist {

// A name prefix and what it is replaced with.
using SourceMap = std::vector<std::pair<std::string, std::string>>;

// How source files are reached.
struct SourceAccess {
    // The text of a file, or nothing when it cannot be read.
    std::function<std::optional<std::string>(const std::string& name)> read;
    // Whether both names lead to one existing file.
    std::function<bool(const std::string& one, const std::string& other)> same;
};

// Directive lines to be written before the byte at offset `at` of the assembly.
struct Insertion {
    std::size_t at;
    std::string lines;
};

// The directives for an assembly text, in ascending order of
// offset. Every offset is the start of a line of it.
std::vector<Insertion> place_directives(const Assembly& assembly, const SourceMap& source_map,
                                        const SourceAccess& sources);

// Both steps and the merge at once: the assembly with its directives in `output`, or
// the reason why there is none.
std::optional<AssemblyError> interlist_assembly(std::string_view text, const SourceMap& source_map,
                                                const SourceAccess& sources, std::string& output);

}  // namespace gas2interlist
