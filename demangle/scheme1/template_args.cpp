// Template argument lists of the Itanium ABI decoder, and the declarations of template
// parameters. Called by the names, the types and the expressions.
#include <utility>

#include "demangle/scheme1/state.h"

bool eabi_at_template_param_decl(const char* at, const eabi_decode_state* state) {
    return state->extended && at[0] == 'T' &&
           (at[1] == 'y' || at[1] == 'n' || at[1] == 't' || at[1] == 'p' || at[1] == 'k');
}

// "Ty" | "Tk" concept | "Tn" type | "Tt" { declaration } "E" | "Tp" declaration: prints nothing.
const char* eabi_template_param_decl(const char* at, eabi_decode_state* state) {
    const eabi_level level(state);
    const eabi_silence silent(state);
    if (state->error_seen != 0 || !eabi_at_template_param_decl(at, state)) {
        report_bad_name(state);
        return at;
    }
    const char kind = at[1];
    at += 2;
    if (kind == 'n') {
        return eabi_whole_type(at, true, state);
    }
    if (kind == 'k') {
        eabi_name_record record;
        return eabi_name(at, &record, mode_both, state);
    }
    if (kind == 'p') {
        return eabi_template_param_decl(at, state);
    }
    if (kind == 't') {
        while (*at != 'E' && *at != 'Q' && state->error_seen == 0) {
            at = eabi_template_param_decl(at, state);
        }
        if (*at == 'Q') {
            at = eabi_expression(at + 1, state);
        }
        return eabi_require(at, 'E', state);
    }
    return at;
}

// Whether a ">" outside parentheses may come out of the expression at `at`. Says no
// only where that is plain from its first letters.
static bool may_show_greater(const char* at) {
    switch (*at) {
        case 'L':
        case 'T':
            return false;
        case 's':
            return at[1] != 'r' && at[1] != 't' && at[1] != 'z' && at[1] != 'Z' && at[1] != 'P';
        default:
            return true;
    }
}

// "X" expression "E". One that shows a ">" would seem to close the list and goes
// into parentheses; whether it does is known only after a silent first reading.
[[gnu::noinline]] static const char* expression_arg(const char* at, eabi_decode_state* state) {
    const bool skipped = state->suppress_depth != 0 || may_show_greater(at);
    bool enclosed = false;
    const char* end = skipped ? eabi_skip_expression(at, &enclosed, state) : at;
    if (state->suppress_depth == 0) {
        const std::uint32_t parentheses = std::exchange(state->parentheses, 0);
        const bool greater_seen = state->greater_seen;
        const eabi_no_record no_record(state, skipped);
        if (enclosed) {
            eabi_put('(', state);
        }
        end = eabi_expression(at, state);
        if (enclosed) {
            eabi_put(')', state);
        }
        state->parentheses = parentheses;
        state->greater_seen = greater_seen;
    }
    return eabi_require(end, 'E', state);
}

// template-arg ::= type | "X" expression "E" | literal | ( "J" | "I" ) { template-arg } "E"
// A pack prints its elements in place, so the commas go in front of what prints.
const char* eabi_template_arg(const char* at, bool* first, eabi_decode_state* state) {
    while (eabi_at_template_param_decl(at, state) && state->error_seen == 0) {
        at = eabi_template_param_decl(at, state);
    }
    if (*at == 'J' || *at == 'I') {  // compilers wrote "I" before there was a "J"
        const eabi_level level(state);
        ++at;
        while (*at != 'E' && state->error_seen == 0) {
            at = eabi_template_arg(at, first, state);
        }
        return eabi_require(at, 'E', state);
    }
    if (!*first) {
        eabi_put(", ", state);
    }
    *first = false;
    if (*at == 'X') {
        return expression_arg(at + 1, state);
    }
    if (*at == 'L') {
        return eabi_literal(at, state);
    }
    return eabi_whole_type(at, true, state);
}

// template-args ::= "I" { template-arg } [ "Q" expression ] "E"
const char* eabi_template_args(const char* at, bool blank_before, eabi_decode_state* state) {
    const bool greater_seen = state->greater_seen;
    if (blank_before) {
        eabi_put(' ', state);
    }
    eabi_put('<', state);
    ++at;
    bool first = true;
    while (*at != 'E' && state->error_seen == 0) {
        if (*at == 'Q' && state->extended) {
            const eabi_silence silent(state);
            at = eabi_expression(at + 1, state);
            break;
        }
        at = eabi_template_arg(at, &first, state);
    }
    eabi_put('>', state);
    state->greater_seen = greater_seen;
    return eabi_require(at, 'E', state);
}
