// Escapes text as JSON asks for it.
#include "clist/forms/json.h"

#include <cstddef>

namespace clist {

// How many bytes the UTF-8 character at the front of `text` has; 0 when there is none.
static std::size_t character_size(std::string_view text) {
    const auto byte = [text](std::size_t at) {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
    };
    const auto goes_on = [&](std::size_t at) { return (byte(at) & 0xc0U) == 0x80U; };
    const unsigned first = byte(0);
    const unsigned second = byte(1);
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xc2 && first <= 0xdf) {
        return goes_on(1) ? 2 : 0;
    }
    if ((first & 0xf0U) == 0xe0) {
        // Neither longer than it need be nor half of a surrogate pair.
        const bool fits = (first != 0xe0 || second >= 0xa0) && (first != 0xed || second <= 0x9f);
        return fits && goes_on(1) && goes_on(2) ? 3 : 0;
    }
    if (first >= 0xf0 && first <= 0xf4) {
        const bool fits = (first != 0xf0 || second >= 0x90) && (first != 0xf4 || second <= 0x8f);
        return fits && goes_on(1) && goes_on(2) && goes_on(3) ? 4 : 0;
    }
    return 0;
}

static void append_character(std::string& text, std::string_view character) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto c = static_cast<unsigned char>(character.front());
    switch (c) {
        case '"':
        case '\\':
            text += '\\';
            text += static_cast<char>(c);
            return;
        case '\n':
            text += "\\n";
            return;
        case '\t':
            text += "\\t";
            return;
        default:
            break;
    }
    if (c < 0x20 || c == 0x7f) {
        text += "\\u00";
        text += digits[c >> 4U];
        text += digits[c & 15U];
        return;
    }
    text += character;
}

void append_json(std::string& text, std::string_view value) {
    text += '"';
    while (!value.empty()) {
        // Most of it is as it is.
        std::size_t plain = 0;
        while (plain < value.size() && value[plain] >= ' ' && value[plain] < '\x7f' &&
               value[plain] != '"' && value[plain] != '\\') {
            ++plain;
        }
        text += value.substr(0, plain);
        value.remove_prefix(plain);
        if (value.empty()) {
            break;
        }
        const std::size_t size = character_size(value);
        if (size == 0) {
            text += "\\ufffd";
        } else {
            append_character(text, value.substr(0, size));
        }
        value.remove_prefix(size == 0 ? 1 : size);
    }
    text += '"';
}

}  // namespace clist
