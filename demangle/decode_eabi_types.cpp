// Types of the Itanium ABI decoder. A type is printed in two parts around where a
// declarator would stand: the prefix routine parses it, enters what can be
// substituted and prints up to its pointer marks; the suffix routine, run on the same
// position only where the prefix says that there is something left, prints parameter
// lists and array bounds.
#include <array>

#include "demangle/decode_eabi_internal.h"

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

static unsigned qualifier_bit(char letter) {
    switch (letter) {
        case 'K':
            return qualifier_const;
        case 'V':
            return qualifier_volatile;
        case 'r':
            return qualifier_restrict;
        default:
            return 0;
    }
}

static const char* qualifier_run(const char* at, unsigned* qualifiers) {
    for (; qualifier_bit(*at) != 0; ++at) {
        *qualifiers |= qualifier_bit(*at);
    }
    return at;
}

// --- Shared by the two parts ----------------------------------------------------

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

// Enters the type at `start`. A text that a suffix will still be added to, or that
// carries qualifiers from outside, is not its own.
static void add_type(const char* start, std::uint64_t text_at, bool own_text,
                     eabi_decode_state* state) {
    if (state->no_record_depth == 0) {
        const bool whole = own_text && (state->shape & shape_suffix) == 0;
        eabi_add_type(start, whole ? text_at : entry_no_text, state);
    }
}

// Behind a mark: enters the type, then the qualifiers that apply to the mark.
static void finish_mark(const char* start, std::uint64_t text_at, unsigned cv,
                        eabi_decode_state* state) {
    state->shape = (state->shape & shape_suffix) | shape_mark;
    add_type(start, text_at, true, state);
    if (cv != 0) {
        eabi_cv_qualifiers(cv, false, state);
        state->shape = (state->shape & shape_suffix) | shape_qualified;
    }
}

// Whether a function type starts here, its exception specification in front.
static bool at_function(const char* at) {
    return *at == 'F' ||
           (*at == 'D' && (at[1] == 'o' || at[1] == 'O' || at[1] == 'w' || at[1] == 'x'));
}

// What may stand in front of a function type's "F".
struct function_head {
    const char* exception = nullptr;  // at its "D"
    bool transaction_safe = false;
};

// [ "Do" | "DO" expression "E" | "Dw" type+ "E" ] [ "Dx" ] "F" [ "Y" ]
static const char* read_function_head(const char* at, function_head* head,
                                      eabi_decode_state* state) {
    if (at[0] == 'D' && at[1] != 'x') {
        head->exception = at;
        const char kind = at[1];
        at += 2;
        if (kind == 'O') {
            bool ignored = false;
            at = eabi_require(eabi_skip_expression(at, &ignored, state), 'E', state);
        } else if (kind == 'w') {
            do {
                at = eabi_skip_type(at, state);
            } while (*at != 'E' && state->error_seen == 0);
            at = eabi_require(at, 'E', state);
        }
    }
    if (at[0] == 'D' && at[1] == 'x') {
        head->transaction_safe = true;
        at += 2;
    }
    at = eabi_require(at, 'F', state);
    return *at == 'Y' ? at + 1 : at;
}

static void put_exception(const char* at, eabi_decode_state* state) {
    const eabi_no_record no_record(state);
    if (at[1] == 'o') {
        eabi_put(" noexcept", state);
    } else if (at[1] == 'O') {
        eabi_put(" noexcept", state);
        eabi_enclosed_expression(at + 2, state);
    } else {
        eabi_put(" throw(", state);
        for (at += 2; *at != 'E' && state->error_seen == 0;) {
            at = eabi_whole_type(at, true, state);
            if (*at != 'E') {
                eabi_put(", ", state);
            }
        }
        eabi_put(')', state);
    }
}

// The "_" behind digits at `at`, null where there is none: digits without one begin
// a name.
static const char* bound_digits_end(const char* at) {
    while (eabi_is_digit(*at)) {
        ++at;
    }
    return *at == '_' ? at : nullptr;
}

