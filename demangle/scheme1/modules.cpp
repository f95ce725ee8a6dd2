// Module names, and initialisers of modules.
//
// module ::= [ substitution ] { "W" [ "P" ] source-name }, "P" in front of a partition.
// Every beginning of it is entered.
#include "demangle/scheme1/modules.h"

#include "demangle/scheme1/input.h"
#include "demangle/scheme1/substitutions.h"
#include "demangle/scheme1/unqualified_names.h"

namespace scheme1 {

// The end of the reference at "S".
static const char* reference_end(const char* at, eabi_decode_state* state) {
    do {
        ++at;
    } while (is_digit(*at) || (*at >= 'A' && *at <= 'Z'));
    return expect(at, '_', state);
}

const char* module_end(const char* at, eabi_decode_state* state) {
    const silence silent(state);
    const char* const start = at;
    if (*at == 'S') {
        at = reference_end(at, state);
    }
    while (*at == 'W' && state->error_seen == 0) {
        at = source_name(at + (at[1] == 'P' ? 2 : 1), state);
        state->module_entered = true;
        eabi_add_substitution(start, subst_name, at, {.flags = names_module}, no_text, state);
    }
    return at;
}

void emit_module(const char* at, const char* end, eabi_decode_state* state) {
    const nesting level(state);
    bool first = true;
    if (state->error_seen == 0 && is_module_reference(at, state)) {
        const subst_entry* const entry = referenced_entry(at, state);
        emit_module(entry->start, state->input + entry->prefix_end, state);
        at = reference_end(at, state);
        first = false;
    }
    for (; at < end && state->error_seen == 0; first = false) {
        const bool partition = at[1] == 'P';
        if (partition || !first) {
            emit_char(partition ? ':' : '.', state);
        }
        at = source_name(at + (partition ? 2 : 1), state);
    }
}

const char* module_initializer(const char* at, eabi_decode_state* state) {
    if (*at != 'W' && !is_module_reference(at, state)) {
        report_bad_name(state);
        return at;
    }
    const char* const end = module_end(at, state);
    emit_module(at, end, state);
    return end;
}

}  // namespace scheme1
