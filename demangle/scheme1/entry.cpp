// The entry of the Itanium ABI decoder: the attempts at a name and the results. Called
// by the dispatcher of decode_id.h.
//
// A function's return type is encoded behind its name and printed in front of it.
// The order of the text asks for two passes over the name, one for the return type
// and one for the rest. A name that is well formed and fits the buffer is decoded
// in a single pass instead, and the return type moved in front of the name. Where
// that shows, after an error or when the buffer was too small for the move, the
// name is decoded once more in the order of the text.
#include <array>
#include <charconv>
#include <cstdlib>
#include <memory>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "demangle/scheme1/state.h"

void report_bad_name(eabi_decode_state* state) {
    if (state->error_seen == 0) {
        state->error_seen = 1;
        ++state->suppress_depth;
        ++state->no_record_depth;
    }
}

void eabi_put_number(std::int64_t value, eabi_decode_state* state) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    emit_bytes(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()), state);
}

const char* eabi_number(const char* at, std::uint64_t* value, eabi_decode_state* state) {
    *value = 0;
    if (!eabi_is_digit(*at)) {
        report_bad_name(state);
        return at;
    }
    do {
        *value = *value * 10 + static_cast<std::uint64_t>(*at - '0');
        ++at;
    } while (eabi_is_digit(*at));
    return at;
}

const char* eabi_ordinal(const char* at, std::int64_t* number, eabi_decode_state* state) {
    *number = 1;
    if (*at != '_') {
        std::uint64_t value = 0;
        at = eabi_number(at, &value, state);
        *number = static_cast<std::int64_t>(value + 2);
    }
    return eabi_require(at, '_', state);
}

static void free_table(eabi_decode_state* state) {
    if (state->subst_table != state->first_entries) {
        std::free(state->subst_table);
    }
    state->subst_table = nullptr;
}

// The table starts in the state itself and moves to the heap when it outgrows that.
static void use_first_entries(eabi_decode_state* state) {
    state->subst_table = state->first_entries;
    state->subst_capacity = std::size(state->first_entries);
}

// Puts the state back to where a call starts, on the same buffer and input. The steps
// that are left are all that the attempts at a name have together.
static void restart(eabi_decode_state* state) {
    free_table(state);
    state->out_len = 0;
    state->error_seen = 0;
    state->overflowed = 0;
    state->suppress_depth = 0;
    state->no_record_depth = 0;
    state->conversion_seen = 0;
    state->is_subobject = 0;
    state->subst_count = 0;
    use_first_entries(state);
    state->depth = 0;
    state->parentheses = 0;
    state->greater_seen = false;
    state->lambda_flag = 0;
    state->rotation_missed = false;
    state->skipped_in_use = false;
    state->looked_in_use = false;
    state->doubts = 0;
}

// One attempt at the whole name; gives the position where decoding stopped.
static const char* attempt(bool decorated, eabi_decode_state* state) {
    const char* at = state->input;
    if (state->input_length > eabi_max_input) {
        report_bad_name(state);
        return at;
    }
    if (at[0] != '_' || at[1] != 'Z') {
        return eabi_whole_type(at, true, state);
    }
    at = eabi_encoding(at + 2, decorated, state);
    if (*at == '.' && state->extended) {
        eabi_put(" [clone ", state);
        eabi_put(at, static_cast<std::size_t>(state->input_end - at), state);
        eabi_put(']', state);
        at = state->input_end;
    }
    if (state->out_len > eabi_max_text) {
        report_bad_name(state);
    }
    return at;
}

// The second attempt, where the first one met a conversion operator and failed: its type
// may have to take the template arguments that were given to the operator.
static const char* retry(const char* end, bool decorated, eabi_decode_state* state) {
    if (state->error_seen != 0 && state->conversion_seen != 0) {
        restart(state);
        state->retrying = 1;
        end = attempt(decorated, state);
    }
    return end;
}

// Whether the name was read to its end without an error.
static bool is_read(const char* end, const eabi_decode_state* state) {
    return state->error_seen == 0 && *end == '\0';
}

// The attempts behind a first one that failed. A conversion operator may have taken the
// wrong template arguments; then readings that were in doubt are tried the other way.
// When all of them fail it is the first reading that counts.
[[gnu::noinline]] static const char* further_attempts(const char* end, bool decorated,
                                                      eabi_decode_state* state) {
    end = retry(end, decorated, state);
    const unsigned doubts = state->doubts;
    const auto read_again = [&](unsigned second_readings) {
        state->retrying = 0;
        state->second_readings = second_readings;
        restart(state);
        end = retry(attempt(decorated, state), decorated, state);
    };
    for (unsigned other = 1; !is_read(end, state) && other <= doubts; ++other) {
        if ((other & ~doubts) == 0) {
            read_again(other);
        }
    }
    if (doubts != 0 && !is_read(end, state)) {
        read_again(0);
    }
    return end;
}

decode_result eabi_decode(const char* name, std::size_t length, char* buffer,
                          std::size_t buffer_size, bool decorated) {
    eabi_decode_state state;
    state.out_buf = buffer;
    state.out_size = buffer_size;
    state.input = name;
    state.input_length = length;
    state.input_end = name + length;
    state.extended = decode_extended_names != 0;
    use_first_entries(&state);

    const char* end = attempt(decorated, &state);
    if (!is_read(end, &state)) {
        end = further_attempts(end, decorated, &state);
    }
    if (state.error_seen != 0) {
        // What is left in the buffer is what the two passes print before the error.
        state.two_passes = true;
        state.steps_left = eabi_max_steps;
        restart(&state);
        end = attempt(decorated, &state);
        report_bad_name(&state);
    } else if (state.overflowed != 0 && state.rotation_missed) {
        // The text is known to be good, and how long it is: only its beginning is
        // still to be put in order.
        const std::uint64_t text_length = state.out_len;
        state.two_passes = true;
        state.steps_left = eabi_max_steps;
        restart(&state);
        attempt(decorated, &state);
        state.out_len = text_length;
        state.overflowed = 1;
    }

    if (state.overflowed != 0) {
        state.error_seen = 1;
    } else {
        if (buffer_size != 0) {
            buffer[state.out_len] = '\0';
        }
        if (*end != '\0') {
            report_bad_name(&state);
        }
    }
    free_table(&state);
    return {state.error_seen, state.overflowed, state.out_len + 1};
}

void decode_identifier_eabi(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                            int* overflow_out, std::size_t* needed_size_out, int decorated) {
    const decode_result result =
        eabi_decode(name, std::strlen(name), buffer, buffer_size, decorated != 0);
    *error_out = result.error;
    *overflow_out = result.overflow;
    *needed_size_out = result.needed_size;
}

bool decode_is_ia64_subobject(const char* name) {
    if (name[0] != '_' || name[1] != 'Z') {
        return false;
    }
    const std::size_t size = std::strlen(name) + 1;
    const auto copy = std::make_unique<char[]>(size);  // NOLINT(modernize-avoid-c-arrays)
    std::memcpy(copy.get(), name, size);
    eabi_decode_state state;
    state.input = copy.get();
    state.input_length = size - 1;
    state.input_end = copy.get() + size - 1;
    state.extended = decode_extended_names != 0;
    use_first_entries(&state);
    eabi_encoding(copy.get() + 2, false, &state);
    free_table(&state);
    return state.is_subobject != 0;
}
