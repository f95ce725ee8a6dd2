// The components of names in the Itanium ABI decoder: source names, operators,
// constructors, lambdas and other unnamed types, structured bindings, with their ABI
// tags and modules. Called by the names and the expressions.
#include "demangle/scheme1/state.h"

// source-name ::= length identifier
const char* eabi_source_name(const char* at, eabi_decode_state* state) {
    std::uint64_t length = 0;
    at = eabi_number(at, &length, state);
    if (length == 0 || length > static_cast<std::uint64_t>(state->input_end - at)) {
        report_bad_name(state);
        return at;
    }
    constexpr std::string_view anonymous = "_GLOBAL__N";
    if (*at == '_' && std::string_view(at, length).starts_with(anonymous)) {
        eabi_put("<unnamed>", state);
    } else {
        eabi_put(at, length, state);
    }
    return at + length;
}

// { "B" source-name }
const char* eabi_abi_tags(const char* at, eabi_decode_state* state) {
    while (*at == 'B' && state->error_seen == 0) {
        eabi_put("[abi:", state);
        at = eabi_source_name(at + 1, state);
        eabi_put(']', state);
    }
    return at;
}

// [ number ] "_", printed as " (instance N)" in the way of unnamed types.
static const char* instance(const char* at, eabi_decode_state* state) {
    eabi_put(" (instance ", state);
    std::int64_t number = 0;
    at = eabi_ordinal(at, &number, state);
    eabi_put_number(number, state);
    eabi_put(')', state);
    return at;
}

// "Ul" { parameter declaration } type+ "E" [ number ] "_"  |  "Ut" [ number ] "_"
[[gnu::noinline]] static const char* unnamed_type(const char* at, eabi_decode_state* state) {
    if (at[1] == 't') {
        eabi_put("[unnamed type", state);
        at = instance(at + 2, state);
        eabi_put(']', state);
        return at;
    }
    if (at[1] != 'l') {
        report_bad_name(state);
        return at;
    }
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return at;
    }
    const unsigned outer = state->lambda_flag;
    state->lambda_flag = entry_in_lambda;
    at += 2;
    while (eabi_at_template_param_decl(at, state) && state->error_seen == 0) {
        at = eabi_template_param_decl(at, state);
    }
    if (*at == 'Q' && state->extended) {
        const eabi_silence silent(state);
        at = eabi_expression(at + 1, state);
    }
    eabi_put("[lambda(", state);
    at = eabi_parameters(at, state);
    eabi_put(')', state);
    if (*at == 'Q' && state->extended) {
        const eabi_silence silent(state);
        at = eabi_expression(at + 1, state);
    }
    state->lambda_flag = outer;
    at = eabi_require(at, 'E', state);
    at = instance(at, state);
    eabi_put(']', state);
    return at;
}

// "DC" source-name+ "E"
[[gnu::noinline]] static const char* structured_binding(const char* at, eabi_decode_state* state) {
    eabi_put('[', state);
    at = eabi_source_name(at + 2, state);
    while (*at != 'E' && state->error_seen == 0) {
        eabi_put(", ", state);
        at = eabi_source_name(at, state);
    }
    eabi_put(']', state);
    return eabi_require(at, 'E', state);
}

static bool valid_kind(char kind, const eabi_decode_state* state) {
    return (kind >= '0' && kind <= '3') || (kind >= '7' && kind <= '9') ||
           (state->extended && (kind == '4' || kind == '5'));
}

// "C" kind | "CI" kind type | "D" kind: repeats the name of the class.
[[gnu::noinline]] static const char* constructor(const char* at, eabi_component* component,
                                                 eabi_decode_state* state) {
    const bool destructor = *at == 'D';
    const bool inheriting = at[1] == 'I' && !destructor;
    at += inheriting ? 2 : 1;
    const char* const class_name = eabi_last_name(component->last_name, state);
    if (class_name == nullptr || !valid_kind(*at, state)) {
        report_bad_name(state);
        return at;
    }
    if (destructor) {
        eabi_put('~', state);
    }
    const eabi_no_record no_record(state);
    if (*class_name == 'U') {
        unnamed_type(class_name, state);
    } else if (*class_name == 'T') {
        eabi_template_param(class_name, state);
    } else {
        eabi_source_name(class_name, state);
    }
    component->flags |= static_cast<unsigned>(static_cast<unsigned char>(*at)) << entry_kind_shift;
    return at + 1;
}

// The class whose constructor is inherited. Here and below a name opens within a
// name, which counts as a level of its own.
[[gnu::noinline]] static const char* inherited_class(const char* at, eabi_decode_state* state) {
    const eabi_level level(state);
    const eabi_silence silent(state);
    return eabi_whole_type(at, true, state);
}

// Operator names; "cv" type is a conversion.
[[gnu::noinline]] static const char* operator_name(const char* at, eabi_component* component,
                                                   eabi_decode_state* state) {
    if (at[0] == 'c' && at[1] == 'v') {
        state->conversion_seen = 1;
        component->flags |= entry_conversion;
        eabi_put("operator ", state);
        const eabi_level level(state);
        return eabi_whole_type(at + 2, state->retrying != 0, state);
    }
    const eabi_operator found = eabi_operator_info(at, state);
    if (found.text.empty()) {
        report_bad_name(state);
        return at;
    }
    eabi_put("operator ", state);
    eabi_put(found.text, state);
    eabi_put(found.tail, state);
    eabi_put(found.closer, state);
    if (found.tail.empty() && found.text.ends_with('<')) {
        component->flags |= entry_ends_in_less;
    }
    return at + found.code_length;
}

// unqualified-name ::= [ module ] [ "L" ] ( source-name | operator-name | constructor |
//                      unnamed type | structured binding ) { ABI tag }
const char* eabi_unqualified_name(const char* at, eabi_component* component,
                                  eabi_decode_state* state) {
    if (state->steps_left == 0) {
        report_bad_name(state);
        return at;
    }
    --state->steps_left;
    component->flags = 0;
    const char* module = nullptr;
    const char* module_stop = nullptr;
    if (state->extended) {
        if (*at == 'W' || eabi_is_module_reference(at, state)) {
            module = at;
            module_stop = at = eabi_module_end(at, state);
        }
        if (*at == 'F') {  // a friend that is told apart by its constraints
            ++at;
        }
    }
    if (*at == 'L') {  // internal linkage
        ++at;
    }
    const char* const start = at;
    if (eabi_is_digit(*at)) {
        at = eabi_plain_source_name(at, false, state);
        component->last_name = eabi_last_name_at(start, state);
    } else if (*at == 'C' || (*at == 'D' && at[1] != 'C')) {
        const bool inheriting = *at == 'C' && at[1] == 'I';
        at = constructor(at, component, state);
        if (inheriting) {
            at = inherited_class(at, state);
        }
    } else if (*at == 'U') {
        at = unnamed_type(at, state);
        component->last_name = eabi_last_name_at(start, state);
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
        at = eabi_abi_tags(at, state);
        component->flags &= ~static_cast<unsigned>(entry_ends_in_less);
    }
    if (module != nullptr) {
        eabi_put('@', state);
        eabi_put_module(module, module_stop, state);
    }
    return at;
}
