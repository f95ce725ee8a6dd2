// The directives that matter to a reader of compilers' assembly, as one table.
#pragma once

#include <cstdint>
#include <string_view>

namespace assembly {

enum class directive : std::uint8_t {
    other,  // is passed over
    loc,
    file,
    type,
    def,
    size,
    begin_procedure,
    end_procedure,
    named_section,  // `.section NAME`
    own_section,    // `.text`: the directive's name is the section's
    push_section,
    pop_section,
    previous_section,
    subsection,
    end_handler,  // goes back from the handler's data, if these are not left yet
    begin_macro,
    end_macro,
    set,
    align,
    instruction,  // an instruction spelled as a number
    values,       // a list of numbers of a fixed size
    word,         // the same, of the target's word size
    uleb128,
    sleb128,
    text,             // strings
    terminated_text,  // strings, a NUL behind each
    room,             // so many bytes of one value
    alike,            // data of a kind that is only passed over
    interlist,        // the interlister's own
};

struct directive_row {
    std::string_view name;
    directive kind = directive::other;
    std::uint8_t size = 0;     // in bytes, of one of `values`
    bool is_preamble = false;  // stands between functions and belongs to the next one
};

// The row of a directive; one of kind `other` when it has none.
const directive_row& find_directive(std::string_view name);

// Whether the directive emits data rather than code.
inline bool is_data(directive kind) {
    return kind >= directive::values && kind <= directive::alike;
}

}  // namespace assembly
