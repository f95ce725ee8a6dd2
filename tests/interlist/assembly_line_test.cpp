// Assembly lines one by one: directives are told apart and dropped, others are copied.
#include "interlist/assembly_line.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

using testing::ExitedWithCode;

namespace {

class Owrite : public testing::Test {
  protected:
    Owrite() { begin_pass(folder, ""); }
    ~Owrite() override { start_afresh(); }

    ScratchFolder folder;
};

constexpr const char* limit_text = "\n>> FATAL ERROR - String exceeds internal limit!!\n";

}  // namespace

TEST_F(Owrite, WritesOrdinaryLinesUnchanged) {
    for (const char* line : {"\n", "main:\n", "\tnop\n", "\t.text\n", "no newline",
                             "\t.ident\t\"x\"\n", " .ifile\tx\n", "\t.iline 3\n", "\t.iline\n",
                             "\t.ILINE\t3\n", "\t.isy\tx\n", "\t.iendfunc 3\n", "\t\t.iline\t3\n",
                             ".iline\t3\n", "\t.ifunction\t3\n", "x.iline\t3\n", "\t.", ".", ""}) {
        const std::string before = listing_so_far();
        EXPECT_EQ(owrite(line), 1) << line;
        EXPECT_EQ(listing_so_far(), before + line);
    }
}

TEST_F(Owrite, DropsTheFiveDirectives) {
    for (const char* line :
         {"\t.ifile\t\"a.c\"\n", "\t.iline\t3\n", "\t.isym\t_main\n", "\t.ifunc\t12\n",
          "\t.iendfunc\t14\n", "\t.iline\t", "\t.iendfunc\tgarbage", "\t.ifunc\t\n"}) {
        EXPECT_EQ(owrite(line), 0) << line;
    }
    EXPECT_EQ(listing_so_far(), "");
}

TEST_F(Owrite, ASymbolIsKeptFromTheNinthCharacterToTheNewline) {
    owrite("\t.isym\t_main\n");
    EXPECT_STREQ(last_symbol, "main");
    owrite("\t.isym\t_with blanks \r\nmore");
    EXPECT_STREQ(last_symbol, "with blanks \r");
    owrite("\t.isym\t_no_newline");
    EXPECT_STREQ(last_symbol, "no_newline");
    owrite("\t.isym\t_a\1b\n");
    EXPECT_STREQ(last_symbol, "a\1b");
    owrite("\t.isym\t\n");
    EXPECT_STREQ(last_symbol, "");
    owrite("\t.isym\t");
    EXPECT_STREQ(last_symbol, "");
}

TEST_F(Owrite, ASymbolBeyondTheLimitEndsTheRun) {
    owrite("\t.isym\t_" + std::string(16383, 's'));
    EXPECT_EQ(std::strlen(last_symbol), 16383U);
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            owrite("\t.isym\t_" + std::string(16384, 's'));
        },
        ExitedWithCode(1), testing::Eq(limit_text));
}

TEST_F(Owrite, TheLongestSourceNamesAreRecordedAtFunctions) {
    struct {
        const char* name;
        int width;
        int previous;
    } const steps[] = {
        {"main.c", 6, 6},          // the first is both
        {"longer_name.c", 13, 6},  // a longer one moves the last one down
        {"a.c", 13, 6},            // 10 shorter
        {"a_much_longer_name.c", 20, 13},
        {"a_name_9c", 13, 13},  // 11 shorter: the record goes back
        {"a", 13, 13},
    };
    for (const auto& step : steps) {
        std::strcpy(curr_open_file_name, step.name);
        owrite("\t.ifunc\t1\n");
        EXPECT_EQ(name_width, step.width) << step.name;
        EXPECT_EQ(prev_name_width, step.previous) << step.name;
    }
}

TEST_F(Owrite, TheNameSeenCountsWhileNoneIsOpen) {
    std::strcpy(curr_seen_file_name, "seen.c");
    owrite("\t.ifunc\t1\n");
    EXPECT_EQ(name_width, 6);
}

TEST_F(Owrite, QuietModeKeepsNoRecordOfNames) {
    quiet_mode = 1;
    std::strcpy(curr_open_file_name, "main.c");
    owrite("\t.ifunc\t1\n");
    EXPECT_EQ(name_width, 0);
    EXPECT_EQ(prev_name_width, 0);
}
