// The built clist on compiles and on assembly at hand: what reaches the compiler, messages,
// statuses, files, and what goes wrong.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/harness/program.h"

namespace fs = std::filesystem;
using std::string;

namespace {

Finished clist(std::vector<string> arguments, const RunOptions& options = {}) {
    arguments.insert(arguments.begin(), CLIST);
    return run_program(arguments, options);
}

RunOptions in(const ScratchFolder& folder, const string& input = {}) {
    RunOptions options;
    options.directory = folder.path();
    options.input = input;
    return options;
}

bool shows(const string& text, const string& part) {
    return text.find(part) != string::npos;
}

const string source = "int twice(int n)\n{\n    return 2 * n;\n}\n";
const string line_of_source = "# prog.c:3 |     return 2 * n;\n";

// A program that stands for a compiler: a shell script. It notes its words, one a line.
string fake_compiler(const ScratchFolder& folder, const string& script) {
    const string name = folder.write("fake-cc", "#!/bin/sh\nprintf '%s\\n' \"$@\" >> '" +
                                                    (folder / "words") + "'\n" + script + "\n");
    chmod(name.c_str(), 0755);
    return name;
}

std::size_t entries(const string& folder) {
    const fs::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

}  // namespace

TEST(Clist, ListsACompile) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    for (const std::vector<string>& words : {std::vector<string>{"cc", "-O2", "-c", "prog.c"},
                                             {"cc", "-O2", "-S", "prog.c"},
                                             {"cc", "-O2", "prog.c"},
                                             {"cc", "-c", "prog.c", "-O2", "-o", "none/prog.o"},
                                             {"cc", "-x", "c", "-c", "prog.c"},
                                             {"--", "cc", "-c", "prog.c"},
                                             {"prog.c"},
                                             {"prog.c", "-O1"}}) {
        const Finished run = clist(words, in(folder));
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
        EXPECT_TRUE(shows(run.out, "\ntwice:\n") || run.out.starts_with("twice:\n")) << run.out;
        EXPECT_TRUE(shows(run.out, line_of_source)) << run.out;
    }
    EXPECT_EQ(entries(folder.path()), 1U) << "a file was left behind";
}

TEST(Clist, ASourceAloneIsCompiledWithO2ByTheCompilerOfTheEnvironment) {
    const ScratchFolder folder;
    for (const auto& [name, variable] : {std::pair{"prog.c", "CC"}, {"prog.cpp", "CXX"}}) {
        RunOptions options = in(folder);
        options.set[variable] = fake_compiler(folder, "exit 3") + " -m32";
        folder.write("words", "");
        EXPECT_EQ(clist({name, "-DX"}, options).status, 3);
        const string expected = string("-m32\n-O2\n") + name + "\n-DX\n-S\n-g\n-o\n";
        EXPECT_TRUE(folder.read("words").starts_with(expected)) << folder.read("words");
    }
}

// Where it ran the compiler itself it knows the folder, whatever is recorded of it.
TEST(Clist, FindsTheSourcesOfItsOwnCompile) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    for (const string name : {".", "/elsewhere"}) {
        const string map =
            "-ffile-prefix-map=" + fs::canonical(folder.path()).string() + "=" + name;
        const Finished run = clist({"cc", "-O2", map, "-c", "prog.c"}, in(folder));
        EXPECT_EQ(run.err, "");
        EXPECT_TRUE(shows(run.out, line_of_source)) << run.out;
        ASSERT_EQ(run_program({"cc", "-O2", "-g", map, "-S", "prog.c"}, in(folder)).status, 0);
        EXPECT_TRUE(shows(clist({"prog.s"}, in(folder)).err, "found here, though"));
    }
}

TEST(Clist, SaysThatLinesFromStandardInputAreNotAtHand) {
    const ScratchFolder folder;
    const Finished run = clist({"cc", "-O2", "-c", "-x", "c", "-"}, in(folder, source));
    EXPECT_EQ(run.err, "clist: <stdin>: compiled from standard input, so its lines stay empty\n");
    EXPECT_TRUE(shows(run.out, "# <stdin>:3 | \n")) << run.out;
}

