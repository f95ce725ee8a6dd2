// Scheme 0's names: entities with their signatures, the plain name, class names.
#include <cstring>
#include <string_view>

#include "demangle/scheme0/grammar.h"
#include "demangle/scheme0/operators.h"

namespace scheme0 {

namespace {

enum class name_kind { identifier, constructor, destructor, conversion, operator_function };

// Where a name stands decides what ends it.
enum class name_place { entity, operand };

// A name as it was found, not yet printed.
struct name_parts {
    name_kind kind = name_kind::identifier;
    const char* begin = nullptr;        // the identifier, the type, the literal's suffix
    const char* end = nullptr;          // of that, and of the whole without arguments
    const operator_code* op = nullptr;  // of an operator function
    const char* arguments = nullptr;    // null when there are none
};

// A kind of things without a name.
struct unnamed_kind {
    char letter;
    std::string_view text;
};

}  // namespace

static constexpr unnamed_kind unnamed_kinds[] = {
    {'t', "unnamed type"},
    {'l', "lambda"},
    {'m', "lambda in member initializer"},
    {'d', "lambda in default argument"},
};

static std::string_view between(const char* from, const char* to) {
    return {from, static_cast<std::size_t>(to - from)};
}

// The first "__" from `at` on, or the end of the input.
static const char* find_separator(const char* at, const grammar_state* state) {
    const std::string_view rest = between(at, state->input_end);
    const std::size_t found = rest.find("__");
    return found == std::string_view::npos ? state->input_end : at + found;
}

static const char* skip_underscores(const char* at, const grammar_state* state) {
    while (peek_char(at, state) == '_') {
        ++at;
    }
    return at;
}

static bool begins_function(const char* at, const grammar_state* state) {
    unsigned bits = 0;
    return peek_char(read_qualifiers(at, true, &bits, state), state) == 'F';
}

static bool begins_scope(const char* at, const grammar_state* state) {
    return is_digit(peek_char(at, state)) || peek_char(at, state) == 'Q';
}

static bool begins_signature(const char* at, const grammar_state* state) {
    return begins_scope(at, state) || begins_function(at, state);
}

// Empty for a letter that is none.
static std::string_view kind_of_unnamed(char letter) {
    for (const unnamed_kind& row : unnamed_kinds) {
        if (row.letter == letter) {
            return row.text;
        }
    }
    return {};
}

// "__U" kind n
static bool begins_unnamed(const char* at, const grammar_state* state) {
    return follows(at, "__U", state) && !kind_of_unnamed(peek_char(at + 3, state)).empty() &&
           is_digit(peek_char(at + 4, state));
}

// Whether what a length counts is read, and not stepped over by its length.
static bool looks_inside(const grammar_state* state) {
    return state->suppress_depth == 0 || state->looks_inside;
}

// The opening of `args`, and the number that counts the list's characters.
static bool begins_template_arguments(const char* at, const grammar_state* state) {
    return (follows(at, "__tm__", state) || follows(at, "__pt__", state) ||
            follows(at, "__ps__", state)) &&
           is_digit(peek_char(at + 6, state));
}

// args := ( "__tm__" | "__pt__" | "__ps__" ) n "_" { arg }
// Prints the list, or only finds its end.
static const char* template_arguments(const char* at, bool inside, grammar_state* state) {
    std::uint64_t length = 0;
    const char* saved_end = nullptr;
    at = expect(read_length(at + 6, &length, &saved_end, state), '_', state);
    if (state->error_seen == 0) {
        const char* const end = state->input_end;
        if (inside) {
            // A ">" in an inner list is no part of the outer one's expressions.
            ++state->parentheses;
            emit_char('<', state);
            for (bool first = true; at < end && state->error_seen == 0; first = false) {
                emit_text(first ? "" : ", ", state);
                at = template_argument(at, state);
            }
            emit_char('>', state);
            --state->parentheses;
        }
        at = end;
    }
    state->input_end = saved_end;
    return at;
}

// An identifier ends at the first "__" that something can follow; leading underscores
// are its own.
template <typename Ends>
static const char* find_identifier_end(const char* at, const grammar_state* state, Ends ends) {
    at = skip_underscores(at, state);
    for (;;) {
        at = find_separator(at, state);
        if (at == state->input_end || ends(at)) {
            return at;
        }
        ++at;
    }
}

static bool ends_special_name(const char* at, const grammar_state* state) {
    return at == state->input_end || follows(at, "__", state);
}

// "__op" type. A text that is no type after all, for what its names hold maybe, leaves no
// trace.
static bool find_conversion(const char* at, name_parts* parts, grammar_state* state) {
    const int error_seen = state->error_seen;
    const std::uint64_t suppress_depth = state->suppress_depth;
    const char* const input_end = state->input_end;
    const std::uint64_t nesting_level = state->nesting_level;
    const bool looked_inside = state->looks_inside;
    ++state->suppress_depth;
    state->looks_inside = true;
    const char* const end = skip_type(at, state);
    const bool found = state->error_seen == 0 && ends_special_name(end, state);
    state->error_seen = error_seen;
    state->suppress_depth = suppress_depth;
    state->input_end = input_end;
    state->nesting_level = nesting_level;
    state->looks_inside = looked_inside;
    if (state->beyond_bounds) {
        report_bad_name(state);
        return false;
    }
    if (found) {
        *parts = {name_kind::conversion, at, end};
    }
    return found;
}

// "__li" length suffix
static bool find_literal_suffix(const char* at, const operator_code* op, name_parts* parts,
                                const grammar_state* state) {
    std::uint64_t length = 0;
    const char* suffix = at;
    for (; is_digit(peek_char(suffix, state)); ++suffix) {
        length = length * 10 + static_cast<std::uint64_t>(*suffix - '0');
        if (length > static_cast<std::uint64_t>(state->input_end - suffix)) {
            return false;
        }
    }
    if (length == 0 || length > static_cast<std::uint64_t>(state->input_end - suffix) ||
        !ends_special_name(suffix + length, state)) {
        return false;
    }
    *parts = {name_kind::operator_function, suffix, suffix + length, op};
    return true;
}

// "__ct" | "__dt" | "__op" type | "__" operator-code, with "__" or the end after them
static bool find_special_name(const char* at, name_parts* parts, grammar_state* state) {
    if (!follows(at, "__", state)) {
        return false;
    }
    at += 2;
    if (follows(at, "ct", state) || follows(at, "dt", state)) {
        *parts = {*at == 'c' ? name_kind::constructor : name_kind::destructor, at, at + 2};
        return ends_special_name(at + 2, state);
    }
    if (follows(at, "op", state) && find_conversion(at + 2, parts, state)) {
        return true;
    }
    int length = 0;
    const operator_code* const op = lookup_operator_code(at, state, &length);
    if (op == nullptr) {
        return false;
    }
    at += length;
    if (op->form == operator_form::literal) {
        return find_literal_suffix(at, op, parts, state);
    }
    *parts = {name_kind::operator_function, at, at, op};
    return ends_special_name(at, state);
}

// name := identifier [ args ] | "__ct" | "__dt" | "__op" type | "__" operator-code
static name_parts find_name(const char* at, name_place place, grammar_state* state) {
    name_parts parts;
    if (!find_special_name(at, &parts, state)) {
        const char* const end =
            place == name_place::operand
                ? find_identifier_end(at, state, [](const char*) { return true; })
                : find_identifier_end(at, state, [state](const char* separator) {
                      return begins_signature(separator + 2, state) ||
                             begins_template_arguments(separator, state);
                  });
        parts = {name_kind::identifier, at, end};
        if (at == end) {
            report_bad_name(state);
        }
    }
    if (begins_template_arguments(parts.end, state)) {
        parts.arguments = parts.end;
        parts.end = template_arguments(parts.arguments, false, state);
    }
    return parts;
}

// Prints a name as it stands.
static void emit_name(std::string_view name, grammar_state* state) {
    emit_text(name, state);
    if (name.ends_with('<') && state->suppress_depth == 0) {
        state->less_end = state->out_len;
    }
}

// The list behind what has been printed.
static void print_arguments(const char* arguments, grammar_state* state) {
    if (state->less_end == state->out_len) {
        emit_char(' ', state);
    }
    template_arguments(arguments, looks_inside(state), state);
}

// Prints the name. A constructor or destructor repeats the last component of its
// scope, which must be there.
static void print_name(const name_parts& parts, const char* scope, grammar_state* state) {
    const char* const end = parts.arguments != nullptr ? parts.arguments : parts.end;
    switch (parts.kind) {
        case name_kind::identifier:
            emit_name(between(parts.begin, end), state);
            break;
        case name_kind::constructor:
        case name_kind::destructor:
            if (scope == nullptr) {
                report_bad_name(state);
                return;
            }
            scope_name(scope,
                       {.last_component_only = true,
                        .destructor = parts.kind == name_kind::destructor,
                        .without_arguments = true},
                       state);
            break;
        case name_kind::conversion:
            emit_text("operator ", state);
            // Finding the name has read the type already.
            if (state->suppress_depth == 0) {
                whole_type(parts.begin, state);
            }
            break;
        case name_kind::operator_function:
            emit_text("operator ", state);
            emit_name(parts.op->text, state);
            if (parts.op->form == operator_form::literal) {
                emit_name(between(parts.begin, end), state);
            }
            break;
    }
    if (parts.arguments != nullptr) {
        print_arguments(parts.arguments, state);
    }
}

namespace {

// run := identifier [ args ] [ "__U" kind n ]
// Whether a "__" that opens neither ends the name as well: so it is where one run
// holds several names.
enum class run_kind { one_name, several_names };

}  // namespace

static const char* run_name(const char* at, run_kind kind, class_options options,
                            grammar_state* state) {
    const char* const end = find_identifier_end(at, state, [=](const char* separator) {
        return kind == run_kind::several_names || begins_template_arguments(separator, state) ||
               begins_unnamed(separator, state);
    });
    if (end == at) {
        report_bad_name(state);
        return at;
    }
    const bool listed = begins_template_arguments(end, state);
    const char* after = listed ? template_arguments(end, false, state) : end;
    const bool unnamed = begins_unnamed(after, state);
    if (!(unnamed && options.without_arguments)) {
        emit_name(between(at, end), state);
        if (listed && !options.without_arguments) {
            print_arguments(end, state);
        }
    }
    if (!unnamed) {
        return after;
    }
    std::uint64_t number = 0;
    emit_text(options.without_arguments ? "[" : "::[", state);
    emit_text(kind_of_unnamed(after[3]), state);
    after = read_number(after + 4, &number, state);
    emit_text(" (instance ", state);
    emit_number(number, state);
    emit_text(")]", state);
    return after;
}

// One component of a qualified name.
static const char* component(const char* at, class_options options, grammar_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    const char letter = peek_char(at, state);
    if (letter == 'Z') {
        return type_template_param(at, state);
    }
    if (letter == 'G') {
        return at + 1;
    }
    if (letter == 'Q') {  // a type, and so whole whatever the options
        return qualified_name(at, {}, state);
    }
    return is_digit(letter) ? simple_name(at, options, state) : whole_type(at, state);
}

// A run of the operand of "__vtbl__": class names with "__" between them.
static const char* table_run(const char* at, grammar_state* state) {
    std::uint64_t length = 0;
    const char* saved_end = nullptr;
    at = read_length(at, &length, &saved_end, state);
    while (state->error_seen == 0) {
        at = run_name(at, run_kind::several_names, {}, state);
        if (at == state->input_end) {
            break;
        }
        if (state->input_end - at < 3 || !follows(at, "__", state)) {
            report_bad_name(state);
            break;
        }
        emit_text(" in ", state);
        at += 2;
    }
    state->input_end = saved_end;
    return at;
}

namespace {

struct signature {
    const char* scope = nullptr;       // null for none
    const char* parameters = nullptr;  // null when it is no function
    unsigned qualifiers = 0;
    bool malformed = false;  // in a part that is yet to be printed
    const char* end = nullptr;
};

}  // namespace

// Runs `skip`, which steps over something that is printed later. A malformation is
// left to be reported there, so that the text up to it appears.
template <typename Skip>
static const char* look_ahead(const char* at, signature* found, grammar_state* state, Skip skip) {
    const std::uint64_t suppress_depth = state->suppress_depth;
    const char* const input_end = state->input_end;
    ++state->suppress_depth;
    const char* const end = skip(at, state);
    found->malformed = state->error_seen != 0;
    state->error_seen = 0;
    state->suppress_depth = suppress_depth;
    state->input_end = input_end;
    return end;
}

// signature := scope [ function ] | function
// function := { "C" | "V" | "Dr" | "DL" | "DR" | "S" } "F" params [ "_" type ]
// Nothing but the result type is printed, which stands in front of everything.
static signature find_signature(const char* at, grammar_state* state) {
    signature found;
    if (begins_scope(at, state)) {
        found.scope = at;
        at = look_ahead(at, &found, state, [](const char* scope, grammar_state* each) {
            return scope_name(scope, {}, each);
        });
    }
    if (!found.malformed && begins_function(at, state)) {
        at = read_qualifiers(at, true, &found.qualifiers, state) + 1;
        found.parameters = at;
        at = look_ahead(at, &found, state, skip_parameters);
        if (!found.malformed && peek_char(at, state) == '_') {
            at = whole_type(at + 1, state);
            emit_char(' ', state);
        }
    }
    if (found.scope == nullptr && found.parameters == nullptr) {
        report_bad_name(state);
    }
    found.end = at;
    return found;
}

// entity := name [ "__" signature ]
const char* full_entity(const char* at, grammar_state* state) {
    const name_parts parts = find_name(at, name_place::entity, state);
    signature found;
    found.end = parts.end;
    if (state->error_seen == 0 && follows(parts.end, "__", state)) {
        found = find_signature(parts.end + 2, state);
    }
    if (state->error_seen != 0) {
        return found.end;
    }
    if (found.scope != nullptr) {
        scope_name(found.scope, {}, state);
        emit_text("::", state);
    }
    print_name(parts, found.scope, state);
    if (found.parameters != nullptr) {
        emit_char('(', state);
        parameter_list(found.parameters, state);
        emit_char(')', state);
        emit_function_qualifiers(found.qualifiers, state);
    }
    if (found.malformed) {
        report_bad_name(state);
    }
    return found.end;
}

// Stops at the "__" in front of the signature, of which only a constructor's or
// destructor's class is looked at.
const char* name_only(const char* at, grammar_state* state) {
    const name_parts parts = find_name(at, name_place::entity, state);
    const char* const scope = parts.end + 2;
    const bool scoped = follows(parts.end, "__", state) && begins_scope(scope, state);
    print_name(parts, scoped ? scope : nullptr, state);
    return parts.end;
}

// A name as an operand ends at the first "__". It has no class to construct.
const char* operand_name(const char* at, grammar_state* state) {
    const name_parts parts = find_name(at, name_place::operand, state);
    print_name(parts, nullptr, state);
    return parts.end;
}

// A qualified name where no type is called for: it is a level of its own.
const char* scope_name(const char* at, class_options options, grammar_state* state) {
    const nesting level(state);
    return qualified_name(at, options, state);
}

// qualified := "Q" count [ "_" ] { component }
// A name without the "Q" is a single component.
const char* qualified_name(const char* at, class_options options, grammar_state* state) {
    std::uint64_t count = 1;
    const bool qualified = peek_char(at, state) == 'Q';
    if (qualified) {
        at = read_number(at + 1, &count, state);
        if (peek_char(at, state) == '\0') {
            report_bad_name(state);
            return at;
        }
        at += *at == '_' ? 1 : 0;
    }
    for (; count != 0 && state->error_seen == 0; --count) {
        const bool last = count == 1;
        const silence silent(state, options.last_component_only && !last);
        if (last && options.destructor) {
            emit_char('~', state);
        }
        at = component(at, last ? options : class_options{}, state);
        if (!last) {
            emit_text("::", state);
        }
    }
    return at;
}

// simple := length run
// Silently it may be stepped over: whoever prints it looks inside.
const char* simple_name(const char* at, class_options options, grammar_state* state) {
    std::uint64_t length = 0;
    const char* saved_end = nullptr;
    at = read_length(at, &length, &saved_end, state);
    if (state->error_seen == 0) {
        const char* const end = state->input_end;
        if (looks_inside(state)) {
            at = run_name(at, run_kind::one_name, options, state);
            if (at != end) {
                report_bad_name(state);
            }
        }
        at = end;
    }
    state->input_end = saved_end;
    return at;
}

// The operand of "__vtbl__": a class, then the classes that its table lies within.
const char* table_classes(const char* at, grammar_state* state) {
    while (state->error_seen == 0) {
        if (peek_char(at, state) == 'Q') {
            at = scope_name(at, {}, state);
        } else {
            at = table_run(at, state);
        }
        if (follows(at, "__A", state)) {
            emit_text(" (ambiguous)", state);
            at += 3;
        }
        if (!follows(at, "__", state)) {
            break;
        }
        emit_text(" in ", state);
        at += 2;
    }
    return at;
}

}  // namespace scheme0
