// The state of a scheme-1 call: what the call was given, and what an attempt at the name
// builds up.
//
// eabi_decode_state, the fields of it that the scheme shares with output_state or that begin
// attempt_state, and the routines whose names begin with "eabi_" have fixed names ("eabi"
// stands for the C++ ABI that the scheme is part of). They stand in the global namespace;
// everything else of the scheme is in namespace scheme1.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "demangle/bounds.h"
#include "demangle/output.h"

namespace scheme1 {

inline constexpr std::int32_t most_steps = 1'000'000;
inline constexpr std::uint64_t longest_input = std::uint64_t{1} << 30;

// Where a row of a table applies.
enum names_mode : unsigned char {
    always = 0,
    extended = 1,  // where names may hold what newer compilers write
};

// How a printed type goes on: what its prefix ended in and whether a suffix follows.
enum type_shape : unsigned char {
    shape_mark = 1,       // ends in a pointer or reference mark
    shape_suffix = 2,     // has a suffix part: a parameter list or array bounds
    shape_direct = 4,     // that suffix is its own: a mark needs a parenthesis first
    shape_qualified = 8,  // its outermost level carries qualifiers
    shape_greater = 16,   // the array bounds behind it show a ">" outside parentheses
    // Qualifiers from around stand behind its mark: without them it would end in the mark.
    shape_mark_qualified = 32,
};

// What is known of a component of a name; the first two also while the name goes on.
enum component_flag : unsigned char {
    is_conversion = 1,       // a conversion operator
    is_less = 2,             // an operator whose text ends in "<"
    in_lambda = 4,           // stood in a lambda's parameter list
    in_leveled_lambda = 64,  // or in one that spells the level of its own parameters
    names_module = 8,        // the name of a module
    without_args = 16,       // what follows a parameter in it is not its arguments
    is_complete = 32,        // a type that takes no arguments
    is_closed = 128,         // arguments, tags or the like stand behind the last name
};

// A component of a name, as what follows it needs to know it.
struct last_component {
    // What a constructor after it repeats: the offset in the input plus 1 of a source name,
    // an unnamed type or a template parameter; or abbreviation_name and the letter of an
    // abbreviation; or 0 for nothing.
    std::uint32_t last_name = 0;
    char kind = ' ';           // of the constructor or destructor that it is, else a blank
    unsigned char flags = 0;   // component_flag bits
    unsigned char shape = 0;   // type_shape bits of a type that was entered
    unsigned char unused = 0;  // no padding: the compiler then stores the last four at once
};
inline constexpr std::uint32_t abbreviation_name = 0xFFFFFF00;

// Constructors, destructors and conversions carry no return type, templates or not.
inline bool carries_no_return_type(const last_component& component) {
    return component.kind != ' ' || (component.flags & is_conversion) != 0;
}

// The kinds of substitutable components.
enum subst_kind : std::uint32_t {
    subst_name = 0,             // an unqualified name, or "St" and one
    subst_prefix = 1,           // the components from start to prefix_end
    subst_prefix_and_name = 2,  // those, then "::" and the unqualified name at prefix_end
    subst_type = 3,             // a type
    subst_template_param = 4,   // a template parameter
};

// One substitutable component. Beside where it begins and how it is decoded again
// it keeps where its text stands in the output, when it stands there in one piece:
// most references are then a copy.
struct subst_entry {
    const char* start;  // in the mangled input
    subst_kind kind;
    std::uint32_t text_at;      // in the output
    std::uint32_t text_length;  // no_text when there is no such text
    std::uint32_t prefix_end;   // offset in the input
    last_component component;
};
static_assert(sizeof(subst_entry) == 32);
inline constexpr std::uint32_t no_text = ~std::uint32_t{0};

// Where a type or an expression that was read without being printed ends, so that
// it need not be read again to get past it.
struct skip_record {
    std::uint32_t start;  // offset in the input + 1
    std::uint32_t end;
    bool flag;  // of an expression: it shows a ">" outside parentheses; of "sr": one class
};

// For each position in the first part of the name, one bit: whether one class stands behind
// the "sr" there. Only reading on can tell, which is done once for each position.
struct one_class_answers {
    std::uint8_t known[512];
    std::uint8_t yes[512];
};

// What texts of the input from `start` on are copied from: behind its last bytes there is room
// for a step.
struct input_part {
    const char* start;
    const char* bytes;
};

// Where compilers disagree on how something is written and entered. The first reading is
// tried; where the name goes wrong with it, the other one.
enum doubt : unsigned {
    doubt_one_class = 1,         // "sr" class member, or "sr" class+ "E" member
    doubt_class_levels = 2,      // "srN" class levels "E" member: whether the levels are entered
    doubt_dependent_levels = 4,  // the same behind a template parameter or a decltype
    doubt_bit_types = 8,         // whether "DB" and "DU" are entered
    doubt_literal = 16,          // "LZ": of a local type, or the older spelling of "L_Z"
    doubt_uuidof = 32,           // "u8__uuidof": with arguments, or the older "t" or "z" and one
};

// What an attempt at the name builds up: starting over is one assignment of it.
struct attempt_state : output_state {
    std::uint64_t no_record_depth = 0;  // substitutions are entered only while this is 0
    int conversion_seen = 0;            // a conversion operator was decoded
    int retrying = 0;                   // the second attempt at the name
    int is_subobject = 0;               // a constructor or destructor of kind 2 was decoded
    subst_entry* subst_table = nullptr;
    std::uint64_t subst_count = 0;
    std::uint64_t subst_capacity = 0;

