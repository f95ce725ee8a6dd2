// Reads compile_commands.json: how a build compiles each of its sources.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace clist {

struct database_entry {
    std::string directory;           // where the compile runs; relative to the database's folder
    std::string file;                // the source, as the compile names it
    std::vector<std::string> words;  // the compiler and its arguments
    std::size_t line = 0;            // where the entry begins
};

struct database {
    std::vector<database_entry> entries;
    std::string error;  // "LINE: what is wrong" or "LINE:COLUMN: ..."; empty when nothing is
};

// Both forms of entries: with "arguments", which count where both are there, and with
// "command", split as a shell does.
database read_database(std::string_view text);

}  // namespace clist
