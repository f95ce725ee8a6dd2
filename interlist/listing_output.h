// Writing to the listing. A write that fails, at whatever time, ends the
// program with status 1: a short listing is never reported as success. Used by
// the listing pass and the formatting of C lines.
#pragma once

#include <cstddef>
#include <string_view>

// Writes `text` to LIST.
void write_listing(std::string_view text);

// Writes `count` times the character `fill` to LIST.
void fill_listing(char fill, std::size_t count);
