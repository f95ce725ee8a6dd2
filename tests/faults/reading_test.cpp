// How often the interlister reads: with its input and its output, whatever the order of
// functions and files and however long a line is.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

#include "tests/faults/fault.h"

namespace {

constexpr int functions = 600;
constexpr int function_lines = 20;

std::string source(const std::string& first) {
    std::string text = first;
    for (int i = 0; i < functions * function_lines; ++i) {
        text += "    line_of_source(about as long, as code, is);  // and its comment\n";
    }
    return text;
}

// Functions in this order, each in the file of the turn.
std::string assembly(const std::vector<int>& order, const std::vector<std::string>& names,
                     int first_line) {
    std::string text;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const int first = first_line + order[i] * function_lines;
        text += "\t.ifile\t\"" + names[i % names.size()] + "\"\n\t.ifunc\t" +
                std::to_string(first) + "\n\tnop\n\t.iendfunc\t" +
                std::to_string(first + function_lines) + "\n";
    }
    return text;
}

class Reading : public testing::Test {
  protected:
    Reading() : plain(functions), random(functions) {
        std::iota(plain.begin(), plain.end(), 0);
        random = plain;
        std::shuffle(random.begin(), random.end(), std::mt19937(1));
    }

    static const call_kind* kind(std::string_view name) {
        const auto kinds = call_kinds();
        return &*std::find_if(kinds.begin(), kinds.end(),
                              [=](const call_kind& each) { return each.name == name; });
    }

    // Calls of a kind that a run makes, or 0 where they cannot be counted. Those that are
    // short by design are so from the first one on.
    int calls(const std::string& text, std::string_view wanted = "read") {
        folder.write("p.asm", text);
        RunOptions options;
        options.directory = folder.path();
        const call_kind* const counted = kind(wanted);
        const int nth = counted->error == 0 ? 1 : std::numeric_limits<int>::max();
        const std::optional<faulted_run> run = run_with_fault(
            {INTERLIST, "p.asm"}, options, {.calls = counted, .nth = nth, .lasting = true});
        EXPECT_TRUE(!run || run->finished.status == 0);
        return run ? run->calls : 0;
    }

    ScratchFolder folder;
    std::vector<int> plain;
    std::vector<int> random;
};

}  // namespace

TEST_F(Reading, TakesMoreCallsWhereTheyAreShort) {
    folder.write("a.c", source(""));
    const std::string text = assembly(plain, {"a.c"}, 1);
    const int whole = calls(text);
    if (whole == 0) {
        GTEST_SKIP() << "not possible on this system";
    }
    const std::string listing = folder.read("p.cl");
    EXPECT_GT(calls(text, "short_read"), 3 * whole);
    EXPECT_EQ(folder.read("p.cl"), listing);
    EXPECT_GT(calls(text, "short_write"), 3 * calls(text, "write"));
    EXPECT_EQ(folder.read("p.cl"), listing);
}

TEST_F(Reading, GrowsWithInputAndOutputOnly) {
    folder.write("a.c", source(""));
    folder.write("b.c", source(""));
    const int most = calls(assembly(plain, {"a.c"}, 1));
    if (most == 0) {
        GTEST_SKIP() << "not possible on this system";
    }
    EXPECT_LT(most, functions);
    // A function costs a read of its own where another one lies between, or two.
    EXPECT_LT(calls(assembly(random, {"a.c"}, 1)), 3 * functions);
    EXPECT_LT(calls(assembly(plain, {"a.c", "b.c"}, 1)), 3 * functions);
    EXPECT_LT(calls(assembly(random, {"a.c", "b.c"}, 1)), 3 * functions);
    // The first line, longer than a listed one may be, comes again before each function:
    // its first piece alone, or with all that follows in its function.
    folder.write("a.c", source(std::string(16380, 'x') + "\n"));
    std::string again;
    for (const int each : random) {
        again += "\t.ifunc\t1\n\t.iendfunc\t2\n" + assembly({each}, {"a.c"}, 1);
    }
    EXPECT_LT(calls(again), 6 * functions);
    std::vector<int> order;
    for (const int each : random) {
        order.insert(order.end(), {0, each});
    }
    EXPECT_LT(calls(assembly(order, {"a.c"}, 1)), 6 * functions);
}

// The first function is longer than the window, so that the pass goes back behind what its
// look-ahead has read.
TEST_F(Reading, DoesNotTakeAnErrorInALookAheadForTheEnd) {
    std::string long_function = "\t.ifunc\t1\n";
    for (int i = 0; i < 20000; ++i) {
        long_function += "\tnop\n";
    }
    folder.write("a.c", "one\ntwo\nthree\nfour\n");
    folder.write("p.asm", "\t.ifile\t\"a.c\"\n" + long_function +
                              "\t.iendfunc\t3\n\t.ifunc\t3\nB\n\t.iendfunc\t5\n");
    RunOptions options;
    options.directory = folder.path();
    const std::vector<std::string> words{INTERLIST, "p.asm"};
    ASSERT_EQ(run_program(words, options).status, 0);
    const std::string whole = folder.read("p.cl");
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE("read " + std::to_string(nth));
        const std::optional<faulted_run> run =
            run_with_fault(words, options, {.calls = kind("read"), .nth = nth});
        if (!run) {
            GTEST_SKIP() << "not possible on this system";
        }
        const std::string listing = folder.read("p.cl");
        if (!run->hit) {
            EXPECT_GT(nth, 5);
            EXPECT_TRUE(listing == whole);
            break;
        }
        if (run->finished.status == 0) {
            EXPECT_TRUE(whole.starts_with(listing));
        } else {
            EXPECT_EQ(run->finished.status, 1);
            EXPECT_EQ(run->finished.out, "\n>> Error while reading file\n");
        }
    }
}
