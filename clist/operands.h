// The symbols that assembly lines refer to.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "assembly/label_index.h"
#include "assembly/operand.h"

namespace clist {

// The line at an offset, without its end.
inline std::string_view line_at(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    return rest.substr(0, rest.find('\n'));
}

// What stands behind the first word of a line of code.
inline std::string_view operands_of(std::string_view line) {
    assembly::skip_blanks(line);
    const auto* const end = std::find_if(line.begin(), line.end(), assembly::is_blank);
    return line.substr(static_cast<std::size_t>(end - line.begin()));
}

// Calls `visit` with each label that a stretch of assembly names.
void for_each_label(const assembly::label_index& labels, std::string_view text, const auto& visit) {
    const auto look_up = [&](std::string_view name) {
        const assembly::label* found = name.empty() ? nullptr : labels.find(name);
        if (found != nullptr) {
            visit(*found);
        }
        return found != nullptr;
    };
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '"') {
            const std::size_t end = std::min(text.find('"', at + 1), text.size());
            look_up(text.substr(at + 1, end - at - 1));
            at = end + 1;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && assembly::is_symbol_character(text[end])) {
            ++end;
        }
        const bool is_register = at != 0 && text[at - 1] == '%';
        const std::string_view name = text.substr(at, end - at);
        // "$f" is the address of f for some, "f@PLT" a way to reach it.
        std::string_view bare = name.substr(0, name.find('@'));
        bare.remove_prefix(bare.starts_with('$') ? 1 : 0);
        const bool is_number = !bare.empty() && assembly::is_digit(bare.front());
        if (!is_register && !is_number && !look_up(name) && bare != name) {
            look_up(bare);
        }
        at = end + 1;
    }
}

}  // namespace clist
