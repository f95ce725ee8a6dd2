// Expressions of the Itanium ABI decoder: what stands in template arguments, in
// decltype, in array bounds and in exception specifications.
#include <algorithm>

#include "demangle/scheme1/unresolved_names.h"

// --- Parentheses ----------------------------------------------------------------

const char* eabi_enclosed_expression(const char* at, eabi_decode_state* state) {
    eabi_open_parenthesis(state);
    at = eabi_expression(at, state);
    eabi_close_parenthesis(state);
    return at;
}

const char* eabi_decltype(const char* at, eabi_decode_state* state) {
    eabi_put("decltype", state);
    return eabi_require(eabi_enclosed_expression(at + 2, state), 'E', state);
}

// Whether the expression at `at` goes into parentheses as an operand: operators do;
// names, literals, calls, members, subscripts, casts and what brings its own closing
// text do not.
static bool is_operator_expression(const char* at, eabi_decode_state* state) {
    static constexpr const char bare[][3] = {"ix", "cl", "cv", "dc", "sc", "cc", "rc", "pt"};
    if (*at < 'a' || *at > 'v') {
        return false;
    }
    if (eabi_code_is(at, "gs")) {
        at += 2;
        return eabi_code_is(at, "nw") || eabi_code_is(at, "na") || eabi_code_is(at, "dl") ||
               eabi_code_is(at, "da");
    }
    if (eabi_code_is(at, "sp") || eabi_code_is(at, "tr")) {
        return true;
    }
    if (eabi_code_is(at, "li") ||
        std::any_of(std::begin(bare), std::end(bare),
                    [at](const char(&code)[3]) { return eabi_code_is(at, code); })) {
        return false;
    }
    const eabi_operator found = eabi_operator_info(at, state);
    return !found.text.empty() && found.closer.empty() && found.arity != 0 && found.tail.empty() &&
           found.text != "safe_cast" && found.text != "subscript";
}

const char* eabi_operand(const char* at, eabi_decode_state* state) {
    return is_operator_expression(at, state) ? eabi_enclosed_expression(at, state)
                                             : eabi_expression(at, state);
}

// { expression } up to `end`, with commas.
static const char* expression_list(const char* at, char end, eabi_decode_state* state) {
    for (bool first = true; *at != end && state->error_seen == 0; first = false) {
        if (!first) {
            eabi_put(", ", state);
        }
        at = eabi_expression(at, state);
    }
    return eabi_require(at, end, state);
}

static const char* enclosed_list(const char* at, char end, eabi_decode_state* state) {
    eabi_open_parenthesis(state);
    at = expression_list(at, end, state);
    eabi_close_parenthesis(state);
    return at;
}

static const char* braced_list(const char* at, eabi_decode_state* state) {
    eabi_put('{', state);
    at = expression_list(at, 'E', state);
    eabi_put('}', state);
    return at;
}

// --- Function parameters --------------------------------------------------------

// "fp" [cv] [n] "_"  |  "fL" level "p" [cv] [n] "_"  |  "fpT"
static const char* function_param(const char* at, eabi_decode_state* state) {
    std::uint64_t level = 0;
    if (at[1] == 'L') {
        at = eabi_number(at + 2, &level, state);
        ++level;
        at = eabi_require(at, 'p', state);
    } else if (at[2] == 'T') {
        eabi_put("this", state);
        return at + 3;
    } else {
        at += 2;
    }
    while (eabi_qualifier_bit(*at) != 0) {
        ++at;
    }
    std::int64_t number = 0;
    at = eabi_ordinal(at, &number, state);
    eabi_put("param#", state);
    eabi_put_number(number, state);
    if (level != 0) {
        eabi_put("[up ", state);
        eabi_put_number(static_cast<std::int64_t>(level), state);
        eabi_put(level == 1 ? " level]" : " levels]", state);
    }
    return at;
}

// --- Folds ----------------------------------------------------------------------

static void put_infix(std::string_view text, std::string_view tail, eabi_decode_state* state) {
    if (text == ",") {
        eabi_put(", ", state);
        return;
    }
    if (text == ".*" || text == "->") {
        eabi_put(text, state);
        return;
    }
    if (text != "->*" && text != "<=>" && text.find('>') != std::string_view::npos) {
        eabi_show_greater(state);
    }
    eabi_put(' ', state);
    eabi_put(text, state);
    eabi_put(tail, state);
    eabi_put(' ', state);
}

