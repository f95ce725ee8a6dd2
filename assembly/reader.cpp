// One pass over the assembly text, line by line. What a statement is shows in its first
// characters, alike for every target: a label ends in a colon, a directive begins with a
// full stop, and everything else that no known comment character opens is code.
#include "assembly/reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

#include "assembly/data.h"
#include "assembly/operand.h"
#include "assembly/text_reader.h"

namespace assembly {

// Offsets fit 32 bits.
static constexpr std::size_t greatest_text = std::numeric_limits<std::uint32_t>::max() - 1;

// --- Statements ---

// Whether the line is a comment for whatever target it may be.
static bool opens_line_comment(char c) {
    return c == '#' || c == ';';
}

// Whether a comment begins here, for any target's comment character.
static bool opens_comment(std::string_view rest) {
    return std::string_view("#@;|!").find(rest.front()) != std::string_view::npos ||
           rest.starts_with("//") || rest.starts_with("/*") || rest.starts_with("/APP") ||
           rest.starts_with("/NO_APP");
}

// mark ::= comment-character+ ("APP" | "NO_APP" | " InlineAsm Start" | " InlineAsm End")
//        | comment-character " " number string number
// By the second form, with 1 and 2 for the last number, assembly of one statement begins
// and ends; some targets have no other.
static void read_mark(text_reader& reader, std::string_view comment) {
    comment.remove_prefix(std::min(comment.find_first_not_of("#@;/ "), comment.size()));
    std::vector<text_range>& all = reader.assembly.inline_assembly;
    const bool is_app = comment.starts_with("APP") || comment.starts_with("InlineAsm Start");
    bool begins = is_app;
    bool ends = comment.starts_with("NO_APP") || comment.starts_with("InlineAsm End");
    if (!comment.empty() && is_digit(comment.front()) && reader.inline_at == none) {
        begins = take_number(comment) && take_string(comment) && take_number(comment) == 1U;
    } else if (comment.starts_with("0 \"\" 2")) {
        // Where the other form began it, it also ends it.
        ends = !reader.marked_app;
    }
    if (begins && reader.inline_at == none) {
        reader.inline_at = reader.line_at;
        reader.marked_app = is_app;
    } else if (ends && reader.inline_at != none) {
        all.push_back({reader.inline_at, reader.next_line_at});
        reader.inline_at = none;
    }
}

// The symbol at the front of a statement, in quotes or not; `rest` is left behind it.
static std::string_view take_first_word(std::string_view& rest) {
    if (rest.front() == '"') {
        return take_symbol(rest);
    }
    std::size_t size = 0;
    while (size < rest.size() && is_symbol_character(rest[size])) {
        ++size;
    }
    const std::string_view word = rest.substr(0, size);
    rest.remove_prefix(size);
    return word;
}

// statement ::= (symbol ":")* [symbol "=" value | directive | instruction | comment]
static void read_statement(text_reader& reader, std::string_view rest) {
    const std::string_view comment = reader.assembly.language->comment;
    while (true) {
        skip_blanks(rest);
        if (rest.empty()) {
            return leads_up(reader);
        }
        if (rest.starts_with(comment)) {
            read_mark(reader, rest);
            return leads_up(reader);
        }
        std::string_view behind = rest;
        const std::string_view word = take_first_word(behind);
        if (!word.empty() && behind.starts_with(':')) {
            add_label(reader, word);
            rest = behind.substr(1);
            continue;
        }
        if ((word.empty() || word.front() == '@') && opens_comment(rest)) {
            read_mark(reader, rest);
            return leads_up(reader);
        }
        if (!word.empty() && word.front() == '.' && rest.front() == '.') {
            return read_directive(reader, word, behind);
        }
        skip_blanks(behind);
        if (behind.starts_with('=') && !behind.starts_with("==")) {
            behind.remove_prefix(1);
            skip_blanks(behind);
            // A label in all but its form.
            if (behind == ".") {
                return add_label(reader, word);
            }
            reader.assembly.aliases.push_back({word, behind});
            return trails(reader);
        }
        return code(reader);
    }
}

// Reads the line's statements one by one: past comments in blocks, up to a comment that the
// line ends in. Quoted text has no separators in it.
static void read_statements(text_reader& reader, std::string_view line) {
    const dialect& language = *reader.assembly.language;
    const std::size_t first = std::min(line.find_first_not_of(" \t"), line.size());
    if (!reader.in_comment && !line.substr(first).empty() && opens_line_comment(line[first])) {
        return read_statement(reader, line);
    }
    std::size_t begin = 0;
    bool is_quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (reader.in_comment) {
            const std::size_t end = line.find("*/", at);
            if (end == std::string_view::npos) {
                return;
            }
            reader.in_comment = false;
            at = end + 1;
            begin = at + 1;
        } else if (line[at] == '"') {
            is_quoted = !is_quoted;
        } else if (line[at] == '\\' && is_quoted) {
            ++at;
        } else if (is_quoted) {
            continue;
        } else if (line.substr(at).starts_with("/*")) {
            read_statement(reader, line.substr(begin, at - begin));
            reader.in_comment = true;
            ++at;
        } else if (line.substr(at).starts_with(language.comment)) {
            break;
        } else if (line[at] == language.separator) {
            read_statement(reader, line.substr(begin, at - begin));
            begin = at + 1;
        }
    }
    read_statement(reader, line.substr(std::min(begin, line.size())));
}

