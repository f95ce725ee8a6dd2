// The forms of clist that other programs have a part in: the interlister's listing, and the
// figures of llvm-mca.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/harness/program.h"

using std::string;

namespace {

RunOptions in(const ScratchFolder& folder) {
    RunOptions options;
    options.directory = folder.path();
    return options;
}

string output_of(const std::vector<string>& command, const RunOptions& options) {
    const Finished run = run_program(command, options);
    EXPECT_EQ(run.status, 0) << command.front() << ": " << run.err;
    return run.out;
}

// A program of this name in front of all others.
RunOptions with_program(const ScratchFolder& folder, const string& name, const string& script) {
    const string file = folder.write(name, "#!/bin/sh\n" + script);
    chmod(file.c_str(), 0755);
    RunOptions options = in(folder);
    options.set["PATH"] = folder.path() + ":" + std::getenv("PATH");
    return options;
}

const string two_functions =
    "\t.type f, @function\n"
    "f:\n"
    "\t.cfi_startproc\n"
    ".L2:\n"
    "\tdecl %edi\n"
    "\tjne .L2\n"
    ".LVL1:\n"
    "\tleaq .LC0(%rip), %rax\n"
    "\tret\n"
    "\t.cfi_endproc\n"
    "\t.size f, .-f\n"
    "\t.type g, @function\n"
    "g:\n"
    "\tret\n"
    "\t.size g, .-g\n"
    "\t.section .rodata\n"
    ".LC0:\n"
    "\t.string \"a\"\n";

}  // namespace

TEST(ClistForms, ClassicIsByteForByteWhatTheThreeCommandsGive) {
    const ScratchFolder folder;
    for (const string source :
         {"../data/gas/sample.c", "../data/listed/odd.c", "../../examples/walk.c"}) {
        folder.write("prog.c", read_file(source));
        for (const string level : {"-O0", "-O2"}) {
            output_of({"cc", level, "-S", "-g", "prog.c", "-o", "prog.s"}, in(folder));
            const Finished placed =
                run_program({GAS2INTERLIST, "prog.s", "-o", "prog.asm"}, in(folder));
            ASSERT_EQ(placed.status, 0) << placed.err;
            ASSERT_EQ(run_program({INTERLIST, "prog.asm", "prog.cl"}, in(folder)).status, 0);
            const string listing = folder.read("prog.cl");
            ASSERT_NE(listing, "");
            EXPECT_EQ(output_of({CLIST, "--classic", "prog.s"}, in(folder)), listing);
            EXPECT_EQ(output_of({CLIST, "--classic", "cc", level, "-c", "prog.c"}, in(folder)),
                      listing);
        }
    }
}

TEST(ClistForms, FiguresOfTheMachineStandBehindTheCodeOfEachFunction) {
    const ScratchFolder folder;
    folder.write("code.s", two_functions);
    const RunOptions options =
        with_program(folder, "llvm-mca", "for last; do :; done\necho Code:\necho\ncat \"$last\"\n");
    EXPECT_EQ(output_of({CLIST, "--no-warnings", "--mca", "code.s"}, options),
              "f:\n"
              ".L2:\n"
              "# no line\n"
              "\tdecl %edi\n"
              "\tjne .L2\n"
              "\tleaq .LC0(%rip), %rax\n"
              "\tret\n"
              "# | Code:\n"
              "# |\n"
              "# | f:\n"
              "# | .L2:\n"
              "# | \tdecl %edi\n"
              "# | \tjne .L2\n"
              "# | \tleaq .LC0(%rip), %rax\n"
              "# | \tret\n"
              ".LC0:\n"
              "\t.string \"a\"\n"
              "\n"
              "g:\n"
              "# no line\n"
              "\tret\n"
              "# | Code:\n"
              "# |\n"
              "# | g:\n"
              "# | \tret\n");
}

TEST(ClistForms, FiguresThatTheMachineDoesNotGiveAreReplacedByItsMessage) {
    const ScratchFolder folder;
    folder.write("code.s", "f:\n\tret\n");
    const RunOptions options =
        with_program(folder, "llvm-mca", "echo 'error: no such instruction' >&2\nexit 1\n");
    EXPECT_EQ(output_of({CLIST, "--no-warnings", "--mca", "code.s"}, options),
              "f:\n# no line\n\tret\n# | error: no such instruction\n");
}

TEST(ClistForms, WithoutTheProgramForThemThereAreNoFigures) {
    const ScratchFolder folder;
    folder.write("code.s", "f:\n\tret\n");
    RunOptions options = in(folder);
    options.set["PATH"] = folder.path();
    const Finished run = run_program({CLIST, "--mca", "code.s"}, options);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "clist: --mca needs llvm-mca, which is in the package llvm\n");
}
