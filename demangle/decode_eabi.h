// Scheme 1: decodes names mangled by the Itanium C++ ABI ("_ZN1A1fEi" reads
// "A::f(int)"). The dispatcher of decode_id.h calls the decoder; tools may ask
// directly whether a symbol is a base-object constructor or destructor.
#pragma once

#include <cstddef>

// Decodes `name` into `buffer`, which holds `buffer_size` bytes and ends up
// NUL-terminated unless its size is 0. A name that does not begin with "_Z" is
// decoded as a type: "i" gives "int".
//   *error_out        1 when the name is not valid or the buffer was too small
//   *overflow_out     1 when the buffer was too small
//   *needed_size_out  the size in bytes that the text needs, its NUL included
//   decorated         not 0 prints the return type and the parameter list
// After an error in the name the buffer holds what was printed before it.
// Nothing the call allocates outlives it; `name` is only read.
void decode_identifier_eabi(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                            int* overflow_out, std::size_t* needed_size_out, int decorated);

// True when `name` begins with "_Z" and names a base-object ("subobject")
// constructor or destructor. A name that goes wrong after that was seen counts.
bool decode_is_ia64_subobject(const char* name);
