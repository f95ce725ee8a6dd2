// The grammar routines of scheme 0, as they call each other. Each takes the input
// position and the state and returns the position after what it consumed. A routine
// that meets an error reports it and returns; nothing is printed after that.
//
// A type prints in two passes over the same input: the prefix pass what stands before
// a declarator, the suffix pass what stands behind it. While output is suppressed the
// prefix pass alone reads the whole type, and a length-prefixed name is stepped over.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>

#include "demangle/output.h"

// Bounds on hostile names. The nesting fits a stack of 512 KiB.
constexpr std::uint64_t most_nesting = 1024;
constexpr std::uint64_t longest_output = 16U << 20;
constexpr std::uint64_t most_steps = 400'000;

// What the text printed so far ends in: it decides on the blank before a pointer mark.
enum class tail : unsigned char { name, mark, qualifier };

// The state of one call, with what the grammar keeps beside the shared record.
struct grammar_state : decode_state {
    const char* base = nullptr;  // where the (expanded) name begins
    std::uint64_t depth = 0;
    std::uint64_t steps = 0;
    bool beyond_bounds = false;  // one of the bounds above was met
    tail last = tail::name;

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

// One level of nesting, for the length of a scope. Counts a grammar step as well.
class nesting {
  public:
    explicit nesting(grammar_state* state) : state_(state) {
        if (++state->depth > most_nesting + 1 || ++state->steps > most_steps ||
            state->out_len > longest_output) {
            state->beyond_bounds = true;
            report_bad_name(state);
        }
    }
    ~nesting() { --state_->depth; }
    nesting(const nesting&) = delete;
    nesting& operator=(const nesting&) = delete;

  private:
    grammar_state* state_;
};

// Output is suppressed for the length of a scope.
class suppression {
  public:
    explicit suppression(grammar_state* state) : state_(state) { ++state->suppress_depth; }
    ~suppression() { --state_->suppress_depth; }
    suppression(const suppression&) = delete;
    suppression& operator=(const suppression&) = delete;

  private:
    grammar_state* state_;
};

inline bool is_decimal(char character) {
    return character >= '0' && character <= '9';
}

// True when `text` stands at the position, before the input's end.
bool follows(const char* at, const char* text, const grammar_state* state);

// Consumes one character; any other is a bad name and stays.
const char* expect(const char* at, char character, grammar_state* state);

// The number is printed as a signed one ("%ld").
void emit_signed(std::uint64_t value, output_state* state);

// decode_names.cpp

// How a class name prints: whole, or what a constructor or destructor repeats of it.
struct class_options {
    bool last_component_only = false;
    bool destructor = false;
    bool without_arguments = false;
};

const char* full_entity(const char* at, grammar_state* state);
const char* name_only(const char* at, grammar_state* state);
const char* operand_name(const char* at, grammar_state* state);
const char* scope_name(const char* at, class_options options, grammar_state* state);
const char* qualified_name(const char* at, class_options options, grammar_state* state);
const char* simple_name(const char* at, class_options options, grammar_state* state);
const char* table_classes(const char* at, grammar_state* state);
const char* template_arguments(const char* at, grammar_state* state);
bool begins_template_arguments(const char* at, const grammar_state* state);

// decode_types.cpp

// Bits of a set of qualifiers. The last two belong to functions only.
enum qualifier : unsigned {
    is_const = 1,
    is_volatile = 2,
    is_restrict = 4,
    is_lvalue = 8,
    is_rvalue = 16,
};

// Reads a run of "C", "V", "Dr", "DL", "DR" (and "S", where `statics` says so).
const char* read_qualifiers(const char* at, bool statics, unsigned* bits,
                            const grammar_state* state);
void emit_function_qualifiers(unsigned bits, grammar_state* state);

const char* type_prefix(const char* at, unsigned qualifiers, grammar_state* state);
void type_suffix(const char* at, grammar_state* state);
const char* whole_type(const char* at, grammar_state* state);
const char* skip_type(const char* at, grammar_state* state);
const char* builtin_type(const char* at, grammar_state* state);
const char* parameter_list(const char* at, grammar_state* state);
const char* skip_parameters(const char* at, grammar_state* state);

struct template_param {
    std::uint64_t index = 0;
    std::uint64_t level = 1;
};
const char* read_template_param(const char* at, template_param* param, grammar_state* state);
void emit_template_param_name(std::uint64_t level, std::uint64_t index, int kind,
                              output_state* state);
const char* type_template_param(const char* at, grammar_state* state);

// decode_expressions.cpp

const char* expression(const char* at, bool as_operand, grammar_state* state);
const char* template_argument(const char* at, grammar_state* state);

// decode_literals.cpp

const char* read_literal_length(const char* at, std::uint64_t* length, const char** saved_end,
                                grammar_state* state);
const char* emit_literal_value(const char* at, bool boolean, bool null_pointer,
                               grammar_state* state);
const char* decode_operand(const char* at, bool as_operand, grammar_state* state);
