// Scheme 0's literal values, and the operands of expressions: references to function
// parameters, names, expressions.
#include "demangle/scheme0/grammar.h"

namespace scheme0 {

static char payload_text(char letter) {
    switch (letter) {
        case 'd':
            return '.';
        case 'n':
            return '-';
        case 'p':
            return '+';
        default:
            return letter;
    }
}

static const char* skip_reference_qualifiers(const char* at, const grammar_state* state) {
    for (;;) {
        switch (peek_char(at, state)) {
            case 'C':
            case 'V':
            case 'E':
            case 'I':
            case 'O':
                ++at;
                continue;
            case 'D':
                switch (peek_char(at + 1, state)) {
                    case 'r':
                    case 'E':
                    case 'I':
                    case 'O':
                        at += 2;
                        continue;
                    default:
                        return at;
                }
            default:
                return at;
        }
    }
}

// "I" { qualifier } number ( "I" | "_" level [ "I" ] )
static const char* parameter_reference(const char* at, grammar_state* state) {
    std::uint64_t number = 0;
    std::uint64_t levels = 0;
    at = read_number(skip_reference_qualifiers(at + 1, state), &number, state);
    if (peek_char(at, state) == '_') {
        at = read_number(at + 1, &levels, state);
        at += peek_char(at, state) == 'I' ? 1 : 0;
    } else {
        at = expect(at, 'I', state);
    }
    if (number == 0) {
        emit_text("this", state);
        return at;
    }
    emit_text("param#", state);
    emit_signed(static_cast<std::int64_t>(number), state);
    if (levels != 0) {
        emit_text("[up ", state);
        emit_signed(static_cast<std::int64_t>(levels), state);
        emit_text(levels == 1 ? " level]" : " levels]", state);
    }
    return at;
}

}  // namespace scheme0

using namespace scheme0;

// literal := digit payload | digit digit "_" payload | "_" digits "_" payload
// Narrows the input to the end of the payload.
const char* read_literal_length(const char* at, std::uint64_t* length, const char** saved_end,
                                decode_state* state) {
    const bool enclosed = peek_char(at, state) == '_';
    if (enclosed || (is_digit(peek_char(at, state)) && is_digit(peek_char(at + 1, state)) &&
                     peek_char(at + 2, state) == '_')) {
        at = read_length(enclosed ? at + 1 : at, length, saved_end, state);
        if (state->error_seen != 0) {
            return at;
        }
        // The payload starts one further on than the length was read for.
        if (state->input_end == *saved_end || *at != '_') {
            report_bad_name(state);
            return at;
        }
        ++state->input_end;
        return at + 1;
    }
    *saved_end = state->input_end;
    *length = 0;
    if (!is_digit(peek_char(at, state))) {
        report_bad_name(state);
        return at;
    }
    *length = static_cast<std::uint64_t>(*at - '0');
    ++at;
    if (*length > static_cast<std::uint64_t>(state->input_end - at)) {
        report_bad_name(state);
    } else {
        state->input_end = at + *length;
    }
    return at;
}

const char* emit_literal_value(const char* at, bool boolean, bool null_pointer,
                               decode_state* state) {
    std::uint64_t length = 0;
    const char* saved_end = nullptr;
    at = read_literal_length(at, &length, &saved_end, state);
    bool any_but_zero = false;
    for (; state->error_seen == 0 && at < state->input_end; ++at) {
        if (*at == '_' || *at == '\0') {
            report_bad_name(state);
            break;
        }
        any_but_zero |= *at != '0';
        if (!boolean && !null_pointer) {
            emit_char(payload_text(*at), state);
        }
    }
    if (null_pointer) {
        emit_text("nullptr", state);
    } else if (boolean) {
        emit_text(any_but_zero ? "true" : "false", state);
    }
    state->input_end = saved_end;
    return at;
}

// operand := parameter reference | "__" name [ "__" ] | expression
// As an operand of an operator, an operator expression goes into parentheses.
const char* decode_operand(const char* at, bool as_operand, grammar_state* state) {
    if (peek_char(at, state) == 'I') {
        return parameter_reference(at, state);
    }
    if (follows(at, "__", state)) {
        const nesting level(state);
        if (state->error_seen != 0) {
            return at;
        }
        ++state->nesting_level;
        at = operand_name(at + 2, state);
        --state->nesting_level;
        return follows(at, "__", state) ? at + 2 : at;
    }
    return expression(at, as_operand, state);
}
