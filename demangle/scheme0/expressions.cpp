// Scheme 0's encoded expressions and the arguments of templates.
#include <cstring>

#include "demangle/scheme0/grammar.h"
#include "demangle/scheme0/operators.h"

namespace scheme0 {

namespace {

// Literals of these types print without a cast: the digits and a suffix, or a word.
struct plain_literal {
    const char* type;
    const char* suffix;
    bool boolean;
    bool null_pointer;
};

}  // namespace

static constexpr plain_literal plain_literals[] = {
    {"iL", "", false, false},    {"UiL", "U", false, false}, {"lL", "L", false, false},
    {"UlL", "UL", false, false}, {"LL", "LL", false, false}, {"ULL", "ULL", false, false},
    {"bL", "", true, false},     {"nL", "", false, true},    {"jL", "", false, true},
};

static void open_parenthesis(grammar_state* state) {
    emit_char('(', state);
    ++state->parentheses;
}

static void close_parenthesis(grammar_state* state) {
    --state->parentheses;
    emit_char(')', state);
}

// type "L" literal
static const char* typed_literal(const char* at, grammar_state* state) {
    for (const plain_literal& row : plain_literals) {
        if (follows(at, row.type, state)) {
            at = emit_literal_value(at + std::strlen(row.type), row.boolean, row.null_pointer,
                                    state);
            emit_text(row.suffix, state);
            return at;
        }
    }
    open_parenthesis(state);
    at = whole_type(at, state);
    close_parenthesis(state);
    at = expect(at, 'L', state);
    return state->error_seen != 0 ? at : emit_literal_value(at, false, false, state);
}

// "Z" ... "Z" is a value, or in front of "L" the type of a literal.
static const char* template_param_value(const char* at, grammar_state* state) {
    template_param param;
    const char* const end = read_template_param(at, &param, state);
    if (peek_char(end, state) == 'L') {
        return typed_literal(at, state);
    }
    emit_template_param_name(param.level + state->nesting_level, param.index, 1, state);
    return end;
}

// Forms that go into parentheses where they are an operand.
static bool is_operation(operator_form form) {
    switch (form) {
        case operator_form::infix:
        case operator_form::greater:
        case operator_form::comma:
        case operator_form::member_pointer:
        case operator_form::prefix:
        case operator_form::prefix_word:
        case operator_form::postfix:
        case operator_form::conditional:
        case operator_form::creation:
        case operator_form::deletion:
        case operator_form::expansion:
            return true;
        default:
            return false;
    }
}

static const char* operand(const char* at, grammar_state* state) {
    return decode_operand(at, true, state);
}

static const char* bare_operand(const char* at, grammar_state* state) {
    return decode_operand(at, false, state);
}

// "T" type
static const char* type_operand(const char* at, grammar_state* state) {
    return whole_type(expect(at, 'T', state), state);
}

// In a list an "O" that no operator code follows is the end.
static bool list_goes_on(const char* at, const grammar_state* state) {
    if (state->error_seen != 0 || peek_char(at, state) == '\0') {
        return false;
    }
    int length = 0;
    return peek_char(at, state) != 'O' || lookup_operator_code(at + 1, state, &length) != nullptr;
}

static const char* operand_list(const char* at, grammar_state* state) {
    for (bool first = true; list_goes_on(at, state); first = false) {
        if (!first) {
            emit_text(", ", state);
        }
        at = bare_operand(at, state);
    }
    return at;
}

static const char* parenthesized_list(const char* at, grammar_state* state) {
    open_parenthesis(state);
    at = operand_list(at, state);
    close_parenthesis(state);
    return at;
}

static const char* infix(const char* at, const char* before, const char* text, const char* after,
                         grammar_state* state) {
    at = operand(at, state);
    emit_text(before, state);
    emit_text(text, state);
    emit_text(after, state);
    return operand(at, state);
}

static const char* conditional(const char* at, grammar_state* state) {
    at = operand(at, state);
    emit_text(" ? ", state);
    at = operand(at, state);
    emit_text(" : ", state);
    return operand(at, state);
}

// The text opens a parenthesis, which the operand's end closes.
static const char* enclosing(const char* at, const char* text, grammar_state* state) {
    emit_text(text, state);
    ++state->parentheses;
    at = peek_char(at, state) == 'T' ? type_operand(at, state) : bare_operand(at, state);
    close_parenthesis(state);
    return at;
}

static const char* named_cast(const char* at, const char* text, grammar_state* state) {
    emit_text(text, state);
    // A ">" in the type stands in brackets of its own.
    ++state->parentheses;
    at = type_operand(at, state);
    --state->parentheses;
    emit_char('>', state);
    open_parenthesis(state);
    at = bare_operand(at, state);
    close_parenthesis(state);
    return at;
}

static const char* operands(const char* at, const operator_code& row, grammar_state* state) {
    switch (row.form) {
        case operator_form::infix:
        case operator_form::greater:
            return infix(at, " ", row.text, " ", state);
        case operator_form::comma:
            return infix(at, "", row.text, " ", state);
        case operator_form::member:
        case operator_form::member_pointer:
            return infix(at, "", row.text, "", state);
        case operator_form::prefix:
            emit_text(row.text, state);
            return operand(at, state);
        case operator_form::prefix_word:
        case operator_form::deletion:
            emit_text(row.text, state);
            emit_char(' ', state);
            return operand(at, state);
        case operator_form::postfix:
        case operator_form::expansion:
            at = operand(at, state);
            emit_text(row.text, state);
            return at;
        case operator_form::conditional:
            return conditional(at, state);
        case operator_form::call:
            at = operand(at, state);
            return parenthesized_list(at, state);
        case operator_form::second_call:
            open_parenthesis(state);
            at = operand(at, state);
            close_parenthesis(state);
            return parenthesized_list(at, state);
        case operator_form::subscript:
            at = operand(at, state);
            emit_char('[', state);
            at = bare_operand(at, state);
            emit_char(']', state);
            return at;
        case operator_form::function:
            emit_text(row.text, state);
            return parenthesized_list(at, state);
        case operator_form::named_cast:
            return named_cast(at, row.text, state);
        case operator_form::cast:
            open_parenthesis(state);
            at = type_operand(at, state);
            close_parenthesis(state);
            return operand(at, state);
        case operator_form::enclosing:
            return enclosing(at, row.text, state);
        case operator_form::type_of:
            at = type_operand(at, state);
            emit_text(row.text, state);
            return at;
        case operator_form::creation:
            emit_text(row.text, state);
            emit_char(' ', state);
            at = type_operand(at, state);
            return parenthesized_list(at, state);
        case operator_form::typed_braces:
            at = type_operand(at, state);
            [[fallthrough]];
        case operator_form::braces:
            emit_char('{', state);
            at = operand_list(at, state);
            emit_char('}', state);
            return at;
        case operator_form::literal:
            report_bad_name(state);
            return at;
    }
    return at;
}

// "O" operator-code { operand | "T" type } "O"
static const char* operation(const char* at, bool as_operand, grammar_state* state) {
    int length = 0;
    const operator_code* const row = lookup_operator_code(at + 1, state, &length);
    if (row == nullptr) {
        report_bad_name(state);
        return at;
    }
    const bool enclosed = as_operand && is_operation(row->form);
    if (enclosed) {
        open_parenthesis(state);
    }
    if (row->form == operator_form::greater && state->parentheses == 0) {
        state->greater_seen = true;
    }
    at = expect(operands(at + 1 + length, *row, state), 'O', state);
    if (enclosed) {
        close_parenthesis(state);
    }
    return at;
}

// True when the operand prints a ">" outside parentheses, which would read as the end
// of the list.
static bool needs_parentheses(const char* at, grammar_state* state) {
    if (peek_char(at, state) != 'O') {
        return false;
    }
    const silence silent(state);
    const std::uint64_t parentheses = state->parentheses;
    const bool greater_seen = state->greater_seen;
    state->parentheses = 0;
    state->greater_seen = false;
    bare_operand(at, state);
    const bool needed = state->greater_seen;
    state->parentheses = parentheses;
    state->greater_seen = greater_seen;
    return needed;
}

// expression := type "L" literal | template parameter | operation
const char* expression(const char* at, bool as_operand, grammar_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    switch (peek_char(at, state)) {
        case 'O':
            return operation(at, as_operand, state);
        case 'Z':
            return template_param_value(at, state);
        default:
            return typed_literal(at, state);
    }
}

// arg := type | "X" operand
const char* template_argument(const char* at, grammar_state* state) {
    if (peek_char(at, state) != 'X') {
        return whole_type(at, state);
    }
    ++at;
    const bool enclosed = state->suppress_depth == 0 && needs_parentheses(at, state);
    if (enclosed) {
        emit_char('(', state);
    }
    at = bare_operand(at, state);
    if (enclosed) {
        emit_char(')', state);
    }
    return at;
}

}  // namespace scheme0
