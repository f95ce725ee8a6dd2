// Finds and decodes mangled names in short texts: where one may begin, where it ends,
// and which scheme it belongs to. Called by symdecode_filter for text and by main for
// symbols that are given one by one.
#include "symdecode/names.h"

#include <array>

#include "demangle/decode_id.h"

// What a byte is to a name, one bit each.
using byte_class = unsigned char;
static constexpr byte_class outside = 0;  // ends every name
static constexpr byte_class word = 1;     // letters, digits, "_"
static constexpr byte_class joint = 2;    // "." and "$": a name may end before or begin after one
static constexpr byte_class high = 4;     // a byte of a character beyond ASCII, the same

static constexpr std::array<byte_class, 256> make_byte_classes() {
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
}

static constexpr std::array<byte_class, 256> byte_classes = make_byte_classes();

static byte_class class_of(char byte) {
    return byte_classes[static_cast<unsigned char>(byte)];
}

static bool is_digit(char byte) {
    return byte >= '0' && byte <= '9';
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

// The first offset at or after `from` whose byte is of none of `classes`.
static std::size_t skip_classes(std::string_view text, std::size_t from, byte_class classes) {
    while (from < text.size() && (class_of(text[from]) & classes) != 0) {
        ++from;
    }
    return from;
}

// Decodes exactly `name`. Empty when it is no valid name, or reads as it is written.
static std::string_view decode(name_decoder& decoder, std::string_view name, int scheme) {
    if (name.size() >= longest_name) {
        return {};
    }
    decode_mangle_scheme = scheme;
    decode_extended_names = decoder.settings.extended ? 1 : 0;
    decoder.name.assign(name);
    if (decoder.buffer.empty()) {
        decoder.buffer.resize(4096);
    }
    for (;;) {
        int error = 0;
        int overflow = 0;
        std::size_t needed = 0;
        decode_by_scheme(decoder.name.c_str(), decoder.buffer.data(), decoder.buffer.size(), &error,
                         &overflow, &needed, decoder.settings.names_only ? 0 : 1);
        if (error == 0) {
            // Under scheme 0 the needed size may include room for more than the text.
            const std::string_view text = scheme == 1
                                              ? std::string_view(decoder.buffer.data(), needed - 1)
                                              : std::string_view(decoder.buffer.c_str());
            return text == name ? std::string_view{} : text;
        }
        if (overflow == 0 || needed <= decoder.buffer.size()) {
            return {};
        }
        decoder.buffer.resize(needed);
    }
}

// ---- scheme 1 ----

// Past the bytes of a name of scheme 1 that holds characters beyond ASCII. Quotation
// marks, dashes, blanks and whatever is not UTF-8 cannot be part of one.
static std::size_t end_of_wide_name(std::string_view run, std::size_t from) {
    while (from < run.size()) {
        const auto lead = static_cast<unsigned char>(run[from]);
        std::size_t length = 1;
        if (lead >= 0x80) {
            if (lead < 0xC3 || lead > 0xF4) {  // a stray byte, or U+0080 to U+00BF
                break;
            }
            length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        }
        if (run.size() - from < length) {
            break;
        }
        for (std::size_t index = 1; index < length; ++index) {
            if ((static_cast<unsigned char>(run[from + index]) & 0xC0) != 0x80) {
                return from;
            }
        }
        const auto second = static_cast<unsigned char>(length == 1 ? 0 : run[from + 1]);
        if ((lead == 0xE2 && (second == 0x80 || second == 0x81)) ||
            (lead == 0xE3 && second == 0x80)) {
            break;  // general punctuation, U+2000 to U+207F, and that of U+3000 to U+303F
        }
        from += length;
    }
    return from;
}

// A full stop behind a name ends a sentence; "$" is no better as a last byte.
static std::size_t without_trailing_joints(std::string_view run, std::size_t begin,
                                           std::size_t end) {
    while (end > begin && class_of(run[end - 1]) == joint) {
        --end;
    }
    return end;
}

// A name may hold bytes beyond letters, digits and underscores only when it begins this
// close to the start of its run. Real ones do, and hostile text cannot make each of its
// words cost a try at all that follows.
static constexpr std::size_t deepest_wide_name = 512;

static found_name decode_range(name_decoder& decoder, std::string_view run, std::size_t begin,
                               std::size_t end) {
    found_name name{.begin = begin, .end = end, .scheme = 1};
    if (end > begin) {
        name.decoded = decode(decoder, run.substr(begin, end - begin), 1);
        name.found = !name.decoded.empty();
    }
    return name;
}

// Decodes the name of scheme 1 that begins at `begin`. It ends with the word, unless that
// is followed by the suffix of a clone, or is a name only together with what follows.
static found_name decode_at(name_decoder& decoder, std::string_view run, std::size_t begin,
                            std::size_t word_end) {
    const found_name name = decode_range(decoder, run, begin, word_end);
    if (word_end == run.size() || begin > deepest_wide_name ||
        (name.found && (run[word_end] != '.' || !decoder.settings.extended))) {
        return name;
    }
    const std::size_t ascii_end = skip_classes(run, word_end, word | joint);
    const std::size_t end = without_trailing_joints(run, word_end, ascii_end);
    if (end > word_end) {
        const found_name longer = decode_range(decoder, run, begin, end);
        if (longer.found) {
            return longer;
        }
    }
    if (name.found) {
        return decode_range(decoder, run, begin, word_end);
    }
    const std::size_t wide_end = end_of_wide_name(run, ascii_end);
    return decode_range(decoder, run, begin, without_trailing_joints(run, ascii_end, wide_end));
}

// Where a name of scheme 1 begins in the word at `start`, or npos. Tools put words of
// their own in front of a name: "__imp_" and "_GLOBAL__sub_I_" in symbols, ".L" in
// labels. All of these begin with an underscore or a full stop, as no name of a user does.
static std::size_t scheme_one_begin(std::string_view run, std::size_t start) {
    const std::string_view text = run.substr(start);
    if (text.starts_with("_Z")) {
        return start;
    }
    if (text.starts_with("L_Z") && start > 0 && run[start - 1] == '.') {
        return start + 1;
    }
    if (text.starts_with("_")) {
        const std::size_t end = skip_classes(run, start, word);
        const std::size_t inner = run.substr(0, end).find("__Z", start);
        return inner == std::string_view::npos ? inner : inner + 1;
    }
    return std::string_view::npos;
}

// ---- scheme 0 ----

static constexpr std::string_view special_prefixes[] = {
    "__vtbl__", "__CBI__", "__DNI__", "__TIR__", "__LSG__", "__THI__", "__IFV__", "__RES__",
    "__IFC__",  "__TGT__", "__TWR__", "__TID_",  "__T_",    "__VFE__", "__STV__",
};

// Whether a name has the "__" that the decoder looks for before it decodes anything.
static bool has_separator(std::string_view name) {
    const std::size_t rest = name.find_first_not_of('_');
    return rest != std::string_view::npos && (name.starts_with("__Q") || name.starts_with("___Q") ||
                                              name.find("__", rest) != std::string_view::npos);
}

// signature ::= digit | "Q" digit | { C | V | D | L | R | S } F
static bool opens_scope(std::string_view text) {
    if (text.starts_with("Q")) {
        text.remove_prefix(1);
    }
    return !text.empty() && is_digit(text.front());
}

static bool opens_function(std::string_view text) {
    const std::size_t at = text.find_first_not_of("CVDLRS");
    return at != std::string_view::npos && text[at] == 'F';
}

static bool opens_arguments(std::string_view text) {
    return (text.starts_with("tm__") || text.starts_with("pt__") || text.starts_with("ps__")) &&
           text.size() > 4 && is_digit(text[4]);
}

// Whether a word met in a text is meant as a name of scheme 0. The decoder cannot tell:
// "__" may stand in any C identifier, and "Get__File" would be a function of that scheme.
// So a word that begins with an underscore must have a signature in sight, and any other
// a class or template arguments behind its first "__"; Ada has names such as "a__b__2Xn".
static bool looks_like_scheme_zero(std::string_view name) {
    if (!name.starts_with('_')) {
        const std::string_view behind = name.substr(name.find("__") + 2);
        return opens_scope(behind) || opens_arguments(behind);
    }
    if (name.starts_with("__CPR") || (name.starts_with("__") && opens_scope(name.substr(2)))) {
        return true;
    }
    for (const std::string_view prefix : special_prefixes) {
        if (name.starts_with(prefix)) {
            return true;
        }
    }
    std::size_t at = name.find_first_not_of('_');
    while ((at = name.find("__", at)) != std::string_view::npos) {
        const std::string_view behind = name.substr(at + 2);
        if (opens_scope(behind) || opens_function(behind) || opens_arguments(behind)) {
            return true;
        }
        ++at;
    }
    return false;
}

// Whether `name` without its first underscore is one of the names that the compiler
// makes itself: their first word is a code, which does not show in what they read as.
static bool hides_its_first_word(std::string_view name, std::string_view decoded) {
    if (!name.starts_with("__")) {
        return false;
    }
    const std::size_t end = name.find("__", name.find_first_not_of('_'));
    return decoded.find(name.substr(0, end)) == std::string_view::npos;
}

// Decodes run[begin, end) under scheme 0, as a name with an extra underscore in front
// where it can only be that.
static found_name decode_scheme_zero(name_decoder& decoder, std::string_view run, std::size_t begin,
                                     std::size_t end) {
    const std::string_view name = run.substr(begin, end - begin);
    found_name result{.begin = begin, .end = end, .scheme = 0};
    if (decoder.settings.strip_underscore && name.starts_with("_")) {
        result.begin = begin + 1;
        result.drops_underscore = true;
        result.decoded = decode(decoder, name.substr(1), 0);
        result.found = !result.decoded.empty();
        return result;
    }
    if (name.starts_with("___")) {
        result.decoded = decode(decoder, name.substr(1), 0);
        if (!result.decoded.empty() && hides_its_first_word(name.substr(1), result.decoded)) {
            result.begin = begin + 1;
            result.found = true;
            return result;
        }
    }
    result.decoded = decode(decoder, name, 0);
    result.found = !result.decoded.empty();
    return result;
}

// The end of the identifier at `start`, "$" taken as one of its letters.
static std::size_t end_with_dollars(std::string_view run, std::size_t start) {
    std::size_t end = start;
    while (end < run.size() && (class_of(run[end]) == word || run[end] == '$')) {
        ++end;
    }
    return without_trailing_joints(run, start, end);
}

// Decodes run[begin, end) if it has the looks of a name of scheme 0.
static found_name try_scheme_zero(name_decoder& decoder, std::string_view run, std::size_t begin,
                                  std::size_t end) {
    const std::string_view name = run.substr(begin, end - begin);
    if (has_separator(name) && (decoder.settings.scheme == 0 || looks_like_scheme_zero(name))) {
        return decode_scheme_zero(decoder, run, begin, end);
    }
    return {};
}

// ---- both ----

// Whether the name of scheme 1 that begins at `begin` has an underscore too many in
// front, in the word at `start`, and the user wants it dropped.
static bool drops_underscore(const name_decoder& decoder, std::string_view run, std::size_t start,
                             std::size_t begin) {
    return decoder.settings.strip_underscore && begin > start &&
           run.find_first_not_of('_', start) > begin;
}

found_name find_name(name_decoder& decoder, std::string_view run, bool plain, std::size_t from) {
    const int scheme = decoder.settings.scheme;
    std::size_t start = from;
    while (start < run.size()) {
        if (class_of(run[start]) != word) {
            ++start;
            continue;
        }
        const std::size_t word_end = plain ? run.size() : skip_classes(run, start, word);
        const std::size_t begin =
            scheme == 0 ? std::string_view::npos : scheme_one_begin(run, start);
        found_name result;
        if (begin != std::string_view::npos) {
            result = decode_at(decoder, run, begin, word_end);
            result.drops_underscore = drops_underscore(decoder, run, start, begin);
        } else if (scheme != 1 && !is_digit(run[start])) {
            const std::size_t end = plain ? word_end : end_with_dollars(run, start);
            if (end != word_end && start <= deepest_wide_name) {
                result = try_scheme_zero(decoder, run, start, end);
            }
            if (!result.found) {
                result = try_scheme_zero(decoder, run, start, word_end);
            }
        }
        if (result.found) {
            return result;
        }
        start = word_end;
    }
    return {};
}

found_name find_whole_name(name_decoder& decoder, std::string_view symbol) {
    const int scheme = decoder.settings.scheme;
    const std::string_view name = symbol.substr(0, symbol.find('@'));
    if (name.find('\0') != std::string_view::npos) {
        return {};
    }
    const std::size_t begin = scheme == 0 ? std::string_view::npos : scheme_one_begin(name, 0);
    found_name result;
    if (begin != std::string_view::npos) {
        result = {.begin = begin, .end = name.size(), .scheme = 1};
        result.decoded = decode(decoder, name.substr(begin), 1);
        result.found = !result.decoded.empty();
        result.drops_underscore = drops_underscore(decoder, name, 0, begin);
    } else if (scheme != 1) {
        result = decode_scheme_zero(decoder, name, 0, name.size());
    }
    return result;
}
