// What the files of the Itanium ABI decoder share: the state of a call, the ways
// to print, and the routines of the grammar. Each routine takes the position it
// reads from and gives back the position after what it consumed; a fault is
// recorded in the state, after which every routine returns at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "demangle/output.h"

// Bounds that hostile names meet: each one is a bad name.
inline constexpr std::uint32_t eabi_max_depth = 1024;
inline constexpr std::uint32_t eabi_max_steps = 1000000;
inline constexpr std::uint64_t eabi_max_text = std::uint64_t{16} << 20;
inline constexpr std::uint64_t eabi_max_input = std::uint64_t{1} << 30;

// Cv-qualifiers travel as a bit set.
enum eabi_qualifier : unsigned {
    qualifier_const = 1,
    qualifier_volatile = 2,
    qualifier_restrict = 4
};

// How a printed type goes on: what its prefix ended in and whether a suffix follows.
enum eabi_shape : unsigned {
    shape_mark = 1,       // ends in a pointer or reference mark
    shape_suffix = 2,     // has a suffix part: a parameter list or array bounds
    shape_direct = 4,     // that suffix is its own: a mark needs a parenthesis first
    shape_qualified = 8,  // its outermost level carries qualifiers
    // The array bounds behind it show a ">" outside parentheses.
    shape_greater = 0x20000,
};

// The kinds of substitutable components.
enum eabi_subst_kind : std::uint32_t {
    subst_name = 0,             // an unqualified name, or "St" and one
    subst_prefix = 1,           // the components from start to prefix_end
    subst_prefix_and_name = 2,  // those, then "::" and the unqualified name at prefix_end
    subst_type = 3,             // a type
    subst_template_param = 4,   // a template parameter
};

// One substitutable component. Beside where it begins and how it is decoded again
// it keeps where its text stands in the output, when it stands there in one piece:
// most references are then a copy.
struct eabi_subst_entry {
    const char* start;  // in the mangled input
    eabi_subst_kind kind;
    std::uint32_t text_at;      // in the output
    std::uint32_t prefix_end;   // offset in the input
    std::uint32_t last_name;    // of the last component
    std::uint32_t type_flags;   // eabi_shape bits and the entry_... bits below
    std::uint32_t text_length;  // entry_no_text when there is no such text
};
static_assert(sizeof(eabi_subst_entry) == 32);

enum eabi_entry_flag : unsigned {
    entry_in_lambda = 0x10,        // stood in a lambda's parameter list
    entry_conversion = 0x20,       // a conversion operator
    entry_ends_in_less = 0x40,     // an operator whose text ends in "<"
    entry_module = 0x80,           // the name of a module
    entry_kind_shift = 8,          // the constructor kind, 0 for none, in this byte
    entry_without_args = 0x10000,  // what follows a parameter in it is not its arguments
};
inline constexpr std::uint32_t entry_no_text = ~std::uint32_t{0};

// A last name is the offset in the input plus 1 of a source name, an unnamed type or a
// template parameter; or this and the letter of an abbreviation; or 0 for none.
inline constexpr std::uint32_t eabi_abbreviation_name = 0xFFFFFF00;

// Where a type or an expression that was read without being printed ends, so that
// it need not be read again to get past it.
struct eabi_skipped {
    std::uint32_t start;  // offset in the input + 1
    std::uint32_t end;
    bool flag;  // of an expression: it shows a ">" outside parentheses; of "sr": one class
};

// Whether one class stands behind the "sr" at a position, which only reading on can tell:
// a bit for each position in the first part of the name.
struct eabi_looked {
    std::uint8_t known[512];  // the answer is known
    std::uint8_t found[512];  // and it is yes
};

struct eabi_decode_state : output_state {
    std::uint64_t no_record_depth = 0;  // substitutions are entered only while this is 0
    int conversion_seen = 0;            // a conversion operator was decoded
    int retrying = 0;                   // the second attempt at the name
    int is_subobject = 0;               // a constructor or destructor of kind 2 was decoded
    eabi_subst_entry* subst_table = nullptr;
    std::uint64_t subst_count = 0;
    std::uint64_t subst_capacity = 0;

