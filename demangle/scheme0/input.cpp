// Reading bounded input: the names whose length stands in front of them.
#include "demangle/scheme0/state.h"

const char* read_length(const char* at, std::uint64_t* value, const char** saved_end,
                        decode_state* state) {
    *saved_end = state->input_end;
    *value = 0;
    if (!is_digit(peek_char(at, state))) {
        report_bad_name(state);
        return at;
    }
    for (;;) {
        *value = *value * 10 + static_cast<std::uint64_t>(*at - '0');
        const auto remaining = static_cast<std::uint64_t>(state->input_end - at - 1);
        ++at;
        if (*value > remaining) {
            report_bad_name(state);
            *value = remaining;
            return at;
        }
        if (!is_digit(peek_char(at, state))) {
            state->input_end = at + *value;
            return at;
        }
    }
}

bool scheme0::follows(const char* at, std::string_view text, const grammar_state* state) {
    return at <= state->input_end &&
           std::string_view(at, static_cast<std::size_t>(state->input_end - at)).starts_with(text);
}
