// The built symdecode: its command line, its exit statuses, how it streams, and golden
// runs over texts of each kind that it meets.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/harness/program.h"

using namespace std::string_literals;

namespace {

RunOptions reading(const std::string& input) {
    RunOptions options;
    options.input = input;
    return options;
}

RunOptions reading_from(const std::string& file) {
    RunOptions options;
    options.input_from = file;
    return options;
}

Finished symdecode(std::vector<std::string> arguments, const RunOptions& options = {}) {
    arguments.insert(arguments.begin(), SYMDECODE);
    return run_program(arguments, options);
}

std::string decoded(const std::vector<std::string>& arguments, const std::string& input = {}) {
    const Finished run = symdecode(arguments, reading(input));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    return run.out;
}

void expect_golden(const std::vector<std::string>& arguments, const std::string& text,
                   const std::string& expected) {
    const std::string folder = "../data/symdecode/";
    const Finished run = symdecode(arguments, reading_from(folder + text));
    EXPECT_EQ(run.status, 0) << text;
    EXPECT_EQ(run.err, "") << text;
    EXPECT_EQ(run.out, read_file(folder + expected)) << text;
}

// Reads until `size` bytes have come; a program that sits on them hangs the test.
std::string read_exactly(int fd, std::size_t size) {
    std::string text(size, '\0');
    std::size_t have = 0;
    while (have < size) {
        const ssize_t count = read(fd, text.data() + have, size - have);
        if (count <= 0) {
            break;
        }
        have += static_cast<std::size_t>(count);
    }
    text.resize(have);
    return text;
}

}  // namespace

TEST(SymdecodeProgram, DecodesTheTextsOfOtherTools) {
    for (const std::string name :
         {"assembly", "linker", "listing", "map", "nm", "stack_trace", "underscores"}) {
        expect_golden({}, name + ".txt", name + ".decoded.txt");
    }
}

TEST(SymdecodeProgram, DecodesAListingUnderSchemeZero) {
    expect_golden({"--scheme=0"}, "listing.txt", "listing.scheme0.txt");
}

TEST(SymdecodeProgram, DecodesAListingWithUnderscoresInFront) {
    expect_golden({"--strip-underscore"}, "underscores.txt", "underscores.stripped.txt");
}

TEST(SymdecodeProgram, WhatHoldsNoNamesComesThroughByteForByte) {
    std::string every_byte;
    for (int high = 0; high < 256; ++high) {
        for (int low = 0; low < 256; ++low) {
            every_byte += static_cast<char>(high);
            every_byte += static_cast<char>(low);
        }
    }
    EXPECT_EQ(decoded({}, every_byte), every_byte);
    EXPECT_EQ(decoded({}, every_byte + every_byte + every_byte),
              every_byte + every_byte + every_byte);
}

TEST(SymdecodeProgram, ArgumentsAreDecodedOneALine) {
    EXPECT_EQ(decoded({"_Z1fi", "main", "_ZN1A1fEi@plt", "f__1AFi"}),
              "f(int)\nmain\nA::f(int)@plt\nA::f(int)\n");
}

TEST(SymdecodeProgram, WithArgumentsStandardInputIsNotRead) {
    EXPECT_EQ(decoded({"_Z1fi"}, "_Z1gv"), "f(int)\n");
}

TEST(SymdecodeProgram, ANameMayFollowTwoHyphens) {
    EXPECT_EQ(decoded({"--", "-x", "_Z1fi"}), "-x\nf(int)\n");
}

TEST(SymdecodeProgram, TheSchemeCanBeChosen) {
    const std::vector<std::string> names{"_Z1fi", "f__1AFi"};
    EXPECT_EQ(decoded({"--scheme=0", names[0], names[1]}), "_Z1fi\nA::f(int)\n");
    EXPECT_EQ(decoded({"-s1", names[0], names[1]}), "f(int)\nf__1AFi\n");
    EXPECT_EQ(decoded({"-s", "auto", names[0], names[1]}), "f(int)\nA::f(int)\n");
}

TEST(SymdecodeProgram, OptionsDoWhatTheySay) {
    EXPECT_EQ(decoded({"--names-only", "_ZN1A1fEi"}), "A::f\n");
    EXPECT_EQ(decoded({"-p", "f__1AFi"}), "f\n");
    EXPECT_EQ(decoded({"-_", "__Z1fi"}), "f(int)\n");
    EXPECT_EQ(decoded({"--strip-underscore", "__Z1fi"}), "f(int)\n");
    EXPECT_EQ(decoded({"_Z1fDh"}), "f(_Float16)\n");
    EXPECT_EQ(decoded({"--strict", "_Z1fDh", "_Z1fv.cold"}), "_Z1fDh\n_Z1fv.cold\n");
    EXPECT_EQ(decoded({"--strict", "--extended", "_Z1fDh"}), "f(_Float16)\n");
}

