// Names of the Itanium ABI decoder: unscoped, nested and local names, their
// components, and template argument lists. Called by the encodings, the types and
// the expressions.
#include <utility>

#include "demangle/decode_eabi_internal.h"

// --- Source names and other unqualified names -----------------------------------

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
static const char* abi_tags(const char* at, eabi_decode_state* state) {
    while (*at == 'B' && state->error_seen == 0) {
        eabi_put("[abi:", state);
        at = eabi_source_name(at + 1, state);
        eabi_put(']', state);
    }
    return at;
}

// [ number ] "_", printed as " (instance N)" in the way of unnamed types.
static const char* instance(const char* at, eabi_decode_state* state) {
    std::uint64_t number = 1;
    if (*at != '_') {
        at = eabi_number(at, &number, state);
        number += 2;
    }
    eabi_put(" (instance ", state);
    eabi_put_number(static_cast<std::int64_t>(number), state);
    eabi_put(')', state);
    return eabi_require(at, '_', state);
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

// { "W" [ "P" ] source-name }: the module that a name is attached to, printed
// behind the name.
static const char* module_end(const char* at, eabi_decode_state* state) {
    const eabi_silence silent(state);
    while (*at == 'W' && state->error_seen == 0) {
        const char* const start = at;
        at = eabi_source_name(at + (at[1] == 'P' ? 2 : 1), state);
        eabi_add_substitution(start, subst_name, start, {}, entry_no_text, state);
    }
    return at;
}

static void put_module(const char* at, const char* end, eabi_decode_state* state) {
    eabi_put('@', state);
    for (bool first = true; at < end; first = false) {
        const bool partition = at[1] == 'P';
        if (partition || !first) {
            eabi_put(partition ? ':' : '.', state);
        }
        at = eabi_source_name(at + (partition ? 2 : 1), state);
    }
}

// unqualified-name ::= [ module ] [ "L" ] ( source-name | operator-name | constructor |
//                      unnamed type | structured binding ) { ABI tag }
// On entry component->last_name is the class that a constructor repeats; on exit it
// is this component.
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
        if (*at == 'W') {
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
        at = abi_tags(at, state);
        component->flags &= ~static_cast<unsigned>(entry_ends_in_less);
    }
    if (module != nullptr) {
        put_module(module, module_stop, state);
    }
    return at;
}

// --- Template arguments ---------------------------------------------------------

bool eabi_at_template_param_decl(const char* at, const eabi_decode_state* state) {
    return state->extended && at[0] == 'T' &&
           (at[1] == 'y' || at[1] == 'n' || at[1] == 't' || at[1] == 'p' || at[1] == 'k');
}

