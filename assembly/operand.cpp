// Reads the parts of assembly lines, alike for every target.
#include "assembly/operand.h"

#include <algorithm>
#include <charconv>

namespace assembly {
namespace {

bool is_symbol_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || is_digit(c) || c == '_' ||
           c == '.' || c == '$' || c == '@' || c == '?' || static_cast<unsigned char>(c) >= 0x80;
}

// escape ::= "\" (b | f | n | r | t | digit [digit [digit]] | x hex-digits | any)
// Reads what follows the backslash. As in the assembler, only the last two hex
// digits count.
char take_escape(std::string_view& rest) {
    const char c = rest.front();
    rest.remove_prefix(1);
    const auto number = [&rest](std::size_t most, int base) {
        unsigned value = 0;
        std::size_t taken = 0;
        while (taken < most && taken < rest.size()) {
            unsigned digit = 0;
            const char* at = rest.data() + taken;
            if (std::from_chars(at, at + 1, digit, base).ec != std::errc()) {
                break;
            }
            value = (value * static_cast<unsigned>(base) + digit) & 0xffU;
            ++taken;
        }
        rest.remove_prefix(taken);
        return static_cast<char>(value);
    };
    switch (c) {
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case 'x':
        case 'X':
            return number(rest.size(), 16);
        default:
            break;
    }
    if (c < '0' || c > '7') {
        return c;
    }
    rest = std::string_view(rest.data() - 1, rest.size() + 1);
    return number(3, 8);
}

}  // namespace

void skip_blanks(std::string_view& rest) {
    const std::size_t count = std::min(rest.find_first_not_of(" \t"), rest.size());
    rest.remove_prefix(count);
}

std::string_view take_word(std::string_view& rest) {
    const std::string_view word = rest.substr(0, rest.find_first_of(" \t\r;#"));
    rest.remove_prefix(word.size());
    return word;
}

std::optional<std::uint32_t> take_number(std::string_view& rest) {
    skip_blanks(rest);
    std::uint32_t value = 0;
    const auto [end, failure] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (failure != std::errc() || (end != rest.data() + rest.size() && is_symbol_character(*end))) {
        return std::nullopt;
    }
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return value;
}

std::optional<std::string> take_string(std::string_view& rest) {
    skip_blanks(rest);
    if (rest.empty() || rest.front() != '"') {
        return std::nullopt;
    }
    rest.remove_prefix(1);
    std::string value;
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == '"') {
            return value;
        }
        if (c != '\\') {
            value += c;
        } else if (!rest.empty()) {
            value += take_escape(rest);
        }
    }
    return std::nullopt;
}

std::string_view take_symbol(std::string_view& rest) {
    skip_blanks(rest);
    if (!rest.empty() && rest.front() == '"') {
        const std::size_t end = rest.find('"', 1);
        if (end == std::string_view::npos) {
            return {};
        }
        const std::string_view symbol = rest.substr(1, end - 1);
        rest.remove_prefix(end + 1);
        return symbol;
    }
    const auto* end = std::find_if_not(rest.begin(), rest.end(), is_symbol_character);
    const std::string_view symbol = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
    rest.remove_prefix(symbol.size());
    return symbol;
}

}  // namespace assembly
