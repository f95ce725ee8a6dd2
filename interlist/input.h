// Reading with a window: an open stream, the part of it that lies in a static
// buffer, and the position of the next byte. It behaves as the stream itself
// would (end-of-file and error indicators, positions, one byte of push-back),
// but lines are found with a scan instead of byte by byte, are handed out
// without a copy, and going back inside the window costs nothing. The assembly
// file and the C file are read through it.
#pragma once

#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string_view>

constexpr std::size_t nothing_held = std::numeric_limits<std::size_t>::max();

struct input_stream {
    FILE* file = nullptr;
    int descriptor = -1;     // the file's
    struct stat status {};   // the file's, when it was attached; all zero if not known
    char* window = nullptr;  // at least twice as large as the longest line asked for
    std::size_t size = 0;
    std::size_t at = 0;   // next byte, as an index into the window
    std::size_t end = 0;  // end of what has been read into the window
    long base = 0;        // position in the file of the window's first byte
    std::size_t held = nothing_held;
    std::size_t read_size = 0;   // how much the next read asks for
    std::size_t plain_from = 0;  // bytes from here
    std::size_t plain_to = 0;    // up to here are known to be plain
    bool whole_blocks = false;   // a regular file: a read never waits for more
    bool exhausted = false;      // the file has nothing behind the window
    bool read_failed = false;    // or could not be read there, which was not met yet
    bool at_end = false;         // the end-of-file indicator: a read met the end
    bool failed = false;         // the error indicator
};

// Starts reading `file` from its beginning; null detaches. The file must not
// have been read before and stays the caller's to close.
void attach_input(input_stream& input, FILE* file);

// Reads more of the file behind the window's end. False, with the end-of-file
// or error indicator set, when there is no more.
bool refill_or_meet_end(input_stream& input);

// The next byte, 0 to 255, or EOF.
inline int next_byte(input_stream& input) {
    if (input.at == input.end && !refill_or_meet_end(input)) {
        return EOF;
    }
    return static_cast<unsigned char>(input.window[input.at++]);
}

// Takes back the byte that next_byte() returned last.
inline void put_back_byte(input_stream& input) {
    --input.at;
}

// What fgets with a limit of `limit` + 1 would store: up to and including the
// next newline, at most `limit` bytes. False at the end of the file and on a
// read error. The piece may hold NULs and is valid until the next read.
bool next_piece(input_stream& input, std::size_t limit, std::string_view& piece);

// Takes the next line, or the first `limit` bytes of a longer one, when it is
// plain: without NUL, carriage return, Ctrl-Z or a byte of value 255, and not
// ended by the end of the file. Every way of reading lines agrees on such a
// line. False, and nothing is taken, when it is not. The line is valid until the
// next read.
bool next_plain_line(input_stream& input, std::size_t limit, std::string_view& line);

// What the lines begin with that a caller wants to look at.
using line_mark = std::array<char, 3>;

// Takes as many lines as lie in the window and are plain, not longer than
// `limit` and do not begin with `mark`, as one text; an empty one when the next
// line is not of that kind.
std::string_view next_ordinary_lines(input_stream& input, std::size_t limit, line_mark mark);

// True when all bytes up to `position` lie in the window and are plain.
bool plain_up_to(input_stream& input, long position);

// The position of the next byte, counted from where reading started.
inline long input_position(const input_stream& input) {
    return input.base + static_cast<long>(input.at);
}

// Goes to `position` and clears the end-of-file indicator. False when the
// position has left the window and the file cannot be positioned.
bool seek_input(input_stream& input, long position);

// Keeps the bytes from the next one on in the window as long as there is room,
// so that seek_input() to here is cheap, and works on a pipe.
inline void hold_input(input_stream& input) {
    input.held = input.at;
}
inline void release_input(input_stream& input) {
    input.held = nothing_held;
}
