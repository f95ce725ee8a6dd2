// Template argument lists, and the declarations of template parameters.
#include "demangle/scheme1/template_args.h"

#include <utility>

#include "demangle/scheme1/expression_parts.h"
#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/literals.h"
#include "demangle/scheme1/names.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

bool at_template_param_decl(const char* at, const eabi_decode_state* state) {
    return state->extended && at[0] == 'T' &&
           (at[1] == 'y' || at[1] == 'n' || at[1] == 't' || at[1] == 'p' || at[1] == 'k');
}

// "Ty" | "Tk" concept | "Tn" type | "Tt" { declaration } "E" | "Tp" declaration: prints nothing.
const char* template_param_decl(const char* at, eabi_decode_state* state) {
    const nesting level(state);
    const silence silent(state);
    if (state->error_seen != 0 || !at_template_param_decl(at, state)) {
        report_bad_name(state);
        return at;
    }
    const char kind = at[1];
    at += 2;
    if (kind == 'n') {
        return whole_type(at, state);
    }
    if (kind == 'k') {
        return name_once(at, state);
    }
    if (kind == 'p') {
        return template_param_decl(at, state);
    }
    if (kind == 't') {
        while (*at != 'E' && *at != 'Q' && state->error_seen == 0) {
            at = template_param_decl(at, state);
        }
        if (*at == 'Q') {
            at = expression(at + 1, state);
        }
        return expect(at, 'E', state);
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

// "X" expression "E". One that shows a ">" would seem to close the list, and a comma to
// part two arguments: it goes into parentheses. Whether a ">" shows is known only after a
// silent first reading.
OUT_OF_LINE static const char* expression_arg(const char* at, eabi_decode_state* state) {
    const bool skipped = state->suppress_depth != 0 || may_show_greater(at);
    bool enclosed = false;
    const char* end = skipped ? skip_expression(at, &enclosed, state) : at;
    enclosed = enclosed || is_comma_at(at, state);
    if (state->suppress_depth == 0) {
        const std::uint32_t parentheses = std::exchange(state->parentheses, 0);
        const bool greater_seen = state->greater_seen;
        const no_record unrecorded(state, skipped);
        if (enclosed) {
            emit_char('(', state);
        }
        end = expression(at, state);
        if (enclosed) {
            emit_char(')', state);
        }
        state->parentheses = parentheses;
        state->greater_seen = greater_seen;
    }
    return expect(end, 'E', state);
}

// template-arg ::= type | "X" expression "E" | literal | ( "J" | "I" ) { template-arg } "E"
// A pack prints its elements in place, so the commas go in front of what prints.
const char* template_arg(const char* at, bool* first, eabi_decode_state* state) {
    while (at_template_param_decl(at, state) && state->error_seen == 0) {
        at = template_param_decl(at, state);
    }
    if (*at == 'J' || *at == 'I') {  // compilers wrote "I" before there was a "J"
        const nesting level(state);
        ++at;
        while (*at != 'E' && state->error_seen == 0) {
            at = template_arg(at, first, state);
        }
        return expect(at, 'E', state);
    }
    if (!*first) {
        emit_text(", ", state);
    }
    *first = false;
    if (*at == 'X') {
        return expression_arg(at + 1, state);
    }
    if (*at == 'L') {
        return literal(at, state);
    }
    return whole_type(at, state);
}

const char* enclosed_args(const char* at, eabi_decode_state* state) {
    open_parenthesis(state);
    bool first = true;
    while (*at != 'E' && state->error_seen == 0) {
        at = template_arg(at, &first, state);
    }
    close_parenthesis(state);
    return expect(at, 'E', state);
}

// template-args ::= "I" { template-arg } [ "Q" expression ] "E"
const char* template_args(const char* at, bool blank_before, eabi_decode_state* state) {
    const bool greater_seen = state->greater_seen;
    if (blank_before) {
        emit_char(' ', state);
    }
    emit_char('<', state);
    ++at;
    bool first = true;
    while (*at != 'E' && state->error_seen == 0) {
        if (*at == 'Q' && state->extended) {
            const silence silent(state);
            at = expression(at + 1, state);
            break;
        }
        at = template_arg(at, &first, state);
    }
    emit_char('>', state);
    state->greater_seen = greater_seen;
    return expect(at, 'E', state);
}

}  // namespace scheme1
