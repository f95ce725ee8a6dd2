// Printing where the buffer ends, and numbers.
#include "demangle/output.h"

#include <algorithm>
#include <array>
#include <charconv>

void emit_at_end(std::string_view text, output_state* state) {
    if (text.empty()) {
        return;
    }
    if (state->overflowed == 0) {
        // One byte of the buffer is kept for the final NUL.
        const std::uint64_t room =
            state->out_size > state->out_len ? state->out_size - state->out_len - 1 : 0;
        const std::size_t stored = std::min<std::uint64_t>(room, text.size());
        if (stored != 0) {
            std::memcpy(state->out_buf + state->out_len, text.data(), stored);
        }
        if (stored < text.size()) {
            state->overflowed = 1;
            if (state->out_size != 0) {
                state->out_buf[state->out_size - 1] = '\0';
            }
        }
    }
    state->out_len += text.size();
}

void emit_char_at_end(char character, output_state* state) {
    emit_at_end({&character, 1}, state);
}

template <typename Number>
static void emit_decimal(Number value, output_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    std::array<char, 24> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    emit_at_end({digits.data(), static_cast<std::size_t>(end - digits.data())}, state);
}

void emit_number(std::uint64_t value, output_state* state) {
    emit_decimal(value, state);
}

void emit_signed(std::int64_t value, output_state* state) {
    emit_decimal(value, state);
}
