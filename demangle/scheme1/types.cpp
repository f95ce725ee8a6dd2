// The forms of types, and their two parts.
#include "demangle/scheme1/types.h"

#include <array>

#include "demangle/scheme1/builtin_types.h"
#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/function_types.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/names.h"
#include "demangle/scheme1/sized_types.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/unqualified_names.h"
#include "demangle/scheme1/vendor_qualifiers.h"

namespace scheme1 {

// ---- Qualifiers ----

void emit_qualifiers(unsigned qualifiers, bool trailing_blank, eabi_decode_state* state) {
    static constexpr std::string_view texts[] = {
        "",         "const",          "volatile",          "const volatile",
        "restrict", "const restrict", "volatile restrict", "const volatile restrict",
    };
    emit_text(texts[qualifiers & 7], state);
    if (trailing_blank) {
        emit_char(' ', state);
    }
}

static const char* qualifier_run(const char* at, unsigned* qualifiers) {
    for (; qualifier_bit(*at) != 0; ++at) {
        *qualifiers |= qualifier_bit(*at);
    }
    return at;
}

// ---- The prefix part ----

// The blank or the parenthesis in front of a mark. Marks follow each other closely;
// a mark on a function or an array needs a parenthesis.
IN_PLACE static void open_mark(eabi_decode_state* state) {
    if ((state->shape & shape_mark) == 0) {
        emit_char(' ', state);
    }
    if ((state->shape & shape_direct) != 0) {
        emit_char('(', state);
    }
}

// The qualifiers that apply to the mark in front of them.
static void qualify_mark(unsigned cv, eabi_decode_state* state) {
    if (cv != 0) {
        eabi_cv_qualifiers(cv, false, state);
        state->shape = (state->shape & shape_behind_mark) | shape_qualified | shape_mark_qualified;
    }
}

// Behind a mark: enters the type, then the qualifiers that apply to the mark.
static void finish_mark(const char* start, std::uint64_t text_at, unsigned cv,
                        bool allow_template_args, eabi_decode_state* state) {
    state->shape = (state->shape & shape_behind_mark) | shape_mark;
    enter_type(start, text_at, true, allow_template_args, state);
    qualify_mark(cv, state);
}

// Letters and the type that they qualify, which is none of theirs to enter.
static const char* lettered_prefix(const char* at, unsigned cv, bool allow_template_args,
                                   eabi_decode_state* state) {
    const char* const letters = at;
    at = qualifier_run(at, &cv);
    if (at_function(at)) {  // the letters are part of it
        return function_prefix(at, state);
    }
    at = eabi_type(at, cv, allow_template_args, state);
    if (letters != at && qualifier_bit(*letters) != 0) {
        state->shape &= ~static_cast<unsigned>(shape_mark_qualified);
    }
    return at;
}

// Whether qualifiers of the type at `at` stand behind a mark.
static bool ends_in_mark(const char* at, eabi_decode_state* state) {
    const no_record unrecorded(state);
    while (state->error_seen == 0) {
        switch (*at) {
            case 'P':
            case 'R':
            case 'O':
            case 'M':
                return true;
            case 'K':
            case 'V':
            case 'r':
                ++at;
                break;
            case 'A':
                at = array_element(at, state);
                break;
            case 'U': {
                if (!is_digit(at[1])) {
                    return false;
                }
                vendor_qualifier qualifier;
                at = read_vendor_qualifier(at, &qualifier, state);
                if (qualifier.form != nullptr && qualifier.form->place != vendor_place::before) {
                    return qualifier.form->place == vendor_place::mark;
                }
                break;
            }
            case 'S': {
                const char* const spelled = spelled_type(at, state);
                if (spelled == at) {
                    return false;
                }
                at = spelled;
                break;
            }
            default:
                return false;
        }
    }
    return false;
}

// Whether only qualifiers stand in front of a function type.
static bool leads_to_function(const char* at, eabi_decode_state* state) {
    const no_record unrecorded(state);
    while (state->error_seen == 0 && *at == 'U' && is_digit(at[1])) {
        vendor_qualifier qualifier;
        at = read_vendor_qualifier(at, &qualifier, state);
    }
    unsigned ignored = 0;
    return at_function(qualifier_run(at, &ignored));
}

// A vendor qualifier, those behind it, letters behind them and the qualified type, without
// entering them.
static const char* vendor_prefix(const char* at, unsigned cv, bool allow_template_args,
                                 eabi_decode_state* state) {
    if (*at != 'U' || !is_digit(at[1])) {
        return lettered_prefix(at, cv, allow_template_args, state);
    }
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    vendor_qualifier qualifier;
    at = read_vendor_qualifier(at, &qualifier, state);
    const vendor_place place =
        qualifier.form == nullptr ? vendor_place::before : qualifier.form->place;
    if (place == vendor_place::before) {
        // Qualifiers from around stand in front of the vendor's, or behind a mark.
        if (cv != 0 && state->suppress_depth == 0 && !ends_in_mark(at, state)) {
            eabi_cv_qualifiers(cv, true, state);
            cv = 0;
        }
        emit_vendor_name(qualifier, state);
        if (is_block_pointer(qualifier) && leads_to_function(at, state)) {
            return eabi_type(at, cv, allow_template_args, state);
        }
        return vendor_prefix(at, cv, allow_template_args, state);
    }
    if (place == vendor_place::mark) {
        at = vendor_prefix(at, 0, allow_template_args, state);
        open_mark(state);
        emit_text(qualifier.form->text, state);
        state->shape = (state->shape & shape_behind_mark) | shape_mark;
        qualify_mark(cv, state);
        return at;
    }
    eabi_cv_qualifiers(cv, true, state);
    emit_text(qualifier.form->text, state);
    const char* const inner = at;
    at = vendor_prefix(at, 0, allow_template_args, state);
    finish_type(inner, 0, state);
    emit_text(qualifier.form->closer, state);
    state->shape = named_shape(cv);
    return at;
}

// Enters a type as it is without the qualifiers from around it, and leaves the shape that it
// has with them.
static void enter_unqualified(const char* start, std::uint64_t text_at, bool own_text,
                              bool allow_template_args, eabi_decode_state* state) {
    const unsigned shape = state->shape;
    if ((shape & shape_mark_qualified) != 0) {
        state->shape = (shape & ~static_cast<unsigned>(shape_mark_qualified)) | shape_mark;
    }
    enter_type(start, text_at, own_text, allow_template_args, state);
    state->shape = shape;
}

// { "U" source-name [ args ] } { "K" | "V" | "r" } type: one entry for what stands in front of
// the type. Behind letters a "U" begins another one.
static const char* qualified_type(const char* at, unsigned cv, bool allow_template_args,
                                  eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    at = *at == 'U' ? vendor_prefix(at, cv, allow_template_args, state)
                    : lettered_prefix(at, cv, allow_template_args, state);
    state->shape |= shape_qualified;
    enter_unqualified(start, text_at, cv == 0, allow_template_args, state);
    return at;
}

// "M" class member: the class is printed behind the member's type.
OUT_OF_LINE static const char* member_pointer_prefix(const char* at, bool allow_template_args,
                                                     eabi_decode_state* state) {
    const char* const class_type = at + 1;
    at = eabi_type(skip_type(class_type, state), 0, allow_template_args, state);
    open_mark(state);
    const unsigned shape = state->shape;
    if (state->suppress_depth == 0) {
        const no_record unrecorded(state);
        whole_type(class_type, state);
    }
    emit_text("::*", state);
    state->shape = shape;
    return at;
}

// The codes that begin with "D": the wider forms first, then the table.
static const char* d_type(const char* at, unsigned cv, bool allow_template_args,
                          eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    switch (at[1]) {
        case 'p':
            at = eabi_type(at + 2, cv, allow_template_args, state);
            finish_type(start + 2, cv, state);
            emit_text("...", state);
            state->shape = 0;
            enter_type(start, text_at, cv == 0, allow_template_args, state);
            return at;
        case 't':
        case 'T': {
            eabi_cv_qualifiers(cv, true, state);
            const std::uint64_t own_text_at = state->out_len;
            at = decltype_of(at, state);
            state->shape = 0;
            enter_type(start, own_text_at, true, true, state);
            state->shape = named_shape(cv);
            return at;
        }
        case 'A':
        case 'R':
        case 'S':
            if (!state->extended) {
                break;
            }
            [[fallthrough]];
        case 'v':
        case 'B':
        case 'U':
        case 'F':
            at = sized_type(at, cv, allow_template_args, state);
            state->shape = named_shape(cv);
            return at;
        case 'o':
        case 'O':
        case 'w':
        case 'x':
            at = function_prefix(at, state);
            enter_type(start, text_at, true, true, state);
            return at;
        case 'k':
        case 'K':
            if (state->extended) {  // a constrained auto or decltype(auto)
                eabi_cv_qualifiers(cv, true, state);
                const bool plain = at[1] == 'k';
                at = name_once(at + 2, state);
                emit_text(plain ? " auto" : " decltype(auto)", state);
                state->shape = named_shape(cv);
                return at;
            }
            break;
        default:
            break;
    }
    eabi_cv_qualifiers(cv, true, state);
    state->shape = named_shape(cv);
    if (const builtin_type* const type = find_builtin_type<2>(at[1], state)) {
        emit_short(type->text, state);
        return at + 2;
    }
    report_bad_name(state);
    return at;
}

// Template arguments behind what may be a template, and the entry for the two.
static const char* applied_args(const char* start, const char* at, std::uint64_t text_at,
                                last_component* component, eabi_decode_state* state) {
    at = template_args(at, wants_blank(*component, state), state);
    component->kind = ' ';
    component->flags = is_closed;
    eabi_add_substitution(start, subst_type, start, *component, text_at, state);
    return at;
}

// "T" ...: an elaborated type or a template parameter.
static const char* t_type(const char* at, unsigned cv, bool allow_template_args,
                          eabi_decode_state* state) {
    const char* const start = at;
    eabi_cv_qualifiers(cv, true, state);
    const std::uint64_t text_at = state->out_len;
    last_component component;
    if (at[1] == 's' || at[1] == 'u' || at[1] == 'e') {
        emit_text(at[1] == 's' ? "struct " : at[1] == 'u' ? "union " : "enum ", state);
        at += 2;
        if (*at == 'N' || *at == 'Z' || *at == 'S' || *at == 'U' || is_digit(*at)) {
            at = name_once(at, state);
        } else {
            report_bad_name(state);
        }
        eabi_add_substitution(start, subst_type, start, component, text_at, state);
    } else {
        at = eabi_template_param(at, state);
        component.last_name = last_name_at(start, state);
        eabi_add_substitution(start, subst_template_param, start, component, text_at, state);
        if (*at == 'I' && allow_template_args) {
            at = applied_args(start, at, text_at, &component, state);
        }
    }
    state->shape = named_shape(cv);
    return at;
}

// "S" ...: a reference to a type, or to a template that its arguments follow.
static const char* s_type(const char* at, unsigned cv, bool allow_template_args,
                          eabi_decode_state* state) {
    const char* const start = at;
    last_component component;
    if (at[1] == 't' || is_module_reference(at, state)) {
        eabi_cv_qualifiers(cv, true, state);
        at = class_type(at, &component, state);
        state->shape = named_shape(cv);
        return at;
    }
    const std::uint64_t whole_at = state->out_len;
    at = eabi_substitution(at, subst_type_prefix, cv, false, &component, state);
    if (*at == 'I' && (component.flags & is_complete) == 0 &&
        (allow_template_args || is_template_reference(start, state))) {
        at = applied_args(start, at, cv == 0 ? whole_at : no_text, &component, state);
        state->shape = named_shape(cv);
    }
    return at;
}

// ( "P" | "R" | "O" ) type | member pointer
static const char* mark_type(const char* at, unsigned cv, bool allow_template_args,
                             eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    if (*at == 'M') {
        at = member_pointer_prefix(at, allow_template_args, state);
    } else {
        at = eabi_type(at + 1, 0, allow_template_args, state);
        open_mark(state);
        emit_char(*start == 'P' ? '*' : '&', state);
        if (*start == 'O') {
            emit_char('&', state);
        }
    }
    finish_mark(start, text_at, cv, allow_template_args, state);
    return at;
}

// array-type | function-type
static const char* suffixed_type(const char* at, unsigned cv, bool allow_template_args,
                                 eabi_decode_state* state) {
    const char* const start = at;
    at = *at == 'F' ? function_prefix(at, state) : array_prefix(at, cv, allow_template_args, state);
    enter_unqualified(start, no_text, false, allow_template_args, state);
    return at;
}

// class-enum-type
static const char* named_type(const char* at, unsigned cv, bool /*allow_template_args*/,
                              eabi_decode_state* state) {
    eabi_cv_qualifiers(cv, true, state);
    last_component component;
    at = class_type(at, &component, state);
    state->shape = named_shape(cv);
    return at;
}

// ( "C" | "G" ) type
static const char* complex_type(const char* at, unsigned cv, bool allow_template_args,
                                eabi_decode_state* state) {
    const char* const start = at;
    eabi_cv_qualifiers(cv, true, state);
    const std::uint64_t text_at = state->out_len;
    emit_text(*at == 'C' ? "_Complex " : "_Imaginary ", state);
    at = eabi_type(at + 1, 0, allow_template_args, state);
    enter_type(start, text_at, true, allow_template_args, state);
    state->shape |= named_shape(cv);
    return at;
}

// "u" source-name [ args ]
static const char* vendor_type(const char* at, unsigned cv, bool /*allow_template_args*/,
                               eabi_decode_state* state) {
    const char* const start = at;
    eabi_cv_qualifiers(cv, true, state);
    const std::uint64_t text_at = state->out_len;
    at = source_name(at + 1, state);
    if (*at == 'I') {
        at = template_args(at, at[-1] == '<', state);
    }
    state->shape = 0;
    enter_type(start, text_at, true, true, state);
    state->shape = named_shape(cv);
    return at;
}

// A builtin type of one letter.
static const char* letter_type(const char* at, unsigned cv, bool /*allow_template_args*/,
                               eabi_decode_state* state) {
    const builtin_type* const type = find_builtin_type<1>(*at, state);
    if (type == nullptr) {
        report_bad_name(state);
        return at;
    }
    eabi_cv_qualifiers(cv, true, state);
    emit_short(type->text, state);
    state->shape = named_shape(cv);
    return at + 1;
}

// "U" ...: a vendor qualifier, or a class without a name.
static const char* u_type(const char* at, unsigned cv, bool allow_template_args,
                          eabi_decode_state* state) {
    return (is_digit(at[1]) ? qualified_type : named_type)(at, cv, allow_template_args, state);
}

static const char* no_type(const char* at, unsigned /*cv*/, bool /*allow_template_args*/,
                           eabi_decode_state* state) {
    report_bad_name(state);
    return at;
}

namespace {

using type_reader = const char* (*)(const char* at, unsigned cv, bool allow_template_args,
                                    eabi_decode_state* state);

// What reads the types that begin with one of these letters.
struct type_form {
    std::string_view letters;
    type_reader read;
};

}  // namespace

// A reader at a level of its own.
template <type_reader read>
static const char* leveled(const char* at, unsigned cv, bool allow_template_args,
                           eabi_decode_state* state) {
    const nesting level(state);
    return state->error_seen != 0 ? at : read(at, cv, allow_template_args, state);
}

static constexpr type_form type_forms[] = {
    {"PROM", leveled<mark_type>},  {"KVr", leveled<qualified_type>},
    {"S", leveled<s_type>},        {"T", leveled<t_type>},
    {"D", leveled<d_type>},        {"FA", leveled<suffixed_type>},
    {"CG", leveled<complex_type>}, {"U", leveled<u_type>},
    {"u", leveled<vendor_type>},   {"NZLW0123456789", leveled<named_type>},
};

static constexpr auto type_readers = [] {
    std::array<type_reader, 256> readers{};
    readers.fill(leveled<no_type>);
    for (const builtin_type& type : builtin_types) {
        if (type.code.size() == 1) {
            readers[static_cast<unsigned char>(type.code[0])] = leveled<letter_type>;
        }
    }
    for (const type_form& form : type_forms) {
        for (const char letter : form.letters) {
            readers[static_cast<unsigned char>(letter)] = form.read;
        }
    }
    return readers;
}();

void finish_type(const char* at, unsigned cv_qualifiers, eabi_decode_state* state) {
    if ((state->shape & shape_suffix) == 0 || state->suppress_depth != 0) {
        return;
    }
    if ((state->shape & (shape_direct | shape_mark)) == shape_direct) {
        emit_char(' ', state);
    }
    eabi_type_suffix(at, cv_qualifiers, false, state);
}

}  // namespace scheme1

