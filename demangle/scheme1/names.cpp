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

// What a prefix is as far as it has been read.
enum prefix_fact : unsigned {
    is_named = 1,  // more than a reference to something else
    has_args = 2,  // its last component is an argument list
    std_only = 4,  // "St" alone
};

struct prefix_progress {
    const char* start;
    std::uint64_t text_at;  // where its text begins
    bool whole_is_type;     // the last component is entered, too
    unsigned facts = 0;
};

}  // namespace

// Enters the prefix up to `at`, where its last component begins at `here`.
static void enter_prefix(const char* at, const char* here, subst_kind kind,
                         const prefix_progress& progress, const last_component& component,
                         eabi_decode_state* state) {
    if (progress.whole_is_type || *at != 'E') {
        eabi_add_substitution(progress.start, kind, kind == subst_prefix ? at : here, component,
                              progress.text_at, state);
    }
}

// A component that is neither a plain source name, an argument list nor a reference:
// "St" | "T" parameter | "D" decltype | "M" | unqualified-name
OUT_OF_LINE static const char* other_component(const char* at, prefix_progress* progress,
                                               last_component* component,
                                               eabi_decode_state* state) {
    const char* const here = at;
    const bool first = at == progress->start;
    const unsigned facts = progress->facts;
    progress->facts = facts & is_named;
    if (*at == 'S' && !is_module_reference(at, state)) {  // "St"
        if (!first) {
            report_bad_name(state);
            return at;
        }
        emit_text("std", state);
        component->last_name = abbreviation_name | static_cast<unsigned char>('t');
        progress->facts = std_only;
        return at + 2;
    }
    if (*at == 'M' && !first) {  // the initialiser of the variable before it
        if ((facts & std_only) != 0 || at[1] == 'E' || at[1] == 'I' || at[1] == 'M') {
            report_bad_name(state);
        }
        return at + 1;
    }
    const char kind_before = component->kind;
    subst_kind kind = subst_prefix;
    if (first && *at == 'T') {  // this and a decltype stand only at the beginning
        *component = {.last_name = last_name_at(at, state)};
        at = eabi_template_param(at, state);
        kind = subst_template_param;
    } else if (first && *at == 'D' && (at[1] == 't' || at[1] == 'T')) {
        *component = {};
        at = decltype_of(at, state);
    } else {
        if (!first) {
            emit_text("::", state);
        }
        progress->facts = is_named;
        at = unqualified_name(at, component, state);
        kind = first ? subst_name : subst_prefix_and_name;
    }
    // A constructor counts also when what follows it is bad.
    if (state->error_seen != 0 && component->kind == ' ') {
        component->kind = kind_before;
    }
    enter_prefix(at, here, kind, *progress, *component, state);
    return at;
}

// Prints a plain source name and enters the prefix up to its end.
IN_PLACE static const char* enter_plain_name(const char* at, plain_name name, bool first,
                                             const prefix_progress& progress,
                                             last_component* component, eabi_decode_state* state) {
    const auto name_at = static_cast<std::uint32_t>(at - state->input);
    // The kind is also the length of the "::" in front.
    static_assert(subst_name == 0 && subst_prefix_and_name == 2);
    const subst_kind kind = first ? subst_name : subst_prefix_and_name;
    emit_plain_name(name, kind, state);
    at = name.text + name.length;
    *component = {.last_name = name_at + 1};
    if ((progress.whole_is_type || *at != 'E') && may_enter(state)) {
        subst_entry& entry = state->subst_table[state->subst_count++];
        entry = {progress.start,
                 kind,
                 static_cast<std::uint32_t>(progress.text_at),
                 static_cast<std::uint32_t>(state->out_len - progress.text_at),
                 name_at,
                 {.last_name = name_at + 1}};
        entry.component.flags = state->lambda_flag;
    }
    return at;
}

