// The built gas2interlist: real compilers' texts through it, its streams and files, its
// messages and exit statuses.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/harness/program.h"

using namespace std::string_literals;

namespace {

const std::string data_folder = "../data/gas";

Finished gas2interlist(std::vector<std::string> arguments, const RunOptions& options = {}) {
    arguments.insert(arguments.begin(), GAS2INTERLIST);
    return run_program(arguments, options);
}

// A run in `folder` with `input` on standard input.
RunOptions in(const std::string& folder, const std::string& input = {}) {
    RunOptions options;
    options.directory = folder;
    options.input = input;
    return options;
}

bool is_directive(std::string_view line) {
    return line.starts_with("\t.ifile\t") || line.starts_with("\t.ifunc\t") ||
           line.starts_with("\t.iline\t") || line.starts_with("\t.iendfunc\t");
}

struct Parted {
    std::string directives;  // "ifile "a.c"; ifunc 3; ..."
    std::string assembly;    // everything else, byte for byte
};

Parted part(std::string_view text) {
    Parted parted;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        std::string line(text.substr(0, size));
        text.remove_prefix(size);
        if (!is_directive(line)) {
            parted.assembly += line;
            continue;
        }
        line = line.substr(2, line.size() - 3);
        line[line.find('\t')] = ' ';
        parted.directives += (parted.directives.empty() ? "" : "; ") + line;
    }
    return parted;
}

// What the functions of sample.c get where nothing of them was optimised away.
const std::string clamp_O0 =
    "ifile \"limits.h\"; ifunc 2; iline 3; iline 4; iline 5; iline 6; iendfunc 8";
const std::string sum_O1 = "ifunc 11; iline 5; iline 9; iline 12; iline 13; iendfunc 26";
const std::string one_liners = "ifunc 27; iendfunc 28; ifunc 27; iendfunc 28";
const std::string cold_sum = "ifunc 18; iendfunc 19; ifunc 14; iendfunc 15; ifunc 18; iendfunc 19";

const std::string clang_O1 =
    "ifile \"sample.c\"; " + sum_O1 + "; " + one_liners + "; ifunc 32; iline 2; iendfunc 36";
const std::string clang_O0 =
    "ifile \"sample.c\"; ifunc 11; iline 5; iline 6; iline 8; iline 9; iline 12; iline 13; "
    "iendfunc 26; ifunc 5; iline 3; iendfunc 9; " +
    clamp_O0 + "; ifile \"sample.c\"; " + one_liners + "; ifunc 32; iline 2; iendfunc 36";
const std::string gcc_O2 = "ifile \"sample.c\"; " + sum_O1 + "; " + cold_sum + "; " + one_liners +
                           "; ifunc 32; iline 2; iline 4; iendfunc 36";

struct Sample {
    std::string file;
    std::string directives;
};

const std::vector<Sample> samples = {
    {"clang_c_O0_darwin.s", clang_O0},
    {"clang_c_O0_riscv64.s", clang_O0},
    {"clang_c_O1.s", clang_O1},
    {"clang_c_O1_arm.s", clang_O1},
    {"clang_c_O1_windows.s", clang_O1},
    {"clang_c_O2_aarch64.s", clang_O1},
    {"clang_cpp_O0_dwarf4.s",
     "ifile \"sample.cpp\"; ifunc 20; iline 3; iline 4; iline 5; iendfunc 28; "
     "ifunc 2; iline 3; iendfunc 5; ifunc 14; iline 4; iendfunc 19; "
     "ifunc 23; iline 2; iendfunc 26; ifunc 5; iline 3; iline 4; iendfunc 10"},
    {"gcc_c_O0.s", clamp_O0 +
                       "; ifile \"sample.c\"; ifunc 5; iline 3; iline 4; iendfunc 9; "
                       "ifunc 11; iline 5; iline 6; iline 8; iline 9; iline 12; iline 13; "
                       "iline 15; iendfunc 26; " +
                       one_liners + "; ifunc 32; iline 2; iline 4; iendfunc 36"},
    {"gcc_c_O2_sections.s", gcc_O2},
    {"gcc_c_O3_dwarf4.s", gcc_O2},
    {"gcc_cpp_O1_dwarf4.s", "ifile \"sample.cpp\"; ifunc 20; iline 3; iline 6; iendfunc 28"},
};

// A function of one line with nothing that needs a source file.
const std::string small =
    "\t.file 1 \"a.c\"\n"
    "\t.type f, @function\n"
    "f:\n"
    "\t.loc 1 3\n"
    "\tret\n"
    "\t.size f, .-f\n";