// "fl" op pack | "fr" op pack | "fL" op initial pack | "fR" op pack initial
[[gnu::noinline]] static const char* fold(const char* at, eabi_decode_state* state) {
    const char kind = at[1];
    const eabi_operator op = eabi_operator_info(at + 2, state);
    if (op.text.empty() || op.arity != 2 || !op.closer.empty() || !op.tail.empty() ||
        op.text.ends_with(' ')) {
        report_bad_name(state);
        return at;
    }
    at += 2 + op.code_length;
    eabi_open_parenthesis(state);
    if (kind == 'l') {
        eabi_put("...", state);
    } else {
        at = eabi_operand(at, state);
    }
    put_infix(op.text, op.tail, state);
    if (kind == 'r') {
        eabi_put("...", state);
    } else {
        if (kind != 'l') {
            eabi_put("...", state);
            put_infix(op.text, op.tail, state);
        }
        at = eabi_operand(at, state);
    }
    eabi_close_parenthesis(state);
    return at;
}

// --- Operators with forms of their own ------------------------------------------

// "cv" type expression | "cv" type "_" { expression } "E"
[[gnu::noinline]] static const char* conversion(const char* at, eabi_decode_state* state) {
    at = eabi_whole_type(at + 2, true, state);
    if (*at == '_') {
        return enclosed_list(at + 1, 'E', state);
    }
    return eabi_enclosed_expression(at, state);
}

// A named cast: "<" type ">(" expression ")".
static const char* named_cast(const char* at, const eabi_operator& op, eabi_decode_state* state) {
    eabi_put(op.text, state);
    eabi_put('<', state);
    at = eabi_whole_type(at + op.code_length, true, state);
    eabi_put('>', state);
    return eabi_enclosed_expression(at, state);
}

// ( "nw" | "na" ) { expression } "_" type ( "E" | "pi" { expression } "E" | braced list )
[[gnu::noinline]] static const char* new_expression(const char* at, const eabi_operator& op,
                                                    eabi_decode_state* state) {
    eabi_put(op.text, state);
    at += 2;
    if (*at != '_') {
        at = enclosed_list(at, '_', state);
        eabi_put(' ', state);
    } else {
        ++at;
    }
    at = eabi_whole_type(at, true, state);
    if (eabi_code_is(at, "pi")) {
        return enclosed_list(at + 2, 'E', state);
    }
    if (eabi_code_is(at, "il")) {
        return braced_list(at + 2, state);
    }
    return eabi_require(at, 'E', state);
}

// "di" field value | "dx" index value | "dX" first last value, in a braced list
static const char* designator(const char* at, eabi_decode_state* state) {
    const char kind = at[1];
    at += 2;
    if (kind == 'i') {
        eabi_put('.', state);
        at = eabi_source_name(at, state);
    } else {
        eabi_put('[', state);
        at = eabi_expression(at, state);
        if (kind == 'X') {
            eabi_put(" ... ", state);
            at = eabi_expression(at, state);
        }
        eabi_put(']', state);
    }
    if (*at != 'd' || (at[1] != 'i' && at[1] != 'x' && at[1] != 'X')) {
        eabi_put(" = ", state);
    }
    return eabi_expression(at, state);
}

// "sP" { template-arg } "E"
[[gnu::noinline]] static const char* sizeof_captured(const char* at, eabi_decode_state* state) {
    eabi_put("sizeof...", state);
    eabi_open_parenthesis(state);
    bool first = true;
    for (at += 2; *at != 'E' && state->error_seen == 0;) {
        at = eabi_template_arg(at, &first, state);
    }
    eabi_close_parenthesis(state);
    return eabi_require(at, 'E', state);
}

// "u" source-name { template-arg } "E"
[[gnu::noinline]] static const char* vendor_expression(const char* at, eabi_decode_state* state) {
    at = eabi_source_name(at + 1, state);
    eabi_open_parenthesis(state);
    bool first = true;
    while (*at != 'E' && state->error_seen == 0) {
        at = eabi_template_arg(at, &first, state);
    }
    eabi_close_parenthesis(state);
    return eabi_require(at, 'E', state);
}

// ( "pp" | "mm" ) [ "_" ] operand: with the "_" in front of its operand.
static const char* step_expression(const char* at, const eabi_operator& op,
                                   eabi_decode_state* state) {
    at += 2;
    if (*at == '_') {
        eabi_put(op.text, state);
        return eabi_operand(at + 1, state);
    }
    at = eabi_operand(at, state);
    eabi_put(op.text, state);
    return at;
}

