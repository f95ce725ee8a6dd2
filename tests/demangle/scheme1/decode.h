// Calls scheme 1's decoder the way the tests of it need: a buffer of exactly the given
// size between two guard zones, and a name that ends at the end of its own block.
#pragma once

#include <cstddef>
#include <string>

struct Decoded {
    int error = -1;
    int overflow = -1;
    std::size_t needed = 0;
    std::string text;        // what the buffer holds up to its NUL
    bool guarded = true;     // nothing outside the buffer was written
    bool terminated = true;  // the buffer holds a NUL (always true for size 0)
};

// One call with a buffer of `size` bytes.
Decoded decode_into(const std::string& name, std::size_t size, bool decorated);

// The text of a name, "<bad name>" when there is none, and a note in the same form
// when the flags or the needed size do not fit together. Grows its buffer as asked.
std::string decoded(const std::string& name, bool decorated = true);

// Sets decode_extended_names for its own scope.
class ExtendedNames {
  public:
    ExtendedNames();
    ~ExtendedNames();
    ExtendedNames(const ExtendedNames&) = delete;
    ExtendedNames& operator=(const ExtendedNames&) = delete;
};
