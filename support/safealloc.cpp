// Checked allocation: the C library's allocator, with the process ending where it
// would return null. What the file-name functions hand to their callers comes from here.
#include "support/safealloc.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

// Passes a block on, or ends the process when there is none. The message goes out
// unformatted and in one piece: formatting it could ask for the memory that is gone.
static void* checked(void* block) {
    if (block == nullptr) {
        constexpr std::string_view message = "ERROR: out of memory\n";
        std::fwrite(message.data(), message.size(), 1, stderr);
        std::exit(1);
    }
    return block;
}

void* safemalloc(std::size_t size) {
    return checked(std::malloc(size));
}

void* saferealloc(void* ptr, std::size_t size) {
    return ptr == nullptr ? safemalloc(size) : checked(std::realloc(ptr, size));
}

void* safecalloc(std::size_t count, std::size_t size) {
    return checked(std::calloc(count, size));
}