    const char* input = nullptr;      // the mangled name, and
    const char* input_end = nullptr;  // its NUL
    std::uint64_t input_length = 0;
    std::uint32_t depth = 0;  // grammar nesting
    std::uint32_t steps_left = eabi_max_steps;
    unsigned shape = 0;                  // eabi_shape of the type decoded last
    std::uint32_t parentheses = 0;       // open around the expression being printed
    bool greater_seen = false;           // a ">" operator stood outside parentheses
    unsigned lambda_flag = 0;            // entry_in_lambda in a lambda's parameter list
    bool extended = false;               // decode_extended_names
    unsigned doubts = 0;                 // eabi_doubt bits that were met
    unsigned second_readings = 0;        // those that are decided the other way
    bool two_passes = false;             // print in the order of the text, see decode_eabi.cpp
    bool rotation_missed = false;        // the buffer was too small to move the return type
    bool skipped_in_use = false;         // skipped has been cleared
    bool looked_in_use = false;          // looked has been cleared
    eabi_skipped skipped[64];            // by the low bits of start, the last one stays
    eabi_looked looked;                  // by position
    eabi_subst_entry first_entries[32];  // the table until it outgrows them

    // Leaves the arrays alone: clearing them would cost more than most names.
    eabi_decode_state() noexcept {}  // NOLINT(modernize-use-equals-default)
};

// The part of a name decoded last, as its continuation needs to know it.
struct eabi_component {
    std::uint32_t last_name = 0;  // what a constructor after it repeats
    std::uint32_t flags = 0;      // eabi_entry_flag bits
};

// The kind of the constructor or destructor that the component is, else a blank.
inline char eabi_kind(const eabi_component& component) {
    const unsigned kind = component.flags >> entry_kind_shift;
    return kind == 0 ? ' ' : static_cast<char>(kind);
}

// Constructors, destructors and conversions carry no return type, templates or not.
inline bool eabi_carries_no_return_type(const eabi_component& component) {
    return (component.flags & ~static_cast<unsigned>(entry_ends_in_less)) != 0;
}

struct eabi_name_record {
    bool no_return_type = false;
    unsigned cv_qualifiers = 0;
    unsigned ref_qualifier = 0;  // 0, 1 "&", 2 "&&"
    char ctor_dtor_kind = ' ';
    bool explicit_object = false;  // the first parameter is declared "this"
};

// Where compilers disagree on how a class in front of "::" is written and entered. The
// first reading is tried; where the name goes wrong with it, the other one.
enum eabi_doubt : unsigned {
    doubt_one_class = 1,         // "sr" class member, or "sr" class+ "E" member
    doubt_class_levels = 2,      // "srN" class levels "E" member: whether the levels are entered
    doubt_dependent_levels = 4,  // the same behind a template parameter or a decltype
};

enum eabi_mode : unsigned { mode_record = 1, mode_print = 2, mode_both = 3 };

// --- Printing -------------------------------------------------------------------

// Records an error in the name; the first one ends all output and recording.
void report_bad_name(eabi_decode_state* state);

// Copies two blocks of `block` bytes that together cover the text.
template <std::size_t block>
inline void eabi_copy_ends(char* to, const char* from, std::size_t length) {
    struct bytes {
        char byte[block];
    };
    bytes head;
    bytes tail;
    std::memcpy(&head, from, block);
    std::memcpy(&tail, from + length - block, block);
    std::memcpy(to, &head, block);
    std::memcpy(to + length - block, &tail, block);
}

// Copies a short text with few branches; longer ones go to the library.
inline void eabi_copy(char* to, const char* from, std::size_t length) {
    if (length >= 8) {
        if (length <= 16) {
            eabi_copy_ends<8>(to, from, length);
        } else if (length <= 32) {
            eabi_copy_ends<16>(to, from, length);
        } else {
            std::memcpy(to, from, length);
        }
    } else if (length >= 4) {
        eabi_copy_ends<4>(to, from, length);
    } else if (length != 0) {
        to[0] = from[0];
        to[length / 2] = from[length / 2];
        to[length - 1] = from[length - 1];
    }
}

inline void eabi_put(const char* text, std::size_t length, eabi_decode_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    // Once the buffer has overflowed this never holds again.
    if (state->out_len + length < state->out_size) {
        eabi_copy(state->out_buf + state->out_len, text, length);
        state->out_len += length;
    } else {
        emit_bytes(text, length, state);
    }
}

inline void eabi_put(std::string_view text, eabi_decode_state* state) {
    eabi_put(text.data(), text.size(), state);
}

inline void eabi_put(char character, eabi_decode_state* state) {
    eabi_put(&character, 1, state);
}

// Prints a number ("%ld").
void eabi_put_number(std::int64_t value, eabi_decode_state* state);

