// A page as a file: the page's own part, which is built in, and the packed data in it. What
// the chunks hold is told in page/README.md.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "clist/output.h"

namespace clist::page {

struct chunk {
    std::string name;  // letters, digits and '/'
    std::string_view text;
};

// The line that a chunk is in a page.
std::string packed(const chunk& it);

// Writes a page of chunks, packed side by side by as many threads as the machine has cores
// for, and of lines that are packed already.
void write(std::span<const chunk> chunks, std::span<const std::string_view> lines, output& to);

// What a page weighs without data.
std::size_t own_size();

// A line of a page that holds a chunk begins with these; the name follows.
inline constexpr std::string_view line_head = R"(<script type="application/gzip" data-chunk=")";

}  // namespace clist::page
