// The current C file: opening it, reaching a line of it, reading it.
#include "interlist/source_file.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "interlist/diagnostics.h"
#include "interlist/files.h"
#include "interlist/line_reader.h"
#include "interlist/source_position.h"
#include "interlist/state.h"

// Lines are numbered as they lie in the file, from the beginning and as the full buffer
// holds them. A longer line is several; listed, with a smaller limit, it may be more, and
// curr_line counts these. So two things are known of the place where CFILE stands: the
// number of the next line that begins there or before, and how much of it has been read.
static unsigned next_line = 1;
static std::size_t begun = 0;

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
    FILE* const opened = open_file(name, "r");
    if (opened == nullptr) {
        file_warn("Cannot open source file", name);
    }
    close_cfile();
    CFILE = opened;
    curr_line = 1;
    copy_text(curr_open_file_name, name);
    attach_input(cfile_input, CFILE);
    turn_to_file(cfile_input.status);
    next_line = 1;
    begun = 0;
}

// As with a file that cannot be opened, its functions are listed without C lines from
// here on.
static void give_up_cfile(const char* message) {
    file_warn(message, curr_open_file_name);
    close_cfile();
}

// Takes note of the text that was read up to here, at most `limit` characters at once.
static void count_text(std::string_view text, std::size_t limit) {
    const bool is_whole = text.ends_with('\n');
    if (is_whole && begun == 0) {
        ++next_line;
    } else if (is_whole || text.size() < limit) {
        // A line that its newline fills to the limit has no rest; one that a byte of
        // value 255 ends there has, an empty one.
        const std::size_t last = begun + text.size() - (is_whole ? 1 : 0);
        next_line += static_cast<unsigned>(last / longest_text) + 1;
        begun = 0;
    } else {
        begun += text.size();
        next_line += static_cast<unsigned>(begun / longest_text);
        begun %= longest_text;
    }
    // Where the end of the file has been met, the indicator for it would be lost.
    const long position = input_position(cfile_input);
    if (position >= next_wanted_position && begun == 0 && !cfile_input.at_end) {
        enter_position({next_line, position});
    }
}

// Goes to the last line whose position is known and that is not behind `line`, which
// becomes line `offset` higher. False when that is out of reach, as lines are that have
// left a pipe.
static bool jump_to(const source_position& known, unsigned offset) {
    if (!seek_input(cfile_input, known.position)) {
        return false;
    }
    next_line = known.line;
    begun = 0;
    curr_line = known.line + offset;
    return true;
}

// Goes on as far towards `line` as positions are known.
static void jump_ahead(unsigned line) {
    const unsigned offset = curr_line - next_line;
    const source_position known = known_position(line - offset);
    if (known.line > next_line) {
        jump_to(known, offset);
    }
}

static void pass_line() {
    std::string_view text;
    if (cfile_input.failed || !next_plain_line(cfile_input, longest_text, text)) {
        text = myfgets_text(in_rec, buffer_size, cfile_input);
    }
    count_text(text, longest_text);
    line_is_done();
}

void go_to_line(unsigned line) {
    if (line < curr_line && !jump_to(known_position(line), 0)) {
        give_up_cfile("Cannot read again");
        return;
    }
    const auto is_before = [line] { return curr_line < line && !cfile_input.at_end; };
    while (begun != 0 && is_before()) {
        pass_line();
    }
    if (is_before()) {
        jump_ahead(line);
    }
    while (is_before()) {
        pass_line();
    }
    curr_line = std::max(curr_line, line);
}

void read_source_line(int limit) {
    count_text(myfgets_text(in_rec, limit, cfile_input), static_cast<std::size_t>(limit) - 1);
}

void line_is_done() {
    ++curr_line;
}
