// One pass over the assembly text, line by line. What a line is shows in its first
// characters, alike for every target: a label stands at the line's start, a directive
// begins with a full stop, and everything else that no known comment character opens
// is code.
#include "assembly/reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <unordered_set>
#include <utility>

#include "assembly/operand.h"

namespace assembly {
namespace {

// Line numbers are read back by a reader with an int for them.
constexpr std::uint32_t greatest_line = std::numeric_limits<std::int32_t>::max() - 1;

// A listing is made with a line buffer of this size; only lines that fit it keep
// their carriage returns in step.
constexpr std::size_t listing_line_limit = 16382;

constexpr std::array<std::string_view, 5> interlist_directives = {
    "\t.ifile\t", "\t.ifunc\t", "\t.iline\t", "\t.isym\t", "\t.iendfunc\t",
};

// Directives that stand between one function and the next and belong to the latter.
constexpr std::array<std::string_view, 33> preamble_directives = {
    ".align",
    ".arch",
    ".arm",
    ".balign",
    ".cfi_lsda",
    ".cfi_personality",
    ".cfi_startproc",
    ".code",
    ".code16",
    ".code32",
    ".def",
    ".endef",
    ".ent",
    ".fpu",
    ".global",
    ".globl",
    ".hidden",
    ".internal",
    ".local",
    ".option",
    ".p2align",
    ".private_extern",
    ".protected",
    ".scl",
    ".section",
    ".set",
    ".syntax",
    ".text",
    ".thumb",
    ".thumb_func",
    ".type",
    ".weak",
    ".weak_definition",
};

// What the reader knows at one line. Offsets are those of line starts.
struct text_reader {
    std::string_view text;
    assembly_file& assembly;
    std::unordered_set<std::string_view> function_symbols = {};  // of `.type SYMBOL, @function`
    std::optional<assembly_error> error = {};

    std::size_t line_number = 0;
    std::size_t line_at = 0;

    bool in_function = false;   // the last of assembly.functions is open
    bool in_procedure = false;  // between .cfi_startproc and .cfi_endproc
    std::size_t procedure_line = 0;
    bool in_macro = false;  // between .macro and .endm

    std::optional<std::size_t> preamble = {};  // first of the preamble lines just read

    // Formats without `.type`: a label that a procedure may turn out to begin at.
    std::string_view procedure_label = {};
    std::size_t procedure_label_at = 0;                 // where its function would begin
    std::optional<code_position> procedure_entry = {};  // and its first `.loc`
    std::string_view defined_symbol = {};               // of the last `.def`

