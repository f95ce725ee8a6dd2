// Keeps the sources by the names that they were compiled under.
#include "gas2interlist/source_table.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "assembly/symbol.h"

namespace gas2interlist {

using namespace assembly;

source_table source_table_of(const assembly_file& assembly, const prefix_map& renames,
                             const source_access& access, std::int64_t modified) {
    source_table table{
        .assembly = assembly, .renames = renames, .access = access, .modified = modified};
    std::vector<std::uint32_t> numbers;
    for (const auto& [number, entry] : assembly.files) {
        numbers.push_back(number);
    }
    // File 0, which another one repeats as code has it, comes last.
    std::sort(numbers.begin(), numbers.end(),
              [](std::uint32_t one, std::uint32_t other) { return one - 1 < other - 1; });
    for (const std::uint32_t number : numbers) {
        const file_entry& entry = assembly.files.at(number);
        std::unique_ptr<source_file>& source = table.by_name[compiled_name(assembly, entry)];
        if (!source) {
            source = std::make_unique<source_file>();
            source->entry = &entry;
        }
        table.by_number[number] = source.get();
    }
    for (const function_code& function : assembly.functions) {
        if (function.entry && function.is_declared &&
            part_mark(function.symbol) == std::string_view::npos) {
            if (source_file* const source = source_of(table, function.entry->file)) {
                source->entries.push_back(
                    {function.entry->line, function_name(function.symbol), no_line});
            }
        }
    }
    for (const auto& [name, source] : table.by_name) {
        std::vector<source_entry>& entries = source->entries;
        std::sort(entries.begin(), entries.end(),
                  [](const source_entry& one, const source_entry& other) {
                      return std::tie(one.line, one.name) < std::tie(other.line, other.name);
                  });
        for (std::size_t i = entries.size(); i-- > 1;) {
            entries[i - 1].other_line =
                entries[i - 1].name == entries[i].name ? entries[i].other_line : entries[i].line;
        }
    }
    return table;
}

source_file* source_of(const source_table& table, std::uint32_t number) {
    const auto it = table.by_number.find(number);
    return it == table.by_number.end() ? nullptr : it->second;
}

source_file* source_named(const source_table& table, std::string_view name) {
    const auto it = table.by_name.find(compiled_name(table.assembly, {"", std::string(name)}));
    return it == table.by_name.end() ? nullptr : it->second.get();
}

std::uint32_t next_entry(const source_file& source, std::uint32_t line, std::string_view name) {
    const auto next = std::upper_bound(
        source.entries.begin(), source.entries.end(), line,
        [](std::uint32_t value, const source_entry& entry) { return value < entry.line; });
    if (next == source.entries.end()) {
        return no_line;
    }
    return next->name == name ? next->other_line : next->line;
}

const source_file& look_up(source_table& table, source_file& source) {
    if (source.is_found) {
        return source;
    }
    source.is_found = true;
    source.found =
        find_source(table.assembly, *source.entry, table.renames, table.access, table.modified);
    if (source.found.file) {
        source.outline = outline_source(source.found.file->text());
        const std::vector<bool>& ends = source.outline->statement_end;
        source.statement_end.resize(ends.size());
        auto end = static_cast<std::uint32_t>(ends.size());
        for (std::uint32_t line = end; line-- > 0;) {
            end = ends[line] ? line : end;
            source.statement_end[line] = end;
        }
    }
    return source;
}

// Positions may lie far behind the end of a source that has changed since.
std::optional<std::uint32_t> end_of_statement(const source_file& source, std::uint32_t line) {
    return line < source.statement_end.size() ? std::optional(source.statement_end[line])
                                              : std::nullopt;
}

std::string_view function_name(std::string_view symbol) {
    const std::string_view name = declared_name(symbol);
    return name.empty() ? symbol.substr(0, symbol.find('.', 1)) : name;
}

}  // namespace gas2interlist
