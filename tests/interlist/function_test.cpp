// Which C lines go where among the assembly lines of a function.
#include "interlist/function.h"

#include <gtest/gtest.h>

#include "interlist/source_file.h"
#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

namespace {

std::string blanks(std::size_t count) {
    return std::string(count, ' ');
}

// A listing with a width of 12 has a text width of 4 and 11 dashes, which
// keeps the expectations short.
constexpr const char* rule = ";-----------\n";

class Interlisting : public testing::Test {
  protected:
    Interlisting() { write_source(20); }
    ~Interlisting() override { start_afresh(); }

    // Lines "c1", "c2" and so on.
    void write_source(int lines) {
        std::string text;
        for (int i = 1; i <= lines; ++i) {
            text.append("c").append(std::to_string(i)).append("\n");
        }
        folder.write("a.c", text);
    }

    // The listing of these lines behind an .ifile for a.c.
    std::string listing(const std::string& assembly, std::vector<std::string> options = {}) {
        options.insert(options.end(), {"-w", "12"});
        return listing_of(folder, file("a.c") + assembly, options);
    }

    std::string file(const std::string& name) {
        return std::string("\t.ifile\t\"").append(folder / name).append("\"\n");
    }

    ScratchFolder folder;
};

class SkipLines : public testing::Test {
  protected:
    ~SkipLines() override { start_afresh(); }

    void look_ahead(const std::string& assembly, int function, unsigned line) {
        begin_pass(folder, assembly);
        func_line = function;
        curr_line = line;
        done = skip_lines(&end_line, &count);
    }

    ScratchFolder folder;
    unsigned end_line = 77;
    unsigned count = 88;
    int done = -1;
};

class IsBlankLine : public testing::Test {
  protected:
    IsBlankLine() { in_comment = 0; }
    ~IsBlankLine() override { in_comment = 0; }
};

}  // namespace

TEST_F(Interlisting, CLinesStandBeforeTheAssemblyUpToTheDirective) {
    EXPECT_EQ(listing("\t.ifunc\t10\n\t.iline\t1\nA\n\t.iline\t3\nB\n\t.iline\t3\nC\n"
                      "\t.iendfunc\t14\nD\n"),
              std::string(rule) + ";  10 | c10 \n;  11 | c11 \n" + rule + "A\n" + rule +
                  ";  12 | c12 \n" + rule + "B\n" + rule + ";  13 | c13 \n" + rule + "C\nD\n");
}

TEST_F(Interlisting, TheEndOfTheFunctionFlushesTheLinesBeforeIt) {
    EXPECT_EQ(listing("\t.ifunc\t2\nA\n\t.iendfunc\t4\nB\n"),
              std::string(rule) + ";   2 | c2  \n;   3 | c3  \n" + rule + "A\nB\n");
}

TEST_F(Interlisting, SeparatorsAre71ColumnsByDefaultAndCommentLines79) {
    EXPECT_EQ(listing_of(folder, file("a.c") + "\t.ifunc\t1\n\t.iendfunc\t2\n"),
              ";----------------------------------------------------------------------\n"
              ";   1 | c1" +
                  blanks(69) +
                  "\n;----------------------------------------------------------------------\n");
}

TEST_F(Interlisting, BothAreAsWideAsAskedFor) {
    EXPECT_EQ(listing_of(folder, file("a.c") + "\t.ifunc\t1\n\t.iendfunc\t2\n", {"-w", "60"}),
              ";-----------------------------------------------------------\n;   1 | c1" +
                  blanks(50) + "\n;-----------------------------------------------------------\n");
}

TEST_F(Interlisting, AWidthOfOneOrLessLeavesTheSemicolon) {
    for (const char* width : {"1", "-5"}) {
        EXPECT_EQ(listing_of(folder, file("a.c") + "\t.ifunc\t1\n\t.iendfunc\t2\n", {"-w", width}),
                  ";\n;   1 | c\n;     | 1\n;\n");
    }
    EXPECT_EQ(listing_of(folder, file("a.c") + "\t.ifunc\t1\n\t.iendfunc\t2\n", {"-w", "2"}),
              ";-\n;   1 | c\n;     | 1\n;-\n");
}

