// Takes symbols apart just far enough to find their declarations by name; they are not
// decoded.
#include "assembly/symbol.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "assembly/operand.h"

namespace assembly {
namespace {

// The symbol without the marks of clones and parts: "f.constprop.0" is f.
std::string_view base_symbol(std::string_view symbol) {
    const std::size_t dot = symbol.find('.', 1);
    return symbol.substr(0, dot);
}

// source-name ::= number letters
// Nothing when `rest` holds fewer letters.
std::optional<std::string_view> take_source_name(std::string_view& rest) {
    std::size_t length = 0;
    const auto [end, failure] = std::from_chars(rest.data(), rest.data() + rest.size(), length);
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    if (failure != std::errc() || length > rest.size()) {
        return std::nullopt;
    }
    const std::string_view name = rest.substr(0, length);
    rest.remove_prefix(length);
    return name;
}

// substitution ::= S (lower-case-letter | [digits-and-capitals] "_")
bool skip_substitution(std::string_view& rest) {
    const bool is_short = rest.size() > 1 && rest[1] >= 'a' && rest[1] <= 'z';
    const std::size_t length = is_short ? 2 : rest.find('_') + 1;
    rest.remove_prefix(length);
    return length != 0;
}

// literal ::= L (lower-case-letter | source-name) value E
bool skip_literal(std::string_view& rest) {
    rest.remove_prefix(1);
    if (!rest.empty() && is_digit(rest.front()) && !take_source_name(rest)) {
        return false;
    }
    const std::size_t end = rest.find('E');
    if (end == std::string_view::npos) {
        return false;
    }
    rest.remove_prefix(end + 1);
    return true;
}

// Skips the template arguments at the front of a mangled name. False when they are more
// involved than is worth following.
bool skip_arguments(std::string_view& rest) {
    std::size_t depth = 0;
    while (!rest.empty()) {
        const char c = rest.front();
        bool is_understood = true;
        if (is_digit(c)) {
            is_understood = take_source_name(rest).has_value();
        } else if (c == 'S') {
            is_understood = skip_substitution(rest);
        } else if (c == 'L') {
            is_understood = skip_literal(rest);
        } else {
            depth += std::string_view("INJXF").find(c) != std::string_view::npos ? 1 : 0;
            depth -= c == 'E' ? 1 : 0;
            rest.remove_prefix(1);
        }
        if (!is_understood || depth == 0) {
            return is_understood;
        }
    }
    return false;
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
            const std::optional<std::string_view> taken = take_source_name(rest);
            if (!taken || !is_nested) {
                return taken.value_or(std::string_view());
            }
            name = *taken;
        } else if (c == 'I' || c == 'S') {
            if (!(c == 'I' ? skip_arguments(rest) : skip_substitution(rest))) {
                return {};
            }
        } else if (std::string_view("NLKVrRO").find(c) != std::string_view::npos) {
            rest.remove_prefix(1);
        } else {
            // Constructors and destructors are declared by their class's name.
            return is_nested && (c == 'E' || c == 'C' || c == 'D') ? name : std::string_view();
        }
    }
    return name;
}

}  // namespace assembly
