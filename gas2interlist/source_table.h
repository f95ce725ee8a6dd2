// The sources that an assembly text names, each looked for once and read when it is needed.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembly/outline.h"
#include "assembly/reader.h"
#include "assembly/sources.h"

namespace gas2interlist {

// Code of a function begins on a line.
struct source_entry {
    std::uint32_t line;
    std::string_view name;     // of the function; see function_name
    std::uint32_t other_line;  // of the first entry behind this one that has another name
};

inline constexpr std::uint32_t no_line = static_cast<std::uint32_t>(-1);

struct source_file {
    const assembly::file_entry* entry = nullptr;
    std::vector<source_entry> entries = {};  // ascending

    // Known once it was looked for.
    bool is_found = false;
    assembly::found_source found = {};
    std::optional<assembly::source_outline> outline = {};  // nothing where it cannot be read
    std::vector<std::uint32_t> statement_end = {};         // by line; see end_of_statement
};

struct source_table {
    const assembly::assembly_file& assembly;
    const assembly::prefix_map& renames;
    const assembly::source_access& access;
    std::int64_t modified;  // when the assembly was written; 0 where nobody knows

    std::unordered_map<std::string, std::unique_ptr<source_file>> by_name = {};
    std::unordered_map<std::uint32_t, source_file*> by_number = {};
};

// The sources of an assembly text, with the functions that begin in each.
source_table source_table_of(const assembly::assembly_file& assembly,
                             const assembly::prefix_map& renames,
                             const assembly::source_access& access, std::int64_t modified);

// The file of a number; null where the assembly names none. Two numbers may have the same.
source_file* source_of(const source_table& table, std::uint32_t number);

// The file of a name that stands in a source; null where the assembly does not name it.
source_file* source_named(const source_table& table, std::string_view name);

// The first line behind `line` on which another function than `name` begins, or no_line.
std::uint32_t next_entry(const source_file& source, std::uint32_t line, std::string_view name);

// Looks for a file, and reads it, unless that was done.
const source_file& look_up(source_table& table, source_file& source);

// The line on which the statement that holds `line` ends. Nothing where the source does not
// tell.
std::optional<std::uint32_t> end_of_statement(const source_file& source, std::uint32_t line);

// What a function's copies have in common: the name in the source, or else the symbol
// without their marks.
std::string_view function_name(std::string_view symbol);

}  // namespace gas2interlist
