// Which positions a listing follows, against every way to choose them.
#include "gas2interlist/ascent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

using namespace gas2interlist;

namespace {

using chosen = std::vector<std::size_t>;

std::vector<line_run> runs_of(const std::vector<std::pair<std::uint32_t, std::uint64_t>>& code) {
    std::vector<line_run> runs;
    for (const auto& [line, count] : code) {
        runs.push_back({line, line, count, 4 * count});
    }
    return runs;
}

// What a choice is worth by its definition: the code that it follows and one for each run,
// less the losses of code above its line.
std::int64_t worth(const std::vector<line_run>& runs, const line_run& start, const chosen& choice) {
    std::int64_t value = 0;
    std::uint32_t line = start.line;
    std::uint32_t statement_end = start.statement_end;
    std::size_t at = 0;
    for (const std::size_t next : choice) {
        const std::uint32_t listed = statement_end < runs[next].line ? statement_end : line;
        for (; at < next; ++at) {
            value -= runs[at].line > listed ? static_cast<std::int64_t>(runs[at].loss) : 0;
        }
        value += static_cast<std::int64_t>(runs[next].code) + 1;
        line = runs[next].line;
        statement_end = runs[next].statement_end;
        ++at;
    }
    return value;
}

bool ascends(const std::vector<line_run>& runs, const line_run& start, const chosen& choice) {
    std::uint32_t line = start.line;
    return std::all_of(choice.begin(), choice.end(), [&](std::size_t it) {
        return runs[it].line > std::exchange(line, runs[it].line);
    });
}

std::int64_t greatest_worth(const std::vector<line_run>& runs, const line_run& start) {
    std::int64_t greatest = 0;
    for (unsigned set = 0; set < 1U << runs.size(); ++set) {
        chosen choice;
        for (std::size_t i = 0; i < runs.size(); ++i) {
            if ((set >> i & 1U) != 0) {
                choice.push_back(i);
            }
        }
        if (ascends(runs, start, choice)) {
            greatest = std::max(greatest, worth(runs, start, choice));
        }
    }
    return greatest;
}

}  // namespace

TEST(Ascent, FollowsAllThatAscends) {
    EXPECT_EQ(best_ascent(runs_of({}), {1, 1, 0, 0}), chosen{});
    EXPECT_EQ(best_ascent(runs_of({{2, 1}, {3, 9}, {7, 1}}), {1, 1, 0, 0}), (chosen{0, 1, 2}));
}

TEST(Ascent, OfLinesOutOfOrderTakesTheOneWithMoreCode) {
    EXPECT_EQ(best_ascent(runs_of({{3, 1}, {5, 3}, {4, 2}, {6, 1}}), {2, 2, 0, 0}),
              (chosen{0, 1, 3}));
}

TEST(Ascent, AnInstructionThatWasMovedAheadDoesNotUseUpTheLines) {
    EXPECT_EQ(best_ascent(runs_of({{3, 2}, {9, 1}, {4, 2}, {5, 2}, {6, 2}, {9, 2}}), {2, 2, 0, 0}),
              (chosen{0, 2, 3, 4, 5}));
}

// As where a macro's code has positions of the macro and of its argument by turns.
TEST(Ascent, CodeThatReturnsToALineDoesNotTakeItFromTheCodeAhead) {
    EXPECT_EQ(best_ascent(runs_of({{3, 2}, {4, 1}, {3, 9}, {5, 2}}), {2, 2, 0, 0}),
              (chosen{0, 1, 3}));
}

TEST(Ascent, LinesOfOneStatementAreListedTogetherWhereItsCodeIsNotInOrder) {
    // 4 and 5 are one statement.
    const std::vector<line_run> back = {{5, 5, 3, 12}, {4, 5, 1, 4}, {6, 6, 1, 4}};
    EXPECT_EQ(best_ascent(back, {2, 2, 0, 0}), (chosen{0, 2}));
    const std::vector<line_run> forth = {
        {4, 5, 3, 12}, {5, 5, 1, 4}, {4, 5, 3, 12}, {5, 5, 2, 8}, {6, 6, 1, 4}};
    EXPECT_EQ(best_ascent(forth, {2, 2, 0, 0}), (chosen{0, 1, 4}));
    const std::vector<line_run> in_order = {{4, 5, 3, 12}, {5, 5, 1, 4}, {6, 6, 1, 4}};
    EXPECT_EQ(best_ascent(in_order, {2, 2, 0, 0}), (chosen{0, 1, 2}));
}

TEST(Ascent, IsTheBestOfAll) {
    std::mt19937 random(1);
    const auto number = [&](unsigned from, unsigned to) {
        return from + static_cast<unsigned>(random() % (to - from));
    };
    for (int round = 0; round < 3000; ++round) {
        const unsigned height = number(1, 9);
        std::vector<std::uint32_t> ends(height + 1);
        std::uint32_t end = height;
        for (std::uint32_t line = height + 1; line-- > 0;) {
            end = number(0, 3) == 0 ? end : line;
            ends[line] = end;
        }
        const line_run start = {0, ends[0], 0, 0};
        std::vector<line_run> runs(number(0, 11));
        for (line_run& run : runs) {
            run.line = number(1, height + 1);
            run.statement_end = ends[run.line];
            run.code = number(0, 5);
            run.loss = run.code * number(0, 5);
        }
        const chosen choice = best_ascent(runs, start);
        ASSERT_TRUE(ascends(runs, start, choice));
        ASSERT_EQ(worth(runs, start, choice), greatest_worth(runs, start)) << round;
    }
}
