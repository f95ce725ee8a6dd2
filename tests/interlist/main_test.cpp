// The guarded run and the orderly shutdown of main, with its two steps replaced.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "interlist/state.h"
#include "support/zesignalsupport.h"

int interlist_main(int argc, char** argv);

static void (*first_step)() = [] {};
static void (*second_step)() = [] {};

void init(int, char**) {
    first_step();
}
void process_assy() {
    second_step();
}

namespace {

int run() {
    static char name[] = "lister";
    char* words[] = {name, nullptr};
    return interlist_main(1, words);
}

// A stream whose closing notes its letter, and fails when it is upper case.
std::string closed;
int note_closing(void* cookie) {
    const char letter = *static_cast<const char*>(cookie);
    closed += letter;
    errno = EIO;
    return letter < 'a' ? -1 : 0;
}
FILE* noted(const char* letter, const char* mode) {
    return fopencookie(const_cast<char*>(letter), mode, {nullptr, nullptr, nullptr, note_closing});
}

template <char list, char assy, char cfile>
void open_streams() {
    static constexpr char letters[] = {list, assy, cfile};
    LIST = noted(&letters[0], "w");
    ASSY = noted(&letters[1], "r");
    CFILE = noted(&letters[2], "r");
    std::strcpy(temp_file_name, "x.cl");
    std::strcpy(assy_file_name, "x.asm");
    std::strcpy(curr_open_file_name, "x.c");
}

[[noreturn]] void throw_standard_exception() {
    throw std::runtime_error("what it says");
}

}  // namespace

TEST(Main, ACompleteRunClosesTheStreamsInOrder) {
    closed.clear();
    first_step = open_streams<'l', 'a', 'c'>;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(closed, "lac");
    EXPECT_EQ(LIST, nullptr);
    EXPECT_EQ(ASSY, nullptr);
    EXPECT_EQ(CFILE, nullptr);
    EXPECT_STREQ(prog_name, "lister");
    first_step = [] {};
}

TEST(Main, StreamsThatAreNotOpenAreNotClosed) {
    EXPECT_EQ(run(), 0);
}

TEST(Main, AStreamThatCannotBeClosedEndsTheRun) {
    struct {
        void (*open)();
        const char* text;
    } const cases[] = {
        {open_streams<'L', 'a', 'c'>, ">> WARNING: Failed to close 'x.cl': Input/output error\n"},
        {open_streams<'l', 'A', 'c'>, ">> WARNING: Failed to close 'x.asm': Input/output error\n"},
        {open_streams<'l', 'a', 'C'>, ">> WARNING: Failed to close 'x.c': Input/output error\n"},
    };
    for (const auto& each : cases) {
        first_step = each.open;
        EXPECT_EXIT(run(), testing::ExitedWithCode(1), testing::Eq(each.text));
    }
    first_step = [] {};
}

TEST(Main, AStandardExceptionIsReportedWithTheSupportText) {
    const std::string expected =
        std::string("Unhandled exception: what it says\n\n") + support_message_text();
    first_step = throw_standard_exception;
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), testing::Eq(expected));
    first_step = [] {};
    second_step = throw_standard_exception;
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), testing::Eq(expected));
    second_step = [] {};
}

TEST(Main, AnyOtherExceptionTerminatesTheProgram) {
    first_step = [] { throw 1; };
    const auto run_as_a_program = []() noexcept { run(); };
    EXPECT_EXIT(run_as_a_program(), testing::ExitedWithCode(2),
                "\nINTERNAL ERROR: lister aborted while\n");
    first_step = [] {};
}

TEST(Main, TwelveSignalsAreCaught) {
    for (const int signal_number : {SIGINT, SIGTERM, SIGHUP, SIGILL, SIGABRT, SIGFPE, SIGSEGV,
                                    SIGTRAP, SIGBUS, SIGSYS, SIGXCPU, SIGXFSZ}) {
        static int raised = 0;
        raised = signal_number;
        first_step = [] { std::raise(raised); };
        EXPECT_EXIT(run(), testing::ExitedWithCode(2), "lister") << signal_number;
    }
    first_step = [] {};
}
