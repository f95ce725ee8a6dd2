// A signal that arrives at any moment of a run: inside every function of the C library
// that the interlister calls, and inside every system call. The report is whole, the
// listing is on disk as far as it had got, and nothing waits for what was interrupted.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/faults/fault.h"

namespace {

struct caught_signal {
    int number;
    const char* name;
    const char* report;
};

constexpr caught_signal caught_signals[] = {
    {SIGINT, "INT", "[lister forced exit]\n"},
    {SIGHUP, "HUP", "[lister forced exit]\n"},
    {SIGTERM, "TERM", "[lister received a terminate signal]\n"},
    {SIGILL, "ILL", "executed an illegal instruction"},
    {SIGTRAP, "TRAP", "received a TRAP signal"},
    {SIGABRT, "ABRT", "aborted"},
    {SIGFPE, "FPE", "received a floating point exception"},
    {SIGBUS, "BUS", "experienced a bus alignment fault"},
    {SIGSEGV, "SEGV", "experienced a segmentation fault"},
    {SIGSYS, "SYS", "experienced a bad system call"},
    {SIGXCPU, "XCPU", "exceeded the CPU time limit"},
    {SIGXFSZ, "XFSZ", "exceeded the file size limit"},
};

// The functions that a run calls, one way or another.
constexpr const char* functions[] = {"fopen", "fclose", "fread",  "fseek", "malloc",
                                     "free",  "fflush", "printf", "write", "exit"};

struct moment {
    const caught_signal* signal;
    const call_kind* calls;  // null: a function
    const char* function;
};

std::vector<moment> moments() {
    std::vector<moment> all;
    for (const caught_signal& signal : caught_signals) {
        for (const char* const function : functions) {
            all.push_back({&signal, nullptr, function});
        }
        for (const call_kind& kind : call_kinds()) {
            all.push_back({&signal, &kind, kind.name});
        }
    }
    return all;
}

std::string name_of(const testing::TestParamInfo<moment>& info) {
    return std::string(info.param.signal->name) + "_inside_" + info.param.function +
           (info.param.calls != nullptr ? "_call" : "");
}

void PrintTo(const moment& each, std::ostream* to) {
    *to << each.function;
}

class ASignal : public testing::TestWithParam<moment> {
  protected:
    ASignal() {
        std::string source;
        for (int i = 0; i < 3000; ++i) {
            source += "a line that has some length to it, so that it is long in all\n";
        }
        std::string assembly = "before\n";
        for (const char* const name : {"a.c", "b.c", "a.c", "none.c"}) {
            assembly.append("\t.ifile\t\"").append(name).append("\"\n");
            for (const int first : {2000, 1}) {
                assembly += "\t.ifunc\t" + std::to_string(first) + "\nA\n\t.iendfunc\t" +
                            std::to_string(first + 600) + "\n";
            }
        }
        assembly += "after\n\t.ifile\t\"\"\n";  // ends the run with exit(1)
        folder.write("a.c", source);
        folder.write("b.c", source);
        folder.write("p.asm", assembly);
        EXPECT_EQ(run_program({INTERLIST, "p.asm"}, options()).status, 1);
        whole = folder.read("p.cl");
    }

    RunOptions options() {
        RunOptions given;
        given.directory = folder.path();
        given.argv0 = "lister";
        return given;
    }

    // The report of a fault, in which only the line that was reached is not known.
    static std::string expected(const caught_signal& signal, const std::string& line) {
        if (signal.report[0] == '[') {
            return signal.report;
        }
        return std::string("\nINTERNAL ERROR: lister ") + signal.report +
               " while\n                processing file p.asm" + line +
               "\n\n"
               "This is a serious problem.  Please contact Customer\n"
               "Support with this message and a copy of the input file\n"
               "and help us to continue to make the tools more robust.\n\n";
    }

    // The report stands behind what the run had said before, if anything.
    static void expect_report(const caught_signal& signal, const std::string& text) {
        const std::size_t at = text.find(" line ");
        const std::string line =
            at == std::string::npos ? "" : text.substr(at, text.find('\n', at) - at);
        const std::string report = expected(signal, line);
        ASSERT_GE(text.size(), report.size()) << text;
        EXPECT_EQ(text.substr(text.size() - report.size()), report);
        EXPECT_EQ(text.find("INTERNAL ERROR"), text.rfind("INTERNAL ERROR"));
    }

    ScratchFolder folder;
    std::string whole;
};

}  // namespace

TEST_P(ASignal, IsReportedAndLeavesTheListing) {
    const auto& [signal, calls, function] = GetParam();
    std::size_t longest = 0;
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE("call " + std::to_string(nth));
        ASSERT_EQ(std::remove((folder / "p.cl").c_str()), 0);
        const std::optional<faulted_run> run = run_with_fault(
            {INTERLIST, "p.asm"}, options(),
            {.calls = calls, .function = function, .nth = nth, .signal_number = signal->number});
        if (!run) {
            GTEST_SKIP() << "not possible on this system, or with this sanitizer";
        }
        if (!run->hit) {
            EXPECT_EQ(run->finished.status, 1);
            break;
        }
        ASSERT_EQ(run->finished.signal, 0) << (run->finished.signal == SIGALRM ? "it hangs" : "");
        ASSERT_EQ(run->finished.status, 2) << run->finished.err;
        EXPECT_EQ(run->finished.out, "");
        expect_report(*signal, run->finished.err);
        if (!folder.has("p.cl")) {
            folder.write("p.cl", "");
        }
        // All that was listed by then, each run getting farther than the last.
        const std::string listing = folder.read("p.cl");
        ASSERT_EQ(listing, whole.substr(0, listing.size()));
        ASSERT_GE(listing.size(), longest);
        longest = listing.size();
    }
    if (function == std::string("exit")) {
        EXPECT_EQ(longest, whole.size());
    }
}

INSTANTIATE_TEST_SUITE_P(Signals, ASignal, testing::ValuesIn(moments()), name_of);
