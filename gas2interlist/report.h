// Messages of gas2interlist on standard error.
#pragma once

#include <initializer_list>
#include <string_view>

namespace gas2interlist {

// Writes "gas2interlist: ", the parts and a line end, in one call. Takes no memory, so
// that it can tell that there is none, and may be called by a signal handler. A message
// of more than 32 KB is cut.
void report(std::initializer_list<std::string_view> parts) noexcept;

}  // namespace gas2interlist
