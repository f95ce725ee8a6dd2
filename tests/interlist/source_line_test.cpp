// Tab expansion, de-indentation, and the comment lines of the listing.
#include "interlist/source_line.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

namespace {

class FormatLine : public testing::Test {
  protected:
    FormatLine() { start_afresh(); }
    ~FormatLine() override { start_afresh(); }

    // Formats in in_rec, as the program does.
    std::string formatted(const std::string& line, int strip_count) {
        std::memcpy(in_rec, line.c_str(), line.size() + 1);
        result = format_line(in_rec, strip_count);
        return in_rec;
    }

    int result = -1;
};

class OutputFormattedLine : public testing::Test {
  protected:
    OutputFormattedLine() { begin_pass(folder, ""); }
    ~OutputFormattedLine() override { start_afresh(); }

    std::string written(const std::string& line, unsigned number = 7) {
        curr_line = number;
        std::memcpy(in_rec, line.c_str(), line.size() + 1);
        const std::size_t before = listing_so_far().size();
        output_formatted_line(in_rec);
        return listing_so_far().substr(before);
    }

    ScratchFolder folder;
};

std::string blanks(std::size_t count) {
    return std::string(count, ' ');
}
std::string letters(std::size_t count) {
    return std::string(count, 'x');
}

}  // namespace

TEST_F(FormatLine, ATabGoesToTheNextMultipleOfEight) {
    EXPECT_EQ(formatted("ab\tc\n", 0), "ab      c\n");
    EXPECT_EQ(formatted("1234567\tc\n", 0), "1234567 c\n");
    EXPECT_EQ(formatted("12345678\tc\n", 0), "12345678        c\n");
    EXPECT_EQ(formatted("a\tb\tc\n", 0), "a       b       c\n");
    EXPECT_EQ(formatted("a\t\tb\n", 0), "a               b\n");
    EXPECT_EQ(formatted("a\t\n", 0), "a       \n");
}

TEST_F(FormatLine, ATabAtTheStartIsIndentation) {
    EXPECT_EQ(formatted("\tx = 1;\n", 0), "x = 1;\n");
    EXPECT_EQ(result, 8);
}

TEST_F(FormatLine, TheFirstIndentedLineFixesTheAmount) {
    EXPECT_EQ(formatted("    a\n", 0), "a\n");
    EXPECT_EQ(result, 4);
    EXPECT_EQ(formatted("        b\n", 4), "    b\n");
    EXPECT_EQ(result, 4);
}

TEST_F(FormatLine, ALineWithLessIndentationLosesAllOfIt) {
    EXPECT_EQ(formatted("  a\n", 4), "a\n");
    EXPECT_EQ(result, 4);
}

TEST_F(FormatLine, AnUnindentedLineLeavesTheAmountOpen) {
    EXPECT_EQ(formatted("a\n", 0), "a\n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(formatted("\n", 0), "\n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(formatted("", 0), "");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(formatted("a\n", 3), "a\n");
    EXPECT_EQ(result, 3);
}

TEST_F(FormatLine, ALineOfBlanksFixesTheAmount) {
    EXPECT_EQ(formatted("   \n", 0), "\n");
    EXPECT_EQ(result, 3);
    EXPECT_EQ(formatted("   ", 0), "");
    EXPECT_EQ(result, 3);
}

TEST_F(FormatLine, PreservedIndentationStaysWithItsTabsExpanded) {
    preserve_sp = 1;
    EXPECT_EQ(formatted("\tx\n", 0), "        x\n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(formatted("    x\n", 5), "    x\n");
    EXPECT_EQ(result, 5);
}

TEST_F(FormatLine, RemovalStopsAfter9999BlanksAndSaysOneMore) {
    EXPECT_EQ(formatted(blanks(9998) + "x", 0), "x");
    EXPECT_EQ(result, 9998);
    EXPECT_EQ(formatted(blanks(9999) + "x", 0), "x");
    EXPECT_EQ(result, 9999);
    EXPECT_EQ(formatted(blanks(10000) + "x", 0), " x");
    EXPECT_EQ(result, 10000);
    EXPECT_EQ(formatted(blanks(10005) + "x", 0), blanks(6) + "x");
    EXPECT_EQ(result, 10000);
    EXPECT_EQ(formatted(blanks(10005) + "x", 10000), blanks(5) + "x");
}

TEST_F(FormatLine, ALineLongerThan16376CharactersKeepsItsTabs) {
    EXPECT_EQ(formatted(letters(16375) + "\t", 0), letters(16375) + " ");
    EXPECT_EQ(formatted(letters(16376) + "\t", 0), letters(16376) + "\t");
    EXPECT_EQ(formatted("\t" + letters(16375), 3), blanks(5) + letters(16375));
    EXPECT_EQ(formatted("\t" + letters(16376), 3), "\t" + letters(16376));
}

TEST_F(FormatLine, ExpansionStopsWhenTheLineHasGrownTooLong) {
    // 16374 characters; the first tab makes them 16381.
    EXPECT_EQ(formatted("a\t" + letters(16371) + "\t", 0), "a       " + letters(16371) + "\t");
    // The longest that a line of 16376 characters can become.
    preserve_sp = 1;
    EXPECT_EQ(formatted("\t" + letters(16374) + "\n", 0), blanks(8) + letters(16374) + "\n");
    EXPECT_EQ(formatted(letters(16368) + "\t" + letters(6) + "\n", 0),
              letters(16368) + blanks(8) + letters(6) + "\n");
}

TEST_F(FormatLine, ALineWhoseRestIsBeyondTheLimitEndsTheRun) {
    std::string line = " " + letters(16383);
    EXPECT_EQ(format_line(line.data(), 0), 1);
    std::string longer = " " + letters(16384);
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            format_line(longer.data(), 0);
        },
        testing::ExitedWithCode(1),
        testing::Eq("\n>> FATAL ERROR - String exceeds internal limit!!\n"));
}

