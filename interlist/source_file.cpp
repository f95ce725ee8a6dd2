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

// True while CFILE stands where curr_line lines, counted from the beginning with the
// full buffer, lead. A line that was listed in two pieces counts twice and ends that
// until the next rewind.
static bool counts_hold = false;

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
    forget_positions();
    counts_hold = true;
}

// As with a file that cannot be opened, its functions are listed without C lines from
// here on.
static void give_up_cfile(const char* message) {
    file_warn(message, curr_open_file_name);
    close_cfile();
}

// Goes to the last line whose position is known and that is not behind `line`. False when
// that is out of reach, as lines are that have left a pipe.
static bool jump_towards(unsigned line) {
    const source_position known = known_position(line);
    if (!seek_input(cfile_input, known.position)) {
        return false;
    }
    curr_line = known.line;
    counts_hold = true;
    return true;
}

// True when a line between the current one and `line` has a known position.
static bool positions_lead_on(unsigned line) {
    return counts_hold && !cfile_input.at_end && line > curr_line &&
           known_position(line).line > curr_line;
}

void go_to_line(unsigned line) {
    if ((line < curr_line || positions_lead_on(line)) && !jump_towards(line)) {
        give_up_cfile("Cannot read again");
        return;
    }
    while (curr_line < line && !cfile_input.at_end) {
        std::string_view passed;
        if (cfile_input.failed || !next_plain_line(cfile_input, longest_text, passed)) {
            myfgets(in_rec, buffer_size, cfile_input);
        }
        line_is_done();
    }
    curr_line = std::max(curr_line, line);
}

void read_source_line(int limit) {
    // The mark survives every line that is short of the limit, and a newline in
    // its place ends a line that just fits. Anything else there, a NUL included,
    // may be a piece that the limit ended: not a line as go_to_line() counts.
    char& mark = in_rec[limit - 2];
    mark = '\n';
    myfgets(in_rec, limit, cfile_input);
    if (mark != '\n') {
        counts_hold = false;
    }
}

// A position at which the end of the file has been met is left out: the indicator would
// be lost.
void line_is_done() {
    ++curr_line;
    if (counts_hold && !cfile_input.at_end) {
        note_position({curr_line, input_position(cfile_input)});
    }
}
