// Scheme 0, the tool chain's own mangling: a name, "__" and an encoded signature
// ("f__1AFPCc" reads "A::f(const char *)").
#pragma once

#include <cstddef>

// Decodes `name` into `buffer`, which holds `buffer_size` bytes and ends up
// NUL-terminated unless its size is 0. A name that is not mangled is copied.
//   *error_out        1 when the name is not valid or the buffer was too small
//   *overflow_out     1 when the buffer was too small
//   *needed_size_out  the size in bytes that a second call needs: the text, its NUL and
//                     for a compressed name the room in which it is expanded
//   decorated         not 0 asks for special names and signatures, 0 for the plain name
// After an error in the name the buffer holds what was printed before it. Nothing is
// allocated; `name` is only read.
void decode_identifier(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                       int* overflow_out, std::size_t* needed_size_out, int decorated);
