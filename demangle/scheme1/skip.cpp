// Skipping, and the memory of what was skipped.
#include "demangle/scheme1/skip.h"

#include <algorithm>
#include <utility>

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

static std::uint32_t key_of(const char* at, const eabi_decode_state* state) {
    return static_cast<std::uint32_t>(at - state->input) + 1;
}

const skip_record* recall_skipped(const char* at, const eabi_decode_state* state) {
    if (!state->skipped_in_use) {
        return nullptr;
    }
    const std::uint32_t key = key_of(at, state);
    const skip_record* const found = &state->skipped[key % std::size(state->skipped)];
    return found->start == key ? found : nullptr;
}

const skip_record* find_skipped(const char* at, const eabi_decode_state* state) {
    return state->no_record_depth == 0 ? nullptr : recall_skipped(at, state);
}

void remember_skipped(const char* at, const char* end, bool flag, eabi_decode_state* state) {
    // What is soon read again would only take the place of something longer.
    constexpr std::ptrdiff_t worth_keeping = 16;
    if (state->error_seen != 0 || end - at < worth_keeping) {
        return;
    }
    if (!state->skipped_in_use) {
        std::fill(std::begin(state->skipped), std::end(state->skipped), skip_record{});
        state->skipped_in_use = true;
    }
    const std::uint32_t key = key_of(at, state);
    state->skipped[key % std::size(state->skipped)] = {
        key, static_cast<std::uint32_t>(end - state->input), flag};
}

const char* skip_type(const char* at, eabi_decode_state* state) {
    if (const skip_record* const found = find_skipped(at, state)) {
        return state->input + found->end;
    }
    const bool greater_seen = state->greater_seen;
    const silence silent(state);
    const char* const end = eabi_type(at, 0, true, state);
    state->greater_seen = greater_seen;
    remember_skipped(at, end, false, state);
    return end;
}

const char* skip_expression(const char* at, bool* shows_greater, eabi_decode_state* state) {
    if (const skip_record* const found = find_skipped(at, state)) {
        *shows_greater = found->flag;
        return state->input + found->end;
    }
    const std::uint32_t parentheses = std::exchange(state->parentheses, 0);
    const bool greater_seen = std::exchange(state->greater_seen, false);
    const silence silent(state);
    const char* const end = expression(at, state);
    *shows_greater = std::exchange(state->greater_seen, greater_seen);
    state->parentheses = parentheses;
    remember_skipped(at, end, *shows_greater, state);
    return end;
}

}  // namespace scheme1
