// A sparse table of line positions.
#include "interlist/source_position.h"

#include <algorithm>
#include <array>
#include <cstddef>

// Entry i is the position of line 1 + i * stride; entry 0, the beginning, is always
// there. A full table drops every other entry and doubles its stride, so it covers a
// file of any length.
static std::array<long, 8192> positions{};
static std::size_t used = 1;
static unsigned stride = 1;

static unsigned line_of(std::size_t entry) {
    return 1 + static_cast<unsigned>(entry) * stride;
}

static void halve_table() {
    used /= 2;
    for (std::size_t i = 0; i < used; ++i) {
        positions[i] = positions[2 * i];
    }
    stride *= 2;
}

void forget_positions() {
    used = 1;
    stride = 1;
}

void note_position(const source_position& at) {
    if (used == positions.size()) {
        halve_table();
    }
    if (at.line == line_of(used)) {
        positions[used++] = at.position;
    }
}

source_position known_position(unsigned line) {
    const std::size_t wanted = (std::max(line, 1U) - 1) / stride;
    const std::size_t entry = std::min(wanted, used - 1);
    return {line_of(entry), positions[entry]};
}
