// Lines as the tool understands them, byte by byte and in whole lines.
#include "interlist/line_reader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "interlist/source_file.h"
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
