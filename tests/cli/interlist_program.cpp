// The built interlister as its users meet it: both outputs, the exit status and
// every file, byte for byte.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/harness/program.h"

namespace {

constexpr const char* usage_text =
    "Usage: <toolname> [-options] filename\n"
    "\n"
    "This tool is designed to be invoked by the compiler.\n";

constexpr const char* banner = "Morvex C Source Interlister             v8.3.12\n";

std::string repeated(char fill, std::size_t count) {
    return std::string(count, fill);
}

// A comment line of the default width.
std::string comment(int number, const std::string& text) {
    char prefix[32];
    std::snprintf(prefix, sizeof prefix, "; %3d | ", number);
    return prefix + text + repeated(' ', 71 - text.size()) + "\n";
}

const std::string rule = std::string(";").append(70, '-').append("\n");

class Program : public testing::Test {
  protected:
    Finished run(std::vector<std::string> arguments, RunOptions options = {}) {
        arguments.insert(arguments.begin(), INTERLIST);
        options.directory = folder.path();
        return run_program(arguments, options);
    }

    // Runs and holds all that came out against what should have.
    void expect(const std::vector<std::string>& arguments, int status, const std::string& out,
                const std::string& err) {
        const Finished finished = run(arguments);
        EXPECT_EQ(finished.status, status);
        EXPECT_EQ(finished.out, out);
        EXPECT_EQ(finished.err, err);
    }

    // How many files the folder holds.
    long files() { return std::distance(std::filesystem::directory_iterator(folder.path()), {}); }

    ScratchFolder folder;
};

// A program that reads its assembly from a FIFO.
class WaitingProgram : public Program {
  protected:
    void start(const std::string& text) {
        ASSERT_EQ(mkfifo((folder / "prog.asm").c_str(), 0600), 0);
        RunOptions options;
        options.directory = folder.path();
        options.argv0 = "lister";
        running = start_program({INTERLIST, "prog.asm"}, options);
        writer = open((folder / "prog.asm").c_str(), O_WRONLY | O_CLOEXEC);
        ASSERT_GE(writer, 0);
        ASSERT_EQ(write(writer, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        while (!waits_for_more()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    // All was read, and the program sleeps.
    bool waits_for_more() const {
        int unread = 0;
        if (ioctl(writer, FIONREAD, &unread) != 0 || unread != 0) {
            return false;
        }
        std::string stat;
        std::getline(std::ifstream("/proc/" + std::to_string(running.pid) + "/stat"), stat);
        return stat.find(") S ") != std::string::npos;
    }

    Finished end_with(int signal_number) {
        kill(running.pid, signal_number);
        Finished finished = finish_program(running);
        close(writer);
        return finished;
    }

    Running running;
    int writer = -1;
};

std::string internal_error(const std::string& phrase, const std::string& line) {
    return "\nINTERNAL ERROR: lister " + phrase +
           " while\n"
           "                processing file prog.asm" +
           line +
           "\n\n"
           "This is a serious problem.  Please contact Customer\n"
           "Support with this message and a copy of the input file\n"
           "and help us to continue to make the tools more robust.\n\n";
}

}  // namespace

TEST_F(Program, WithoutANameShowsTheUsage) {
    expect({}, 0, usage_text, "");
    expect({"-q"}, 0, usage_text, "");
    expect({"--help"}, 0, usage_text, "");
    expect({"prog.asm", "x.cl", "y", "--help", "--toolversion"}, 0, usage_text, "");
    expect({"-x"}, 0, usage_text, ">> Unknown option -x\n");
    EXPECT_EQ(files(), 0);
}

TEST_F(Program, ReportsItsVersion) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--toolversion"},
                                                      {"--toolversion", "--help"},
                                                      {"no.asm", "no/x.cl", "--toolversion"},
                                                      {"a", "b", "c", "--toolversion", "d"}}) {
        const Finished finished = run(arguments);
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.out.substr(0, 48), banner);
        EXPECT_EQ(finished.out.substr(48, 14), "Build Number 1");
        EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 2);
        EXPECT_EQ(finished.out.back(), '\n');
        EXPECT_EQ(finished.err, "");
    }
    EXPECT_EQ(run({"-z", "--toolversion"}).err, ">> Unknown option -z\n");
    EXPECT_EQ(files(), 0);
}