TEST_F(Interlisting, APositionBehindTheListedLinesIsPassedOver) {
    EXPECT_EQ(listing("\t.ifunc\t1\n\t.iline\t5\nA\n\t.iline\t2\nB\n\t.iline\t6\nC\n"
                      "\t.iendfunc\t7\n"),
              std::string(rule) + ";   1 | c1  \n;   2 | c2  \n;   3 | c3  \n;   4 | c4  \n" +
                  rule + rule + ";   5 | c5  \n" + rule + "A\nB\n" + rule + ";   6 | c6  \n" +
                  rule + "C\n");
}

TEST_F(Interlisting, ARepeatedPositionListsOneLineOnce) {
    // The third visit finds its line listed already and is passed over.
    EXPECT_EQ(listing("\t.ifunc\t3\n\t.iline\t2\nA\n\t.iline\t2\nB\n\t.iline\t2\nC\n"
                      "\t.iendfunc\t5\nD\n"),
              std::string(rule) + ";   3 | c3  \n" + rule + rule + ";   4 | c4  \n" + rule +
                  "A\nB\nC\nD\n");
}

TEST_F(Interlisting, ARepeatedPositionListsTheFirstLineToo) {
    EXPECT_EQ(listing("\t.ifunc\t1\n\t.iline\t1\nA\n\t.iline\t1\nB\n\t.iendfunc\t2\nC\n"),
              std::string(rule) + ";   1 | c1  \n" + rule + "A\nB\nC\n");
}

TEST_F(Interlisting, ALaterFunctionGoesOnWhereTheLastStopped) {
    EXPECT_EQ(listing("\t.ifunc\t2\nA\n\t.iendfunc\t3\n\t.ifunc\t7\nB\n\t.iendfunc\t8\n"),
              std::string(rule) + ";   2 | c2  \n" + rule + "A\n" + rule + ";   7 | c7  \n" + rule +
                  "B\n");
}

TEST_F(Interlisting, AnEarlierFunctionRewindsTheCFile) {
    EXPECT_EQ(listing("\t.ifunc\t7\nA\n\t.iendfunc\t8\n\t.ifunc\t2\nB\n\t.iendfunc\t3\n"),
              std::string(rule) + ";   7 | c7  \n" + rule + "A\n" + rule + ";   2 | c2  \n" + rule +
                  "B\n");
}

TEST_F(Interlisting, FunctionLineZeroStartsAtTheFirstLine) {
    EXPECT_EQ(listing("\t.ifunc\t0\nA\n\t.iendfunc\t2\n"),
              std::string(rule) + ";   1 | c1  \n" + rule + "A\n");
}

TEST_F(Interlisting, DirectivesOfFilesAndFunctionsInsideAFunctionAreDropped) {
    EXPECT_EQ(listing("\t.ifunc\t2\nA\n\t.ifunc\t9\n\t.ifile\t\"none.c\"\n\t.isym\t_s\nB\n"
                      "\t.iendfunc\t3\nC\n"),
              std::string(rule) + ";   2 | c2  \n" + rule + "A\nB\nC\n");
    EXPECT_EQ(func_line, 2);
    EXPECT_STREQ(last_symbol, "s");
}

TEST_F(Interlisting, WithoutASourceTheAssemblyIsCopied) {
    const std::string listing =
        listing_of(folder, "\t.ifunc\t1\nA\n\t.iline\t2\nB\n\t.iendfunc\t3\nC\n");
    EXPECT_EQ(listing, "A\nB\nC\n");
}

TEST_F(Interlisting, AnEndWithoutANumberKeepsTheEndLine) {
    EXPECT_EQ(listing("\t.ifunc\t1\n\t.iline\t3\nA\n\t.iendfunc\tx\nB\n"),
              std::string(rule) + ";   1 | c1  \n;   2 | c2  \n" + rule + rule + ";   3 | c3  \n" +
                  rule + "A\nB\n");
}