using namespace scheme1;

// type, its prefix part.
const char* eabi_type(const char* at, unsigned cv_qualifiers, bool allow_template_args,
                      eabi_decode_state* state) {
    return type_readers[static_cast<unsigned char>(*at)](at, cv_qualifiers, allow_template_args,
                                                         state);
}

void eabi_type_suffix(const char* at, unsigned cv_qualifiers, bool marked,
                      eabi_decode_state* state) {
    const no_record unrecorded(state);
    unsigned cv = cv_qualifiers;
    while (state->error_seen == 0) {
        switch (*at) {
            case 'K':
            case 'V':
            case 'r':
                cv |= qualifier_bit(*at);
                ++at;
                break;
            case 'U': {
                if (!is_digit(at[1])) {  // a name
                    return;
                }
                vendor_qualifier qualifier;
                at = read_vendor_qualifier(at, &qualifier, state);
                if (qualifier.form != nullptr && qualifier.form->place == vendor_place::around) {
                    return;
                }
                marked = marked ||
                         (qualifier.form != nullptr && qualifier.form->place == vendor_place::mark);
                cv = 0;
                break;
            }
            case 'M':
                at = skip_type(at + 1, state);
                marked = true;
                cv = 0;
                break;
            case 'P':
            case 'R':
            case 'O':
                marked = true;
                cv = 0;
                ++at;
                break;
            case 'C':
            case 'G':
                ++at;
                break;
            case 'A':
                at = array_suffix(at, marked, state);
                marked = false;
                break;
            case 'S':
                if (!is_module_reference(at, state)) {  // in front of a name
                    eabi_substitution(at, subst_type_suffix, cv, marked, nullptr, state);
                }
                return;
            default:
                if (!at_function(at)) {
                    return;
                }
                at = function_suffix(at, cv, marked, state);
                marked = false;
                cv = 0;
                break;
        }
    }
}
