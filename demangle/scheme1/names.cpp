// Nested names, local names, and what is left of names.
#include "demangle/scheme1/names.h"

#include "demangle/scheme1/encoding.h"
#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/substitutions.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"
#include "demangle/scheme1/unqualified_names.h"

namespace scheme1 {

// ---- Nested names ----

namespace {

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
    subst_kind kind = subst_prefix;
};

}  // namespace

// A component that is neither a plain source name nor an argument list:
// "S" substitution | "T" parameter | "D" decltype | "M" | unqualified-name
OUT_OF_LINE static prefix_component read_component(const char* at, bool first,
                                                   prefix_progress* progress,
                                                   last_component* component,
                                                   eabi_decode_state* state) {
    const prefix_progress before = *progress;
    *progress = {.named = before.named};
    if (*at == 'S' && !is_module_reference(at, state)) {
        if (!first) {
            report_bad_name(state);
            return {at, false};
        }
        if (at[1] != 't') {
            return {eabi_substitution(at, subst_whole, 0, false, component, state), false};
        }
        emit_text("std", state);
        component->last_name = abbreviation_name | static_cast<unsigned char>('t');
        progress->std_only = true;
        return {at + 2, false};
    }
    if (*at == 'M' && !first) {  // the initialiser of the variable before it
        if (before.std_only || at[1] == 'E' || at[1] == 'I' || at[1] == 'M') {
            report_bad_name(state);
        }
        return {at + 1, false};
    }
    // These two stand only at the beginning.
    if (first && *at == 'T') {
        *component = {.last_name = last_name_at(at, state)};
        return {eabi_template_param(at, state), true, subst_template_param};
    }
    if (first && *at == 'D' && (at[1] == 't' || at[1] == 'T')) {
        *component = {};
        return {decltype_of(at, state)};
    }
    if (!first) {
        emit_text("::", state);
    }
    progress->named = true;
    return {unqualified_name(at, component, state), true,
            first ? subst_name : subst_prefix_and_name};
}

