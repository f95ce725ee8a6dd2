// The scan of the command line, and what it opens or refuses to open.
#include "interlist/command_line.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

using testing::ExitedWithCode;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

constexpr const char* usage_text =
    "Usage: <toolname> [-options] filename\n"
    "\n"
    "This tool is designed to be invoked by the compiler.\n";

constexpr const char* limit_text = "\n>> FATAL ERROR - String exceeds internal limit!!\n";

// Runs init; what it writes to standard output goes to standard error, where
// death tests look, with a mark in front.
void scan(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "interlist");
    std::vector<char*> words;
    for (auto& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    init(static_cast<int>(words.size()) - 1, words.data());
}

void scan_with_one_output(const std::vector<std::string>& arguments) {
    dup2(STDERR_FILENO, STDOUT_FILENO);
    scan(arguments);
}

class CommandLine : public testing::Test {
  protected:
    CommandLine() { start_afresh(); }
    ~CommandLine() override { start_afresh(); }

    // Scans the options and then the name of an assembly file that exists;
    // returns what the scan wrote to standard error.
    std::string messages(std::vector<std::string> arguments) {
        arguments.push_back(folder.write("prog.asm", ""));
        CaptureStderr();
        scan(arguments);
        return GetCapturedStderr();
    }

    ScratchFolder folder;
};

using CommandLineDeath = CommandLine;

}  // namespace

TEST_F(CommandLineDeath, WithoutArgumentsTheUsageIsShown) {
    EXPECT_EXIT(scan_with_one_output({}), ExitedWithCode(0), testing::Eq(usage_text));
}

TEST_F(CommandLineDeath, OptionsWithoutAFileNameShowTheUsage) {
    for (const std::string option : {"-q", "-", "--no_warnings", "--frobnicate", "--"}) {
        EXPECT_EXIT(scan_with_one_output({option}), ExitedWithCode(0), testing::Eq(usage_text))
            << option;
    }
}

TEST_F(CommandLineDeath, HelpEndsTheScan) {
    EXPECT_EXIT(scan_with_one_output({"a", "b", "--help", "--toolversion"}), ExitedWithCode(0),
                testing::Eq(usage_text));
}

TEST_F(CommandLineDeath, LongOptionsAreComparedExactly) {
    for (const std::string option : {"--HELP", "--helpme", "--hel", "--Toolversion"}) {
        EXPECT_EXIT(scan_with_one_output({option, "a", "b", "c"}), ExitedWithCode(1),
                    testing::Eq("\n>> ERROR - Garbage on command line"))
            << option;
    }
}

TEST_F(CommandLineDeath, TheVersionReportEndsTheScan) {
    constexpr const char* banner = "^Morvex C Source Interlister             v8\\.3\\.12\n";
    EXPECT_EXIT(scan_with_one_output({"--toolversion", "--help"}), ExitedWithCode(0), banner);
    EXPECT_EXIT(scan_with_one_output({"a", "b", "c", "--toolversion"}), ExitedWithCode(0), banner);
}

TEST_F(CommandLineDeath, OneDashMakesToolversionACluster) {
    EXPECT_EXIT(scan_with_one_output({"-toolversion"}), ExitedWithCode(0),
                testing::Eq(std::string(">> Unknown option -t\n>> Unknown option -o\n"
                                        ">> Unknown option -o\n>> Unknown option -l\n"
                                        ">> Unknown option -v\n>> Unknown option -e\n"
                                        ">> Unknown option -r\n>> Unknown option -s\n"
                                        ">> Unknown option -i\n>> Unknown option -o\n"
                                        ">> Unknown option -n\n") +
                            usage_text));
}

TEST_F(CommandLineDeath, ThreeNamesAreGarbage) {
    EXPECT_EXIT(scan_with_one_output({"a", "b", "c"}), ExitedWithCode(1),
                testing::Eq("\n>> ERROR - Garbage on command line"));
}

TEST_F(CommandLineDeath, AThirdNameIsCountedWhateverItsLength) {
    EXPECT_EXIT(scan_with_one_output({"a", "b", std::string(16384, 'c')}), ExitedWithCode(1),
                testing::Eq("\n>> ERROR - Garbage on command line"));
}

