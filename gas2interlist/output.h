// What gas2interlist writes, and how it gets to its place.
#pragma once

#include <optional>
#include <string>

#include "assembly/text_file.h"
#include "gas2interlist/place.h"

namespace gas2interlist {

// Writes all of `text` to a file, or to standard output for "-"; `input` is what its
// assembly lies in, if it is a file.
//
// A file that does not exist, and one that nothing but its text would tell from a new
// one, is written beside its place and moved there when it is complete: a failure leaves
// what was there before. Any other file, and what is none, is written as a shell's ">"
// writes it. A name that leads to one of this process's descriptors stands for that
// descriptor.
// On failure false, and `error` gets the system's text.
bool write_output(const std::string& name, const interlisted_text& text,
                  const std::optional<assembly::text_file>& input, std::string& error);

}  // namespace gas2interlist
