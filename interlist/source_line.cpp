// How a C line looks in the listing.
#include "interlist/source_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "interlist/diagnostics.h"
#include "interlist/listing_output.h"
#include "interlist/state.h"

constexpr std::size_t longest_expanding_line = 16376;
constexpr std::size_t most_blanks_removed = 9999;

// One pass from left to right: a tab's position in the expanded line is known
// when it is met, and so is the length that the line has by then.
static void expand_tabs(char* line) {
    if (std::strchr(line, '\t') == nullptr) {
        return;
    }
    std::array<char, buffer_size> expanded;
    std::size_t length = std::strlen(line);
    std::size_t to = 0;
    const char* from = line;
    for (; *from != '\0' && (*from != '\t' || length <= longest_expanding_line); ++from) {
        if (*from != '\t') {
            expanded[to++] = *from;
            continue;
        }
        const std::size_t stop = (to / 8 + 1) * 8;
        length += stop - to - 1;
        std::fill(expanded.begin() + static_cast<std::ptrdiff_t>(to),
                  expanded.begin() + static_cast<std::ptrdiff_t>(stop), ' ');
        to = stop;
    }
    // What was not expanded moves behind what was.
    std::memmove(line + to, from, std::strlen(from) + 1);
    std::memcpy(line, expanded.data(), to);
}

static void remove_leading(char* line, std::size_t blanks) {
    const std::size_t rest = std::strlen(line + blanks);
    // The first removal has the longest rest.
    if (blanks > 0 && rest + blanks - 1 > longest_text) {
        limit_error();
    }
    std::memmove(line, line + blanks, rest + 1);
}

int format_line(char* line, int strip_count) {
    expand_tabs(line);
    if (preserve_sp != 0 || *line != ' ') {
        return strip_count;
    }
    const std::size_t blanks = std::strspn(line, " ");
    if (strip_count != 0) {
        remove_leading(line, std::min(blanks, static_cast<std::size_t>(std::max(strip_count, 0))));
        return strip_count;
    }
    const std::size_t removed = std::min(blanks, most_blanks_removed);
    remove_leading(line, removed);
    // One more than was removed when the limit stopped the removal.
    return static_cast<int>(blanks > removed ? removed + 1 : removed);
}

static std::size_t text_width() {
    if (cut_colm == 0) {
        return 71;
    }
    return cut_colm > 8 ? static_cast<std::size_t>(cut_colm) - 8 : 1;
}

// "; %3d | ", with the number in at least three columns.
static void write_numbered_prefix() {
    std::array<char, 24> prefix{';', ' '};
    std::array<char, 12> digits{};
    const char* const digits_end =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<int>(curr_line))
            .ptr;
    const auto count = static_cast<std::size_t>(digits_end - digits.data());
    char* to = prefix.data() + 2;
    to = std::fill_n(to, count < 3 ? 3 - count : 0, ' ');
    to = std::copy_n(digits.data(), count, to);
    to = std::copy_n(" | ", 3, to);
    write_listing({prefix.data(), static_cast<std::size_t>(to - prefix.data())});
}

static void write_padded(std::string_view text, std::size_t width) {
    write_listing(text);
    fill_listing(' ', width - text.size());
    write_listing("\n");
}

void output_formatted_line(char* line) {
    const std::size_t width = text_width();
    std::string_view text = line;
    if (text.size() > buffer_size) {
        std::puts(">> INTERNAL ERROR");
        end_program(0);
    }
    text = text.substr(0, text.find_last_not_of('\n') + 1);
    line[text.size()] = '\0';
    write_numbered_prefix();
    if (text.size() <= width) {
        write_padded(text, width);
        return;
    }
    const std::string_view first = text.substr(0, width);
    write_listing(first.substr(0, first.find_last_not_of(' ') + 1));
    write_listing("\n");
    for (std::size_t at = width; at < text.size(); at += width) {
        write_listing(";     | ");
        write_padded(text.substr(at, width), width);
    }
}
