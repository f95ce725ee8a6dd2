// The page without its data, dist/page.html of the folder page/, built into the program.
#pragma once

#include <string_view>

namespace clist::page {

std::string_view page_template();

}  // namespace clist::page