// digits "_" | expression "_" | "_", the bound of an array or the size of a vector.
static const char* put_bound(const char* at, eabi_decode_state* state) {
    if (const char* const digits_end = bound_digits_end(at)) {
        eabi_put(at, static_cast<std::size_t>(digits_end - at), state);
        return digits_end + 1;
    }
    return eabi_require(eabi_expression(at, state), '_', state);
}

static const char* skip_bound(const char* at, bool* shows_greater, eabi_decode_state* state) {
    if (const char* const digits_end = bound_digits_end(at)) {
        return digits_end + 1;
    }
    return eabi_require(eabi_skip_expression(at, shows_greater, state), '_', state);
}

// The same between parentheses.
static const char* put_enclosed_bound(const char* at, eabi_decode_state* state) {
    ++state->parentheses;
    eabi_put('(', state);
    at = put_bound(at, state);
    eabi_put(')', state);
    --state->parentheses;
    return at;
}

// --- Vendor qualifiers ----------------------------------------------------------

enum class vendor_place { mark, around, before };

struct vendor_form {
    std::string_view name;
    std::string_view text;
    std::string_view closer;
    vendor_place place;
};

static constexpr vendor_form vendor_forms[] = {
    {"__handle", "^", "", vendor_place::mark},
    {"__trkref", "%", "", vendor_place::mark},
    {"__interior_ptr", "interior_ptr<", ">", vendor_place::around},
    {"__pin_ptr", "pin_ptr<", ">", vendor_place::around},
    {"__vector", "__attribute__((vector_size(?))) ", "", vendor_place::before},
};

// A vector name that carries its element count.
static constexpr std::string_view opencl_vector = "__opencl_vector";

struct vendor_qualifier {
    std::string_view name;
    const vendor_form* form = nullptr;  // null for a name that stands as it is
    const char* args = nullptr;         // at its "I", if it has any
};

// "U" source-name [ args ]
static const char* read_vendor_qualifier(const char* at, vendor_qualifier* qualifier,
                                         eabi_decode_state* state) {
    const eabi_silence silent(state);
    std::uint64_t length = 0;
    const char* const start = eabi_number(at + 1, &length, state);
    at = eabi_source_name(at + 1, state);
    if (state->error_seen != 0) {
        return at;
    }
    qualifier->name = {start, static_cast<std::size_t>(at - start)};
    for (const vendor_form& form : vendor_forms) {
        if (form.name == qualifier->name) {
            qualifier->form = &form;
        }
    }
    if (*at == 'I') {
        qualifier->args = at;
        at = eabi_template_args(at, false, state);
    }
    return at;
}

static void put_vendor_name(const vendor_qualifier& qualifier, eabi_decode_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    if (qualifier.form != nullptr) {
        eabi_put(qualifier.form->text, state);
        return;
    }
    if (qualifier.name.starts_with(opencl_vector) && qualifier.name.size() > opencl_vector.size()) {
        const std::string_view count = qualifier.name.substr(opencl_vector.size());
        if (count.find_first_not_of("0123456789") == std::string_view::npos) {
            eabi_put("OpenCL Vector of ", state);
            eabi_put(count, state);
            eabi_put(' ', state);
            return;
        }
    }
    eabi_put(qualifier.name, state);
    if (qualifier.args != nullptr) {
        const eabi_no_record no_record(state);
        eabi_template_args(qualifier.args, false, state);
    }
    eabi_put(' ', state);
}

// --- The prefix part ------------------------------------------------------------

[[gnu::noinline]] static const char* function_prefix(const char* at, eabi_decode_state* state);

