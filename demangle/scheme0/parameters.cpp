// Scheme 0's lists of parameters, and the parameters that repeat earlier ones.
#include "demangle/scheme0/grammar.h"
#include "demangle/scheme0/skip.h"

namespace scheme0 {

// "T" index | "N" digit index, index := digit | digit digits "_"
static const char* parameter_index(const char* at, std::uint64_t* index, grammar_state* state) {
    const char* end = at;
    while (is_digit(peek_char(end, state))) {
        ++end;
    }
    if (end - at >= 2 && peek_char(end, state) == '_') {
        read_number(at, index, state);
        return end + 1;
    }
    *index = 0;
    if (end == at) {
        report_bad_name(state);
        return at;
    }
    *index = static_cast<std::uint64_t>(*at - '0');
    return at + 1;
}

namespace {

// The parameters of one list that have been met so far.
struct open_list {
    std::uint32_t first = 0;  // in the state's array
    std::uint64_t count = 0;
};

}  // namespace

static void note_parameter(std::uint32_t offset, open_list* list, grammar_state* state) {
    if (list->count + list->first < state->parameters.size()) {
        state->parameters[list->first + list->count] = offset;
        ++state->parameter_count;
    }
    ++list->count;
}

static void emit_comma(const open_list& list, grammar_state* state) {
    if (list.count != 0) {
        emit_text(", ", state);
    }
}

// A parameter that repeats an earlier one prints it again from its own letters.
static const char* repeated_parameters(const char* at, open_list* list, grammar_state* state) {
    std::uint64_t times = 1;
    if (*at == 'N') {
        ++at;
        if (!is_digit(peek_char(at, state))) {
            report_bad_name(state);
            return at;
        }
        times = static_cast<std::uint64_t>(*at - '0');
    }
    std::uint64_t index = 0;
    at = parameter_index(at + 1, &index, state);
    if (index == 0 || index > list->count || list->first + index > state->parameters.size()) {
        report_bad_name(state);
        return at;
    }
    const std::uint32_t offset = state->parameters[list->first + index - 1];
    for (; times != 0 && state->error_seen == 0; --times) {
        emit_comma(*list, state);
        if (state->suppress_depth == 0) {
            whole_type(state->base + offset, state);
        }
        note_parameter(offset, list, state);
    }
    return at;
}

// params := "v" | { type | "T" index | "N" digit index } [ "e" ]
// Ends before a "_" or at the end of the input; prints no parentheses.
const char* parameter_list(const char* at, grammar_state* state) {
    if (peek_char(at, state) == 'v') {
        return at + 1;
    }
    open_list list{state->parameter_count};
    while (state->error_seen == 0) {
        const char letter = peek_char(at, state);
        if (letter == '\0' || letter == '_') {
            break;
        }
        if (letter == 'e') {
            emit_comma(list, state);
            emit_text("...", state);
            ++at;
            break;
        }
        if (letter == 'T' || letter == 'N') {
            at = repeated_parameters(at, &list, state);
            continue;
        }
        emit_comma(list, state);
        const auto offset = static_cast<std::uint32_t>(at - state->base);
        at = whole_type(at, state);
        note_parameter(offset, &list, state);
    }
    state->parameter_count = list.first;
    return at;
}

const char* skip_parameters(const char* at, grammar_state* state) {
    return skip_once(at, state, parameter_list);
}

}  // namespace scheme0
