// The entry points: the list of schemes and the switch between them, the functions that
// fill a caller's buffer, and the one that manages a buffer of its own for each thread.
#include "demangle/decode_id.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "demangle/scheme0/entry.h"
#include "demangle/scheme1/entry.h"

int decode_mangle_scheme = 0;
int decode_extended_names = 0;

// The list of schemes. What is asked of a number that is none of theirs, short of decoding,
// the first one answers.
static constexpr scheme schemes[] = {
    {0, scheme0::looks_mangled, scheme0::decode},
    {1, scheme1::looks_mangled, scheme1::decode},
};

static const scheme* find_scheme(int number) {
    const auto* const row = std::ranges::find(schemes, number, &scheme::number);
    return row == std::end(schemes) ? nullptr : row;
}

decode_result decode(std::string_view name, const decode_options& options, std::span<char> buffer) {
    const scheme* const selected = find_scheme(options.scheme);
    if (selected == nullptr) {
        dec_die("Invalid mangling scheme selected");
    }
    return selected->decode(name, options, buffer);
}

// The result of decode_id, reused by every call on its thread and never freed.
static thread_local std::size_t result_capacity = 512;
static thread_local char* result_buffer = nullptr;

static char* private_copy(const char* name, std::size_t length) {
    return static_cast<char*>(std::memcpy(std::malloc(length + 1), name, length + 1));
}

// Decodes a copy of the `length` characters of `name`: a decoder is never given the
// caller's string.
static decode_result decode_copy(const char* name, std::size_t length, char* buffer,
                                 std::size_t buffer_size, int decorated) {
    char* const copy = private_copy(name, length);
    const decode_result result = decode({copy, length},
                                        {.scheme = decode_mangle_scheme,
                                         .extended = decode_extended_names != 0,
                                         .decorated = decorated != 0},
                                        {buffer, buffer_size});
    std::free(copy);
    return result;
}

void decode_by_scheme(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                      int* overflow_out, std::size_t* needed_size_out, int decorated) {
    store_result(decode_copy(name, std::strlen(name), buffer, buffer_size, decorated), error_out,
                 overflow_out, needed_size_out);
}

void decode_to_decorid(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                       int* overflow_out, std::size_t* needed_size_out) {
    decode_by_scheme(name, buffer, buffer_size, error_out, overflow_out, needed_size_out, 1);
}

void decode_to_origid(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                      int* overflow_out, std::size_t* needed_size_out) {
    decode_by_scheme(name, buffer, buffer_size, error_out, overflow_out, needed_size_out, 0);
}

static void grow_result(std::size_t capacity) {
    result_capacity = capacity;
    result_buffer = static_cast<char*>(std::realloc(result_buffer, capacity));
}

char* decode_id(const char* name, int decorated) {
    const std::size_t length = std::strlen(name);
    char* const copy = private_copy(name, length);
    if (result_buffer == nullptr) {
        result_buffer = static_cast<char*>(std::malloc(result_capacity));
    }
    decode_result result = decode_copy(copy, length, result_buffer, result_capacity, decorated);
    while (result.error && result.overflow) {
        grow_result(result.needed_size);
        result = decode_copy(copy, length, result_buffer, result_capacity, decorated);
    }
    if (result.error || *result_buffer == '\0') {
        // The name is not a mangled one, or stands for nothing: it reads as it is. What the
        // caller gave may be an earlier result, whose buffer is used already.
        if (length >= result_capacity) {
            grow_result(length + 1);
        }
        std::memcpy(result_buffer, copy, length + 1);
    }
    std::free(copy);
    return result_buffer;
}

int probably_mangled_symbol_name(const char* name) {
    const scheme* const selected = find_scheme(decode_mangle_scheme);
    return (selected != nullptr ? selected : schemes)->looks_mangled(name) ? 1 : 0;
}

void dec_die(const char* message) {
    std::fprintf(stderr, "DECODE>> internal error: %s\n", message);
    std::exit(1);
}