// The source changed since, told by its time or, where the assembly has one, by its checksum.
TEST(Clist, SaysThatASourceIsNotWhatWasCompiled) {
    const ScratchFolder folder;
    for (const auto& [compiler, message] :
         {std::pair{"gcc", "clist: prog.c: newer than the assembly\n"},
          {"clang", "clist: prog.c: not the text that was compiled\n"}}) {
        if (!has_command(compiler)) {
            continue;
        }
        folder.write("prog.c", source);
        ASSERT_EQ(run_program({compiler, "-O2", "-g", "-S", "prog.c"}, in(folder)).status, 0);
        EXPECT_EQ(clist({"prog.s"}, in(folder)).err, "");
        folder.write("prog.c", "\n" + source);
        fs::last_write_time(folder / "prog.c",
                            fs::last_write_time(folder / "prog.s") + std::chrono::seconds(1));
        const Finished run = clist({"prog.s"}, in(folder));
        EXPECT_EQ(run.err, message);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(clist({"--no-warnings", "prog.s"}, in(folder)).err, "");
    }
}

// It holds what the linker makes code of, and no code.
TEST(Clist, SaysThatAssemblyIsForTheLinkersOptimiser) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    for (const char* const compiler : {"gcc", "clang"}) {
        if (!has_command(compiler)) {
            continue;
        }
        const std::vector<string> words{compiler, "-flto", "-O2", "-g", "-S", "prog.c"};
        ASSERT_EQ(run_program(words, in(folder)).status, 0);
        const Finished run = clist({"prog.s"}, in(folder));
        EXPECT_TRUE(shows(run.err, "clist: prog.s: ") && shows(run.err, "-flto")) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST(Clist, NoSourceOfAListingIsReplacedByIt) {
    const ScratchFolder folder;
    const string header = "static inline int part(int n)\n{\n    return 77 * n;\n}\n";
    const string program = "#include \"part.h\"\nint whole(int n)\n{\n    return part(n);\n}\n";
    folder.write("part.h", header);
    folder.write("prog.c", program);
    ASSERT_EQ(run_program({"cc", "-O2", "-g", "-S", "prog.c"}, in(folder)).status, 0);
    fs::create_symlink("part.h", folder / "link");
    for (const std::vector<string>& words : std::vector<std::vector<string>>{
             {"-o", "prog.c", "prog.s"},
             {"-o", "./part.h", "prog.s"},
             {"-o", "link", "prog.s"},
             {"--list", "-o", "part.h", "prog.s"},
             {"-o", "part.h", "cc", "-O2", "-c", "prog.c"},
         }) {
        const Finished run = clist(words, in(folder));
        const string name = words[words[0] == "-o" ? 1 : 2];
        EXPECT_EQ(run.status, 2) << name;
        EXPECT_EQ(run.err, "clist: " + name + ": a source of this listing\n");
    }
    const Finished launched = clist(
        {"--launcher", "--suffix", ".h", "cc", "-O2", "-c", "prog.c", "-o", "part"}, in(folder));
    EXPECT_EQ(launched.status, 0);
    EXPECT_TRUE(shows(launched.err, "part.h: a source of this listing\n")) << launched.err;
    EXPECT_EQ(folder.read("part.h"), header);
    EXPECT_EQ(folder.read("prog.c"), program);
}

TEST(Clist, ListsAssemblyAtHand) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    ASSERT_EQ(run_program({"cc", "-O2", "-g", "-S", "prog.c"}, in(folder)).status, 0);
    const string assembly = folder.read("prog.s");
    const Finished named = clist({"prog.s"}, in(folder));
    EXPECT_EQ(named.status, 0) << named.err;
    EXPECT_TRUE(shows(named.out, line_of_source));
    EXPECT_EQ(clist({"-"}, in(folder, assembly)).out, named.out);
    EXPECT_EQ(clist({"/dev/stdin"}, in(folder, assembly)).out, named.out);
    EXPECT_EQ(clist({"cc", "-O2", "-c", "prog.c"}, in(folder)).out, named.out);
}

TEST(Clist, WritesAFileWhereToldTo) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    folder.write("old", "old");
    const string listing = clist({"cc", "-O2", "-c", "prog.c"}, in(folder)).out;
    for (const string name : {"old", "new"}) {
        const Finished run = clist({"-o", name, "cc", "-O2", "-c", "prog.c"}, in(folder));
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out + run.err, "");
        EXPECT_EQ(folder.read(name), listing);
    }
    ASSERT_EQ(run_program({"cc", "-O2", "-g", "-S", "prog.c"}, in(folder)).status, 0);
    fs::create_hard_link(folder / "prog.s", folder / "other.s");
    EXPECT_EQ(clist({"-o", "other.s", "prog.s"}, in(folder)).status, 0);
    EXPECT_EQ(folder.read("other.s"), listing);
}

