// Reaching a line of the C file, with a sparse table of line positions.
#include "interlist/source_position.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "interlist/diagnostics.h"
#include "interlist/source_file.h"
#include "interlist/state.h"

namespace {

// Entry i is the position of line 1 + i * stride; entry 0, the beginning, is
// always there. A full table drops every
// other entry and doubles its stride, so it covers a file of any length.
struct position_table {
    std::array<long, 8192> positions{};
    std::size_t used = 0;
    unsigned stride = 1;

    // True while CFILE stands where curr_line lines, counted from the beginning
    // with the full buffer, lead. A line that was listed in two pieces counts
    // twice and ends that until the next rewind.
    bool counts_hold = false;
};

position_table table;

unsigned line_of(std::size_t entry) {
    return 1 + static_cast<unsigned>(entry) * table.stride;
}

void halve_table() {
    table.used /= 2;
    for (std::size_t i = 0; i < table.used; ++i) {
        table.positions[i] = table.positions[2 * i];
    }
    table.stride *= 2;
}

// Enters the position of curr_line if its turn has come. A position at which
// the end of the file has been met is left out: the indicator would be lost.
void note_position() {
    if (!table.counts_hold || cfile_input.at_end) {
        return;
    }
    if (table.used == table.positions.size()) {
        halve_table();
    }
    if (curr_line == line_of(table.used)) {
        table.positions[table.used++] = input_position(cfile_input);
    }
}

// Goes to the last line in the table that is not behind `line`. False when that is out
// of reach, as lines are that have left a pipe.
bool jump_towards(unsigned line) {
    const std::size_t wanted = (std::max(line, 1U) - 1) / table.stride;
    const std::size_t entry = std::min(wanted, table.used - 1);
    if (!seek_input(cfile_input, table.positions[entry])) {
        return false;
    }
    curr_line = line_of(entry);
    table.counts_hold = true;
    return true;
}

// True when the table knows a line between the current one and `line`.
bool table_leads_on(unsigned line) {
    return table.counts_hold && !cfile_input.at_end && line > curr_line &&
           line_of(std::min<std::size_t>((line - 1) / table.stride, table.used - 1)) > curr_line;
}

}  // namespace

void forget_positions() {
    table.used = 1;
    table.stride = 1;
    table.counts_hold = true;
}

void go_to_line(unsigned line) {
    if ((line < curr_line || table_leads_on(line)) && !jump_towards(line)) {
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
        table.counts_hold = false;
    }
}

void line_is_done() {
    ++curr_line;
    note_position();
}
