// Acts on directives: those that name files, declare functions, set symbols, change the
// section or emit data.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "assembly/directive.h"
#include "assembly/operand.h"
#include "assembly/text_reader.h"

namespace assembly {

// file-directive ::= ".file" (name | number [directory] name option*)
// option ::= "md5" number | ...
static void read_file(text_reader& reader, std::string_view rest) {
    skip_blanks(rest);
    if (rest.empty() || !is_digit(rest.front())) {
        std::optional<std::string> name = take_string(rest);
        if (!name) {
            return fail(reader, "bad file name in .file");
        }
        if (reader.assembly.main_file.empty()) {
            reader.assembly.main_file = std::move(*name);
        }
        return;
    }
    const std::optional<std::uint32_t> number = take_number(rest);
    if (!number) {
        return fail(reader, "bad file number in .file");
    }
    std::optional<std::string> name = take_string(rest);
    if (!name) {
        return fail(reader, "bad file name in .file");
    }
    file_entry entry{"", std::move(*name)};
    skip_blanks(rest);
    if (rest.starts_with('"')) {
        name = take_string(rest);
        if (!name) {
            return fail(reader, "bad file name in .file");
        }
        entry = {std::move(entry.name), std::move(*name)};
    }
    constexpr std::string_view md5 = "md5 0x";
    constexpr std::size_t md5_digits = 32;
    if (const std::size_t at = rest.find(md5); at != std::string_view::npos) {
        const std::string_view digits = rest.substr(at + md5.size(), md5_digits);
        if (digits.find_first_not_of("0123456789abcdef") == std::string_view::npos) {
            // Leading zeros are not written.
            entry.md5 = std::string(md5_digits - digits.size(), '0');
            entry.md5 += digits;
        }
    }
    const auto [known, is_new] = reader.assembly.files.try_emplace(*number, entry);
    if (!is_new &&
        (known->second.directory != entry.directory || known->second.name != entry.name)) {
        fail(reader, "file number " + std::to_string(*number) + " is already in use");
    }
}

static void add_function_symbol(text_reader& reader, std::string_view symbol) {
    reader.function_symbols.insert(symbol);
    reader.has_local_function = reader.has_local_function || is_local(symbol);
}

// type-directive ::= ".type" symbol "," [prefix] ("function" | "STT_FUNC" | ...)
//                  | ".type" number        between ".def" and ".endef"
static void read_type(text_reader& reader, std::string_view rest) {
    constexpr std::uint32_t function_type = 32;
    skip_blanks(rest);
    if (!rest.empty() && is_digit(rest.front())) {
        if (take_number(rest) == function_type) {
            add_function_symbol(reader, reader.defined_symbol);
        }
        return;
    }
    const std::string_view symbol = take_symbol(rest);
    skip_blanks(rest);
    if (rest.starts_with(',')) {
        rest.remove_prefix(1);
    }
    skip_blanks(rest);
    if (!rest.empty() && std::string_view("@%#\"").find(rest.front()) != std::string_view::npos) {
        rest.remove_prefix(1);
    }
    if (rest.starts_with("function") || rest.starts_with("STT_FUNC") ||
        rest.starts_with("gnu_indirect_function") || rest.starts_with("STT_GNU_IFUNC")) {
        add_function_symbol(reader, symbol);
    }
}

// set-directive ::= ".set" symbol "," value
static void read_set(text_reader& reader, std::string_view rest) {
    const std::string_view symbol = take_symbol(rest);
    skip_blanks(rest);
    if (!symbol.empty() && rest.starts_with(',')) {
        rest.remove_prefix(1);
        skip_blanks(rest);
        // Where data are reached from one label for many, it is set so.
        if (rest == "." || rest == ". + 0") {
            return add_label(reader, symbol);
        }
        reader.assembly.aliases.push_back({symbol, rest});
    }
}

// Whatever an assembler makes of the line, the interlister would act on it.
void refuse_interlist_directive(text_reader& reader) {
    std::string_view rest = reader.text.substr(reader.line_at);
    if (!rest.starts_with("\t.i")) {
        return;
    }
    rest.remove_prefix(1);
    const std::string_view name = take_symbol(rest);
    if (rest.starts_with('\t') && find_directive(name).kind == directive::interlist) {
        fail(reader, "the input already has interlist directives (" + std::string(name) + ")");
    }
}

// A section is entered, or perhaps entered again.
static void follow_section(text_reader& reader, const directive_row& row, std::string_view rest) {
    const std::uint32_t before = reader.track.current();
    reader.track.follow(row, rest);
    if (reader.track.current() == before) {
        return;
    }
    leave_section(reader, before);
    reader.in_debug = reader.assembly.sections[reader.track.current()].kind == section_kind::debug;
    if (row.kind != directive::push_section && row.kind != directive::pop_section &&
        row.kind != directive::end_handler) {
        // Without a declaration nothing tells that a function goes on elsewhere.
        if (reader.in_function && !reader.assembly.functions.back().is_declared) {
            end_function(reader, reader.line_at);
        }
        reader.loose_label = none;
    }
}

// The compiler's own assembler gives a position to data, too; only room gets none.
static void read_data_directive(text_reader& reader, directive kind) {
    reader.is_written = reader.is_written ||
                        (reader.has_pending && kind != directive::room && is_integrated(reader));
    if (reader.assembly.sections[reader.track.current()].kind != section_kind::code) {
        return;
    }
    std::vector<std::uint32_t>& data_lines = reader.assembly.data_lines;
    if (data_lines.empty() || data_lines.back() != reader.line_at) {
        data_lines.push_back(reader.line_at);
    }
}

// Acts on the directive at the front of a statement; `rest` is what stands behind its name.
void read_directive(text_reader& reader, std::string_view name, std::string_view rest) {
    if (name == ".loc") {
        return read_loc(reader, rest);
    }
    const directive_row& row = find_directive(name);
    if (!row.is_preamble) {
        reader.preamble = none;
    } else if (reader.preamble == none) {
        reader.preamble = reader.line_at;
    }
    if (row.kind == directive::align) {
        return leads_up(reader);
    }
    if (row.kind == directive::instruction) {
        return code(reader);
    }
    trails(reader);
    if (row.kind != directive::file && row.kind != directive::begin_procedure) {
        reader.may_be_procedure = false;
    }
    switch (row.kind) {
        case directive::file:
            return read_file(reader, rest);
        case directive::begin_procedure:
            return begin_procedure(reader);
        case directive::end_procedure:
            return end_procedure(reader);
        case directive::type:
            return read_type(reader, rest);
        case directive::def:
            reader.defined_symbol = take_symbol(rest);
            return;
        case directive::size:
            if (reader.in_function && reader.procedure_at == none &&
                take_symbol(rest) == reader.assembly.functions.back().symbol) {
                end_function(reader, reader.next_line_at);
            }
            return;
        case directive::named_section:
        case directive::own_section:
        case directive::push_section:
        case directive::pop_section:
        case directive::previous_section:
        case directive::subsection:
        case directive::end_handler:
            return follow_section(reader, row, rest);
        case directive::begin_macro:
            reader.macro_depth = 1;
            return;
        case directive::set:
            return read_set(reader, rest);
        case directive::interlist:
            return refuse_interlist_directive(reader);
        default:
            break;
    }
    if (is_data(row.kind)) {
        read_data_directive(reader, row.kind);
    }
}

}  // namespace assembly
