// The command that makes assembly of a compile, and running it with the compiler at hand.
#include "clist/compile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/clist/words.h"
#include "tests/harness/program.h"

using namespace clist;
using std::string;

namespace {

string assembly_line(const std::vector<string>& words, const compile_settings& settings = {},
                     std::size_t source = 0, const string& directory = {}) {
    const arguments given = read_arguments(words, directory);
    return joined(assembly_command(given, given.sources.at(source), settings, "OUT"));
}

// The same for a compile beside the real one.
string extra_line(const string& line) {
    compile_settings settings;
    settings.is_extra = true;
    return assembly_line(words_in(line), settings);
}

}  // namespace

TEST(AssemblyCommand, IsTheCompileAsGivenButToAssemblyWithLines) {
    const std::pair<string, string> cases[] = {
        {"gcc -O2 -c prog.c", "gcc -O2 -S prog.c -g -o OUT"},
        {"gcc -S prog.c -O2", "gcc -S prog.c -O2 -g -o OUT"},
        {"gcc prog.c", "gcc prog.c -S -g -o OUT"},
        {"gcc -O2 -c prog.c -o dir/prog.o", "gcc -O2 -S prog.c -g -o OUT"},
        {"gcc -g1 -c prog.c", "gcc -g1 -S prog.c -o OUT"},
        {"gcc -g0 -c prog.c", "gcc -g0 -S prog.c -g -o OUT"},
        {"gcc -gsplit-dwarf -c prog.c", "gcc -S prog.c -g -o OUT"},
        {"gcc -x c -c prog -Idir", "gcc -x c -S prog -Idir -g -o OUT"},
        {"gcc a.o prog.c -lm libx.a -o prog", "gcc prog.c -lm -S -g -o OUT"},
        {"gcc -flto=auto -fwhole-program-vtables -c prog.c", "gcc -S prog.c -g -o OUT"},
        {"ccache gcc -c prog.c", "ccache gcc -S prog.c -g -o OUT"},
        {"clang -c prog.c", "clang -S prog.c -g -o OUT"},
        {"clang -c -- prog.c", "clang -S -g -o OUT -- prog.c"},
        {"clang prog.c -lm", "clang prog.c -lm -S -g -Wno-unused-command-line-argument -o OUT"},
        {"gcc -MD -MF x.d -MT y -c prog.c", "gcc -MD -MF x.d -MT y -S prog.c -g -o OUT"},
        {"gcc -Wp,-MD,x.d -save-temps -c prog.c",
         "gcc -Wp,-MD,x.d -save-temps -S prog.c -g -o OUT"},
    };
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(assembly_line(words_in(line)), expected) << line;
    }
    EXPECT_EQ(assembly_line(words_in("gcc -c prog.c"), {.intel = true}),
              "gcc -S prog.c -g -masm=intel -o OUT");
}

TEST(AssemblyCommand, DependencyFilesKeepTheirNames) {
    const std::pair<string, string> cases[] = {
        {"gcc -MD -c dir/prog.c", "gcc -MD -S dir/prog.c -g -MF prog.d -MQ prog.o -o OUT"},
        {"gcc -MMD -c prog.c -o d/x.y.o", "gcc -MMD -S prog.c -g -MF d/x.y.d -MQ d/x.y.o -o OUT"},
        {"gcc -MD -MF a.d -c prog.c -o x.o", "gcc -MD -MF a.d -S prog.c -g -MQ x.o -o OUT"},
        {"gcc -MD -MT t -c prog.c -o x.o", "gcc -MD -MT t -S prog.c -g -MF x.d -o OUT"},
    };
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(assembly_line(words_in(line)), expected) << line;
    }
}

TEST(AssemblyCommand, EachOfSeveralSourcesHasOne) {
    const std::vector<string> words = words_in("gcc -c a.c -x c++ b -x none c.s d.c");
    EXPECT_EQ(assembly_line(words, {}, 0), "gcc -S a.c -x c++ -x none -g -o OUT");
    EXPECT_EQ(assembly_line(words, {}, 1), "gcc -S -x c++ b -x none -g -o OUT");
    EXPECT_EQ(assembly_line(words, {}, 2), "gcc -S -x c++ -x none d.c -g -o OUT");
}

TEST(AssemblyCommand, WordsStayWhole) {
    const arguments given =
        read_arguments({"gcc", "-I", "a b", "-DX=\"c d\"", "-c", "e f.c", "", "-I", ""});
    EXPECT_EQ(assembly_command(given, given.sources.at(0), {}, "OUT"),
              (std::vector<string>{"gcc", "-I", "a b", "-DX=\"c d\"", "-S", "e f.c", "", "-I", "",
                                   "-g", "-o", "OUT"}));
}

