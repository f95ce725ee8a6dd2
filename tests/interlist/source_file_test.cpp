// Line input with the tool's own rules, and the current C file.
#include "interlist/source_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstring>

#include "interlist/source_position.h"
#include "interlist/state.h"
#include "tests/harness/program.h"
#include "tests/interlist/fresh_state.h"

using testing::ExitedWithCode;

namespace {

constexpr const char* read_error_text = "\n>> Error while reading file\n";

// Delivers some bytes and then an error.
ssize_t fail_at_the_end(void* cookie, char* to, std::size_t room) {
    auto& rest = *static_cast<std::string_view*>(cookie);
    if (rest.empty()) {
        errno = EIO;
        return -1;
    }
    const std::size_t size = rest.copy(to, room);
    rest.remove_prefix(size);
    return static_cast<ssize_t>(size);
}

class LineInput : public testing::Test {
  protected:
    LineInput() { start_afresh(); }
    ~LineInput() override { start_afresh(); }

    // Makes a file of these bytes the current C file.
    void open(const std::string& bytes) {
        start_afresh();
        open_cfile(folder.write("x.c", bytes).c_str());
    }

    void open_failing_after(std::string_view bytes) {
        start_afresh();
        rest = bytes;
        CFILE = fopencookie(&rest, "r", {fail_at_the_end, nullptr, nullptr, nullptr});
        attach_input(cfile_input, CFILE);
    }

    // All lines up to the null, separated by bars.
    std::string lines(int size = 100) {
        std::string all;
        while (const char* line = myfgets(in_rec, size, cfile_input)) {
            all.append(line).append("|");
        }
        return all;
    }

    std::string characters() {
        std::string all;
        for (int c = mygetc(cfile_input); c != -1 || !cfile_input.at_end; c = mygetc(cfile_input)) {
            all.append(std::to_string(c)).append(" ");
        }
        return all;
    }

    ScratchFolder folder;
    std::string_view rest;
};

using OpenCFile = LineInput;
using SourcePosition = LineInput;

}  // namespace

TEST_F(LineInput, CharactersAreSigned) {
    open("a\xe4\xff\n");
    EXPECT_EQ(characters(), "97 -28 -1 10 ");
    EXPECT_EQ(mygetc(cfile_input), -1);
}

TEST_F(LineInput, CarriageReturnAndNewlineAreOneCharacter) {
    open("a\r\nb\rc\r\r\n\r");
    EXPECT_EQ(characters(), "97 10 98 13 99 13 10 13 ");
}

TEST_F(LineInput, ControlZIsSkipped) {
    open(
        "\x1a"
        "a\x1a\x1a\n\x1a");
    EXPECT_EQ(characters(), "97 10 ");
    open("\x1a\r\n");
    EXPECT_EQ(characters(), "10 ");
}

TEST_F(LineInput, ACarriageReturnBeforeAControlZIsKept) {
    open("\r\x1a\n");
    EXPECT_EQ(characters(), "13 10 ");
}

TEST_F(LineInput, BothLineEndsGiveTheSameLines) {
    open("one\ntwo\n\nthree\n");
    EXPECT_EQ(lines(), "one\n|two\n|\n|three\n|");
    open("one\r\ntwo\r\n\r\nthree\r\n");
    EXPECT_EQ(lines(), "one\n|two\n|\n|three\n|");
}

TEST_F(LineInput, ALoneCarriageReturnStaysInTheLine) {
    open("a\rb\n\rc\n");
    EXPECT_EQ(lines(), "a\rb\n|\rc\n|");
}

TEST_F(LineInput, AByteOf255EndsTheLineAndIsDropped) {
    open(
        "ab\xff"
        "cd\nef\xff\ngh\n");
    EXPECT_EQ(lines(), "ab|cd\n|ef|\n|gh\n|");
}

TEST_F(LineInput, AByteOf255AtTheStartOfALineReadsAsTheEnd) {
    open(
        "\xff"
        "a\n");
    EXPECT_EQ(myfgets(in_rec, 100, cfile_input), nullptr);
    EXPECT_STREQ(in_rec, "");
    EXPECT_FALSE(cfile_input.at_end);
    EXPECT_EQ(lines(), "a\n|");
}

TEST_F(LineInput, TheLastLineMayLackItsNewline) {
    open("one\ntwo");
    EXPECT_EQ(lines(), "one\n|two|");
    EXPECT_STREQ(in_rec, "");
}

TEST_F(LineInput, TheEndIsMetOnlyByAReadThatNeedsIt) {
    open("one\n");
    myfgets(in_rec, 100, cfile_input);
    EXPECT_FALSE(cfile_input.at_end);
    EXPECT_EQ(myfgets(in_rec, 100, cfile_input), nullptr);
    EXPECT_TRUE(cfile_input.at_end);
    open("one");
    EXPECT_EQ(myfgets(in_rec, 4, cfile_input), in_rec);
    EXPECT_FALSE(cfile_input.at_end);
    open("one");
    EXPECT_EQ(myfgets(in_rec, 5, cfile_input), in_rec);
    EXPECT_TRUE(cfile_input.at_end);
}

TEST_F(LineInput, ALongLineComesInPieces) {
    open("abcdefg\nh\n");
    EXPECT_EQ(lines(4), "abc|def|g\n|h\n|");
    open("abc\ndef\n");
    EXPECT_EQ(lines(5), "abc\n|def\n|");
    open("abc\r\nd\n");
    EXPECT_EQ(lines(4), "abc|\n|d\n|");
    open("abc\r\nd\n");
    EXPECT_EQ(lines(5), "abc\n|d\n|");
}

TEST_F(LineInput, ALimitBelowTwoReadsNothing) {
    open("ab\n");
    std::strcpy(in_rec, "old");
    EXPECT_EQ(myfgets(in_rec, 1, cfile_input), nullptr);
    EXPECT_STREQ(in_rec, "");
    EXPECT_EQ(lines(), "ab\n|");
}

TEST_F(LineInput, ANulIsACharacterLikeOthers) {
    open(std::string("a\0b\nc\n", 6));
    EXPECT_EQ(myfgets(in_rec, 100, cfile_input), in_rec);
    EXPECT_EQ(std::string(in_rec, 5), std::string("a\0b\n\0", 5));
    EXPECT_EQ(lines(), "c\n|");
}

TEST_F(LineInput, AReadErrorEndsTheRun) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            open_cfile(folder.path().c_str());
            myfgets(in_rec, 100, cfile_input);
        },
        ExitedWithCode(1), testing::Eq(read_error_text));
}

TEST_F(LineInput, ALineBeforeAReadErrorIsStillRead) {
    open_failing_after("one\ntwo");
    EXPECT_STREQ(myfgets(in_rec, 100, cfile_input), "one\n");
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            myfgets(in_rec, 100, cfile_input);
        },
        ExitedWithCode(1), testing::Eq(read_error_text));
}

TEST_F(LineInput, TheErrorTestComesEvenWhereNothingIsRead) {
    open_failing_after("");
    EXPECT_EQ(mygetc(cfile_input), -1);
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            myfgets(in_rec, 1, cfile_input);
        },
        ExitedWithCode(1), testing::Eq(read_error_text));
}

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
        myfgets(in_rec, 100, cfile_input);
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
        myfgets(in_rec, 100, cfile_input);
        EXPECT_STREQ(in_rec, texts[line - 1]) << line;
        line_is_done();
    }
}
