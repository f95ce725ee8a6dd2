// clist before a compiler: the build is the same as without, and listings stand beside the
// objects.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "tests/harness/program.h"

namespace fs = std::filesystem;
using std::string;

namespace {

RunOptions in(const string& folder, const string& input = {}) {
    RunOptions options;
    options.directory = folder;
    options.input = input;
    return options;
}

bool shows(const string& text, const string& part) {
    return text.find(part) != string::npos;
}

// The words behind clist --launcher.
std::vector<string> launched(std::vector<string> words, const std::vector<string>& options = {}) {
    words.insert(words.begin(), options.begin(), options.end());
    words.insert(words.begin(), {CLIST, "--launcher"});
    return words;
}

// All files below a folder but the listings, and the listings' names.
struct tree {
    std::map<string, string> files;
    std::vector<string> listings;

    explicit tree(const string& folder) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            const string name = entry.path().lexically_relative(folder);
            if (name.ends_with(".lst")) {
                listings.push_back(name);
            } else if (entry.is_regular_file()) {
                files[name] = read_file(entry.path());
            }
        }
        std::sort(listings.begin(), listings.end());
    }
};

string sorted_lines(const string& text) {
    return run_program({"sort"}, in({}, text)).out;
}

const string makefile =
    "OBJECTS = main.o part/area.o part/names.o part/loud.o\n"
    "CFLAGS = -O2 -g -Wall -Wextra -MMD -MP -Iinclude '-DNAME=\"a b\"'\n"
    "prog: $(OBJECTS)\n"
    "\t@$(CXX) -o $@ $^\n"
    "%.o: %.c\n"
    "\t@$(CC) $(CFLAGS) -c -o $@ $<\n"
    "%.o: %.cpp\n"
    "\t@$(CXX) $(CFLAGS) -c -o $@ $<\n";

void write_project(const ScratchFolder& folder) {
    folder.write("Makefile", makefile);
    folder.write("include/area.h", "#define TIMES *\nextern \"C\"\n");
    folder.write("main.c",
                 "#include <stdio.h>\nint area(int, int);\nint main(void)\n{\n"
                 "    return printf(NAME \"%d\\n\", area(2, 3)) < 0;\n}\n");
    folder.write("part/area.c", "int area(int w, int h)\n{\n    return w * h;\n}\n");
    folder.write("part/names.cpp",
                 "#include <string>\nint count(const std::string& s)\n{\n"
                 "    int n = 0;\n    for (char c : s) {\n        n += c == 'a';\n    }\n"
                 "    return n;\n}\n");
    folder.write("part/loud.c",
                 "static int unused;\nint loud(unsigned n)\n{\n    return n < -1;\n}\n");
}

Finished make(const ScratchFolder& folder, const string& launcher) {
    return run_program({"make", "-j4", "CC=" + launcher + "cc", "CXX=" + launcher + "c++"},
                       in(folder.path()));
}

const string launcher_words = string(CLIST) + " --launcher ";

// A script in place of a compiler.
string script(const ScratchFolder& folder, const string& text) {
    const string name = folder.write("fake-cc", "#!/bin/sh\n" + text + "\n");
    chmod(name.c_str(), 0755);
    return name;
}

}  // namespace

