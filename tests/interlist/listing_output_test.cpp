// The listing's lines, its widths, and writes that fail.
#include "interlist/listing_output.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

using testing::ExitedWithCode;

namespace {

class ListingOutput : public testing::Test {
  protected:
    ListingOutput() { begin_pass(folder, ""); }
    ~ListingOutput() override { start_afresh(); }

    ScratchFolder folder;
};

void limit_files_to(rlim_t size) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{size, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace

TEST_F(ListingOutput, IsGatheredUntilItEnds) {
    list_assembly("one\n");
    list_separator();
    list_c_line(7, "two");
    EXPECT_EQ(folder.read("prog.cl"), "");
    end_listing();
    EXPECT_EQ(LIST, nullptr);
    EXPECT_EQ(folder.read("prog.cl"),
              "one\n;" + std::string(70, '-') + "\n;   7 | two" + std::string(68, ' ') + "\n");
}

TEST_F(ListingOutput, EndsOnlyOnce) {
    end_listing();
    end_listing();
    EXPECT_EQ(folder.read("prog.cl"), "");
}

TEST_F(ListingOutput, KeepsTheOrderAcrossBlocks) {
    std::string expected;
    for (std::size_t i = 0; i < 5000; ++i) {
        const std::string text = std::to_string(i) + std::string(i % 100, 'x') + "\n";
        list_assembly(text);
        expected += text;
    }
    list_assembly(std::string(200000, 'y'));
    end_listing();
    EXPECT_EQ(folder.read("prog.cl"), expected + std::string(200000, 'y'));
}

TEST_F(ListingOutput, ThatCannotBeWrittenEndsTheRunAtOnce) {
    EXPECT_EXIT(
        {
            std::strcpy(temp_file_name, "/dev/full");
            begin_listing();
            list_assembly(std::string(70000, 'x'));
            _exit(0);
        },
        ExitedWithCode(1),
        testing::Eq(">> WARNING: Failed to close '/dev/full': No space left on device\n"));
}

TEST_F(ListingOutput, ThatCannotBeFilledEndsTheRunAtOnce) {
    EXPECT_EXIT(
        {
            std::strcpy(temp_file_name, "/dev/full");
            cut_colm = 70000;
            begin_listing();
            list_separator();
            _exit(0);
        },
        ExitedWithCode(1),
        testing::Eq(">> WARNING: Failed to close '/dev/full': No space left on device\n"));
}

TEST_F(ListingOutput, IsNotWrittenTwiceAfterAWriteThatFailed) {
    EXPECT_EXIT(
        {
            limit_files_to(100);
            list_assembly(std::string(70000, 'x'));
            _exit(0);
        },
        ExitedWithCode(1), "Failed to close '.*/prog.cl': File too large\n$");
    EXPECT_EQ(folder.read("prog.cl"), std::string(100, 'x'));
}

TEST_F(ListingOutput, ThatCannotBeOpenedEndsTheRun) {
    EXPECT_EXIT(
        {
            std::strcpy(temp_file_name, "/nowhere/x.cl");
            begin_listing();
        },
        ExitedWithCode(1),
        testing::Eq(
            ">> WARNING: Cannot open temp file '/nowhere/x.cl': No such file or directory\n"));
}