// --- Guards ---------------------------------------------------------------------

// Counts one level of nesting and one step for as long as it lives.
struct eabi_level {
    explicit eabi_level(eabi_decode_state* call) : state(call) {
        if (++state->depth > eabi_max_depth || state->steps_left == 0) {
            report_bad_name(state);
        } else {
            --state->steps_left;
        }
    }
    ~eabi_level() { --state->depth; }
    eabi_level(const eabi_level&) = delete;
    eabi_level& operator=(const eabi_level&) = delete;
    eabi_decode_state* state;
};

// Output off, and recording off, for as long as they live. An error's own step
// stays: the counters go up and down in pairs.
struct eabi_silence {
    explicit eabi_silence(eabi_decode_state* call, bool on = true) : state(call), by(on ? 1 : 0) {
        state->suppress_depth += by;
    }
    ~eabi_silence() { state->suppress_depth -= by; }
    eabi_silence(const eabi_silence&) = delete;
    eabi_silence& operator=(const eabi_silence&) = delete;
    eabi_decode_state* state;
    std::uint64_t by;
};

struct eabi_no_record {
    explicit eabi_no_record(eabi_decode_state* call, bool on = true) : state(call), by(on ? 1 : 0) {
        state->no_record_depth += by;
    }
    ~eabi_no_record() { state->no_record_depth -= by; }
    eabi_no_record(const eabi_no_record&) = delete;
    eabi_no_record& operator=(const eabi_no_record&) = delete;
    eabi_decode_state* state;
    std::uint64_t by;
};

// --- Input ----------------------------------------------------------------------

inline bool eabi_is_digit(char character) {
    return character >= '0' && character <= '9';
}

// Reads a run of digits; without one, a bad name and the value 0. Wraps at 64 bits.
const char* eabi_number(const char* at, std::uint64_t* value, eabi_decode_state* state);

// [ number ] "_": 1, or the number plus 2, the way unnamed types and parameters count.
const char* eabi_ordinal(const char* at, std::int64_t* number, eabi_decode_state* state);

// Consumes `expected`, or reports a bad name and consumes nothing.
inline const char* eabi_require(const char* at, char expected, eabi_decode_state* state) {
    if (*at == expected) {
        return at + 1;
    }
    report_bad_name(state);
    return at;
}

// The bit of "K", "V" or "r", else 0.
inline unsigned eabi_qualifier_bit(char letter) {
    switch (letter) {
        case 'K':
            return qualifier_const;
        case 'V':
            return qualifier_volatile;
        case 'r':
            return qualifier_restrict;
        default:
            return 0;
    }
}

// --- The entry (decode_eabi.cpp) ------------------------------------------------

// decode_identifier_eabi for a caller that knows the length of the name.
decode_result eabi_decode(const char* name, std::size_t length, char* buffer,
                          std::size_t buffer_size, bool decorated);

// --- Encodings (decode_eabi_encoding.cpp) ---------------------------------------

const char* eabi_encoding(const char* at, bool print_params, eabi_decode_state* state);

// --- Names (decode_eabi_names.cpp) ----------------------------------------------

const char* eabi_name(const char* at, eabi_name_record* record, unsigned mode,
                      eabi_decode_state* state);

// The components of a nested name from `at` to its "E", or to `bound` when it is
// not null. `whole_is_type` enters the last component too.
const char* eabi_prefix(const char* at, const char* bound, bool whole_is_type,
                        eabi_name_record* record, eabi_component* component,
                        eabi_decode_state* state);

// A class or enumeration type: any name, entered whole. `*component` is filled.
const char* eabi_class_type(const char* at, eabi_component* component, eabi_decode_state* state);

// --- Components of names (decode_eabi_unqualified_names.cpp) --------------------

// On entry component->last_name is the class that a constructor repeats; on exit the
// component is this one.
const char* eabi_unqualified_name(const char* at, eabi_component* component,
                                  eabi_decode_state* state);
const char* eabi_source_name(const char* at, eabi_decode_state* state);

// { "B" source-name }
const char* eabi_abi_tags(const char* at, eabi_decode_state* state);