    std::optional<std::size_t> lead = {};       // first of the lines that lead up to the next code
    std::optional<code_position> pending = {};  // the last `.loc`, until it gets code
};

void fail(text_reader& reader, std::string message) {
    if (!reader.error) {
        reader.error = assembly_error{reader.line_number, std::move(message)};
    }
}

// A read-back of the function's lines drops end-of-file marks and bytes of value 255,
// so a function that has any is better left alone.
bool survives_listing(std::string_view lines) {
    if (std::memchr(lines.data(), 0x1a, lines.size()) != nullptr ||
        std::memchr(lines.data(), 0xff, lines.size()) != nullptr) {
        return false;
    }
    if (std::memchr(lines.data(), '\r', lines.size()) == nullptr) {
        return true;
    }
    while (!lines.empty()) {
        const std::size_t size = std::min(lines.find('\n'), lines.size() - 1) + 1;
        if (size > listing_line_limit) {
            return false;
        }
        lines.remove_prefix(size);
    }
    return true;
}

void end_function(text_reader& reader, std::size_t at) {
    if (!reader.in_function) {
        return;
    }
    function_code& function = reader.assembly.functions.back();
    function.end = at;
    function.position_count = reader.assembly.positions.size() - function.first_position;
    function.can_hold_directives =
        survives_listing(reader.text.substr(function.begin, at - function.begin));
    reader.in_function = false;
    reader.pending.reset();
    reader.lead.reset();
}

void begin_function(text_reader& reader, std::string_view symbol, std::size_t at) {
    end_function(reader, at);
    function_code function;
    function.symbol = symbol;
    function.begin = at;
    function.first_position = reader.assembly.positions.size();
    reader.assembly.functions.push_back(function);
    reader.in_function = true;
    reader.procedure_label = {};
    reader.pending.reset();
    reader.lead.reset();
}

// A line that emits something. The position it has is the last `.loc` before it; a
// directive for that stands before the labels and `.loc` lines that lead up to it.
void code(text_reader& reader) {
    if (reader.pending) {
        reader.assembly.positions.push_back(*reader.pending);
        reader.pending.reset();
    }
    if (reader.in_function &&
        reader.assembly.positions.size() > reader.assembly.functions.back().first_position) {
        ++reader.assembly.positions.back().code;
    }
    reader.lead.reset();
    reader.procedure_label = {};
}

// A label, a comment, an alignment: it belongs to the code after it.
void leads_up(text_reader& reader) {
    if (!reader.lead) {
        reader.lead = reader.line_at;
    }
}

// A directive of any other kind belongs to what stands before it.
void trails(text_reader& reader) {
    if (!reader.pending) {
        reader.lead.reset();
    }
}

// loc-directive ::= ".loc" file line [column] option*
void read_loc(text_reader& reader, std::string_view rest) {
    const std::optional<std::uint32_t> file = take_number(rest);
    if (!file) {
        return fail(reader, "bad file number in .loc");
    }
    const std::optional<std::uint32_t> line = take_number(rest);
    if (!line || *line > greatest_line) {
        return fail(reader, "bad line number in .loc");
    }
    leads_up(reader);
    const code_position position{*reader.lead, *file, *line, 0};
    if (!reader.in_function) {
        if (!reader.procedure_entry && *line != 0) {
            reader.procedure_entry = position;
        }
        return;
    }
    function_code& function = reader.assembly.functions.back();
    if (!function.entry && *line != 0) {
        // The entry stands for the whole way in, prologue included.
        function.entry = position;
        reader.lead.reset();
        return;
    }
    reader.pending = position;
}

// file-directive ::= ".file" (name | number [directory] name option*)
void read_file(text_reader& reader, std::string_view rest) {
    skip_blanks(rest);
    if (rest.empty() || !is_digit(rest.front())) {
        const std::optional<std::string> name = take_string(rest);
        if (!name) {
            return fail(reader, "bad file name in .file");
        }
        if (reader.assembly.main_file.empty()) {
            reader.assembly.main_file = *name;
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
    if (!rest.empty() && rest.front() == '"') {
        name = take_string(rest);
        if (!name) {
            return fail(reader, "bad file name in .file");
        }
        entry = file_entry{std::move(entry.name), std::move(*name)};
    }
    const auto [known, is_new] = reader.assembly.files.try_emplace(*number, entry);
    if (!is_new &&
        (known->second.directory != entry.directory || known->second.name != entry.name)) {
        fail(reader, "file number " + std::to_string(*number) + " is already in use");
    }
}

// type-directive ::= ".type" symbol "," [prefix] ("function" | "STT_FUNC" | ...)
//                  | ".type" number        between ".def" and ".endef"
void read_type(text_reader& reader, std::string_view rest) {
    constexpr std::uint32_t function_type = 32;
    skip_blanks(rest);
    if (!rest.empty() && is_digit(rest.front())) {
        if (take_number(rest) == function_type) {
            reader.function_symbols.insert(reader.defined_symbol);
        }
        return;
    }
    const std::string_view symbol = take_symbol(rest);
    skip_blanks(rest);
    if (!rest.empty() && rest.front() == ',') {
        rest.remove_prefix(1);
    }
    skip_blanks(rest);
    if (!rest.empty() && std::string_view("@%#\"").find(rest.front()) != std::string_view::npos) {
        rest.remove_prefix(1);
    }
    if (rest.starts_with("function") || rest.starts_with("STT_FUNC") ||
        rest.starts_with("gnu_indirect_function") || rest.starts_with("STT_GNU_IFUNC")) {
        reader.function_symbols.insert(symbol);
    }
}

// def-directive ::= ".def" symbol (";" directive)*
void read_def(text_reader& reader, std::string_view rest) {
    reader.defined_symbol = take_symbol(rest);
    constexpr std::string_view type = ".type";
    if (const std::size_t at = rest.find(type); at != std::string_view::npos) {
        read_type(reader, rest.substr(at + type.size()));
    }
}

void begin_procedure(text_reader& reader) {
    if (reader.in_procedure) {
        return fail(reader, "a procedure begins inside the one of line " +
                                std::to_string(reader.procedure_line));
    }
    reader.in_procedure = true;
    reader.procedure_line = reader.line_number;
    if (!reader.in_function && !reader.procedure_label.empty()) {
        begin_function(reader, reader.procedure_label, reader.procedure_label_at);
        reader.assembly.functions.back().entry = reader.procedure_entry;
    }
}

void end_procedure(text_reader& reader, std::size_t next_line_at) {
    if (!reader.in_procedure) {
        return fail(reader, "a procedure ends that has not begun");
    }
    reader.in_procedure = false;
    end_function(reader, next_line_at);
}

// Acts on the directive at the front of `rest`.
void read_directive(text_reader& reader, std::string_view rest, std::size_t next_line_at) {
    const std::string_view name = take_word(rest);
    if (name == ".loc") {
        return read_loc(reader, rest);
    }
    const bool is_preamble =
        std::binary_search(preamble_directives.begin(), preamble_directives.end(), name);
    if (!is_preamble) {
        reader.preamble.reset();
    } else if (!reader.preamble) {
        reader.preamble = reader.line_at;
    }
    if (name == ".p2align" || name == ".align" || name == ".balign") {
        return leads_up(reader);
    }
    trails(reader);
    if (name == ".file") {
        return read_file(reader, rest);
    }
    if (name == ".cfi_startproc" || name == ".seh_proc") {
        return begin_procedure(reader);
    }
    reader.procedure_label = {};
    if (name == ".type") {
        read_type(reader, rest);
    } else if (name == ".def") {
        read_def(reader, rest);
    } else if (name == ".cfi_endproc" || name == ".seh_endproc") {
        end_procedure(reader, next_line_at);
    } else if (name == ".size") {
        if (reader.in_function && !reader.in_procedure &&
            take_symbol(rest) == reader.assembly.functions.back().symbol) {
            end_function(reader, next_line_at);
        }
    } else if (name == ".macro") {
        reader.in_macro = true;
    }
}

// Whether a comment begins here, for any target's comment character.
bool opens_comment(std::string_view rest) {
    return std::string_view("#@;|!").find(rest.front()) != std::string_view::npos ||
           rest.starts_with("//") || rest.starts_with("/*");
}

// A label at the start of the line: the symbol of a function, or a mark within one.
// Gives what stands behind it, or nothing when the line does not begin with a label.
std::optional<std::string_view> read_label(text_reader& reader, std::string_view line) {
    const std::string_view symbol = take_symbol(line);
    if (symbol.empty() || line.empty() || line.front() != ':') {
        return std::nullopt;
    }
    line.remove_prefix(1);
    skip_blanks(line);
    const std::size_t begin = reader.preamble.value_or(reader.line_at);
    reader.preamble.reset();
    if (reader.function_symbols.contains(symbol)) {
        begin_function(reader, symbol, begin);
        return line;
    }
    const bool is_local = symbol.starts_with(".") || symbol.starts_with("L") || is_digit(symbol[0]);
    if (!is_local && !reader.in_function) {
        reader.procedure_label = symbol;
        reader.procedure_label_at = begin;
        reader.procedure_entry.reset();
    }
    leads_up(reader);
    return line;
}

void read_line(text_reader& reader, std::string_view line, std::size_t next_line_at) {
    std::string_view rest = line;
    if (!rest.empty() && rest.back() == '\r') {
        rest.remove_suffix(1);
    }
    if (!rest.empty() && !is_blank(rest.front()) && rest.front() != '#') {
        rest = read_label(reader, rest).value_or(rest);
    }
    skip_blanks(rest);
    if (rest.empty() || opens_comment(rest)) {
        return leads_up(reader);
    }
    if (reader.in_macro) {
        reader.in_macro = !rest.starts_with(".endm");
        return;
    }
    if (rest.front() == '.') {
        return read_directive(reader, rest, next_line_at);
    }
    reader.preamble.reset();
    code(reader);
}

void refuse_interlist_directives(text_reader& reader, std::string_view line) {
    for (const std::string_view directive : interlist_directives) {
        if (line.starts_with(directive)) {
            fail(reader, "the input already has interlist directives (" +
                             std::string(directive.substr(1, directive.size() - 2)) + ")");
        }
    }
}

// Version 5 of the debugging format tells it in file 0. Before that, some compilers
// give it with every file; it shows where file 1 is the main file.
std::string compilation_directory(const assembly_file& assembly) {
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

}  // namespace

std::optional<assembly_error> read_assembly(std::string_view text, assembly_file& assembly) {
    assembly = assembly_file();
    text_reader reader{.text = text, .assembly = assembly};
    const std::size_t first_end = text.find('\n');
    assembly.carriage_returns =
        first_end != std::string_view::npos && first_end > 0 && text[first_end - 1] == '\r';

    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::size_t next = std::min(end + 1, text.size());
        const std::string_view line = text.substr(at, end - at);
        reader.line_at = at;
        ++reader.line_number;
        if (line.starts_with("\t.i")) {
            refuse_interlist_directives(reader, line);
        }
        // Without a line end of its own, the last line must stay the last.
        read_line(reader, line, end < text.size() ? next : at);
        if (reader.error) {
            return reader.error;
        }
        at = next;
    }
    if (reader.in_procedure) {
        fail(reader, "the input ends inside the procedure of line " +
                         std::to_string(reader.procedure_line));
        return reader.error;
    }
    end_function(reader, text.ends_with('\n') ? text.size() : reader.line_at);
    assembly.compilation_directory = compilation_directory(assembly);
    return std::nullopt;
}

}  // namespace assembly
