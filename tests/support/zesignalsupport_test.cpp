#include "support/zesignalsupport.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/child.h"
#include "tests/support/faults.h"

namespace {

constexpr const char* support_text =
    "This is caused by a defect in the Ze C Source Interlister.\n"
    "Ze Customer Support may be able to suggest a workaround to avoid this.\n"
    "\n"
    "Upgrading to the newest version of the compiler may fix this problem.\n"
    "\n"
    "Contact Ze in the Ze Developer Exchange support forums at https://support.ze.example under\n"
    "\"Development Tools\", \"Ze C/C++ Compiler\".  See the link titled\n"
    "\"Submitting an issue\".\n"
    "\n"
    "We need to see this ENTIRE error message and a complete, reproducible\n"
    "test case including ALL of the command-line options.\n"
    "\n";

const auto ends_with_status_2 = testing::ExitedWithCode(2);

// The whole report of a fault: its line, the detail line if there is one, and the
// support text.
std::string report(const std::string& line, const std::string& detail = "") {
    return "\n" + line + "\n" + detail + "\n" + support_text;
}

// A pointer that damage could have left behind.
const char* small_pointer(std::uintptr_t value) {
    return reinterpret_cast<const char*>(value);
}

// Maps memory around address 100001, and gives null where the system does not let it.
char* low_memory() {
    constexpr std::uintptr_t page = 98304;
    void* const wanted = reinterpret_cast<void*>(page);
    void* const got = mmap(wanted, 4096, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    if (got != wanted) {
        if (got != MAP_FAILED) {
            munmap(got, 4096);
        }
        return nullptr;
    }
    return static_cast<char*>(got);
}

void release(char* low) {
    munmap(low, 4096);
}

}  // namespace

TEST(SupportText, IsTheSameOnEveryCallAndEndsWithAnEmptyLine) {
    EXPECT_STREQ(support_message_text(), support_text);
    EXPECT_EQ(support_message_text(), support_message_text());
    EXPECT_TRUE(std::string_view(support_message_text()).ends_with("options.\n\n"));
}

TEST(SignalReportDeathTest, AFaultWithADetail) {
    EXPECT_EXIT(common_signal_handler(SIGSEGV, "cl", "while compiling %s", "x.c"),
                ends_with_status_2,
                testing::Eq("\nINTERNAL ERROR: cl experienced a segmentation fault\n"
                            "                  while compiling x.c\n"
                            "\n"
                            "This is caused by a defect in the Ze C Source Interlister.\n"
                            "Ze Customer Support may be able to suggest a workaround to avoid "
                            "this.\n"
                            "\n"
                            "Upgrading to the newest version of the compiler may fix this "
                            "problem.\n"
                            "\n"
                            "Contact Ze in the Ze Developer Exchange support forums at "
                            "https://support.ze.example under\n"
                            "\"Development Tools\", \"Ze C/C++ Compiler\".  See the link titled\n"
                            "\"Submitting an issue\".\n"
                            "\n"
                            "We need to see this ENTIRE error message and a complete, "
                            "reproducible\n"
                            "test case including ALL of the command-line options.\n"
                            "\n"));
}

TEST(SignalReportDeathTest, AFaultWithoutADetail) {
    EXPECT_EXIT(common_signal_handler(SIGSEGV, "cl", nullptr), ends_with_status_2,
                testing::Eq(report("INTERNAL ERROR: cl experienced a segmentation fault")));
    EXPECT_EXIT(common_signal_handler(SIGSEGV, "cl", "%s", ""), ends_with_status_2,
                testing::Eq(report("INTERNAL ERROR: cl experienced a segmentation fault")));
}

TEST(SignalReportDeathTest, EveryFaultHasItsPhrase) {
    struct Case {
        int sig;
        const char* line;
    };
    for (const auto& [sig, line] : {
             Case{SIGILL, "INTERNAL ERROR: t executed an illegal instruction"},
             Case{SIGABRT, "INTERNAL ERROR: t had an internal inconsistency and aborted"},
             Case{SIGFPE, "INTERNAL ERROR: t received a floating point exception"},
             Case{SIGSEGV, "INTERNAL ERROR: t experienced a segmentation fault"},
             Case{SIGTRAP, "INTERNAL ERROR: t received a TRAP signal"},
             Case{SIGBUS, "INTERNAL ERROR: t experienced a bus alignment fault"},
             Case{SIGSYS, "INTERNAL ERROR: t experienced a bad system call"},
             Case{SIGXCPU, "INTERNAL ERROR: t exceeded the CPU time limit"},
             Case{SIGXFSZ, "INTERNAL ERROR: t exceeded the file size limit"},
             Case{SIGPIPE, "INTERNAL ERROR: t experienced a fatal internal fault"},
             Case{SIGQUIT, "INTERNAL ERROR: t experienced a fatal internal fault"},
             Case{SIGUSR1, "INTERNAL ERROR: t experienced a fatal internal fault"},
             Case{0, "INTERNAL ERROR: t experienced a fatal internal fault"},
             Case{-1, "INTERNAL ERROR: t experienced a fatal internal fault"},
         }) {
        EXPECT_EXIT(common_signal_handler(sig, "t", nullptr), ends_with_status_2,
                    testing::Eq(report(line)));
    }
}

TEST(SignalReportDeathTest, ATerminateSignalHasALineOfItsOwn) {
    EXPECT_EXIT(common_signal_handler(SIGTERM, "cl", "detail"), ends_with_status_2,
                testing::Eq("[cl received a terminate signal]\n"));
    EXPECT_EXIT(common_signal_handler(SIGTERM, nullptr, nullptr), ends_with_status_2,
                testing::Eq("[unknown received a terminate signal]\n"));
}

TEST(SignalReportDeathTest, InterruptAndHangUpAreAForcedExit) {
    EXPECT_EXIT(common_signal_handler(SIGINT, "cl", "detail"), ends_with_status_2,
                testing::Eq("[cl forced exit]\n"));
    EXPECT_EXIT(common_signal_handler(SIGHUP, "cl", "detail"), ends_with_status_2,
                testing::Eq("[cl forced exit]\n"));
    EXPECT_EXIT(common_signal_handler(SIGINT, small_pointer(100000), nullptr), ends_with_status_2,
                testing::Eq("[unknown forced exit]\n"));
}

TEST(SignalReportDeathTest, AToolWithoutAValidNameIsUnknown) {
    const std::string unknown =
        report("INTERNAL ERROR: unknown experienced a segmentation fault", "");
    EXPECT_EXIT(common_signal_handler(SIGSEGV, nullptr, nullptr), ends_with_status_2,
                testing::Eq(unknown));
    EXPECT_EXIT(common_signal_handler(SIGSEGV, small_pointer(1), nullptr), ends_with_status_2,
                testing::Eq(unknown));
    EXPECT_EXIT(common_signal_handler(SIGSEGV, small_pointer(100000), nullptr), ends_with_status_2,
                testing::Eq(unknown));
}

TEST(SignalReportDeathTest, AnEmptyToolNameIsAName) {
    EXPECT_EXIT(common_signal_handler(SIGINT, "", nullptr), ends_with_status_2,
                testing::Eq("[ forced exit]\n"));
}

TEST(SignalReportDeathTest, TheLowestValidPointerIs100001) {
    char* const low = low_memory();
    if (low == nullptr) {
        GTEST_SKIP() << "no memory to be had at that address";
    }
    std::strcpy(low + (100000 - 98304), "Xcl");
    EXPECT_EXIT(common_signal_handler(SIGINT, small_pointer(100001), nullptr), ends_with_status_2,
                testing::Eq("[cl forced exit]\n"));
    EXPECT_EXIT(common_signal_handler(SIGINT, small_pointer(100000), nullptr), ends_with_status_2,
                testing::Eq("[unknown forced exit]\n"));
    EXPECT_EXIT(common_signal_handler(SIGBUS, "t", small_pointer(100001), 0), ends_with_status_2,
                testing::Eq(report("INTERNAL ERROR: t experienced a bus alignment fault",
                                   "                  cl\n")));
    EXPECT_EXIT(common_signal_handler(SIGBUS, "t", small_pointer(100000), 0), ends_with_status_2,
                testing::Eq(report("INTERNAL ERROR: t experienced a bus alignment fault")));
    release(low);
}

TEST(SignalReportDeathTest, TheDetailIsCutTo2047Characters) {
    for (const std::size_t size : {2046U, 2047U, 2048U, 2049U, 100000U}) {
        const std::string text(size, 'x');
        EXPECT_EXIT(common_signal_handler(SIGBUS, "t", "%s", text.c_str()), ends_with_status_2,
                    testing::Eq(report("INTERNAL ERROR: t experienced a bus alignment fault",
                                       "                  " + text.substr(0, 2047) + "\n")));
    }
}

TEST(SignalReportDeathTest, TheToolsNameIsNotCut) {
    const std::string name(100000, 'n');
    EXPECT_EXIT(
        common_signal_handler(SIGBUS, name.c_str(), nullptr), ends_with_status_2,
        testing::Eq(report("INTERNAL ERROR: " + name + " experienced a bus alignment fault")));
}

TEST(SignalReportDeathTest, TheDetailTakesAllArguments) {
    EXPECT_EXIT(
        common_signal_handler(SIGBUS, "t", "%s:%d %c%% %.2f %ld \xe9", "f", -3, 'c', 0.5, 9L),
        ends_with_status_2,
        testing::Eq(report("INTERNAL ERROR: t experienced a bus alignment fault",
                           "                  f:-3 c% 0.50 9 \xe9\n")));
}

TEST(SignalReport, TheNameIsNotAFormat) {
    const Finished run = in_child([] { common_signal_handler(SIGTERM, "%s%n", nullptr); });
    EXPECT_EQ(run.err, "[%s%n received a terminate signal]\n");
    EXPECT_EQ(run.status, 2);
}

namespace {

void say_cleanup(int sig) {
    std::fprintf(stderr, "cleanup %d\n", sig);
}

void ignore_signal(int /*sig*/) {}

// Reports a second fault from the cleanup of the first.
void report_another(int sig) {
    install_common_handlers(ignore_signal, nullptr);
    common_signal_handler(sig == SIGFPE ? SIGBUS : SIGFPE, "again", nullptr);
}

void report_another_with_damaged_format(int /*sig*/) {
    install_common_handlers(ignore_signal, nullptr);
    common_signal_handler(SIGFPE, "again", small_pointer(5), 0);
}

}  // namespace

TEST(SignalReport, TheCleanupComesAfterTheSupportText) {
    const Finished run = in_child([] {
        install_common_handlers(ignore_signal, say_cleanup);
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.err,
              report("INTERNAL ERROR: t received a floating point exception") + "cleanup 8\n");
    EXPECT_EQ(run.status, 2);
}

TEST(SignalReport, TheCleanupIsCalledForUnknownSignalsToo) {
    const Finished run = in_child([] {
        install_common_handlers(ignore_signal, say_cleanup);
        common_signal_handler(77, "t", nullptr);
    });
    EXPECT_EQ(run.err,
              report("INTERNAL ERROR: t experienced a fatal internal fault") + "cleanup 77\n");
}

TEST(SignalReport, TheLastCleanupInstalledCounts) {
    const Finished run = in_child([] {
        install_common_handlers(ignore_signal, report_another);
        install_common_handlers(ignore_signal, say_cleanup);
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.err,
              report("INTERNAL ERROR: t received a floating point exception") + "cleanup 8\n");
}

TEST(SignalReport, TerminatingSignalsCallNoCleanup) {
    for (const int sig : {SIGTERM, SIGINT, SIGHUP}) {
        const Finished run = in_child([sig] {
            install_common_handlers(ignore_signal, say_cleanup);
            common_signal_handler(sig, "t", nullptr);
        });
        EXPECT_EQ(run.err,
                  sig == SIGTERM ? "[t received a terminate signal]\n" : "[t forced exit]\n");
        EXPECT_EQ(run.status, 2);
    }
}

TEST(SignalReport, ALaterFaultRepeatsTheFirstPhrase) {
    const Finished run = in_child([] {
        install_common_handlers(ignore_signal, report_another);
        common_signal_handler(SIGSEGV, "t", nullptr);
    });
    EXPECT_EQ(run.err, report("INTERNAL ERROR: t experienced a segmentation fault") +
                           report("INTERNAL ERROR: again experienced a segmentation fault"));
    EXPECT_EQ(run.status, 2);
}

TEST(SignalReport, ADamagedFormatShowsTheDetailFromBefore) {
    const Finished run = in_child([] {
        install_common_handlers(ignore_signal, report_another_with_damaged_format);
        common_signal_handler(SIGSEGV, "t", "line %d", 42);
    });
    EXPECT_EQ(run.err, report("INTERNAL ERROR: t experienced a segmentation fault",
                              "                  line 42\n") +
                           report("INTERNAL ERROR: again experienced a segmentation fault",
                                  "                  line 42\n"));
}

TEST(SignalReport, ANullFormatShowsNoDetailFromBefore) {
    const Finished run = in_child([] {
        install_common_handlers(ignore_signal, report_another);
        common_signal_handler(SIGSEGV, "t", "line %d", 42);
    });
    EXPECT_EQ(run.err, report("INTERNAL ERROR: t experienced a segmentation fault",
                              "                  line 42\n") +
                           report("INTERNAL ERROR: again experienced a segmentation fault"));
}

TEST(SignalReport, ADamagedFormatWithNothingFromBeforeShowsNoDetail) {
    const Finished run = in_child([] { common_signal_handler(SIGFPE, "t", small_pointer(5), 0); });
    EXPECT_EQ(run.err, report("INTERNAL ERROR: t received a floating point exception"));
}

TEST(SignalReport, AFaultFlushesStreamsBetweenItsLinesAndTheSupportText) {
    const Finished run = in_child_with_one_output([] {
        std::fputs("pending\n", stdout);
        common_signal_handler(SIGFPE, "t", "detail");
    });
    EXPECT_EQ(run.err, std::string("\nINTERNAL ERROR: t received a floating point exception\n"
                                   "                  detail\n"
                                   "\n"
                                   "pending\n") +
                           support_text);
}

TEST(SignalReport, TheSupportTextIsFlushedBeforeTheCleanup) {
    const Finished run = in_child([] {
        static std::array<char, 65536> buffer{};
        std::setvbuf(stderr, buffer.data(), _IOFBF, buffer.size());
        install_common_handlers(ignore_signal, [](int) { write_now(2, "cleanup"); });
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.err, report("INTERNAL ERROR: t received a floating point exception") + "cleanup");
}

TEST(SignalReport, WhatTheCleanupLeavesInAStreamIsNotFlushed) {
    const Finished run = in_child([] {
        std::fputs("before\n", stdout);
        install_common_handlers(ignore_signal, [](int) { std::fputs("after\n", stdout); });
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.out, "before\n");
    EXPECT_EQ(run.status, 2);
}

TEST(SignalReport, TerminatingSignalsFlushNothingAndRunNoExitHandlers) {
    for (const int sig : {SIGTERM, SIGINT, SIGHUP}) {
        const Finished run = in_child([sig] {
            std::atexit([] { write_now(1, "handler"); });
            std::fputs("pending", stdout);
            common_signal_handler(sig, "t", nullptr);
        });
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.status, 2);
    }
}

TEST(SignalReport, AFaultRunsNoExitHandlers) {
    const Finished run = in_child([] {
        std::atexit([] { write_now(1, "handler"); });
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.status, 2);
}

// Standard error's stream as a signal may find it: in the middle of its work, for good.
TEST(SignalReport, TerminatingSignalsDoNotWaitForAStream) {
    for (const int sig : {SIGTERM, SIGINT, SIGHUP}) {
        const Finished run = in_child([sig] {
            alarm(20);
            std::thread([] { flockfile(stderr); }).detach();
            while (ftrylockfile(stderr) == 0) {
                funlockfile(stderr);
                std::this_thread::yield();
            }
            common_signal_handler(sig, "t", nullptr);
        });
        EXPECT_EQ(run.err,
                  sig == SIGTERM ? "[t received a terminate signal]\n" : "[t forced exit]\n");
        EXPECT_EQ(run.status, 2);
    }
}

namespace {

int signal_inside_a_flush = 0;

// Interrupts the flush of its stream once.
ssize_t raise_inside(void* /*cookie*/, const char* text, std::size_t size) {
    if (const int sig = std::exchange(signal_inside_a_flush, 0)) {
        std::raise(sig);
    }
    return write(STDOUT_FILENO, text, size);
}

}  // namespace

TEST(SignalReport, EverySignalMayInterruptAFlush) {
    for (const int sig : {SIGILL, SIGABRT, SIGFPE, SIGSEGV, SIGTERM, SIGINT, SIGHUP, SIGTRAP,
                          SIGBUS, SIGSYS, SIGXCPU, SIGXFSZ}) {
        const Finished run = in_child([sig] {
            alarm(20);
            install_common_handlers([](int s) { common_signal_handler(s, "t", nullptr); }, nullptr);
            FILE* const stream =
                fopencookie(nullptr, "w", {nullptr, raise_inside, nullptr, nullptr});
            std::fputs("pending", stream);
            signal_inside_a_flush = sig;
            std::fflush(stream);
        });
        const bool is_fault = sig != SIGTERM && sig != SIGINT && sig != SIGHUP;
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.err.starts_with(is_fault ? "\nINTERNAL ERROR: t " : "[t "), true);
        EXPECT_EQ(run.err.ends_with(support_text), is_fault);
    }
}

TEST(SignalReport, ClosedStreamsDoNotKeepTheProcessAlive) {
    const Finished run = in_child([] {
        std::fclose(stdout);
        close(2);
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 2);
}

TEST(Callback, IsNullUntilAHandlerIsInstalled) {
    const Finished run = in_child([] {
        std::printf("%d ", callback == nullptr);
        install_common_handlers(ignore_signal, say_cleanup);
        std::printf("%d ", callback == say_cleanup);
        install_common_handlers(ignore_signal, nullptr);
        std::printf("%d", callback == nullptr);
    });
    EXPECT_EQ(run.out, "1 1 1");
}

TEST(Callback, CanBeSetByItself) {
    const Finished run = in_child([] {
        callback = say_cleanup;
        common_signal_handler(SIGFPE, "t", nullptr);
    });
    EXPECT_EQ(run.err,
              report("INTERNAL ERROR: t received a floating point exception") + "cleanup 8\n");
}

TEST(CoreFile, TheHookDoesNothing) {
    const Finished run = in_child([] {
        try_gen_corefile(SIGSEGV);
        std::printf("returned");
    });
    EXPECT_EQ(run.out, "returned");
    EXPECT_EQ(run.err, "");
}

TEST(Install, HandlersAreInstalledInOrder) {
    const Finished run = in_child([] {
        faults.signals.clear();
        install_common_handlers(ignore_signal, nullptr);
        const std::vector<int> order{SIGILL, SIGABRT, SIGFPE, SIGSEGV, SIGTERM, SIGINT,
                                     SIGHUP, SIGTRAP, SIGBUS, SIGSYS,  SIGXCPU, SIGXFSZ};
        std::printf("%d", faults.signals == order);
    });
    EXPECT_EQ(run.out, "1");
}

TEST(Install, EverySignalReachesTheHandler) {
    struct Case {
        int sig;
        std::string err;
    };
    for (const auto& [sig, err] : {
             Case{SIGILL, report("INTERNAL ERROR: t executed an illegal instruction")},
             Case{SIGABRT, report("INTERNAL ERROR: t had an internal inconsistency and aborted")},
             Case{SIGFPE, report("INTERNAL ERROR: t received a floating point exception")},
             Case{SIGSEGV, report("INTERNAL ERROR: t experienced a segmentation fault")},
             Case{SIGTERM, "[t received a terminate signal]\n"},
             Case{SIGINT, "[t forced exit]\n"},
             Case{SIGHUP, "[t forced exit]\n"},
             Case{SIGTRAP, report("INTERNAL ERROR: t received a TRAP signal")},
             Case{SIGBUS, report("INTERNAL ERROR: t experienced a bus alignment fault")},
             Case{SIGSYS, report("INTERNAL ERROR: t experienced a bad system call")},
             Case{SIGXCPU, report("INTERNAL ERROR: t exceeded the CPU time limit")},
             Case{SIGXFSZ, report("INTERNAL ERROR: t exceeded the file size limit")},
         }) {
        const Finished run = in_child([sig = sig] {
            install_common_handlers([](int s) { common_signal_handler(s, "t", nullptr); }, nullptr);
            std::raise(sig);
        });
        EXPECT_EQ(run.err, err);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.signal, 0);
    }
}

TEST(Install, AbortIsAFaultOfTheTool) {
    const Finished run = in_child([] {
        install_common_handlers([](int s) { common_signal_handler(s, "t", nullptr); }, say_cleanup);
        std::abort();
    });
    EXPECT_EQ(run.err, report("INTERNAL ERROR: t had an internal inconsistency and aborted") +
                           "cleanup 6\n");
    EXPECT_EQ(run.status, 2);
}

namespace {

// The bytes of a buffer of `size` bytes that holds `text` and then '#', after an append.
template <typename... Arguments>
std::string appended(const std::string& text, std::size_t size, const char* fmt,
                     Arguments... arguments) {
    // Not a byte larger, for the sanitizers.
    std::vector<char> buffer(size, '#');
    std::memcpy(buffer.data(), text.c_str(), std::min(text.size() + 1, size));
    sigstrnappend(buffer.data(), static_cast<std::uint32_t>(size), fmt, arguments...);
    return {buffer.begin(), buffer.end()};
}

std::string bytes(const char* literal, std::size_t size) {
    return std::string(literal, size);
}

}  // namespace

TEST(Append, PutsTheTextBehindTheOneThatIsThere) {
    EXPECT_EQ(appended("abc", 10, "%s", "de"), bytes("abcde\0###\0", 10));
    EXPECT_EQ(appended("", 10, "%s", "de"), bytes("de\0######\0", 10));
    EXPECT_EQ(appended("abc", 10, "%s", ""), bytes("abc\0#####\0", 10));
    EXPECT_EQ(appended("a", 12, "%d-%c%s", 42, 'x', "yz"), bytes("a42-xyz\0###\0", 12));
}

TEST(Append, WhatDoesNotFitIsCutOff) {
    EXPECT_EQ(appended("abc", 10, "%s", "defghi"), bytes("abcdefghi\0", 10));
    EXPECT_EQ(appended("abc", 10, "%s", "defghij"), bytes("abcdefghi\0", 10));
    EXPECT_EQ(appended("abc", 10, "%s", "defghijkl"), bytes("abcdefghi\0", 10));
    EXPECT_EQ(appended("abcdefgh", 10, "%s", "xyz"), bytes("abcdefghx\0", 10));
}

TEST(Append, AFullBufferStaysAsItIs) {
    EXPECT_EQ(appended("abcdefghi", 10, "%s", "x"), bytes("abcdefghi\0", 10));
    EXPECT_EQ(appended("", 1, "%s", "x"), bytes("\0", 1));
}

TEST(Append, ATextWithoutATerminatorIsCutAtTheEndOfTheBuffer) {
    EXPECT_EQ(appended("abcdefghij", 10, "%s", "x"), bytes("abcdefghi\0", 10));
    EXPECT_EQ(appended("ab", 1, "%s", "x"), bytes("\0", 1));
}

TEST(Append, TheTextIsCutTo2047Characters) {
    for (const std::size_t size : {2046U, 2047U, 2048U, 100000U}) {
        const std::string text(size, 'x');
        std::string expected = "ab" + text.substr(0, 2047);
        expected += '\0';
        expected.resize(4999, '#');
        expected += '\0';
        EXPECT_EQ(appended("ab", 5000, "%s", text.c_str()), expected) << size;
    }
}

TEST(Append, WithoutAFormatTheTextOfTheLastCallIsAppendedAgain) {
    EXPECT_EQ(appended("", 6, "%s", "again"), bytes("again\0", 6));
    EXPECT_EQ(appended("x", 8, nullptr, 0), bytes("xagain\0\0", 8));
    EXPECT_EQ(appended("x", 8, small_pointer(100000), 0), bytes("xagain\0\0", 8));
    EXPECT_EQ(appended("x", 4, nullptr, 0), bytes("xag\0", 4));
}

TEST(Append, TheTextOfTheLastCallIsKeptWhole) {
    EXPECT_EQ(appended("abc", 5, "%s", "defghi"), bytes("abcd\0", 5));
    EXPECT_EQ(appended("", 10, nullptr, 0), bytes("defghi\0##\0", 10));
}

TEST(AppendDeathTest, BeforeAnyTextThereIsNothingToAppend) {
    // A process of its own, in which no test has appended anything.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto append_nothing = [] {
        const std::string text = appended("abc", 10, nullptr, 0);
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::_Exit(0);
    };
    EXPECT_EXIT(append_nothing(), testing::ExitedWithCode(0),
                testing::Eq(bytes("abc\0#####\0", 10)));
}

TEST(Append, WithoutADestinationNothingHappens) {
    EXPECT_EQ(appended("", 8, "%s", "before"), bytes("before\0\0", 8));
    sigstrnappend(nullptr, 10, "%s", "text");
    sigstrnappend(const_cast<char*>(small_pointer(1)), 10, "%s", "text");
    sigstrnappend(const_cast<char*>(small_pointer(100000)), 10, "%s", "text");
    EXPECT_EQ(appended("", 8, nullptr, 0), bytes("before\0\0", 8));
}

TEST(Append, TheLowestValidDestinationIs100001) {
    char* const low = low_memory();
    if (low == nullptr) {
        GTEST_SKIP() << "no memory to be had at that address";
    }
    char* const at = low + (100000 - 98304);
    sigstrnappend(at, 4, "%s", "abc");
    EXPECT_EQ(bytes(at, 5), bytes("\0\0\0\0\0", 5));
    sigstrnappend(at + 1, 4, "%s", "abc");
    EXPECT_EQ(bytes(at, 5), bytes("\0abc\0", 5));
    release(low);
}

TEST(Append, ASizeOfZeroTouchesNothing) {
    std::array<char, 4> buffer{'a', 'b', '\0', '#'};
    sigstrnappend(buffer.data(), 0, "%s", "text");
    EXPECT_EQ(bytes(buffer.data(), 4), bytes("ab\0#", 4));
}

TEST(Append, TheDestinationMayBeAnArgument) {
    std::array<char, 16> buffer{'a', 'b', '\0'};
    sigstrnappend(buffer.data(), 16, "-%s", buffer.data());
    EXPECT_STREQ(buffer.data(), "ab-ab");
}

TEST(Append, TheLargestSizeIsAccepted) {
    // Far more than there is: only what the text needs and the last byte are touched.
    constexpr std::size_t size = 4294967295U;
    void* const room = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (room == MAP_FAILED) {
        GTEST_SKIP() << "no address space of 4 GiB";
    }
    char* const text = static_cast<char*>(room);
    text[size - 1] = '#';
    sigstrnappend(text, 4294967295U, "%s", "abc");
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(text[size - 1], '\0');
    munmap(room, size);
}

TEST(SignalReport, IsWholeWhereWritesAreShortOrInterrupted) {
    constexpr std::size_t lengths[] = {0, 1, 7, 40, 300};
    for (const std::size_t longest : lengths) {
        for (const bool interrupted : {false, true}) {
            SCOPED_TRACE(longest);
            const auto reported = [=](int signal_number) {
                const Finished child = in_child([=] {
                    faults.longest_write = longest;
                    faults.interrupts_writes = interrupted;
                    common_signal_handler(signal_number, "cl", "while compiling");
                });
                EXPECT_EQ(child.status, 2);
                return child.err;
            };
            EXPECT_EQ(reported(SIGTERM), "[cl received a terminate signal]\n");
            EXPECT_EQ(reported(SIGINT), "[cl forced exit]\n");
            EXPECT_EQ(reported(SIGSEGV),
                      report("INTERNAL ERROR: cl experienced a segmentation fault",
                             "                  while compiling\n"));
        }
    }
}

TEST(SignalReport, EndsTheProcessWhereItCannotBeWritten) {
    const Finished child = in_child([] {
        close(STDERR_FILENO);
        common_signal_handler(SIGSEGV, "cl", nullptr);
    });
    EXPECT_EQ(child.status, 2);
    EXPECT_EQ(child.err, "");
}
