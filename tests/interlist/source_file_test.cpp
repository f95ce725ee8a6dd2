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
using GoToLine = CFile;

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

TEST_F(GoToLine, LinesAreReachedInAnyOrder) {
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

TEST_F(GoToLine, BehindTheEndOnlyTheCounterMoves) {
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

TEST_F(GoToLine, TheLineBeforeTheFirstIsTheFirst) {
    open("a\nb\n");
    go_to_line(2);
    go_to_line(0);
    EXPECT_EQ(curr_line, 1U);
    EXPECT_EQ(lines(), "a\n|b\n|");
}

TEST_F(GoToLine, OddLineEndsCountAsReadingDoes) {
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

// Where a line is that was listed in more pieces than the full buffer makes of it.
TEST_F(GoToLine, LinesBehindALongOneThatWasListedAreCountedFromIt) {
    for (const std::size_t length : {16374U, 16375U, 16376U, 16381U, 16382U, 16383U, 16384U, 16390U,
                                     32751U, 32752U, 32765U, 32766U, 32767U, 49140U, 100000U}) {
        std::string text = "1\n" + std::string(length, 'x') + "\n";
        for (int i = 1; i <= 3000; ++i) {
            text.append("behind ").append(std::to_string(i)).append("\n");
        }
        open(text);
        // All of it is passed once, so that positions are known.
        go_to_line(2900);
        go_to_line(2);
        const unsigned listed = static_cast<unsigned>(length / 16376) + 1;
        for (unsigned piece = 0; piece < listed; ++piece) {
            read_source_line(16377);
            line_is_done();
        }
        EXPECT_EQ(curr_line, 2 + listed);
        for (const unsigned behind : {1U, 2U, 1000U, 2000U}) {
            go_to_line(2 + listed + behind - 1);
            read_source_line(16377);
            EXPECT_EQ(in_rec, "behind " + std::to_string(behind) + "\n") << length;
            line_is_done();
        }
        // From the beginning they count as the full buffer holds them.
        const unsigned counted = static_cast<unsigned>(length / 16383) + 1;
        go_to_line(2);
        go_to_line(2 + counted + 1500 - 1);
        read_source_line(16377);
        EXPECT_STREQ(in_rec, "behind 1500\n") << length;
    }
}

TEST_F(GoToLine, ALongLineThatWasBegunIsReadToItsEnd) {
    open("1\n" + std::string(50000, 'x') + "\n3\n4\n");
    go_to_line(4000000000U);  // positions are known, inside the long line as well
    go_to_line(2);
    read_source_line(16377);
    line_is_done();
    // From the 16377th byte on: 16383, 16383 and the last 859 with the newline.
    go_to_line(6);
    read_source_line(16377);
    EXPECT_STREQ(in_rec, "3\n");
}

TEST_F(GoToLine, AByteOf255BehindAFullBufferEndsAnEmptyLine) {
    open(std::string(16383, 'x') + "\xff" + "2\n" + std::string(16376, 'y') + "\xff" + "4\n");
    for (const unsigned line : {3U, 1U, 6U, 4U, 3U}) {
        go_to_line(line);
    }
    read_source_line(16377);  // line 3, "2"
    EXPECT_STREQ(in_rec, "2\n");
    line_is_done();
    read_source_line(16377);  // the y, and nothing behind them
    line_is_done();
    read_source_line(16377);
    EXPECT_STREQ(in_rec, "");
    line_is_done();
    EXPECT_EQ(curr_line, 6U);
    go_to_line(6);
    read_source_line(16377);
    EXPECT_STREQ(in_rec, "4\n");
}

TEST_F(GoToLine, PositionsAreKnownWhenAFileComesBack) {
    std::string text;
    for (int i = 1; i <= 40000; ++i) {
        text.append("line ").append(std::to_string(i)).append("\n");
    }
    open(text);
    const std::string other = folder.write("y.c", "other\n");
    for (const unsigned line : {30000U, 20000U, 40000U, 1U}) {
        open_cfile((folder / "x.c").c_str());
        EXPECT_EQ(curr_line, 1U);
        go_to_line(line);
        read_source_line(100);
        EXPECT_EQ(in_rec, "line " + std::to_string(line) + "\n");
        open_cfile(other.c_str());
        read_source_line(100);
        EXPECT_STREQ(in_rec, "other\n");
    }
    folder.write("x.c", "new\n" + text);
    open_cfile((folder / "x.c").c_str());
    go_to_line(30000);
    read_source_line(100);
    EXPECT_STREQ(in_rec, "line 29999\n");
}

TEST_F(GoToLine, ALongLineThatWasBegunIsOfItsFileAlone) {
    std::string text;
    for (int i = 1; i <= 3000; ++i) {
        text.append("line ").append(std::to_string(i)).append(40, '.').append("\n");
    }
    open(std::string(20000, 'x') + "\n");
    go_to_line(1);
    read_source_line(16377);
    line_is_done();
    open_cfile(folder.write("y.c", text).c_str());
    go_to_line(3000);
    go_to_line(1000);
    read_source_line(100);
    EXPECT_EQ(std::string(in_rec).substr(0, 10), "line 1000.");
}

TEST_F(GoToLine, AByteOf255JustBeforeTheListedLimitEndsALine) {
    std::string text = std::string(16375, 'y') + "\xff";
    for (int i = 2; i <= 3000; ++i) {
        text.append("line ").append(std::to_string(i)).append("\n");
    }
    open(text);
    go_to_line(2900);
    go_to_line(1);
    for (int line = 1; line <= 2; ++line) {
        read_source_line(16377);
        line_is_done();
    }
    go_to_line(2000);
    read_source_line(16377);
    EXPECT_STREQ(in_rec, "line 2000\n");
}
