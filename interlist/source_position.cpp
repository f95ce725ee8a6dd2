// One sparse table of line positions for all C files.
#include "interlist/source_position.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <tuple>
#include <utility>

namespace {

// What a file is known by, and whether it is still what it was.
struct file_identity {
    dev_t device;
    ino_t number;
    off_t size;
    timespec modified;
    timespec changed;
};

struct entry {
    unsigned file;  // its place among the known files
    unsigned line;
    long position;
};

// A table that grows up to its fixed capacity.
template <typename Row, std::size_t Capacity>
struct fixed_table {
    std::array<Row, Capacity> rows;
    std::size_t used = 0;

    std::span<Row> all() { return std::span(rows).first(used); }
    bool is_full() const { return used == Capacity; }
};

}  // namespace

static fixed_table<file_identity, 1024> files;
static fixed_table<entry, 8192> entries;  // by file and line

// Positions lie at least as far apart as this, from the beginning of the file on. When a
// table is full the distance grows until half of it is free again, so that what there
// is serves any number of files of any size: the larger a file, the more entries it has.
constexpr long least_distance = 1024;
static long distance = least_distance;

// The current file, and its place among those that have an entry; no_file if it has none.
constexpr unsigned no_file = std::numeric_limits<unsigned>::max();
static file_identity current{};
static unsigned current_file = no_file;

constexpr long nothing_wanted = std::numeric_limits<long>::max();
long next_wanted_position = nothing_wanted;

static auto order(const timespec& time) {
    return std::tuple(time.tv_sec, time.tv_nsec);
}

static bool is_same(const file_identity& a, const file_identity& b) {
    return a.device == b.device && a.number == b.number && a.size == b.size &&
           order(a.modified) == order(b.modified) && order(a.changed) == order(b.changed);
}

// The first entry that lies behind `line` of the current file, be it one of another file.
static std::size_t place_behind(unsigned line) {
    const std::span<entry> all = entries.all();
    const auto found = std::upper_bound(all.begin(), all.end(), std::tuple(current_file, line),
                                        [](const auto& wanted, const entry& each) {
                                            return wanted < std::tuple(each.file, each.line);
                                        });
    return static_cast<std::size_t>(found - all.begin());
}

static bool is_of_current_file(std::size_t place) {
    return place < entries.used && entries.rows[place].file == current_file;
}

// What is known in front of an entry: the one before it, or the beginning of the file.
static source_position known_before(std::size_t place) {
    if (place == 0 || !is_of_current_file(place - 1)) {
        return {};
    }
    return {entries.rows[place - 1].line, entries.rows[place - 1].position};
}

void turn_to_file(const struct stat& status) {
    current_file = no_file;
    next_wanted_position = nothing_wanted;
    if (!S_ISREG(status.st_mode)) {
        return;
    }
    current = {status.st_dev, status.st_ino, status.st_size, status.st_mtim, status.st_ctim};
    const std::span<file_identity> known = files.all();
    const auto found = std::find_if(known.begin(), known.end(), [](const file_identity& each) {
        return is_same(each, current);
    });
    if (found != known.end()) {
        current_file = static_cast<unsigned>(found - known.begin());
    }
    next_wanted_position = distance;
}

source_position known_position(unsigned line) {
    return known_before(place_behind(line));
}

static void drop_close_entries() {
    std::size_t kept = 0;
    for (const entry& each : entries.all()) {
        const bool follows = kept > 0 && entries.rows[kept - 1].file == each.file;
        if (each.position - (follows ? entries.rows[kept - 1].position : 0) >= distance) {
            entries.rows[kept++] = each;
        }
    }
    entries.used = kept;
}

// Files that have lost their last entry go, and the others move up.
static void drop_unused_files() {
    unsigned kept = 0;
    unsigned last = no_file;
    const unsigned before = std::exchange(current_file, no_file);
    for (entry& each : entries.all()) {
        if (each.file != last) {
            last = each.file;
            current_file = last == before ? kept : current_file;
            files.rows[kept++] = files.rows[last];
        }
        each.file = kept - 1;
    }
    files.used = kept;
}

static void make_room() {
    do {
        distance *= 2;
        drop_close_entries();
        drop_unused_files();
    } while (entries.used > entries.rows.size() / 2 || files.used > files.rows.size() / 2);
}

static void insert(std::size_t place, const source_position& at) {
    const std::span<entry> all = std::span(entries.rows).first(++entries.used);
    std::move_backward(all.begin() + static_cast<std::ptrdiff_t>(place), all.end() - 1, all.end());
    all[place] = {current_file, at.line, at.position};
}

void enter_position(const source_position& at) {
    const std::size_t place = place_behind(at.line);
    const long before = known_before(place).position;
    if (at.position - before < distance) {
        next_wanted_position = before + distance;
        return;
    }
    if (is_of_current_file(place)) {
        next_wanted_position = entries.rows[place].position + distance;
        return;
    }
    if (entries.is_full() || (current_file == no_file && files.is_full())) {
        make_room();
        enter_position(at);
        return;
    }
    if (current_file == no_file) {
        current_file = static_cast<unsigned>(files.used);
        files.rows[files.used++] = current;
    }
    insert(place_behind(at.line), at);
    next_wanted_position = at.position + distance;
}

void forget_positions() {
    files.used = entries.used = 0;
    distance = least_distance;
    turn_to_file({});
}