const std::string small_placed =
    "\t.file 1 \"a.c\"\n"
    "\t.ifile\t\"a.c\"\n"
    "\t.ifunc\t3\n"
    "\t.type f, @function\n"
    "f:\n"
    "\t.loc 1 3\n"
    "\tret\n"
    "\t.size f, .-f\n"
    "\t.iendfunc\t4\n";
const std::string malformed = "\tnop\n\t.loc 1 x\n\tnop\n";

std::size_t entries(const std::string& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) {
        ++count;
    }
    return count;
}

}  // namespace

TEST(Gas2interlist, PlacesDirectivesInWhatCompilersWrite) {
    for (const Sample& sample : samples) {
        // The samples were compiled elsewhere, at another time.
        const Finished run = gas2interlist({"--no-warnings", sample.file}, in(data_folder));
        EXPECT_EQ(run.status, 0) << sample.file;
        EXPECT_EQ(run.err, "") << sample.file;
        const Parted parted = part(run.out);
        EXPECT_EQ(parted.directives, sample.directives) << sample.file;
        EXPECT_EQ(parted.assembly, read_file(data_folder + "/" + sample.file)) << sample.file;
    }
}

TEST(Gas2interlist, IsAFilterWithoutArguments) {
    const ScratchFolder folder;
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"-"}, {"-o", "-"}, {"-", "-o", "-"}}) {
        const Finished run = gas2interlist(arguments, in(folder.path(), small));
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out, small_placed);
        EXPECT_EQ(run.err, "");
    }
}

TEST(Gas2interlist, ReadsAndWritesNamedFiles) {
    const ScratchFolder folder;
    folder.write("a.s", small);
    const Finished run = gas2interlist({"a.s", "-o", "a.asm"}, in(folder.path()));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(folder.read("a.asm"), small_placed);
    EXPECT_EQ(entries(folder.path()), 2U);
}

TEST(Gas2interlist, KeepsEveryOtherByte) {
    const ScratchFolder folder;
    for (const std::string& text :
         {""s, "\n"s, "\n\n\tnop"s, "\tnop\0\n\0"s, "\t.ascii \"\377\032\r\"\r\n\tnop\n\r"s,
          std::string(200000, 'x') + "\n" + std::string(17000, '\t')}) {
        const Finished run = gas2interlist({}, in(folder.path(), text));
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(run.out == text);
    }
}

TEST(Gas2interlist, StandardInputIsReadFromWhereItStandsToItsEnd) {
    const ScratchFolder folder;
    folder.write("a.s", "first line\n" + small);
    const Finished run = run_program(
        {"sh", "-c", "{ read line; \"$0\"; cat; } < a.s", GAS2INTERLIST}, in(folder.path()));
    EXPECT_EQ(run.out, small_placed);
}

