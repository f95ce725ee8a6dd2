// The symbols that assembly lines refer to.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
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
    std::size_t size = 0;
    while (size != line.size() && !assembly::is_blank(line[size])) {
        ++size;
    }
    return line.substr(size);
}

inline const char* end_of_symbol(const char* at, const char* end) {
    while (at != end && assembly::is_symbol_character(*at)) {
        ++at;
    }
    return at;
}

// Calls `visit` with the label of this name as it stands in an operand.
void visit_label(const assembly::label_index& labels, std::string_view name, const auto& visit) {
    const assembly::label* found = labels.find(name);
    if (found == nullptr) {
        // "$f" is the address of f for some, "f@PLT" a way to reach it.
        std::string_view bare = name.substr(0, name.find('@'));
        bare.remove_prefix(bare.starts_with('$') ? 1 : 0);
        found = bare.empty() || bare == name ? nullptr : labels.find(bare);
    }
    if (found != nullptr) {
        visit(*found);
    }
}

// Whether the operands of the line of code from `begin` to `end` may name a label: behind the
// first letter of the line some letter begins a word that no per cent sign makes a register's.
// Most operands of some targets are registers and numbers alone; this tells sixteen characters
// at once.
inline bool may_have_names(std::string_view text, std::size_t begin, std::size_t end) {
    using block [[gnu::vector_size(16)]] = unsigned char;
    static constexpr std::array<unsigned char, 32> counted = {
        255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255};
    for (std::size_t at = begin + 2; at < end; at += sizeof(block)) {
        if (at + sizeof(block) > text.size()) {
            return true;
        }
        block before;
        block here;
        block is_within;
        std::memcpy(&before, text.data() + at - 1, sizeof before);
        std::memcpy(&here, text.data() + at, sizeof here);
        const std::size_t size = std::min(end - at, sizeof(block));
        std::memcpy(&is_within, counted.data() + sizeof(block) - size, sizeof is_within);
        const auto is_letter = (here > ':') | (here == '.') | (here == '"');
        const auto goes_on =
            (((before | 0x20) - 'a') < 26) | ((before - '0') < 10) | (before == '%');
        const auto found = is_letter & ~goes_on & is_within;
        std::array<std::uint64_t, 2> halves{};
        std::memcpy(halves.data(), &found, sizeof found);
        if ((halves[0] | halves[1]) != 0) {
            return true;
        }
    }
    return false;
}

// Calls `visit` with each label that a stretch of assembly names. What stands behind a per
// cent sign is a register.
void for_each_label(const assembly::label_index& labels, std::string_view text, const auto& visit) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const char first = *at;
        if (first == '%') {
            at = end_of_symbol(at + 1, end);
        } else if (first == '"') {
            const char* const begin = at + 1;
            at = std::find(begin, end, '"');
            const assembly::label* const found =
                at == begin ? nullptr : labels.find({begin, static_cast<std::size_t>(at - begin)});
            if (found != nullptr) {
                visit(*found);
            }
            at += at != end ? 1 : 0;
        } else if (assembly::is_symbol_character(first)) {
            const char* const begin = at;
            at = end_of_symbol(begin + 1, end);
            const bool is_number = assembly::is_digit(first) || (first == '$' && begin + 1 != end &&
                                                                 assembly::is_digit(begin[1]));
            if (!is_number) {
                visit_label(labels, {begin, static_cast<std::size_t>(at - begin)}, visit);
            }
        } else {
            ++at;
        }
    }
}

}  // namespace clist
