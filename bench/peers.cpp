// Finds demanglers in shared libraries by the symbols of their public entry points.
#include "bench/peers.h"

#include <cxxabi.h>
#include <dlfcn.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <set>
#include <sstream>
#include <string_view>

namespace {

// __cxa_demangle, and LLVM's entry point up to version 16. The last two arguments are the
// size of the buffer, which gives back another one, and the status.
using with_buffer = char* (*)(const char*, char*, std::size_t*, int*);
constexpr const char* llvm_with_buffer = "_ZN4llvm15itaniumDemangleEPKcPcPmPi";

// LLVM's entry point of version 17 and since 18: the caller frees what they give.
using fresh_text = char* (*)(std::string_view);
constexpr const char* llvm_17 =
    "_ZN4llvm15itaniumDemangleESt17basic_string_viewIcSt11char_traitsIcEE";
using fresh_text_of = char* (*)(std::string_view, bool parse_parameters);
constexpr const char* llvm_18 =
    "_ZN4llvm15itaniumDemangleESt17basic_string_viewIcSt11char_traitsIcEEb";

struct free_text {
    void operator()(char* text) const { std::free(text); }
};

// What comes back through the size is the length of a text to one peer and the capacity to
// another. A buffer of this capacity only ever gives way to a larger one, so this much is
// always there.
decoder keeping_buffer(std::string label, with_buffer demangle) {
    constexpr std::size_t capacity = std::size_t{1} << 20;
    struct kept_buffer {
        char* start = static_cast<char*>(std::malloc(capacity));
        kept_buffer() = default;
        ~kept_buffer() { std::free(start); }
        kept_buffer(const kept_buffer&) = delete;
        kept_buffer& operator=(const kept_buffer&) = delete;
    };
    return {std::move(label),
            [demangle, buffer = std::make_shared<kept_buffer>()](const char* name) {
                std::size_t size = capacity;
                int status = 0;
                char* const text = demangle(name, buffer->start, &size, &status);
                if (text != nullptr) {
                    buffer->start = text;
                }
                return text;
            }};
}

template <typename Demangle>
decoder with_fresh_text(std::string label, Demangle demangle) {
    return {
        std::move(label),
        [demangle, kept = std::make_shared<std::unique_ptr<char, free_text>>()](const char* name) {
            kept->reset(demangle(name));
            return kept->get();
        }};
}

template <typename Function>
Function find_symbol(void* library, const char* symbol) {
    return reinterpret_cast<Function>(dlsym(library, symbol));
}

void add_library(const std::string& path, std::set<void*>& seen, std::vector<decoder>& peers) {
    void* const library = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr || !seen.insert(library).second) {
        return;
    }
    if (const auto demangle = find_symbol<with_buffer>(library, llvm_with_buffer)) {
        peers.push_back(keeping_buffer(path, demangle));
    } else if (const auto of_17 = find_symbol<fresh_text>(library, llvm_17)) {
        peers.push_back(with_fresh_text(path, of_17));
    } else if (const auto of_18 = find_symbol<fresh_text_of>(library, llvm_18)) {
        peers.push_back(
            with_fresh_text(path, [of_18](const char* name) { return of_18(name, true); }));
    } else if (path.find("c++abi") != std::string::npos) {
        peers.push_back(keeping_buffer(path, find_symbol<with_buffer>(library, "__cxa_demangle")));
    }
}

}  // namespace

std::vector<decoder> find_peers() {
    std::vector<decoder> peers = {keeping_buffer("libstdc++", &abi::__cxa_demangle)};
    std::set<void*> seen;
    for (int version = 14; version < 30; ++version) {
        const std::string number = std::to_string(version);
        add_library("libLLVM-" + number + ".so.1", seen, peers);
        add_library("libLLVM.so." + number + ".1", seen, peers);
        add_library("/usr/lib/llvm-" + number + "/lib/libc++abi.so.1", seen, peers);
    }
    if (const char* const named = std::getenv("DEMANGLE_PEERS")) {
        std::istringstream list(named);
        for (std::string path; std::getline(list, path, ':');) {
            add_library(path, seen, peers);
        }
    }
    return peers;
}
