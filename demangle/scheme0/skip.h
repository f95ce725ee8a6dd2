// Stepping over what scheme 0 prints later.
#pragma once

#include "demangle/scheme0/state.h"

namespace scheme0 {

// Steps over what `read` reads, once for each position: what precedes a position decides
// which `read` it is met with.
template <typename Read>
const char* skip_once(const char* at, grammar_state* state, Read read) {
    const std::size_t slot = static_cast<std::size_t>(at - state->base) % state->skips.size();
    grammar_state::skipped& entry = state->skips[slot];
    if (!state->skips_filled[slot] || entry.from != at) {
        const silence silent(state);
        const std::uint64_t parentheses = state->parentheses;
        const bool greater_seen = state->greater_seen;
        state->parentheses = 0;
        state->greater_seen = false;
        const char* const end = read(at, state);
        // The entry may have served another position in the meantime.
        entry = {at, end, state->greater_seen};
        state->skips_filled[slot] = state->error_seen == 0;
        state->parentheses = parentheses;
        state->greater_seen = greater_seen;
    }
    if (entry.greater_seen && state->parentheses == 0) {
        state->greater_seen = true;
    }
    return entry.to;
}

}  // namespace scheme0
