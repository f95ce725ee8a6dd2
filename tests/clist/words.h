// Command lines as texts, for tables of cases: words parted by blanks.
#pragma once

#include <sstream>
#include <string>
#include <vector>

inline std::vector<std::string> words_in(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

inline std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text.append(text.empty() ? "" : " ").append(word);
    }
    return text;
}
