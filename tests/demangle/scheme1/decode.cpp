// The guarded calls of scheme 1's decoder that its tests share.
#include "tests/demangle/scheme1/decode.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"

namespace {

constexpr std::size_t guard = 32;
constexpr char guard_byte = '\xA5';

bool untouched(const char* zone) {
    return std::all_of(zone, zone + guard, [](char byte) { return byte == guard_byte; });
}

}  // namespace

Decoded decode_into(const std::string& name, std::size_t size, bool decorated) {
    // A block of its own lets AddressSanitizer see a read past the name's NUL.
    const auto copy = std::make_unique<char[]>(name.size() + 1);
    std::memcpy(copy.get(), name.c_str(), name.size() + 1);
    std::vector<char> block(guard + size + guard, guard_byte);
    char* buffer = block.data() + guard;

    Decoded result;
    decode_identifier_eabi(copy.get(), buffer, size, &result.error, &result.overflow,
                           &result.needed, decorated ? 1 : 0);
    result.guarded = untouched(block.data()) && untouched(buffer + size);
    if (size != 0) {
        char* end = std::find(buffer, buffer + size, '\0');
        result.terminated = end != buffer + size;
        result.text.assign(buffer, end);
    }
    return result;
}

std::string decoded(const std::string& name, bool decorated) {
    Decoded result = decode_into(name, 4096, decorated);
    if (result.error == 1 && result.overflow == 1) {
        result = decode_into(name, result.needed, decorated);
    }
    if (!result.guarded) {
        return "<guard zone written>";
    }
    if (result.error == 1 && result.overflow == 0) {
        return "<bad name>";
    }
    if (result.error != 0 || result.overflow != 0) {
        return "<unexpected flags>";
    }
    if (result.needed != result.text.size() + 1) {
        return "<wrong size>";
    }
    return result.text;
}

ExtendedNames::ExtendedNames() {
    decode_extended_names = 1;
}
ExtendedNames::~ExtendedNames() {
    decode_extended_names = 0;
}