TEST_F(Program, WhatIsAskedForMustReachStandardOutput) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"-q"}, {"--help"}, {"--toolversion"}}) {
        RunOptions full;
        full.output_to = "/dev/full";
        const Finished finished = run(arguments, full);
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.err,
                  ">> WARNING: Cannot write 'standard output': No space left on device\n");
    }
}

TEST_F(Program, RefusesThreeNames) {
    expect({"a", "b", "c"}, 1, "\n>> ERROR - Garbage on command line", "");
    EXPECT_EQ(files(), 0);
}

TEST_F(Program, RefusesNamesBeyondItsLimit) {
    expect({repeated('a', 16384)}, 1, "\n>> FATAL ERROR - String exceeds internal limit!!\n", "");
    expect({"a", repeated('b', 16384)}, 1, "\n>> FATAL ERROR - String exceeds internal limit!!\n",
           "");
}

TEST_F(Program, MergesTheCLinesIntoTheListing) {
    folder.write("main.c", "int main(void)\n{\n\treturn 0;\n}\n");
    folder.write("prog.asm",
                 "\t.text\n\t.ifile\t\"main.c\"\n\t.isym\t_main\nmain:\n\t.ifunc\t1\n"
                 "\tpush\n\t.iline\t3\n\tclr\n\t.iline\t4\n\tret\n\t.iendfunc\t5\n\t.end\n");
    expect({"prog.asm"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"), "\t.text\nmain:\n" + rule + comment(1, "int main(void)") +
                                          comment(2, "{") + rule + "\tpush\n" + rule +
                                          comment(3, "return 0;") + rule + "\tclr\n" + rule +
                                          comment(4, "}") + rule + "\tret\n\t.end\n");
}

TEST_F(Program, WritesTheListingThatIsNamed) {
    folder.write("prog.asm", "a\n");
    folder.write("out.txt", "a longer text that was there before\n");
    expect({"-b", "prog.asm", "-pq", "out.txt", "-w", "80"}, 0, "", "");
    EXPECT_EQ(folder.read("out.txt"), "a\n");
    EXPECT_FALSE(folder.has("prog.cl"));
}

TEST_F(Program, WritesToItsStandardOutputByName) {
    folder.write("prog.asm", "a\nb\n");
    expect({"prog.asm", "/dev/stdout"}, 0, "a\nb\n", "");
}

TEST_F(Program, ReadsItsStandardInputByName) {
    folder.write("a.c", "one\ntwo\n");
    RunOptions options;
    options.input = "\t.ifile\t\"a.c\"\n\t.ifunc\t1\nA\n\t.iline\t2\nB\n\t.iendfunc\t3\nC\n";
    const Finished finished = run({"/dev/stdin", "/dev/stdout", "-w", "12"}, options);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out,
              ";-----------\n;   1 | one \n;-----------\nA\n;-----------\n;   2 | two \n"
              ";-----------\nB\nC\n");
}

TEST_F(Program, ReadsLinesOfAPipeThatAreLongerThanItsWindow) {
    RunOptions options;
    options.input = repeated('x', 200000) + "\nlast\n";
    EXPECT_EQ(run({"/dev/stdin", "x.cl"}, options).status, 0);
    EXPECT_TRUE(folder.read("x.cl") == options.input);
}

TEST_F(Program, RefusesToLoseLinesOfAPipe) {
    folder.write("a.c", "one\n");
    RunOptions options;
    options.input =
        "\t.ifile\t\"a.c\"\n\t.ifunc\t1\n" + repeated('\n', 100000) + "\t.iendfunc\t2\n";
    const Finished finished = run({"/dev/stdin", "x.cl"}, options);
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, ">> WARNING: Cannot read again '/dev/stdin': Illegal seek\n");
}

