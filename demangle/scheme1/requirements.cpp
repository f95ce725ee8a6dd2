// Requires-expressions.
#include "demangle/scheme1/requirements.h"

#include "demangle/scheme1/expression_parts.h"
#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/names.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

// "X" expression [ "N" ] [ "R" constraint ] | "T" type | "Q" expression
static const char* requirement(const char* at, eabi_decode_state* state) {
    const char kind = *at;
    if (kind != 'X' && kind != 'T' && kind != 'Q') {
        report_bad_name(state);
        return at;
    }
    ++at;
    if (kind == 'T') {
        emit_text("typename ", state);
        at = whole_type(at, state);
    } else if (kind == 'Q') {
        emit_text("requires ", state);
        at = expression(at, state);
    } else {
        const char* const start = at;
        bool shows_greater = false;
        at = skip_expression(at, &shows_greater, state);
        if (shows_greater) {
            show_greater(state);
        }
        const bool compound = *at == 'N' || *at == 'R';
        if (state->suppress_depth == 0) {
            const no_record unrecorded(state);
            emit_text(compound ? "{" : "", state);
            expression(start, state);
            emit_text(compound ? "}" : "", state);
        }
        if (*at == 'N') {
            emit_text(" noexcept", state);
            ++at;
        }
        if (*at == 'R') {
            emit_text(" -> ", state);
            at = name_once(at + 1, state);
        }
    }
    emit_char(';', state);
    return at;
}

// "rQ" parameter type+ "_" requirement+ "E" | "rq" requirement+ "E"
const char* requires_expression(const char* at, eabi_decode_state* state) {
    emit_text("requires", state);
    const bool has_parameters = at[1] == 'Q';
    at += 2;
    if (has_parameters) {
        open_parenthesis(state);
        if (at[0] == 'v' && at[1] == '_') {
            at += 2;
        } else {
            at = whole_type(at, state);
            while (*at != '_' && state->error_seen == 0) {
                emit_text(", ", state);
                at = whole_type(at, state);
            }
            at = expect(at, '_', state);
        }
        close_parenthesis(state);
    }
    emit_text(" {", state);
    do {
        emit_char(' ', state);
        at = requirement(at, state);
    } while (*at != 'E' && state->error_seen == 0);
    emit_text(" }", state);
    return expect(at, 'E', state);
}

}  // namespace scheme1
