// How names of scheme 1 ("_Z...") stand in a text, with what tools put in front of them and
// behind. Asked by names.
#include "symdecode/bytes.h"
#include "symdecode/schemes.h"

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

static found_name decode_range(name_decoder& decoder, const name_scheme& scheme,
                               std::string_view run, std::size_t begin, std::size_t end) {
    found_name name{.begin = begin, .end = end, .scheme = scheme.number};
    if (end > begin) {
        name.decoded = decode(decoder, scheme, run.substr(begin, end - begin));
        name.found = !name.decoded.empty();
    }
    return name;
}

// Decodes the name of scheme 1 that begins at `begin`. It ends with the word, unless that
// is followed by the suffix of a clone, or is a name only together with what follows.
static found_name decode_at(name_decoder& decoder, const name_scheme& scheme, std::string_view run,
                            std::size_t begin, std::size_t word_end) {
    const found_name name = decode_range(decoder, scheme, run, begin, word_end);
    if (word_end == run.size() || begin > deepest_wide_name ||
        (name.found && (run[word_end] != '.' || !decoder.settings.extended))) {
        return name;
    }
    const std::size_t ascii_end = skip_classes(run, word_end, word | joint);
    const std::size_t end = without_trailing_joints(run, word_end, ascii_end);
    if (end > word_end) {
        const found_name longer = decode_range(decoder, scheme, run, begin, end);
        if (longer.found) {
            return longer;
        }
    }
    if (name.found) {
        return decode_range(decoder, scheme, run, begin, word_end);
    }
    const std::size_t wide_end = end_of_wide_name(run, ascii_end);
    return decode_range(decoder, scheme, run, begin,
                        without_trailing_joints(run, ascii_end, wide_end));
}

// Whether the name of scheme 1 that begins at `begin` has an underscore too many in
// front, in the word at `start`, and the user wants it dropped.
static bool drops_underscore(const name_decoder& decoder, std::string_view run, std::size_t start,
                             std::size_t begin) {
    return decoder.settings.strip_underscore && begin > start &&
           run.find_first_not_of('_', start) > begin;
}

// Where a name of scheme 1 begins in the word at `start`, or npos. Tools put words of
// their own in front of a name: "__imp_" and "_GLOBAL__sub_I_" in symbols, ".L" in
// labels. All of these begin with an underscore or a full stop, as no name of a user does.
std::size_t scheme1::begin_in(std::string_view run, std::size_t start) {
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

found_name scheme1::in_word(name_decoder& decoder, const name_scheme& scheme, const run_word& part,
                            std::size_t begin) {
    found_name name = decode_at(decoder, scheme, part.run, begin, part.end);
    name.drops_underscore = drops_underscore(decoder, part.run, part.start, begin);
    return name;
}

found_name scheme1::as_symbol(name_decoder& decoder, const name_scheme& scheme,
                              std::string_view symbol, std::size_t begin) {
    found_name name = decode_range(decoder, scheme, symbol, begin, symbol.size());
    name.drops_underscore = drops_underscore(decoder, symbol, 0, begin);
    return name;
}
