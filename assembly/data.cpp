// Assembles data directives. A value that is an expression is left for whoever needs it:
// most are never asked for.
#include "assembly/data.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>

#include "assembly/directive.h"
#include "assembly/operand.h"

namespace assembly {

// Whether a directive whose name begins like this may change the section or name a file, or
// be one of the interlister's.
static bool may_matter(char first, char second) {
    switch (first) {
        case 's':
            return second == 'e' || second == 'u' || second == 'd' || second == 'b';
        case 't':
            return second == 'e';
        case 'd':
            return second == 'a';
        case 'b':
            return second == 's';
        case 'f':
            return second == 'i';
        case 'p':
            return second == 'u' || second == 'o' || second == 'r';
        case 'r':
            return second == 'd';
        case 'c':
            return second == 's' || second == 'o';
        case 'i':
            return second == 'f' || second == 'l' || second == 's' || second == 'e';
        default:
            return false;
    }
}

// Whether the full stop at `at` begins a line, blanks aside; `begin` gets where the line does.
static bool is_first(std::string_view text, std::size_t at, std::size_t& begin) {
    begin = at;
    while (begin != 0 && is_blank(text[begin - 1])) {
        --begin;
    }
    return begin == 0 || text[begin - 1] == '\n';
}

// Sixteen bytes at once, in the notation that both compilers have for it.
using block [[gnu::vector_size(16)]] = char;

static block load(const char* at) {
    block bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    return bytes;
}

// Marks the full stops among sixteen bytes with a letter behind it by which a directive may
// begin that matters: from "c" to "t", or ".bs". Hardly any line of data has one.
static auto mark_directives(const char* at) {
    using letters [[gnu::vector_size(16)]] = unsigned char;
    const block stop = load(at);
    const block first = load(at + 1);
    const block second = load(at + 2);
    const letters behind_c = reinterpret_cast<letters>(first) - static_cast<unsigned char>('c');
    const auto is_within = behind_c <= static_cast<unsigned char>('t' - 'c');
    return (stop == '.') &
           ((is_within & (first != 'q') & (first != 'l')) | ((first == 'b') & (second == 's')));
}

static bool is_any(const auto& marks) {
    std::array<std::uint64_t, 2> halves{};
    std::memcpy(halves.data(), &marks, sizeof marks);
    return (halves[0] | halves[1]) != 0;
}

std::size_t skip_data(std::string_view text, std::size_t at) {
    constexpr std::size_t size = sizeof(block);
    constexpr std::size_t step = 4 * size;
    const char* const begin = text.data();
    while (at < text.size()) {
        if (at + step + 2 <= text.size()) {
            prefetch(text, at);
            const char* const from = begin + at;
            if (!is_any(mark_directives(from) | mark_directives(from + size) |
                        mark_directives(from + 2 * size) | mark_directives(from + 3 * size))) {
                at += step;
                continue;
            }
        }
        const std::size_t end = std::min(at + size, text.size());
        if (end + 2 <= text.size() && !is_any(mark_directives(begin + at))) {
            at = end;
        }
        for (; at < end; ++at) {
            std::size_t line = 0;
            if (text[at] == '.' && at + 2 < text.size() && may_matter(text[at + 1], text[at + 2]) &&
                is_first(text, at, line)) {
                return line;
            }
        }
    }
    return text.size();
}

namespace {

// The bytes of a section while they grow, in a string that has room for some more.
class byte_sink {
  public:
    explicit byte_sink(std::string& bytes) : bytes_(bytes), size_(bytes.size()) {}
    ~byte_sink() { bytes_.resize(size_); }
    byte_sink(const byte_sink&) = delete;
    byte_sink& operator=(const byte_sink&) = delete;

    std::size_t size() const { return size_; }

    void put(std::uint64_t value, std::size_t count) {
        make_room(sizeof value);
        std::array<char, sizeof value> little{};
        for (std::size_t i = 0; i < little.size(); ++i) {
            little[i] = static_cast<char>(value >> (8 * i));
        }
        std::memcpy(&bytes_[size_], little.data(), little.size());
        size_ += count;
    }

    void put(std::string_view text) {
        make_room(text.size());
        text.copy(bytes_.data() + size_, text.size());
        size_ += text.size();
    }

    void fill(std::size_t count, char value) {
        make_room(count);
        std::fill_n(bytes_.begin() + static_cast<std::ptrdiff_t>(size_), count, value);
        size_ += count;
    }

  private:
    void make_room(std::size_t count) {
        constexpr std::size_t more = std::size_t{1} << 15;
        if (bytes_.size() - size_ < count) {
            bytes_.resize(bytes_.size() + count + more);
        }
    }

    std::string& bytes_;
    std::size_t size_;
};

// Where a line's operands are read, and what becomes of them.
struct data_reader {
    const char* at;
    const char* end;  // of the line
    const char* text;
    byte_sink& bytes;
    std::vector<debug_contents::expression>& expressions;