// Lines between .macro and .endm are only counted.
static void read_macro_line(text_reader& reader, std::string_view line) {
    skip_blanks(line);
    if (line.starts_with(".macro")) {
        ++reader.macro_depth;
    } else if (line.starts_with(".endm")) {
        --reader.macro_depth;
    }
}

// Reads a line that tells how to unwind the stack in between a procedure's ends, which
// nothing else depends on.
static bool read_unwinding(text_reader& reader, std::string_view line) {
    constexpr std::string_view unwinding = "\t.cfi_";
    constexpr std::string_view first_letters = "dor";  // .cfi_def_cfa, .cfi_offset, .cfi_restore
    if (line.size() <= unwinding.size() || !line.starts_with(unwinding) ||
        first_letters.find(line[unwinding.size()]) == std::string_view::npos) {
        return false;
    }
    reader.preamble = none;
    reader.may_be_procedure = false;
    trails(reader);
    return true;
}

// Reads a line when it is of one of the kinds that most are, as compilers write them: an
// instruction, a position, a local label alone. False, with nothing read, when it is not.
static bool read_common_line(text_reader& reader, std::string_view line) {
    constexpr std::string_view loc = "\t.loc ";
    if (line.size() < loc.size()) {
        return false;
    }
    if (!reader.special.any()) {
        if (line[0] == '\t' && line[1] >= 'a' && line[1] <= 'z') {
            code(reader);
            return true;
        }
        if (std::memcmp(line.data(), loc.data(), loc.size()) == 0) {
            read_loc(reader, line.substr(loc.size()));
            return true;
        }
        return read_unwinding(reader, line);
    }
    const std::string_view name = line.substr(0, line.size() - 1);
    if (line[0] != '.' || line.back() != ':' || reader.special.more_than_colon() ||
        !std::all_of(name.begin(), name.end(), is_symbol_character)) {
        return false;
    }
    add_label(reader, name);
    return true;
}

static void read_line(text_reader& reader, std::string_view line) {
    if (reader.macro_depth != 0 || reader.in_comment) {
        refuse_interlist_directive(reader);
    }
    if (reader.macro_depth != 0) {
        return read_macro_line(reader, line);
    }
    reader.special.move_to(reader.line_at, reader.line_at + line.size());
    if (reader.in_comment || reader.special.needs_parting()) {
        read_statements(reader, line);
    } else if (!read_common_line(reader, line)) {
        read_statement(reader, line);
    }
}

// Version 5 of the debugging format tells it in file 0. Before that, some compilers
// give it with every file; it shows where file 1 is the main file.
static std::string compilation_directory(const assembly_file& assembly) {
    if (const auto zero = assembly.files.find(0); zero != assembly.files.end()) {
        return zero->second.directory;
    }
    if (const auto one = assembly.files.find(1);
        one != assembly.files.end() &&
        (assembly.main_file.empty() || one->second.name == assembly.main_file)) {
        return one->second.directory;
    }
    return {};
}

