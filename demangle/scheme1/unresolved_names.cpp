// Names in expressions of the Itanium ABI decoder that depend on template parameters and
// so stand as they were written: "T1::x", "f<T1>". Called by the expressions.
#include "demangle/scheme1/unresolved_names.h"

// source-name [ template-args ]
const char* eabi_simple_id(const char* at, eabi_decode_state* state) {
    at = eabi_abi_tags(eabi_source_name(at, state), state);
    return *at == 'I' ? eabi_template_args(at, false, state) : at;
}

// A template parameter, decltype or substitution, with arguments if any; what
// stands in front of "::".
static const char* unresolved_type(const char* at, eabi_decode_state* state) {
    return eabi_whole_type(at, true, state);
}

// base-unresolved-name ::= simple-id | [ "on" ] operator-name [ args ] | "dn" destructor-name
const char* eabi_base_unresolved_name(const char* at, eabi_decode_state* state) {
    if (eabi_is_digit(*at)) {
        return eabi_simple_id(at, state);
    }
    if (eabi_code_is(at, "dn")) {
        eabi_put('~', state);
        at += 2;
        return eabi_is_digit(*at) ? eabi_simple_id(at, state) : unresolved_type(at, state);
    }
    if (eabi_code_is(at, "on")) {
        at += 2;
    }
    if (*at < 'a' || *at > 'z') {
        report_bad_name(state);
        return at;
    }
    eabi_component component;
    at = eabi_unqualified_name(at, &component, state);
    return *at == 'I' ? eabi_template_args(at, (component.flags & entry_ends_in_less) != 0, state)
                      : at;
}

// simple-id+ "E": the classes between the first one and the name.
static const char* qualifier_levels(const char* at, eabi_decode_state* state) {
    do {
        at = eabi_simple_id(at, state);
        eabi_put("::", state);
    } while (*at != 'E' && state->error_seen == 0);
    return eabi_require(at, 'E', state);
}

// What stands at `at`, behind "sr": one class and the member, or classes that an "E" ends.
// What follows decides: behind that "E" there is a name.
static bool look_for_one_class(const char** position, eabi_decode_state* state) {
    const char*& at = *position;
    at = eabi_type(at, 0, true, state);
    if (!eabi_is_digit(*at) || state->error_seen != 0) {
        return false;
    }
    at = eabi_simple_id(at, state);
    if (eabi_is_digit(*at) || state->error_seen != 0) {
        return false;
    }
    if (*at != 'E' ||
        !(eabi_is_digit(at[1]) || eabi_code_is(at + 1, "on") || eabi_code_is(at + 1, "dn"))) {
        return true;
    }
    state->doubts |= doubt_one_class;
    return (state->second_readings & doubt_one_class) != 0;
}

// The bit of a position that the state has a bit for, else 0.
static unsigned looked_bit(std::size_t position) {
    return position / 8 < sizeof(eabi_looked::known) ? 1U << position % 8 : 0;
}

// Whether the answer for a position is known, and which; far into the name only some are.
static bool recall_one_class(const char* at, bool* found, const eabi_decode_state* state) {
    const auto position = static_cast<std::size_t>(at - state->input);
    if (const unsigned bit = looked_bit(position)) {
        *found = state->looked_in_use && (state->looked.found[position / 8] & bit) != 0;
        return state->looked_in_use && (state->looked.known[position / 8] & bit) != 0;
    }
    const eabi_skipped* const known = eabi_recall_skipped(at, state);
    *found = known != nullptr && known->flag;
    return known != nullptr;
}

static void remember_one_class(const char* at, const char* end, bool found,
                               eabi_decode_state* state) {
    const auto position = static_cast<std::size_t>(at - state->input);
    const unsigned bit = looked_bit(position);
    if (bit == 0) {
        eabi_remember_skipped(at, end, found, state);
        return;
    }
    if (!state->looked_in_use) {
        state->looked = {};
        state->looked_in_use = true;
    }
    state->looked.known[position / 8] |= static_cast<std::uint8_t>(bit);
    if (found) {
        state->looked.found[position / 8] |= static_cast<std::uint8_t>(bit);
    }
}

// The same, looked for once and not for every level around.
// Entries are made on the way, for what refers to them within, and taken back: the name
// is still to be read.
static bool at_one_class(const char* at, eabi_decode_state* state) {
    bool found = false;
    if (recall_one_class(at, &found, state)) {
        return found;
    }
    const eabi_silence silent(state);
    const std::uint64_t entries = state->subst_count;
    const char* end = at;
    found = look_for_one_class(&end, state);
    state->subst_count = entries;
    remember_one_class(at, end, found, state);
    return found;
}

// Whether the "N" at `at` opens levels behind a type, and not the name of a class.
static bool at_unresolved_levels(const char* at, eabi_decode_state* state) {
    if (*at != 'N') {
        return false;
    }
    if (at[1] == 'T' || at[1] == 'D' ||
        (at[1] == 'S' && eabi_is_dependent_reference(at + 1, state))) {
        state->doubts |= doubt_dependent_levels;
        return (state->second_readings & doubt_dependent_levels) == 0;
    }
    if (at[1] != 'S' || at[2] == 't') {
        return false;
    }
    state->doubts |= doubt_class_levels;
    return (state->second_readings & doubt_class_levels) != 0;
}

// "sr" type name | "sr" simple-id+ "E" name | "srN" type simple-id+ "E" name
const char* eabi_scoped_name(const char* at, eabi_decode_state* state) {
    at += 2;
    if (eabi_is_digit(*at) && !at_one_class(at, state)) {
        at = qualifier_levels(at, state);
    } else if (at_unresolved_levels(at, state)) {
        at = unresolved_type(at + 1, state);
        eabi_put("::", state);
        at = qualifier_levels(at, state);
    } else {
        at = unresolved_type(at, state);
        eabi_put("::", state);
    }
    return eabi_base_unresolved_name(at, state);
}
