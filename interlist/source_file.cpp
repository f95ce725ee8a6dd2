// Line input with the tool's own rules, and the current C file.
#include "interlist/source_file.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include "interlist/diagnostics.h"
#include "interlist/source_position.h"
#include "interlist/state.h"

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

char* new_cfile(const char* name) {
    copy_text(curr_seen_file_name, name);
    return curr_seen_file_name;
}

static void close_cfile() {
    if (CFILE != nullptr && std::fclose(CFILE) != 0) {
        file_error("Failed to close", curr_open_file_name);
    }
    CFILE = nullptr;
}

void open_cfile(const char* name) {
    if (*name == '\0') {
        file_error("Source file information not available", "");
    }
    if (std::strcmp(name, curr_open_file_name) == 0) {
        return;
    }
    FILE* const opened = std::fopen(name, "r");
    if (opened == nullptr) {
        file_warn("Cannot open source file", name);
    }
    close_cfile();
    CFILE = opened;
    curr_line = 1;
    copy_text(curr_open_file_name, name);
    attach_input(cfile_input, CFILE);
    forget_positions();
}

void give_up_cfile(const char* message) {
    file_warn(message, curr_open_file_name);
    close_cfile();
}