// A run of qualifiers and the type below it, without entering the run.
static const char* qualified_prefix(const char* at, unsigned cv, bool allow_template_args,
                                    eabi_decode_state* state) {
    at = qualifier_run(at, &cv);
    if (*at != 'U' || !eabi_is_digit(at[1])) {
        if (at_function(at)) {
            return function_prefix(at, state);
        }
        return eabi_type(at, cv, allow_template_args, state);
    }
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return at;
    }
    vendor_qualifier qualifier;
    at = read_vendor_qualifier(at, &qualifier, state);
    const vendor_place place =
        qualifier.form == nullptr ? vendor_place::before : qualifier.form->place;
    if (place == vendor_place::before) {
        put_vendor_name(qualifier, state);
        return qualified_prefix(at, cv, allow_template_args, state);
    }
    if (place == vendor_place::mark) {
        at = qualified_prefix(at, 0, allow_template_args, state);
        open_mark(state);
        eabi_put(qualifier.form->text, state);
        state->shape = (state->shape & shape_suffix) | shape_mark;
        if (cv != 0) {
            eabi_cv_qualifiers(cv, false, state);
            state->shape = (state->shape & shape_suffix) | shape_qualified;
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
    add_type(start, text_at, cv == 0, state);
    return at;
}

// function-type: its return type's prefix; the parameters are read for later.
[[gnu::noinline]] static const char* function_prefix(const char* at, eabi_decode_state* state) {
    const char* const start = at;
    function_head head;
    const char* const result = read_function_head(at, &head, state);
    at = eabi_type(result, 0, true, state);
    state->shape = (state->shape & shape_mark) | shape_suffix | shape_direct;
    if (const eabi_skipped* const found = eabi_find_skipped(start, state)) {
        return state->input + found->end;
    }
    eabi_remember_skipped(result, at, false, state);
    const unsigned shape = state->shape;
    const eabi_silence silent(state);
    at = eabi_parameters(at, state);
    if (*at == 'R' || *at == 'O') {
        ++at;
    }
    state->shape = shape;
    at = eabi_require(at, 'E', state);
    eabi_remember_skipped(start, at, false, state);
    return at;
}

// array-type ::= "A" bound type
[[gnu::noinline]] static const char* array_prefix(const char* at, unsigned cv,
                                                  bool allow_template_args,
                                                  eabi_decode_state* state) {
    bool shows_greater = false;
    at = skip_bound(at + 1, &shows_greater, state);
    if (shows_greater) {
        eabi_show_greater(state);
    }
    at = eabi_type(at, cv, allow_template_args, state);
    state->shape = (state->shape & shape_mark) | shape_suffix | shape_direct;
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

// "Dv" size type, "DB" and "DU" size "_", "DF" width ( "_" | "x" | "b" ).
[[gnu::noinline]] static const char* sized_type(const char* at, unsigned cv,
                                                eabi_decode_state* state) {
    const char* const start = at;
    const char kind = at[1];
    eabi_cv_qualifiers(cv, true, state);
    if (kind == 'v') {
        const std::uint64_t text_at = state->out_len;
        const char* const bound = at[2] == '_' ? at + 3 : at + 2;
        bool ignored = false;
        at = eabi_whole_type(skip_bound(bound, &ignored, state), true, state);
        eabi_put(" __vector", state);
        if (state->suppress_depth == 0) {
            const eabi_no_record no_record(state);
            put_enclosed_bound(bound, state);
        }
        state->shape = 0;
        add_type(start, text_at, true, state);
        return at;
    }
    if (kind != 'F') {
        if (at[2] == '_') {
            report_bad_name(state);
            return at;
        }
        eabi_put(kind == 'B' ? "_BitInt" : "unsigned _BitInt", state);
        return put_enclosed_bound(at + 2, state);
    }
    std::uint64_t width = 0;
    const char* const digits = at + 2;
    at = eabi_number(digits, &width, state);
    const std::string_view text(digits, static_cast<std::size_t>(at - digits));
    if (*at == 'b' && text == "16") {
        eabi_put("std::bfloat16_t", state);
    } else if (*at == '_' || *at == 'x') {
        eabi_put("_Float", state);
        eabi_put(text, state);
        if (*at == 'x') {
            eabi_put('x', state);
        }
    } else {
        report_bad_name(state);
        return at;
    }
    return at + 1;
}

// The codes that begin with "D": the wider forms first, then the table.
[[gnu::noinline]] static const char* d_type(const char* at, unsigned cv, bool allow_template_args,
                                            eabi_decode_state* state) {
    const char* const start = at;
    const std::uint64_t text_at = state->out_len;
    switch (at[1]) {
        case 'p':
            at = eabi_whole_type(at + 2, allow_template_args, state);
            eabi_put("...", state);
            state->shape = 0;
            add_type(start, text_at, true, state);
            return at;
        case 't':
        case 'T': {
            eabi_cv_qualifiers(cv, true, state);
            const std::uint64_t own_text_at = state->out_len;
            at = eabi_decltype(at, state);
            state->shape = 0;
            add_type(start, own_text_at, true, state);
            state->shape = cv != 0 ? shape_qualified : 0U;
            return at;
        }
        case 'v':
        case 'B':
        case 'U':
        case 'F':
            at = sized_type(at, cv, state);
            state->shape = cv != 0 ? shape_qualified : 0U;
            return at;
        case 'o':
        case 'O':
        case 'w':
        case 'x':
            at = function_prefix(at, state);
            add_type(start, text_at, true, state);
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
    if (at[1] == 't') {
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
    finish_mark(start, text_at, cv, state);
    return at;
}

// array-type | function-type
[[gnu::noinline]] static const char* suffixed_type(const char* at, unsigned cv,
                                                   bool allow_template_args,
                                                   eabi_decode_state* state) {
    const char* const start = at;
    at = *at == 'F' ? function_prefix(at, state) : array_prefix(at, cv, allow_template_args, state);
    add_type(start, entry_no_text, false, state);
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
    add_type(start, text_at, true, state);
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
    add_type(start, text_at, true, state);
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

// The parameters and qualifiers of the function type at `at`; gives the position of
// its return type.
[[gnu::noinline]] static const char* function_suffix(const char* at, unsigned cv, bool marked,
                                                     eabi_decode_state* state) {
    function_head head;
    const char* const result = read_function_head(at, &head, state);
    if (marked) {
        eabi_put(')', state);
    }
    at = eabi_skip_type(result, state);
    eabi_put('(', state);
    at = eabi_parameters(at, state);
    eabi_put(')', state);
    if (cv != 0) {
        eabi_put(' ', state);
        eabi_cv_qualifiers(cv, false, state);
    }
    if (*at == 'R' || *at == 'O') {
        eabi_put(*at == 'R' ? " &" : " &&", state);
    }
    if (head.transaction_safe) {
        eabi_put(" transaction_safe", state);
    }
    if (head.exception != nullptr) {
        put_exception(head.exception, state);
    }
    return result;
}

void eabi_type_suffix(const char* at, unsigned cv_qualifiers, bool marked,
                      eabi_decode_state* state) {
    const eabi_no_record no_record(state);
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
                vendor_qualifier qualifier;
                at = read_vendor_qualifier(at, &qualifier, state);
                if (qualifier.form != nullptr && qualifier.form->place == vendor_place::around) {
                    return;
                }
                if (qualifier.form != nullptr && qualifier.form->place == vendor_place::mark) {
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
                eabi_put(marked ? ")[" : "[", state);
                at = put_bound(at + 1, state);
                // The bound's "_" has been read; the bracket still belongs to it.
                eabi_put(']', state);
                marked = false;
                break;
            case 'S':
                eabi_substitution(at, subst_type_suffix, cv, marked, nullptr, state);
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

// --- Parameter lists ------------------------------------------------------------

// Where a list of parameter types ends: the NUL, "E", or a reference qualifier and "E".
static bool at_parameters_end(const char* at, const eabi_decode_state* state) {
    return *at == '\0' || *at == 'E' || ((*at == 'R' || *at == 'O') && at[1] == 'E') ||
           (state->extended && (*at == '.' || *at == 'Q'));
}

// "v"  |  { type } [ "z" ], at least one
const char* eabi_parameters(const char* at, eabi_decode_state* state) {
    if (*at == 'v' && at_parameters_end(at + 1, state)) {
        return at + 1;
    }
    bool first = true;
    do {
        if (!first) {
            eabi_put(", ", state);
        }
        first = false;
        if (*at == 'z') {
            eabi_put("...", state);
            ++at;
        } else {
            at = eabi_whole_type(at, true, state);
        }
    } while (state->error_seen == 0 && !at_parameters_end(at, state));
    return at;
}
