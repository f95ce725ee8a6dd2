// Decimal numbers as options and directives carry them.
#include "interlist/number.h"

#include <algorithm>
#include <charconv>
#include <limits>

std::optional<int> leading_number(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;  // from_chars would take a second sign
        }
    }
    long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument) {
        return std::nullopt;
    }
    using limits = std::numeric_limits<int>;
    if (error == std::errc::result_out_of_range) {
        return negative ? limits::min() : limits::max();
    }
    value = negative ? -value : value;
    return static_cast<int>(std::clamp(value, static_cast<long long>(limits::min()),
                                       static_cast<long long>(limits::max())));
}
