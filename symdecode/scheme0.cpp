// How names of scheme 0 ("name__signature") stand in a text, where a "__" may as well mean
// nothing. Asked by names.
#include "symdecode/bytes.h"
#include "symdecode/schemes.h"

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
static bool looks_like_a_name(std::string_view name) {
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
static found_name decode_range(name_decoder& decoder, const name_scheme& scheme,
                               std::string_view run, std::size_t begin, std::size_t end) {
    const std::string_view name = run.substr(begin, end - begin);
    found_name result{.begin = begin, .end = end, .scheme = scheme.number};
    if (decoder.settings.strip_underscore && name.starts_with("_")) {
        result.begin = begin + 1;
        result.drops_underscore = true;
        result.decoded = decode(decoder, scheme, name.substr(1));
        result.found = !result.decoded.empty();
        return result;
    }
    if (name.starts_with("___")) {
        result.decoded = decode(decoder, scheme, name.substr(1));
        if (!result.decoded.empty() && hides_its_first_word(name.substr(1), result.decoded)) {
            result.begin = begin + 1;
            result.found = true;
            return result;
        }
    }
    result.decoded = decode(decoder, scheme, name);
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
static found_name try_range(name_decoder& decoder, const name_scheme& scheme, std::string_view run,
                            std::size_t begin, std::size_t end) {
    const std::string_view name = run.substr(begin, end - begin);
    if (has_separator(name) &&
        (decoder.settings.scheme == scheme.number || looks_like_a_name(name))) {
        return decode_range(decoder, scheme, run, begin, end);
    }
    return {};
}

// Any word may be one.
std::size_t scheme0::begin_in(std::string_view /*run*/, std::size_t start) {
    return start;
}

found_name scheme0::in_word(name_decoder& decoder, const name_scheme& scheme, const run_word& part,
                            std::size_t begin) {
    if (is_digit(part.run[begin])) {
        return {};
    }
    const std::size_t end = part.plain ? part.end : end_with_dollars(part.run, begin);
    found_name name;
    if (end != part.end && begin <= deepest_wide_name) {
        name = try_range(decoder, scheme, part.run, begin, end);
    }
    return name.found ? name : try_range(decoder, scheme, part.run, begin, part.end);
}

found_name scheme0::as_symbol(name_decoder& decoder, const name_scheme& scheme,
                              std::string_view symbol, std::size_t begin) {
    return decode_range(decoder, scheme, symbol, begin, symbol.size());
}
