// The input and output primitives of the decoding state.
#include "demangle/output.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

static bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

void emit_char(char character, output_state* state) {
    emit_bytes(&character, 1, state);
}

void emit_bytes(const char* text, std::size_t length, output_state* state) {
    if (state->suppress_depth != 0 || length == 0) {
        return;
    }
    if (state->overflowed == 0) {
        // One byte of the buffer is kept for the final NUL.
        const std::uint64_t room =
            state->out_size > state->out_len ? state->out_size - state->out_len - 1 : 0;
        const std::size_t stored = std::min<std::uint64_t>(room, length);
        if (stored != 0) {
            std::memcpy(state->out_buf + state->out_len, text, stored);
        }
        if (stored < length) {
            state->overflowed = 1;
            if (state->out_size != 0) {
                state->out_buf[state->out_size - 1] = '\0';
            }
        }
    }
    state->out_len += length;
}

void emit_text(const char* text, output_state* state) {
    emit_bytes(text, std::strlen(text), state);
}

void emit_number(std::uint64_t value, output_state* state) {
    std::array<char, 20> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    emit_bytes(digits.data(), static_cast<std::size_t>(end - digits.data()), state);
}

void report_bad_name(decode_state* state) {
    if (state->error_seen == 0) {
        state->error_seen = 1;
        ++state->suppress_depth;
    }
}

const char* read_number(const char* at, std::uint64_t* value, decode_state* state) {
    *value = 0;
    if (!is_digit(peek_char(at, state))) {
        report_bad_name(state);
        return at;
    }
    for (; is_digit(peek_char(at, state)); ++at) {
        *value = *value * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at;
}

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
