// Reading with a window, on a window that is as small as the lines allow.
#include "interlist/input.h"

#include <gtest/gtest.h>

#include <array>

#include "tests/harness/program.h"

namespace {

class Input : public testing::Test {
  protected:
    ~Input() override { open_none(); }

    void open_none() {
        if (input.file != nullptr) {
            std::fclose(input.file);
        }
        attach_input(input, nullptr);
    }

    void open(const std::string& bytes) {
        open_none();
        attach_input(input, std::fopen(folder.write("x", bytes).c_str(), "rb"));
    }

    std::string piece(std::size_t limit) {
        std::string_view text;
        return next_piece(input, limit, text) ? std::string(text) : "none";
    }

    std::string plain_line(std::size_t limit) {
        std::string_view text;
        return next_plain_line(input, limit, text) ? std::string(text) : "none";
    }

    std::string ordinary(std::size_t limit) {
        return std::string(next_ordinary_lines(input, limit, {'\t', '.', 'i'}));
    }

    ScratchFolder folder;
    std::array<char, 32> window{};
    input_stream input{.window = window.data(), .size = window.size()};
};

std::string numbered_lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text.append(std::to_string(i)).append("\n");
    }
    return text;
}

}  // namespace

TEST_F(Input, BytesComeUpToTheEnd) {
    open(std::string("a\0\xff", 3));
    EXPECT_EQ(next_byte(input), 'a');
    EXPECT_EQ(next_byte(input), 0);
    EXPECT_EQ(next_byte(input), 255);
    EXPECT_FALSE(input.at_end);
    EXPECT_EQ(next_byte(input), EOF);
    EXPECT_TRUE(input.at_end);
    EXPECT_FALSE(input.failed);
}

