// The entry points: the scheme switch, the two that fill a caller's buffer, and
// the one that manages a buffer of its own for each thread.
#include "demangle/decode_id.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "demangle/decode.h"
#include "demangle/scheme1/state.h"

int decode_mangle_scheme = 0;
int decode_extended_names = 0;

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
    decode_result result;
    switch (decode_mangle_scheme) {
        case 1:
            result = eabi_decode(copy, length, buffer, buffer_size, decorated != 0);
            break;
        case 0:
            decode_identifier(copy, buffer, buffer_size, &result.error, &result.overflow,
                              &result.needed_size, decorated);
            break;
        default:
            dec_die("Invalid mangling scheme selected");
    }
    std::free(copy);
    return result;
}

void decode_by_scheme(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                      int* overflow_out, std::size_t* needed_size_out, int decorated) {
    const decode_result result =
        decode_copy(name, std::strlen(name), buffer, buffer_size, decorated);
    *error_out = result.error;
    *overflow_out = result.overflow;
    *needed_size_out = result.needed_size;
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
    const int printed = decorated != 0 ? 1 : 0;
    decode_result result = decode_copy(copy, length, result_buffer, result_capacity, printed);
    while (result.error != 0 && result.overflow != 0) {
        grow_result(result.needed_size);
        result = decode_copy(copy, length, result_buffer, result_capacity, printed);
    }
    std::free(copy);
    if (result.error == 0 && *result_buffer != '\0') {
        return result_buffer;
    }
    // The name is not a mangled one, or stands for nothing: it reads as it is.
    if (length >= result_capacity) {
        grow_result(length + 1);
    }
    std::memcpy(result_buffer, name, length + 1);
    return result_buffer;
}

int probably_mangled_symbol_name(const char* name) {
    if (decode_mangle_scheme == 1) {
        return name[0] == '_' && name[1] == 'Z' ? 1 : 0;
    }
    return name[0] == '_' && std::strstr(name, "__") != nullptr ? 1 : 0;
}

void dec_die(const char* message) {
    std::fprintf(stderr, "DECODE>> internal error: %s\n", message);
    std::exit(1);
}
