// Writing with a buffer, for the listing.
#include "interlist/output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>

// Writes `text` with as many calls as it takes.
static bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

void attach_output(output_stream& output, int descriptor) {
    output.descriptor = descriptor;
    output.used = 0;
    output.base = 0;
}

bool flush_output(output_stream& output) {
    const std::size_t used = output.used;
    if (used == 0) {
        return true;
    }
    output.writing = true;
    const bool done = output.descriptor < 0 || write_all(output.descriptor, {output.buffer, used});
    output.used = 0;
    output.base += static_cast<long>(used);
    output.writing = false;
    return done;
}

// The free part of the buffer, with a flush before if there is none. Blocks are written
// full, so that they stay aligned in the file. Empty when the flush fails.
static std::span<char> room(output_stream& output) {
    if (output.used == output.size && !flush_output(output)) {
        return {};
    }
    return std::span(output.buffer, output.size).subspan(output.used);
}

bool add_long_text(output_stream& output, std::string_view text) {
    while (!text.empty()) {
        const std::span<char> free = room(output);
        const std::size_t taken = text.copy(free.data(), free.size());
        if (taken == 0) {
            return false;
        }
        take_room(output, taken);
        text.remove_prefix(taken);
    }
    return true;
}

bool add_long_fill(output_stream& output, char fill, std::size_t count) {
    while (count > 0) {
        const std::span<char> free = room(output);
        const std::size_t taken = std::min(free.size(), count);
        if (taken == 0) {
            return false;
        }
        std::fill_n(free.begin(), taken, fill);
        take_room(output, taken);
        count -= taken;
    }
    return true;
}

void rescue_output(const output_stream& output) {
    // A file's position is exact where a write has been interrupted; where it has not,
    // it is where the buffer's text belongs.
    long from = lseek(output.descriptor, 0, SEEK_CUR) - output.base;
    if (from < 0) {
        from = output.writing ? static_cast<long>(output.used) : 0;
    }
    const std::string_view text(output.buffer, output.used);
    if (static_cast<std::size_t>(from) < text.size()) {
        write_all(output.descriptor, text.substr(static_cast<std::size_t>(from)));
    }
}
