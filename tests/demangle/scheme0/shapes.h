// Scheme-0 names that are easy to write and hard to decode: deep nesting, repeated
// parameters, long runs, huge numbers. Used by the hostile-name and nesting tests.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace scheme0 {

// A construct that is put into itself.
struct Nesting {
    const char* what;
    std::string (*name)(std::size_t repetitions);
    std::size_t
        levels;  // of nesting that one repetition counts as; where it is more than 1, at most
};
std::span<const Nesting> nestings();

// A name of at most `length` characters, as near to it as the shape allows.
struct HostileShape {
    const char* what;
    std::string (*name)(std::size_t length);
};
std::span<const HostileShape> hostile_shapes();

std::string repeated(std::size_t count, const std::string& text);

}  // namespace scheme0