    std::string_view rest() const { return {at, static_cast<std::size_t>(end - at)}; }
    bool is_at(char c) const { return at != end && *at == c; }
    void skip_blanks() {
        while (at != end && is_blank(*at)) {
            ++at;
        }
    }
};

// The beginning of a line that is common, blanks included, as one word to compare.
struct common_row {
    std::uint64_t letters;
    std::uint64_t mask;
    std::uint8_t length;
    std::uint8_t size;  // in bytes; 0 for a number of variable length

    constexpr common_row(std::string_view beginning, std::uint8_t value_size)
        : letters(0),
          mask(0),
          length(static_cast<std::uint8_t>(beginning.size())),
          size(value_size) {
        std::array<char, 8> shown{};
        std::array<char, 8> counted{};
        for (std::size_t i = 0; i < shown.size() && i < beginning.size(); ++i) {
            shown[i] = beginning[i];
            counted[i] = static_cast<char>(0xff);
        }
        letters = std::bit_cast<std::uint64_t>(shown);
        mask = std::bit_cast<std::uint64_t>(counted);
    }
};

}  // namespace

// `.uleb128` is the only directive that begins with the letters that fit a word.
static constexpr std::array<common_row, 11> common_rows = {{
    {"\t.uleb128 ", 0},
    {"\t.byte\t", 1},
    {"\t.long\t", 4},
    {"\t.value\t", 2},
    {"\t.quad\t", 8},
    {"\t.4byte\t", 4},
    {"\t.2byte\t", 2},
    {"\t.8byte\t", 8},
    {"\t.short\t", 2},
    {"\t.hword\t", 2},
    {"\t.xword\t", 8},
}};
// No two of them have the same letter behind the full stop: it leads to the row.
static constexpr auto row_of_letter = [] {
    std::array<std::uint8_t, 256> rows{};
    for (std::size_t i = 0; i < common_rows.size(); ++i) {
        const auto beginning = std::bit_cast<std::array<unsigned char, 8>>(common_rows[i].letters);
        rows[beginning[2]] = static_cast<std::uint8_t>(i);
    }
    return rows;
}();

static void put_leb128(byte_sink& bytes, std::uint64_t value, bool is_signed) {
    constexpr std::uint64_t sign = 0x40;
    while (true) {
        const std::uint64_t low = value & 0x7f;
        value >>= 7;
        if (is_signed && (value >> 56) != 0) {
            value |= ~(~std::uint64_t{0} >> 7);  // the sign goes on
        }
        const bool is_last = is_signed ? (value == 0 && (low & sign) == 0) ||
                                             (value == ~std::uint64_t{0} && (low & sign) != 0)
                                       : value == 0;
        bytes.put(low | (is_last ? 0 : 0x80), 1);
        if (is_last) {
            return;
        }
    }
}

static void put_expression(data_reader& reader, std::size_t size) {
    reader.expressions.push_back({static_cast<std::uint32_t>(reader.bytes.size()),
                                  static_cast<std::uint32_t>(reader.at - reader.text)});
    reader.bytes.fill(size == 0 ? 1 : size, '\0');
}

// A number that an operator or a symbol follows is part of an expression.
static bool ends_operand(const data_reader& reader) {
    data_reader behind = reader;
    behind.skip_blanks();
    return behind.at == behind.end ||
           std::string_view(",#;@/|!").find(*behind.at) != std::string_view::npos;
}

static bool read_number(data_reader& reader, std::uint64_t& value) {
    if (reader.at == reader.end || !(is_digit(*reader.at) || *reader.at == '-')) {
        return false;
    }
    std::string_view rest = reader.rest();
    const std::optional<std::uint64_t> taken = take_value(rest);
    if (!taken) {
        return false;
    }
    const char* const begin = reader.at;
    reader.at = rest.data();
    if (!ends_operand(reader)) {
        reader.at = begin;
        return false;
    }
    value = *taken;
    return true;
}

// values ::= value ("," value)*
static void read_values(data_reader& reader, directive kind, std::size_t size) {
    while (true) {
        reader.skip_blanks();
        std::uint64_t value = 0;
        if (!read_number(reader, value)) {
            put_expression(reader, size);
        } else if (kind == directive::values) {
            reader.bytes.put(value, size);
        } else {
            put_leb128(reader.bytes, value, kind == directive::sleb128);
        }
        while (reader.at != reader.end && *reader.at != ',') {
            ++reader.at;
        }
        if (reader.at == reader.end) {
            return;
        }
        ++reader.at;
    }
}

static void read_strings(data_reader& reader, bool is_terminated) {
    std::string_view rest = reader.rest();
    std::string text;
    while (append_string(rest, text)) {
        if (is_terminated) {
            text += '\0';
        }
        reader.bytes.put(text);
        text.clear();
        skip_blanks(rest);
        if (!rest.starts_with(',')) {
            return;
        }
        rest.remove_prefix(1);
    }
}

// room-directive ::= ".zero" count ["," value]
// More room than the text itself takes is none of a compiler's.
static void read_room(data_reader& reader, std::size_t most) {
    std::uint64_t count = 0;
    std::uint64_t value = 0;
    reader.skip_blanks();
    if (!read_number(reader, count) || count > most) {
        return;
    }
    if (reader.is_at(',')) {
        ++reader.at;
        reader.skip_blanks();
        read_number(reader, value);
    }
    reader.bytes.fill(count, static_cast<char>(value));
}

// Reads one directive's operands. False when it is none that emits data.
static bool read_directive(data_reader& reader, const dialect& language, std::size_t most) {
    const char* const begin = reader.at;
    while (reader.at != reader.end && is_symbol_character(*reader.at)) {
        ++reader.at;
    }
    const directive_row& row = find_directive({begin, static_cast<std::size_t>(reader.at - begin)});
    switch (row.kind) {
        case directive::values:
            read_values(reader, directive::values, row.size);
            return true;
        case directive::word:
            read_values(reader, directive::values, language.word_size);
            return true;
        case directive::uleb128:
        case directive::sleb128:
            read_values(reader, row.kind, 0);
            return true;
        case directive::text:
        case directive::terminated_text:
            read_strings(reader, row.kind == directive::terminated_text);
            return true;
        case directive::room:
            read_room(reader, most);
            return true;
        default:
            return false;
    }
}

// Reads the line at the front of `reader`, whose end is that of the text, when it is of the
// kind that most are: one number or symbol behind one of the common directives, and no
// comment. False, with nothing read, when it is not.
static bool read_common_line(data_reader& reader) {
    constexpr std::ptrdiff_t longest = 40;  // up to here no end needs to be looked for
    if (reader.end - reader.at < longest) {
        return false;
    }
    std::uint64_t letters = 0;
    std::memcpy(&letters, reader.at, sizeof letters);
    const common_row& row = common_rows[row_of_letter[static_cast<unsigned char>(reader.at[2])]];
    if ((letters & row.mask) != row.letters) {
        return false;
    }
    const char* const begin = reader.at + row.length;
    const char* at = begin;
    if (!is_digit(*at)) {
        const char* const last = reader.at + longest;
        // "f-g" has one value, too; what begins with a sign may be a number.
        while (at != last && (is_symbol_character(*at) || (*at == '-' && at != begin))) {
            ++at;
        }
        if (at == begin || at == last || *at != '\n') {
            return false;
        }
        reader.at = begin;
        put_expression(reader, row.size);
        reader.at = at + 1;
        return true;
    }
    std::uint64_t value = 0;
    constexpr std::ptrdiff_t most_digits = 16;
    if (*at == '0' && at[1] == 'x') {
        at += 2;
        const char* const last = at + most_digits;
        for (; at != last; ++at) {
            const auto c = static_cast<unsigned char>(*at);
            const unsigned digit = is_digit(*at) ? c - '0' : (c | 0x20U) - 'a' + 10U;
            if (digit > 15) {
                break;
            }
            value = value << 4 | digit;
        }
    } else if (*at != '0' || at[1] == '\n') {  // octal otherwise
        const char* const last = at + most_digits;
        for (; at != last && is_digit(*at); ++at) {
            value = value * 10 + static_cast<unsigned>(*at - '0');
        }
    }
    if (*at != '\n') {
        return false;
    }
    reader.at = at + 1;
    constexpr std::uint64_t least_of_two_bytes = 0x80;
    if (row.size == 0 && value >= least_of_two_bytes) {
        put_leb128(reader.bytes, value, false);
    } else if (row.size == 0) {
        reader.bytes.put(value, 1);
    } else {
        reader.bytes.put(value, row.size);
    }
    return true;
}

std::size_t read_data(assembly_file& assembly, std::size_t index, std::size_t at) {
    const std::string_view text = assembly.text;
    debug_contents& contents = assembly.debug[index];
    constexpr std::size_t most_bytes = std::numeric_limits<std::uint32_t>::max() / 2;
    byte_sink bytes(contents.bytes);
    while (at < text.size() && bytes.size() < most_bytes) {
        data_reader reader{text.data() + at, text.data() + text.size(), text.data(), bytes,
                           contents.expressions};
        prefetch(text, at);
        if (read_common_line(reader)) {
            at = static_cast<std::size_t>(reader.at - text.data());
            continue;
        }
        const std::size_t end = end_of_line(text, at);
        reader.end = text.data() + end;
        if (reader.end != reader.at && reader.end[-1] == '\r') {
            --reader.end;
        }
        reader.skip_blanks();
        if (reader.at != reader.end && *reader.at != '#' && *reader.at != '/' &&
            *reader.at != ';' && *reader.at != '@') {
            std::string_view rest = reader.rest();
            const std::string_view symbol = take_symbol(rest);
            if (!symbol.empty() && rest.starts_with(':')) {
                assembly.labels.push_back({static_cast<std::uint32_t>(symbol.data() - text.data()),
                                           static_cast<std::uint32_t>(symbol.size()),
                                           contents.section,
                                           static_cast<std::uint32_t>(bytes.size())});
                reader.at = rest.data() + 1;
                reader.skip_blanks();
            }
            if (reader.is_at('.') && !read_directive(reader, *assembly.language, text.size())) {
                return at;
            }
        }
        at = std::min(end + 1, text.size());
    }
    return at;
}

}  // namespace assembly
