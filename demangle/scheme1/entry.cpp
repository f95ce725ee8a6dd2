// The entry of scheme 1: the attempts at a name and the results.
//
// A function's return type is encoded behind its name and printed in front of it.
// The order of the text asks for two passes over the name, one for the return type
// and one for the rest. A name that is well formed and fits the buffer is decoded
// in a single pass instead, and the return type moved in front of the name. Where
// that shows, after an error or when the buffer was too small for the move, the
// name is decoded once more in the order of the text.
#include "demangle/scheme1/entry.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "demangle/scheme1/encoding.h"
#include "demangle/scheme1/types.h"

void report_bad_name(eabi_decode_state* state) {
    if (state->error_seen == 0) {
        state->error_seen = 1;
        ++state->suppress_depth;
        ++state->no_record_depth;
    }
}

namespace scheme1 {

// The table starts in the state itself and moves to the heap when it outgrows that.
static void free_table(eabi_decode_state* state) {
    if (state->subst_table != state->first_entries) {
        std::free(state->subst_table);
    }
}

static void start_over(eabi_decode_state* state, int retrying) {
    free_table(state);
    static_cast<attempt_state&>(*state) =
        attempt_state(state->out_buf, state->out_size, retrying, state->first_entries);
}

// One attempt at the whole name; gives the position where decoding stopped.
static inline const char* attempt(bool decorated, eabi_decode_state* state) {
    const char* at = state->input;
    if (static_cast<std::uint64_t>(state->input_end - at) > longest_input) {
        report_bad_name(state);
        return at;
    }
    if (at[0] != '_' || at[1] != 'Z') {
        return whole_type(at, state);
    }
    at = eabi_encoding(at + 2, decorated, state);
    if (*at == '.' && state->extended) {
        emit_text(" [clone ", state);
        emit_text({at, static_cast<std::size_t>(state->input_end - at)}, state);
        emit_char(']', state);
        at = state->input_end;
    }
    if (state->out_len > longest_text) {
        report_bad_name(state);
    }
    return at;
}

// The second attempt, where the first one met a conversion operator and failed: its type
// may have to take the template arguments that were given to the operator.
static const char* retry(const char* end, bool decorated, eabi_decode_state* state) {
    if (state->error_seen != 0 && state->conversion_seen != 0) {
        start_over(state, 1);
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
SELDOM static const char* further_attempts(const char* end, bool decorated,
                                           eabi_decode_state* state) {
    end = retry(end, decorated, state);
    const unsigned doubts = state->doubts;
    const auto read_again = [&](unsigned second_readings) {
        state->second_readings = second_readings;
        start_over(state, 0);
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

// The last attempt, in the order of the text, with the readings that the one before had.
SELDOM static const char* in_two_passes(bool decorated, eabi_decode_state* state) {
    state->two_passes = true;
    state->steps_left = most_steps;
    start_over(state, state->retrying);
    return attempt(decorated, state);
}

bool looks_mangled(const char* name) {
    return name[0] == '_' && name[1] == 'Z';
}

// Decodes what the state was given.
IN_PLACE static decode_result decode_name(eabi_decode_state& state, bool decorated,
                                          std::span<char> buffer) {
    const char* end = attempt(decorated, &state);
    if (!is_read(end, &state)) {
        end = further_attempts(end, decorated, &state);
    }
    if (state.error_seen != 0) {
        // What is left in the buffer is what the two passes print before the error.
        end = in_two_passes(decorated, &state);
        report_bad_name(&state);
    } else if (state.overflowed != 0 && state.rotation_missed) {
        // The text is known to be good, and how long it is: only its beginning is
        // still to be put in order.
        const std::uint64_t text_length = state.out_len;
        in_two_passes(decorated, &state);
        state.out_len = text_length;
        state.overflowed = 1;
    }

    if (state.overflowed != 0) {
        state.error_seen = 1;
    } else {
        if (!buffer.empty()) {
            buffer[state.out_len] = '\0';
        }
        if (*end != '\0') {
            report_bad_name(&state);
        }
    }
    return {state.error_seen != 0, state.overflowed != 0, state.out_len + 1, state.out_len};
}

decode_result decode(std::string_view name, const decode_options& options, std::span<char> buffer) {
    eabi_decode_state state(options.extended, buffer);
    state.give(name);
    return decode_name(state, options.decorated, buffer);
}

}  // namespace scheme1

using namespace scheme1;

IN_PLACE eabi_decode_state::eabi_decode_state(bool extended_names, std::span<char> buffer) noexcept
    : attempt_state(buffer.data(), buffer.size(), 0, first_entries), extended(extended_names) {}

IN_PLACE void eabi_decode_state::give(std::string_view name) {
    input = name.data();
    input_end = input + name.size();
    const std::size_t held = std::min(name.size(), copy_step);
    parts[0] = {input, input};
    parts[1] = {input_end - held, tail};
    if (held == copy_step) [[likely]] {
        copy_one_step(tail, input_end - copy_step);
        std::memset(tail + copy_step, 0, copy_step);
    } else {
        std::memset(tail, 0, sizeof tail);
        copy_text(tail, input, name.size());
    }
}

eabi_decode_state::~eabi_decode_state() {
    free_table(this);
}

void decode_identifier_eabi(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                            int* overflow_out, std::size_t* needed_size_out, int decorated) {
    eabi_decode_state state(decode_extended_names != 0, {buffer, buffer_size});
    state.give({name, std::strlen(name)});
    store_result(decode_name(state, decorated != 0, {buffer, buffer_size}), error_out, overflow_out,
                 needed_size_out);
}

bool decode_is_ia64_subobject(const char* name) {
    if (!looks_mangled(name)) {
        return false;
    }
    const std::size_t size = std::strlen(name) + 1;
    const auto copy = std::make_unique<char[]>(size);  // NOLINT(modernize-avoid-c-arrays)
    std::memcpy(copy.get(), name, size);
    eabi_decode_state state(decode_extended_names != 0, {});
    state.give({copy.get(), size - 1});
    eabi_encoding(state.input + 2, false, &state);
    return state.is_subobject != 0;
}