TEST(AssemblyCommand, ResponseFilesAreHandedOnUnlessTheyMustChange) {
    const ScratchFolder folder;
    folder.write("plain", "-O2 '-DX=a b'");
    folder.write("output", "-O2 -o x.o");
    folder.write("source", "prog.c -DY");
    folder.write("folders", "dir -DZ");
    const auto line = [&](const string& text) {
        return assembly_line(words_in(text), {}, 0, folder.path());
    };
    EXPECT_EQ(line("gcc @plain -c prog.c @none"), "gcc @plain -S prog.c @none -g -o OUT");
    EXPECT_EQ(line("gcc @plain @output -c prog.c"), "gcc @plain -O2 -S prog.c -g -o OUT");
    EXPECT_EQ(line("gcc -c @source @plain"), "gcc -S @source @plain -g -o OUT");
    EXPECT_EQ(line("gcc -c other.c @source"), "gcc -S other.c -DY -g -o OUT");
    EXPECT_EQ(line("gcc -c prog.c -I @folders"), "gcc -S prog.c -I dir -DZ -g -o OUT");
}

TEST(AssemblyCommand, ACompileBesideTheRealOneLeavesItsFilesAlone) {
    const std::pair<string, string> cases[] = {
        {"gcc -MD -MF x.d -MT y -MP -c prog.c", "gcc -S prog.c -g -w -o OUT"},
        {"gcc -MMD -MFx.d -MQ y -MG -c prog.c", "gcc -S prog.c -g -w -o OUT"},
        {"gcc -Wp,-MMD,x.d -c prog.c", "gcc -S prog.c -g -w -o OUT"},
        {"gcc -Wp,-DX,-MD,x.d,-MP,-DY -c prog.c", "gcc -Wp,-DX,-DY -S prog.c -g -w -o OUT"},
        {"gcc -save-temps=obj -fdump-tree-all -fopt-info-vec=x -c prog.c",
         "gcc -S prog.c -g -w -o OUT"},
        {"gcc -aux-info x -dumpdir d/ -fdiagnostics-format=json-file -c prog.c",
         "gcc -S prog.c -g -w -o OUT"},
        {"clang -MJ x.json -c prog.c --serialize-diagnostics x.dia",
         "clang -S prog.c -g -w -o OUT"},
        {"gcc -Wall -Werror -O2 -c prog.c -o x.o", "gcc -Wall -Werror -O2 -S prog.c -g -w -o OUT"},
    };
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(extra_line(line), expected) << line;
    }
}

TEST(OutputName, IsThatOfTheCompile) {
    const std::pair<string, string> cases[] = {
        {"gcc -c a.c -o dir/x.o", "dir/x.o"},
        {"gcc -c dir/a.c", "a.o"},
        {"gcc -S dir/a.b.cc", "a.b.s"},
        {"gcc -x c -c name", "name.o"},
    };
    for (const auto& [line, expected] : cases) {
        const arguments given = read_arguments(words_in(line));
        EXPECT_EQ(output_of(given, given.sources.at(0)), expected) << line;
    }
}

TEST(SystemFolders, AreToldByOptionsAndByTheEnvironment) {
    const char* const variables[] = {"C_INCLUDE_PATH", "CPLUS_INCLUDE_PATH", "OBJC_INCLUDE_PATH",
                                     "OBJCPLUS_INCLUDE_PATH"};
    for (const char* const name : variables) {
        setenv(name, (string("/") + name + ":rel:").c_str(), 1);
    }
    setenv("CPATH", "/cpath", 1);
    const string here = string(" ").append(std::filesystem::current_path());
    const string c = "/C_INCLUDE_PATH rel ." + here;
    const string cpp = "/CPLUS_INCLUDE_PATH rel ." + here;
    struct {
        string line;
        string folders;
    } const cases[] = {
        {"gcc -c /x.c", c},
        {"gcc -isystem a -I b -isystemc -idirafter d -iquote e /x.c", "a c d " + c},
        {"gcc --sysroot=/r -isysroot /q -c /x.c", "/r /q " + c},
        {"clang --sysroot /r -cxx-isystem a -stdlib++-isystem b -iframework c /x.c",
         "/r a b c " + c},
        {"g++ -c /x.cc", cpp},
        {"gcc -x c++ -c /x.c", cpp},
        {"gcc -c /x.m", "/OBJC_INCLUDE_PATH rel ." + here},
        {"gcc -c /x.mm", "/OBJCPLUS_INCLUDE_PATH rel ." + here},
        {"gcc -c /x.i", ""},
        // The source's own folder, and those around it.
        {"gcc -isystem /a/b -isystem /a/b/ -isystem /a -isystem /a/c -isystem / -c /a/b/x.cc",
         "/a/c " + cpp},
        {"gcc -isystem /a/b/x -isystem .. -isystem x -c x.c", "/a/b/x x /C_INCLUDE_PATH rel"},
        {"gcc -x c++ -", "/CPLUS_INCLUDE_PATH rel"},
        {"gcc -isystem /proc/self/root -c /x.i", "/proc/self/root"},
    };
    for (const auto& [line, folders] : cases) {
        const arguments command = read_arguments(words_in(line));
        EXPECT_EQ(joined(system_folders(command, command.sources.at(0))), folders) << line;
    }
    setenv("C_INCLUDE_PATH", "", 1);
    EXPECT_EQ(system_folders(read_arguments({"gcc", "/x.c"}), 1), std::vector<string>{});
    for (const char* const name : variables) {
        unsetenv(name);
    }
    unsetenv("CPATH");
}

