// Text that holds several words, as variables of the environment, response files and compile
// databases have it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace clist {

// Splits at blanks, and at nothing else.
std::vector<std::string> split_blanks(std::string_view text);

// Splits what a response file holds: blanks part words, quotes of both kinds keep them
// together, a backslash takes the next byte as it is.
std::vector<std::string> split_response(std::string_view text);

// Splits a command as a POSIX shell does, without expanding anything. Nothing where a
// quote is not closed.
std::optional<std::vector<std::string>> split_command(std::string_view text);

}  // namespace clist