// A source name with a "::" in front when `scoped` is set, short enough to stand wherever
// names are frequent.
inline const char* eabi_plain_source_name(const char* at, bool scoped, eabi_decode_state* state) {
    const char* text = at + 1;
    auto length = static_cast<std::size_t>(*at - '0');
    if (eabi_is_digit(*text)) {
        length = length * 10 + static_cast<std::size_t>(*text - '0');
        ++text;
    }
    // Not for a third digit, no length, what may be an unnamed namespace, and where
    // the text is not printed in full.
    if (*text == '_' || eabi_is_digit(*text) ||
        length - 1 >= static_cast<std::size_t>(state->input_end - text) ||
        state->suppress_depth != 0 || state->out_len + length + 2 >= state->out_size) {
        if (scoped) {
            eabi_put("::", state);
        }
        return eabi_source_name(at, state);
    }
    char* const to = state->out_buf + state->out_len;
    const std::size_t scope = scoped ? 2 : 0;
    if (scoped) {
        to[0] = ':';
        to[1] = ':';
    }
    eabi_copy(to + scope, text, length);
    state->out_len += length + scope;
    return text + length;
}

// --- Modules (decode_eabi_modules.cpp) ------------------------------------------

// The end of the name of a module, which begins with "W" or a reference to a module.
const char* eabi_module_end(const char* at, eabi_decode_state* state);

// Prints the name of a module: "foo.bar:part".
void eabi_put_module(const char* at, const char* end, eabi_decode_state* state);

// What "GI" stands in front of.
const char* eabi_module_initializer(const char* at, eabi_decode_state* state);

// --- Template arguments (decode_eabi_template_args.cpp) -------------------------

const char* eabi_template_args(const char* at, bool blank_before, eabi_decode_state* state);
const char* eabi_template_arg(const char* at, bool* first, eabi_decode_state* state);

// Template parameter declarations in front of a lambda's parameters or an argument.
const char* eabi_template_param_decl(const char* at, eabi_decode_state* state);
bool eabi_at_template_param_decl(const char* at, const eabi_decode_state* state);

// --- Substitutions (decode_eabi_substitutions.cpp) ------------------------------

// Makes room for more entries; false, and a bad name, without memory.
bool eabi_grow_table(eabi_decode_state* state);

// The next entry of the table for the component at `start`, its kind, last name and
// flags still to be filled in; null when nothing is to be entered. Its text began at
// `text_at` in the output; entry_no_text says that it has no text of its own there.
inline eabi_subst_entry* eabi_next_entry(const char* start, std::uint64_t text_at,
                                         eabi_decode_state* state) {
    if (state->no_record_depth != 0 ||
        (state->subst_count == state->subst_capacity && !eabi_grow_table(state))) {
        return nullptr;
    }
    eabi_subst_entry* const entry = &state->subst_table[state->subst_count++];
    const bool has_text = text_at != entry_no_text && state->suppress_depth == 0;
    entry->start = start;
    entry->text_at = static_cast<std::uint32_t>(text_at);
    entry->text_length =
        has_text ? static_cast<std::uint32_t>(state->out_len - text_at) : entry_no_text;
    return entry;
}

// Enters a component; `prefix_end` bounds a prefix.
inline void eabi_add_substitution(const char* start, eabi_subst_kind kind, const char* prefix_end,
                                  const eabi_component& component, std::uint64_t text_at,
                                  eabi_decode_state* state) {
    if (eabi_subst_entry* const entry = eabi_next_entry(start, text_at, state)) {
        entry->kind = kind;
        entry->prefix_end = static_cast<std::uint32_t>(prefix_end - state->input);
        entry->last_name = component.last_name;
        entry->type_flags = component.flags | state->lambda_flag;
    }
}

// Enters a type of the shape that state->shape gives.
inline void eabi_add_type(const char* start, std::uint64_t text_at, bool allow_template_args,
                          eabi_decode_state* state) {
    if (eabi_subst_entry* const entry = eabi_next_entry(start, text_at, state)) {
        entry->kind = subst_type;
        entry->prefix_end = 0;
        entry->last_name = 0;
        entry->type_flags = state->shape | state->lambda_flag |
                            (allow_template_args ? 0U : static_cast<unsigned>(entry_without_args));
    }
}

// A last name that stands at `at` in the input, and where a last name stands; null for none.
inline std::uint32_t eabi_last_name_at(const char* at, const eabi_decode_state* state) {
    return static_cast<std::uint32_t>(at - state->input) + 1;
}
const char* eabi_last_name(std::uint32_t last_name, const eabi_decode_state* state);

enum eabi_subst_mode : unsigned { subst_whole = 0, subst_type_prefix = 1, subst_type_suffix = 2 };