// ( "cl" | "cp" ) callee { argument } "E"
[[gnu::noinline]] static const char* call(const char* at, eabi_decode_state* state) {
    const bool in_parentheses = at[1] == 'p';
    at += 2;
    if (in_parentheses) {
        eabi_open_parenthesis(state);
        at = eabi_operand(at, state);
        eabi_close_parenthesis(state);
    } else {
        at = eabi_operand(at, state);
    }
    return enclosed_list(at, 'E', state);
}

// ( "dt" | "pt" ) object member
[[gnu::noinline]] static const char* member(const char* at, std::string_view text,
                                            eabi_decode_state* state) {
    at = eabi_operand(at + 2, state);
    eabi_put(text, state);
    if (eabi_code_is(at, "gs")) {
        eabi_put("::", state);
        at += 2;
    }
    if (eabi_code_is(at, "sr")) {
        return eabi_scoped_name(at, state);
    }
    if (*at == 'T' || *at == 'L' || eabi_code_is(at, "cl") || eabi_code_is(at, "fp")) {
        return eabi_operand(at, state);
    }
    return eabi_base_unresolved_name(at, state);
}

// --- Parts of objects -----------------------------------------------------------

// [ [ "n" ] number ]: a distance in bytes, 0 where there is none.
static const char* byte_offset(const char* at, std::int64_t* offset, eabi_decode_state* state) {
    *offset = 0;
    const bool negative = *at == 'n';
    if (negative || eabi_is_digit(*at)) {
        std::uint64_t value = 0;
        at = eabi_number(at + (negative ? 1 : 0), &value, state);
        *offset = static_cast<std::int64_t>(negative ? 0 - value : value);
    }
    return at;
}

// "so" type object [ offset ] { "_" [ number ] } [ "p" ] "E": the part of that type which
// lies there. The choices among union members ("_") show in the type; "p" is the place
// behind the last element of an array.
[[gnu::noinline]] static const char* subobject(const char* at, eabi_decode_state* state) {
    const char* const type = at + 2;
    at = eabi_operand(eabi_skip_type(type, state), state);
    eabi_put(".<", state);
    if (state->suppress_depth == 0) {
        const eabi_no_record no_record(state);
        eabi_whole_type(type, true, state);
    }
    std::int64_t offset = 0;
    at = byte_offset(at, &offset, state);
    eabi_put(" at offset ", state);
    eabi_put_number(offset, state);
    while (*at == '_') {
        for (++at; eabi_is_digit(*at); ++at) {
        }
    }
    if (*at == 'p') {
        eabi_put(", past the end", state);
        ++at;
    }
    eabi_put('>', state);
    return eabi_require(at, 'E', state);
}

// "mc" type member-pointer [ offset ] "E": a pointer to a member of a base, converted to
// the class; the type tells by how much.
[[gnu::noinline]] static const char* member_conversion(const char* at, eabi_decode_state* state) {
    at = eabi_whole_type(at + 2, true, state);
    at = eabi_enclosed_expression(at, state);
    std::int64_t offset = 0;
    return eabi_require(byte_offset(at, &offset, state), 'E', state);
}

// --- Operators ------------------------------------------------------------------

// "subscript" and "builtin-operation-XX" with any number of operands.
static const char* operation_call(const char* at, const eabi_operator& op,
                                  eabi_decode_state* state) {
    eabi_put(op.text, state);
    eabi_put(op.tail, state);
    eabi_open_parenthesis(state);
    at += op.code_length;
    for (unsigned i = 0; i < op.arity && state->error_seen == 0; ++i) {
        if (i != 0) {
            eabi_put(", ", state);
        }
        at = eabi_expression(at, state);
    }
    eabi_close_parenthesis(state);
    return at;
}

// A text that opens a parenthesis, a type or an expression, and the closer.
static const char* enclosing_operator(const char* at, const eabi_operator& op,
                                      eabi_decode_state* state) {
    eabi_put(op.text, state);
    ++state->parentheses;
    at += op.code_length;
    at = op.arity == 0 ? eabi_whole_type(at, true, state) : eabi_expression(at, state);
    --state->parentheses;
    eabi_put(op.closer, state);
    return at;
}

static const char* binary_operator(const char* at, const eabi_operator& op,
                                   eabi_decode_state* state) {
    at = eabi_operand(at + op.code_length, state);
    if (!op.closer.empty()) {  // a subscript
        eabi_put(op.text, state);
        at = eabi_expression(at, state);
        eabi_put(op.closer, state);
        return at;
    }
    put_infix(op.text, op.tail, state);
    return eabi_operand(at, state);
}

static const char* conditional(const char* at, eabi_decode_state* state) {
    at = eabi_operand(at + 2, state);
    eabi_put(" ? ", state);
    at = eabi_operand(at, state);
    eabi_put(" : ", state);
    return eabi_operand(at, state);
}

