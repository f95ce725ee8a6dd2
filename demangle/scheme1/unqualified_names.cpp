// The components of names.
#include "demangle/scheme1/unqualified_names.h"

#include <algorithm>
#include <iterator>

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/function_types.h"
#include "demangle/scheme1/modules.h"
#include "demangle/scheme1/operators.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

// source-name ::= length identifier
const char* source_name(const char* at, eabi_decode_state* state) {
    std::uint64_t length = 0;
    at = read_number(at, &length, state);
    if (length == 0 || length > static_cast<std::uint64_t>(state->input_end - at)) {
        report_bad_name(state);
        return at;
    }
    constexpr std::string_view anonymous = "_GLOBAL__N";
    if (*at == '_' && std::string_view(at, length).starts_with(anonymous)) {
        emit_text("<unnamed>", state);
    } else {
        emit_text({at, length}, state);
    }
    return at + length;
}

// { "B" source-name }
const char* abi_tags(const char* at, eabi_decode_state* state) {
    while (*at == 'B' && state->error_seen == 0) {
        emit_text("[abi:", state);
        at = source_name(at + 1, state);
        emit_char(']', state);
    }
    return at;
}

// [ number ] "_", printed as " (instance N)" in the way of unnamed types.
static const char* instance(const char* at, eabi_decode_state* state) {
    emit_text(" (instance ", state);
    std::int64_t number = 0;
    at = read_ordinal(at, &number, state);
    emit_signed(number, state);
    emit_char(')', state);
    return at;
}

// "Ul" { parameter declaration } type+ "E" [ number ] "_"  |  "Ut" [ number ] "_"
OUT_OF_LINE static const char* unnamed_type(const char* at, eabi_decode_state* state) {
    if (at[1] == 't') {
        emit_text("[unnamed type", state);
        at = instance(at + 2, state);
        emit_char(']', state);
        return at;
    }
    if (at[1] != 'l') {
        report_bad_name(state);
        return at;
    }
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    const unsigned char outer = state->lambda_flag;
    state->lambda_flag = in_lambda;
    at += 2;
    while (at_template_param_decl(at, state) && state->error_seen == 0) {
        at = template_param_decl(at, state);
    }
    if (*at == 'Q' && state->extended) {
        const silence silent(state);
        at = expression(at + 1, state);
    }
    emit_text("[lambda(", state);
    at = parameters(at, state);
    emit_char(')', state);
    if (*at == 'Q' && state->extended) {
        const silence silent(state);
        at = expression(at + 1, state);
    }
    state->lambda_flag = outer;
    at = expect(at, 'E', state);
    at = instance(at, state);
    emit_char(']', state);
    return at;
}

// "DC" source-name+ "E"
OUT_OF_LINE static const char* structured_binding(const char* at, eabi_decode_state* state) {
    emit_char('[', state);
    at = source_name(at + 2, state);
    while (*at != 'E' && state->error_seen == 0) {
        emit_text(", ", state);
        at = source_name(at, state);
    }
    emit_char(']', state);
    return expect(at, 'E', state);
}

// An ABI's newer kinds print nothing.
static constexpr constructor_kind constructor_kinds[] = {
    {'0', " [deleting]", always},
    {'1', "", always},
    {'2', " [subobject]", always},
    {'3', " [allocating]", always},
    {'4', "", extended},
    {'5', "", extended},
    {'7', "", always},
    {'8', " [static]", always},
    {'9', " [delegation]", always},
};

const constructor_kind* find_constructor_kind(char kind, const eabi_decode_state* state) {
    const auto* const row = std::ranges::find(constructor_kinds, kind, &constructor_kind::kind);
    return row != std::end(constructor_kinds) && is_open(row->mode, state) ? row : nullptr;
}

// "C" kind | "CI" kind type | "D" kind: repeats the name of the class.
OUT_OF_LINE static const char* constructor(const char* at, last_component* component,
                                           eabi_decode_state* state) {
    const bool destructor = *at == 'D';
    const bool inheriting = at[1] == 'I' && !destructor;
    at += inheriting ? 2 : 1;
    const char* const class_name = last_name_of(*component, state);
    if (class_name == nullptr || find_constructor_kind(*at, state) == nullptr) {
        report_bad_name(state);
        return at;
    }
    if (destructor) {
        emit_char('~', state);
    }
    const no_record unrecorded(state);
    if (*class_name == 'U') {
        unnamed_type(class_name, state);
    } else if (*class_name == 'T') {
        eabi_template_param(class_name, state);
    } else {
        source_name(class_name, state);
    }
    component->kind = *at;
    return at + 1;
}

// The class whose constructor is inherited. Here and below a name opens within a
// name, which counts as a level of its own.
OUT_OF_LINE static const char* inherited_class(const char* at, eabi_decode_state* state) {
    const nesting level(state);
    const silence silent(state);
    return whole_type(at, state);
}

// Operator names; "cv" type is a conversion.
OUT_OF_LINE static const char* operator_name(const char* at, last_component* component,
                                             eabi_decode_state* state) {
    if (at[0] == 'c' && at[1] == 'v') {
        state->conversion_seen = 1;
        component->flags |= is_conversion;
        emit_text("operator ", state);
        const nesting level(state);
        return whole_type(at + 2, state, state->retrying != 0);
    }
    const found_operator found = eabi_operator_info(at, state);
    if (found.text.empty()) {
        report_bad_name(state);
        return at;
    }
    emit_text("operator ", state);
    emit_text(found.text, state);
    emit_text(found.tail, state);
    emit_text(found.closer, state);
    if (found.tail.empty() && found.text.ends_with('<')) {
        component->flags |= ends_in_less;
    }
    return at + found.code_length;
}

// unqualified-name ::= [ module ] [ "L" ] ( source-name | operator-name | constructor |
//                      unnamed type | structured binding ) { ABI tag }
const char* unqualified_name(const char* at, last_component* component, eabi_decode_state* state) {
    if (!count_step(state)) {
        return at;
    }
    component->kind = ' ';
    component->flags = 0;
    const char* module = nullptr;
    const char* module_stop = nullptr;
    if (state->extended) {
        if (*at == 'W' || is_module_reference(at, state)) {
            module = at;
            module_stop = at = module_end(at, state);
        }
        if (*at == 'F') {  // a friend that is told apart by its constraints
            ++at;
        }
    }
    if (*at == 'L') {  // internal linkage
        ++at;
    }
    const char* const start = at;
    if (is_digit(*at)) {
        at = plain_source_name(at, false, state);
        component->last_name = last_name_at(start, state);
    } else if (*at == 'C' || (*at == 'D' && at[1] != 'C')) {
        const bool inheriting = *at == 'C' && at[1] == 'I';
        at = constructor(at, component, state);
        if (inheriting) {
            at = inherited_class(at, state);
        }
    } else if (*at == 'U') {
        at = unnamed_type(at, state);
        component->last_name = last_name_at(start, state);
    } else if (*at == 'D') {
        at = structured_binding(at, state);
        component->last_name = 0;
    } else if (*at >= 'a' && *at <= 'z') {
        at = operator_name(at, component, state);
        component->last_name = 0;
    } else {
        report_bad_name(state);
        return at;
    }
    if (*at == 'B') {
        at = abi_tags(at, state);
        component->flags &= static_cast<unsigned char>(~ends_in_less);
    }
    if (module != nullptr) {
        emit_char('@', state);
        emit_module(module, module_stop, state);
    }
    return at;
}

}  // namespace scheme1
