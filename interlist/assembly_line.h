// One line of the assembly: the interlist directive that it is, or a line of the listing.
// Directives are acted on by the listing pass and by the function interlisting; what is
// kept of the others is done here.
#pragma once

#include <optional>
#include <string_view>

#include "interlist/input.h"

// What the start of an assembly line says.
enum class directive { none, file, line, symbol, function, end_of_function };

// How all directives begin; few other lines do.
constexpr line_mark directive_mark{'\t', '.', 'i'};

// The directive that `line` begins with.
directive directive_of(std::string_view line);

// The operand of a `line` that begins with the directive `kind`: the number that it
// starts with, if any, or the text behind the one character that stands before it, an
// opening quote or an underscore. Text beyond the limit ends the program.
std::optional<int> operand_number(std::string_view line, directive kind);
std::string_view operand_text(std::string_view line, directive kind);

// Writes one assembly line to the listing and returns 1, or drops it and returns 0 when it
// is a directive; keeps the records that directives leave. `line` normally ends with a
// newline.
int owrite(std::string_view line);
