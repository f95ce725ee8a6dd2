// Splits text into words by the rules of who else would read it.
#include "clist/words.h"

#include <algorithm>
#include <cstddef>

namespace clist {

std::vector<std::string> split_blanks(std::string_view text) {
    constexpr std::string_view blanks = " \t\n";
    std::vector<std::string> words;
    for (std::size_t at = text.find_first_not_of(blanks); at != std::string_view::npos;
         at = text.find_first_not_of(blanks, at)) {
        const std::size_t end = std::min(text.find_first_of(blanks, at), text.size());
        words.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

std::vector<std::string> split_response(std::string_view text) {
    std::vector<std::string> words;
    bool in_word = false;
    char quote = 0;
    const auto put = [&](char byte) {
        if (!in_word) {
            words.emplace_back();
            in_word = true;
        }
        words.back() += byte;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        if (byte == '\\' && i + 1 < text.size()) {
            put(text[++i]);
        } else if (quote != 0) {
            if (byte == quote) {
                quote = 0;
            } else {
                put(byte);
            }
        } else if (byte == '"' || byte == '\'') {
            quote = byte;
            if (!in_word) {
                words.emplace_back();
                in_word = true;
            }
        } else if (byte == ' ' || (byte >= '\t' && byte <= '\r')) {
            in_word = false;
        } else {
            put(byte);
        }
    }
    return words;
}

std::optional<std::vector<std::string>> split_command(std::string_view text) {
    constexpr std::string_view escaped_in_quotes = "$`\"\\\n";
    std::vector<std::string> words;
    bool in_word = false;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        const bool is_blank = byte == ' ' || byte == '\t' || byte == '\n';
        if (quote == 0 && is_blank) {
            in_word = false;
            continue;
        }
        if (!in_word) {
            words.emplace_back();
            in_word = true;
        }
        const bool is_escape =
            byte == '\\' && quote != '\'' && i + 1 < text.size() &&
            (quote == 0 || escaped_in_quotes.find(text[i + 1]) != std::string_view::npos);
        if (is_escape) {
            if (text[++i] != '\n') {
                words.back() += text[i];
            }
        } else if (byte == quote) {
            quote = 0;
        } else if (quote == 0 && (byte == '"' || byte == '\'')) {
            quote = byte;
        } else {
            words.back() += byte;
        }
    }
    return quote == 0 ? std::optional(std::move(words)) : std::nullopt;
}

}  // namespace clist
