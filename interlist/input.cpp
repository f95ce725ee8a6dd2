// Reading with a window, for the assembly file and the C file.
#include "interlist/input.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <utility>

// Little is read at first, and after a jump: it often serves one short function.
constexpr std::size_t first_read = 8192;

// How far the search for odd bytes goes beyond what was asked for: at most this far, and
// behind a jump, where little may be asked for, no farther than it has come already.
constexpr std::size_t search_ahead = 4096;

static std::size_t less_or_zero(std::size_t value, std::size_t by) {
    return value - std::min(value, by);
}

// Drops the first `count` bytes of the window.
static void shift_window(input_stream& input, std::size_t count) {
    std::memmove(input.window, input.window + count, input.end - count);
    input.at -= count;
    input.end -= count;
    input.base += static_cast<long>(count);
    input.held = input.held == nothing_held ? nothing_held : input.held - count;
    input.plain_from = less_or_zero(input.plain_from, count);
    input.plain_to = less_or_zero(input.plain_to, count);
}

// Anything but a regular file is read line by line: a reader of a pipe must
// not wait for more than the line it needs.
static std::size_t read_one_line(input_stream& input, char* to, std::size_t room) {
    std::size_t count = 0;
    while (count < room) {
        const int byte = std::getc(input.file);
        if (byte == EOF) {
            input.read_failed = std::ferror(input.file) != 0;
            std::clearerr(input.file);
            break;
        }
        to[count++] = static_cast<char>(byte);
        if (byte == '\n') {
            break;
        }
    }
    return count;
}

// A regular file is read from where the window ends, wherever its stream stands, so that
// going to another place takes no call.
static std::size_t read_block(input_stream& input, char* to, std::size_t wanted) {
    std::size_t got = 0;
    while (got < wanted) {
        const long from = input.base + static_cast<long>(input.end + got);
        const ssize_t more = pread(input.descriptor, to + got, wanted - got, from);
        if (more > 0) {
            got += static_cast<std::size_t>(more);
        } else if (more == 0 || errno != EINTR) {
            input.read_failed = more < 0;
            break;
        }
    }
    return got;
}

// Reads more behind the window's end and makes room for it first, at the cost
// of what is held when nothing else will do. False when there is no more.
static bool refill(input_stream& input) {
    if (input.exhausted || input.read_failed) {
        return false;
    }
    if (input.size - input.end < input.read_size) {
        if (input.held == 0 && input.end == input.size) {
            input.held = nothing_held;
        }
        shift_window(input, std::min(input.held, input.at));
    }
    const std::size_t room = input.size - input.end;
    char* const to = input.window + input.end;
    std::size_t got = 0;
    if (input.whole_blocks) {
        const std::size_t wanted = std::min(room, input.read_size);
        got = read_block(input, to, wanted);
        input.exhausted = got < wanted && !input.read_failed;
        input.read_size = std::min(input.size, input.read_size * 2);
    } else {
        got = read_one_line(input, to, room);
        input.exhausted = got < room && (got == 0 || to[got - 1] != '\n') && !input.read_failed;
    }
    input.end += got;
    return got > 0;
}

// An error is met once; who goes on behind it tries again.
static void meet_end(input_stream& input) {
    if (std::exchange(input.read_failed, false)) {
        input.failed = true;
    } else {
        input.at_end = true;
    }
}

bool refill_or_meet_end(input_stream& input) {
    if (refill(input)) {
        return true;
    }
    meet_end(input);
    return false;
}

void attach_input(input_stream& input, FILE* file) {
    input = {.file = file,
             .window = input.window,
             .size = input.size,
             .read_size = std::min(input.size, first_read)};
    if (file == nullptr) {
        return;
    }
    input.descriptor = fileno(file);
    input.whole_blocks =
        fstat(input.descriptor, &input.status) == 0 && S_ISREG(input.status.st_mode);
}

bool seek_input(input_stream& input, long position) {
    if (position >= input.base && position <= input.base + static_cast<long>(input.end)) {
        input.at = static_cast<std::size_t>(position - input.base);
    } else if (input.whole_blocks || std::fseek(input.file, position, SEEK_SET) == 0) {
        input.at = input.end = input.plain_from = input.plain_to = 0;
        input.base = position;
        input.held = nothing_held;
        input.read_size = first_read;
        input.exhausted = false;
    } else {
        return false;
    }
    input.at_end = false;
    return true;
}

// Length of the next line, newline included, or of as much of it as there is
// within `limit`.
static std::size_t line_length(input_stream& input, std::size_t limit) {
    std::size_t looked = 0;
    for (;;) {
        const std::size_t known = std::min(input.end - input.at, limit);
        const char* const start = input.window + input.at;
        const void* const newline = std::memchr(start + looked, '\n', known - looked);
        if (newline != nullptr) {
            return static_cast<std::size_t>(static_cast<const char*>(newline) - start) + 1;
        }
        if (known == limit || !refill(input)) {
            return known;
        }
        looked = known;
    }
}

bool next_piece(input_stream& input, std::size_t limit, std::string_view& piece) {
    const std::size_t length = line_length(input, limit);
    piece = {input.window + input.at, length};
    input.at += length;
    if (length < limit && (length == 0 || piece.back() != '\n')) {
        const bool had_failed = input.failed;
        input.failed = false;
        meet_end(input);
        const bool failed_now = input.failed;
        input.failed = failed_now || had_failed;
        return length > 0 && !failed_now;
    }
    return true;
}