// Neither the listing nor its rule takes the place of what the compile reads or writes itself.
TEST(Clist, FilesOfTheCompileAreNotWrittenOver) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    folder.write("other.c", "int other;\n");
    folder.write("words", "-c prog.c");
    folder.write("given.o", "object");
    folder.write("x.d", "rule");
    fs::create_symlink("prog.c", folder / "link");
    fs::create_hard_link(folder / "prog.c", folder / "hard");
    const std::vector<string> compile{"cc",      "-c",  "other.c", "prog.c",
                                      "given.o", "-MD", "-MF",     "x.d"};
    for (const string name : {"prog.c", "./prog.c", "other.c", "link", "hard", "given.o", "x.d"}) {
        for (std::vector<string> words :
             {std::vector<string>{"-o", name}, {"-o", "new", "--depfile", name}}) {
            words.insert(words.end(), compile.begin(), compile.end());
            const Finished run = clist(words, in(folder));
            EXPECT_EQ(run.status, 2) << name;
            EXPECT_EQ(run.err, "clist: " + name + ": the compile itself uses this file\n");
        }
    }
    for (const std::vector<string>& words :
         {std::vector<string>{"cc", "@words"}, {"cc", "-c", "-x", "c", "prog.c"}, {"prog.c"}}) {
        std::vector<string> all{"-o", "prog.c"};
        all.insert(all.end(), words.begin(), words.end());
        EXPECT_EQ(clist(all, in(folder)).status, 2) << words.back();
    }
    EXPECT_EQ(folder.read("prog.c"), source);
    EXPECT_EQ(folder.read("other.c"), "int other;\n");
    EXPECT_EQ(folder.read("given.o"), "object");
    EXPECT_EQ(folder.read("x.d"), "rule");
    EXPECT_FALSE(folder.has("new"));
    EXPECT_EQ(clist({"-o", "/dev/null", "cc", "-x", "c", "-c", "/dev/null"}, in(folder)).status, 0);
}

TEST(Clist, EveryWordReachesTheCompilerAsGiven) {
    const ScratchFolder folder;
    const string compiler = fake_compiler(folder, "exit 3");
    EXPECT_EQ(clist({compiler, "-I", "a b", "-DX=\"$y\"", "-MD", "-MF", "x y.d", "", "*.h", "@none",
                     "-c", "p q.c", "-O2", "-g"},
                    in(folder))
                  .status,
              3);
    const string words = folder.read("words");
    EXPECT_TRUE(
        words.starts_with("-I\na b\n-DX=\"$y\"\n-MD\n-MF\nx y.d\n\n*.h\n@none\n-S\np q.c\n"
                          "-O2\n-g\n-MQ\np q.o\n-o\n"))
        << words;
}

TEST(Clist, DependencyFilesAreWrittenAsByTheCompile) {
    const ScratchFolder folder;
    folder.write("prog.c", "#include \"prog.h\"\n" + source);
    folder.write("prog.h", "\n");
    const std::vector<string> compile{"cc", "-MMD", "-MP", "-c", "prog.c", "-o", "x.o"};
    ASSERT_EQ(run_program(compile, in(folder)).status, 0);
    const string expected = folder.read("x.d");
    fs::remove(folder / "x.d");
    fs::remove(folder / "x.o");
    EXPECT_EQ(clist(compile, in(folder)).status, 0);
    EXPECT_EQ(folder.read("x.d"), expected);
    EXPECT_FALSE(folder.has("x.o"));
}

TEST(Clist, SeveralSourcesAreOneListing) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    folder.write("other.cpp", "int other(int n)\n{\n    return 3 * n;\n}\n");
    const Finished run = clist({"c++", "-O2", "prog.c", "other.cpp", "-o", "prog"}, in(folder));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(shows(run.out, "# prog.c:3 |     return 2 * n;\n")) << run.out;
    EXPECT_TRUE(shows(run.out, "# other.cpp:3 |     return 3 * n;\n")) << run.out;
    EXPECT_FALSE(folder.has("prog"));
}

TEST(Clist, ResponseFilesAndStandardInputAreSources) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    folder.write("words", "-O2 -o 'x y.o' prog.c");
    EXPECT_TRUE(shows(clist({"cc", "-c", "@words"}, in(folder)).out, line_of_source));
    const Finished run = clist({"cc", "-O2", "-x", "c", "-c", "-"}, in(folder, source));
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(shows(run.out, "twice:\n")) << run.out;
}

