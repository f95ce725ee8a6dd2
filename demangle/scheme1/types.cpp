// Types of the Itanium ABI decoder. A type is printed in two parts around where a
// declarator would stand: the prefix routine parses it, enters what can be
// substituted and prints up to its pointer marks; the suffix routine, run on the same
// position only where the prefix says that there is something left, prints parameter
// lists and array bounds.
#include <array>

#include "demangle/scheme1/function_types.h"

// --- Builtin types --------------------------------------------------------------

struct builtin_type {
    char code;
    std::string_view text;
};

static constexpr builtin_type builtin_types[] = {
    {'a', "signed char"},
    {'b', "bool"},
    {'c', "char"},
    {'d', "double"},
    {'e', "long double"},
    {'f', "float"},
    {'h', "unsigned char"},
    {'i', "int"},
    {'j', "unsigned int"},
    {'l', "long"},
    {'m', "unsigned long"},
    {'n', "__int128"},
    {'o', "unsigned __int128"},
    {'s', "short"},
    {'t', "unsigned short"},
    {'v', "void"},
    {'w', "wchar_t"},
    {'x', "long long"},
    {'y', "unsigned long long"},
};

// The second letters of the codes that begin with "D".
static constexpr builtin_type d_types[] = {
    {'a', "auto"},           {'c', "decltype(auto)"}, {'i', "char32_t"}, {'s', "char16_t"},
    {'n', "std::nullptr_t"}, {'N', "__nullptr"},      {'u', "char8_t"},
};

static constexpr builtin_type extended_d_types[] = {
    {'d', "_Decimal64"},
    {'e', "_Decimal128"},
    {'f', "_Decimal32"},
    {'h', "_Float16"},
};

static constexpr auto builtin_texts = [] {
    std::array<std::string_view, 26> texts{};
    for (const builtin_type& type : builtin_types) {
        texts[static_cast<std::size_t>(type.code - 'a')] = type.text;
    }
    return texts;
}();

// --- Qualifiers -----------------------------------------------------------------

void eabi_cv_qualifiers(unsigned qualifiers, bool trailing_blank, eabi_decode_state* state) {
    static constexpr std::string_view texts[] = {
        "",         "const",          "volatile",          "const volatile",
        "restrict", "const restrict", "volatile restrict", "const volatile restrict",
    };
    if (qualifiers != 0) {
        eabi_put(texts[qualifiers & 7], state);
        if (trailing_blank) {
            eabi_put(' ', state);
        }
    }
}

static const char* qualifier_run(const char* at, unsigned* qualifiers) {
    for (; eabi_qualifier_bit(*at) != 0; ++at) {
        *qualifiers |= eabi_qualifier_bit(*at);
    }
    return at;
}

// --- The prefix part ------------------------------------------------------------

// The blank or the parenthesis in front of a mark. Marks follow each other closely;
// a mark on a function or an array needs a parenthesis.
static void open_mark(eabi_decode_state* state) {
    if ((state->shape & shape_mark) == 0) {
        eabi_put(' ', state);
    }
    if ((state->shape & shape_direct) != 0) {
        eabi_put('(', state);
    }
}

// Behind a mark: enters the type, then the qualifiers that apply to the mark.
static void finish_mark(const char* start, std::uint64_t text_at, unsigned cv,
                        bool allow_template_args, eabi_decode_state* state) {
    state->shape = (state->shape & shape_behind) | shape_mark;
    eabi_enter_type(start, text_at, true, allow_template_args, state);
    if (cv != 0) {
        eabi_cv_qualifiers(cv, false, state);
        state->shape = (state->shape & shape_behind) | shape_qualified;
    }
}

// A run of qualifiers and the type below it, without entering the run.
static const char* qualified_prefix(const char* at, unsigned cv, bool allow_template_args,
                                    eabi_decode_state* state) {
    at = qualifier_run(at, &cv);
    if (*at != 'U' || !eabi_is_digit(at[1])) {
        if (eabi_at_function(at)) {
            return eabi_function_prefix(at, state);
        }
        return eabi_type(at, cv, allow_template_args, state);
    }
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return at;
    }
    eabi_vendor_qualifier qualifier;
    at = eabi_read_vendor_qualifier(at, &qualifier, state);
    const eabi_vendor_place place =
        qualifier.form == nullptr ? eabi_vendor_place::before : qualifier.form->place;
    if (place == eabi_vendor_place::before) {
        eabi_put_vendor_name(qualifier, state);
        return qualified_prefix(at, cv, allow_template_args, state);
    }
    if (place == eabi_vendor_place::mark) {
        at = qualified_prefix(at, 0, allow_template_args, state);
        open_mark(state);
        eabi_put(qualifier.form->text, state);
        state->shape = (state->shape & shape_behind) | shape_mark;
        if (cv != 0) {
            eabi_cv_qualifiers(cv, false, state);
            state->shape = (state->shape & shape_behind) | shape_qualified;
        }
        return at;
    }
    eabi_cv_qualifiers(cv, true, state);
    eabi_put(qualifier.form->text, state);
    const char* const inner = at;
    at = qualified_prefix(at, 0, allow_template_args, state);
    eabi_finish_type(inner, 0, state);
    eabi_put(qualifier.form->closer, state);
    state->shape = cv != 0 ? shape_qualified : 0U;
    return at;
}

