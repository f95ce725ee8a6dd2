// Scheme 1's builtin types: their codes and texts. Called by the types.
#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "demangle/scheme1/state.h"

namespace scheme1 {

struct builtin_type {
    std::string_view code;  // a letter, or "D" and a letter
    short_text text;
    names_mode mode;
};

inline constexpr builtin_type builtin_types[] = {
    {"a", "signed char", always},   {"b", "bool", always},
    {"c", "char", always},          {"d", "double", always},
    {"e", "long double", always},   {"f", "float", always},
    {"g", "__float128", extended},  {"h", "unsigned char", always},
    {"i", "int", always},           {"j", "unsigned int", always},
    {"l", "long", always},          {"m", "unsigned long", always},
    {"n", "__int128", always},      {"o", "unsigned __int128", always},
    {"s", "short", always},         {"t", "unsigned short", always},
    {"v", "void", always},          {"w", "wchar_t", always},
    {"x", "long long", always},     {"y", "unsigned long long", always},
    {"Da", "auto", always},         {"Dc", "decltype(auto)", always},
    {"Dd", "_Decimal64", extended}, {"De", "_Decimal128", extended},
    {"Df", "_Decimal32", extended}, {"Dh", "_Float16", extended},
    {"Di", "char32_t", always},     {"Dn", "std::nullptr_t", always},
    {"DN", "__nullptr", always},    {"Ds", "char16_t", always},
    {"Du", "char8_t", always},
};

// Rows by the last letter of the code, for codes of one length, 1-based; 0 for none.
constexpr std::array<unsigned char, 256> index_builtin_types(std::size_t code_length) {
    std::array<unsigned char, 256> index{};
    for (std::size_t row = 0; row < std::size(builtin_types); ++row) {
        if (builtin_types[row].code.size() == code_length) {
            index[static_cast<unsigned char>(builtin_types[row].code.back())] =
                static_cast<unsigned char>(row + 1);
        }
    }
    return index;
}

// The type whose code has `code_length` letters and ends in this one; null for none.
template <std::size_t code_length>
const builtin_type* find_builtin_type(char letter, const eabi_decode_state* state) {
    static constexpr std::array index = index_builtin_types(code_length);
    const unsigned row = index[static_cast<unsigned char>(letter)];
    return row != 0 && is_open(builtin_types[row - 1].mode, state) ? &builtin_types[row - 1]
                                                                   : nullptr;
}

}  // namespace scheme1
