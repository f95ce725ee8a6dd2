// Lines as the tool understands them.
#include "interlist/line_reader.h"

#include <cstddef>
#include <cstdio>

#include "interlist/diagnostics.h"

constexpr int control_z = 26;

int mygetc(input_stream& stream) {
    int character = next_byte(stream);
    while (character == control_z) {
        character = next_byte(stream);
    }
    if (character == '\r') {
        const int next = next_byte(stream);
        if (next == '\n') {
            return '\n';
        }
        if (next != EOF) {
            put_back_byte(stream);
        }
    }
    return static_cast<signed char>(character);
}

static void stop_on_read_error(const input_stream& stream) {
    if (stream.failed) {
        std::puts("\n>> Error while reading file");
        end_program(1);
    }
}

// Byte by byte, for lines in which anything may stand.
static std::string_view read_any_line(char* buffer, int size, input_stream& stream) {
    int stored = 0;
    int character = 0;
    while (stored < size - 1) {
        character = mygetc(stream);
        if ((character & 0xff) == 0xff) {
            break;
        }
        buffer[stored++] = static_cast<char>(character);
        if (character == '\n') {
            break;
        }
    }
    buffer[stored] = '\0';
    stop_on_read_error(stream);
    return {buffer, static_cast<std::size_t>(stored)};
}

std::string_view myfgets_text(char* buffer, int size, input_stream& stream) {
    std::string_view line;
    if (size < 2 || stream.failed ||
        !next_plain_line(stream, static_cast<std::size_t>(size) - 1, line)) {
        return read_any_line(buffer, size, stream);
    }
    buffer[line.copy(buffer, line.size())] = '\0';
    return {buffer, line.size()};
}

char* myfgets(char* buffer, int size, input_stream& stream) {
    return myfgets_text(buffer, size, stream).empty() ? nullptr : buffer;
}