// { "K" | "V" | "r" | "U" source-name [ args ] } type: one entry for the whole run.
[[gnu::noinline]] static const char* qualified_type(const char* at, unsigned cv,
                                                    bool allow_template_args,
                                                    eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    at = qualified_prefix(at, cv, allow_template_args, state);
    state->shape |= shape_qualified;
    eabi_enter_type(start, text_at, cv == 0, allow_template_args, state);
    return at;
}

// "M" class member: the class is printed behind the member's type.
[[gnu::noinline]] static const char* member_pointer_prefix(const char* at, bool allow_template_args,
                                                           eabi_decode_state* state) {
    const char* const class_type = at + 1;
    at = eabi_type(eabi_skip_type(class_type, state), 0, allow_template_args, state);
    open_mark(state);
    const unsigned shape = state->shape;
    if (state->suppress_depth == 0) {
        const eabi_no_record no_record(state);
        eabi_whole_type(class_type, true, state);
    }
    eabi_put("::*", state);
    state->shape = shape;
    return at;
}

// The codes that begin with "D": the wider forms first, then the table.
[[gnu::noinline]] static const char* d_type(const char* at, unsigned cv, bool allow_template_args,
                                            eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    switch (at[1]) {
        case 'p':
            at = eabi_type(at + 2, cv, allow_template_args, state);
            eabi_finish_type(start + 2, cv, state);
            eabi_put("...", state);
            state->shape = 0;
            eabi_enter_type(start, text_at, cv == 0, allow_template_args, state);
            return at;
        case 't':
        case 'T': {
            eabi_cv_qualifiers(cv, true, state);
            const std::uint64_t own_text_at = state->out_len;
            at = eabi_decltype(at, state);
            state->shape = 0;
            eabi_enter_type(start, own_text_at, true, true, state);
            state->shape = cv != 0 ? shape_qualified : 0U;
            return at;
        }
        case 'v':
        case 'B':
        case 'U':
        case 'F':
            at = eabi_sized_type(at, cv, allow_template_args, state);
            state->shape = cv != 0 ? shape_qualified : 0U;
            return at;
        case 'o':
        case 'O':
        case 'w':
        case 'x':
            at = eabi_function_prefix(at, state);
            eabi_enter_type(start, text_at, true, true, state);
            return at;
        case 'k':
        case 'K':
            if (state->extended) {  // a constrained auto or decltype(auto)
                eabi_cv_qualifiers(cv, true, state);
                const bool plain = at[1] == 'k';
                eabi_name_record record;
                at = eabi_name(at + 2, &record, mode_both, state);
                eabi_put(plain ? " auto" : " decltype(auto)", state);
                state->shape = cv != 0 ? shape_qualified : 0U;
                return at;
            }
            break;
        default:
            break;
    }
    eabi_cv_qualifiers(cv, true, state);
    state->shape = cv != 0 ? shape_qualified : 0U;
    for (const builtin_type& type : d_types) {
        if (type.code == at[1]) {
            eabi_put(type.text, state);
            return at + 2;
        }
    }
    if (state->extended) {
        for (const builtin_type& type : extended_d_types) {
            if (type.code == at[1]) {
                eabi_put(type.text, state);
                return at + 2;
            }
        }
    }
    report_bad_name(state);
    return at;
}

// Template arguments behind what may be a template, and the entry for the two.
static const char* applied_args(const char* start, const char* at, std::uint64_t text_at,
                                eabi_component* component, eabi_decode_state* state) {
    at = eabi_template_args(at, (component->flags & entry_ends_in_less) != 0, state);
    component->flags = 0;
    eabi_add_substitution(start, subst_type, start, *component, text_at, state);
    return at;
}

