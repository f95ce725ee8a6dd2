// Decimal numbers as options and directives carry them.
#pragma once

#include <optional>
#include <string_view>

// The number at the start of `text`: white space, an optional sign, digits;
// what follows is ignored. Values beyond int become its largest or smallest
// one. Nothing when there is no digit where one must stand.
std::optional<int> leading_number(std::string_view text);
