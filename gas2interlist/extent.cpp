// Finds functions in the outlines of their sources, and what the assembly tells where that
// is not enough.
#include "gas2interlist/extent.h"

#include <algorithm>

#include "assembly/symbol.h"

namespace gas2interlist {

using namespace assembly;

static function_extent extent_of(source_file& source, std::size_t block) {
    const source_block& it = source.outline->blocks[block];
    return {
        .source = &source, .first = it.header_line, .body = it.open_line, .last = it.close_line};
}

// The function at a position, provided that its declaration has `name`.
static std::optional<function_extent> named_extent(source_table& sources,
                                                   const code_position& position,
                                                   std::string_view name) {
    source_file* const source = source_of(sources, position.file);
    if (source == nullptr || !look_up(sources, *source).outline) {
        return std::nullopt;
    }
    const source_outline& outline = *source->outline;
    for (const std::size_t block : {function_declared_at(outline, position.line, name),
                                    function_around(outline, position.line)}) {
        if (block != no_block && declares(outline, block, name)) {
            return extent_of(*source, block);
        }
    }
    return std::nullopt;
}

// What the assembly alone tells: a function begins at its entry's line and ends before the
// next one that begins in the same file; it has no lines behind its last position.
static std::optional<function_extent> extent_from_assembly(source_table& sources,
                                                           const function_code& function) {
    const code_position& entry = *function.entry;
    source_file* const source = source_of(sources, entry.file);
    if (source == nullptr) {
        return std::nullopt;
    }
    const std::uint32_t next = next_entry(*source, entry.line, function_name(function.symbol));
    function_extent extent{
        .source = source, .first = entry.line, .body = entry.line, .last = entry.line};
    for (const code_position& it : further_positions(sources.assembly, function)) {
        if (it.line > extent.last && it.line < next && source_of(sources, it.file) == source) {
            extent.last = it.line;
        }
    }
    return extent;
}

// The first of a function's positions that lies in a function called `name`. An entry
// elsewhere is code that was inlined ahead of the function's own.
static std::optional<function_extent> find_named_extent(source_table& sources,
                                                        const function_code& function,
                                                        std::string_view name) {
    const code_position& entry = *function.entry;
    if (std::optional<function_extent> extent = named_extent(sources, entry, name)) {
        // Where other functions begin in the same declaration, a macro makes them all.
        const std::uint32_t next = next_entry(*extent->source, std::max(entry.line, extent->first),
                                              function_name(function.symbol));
        return next <= extent->body ? extent_from_assembly(sources, function) : extent;
    }
    code_position last = entry;
    for (const code_position& it : further_positions(sources.assembly, function)) {
        if (it.line == 0 || (it.file == last.file && it.line == last.line)) {
            continue;
        }
        last = it;
        if (std::optional<function_extent> extent = named_extent(sources, it, name)) {
            return extent;
        }
    }
    return std::nullopt;
}

static std::optional<function_extent> find_lines(source_table& sources,
                                                 const function_code& function) {
    const std::string_view name = declared_name(function.symbol);
    if (!name.empty()) {
        if (std::optional<function_extent> extent = find_named_extent(sources, function, name)) {
            return extent;
        }
    }
    // Some formats put an underscore before every C symbol.
    if (name.size() > 1 && name.front() == '_') {
        if (std::optional<function_extent> extent =
                find_named_extent(sources, function, name.substr(1))) {
            return extent;
        }
    }
    const code_position& entry = *function.entry;
    source_file* const source = source_of(sources, entry.file);
    if (source != nullptr && look_up(sources, *source).outline) {
        const std::size_t declared = function_declared_at(*source->outline, entry.line, {});
        if (declared != no_block &&
            next_entry(*source, entry.line, function_name(function.symbol)) >
                source->outline->blocks[declared].open_line) {
            return extent_of(*source, declared);
        }
    }
    return extent_from_assembly(sources, function);
}

std::span<const code_position> further_positions(const assembly_file& assembly,
                                                 const function_code& function) {
    const std::span<const code_position> all =
        std::span(assembly.positions).subspan(function.first_position, function.position_count);
    const auto first = std::find_if(all.begin(), all.end(), [&function](const code_position& it) {
        return function.entry && it.directive > function.entry->directive;
    });
    return {first, all.end()};
}

std::optional<function_extent> find_extent(source_table& sources, const function_code& function) {
    std::optional<function_extent> extent = find_lines(sources, function);
    if (!extent || !extent->source->outline) {
        return extent;
    }
    const std::vector<line_origin>& all = extent->source->outline->origins;
    for (auto it = std::partition_point(
             all.begin(), all.end(),
             [&extent](const line_origin& origin) { return origin.line < extent->first; });
         it != all.end() && it->line <= extent->last; ++it) {
        source_file* const source = source_named(sources, it->file);
        std::vector<source_file*>& origins = extent->origins;
        if (source != nullptr && source != extent->source && look_up(sources, *source).found.file &&
            std::find(origins.begin(), origins.end(), source) == origins.end()) {
            origins.push_back(source);
        }
    }
    return extent;
}

source_file* own_source(const source_table& sources, const function_extent& extent,
                        const code_position& position) {
    const bool is_within = position.line >= extent.first && position.line <= extent.last;
    if (!is_within && extent.origins.empty()) {
        return nullptr;
    }
    source_file* const source = source_of(sources, position.file);
    if (source == extent.source) {
        return is_within ? source : nullptr;
    }
    const bool is_origin =
        std::find(extent.origins.begin(), extent.origins.end(), source) != extent.origins.end();
    return is_origin && position.line != 0 ? source : nullptr;
}

}  // namespace gas2interlist
