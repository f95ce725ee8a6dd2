// What symdecode knows of each mangling scheme: how its names begin and end in a text, and
// how one is decoded. A scheme is a row of name_schemes and the file with the row's
// routines.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "symdecode/names.h"

// A word of a run of text: its letters, digits and underscores.
struct run_word {
    std::string_view run;
    std::size_t start = 0;
    std::size_t end = 0;
    bool plain = true;  // the run holds nothing but words
};

struct name_scheme {
    int number;   // as --scheme has it
    char second;  // every name holds an underscore and this behind it
    // The library's call for it.
    void (*decode)(const char*, char*, std::size_t, int*, int*, std::size_t*, int);
    bool has_platform_style;  // the platform's own demangler knows the scheme, too
    // Where a name begins in the word at `start` of `run`, npos where none of this scheme
    // can: the next row is then asked.
    std::size_t (*begin_in)(std::string_view run, std::size_t start);
    // The name that begins there, in a text, and as a symbol of its own.
    found_name (*in_word)(name_decoder& decoder, const name_scheme& scheme, const run_word& part,
                          std::size_t begin);
    found_name (*as_symbol)(name_decoder& decoder, const name_scheme& scheme,
                            std::string_view symbol, std::size_t begin);
};

// In the order in which they are asked.
std::span<const name_scheme> name_schemes();

// Decodes exactly `name`. Empty when it is no valid name, or reads as it is written.
std::string_view decode(name_decoder& decoder, const name_scheme& scheme, std::string_view name);

namespace scheme0 {
std::size_t begin_in(std::string_view run, std::size_t start);
found_name in_word(name_decoder& decoder, const name_scheme& scheme, const run_word& part,
                   std::size_t begin);
found_name as_symbol(name_decoder& decoder, const name_scheme& scheme, std::string_view symbol,
                     std::size_t begin);
}  // namespace scheme0

namespace scheme1 {
std::size_t begin_in(std::string_view run, std::size_t start);
found_name in_word(name_decoder& decoder, const name_scheme& scheme, const run_word& part,
                   std::size_t begin);
found_name as_symbol(name_decoder& decoder, const name_scheme& scheme, std::string_view symbol,
                     std::size_t begin);
}  // namespace scheme1
