// Scheme 0's types, in two passes over the same input.
#include <cstring>

#include "demangle/scheme0/grammar.h"
#include "demangle/scheme0/skip.h"

namespace scheme0 {

namespace {

struct code_text {
    const char* code;
    const char* text;
};

}  // namespace

static constexpr code_text modifiers[] = {
    {"S", "signed "},
    {"U", "unsigned "},
    {"x", "_Complex "},
};

// "m16" stands before "m1", which it begins with.
static constexpr code_text builtin_types[] = {
    {"v", "void"},        {"b", "bool"},       {"c", "char"},           {"w", "wchar_t"},
    {"g", "char16_t"},    {"k", "char32_t"},   {"s", "short"},          {"i", "int"},
    {"l", "long"},        {"L", "long long"},  {"f", "float"},          {"d", "double"},
    {"r", "long double"}, {"m16", "__int128"}, {"m1", "__int8"},        {"m2", "__int16"},
    {"m4", "__int32"},    {"m5", "__int40_t"}, {"m8", "__int64"},       {"n", "std::nullptr_t"},
    {"j", "__nullptr"},   {"u", "auto"},       {"q", "decltype(auto)"},
};

namespace {

struct wrapping_code {
    char code;
    bool of_type;  // a type, otherwise an expression
    const char* opening;
    const char* closing;
};

}  // namespace

static constexpr wrapping_code wrapping_codes[] = {
    {'t', true, "typeof(", ")"},
    {'p', false, "typeof(", ")"},
    {'y', false, "decltype(", ")"},
    {'Y', false, "decltype((", "))"},
    {'o', true, "__underlying_type(", ")"},
};

namespace {

struct qualifier_text {
    unsigned bit;
    const char* text;
};

}  // namespace

static constexpr qualifier_text qualifier_texts[] = {
    {is_const, "const"}, {is_volatile, "volatile"}, {is_restrict, "restrict"},
    {is_lvalue, "&"},    {is_rvalue, "&&"},
};

// Prints the qualifiers of the set, separated by blanks, each behind one when `apart`.
static void emit_qualifiers(unsigned bits, bool apart, grammar_state* state) {
    for (const qualifier_text& row : qualifier_texts) {
        if ((bits & row.bit) != 0) {
            if (apart) {
                emit_char(' ', state);
            }
            emit_text(row.text, state);
            apart = true;
        }
    }
}

static void emit_qualifiers_before_name(unsigned bits, grammar_state* state) {
    if (bits != 0) {
        emit_qualifiers(bits, false, state);
        emit_char(' ', state);
    }
}

static void emit_qualifiers_after_mark(unsigned bits, grammar_state* state) {
    state->last = tail::mark;
    if (bits != 0) {
        emit_qualifiers(bits, false, state);
        state->last = tail::qualifier;
    }
}

static bool begins_function_or_array(const char* at, const grammar_state* state) {
    unsigned bits = 0;
    const char letter = peek_char(read_qualifiers(at, false, &bits, state), state);
    return letter == 'F' || letter == 'A';
}

// Between what a declarator follows and the declarator.
static void emit_blank_before_declarator(grammar_state* state) {
    if (state->last != tail::mark) {
        emit_char(' ', state);
    }
    state->last = tail::mark;
}

// Opens the declarator of a mark: a parenthesis where a function or an array is meant.
static void open_mark(const char* pointee, grammar_state* state) {
    if (begins_function_or_array(pointee, state)) {
        emit_char('(', state);
    } else {
        emit_blank_before_declarator(state);
    }
}

static void close_mark(const char* pointee, grammar_state* state) {
    if (begins_function_or_array(pointee, state)) {
        emit_char(')', state);
    }
}

static bool begins_class(const char* at, const grammar_state* state) {
    const char letter = peek_char(at, state);
    return letter == 'Z' || letter == 'Q' || is_digit(letter);
}

// A class where one is called for: simple, qualified or a template parameter.
static const char* class_name(const char* at, grammar_state* state) {
    if (!begins_class(at, state)) {
        report_bad_name(state);
        return at;
    }
    return peek_char(at, state) == 'Z' ? type_template_param(at, state)
                                       : qualified_name(at, {}, state);
}

static const char* skip_class(const char* at, grammar_state* state) {
    return skip_once(at, state, class_name);
}

// bound := digits | "X" operand | nothing
static const char* array_bound(const char* at, grammar_state* state) {
    if (peek_char(at, state) == 'X') {
        const nesting level(state);
        return decode_operand(at + 1, false, state);
    }
    while (peek_char(at, state) == '0' && is_digit(peek_char(at + 1, state))) {
        ++at;
    }
    const char* const digits = at;
    while (is_digit(peek_char(at, state))) {
        ++at;
    }
    emit_text({digits, static_cast<std::size_t>(at - digits)}, state);
    return at;
}

static const char* skip_bound(const char* at, grammar_state* state) {
    return skip_once(at, state, array_bound);
}

// array := "A" bound "_" type
static const char* array_prefix(const char* at, unsigned qualifiers, grammar_state* state) {
    at = expect(skip_bound(at + 1, state), '_', state);
    at = type_prefix(at, qualifiers, state);
    emit_blank_before_declarator(state);
    return at;
}

// function := "F" parameters "_" type
static const char* function_prefix(const char* at, grammar_state* state) {
    ++state->parentheses;
    at = expect(skip_parameters(at + 1, state), '_', state);
    --state->parentheses;
    at = type_prefix(at, 0, state);
    emit_blank_before_declarator(state);
    return at;
}

// "P" type | "R" type | "E" type
static const char* pointer_prefix(const char* at, const char* sign, unsigned qualifiers,
                                  grammar_state* state) {
    const char* const pointee = at + 1;
    at = type_prefix(pointee, 0, state);
    open_mark(pointee, state);
    emit_text(sign, state);
    emit_qualifiers_after_mark(qualifiers, state);
    return at;
}

// "M" class type
static const char* member_pointer_prefix(const char* at, unsigned qualifiers,
                                         grammar_state* state) {
    const char* const owner = at + 1;
    const char* const member = skip_class(owner, state);
    at = type_prefix(member, 0, state);
    open_mark(member, state);
    if (state->suppress_depth == 0) {
        class_name(owner, state);
    }
    emit_text("::*", state);
    emit_qualifiers_after_mark(qualifiers, state);
    return at;
}

// vector := "B" digits "_" type
static const char* vector_prefix(const char* at, unsigned qualifiers, grammar_state* state) {
    std::uint64_t size = 0;
    at = expect(read_number(at + 1, &size, state), '_', state);
    emit_qualifiers_before_name(qualifiers, state);
    emit_text("__attribute__((vector_size(", state);
    emit_number(size, state);
    emit_text("))) ", state);
    return type_prefix(at, 0, state);
}

// "Hi" type | "Hp" type
static const char* bracketed_pointer_prefix(const char* at, const char* opening,
                                            unsigned qualifiers, grammar_state* state) {
    emit_text(opening, state);
    at = whole_type(at + 2, state);
    emit_char('>', state);
    emit_qualifiers(qualifiers, true, state);
    state->last = qualifiers != 0 ? tail::qualifier : tail::name;
    return at;
}

// "Hh" type | "Ht" type. The mark follows its type without a blank.
static const char* handle_prefix(const char* at, const char* sign, unsigned qualifiers,
                                 grammar_state* state) {
    const char* const pointee = at + 2;
    at = type_prefix(pointee, 0, state);
    if (begins_function_or_array(pointee, state)) {
        emit_char('(', state);
    } else if (state->last == tail::qualifier) {
        emit_char(' ', state);
    }
    emit_text(sign, state);
    emit_qualifiers_after_mark(qualifiers, state);
    return at;
}

static const char* managed_prefix(const char* at, unsigned qualifiers, grammar_state* state) {
    switch (peek_char(at + 1, state)) {
        case 'i':
            return bracketed_pointer_prefix(at, "interior_ptr<", qualifiers, state);
        case 'p':
            return bracketed_pointer_prefix(at, "pin_ptr<", qualifiers, state);
        case 'h':
            return handle_prefix(at, "^", qualifiers, state);
        case 't':
            return handle_prefix(at, "%", qualifiers, state);
        default:
            report_bad_name(state);
            return at;
    }
}

static const char* named_prefix(const char* at, unsigned qualifiers, grammar_state* state) {
    emit_qualifiers_before_name(qualifiers, state);
    at = begins_class(at, state) ? class_name(at, state) : builtin_type(at, state);
    state->last = tail::name;
    return at;
}

static const char* wrapped_type(const char* at, const wrapping_code& row, grammar_state* state) {
    emit_text(row.opening, state);
    ++state->parentheses;
    at = row.of_type ? whole_type(at + 1, state) : expression(at + 1, false, state);
    --state->parentheses;
    emit_text(row.closing, state);
    return at;
}

const char* read_qualifiers(const char* at, bool statics, unsigned* bits,
                            const grammar_state* state) {
    *bits = 0;
    for (;; ++at) {
        switch (peek_char(at, state)) {
            case 'C':
                *bits |= is_const;
                continue;
            case 'V':
                *bits |= is_volatile;
                continue;
            case 'S':
                if (statics) {
                    continue;
                }
                return at;
            case 'D':
                switch (peek_char(at + 1, state)) {
                    case 'r':
                        *bits |= is_restrict;
                        break;
                    case 'L':
                        *bits |= (*bits & is_rvalue) != 0 ? 0U : is_lvalue;
                        break;
                    case 'R':
                        *bits |= (*bits & is_lvalue) != 0 ? 0U : is_rvalue;
                        break;
                    default:
                        return at;
                }
                ++at;
                continue;
            default:
                return at;
        }
    }
}

void emit_function_qualifiers(unsigned bits, grammar_state* state) {
    emit_qualifiers(bits, true, state);
}

// type := { "C" | "V" | "Dr" } type | function | array | pointers | vector | names
// The qualifiers of an array are those of its elements.
const char* type_prefix(const char* at, unsigned qualifiers, grammar_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    unsigned bits = 0;
    at = read_qualifiers(at, false, &bits, state);
    const char letter = peek_char(at, state);
    if (letter == 'F') {
        return function_prefix(at, state);
    }
    if ((bits & (is_lvalue | is_rvalue)) != 0) {
        report_bad_name(state);
        return at;
    }
    qualifiers |= bits;
    switch (letter) {
        case 'P':
            return pointer_prefix(at, "*", qualifiers, state);
        case 'R':
            return pointer_prefix(at, "&", qualifiers, state);
        case 'E':
            return pointer_prefix(at, "&&", qualifiers, state);
        case 'M':
            return member_pointer_prefix(at, qualifiers, state);
        case 'A':
            return array_prefix(at, qualifiers, state);
        case 'B':
            return vector_prefix(at, qualifiers, state);
        case 'H':
            return managed_prefix(at, qualifiers, state);
        default:
            return named_prefix(at, qualifiers, state);
    }
}

// What stands behind the declarator: the marks' closing parentheses, parameters, bounds.
// The prefix pass has read the type and found it well formed.
void type_suffix(const char* at, grammar_state* state) {
    while (state->suppress_depth == 0) {
        unsigned bits = 0;
        at = read_qualifiers(at, false, &bits, state);
        switch (peek_char(at, state)) {
            case 'P':
            case 'R':
            case 'E':
                close_mark(++at, state);
                break;
            case 'M':
                at = skip_class(at + 1, state);
                close_mark(at, state);
                break;
            case 'H': {
                const char kind = peek_char(at + 1, state);
                if (kind != 'h' && kind != 't') {
                    return;
                }
                at += 2;
                close_mark(at, state);
                break;
            }
            case 'A':
                emit_char('[', state);
                at = expect(array_bound(at + 1, state), '_', state);
                emit_char(']', state);
                break;
            case 'F': {
                const nesting level(state);
                emit_char('(', state);
                ++state->parentheses;
                at = expect(parameter_list(at + 1, state), '_', state);
                --state->parentheses;
                emit_char(')', state);
                emit_function_qualifiers(bits, state);
                break;
            }
            case 'B': {
                std::uint64_t size = 0;
                at = read_number(at + 1, &size, state) + 1;
                break;
            }
            default:
                return;
        }
    }
}

const char* whole_type(const char* at, grammar_state* state) {
    const char* const end = type_prefix(at, 0, state);
    type_suffix(at, state);
    return end;
}

// Finds a type's end. It is remembered, for the type is printed later.
const char* skip_type(const char* at, grammar_state* state) {
    return skip_once(at, state, [](const char* type, grammar_state* each) {
        return type_prefix(type, 0, each);
    });
}

// builtin := [ modifier ] ( code | wrapping-code operand )
const char* builtin_type(const char* at, grammar_state* state) {
    for (const code_text& row : modifiers) {
        if (peek_char(at, state) == row.code[0]) {
            emit_text(row.text, state);
            ++at;
            break;
        }
    }
    for (const code_text& row : builtin_types) {
        if (peek_char(at, state) == row.code[0] && follows(at, row.code, state)) {
            emit_text(row.text, state);
            return at + std::strlen(row.code);
        }
    }
    for (const wrapping_code& row : wrapping_codes) {
        if (peek_char(at, state) == row.code) {
            return wrapped_type(at, row, state);
        }
    }
    report_bad_name(state);
    return at;
}

// "Z" index [ "_" level ] "Z"
const char* read_template_param(const char* at, template_param* param, grammar_state* state) {
    at = read_number(at + 1, &param->index, state);
    if (peek_char(at, state) == '_') {
        at = read_number(at + 1, &param->level, state);
    }
    return expect(at, 'Z', state);
}

const char* type_template_param(const char* at, grammar_state* state) {
    template_param param;
    at = read_template_param(at, &param, state);
    emit_template_param_name(param.level + state->nesting_level, param.index, 0, state);
    return at;
}

}  // namespace scheme0

// Three levels have letters of their own; any other is spelled out.
void emit_template_param_name(std::uint64_t level, std::uint64_t index, int kind,
                              output_state* state) {
    const char first = kind == 0 ? 'T' : 'N';
    if (level >= 1 && level <= 3) {
        emit_char(static_cast<char>(first + static_cast<int>(level) - 1), state);
    } else {
        emit_char(first, state);
        emit_char('_', state);
        emit_number(level, state);
        emit_char('_', state);
    }
    emit_number(index, state);
}