[[gnu::noinline]] static const char* operator_expression(const char* at, eabi_decode_state* state) {
    const eabi_operator op = eabi_operator_info(at, state);
    if (op.text.empty() || eabi_code_is(at, "li")) {
        report_bad_name(state);
        return at;
    }
    if (op.text == "subscript" || op.text.starts_with("builtin-operation-")) {
        return operation_call(at, op, state);
    }
    if (op.text == "::typeid") {
        at = eabi_whole_type(at + op.code_length, true, state);
        eabi_put(op.text, state);
        return at;
    }
    if (op.text.ends_with("_cast")) {
        return named_cast(at, op, state);
    }
    if (op.closer == ")") {
        return enclosing_operator(at, op, state);
    }
    switch (op.arity) {
        case 1:
            eabi_put(op.text, state);
            if (op.text == "co_await") {
                eabi_put(' ', state);
            }
            return eabi_operand(at + op.code_length, state);
        case 2:
            return binary_operator(at, op, state);
        case 3:
            return conditional(at, state);
        default:  // "throw" alone
            eabi_put(op.text, state);
            return at + op.code_length;
    }
}

// expression
const char* eabi_expression(const char* at, eabi_decode_state* state) {
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return at;
    }
    if (eabi_is_digit(*at)) {
        return eabi_simple_id(at, state);
    }
    switch (*at) {
        case 'L':
            return eabi_literal(at, state);
        case 'T':  // a value: unlike the type it is not entered
            return eabi_template_param(at, state);
        case 'u':
            return vendor_expression(at, state);
        case 'f':
            if (at[1] == 'p' || (at[1] == 'L' && eabi_is_digit(at[2]))) {
                return function_param(at, state);
            }
            if (at[1] == 'l' || at[1] == 'r' || at[1] == 'L' || at[1] == 'R') {
                return fold(at, state);
            }
            break;
        default:
            break;
    }
    const unsigned code = static_cast<unsigned>(static_cast<unsigned char>(at[0])) << 8U |
                          static_cast<unsigned char>(at[0] == '\0' ? '\0' : at[1]);
    const auto two = [](const char(&letters)[3]) {
        return static_cast<unsigned>(static_cast<unsigned char>(letters[0])) << 8U |
               static_cast<unsigned char>(letters[1]);
    };
    if (code == two("gs")) {
        eabi_put("::", state);
        at += 2;
        if (eabi_code_is(at, "nw") || eabi_code_is(at, "na") || eabi_code_is(at, "dl") ||
            eabi_code_is(at, "da") || eabi_code_is(at, "sr") || eabi_code_is(at, "on") ||
            eabi_code_is(at, "dn") || eabi_is_digit(*at)) {
            return eabi_expression(at, state);
        }
        report_bad_name(state);
        return at;
    }
    if (code == two("sr")) {
        return eabi_scoped_name(at, state);
    }
    if (code == two("on") || code == two("dn")) {
        return eabi_base_unresolved_name(at, state);
    }
    if (code == two("cl") || code == two("cp")) {
        return call(at, state);
    }
    if (code == two("cv")) {
        return conversion(at, state);
    }
    if (code == two("tl")) {
        at = eabi_whole_type(at + 2, true, state);
        return braced_list(at, state);
    }
    if (code == two("il")) {
        return braced_list(at + 2, state);
    }
    if (code == two("di") || code == two("dx") || code == two("dX")) {
        return designator(at, state);
    }
    if (code == two("nw") || code == two("na")) {
        return new_expression(at, eabi_operator_info(at, state), state);
    }
    if (code == two("pp") || code == two("mm")) {
        return step_expression(at, eabi_operator_info(at, state), state);
    }
    if (code == two("dt")) {
        return member(at, ".", state);
    }
    if (code == two("pt")) {
        return member(at, "->", state);
    }
    if (code == two("sZ")) {
        eabi_put("sizeof...", state);
        return eabi_enclosed_expression(at + 2, state);
    }
    if (code == two("sP")) {
        return sizeof_captured(at, state);
    }
    if (code == two("sp")) {
        at = eabi_operand(at + 2, state);
        eabi_put("...", state);
        return at;
    }
    if (code == two("so")) {
        return subobject(at, state);
    }
    if (code == two("mc")) {
        return member_conversion(at, state);
    }
    if (code == two("rq") || code == two("rQ")) {
        return eabi_requires_expression(at, state);
    }
    return operator_expression(at, state);
}
