// Reads lines as the tool understands them: with either line end, and without
// end-of-file marks. C files are read this way, and the assembly inside a function.
#pragma once

#include <string_view>

#include "interlist/input.h"

// The next character. CR LF comes back as one newline and Ctrl-Z is skipped;
// the character behind a carriage return is looked at as it stands in the file,
// so CR, Ctrl-Z, LF keeps its carriage return. A byte of value 255 comes back
// as -1, like the end of the file.
int mygetc(input_stream& stream);

// Reads a line into `buffer`, which holds `size` bytes: up to and including a
// newline, up to an end of file or a byte of value 255 (both dropped), or
// `size` - 1 characters. Returns `buffer`, or null when the end ended the read
// and nothing was stored. A read error ends the program with status 1.
char* myfgets(char* buffer, int size, input_stream& stream);

// The same, for callers that pass NULs on: all the text that was stored, which may
// hold NULs, and empty where myfgets returns null.
std::string_view myfgets_text(char* buffer, int size, input_stream& stream);