    std::uint32_t depth = 0;        // grammar nesting
    unsigned shape = 0;             // type_shape bits of the type decoded last
    std::uint32_t parentheses = 0;  // open around the expression being printed
    bool greater_seen = false;      // a ">" operator stood outside parentheses
    unsigned char lambda_flag = 0;  // in_lambda or in_leveled_lambda in its parameter list
    bool level_seen = false;        // a lambda's parameter list spelled a level
    bool module_entered = false;    // an entry is the name of a module
    unsigned doubts = 0;            // that were met
    bool rotation_missed = false;   // the buffer was too small to move the return type
    bool skipped_in_use = false;    // `skipped` has been cleared
    bool answers_in_use = false;    // `one_class` has been cleared

    attempt_state(char* buffer, std::uint64_t buffer_size, int second, std::span<subst_entry> table)
        : retrying(second), subst_table(table.data()), subst_capacity(table.size()) {
        out_buf = buffer;
        out_size = buffer_size;
    }
};

}  // namespace scheme1

struct eabi_decode_state : scheme1::attempt_state {
    // What the call was given.
    const char* input;
    const char* input_end;         // its NUL
    scheme1::input_part parts[2];  // all of it, and its end, which lies in `tail`
    bool extended;

    // What the attempts are told, beside `retrying`, and what they have together.
    bool two_passes = false;       // print in the order of the text, see entry.cpp
    unsigned second_readings = 0;  // doubts that are decided the other way
    std::int32_t steps_left = scheme1::most_steps;

    // Memory of an attempt, which says what of it is in use: clearing it would cost more
    // than most names, and so would the entries' initial values, from which the union
    // keeps them.
    char tail[2 * copy_step];              // a step of the input, and room for another
    scheme1::skip_record skipped[64];      // by the low bits of start, the last one stays
    scheme1::one_class_answers one_class;  // by position
    union {
        scheme1::subst_entry first_entries[128];  // the table until it outgrows them
    };

    // Without a name, which `give` gives it before anything else is asked of it.
    eabi_decode_state(bool extended_names, std::span<char> buffer) noexcept;
    void give(std::string_view name);
    ~eabi_decode_state();
    eabi_decode_state(const eabi_decode_state&) = delete;
    eabi_decode_state& operator=(const eabi_decode_state&) = delete;
};

// Records an error in the name; the first one ends all output and recording.
SELDOM void report_bad_name(eabi_decode_state* state);

namespace scheme1 {

// Whether what is in doubt is to be read the other way.
inline bool reads_otherwise(doubt in_doubt, eabi_decode_state* state) {
    state->doubts |= in_doubt;
    return (state->second_readings & in_doubt) != 0;
}

inline bool is_open(names_mode mode, const eabi_decode_state* state) {
    return static_cast<unsigned>(mode) <= static_cast<unsigned>(state->extended);
}

// Counts a step of the grammar. False, and a bad name, when there are no more.
inline bool count_step(eabi_decode_state* state) {
    if (--state->steps_left >= 0) {
        return true;
    }
    state->steps_left = 0;
    report_bad_name(state);
    return false;
}

inline void enter_level(eabi_decode_state* state) {
    if (state->depth > most_nesting) {
        report_bad_name(state);
    } else {
        count_step(state);
    }
}

// Nothing is entered for as long as it lives; as for silence, an error's step stays.
class no_record {
  public:
    explicit no_record(eabi_decode_state* state, bool on = true) : state_(state), by_(on ? 1 : 0) {
        state->no_record_depth += by_;
    }
    ~no_record() { state_->no_record_depth -= by_; }
    no_record(const no_record&) = delete;
    no_record& operator=(const no_record&) = delete;

  private:
    eabi_decode_state* state_;
    std::uint64_t by_;
};

}  // namespace scheme1
