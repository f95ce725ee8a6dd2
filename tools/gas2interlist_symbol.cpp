// Takes symbols apart just far enough to find their declarations by name; they are not
// decoded.
#include "tools/gas2interlist_symbol.h"

#include <algorithm>
#include <charconv>

#include "tools/gas2interlist_operand.h"

namespace gas2interlist {
namespace {

// The symbol without the marks of clones and parts: "f.constprop.0" is f.
std::string_view base_symbol(std::string_view symbol) {
    const std::size_t dot = symbol.find('.', 1);
    return symbol.substr(0, dot);
}

// Skips the template arguments at the front of a mangled name.
void skip_arguments(std::string_view& rest) {
    std::size_t depth = 0;
    while (!rest.empty()) {
        const char c = rest.front();
        std::size_t length = 1;
        if (is_digit(c)) {
            const auto [end, failure] =
                std::from_chars(rest.data(), rest.data() + rest.size(), length);
            length = failure == std::errc() ? length : 1;
            const auto digits = static_cast<std::size_t>(end - rest.data());
            length = std::min(length, rest.size()) + digits;
        } else if (c == 'I' || c == 'N' || c == 'J' || c == 'X' || c == 'L' || c == 'F') {
            ++depth;
        } else if (c == 'E') {
            --depth;
        }
        rest.remove_prefix(std::min(length, rest.size()));
        if (depth == 0) {
            return;
        }
    }
}

}  // namespace

std::size_t part_mark(std::string_view symbol) {
    for (const std::string_view mark : {".cold", ".__part"}) {
        const std::size_t at = symbol.find(mark, 1);
        const std::size_t end = at + mark.size();
        if (at != std::string_view::npos && (end == symbol.size() || symbol[end] == '.')) {
            return at;
        }
    }
    return std::string_view::npos;
}

std::string_view declared_name(std::string_view symbol) {
    std::string_view rest = base_symbol(symbol);
    if (rest.starts_with("__Z")) {
        rest.remove_prefix(1);
    }
    if (!rest.starts_with("_Z")) {
        return rest;
    }
    rest.remove_prefix(2);
    const bool is_nested = rest.starts_with('N');
    std::string_view name;
    while (!rest.empty()) {
        const char c = rest.front();
        if (is_digit(c)) {
            std::size_t length = 0;
            const auto [end, failure] =
                std::from_chars(rest.data(), rest.data() + rest.size(), length);
            rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
            if (failure != std::errc() || length > rest.size()) {
                return {};
            }
            name = rest.substr(0, length);
            rest.remove_prefix(length);
            if (!is_nested) {
                return name;
            }
        } else if (c == 'I') {
            skip_arguments(rest);
        } else if (c == 'S' && rest.size() > 1) {
            // A substitution: St, Sa, ... or S [0-9A-Z]* _
            const std::size_t length = rest[1] >= 'a' && rest[1] <= 'z' ? 2 : rest.find('_') + 1;
            if (length == 0) {
                return {};
            }
            rest.remove_prefix(length);
        } else if (std::string_view("NLKVrRO").find(c) != std::string_view::npos) {
            rest.remove_prefix(1);
        } else {
            // Constructors and destructors are declared by their class's name.
            return is_nested && (c == 'E' || c == 'C' || c == 'D') ? name : std::string_view();
        }
    }
    return name;
}

}  // namespace gas2interlist
