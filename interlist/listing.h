// The listing pass: copies the assembly file into the listing, acts on the
// interlist directives and leaves them out. Called by main; owrite also by the
// function interlisting.
#pragma once

#include <string_view>

// What the start of an assembly line says.
enum class directive { none, file, line, symbol, function, end_of_function };

// The directive that `line` begins with. The operand begins directly behind
// the prefix, whose length is directive_length().
directive directive_of(std::string_view line);
std::size_t directive_length(directive kind);

// Runs the pass from ASSY's position to its end.
void process_assy();

// Writes one assembly line to LIST and returns 1, or drops it and returns 0
// when it is an interlist directive. `line` normally ends with a newline and
// holds no NUL.
int owrite(std::string_view line);