TEST_F(CommandLineDeath, NamesBeyondTheLimitAreRefused) {
    EXPECT_EXIT(scan_with_one_output({std::string(16384, 'a')}), ExitedWithCode(1),
                testing::Eq(limit_text));
    EXPECT_EXIT(scan_with_one_output({"a", std::string(16384, 'b')}), ExitedWithCode(1),
                testing::Eq(limit_text));
    EXPECT_EXIT(scan_with_one_output({"a", "b", "c", "--help"}), ExitedWithCode(0),
                testing::Eq(usage_text));
}

TEST_F(CommandLineDeath, ANameThatLeavesNoRoomForTheExtensionIsRefused) {
    EXPECT_EXIT(scan_with_one_output({std::string(16381, 'a')}), ExitedWithCode(1),
                testing::Eq(limit_text));
    EXPECT_EXIT(scan_with_one_output({std::string(16380, 'a') + "."}), ExitedWithCode(1),
                "Cannot open input file");
    EXPECT_EXIT(scan_with_one_output({std::string(16381, 'a') + "."}), ExitedWithCode(1),
                testing::Eq(limit_text));
    EXPECT_EXIT(scan_with_one_output({std::string(16380, 'a')}), ExitedWithCode(1),
                "Cannot open input file");
}

TEST_F(CommandLineDeath, AnInputThatCannotBeOpened) {
    EXPECT_EXIT(scan_with_one_output({"/nowhere/prog.asm"}), ExitedWithCode(1),
                testing::Eq(">> WARNING: Cannot open input file '/nowhere/prog.asm': "
                            "No such file or directory\n"));
    EXPECT_EXIT(scan_with_one_output({"--no_warnings", ""}), ExitedWithCode(1),
                testing::Eq(">> WARNING: Cannot open input file '': No such file or directory\n"));
}

TEST_F(CommandLineDeath, AListingThatCannotBeOpened) {
    const std::string input = folder.write("prog.asm", "");
    EXPECT_EXIT(scan_with_one_output({input, "/nowhere/x"}), ExitedWithCode(1),
                testing::Eq(">> WARNING: Cannot open temp file '/nowhere/x': "
                            "No such file or directory\n"));
}

TEST_F(CommandLine, UsageGoesToStandardOutput) {
    testing::internal::CaptureStdout();
    usage();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), usage_text);
}

TEST_F(CommandLine, AClusterSetsAllItsFlags) {
    EXPECT_EQ(messages({"-bpq"}), "");
    EXPECT_EQ(skip_blanks, 1);
    EXPECT_EQ(preserve_sp, 1);
    EXPECT_EQ(quiet_mode, 1);
    EXPECT_EQ(cut_colm, 0);
    EXPECT_EQ(no_warnings, 0);
}

TEST_F(CommandLine, LettersMayBeUpperCase) {
    EXPECT_EQ(messages({"-BPQW", "44"}), "");
    EXPECT_EQ(skip_blanks, 1);
    EXPECT_EQ(preserve_sp, 1);
    EXPECT_EQ(quiet_mode, 1);
    EXPECT_EQ(cut_colm, 44);
}

TEST_F(CommandLine, QuietModeIsCounted) {
    EXPECT_EQ(messages({"-qQ", "-q"}), "");
    EXPECT_EQ(quiet_mode, 3);
}

TEST_F(CommandLine, NoWarningsIsALongOption) {
    EXPECT_EQ(messages({"--no_warnings", "--frobnicate", "-", "--"}), "");
    EXPECT_EQ(no_warnings, 1);
}

TEST_F(CommandLine, UnknownLettersAreReportedAsTyped) {
    EXPECT_EQ(messages({"-xbZ\xe4"}),
              ">> Unknown option -x\n>> Unknown option -Z\n>> Unknown option -\xe4\n");
    EXPECT_EQ(skip_blanks, 1);
}

TEST_F(CommandLine, DigitsOfAnAttachedWidthAreScannedAsLetters) {
    EXPECT_EQ(messages({"-w80"}), ">> Unknown option -8\n>> Unknown option -0\n");
    EXPECT_EQ(cut_colm, 80);
}

TEST_F(CommandLine, ASeparateTwoDigitWidthGivesNoMessage) {
    EXPECT_EQ(messages({"-w", "80"}), "");
    EXPECT_EQ(cut_colm, 80);
}

TEST_F(CommandLine, TheScanGoesOnInASeparateWidth) {
    EXPECT_EQ(messages({"-w", "132"}), ">> Unknown option -2\n");
    EXPECT_EQ(cut_colm, 132);
}

