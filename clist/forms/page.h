// Pages for a browser (--html): one of all inputs, and one that joins several pages.
#pragma once

#include <span>
#include <string>

#include "clist/output.h"

namespace clist {

// Whether the program was built with the page.
bool has_page();

// A page on disk, and where it lies as seen from the index: relative, as links have it.
struct joined_page {
    std::string file;
    std::string address;
};

// Writes one page of all these where that stays under 64 MB, and otherwise a start page that
// lists all their functions and files and leads to them. Nothing is read but the pages.
// False after an error, which it has said; that the output fails it leaves to the caller.
bool join_pages(std::span<const joined_page> pages, const std::string& title, output& to);

}  // namespace clist
