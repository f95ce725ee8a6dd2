// Files as gas2interlist meets them: the input read whole, the output replaced in one step.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace gas2interlist {

// Reads all of a file, or of standard input for "-". On failure nothing, and `error`
// gets the system's text.
std::optional<std::string> read_input(const std::string& name, std::string& error);

// Writes all of `text` to a file, or to standard output for "-". A regular file is
// written beside its place and moved there when it is complete, so that a failure
// leaves what was there before; anything else (a device, a FIFO) is written as it is.
// On failure false, and `error` gets the system's text.
bool write_output(const std::string& name, std::string_view text, std::string& error);

}  // namespace gas2interlist
