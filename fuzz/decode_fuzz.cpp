// Fuzzes the scheme-0 decoder: any bytes as a name, decorated and plain. Beside crashes
// it looks for writes outside the buffer and for results that depend on the buffer's
// size in other ways than they should.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "demangle/decode.h"

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
    decode_identifier(name.c_str(), room.data() + guard, size, &result.error, &result.overflow,
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
    // A compressed name may ask for its expansion's room first and for the text's then.
    Result full = decode(name, 64, decorated);
    for (int tries = 0; full.overflow != 0; ++tries) {
        check(tries < 2, "the needed size does not suffice", name);
        full = decode(name, full.needed, decorated);
    }
    // A compressed name of length 0 is a bad name that asks for no room.
    if (name.rfind("__CPR", 0) == 0 && full.needed == 1) {
        return;
    }
    const Result again = decode(name, full.needed, decorated);
    check(again.overflow == 0 && again.error == full.error && again.text == full.text,
          "the text depends on the buffer", name);
    const std::size_t tail = full.needed - full.text.size() - 1;
    for (std::size_t size : {full.needed / 2, full.needed - 1, std::size_t{1}, std::size_t{0}}) {
        const Result cut = decode(name, size, decorated);
        if (size >= full.needed) {
            continue;
        }
        check(cut.overflow == 1 || full.text.empty(), "a small buffer is not reported", name);
        if (tail == 0) {
            check(cut.needed == full.needed, "a small buffer needs another size", name);
            check(size == 0 || cut.text == full.text.substr(0, size - 1),
                  "a small buffer holds another text", name);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string name(reinterpret_cast<const char*>(data), size);
    check_name(name, 0);
    check_name(name, 1);
    return 0;
}
