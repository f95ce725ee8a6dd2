// Where the text goes: the buffer, the counting past its end, the ways to print, silence.
// Both schemes stand on it. The record and the fields in it have fixed names, and so have
// emit_char, emit_text and emit_number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Both schemes' states begin with these fields.
struct output_state {
    char* out_buf = nullptr;           // the caller's buffer
    std::uint64_t out_len = 0;         // characters emitted so far, overflow included
    std::uint64_t out_size = 0;        // capacity of out_buf in bytes, the NUL included
    int error_seen = 0;                // set by the first error in the name
    int overflowed = 0;                // set when a character no longer fits
    std::uint64_t suppress_depth = 0;  // text is written only while this is 0
};

// Texts are copied in steps of this many bytes where both sides have room for one more:
// names differ in length from one to the next, and asking for it costs more than copying.
inline constexpr std::size_t copy_step = 32;

// In two halves, each of which the compiler keeps in a register.
inline void copy_one_step(char* to, const char* from) {
    using half = char __attribute__((vector_size(copy_step / 2)));
    half low;
    half high;
    std::memcpy(&low, from, sizeof low);
    std::memcpy(&high, from + sizeof low, sizeof high);
    std::memcpy(to, &low, sizeof low);
    std::memcpy(to + sizeof low, &high, sizeof high);
}

// Touches less than a step behind the text on either side. `to` may lie behind `from` in
// the same text.
inline void copy_in_steps(char* to, const char* from, std::size_t length) {
    copy_one_step(to, from);
    if (length > copy_step) [[unlikely]] {
        for (std::size_t done = copy_step; done < length; done += copy_step) {
            copy_one_step(to + done, from + done);
        }
    }
}

// Copies two blocks of `block` bytes that together cover the text.
template <std::size_t block>
inline void copy_ends(char* to, const char* from, std::size_t length) {
    struct bytes {
        char byte[block];
    };
    bytes head;
    bytes tail;
    std::memcpy(&head, from, block);
    std::memcpy(&tail, from + length - block, block);
    std::memcpy(to, &head, block);
    std::memcpy(to + length - block, &tail, block);
}

// Copies a text and touches nothing beside it.
inline void copy_text(char* to, const char* from, std::size_t length) {
    if (length >= 8) {
        if (length <= 16) {
            copy_ends<8>(to, from, length);
        } else if (length <= 32) {
            copy_ends<16>(to, from, length);
        } else {
            std::memcpy(to, from, length);
        }
    } else if (length >= 4) {
        copy_ends<4>(to, from, length);
    } else if (length != 0) {
        to[0] = from[0];
        to[length / 2] = from[length / 2];
        to[length - 1] = from[length - 1];
    }
}

// emit_text where the buffer's end may be in the way: what fits is stored, all of it is
// counted, and a buffer that is too small ends in a NUL at its last byte.
void emit_at_end(std::string_view text, output_state* state);
void emit_char_at_end(char character, output_state* state);

// Appends a text: nothing while output is suppressed; past the buffer's room it is counted
// but not stored.
inline void emit_text(std::string_view text, output_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    // Once the buffer has overflowed this never holds again.
    if (state->out_len + text.size() < state->out_size) {
        copy_text(state->out_buf + state->out_len, text.data(), text.size());
        state->out_len += text.size();
    } else [[unlikely]] {
        emit_at_end(text, state);
    }
}

// emit_text for a text behind which a step of copying may be read.
inline void emit_in_steps(std::string_view text, output_state* state) {
    if (state->suppress_depth == 0 && state->out_len + text.size() + copy_step < state->out_size) {
        copy_in_steps(state->out_buf + state->out_len, text.data(), text.size());
        state->out_len += text.size();
    } else [[unlikely]] {
        emit_text(text, state);
    }
}

// A text of a table, with room for a step of copying.
struct short_text {
    template <std::size_t size>
    constexpr short_text(const char (&text)[size]) : length(size - 1) {
        static_assert(size <= copy_step);
        for (std::size_t i = 0; i < size; ++i) {
            bytes[i] = text[i];
        }
    }
    char bytes[copy_step] = {};
    std::size_t length;
};

inline void emit_short(const short_text& text, output_state* state) {
    emit_in_steps({text.bytes, text.length}, state);
}

inline void emit_char(char character, output_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    if (state->out_len + 1 < state->out_size) {
        state->out_buf[state->out_len++] = character;
    } else [[unlikely]] {
        emit_char_at_end(character, state);
    }
}

// Appends a number in decimal ("%lu"), and a signed one ("%ld").
void emit_number(std::uint64_t value, output_state* state);
void emit_signed(std::int64_t value, output_state* state);

// Output is off for as long as it lives. An error's own step stays: the count goes up and
// down in pairs.
class silence {
  public:
    explicit silence(output_state* state, bool on = true) : state_(state), by_(on ? 1 : 0) {
        state->suppress_depth += by_;
    }
    ~silence() { state_->suppress_depth -= by_; }
    silence(const silence&) = delete;
    silence& operator=(const silence&) = delete;

  private:
    output_state* state_;
    std::uint64_t by_;
};
