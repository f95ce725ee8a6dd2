// What goes wrong, in the interlister's own words: file problems, text beyond
// the limit, fatal and terminating signals. Used by every other concern.
#pragma once

#include <string_view>

#include "interlist/state.h"

// Ends the program. What was written to the listing so far is left on disk.
[[noreturn]] void end_program(int status);

// Writes ">> WARNING: MESSAGE 'NAME': SYSTEM ERROR" to standard error, with the
// text of errno as it is at the call, and ends the program with status 1.
// --no_warnings has no say here.
[[noreturn]] void file_error(const char* message, const char* name);

// Ends the program behind what was asked for on standard output: with status 0, or like
// file_error() when it could not be written.
[[noreturn]] void end_report();

// The same line as file_error's, but the run goes on. Silent under --no_warnings.
void file_warn(const char* message, const char* name);

// Says on standard output that a text exceeds the buffers' limit and ends the
// program with status 1.
[[noreturn]] void limit_error();

// Copies outside text into one of the buffers, or ends the program like
// limit_error() when it is longer than a buffer holds.
void copy_text(char (&buffer)[buffer_size], std::string_view text);

// The handler of every signal that is caught: reports the signal on standard
// error, leaves the listing on disk as far as it got, and ends the program with
// status 2, at once and without the exit handlers. Never waits, whatever it has
// interrupted.
[[noreturn]] void signal_handler(int signal_number);
