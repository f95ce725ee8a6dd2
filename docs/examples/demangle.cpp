// Readable names for linker symbols, in both mangling schemes.
#include <demangle/decode_id.h>

#include <cstdio>
#include <string>

// The text of a valid name in memory of the caller's, or "" for any other.
static std::string full_name(const char* symbol) {
    std::string text(8, '\0');
    int error = 0;
    int overflow = 0;
    std::size_t needed = 0;
    decode_to_decorid(symbol, text.data(), text.size(), &error, &overflow, &needed);
    while (error != 0 && overflow != 0) {  // too small: once more with what it takes
        text.resize(needed);
        decode_to_decorid(symbol, text.data(), text.size(), &error, &overflow, &needed);
    }
    return error != 0 ? "" : text.c_str();
}

int main() {
    // The easy way: a buffer that belongs to the thread, valid until its next call.
    // Names that are not mangled come back as they are.
    decode_mangle_scheme = 0;
    std::printf("%s\n", decode_id("f__1AFPCc", 1));
    std::printf("%s\n", decode_id("f__1AFPCc", 0));
    std::printf("%s\n", decode_id("main", 1));

    decode_mangle_scheme = 1;
    std::printf("%s\n", decode_id("_ZN1A1fEi", 1));
    std::printf("%s\n", full_name("_ZNSt6vectorIiSaIiEE9push_backEOi").c_str());
    std::printf("%d %d\n", probably_mangled_symbol_name("_Z1fv"),
                probably_mangled_symbol_name("main"));
}
