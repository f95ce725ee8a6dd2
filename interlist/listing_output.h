// Writing to the listing. Text is gathered in one static buffer and written in
// large blocks. A write that fails, at whatever time, ends the program with
// status 1: a short listing is never reported as success. Used by the listing
// pass, the formatting of C lines, and every end of the program.
#pragma once

#include <cstddef>
#include <string_view>

// Adds `text` to the listing.
void write_listing(std::string_view text);

// Adds `count` times the character `fill`.
void fill_listing(char fill, std::size_t count);

// Writes what was gathered to LIST. False when it could not all be written.
bool flush_listing();

// Flushes LIST and closes it, if it is open.
void close_listing();