TEST(Gas2interlist, FilesOfTheSystemAreReadThoughTheyLookEmpty) {
    const Finished run = gas2interlist({"/proc/version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, read_file("/proc/version"));
    EXPECT_NE(run.out, "");
}

TEST(Gas2interlist, SourceNamesMayBeRewritten) {
    const ScratchFolder folder;
    const Finished run =
        gas2interlist({"--source-map", "x=y", "--source-map=a=/moved/b"}, in(folder.path(), small));
    EXPECT_EQ(part(run.out).directives, "ifile \"/moved/b.c\"; ifunc 3; iendfunc 4");
}

TEST(Gas2interlist, FindsSourcesWithBlanksQuotesAndOctalEscapesInTheirNames) {
    const ScratchFolder folder;
    folder.write("a \"b\" \303\251.c", "int v;\nint f(void)\n{\n    return 1;\n}\n");
    const std::string text =
        "\t.file 1 \"a \\\"b\\\" \\303\\251.c\"\n\t.type f, @function\nf:\n\t.loc 1 3\n\tret\n";
    const Finished run = gas2interlist({}, in(folder.path(), text));
    EXPECT_EQ(part(run.out).directives, "ifile \"a \"b\" \303\251.c\"; ifunc 2; iendfunc 6");
}

TEST(Gas2interlist, ASourceThatIsNoRegularFileIsNotRead) {
    struct Case {
        std::string name;
        std::string error;
    };
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0);
    for (const Case& each : {Case{"/dev/zero", "No such device"}, Case{"fifo", "No such device"},
                             Case{".", "Is a directory"}}) {
        const std::string text =
            "\t.file 1 \"" + each.name + "\"\n\t.type f, @function\nf:\n\t.loc 1 3\n\tret\n";
        const Finished run = gas2interlist({}, in(folder.path(), text));
        EXPECT_EQ(part(run.out).directives, "ifile \"" + each.name + "\"; ifunc 3; iendfunc 4");
        EXPECT_EQ(run.err, "gas2interlist: standard input: warning: " + each.name +
                               ": cannot be read: " + each.error + "\n");
    }
}

TEST(Gas2interlist, ADoubtfulSourceIsListedWithAWarning) {
    const ScratchFolder folder;
    folder.write("a.c", "int v;\n\nint f(void)\n{\n}\n");
    const std::string elsewhere =
        "\t.file 0 \"/nowhere\" \"a.c\"\n" + small.substr(small.find('\n') + 1);
    folder.write("a.s", small);
    folder.write("b.s", "\t.file 1 \"a.c\"\n" + elsewhere);
    const std::string placed = "ifile \"a.c\"; ifunc 3; iendfunc 6";
    const std::string guessed = "a.c: found here, though it was compiled as /nowhere/a.c\n";
    const Finished guess = gas2interlist({"b.s"}, in(folder.path()));
    EXPECT_EQ(guess.status, 0);
    EXPECT_EQ(guess.err, "gas2interlist: b.s: warning: " + guessed);
    EXPECT_EQ(part(guess.out).directives, placed);
    EXPECT_EQ(gas2interlist({}, in(folder.path(), folder.read("b.s"))).err,
              "gas2interlist: standard input: warning: " + guessed);
    EXPECT_EQ(gas2interlist({"a.s"}, in(folder.path())).err, "");

    const auto written = std::filesystem::last_write_time(folder / "a.c");
    std::filesystem::last_write_time(folder / "a.s", written - std::chrono::seconds(1));
    const Finished later = gas2interlist({"a.s"}, in(folder.path()));
    EXPECT_EQ(later.status, 0);
    EXPECT_EQ(later.err, "gas2interlist: a.s: warning: a.c: newer than the assembly\n");
    EXPECT_EQ(part(later.out).directives, placed);
    EXPECT_EQ(gas2interlist({}, in(folder.path(), small)).err, "");

    for (const std::string input : {"a.s", "b.s"}) {
        const Finished silent = gas2interlist({input, "--no-warnings"}, in(folder.path()));
        EXPECT_EQ(silent.status, 0);
        EXPECT_EQ(silent.err, "");
        EXPECT_EQ(part(silent.out).directives, placed);
    }
}

TEST(Gas2interlist, EachSourceIsDoubtedOnce) {
    const ScratchFolder folder;
    folder.write("a.c", "int f(void) {}\n");
    std::string text = "\t.file 0 \"/nowhere\" \"a.c\"\n\t.file 1 \"a.c\"\n";
    for (const std::string name : {"f", "g", "h"}) {
        text += "\t.type " + name + ", @function\n" + name + ":\n\t.loc 1 1\n\tret\n\t.loc 0 1\n";
    }
    EXPECT_EQ(gas2interlist({}, in(folder.path(), text)).err,
              "gas2interlist: standard input: warning: "
              "a.c: found here, though it was compiled as /nowhere/a.c\n");
}

TEST(Gas2interlist, AssemblyWithoutLinesIsCopiedWithAWarning) {
    const std::string text = "\t.type f, @function\nf:\n\tret\n";
    const Finished run = gas2interlist({}, in({}, text));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, text);
    EXPECT_EQ(run.err,
              "gas2interlist: standard input: warning: no line information; compile with -g\n");
    EXPECT_EQ(gas2interlist({"--no-warnings"}, in({}, text)).err, "");
}

TEST(Gas2interlist, MalformedInputIsRefusedWithItsLine) {
    const ScratchFolder folder;
    folder.write("bad.s", malformed);
    const Finished named = gas2interlist({"bad.s"}, in(folder.path()));
    EXPECT_EQ(named.status, 1);
    EXPECT_EQ(named.out, "");
    EXPECT_EQ(named.err, "gas2interlist: bad.s:2: bad line number in .loc\n");
    const Finished piped = gas2interlist({}, in({}, malformed));
    EXPECT_EQ(piped.status, 1);
    EXPECT_EQ(piped.out, "");
    EXPECT_EQ(piped.err, "gas2interlist: standard input:2: bad line number in .loc\n");
}

TEST(Gas2interlist, ItsOwnOutputIsRefused) {
    const Finished run = gas2interlist({}, in({}, small_placed));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              "gas2interlist: standard input:2: the input already has interlist directives "
              "(.ifile)\n");
}

TEST(Gas2interlist, AFailureLeavesTheNamedOutputAsItWas) {
    const ScratchFolder folder;
    folder.write("bad.s", malformed);
    EXPECT_EQ(gas2interlist({"bad.s", "-o", "new.asm"}, in(folder.path())).status, 1);
    EXPECT_FALSE(folder.has("new.asm"));
    folder.write("old.asm", "old");
    EXPECT_EQ(gas2interlist({"bad.s", "-o", "old.asm"}, in(folder.path())).status, 1);
    EXPECT_EQ(folder.read("old.asm"), "old");
    EXPECT_EQ(entries(folder.path()), 2U);
}

