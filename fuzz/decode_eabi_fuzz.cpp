// Fuzzes the Itanium ABI decoder: any bytes as a name, strict and extended,
// decorated and plain. Beside crashes it looks for writes outside the buffer and for
// results that depend on the buffer's size in other ways than they should.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"

namespace {

constexpr std::size_t guard = 32;
constexpr char guard_byte = '\x5A';

struct Result {
    std::string text;
    int error = 0;
    int overflow = 0;
    std::size_t needed = 0;
};

void check(bool holds, const char* what, const std::string& name) {
    if (!holds) {
        std::fprintf(stderr, "%s: %s\n", what, name.c_str());
        std::abort();
    }
}

Result decode(const std::string& name, std::size_t size, int decorated) {
    std::vector<char> room(size + 2 * guard, guard_byte);
    Result result;
    decode_identifier_eabi(name.c_str(), room.data() + guard, size, &result.error, &result.overflow,
                           &result.needed, decorated);
    const auto untouched = [](char byte) { return byte == guard_byte; };
    check(std::all_of(room.begin(), room.begin() + guard, untouched) &&
              std::all_of(room.end() - guard, room.end(), untouched),
          "write outside the buffer", name);
    if (size != 0) {
        const auto end = std::find(room.begin() + guard, room.end() - guard, '\0');
        check(end != room.end() - guard, "no NUL in the buffer", name);
        result.text.assign(room.begin() + guard, end);
    }
    return result;
}

void check_name(const std::string& name, int decorated) {
    const Result first = decode(name, 512, decorated);
    const Result full = decode(name, first.needed, decorated);
    check(full.overflow == 0, "the needed size does not suffice", name);
    check(full.needed == first.needed, "the needed size depends on the buffer", name);
    check(full.text.size() + 1 == full.needed, "the text has another length", name);
    check(first.overflow != 0 || first.error == full.error, "the error depends on the buffer",
          name);
    const Result nothing = decode(name, 0, decorated);
    check(nothing.needed == first.needed, "size 0 needs another size", name);
    for (const std::size_t size : {full.needed / 2, full.needed - 1}) {
        const Result cut = decode(name, size, decorated);
        check(cut.needed == full.needed, "a small buffer needs another size", name);
        check(size == 0 || full.text.empty() || cut.text == full.text.substr(0, size - 1),
              "a small buffer holds another text", name);
        check(full.text.empty() || (cut.error == 1 && cut.overflow == 1),
              "a small buffer is not reported", name);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string name(reinterpret_cast<const char*>(data), size);
    for (const int extended : {0, 1}) {
        decode_extended_names = extended;
        check_name(name, 0);
        check_name(name, 1);
        decode_is_ia64_subobject(name.c_str());
    }
    return 0;
}
