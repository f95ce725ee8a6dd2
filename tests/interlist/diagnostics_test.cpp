// File problems, the limit message and the signal handler, called directly.
#include "interlist/diagnostics.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "interlist/listing_output.h"
#include "interlist/state.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/pass.h"

using testing::ExitedWithCode;

namespace {

class Diagnostics : public testing::Test {
  protected:
    Diagnostics() { start_afresh(); }
    ~Diagnostics() override { start_afresh(); }
};

constexpr const char* paragraph =
    "This is a serious problem.  Please contact Customer\n"
    "Support with this message and a copy of the input file\n"
    "and help us to continue to make the tools more robust.\n\n";

void handle(int signal_number, unsigned line) {
    prog_name = "lister";
    std::strcpy(assy_file_name, "prog.asm");
    curr_line = line;
    signal_handler(signal_number);
}

}  // namespace

TEST_F(Diagnostics, AFileErrorNamesTheSystemErrorAndEnds) {
    EXPECT_EXIT(
        {
            errno = ENOENT;
            file_error("Cannot open input file", "x.asm");
        },
        ExitedWithCode(1),
        testing::Eq(">> WARNING: Cannot open input file 'x.asm': No such file or directory\n"));
}

TEST_F(Diagnostics, NoWarningsDoesNotSilenceErrors) {
    EXPECT_EXIT(
        {
            no_warnings = 1;
            errno = 0;
            file_error("Source file information not available", "");
        },
        ExitedWithCode(1),
        testing::Eq(">> WARNING: Source file information not available '': Success\n"));
}

TEST_F(Diagnostics, TheSystemErrorIsTakenBeforeTheFlushes) {
    EXPECT_EXIT(
        {
            // The flush of this stream fails and changes errno.
            ASSERT_NE(std::freopen("/dev/full", "w", stdout), nullptr);
            std::fputs("text", stdout);
            errno = EACCES;
            file_error("Failed to close", "y");
        },
        ExitedWithCode(1), testing::Eq(">> WARNING: Failed to close 'y': Permission denied\n"));
}

TEST_F(Diagnostics, AFileWarningReturns) {
    testing::internal::CaptureStderr();
    errno = EACCES;
    file_warn("Cannot open source file", "a.c");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              ">> WARNING: Cannot open source file 'a.c': Permission denied\n");
}

TEST_F(Diagnostics, NoWarningsSilencesWarnings) {
    no_warnings = 1;
    testing::internal::CaptureStderr();
    file_warn("Cannot open source file", "a.c");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Diagnostics, StandardOutputComesBeforeTheReport) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            std::fputs("first ", stdout);
            errno = ENOSPC;
            file_error("Failed to close", "y");
        },
        ExitedWithCode(1),
        testing::Eq("first >> WARNING: Failed to close 'y': No space left on device\n"));
}

TEST_F(Diagnostics, SignalsFromOutsideAreReportedInOneLine) {
    EXPECT_EXIT(handle(SIGHUP, 42), ExitedWithCode(2), testing::Eq("[lister forced exit]\n"));
    EXPECT_EXIT(handle(SIGINT, 42), ExitedWithCode(2), testing::Eq("[lister forced exit]\n"));
    EXPECT_EXIT(handle(SIGTERM, 42), ExitedWithCode(2),
                testing::Eq("[lister received a terminate signal]\n"));
}

TEST_F(Diagnostics, FaultsAreReportedWithTheirPhrase) {
    struct {
        int signal_number;
        const char* phrase;
    } const cases[] = {
        {SIGILL, "executed an illegal instruction"},
        {SIGTRAP, "received a TRAP signal"},
        {SIGABRT, "aborted"},
        {SIGFPE, "received a floating point exception"},
        {SIGBUS, "experienced a bus alignment fault"},
        {SIGSEGV, "experienced a segmentation fault"},
        {SIGSYS, "experienced a bad system call"},
        {SIGXCPU, "exceeded the CPU time limit"},
        {SIGXFSZ, "exceeded the file size limit"},
        {SIGUSR1, "experienced a fatal internal fault"},
    };
    for (const auto& each : cases) {
        EXPECT_EXIT(handle(each.signal_number, 42), ExitedWithCode(2),
                    testing::Eq(std::string("\nINTERNAL ERROR: lister ") + each.phrase +
                                " while\n                processing file prog.asm line 42\n\n" +
                                paragraph));
    }
}

TEST_F(Diagnostics, BeforeAnyCLineTheReportHasNoLineNumber) {
    EXPECT_EXIT(handle(SIGSEGV, 0), ExitedWithCode(2),
                testing::Eq(std::string("\nINTERNAL ERROR: lister experienced a segmentation "
                                        "fault while\n                processing file prog.asm\n"
                                        "\n") +
                            paragraph));
}

TEST_F(Diagnostics, TheLineNumberIsUnsigned) {
    EXPECT_EXIT(handle(SIGSEGV, 4294967295U), ExitedWithCode(2), "prog.asm line 4294967295\n\n");
}

TEST_F(Diagnostics, TheLongestNamesFitTheReport) {
    const std::string program(20000, 'p');
    const std::string file(16383, 'f');
    EXPECT_EXIT(
        {
            prog_name = program.c_str();
            std::strcpy(assy_file_name, file.c_str());
            signal_handler(SIGBUS);
        },
        ExitedWithCode(2),
        testing::Eq("\nINTERNAL ERROR: " + program +
                    " experienced a bus alignment fault while\n                processing file " +
                    file + "\n\n" + paragraph));
}

TEST_F(Diagnostics, AFaultLeavesTheListingOnDisk) {
    const ScratchFolder folder;
    begin_pass(folder, "");
    EXPECT_EXIT(
        {
            list_assembly("so far\n");
            signal_handler(SIGSEGV);
        },
        ExitedWithCode(2), "");
    EXPECT_EQ(folder.read("prog.cl"), "so far\n");
}

TEST_F(Diagnostics, AForcedExitLeavesTheListingOnDisk) {
    const ScratchFolder folder;
    begin_pass(folder, "");
    EXPECT_EXIT(
        {
            list_assembly("so far\n");
            signal_handler(SIGINT);
        },
        ExitedWithCode(2), "");
    EXPECT_EQ(folder.read("prog.cl"), "so far\n");
}

TEST_F(Diagnostics, TheLimitMessageGoesToStandardOutput) {
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            limit_error();
        },
        ExitedWithCode(1), testing::Eq("\n>> FATAL ERROR - String exceeds internal limit!!\n"));
}
