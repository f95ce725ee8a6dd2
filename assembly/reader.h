// Reads a compiler's assembly text in one pass: its source files, sections, labels and
// functions, every line of code with the source position that it has, and, where wanted,
// the contents of the debugging sections. Knows nothing of sources or of what is made of
// the text. All offsets are those of bytes in the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembly/dialect.h"

namespace assembly {

inline constexpr std::uint32_t none = static_cast<std::uint32_t>(-1);

// A source file as a `.file` directive names it; the directory may be empty.
struct file_entry {
    std::string directory;
    std::string name;
    std::string md5 = {};  // of its text, 32 small hexadecimal digits, or empty
};

enum class section_kind : std::uint8_t { code, data, debug, other };

// `.text` and its like; a subsection, or one section of several with the same name but
// another group, is a section of its own.
struct section {
    std::string_view name;
    section_kind kind;
    std::uint32_t instruction_count = 0;
};

// A source position that code was generated for: a `.loc` directive.
struct code_position {
    std::uint32_t at = 0;  // where a directive for it goes: the start of the lines that lead up
    std::uint32_t directive = 0;  // the start of its `.loc` line
    std::uint32_t file = 0;       // file number, 0 included
    std::uint32_t line = 0;       // counted from 1; 0 is code without a source line
    std::uint32_t code = 0;       // how many lines of code have it
};

// A line of code. Its place is how many lines of code its section has before it.
struct instruction {
    std::uint32_t at;        // start of the line
    std::uint32_t end;       // where its newline is, or the text ends
    std::uint32_t position;  // index of the position that it has in the object, or none
    std::uint32_t section;
};

// A place that has a name. In a debugging section the place is counted in bytes.
struct label {
    std::uint32_t name_at;
    std::uint32_t name_size;
    std::uint32_t section;
    std::uint32_t place;  // of the next line of code in the section
};

// `.set NAME, VALUE`
struct alias {
    std::string_view name;
    std::string_view value;
};

// One function's lines in the assembly text.
struct function_code {
    std::string_view symbol;  // a view into the text
    std::uint32_t begin =
        0;                  // start of the first line that belongs to it (.globl, .type, its label)
    std::uint32_t end = 0;  // start of the first line after it
    std::uint32_t label = 0;                  // index of its label
    std::optional<code_position> entry = {};  // its first `.loc` with a line number
    // What is its own of the lists below.
    std::uint32_t first_position = 0;
    std::uint32_t position_count = 0;
    std::uint32_t first_instruction = 0;
    std::uint32_t instruction_count = 0;
    bool is_declared = true;  // false where only a label with code behind it tells of it
};

// A stretch of the text.
struct text_range {
    std::uint32_t begin;
    std::uint32_t end;
};

// What a debugging section holds, as the assembler would emit it for a little-endian
// machine. Values that are not plain numbers are zero, and one byte long where their
// length depends on them.
struct debug_contents {
    std::uint32_t section;
    std::string bytes = {};
    // For each such value where it lies in `bytes`, and where its expression begins in the
    // text; ascending.
    struct expression {
        std::uint32_t offset;
        std::uint32_t text_at;
    };
    std::vector<expression> expressions = {};
};

struct assembly_file {
    std::string_view text;
    const dialect* language = nullptr;
    bool carriage_returns = false;  // the first line ends in CR LF

    std::unordered_map<std::uint32_t, file_entry> files;  // by file number
    std::string main_file;                                // the `.file` directive without a number
    std::string compilation_directory;                    // empty when the assembly does not tell

    // Each in the order of the text. Functions do not overlap; code outside of any has
    // positions too.
    std::vector<section> sections;
    std::vector<function_code> functions;
    std::vector<code_position> positions;  // of all code; those that no code has are left out
    std::vector<instruction> instructions;
    std::vector<label> labels;
    std::vector<alias> aliases;
    std::vector<std::uint32_t> data_lines;    // lines of data within sections of code
    std::vector<text_range> inline_assembly;  // as the source has it, with the marks around it
    std::vector<debug_contents> debug;

    std::string_view name_of(const label& it) const {
        return text.substr(it.name_at, it.name_size);
    }
    std::string_view line_of(const instruction& it) const {
        return text.substr(it.at, it.end - it.at);
    }
};

// The column that a position's directive tells; 0 where it does not.
std::uint32_t column_of(const assembly_file& assembly, const code_position& position);

// Why an assembly text cannot be used.
struct assembly_error {
    std::size_t line;  // counted from 1
    std::string message;
};

struct read_options {
    const dialect* language = nullptr;  // told from the text where it is not given
    bool debug = false;                 // whether debugging sections are wanted
    bool compile = false;               // or only where no file 0 tells what was compiled
};

// Fills `assembly` from `text`, which must outlive it. On an error the contents of
// `assembly` mean nothing.
std::optional<assembly_error> read_assembly(std::string_view text, assembly_file& assembly,
                                            const read_options& options = {});

}  // namespace assembly
