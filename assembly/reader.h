// Reads a compiler's assembly text: which source files it names, where each
// function lies in the text, and which source positions its code has. Used by the
// placement of directives; knows nothing of C sources or of the directives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace assembly {

// A source file as a `.file` directive names it; the directory may be empty.
struct file_entry {
    std::string directory;
    std::string name;
};

// A source position that code was generated for.
struct code_position {
    std::size_t at;          // where a directive for it goes: the start of a line of the text
    std::uint32_t file;      // file number, 0 included
    std::uint32_t line;      // counted from 1; 0 is code without a source line
    std::uint32_t code = 0;  // how many lines of code it has, up to the next position
};

// One function's lines in the assembly text.
struct function_code {
    std::string_view symbol;  // a view into the text
    std::size_t begin = 0;  // start of the first line that belongs to it (.globl, .type, its label)
    std::size_t end = 0;    // start of the first line after it
    std::optional<code_position> entry;  // its first `.loc` with a line number
    std::size_t first_position = 0;      // its further positions in Assembly::positions,
    std::size_t position_count = 0;      // in the order of the text, each with code of its own
    bool can_hold_directives = true;     // false when it has bytes that a listing would lose
};

struct assembly_file {
    std::unordered_map<std::uint32_t, file_entry> files;  // by file number
    std::string main_file;                                // the `.file` directive without a number
    std::string compilation_directory;                    // empty when the assembly does not tell
    std::vector<function_code> functions;  // in the order of the text; they do not overlap
    std::vector<code_position> positions;
    bool carriage_returns = false;  // the first line ends in CR LF
};

// Why an assembly text cannot be used.
struct assembly_error {
    std::size_t line;  // counted from 1
    std::string message;
};

// Fills `assembly` from `text`, which must outlive it. On an error the contents of
// `assembly` mean nothing.
std::optional<assembly_error> read_assembly(std::string_view text, assembly_file& assembly);

}  // namespace assembly
