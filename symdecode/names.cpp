// Finds and decodes mangled names in short texts: which scheme a word may belong to, and
// what that scheme's own file makes of it. Called by filter for text and for symbols that
// are given one by one.
#include "symdecode/names.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include "demangle/decode.h"
#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "symdecode/bytes.h"
#include "symdecode/schemes.h"

// Scheme 1 is known by its first letters, and what it does not know is left to scheme 0.
static constexpr name_scheme schemes[] = {
    {1, 'Z', decode_identifier_eabi, true, scheme1::begin_in, scheme1::in_word, scheme1::as_symbol},
    {0, '_', decode_identifier, false, scheme0::begin_in, scheme0::in_word, scheme0::as_symbol},
};

std::span<const name_scheme> name_schemes() {
    return schemes;
}

bool is_scheme(int number) {
    return std::ranges::any_of(schemes,
                               [=](const name_scheme& row) { return row.number == number; });
}

bool may_follow_underscore(char byte) {
    return std::ranges::any_of(schemes, [=](const name_scheme& row) { return row.second == byte; });
}

text_run run_around(std::string_view text, std::size_t at, std::size_t floor) {
    text_run run{.begin = at, .end = at};
    byte_class seen = outside;
    while (run.begin > floor && class_of(text[run.begin - 1]) != outside) {
        --run.begin;
        seen |= class_of(text[run.begin]);
    }
    while (run.end < text.size() && class_of(text[run.end]) != outside) {
        seen |= class_of(text[run.end]);
        ++run.end;
    }
    run.plain = (seen & (joint | high)) == 0;
    return run;
}

// What the platform makes of the name at hand. Empty when it is no valid name to it.
static std::string_view decode_as_platform(name_decoder& decoder) {
    constexpr int exhausted = -1;
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(decoder.name.c_str(), nullptr, nullptr, &status), &std::free);
    if (status == exhausted) {
        throw std::bad_alloc();
    }
    decoder.platform_text.assign(text != nullptr ? text.get() : "");
    return decoder.platform_text;
}

std::string_view decode(name_decoder& decoder, const name_scheme& scheme, std::string_view name) {
    if (name.size() >= longest_name) {
        return {};
    }
    decoder.name.assign(name);
    if (decoder.settings.style == name_style::gnu && scheme.has_platform_style) {
        return decode_as_platform(decoder);
    }
    decode_extended_names = decoder.settings.extended ? 1 : 0;
    if (decoder.buffer.empty()) {
        decoder.buffer.resize(4096);
    }
    for (;;) {
        int error = 0;
        int overflow = 0;
        std::size_t needed = 0;
        scheme.decode(decoder.name.c_str(), decoder.buffer.data(), decoder.buffer.size(), &error,
                      &overflow, &needed, decoder.settings.names_only ? 0 : 1);
        if (error == 0) {
            const std::string_view text = decoder.buffer.c_str();
            return text == name ? std::string_view{} : text;
        }
        if (overflow == 0 || needed <= decoder.buffer.size()) {
            return {};
        }
        decoder.buffer.resize(needed);
    }
}

// A scheme that may have a name in the word at `start`, and where it begins.
struct candidate {
    const name_scheme* scheme = nullptr;
    std::size_t begin = 0;
};

static candidate find_scheme(const name_decoder& decoder, std::string_view run, std::size_t start) {
    for (const name_scheme& scheme : schemes) {
        if (decoder.settings.scheme != scheme_auto && decoder.settings.scheme != scheme.number) {
            continue;
        }
        const std::size_t begin = scheme.begin_in(run, start);
        if (begin != std::string_view::npos) {
            return {&scheme, begin};
        }
    }
    return {};
}

found_name find_name(name_decoder& decoder, std::string_view run, bool plain, std::size_t from) {
    std::size_t start = from;
    while (start < run.size()) {
        if (class_of(run[start]) != word) {
            ++start;
            continue;
        }
        const std::size_t word_end = plain ? run.size() : skip_classes(run, start, word);
        if (const auto [scheme, begin] = find_scheme(decoder, run, start); scheme != nullptr) {
            const found_name name =
                scheme->in_word(decoder, *scheme, {run, start, word_end, plain}, begin);
            if (name.found) {
                return name;
            }
        }
        start = word_end;
    }
    return {};
}

found_name find_whole_name(name_decoder& decoder, std::string_view symbol) {
    const std::string_view name = symbol.substr(0, symbol.find('@'));
    if (name.find('\0') != std::string_view::npos) {
        return {};
    }
    const auto [scheme, begin] = find_scheme(decoder, name, 0);
    return scheme != nullptr ? scheme->as_symbol(decoder, *scheme, name, begin) : found_name{};
}
