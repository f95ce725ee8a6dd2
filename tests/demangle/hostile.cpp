// The guarded decoding that every test of hostile names goes through.
#include "tests/demangle/hostile.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "demangle/decode_id.h"

namespace hostile {
namespace {

constexpr std::size_t guard_size = 64;
constexpr char guard_byte = '\xa5';
constexpr int unset_flag = 77;

bool untouched(const char* from, std::size_t count) {
    return std::all_of(from, from + count, [](char byte) { return byte == guard_byte; });
}

std::string number(std::size_t value) {
    return std::to_string(value);
}

}  // namespace

Result decode(const std::string& name, int decorated, std::size_t size) {
    thread_local std::vector<char> memory;
    memory.assign(size + 2 * guard_size, guard_byte);
    char* const buffer = memory.data() + guard_size;
    int error = unset_flag;
    int overflow = unset_flag;
    Result result;
    const auto decode_to = decorated != 0 ? decode_to_decorid : decode_to_origid;
    decode_to(name.c_str(), buffer, size, &error, &overflow, &result.needed);
    result.error = error != 0;
    result.overflow = overflow != 0;
    const std::string_view bytes(buffer, size);
    result.terminated = size == 0 || bytes.find('\0') != std::string_view::npos;
    result.text = bytes.substr(0, bytes.find('\0'));
    if (!untouched(memory.data(), guard_size)) {
        result.damage = "bytes in front of the buffer were written";
    } else if (!untouched(buffer + size, guard_size)) {
        result.damage = "bytes behind the buffer were written";
    } else if ((error != 0 && error != 1) || (overflow != 0 && overflow != 1)) {
        result.damage = "a flag is neither 0 nor 1";
    } else if (result.overflow && !result.error) {
        result.damage = "an overflow without the error flag";
    } else if (!result.terminated) {
        result.damage = "no NUL in the buffer";
    } else if (result.needed == 0) {
        result.damage = "a needed size of 0";
    } else if (!result.overflow && size != 0 && result.text.size() + 1 > result.needed) {
        result.damage = "a text that is longer than the needed size";
    }
    return result;
}

Result decode_whole(const std::string& name, int decorated) {
    std::size_t size = 512;
    Result result = decode(name, decorated, size);
    while (result.damage.empty() && result.overflow) {
        if (result.needed <= size) {
            result.damage = "needed size " + number(result.needed) + " overflows " + number(size);
            break;
        }
        size = result.needed;
        result = decode(name, decorated, size);
    }
    return result;
}

std::string difference(const Result& result, std::string_view text, std::size_t size,
                       std::size_t reserved) {
    if (!result.damage.empty()) {
        return result.damage;
    }
    const std::size_t full = text.size() + 1 + reserved;
    if (reserved != 0 && size <= reserved) {
        // No room for the expansion: only progress is asked for.
        return result.overflow && result.needed == reserved + 1
                   ? ""
                   : "no room: needed size " + number(result.needed);
    }
    const bool fits = size >= full || (text.empty() && size == reserved);
    if (result.overflow == fits || result.error == fits) {
        return "flags " + number(result.error) + " " + number(result.overflow);
    }
    if (result.needed != full) {
        return "needed size " + number(result.needed) + " for " + number(full);
    }
    const std::size_t room = size == 0 ? 0 : size - reserved - 1;
    return result.text == text.substr(0, room) ? "" : "text \"" + result.text + "\"";
}

std::string broken_promise(const std::string& name, int decorated) {
    const Result whole = decode_whole(name, decorated);
    if (!whole.damage.empty()) {
        return whole.damage;
    }
    const bool compressed = name.starts_with("__CPR");
    const std::size_t needed = whole.needed;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, needed / 2,
                                   needed - 1, needed, needed + 1}) {
        const Result result = decode(name, decorated, size);
        const std::string at = " with " + number(size) + " of " + number(needed) + " bytes";
        if (!result.damage.empty()) {
            return result.damage + at;
        }
        if (compressed) {
            continue;
        }
        if (result.needed != needed) {
            return "needed size " + number(result.needed) + at;
        }
        const bool fits = size >= needed || (size == 0 && needed == 1);
        if (result.overflow == fits || result.error != (whole.error || !fits)) {
            return "flags " + number(result.error) + " " + number(result.overflow) + at;
        }
        if (result.text != whole.text.substr(0, size == 0 ? 0 : size - 1)) {
            return "text \"" + result.text + "\"" + at;
        }
    }
    return "";
}

std::string printable(std::string_view name) {
    std::string text;
    for (const char byte : name) {
        if (byte >= ' ' && byte <= '~') {
            text += byte;
        } else {
            char spelled[8];
            std::snprintf(spelled, sizeof spelled, "\\x%02x", static_cast<unsigned char>(byte));
            text += spelled;
        }
    }
    return text;
}

}  // namespace hostile