TEST(Launcher, ABuildIsTheSameAsWithoutIt) {
    if (!has_command("make")) {
        GTEST_SKIP() << "no make here";
    }
    const ScratchFolder folder;
    write_project(folder);
    const Finished plain = make(folder, "");
    ASSERT_EQ(plain.status, 0) << plain.err;
    const tree expected(folder.path());
    EXPECT_TRUE(expected.files.contains("part/area.d"));
    run_program({"sh", "-c", "rm -f prog *.o */*.o *.d */*.d"}, in(folder.path()));

    const Finished built = make(folder, launcher_words);
    EXPECT_EQ(built.status, 0);
    EXPECT_NE(plain.err, "");
    EXPECT_EQ(sorted_lines(built.err), sorted_lines(plain.err));
    EXPECT_EQ(built.out, plain.out);
    const tree got(folder.path());
    EXPECT_EQ(got.files, expected.files);
    EXPECT_EQ(got.listings, (std::vector<string>{"main.o.lst", "part/area.o.lst", "part/loud.o.lst",
                                                 "part/names.o.lst"}));
    EXPECT_TRUE(shows(folder.read("part/area.o.lst"), "# area.c:3 |     return w * h;\n") ||
                shows(folder.read("part/area.o.lst"), "# part/area.c:3 |     return w * h;\n"))
        << folder.read("part/area.o.lst");
}

// A library of Debian's, in files of its own, with all that the compiler has to say of it.
TEST(Launcher, ARealLibraryIsTheSameAsWithoutIt) {
    if (!has_command("make") || !fs::exists("/usr/include/stb/stb_sprintf.h")) {
        GTEST_SKIP() << "no make or no stb here";
    }
    const ScratchFolder folder;
    string objects;
    for (const string part : {"sprintf", "c_lexer", "rect_pack", "divide"}) {
        string name = part;
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return std::toupper(c); });
        folder.write(part + ".c", "#include <assert.h>\n#define STB_" + name +
                                      "_IMPLEMENTATION\n#define STB_" + name +
                                      "_SELF_TEST\n#include \"stb_" + part + ".h\"\n");
        objects += " " + part + ".o";
    }
    folder.write("Makefile", "libstb.a:" + objects +
                                 "\n\t@ar rcD $@ $^\n%.o: %.c\n\t@$(CC) -O1 -g -Wall -Wextra "
                                 "-Wconversion -MMD -MP -I/usr/include/stb -c -o $@ $<\n");
    const Finished plain = make(folder, "");
    ASSERT_EQ(plain.status, 0) << plain.err;
    EXPECT_GT(plain.err.size(), 1000U);
    const tree expected(folder.path());
    run_program({"sh", "-c", "rm -f *.a *.o *.d"}, in(folder.path()));
    const Finished built = make(folder, launcher_words);
    EXPECT_EQ(built.status, 0);
    EXPECT_EQ(sorted_lines(built.err), sorted_lines(plain.err));
    EXPECT_EQ(built.out, plain.out);
    const tree got(folder.path());
    EXPECT_EQ(got.files, expected.files);
    EXPECT_EQ(got.listings.size(), 4U);
    EXPECT_TRUE(shows(folder.read("rect_pack.o.lst"), "\nstbrp_pack_rects:\n"));
}

