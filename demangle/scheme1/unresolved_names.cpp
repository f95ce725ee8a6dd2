// Names that depend on template parameters, which compilers write in more ways than one.
#include "demangle/scheme1/unresolved_names.h"

#include "demangle/scheme1/expression_parts.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/substitutions.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"
#include "demangle/scheme1/unqualified_names.h"

namespace scheme1 {

// source-name [ template-args ]
const char* simple_id(const char* at, eabi_decode_state* state) {
    const char* const name_end = source_name(at, state);
    at = abi_tags(name_end, state);
    return *at == 'I' ? template_args(at, at == name_end && at[-1] == '<', state) : at;
}

// base-unresolved-name ::= simple-id | [ "on" ] operator-name [ args ] | "dn" destructor-name
const char* base_unresolved_name(const char* at, eabi_decode_state* state) {
    if (is_digit(*at)) {
        return simple_id(at, state);
    }
    if (code_is(at, "dn")) {
        emit_char('~', state);
        at += 2;
        return is_digit(*at) ? simple_id(at, state) : whole_type(at, state);
    }
    if (code_is(at, "on")) {
        at += 2;
    }
    if (*at < 'a' || *at > 'z') {
        report_bad_name(state);
        return at;
    }
    last_component component;
    at = unqualified_name(at, &component, state);
    return *at == 'I' ? template_args(at, wants_blank(component, state), state) : at;
}

// simple-id+ "E": the classes between the first one and the name.
static const char* qualifier_levels(const char* at, eabi_decode_state* state) {
    do {
        at = simple_id(at, state);
        emit_text("::", state);
    } while (*at != 'E' && state->error_seen == 0);
    return expect(at, 'E', state);
}

// What stands at `at`, behind "sr": one class and the member, or classes that an "E" ends.
// What follows decides: behind that "E" there is a name.
static bool look_for_one_class(const char** position, eabi_decode_state* state) {
    const char*& at = *position;
    at = eabi_type(at, 0, true, state);
    if (!is_digit(*at) || state->error_seen != 0) {
        return false;
    }
    at = simple_id(at, state);
    if (is_digit(*at) || state->error_seen != 0) {
        return false;
    }
    if (*at != 'E' || !(is_digit(at[1]) || code_is(at + 1, "on") || code_is(at + 1, "dn"))) {
        return true;
    }
    return reads_otherwise(doubt_one_class, state);
}

// Where the answer for a position is kept: one bit in the first part of a name, else a
// skip record, which others may displace.
static unsigned answer_bit(std::size_t position) {
    return position / 8 < sizeof(one_class_answers::known) ? 1U << position % 8 : 0;
}

// Whether the answer for a position is known; if so, which it is.
static bool recall_one_class(const char* at, bool* found, const eabi_decode_state* state) {
    const auto position = static_cast<std::size_t>(at - state->input);
    if (const unsigned bit = answer_bit(position)) {
        *found = state->answers_in_use && (state->one_class.yes[position / 8] & bit) != 0;
        return state->answers_in_use && (state->one_class.known[position / 8] & bit) != 0;
    }
    const skip_record* const known = recall_skipped(at, state);
    *found = known != nullptr && known->flag;
    return known != nullptr;
}

static void remember_one_class(const char* at, const char* end, bool found,
                               eabi_decode_state* state) {
    const auto position = static_cast<std::size_t>(at - state->input);
    const unsigned bit = answer_bit(position);
    if (bit == 0) {
        remember_skipped(at, end, found, state);
        return;
    }
    if (!state->answers_in_use) {
        state->one_class = {};
        state->answers_in_use = true;
    }
    state->one_class.known[position / 8] |= static_cast<std::uint8_t>(bit);
    if (found) {
        state->one_class.yes[position / 8] |= static_cast<std::uint8_t>(bit);
    }
}

// look_for_one_class, once for each position: where names nest, each level around would look
// again. Looking enters components, for what refers to them further on in the same name;
// they are taken back, because the name is still to be read.
static bool at_one_class(const char* at, eabi_decode_state* state) {
    bool found = false;
    if (recall_one_class(at, &found, state)) {
        return found;
    }
    const silence silent(state);
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
    if (at[1] == 'T' || at[1] == 'D' || (at[1] == 'S' && is_dependent_reference(at + 1, state))) {
        return !reads_otherwise(doubt_dependent_levels, state);
    }
    if (at[1] != 'S' || at[2] == 't') {
        return false;
    }
    return reads_otherwise(doubt_class_levels, state);
}

// "sr" type name | "sr" simple-id+ "E" name | "srN" type simple-id+ "E" name
const char* scoped_name(const char* at, eabi_decode_state* state) {
    at += 2;
    if (is_digit(*at) && !at_one_class(at, state)) {
        at = qualifier_levels(at, state);
    } else if (at_unresolved_levels(at, state)) {
        at = whole_type(at + 1, state);
        emit_text("::", state);
        at = qualifier_levels(at, state);
    } else {
        at = whole_type(at, state);
        emit_text("::", state);
    }
    return base_unresolved_name(at, state);
}

}  // namespace scheme1
