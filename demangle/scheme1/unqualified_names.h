// The components of scheme 1's names: source names, operators, constructors, lambdas and
// other unnamed types, structured bindings, with their ABI tags and modules.
#pragma once

#include "demangle/scheme1/input.h"
#include "demangle/scheme1/substitutions.h"

namespace scheme1 {

// On entry component->last_name is the class that a constructor repeats; on exit the
// component is this one.
const char* unqualified_name(const char* at, last_component* component, eabi_decode_state* state);

const char* source_name(const char* at, eabi_decode_state* state);

// { "B" source-name }
const char* abi_tags(const char* at, eabi_decode_state* state);

// A kind of constructors or destructors, and what stands behind a name of that kind.
struct constructor_kind {
    char kind;
    std::string_view suffix;
    names_mode mode;
};

// Null for a letter that is none.
const constructor_kind* find_constructor_kind(char kind, const eabi_decode_state* state);

// A source name that may be printed as it stands, in steps and behind a "::", as nearly all
// may: of one or two digits, without ABI tags, no unnamed namespace. Null where it is another.
// The first digit is not 0.
struct plain_name {
    const char* text = nullptr;
    std::size_t length = 0;
};

inline plain_name read_plain_name(const char* at, const eabi_decode_state* state) {
    const unsigned second = static_cast<unsigned char>(at[1]) - static_cast<unsigned>('0');
    const std::size_t two_digits = second < 10 ? 1 : 0;  // no branch: names vary in length
    std::size_t length = static_cast<unsigned char>(at[0]) - std::size_t{'0'};
    length += (length * 9 + second) & (0 - two_digits);
    const char* const text = at + 1 + two_digits;
    const bool plain = static_cast<std::ptrdiff_t>(length) <= state->input_end - text &&
                       text[length] != 'B' && static_cast<unsigned char>(text[0]) > '9' &&
                       (text[0] != '_' || text[1] != 'G') && state->suppress_depth == 0 &&
                       state->out_len + length + copy_step + 2 < state->out_size;
    return {plain ? text : nullptr, length};
}

// Prints it behind the first `scope` letters of "::".
inline void emit_plain_name(plain_name name, std::size_t scope, eabi_decode_state* state) {
    char* const to = state->out_buf + state->out_len;
    to[0] = ':';
    to[1] = ':';
    if (name.length <= copy_step) [[likely]] {
        // No branch: every name gets to its end somewhere.
        const input_part& part = state->parts[name.text >= state->parts[1].start ? 1 : 0];
        copy_one_step(to + scope, part.bytes + (name.text - part.start));
    } else {
        std::memcpy(to + scope, name.text, name.length);
    }
    state->out_len += name.length + scope;
}

// Whether the component's text ends in "<".
bool ends_in_less(const last_component& component, const eabi_decode_state* state);

// The same, told by the text where it stands in the buffer: a blank is to stand between it and
// its argument list.
inline bool wants_blank(const last_component& component, const eabi_decode_state* state) {
    if (state->overflowed == 0 &&
        (state->out_len == 0 || state->out_buf[state->out_len - 1] != '<')) {
        return false;
    }
    return ends_in_less(component, state);
}

}  // namespace scheme1
