// Scheme 1's back references: the substitution table, the standard abbreviations and
// template parameters.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// Makes room for more entries; false, and a bad name, without memory.
SELDOM bool grow_table(eabi_decode_state* state);

// Whether something can be entered: nothing is while entering is off, or without memory.
inline bool may_enter(eabi_decode_state* state) {
    return state->no_record_depth == 0 &&
           (state->subst_count < state->subst_capacity || grow_table(state));
}

// The length of a component's text that began at `text_at` in the output; no_text there says
// that it has no text of its own.
inline std::uint32_t length_since(std::uint64_t text_at, const eabi_decode_state* state) {
    return text_at != no_text && state->suppress_depth == 0
               ? static_cast<std::uint32_t>(state->out_len - text_at)
               : no_text;
}

// What a last name is for one that stands at `at` in the input, and where a last name
// stands; null for none.
inline std::uint32_t last_name_at(const char* at, const eabi_decode_state* state) {
    return static_cast<std::uint32_t>(at - state->input) + 1;
}
const char* last_name_of(const last_component& component, const eabi_decode_state* state);

// The entry that the reference at "S" denotes, null when there is none.
const subst_entry* referenced_entry(const char* at, const eabi_decode_state* state);

// Whether a reference to the name of a module stands at `at`, which a name follows.
inline bool is_module_reference(const char* at, const eabi_decode_state* state) {
    if (!state->module_entered || *at != 'S' || (at[1] >= 'a' && at[1] <= 'z')) {
        return false;
    }
    const subst_entry* const entry = referenced_entry(at, state);
    return entry != nullptr && (entry->component.flags & names_module) != 0;
}

// Whether the reference at "S" denotes a name, which may be that of a template,
// and not a complete type or a template parameter.
bool is_template_reference(const char* at, const eabi_decode_state* state);

// Whether the reference at "S" leads to a template parameter or a decltype.
bool is_dependent_reference(const char* at, const eabi_decode_state* state);

// Where the type at `at` is spelled out: there, or where a reference leads.
const char* spelled_type(const char* at, const eabi_decode_state* state);

enum subst_mode : unsigned { subst_whole = 0, subst_type_prefix = 1, subst_type_suffix = 2 };

}  // namespace scheme1

// Enters a component; `prefix_end` bounds a prefix. `text_at` is as for length_since.
inline void eabi_add_substitution(const char* start, scheme1::subst_kind kind,
                                  const char* prefix_end, const scheme1::last_component& component,
                                  std::uint64_t text_at, eabi_decode_state* state) {
    if (scheme1::may_enter(state)) {
        scheme1::subst_entry& entry = state->subst_table[state->subst_count++];
        entry = {start,
                 kind,
                 static_cast<std::uint32_t>(text_at),
                 scheme1::length_since(text_at, state),
                 static_cast<std::uint32_t>(prefix_end - state->input),
                 component};
        entry.component.flags |= state->lambda_flag;
    }
}

// Prints what the reference at "S" stands for. `marked` tells a type's suffix that
// a mark stands in front of it. state->shape is that of the component.
const char* eabi_substitution(const char* at, scheme1::subst_mode mode, unsigned cv_qualifiers,
                              bool marked, scheme1::last_component* component,
                              eabi_decode_state* state);

const char* eabi_template_param(const char* at, eabi_decode_state* state);