// prefix ::= component+. Every beginning of it that another component follows is entered.
const char* prefix(const char* at, const char* bound, bool whole_is_type, name_record* record,
                   last_component* component, eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    prefix_progress progress;
    char kind_before = ' ';  // of the component before the last
    while (state->error_seen == 0 && at != bound && *at != 'E') {
        const char* const here = at;
        const bool first = here == start;
        kind_before = component->kind;
        prefix_component read{at};
        if (is_digit(*at)) {  // by far the most frequent
            if (!count_step(state)) {
                break;
            }
            at = plain_source_name(at, !first, state);
            *component = {.last_name = last_name_at(here, state)};
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
            at = template_args(at, wants_blank(*component, at, state), state);
            component->flags &= static_cast<unsigned char>(~is_less);
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
    if (state->error_seen != 0 && component->kind == ' ') {
        component->kind = kind_before;
    }
    if (bound == nullptr && !progress.named) {
        report_bad_name(state);
    }
    if (record != nullptr) {
        record->no_return_type = !progress.has_args || carries_no_return_type(*component);
        record->ctor_dtor_kind = component->kind;
    }
    return at;
}

// nested-name ::= "N" { "K" | "V" | "r" } [ "R" | "O" ] prefix "E"
static const char* nested_name(const char* at, bool is_type, name_record* record,
                               last_component* component, eabi_decode_state* state) {
    ++at;
    if (*at == 'H' && state->extended && record != nullptr) {
        record->explicit_object = true;
        ++at;
    }
    for (; qualifier_bit(*at) != 0; ++at) {
        if (record != nullptr) {
            record->cv_qualifiers |= qualifier_bit(*at);
        }
    }
    if (*at == 'R' || *at == 'O') {
        if (record != nullptr) {
            record->ref_qualifier = *at == 'R' ? 1 : 2;
        }
        ++at;
    }
    at = prefix(at, nullptr, is_type, record, component, state);
    return expect(at, 'E', state);
}

// ---- Local names ----

// "_" digit  |  "__" number "_"  |  number, as some compilers end a name
OUT_OF_LINE static const char* discriminator(const char* at, eabi_decode_state* state) {
    std::uint64_t number = 0;
    if (is_digit(*at) && state->extended) {
        const char* const end = read_number(at, &number, state);
        if (*end != '\0') {
            return at;
        }
        at = end;
    } else if (*at != '_' || (!is_digit(at[1]) && at[1] != '_')) {
        return at;
    } else if (at[1] == '_') {
        at = expect(read_number(at + 2, &number, state), '_', state);
    } else {
        number = static_cast<std::uint64_t>(at[1] - '0');
        at += 2;
    }
    emit_text(" (instance ", state);
    emit_signed(static_cast<std::int64_t>(number + 2), state);
    emit_char(')', state);
    return at;
}

// "d" [ [ "n" ] number ] "_": the default argument that an entity stands in.
OUT_OF_LINE static const char* default_argument(const char* at, eabi_decode_state* state) {
    signed_number number{.negative = true, .size = 1};  // what "d_" stands for
    if (*++at != '_') {
        at = read_signed_number(at, &number, state);
        if (number.negative && number.size > 1) {
            report_bad_name(state);
        }
    }
    at = expect(at, '_', state);
    emit_text("[default argument ", state);
    emit_signed(static_cast<std::int64_t>(static_cast<std::uint64_t>(number.value()) + 2), state);
    emit_text(" (from end)]::", state);
    return at;
}

static const char* name_part(const char* at, name_record* record, last_component* component,
                             eabi_decode_state* state);

// local-name ::= "Z" encoding "E" ( "s" | [ default argument ] name ) [ discriminator ]
OUT_OF_LINE static const char* local_name(const char* at, name_record* record,
                                          last_component* component, eabi_decode_state* state) {
    const unsigned char lambda_flag = state->lambda_flag;
    state->lambda_flag = 0;
    at = eabi_encoding(at + 1, true, state);
    state->lambda_flag = lambda_flag;
    at = expect(at, 'E', state);
    emit_text("::", state);
    if (*at == 's') {
        emit_text("string", state);
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

// ---- All names ----

// A name that template arguments may follow; it is entered before them.
static const char* unscoped_name(const char* at, name_record* record, last_component* component,
                                 eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    if (*at == 'S' && at[1] == 't') {
        emit_text("std::", state);
        at += 2;
    }
    at = unqualified_name(at, component, state);
    if (*at == 'I') {
        eabi_add_substitution(start, subst_name, start, *component, text_at, state);
        at = template_args(at, wants_blank(*component, at, state), state);
        record->no_return_type = carries_no_return_type(*component);
    } else {
        record->no_return_type = true;
    }
    record->ctor_dtor_kind = component->kind;
    return at;
}

static const char* name_part(const char* at, name_record* record, last_component* component,
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
            if (at[1] != 't' && !is_module_reference(at, state)) {
                at = eabi_substitution(at, subst_whole, 0, false, component, state);
                record->no_return_type = true;
                record->ctor_dtor_kind = component->kind;
                if (*at == 'I') {
                    at = template_args(at, wants_blank(*component, at, state), state);
                    record->no_return_type = carries_no_return_type(*component);
                }
                return at;
            }
            break;
        default:
            break;
    }
    return unscoped_name(at, record, component, state);
}

// class-enum-type ::= name, entered as a whole.
const char* class_type(const char* at, last_component* component, eabi_decode_state* state) {
    if (*at == 'N') {
        return nested_name(at, true, nullptr, component, state);
    }
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    name_record record;
    subst_kind kind = subst_type;
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

const char* name_once(const char* at, eabi_decode_state* state) {
    name_record record;
    return eabi_name(at, &record, mode_both, state);
}

}  // namespace scheme1

using namespace scheme1;

const char* eabi_name(const char* at, name_record* record, unsigned mode,
                      eabi_decode_state* state) {
    *record = name_record{};
    last_component component;
    const silence silent(state, (mode & mode_print) == 0);
    return name_part(at, record, &component, state);
}
