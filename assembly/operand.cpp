// Reads the parts of assembly lines, alike for every target.
#include "assembly/operand.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace assembly {

// escape ::= "\" (b | f | n | r | t | digit [digit [digit]] | x hex-digits | any)
// Reads what follows the backslash. As in the assembler, only the last two hex
// digits count.
static char take_escape(std::string_view& rest) {
    const char c = rest.front();
    rest.remove_prefix(1);
    const auto number = [&rest](std::size_t most, unsigned base) {
        unsigned value = 0;
        std::size_t taken = 0;
        while (taken < most && taken < rest.size()) {
            unsigned digit = 0;
            const char* at = rest.data() + taken;
            // 8 and 9 are octal digits, too.
            if (std::from_chars(at, at + 1, digit, static_cast<int>(std::max(base, 10U))).ec !=
                std::errc()) {
                break;
            }
            value = (value * base + digit) & 0xffU;
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
    if (!is_digit(c)) {
        return c;
    }
    rest = std::string_view(rest.data() - 1, rest.size() + 1);
    return number(3, 8);
}

std::optional<std::uint64_t> take_value(std::string_view& rest) {
    skip_blanks(rest);
    const bool is_negative = rest.starts_with('-');
    if (is_negative) {
        rest.remove_prefix(1);
        skip_blanks(rest);
    }
    int base = 10;
    if (rest.size() > 2 && rest[0] == '0' && (rest[1] | 0x20) == 'x') {
        base = 16;
        rest.remove_prefix(2);
    } else if (rest.size() > 2 && rest[0] == '0' && (rest[1] | 0x20) == 'b') {
        base = 2;
        rest.remove_prefix(2);
    } else if (rest.size() > 1 && rest[0] == '0' && is_digit(rest[1])) {
        base = 8;
    }
    std::uint64_t value = 0;
    const auto [end, failure] =
        std::from_chars(rest.data(), rest.data() + rest.size(), value, base);
    if (failure == std::errc::invalid_argument) {
        return std::nullopt;
    }
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    return is_negative ? ~value + 1 : value;
}

bool append_string(std::string_view& rest, std::string& into) {
    skip_blanks(rest);
    if (rest.empty() || rest.front() != '"') {
        return false;
    }
    rest.remove_prefix(1);
    while (true) {
        const std::size_t quote = rest.find('"');
        const std::size_t plain = std::min(rest.substr(0, quote).find('\\'), quote);
        if (plain == std::string_view::npos) {
            return false;
        }
        into += rest.substr(0, plain);
        const bool is_end = rest[plain] == '"';
        rest.remove_prefix(plain + 1);
        if (is_end) {
            return true;
        }
        if (!rest.empty()) {
            into += take_escape(rest);
        }
    }
}

std::optional<std::string> take_string(std::string_view& rest) {
    std::string value;
    return append_string(rest, value) ? std::optional(std::move(value)) : std::nullopt;
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
