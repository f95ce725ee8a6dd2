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

// A source name with a "::" in front when `scoped` is set, short enough to stand wherever
// names are frequent.
inline const char* plain_source_name(const char* at, bool scoped, eabi_decode_state* state) {
    const char* text = at + 1;
    auto length = static_cast<std::size_t>(*at - '0');
    if (is_digit(*text)) {
        length = length * 10 + static_cast<std::size_t>(*text - '0');
        ++text;
    }
    // Not for a third digit, no length, what may be an unnamed namespace, and where
    // the text is not printed in full.
    if (*text == '_' || is_digit(*text) ||
        length - 1 >= static_cast<std::size_t>(state->input_end - text) ||
        state->suppress_depth != 0 || state->out_len + length + 2 >= state->out_size) {
        if (scoped) {
            emit_text("::", state);
        }
        return source_name(at, state);
    }
    char* const to = state->out_buf + state->out_len;
    const std::size_t scope = scoped ? 2 : 0;
    if (scoped) {
        to[0] = ':';
        to[1] = ':';
    }
    copy_text(to + scope, text, length);
    state->out_len += length + scope;
    return text + length;
}

// Whether the component's text ends in "<", so that a blank stands in front of its argument
// list at `args`.
bool ends_in_less(const last_component& component, const char* args,
                  const eabi_decode_state* state);

// The same, told by the text where it stands in the buffer.
inline bool wants_blank(const last_component& component, const char* args,
                        const eabi_decode_state* state) {
    if (state->overflowed == 0 &&
        (state->out_len == 0 || state->out_buf[state->out_len - 1] != '<')) {
        return false;
    }
    return ends_in_less(component, args, state);
}

}  // namespace scheme1