// "T" ...: an elaborated type or a template parameter.
[[gnu::noinline]] static const char* t_type(const char* at, unsigned cv, bool allow_template_args,
                                            eabi_decode_state* state) {
    const char* const start = at;
    eabi_cv_qualifiers(cv, true, state);
    const std::uint64_t text_at = state->out_len;
    eabi_component component;
    if (at[1] == 's' || at[1] == 'u' || at[1] == 'e') {
        eabi_put(at[1] == 's' ? "struct " : at[1] == 'u' ? "union " : "enum ", state);
        at += 2;
        if (*at == 'N' || *at == 'Z' || *at == 'S' || *at == 'U' || eabi_is_digit(*at)) {
            eabi_name_record record;
            at = eabi_name(at, &record, mode_both, state);
        } else {
            report_bad_name(state);
        }
        eabi_add_substitution(start, subst_type, start, component, text_at, state);
    } else {
        at = eabi_template_param(at, state);
        component.last_name = eabi_last_name_at(start, state);
        eabi_add_substitution(start, subst_template_param, start, component, text_at, state);
        if (*at == 'I' && allow_template_args) {
            at = applied_args(start, at, text_at, &component, state);
        }
    }
    state->shape = cv != 0 ? shape_qualified : 0U;
    return at;
}

// "S" ...: a reference to a type, or to a template that its arguments follow.
[[gnu::noinline]] static const char* s_type(const char* at, unsigned cv, bool allow_template_args,
                                            eabi_decode_state* state) {
    const char* const start = at;
    eabi_component component;
    if (at[1] == 't' || eabi_is_module_reference(at, state)) {
        eabi_cv_qualifiers(cv, true, state);
        at = eabi_class_type(at, &component, state);
        state->shape = cv != 0 ? shape_qualified : 0U;
        return at;
    }
    const bool allowed = allow_template_args || eabi_is_template_reference(at, state);
    const std::uint64_t whole_at = state->out_len;
    at = eabi_substitution(at, subst_type_prefix, cv, false, &component, state);
    if (*at == 'I' && allowed) {
        at = applied_args(start, at, cv == 0 ? whole_at : entry_no_text, &component, state);
        state->shape = cv != 0 ? shape_qualified : 0U;
    }
    return at;
}

// ( "P" | "R" | "O" ) type | member pointer
[[gnu::noinline]] static const char* mark_type(const char* at, unsigned cv,
                                               bool allow_template_args, eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    if (*at == 'M') {
        at = member_pointer_prefix(at, allow_template_args, state);
    } else {
        const std::string_view mark = *at == 'P' ? "*" : *at == 'R' ? "&" : "&&";
        at = eabi_type(at + 1, 0, allow_template_args, state);
        open_mark(state);
        eabi_put(mark, state);
    }
    finish_mark(start, text_at, cv, allow_template_args, state);
    return at;
}

// array-type | function-type
[[gnu::noinline]] static const char* suffixed_type(const char* at, unsigned cv,
                                                   bool allow_template_args,
                                                   eabi_decode_state* state) {
    const char* const start = at;
    at = *at == 'F' ? eabi_function_prefix(at, state)
                    : eabi_array_prefix(at, cv, allow_template_args, state);
    eabi_enter_type(start, entry_no_text, false, allow_template_args, state);
    return at;
}

// "g", which only newer compilers write.
[[gnu::noinline]] static const char* float128_type(const char* at, unsigned cv,
                                                   eabi_decode_state* state) {
    if (!state->extended) {
        report_bad_name(state);
        return at;
    }
    eabi_cv_qualifiers(cv, true, state);
    eabi_put("__float128", state);
    state->shape = cv != 0 ? shape_qualified : 0U;
    return at + 1;
}

// class-enum-type
[[gnu::noinline]] static const char* named_type(const char* at, unsigned cv,
                                                eabi_decode_state* state) {
    eabi_cv_qualifiers(cv, true, state);
    eabi_component component;
    at = eabi_class_type(at, &component, state);
    state->shape = cv != 0 ? shape_qualified : 0U;
    return at;
}

// ( "C" | "G" ) type
[[gnu::noinline]] static const char* complex_type(const char* at, unsigned cv,
                                                  bool allow_template_args,
                                                  eabi_decode_state* state) {
    const char* const start = at;
    eabi_cv_qualifiers(cv, true, state);
    const std::uint64_t text_at = state->out_len;
    eabi_put(*at == 'C' ? "_Complex " : "_Imaginary ", state);
    at = eabi_type(at + 1, 0, allow_template_args, state);
    eabi_enter_type(start, text_at, true, allow_template_args, state);
    state->shape |= cv != 0 ? shape_qualified : 0U;
    return at;
}