TEST(Launcher, WhatMakesNoObjectPassesStraightThrough) {
    const ScratchFolder folder;
    folder.write("a.c", "int main(void) { return 0; }\n");
    folder.write("a.s", "\t.globl x\nx:\n");
    folder.write("bad.s", "\tbogus\n");
    folder.write("a.S", "#ifdef X\n\t.globl x\n#endif\n");
    folder.write("a.h", "int h;\n");
    ASSERT_EQ(run_program({"gcc", "-c", "a.c", "-o", "given.o"}, in(folder.path())).status, 0);
    const std::vector<std::vector<string>> all = {
        {"given.o", "-o", "prog"},
        {"-v", "given.o", "-o", "prog"},
        {"a.c", "-o", "prog"},
        {"a.c", "given.o", "-o", "prog"},
        {"-shared", "-fpic", "a.c", "-o", "a.so"},
        {"-E", "a.c"},
        {"-E", "a.c", "-o", "a.i"},
        {"-M", "a.c"},
        {"-MM", "a.c"},
        {"-fsyntax-only", "a.c"},
        {"-###", "-c", "a.c"},
        {"--version"},
        {"-v"},
        {"--help"},
        {"-dumpmachine"},
        {"-dumpversion"},
        {"-print-search-dirs"},
        {"-print-prog-name=ld"},
        {"-print-file-name=crt1.o"},
        {"-print-libgcc-file-name"},
        {"-c", "a.s", "-o", "s.o"},
        {"-c", "bad.s", "-o", "s.o"},
        {"-DX", "-c", "a.S", "-o", "s.o"},
        {"-c", "-x", "assembler", "a.s", "-o", "s.o"},
        {"-x", "c", "-c", "-", "-o", "in.o"},
        {"-x", "c", "-S", "-", "-o", "-"},
        {"-x", "c", "-E", "-"},
        {"-c", "a.c", "-o", "/dev/null"},
        {"a.h", "-o", "/dev/null"},
        {"none.o"},
        {"-lnone", "given.o"},
        {},
    };
    // The only bytes that differ from one run to the next: names of temporary files.
    const auto comparable = [](const string& text) {
        return std::regex_replace(text, std::regex("/tmp/[A-Za-z0-9-]+"), "TEMPORARY");
    };
    for (const string compiler : {"gcc", "clang"}) {
        if (!has_command(compiler)) {
            continue;
        }
        for (std::vector<string> words : all) {
            words.insert(words.begin(), compiler);
            const string told = testing::PrintToString(words);
            const auto clean = [&] {
                for (const string name : {"prog", "a.so", "a.i", "s.o", "in.o"}) {
                    fs::remove(folder / name);
                }
            };
            const Finished alone = run_program(words, in(folder.path(), "int y;\n"));
            const tree expected(folder.path());
            clean();
            const Finished run = run_program(launched(words), in(folder.path(), "int y;\n"));
            EXPECT_EQ(run.status, alone.status) << told;
            EXPECT_EQ(run.signal, alone.signal) << told;
            EXPECT_EQ(comparable(run.out), comparable(alone.out)) << told;
            EXPECT_EQ(comparable(run.err), comparable(alone.err)) << told;
            const tree got(folder.path());
            EXPECT_TRUE(got.files == expected.files) << told;
            EXPECT_EQ(got.listings, std::vector<string>{}) << told;
            clean();
        }
    }
}

#if CLIST_HAS_PAGE
TEST(Launcher, PagesStandBesideObjectsToo) {
    const ScratchFolder folder;
    folder.write("a.c", "int f(int n)\n{\n    return 3 * n;\n}\n");
    RunOptions options = in(folder.path());
    options.set["SOURCE_DATE_EPOCH"] = "1";  // the page tells when it was made
    const std::vector<string> words{"cc", "-O2", "-c", "a.c", "-o", "x.o"};
    ASSERT_EQ(run_program(words, options).status, 0);
    const string object = folder.read("x.o");
    fs::remove(folder / "x.o");
    const Finished run = run_program(launched(words, {"--html"}), options);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(folder.read("x.o"), object);
    EXPECT_FALSE(folder.has("x.o.lst"));
    const string page = folder.read("x.o.html");
    EXPECT_TRUE(page.starts_with("<!doctype html>")) << page.substr(0, 100);
    EXPECT_TRUE(page.ends_with("</html>\n")) << page.substr(page.size() - 100);
    std::vector<string> listed{CLIST, "--html"};
    listed.insert(listed.end(), words.begin(), words.end());
    const Finished alone = run_program(listed, options);
    EXPECT_EQ(alone.err, "");
    EXPECT_TRUE(alone.out == page);
}
#endif

