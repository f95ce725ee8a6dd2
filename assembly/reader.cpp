// One pass over the assembly text, line by line. What a statement is shows in its first
// characters, alike for every target: a label ends in a colon, a directive begins with a
// full stop, and everything else that no known comment character opens is code.
#include "assembly/reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "assembly/data.h"
#include "assembly/directive.h"
#include "assembly/operand.h"
#include "assembly/section.h"

namespace assembly {

// Line numbers are read back by a reader with an int for them.
static constexpr std::uint32_t greatest_line = std::numeric_limits<std::int32_t>::max() - 1;

// Offsets fit 32 bits.
static constexpr std::size_t greatest_text = std::numeric_limits<std::uint32_t>::max() - 1;

namespace {

// The next places of characters by which a line may be more than one plain statement, so
// that lines without any of them cost one comparison for all.
class special_places {
  public:
    special_places(std::string_view text, char parting)
        : text_(text), marks_{parting, '/', '=', ':'} {}

    // Looks for those that stand in the stretch from `from` to `to`; stretches follow each
    // other.
    void move_to(std::size_t from, std::size_t to) {
        to_ = to;
        if (nearest_ < from || to > horizon_) {
            look(from);
        }
    }

    bool any() const { return nearest_ < to_; }
    bool more_than_colon() const {
        return at_[separator] < to_ || at_[comment] < to_ || at_[equals] < to_;
    }
    bool needs_parting() const { return at_[separator] < to_ || at_[comment] < to_; }

    // How far it looks ahead. What is read next has then just come into the processor's
    // cache. Further on there may be none of some, and debugging data, which need none.
    static constexpr std::size_t far = std::size_t{1} << 14;

  private:
    enum mark : std::uint8_t { separator, comment, equals, colon };
    static constexpr std::size_t nowhere = std::string_view::npos;

    void look(std::size_t from) {
        const bool is_further = to_ > horizon_;
        if (is_further) {
            horizon_ = std::max(to_, std::min(from + far, text_.size()));
        }
        const std::string_view near = text_.substr(0, horizon_);
        nearest_ = nowhere;
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            if (at_[i] < from || (is_further && at_[i] == nowhere)) {
                at_[i] = i == comment ? near.find("/*", from) : near.find(marks_[i], from);
            }
            nearest_ = std::min(nearest_, at_[i]);
        }
    }

    std::string_view text_;
    std::array<char, 4> marks_;
    std::array<std::size_t, 4> at_{};  // behind the stretch, or in it, or nowhere up to the horizon
    std::size_t horizon_ = 0;
    std::size_t nearest_ = 0;
    std::size_t to_ = 0;
};

// What the reader knows at one line.
struct text_reader {
    std::string_view text;
    assembly_file& assembly;
    const read_options& options;
    section_track track;
    special_places special;
    std::optional<assembly_error> error = {};

    std::uint32_t line_at = 0;
    std::uint32_t line_end = 0;
    std::uint32_t next_line_at = 0;
    bool in_comment = false;            // a block comment that an earlier line began
    std::size_t macro_depth = 0;        // of .macro and .endm
    bool in_debug = false;              // in a debugging section
    bool in_function = false;           // the last of assembly.functions is open
    std::uint32_t procedure_at = none;  // the line of a .cfi_startproc without its end
    std::uint32_t inline_at = none;     // where inline assembly has begun
    bool marked_app = false;            // with a mark that has one for its end

    std::unordered_set<std::string_view> function_symbols = {};  // of `.type SYMBOL, @function`
    bool has_local_function = false;                             // one of them is a local label
    std::string_view defined_symbol = {};                        // of the last `.def`
    std::uint32_t preamble = none;   // first of the preamble lines just read
    std::uint32_t last_code = none;  // the last line of code

    // A label outside functions, which a procedure or code may turn out to begin at.
    std::uint32_t loose_label = none;
    std::uint32_t loose_begin = 0;                  // where its function would begin
    bool may_be_procedure = false;                  // nothing but a `.loc` came since
    std::optional<code_position> loose_entry = {};  // its first `.loc`

    code_position pending = {};  // the last `.loc`
    bool has_pending = false;    // until it gets code
    bool is_written = false;     // it has a row of the section that it stands in as it is
    // The `.loc` right before it, and the section that it has a row of, or none.
    code_position passed = {};
    std::uint32_t passed_section = none;
    // By section: the last row where no code has that yet.
    std::unordered_map<std::uint32_t, code_position> left_behind = {};
    std::uint32_t lead = none;                  // first of the lines that lead up to the next code
    bool pending_leads = false;                 // they include that `.loc`
    std::optional<bool> is_integrated = {};     // see there
    std::vector<std::uint32_t> positions = {};  // by section: the one that code there has
    std::vector<std::uint32_t> debug_of = {};   // by section: index of its debug contents
};

}  // namespace

static void fail(text_reader& reader, std::string message) {
    if (!reader.error) {
        const std::string_view before = reader.text.substr(0, reader.line_at);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        reader.error = assembly_error{static_cast<std::size_t>(line), std::move(message)};
    }
}

// --- Functions ---

