// The words of C and C++ by which the outline of a source tells what a declaration or a
// statement is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace assembly {

// What a word may be in a declaration or statement; several at once.
enum word_kind : std::uint16_t {
    control_word = 1,
    scope_word = 2,
    attribute_word = 4,  // its parentheses are no parameter list
    trailing_word = 8,   // stands between a function's parameters and its body
    access_word = 16,
    namespace_word = 32,
    operator_word = 64,
    template_word = 128,
    requires_word = 256,
};

struct known_word {
    std::string_view text;
    std::uint16_t kinds;
};

// In the order of their first letters.
inline constexpr auto known_words = std::to_array<known_word>({
    {"__asm__", attribute_word},
    {"__attribute", attribute_word},
    {"__attribute__", attribute_word},
    {"__declspec", attribute_word},
    {"__typeof__", attribute_word},
    {"alignas", attribute_word},
    {"case", control_word},
    {"catch", control_word},
    {"class", scope_word},
    {"co_return", control_word},
    {"co_yield", control_word},
    {"const", trailing_word},
    {"decltype", attribute_word},
    {"default", control_word},
    {"do", control_word},
    {"else", control_word},
    {"enum", scope_word},
    {"explicit", attribute_word},
    {"for", control_word},
    {"if", control_word},
    {"namespace", scope_word | namespace_word},
    {"noexcept", attribute_word | trailing_word},
    {"operator", operator_word},
    {"override", trailing_word},
    {"private", access_word},
    {"protected", access_word},
    {"public", access_word},
    {"requires", attribute_word | requires_word},
    {"return", control_word},
    {"signals", access_word},
    {"slots", access_word},
    {"struct", scope_word},
    {"switch", control_word},
    {"template", template_word},
    {"throw", control_word},
    {"try", trailing_word},
    {"union", scope_word},
    {"volatile", trailing_word},
    {"while", control_word},
});

// Where the words of each first character begin, one more for the last one's end.
inline constexpr auto first_known_word = [] {
    std::array<std::uint8_t, 'z' + 2> first{};
    for (std::size_t c = 0, word = 0; c < first.size(); ++c) {
        while (word < known_words.size() &&
               static_cast<std::size_t>(known_words[word].text[0]) < c) {
            ++word;
        }
        first[c] = static_cast<std::uint8_t>(word);
    }
    return first;
}();

// By first character: bit N is set where a known word has N characters. Few names pass.
inline constexpr auto known_lengths = [] {
    std::array<std::uint32_t, 'z' + 1> lengths{};
    for (const known_word& it : known_words) {
        lengths[static_cast<unsigned char>(it.text[0])] |= std::uint32_t{1} << it.text.size();
    }
    return lengths;
}();

// Every kind that a word is of; 0 for a name.
inline std::uint16_t kinds_of(std::string_view word) {
    const auto c = static_cast<unsigned char>(word[0]);
    constexpr std::size_t all_lengths = 32;
    if (c > 'z' || word.size() >= all_lengths || (known_lengths[c] >> word.size() & 1U) == 0) {
        return 0;
    }
    for (std::size_t i = first_known_word[c]; i < first_known_word[c + 1U]; ++i) {
        if (known_words[i].text == word) {
            return known_words[i].kinds;
        }
    }
    return 0;
}

}  // namespace assembly
