// Messages on standard error, each behind the name of the program that has them: this one
// or another that uses its parts.
#pragma once

#include <initializer_list>
#include <string_view>

namespace gas2interlist {

// The name is "gas2interlist" unless a program has set its own, which lives on.
void set_program_name(std::string_view name) noexcept;
std::string_view program_name() noexcept;

// Writes the program's name and ": ", the parts and a line end, in one call. Takes no memory, so
// that it can tell that there is none, and may be called by a signal handler. A message
// of more than 32 KB is cut.
void report(std::initializer_list<std::string_view> parts) noexcept;

}  // namespace gas2interlist