// Warnings, notes, errors, remarks and what -H tells, of one source and of several: the same
// bytes as of the compiler alone, and nothing among them.
TEST(Clist, TheCompilersMessagesPassThrough) {
    const ScratchFolder folder;
    folder.write("prog.c", "#warning \"loud\"\n" + source);
    folder.write("part.h", "int part;\n");
    folder.write("notes.c",
                 "#include \"part.h\"\nint f(unsigned n) { return n < 0; }\n"
                 "int g(int n) { int h; return n == 1 & 2; }\n");
    folder.write("bad.c", "int f(int n)\n{\n    return n +;\n}\nint f;\n");
    folder.write("bad.cpp",
                 "template <class T> int f(T t) { return t.none; }\nint g() { return f(1); }\n"
                 "int f(int, int), f(char*);\nint h() { return f(1, 2, 3); }\n");
    folder.write("words", "-Wall -Wextra notes.c");
    struct {
        std::vector<string> words;
        bool is_failure;
    } const cases[] = {
        {{"-c", "prog.c", "-o", "x.o"}, false},
        {{"-Wall", "-Wextra", "-fdiagnostics-color=always", "-c", "notes.c"}, false},
        {{"-Wall", "-H", "-O2", "-c", "notes.c"}, false},
        {{"-c", "@words"}, false},
        {{"-Wno-such", "-Wall", "-c", "prog.c", "notes.c"}, false},
        {{"-Werror", "-c", "prog.c"}, true},
        {{"-c", "bad.c"}, true},
        {{"-c", "none.c"}, true},
        {{"-O2", "-c", "prog.c", "bad.c", "notes.c"}, true},
        {{"-fmax-errors=1", "-c", "bad.c"}, true},
        {{"-c", "-fno-such-option", "prog.c"}, true},
        {{"-Wall", "-c", "notes.c", "-lm", "-Wl,-x"}, false},
        {{"-Wall", "-S", "notes.c", "-Wa,--noexecstack"}, false},
        {{"-c", "bad.cpp"}, true},
    };
    for (const string compiler : {"gcc", "clang"}) {
        if (!has_command(compiler)) {
            continue;
        }
        for (const auto& [words, is_failure] : cases) {
            std::vector<string> command = words;
            command.insert(command.begin(), compiler);
            const Finished alone = run_program(command, in(folder));
            const Finished run = clist(command, in(folder));
            const string told = testing::PrintToString(command);
            EXPECT_EQ(run.status, alone.status) << told;
            EXPECT_EQ(alone.status != 0, is_failure) << told;
            EXPECT_EQ(run.err, alone.err) << told;
            EXPECT_NE(run.err, "") << told;
            EXPECT_EQ(alone.out, "");
            EXPECT_EQ(run.out.empty(), is_failure) << told;
        }
    }
}

TEST(Clist, TheCompilersFailureIsItsOwn) {
    const ScratchFolder folder;
    folder.write("prog.c", "int f(void) { return }\n");
    const Finished alone = run_program({"cc", "-c", "prog.c"}, in(folder));
    const Finished run = clist({"-o", "x", "cc", "-c", "prog.c"}, in(folder));
    EXPECT_EQ(run.status, alone.status);
    EXPECT_EQ(run.err, alone.err);
    EXPECT_EQ(run.out, "");
    EXPECT_FALSE(folder.has("x"));
    struct {
        string script;
        int status;
        string error;
    } const cases[] = {
        {"exit 77", 77, ""},
        {"echo no >&2; exit 5", 5, "no\n"},
        {"kill -SEGV $$", 128 + 11, "clist: CC was ended by signal 11 (Segmentation fault)\n"},
        {"kill -HUP $$", 128 + 1, "clist: CC was ended by signal 1 (Hangup)\n"},
        {"exec >&- 2>&- <&-; exit 1", 1, ""},
        {"echo out; exit 0", 1,
         "out\nclist: CC left no assembly of prog.c: No such file or directory\n"},
    };
    for (const auto& [script, status, error] : cases) {
        const string compiler = fake_compiler(folder, script);
        const Finished failed = clist({compiler, "-c", "prog.c"}, in(folder));
        string expected = error;
        if (const std::size_t at = expected.find("CC"); at != string::npos) {
            expected.replace(at, 2, compiler);
        }
        EXPECT_EQ(failed.status, status) << script;
        EXPECT_EQ(failed.err, expected);
        EXPECT_EQ(failed.out, "") << script;
    }
    const Finished none = clist({"/none/cc", "-c", "prog.c"}, in(folder));
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "clist: cannot run /none/cc: No such file or directory\n");
}