TEST(Launcher, ListingsAreNamedAsTold) {
    const ScratchFolder folder;
    folder.write("a.c", "int a;\nint f(void) { return a; }\n");
    folder.write("b.c", "int g(void) { return 1; }\n");
    fs::create_directory(folder / "dir");
    const auto launch = [&](const std::vector<string>& options, const std::vector<string>& words) {
        const Finished run = run_program(launched(words, options), in(folder.path()));
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out + run.err, "");
    };
    launch({}, {"cc", "-c", "a.c", "-o", "dir/x.o"});
    EXPECT_TRUE(folder.has("dir/x.o.lst"));
    launch({"--suffix", ".text"}, {"cc", "-c", "a.c", "-odir/x.o"});
    EXPECT_TRUE(folder.has("dir/x.o.text"));
    launch({}, {"cc", "-c", "a.c", "b.c"});
    EXPECT_TRUE(folder.has("a.o.lst") && folder.has("b.o.lst"));
    launch({}, {"cc", "-S", "a.c"});
    EXPECT_TRUE(folder.has("a.s.lst"));
    EXPECT_FALSE(shows(folder.read("a.s"), ".loc"));
}

TEST(Launcher, AFailedCompileIsTheCompilers) {
    const ScratchFolder folder;
    folder.write("a.c", "int f(void) { return }\n");
    const std::vector<string> words{"cc", "-c", "a.c"};
    const Finished alone = run_program(words, in(folder.path()));
    const Finished run = run_program(launched(words), in(folder.path()));
    EXPECT_EQ(run.status, alone.status);
    EXPECT_EQ(run.err, alone.err);
    EXPECT_FALSE(folder.has("a.o.lst"));

    const Finished exits =
        run_program(launched({script(folder, "exit 42"), "-c", "a.c"}), in(folder.path()));
    EXPECT_EQ(exits.status, 42);
    EXPECT_EQ(exits.err, "");
    const Finished dies =
        run_program(launched({script(folder, "kill -SEGV $$"), "-c", "a.c"}), in(folder.path()));
    EXPECT_EQ(dies.signal, SIGSEGV);
    EXPECT_EQ(dies.err, "");
    const Finished none = run_program(launched({"/none/cc", "-c", "a.c"}), in(folder.path()));
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "clist: cannot run /none/cc: No such file or directory\n");
    const Finished passed = run_program(launched({"/none/cc", "--version"}), in(folder.path()));
    EXPECT_EQ(passed.status, 1);
    EXPECT_EQ(passed.err, "clist: cannot run /none/cc: No such file or directory\n");
}

TEST(Launcher, AListingTakesNoFileOfTheCompile) {
    const ScratchFolder folder;
    const string source = "int f(void) { return 1; }\n";
    folder.write("a.c", source);
    struct {
        std::vector<string> words;
        string suffix;
    } const cases[] = {
        {{"cc", "-c", "a.c", "-o", "a"}, ".c"},
        {{"cc", "-c", "a.c", "-o", "a", "-MD", "-MF", "a.d"}, ".d"},
    };
    for (const auto& [words, suffix] : cases) {
        ASSERT_EQ(run_program(words, in(folder.path())).status, 0);
        const tree expected(folder.path());
        const Finished run = run_program(launched(words, {"--suffix", suffix}), in(folder.path()));
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "clist: no listing of a.c: the compile itself uses a" + suffix + "\n");
        EXPECT_EQ(tree(folder.path()).files, expected.files);
        EXPECT_EQ(run_program(launched(words, {"--strict", "--suffix", suffix}), in(folder.path()))
                      .status,
                  1);
    }
    EXPECT_EQ(folder.read("a.c"), source);
}

