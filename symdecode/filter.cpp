// The passes of symdecode over text. Underscores are looked for with memchr, and only
// the runs of bytes around one are looked at; everything else is copied in bulk.
#include "symdecode/filter.h"

#include <algorithm>
#include <charconv>
#include <cstring>

// ---- JSON ----

// The length of the UTF-8 sequence at the front of `text`, 0 where it is not one.
static std::size_t utf8_length(std::string_view text) {
    const auto byte = [&](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const unsigned lead = byte(0);
    const unsigned second = byte(1);
    std::size_t length = 0;
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        const bool overlong = lead == 0xE0 && second < 0xA0;
        const bool surrogate = lead == 0xED && second > 0x9F;
        length = overlong || surrogate ? 0 : 3;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        const bool overlong = lead == 0xF0 && second < 0x90;
        const bool beyond = lead == 0xF4 && second > 0x8F;
        length = overlong || beyond ? 0 : 4;
    }
    for (std::size_t index = 1; index < length; ++index) {
        if ((byte(index) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

// Appends `text` as a JSON string; a byte that is not UTF-8 becomes U+FFFD.
static void append_json_string(std::string_view text, std::string& out) {
    static constexpr char digits[] = "0123456789abcdef";
    out += '"';
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text.front());
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
        } else if (byte == '"' || byte == '\\') {
            out += '\\';
            out += text.front();
        } else if (byte < 0x20 || byte == 0x7F) {
            out += "\\u00";
            out += digits[byte >> 4];
            out += digits[byte & 15];
        } else {
            out += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    out += '"';
}

static void append_json_field(const char* key, std::string_view value, std::string& out) {
    out += '"';
    out += key;
    out += "\":";
    append_json_string(value, out);
}

static void append_json_number(const char* key, std::size_t value, std::string& out) {
    char digits[24];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
    out += '"';
    out += key;
    out += "\":";
    out.append(digits, end.ptr);
}

// The members that every object has, and its end.
static void append_json_name(const found_name& name, std::string_view text, std::string& out) {
    append_json_field("name", text.substr(name.begin, name.end - name.begin), out);
    out += ',';
    append_json_field("decoded", name.decoded, out);
    out += ',';
    append_json_number("scheme", static_cast<std::size_t>(name.scheme), out);
    out += "}\n";
}

// ---- text ----

// Moves the position past `text`.
static void count_position(text_filter& filter, std::string_view text) {
    filter.line += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    const std::size_t newline = text.rfind('\n');
    filter.column =
        newline == std::string_view::npos ? filter.column + text.size() : text.size() - newline;
}

// Passes `text` on as it stands.
static void copy_text(text_filter& filter, std::string_view text, std::string& out) {
    if (filter.json) {
        count_position(filter, text);
    } else {
        out += text;
    }
}

static void write_name(text_filter& filter, const found_name& name, std::string_view text,
                       std::string& out) {
    if (!filter.json) {
        out += name.decoded;
        return;
    }
    out += '{';
    append_json_number("line", filter.line, out);
    out += ',';
    append_json_number("column", filter.column, out);
    out += ',';
    append_json_name(name, text, out);
    count_position(filter, text.substr(name.begin, name.end - name.begin));
}

// A whole run, with its names replaced. Stops behind a name when the output is large;
// what follows is then a run of its own, because no name ends inside a word.
static std::size_t filter_run(text_filter& filter, std::string_view run, bool plain,
                              std::string& out) {
    std::size_t done = 0;
    while (done < run.size() && out.size() <= output_step) {
        const found_name name = find_name(filter.decoder, run, plain, done);
        if (!name.found) {
            copy_text(filter, run.substr(done), out);
            return run.size();
        }
        const std::size_t kept = name.begin - (name.drops_underscore && !filter.json ? 1 : 0);
        copy_text(filter, run.substr(done, kept - done), out);
        write_name(filter, name, run, out);
        done = name.end;
    }
    return done;
}

// Where the part of a text begins, at or after `done`, that must wait for what follows: the
// run at its end may go on. Behind full stops alone nothing can change except that ".L" may
// open a label, so that a row of dots shows as it grows, all but the last.
static std::size_t pending_begin(std::string_view text, std::size_t done) {
    const std::size_t begin = run_around(text, text.size(), done).begin;
    if (text.find_first_not_of(".$", begin) != std::string_view::npos) {
        return begin;
    }
    return text.size() - (begin < text.size() && text.back() == '.' ? 1 : 0);
}

std::size_t filter_text(text_filter& filter, std::string_view text, bool last, std::string& out) {
    std::size_t done = 0;
    if (filter.skipping) {
        done = run_around(text, 0, 0).end;
        copy_text(filter, text.substr(0, done), out);
        filter.skipping = done == text.size();
    }
    const std::size_t limit = last ? text.size() : pending_begin(text, done);
    std::size_t from = done;
    while (from < limit) {
        const void* hit = std::memchr(text.data() + from, '_', limit - from);
        if (hit == nullptr) {
            break;
        }
        const auto underscore =
            static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
        const char next = underscore + 1 < limit ? text[underscore + 1] : '\0';
        if (!may_follow_underscore(next)) {
            from = underscore + 1;
            continue;
        }
        const text_run run = run_around(text, underscore, done);
        copy_text(filter, text.substr(done, run.begin - done), out);
        const std::string_view bytes = text.substr(run.begin, run.end - run.begin);
        if (bytes.size() < longest_name) {
            done = run.begin + filter_run(filter, bytes, run.plain, out);
        } else {
            copy_text(filter, bytes, out);
            done = run.end;
        }
        from = done;
        if (out.size() > output_step) {
            return done;
        }
    }
    copy_text(filter, text.substr(done, limit - done), out);
    if (text.size() - limit < longest_name) {
        return limit;
    }
    // The run at the end is too long already.
    copy_text(filter, text.substr(limit), out);
    filter.skipping = true;
    return text.size();
}

// ---- symbols ----

static void write_symbol(text_filter& filter, std::string_view symbol, std::string& out) {
    const found_name name = find_whole_name(filter.decoder, symbol);
    if (!name.found) {
        if (filter.json) {
            out += '{';
            append_json_field("name", symbol, out);
            out += ",\"decoded\":null,\"scheme\":null}\n";
        } else {
            out += symbol;
        }
        return;
    }
    const std::string_view before = symbol.substr(0, name.begin);
    const std::string_view after = symbol.substr(name.end);
    if (!filter.json) {
        out += before.substr(0, before.size() - (name.drops_underscore ? 1 : 0));
        out += name.decoded;
        out += after;
        return;
    }
    out += '{';
    if (!before.empty()) {
        append_json_field("before", before, out);
        out += ',';
    }
    if (!after.empty()) {
        append_json_field("after", after, out);
        out += ',';
    }
    append_json_name(name, symbol, out);
}

void filter_symbol(text_filter& filter, std::string_view symbol, std::string& out) {
    write_symbol(filter, symbol, out);
    if (!filter.json) {
        out += '\n';
    }
}

// The end of a line that is too long for a symbol and was passed on, or a whole one.
static void end_long_line(text_filter& filter, std::string& out) {
    if (filter.json) {
        out += "{\"name\":null,\"decoded\":null,\"scheme\":null}\n";
    }
}

// A line that is whole, its newline not included. A carriage return belongs to the end of
// the line and not to the symbol.
static void filter_line(text_filter& filter, std::string_view line, std::string& out) {
    if (line.size() >= longest_name) {
        copy_text(filter, line, out);
        end_long_line(filter, out);
        return;
    }
    const bool carriage_return = line.ends_with('\r');
    line.remove_suffix(carriage_return ? 1 : 0);
    write_symbol(filter, line, out);
    if (carriage_return && !filter.json) {
        out += '\r';
    }
}

std::size_t filter_lines(text_filter& filter, std::string_view text, bool last, std::string& out) {
    std::size_t done = 0;
    while (done < text.size() && out.size() <= output_step) {
        const std::size_t newline = text.find('\n', done);
        const bool whole = newline != std::string_view::npos;
        const std::size_t end = whole ? newline : text.size();
        const std::string_view line = text.substr(done, end - done);
        if (filter.skipping) {
            copy_text(filter, line, out);
            filter.skipping = !whole;
            if (whole) {
                end_long_line(filter, out);
            }
        } else if (whole || last) {
            filter_line(filter, line, out);
        } else if (line.size() >= longest_name) {
            copy_text(filter, line, out);
            filter.skipping = true;
        } else {
            break;
        }
        done = end;
        if (whole) {
            out.append(filter.json ? 0 : 1, '\n');
            ++done;
        }
    }
    if (last && done == text.size() && filter.skipping) {
        end_long_line(filter, out);
        filter.skipping = false;
    }
    return done;
}
