// A C line on its way into the listing.
#include "interlist/source_line.h"

#include <algorithm>
#include <array>
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

void output_formatted_line(char* line) {
    std::string_view text = line;
    if (text.size() > buffer_size) {
        std::puts(">> INTERNAL ERROR");
        end_program(0);
    }
    text = text.substr(0, text.find_last_not_of('\n') + 1);
    line[text.size()] = '\0';
    list_c_line(curr_line, text);
}
