// The listing pass: directives at the start of a line, everything else copied.
#include "interlist/listing.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

using testing::ExitedWithCode;

namespace {

class ListingPass : public testing::Test {
  protected:
    ~ListingPass() override { start_afresh(); }

    std::string quoted(const std::string& name) { return '"' + (folder / name) + "\"\n"; }

    ScratchFolder folder;
};

}  // namespace

TEST_F(ListingPass, AFileWithoutDirectivesIsCopied) {
    for (const std::string& text :
         {std::string(), std::string("\n"), std::string("a"),
          std::string("a\n\n\tb\r\n\r\x1a\xff\n"),
          std::string("\t.text\nmain:\n\t.globl main\n\t.i\n"), std::string(16382, 'x') + "\n",
          std::string(16383, 'x') + "\n", std::string(16384, 'x') + "\n", std::string(50000, 'x'),
          std::string(200000, '\n')}) {
        EXPECT_EQ(listing_of(folder, text), text);
    }
}

TEST_F(ListingPass, ADirectiveMayBeginAPieceOfALongLine) {
    const std::string long_text(16383, 'x');
    EXPECT_EQ(listing_of(folder, long_text + "\t.iline\t3\nend\n"), long_text + "end\n");
    EXPECT_EQ(listing_of(folder, "x" + long_text + "\t.iline\t3\nend\n"),
              "x" + long_text + "\t.iline\t3\nend\n");
}

TEST_F(ListingPass, DirectivesOutsideAFunctionAreDropped) {
    EXPECT_EQ(listing_of(folder,
                         "a\n\t.iline\t1\nb\n\t.iendfunc\t2\nc\n\t.isym\t_x\nd\n\t.ifunc\t3\ne\n"),
              "a\nb\nc\nd\ne\n");
    EXPECT_STREQ(last_symbol, "x");
    EXPECT_EQ(func_line, 3);
}

TEST_F(ListingPass, AFunctionWithoutANumberKeepsTheLast) {
    listing_of(folder, "\t.ifunc\t12\n\t.ifunc\tx\n");
    EXPECT_EQ(func_line, 12);
    listing_of(folder, "\t.ifunc\t99999999999\n");
    EXPECT_EQ(func_line, 2147483647);
}

TEST_F(ListingPass, ASourceFileBecomesTheCurrentOne) {
    folder.write("main.c", "one\ntwo\n");
    EXPECT_EQ(listing_of(folder, "\t.ifile\t" + quoted("main.c") + "x\n"), "x\n");
    EXPECT_EQ(curr_open_file_name, folder / "main.c");
    EXPECT_EQ(curr_seen_file_name, folder / "main.c");
    EXPECT_EQ(curr_line, 1U);
}

TEST_F(ListingPass, ASourceNameRunsToTheLastQuote) {
    const std::string name = folder.write("a \"b\" c.c", "");
    listing_of(folder, "\t.ifile\t\"" + name + "\" # \"quoted\" \n", {"--no_warnings"});
    EXPECT_EQ(curr_open_file_name, name + "\" # \"quoted");
    listing_of(folder, "\t.ifile\t\"" + name + "\"\t# comment\n");
    EXPECT_EQ(curr_open_file_name, name);
    EXPECT_NE(curr_line, 0U);
}

TEST_F(ListingPass, ASourceNameWithoutAClosingQuoteRunsToTheLineEnd) {
    for (const char* end : {"\n", "\r\n", ""}) {
        listing_of(folder, std::string("\t.ifile\t\"no such.c ") + end, {"--no_warnings"});
        EXPECT_STREQ(curr_open_file_name, "no such.c ");
    }
}

TEST_F(ListingPass, TheCharacterBeforeASourceNameIsNotLookedAt) {
    listing_of(folder, "\t.ifile\txno such.c\"\n", {"--no_warnings"});
    EXPECT_STREQ(curr_open_file_name, "no such.c");
}

TEST_F(ListingPass, AnEmptySourceNameEndsTheRun) {
    for (const char* line : {"\t.ifile\t\"\"\n", "\t.ifile\t\"\n", "\t.ifile\t\n", "\t.ifile\t"}) {
        EXPECT_EXIT(
            {
                begin_pass(folder, std::string("before\n") + line);
                no_warnings = 1;
                errno = 0;
                process_assy();
            },
            ExitedWithCode(1),
            testing::Eq(">> WARNING: Source file information not available '': Success\n"))
            << line;
        EXPECT_EQ(folder.read("prog.cl"), "before\n");
    }
}

TEST_F(ListingPass, AMissingSourceIsWarnedAboutOnce) {
    testing::internal::CaptureStderr();
    const std::string listing =
        listing_of(folder,
                   "\t.ifile\t\"/nowhere/a.c\"\n\t.ifunc\t1\nA\n\t.iendfunc\t9\n"
                   "\t.ifile\t\"/nowhere/a.c\"\n\t.ifunc\t1\nB\n\t.iendfunc\t9\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              ">> WARNING: Cannot open source file '/nowhere/a.c': No such file or directory\n");
    EXPECT_EQ(listing, "A\nB\n");
}

TEST_F(ListingPass, AMissingSourceIsWarnedAboutAgainAfterAnother) {
    folder.write("main.c", "");
    testing::internal::CaptureStderr();
    listing_of(folder, "\t.ifile\t\"/nowhere/a.c\"\n\t.ifile\t" + quoted("main.c") +
                           "\t.ifile\t\"/nowhere/a.c\"\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              ">> WARNING: Cannot open source file '/nowhere/a.c': No such file or directory\n"
              ">> WARNING: Cannot open source file '/nowhere/a.c': No such file or directory\n");
}

TEST_F(ListingPass, AnInputWithTheListingsNameIsTruncated) {
    const std::string name = folder.write("prog.cl", "text\n");
    run_pass({name});
    EXPECT_EQ(folder.read("prog.cl"), "");
}

TEST_F(ListingPass, NulsAreCopiedWithWhatStandsBehindThem) {
    using std::string_literals::operator""s;
    folder.write("main.c", "c1\n");
    EXPECT_EQ(listing_of(folder, "\tnop # \0 here\n\0\n"s), "\tnop # \0 here\n\0\n"s);
    EXPECT_EQ(listing_of(folder, "\t.ifile\t" + quoted("main.c") +
                                     "\t.ifunc\t1\n\tnop # \0 here\r\n\0\n\t.iendfunc\t1\n\0\n"s),
              "\tnop # \0 here\n\0\n\0\n"s);
}