static void end_function(text_reader& reader, std::uint32_t at) {
    if (!reader.in_function) {
        return;
    }
    assembly_file& assembly = reader.assembly;
    function_code& function = assembly.functions.back();
    function.end = at;
    function.position_count =
        static_cast<std::uint32_t>(assembly.positions.size()) - function.first_position;
    function.instruction_count =
        static_cast<std::uint32_t>(assembly.instructions.size()) - function.first_instruction;
    reader.in_function = false;
    reader.loose_label = none;
    reader.pending_leads = false;
    reader.lead = none;
}

// Begins one at the label with index `label`; with none, code without a label begins it.
static function_code& begin_function(text_reader& reader, std::uint32_t label, std::uint32_t at) {
    end_function(reader, at);
    assembly_file& assembly = reader.assembly;
    if (!assembly.functions.empty()) {
        // Both may have statements of one line.
        assembly.functions.back().end = std::min(assembly.functions.back().end, at);
    }
    reader.pending.at = std::max(reader.pending.at, at);
    function_code& function = assembly.functions.emplace_back();
    if (label != none) {
        function.symbol = assembly.name_of(assembly.labels[label]);
    }
    function.begin = at;
    function.label = label;
    function.first_position = static_cast<std::uint32_t>(assembly.positions.size());
    function.first_instruction = static_cast<std::uint32_t>(assembly.instructions.size());
    reader.in_function = true;
    reader.loose_label = none;
    reader.pending_leads = false;
    reader.lead = none;
    return function;
}

static void begin_procedure(text_reader& reader) {
    if (reader.procedure_at != none) {
        const std::string_view before = reader.text.substr(0, reader.procedure_at);
        return fail(reader, "a procedure begins inside the one of line " +
                                std::to_string(std::count(before.begin(), before.end(), '\n') + 1));
    }
    reader.procedure_at = reader.line_at;
    const bool is_open = reader.in_function && reader.assembly.functions.back().is_declared;
    if (!is_open && reader.loose_label != none && reader.may_be_procedure) {
        const std::optional<code_position> entry = reader.loose_entry;
        begin_function(reader, reader.loose_label, reader.loose_begin).entry = entry;
    }
}

static void end_procedure(text_reader& reader) {
    if (reader.procedure_at == none) {
        return fail(reader, "a procedure ends that has not begun");
    }
    reader.procedure_at = none;
    end_function(reader, reader.next_line_at);
}

// --- Code and what leads up to it ---

// Code outside functions is in one that only its label tells of, or not even that.
static void begin_undeclared(text_reader& reader) {
    const bool is_labelled = reader.loose_label != none;
    function_code& function = begin_function(reader, reader.loose_label,
                                             is_labelled ? reader.loose_begin : reader.line_at);
    function.is_declared = false;
    if (reader.has_pending && reader.pending.line != 0) {
        function.entry = reader.pending;
    }
}

// A line that emits instructions. It has the last position that a `.loc` gave in its
// section, this line's own included.
static void code(text_reader& reader) {
    if (!reader.in_function) {
        begin_undeclared(reader);
    }
    assembly_file& assembly = reader.assembly;
    if (reader.last_code == reader.line_at) {
        return;  // a further statement of the line
    }
    reader.last_code = reader.line_at;
    const std::uint32_t at = reader.track.current();
    if (reader.positions.size() <= at) {
        reader.positions.resize(at + 1, none);
    }
    std::uint32_t& position = reader.positions[at];
    if (reader.has_pending) {
        position = static_cast<std::uint32_t>(assembly.positions.size());
        assembly.positions.push_back(reader.pending);
        reader.has_pending = false;
        if (!reader.left_behind.empty()) {
            reader.left_behind.erase(at);
        }
    }
    if (position != none) {
        ++assembly.positions[position].code;
    }
    ++assembly.sections[at].instruction_count;
    assembly.instructions.push_back({reader.line_at, reader.line_end, position, at});
    reader.pending_leads = false;
    reader.lead = none;
    reader.preamble = none;
}

// A label, a comment, an alignment: it belongs to the code after it.
static void leads_up(text_reader& reader) {
    if (reader.lead == none) {
        reader.lead = reader.line_at;
    }
}

// A directive of any other kind belongs to what stands before it.
static void trails(text_reader& reader) {
    if (!reader.pending_leads) {
        reader.lead = none;
    }
}

// A decimal number, and where it ends.
namespace {
struct small_number {
    std::uint32_t value;  // none where there is no number, or one that does not fit
    const char* end;
};
}  // namespace

static inline small_number read_small_number(const char* at, const char* const end) {
    while (at != end && is_blank(*at)) {
        ++at;
    }
    constexpr std::ptrdiff_t most_digits = 10;
    const char* const begin = at;
    const char* const last = end - at > most_digits ? at + most_digits : end;
    std::uint64_t value = 0;
    for (; at != last && is_digit(*at); ++at) {
        value = value * 10 + static_cast<unsigned>(*at - '0');
    }
    const bool is_number = at != begin && value < none && (at == end || !is_symbol_character(*at));
    return {is_number ? static_cast<std::uint32_t>(value) : none, at};
}

