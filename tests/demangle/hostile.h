// Decoding into buffers between guard zones, and the promises that hold for any name
// whatsoever. Shared by the tests of both schemes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace hostile {

// Sanitizers slow decoding down and enlarge its frames several times.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool instrumented = true;
#elif defined(__has_feature)
inline constexpr bool instrumented =
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
inline constexpr bool instrumented = false;
#endif

// How many names a test goes through: a quarter of them under a sanitizer.
constexpr std::uint64_t scaled(std::uint64_t count) {
    return instrumented ? count / 4 : count;
}

struct Result {
    bool error = false;
    bool overflow = false;
    std::size_t needed = 0;
    bool terminated = false;  // the buffer holds a NUL, or has no byte at all
    std::string text;         // what stands before the NUL
    std::string damage;       // empty, or which promise about flags and memory is broken
};

// Decodes `name` into a buffer of `size` bytes that lies between two guard zones, and
// checks that both zones stay as they were, that all three results are stored as 0, 1 or
// a size, and that a buffer of size 0 is left alone.
Result decode(const std::string& name, int decorated, std::size_t size);

// Decodes as a caller does who grows its buffer to the reported size until no overflow is
// reported. `damage` also tells of a size that does not grow.
Result decode_whole(const std::string& name, int decorated);

// Empty, or how `result` differs from what `text`, decoded without an error, gives in a
// buffer of `size` bytes of which the library itself occupies `reserved` at the end (a
// compressed name's expansion with its NUL, else 0).
std::string difference(const Result& result, std::string_view text, std::size_t size,
                       std::size_t reserved);

// Checks the promises for a name about which nothing is known: growing ends, the size
// reported is the same whatever the buffer, smaller buffers get a prefix of the text and
// an overflow. Of a name that begins "__CPR" only what its own bounds leave certain.
// Empty, or which promise is broken.
std::string broken_promise(const std::string& name, int decorated);

// The name with every byte spelled out that is not plain ASCII.
std::string printable(std::string_view name);

}  // namespace hostile
