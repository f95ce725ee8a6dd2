// Decides which interlist directives an assembly text gets, and where: the heart of
// gas2interlist. Works on texts in memory; files are reached through assembly::source_access.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/reader.h"
#include "assembly/sources.h"

namespace gas2interlist {

// Directive lines to be written before the byte at offset `at` of the assembly.
struct Insertion {
    std::size_t at;
    std::string lines;
};

// The directives for an assembly text, in ascending order of
// offset. Every offset is the start of a line of it.
std::vector<Insertion> place_directives(const assembly::assembly_file& assembly,
                                        const assembly::prefix_map& source_map,
                                        const assembly::source_access& sources);

// Both steps and the merge at once: the assembly with its directives in `output`, or
// the reason why there is none.
std::optional<assembly::assembly_error> interlist_assembly(std::string_view text,
                                                           const assembly::prefix_map& source_map,
                                                           const assembly::source_access& sources,
                                                           std::string& output);

}  // namespace gas2interlist