// loc-directive ::= ".loc" file line [column] option*
static void read_loc(text_reader& reader, std::string_view rest) {
    const char* const end = rest.data() + rest.size();
    const small_number file = read_small_number(rest.data(), end);
    if (file.value == none) {
        return fail(reader, "bad file number in .loc");
    }
    const small_number line = read_small_number(file.end, end);
    if (line.value > greatest_line) {
        return fail(reader, "bad line number in .loc");
    }
    leads_up(reader);
    code_position& position = reader.pending;
    if (reader.has_pending) {
        reader.passed = position;
        reader.passed_section = reader.track.current();
    } else {
        reader.passed_section = none;
    }
    reader.is_written = false;
    position.at = reader.lead;
    position.directive = reader.line_at;
    position.file = file.value;
    position.line = line.value;
    reader.has_pending = true;
    reader.pending_leads = true;
    if (line.value == 0) {
        return;
    }
    if (!reader.in_function) {
        if (!reader.loose_entry) {
            reader.loose_entry = position;
        }
    } else if (function_code& function = reader.assembly.functions.back(); !function.entry) {
        // The entry stands for the whole way in, prologue included.
        function.entry = position;
        reader.pending_leads = false;
        reader.lead = none;
    }
}

std::uint32_t column_of(const assembly_file& assembly, const code_position& position) {
    std::string_view rest = assembly.text.substr(position.directive);
    rest.remove_prefix(rest.find(".loc") + std::string_view(".loc").size());
    const char* const end = rest.data() + std::min(rest.find('\n'), rest.size());
    const small_number file = read_small_number(rest.data(), end);
    const small_number line = read_small_number(file.end, end);
    const small_number column = read_small_number(line.end, end);
    return column.value == none ? 0 : column.value;
}

// --- Directives ---

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

static bool is_local(std::string_view symbol) {
    return !symbol.empty() &&
           (symbol[0] == '.' || symbol[0] == 'L' || symbol[0] == '$' || is_digit(symbol[0]));
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

static void add_label(text_reader& reader, std::string_view symbol) {
    assembly_file& assembly = reader.assembly;
    const std::uint32_t at = reader.track.current();
    const auto index = static_cast<std::uint32_t>(assembly.labels.size());
    assembly.labels.push_back({static_cast<std::uint32_t>(symbol.data() - reader.text.data()),
                               static_cast<std::uint32_t>(symbol.size()), at,
                               assembly.sections[at].instruction_count});
    const std::uint32_t begin = reader.preamble == none ? reader.line_at : reader.preamble;
    reader.preamble = none;
    const bool is_mark = is_local(symbol);
    if ((!is_mark || reader.has_local_function) && reader.function_symbols.contains(symbol)) {
        begin_function(reader, index, begin);
        return;
    }
    const bool is_open = reader.in_function && assembly.functions.back().is_declared;
    if (!is_mark && !is_open && assembly.sections[at].kind == section_kind::code) {
        end_function(reader, begin);
        reader.loose_label = index;
        reader.loose_begin = begin;
        reader.may_be_procedure = true;
        reader.loose_entry.reset();
    }
    leads_up(reader);
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
static void refuse_interlist_directive(text_reader& reader) {
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

// Whether the assembler is the compiler's own, as Clang's is, which goes by what such texts
// end with.
static bool is_integrated(text_reader& reader) {
    if (!reader.is_integrated) {
        constexpr std::size_t enough = 1 << 16;
        const std::string_view text = reader.text;
        const std::string_view end = text.substr(text.size() - std::min(text.size(), enough));
        reader.is_integrated = end.find("\n\t.addrsig") != std::string_view::npos ||
                               end.find("\n.subsections_via_symbols") != std::string_view::npos ||
                               end.find("clang version") != std::string_view::npos;
    }
    return *reader.is_integrated;
}

static bool has_view(const text_reader& reader, const code_position& position) {
    const std::size_t at = position.directive;
    const std::string_view line = reader.text.substr(at, end_of_line(reader.text, at) - at);
    return line.find(" view ") != std::string_view::npos;
}

// Where another section goes on. A `.loc` gets its row of the line table in the section that
// holds the next code or the next `.loc`, with a view in its own. The compiler's own assembler
// forgets one that has none yet when the section changes.
static void leave_section(text_reader& reader, std::uint32_t before) {
    if (reader.has_pending) {
        if (reader.is_written || (!is_integrated(reader) && has_view(reader, reader.pending))) {
            reader.left_behind.insert_or_assign(before, reader.pending);
            reader.has_pending = false;
        } else if (reader.passed_section == before) {
            reader.left_behind.insert_or_assign(before, reader.passed);
        }
        reader.has_pending = reader.has_pending && !is_integrated(reader);
    }
    reader.passed_section = none;
    const auto left = reader.left_behind.find(reader.track.current());
    if (left != reader.left_behind.end() && !reader.has_pending) {
        reader.pending = left->second;
        reader.pending.at = reader.next_line_at;
        reader.has_pending = true;
        reader.is_written = true;
        reader.left_behind.erase(left);
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
static void read_directive(text_reader& reader, std::string_view name, std::string_view rest) {
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
