// The compilers and binary tools that listings are held against, for each target.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct toolchain {
    const char* name;    // of tests
    const char* prefix;  // of the binary tools
    bool is_clang;
    const char* target;   // triple
    const char* comment;  // what starts a comment
};

// How a failing test calls it.
inline void PrintTo(const toolchain& it, std::ostream* to) {
    *to << it.name;
}

// A line of the source. Line 0 is none.
struct source_line {
    std::string file;  // with its whole path
    unsigned line = 0;

    friend bool operator==(const source_line& one, const source_line& other) {
        return one.line == other.line && (one.line == 0 || one.file == other.file);
    }
};

struct called_line {
    std::string function;
    source_line line;
};

// The command that compiles C, or C++ by the file's name.
std::vector<std::string> compiler(const toolchain& with, std::string_view source);
// The command that assembles what it makes with these options.
std::vector<std::string> assembler(const toolchain& with, std::string_view flags);
// The programs of all this that are not installed, as one text.
std::string missing_programs(const toolchain& with);

// What an assembly text's object tells of its code. Addresses are those of a program that is
// linked of it alone.
struct object_truth {
    std::map<std::string, std::uint64_t> labels;
    // Where the line changes; nothing behind the last code of a section.
    std::map<std::uint64_t, std::optional<source_line>> lines;
    // The functions that code came through, innermost first.
    std::vector<std::vector<called_line>> frames;
};

// Assembles and links `assembly`, a file in `folder` that was compiled with `flags`, and reads
// its labels, its lines, and the frames at the labels with `prefix` and 0, 1 and so on behind.
object_truth read_object(const toolchain& with, const std::string& folder,
                         const std::string& assembly, std::string_view flags,
                         const std::string& prefix);
