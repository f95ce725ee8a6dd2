// How the assemblers of different targets write comments, part statements and size words.
// A dialect is known from a target's name or told from the text itself.
#pragma once

#include <cstdint>
#include <string_view>

namespace assembly {

struct dialect {
    std::string_view name;     // of the architecture, as target triples begin: "x86_64"
    std::string_view comment;  // begins a comment anywhere in a line
    char separator;          // parts the statements of a line; NUL where none is a single character
    std::uint8_t word_size;  // bytes that `.word` emits
};

// The dialect for a target triple such as "aarch64-linux-gnu". What is not known is taken
// for the most common: '#' and ';'.
const dialect& dialect_of_target(std::string_view triple);

// The dialect that a compiler's assembly text is written in, by what its first lines show.
const dialect& dialect_of_text(std::string_view text);

}  // namespace assembly
