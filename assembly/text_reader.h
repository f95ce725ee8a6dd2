// What the parts of the reader share: what is known at one line, and what lines of code,
// labels and directives do about it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "assembly/reader.h"
#include "assembly/section.h"
#include "assembly/special_places.h"

namespace assembly {

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

// Makes this line's error the one that reading ends with, if it is the first.
void fail(text_reader& reader, std::string message);

// A label, a comment, an alignment: it belongs to the code after it.
inline void leads_up(text_reader& reader) {
    if (reader.lead == none) {
        reader.lead = reader.line_at;
    }
}

// A directive of any other kind belongs to what stands before it.
inline void trails(text_reader& reader) {
    if (!reader.pending_leads) {
        reader.lead = none;
    }
}

// Whether a symbol is for the assembler alone.
bool is_local(std::string_view symbol);

// Ends the open function, if there is one, ahead of the line at `at`.
void end_function(text_reader& reader, std::uint32_t at);
// .cfi_startproc and its like, and their ends
void begin_procedure(text_reader& reader);
void end_procedure(text_reader& reader);

// A line that emits instructions.
void code(text_reader& reader);
void add_label(text_reader& reader, std::string_view symbol);
// Another section than the one with this index goes on.
void leave_section(text_reader& reader, std::uint32_t before);
// Whether the assembler is the compiler's own, as Clang's is.
bool is_integrated(text_reader& reader);

// Each gets what stands behind the directive's name.
void read_loc(text_reader& reader, std::string_view rest);
void read_directive(text_reader& reader, std::string_view name, std::string_view rest);
// Fails at a directive of the interlister's.
void refuse_interlist_directive(text_reader& reader);

}  // namespace assembly
