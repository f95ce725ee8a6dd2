// Allocation that never fails as far as the caller can see. When the C library has no
// memory, each of these writes "ERROR: out of memory" and a newline to standard error
// and ends the process with exit(1), so open streams are flushed and exit handlers
// run. A size of 0 is passed on as it is; where the C library answers it with null,
// that is a failure too. The blocks belong to the caller, who releases them with free.
#pragma once

#include <cstddef>

// A block of `size` bytes with arbitrary contents. Never null.
void* safemalloc(std::size_t size);

// The block `ptr`, which came from one of these functions or from the C library,
// resized to `size` bytes with its contents kept up to the smaller size; it may move,
// and `ptr` is invalid afterwards. With a null `ptr` the same as safemalloc(size).
// Never null.
void* saferealloc(void* ptr, std::size_t size);

// A block of `count` times `size` bytes, all zero. A product that does not fit into
// std::size_t fails like any other request. Never null.
void* safecalloc(std::size_t count, std::size_t size);
