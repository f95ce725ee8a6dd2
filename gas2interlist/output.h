// What gas2interlist writes, and how it gets to its place.
#pragma once

#include <sys/stat.h>

#include <functional>
#include <optional>
#include <string>

#include "assembly/text_file.h"
#include "gas2interlist/place.h"

namespace gas2interlist {

// What is to be written, by a program that has it in pieces.
struct output_text {
    // Writes all of it to a descriptor. On failure false, and errno tells why.
    std::function<bool(int descriptor)> write;
    // Told of a file before its old text is lost; may be empty.
    std::function<void(const struct stat& file)> overwriting = {};
};

// Writes all of a text to a file, or to standard output for "-".
//
// A file that does not exist, and one that nothing but its text would tell from a new
// one, is written beside its place and moved there when it is complete: a failure leaves
// what was there before. Any other file, and what is none, is written as a shell's ">"
// writes it. A name that leads to one of this process's descriptors stands for that
// descriptor.
// On failure false, and `error` gets the system's text.
bool write_output(const std::string& name, const output_text& text, std::string& error);

// The same for assembly with its directives; `input` is what the assembly lies in, if it
// is a file.
bool write_output(const std::string& name, const interlisted_text& text,
                  const std::optional<assembly::text_file>& input, std::string& error);

}  // namespace gas2interlist
