// The components of names.
#include "demangle/scheme1/unqualified_names.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/function_types.h"
#include "demangle/scheme1/modules.h"
#include "demangle/scheme1/operators.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

// How the source name of an unnamed namespace begins.
static constexpr std::string_view anonymous = "_GLOBAL__N";

// source-name ::= length identifier
const char* source_name(const char* at, eabi_decode_state* state) {
    std::uint64_t length = 0;
    at = read_number(at, &length, state);
    if (length == 0 || length > static_cast<std::uint64_t>(state->input_end - at) ||
        length > longest_text) {
        report_bad_name(state);
        return at;
    }
    if (*at == '_' && std::string_view(at, length).starts_with(anonymous)) {
        emit_text("<unnamed>", state);
    } else {
        emit_text({at, length}, state);
    }
    return at + length;
}

OUT_OF_LINE bool ends_in_less(const last_component& component, const eabi_decode_state* state) {
    if ((component.flags & (is_less | is_closed)) != 0) {
        return (component.flags & is_closed) == 0;
    }
    const char* at = last_name_of(component, state);
    // A bad name's length may lead anywhere.
    if (at == nullptr || !is_digit(*at) || state->error_seen != 0) {
        return false;
    }
    std::size_t length = 0;
    for (; is_digit(*at); ++at) {
        length = length * 10 + static_cast<std::size_t>(*at - '0');
    }
    const std::string_view text(at, length);
    return text.ends_with('<') && !text.starts_with(anonymous);
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

// [ "Q" expression ], which prints nothing here
static const char* constraint(const char* at, eabi_decode_state* state) {
    if (*at != 'Q' || !state->extended) {
        return at;
    }
    const silence silent(state);
    return expression(at + 1, state);
}

// { parameter declaration } [ constraint ] type+ [ constraint ]
static const char* lambda_signature(const char* at, eabi_decode_state* state) {
    while (at_template_param_decl(at, state) && state->error_seen == 0) {
        at = template_param_decl(at, state);
    }
    at = constraint(at, state);
    emit_char('(', state);
    at = parameters(at, state);
    emit_char(')', state);
    return constraint(at, state);
}

// Whether the signature spells the level of the lambda's own parameters: only reading it
// tells. What it enters is taken back, because it is still to be read.
OUT_OF_LINE static bool spells_levels(const char* at, eabi_decode_state* state) {
    if (std::string_view(at, static_cast<std::size_t>(state->input_end - at)).find("TL") ==
        std::string_view::npos) {
        return false;
    }
    const silence silent(state);
    const std::uint64_t entries = state->subst_count;
    const bool level_seen = std::exchange(state->level_seen, false);
    lambda_signature(at, state);
    state->subst_count = entries;
    return std::exchange(state->level_seen, level_seen);
}

// "Ul" signature "E" [ number ] "_"
OUT_OF_LINE static const char* lambda(const char* at, eabi_decode_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    at += 2;
    const unsigned char outer = std::exchange(state->lambda_flag, in_lambda);
    const bool level_seen = state->level_seen;
    if (state->extended && state->suppress_depth == 0 && spells_levels(at, state)) {
        state->lambda_flag = in_leveled_lambda;
    }
    emit_text("[lambda", state);
    at = lambda_signature(at, state);
    state->lambda_flag = outer;
    state->level_seen = level_seen;
    at = expect(at, 'E', state);
    at = instance(at, state);
    emit_char(']', state);
    return at;
}

namespace {

// What has a letter and a number for a name.
struct numbered_type {
    char code;
    std::string_view text;
    names_mode mode;
};

}  // namespace

static constexpr numbered_type numbered_types[] = {
    {'t', "[unnamed type", always},
    {'b', "[block", extended},
};

// lambda | "U" letter [ number ] "_"
OUT_OF_LINE static const char* unnamed_type(const char* at, eabi_decode_state* state) {
    if (at[1] == 'l') {
        return lambda(at, state);
    }
    const auto* const row = std::ranges::find(numbered_types, at[1], &numbered_type::code);
    if (row == std::end(numbered_types) || !is_open(row->mode, state)) {
        report_bad_name(state);
        return at;
    }
    emit_text(row->text, state);
    at = instance(at + 2, state);
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
    if ((found.tail.empty() ? found.text : found.tail).ends_with('<')) {
        component->flags |= is_less;
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
            emit_text("friend ", state);
            ++at;
        }
    }
    if (*at == 'L') {  // internal linkage
        ++at;
    }
    const char* const start = at;
    if (is_digit(*at)) {
        at = source_name(at, state);
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
    } else {
        at = operator_name(at, component, state);
        component->last_name = 0;
    }
    if (*at == 'B') {
        at = abi_tags(at, state);
        component->flags |= is_closed;
    }
    if (module != nullptr) {
        component->flags |= is_closed;
        emit_char('@', state);
        emit_module(module, module_stop, state);
    }
    return at;
}

}  // namespace scheme1
