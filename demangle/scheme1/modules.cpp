// Module names of the Itanium ABI decoder: what a name is attached to, and initialisers
// of modules. Called by the components of names and the special names, for extended
// names only.
//
// module ::= [ substitution ] { "W" [ "P" ] source-name }, "P" in front of a partition.
// Every beginning of it is entered.
#include "demangle/scheme1/state.h"

// The end of the reference at "S".
static const char* reference_end(const char* at, eabi_decode_state* state) {
    do {
        ++at;
    } while (eabi_is_digit(*at) || (*at >= 'A' && *at <= 'Z'));
    return eabi_require(at, '_', state);
}

const char* eabi_module_end(const char* at, eabi_decode_state* state) {
    const eabi_silence silent(state);
    const char* const start = at;
    if (*at == 'S') {
        at = reference_end(at, state);
    }
    while (*at == 'W' && state->error_seen == 0) {
        at = eabi_source_name(at + (at[1] == 'P' ? 2 : 1), state);
        eabi_add_substitution(start, subst_name, at, {.flags = entry_module}, entry_no_text, state);
    }
    return at;
}

void eabi_put_module(const char* at, const char* end, eabi_decode_state* state) {
    const eabi_level level(state);
    bool first = true;
    if (state->error_seen == 0 && eabi_is_module_reference(at, state)) {
        const eabi_subst_entry* const entry = eabi_referenced_entry(at, state);
        eabi_put_module(entry->start, state->input + entry->prefix_end, state);
        at = reference_end(at, state);
        first = false;
    }
    for (; at < end && state->error_seen == 0; first = false) {
        const bool partition = at[1] == 'P';
        if (partition || !first) {
            eabi_put(partition ? ':' : '.', state);
        }
        at = eabi_source_name(at + (partition ? 2 : 1), state);
    }
}

const char* eabi_module_initializer(const char* at, eabi_decode_state* state) {
    if (*at != 'W' && !eabi_is_module_reference(at, state)) {
        report_bad_name(state);
        return at;
    }
    const char* const end = eabi_module_end(at, state);
    eabi_put_module(at, end, state);
    return end;
}