TEST(Launcher, AListingThatFailsIsAWarningUnlessStrict) {
    const ScratchFolder folder;
    folder.write("a.c", "int f(void) { return 1; }\n");
    fs::create_directory(folder / "a.o.lst");
    // A compiler that cannot make assembly.
    const string compiler =
        script(folder,
               "case \" $* \" in *' -S '*) echo 'no -S here' >&2; exit 9;; esac\n"
               "unset TMPDIR; exec cc \"$@\"");
    RunOptions no_scratch = in(folder.path());
    no_scratch.set["TMPDIR"] = "/proc";
    struct {
        std::vector<string> words;
        RunOptions options;
        string error;
    } const cases[] = {
        {{"cc", "-c", "a.c"}, in(folder.path()), "clist: a.o.lst: Is a directory\n"},
        {{compiler, "-c", "a.c", "-o", "b.o"},
         in(folder.path()),
         "clist: no listing of a.c: " + compiler + " failed with status 9: no -S here\n"},
        {{compiler, "-c", "a.c", "-o", "b.o"},
         no_scratch,
         "clist: no listing of a.c: no scratch folder in /proc: "},
    };
    for (const auto& [words, options, error] : cases) {
        const Finished run = run_program(launched(words), options);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err.substr(0, error.size()), error);
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        const Finished strict = run_program(launched(words, {"--strict"}), options);
        EXPECT_EQ(strict.status, 1);
        EXPECT_EQ(strict.err, run.err);
    }
    EXPECT_FALSE(folder.has("b.o.lst"));
}

TEST(Launcher, OtherFilesOfTheCompileAreTheCompilers) {
    const ScratchFolder folder;
    folder.write("a.c", "int f(void) { return 1; }\n");
    const std::vector<string> words{"gcc",
                                    "-O2",
                                    "-save-temps=obj",
                                    "-fstack-usage",
                                    "--coverage",
                                    "-fdump-tree-optimized",
                                    "-gsplit-dwarf",
                                    "-Wp,-MD,x.d",
                                    "-flto",
                                    "-ffat-lto-objects",
                                    "-frandom-seed=1",
                                    "-c",
                                    "a.c",
                                    "-o",
                                    "x.o"};
    if (!has_command("gcc")) {
        GTEST_SKIP() << "no GCC here";
    }
    RunOptions options = in(folder.path());
    options.set["DEPENDENCIES_OUTPUT"] = "more.d";
    const Finished alone = run_program(words, options);
    ASSERT_EQ(alone.status, 0);
    tree expected(folder.path());
    // Each compile stamps its coverage data with a time or a random number.
    expected.files.erase("x.gcno");
    fs::remove(folder / "more.d");
    const Finished run = run_program(launched(words), options);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, alone.err);
    tree got(folder.path());
    got.files.erase("x.gcno");
    EXPECT_EQ(got.files.size(), expected.files.size());
    for (const auto& [name, contents] : expected.files) {
        EXPECT_EQ(got.files[name], contents) << name;
    }
    EXPECT_EQ(got.listings, std::vector<string>{"x.o.lst"});
}

TEST(Launcher, ASignalEndsTheCompilerToo) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "ready").c_str(), 0600), 0);
    const string compiler = script(folder,
                                   "trap 'echo ended > ended; trap - TERM; kill -TERM $$' TERM\n"
                                   "echo > ready\nwhile :; do sleep 0.05; done");
    Running running = start_program(launched({compiler, "-c", "a.c"}), in(folder.path()));
    read_file(folder / "ready");
    kill(running.pid, SIGTERM);
    const Finished run = finish_program(running);
    EXPECT_EQ(run.signal, SIGTERM);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(folder.has("ended"));
}

TEST(Launcher, WorksWithCMake) {
    const ScratchFolder folder;
    folder.write("CMakeLists.txt",
                 "cmake_minimum_required(VERSION 3.20)\nproject(sample C)\n"
                 "add_executable(sample a.c)\n");
    folder.write("a.c", "int main(void)\n{\n    return 0;\n}\n");
    const Finished configured = run_program({CMAKE, "-S", ".", "-B", "build", "-G", "Ninja",
                                             "-DCMAKE_C_COMPILER_LAUNCHER=" CLIST ";--launcher"},
                                            in(folder.path()));
    ASSERT_EQ(configured.status, 0) << configured.err;
    ASSERT_EQ(run_program({CMAKE, "--build", "build"}, in(folder.path())).status, 0);
    EXPECT_TRUE(shows(folder.read("build/CMakeFiles/sample.dir/a.c.o.lst"), "|     return 0;"));
}