// "Ty" | "Tk" concept | "Tn" type | "Tt" { declaration } "E" | "Tp" declaration: prints nothing.
const char* eabi_template_param_decl(const char* at, eabi_decode_state* state) {
    const eabi_level level(state);
    const eabi_silence silent(state);
    if (state->error_seen != 0 || !eabi_at_template_param_decl(at, state)) {
        report_bad_name(state);
        return at;
    }
    const char kind = at[1];
    at += 2;
    if (kind == 'n') {
        return eabi_whole_type(at, true, state);
    }
    if (kind == 'k') {
        eabi_name_record record;
        return eabi_name(at, &record, mode_both, state);
    }
    if (kind == 'p') {
        return eabi_template_param_decl(at, state);
    }
    if (kind == 't') {
        while (*at != 'E' && *at != 'Q' && state->error_seen == 0) {
            at = eabi_template_param_decl(at, state);
        }
        if (*at == 'Q') {
            at = eabi_expression(at + 1, state);
        }
        return eabi_require(at, 'E', state);
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

// "X" expression "E". One that shows a ">" would seem to close the list and goes
// into parentheses; whether it does is known only after a silent first reading.
[[gnu::noinline]] static const char* expression_arg(const char* at, eabi_decode_state* state) {
    const bool skipped = state->suppress_depth != 0 || may_show_greater(at);
    bool enclosed = false;
    const char* end = skipped ? eabi_skip_expression(at, &enclosed, state) : at;
    if (state->suppress_depth == 0) {
        const std::uint32_t parentheses = std::exchange(state->parentheses, 0);
        const bool greater_seen = state->greater_seen;
        const eabi_no_record no_record(state, skipped);
        if (enclosed) {
            eabi_put('(', state);
        }
        end = eabi_expression(at, state);
        if (enclosed) {
            eabi_put(')', state);
        }
        state->parentheses = parentheses;
        state->greater_seen = greater_seen;
    }
    return eabi_require(end, 'E', state);
}

// template-arg ::= type | "X" expression "E" | literal | "J" { template-arg } "E"
// A pack prints its elements in place, so the commas go in front of what prints.
const char* eabi_template_arg(const char* at, bool* first, eabi_decode_state* state) {
    while (eabi_at_template_param_decl(at, state) && state->error_seen == 0) {
        at = eabi_template_param_decl(at, state);
    }
    if (*at == 'J') {
        const eabi_level level(state);
        ++at;
        while (*at != 'E' && state->error_seen == 0) {
            at = eabi_template_arg(at, first, state);
        }
        return eabi_require(at, 'E', state);
    }
    if (!*first) {
        eabi_put(", ", state);
    }
    *first = false;
    if (*at == 'X') {
        return expression_arg(at + 1, state);
    }
    if (*at == 'L') {
        return eabi_literal(at, state);
    }
    return eabi_whole_type(at, true, state);
}

// template-args ::= "I" { template-arg } [ "Q" expression ] "E"
const char* eabi_template_args(const char* at, bool blank_before, eabi_decode_state* state) {
    const bool greater_seen = state->greater_seen;
    if (blank_before) {
        eabi_put(' ', state);
    }
    eabi_put('<', state);
    ++at;
    bool first = true;
    while (*at != 'E' && state->error_seen == 0) {
        if (*at == 'Q' && state->extended) {
            const eabi_silence silent(state);
            at = eabi_expression(at + 1, state);
            break;
        }
        at = eabi_template_arg(at, &first, state);
    }
    eabi_put('>', state);
    state->greater_seen = greater_seen;
    return eabi_require(at, 'E', state);
}

// --- Nested names ---------------------------------------------------------------

// How far a prefix has been read.
struct prefix_progress {
    bool named = false;     // it is more than a reference to something else
    bool has_args = false;  // its last component is an argument list
    bool std_only = false;  // it is "St" alone
};

// Where a component ends, and how the prefix up to there is entered.
struct prefix_component {
    const char* end;
    bool enter = true;
    eabi_subst_kind kind = subst_prefix;
};

// A component that is neither a plain source name nor an argument list:
// "S" substitution | "T" parameter | "D" decltype | "M" | unqualified-name
[[gnu::noinline]] static prefix_component read_component(const char* at, bool first,
                                                         prefix_progress* progress,
                                                         eabi_component* component,
                                                         eabi_decode_state* state) {
    const prefix_progress before = *progress;
    *progress = {.named = before.named};
    if (*at == 'S') {
        if (!first) {
            report_bad_name(state);
            return {at, false};
        }
        if (at[1] != 't') {
            return {eabi_substitution(at, subst_whole, 0, false, component, state), false};
        }
        eabi_put("std", state);
        component->last_name = eabi_abbreviation_name | static_cast<unsigned char>('t');
        progress->std_only = true;
        return {at + 2, false};
    }
    if (*at == 'M' && !first) {  // the initialiser of the variable before it
        progress->has_args = before.has_args;
        return {at + 1, false};
    }
    if (!first) {
        eabi_put("::", state);
    }
    if (*at == 'T') {
        *component = {.last_name = eabi_last_name_at(at, state)};
        return {eabi_template_param(at, state), true, first ? subst_template_param : subst_prefix};
    }
    if (*at == 'D' && (at[1] == 't' || at[1] == 'T')) {
        *component = {};
        return {eabi_decltype(at, state)};
    }
    progress->named = true;
    return {eabi_unqualified_name(at, component, state), true,
            first ? subst_name : subst_prefix_and_name};
}

// prefix ::= component+. Every beginning of it that another component follows is entered.
const char* eabi_prefix(const char* at, const char* bound, bool whole_is_type,
                        eabi_name_record* record, eabi_component* component,
                        eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    prefix_progress progress;
    unsigned flags_before = 0;  // of the component before the last
    while (state->error_seen == 0 && at != bound && *at != 'E') {
        const char* const here = at;
        const bool first = here == start;
        flags_before = component->flags;
        prefix_component read{at};
        if (eabi_is_digit(*at)) {  // by far the most frequent
            if (state->steps_left == 0) {
                report_bad_name(state);
                break;
            }
            --state->steps_left;
            at = eabi_plain_source_name(at, !first, state);
            *component = {.last_name = eabi_last_name_at(here, state)};
            if (*at == 'B') {
                at = abi_tags(at, state);
            }
            progress = {.named = true};
            read.kind = first ? subst_name : subst_prefix_and_name;
        } else if (*at == 'I') {
            if (first || progress.has_args || progress.std_only) {
                report_bad_name(state);
                break;
            }
            at = eabi_template_args(at, (component->flags & entry_ends_in_less) != 0, state);
            component->flags &= ~static_cast<unsigned>(entry_ends_in_less);
            progress = {.named = true, .has_args = true};
        } else {
            read = read_component(at, first, &progress, component, state);
            at = read.end;
        }
        if (read.enter && (whole_is_type || *at != 'E')) {
            eabi_add_substitution(start, read.kind, read.kind == subst_prefix ? at : here,
                                  *component, text_at, state);
        }
    }
    // A constructor counts also when what follows it is bad.
    if (state->error_seen != 0 && eabi_kind(*component) == ' ') {
        component->flags = flags_before;
    }
    if (bound == nullptr && !progress.named) {
        report_bad_name(state);
    }
    if (record != nullptr) {
        record->no_return_type = !progress.has_args || eabi_carries_no_return_type(*component);
        record->ctor_dtor_kind = eabi_kind(*component);
    }
    return at;
}

// nested-name ::= "N" { "K" | "V" | "r" } [ "R" | "O" ] prefix "E"
static const char* nested_name(const char* at, bool is_type, eabi_name_record* record,
                               eabi_component* component, eabi_decode_state* state) {
    ++at;
    if (*at == 'H' && state->extended && record != nullptr) {
        record->explicit_object = true;
        ++at;
    }
    for (;; ++at) {
        unsigned bit = 0;
        switch (*at) {
            case 'K':
                bit = qualifier_const;
                break;
            case 'V':
                bit = qualifier_volatile;
                break;
            case 'r':
                bit = qualifier_restrict;
                break;
            default:
                break;
        }
        if (bit == 0) {
            break;
        }
        if (record != nullptr) {
            record->cv_qualifiers |= bit;
        }
    }
    if (*at == 'R' || *at == 'O') {
        if (record != nullptr) {
            record->ref_qualifier = *at == 'R' ? 1 : 2;
        }
        ++at;
    }
    at = eabi_prefix(at, nullptr, is_type, record, component, state);
    return eabi_require(at, 'E', state);
}

// --- Local names ----------------------------------------------------------------

// "_" digit  |  "__" number "_"
[[gnu::noinline]] static const char* discriminator(const char* at, eabi_decode_state* state) {
    if (*at != '_' || (!eabi_is_digit(at[1]) && at[1] != '_')) {
        return at;
    }
    std::uint64_t number = 0;
    if (at[1] == '_') {
        at = eabi_require(eabi_number(at + 2, &number, state), '_', state);
    } else {
        number = static_cast<std::uint64_t>(at[1] - '0');
        at += 2;
    }
    eabi_put(" (instance ", state);
    eabi_put_number(static_cast<std::int64_t>(number + 2), state);
    eabi_put(')', state);
    return at;
}

// "d" [ [ "n" ] number ] "_": the default argument that an entity stands in.
[[gnu::noinline]] static const char* default_argument(const char* at, eabi_decode_state* state) {
    ++at;
    std::int64_t number = -1;
    if (*at != '_') {
        const bool negative = *at == 'n';
        std::uint64_t value = 0;
        at = eabi_number(at + (negative ? 1 : 0), &value, state);
        number = static_cast<std::int64_t>(negative ? 0 - value : value);
        if (negative && value > 1) {  // -1 is what "d_" says too
            report_bad_name(state);
        }
    }
    eabi_put("[default argument ", state);
    eabi_put_number(static_cast<std::int64_t>(static_cast<std::uint64_t>(number) + 2), state);
    eabi_put(" (from end)]::", state);
    return eabi_require(at, '_', state);
}

static const char* name_part(const char* at, eabi_name_record* record, eabi_component* component,
                             eabi_decode_state* state);

// local-name ::= "Z" encoding "E" ( "s" | [ default argument ] name ) [ discriminator ]
[[gnu::noinline]] static const char* local_name(const char* at, eabi_name_record* record,
                                                eabi_component* component,
                                                eabi_decode_state* state) {
    const unsigned lambda_flag = state->lambda_flag;
    state->lambda_flag = 0;
    at = eabi_encoding(at + 1, true, state);
    state->lambda_flag = lambda_flag;
    at = eabi_require(at, 'E', state);
    eabi_put("::", state);
    if (*at == 's') {
        eabi_put("string", state);
        record->no_return_type = true;
        return discriminator(at + 1, state);
    }
    if (*at == 'd') {
        at = default_argument(at, state);
    }
    if (state->error_seen != 0) {
        return at;
    }
    at = name_part(at, record, component, state);
    return discriminator(at, state);
}

// --- All names ------------------------------------------------------------------

// A name that template arguments may follow; it is entered before them.
static const char* unscoped_name(const char* at, eabi_name_record* record,
                                 eabi_component* component, eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    if (*at == 'S' && at[1] == 't') {
        eabi_put("std::", state);
        at += 2;
    }
    at = eabi_unqualified_name(at, component, state);
    if (*at == 'I') {
        eabi_add_substitution(start, subst_name, start, *component, text_at, state);
        at = eabi_template_args(at, (component->flags & entry_ends_in_less) != 0, state);
        record->no_return_type = eabi_carries_no_return_type(*component);
    } else {
        record->no_return_type = true;
    }
    record->ctor_dtor_kind = eabi_kind(*component);
    return at;
}

static const char* name_part(const char* at, eabi_name_record* record, eabi_component* component,
                             eabi_decode_state* state) {
    switch (*at) {
        case 'B':
            report_bad_name(state);
            return at;
        case 'N':
            return nested_name(at, false, record, component, state);
        case 'Z':
            return local_name(at, record, component, state);
        case 'S':
            if (at[1] != 't') {
                at = eabi_substitution(at, subst_whole, 0, false, component, state);
                record->no_return_type = true;
                record->ctor_dtor_kind = eabi_kind(*component);
                if (*at == 'I') {
                    at =
                        eabi_template_args(at, (component->flags & entry_ends_in_less) != 0, state);
                    record->no_return_type = eabi_carries_no_return_type(*component);
                }
                return at;
            }
            break;
        default:
            break;
    }
    return unscoped_name(at, record, component, state);
}

const char* eabi_name(const char* at, eabi_name_record* record, unsigned mode,
                      eabi_decode_state* state) {
    *record = eabi_name_record{};
    eabi_component component;
    const eabi_silence silent(state, (mode & mode_print) == 0);
    return name_part(at, record, &component, state);
}

// class-enum-type ::= name, entered as a whole.
const char* eabi_class_type(const char* at, eabi_component* component, eabi_decode_state* state) {
    if (*at == 'N') {
        return nested_name(at, true, nullptr, component, state);
    }
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    eabi_name_record record;
    eabi_subst_kind kind = subst_type;
    if (*at == 'B') {
        report_bad_name(state);
        return at;
    }
    if (*at == 'Z') {
        at = name_part(at, &record, component, state);
    } else {
        at = unscoped_name(at, &record, component, state);
        kind = record.no_return_type ? subst_name : subst_type;
    }
    eabi_add_substitution(start, kind, start, *component, text_at, state);
    return at;
}
