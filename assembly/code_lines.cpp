// Puts code in its function, with the position that it has in the object: what begins and
// ends functions, what `.loc` directives tell, and what becomes of them where the section
// changes.
#include <algorithm>
#include <limits>
#include <utility>

#include "assembly/operand.h"
#include "assembly/text_reader.h"

namespace assembly {

// Line numbers are read back by a reader with an int for them.
static constexpr std::uint32_t greatest_line = std::numeric_limits<std::int32_t>::max() - 1;

void fail(text_reader& reader, std::string message) {
    if (!reader.error) {
        const std::string_view before = reader.text.substr(0, reader.line_at);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        reader.error = assembly_error{static_cast<std::size_t>(line), std::move(message)};
    }
}

// --- Functions ---

void end_function(text_reader& reader, std::uint32_t at) {
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

void begin_procedure(text_reader& reader) {
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

void end_procedure(text_reader& reader) {
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
void code(text_reader& reader) {
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
void read_loc(text_reader& reader, std::string_view rest) {
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

bool is_local(std::string_view symbol) {
    return !symbol.empty() &&
           (symbol[0] == '.' || symbol[0] == 'L' || symbol[0] == '$' || is_digit(symbol[0]));
}

void add_label(text_reader& reader, std::string_view symbol) {
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

// Whether the assembler is the compiler's own, as Clang's is, which goes by what such texts
// end with.
bool is_integrated(text_reader& reader) {
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
void leave_section(text_reader& reader, std::uint32_t before) {
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

}  // namespace assembly