TEST_F(Input, AByteCanBePutBackAcrossARefill) {
    open(numbered_lines(50));
    std::string all;
    for (int byte = next_byte(input); byte != EOF; byte = next_byte(input)) {
        put_back_byte(input);
        EXPECT_EQ(next_byte(input), byte);
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(all, numbered_lines(50));
}

TEST_F(Input, PiecesEndAtNewlinesAndAtTheLimit) {
    open("ab\n\nabcdefgh\nabcd\nx");
    EXPECT_EQ(piece(5), "ab\n");
    EXPECT_EQ(piece(5), "\n");
    EXPECT_EQ(piece(5), "abcde");
    EXPECT_EQ(piece(5), "fgh\n");
    EXPECT_EQ(piece(5), "abcd\n");
    EXPECT_FALSE(input.at_end);
    EXPECT_EQ(piece(5), "x");
    EXPECT_TRUE(input.at_end);
    EXPECT_EQ(piece(5), "none");
}

TEST_F(Input, APieceOfTheLimitDoesNotMeetTheEnd) {
    open("abcde");
    EXPECT_EQ(piece(5), "abcde");
    EXPECT_FALSE(input.at_end);
    EXPECT_EQ(piece(5), "none");
    EXPECT_TRUE(input.at_end);
}

TEST_F(Input, PlainLinesAreWholeAndWithoutOddBytes) {
    open("ab\nabcd\n");
    EXPECT_EQ(plain_line(4), "ab\n");
    EXPECT_EQ(plain_line(4), "abcd");
    EXPECT_EQ(plain_line(4), "\n");
    EXPECT_EQ(plain_line(4), "none");
    open("abcd\nabc");
    EXPECT_EQ(plain_line(5), "abcd\n");
    EXPECT_EQ(plain_line(4), "none");
    EXPECT_EQ(plain_line(3), "abc");
    EXPECT_FALSE(input.at_end);
    for (const std::string odd : {"\r", "\x1a", "\xff", "a\r", "x"}) {
        open(odd + (odd == "x" ? "" : "\n"));
        EXPECT_EQ(plain_line(5), "none") << odd;
        EXPECT_EQ(input_position(input), 0);
        EXPECT_FALSE(input.at_end);
    }
    open(std::string("\0\n", 2));
    EXPECT_EQ(plain_line(5), "none");
}

TEST_F(Input, OddBytesAreFoundAgainAfterGoingBack) {
    open("a\nb\r\nc\nd\n");
    EXPECT_EQ(plain_line(5), "a\n");
    EXPECT_EQ(plain_line(5), "none");
    EXPECT_EQ(piece(5), "b\r\n");
    EXPECT_EQ(plain_line(5), "c\n");
    ASSERT_TRUE(seek_input(input, 2));
    EXPECT_EQ(plain_line(5), "none");
    ASSERT_TRUE(seek_input(input, 0));
    EXPECT_EQ(plain_line(5), "a\n");
}

TEST_F(Input, OrdinaryLinesComeTogether) {
    open("a\n\tb\n\t.text\n\t.iline\t3\nc\n");
    EXPECT_EQ(ordinary(9), "a\n\tb\n\t.text\n");
    EXPECT_EQ(ordinary(9), "");
    EXPECT_EQ(piece(10), "\t.iline\t3\n");
    EXPECT_EQ(ordinary(9), "c\n");
    EXPECT_EQ(ordinary(9), "");
}

TEST_F(Input, OrdinaryLinesStopBeforeALongOneAndAnOddOne) {
    open("ab\nabcd\nab\n");
    EXPECT_EQ(ordinary(4), "ab\n");
    EXPECT_EQ(ordinary(4), "");
    EXPECT_EQ(piece(4), "abcd");
    EXPECT_EQ(ordinary(4), "\nab\n");
    open("ab\nc\rd\n");
    EXPECT_EQ(ordinary(9), "ab\n");
    EXPECT_EQ(ordinary(9), "");
    open("ab\ncd");
    EXPECT_EQ(ordinary(9), "ab\n");
    EXPECT_EQ(ordinary(9), "");
}

TEST_F(Input, ADirectiveIsFoundWhereverItStands) {
    // The search works on blocks of 64 bytes; this moves the directive across two.
    std::array<char, 512> larger{};
    input.window = larger.data();
    input.size = larger.size();
    for (std::size_t before = 1; before < 200; ++before) {
        const std::string text = std::string(before - 1, 'x') + "\n";
        open(text + "\t.isym\t_x\n" + std::string(100, 'y') + "\n");
        EXPECT_EQ(ordinary(500), text);
        open(text + "\r" + std::string(100, 'y') + "\n");
        EXPECT_EQ(ordinary(500), text);
    }
}

TEST_F(Input, PlainUpToLooksAtTheWindowAlone) {
    open("ab\ncd\r\n");
    EXPECT_FALSE(plain_up_to(input, 3));
    EXPECT_EQ(next_byte(input), 'a');
    EXPECT_TRUE(plain_up_to(input, 3));
    EXPECT_TRUE(plain_up_to(input, 5));
    EXPECT_FALSE(plain_up_to(input, 6));
    EXPECT_FALSE(plain_up_to(input, 0));
    EXPECT_FALSE(plain_up_to(input, 8));
}

TEST_F(Input, GoingBackWorksInsideAndOutsideTheWindow) {
    const std::string text = numbered_lines(100);
    open(text);
    hold_input(input);
    while (next_byte(input) != EOF) {
    }
    EXPECT_TRUE(input.at_end);
    for (const long position : {280L, 270L, 0L, 289L, 100L, 290L}) {
        ASSERT_TRUE(seek_input(input, position));
        EXPECT_FALSE(input.at_end);
        EXPECT_EQ(input_position(input), position);
        std::string rest;
        for (int byte = next_byte(input); byte != EOF; byte = next_byte(input)) {
            rest += static_cast<char>(byte);
        }
        EXPECT_EQ(rest, text.substr(static_cast<std::size_t>(position)));
    }
}

TEST_F(Input, APipeCanGoBackAsFarAsTheWindowHolds) {
    FILE* const pipe = popen("printf '%s\\n' a b c d e f g h i j k l m n o p q r s t u v", "r");
    ASSERT_NE(pipe, nullptr);
    attach_input(input, pipe);
    EXPECT_EQ(piece(5), "a\n");
    hold_input(input);
    EXPECT_EQ(piece(5), "b\n");
    EXPECT_EQ(piece(5), "c\n");
    ASSERT_TRUE(seek_input(input, 2));
    EXPECT_EQ(piece(5), "b\n");
    while (piece(5) != "none") {
    }
    EXPECT_FALSE(seek_input(input, 2));
    attach_input(input, nullptr);
    pclose(pipe);
}

TEST_F(Input, ADirectoryFailsAtOnce) {
    attach_input(input, std::fopen(folder.path().c_str(), "rb"));
    EXPECT_EQ(piece(5), "none");
    EXPECT_TRUE(input.failed);
    EXPECT_FALSE(input.at_end);
}
