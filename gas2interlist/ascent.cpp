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

}  // namespace

std::vector<std::size_t> best_ascent(std::span<const line_run> runs, const line_run& start) {
    std::vector<line_run> lines(runs.begin(), runs.end());
    lines.push_back(start);
    std::sort(lines.begin(), lines.end(),
              [](const line_run& one, const line_run& other) { return one.line < other.line; });
    lines.erase(std::unique(lines.begin(), lines.end(),
                            [](const line_run& one, const line_run& other) {
                                return one.line == other.line;
                            }),
                lines.end());
    const auto count_before = [&lines](auto member, std::uint32_t line) {
        return static_cast<std::size_t>(
            std::partition_point(lines.begin(), lines.end(),
                                 [&](const line_run& it) { return it.*member < line; }) -
            lines.begin());
    };

    const std::size_t none = runs.size();
    sequences by_statement{prefix_maximum(lines.size()), std::vector(lines.size(), none)};
    sequences by_line = by_statement;
    by_statement.enter(0, 0, none);
    by_line.enter(0, 0, none);
    std::vector<std::size_t> before(runs.size());  // the run ahead of each in its best sequence
    std::int64_t greatest = 0;
    std::size_t end = none;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto code = static_cast<std::int64_t>(runs[i].code);
        const auto loss = static_cast<std::int64_t>(runs[i].loss);
        const std::size_t lower = count_before(&line_run::line, runs[i].line);
        const std::size_t ended = count_before(&line_run::statement_end, runs[i].line);
        const prefix_maximum::maximum statement = by_statement.worth.below(ended);
        const prefix_maximum::maximum line = by_line.worth.below(lower);
        before[i] = statement.value >= line.value ? by_statement.last[statement.place]
                                                  : by_line.last[line.place];
        // Of two with as much code the one with more runs wins.
        const std::int64_t value = std::max(statement.value, line.value) + code + 1;
        by_statement.worth.add_below(ended, -loss);
        by_line.worth.add_below(lower, -loss);
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