// prefix ::= [ reference ] component*. Every beginning of it that another component follows is
// entered.
const char* prefix(const char* at, const char* bound, bool whole_is_type, name_record* record,
                   last_component* component, eabi_decode_state* state) {
    prefix_progress progress{
        .start = at, .text_at = state->out_len, .whole_is_type = whole_is_type};
    if (*at == 'S' && at[1] != 't' && !is_module_reference(at, state)) {
        at = eabi_substitution(at, subst_whole, 0, false, component, state);
    }
    for (char letter = *at; at != bound; letter = *at) {
        if (letter >= '1' && letter <= '9') {
            const plain_name name = read_plain_name(at, state);
            if (name.text != nullptr && count_step(state)) {
                at = enter_plain_name(at, name, at == progress.start, progress, component, state);
                progress.facts = is_named;
                continue;
            }
        }
        if (letter == 'E' || state->error_seen != 0) {
            break;
        }
        if (letter == 'I') {
            if (at == progress.start || (progress.facts & (has_args | std_only)) != 0) {
                report_bad_name(state);
                break;
            }
            at = template_args(at, wants_blank(*component, state), state);
            component->flags |= is_closed;
            progress.facts = is_named | has_args;
            enter_prefix(at, at, subst_prefix, progress, *component, state);
        } else {
            at = other_component(at, &progress, component, state);
        }
    }
    if (bound == nullptr) {
        if ((progress.facts & is_named) == 0) {
            report_bad_name(state);
        }
        at = expect(at, 'E', state);
    }
    if (record != nullptr) {
        record->no_return_type =
            (progress.facts & has_args) == 0 || carries_no_return_type(*component);
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
    return prefix(at, nullptr, is_type, record, component, state);
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
    const char* const end = discriminator(at, state);
    if (end != at) {
        component->flags |= is_closed;
    }
    return end;
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
    const plain_name name = *at >= '1' && *at <= '9' ? read_plain_name(at, state) : plain_name{};
    if (name.text != nullptr && count_step(state)) {
        *component = {.last_name = last_name_at(at, state)};
        emit_plain_name(name, 0, state);
        at = name.text + name.length;
    } else {
        at = unqualified_name(at, component, state);
    }
    if (*at == 'I') {
        eabi_add_substitution(start, subst_name, start, *component, text_at, state);
        at = template_args(at, wants_blank(*component, state), state);
        component->flags |= is_closed;
        record->no_return_type = carries_no_return_type(*component);
    } else {
        record->no_return_type = true;
    }
    record->ctor_dtor_kind = component->kind;
    return at;
}

// A name that is not a nested one.
OUT_OF_LINE static const char* other_name(const char* at, name_record* record,
                                          last_component* component, eabi_decode_state* state) {
    if (*at == 'B') {
        report_bad_name(state);
        return at;
    }
    if (*at == 'Z') {
        return local_name(at, record, component, state);
    }
    if (*at != 'S' || at[1] == 't' || is_module_reference(at, state)) {
        return unscoped_name(at, record, component, state);
    }
    at = eabi_substitution(at, subst_whole, 0, false, component, state);
    record->no_return_type = true;
    record->ctor_dtor_kind = component->kind;
    if (*at == 'I') {
        at = template_args(at, wants_blank(*component, state), state);
        component->flags |= is_closed;
        record->no_return_type = carries_no_return_type(*component);
    }
    return at;
}

static const char* name_part(const char* at, name_record* record, last_component* component,
                             eabi_decode_state* state) {
    return *at == 'N' ? nested_name(at, false, record, component, state)
                      : other_name(at, record, component, state);
}

// A class type that is no nested name, which enters itself.
OUT_OF_LINE static const char* other_class_type(const char* at, last_component* component,
                                                eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    name_record record;
    subst_kind kind = subst_type;
    if (*at == 'Z') {
        at = name_part(at, &record, component, state);
    } else {
        at = unscoped_name(at, &record, component, state);
        kind = record.no_return_type ? subst_name : subst_type;
    }
    eabi_add_substitution(start, kind, start, *component, text_at, state);
    return at;
}

// class-enum-type ::= name, entered as a whole.
const char* class_type(const char* at, last_component* component, eabi_decode_state* state) {
    return *at == 'N' ? nested_name(at, true, nullptr, component, state)
                      : other_class_type(at, component, state);
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
