// The public demanglers that a machine has, reached as black boxes: bench/scheme1_bench
// measures scheme 1's decoder beside them.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct decoder {
    std::string label;
    // The text of a mangled name, which holds until the next call; null for a name
    // that is refused.
    std::function<const char*(const char* name)> decode;
};

// The standard library's demangler, those of the LLVM and libc++abi libraries in their
// usual places, and those of the libraries that the environment variable DEMANGLE_PEERS
// names (with colons between). Each keeps the buffer that it is given, with its
// capacity, for as long as its interface has one.
std::vector<decoder> find_peers();
