// Scans over tokens of C and C++ without a look at what they mean.
#include "assembly/token.h"

#include <algorithm>
#include <string>

namespace assembly {

bool is_spliced(std::string_view text, std::size_t at) {
    if (at > 0 && text[at - 1] == '\r') {
        --at;
    }
    return at > 0 && text[at - 1] == '\\';
}

std::size_t end_of_block_comment(std::string_view text, std::size_t at) {
    const std::size_t end = text.find("*/", at + 2);
    return end == std::string_view::npos ? text.size() : end + 2;
}

std::size_t end_of_logical_line(std::string_view text, std::size_t at) {
    std::size_t end = text.find('\n', at);
    while (end != std::string_view::npos && is_spliced(text, end)) {
        end = text.find('\n', end + 1);
    }
    return std::min(end, text.size());
}

std::size_t end_of_literal(std::string_view text, std::size_t at) {
    const char quote = text[at];
    for (++at; at < text.size() && text[at] != quote; ++at) {
        if (text[at] == '\n') {
            return at;
        }
        if (text[at] == '\\') {
            at += text.substr(at + 1).starts_with("\r\n") ? 2 : 1;
        }
    }
    return std::min(at + 1, text.size());
}

std::size_t end_of_raw_string(std::string_view text, std::size_t at) {
    constexpr std::size_t longest_delimiter = 16;
    const std::size_t delimiter = text.substr(at + 1, longest_delimiter + 1).find('(');
    if (delimiter == std::string_view::npos) {
        return end_of_literal(text, at);
    }
    std::string close(1, ')');
    close += text.substr(at + 1, delimiter);
    close += '"';
    const std::size_t end = text.find(close, at + delimiter + 2);
    return end == std::string_view::npos ? text.size() : end + close.size();
}

std::size_t end_of_number(std::string_view text, std::size_t at) {
    for (++at; at < text.size(); ++at) {
        const char c = text[at];
        const bool is_separator = c == '\'' && at + 1 < text.size() && is_word_part(text[at + 1]);
        const bool is_sign = (c == '+' || c == '-') &&
                             std::string_view("eEpP").find(text[at - 1]) != std::string_view::npos;
        if (!is_word_part(c) && c != '.' && !is_separator && !is_sign) {
            break;
        }
    }
    return at;
}

}  // namespace assembly
