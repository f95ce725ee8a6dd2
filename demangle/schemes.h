// The one call into any of the mangling schemes, on which the entry points of decode_id.h
// stand. The list of schemes is in decode_id.cpp.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

struct decode_options {
    int scheme = 0;         // a scheme's number
    bool extended = false;  // what newer compilers write beyond the fixed tables, too
    bool decorated = true;  // the signature, too
};

struct decode_result {
    bool error = false;           // the name is bad, or the buffer too small
    bool overflow = false;        // the buffer is too small
    std::size_t needed_size = 0;  // in bytes, that a call with the same name takes
    std::size_t text_length = 0;  // of the whole text, or of what stands before an error
};

// Decodes `name`, behind whose last character a NUL stands, into `buffer`, which ends up
// NUL-terminated unless it is empty. A number that is no scheme's ends the process.
decode_result decode(std::string_view name, const decode_options& options, std::span<char> buffer);

// A row of the list: how a scheme does it.
struct scheme {
    int number;                               // that decode_mangle_scheme selects it by
    bool (*looks_mangled)(const char* name);  // whether it is worth decoding
    decode_result (*decode)(std::string_view name, const decode_options& options,
                            std::span<char> buffer);
};

// Hands a result to a caller of the public functions.
inline void store_result(const decode_result& result, int* error_out, int* overflow_out,
                         std::size_t* needed_size_out) {
    *error_out = result.error ? 1 : 0;
    *overflow_out = result.overflow ? 1 : 0;
    *needed_size_out = result.needed_size;
}