TEST_F(OutputFormattedLine, AShortLineIsPaddedToTheWidth) {
    EXPECT_EQ(written("int a;\n"), ";   7 | int a;" + blanks(65) + "\n");
    EXPECT_EQ(written("int a;"), ";   7 | int a;" + blanks(65) + "\n");
}

TEST_F(OutputFormattedLine, AnEmptyLineIsThePrefixAndBlanks) {
    EXPECT_EQ(written("\n"), ";   7 | " + blanks(71) + "\n");
    EXPECT_EQ(written(""), ";   7 | " + blanks(71) + "\n");
}

TEST_F(OutputFormattedLine, OnlyNewlinesLeaveTheEnd) {
    EXPECT_EQ(written("a\n\n\n"), ";   7 | a" + blanks(70) + "\n");
    EXPECT_EQ(std::string(in_rec), "a");
    EXPECT_EQ(written("a\r\n"), ";   7 | a\r" + blanks(69) + "\n");
}

TEST_F(OutputFormattedLine, ALineOfTheWidthIsWrittenWhole) {
    EXPECT_EQ(written(letters(71) + "\n"), ";   7 | " + letters(71) + "\n");
    EXPECT_EQ(written(letters(69) + "  \n"), ";   7 | " + letters(69) + "  \n");
}

TEST_F(OutputFormattedLine, ALongerLineIsContinued) {
    EXPECT_EQ(written(letters(71) + "y\n"),
              ";   7 | " + letters(71) + "\n;     | y" + blanks(70) + "\n");
    EXPECT_EQ(written(letters(142) + "y z\n"), ";   7 | " + letters(71) + "\n;     | " +
                                                   letters(71) + "\n;     | y z" + blanks(68) +
                                                   "\n");
}

TEST_F(OutputFormattedLine, OnlyTheFirstPieceLosesItsTrailingBlanks) {
    cut_colm = 12;
    EXPECT_EQ(written("ab  cd  ef\n"), ";   7 | ab\n;     | cd  \n;     | ef  \n");
    EXPECT_EQ(written("    abcd\n"), ";   7 | \n;     | abcd\n");
    EXPECT_EQ(written("ab \t abcd\n"), ";   7 | ab \t\n;     |  abc\n;     | d   \n");
}

TEST_F(OutputFormattedLine, TheWidthIsEightLessThanTheListings) {
    cut_colm = 60;
    EXPECT_EQ(written(letters(52) + "\n"), ";   7 | " + letters(52) + "\n");
    EXPECT_EQ(written("a\n"), ";   7 | a" + blanks(51) + "\n");
}

TEST_F(OutputFormattedLine, TheWidthIsAtLeastOne) {
    for (const int width : {9, 8, 1, -1, -2147483647 - 1}) {
        cut_colm = width;
        EXPECT_EQ(written("ab \n"), ";   7 | a\n;     | b\n;     |  \n") << width;
    }
}

TEST_F(OutputFormattedLine, ALineMayBeWiderThanAnyBuffer) {
    cut_colm = 70008;
    EXPECT_EQ(written("a\n"), ";   7 | a" + blanks(69999) + "\n");
}

TEST_F(OutputFormattedLine, LargeNumbersWidenThePrefix) {
    cut_colm = 9;
    EXPECT_EQ(written("a", 1), ";   1 | a\n");
    EXPECT_EQ(written("a", 99), ";  99 | a\n");
    EXPECT_EQ(written("a", 999), "; 999 | a\n");
    EXPECT_EQ(written("a", 1000), "; 1000 | a\n");
    EXPECT_EQ(written("a", 2147483647), "; 2147483647 | a\n");
    EXPECT_EQ(written("a", 4294967295), ";  -1 | a\n");
}

TEST_F(OutputFormattedLine, ALineBeyondAllBuffersEndsTheRunWithStatusZero) {
    std::string fits = letters(16384);
    output_formatted_line(fits.data());
    std::string line = letters(16385);
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            output_formatted_line(line.data());
        },
        testing::ExitedWithCode(0), testing::Eq(">> INTERNAL ERROR\n"));
}
