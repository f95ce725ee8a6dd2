// Where a function of the assembly stands in the source.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "assembly/reader.h"
#include "gas2interlist/source_table.h"

namespace gas2interlist {

// The lines that a function owns, declaration to closing brace.
struct function_extent {
    source_file* source = nullptr;
    std::uint32_t first = 0;
    std::uint32_t body = 0;  // the line of the opening brace
    std::uint32_t last = 0;
    // Files that some of these lines were taken from, by `#line`, and that can be read.
    std::vector<source_file*> origins = {};
};

// The positions of a function's code behind its entry, which stands for the whole way in.
std::span<const assembly::code_position> further_positions(const assembly::assembly_file& assembly,
                                                           const assembly::function_code& function);

// Where a function stands: where its name is declared, or else where it is entered. Nothing
// where the assembly tells nothing. All functions of the assembly are in `sources`.
std::optional<function_extent> find_extent(source_table& sources,
                                           const assembly::function_code& function);

// The source that a position's line belongs to in the listing of a function: its own or one
// that its lines were taken from. Null for code that was inlined from elsewhere.
source_file* own_source(const source_table& sources, const function_extent& extent,
                        const assembly::code_position& position);

}  // namespace gas2interlist