TEST(SymdecodeProgram, NamesReadInThePlatformsStyleOnRequest) {
    EXPECT_EQ(decoded({"--style=gnu", "_Z1fPKc", "_ZN1AD2Ev", "main", "_Z1fIiEvT_"}),
              "f(char const*)\nA::~A()\nmain\nvoid f<int>(int)\n");
    EXPECT_EQ(decoded({"--style", "gnu"}, "call _Z1fPKc@plt, _Zq ___Z1fPKc\n"),
              "call f(char const*)@plt, _Zq __f(char const*)\n");
    EXPECT_EQ(decoded({"--style=gnu", "--strip-underscore"}, "__Z1fPKc"), "f(char const*)");
    EXPECT_EQ(decoded({"--style=gnu", "--lines"}, "_Z1fPKc\r\nsee _Z1fi\n"),
              "f(char const*)\r\nsee _Z1fi\n");
    EXPECT_EQ(decoded({"--style=gnu", "--json"}, "\n _ZTV1A"),
              R"js({"line":2,"column":2,"name":"_ZTV1A","decoded":"vtable for A","scheme":1}
)js");
    EXPECT_EQ(decoded({"--style=house", "_Z1fPKc"}), "f(const char *)\n");
    EXPECT_EQ(decoded({"--style=gnu", "--style=house", "_Z1fPKc"}), "f(const char *)\n");
}

TEST(SymdecodeProgram, NamesOfSchemeZeroKeepTheHouseStyle) {
    EXPECT_EQ(decoded({"--style=gnu", "_Z1fPKc", "f__1AFPCc"}),
              "f(char const*)\nA::f(const char *)\n");
    EXPECT_EQ(decoded({"--style=gnu"}, "_Z1fPKc and f__1AFPCc"),
              "f(char const*) and A::f(const char *)");
    EXPECT_EQ(decoded({"--style=gnu", "--scheme=0", "_Z1fPKc", "f__1AFPCc"}),
              "_Z1fPKc\nA::f(const char *)\n");
}

TEST(SymdecodeProgram, TheSuffixOfACloneIsReadInThePlatformsStyleToo) {
    EXPECT_EQ(decoded({"--style=gnu"}, "_Z1fPKc.cold+4"), "f(char const*) [clone .cold]+4");
    EXPECT_EQ(decoded({"--style=gnu", "--strict"}, "_Z1fPKc.cold+4"), "f(char const*).cold+4");
}

TEST(SymdecodeProgram, LinesAreTakenAsSymbols) {
    EXPECT_EQ(decoded({"--lines"}, "_Z1fi\nf__Fv\nsee _Z1fi\n"), "f(int)\nf()\nsee _Z1fi\n");
}

TEST(SymdecodeProgram, JsonIsOneObjectALine) {
    EXPECT_EQ(decoded({"--json", "_Z1fi", "main"}),
              R"js({"name":"_Z1fi","decoded":"f(int)","scheme":1}
{"name":"main","decoded":null,"scheme":null}
)js");
    EXPECT_EQ(decoded({"--json"}, "see\n _Z1fi"),
              R"js({"line":2,"column":2,"name":"_Z1fi","decoded":"f(int)","scheme":1}
)js");
    EXPECT_EQ(decoded({"--json", "--lines"}, "_Z1fi\n"),
              R"js({"name":"_Z1fi","decoded":"f(int)","scheme":1}
)js");
}

TEST(SymdecodeProgram, HelpNamesEveryOption) {
    const std::string help = decoded({"--help"});
    EXPECT_EQ(help.substr(0, 26), "Usage: symdecode [options]");
    for (const char* option :
         {"--scheme", "--style", "--names-only", "--strip-underscore", "--extended", "--strict",
          "--lines", "--json", "--help", "--version"}) {
        EXPECT_NE(help.find(option), std::string::npos) << option;
    }
}

TEST(SymdecodeProgram, VersionIsTheProjects) {
    EXPECT_EQ(decoded({"--version"}), "symdecode 8.3.12\n");
}

TEST(SymdecodeProgram, ABadCommandLineEndsWithStatusTwo) {
    const std::string hint = "Try 'symdecode --help' for more information.\n";
    Finished run = symdecode({"--no-such-option"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("no-such-option"), std::string::npos);
    EXPECT_TRUE(run.err.ends_with(hint));

    run = symdecode({"-q"});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.ends_with(hint));

    run = symdecode({"--scheme=2", "_Z1fi"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "symdecode: invalid scheme '2': use 0, 1 or auto\n" + hint);

    run = symdecode({"--scheme"});
    EXPECT_EQ(run.status, 2);

    run = symdecode({"--style=other", "_Z1fi"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "symdecode: invalid style 'other': use house or gnu\n" + hint);

    for (const std::vector<std::string>& order :
         {std::vector<std::string>{"-p", "--style=gnu"}, {"--style=gnu", "-p"}}) {
        run = symdecode(order);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "symdecode: --names-only goes with the house style only\n" + hint);
    }
}

TEST(SymdecodeProgram, InputThatCannotBeReadEndsWithStatusOne) {
    const Finished run = symdecode({}, reading_from("/"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "symdecode: standard input: Is a directory\n");
}

TEST(SymdecodeProgram, OutputThatCannotBeWrittenEndsWithStatusOne) {
    const std::string message = "symdecode: standard output: No space left on device\n";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"_Z1fi"}, {"--json", "_Z1fi"}, {"--help"}, {"--version"}}) {
        RunOptions options = reading("_Z1fi");
        options.output_to = "/dev/full";
        const Finished run = symdecode(arguments, options);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, message);
    }
}

