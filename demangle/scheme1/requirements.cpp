// Requires-expressions of the Itanium ABI decoder. Called by the expressions.
#include "demangle/scheme1/unresolved_names.h"

// "X" expression [ "N" ] [ "R" constraint ] | "T" type | "Q" expression
static const char* requirement(const char* at, eabi_decode_state* state) {
    const char kind = *at;
    if (kind != 'X' && kind != 'T' && kind != 'Q') {
        report_bad_name(state);
        return at;
    }
    ++at;
    if (kind == 'T') {
        eabi_put("typename ", state);
        at = eabi_whole_type(at, true, state);
    } else if (kind == 'Q') {
        eabi_put("requires ", state);
        at = eabi_expression(at, state);
    } else {
        const char* const start = at;
        bool shows_greater = false;
        at = eabi_skip_expression(at, &shows_greater, state);
        if (shows_greater) {
            eabi_show_greater(state);
        }
        const bool compound = *at == 'N' || *at == 'R';
        if (state->suppress_depth == 0) {
            const eabi_no_record no_record(state);
            eabi_put(compound ? "{" : "", state);
            eabi_expression(start, state);
            eabi_put(compound ? "}" : "", state);
        }
        if (*at == 'N') {
            eabi_put(" noexcept", state);
            ++at;
        }
        if (*at == 'R') {
            eabi_put(" -> ", state);
            eabi_name_record record;
            at = eabi_name(at + 1, &record, mode_both, state);
        }
    }
    eabi_put(';', state);
    return at;
}

// "rQ" parameter type+ "_" requirement+ "E" | "rq" requirement+ "E"
const char* eabi_requires_expression(const char* at, eabi_decode_state* state) {
    eabi_put("requires", state);
    const bool has_parameters = at[1] == 'Q';
    at += 2;
    if (has_parameters) {
        eabi_open_parenthesis(state);
        if (at[0] == 'v' && at[1] == '_') {
            at += 2;
        } else {
            at = eabi_whole_type(at, true, state);
            while (*at != '_' && state->error_seen == 0) {
                eabi_put(", ", state);
                at = eabi_whole_type(at, true, state);
            }
            at = eabi_require(at, '_', state);
        }
        eabi_close_parenthesis(state);
    }
    eabi_put(" {", state);
    do {
        eabi_put(' ', state);
        at = requirement(at, state);
    } while (*at != 'E' && state->error_seen == 0);
    eabi_put(" }", state);
    return eabi_require(at, 'E', state);
}
