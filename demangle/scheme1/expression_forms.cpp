// Expressions that are no operators: parameters, folds, lists, names, parts of objects.
#include "demangle/scheme1/expression_forms.h"

#include "demangle/scheme1/code_index.h"
#include "demangle/scheme1/expression_parts.h"
#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/requirements.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"
#include "demangle/scheme1/unqualified_names.h"
#include "demangle/scheme1/unresolved_names.h"

namespace scheme1 {

// "fp" [cv] [n] "_"  |  "fL" level "p" [cv] [n] "_"  |  "fpT"
static const char* function_param(const char* at, eabi_decode_state* state) {
    std::uint64_t level = 0;
    if (at[1] == 'L') {
        at = read_number(at + 2, &level, state);
        ++level;
        at = expect(at, 'p', state);
    } else if (at[2] == 'T') {
        emit_text("this", state);
        return at + 3;
    } else {
        at += 2;
    }
    while (qualifier_bit(*at) != 0) {
        ++at;
    }
    std::int64_t number = 0;
    at = read_ordinal(at, &number, state);
    emit_text("param#", state);
    emit_signed(number, state);
    if (level != 0) {
        emit_text("[up ", state);
        emit_signed(static_cast<std::int64_t>(level), state);
        emit_text(level == 1 ? " level]" : " levels]", state);
    }
    return at;
}

// "fl" op pack | "fr" op pack | "fL" op initial pack | "fR" op pack initial
static const char* fold(const char* at, eabi_decode_state* state) {
    const char kind = at[1];
    const found_operator op = eabi_operator_info(at + 2, state);
    if (op.text.empty() || op.arity != 2 || !op.closer.empty() || !op.tail.empty() ||
        op.form == operator_form::creation) {
        report_bad_name(state);
        return at;
    }
    at += 2 + op.code_length;
    open_parenthesis(state);
    if (kind == 'l') {
        emit_text("...", state);
    } else {
        at = operand(at, state);
    }
    emit_infix(op, state);
    if (kind == 'r') {
        emit_text("...", state);
    } else {
        if (kind != 'l') {
            emit_text("...", state);
            emit_infix(op, state);
        }
        at = operand(at, state);
    }
    close_parenthesis(state);
    return at;
}

// A digit behind "fL" is the level of a parameter.
static const char* left_fold_or_param(const char* at, eabi_decode_state* state) {
    return is_digit(at[2]) ? function_param(at, state) : fold(at, state);
}

// "gs" ( "nw" | "na" | "dl" | "da" | unresolved name )
static const char* global(const char* at, eabi_decode_state* state) {
    emit_text("::", state);
    at += 2;
    if (is_digit(*at) || at_new_or_delete(at) || code_is(at, "sr") || code_is(at, "on") ||
        code_is(at, "dn")) {
        return expression(at, state);
    }
    report_bad_name(state);
    return at;
}

// "cp" name { argument } "E": a call by a plain name, in parentheses against lookup by the
// arguments.
static const char* plain_call(const char* at, eabi_decode_state* state) {
    at += 2;
    if (!is_digit(*at) && !code_is(at, "on") && !code_is(at, "dn") && !code_is(at, "sr") &&
        !code_is(at, "gs") && !code_is(at, "L_")) {
        report_bad_name(state);
        return at;
    }
    return call(at, true, state);
}

// "dt" object member
static const char* member(const char* at, eabi_decode_state* state) {
    return member_access(at + 2, ".", state);
}

// "il" { expression } "E"
static const char* braces(const char* at, eabi_decode_state* state) {
    return braced_list(at + 2, state);
}

// "tl" type { expression } "E"
static const char* typed_braces(const char* at, eabi_decode_state* state) {
    return braced_list(whole_type(at + 2, state), state);
}

// "sp" operand
static const char* expansion(const char* at, eabi_decode_state* state) {
    at = operand(at + 2, state);
    emit_text("...", state);
    return at;
}

// "sZ" ( template parameter | function parameter )
static const char* sizeof_pack(const char* at, eabi_decode_state* state) {
    emit_text("sizeof...", state);
    return enclosed_expression(at + 2, state);
}

// "sP" { template-arg } "E"
static const char* sizeof_captured(const char* at, eabi_decode_state* state) {
    emit_text("sizeof...", state);
    return enclosed_args(at + 2, state);
}

// [ [ "n" ] number ]: a distance in bytes, 0 where there is none.
static const char* byte_offset(const char* at, signed_number* offset, eabi_decode_state* state) {
    return *at == 'n' || is_digit(*at) ? read_signed_number(at, offset, state) : at;
}

// "so" type object [ offset ] { "_" [ number ] } [ "p" ] "E": the part of that type which
// lies there. The choices among union members ("_") show in the type; "p" is the place
// behind the last element of an array.
static const char* subobject(const char* at, eabi_decode_state* state) {
    const char* const type = at + 2;
    at = operand(skip_type(type, state), state);
    emit_text(".<", state);
    if (state->suppress_depth == 0) {
        const no_record unrecorded(state);
        whole_type(type, state);
    }
    signed_number offset;
    at = byte_offset(at, &offset, state);
    emit_text(" at offset ", state);
    emit_signed(offset.value(), state);
    while (*at == '_') {
        for (++at; is_digit(*at); ++at) {
        }
    }
    if (*at == 'p') {
        emit_text(", past the end", state);
        ++at;
    }
    emit_char('>', state);
    return expect(at, 'E', state);
}

// "mc" type member-pointer [ offset ] "E": a pointer to a member of a base, converted to
// the class; the type tells by how much.
static const char* member_conversion(const char* at, eabi_decode_state* state) {
    at = whole_type(at + 2, state);
    at = enclosed_expression(at, state);
    signed_number offset;
    return expect(byte_offset(at, &offset, state), 'E', state);
}

static constexpr expression_form forms[] = {
    {"cp", plain_call},
    {"dn", base_unresolved_name},
    {"dt", member},
    {"fl", fold},
    {"fL", left_fold_or_param},
    {"fp", function_param},
    {"fr", fold},
    {"fR", fold},
    {"gs", global},
    {"il", braces},
    {"mc", member_conversion, true},
    {"on", base_unresolved_name},
    {"rq", requires_expression},
    {"rQ", requires_expression},
    {"so", subobject},
    {"sp", expansion, true},
    {"sP", sizeof_captured},
    {"sr", scoped_name},
    {"sZ", sizeof_pack},
    {"tl", typed_braces},
};
static constexpr code_index form_index{forms};

const expression_form* find_expression_form(const char* at, const eabi_decode_state* state) {
    const unsigned index = form_index[at];
    return index != 0 && is_open(forms[index - 1].mode, state) ? &forms[index - 1] : nullptr;
}

}  // namespace scheme1