TEST_F(Interlisting, AFileThatEndsInANewlineListsOneEmptyLineBehindItsEnd) {
    write_source(2);
    EXPECT_EQ(listing("\t.ifunc\t1\nA\n\t.iendfunc\t9\n"),
              std::string(rule) + ";   1 | c1  \n;   2 | c2  \n;   3 |     \n" + rule + "A\n");
}

TEST_F(Interlisting, AFileThatEndsWithoutOneDoesNot) {
    folder.write("a.c", "c1\nc2");
    EXPECT_EQ(listing("\t.ifunc\t1\nA\n\t.iendfunc\t9\n"),
              std::string(rule) + ";   1 | c1  \n;   2 | c2  \n" + rule + "A\n");
}

TEST_F(Interlisting, ARepeatedPositionBehindTheEndListsEmptyLinesUpToIt) {
    write_source(2);
    EXPECT_EQ(listing("\t.ifunc\t1\n\t.iline\t6\nA\n\t.iline\t6\nB\n\t.iendfunc\t1\n"),
              std::string(rule) + ";   1 | c1  \n;   2 | c2  \n;   3 |     \n" + rule + rule +
                  ";   4 |     \n;   5 |     \n;   6 |     \n" + rule + "A\nB\n");
}

TEST_F(Interlisting, BlankLinesBehindTheEndAreCountedAtOnce) {
    write_source(2);
    EXPECT_EQ(listing("\t.ifunc\t1\n\t.iline\t2147483647\nA\n\t.iline\t2147483647\nB\n"
                      "\t.iline\t2147483647\nC\n\t.iendfunc\t2\n",
                      {"-b"}),
              std::string(rule) + ";   1 | c1  \n;   2 | c2  \n" + rule + "A\nB\nC\n");
    EXPECT_EQ(curr_line, 2147483648U);
}

TEST_F(Interlisting, AFunctionFarBehindTheEndListsNothing) {
    EXPECT_EQ(listing("\t.ifunc\t2000000000\nA\n\t.iendfunc\t2000000003\n\t.ifunc\t3\nB\n"
                      "\t.iendfunc\t4\n"),
              "A\n" + std::string(rule) + ";   3 | c3  \n" + rule + "B\n");
}

TEST_F(Interlisting, NegativeFunctionLinesCountAsLargeOnes) {
    EXPECT_EQ(listing("\t.ifunc\t-3\nA\n\t.iendfunc\t5\nB\n"), "A\nB\n");
    EXPECT_EQ(curr_line, 4294967293U);
}

TEST_F(Interlisting, AnAssemblyThatEndsInsideAFunctionIsCopiedToItsEnd) {
    // The end of the file repeats the last position, so its line is listed.
    EXPECT_EQ(listing("\t.ifunc\t2\nA\n\t.iline\t2\nB\n\t.isym\t_x\nC"),
              std::string(rule) + ";   2 | c2  \n" + rule + "A\n" + rule + ";   3 | c3  \n" + rule +
                  "B\nC");
    EXPECT_EQ(listing("\t.ifunc\t2\nA\nB\n"), "A\nB\n");
    EXPECT_EQ(listing("\t.ifunc\t2\n"), "");
}

TEST_F(Interlisting, AFunctionWhosePositionsAreAllPassedOverIsCopiedToTheLast) {
    // Then the pass goes on, and meets the next function.
    EXPECT_EQ(listing("\t.ifunc\t5\nA\n\t.iline\t0\nB\n\t.iline\t-1\nC\n\t.ifunc\t7\nD\n"),
              "A\nB\nC\nD\n");
    EXPECT_EQ(func_line, 7);
}

TEST_F(Interlisting, FunctionsWithoutAnEndRunIntoTheNext) {
    EXPECT_EQ(listing("\t.ifunc\t2\nA\n\t.ifunc\t5\nB\n\t.iline\t3\nC\n\t.iendfunc\t6\nD\n"),
              std::string(rule) + ";   2 | c2  \n;   3 | c3  \n" + rule + "A\nB\n" + rule +
                  ";   4 | c4  \n;   5 | c5  \n" + rule + "C\nD\n");
}