TEST_F(Program, GoesOnWithoutTheLinesThatHaveLeftAPipe) {
    std::string source;
    for (int line = 1; line <= 20000; ++line) {
        source += "line " + std::to_string(line) + "\n";
    }
    RunOptions options;
    options.input = source;
    folder.write("prog.asm",
                 "\t.ifile\t\"/dev/stdin\"\n\t.ifunc\t15000\nA\n\t.iendfunc\t15001\n"
                 "\t.ifunc\t2\nB\n\t.iline\t1\nC\n\t.iendfunc\t6\n"
                 "\t.ifile\t\"/dev/stdin\"\n\t.ifunc\t15002\nD\n\t.iendfunc\t15003\nE\n");
    const Finished finished = run({"prog.asm"}, options);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, ">> WARNING: Cannot read again '/dev/stdin': Illegal seek\n");
    EXPECT_EQ(folder.read("prog.cl"),
              rule + comment(15000, "line 15000") + rule + "A\nB\nC\nD\nE\n");
}

TEST_F(Program, ReadsAnInputWithTheListingsNameAsEmpty) {
    folder.write("prog.cl", "a\n");
    expect({"prog.cl"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"), "");
}

TEST_F(Program, ReportsAnInputThatCannotBeOpened) {
    expect({"no.asm"}, 1, "",
           ">> WARNING: Cannot open input file 'no.asm': No such file or directory\n");
    expect({""}, 1, "", ">> WARNING: Cannot open input file '': No such file or directory\n");
    folder.write("file", "");
    expect({"--no_warnings", "file/x"}, 1, "",
           ">> WARNING: Cannot open input file 'file/x': Not a directory\n");
    std::filesystem::create_symlink("loop", folder / "loop");
    expect({"loop", "x.cl"}, 1, "",
           ">> WARNING: Cannot open input file 'loop': Too many levels of symbolic links\n");
    EXPECT_FALSE(folder.has("x.cl"));
}

TEST_F(Program, ReportsAnInputThatMustNotBeRead) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root reads everything";
    }
    chmod(folder.write("prog.asm", "a\n").c_str(), 0);
    expect({"prog.asm"}, 1, "",
           ">> WARNING: Cannot open input file 'prog.asm': Permission denied\n");
}

TEST_F(Program, ReportsAListingThatCannotBeOpened) {
    folder.write("prog.asm", "a\n");
    expect({"prog.asm", "no/x.cl"}, 1, "",
           ">> WARNING: Cannot open temp file 'no/x.cl': No such file or directory\n");
    expect({"prog.asm", "."}, 1, "", ">> WARNING: Cannot open temp file '.': Is a directory\n");
}

TEST_F(Program, ReadsADirectoryAsAnEmptyAssembly) {
    std::filesystem::create_directory(folder / "dir");
    expect({"dir"}, 0, "", "");
    EXPECT_EQ(folder.read("dir.cl"), "");
}

TEST_F(Program, StopsAtADirectoryNamedAsASource) {
    folder.write("prog.asm", "a\n\t.ifile\t\".\"\nb\n\t.ifunc\t1\nc\n\t.iendfunc\t2\n");
    expect({"prog.asm"}, 1, "\n>> Error while reading file\n", "");
    EXPECT_EQ(folder.read("prog.cl"), "a\nb\n");
}

TEST_F(Program, StopsAtAnEmptySourceName) {
    folder.write("prog.asm", "a\n\t.ifile\t\"\"\nb\n");
    expect({"prog.asm"}, 1, "", ">> WARNING: Source file information not available '': Success\n");
    EXPECT_EQ(folder.read("prog.cl"), "a\n");
}