TEST(DependencyRule, IsReadAsCompilersWriteIt) {
    using files = std::vector<string>;
    const std::pair<string, files> cases[] = {
        {"", {}},
        {"x.o:\n", {}},
        {"x.o: a.c b.h \\\n  c.h\n\nb.h:\n", {"a.c", "b.h", "c.h"}},
        {"x.o: a\\ b.c c\\#.h d$$e \\\\f g\\\\\\ h", {"a b.c", "c#.h", "d$e", "\\\\f", "g\\ h"}},
        {"a\\ b.o x: c:/d", {"c:/d"}},
        {"x.o: a.c\r\n", {"a.c"}},
        {"x.o: a\\", {"a\\"}},
        {"x", {}},
    };
    for (const auto& [rule, expected] : cases) {
        EXPECT_EQ(read_dependencies(rule), expected) << rule;
    }
}

TEST(DependencyRule, ReadsBackAsItWasWritten) {
    const std::vector<string> files{"/a/b.c", "/a b/c#d$e.h", "/x\\y", "/x\\ y"};
    EXPECT_EQ(read_dependencies(dependency_rule("/t t", files)), files);
    EXPECT_EQ(dependency_rule("t", {"a b", "line\nbreak", "end\\", "c"}),
              "t: \\\n  a\\ b \\\n  c\n");
}

TEST(Compile, GivesTheAssemblyOfASource) {
    const ScratchFolder folder;
    const string source = folder.write("a b.c", "int twice(int n) { return n * TWO; }\n");
    const arguments given = read_arguments({"cc", "-O2", "-DTWO=2", "-c", source, "-o", "/none/x"});
    const compiled result = compile(given, given.sources.at(0), {});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    ASSERT_TRUE(result.assembly);
    EXPECT_NE(result.assembly->text().find("twice:"), string::npos);
    EXPECT_NE(result.assembly->text().find(".loc"), string::npos);
}

TEST(Compile, AnExtraOneTellsWhatItReadAndKeepsItsMessages) {
    const ScratchFolder folder;
    folder.write("a.h", "#define TWO 2\n");
    const string source =
        folder.write("a.c", "#include \"a.h\"\n#warning \"loud\"\nint two(void) { return TWO; }\n");
    const arguments given = read_arguments({"cc", "-c", source});
    compile_settings settings;
    settings.is_extra = true;
    settings.tells_dependencies = true;
    const compiled result = compile(given, given.sources.at(0), settings);
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(std::count(result.dependencies.begin(), result.dependencies.end(), source));
    EXPECT_TRUE(std::count(result.dependencies.begin(), result.dependencies.end(), folder / "a.h"));
}

TEST(Compile, AFailureKeepsTheCompilersStatus) {
    const ScratchFolder folder;
    const string source = folder.write("a.c", "int f(void) { return }\n");
    const arguments given = read_arguments({"cc", "-c", source});
    compile_settings settings;
    settings.is_extra = true;
    const compiled result = compile(given, given.sources.at(0), settings);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.error, "cc failed with status 1");
    EXPECT_NE(result.messages.find("error"), string::npos);
}

TEST(Compile, ACompilerThatDiesOrIsNotThereOrLeavesNothingIsReported) {
    const ScratchFolder folder;
    const string source = folder.write("a.c", "");
    struct {
        string script;
        int status;
        string error;
    } const cases[] = {
        {"kill -SEGV $$", 128 + 11, " was ended by signal 11 (Segmentation fault)"},
        {"kill -HUP $$", 128 + 1, " was ended by signal 1 (Hangup)"},
        {"exec >&- 2>&-; exit 7", 7, ""},
        {"exit 0", 1, " left no assembly of " + source + ": No such file or directory"},
    };
    for (const auto& [script, status, error] : cases) {
        const string compiler = folder.write("compiler", "#!/bin/sh\n" + script + "\n");
        ASSERT_EQ(run_program({"chmod", "+x", compiler}).status, 0);
        const arguments given = read_arguments({compiler, "-c", source});
        const compiled result = compile(given, given.sources.at(0), {});
        EXPECT_EQ(result.status, status) << script;
        EXPECT_EQ(result.error, error.empty() ? "" : compiler + error);
    }
    const arguments given = read_arguments({"/none/cc", "-c", source});
    EXPECT_EQ(compile(given, given.sources.at(0), {}).status, 1);
    EXPECT_EQ(compile(given, given.sources.at(0), {}).error,
              "cannot run /none/cc: No such file or directory");
}