TEST_F(Interlisting, BlankLinesAreLeftOutOnRequest) {
    folder.write("a.c", "x\n\n  {\n\ny\n\t}\n/* comment\n*/\nz\n");
    EXPECT_EQ(listing("\t.ifunc\t1\nA\n\t.iline\t6\nB\n\t.iline\t9\nC\n\t.iendfunc\t10\n", {"-b"}),
              std::string(rule) + ";   1 | x   \n;   5 | y   \n" + rule + "A\nB\n" + rule +
                  ";   9 | z   \n" + rule + "C\n");
}

TEST_F(Interlisting, ARepeatedPositionIsSpentOnABlankLine) {
    folder.write("a.c", "x\n\ny\n");
    EXPECT_EQ(listing("\t.ifunc\t1\n\t.iline\t2\nA\n\t.iline\t2\nB\n\t.iline\t2\nC\n"
                      "\t.iendfunc\t3\nD\n",
                      {"-b"}),
              std::string(rule) + ";   1 | x   \n" + rule + "A\nB\nC\nD\n");
}

TEST_F(Interlisting, TheIndentationOfABlockIsThatOfItsFirstIndentedLine) {
    folder.write("a.c", "  a\n    b\n c\nd\n    e\n   f\n");
    const std::string assembly = "\t.ifunc\t1\nA\n\t.iline\t5\nB\n\t.iendfunc\t7\n";
    EXPECT_EQ(listing(assembly),
              std::string(rule) + ";   1 | a   \n;   2 |   b \n;   3 | c   \n;   4 | d   \n" +
                  rule + "A\n" + rule + ";   5 | e   \n;   6 | f   \n" + rule + "B\n");
    EXPECT_EQ(listing(assembly, {"-p"}),
              std::string(rule) +
                  ";   1 |   a \n;   2 | \n;     | b   \n;   3 |  c  \n;   4 | d   \n" + rule +
                  "A\n" + rule + ";   5 | \n;     | e   \n;   6 |    f\n" + rule + "B\n");
}

TEST_F(Interlisting, ALineThatIsTooLongToListCountsForEachPiece) {
    folder.write("a.c", std::string(16377, 'x') + "\nend\n");
    const std::string text =
        listing_of(folder, file("a.c") + "\t.ifunc\t1\nA\n\t.iendfunc\t4\n", {"-w", "20008"});
    const std::string wide_rule = std::string(";").append(20007, '-').append("\n");
    const std::string first = std::string(";   1 | ").append(16376, 'x').append(3624, ' ');
    EXPECT_EQ(text, wide_rule + first + "\n;   2 | x" + blanks(19999) + "\n;   3 | end" +
                        blanks(19997) + "\n" + wide_rule + "A\n");
}

TEST_F(Interlisting, TheSameLineCountsOnceWhenSkipped) {
    folder.write("a.c", std::string(16377, 'x') + "\nend\n");
    EXPECT_EQ(listing("\t.ifunc\t2\nA\n\t.iendfunc\t3\n"),
              std::string(rule) + ";   2 | end \n" + rule + "A\n");
    folder.write("a.c", std::string(16383, 'x') + "\nend\n");
    EXPECT_EQ(listing("\t.ifunc\t3\nA\n\t.iendfunc\t4\n"),
              std::string(rule) + ";   3 | end \n" + rule + "A\n");
}

TEST_F(Interlisting, LinesAreCountedFromTheTopAgainAfterALongOne) {
    folder.write("a.c", std::string(16377, 'x') + "\nc2\nc3\nc4\n");
    const std::string text = listing(
        "\t.ifunc\t1\nA\n\t.iendfunc\t3\n\t.ifunc\t4\nB\n\t.iendfunc\t5\n"
        "\t.ifunc\t4\nC\n\t.iendfunc\t5\n");
    // The first function counts the long line twice, so line 4 is c3; the
    // second rewinds, skips it as one, and line 4 is c4.
    EXPECT_EQ(text.substr(text.find("A\n")), "A\n" + std::string(rule) + ";   4 | c3  \n" + rule +
                                                 "B\n" + rule + ";   4 | c4  \n" + rule + "C\n");
}

