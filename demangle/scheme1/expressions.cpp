// Operators with their operands, and the way to all other expressions.
#include "demangle/scheme1/expressions.h"

#include "demangle/scheme1/expression_forms.h"
#include "demangle/scheme1/expression_parts.h"
#include "demangle/scheme1/literals.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"
#include "demangle/scheme1/unqualified_names.h"
#include "demangle/scheme1/unresolved_names.h"
#include "demangle/scheme1/vendor_qualifiers.h"

namespace scheme1 {

// ---- Parentheses and lists ----

const char* enclosed_expression(const char* at, eabi_decode_state* state) {
    open_parenthesis(state);
    at = expression(at, state);
    close_parenthesis(state);
    return at;
}

const char* decltype_of(const char* at, eabi_decode_state* state) {
    emit_text("decltype", state);
    return expect(enclosed_expression(at + 2, state), 'E', state);
}

bool is_comma_at(const char* at, eabi_decode_state* state) {
    return *at == 'c' && eabi_operator_info(at, state).form == operator_form::comma;
}

const char* list_item(const char* at, eabi_decode_state* state) {
    return is_comma_at(at, state) ? enclosed_expression(at, state) : expression(at, state);
}

// { item } up to `end`, with commas.
template <typename Item>
static const char* item_list(const char* at, char end, eabi_decode_state* state, Item item) {
    for (bool first = true; *at != end && state->error_seen == 0; first = false) {
        if (!first) {
            emit_text(", ", state);
        }
        at = item(at, state);
    }
    return expect(at, end, state);
}

const char* enclosed_list(const char* at, char end, eabi_decode_state* state) {
    open_parenthesis(state);
    at = item_list(at, end, state, list_item);
    close_parenthesis(state);
    return at;
}

static bool at_designator(const char* at) {
    return *at == 'd' && (at[1] == 'i' || at[1] == 'x' || at[1] == 'X');
}

// "di" field value | "dx" index value | "dX" first last value | expression
static const char* braced_item(const char* at, eabi_decode_state* state) {
    if (!at_designator(at)) {
        return list_item(at, state);
    }
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    const char kind = at[1];
    at += 2;
    if (kind == 'i') {
        emit_char('.', state);
        at = source_name(at, state);
    } else {
        emit_char('[', state);
        at = expression(at, state);
        if (kind == 'X') {
            emit_text(" ... ", state);
            at = expression(at, state);
        }
        emit_char(']', state);
    }
    if (!at_designator(at)) {
        emit_text(" = ", state);
    }
    return braced_item(at, state);
}

const char* braced_list(const char* at, eabi_decode_state* state) {
    emit_char('{', state);
    at = item_list(at, 'E', state, braced_item);
    emit_char('}', state);
    return at;
}

// ---- Operators ----

// Whether an expression with the operator goes into parentheses as an operand. Names,
// literals, calls, members, subscripts, casts and what brings its own brackets do not.
static bool is_operation(operator_form form) {
    switch (form) {
        case operator_form::infix:
        case operator_form::greater:
        case operator_form::comma:
        case operator_form::member_pointer:
        case operator_form::prefix:
        case operator_form::prefix_word:
        case operator_form::step:
        case operator_form::conditional:
        case operator_form::word:
        case operator_form::creation:
        case operator_form::deletion:
            return true;
        default:
            return false;
    }
}

// Whether the text of the type at `at` ends in a name, so that "(" behind it cannot be taken
// for anything but the operand of a cast.
static bool ends_in_name(const char* at, eabi_decode_state* state) {
    const no_record unrecorded(state);
    while (state->error_seen == 0) {
        switch (*at) {
            case 'K':
            case 'V':
            case 'r':
            case 'C':
            case 'G':
                ++at;
                break;
            case 'P':
            case 'R':
            case 'O':
            case 'M':
            case 'A':
            case 'F':
                return false;
            case 'D':
                // "auto" behind a concept does, "decltype(auto)", a size or "..." do not.
                return std::string_view("BKOTUcoptvwx").find(at[1]) == std::string_view::npos;
            case 'S': {
                const char* const spelled = spelled_type(at, state);
                if (spelled == at) {
                    return true;
                }
                at = spelled;
                break;
            }
            case 'U': {
                if (!is_digit(at[1])) {
                    return true;
                }
                vendor_qualifier qualifier;
                at = read_vendor_qualifier(at, &qualifier, state);
                if (qualifier.form != nullptr && qualifier.form->place != vendor_place::before) {
                    return qualifier.form->place == vendor_place::around;
                }
                break;
            }
            default:
                return true;
        }
    }
    return true;
}

static bool is_operation_at(const char* at, eabi_decode_state* state) {
    if (*at < 'a' || *at > 'z') {
        return false;
    }
    if (code_is(at, "gs")) {
        return at_new_or_delete(at + 2);
    }
    if (const expression_form* const form = find_expression_form(at, state)) {
        return form->operation;
    }
    const found_operator op = eabi_operator_info(at, state);
    if (op.form == operator_form::conversion) {
        return !ends_in_name(at + op.code_length, state);
    }
    return !op.text.empty() && is_operation(op.form);
}

const char* operand(const char* at, eabi_decode_state* state) {
    return is_operation_at(at, state) ? enclosed_expression(at, state) : expression(at, state);
}

void emit_infix(const found_operator& op, eabi_decode_state* state) {
    switch (op.form) {
        case operator_form::comma:
            emit_text(", ", state);
            return;
        case operator_form::member:
        case operator_form::member_pointer:
            emit_text(op.text, state);
            return;
        case operator_form::greater:
            show_greater(state);
            break;
        default:
            break;
    }
    emit_char(' ', state);
    emit_text(op.text, state);
    emit_char(' ', state);
}

static const char* infix(const char* at, const found_operator& op, eabi_decode_state* state) {
    at = operand(at, state);
    emit_infix(op, state);
    return operand(at, state);
}

static const char* subscript(const char* at, const found_operator& op, eabi_decode_state* state) {
    at = operand(at, state);
    emit_text(op.text, state);
    at = expression(at, state);
    emit_text(op.closer, state);
    return at;
}

static const char* conditional(const char* at, eabi_decode_state* state) {
    at = operand(at, state);
    emit_text(" ? ", state);
    at = operand(at, state);
    emit_text(" : ", state);
    return operand(at, state);
}

// [ "_" ] operand: with the "_" the operator stands in front of it.
static const char* step(const char* at, const found_operator& op, eabi_decode_state* state) {
    if (*at == '_') {
        emit_text(op.text, state);
        return operand(at + 1, state);
    }
    at = operand(at, state);
    emit_text(op.text, state);
    return at;
}

const char* call(const char* at, bool in_parentheses, eabi_decode_state* state) {
    if (in_parentheses) {
        open_parenthesis(state);
        at = operand(at, state);
        close_parenthesis(state);
    } else {
        at = operand(at, state);
    }
    return enclosed_list(at, 'E', state);
}

const char* member_access(const char* at, std::string_view text, eabi_decode_state* state) {
    at = operand(at, state);
    emit_text(text, state);
    if (code_is(at, "gs")) {
        emit_text("::", state);
        at += 2;
    }
    return code_is(at, "sr") ? scoped_name(at, state) : base_unresolved_name(at, state);
}

// As many operands as the operator has.
static const char* operation(const char* at, const found_operator& op, eabi_decode_state* state) {
    emit_text(op.text, state);
    emit_text(op.tail, state);
    open_parenthesis(state);
    for (unsigned i = 0; i < op.arity && state->error_seen == 0; ++i) {
        if (i != 0) {
            emit_text(", ", state);
        }
        at = list_item(at, state);
    }
    close_parenthesis(state);
    return at;
}

// type expression | type "_" { expression } "E"
static const char* conversion(const char* at, eabi_decode_state* state) {
    at = whole_type(at, state);
    if (*at == '_') {
        return enclosed_list(at + 1, 'E', state);
    }
    open_parenthesis(state);
    at = list_item(at, state);
    close_parenthesis(state);
    return at;
}

// type expression: "<" type ">(" expression ")"
static const char* named_cast(const char* at, const found_operator& op, eabi_decode_state* state) {
    emit_text(op.text, state);
    emit_char('<', state);
    at = whole_type(at, state);
    emit_char('>', state);
    return enclosed_expression(at, state);
}

// The text opens a parenthesis, which the closer closes.
static const char* enclosing(const char* at, const found_operator& op, eabi_decode_state* state) {
    emit_text(op.text, state);
    ++state->parentheses;
    at = op.form == operator_form::enclosing_type ? whole_type(at, state) : expression(at, state);
    --state->parentheses;
    emit_text(op.closer, state);
    return at;
}

// { expression } "_" type ( "E" | "pi" { expression } "E" | braced list )
static const char* creation(const char* at, const found_operator& op, eabi_decode_state* state) {
    emit_text(op.text, state);
    if (*at != '_') {
        at = enclosed_list(at, '_', state);
        emit_char(' ', state);
    } else {
        ++at;
    }
    at = whole_type(at, state);
    if (code_is(at, "pi")) {
        return enclosed_list(at + 2, 'E', state);
    }
    if (code_is(at, "il")) {
        return braced_list(at + 2, state);
    }
    return expect(at, 'E', state);
}

// operator-code, and what the operator's form makes of the rest
OUT_OF_LINE static const char* operator_expression(const char* at, eabi_decode_state* state) {
    const found_operator op = eabi_operator_info(at, state);
    if (op.text.empty()) {
        report_bad_name(state);
        return at;
    }
    const char* const behind = at + op.code_length;
    switch (op.form) {
        case operator_form::infix:
        case operator_form::greater:
        case operator_form::comma:
        case operator_form::member_pointer:
            return infix(behind, op, state);
        case operator_form::member:
            return member_access(behind, op.text, state);
        case operator_form::prefix:
        case operator_form::deletion:
            emit_text(op.text, state);
            return operand(behind, state);
        case operator_form::prefix_word:
            emit_text(op.text, state);
            emit_char(' ', state);
            return operand(behind, state);
        case operator_form::step:
            return step(behind, op, state);
        case operator_form::conditional:
            return conditional(behind, state);
        case operator_form::word:
            emit_text(op.text, state);
            return behind;
        case operator_form::subscript:
            return subscript(behind, op, state);
        case operator_form::call:
            return call(behind, false, state);
        case operator_form::operation:
            return operation(behind, op, state);
        case operator_form::conversion:
            return conversion(behind, state);
        case operator_form::named_cast:
            return named_cast(behind, op, state);
        case operator_form::enclosing:
        case operator_form::enclosing_type:
            return enclosing(behind, op, state);
        case operator_form::type_of:
            at = whole_type(behind, state);
            emit_text(op.text, state);
            return at;
        case operator_form::creation:
            return creation(behind, op, state);
        case operator_form::literal:
            break;
    }
    report_bad_name(state);
    return at;
}

// ---- All expressions ----

// "u" source-name { template-arg } "E", and in older names
// "u8__uuidof" ( "t" type | "z" expression )
OUT_OF_LINE static const char* vendor_expression(const char* at, eabi_decode_state* state) {
    const char* const name_end = source_name(at + 1, state);
    const bool uuidof =
        std::string_view(at, static_cast<std::size_t>(name_end - at)) == "u8__uuidof";
    if (!uuidof || !state->extended || (*name_end != 't' && *name_end != 'z') ||
        !reads_otherwise(doubt_uuidof, state)) {
        return enclosed_args(name_end, state);
    }
    open_parenthesis(state);
    at = *name_end == 't' ? whole_type(name_end + 1, state) : expression(name_end + 1, state);
    close_parenthesis(state);
    return at;
}

// expression ::= source-name ... | literal | template-param | "u" ... | form | operator
const char* expression(const char* at, eabi_decode_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    if (is_digit(*at)) {
        return simple_id(at, state);
    }
    switch (*at) {
        case 'L':
            return literal(at, state);
        case 'T':  // a value: unlike the type it is not entered
            return eabi_template_param(at, state);
        case 'u':
            return vendor_expression(at, state);
        default:
            break;
    }
    if (const expression_form* const form = find_expression_form(at, state)) {
        return form->read(at, state);
    }
    return operator_expression(at, state);
}

}  // namespace scheme1
