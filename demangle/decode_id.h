// The entry points of the demangler: turn a mangled C++ linker symbol back into a
// readable declaration, under one of two mangling schemes.
#pragma once

#include <cstddef>

// The mangling scheme: 0 the tool chain's own ("f__1AFi"), 1 the Itanium C++ ABI
// ("_ZN1A1fEi"). Process-wide, read without a lock by every decoding call and never
// written by the library: set it once, before decoding starts. Any other value makes
// a decoding call end the process through dec_die.
extern int decode_mangle_scheme;

// Opens, when not 0, what newer compilers write beyond scheme 1's fixed tables.
// Process-wide, initially 0, read like decode_mangle_scheme.
extern int decode_extended_names;

// Decodes `name` in full (special names, signatures) into `buffer`, which holds
// `buffer_size` bytes and always ends up NUL-terminated unless its size is 0.
//   *error_out        1 when the name could not be decoded or the buffer was too small
//   *overflow_out     1 when the buffer was too small
//   *needed_size_out  the size in bytes that the text needs, its NUL included
// Both flags set ask for a second call with a buffer of the needed size; the error
// flag alone says that the name is not a valid mangled name.
void decode_to_decorid(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                       int* overflow_out, std::size_t* needed_size_out);

// The same for the plain name only, without its signature.
void decode_to_origid(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                      int* overflow_out, std::size_t* needed_size_out);

// The two in one: `decorated` 1 for the full form, 0 for the plain name.
void decode_by_scheme(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                      int* overflow_out, std::size_t* needed_size_out, int decorated);

// The demangled text of `name`, or `name` itself when it is not a valid mangled name
// or decodes to nothing. The result lies in a buffer that belongs to the calling
// thread and is overwritten by that thread's next call, which may be given it as the name;
// the caller does not free it.
char* decode_id(const char* name, int decorated);

// 1 when `name` looks mangled under the selected scheme, else 0: "_Z" in front for
// scheme 1; for any other value a leading underscore and a "__" anywhere.
int probably_mangled_symbol_name(const char* name);

// Writes "DECODE>> internal error: MESSAGE" to standard error and exits with status 1.
[[noreturn]] void dec_die(const char* message);