TEST_F(Interlisting, CarriageReturnsOfTheAssemblyAreDroppedInsideFunctions) {
    EXPECT_EQ(listing("a\r\n\t.ifunc\t1\r\nA\r\n\t.iline\t2\r\nB\x1a\r\r\n\t.iendfunc\t3\r\nb\r\n"),
              "a\r\n" + std::string(rule) + ";   1 | c1  \n" + rule + "A\n" + rule +
                  ";   2 | c2  \n" + rule + "B\r\nb\r\n");
}

TEST_F(Interlisting, AByteOf255InTheAssemblyCountsAsALineEndWhenCopied) {
    // Two lines are counted up to the .iendfunc, two pieces are copied, and the
    // pass meets the directive again.
    EXPECT_EQ(listing("\t.ifunc\t2\nA\xff"
                      "B\n\t.iendfunc\t3\nC\n"),
              std::string(rule) + ";   2 | c2  \n" + rule + "AB\nC\n");
}

TEST_F(Interlisting, EveryFileStartsAtItsFirstLineAgain) {
    folder.write("b.c", "b1\n");
    EXPECT_EQ(listing("\t.ifunc\t3\nA\n\t.iendfunc\t4\n" + file("b.c") +
                      "\t.ifunc\t1\nB\n\t.iendfunc\t2\n" + file("a.c") +
                      "\t.ifunc\t1\nC\n\t.iendfunc\t2\n"),
              std::string(rule) + ";   3 | c3  \n" + rule + "A\n" + rule + ";   1 | b1  \n" + rule +
                  "B\n" + rule + ";   1 | c1  \n" + rule + "C\n");
}

TEST_F(Interlisting, TheSameFileNamedAgainStaysAtItsLine) {
    EXPECT_EQ(listing("\t.ifunc\t3\nA\n\t.iendfunc\t4\n" + file("a.c") +
                      "\t.ifunc\t4\nB\n\t.iendfunc\t5\n"),
              std::string(rule) + ";   3 | c3  \n" + rule + "A\n" + rule + ";   4 | c4  \n" + rule +
                  "B\n");
    EXPECT_EQ(curr_line, 5U);
}

TEST_F(SkipLines, FindsTheFirstPositionThatIsNotBehind) {
    look_ahead("A\n\t.iline\t3\nB\n", 10, 12);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(end_line, 12U);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(input_position(assy_input), 0);
}

TEST_F(SkipLines, PassesOverPositionsBehind) {
    look_ahead("\t.iline\t2\nA\nB\n\t.iline\t3\nC\n\t.iline\t4\n", 10, 13);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(end_line, 13U);
    EXPECT_EQ(count, 6U);
}

TEST_F(SkipLines, TakesTheNumberOfTheFunctionsEndAsItIs) {
    look_ahead("A\nB\n\t.iendfunc\t14\nC\n", 10, 12);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(end_line, 14U);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(input_position(assy_input), 0);
}

TEST_F(SkipLines, TheFunctionsEndMayLieBehind) {
    look_ahead("\t.iendfunc\t3\n", 10, 12);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(end_line, 3U);
}

TEST_F(SkipLines, ANumberlessEndLeavesTheEndLine) {
    look_ahead("\t.iendfunc\t\n", 10, 12);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(end_line, 77U);
    EXPECT_EQ(count, 1U);
}

TEST_F(SkipLines, ANumberlessPositionIsPassedOver) {
    look_ahead("\t.iline\tx\n\t.iline\t9\n", 10, 12);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(end_line, 18U);
    EXPECT_EQ(count, 2U);
}

TEST_F(SkipLines, AtTheEndOfTheFileNothingIsSet) {
    look_ahead("A\nB", 10, 12);
    EXPECT_EQ(done, 1);
    assembly_has_no_more_positions = true;
    EXPECT_EQ(skip_lines(&end_line, &count), 1);
    EXPECT_EQ(end_line, 77U);
    EXPECT_EQ(count, 88U);
    EXPECT_EQ(input_position(assy_input), 0);
}

