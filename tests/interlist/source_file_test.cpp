// The current C file: which one it is, and the way to its lines.
#include "interlist/source_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstring>

#include "interlist/line_reader.h"
#include "interlist/state.h"
#include "tests/harness/program.h"
#include "tests/interlist/fresh_state.h"

using testing::ExitedWithCode;

namespace {

class CFile : public testing::Test {
  protected:
    CFile() { start_afresh(); }
    ~CFile() override { start_afresh(); }

    // Makes a file of these bytes the current C file.
    void open(const std::string& bytes) {
        start_afresh();
        open_cfile(folder.write("x.c", bytes).c_str());
    }

    // All lines up to the null, separated by bars.
    std::string lines(int size = 100) {
        std::string all;
        while (const char* line = myfgets(in_rec, size, cfile_input)) {
            all.append(line).append("|");
        }
        return all;
    }

    ScratchFolder folder;
};

using OpenCFile = CFile;
using SourcePosition = CFile;

}  // namespace

TEST_F(OpenCFile, ANewNameIsRecorded) {
    EXPECT_EQ(new_cfile("a.c"), curr_seen_file_name);
    EXPECT_STREQ(curr_seen_file_name, "a.c");
    EXPECT_STREQ(curr_open_file_name, "");
}

TEST_F(OpenCFile, AFileStartsAtLineOne) {
    curr_line = 77;
    open_cfile(folder.write("a.c", "a\n").c_str());
    EXPECT_NE(CFILE, nullptr);
    EXPECT_EQ(curr_line, 1U);
    EXPECT_EQ(curr_open_file_name, folder / "a.c");
}

TEST_F(OpenCFile, TheCurrentFileStaysAtItsLine) {
    open("a\nb\n");
    myfgets(in_rec, 100, cfile_input);
    curr_line = 2;
    open_cfile((folder / "x.c").c_str());
    EXPECT_EQ(curr_line, 2U);
    EXPECT_EQ(lines(), "b\n|");
}

TEST_F(OpenCFile, NamesAreComparedByteByByte) {
    open("a\nb\n");
    curr_line = 2;
    open_cfile((folder / "./x.c").c_str());
    EXPECT_EQ(curr_line, 1U);
    EXPECT_EQ(lines(), "a\n|b\n|");
}

TEST_F(OpenCFile, AMissingFileClosesTheLastOne) {
    open("a\n");
    testing::internal::CaptureStderr();
    open_cfile("/nowhere/a.c");
    open_cfile("/nowhere/a.c");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              ">> WARNING: Cannot open source file '/nowhere/a.c': No such file or directory\n");
    EXPECT_EQ(CFILE, nullptr);
    EXPECT_EQ(curr_line, 1U);
    EXPECT_STREQ(curr_open_file_name, "/nowhere/a.c");
}

TEST_F(OpenCFile, AnEmptyNameEndsTheRun) {
    EXPECT_EXIT(
        {
            errno = 0;
            open_cfile("");
        },
        ExitedWithCode(1),
        testing::Eq(">> WARNING: Source file information not available '': Success\n"));
}

TEST_F(OpenCFile, ALastFileThatCannotBeClosedEndsTheRun) {
    const std::string next = folder.write("b.c", "");
    EXPECT_EXIT(
        {
            const auto fail_to_close = [](void*) {
                errno = EIO;
                return -1;
            };
            CFILE = fopencookie(nullptr, "r", {nullptr, nullptr, nullptr, fail_to_close});
            std::strcpy(curr_open_file_name, "a.c");
            open_cfile(next.c_str());
        },
        ExitedWithCode(1), testing::Eq(">> WARNING: Failed to close 'a.c': Input/output error\n"));
}

TEST_F(SourcePosition, LinesAreReachedInAnyOrder) {
    std::string text;
    for (int i = 1; i <= 40000; ++i) {
        text.append("line ").append(std::to_string(i)).append("\n");
    }
    open(text);
    for (const unsigned line :
         {39999U, 1U, 8193U, 8192U, 2U, 40000U, 16385U, 16384U, 12345U, 1U, 30001U}) {
        go_to_line(line);
        EXPECT_EQ(curr_line, line);
        read_source_line(100);
        line_is_done();
        EXPECT_EQ(in_rec, "line " + std::to_string(line) + "\n");
    }
}

TEST_F(SourcePosition, BehindTheEndOnlyTheCounterMoves) {
    open("a\nb\n");
    go_to_line(3);
    EXPECT_FALSE(cfile_input.at_end);
    EXPECT_EQ(curr_line, 3U);
    go_to_line(4000000000U);
    EXPECT_TRUE(cfile_input.at_end);
    EXPECT_EQ(curr_line, 4000000000U);
    go_to_line(2);
    EXPECT_FALSE(cfile_input.at_end);
    EXPECT_EQ(lines(), "b\n|");
}

TEST_F(SourcePosition, TheLineBeforeTheFirstIsTheFirst) {
    open("a\nb\n");
    go_to_line(2);
    go_to_line(0);
    EXPECT_EQ(curr_line, 1U);
    EXPECT_EQ(lines(), "a\n|b\n|");
}

TEST_F(SourcePosition, OddLineEndsCountAsReadingDoes) {
    open(
        "a\xff"
        "b\r\nc\x1a\rd\n\re");
    for (const unsigned line : {5U, 4U, 3U, 2U, 1U, 4U}) {
        go_to_line(line);
        static constexpr std::array<const char*, 5> texts{"a", "b\n", "c\rd\n", "\re", ""};
        read_source_line(100);
        EXPECT_STREQ(in_rec, texts[line - 1]) << line;
        line_is_done();
    }
}
