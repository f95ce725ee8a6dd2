// The decoding state that both schemes share, and the only ways to read the
// mangled input and to write the demangled text. One state lives on the stack
// of each decoding call; the input belongs to the dispatcher, the output buffer
// to the caller.
#pragma once

#include <cstddef>
#include <cstdint>

// Where the text goes. Both schemes' states begin with these fields.
struct output_state {
    char* out_buf = nullptr;           // the caller's buffer
    std::uint64_t out_len = 0;         // characters emitted so far, overflow included
    std::uint64_t out_size = 0;        // capacity of out_buf in bytes, the NUL included
    int error_seen = 0;                // set by the first error in the name
    int overflowed = 0;                // set when a character no longer fits
    std::uint64_t suppress_depth = 0;  // text is written only while this is 0
};

// What a call gives back: whether the name is bad or the buffer too small, whether
// the buffer was too small, and the size in bytes that the text needs.
struct decode_result {
    int error = 0;
    int overflow = 0;
    std::size_t needed_size = 0;
};

// The state of a scheme-0 call.
struct decode_state : output_state {
    std::uint64_t uncompressed_len = 0;  // length of an expanded compressed name, else 0
    const char* input_end = nullptr;     // a read at or past it yields NUL
    std::uint64_t nesting_level = 0;     // depth of nested names being decoded
};

// Appends one character: nothing while output is suppressed; past the buffer's
// room it is counted but not stored, and the buffer ends in a NUL at its last byte.
void emit_char(char character, output_state* state);

// Appends `length` characters at once, with the same result as emit_char for each.
void emit_bytes(const char* text, std::size_t length, output_state* state);

// Appends a NUL-terminated text.
void emit_text(const char* text, output_state* state);

// Appends a number in decimal ("%lu").
void emit_number(std::uint64_t value, output_state* state);

// Records an error in the mangled name; the first one silences all further output.
void report_bad_name(decode_state* state);

// The byte at `at`, or NUL at and past the input's end.
inline char peek_char(const char* at, const decode_state* state) {
    return at < state->input_end ? *at : '\0';
}

// Reads a decimal number into `value` and returns the position after it. Without
// a digit: a bad name, value 0, the position unchanged. Wraps past 64 bits.
const char* read_number(const char* at, std::uint64_t* value, decode_state* state);

// Reads the decimal length in front of a name, narrows the input's end to the end
// of that name, and gives the end it had before through `saved_end`, which the
// caller puts back. A length larger than what remains is a bad name; the value is
// then what remains and the end is left alone.
const char* read_length(const char* at, std::uint64_t* value, const char** saved_end,
                        decode_state* state);