TEST(Gas2interlist, AnOutputIsReplacedInItsPlaceWithItsPermissions) {
    const ScratchFolder folder;
    folder.write("a.s", small);
    folder.write("real.asm", "old");
    ASSERT_EQ(chmod((folder / "real.asm").c_str(), 0640), 0);
    std::filesystem::create_symlink("real.asm", folder / "link.asm");
    EXPECT_EQ(gas2interlist({"a.s", "-o", "link.asm"}, in(folder.path())).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.asm"));
    EXPECT_EQ(folder.read("real.asm"), small_placed);
    struct stat status {};
    ASSERT_EQ(stat((folder / "real.asm").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(Gas2interlist, AFileMayBeRewrittenInPlace) {
    const ScratchFolder folder;
    folder.write("a.s", small);
    EXPECT_EQ(gas2interlist({"a.s", "-oa.s"}, in(folder.path())).status, 0);
    EXPECT_EQ(folder.read("a.s"), small_placed);
}

TEST(Gas2interlist, UnreadableInputIsReported) {
    const ScratchFolder folder;
    const Finished missing = gas2interlist({"missing.s"}, in(folder.path()));
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "gas2interlist: missing.s: No such file or directory\n");
    const Finished directory = gas2interlist({"."}, in(folder.path()));
    EXPECT_EQ(directory.status, 1);
    EXPECT_EQ(directory.err, "gas2interlist: .: Is a directory\n");
}

TEST(Gas2interlist, AReportIsALineOfAtMost32KB) {
    const std::string name(40000, 'x');
    const Finished run = gas2interlist({name});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, ("gas2interlist: " + name).substr(0, 32767) + "\n");
}

TEST(Gas2interlist, UnwritableOutputIsReported) {
    const ScratchFolder folder;
    RunOptions options = in(folder.path(), small);
    const Finished named = gas2interlist({"-o", "/dev/full"}, options);
    EXPECT_EQ(named.status, 1);
    EXPECT_EQ(named.err, "gas2interlist: /dev/full: No space left on device\n");
    const Finished absent = gas2interlist({"-o", "no/a.asm"}, options);
    EXPECT_EQ(absent.status, 1);
    EXPECT_EQ(absent.err, "gas2interlist: no/a.asm: No such file or directory\n");
    const Finished directory = gas2interlist({"-o", "."}, options);
    EXPECT_EQ(directory.status, 1);
    EXPECT_EQ(directory.err, "gas2interlist: .: Is a directory\n");
    options.output_to = "/dev/full";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"--help"}, {"--version"}}) {
        const Finished standard = gas2interlist(arguments, options);
        EXPECT_EQ(standard.status, 1);
        EXPECT_EQ(standard.err, "gas2interlist: standard output: No space left on device\n");
    }
    EXPECT_EQ(entries(folder.path()), 0U);
}

TEST(Gas2interlist, AReaderThatLeavesEndsItQuietly) {
    const ScratchFolder folder;
    folder.write("big.s", std::string(1 << 20, '\n'));
    const Finished run =
        run_program({"sh", "-c", "\"$0\" big.s | head -c 1", GAS2INTERLIST}, in(folder.path()));
    EXPECT_EQ(run.out, "\n");
    EXPECT_EQ(run.err, "");
    const Finished ignored = run_program(
        {"sh", "-c", "trap '' PIPE; \"$0\" big.s | head -c 1", GAS2INTERLIST}, in(folder.path()));
    EXPECT_EQ(ignored.err, "gas2interlist: standard output: Broken pipe\n");
}

TEST(Gas2interlist, WrongUsageIsReportedWithStatusTwo) {
    const Finished unknown = gas2interlist({"--nonsense"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_EQ(unknown.out, "");
    EXPECT_EQ(unknown.err,
              "gas2interlist: unknown option '--nonsense'\nTry 'gas2interlist --help'.\n");
    EXPECT_EQ(gas2interlist({"a.s", "b.s"}).status, 2);
    EXPECT_EQ(gas2interlist({"-o"}).status, 2);
    EXPECT_EQ(gas2interlist({"--source-map", "x"}).status, 2);
}

TEST(Gas2interlist, HelpAndVersionGoToStandardOutput) {
    const Finished help = gas2interlist({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    EXPECT_TRUE(help.out.starts_with("Usage: gas2interlist [-o FILE] [--source-map OLD=NEW]..."));
    const Finished version = gas2interlist({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "gas2interlist " PROJECT_VERSION "\n");
}
