// Which of a function's positions its listing follows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace gas2interlist {

// Code of one source line, up to that of another.
struct line_run {
    std::uint32_t line;
    std::uint32_t statement_end;  // the line on which the statement that holds `line` ends
    std::uint64_t code;           // how many lines of code it has
    std::uint64_t loss;           // what it counts when they stand above their line
};

// A function's source lines are listed once and in order, at the runs that its listing
// follows; these ascend. At each run are listed the lines behind the statement of the run
// before, or behind its line in the same statement, up to those of the next run. So code
// between two runs stands above its line where that is listed only at the second.
// Gives the indices of the runs to follow: those that have the most code, one more for each
// run, less the losses. `start` is a line before all of them.
std::vector<std::size_t> best_ascent(std::span<const line_run> runs, const line_run& start);

}  // namespace gas2interlist