TEST_F(CommandLine, NothingOfAShortSeparateWidthIsScanned) {
    EXPECT_EQ(messages({"-w", "5"}), "");
    EXPECT_EQ(cut_colm, 5);
    start_afresh();
    EXPECT_EQ(messages({"-bpw", "60"}), "");
    EXPECT_EQ(cut_colm, 60);
    start_afresh();
    EXPECT_EQ(messages({"-w", ""}), "");
    EXPECT_EQ(cut_colm, 0);
}

TEST_F(CommandLine, TheScanOfALaterSeparateWidthStartsLater) {
    EXPECT_EQ(messages({"-bpw", "132b9"}), ">> Unknown option -9\n");
    EXPECT_EQ(cut_colm, 132);
}

TEST_F(CommandLine, AWidthMayHoldAnotherWidth) {
    EXPECT_EQ(messages({"-ww5"}), ">> Unknown option -5\n");
    EXPECT_EQ(cut_colm, 5);
    start_afresh();
    EXPECT_EQ(messages({"-w", "12w", "77"}), "");
    EXPECT_EQ(cut_colm, 77);
}

TEST_F(CommandLine, AWidthConsumesWhateverFollows) {
    EXPECT_EQ(messages({"-w", "--help"}),
              ">> Unknown option -h\n>> Unknown option -e\n>> Unknown option -l\n");
    EXPECT_EQ(cut_colm, 0);
    EXPECT_EQ(preserve_sp, 1);
    start_afresh();
    EXPECT_EQ(messages({"-w", "prog.asm"}),
              ">> Unknown option -o\n>> Unknown option -g\n>> Unknown option -.\n"
              ">> Unknown option -a\n>> Unknown option -s\n>> Unknown option -m\n");
    EXPECT_EQ(cut_colm, 0);
}

TEST_F(CommandLine, AWidthIsReadLikeANumberInC) {
    struct {
        const char* value;
        int width;
    } const cases[] = {{" 7", 7},
                       {"-3", -3},
                       {"+9", 9},
                       {"x", 0},
                       {"12", 12},
                       {"99999999999999999999", 2147483647},
                       {"-99999999999999999999", -2147483647 - 1},
                       {"2147483648", 2147483647}};
    for (const auto& each : cases) {
        start_afresh();
        messages({"-w", each.value});
        EXPECT_EQ(cut_colm, each.width) << each.value;
    }
}

TEST_F(CommandLine, AWidthAtTheEndIsZero) {
    CaptureStderr();
    const std::string input = folder.write("prog.asm", "");
    scan({input, "-w20", "-w"});
    EXPECT_EQ(GetCapturedStderr(), ">> Unknown option -2\n>> Unknown option -0\n");
    EXPECT_EQ(cut_colm, 0);
}

TEST_F(CommandLine, TheListingIsNamedAfterTheInput) {
    struct {
        const char* input;
        const char* listing;
    } const cases[] = {{"prog.asm", "prog.cl"},
                       {"prog", "prog.cl"},
                       {"dir.b/prog", "dir.b/prog.cl"},
                       {"dir.b/prog.tar.s", "dir.b/prog.tar.cl"}};
    for (const auto& each : cases) {
        start_afresh();
        scan({folder.write(each.input, "")});
        EXPECT_EQ(assy_file_name, folder / each.input);
        EXPECT_EQ(temp_file_name, folder / each.listing);
        EXPECT_NE(ASSY, nullptr);
        EXPECT_NE(LIST, nullptr);
        EXPECT_TRUE(folder.has(each.listing));
    }
}

TEST_F(CommandLine, OptionsAndNamesComeInAnyOrder) {
    const std::string input = folder.write("x.asm", "");
    scan({"-b", input, "-p", folder / "y.lst", "-q"});
    EXPECT_EQ(assy_file_name, input);
    EXPECT_EQ(temp_file_name, folder / "y.lst");
    EXPECT_EQ(skip_blanks + preserve_sp + quiet_mode, 3);
}

TEST_F(CommandLine, TheLongestNameFits) {
    // A name that cannot exist, but is short enough to be tried.
    EXPECT_EXIT(scan_with_one_output({std::string(16383, 'a'), "b"}), ExitedWithCode(1),
                "File name too long");
}