TEST_F(Program, WarnsOnceOfAMissingSource) {
    folder.write("prog.asm",
                 "\t.ifile\t\"no.c\"\n\t.ifunc\t1\nA\n\t.iline\t2\nB\n\t.iendfunc\t3\n"
                 "\t.ifile\t\"no.c\"\n\t.ifunc\t1\nC\n\t.iendfunc\t3\n");
    expect({"prog.asm"}, 0, "",
           ">> WARNING: Cannot open source file 'no.c': No such file or directory\n");
    EXPECT_EQ(folder.read("prog.cl"), "A\nB\nC\n");
    expect({"prog.asm", "--no_warnings"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"), "A\nB\nC\n");
}

TEST_F(Program, AFirstFunctionWithoutALineNumberStartsBeforeTheFirst) {
    folder.write("a.c", "one\ntwo\n");
    folder.write("prog.asm", "\t.ifile\t\"a.c\"\n\t.ifunc\tx\n\t.iline\t3\nA\n\t.iendfunc\t1\nB\n");
    expect({"prog.asm", "-w", "12"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"), ";-----------\n;   1 | one \n;-----------\nA\nB\n");
}

TEST_F(Program, ReportsAListingThatCannotBeWritten) {
    folder.write("prog.asm", "a\n");
    expect({"prog.asm", "/dev/full"}, 1, "",
           ">> WARNING: Failed to close '/dev/full': No space left on device\n");
    folder.write("prog.asm", repeated('\n', 300000));
    expect({"prog.asm", "/dev/full"}, 1, "",
           ">> WARNING: Failed to close '/dev/full': No space left on device\n");
    folder.write("prog.asm", "");
    expect({"prog.asm", "/dev/full"}, 0, "", "");
}

TEST_F(Program, KeepsClosedStandardDescriptorsClosed) {
    const std::string missing = "\t.ifile\t\"no.c\"\n\t.ifunc\t1\nA\n\t.iendfunc\t2\n";
    const std::string found = "\t.ifile\t\"a.c\"\n\t.ifunc\t1\nB\n\t.iendfunc\t2\n";
    folder.write("a.c", "one\n");
    const std::string assembly = folder.write("prog.asm", missing + found);
    const std::string listing = "A\n" + rule + comment(1, "one") + rule + "B\n";
    for (int closed = 1; closed < 8; ++closed) {
        RunOptions options;
        options.before_start = [closed] {
            for (int descriptor = 0; descriptor < 3; ++descriptor) {
                if ((closed & 1 << descriptor) != 0) {
                    close(descriptor);
                }
            }
        };
        const Finished finished = run({"-z", "prog.asm", "prog.cl"}, options);
        EXPECT_EQ(finished.status, 0) << closed;
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(folder.read("prog.cl"), listing) << closed;
        EXPECT_EQ(folder.read("prog.asm"), missing + found) << closed;
        EXPECT_EQ(finished.err.empty(), (closed & 4) != 0);
    }
}

TEST_F(Program, FindsNoListingBehindAClosedStandardOutput) {
    folder.write("prog.asm", "a\n");
    RunOptions options;
    options.before_start = [] { close(1); };
    const Finished finished = run({"prog.asm", "/dev/stdout"}, options);
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err,
              ">> WARNING: Cannot open temp file '/dev/stdout': No such file or directory\n");
    EXPECT_EQ(folder.read("prog.asm"), "a\n");
}

TEST_F(Program, ReportsTheFileSizeLimit) {
    folder.write("prog.asm", repeated('\n', 300000));
    RunOptions options;
    options.directory = folder.path();
    const Finished finished = run_program(
        {"bash", "-c", "ulimit -f 100; exec -a lister '" INTERLIST "' prog.asm"}, options);
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, internal_error("exceeded the file size limit", ""));
    EXPECT_EQ(folder.read("prog.cl"), repeated('\n', 102400));
}

TEST_F(Program, MemoryDoesNotGrowWithTheInput) {
    if (INTERLIST_SANITIZED) {
        GTEST_SKIP() << "sanitizers need address space of their own";
    }
    std::string source;
    std::string assembly = "\t.ifile\t\"a.c\"\n";
    for (int i = 0; i < 200000; ++i) {
        source += "some_line_of_c();\n";
    }
    for (const char* first : {"1", "150000", "100000"}) {
        assembly += std::string("\t.ifunc\t").append(first).append("\n");
        assembly += repeated('\n', 8000000) + "\t.iendfunc\t100002\n";
    }
    folder.write("a.c", source);
    folder.write("prog.asm", assembly);
    RunOptions options;
    options.address_space_limit = 16U << 20;
    const Finished finished = run({"prog.asm"}, options);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    // The numbers of the C lines have up to six digits.
    EXPECT_EQ(std::filesystem::file_size(folder / "prog.cl"),
              24000000U + 999U * 80U + 9000U * 81U + 90000U * 82U + 4U * 83U + 4U * 72U);
}

TEST_F(Program, OptionsShapeTheListing) {
    folder.write("a.c", "\n{\n    a = 1;  /* one */\n\n        b = 2;\n}\n");
    folder.write("prog.asm", "\t.ifile\t\"a.c\"\n\t.ifunc\t1\nA\n\t.iendfunc\t7\n");
    expect({"prog.asm", "-bw", "24"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"),
              ";-----------------------\n"
              ";   3 | a = 1;  /* one *\n"
              ";     | /               \n"
              ";   5 |     b = 2;      \n"
              ";-----------------------\n"
              "A\n");
    expect({"prog.asm", "-Pq", "-W", "30"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"),
              ";-----------------------------\n"
              ";   1 |                       \n"
              ";   2 | {                     \n"
              ";   3 |     a = 1;  /* one */ \n"
              ";   4 |                       \n"
              ";   5 |         b = 2;        \n"
              ";   6 | }                     \n"
              ";-----------------------------\n"
              "A\n");
}

TEST_F(Program, AnAttachedWidthIsScannedAgain) {
    folder.write("prog.asm", "A\n");
    expect({"-w80", "prog.asm"}, 0, "", ">> Unknown option -8\n>> Unknown option -0\n");
    expect({"-w", "132", "prog.asm"}, 0, "", ">> Unknown option -2\n");
    expect({"prog.asm", "-w"}, 0, "", "");
    EXPECT_EQ(folder.read("prog.cl"), "A\n");
}

TEST_F(WaitingProgram, ForcedExitsAreReportedAndLeaveTheListing) {
    struct {
        int signal_number;
        const char* text;
    } const cases[] = {{SIGINT, "[lister forced exit]\n"},
                       {SIGHUP, "[lister forced exit]\n"},
                       {SIGTERM, "[lister received a terminate signal]\n"}};
    for (const auto& each : cases) {
        start("first\nsecond\n");
        const Finished finished = end_with(each.signal_number);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(finished.err, each.text);
        EXPECT_EQ(folder.read("prog.cl"), "first\nsecond\n");
        std::filesystem::remove(folder / "prog.asm");
    }
}

TEST_F(WaitingProgram, FaultsAreReportedAndLeaveTheListing) {
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
    };
    for (const auto& each : cases) {
        start("first\nsecond\n");
        const Finished finished = end_with(each.signal_number);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(finished.err, internal_error(each.phrase, ""));
        EXPECT_EQ(folder.read("prog.cl"), "first\nsecond\n");
        std::filesystem::remove(folder / "prog.asm");
    }
}

TEST_F(WaitingProgram, TheReportNamesTheCLineThatWasReached) {
    folder.write("a.c", "1\n2\n3\n4\n");
    start("A\n\t.ifile\t\"a.c\"\n\t.ifunc\t3\nB\n");
    const Finished finished = end_with(SIGSEGV);
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.err, internal_error("experienced a segmentation fault", " line 3"));
    EXPECT_EQ(folder.read("prog.cl"), "A\n");
}

TEST_F(WaitingProgram, OtherSignalsKeepTheirUsualEffect) {
    start("A\n");
    EXPECT_EQ(end_with(SIGUSR1).signal, SIGUSR1);
}