// The debugging sections that tell of functions; the others are of no use here.
static bool is_read(std::string_view name) {
    constexpr std::array<std::string_view, 8> names = {
        "abbrev", "addr", "info", "line_str", "ranges", "rnglists", "str", "str_offsets",
    };
    for (const std::string_view prefix : {".debug_", "__DWARF,__debug_"}) {
        if (name.starts_with(prefix)) {
            name.remove_prefix(prefix.size());
            name = name.substr(0, name.find(".dwo"));
            return std::binary_search(names.begin(), names.end(), name);
        }
    }
    return false;
}

// Takes the lines of a debugging section from `at` on that can be nothing else, and gives
// where the first other one begins.
static std::size_t take_debug_lines(text_reader& reader, std::size_t at) {
    const bool is_wanted =
        reader.options.debug || (reader.options.compile && !reader.assembly.files.contains(0));
    if (!is_wanted) {
        return skip_data(reader.text, at);
    }
    const std::uint32_t at_section = reader.track.current();
    std::vector<debug_contents>& debug = reader.assembly.debug;
    if (!is_read(reader.assembly.sections[at_section].name)) {
        return skip_data(reader.text, at);
    }
    if (reader.debug_of.size() <= at_section) {
        reader.debug_of.resize(at_section + 1, none);
    }
    if (reader.debug_of[at_section] == none) {
        reader.debug_of[at_section] = static_cast<std::uint32_t>(debug.size());
        debug.push_back({.section = at_section});
    }
    return read_data(reader.assembly, reader.debug_of[at_section], at);
}

std::optional<assembly_error> read_assembly(std::string_view text, assembly_file& assembly,
                                            const read_options& options) {
    assembly = assembly_file();
    assembly.text = text;
    if (text.size() > greatest_text) {
        return assembly_error{1, "the input is larger than 4 GB"};
    }
    // Room for what a text of this size has, taken but not touched, saves moving it about.
    const std::size_t about = std::min(text.size() / 128, std::size_t{1} << 20);
    assembly.instructions.reserve(about);
    assembly.labels.reserve(about);
    assembly.positions.reserve(about / 2);
    assembly.language = options.language != nullptr ? options.language : &dialect_of_text(text);
    const std::size_t first_end = text.find('\n');
    assembly.carriage_returns =
        first_end != std::string_view::npos && first_end > 0 && text[first_end - 1] == '\r';
    text_reader reader{.text = text,
                       .assembly = assembly,
                       .options = options,
                       .track = section_track(assembly.sections),
                       .special = special_places(text, assembly.language->separator)};
    for (std::size_t at = 0; at < text.size();) {
        if (reader.in_debug) {
            at = take_debug_lines(reader, at);
            if (at == text.size()) {
                break;
            }
        }
        prefetch(text, at + special_places::far);
        const std::size_t end = end_of_line(text, at);
        const std::size_t next = std::min(end + 1, text.size());
        reader.line_at = static_cast<std::uint32_t>(at);
        reader.line_end = static_cast<std::uint32_t>(end);
        // Without a line end of its own, the last line must stay the last.
        reader.next_line_at = static_cast<std::uint32_t>(end < text.size() ? next : at);
        const bool has_return = end != at && text[end - 1] == '\r';
        read_line(reader, text.substr(at, end - at - (has_return ? 1 : 0)));
        if (reader.error) {
            return reader.error;
        }
        at = next;
    }
    if (reader.procedure_at != none) {
        const std::string_view before = text.substr(0, reader.procedure_at);
        fail(reader, "the input ends inside the procedure of line " +
                         std::to_string(std::count(before.begin(), before.end(), '\n') + 1));
        return reader.error;
    }
    end_function(reader,
                 text.ends_with('\n') ? static_cast<std::uint32_t>(text.size()) : reader.line_at);
    assembly.compilation_directory = compilation_directory(assembly);
    return std::nullopt;
}

}  // namespace assembly
