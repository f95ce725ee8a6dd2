// Interlisting one function.
#include "interlist/function.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "interlist/assembly_line.h"
#include "interlist/diagnostics.h"
#include "interlist/line_reader.h"
#include "interlist/listing_output.h"
#include "interlist/source_file.h"
#include "interlist/source_line.h"
#include "interlist/state.h"

// A directive count that no directive has set: it lasts to the end of the file.
constexpr unsigned no_count = std::numeric_limits<unsigned>::max();

// A listed C line leaves room for the expansion of its tabs.
constexpr int listed_line_limit = 16377;

static bool is_white_space(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

int is_blank_line(const char* line) {
    for (; *line != '\n' && *line != '\0'; ++line) {
        if (*line == '{' || *line == '}' || is_white_space(*line)) {
            continue;
        }
        if (in_comment != 0) {
            if (line[0] == '*' && line[1] == '/') {
                in_comment = 0;
                ++line;
            }
        } else if (line[0] == '/' && line[1] == '*') {
            in_comment = 1;
            ++line;
        } else {
            in_comment = 0;
            return 0;
        }
    }
    return 1;
}

// Goes back to where a look-ahead began. That fails only when ASSY is a pipe
// and the look-ahead was longer than its window.
static void return_to(long position) {
    if (!seek_input(assy_input, position)) {
        file_error("Cannot read again", assy_file_name);
    }
    release_input(assy_input);
}

int skip_lines(unsigned* end_line, unsigned* count, passed_assembly* passed) {
    passed_assembly unused;
    passed_assembly& seen = passed != nullptr ? *passed : unused;
    seen = {};
    const long start = seen.tail = input_position(assy_input);
    if (assembly_has_no_more_positions) {
        return 1;
    }
    hold_input(assy_input);
    unsigned number = 0;
    std::string_view line;
    for (;;) {
        const std::string_view passed_over =
            next_ordinary_lines(assy_input, longest_text, directive_mark);
        number += static_cast<unsigned>(std::count(passed_over.begin(), passed_over.end(), '\n'));
        if (!next_piece(assy_input, longest_text, line)) {
            break;
        }
        ++number;
        const directive kind = directive_of(line);
        if (kind == directive::line || kind == directive::end_of_function) {
            const std::optional<int> carried = operand_number(line, kind);
            *count = number;
            seen.next = seen.tail = input_position(assy_input);
            if (kind == directive::end_of_function) {
                if (carried) {
                    *end_line = static_cast<unsigned>(*carried);
                }
                return_to(start);
                return 1;
            }
            // Relative to the function. A position behind the lines already
            // listed is passed over; its assembly belongs to the next one.
            const unsigned position =
                static_cast<unsigned>(func_line) + static_cast<unsigned>(carried.value_or(0)) - 1;
            if (carried && position >= curr_line) {
                *end_line = position;
                return_to(start);
                return 0;
            }
        }
    }
    seen.met_end = !assy_input.failed;
    return_to(start);
    return 1;
}

namespace {

// What one call of process_func carries from block to block.
struct block_state {
    unsigned end_line = 0;
    unsigned directive_count = 0;
    unsigned previous_end_line = 0;
    unsigned last_line_read = 0;
    int strip_count = 0;
};

}  // namespace

// A position that repeats the previous one lists the line before which the
// previous block stopped. That test does not ask for the end of the file.
static bool another_line_belongs(const block_state& block) {
    return (curr_line < block.end_line && !cfile_input.at_end) ||
           (block.end_line == block.previous_end_line &&
            block.previous_end_line > block.last_line_read);
}

// Lines behind the end of the file are empty. Where blank lines are not listed
// there may be billions of them without a trace, so they are counted at once.
static void pass_lines_behind_the_end(block_state& block) {
    block.last_line_read = std::max(curr_line, block.previous_end_line);
    curr_line = block.last_line_read + 1;
}

static void list_c_lines(block_state& block) {
    bool printed = false;
    while (another_line_belongs(block)) {
        if (skip_blanks != 0 && cfile_input.at_end) {
            pass_lines_behind_the_end(block);
            break;
        }
        read_source_line(listed_line_limit);
        if (skip_blanks == 0 || is_blank_line(in_rec) == 0) {
            if (!printed) {
                list_separator();
                printed = true;
            }
            block.strip_count = format_line(in_rec, block.strip_count);
            output_formatted_line(in_rec);
        }
        block.last_line_read = curr_line;
        line_is_done();
    }
    if (printed) {
        list_separator();
        block.strip_count = 0;
    }
}

static void copy_line() {
    std::string_view line;
    if (assy_input.failed || !next_plain_line(assy_input, longest_text, line)) {
        line = myfgets_text(in_rec, buffer_size, assy_input);
    }
    owrite(line);
}

// Copies `count` lines, or those up to the end of the file. They were passed by
// a look-ahead, which counts them as the C library reads lines; where all of
// them are plain, that is as many as copying reads, and they end at the same
// position.
static void copy_assembly(unsigned count, const passed_assembly& passed) {
    if (count != no_count && plain_up_to(assy_input, passed.next)) {
        while (input_position(assy_input) < passed.next) {
            list_assembly(next_ordinary_lines(assy_input, longest_text, directive_mark));
            copy_line();
        }
        return;
    }
    for (; count != 0 && !assy_input.at_end; --count) {
        copy_line();
    }
}

void process_func() {
    if (CFILE == nullptr) {
        return;
    }
    go_to_line(static_cast<unsigned>(func_line));
    if (CFILE == nullptr) {  // the line was out of reach
        return;
    }
    block_state block;
    for (;;) {
        passed_assembly passed;
        const int done = skip_lines(&block.end_line, &block.directive_count, &passed);
        list_c_lines(block);
        copy_assembly(block.directive_count, passed);
        block.directive_count = no_count;
        if (done != 0) {
            assembly_has_no_more_positions |=
                passed.met_end && input_position(assy_input) == passed.tail;
            return;
        }
        block.previous_end_line = block.end_line;
    }
}
