// Reading lines with the tool's own rules for line ends and end-of-file marks,
// and the one C file that is open at a time. Called by the listing pass and the
// function interlisting.
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

// Records the name that an .ifile directive announces; returns the record.
char* new_cfile(const char* name);

// Makes `name` the current C file, at line 1, unless it is that already. A file
// that cannot be opened is warned about and leaves none open; an empty name
// ends the program with status 1.
void open_cfile(const char* name);

// Warns of the current C file with `message` and leaves none open: as with a file that
// cannot be opened, its functions are listed without C lines from here on.
void give_up_cfile(const char* message);