TEST(Clist, LinkTimeOptimisationIsLeftOutWithAWord) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    const Finished run = clist({"cc", "-O2", "-flto", "-c", "prog.c"}, in(folder));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "clist: -flto is left out: with it, code is made only when linking\n");
    EXPECT_EQ(run.out, clist({"cc", "-O2", "-c", "prog.c"}, in(folder)).out);
}

TEST(Clist, AnIntelListingIsCompiledSo) {
    const ScratchFolder folder;
    const string compiler = fake_compiler(folder, "exit 3");
    clist({"--intel", compiler, "-c", "prog.c"}, in(folder));
    EXPECT_TRUE(folder.read("words").starts_with("-S\nprog.c\n-g\n-masm=intel\n-o\n"));
}

TEST(Clist, IntelsSyntaxIsForX86) {
    const ScratchFolder folder;
    for (const string target : {"aarch64-linux-gnu", "arm-none-eabi", "riscv64-linux-gnu"}) {
        for (const std::vector<string>& words :
             {std::vector<string>{target + "-gcc"}, {"clang", "--target=" + target}}) {
            std::vector<string> all{"--intel"};
            all.insert(all.end(), words.begin(), words.end());
            all.insert(all.end(), {"-c", "prog.c"});
            const Finished run = clist(all, in(folder));
            EXPECT_EQ(run.status, 2);
            EXPECT_EQ(run.err, "clist: --intel is for x86, not for " + target + "\n");
        }
    }
    const string compiler = fake_compiler(folder, "exit 3");
    for (const string target : {"x86_64-w64-mingw32", "i686-linux-gnu", "i386-pc-none"}) {
        EXPECT_EQ(
            clist({"--intel", compiler, "--target=" + target, "-c", "prog.c"}, in(folder)).status,
            3);
    }
}

TEST(Clist, WhatMakesNoCodeIsWrongUsage) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    for (const std::vector<string>& words : {std::vector<string>{"cc", "-E", "prog.c"},
                                             {"cc", "--version", "prog.c"},
                                             {"cc", "-M", "prog.c"}}) {
        const Finished run = clist(words, in(folder));
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "clist: nothing to list: what is asked of the compiler makes no code\n");
    }
    for (const std::vector<string>& words :
         {std::vector<string>{"cc"}, {"cc", "--version"}, {"cc", "-c", "-o", "x.o"}}) {
        const Finished run = clist(words, in(folder));
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.err,
                  "clist: nothing to list: there is no C or C++ source to compile; for a whole "
                  "build there are --launcher and -p\n");
    }
}

TEST(Clist, WhatIsNoSourceIsNamed) {
    const ScratchFolder folder;
    folder.write("data.txt", "text");
    folder.write("given.o", "object");
    folder.write("a.S", "\tnop\n");
    folder.write("words", "-c data.txt");
    fs::create_directory(folder / "folder");
    const string no_program =
        " is no program to run, no C or C++ source and no assembly (.s, .S, .asm)\n";
    const string folder_text = " is a folder: -p lists the project that was built in one\n";
    const string no_file = ": No such file or directory\n";
    struct {
        std::vector<string> words;
        int status;
        string error;
    } const cases[] = {
        {{"given.o"}, 2, "given.o" + no_program},
        {{"data.txt", "-O2"}, 2, "data.txt" + no_program},
        {{"folder"}, 2, "folder" + folder_text},
        {{"./folder"}, 2, "./folder" + folder_text},
        {{"none.o"}, 1, "none.o" + no_file},
        {{"--all", "none"}, 1, "none" + no_file},
        {{"cc", "none.o"}, 1, "none.o" + no_file},
        {{"cc", "none"}, 1, "none" + no_file},
        {{"cc", "-c", "none.s"}, 1, "none.s" + no_file},
        {{"cc", "@none.rsp"}, 1, "none.rsp" + no_file},
        {{"cc", "-c", "@none"}, 1, "none" + no_file},
        {{"cc", "given.o"}, 2, "nothing to list: given.o is no C or C++ source\n"},
        {{"cc", "-c", "data.txt"}, 2, "nothing to list: data.txt is no C or C++ source\n"},
        {{"cc", "data.txt"}, 2, "nothing to list: data.txt is no C or C++ source\n"},
        {{"cc", "@words"}, 2, "nothing to list: data.txt is no C or C++ source\n"},
        {{"cc", "-c", "a.S"}, 2, "nothing to list: a.S is no C or C++ source\n"},
        {{"cc", "-c", "given.o", "none.o"}, 2, "nothing to list: given.o is no C or C++ source\n"},
        {{"env", "cc", "-c", "a.S"}, 2, "nothing to list: a.S is no C or C++ source\n"},
        {{"cc", "-c", "-"}, 2, "nothing to list: standard input needs -x c or -x c++\n"},
        {{"cc", "-"}, 2, "nothing to list: standard input needs -x c or -x c++\n"},
    };
    for (const auto& [words, status, error] : cases) {
        const Finished run = clist(words, in(folder));
        EXPECT_EQ(run.status, status) << error;
        EXPECT_EQ(run.err, "clist: " + error);
        EXPECT_EQ(run.out, "");
    }
}