TEST(SymdecodeProgram, ABrokenPipeEndsQuietly) {
    Running running = start_program({SYMDECODE}, reading(std::string(1 << 22, 'x')));
    close(running.out_fd);
    running.out_fd = -1;
    const Finished run = finish_program(running);
    EXPECT_EQ(run.signal, SIGPIPE);
    EXPECT_EQ(run.err, "");
}

TEST(SymdecodeProgram, ABrokenPipeEndsQuietlyWhereTheSignalIsIgnored) {
    const Finished run =
        run_program({"sh", "-c", "trap '' PIPE; { \"$0\"; echo $? >&2; } | true", SYMDECODE},
                    reading(std::string(1 << 22, 'x')));
    EXPECT_EQ(run.err, "1\n");
}

TEST(SymdecodeProgram, TextIsPassedOnAsItComes) {
    Running running = start_program({SYMDECODE});
    ASSERT_EQ(write(running.in_fd, "one _Z1fi\n", 10), 10);
    EXPECT_EQ(read_exactly(running.out_fd, 11), "one f(int)\n");
    ASSERT_EQ(write(running.in_fd, "no newline> _Z1", 15), 15);
    EXPECT_EQ(read_exactly(running.out_fd, 12), "no newline> ");
    ASSERT_EQ(write(running.in_fd, "gv.", 3), 3);
    const Finished run = finish_program(running);
    EXPECT_EQ(run.out, "g().");
    EXPECT_EQ(run.status, 0);
}

TEST(SymdecodeProgram, TextInThePlatformsStyleIsPassedOnAsItComes) {
    Running running = start_program({SYMDECODE, "--style=gnu"});
    ASSERT_EQ(write(running.in_fd, "one _Z1fPKc\n", 12), 12);
    EXPECT_EQ(read_exactly(running.out_fd, 19), "one f(char const*)\n");
    EXPECT_EQ(finish_program(running).status, 0);
}

TEST(SymdecodeProgram, LinesArePassedOnAsTheyCome) {
    Running running = start_program({SYMDECODE, "--lines"});
    ASSERT_EQ(write(running.in_fd, "_Z1fi\n", 6), 6);
    EXPECT_EQ(read_exactly(running.out_fd, 7), "f(int)\n");
    EXPECT_EQ(finish_program(running).status, 0);
}

TEST(SymdecodeProgram, MemoryDoesNotGrowWithTheText) {
    std::string text;
    for (int line = 0; line < 400000; ++line) {
        text += "0000000000000000 T _ZN1A1fEi ";
    }
    RunOptions options = reading(text + std::string(20 << 20, '_'));
    if (SYMDECODE_SANITIZERS[0] == '\0') {
        options.address_space_limit = 16 << 20;
    }
    const Finished run = symdecode({}, options);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    // "A::f(int)" is as long as its name.
    EXPECT_EQ(run.out.size(), options.input.size());
}

// Wherever the memory runs out, from the least with which the program starts at all to what
// a text of megabytes needs.
TEST(SymdecodeProgram, ExhaustedMemoryEndsWithAMessage) {
    if (SYMDECODE_SANITIZERS[0] != '\0') {
        GTEST_SKIP() << "sanitizers need more address space than there is";
    }
    std::string name = "_Z1f1AIiiE";  // and then, time and again, a type of twice the last one
    for (const char digit : std::string("0123456789ABCDEFGH")) {
        const std::string last = std::string("S") + digit + '_';
        name.append("S_I").append(last).append(last).append("E");
    }
    const auto limited = [&](const std::vector<std::string>& arguments, std::size_t limit) {
        RunOptions options = reading(name);
        options.address_space_limit = limit;
        return symdecode(arguments, options);
    };
    constexpr std::size_t step = 256 << 10;
    std::size_t least = step;
    while (limited({"--version"}, least).status != 0) {
        least += step;
    }
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"--style=gnu"}, {"--json"}, {"--lines"}}) {
        const std::string whole = limited(arguments, std::size_t{1} << 32).out;
        ASSERT_GT(whole.size(), 4U << 20);
        bool enough = false;
        bool exhausted = false;
        for (std::size_t limit = least; !enough; limit += 8 * step) {
            const Finished run = limited(arguments, limit);
            enough = run.status == 0;
            exhausted |= !enough;
            EXPECT_EQ(run.signal, 0) << limit;
            EXPECT_EQ(run.err, enough ? "" : "symdecode: memory exhausted\n") << limit;
            EXPECT_EQ(run.status, enough ? 0 : 1) << limit;
            EXPECT_TRUE(run.out == (enough ? whole : "")) << limit;
        }
        EXPECT_TRUE(exhausted);
    }
}
