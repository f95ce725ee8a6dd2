// Finds the best ascending sequence of runs, one run after the other: the best that ends
// with a run continues the best that ends on a lower line, and code that is passed over
// counts against the sequences that it is too far ahead of.
#include "gas2interlist/ascent.h"

#include <algorithm>
#include <cstdint>

#include "gas2interlist/prefix_maximum.h"

namespace gas2interlist {

namespace {

// The best sequences by their last line, each as far as something may continue it.
struct sequences {
    prefix_maximum worth;
    std::vector<std::size_t> last;  // the run that each ends with

    void enter(std::size_t place, std::int64_t value, std::size_t run) {
        if (worth.raise(place, value)) {
            last[place] = run;
        }
    }
};

// Where a run stands among the lines of all, each counted once.
struct line_place {
    std::uint32_t lower;  // so many are lower than its own
    std::uint32_t ended;  // the statements of so many end below it
};

}  // namespace

// Gives the place of each run, and how many lines there are; `start` has the first.
static std::size_t find_places(std::span<const line_run> runs, const line_run& start,
                               std::vector<line_place>& places) {
    std::vector<std::uint64_t> order;  // lines, each with the index of its run behind it
    order.reserve(runs.size());
    for (const line_run& run : runs) {
        order.push_back(std::uint64_t{run.line} << 32 | order.size());
    }
    std::sort(order.begin(), order.end());

    places.resize(runs.size());
    std::vector<std::uint32_t> statement_ends = {start.statement_end};
    std::uint32_t line = start.line;
    std::uint32_t ended = 0;
    for (const std::uint64_t it : order) {
        const line_run& run = runs[static_cast<std::uint32_t>(it)];
        if (run.line != line) {
            line = run.line;
            while (ended < statement_ends.size() && statement_ends[ended] < line) {
                ++ended;
            }
            statement_ends.push_back(run.statement_end);
        }
        places[static_cast<std::uint32_t>(it)] = {
            static_cast<std::uint32_t>(statement_ends.size() - 1), ended};
    }
    return statement_ends.size();
}

std::vector<std::size_t> best_ascent(std::span<const line_run> runs, const line_run& start) {
    std::vector<line_place> places;
    const std::size_t lines = find_places(runs, start, places);

    const std::size_t none = runs.size();
    sequences by_statement{prefix_maximum(lines), std::vector(lines, none)};
    sequences by_line = by_statement;
    by_statement.enter(0, 0, none);
    by_line.enter(0, 0, none);
    std::vector<std::size_t> before(runs.size());  // the run ahead of each in its best sequence
    std::int64_t greatest = 0;
    std::size_t end = none;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto code = static_cast<std::int64_t>(runs[i].code);
        const auto loss = static_cast<std::int64_t>(runs[i].loss);
        const auto [lower, ended] = places[i];
        const prefix_maximum::maximum statement = by_statement.worth.take_below(ended, -loss);
        const prefix_maximum::maximum line = by_line.worth.take_below(lower, -loss);
        before[i] = statement.value >= line.value ? by_statement.last[statement.place]
                                                  : by_line.last[line.place];
        // Of two with as much code the one with more runs wins.
        const std::int64_t value = std::max(statement.value, line.value) + code + 1;
        by_statement.enter(lower, value, i);
        by_line.enter(lower, value, i);
        if (value >= greatest) {
            greatest = value;
            end = i;
        }
    }
    std::vector<std::size_t> best;
    for (std::size_t i = end; i != none; i = before[i]) {
        best.push_back(i);
    }
    std::reverse(best.begin(), best.end());
    return best;
}

}  // namespace gas2interlist
