// Composes a message on the stack and writes it without the C library's streams.
#include "gas2interlist/report.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace gas2interlist {

static constinit std::string_view current_name = "gas2interlist";

void set_program_name(std::string_view name) noexcept {
    current_name = name;
}

std::string_view program_name() noexcept {
    return current_name;
}

void report(std::initializer_list<std::string_view> parts) noexcept {
    constexpr std::size_t longest = std::size_t{1} << 15;
    std::array<char, longest> message;
    std::size_t size = 0;
    const auto add = [&](std::string_view part) {
        const std::size_t taken = std::min(part.size(), message.size() - 1 - size);
        std::copy_n(part.data(), taken, message.data() + size);
        size += taken;
    };
    add(current_name);
    add(": ");
    for (const std::string_view part : parts) {
        add(part);
    }
    message[size++] = '\n';
    for (std::size_t at = 0; at < size;) {
        const ssize_t count = ::write(STDERR_FILENO, message.data() + at, size - at);
        if (count < 0 && errno != EINTR) {
            return;  // there is nowhere to say so
        }
        at += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

}  // namespace gas2interlist
