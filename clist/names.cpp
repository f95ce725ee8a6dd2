// Finds mangled names in assembly and has each decoded once.
#include "clist/names.h"

#include <cstddef>
#include <cstring>

#include "assembly/operand.h"
#include "demangle/decode_id.h"

namespace clist {

// "_Z", or "__Z" where every symbol has one more underscore.
static std::size_t prefix_size(std::string_view symbol) {
    return symbol.starts_with("_Z") ? 2 : symbol.starts_with("__Z") ? 3 : 0;
}

static std::string decode(const std::string& name, bool is_decorated) {
    decode_mangle_scheme = 1;
    decode_extended_names = 1;
    std::string text(name.size() * 4 + 256, '\0');
    int is_error = 0;
    int is_overflow = 0;
    std::size_t needed = 0;
    const auto attempt = [&] {
        decode_by_scheme(name.c_str(), text.data(), text.size(), &is_error, &is_overflow, &needed,
                         is_decorated ? 1 : 0);
    };
    attempt();
    if (is_overflow != 0) {
        text.resize(needed);
        attempt();
    }
    text.resize(is_error != 0 ? 0 : std::strlen(text.c_str()));
    return text;
}

std::string_view name_table::readable(std::string_view symbol) {
    const std::size_t prefix = is_mangled_ ? 0 : prefix_size(symbol);
    if (prefix == 0) {
        return symbol;
    }
    const auto [it, is_new] = known_.try_emplace(symbol);
    if (is_new) {
        // What stands behind a name of this kind says how it is reached, or which copy it is.
        const std::size_t end = symbol.find('@');
        it->second = decode(std::string(symbol.substr(prefix - 2, end - (prefix - 2))), true);
        if (it->second.empty()) {
            it->second = symbol;
        } else if (end != std::string_view::npos) {
            it->second += symbol.substr(end);
        }
    }
    return it->second;
}

std::string name_table::plain(std::string_view symbol) {
    const std::size_t prefix = prefix_size(symbol);
    std::string text =
        prefix == 0 ? std::string() : decode(std::string(symbol.substr(prefix - 2)), false);
    return text.empty() ? std::string(symbol) : text;
}

// Of the two letters the second is by far the rarer one.
std::size_t name_table::find_mangled(std::string_view text, std::size_t from) {
    for (std::size_t at = text.find('Z', from + 1); at != std::string_view::npos;
         at = text.find('Z', at + 1)) {
        if (text[at - 1] == '_') {
            return at - 1;
        }
    }
    return std::string_view::npos;
}

void name_table::append_readable(std::string_view text, std::size_t first, std::string& line) {
    std::size_t copied = 0;
    for (std::size_t at = first; at != std::string_view::npos; at = find_mangled(text, at)) {
        std::size_t begin = at;
        while (begin > copied && assembly::is_symbol_character(text[begin - 1]) &&
               text[begin - 1] != '$') {
            --begin;
        }
        std::size_t end = at;
        while (end < text.size() && assembly::is_symbol_character(text[end])) {
            ++end;
        }
        line += text.substr(copied, begin - copied);
        line += readable(text.substr(begin, end - begin));
        copied = at = end;
    }
    line += text.substr(copied);
}

}  // namespace clist