// Reads "_", or base-36 digits and "_": 0, or the number that they make plus 1. Gives the
// position of the "_"; null where something else stands in front of it, and for a number
// that is past any table.
const char* eabi_sequence_number(const char* at, std::uint64_t* number);

// Prints what the reference at "S" stands for. `marked` tells a type's suffix that
// a mark stands in front of it. state->shape is that of the component.
const char* eabi_substitution(const char* at, eabi_subst_mode mode, unsigned cv_qualifiers,
                              bool marked, eabi_component* component, eabi_decode_state* state);

// The entry that the reference at "S" denotes, null when there is none.
const eabi_subst_entry* eabi_referenced_entry(const char* at, const eabi_decode_state* state);

// Whether a reference to the name of a module stands at `at`, which a name follows.
inline bool eabi_is_module_reference(const char* at, const eabi_decode_state* state) {
    if (!state->extended || *at != 'S' || (at[1] >= 'a' && at[1] <= 'z')) {
        return false;
    }
    const eabi_subst_entry* const entry = eabi_referenced_entry(at, state);
    return entry != nullptr && (entry->type_flags & entry_module) != 0;
}

// Whether the reference at "S" denotes a name, which may be that of a template,
// and not a complete type or a template parameter.
bool eabi_is_template_reference(const char* at, const eabi_decode_state* state);

// Whether the reference at "S" leads to a template parameter or a decltype.
bool eabi_is_dependent_reference(const char* at, const eabi_decode_state* state);

// Where the type at `at` is spelled out: there, or where a reference leads.
const char* eabi_spelled_type(const char* at, const eabi_decode_state* state);

const char* eabi_template_param(const char* at, eabi_decode_state* state);

// --- Skipping (decode_eabi_skip.cpp) --------------------------------------------

// What is known of the type or expression at `at`; null before it was skipped. Known
// or not, it must be read once more while substitutions are entered.
const eabi_skipped* eabi_find_skipped(const char* at, const eabi_decode_state* state);

// The same whether or not substitutions are entered.
const eabi_skipped* eabi_recall_skipped(const char* at, const eabi_decode_state* state);

void eabi_remember_skipped(const char* at, const char* end, bool flag, eabi_decode_state* state);

// Pass over the type or the expression at `at`, entering what can be substituted.
const char* eabi_skip_type(const char* at, eabi_decode_state* state);
const char* eabi_skip_expression(const char* at, bool* shows_greater, eabi_decode_state* state);

// A ">" shows: it counts for the argument list around where no parenthesis is between.
inline void eabi_show_greater(eabi_decode_state* state) {
    if (state->parentheses == 0) {
        state->greater_seen = true;
    }
}

// --- Types (decode_eabi_types.cpp) ----------------------------------------------

// The prefix part of a type; sets state->shape. `allow_template_args` lets a
// template argument list follow a template parameter.
const char* eabi_type(const char* at, unsigned cv_qualifiers, bool allow_template_args,
                      eabi_decode_state* state);

// The suffix part of the type at `at`.
void eabi_type_suffix(const char* at, unsigned cv_qualifiers, bool marked,
                      eabi_decode_state* state);

// Both in turn.
const char* eabi_whole_type(const char* at, bool allow_template_args, eabi_decode_state* state);

// Prints the suffix that the prefix part left in state->shape.
void eabi_finish_type(const char* at, unsigned cv_qualifiers, eabi_decode_state* state);

void eabi_cv_qualifiers(unsigned qualifiers, bool trailing_blank, eabi_decode_state* state);

// The parameter types up to their end, without parentheses.
const char* eabi_parameters(const char* at, eabi_decode_state* state);

// --- Operators and expressions --------------------------------------------------

struct eabi_operator {
    std::string_view text;    // empty for an unknown code
    std::string_view tail;    // the rest of a text that ends in the input's own letters
    std::string_view closer;  // printed after the operand
    unsigned arity = 2;
    std::size_t code_length = 0;
};

eabi_operator eabi_operator_info(const char* at, eabi_decode_state* state);

const char* eabi_expression(const char* at, eabi_decode_state* state);

// An expression in parentheses.
const char* eabi_enclosed_expression(const char* at, eabi_decode_state* state);

// ( "Dt" | "DT" ) expression "E", without entering it.
const char* eabi_decltype(const char* at, eabi_decode_state* state);

// An expression in the place of an operand: an operator expression in parentheses.
const char* eabi_operand(const char* at, eabi_decode_state* state);

// "L" ... "E".
const char* eabi_literal(const char* at, eabi_decode_state* state);