// "u" source-name [ args ]
[[gnu::noinline]] static const char* vendor_type(const char* at, unsigned cv,
                                                 eabi_decode_state* state) {
    const char* const start = at;
    eabi_cv_qualifiers(cv, true, state);
    const std::uint64_t text_at = state->out_len;
    at = eabi_source_name(at + 1, state);
    if (*at == 'I') {
        at = eabi_template_args(at, false, state);
    }
    state->shape = 0;
    eabi_enter_type(start, text_at, true, true, state);
    state->shape = cv != 0 ? shape_qualified : 0U;
    return at;
}

// type, its prefix part.
const char* eabi_type(const char* at, unsigned cv_qualifiers, bool allow_template_args,
                      eabi_decode_state* state) {
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return at;
    }
    const char code = *at;
    if (code >= 'a' && code <= 'z') {
        const std::string_view text = builtin_texts[static_cast<std::size_t>(code - 'a')];
        if (!text.empty()) {
            eabi_cv_qualifiers(cv_qualifiers, true, state);
            eabi_put(text, state);
            state->shape = cv_qualifiers != 0 ? shape_qualified : 0U;
            return at + 1;
        }
    }
    switch (code) {
        case 'P':
        case 'R':
        case 'O':
        case 'M':
            return mark_type(at, cv_qualifiers, allow_template_args, state);
        case 'K':
        case 'V':
        case 'r':
            return qualified_type(at, cv_qualifiers, allow_template_args, state);
        case 'S':
            return s_type(at, cv_qualifiers, allow_template_args, state);
        case 'T':
            return t_type(at, cv_qualifiers, allow_template_args, state);
        case 'D':
            return d_type(at, cv_qualifiers, allow_template_args, state);
        case 'F':
        case 'A':
            return suffixed_type(at, cv_qualifiers, allow_template_args, state);
        case 'C':
        case 'G':
            return complex_type(at, cv_qualifiers, allow_template_args, state);
        case 'U':
            if (eabi_is_digit(at[1])) {
                return qualified_type(at, cv_qualifiers, allow_template_args, state);
            }
            break;
        case 'u':
            return vendor_type(at, cv_qualifiers, state);
        case 'g':
            return float128_type(at, cv_qualifiers, state);
        case 'N':
        case 'Z':
        case 'L':
        case 'W':
            break;
        default:
            if (eabi_is_digit(code)) {
                break;
            }
            report_bad_name(state);
            return at;
    }
    return named_type(at, cv_qualifiers, state);
}

// --- The suffix part ------------------------------------------------------------

void eabi_type_suffix(const char* at, unsigned cv_qualifiers, bool marked,
                      eabi_decode_state* state) {
    const eabi_no_record no_record(state);
    unsigned cv = cv_qualifiers;
    while (state->error_seen == 0) {
        switch (*at) {
            case 'K':
            case 'V':
            case 'r':
                cv |= eabi_qualifier_bit(*at);
                ++at;
                break;
            case 'U': {
                eabi_vendor_qualifier qualifier;
                at = eabi_read_vendor_qualifier(at, &qualifier, state);
                if (qualifier.form != nullptr &&
                    qualifier.form->place == eabi_vendor_place::around) {
                    return;
                }
                if (qualifier.form != nullptr && qualifier.form->place == eabi_vendor_place::mark) {
                    marked = true;
                    cv = 0;
                }
                break;
            }
            case 'M':
                at = eabi_skip_type(at + 1, state);
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
                at = eabi_array_suffix(at, marked, state);
                marked = false;
                break;
            case 'S':
                eabi_substitution(at, subst_type_suffix, cv, marked, nullptr, state);
                return;
            default:
                if (!eabi_at_function(at)) {
                    return;
                }
                at = eabi_function_suffix(at, cv, marked, state);
                marked = false;
                cv = 0;
                break;
        }
    }
}

void eabi_finish_type(const char* at, unsigned cv_qualifiers, eabi_decode_state* state) {
    if ((state->shape & shape_suffix) == 0 || state->suppress_depth != 0) {
        return;
    }
    if ((state->shape & (shape_direct | shape_mark)) == shape_direct) {
        eabi_put(' ', state);
    }
    eabi_type_suffix(at, cv_qualifiers, false, state);
}

const char* eabi_whole_type(const char* at, bool allow_template_args, eabi_decode_state* state) {
    const char* const end = eabi_type(at, 0, allow_template_args, state);
    if ((state->shape & shape_suffix) != 0) {
        eabi_finish_type(at, 0, state);
    }
    return end;
}