TEST_F(SkipLines, APositionThatIsPassedOverLeavesItsCount) {
    look_ahead("A\n\t.iline\t1\nB\n", 10, 12);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(end_line, 77U);
    EXPECT_EQ(count, 2U);
}

TEST_F(SkipLines, PositionsCompareUnsigned) {
    look_ahead("\t.iline\t-20\n", 10, 12);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(end_line, 4294967285U);
    look_ahead("\t.iline\t2147483647\n", 2147483647, 12);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(end_line, 4294967293U);
}

TEST_F(SkipLines, LooksFartherThanTheWindow) {
    look_ahead(std::string(300000, '\n') + "\t.iline\t9\n", 10, 12);
    EXPECT_EQ(done, 0);
    EXPECT_EQ(count, 300001U);
    EXPECT_EQ(input_position(assy_input), 0);
    std::string_view line;
    ASSERT_TRUE(next_piece(assy_input, 100, line));
    EXPECT_EQ(line, "\n");
}

TEST_F(IsBlankLine, BracesWhiteSpaceAndCommentsAreBlank) {
    for (const char* line : {"\n", "  \t\v\f\r\n", "{\n", "}\n", " { } {\n", "/* text */\n",
                             "/**/\n", "/* a */ /* b */ }\n", "", "  ", "{", "/* a */"}) {
        EXPECT_EQ(is_blank_line(line), 1) << line;
        EXPECT_EQ(in_comment, 0) << line;
    }
}

TEST_F(IsBlankLine, CodeIsNot) {
    for (const char* line : {"x\n", "{ x\n", "};\n", "x /* comment */\n", "/* comment */ x\n",
                             "// comment\n", "/\n", "/", "*/\n", "\xe4\n", "\"/*\n"}) {
        EXPECT_EQ(is_blank_line(line), 0) << line;
        EXPECT_EQ(in_comment, 0) << line;
    }
}

TEST_F(IsBlankLine, AnOpenCommentCarriesOver) {
    EXPECT_EQ(is_blank_line("  { /* begins\n"), 1);
    EXPECT_EQ(in_comment, 1);
    EXPECT_EQ(is_blank_line("goes on * / x\n"), 1);
    EXPECT_EQ(is_blank_line("\n"), 1);
    EXPECT_EQ(in_comment, 1);
    EXPECT_EQ(is_blank_line("ends */ }\n"), 1);
    EXPECT_EQ(in_comment, 0);
    EXPECT_EQ(is_blank_line("x\n"), 0);
}

TEST_F(IsBlankLine, CodeBehindACommentsEndIsCode) {
    is_blank_line("/*\n");
    EXPECT_EQ(is_blank_line("*/ x\n"), 0);
    EXPECT_EQ(in_comment, 0);
}

TEST_F(IsBlankLine, ACommentOpenedBehindCodeIsNotSeen) {
    EXPECT_EQ(is_blank_line("x /* begins\n"), 0);
    EXPECT_EQ(in_comment, 0);
    EXPECT_EQ(is_blank_line("text */\n"), 0);
}

TEST_F(IsBlankLine, ASlashAndAStarMustStandTogether) {
    EXPECT_EQ(is_blank_line("/*/\n"), 1);
    EXPECT_EQ(in_comment, 1);
    EXPECT_EQ(is_blank_line("*"), 1);
    EXPECT_EQ(is_blank_line("/\n"), 1);
    EXPECT_EQ(in_comment, 1);
    EXPECT_EQ(is_blank_line("**/\n"), 1);
    EXPECT_EQ(in_comment, 0);
}

TEST_F(IsBlankLine, NothingBehindTheNewlineIsLookedAt) {
    EXPECT_EQ(is_blank_line("\nx"), 1);
    EXPECT_EQ(is_blank_line(" /*\n*/x"), 1);
    EXPECT_EQ(in_comment, 1);
}
