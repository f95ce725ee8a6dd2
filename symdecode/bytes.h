// What a byte is to a mangled name. Used where runs of text are cut out and where names
// are found in them.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// One bit each.
using byte_class = unsigned char;
inline constexpr byte_class outside = 0;  // ends every name
inline constexpr byte_class word = 1;     // letters, digits, "_"
inline constexpr byte_class joint = 2;    // "." and "$": a name may end before or begin after one
inline constexpr byte_class high = 4;     // a byte of a character beyond ASCII, the same

constexpr bool is_digit(char byte) {
    return byte >= '0' && byte <= '9';
}

inline constexpr std::array<byte_class, 256> byte_classes = [] {
    std::array<byte_class, 256> classes{};
    for (std::size_t byte = 0; byte < classes.size(); ++byte) {
        const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        if (letter || (byte >= '0' && byte <= '9') || byte == '_') {
            classes[byte] = word;
        } else if (byte == '.' || byte == '$') {
            classes[byte] = joint;
        } else if (byte >= 0x80) {
            classes[byte] = high;
        }
    }
    return classes;
}();

inline byte_class class_of(char byte) {
    return byte_classes[static_cast<unsigned char>(byte)];
}

// The first offset at or after `from` whose byte is of none of `classes`.
inline std::size_t skip_classes(std::string_view text, std::size_t from, byte_class classes) {
    while (from < text.size() && (class_of(text[from]) & classes) != 0) {
        ++from;
    }
    return from;
}

// A full stop behind a name ends a sentence; "$" is no better as a last byte.
inline std::size_t without_trailing_joints(std::string_view run, std::size_t begin,
                                           std::size_t end) {
    while (end > begin && class_of(run[end - 1]) == joint) {
        --end;
    }
    return end;
}

// A name may hold bytes beyond letters, digits and underscores only when it begins this
// close to the start of its run. Real ones do, and hostile text cannot make each of its
// words cost a try at all that follows.
inline constexpr std::size_t deepest_wide_name = 512;
