// Writing with a buffer: an open file and the text that was gathered for it and is not
// yet written. The counterpart of input.h; the listing is written through it. Text goes
// out in full blocks and without the C library's streams, so that a signal handler can
// see at any moment what is still to be written.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <string_view>

struct output_stream {
    int descriptor = -1;
    char* buffer = nullptr;
    std::size_t size = 0;

    // Read by the signal handler: each moves on when what it counts is in place.
    std::atomic<long> base = 0;         // what was written before this buffer's text
    std::atomic<std::size_t> used = 0;  // text in the buffer
    std::atomic<bool> writing = false;
};

// Starts writing to a file that stands at its beginning; -1 detaches. Closing it is the
// caller's affair, and nobody else writes to it.
void attach_output(output_stream& output, int descriptor);

// Adds `text`, or `count` times `fill`. False when a write failed.
inline bool add_text(output_stream& output, std::string_view text);
inline bool add_fill(output_stream& output, char fill, std::size_t count);

// Writes what was gathered and lets go of it, written or not. False when it could not
// all be written; true where no file is attached.
bool flush_output(output_stream& output);

// The same for a signal handler, whatever it has interrupted: takes no lock, and writes
// nothing twice. Where it has interrupted a write to something that cannot tell how
// much it has got, a pipe, what that write held is let go of.
void rescue_output(const output_stream& output);

// What does not fit: the buffer is flushed in between, however often it takes.
bool add_long_text(output_stream& output, std::string_view text);
bool add_long_fill(output_stream& output, char fill, std::size_t count);

// Where to put `size` bytes, of which the buffer holds no more until take_room() says
// that they are in place. Null when there is no such room.
inline char* room_for(const output_stream& output, std::size_t size) {
    const std::size_t used = output.used.load(std::memory_order_relaxed);
    return output.size - used >= size ? output.buffer + used : nullptr;
}
inline void take_room(output_stream& output, std::size_t size) {
    output.used.store(output.used.load(std::memory_order_relaxed) + size,
                      std::memory_order_release);
}

inline bool add_text(output_stream& output, std::string_view text) {
    char* const to = room_for(output, text.size());
    if (to == nullptr) {
        return add_long_text(output, text);
    }
    text.copy(to, text.size());
    take_room(output, text.size());
    return true;
}

inline bool add_fill(output_stream& output, char fill, std::size_t count) {
    char* const to = room_for(output, count);
    if (to == nullptr) {
        return add_long_fill(output, fill, count);
    }
    std::fill_n(to, count, fill);
    take_room(output, count);
    return true;
}
