// The forms of clist that other programs have a part in: the interlister's listing, and the
// figures of llvm-mca.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
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

// All else is still shown on standard output; a file is left as it is.
TEST(ClistForms, FiguresThatCannotBeHadAreAFailure) {
    const ScratchFolder folder;
    folder.write("code.s", "f:\n\tret\ng:\n\tnop\n");
    struct {
        string script;
        string error;
        string comments;
    } const cases[] = {
        // Not where the code lay: that is gone, and had another name each time.
        {"for last; do :; done; echo \"$last:2:2: error: no such thing\" >&2; exit 3\n",
         "failed with status 3: error: no such thing", "# | code.s:2:2: error: no such thing\n"},
        {"echo 'error: '; exit 1\n", "failed with status 1: error: ", "# | error: \n"},
        {"echo half; kill -SEGV $$\n", "was ended by signal 11 (Segmentation fault)", "# | half\n"},
        {"exit 1\n", "failed with status 1", "# | PROGRAM failed with status 1\n"},
    };
    for (const auto& [script, error, comments] : cases) {
        const RunOptions options = with_program(folder, "llvm-mca", script);
        const string program = folder / "llvm-mca";
        const string expected_error = "clist: no figures of f: " + program + " " + error +
                                      "\nclist: no figures of g: " + program + " " + error + "\n";
        const Finished run = run_program({CLIST, "--no-warnings", "--mca", "code.s"}, options);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, expected_error);
        string told = comments;
        if (const std::size_t at = told.find("PROGRAM"); at != string::npos) {
            told.replace(at, 7, program);
        }
        EXPECT_EQ(run.out, "f:\n# no line\n\tret\n" + told + "\ng:\n# no line\n\tnop\n" + told);
        folder.write("out", "old");
        const Finished to_file =
            run_program({CLIST, "--no-warnings", "--mca", "-o", "out", "code.s"}, options);
        EXPECT_EQ(to_file.status, 1);
        EXPECT_EQ(to_file.err, expected_error);
        EXPECT_EQ(folder.read("out"), "old");
    }
}

TEST(ClistForms, FiguresAreThoseOfTheRealProgram) {
    if (!has_command("llvm-mca")) {
        GTEST_SKIP() << "no llvm-mca here";
    }
    const ScratchFolder folder;
    folder.write("prog.c", "int f(int n) { return 3 * n; }\nint g(int n) { return n - 1; }\n");
    folder.write("bad.s", "f:\n\tbogus %eax\n");
    for (const std::vector<string>& options :
         {std::vector<string>{"--mca"}, {"--mca", "--intel"}, {"--mca", "--function", "f"}}) {
        std::vector<string> words{CLIST};
        words.insert(words.end(), options.begin(), options.end());
        words.insert(words.end(), {"gcc", "-O2", "-c", "prog.c"});
        const string listing = output_of(words, in(folder));
        std::size_t at = 0;
        for (const string function : {"f:\n", "g:\n"}) {
            for (const string part : {function.c_str(), "\tret\n", "# | Total Cycles: ",
                                      "# | Resource pressure by instruction:\n"}) {
                at = listing.find(part, at);
                ASSERT_NE(at, string::npos) << part << " is not where it should be\n" << listing;
            }
            if (options.back() == "f") {
                EXPECT_EQ(listing.find("g:\n"), string::npos);
                break;
            }
        }
    }
    const Finished bad = run_program({CLIST, "--no-warnings", "--mca", "bad.s"}, in(folder));
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.err.find(": error: invalid instruction mnemonic 'bogus'\n"), string::npos)
        << bad.err;
    EXPECT_NE(bad.out.find("# | code.s:2:2: error: invalid"), string::npos) << bad.out;
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

// What the compilers take for a system's headers: folders in $C_INCLUDE_PATH and its like, as
// by -isystem, but not those in $CPATH, as by -I. A warning in such a header shows which.
TEST(ClistForms, OwnSourcesAreThoseThatTheCompilerTakesForNoSystems) {
    const ScratchFolder folder;
    folder.write("lib/part.h", "static inline int part(int n)\n{\n    return n < -1u;\n}\n");
    const string text = "#include <part.h>\nint whole(int n)\n{\n    return part(n) * n;\n}\n";
    for (const string name : {"prog.c", "prog.cc"}) {
        folder.write(name, text);
        for (const string compiler : {"gcc", "clang"}) {
            for (const auto& [variable, is_system] : {std::pair{"CPATH", false},
                                                      {"C_INCLUDE_PATH", name == "prog.c"},
                                                      {"CPLUS_INCLUDE_PATH", name == "prog.cc"}}) {
                RunOptions options = in(folder);
                options.unset = {"CPATH", "C_INCLUDE_PATH", "CPLUS_INCLUDE_PATH"};
                std::erase(options.unset, variable);
                std::vector<string> compile{compiler, "-O2", "-c", name, "-o", "x.o", "-Wextra"};
                if (variable == string("CPATH") || is_system) {
                    options.set[variable] = "lib:";
                } else {
                    options.set[variable] = "lib";
                    compile.emplace_back("-Ilib");
                }
                if (!has_command(compiler)) {
                    GTEST_SKIP() << "no " << compiler << " here";
                }
                const bool is_told =
                    run_program(compile, options).err.find("part.h:3") != string::npos;
                EXPECT_EQ(is_told, !is_system) << compiler << " " << name << " " << variable;
                std::vector<string> words{CLIST, "--sources", "own"};
                words.insert(words.end(), compile.begin(), compile.end());
                const string listing = output_of(words, options);
                const bool is_shown = listing.find("# part.h:3 |") != string::npos;
                EXPECT_EQ(is_shown, is_told) << compiler << " " << name << " " << variable;
                EXPECT_NE(listing.find("# " + name + ":4 |     return part(n) * n;\n"),
                          string::npos)
                    << listing;
            }
        }
    }
}

// A folder by any name that leads there: compilers record some by another.
TEST(ClistForms, FoldersOfTheSystemAreKnownByAnyName) {
    const ScratchFolder folder;
    folder.write("a/src/prog.c",
                 "#include <part.h>\nint whole(int n)\n{\n    return part(n) + 1;\n}\n");
    folder.write("vendor/part.h", "static inline int part(int n)\n{\n    return 77 * n;\n}\n");
    std::filesystem::create_directory_symlink("vendor", folder / "link");
    RunOptions options = in(folder);
    options.directory = folder / "a";
    for (const string compiler : {"gcc", "clang"}) {
        if (!has_command(compiler)) {
            continue;
        }
        for (const string& name :
             {string("../vendor"), string("./../vendor/"), string("src/../../vendor"),
              folder / "vendor", folder / "a/../vendor", folder / "link", string("../link")}) {
            const string listing = output_of(
                {CLIST, "--sources", "own", compiler, "-O2", "-isystem", name, "-c", "src/prog.c"},
                options);
            EXPECT_EQ(listing.find("part.h"), string::npos) << compiler << " " << name;
            EXPECT_NE(listing.find("# prog.c:4 |     return part(n) + 1;\n"), string::npos);
        }
    }
}