TEST(Clist, WrongUsageIsToldWithAHint) {
    const Finished run = clist({"--nonsense"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "clist: unknown option '--nonsense'\nTry 'clist --help'.\n");
    EXPECT_EQ(clist({}).status, 2);
    EXPECT_EQ(clist({}).err,
              "clist: nothing to list: name a compiler with its arguments, a source or "
              "assembly\nTry 'clist --help'.\n");
}

TEST(Clist, AnOptionBehindTheCompilerIsPointedOutWhereItFails) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    for (const string option : {"--list", "--function=twice", "--mca", "--html"}) {
        for (const std::vector<string>& words :
             {std::vector<string>{"prog.c"}, {"cc", "-c", "prog.c"}}) {
            std::vector<string> all = words;
            all.push_back(option);
            const Finished run = clist(all, in(folder));
            EXPECT_EQ(run.status, 1);
            EXPECT_TRUE(run.err.ends_with("\nclist: " + option +
                                          " was given to the compiler: clist's own options "
                                          "stand before its name\n"))
                << run.err;
        }
    }
    folder.write("bad.c", "int f(void) { return }\n");
    EXPECT_FALSE(shows(clist({"bad.c"}, in(folder)).err, "clist: "));
}

TEST(Clist, HelpAndVersionGoToStandardOutput) {
    const Finished help = clist({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.starts_with("Usage: clist ")) << help.out;
    EXPECT_EQ(help.err, "");
    const Finished version = clist({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "clist " PROJECT_VERSION "\n");
    RunOptions full;
    full.output_to = "/dev/full";
    for (const string option : {"--help", "--version"}) {
        const Finished lost = clist({option}, full);
        EXPECT_EQ(lost.status, 1);
        EXPECT_EQ(lost.err, "clist: standard output: No space left on device\n");
    }
}

TEST(Clist, UnreadableInputIsReported) {
    const ScratchFolder folder;
    const Finished missing = clist({"none.s"}, in(folder));
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "clist: none.s: No such file or directory\n");
    fs::create_directory(folder / "folder.s");
    const Finished directory = clist({"folder.s"}, in(folder));
    EXPECT_EQ(directory.status, 1);
    EXPECT_EQ(directory.err, "clist: folder.s: Is a directory\n");
}

TEST(Clist, OutputThatCannotBeWrittenIsReportedAndNothingOldIsLost) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    const std::vector<string> compile{"cc", "-c", "prog.c"};
    RunOptions full = in(folder);
    full.output_to = "/dev/full";
    const Finished standard = clist(compile, full);
    EXPECT_EQ(standard.status, 1);
    EXPECT_EQ(standard.err, "clist: standard output: No space left on device\n");
    const Finished device = clist({"-o", "/dev/full", "cc", "-c", "prog.c"}, in(folder));
    EXPECT_EQ(device.status, 1);
    EXPECT_EQ(device.err, "clist: /dev/full: No space left on device\n");
    const Finished none = clist({"-o", "none/x", "cc", "-c", "prog.c"}, in(folder));
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "clist: none/x: No such file or directory\n");
    folder.write("old", "old");
    folder.write("bad.c", "int f(void) { return }\n");
    EXPECT_EQ(clist({"-o", "old", "cc", "-c", "bad.c"}, in(folder)).status, 1);
    EXPECT_EQ(folder.read("old"), "old");
}

