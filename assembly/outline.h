// The outline of a C or C++ source file: where its functions begin and end, and on
// which lines its statements end. Used by the placement of directives to tell a
// function's own lines from those of code inlined into it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace assembly {

enum class block_kind : std::uint8_t {
    function,     // a function's or lambda's body
    scope,        // class, struct, union, enum, namespace, extern "C"
    statement,    // a compound statement
    initializer,  // a braced list within a statement
};

// One pair of braces. Lines count from 1.
struct source_block {
    std::uint32_t header_line;  // where the declaration or statement that leads to it begins
    std::uint32_t open_line;    // of the opening brace
    std::uint32_t close_line;   // of the closing brace; the last line when it is missing
    std::size_t header_at;      // offset of the declaration in the text
    std::size_t open_at;        // offset of the opening brace
    std::size_t parent;         // index of the enclosing block, or no_block
    block_kind kind;
};

inline constexpr std::size_t no_block = static_cast<std::size_t>(-1);

// `#line NUMBER "FILE"`: what follows was taken from another file.
struct line_origin {
    std::uint32_t line;     // of the directive
    std::string_view file;  // as it stands between the quotes
};

struct source_outline {
    std::string_view text;
    std::vector<source_block> blocks;  // in the order of their opening braces
    std::vector<bool> statement_end;   // by line: a statement or a block's brace ends there
    std::vector<line_origin> origins;  // in the order of the text
};

// Reads the outline of a source text. Any text is taken; what is not C or C++ just
// gives an outline of no use; it must outlive the outline. Both branches of a conditional group are
// read, and braces are matched in each as if the other were absent.
source_outline outline_source(std::string_view text);

// The function whose declaration covers `line`, from its first word to its opening
// brace. Where several do, one whose declaration has `name` as a word is preferred.
// no_block when there is none.
std::size_t function_declared_at(const source_outline& outline, std::uint32_t line,
                                 std::string_view name);

// The innermost function whose declaration or body covers `line`, or no_block.
std::size_t function_around(const source_outline& outline, std::uint32_t line);

// Whether the declaration of `block` has `name` as a whole word.
bool declares(const source_outline& outline, std::size_t block, std::string_view name);

}  // namespace assembly
