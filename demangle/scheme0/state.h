// The state of a scheme-0 call: what the call was given, and what the grammar builds up.
//
// decode_state and its fields, peek_char, read_number, read_length and report_bad_name have
// fixed names, as have lookup_operator_code, read_literal_length, emit_literal_value,
// decode_operand and emit_template_param_name further on in the scheme. They stand in the
// global namespace; everything else of the scheme is in namespace scheme0.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>

#include "demangle/bounds.h"
#include "demangle/input.h"
#include "demangle/output.h"

struct decode_state : output_state {
    std::uint64_t uncompressed_len = 0;  // length of an expanded compressed name, else 0
    const char* input_end = nullptr;     // a read at or past it yields NUL
    std::uint64_t nesting_level = 0;     // depth of nested names being decoded
};

// Records an error in the mangled name; the first one silences all further output.
inline void report_bad_name(decode_state* state) {
    if (state->error_seen == 0) {
        state->error_seen = 1;
        ++state->suppress_depth;
    }
}

// The byte at `at`, or NUL at and past the input's end.
inline char peek_char(const char* at, const decode_state* state) {
    return at < state->input_end ? *at : '\0';
}

// Reads the decimal length in front of a name, narrows the input's end to the end
// of that name, and gives the end it had before through `saved_end`, which the
// caller puts back. A length larger than what remains is a bad name; the value is
// then what remains and the end is left alone.
const char* read_length(const char* at, std::uint64_t* value, const char** saved_end,
                        decode_state* state);

namespace scheme0 {

inline constexpr std::uint32_t most_steps = 400'000;

// What the text printed so far ends in: it decides on the blank before a pointer mark.
enum class tail : unsigned char { name, mark, qualifier };

// What the grammar keeps beside the shared record.
struct grammar_state : decode_state {
    const char* base = nullptr;  // where the (expanded) name begins
    std::uint32_t depth = 0;
    std::uint32_t steps_left = most_steps;
    bool beyond_bounds = false;  // one of the bounds was met
    tail last = tail::name;

    // Names that are silently stepped over are looked into all the same.
    bool looks_inside = false;

    // Where the last name that ends in "<" ended in the text.
    std::uint64_t less_end = 0;

    // Whether an operator with ">" in it was met outside parentheses, for the
    // template argument that is being looked at.
    std::uint64_t parentheses = 0;
    bool greater_seen = false;

    // The parameters of the lists that are open, as offsets from the base, for "T"
    // and "N". Those past the array cannot be repeated.
    std::uint32_t parameter_count = 0;
    std::array<std::uint32_t, 4096> parameters;

    // Ends of what the prefix pass steps over and the suffix pass prints, so that
    // each is stepped over once. A slot is filled when its bit is set.
    struct skipped {
        const char* from;
        const char* to;
        bool greater_seen;
    };
    std::array<skipped, 256> skips;
    std::bitset<256> skips_filled;
};

// What a level of nesting costs. The outermost one is the name itself.
inline void enter_level(grammar_state* state) {
    if (state->depth > most_nesting + 1 || state->steps_left == 0 ||
        state->out_len > longest_text) {
        state->beyond_bounds = true;
        report_bad_name(state);
    } else {
        --state->steps_left;
    }
}

// True when `text` stands at the position, before the input's end.
bool follows(const char* at, std::string_view text, const grammar_state* state);

}  // namespace scheme0