TEST(Clist, NeedsAFolderForTheAssembly) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    RunOptions options = in(folder);
    options.set["TMPDIR"] = "/proc";
    const Finished run = clist({"cc", "-c", "prog.c"}, options);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.starts_with("clist: no scratch folder in /proc: ")) << run.err;
}

TEST(Clist, ASignalEndsTheCompilerAndLeavesNothing) {
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGALRM, SIGUSR1, SIGUSR2, SIGPIPE,
                             SIGXCPU, SIGVTALRM, SIGPROF}) {
        const ScratchFolder folder;
        fs::create_directory(folder / "scratch");
        ASSERT_EQ(mkfifo((folder / "ready").c_str(), 0600), 0);
        // It tells that it runs, and where its end would be noted.
        const string compiler =
            fake_compiler(folder, "trap 'echo ended > ended; exit 1' " + std::to_string(number) +
                                      "\necho > ready\nwhile :; do sleep 0.05; done");
        RunOptions options = in(folder);
        options.set["TMPDIR"] = folder / "scratch";
        Running running = start_program({CLIST, compiler, "-c", "prog.c"}, options);
        read_file(folder / "ready");
        EXPECT_EQ(entries(folder / "scratch"), 1U);
        kill(running.pid, number);
        const Finished run = finish_program(running);
        const bool is_told =
            number == SIGHUP || number == SIGINT || number == SIGTERM || number == SIGXCPU;
        EXPECT_EQ(run.status, is_told ? 1 : -1) << number;
        EXPECT_EQ(run.signal, is_told ? 0 : number);
        EXPECT_EQ(run.err.starts_with("clist: "), is_told) << run.err;
        if (number == SIGTERM) {
            EXPECT_EQ(run.err, "clist: stopped by a request to terminate\n");
        }
        EXPECT_TRUE(folder.has("ended")) << number;
        EXPECT_EQ(entries(folder / "scratch"), 0U) << number;
    }
}

TEST(Clist, TellsMakeWhatAListingDependsOn) {
    const ScratchFolder folder;
    folder.write("sub/prog.c", "#include \"../a b.h\"\n" + source);
    folder.write("a b.h", "\n");
    RunOptions options = in(folder);
    options.directory = folder / "sub";
    const Finished run = clist({"--depfile", "d", "-o", "prog.lst", "cc", "-Wall", "-MD", "-MF",
                                "real.d", "-c", "prog.c", "-o", "prog.o"},
                               options);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    const string rule = folder.read("sub/d");
    EXPECT_TRUE(rule.starts_with("prog.lst: \\\n  " + (folder / "sub/prog.c"))) << rule;
    EXPECT_TRUE(shows(rule, "\\\n  " + folder.path() + "/a\\ b.h")) << rule;
    EXPECT_FALSE(folder.has("sub/real.d"));
    EXPECT_FALSE(folder.has("sub/prog.o"));
}

TEST(Clist, NeedsNoFolderToRunIn) {
    const ScratchFolder folder;
    folder.write("prog.c", source);
    fs::create_directory(folder / "gone");
    RunOptions options = in(folder);
    options.directory = folder / "gone";
    options.set["C_INCLUDE_PATH"] = "include:/include";
    options.before_start = [&] { fs::remove(folder / "gone"); };
    const Finished run = clist({"cc", "-O2", "-c", folder / "prog.c"}, options);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(shows(run.out, line_of_source)) << run.out;
}

// Without --depfile warnings pass; with it they are the real compile's to give.
TEST(Clist, AStepOfABuildGivesErrorsButNoWarnings) {
    const ScratchFolder folder;
    folder.write("warns.c", "#warning \"loud\"\n" + source);
    folder.write("fails.c", "int f(void) { return }\n");
    const Finished warns =
        clist({"--depfile", "d", "-o", "x", "cc", "-Werror", "-c", "warns.c"}, in(folder));
    EXPECT_EQ(warns.status, 0);
    EXPECT_EQ(warns.err, "");
    const Finished fails = clist({"--depfile", "d", "-o", "y", "cc", "-c", "fails.c"}, in(folder));
    EXPECT_EQ(fails.status, 1);
    EXPECT_TRUE(shows(fails.err, "fails.c:1:")) << fails.err;
    EXPECT_FALSE(folder.has("y"));
}