// These two searches test whole blocks of bytes at once and then look closer. Where a
// comparison holds, its result has all bits set.
using block = unsigned char __attribute__((vector_size(16)));

static block block_at(const char* from) {
    block bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

constexpr std::size_t block_count = 4;  // that are looked at before the result is

static block all_equal_to(char byte) {
    return block{} + static_cast<unsigned char>(byte);
}

static bool is_zero(const block& bytes) {
    std::array<std::uint64_t, sizeof bytes / sizeof(std::uint64_t)> halves;
    std::memcpy(halves.data(), &bytes, sizeof bytes);
    return (halves[0] | halves[1]) == 0;
}

static bool is_special(char byte) {
    return byte == '\0' || byte == '\r' || byte == '\x1a' || byte == '\xff';
}

// The first byte of [from, to) that is not plain; `to` if all are.
static std::size_t find_special(const char* window, std::size_t from, std::size_t to) {
    const block carriage_return = all_equal_to('\r');
    const block control_z = all_equal_to('\x1a');
    const block all_ones = all_equal_to('\xff');
    const auto special_in = [&](std::size_t at) {
        const block bytes = block_at(window + at);
        return block((bytes == block{}) | (bytes == carriage_return) | (bytes == control_z) |
                     (bytes == all_ones));
    };
    for (; to - from >= block_count * sizeof(block); from += block_count * sizeof(block)) {
        block found{};
        for (std::size_t i = 0; i < block_count; ++i) {
            found |= special_in(from + i * sizeof(block));
        }
        if (!is_zero(found)) {
            break;
        }
    }
    while (to - from >= sizeof(block) && is_zero(special_in(from))) {
        from += sizeof(block);
    }
    return static_cast<std::size_t>(std::find_if(window + from, window + to, is_special) - window);
}

// The first line start in (from, to) where `mark` stands; `to` if there is none.
static std::size_t find_marked_line(const char* window, std::size_t from, std::size_t to,
                                    line_mark mark) {
    const block newline = all_equal_to('\n');
    const block first = all_equal_to(mark[0]);
    const block second = all_equal_to(mark[1]);
    const block third = all_equal_to(mark[2]);
    constexpr std::size_t longer = std::tuple_size_v<line_mark>;
    for (; to - from >= block_count * sizeof(block) + longer; from += block_count * sizeof(block)) {
        auto found = block{} != block{};
        for (std::size_t i = 0; i < block_count; ++i) {
            const char* const at = window + from + i * sizeof(block);
            found |= (block_at(at) == newline) & (block_at(at + 1) == first) &
                     (block_at(at + 2) == second) & (block_at(at + 3) == third);
        }
        if (!is_zero(block(found))) {
            break;
        }
    }
    const std::array<char, 4> line_start{'\n', mark[0], mark[1], mark[2]};
    const std::size_t found =
        std::string_view(window + from, to - from).find({line_start.data(), line_start.size()});
    return found == std::string_view::npos ? to : from + found + 1;
}

// Remembers how far the window is known to be plain, so that each byte is
// looked at once however often one asks.
static bool is_plain(input_stream& input, std::size_t from, std::size_t to) {
    if (from < input.plain_from || from > input.plain_to) {
        input.plain_from = input.plain_to = from;
    }
    if (to > input.plain_to) {
        // Farther than asked for, but not over a whole window that may be left.
        const std::size_t ahead = std::min(to - input.plain_from, search_ahead);
        const std::size_t until = std::min(input.end, std::max(to, input.plain_to + ahead));
        input.plain_to = find_special(input.window, input.plain_to, until);
    }
    return to <= input.plain_to;
}

bool next_plain_line(input_stream& input, std::size_t limit, std::string_view& line) {
    const std::size_t length = line_length(input, limit);
    line = {input.window + input.at, length};
    if (line.empty() || (line.back() != '\n' && length < limit) ||
        !is_plain(input, input.at, input.at + length)) {
        return false;
    }
    input.at += length;
    return true;
}

std::string_view next_ordinary_lines(input_stream& input, std::size_t limit, line_mark mark) {
    if (input.at == input.end && !refill(input)) {
        return {};
    }
    const std::size_t from = input.at;
    is_plain(input, from, input.end);
    const std::string_view plain(input.window + from, input.plain_to - from);
    if (plain.starts_with(std::string_view(mark.data(), mark.size()))) {
        return {};
    }
    std::size_t length = find_marked_line(input.window, from, input.plain_to, mark) - from;
    length = plain.substr(0, length).rfind('\n') + 1;
    // A line that is longer than the limit ends the run.
    for (std::size_t good = 0; length - good > limit;) {
        const std::size_t next = plain.substr(good, limit).rfind('\n') + 1;
        if (next == 0) {
            length = good;
            break;
        }
        good += next;
    }
    input.at += length;
    return plain.substr(0, length);
}

bool plain_up_to(input_stream& input, long position) {
    return position >= input_position(input) &&
           position <= input.base + static_cast<long>(input.end) &&
           is_plain(input, input.at, static_cast<std::size_t>(position - input.base));
}
