// Compilers' command lines taken apart.
#include "clist/arguments.h"

#include <gtest/gtest.h>

#include "tests/clist/words.h"
#include "tests/harness/program.h"

using namespace clist;
using std::string;

namespace {

string sources_of(const arguments& command) {
    string text;
    for (const std::size_t source : command.sources) {
        const argument& each = command.all[source];
        text.append(text.empty() ? "" : " ").append(each.option).append(":").append(each.language);
    }
    return text;
}

}  // namespace

TEST(Arguments, SourcesAreToldByNameAndLanguage) {
    const std::pair<string, string> cases[] = {
        {"gcc -O2 -c prog.c", "prog.c:c"},
        {"gcc prog.c", "prog.c:c"},
        {"ccache distcc gcc prog.c", "prog.c:c"},
        {"gcc a.c b.cc c.C d.cpp e.cxx f.c++ g.cp h.i i.ii",
         "a.c:c b.cc:c++ c.C:c++ d.cpp:c++ e.cxx:c++ f.c++:c++ g.cp:c++ h.i:cpp-output "
         "i.ii:c++-cpp-output"},
        {"gcc -c a.m b.mm", "a.m:objective-c b.mm:objective-c++"},
        {"gcc -c a.s b.S c.o d.a e.so -lm f", ""},
        {"gcc -x c a b.cpp -x none c.cpp d", "a:c b.cpp:c c.cpp:c++"},
        {"gcc -xc++ a.c", "a.c:c++"},
        {"gcc --language=c a", "a:c"},
        {"gcc -x assembler a.c", ""},
        {"gcc -x c-header a.h", ""},
        {"gcc a.h", ""},
        {"gcc -x c -", "-:c"},
        {"gcc -o a.c -I b.c -D c.c -include d.c -MF e.c -Xlinker f.c -T g.c h.c", "h.c:c"},
        {"gcc -oa.c -Ib.c -MTc.c -MQ d.c -isystem e.c -aux-info f.c g.c", "g.c:c"},
        {"clang -target a.c -Xclang b.c -mllvm c.c -arch d.c --sysroot e.c f.c", "f.c:c"},
        {"clang -c -- a.c -b.c", "a.c:c -b.c:c"},
        {"gcc -c .c dir.c/x a.b/.c", ""},
        {"gcc -o", ""},
        {"prog.c -c", ""},
    };
    for (const auto& [line, sources] : cases) {
        EXPECT_EQ(sources_of(read_arguments(words_in(line))), sources) << line;
    }
}

TEST(Arguments, CodeIsMadeWhereThereAreSourcesAndNothingElseIsAskedFor) {
    for (const string line : {"gcc -c a.c", "gcc -S a.c", "gcc a.c", "gcc -MD -c a.c",
                              "gcc -c -MMD -MF x a.c", "gcc -v -c a.c", "gcc -c a.c b.o"}) {
        EXPECT_TRUE(read_arguments(words_in(line)).makes_code) << line;
    }
    for (const string line :
         {"gcc a.o -o a", "gcc -E a.c", "gcc -M a.c", "gcc -MM a.c", "gcc --version",
          "gcc --version a.c", "gcc -fsyntax-only a.c", "gcc -dumpmachine", "gcc -dumpversion a.c",
          "gcc -print-search-dirs a.c", "gcc --print-prog-name=ld a.c", "gcc --help a.c",
          "gcc -### -c a.c", "clang -emit-llvm -c a.c", "clang --analyze a.c", "gcc",
          "gcc -c a.s"}) {
        EXPECT_FALSE(read_arguments(words_in(line)).makes_code) << line;
    }
}

TEST(Arguments, TellWhereTheOutputGoesAndOfWhatKindItIs) {
    const arguments command = read_arguments(words_in("gcc -c a.c -o dir/a.o"));
    EXPECT_EQ(command.output, "dir/a.o");
    EXPECT_TRUE(command.to_object);
    EXPECT_FALSE(command.to_assembly);
    EXPECT_EQ(read_arguments(words_in("gcc -ox a.c")).output, "x");
    EXPECT_EQ(read_arguments(words_in("gcc a.c")).output, std::nullopt);
    EXPECT_TRUE(read_arguments(words_in("gcc -S a.c")).to_assembly);
    EXPECT_TRUE(read_arguments(words_in("gcc -x c -c - -o x.o")).reads_standard_input);
    EXPECT_FALSE(read_arguments(words_in("gcc -c a.c -o -")).reads_standard_input);
}

TEST(Arguments, TheLastWordOnDebuggingDataCounts) {
    for (const string options : {"-g", "-g1", "-g2", "-g3", "-ggdb", "-ggdb3", "-gdwarf-4",
                                 "-gdwarf", "-gline-tables-only", "-gmlt", "-g0 -g", "-g -O2"}) {
        EXPECT_TRUE(read_arguments(words_in("gcc " + options + " a.c")).has_debug) << options;
    }
    for (const string options : {"", "-g0", "-g -g0", "-ggdb0", "-gno-column-info",
                                 "-grecord-gcc-switches", "-gz", "-gdwarf64"}) {
        EXPECT_FALSE(read_arguments(words_in("gcc " + options + " a.c")).has_debug) << options;
    }
}

TEST(Arguments, LinkTimeOptimisationShows) {
    EXPECT_TRUE(read_arguments(words_in("gcc -flto a.c")).has_link_time);
    EXPECT_TRUE(read_arguments(words_in("gcc -flto=thin a.c")).has_link_time);
    EXPECT_FALSE(read_arguments(words_in("gcc -fno-lto -flto-partition=none a.c")).has_link_time);
}

TEST(Arguments, TheTargetIsNamedByAnOptionOrByTheCompiler) {
    const std::pair<string, string> cases[] = {
        {"gcc a.c", ""},
        {"clang-14 a.c", ""},
        {"x86_64-linux-gnu-gcc-12 a.c", "x86_64-linux-gnu"},
        {"ccache /usr/bin/aarch64-linux-gnu-g++ a.cc", "aarch64-linux-gnu"},
        {"arm-none-eabi-c++ a.cc", "arm-none-eabi"},
        {"avr-gcc a.c", ""},
        {"clang --target=riscv64-linux-gnu a.c", "riscv64-linux-gnu"},
        {"clang -target arm-none-eabi a.c", "arm-none-eabi"},
        {"arm-linux-gnueabihf-clang++ --target=x a.c", "x"},
    };
    for (const auto& [line, target] : cases) {
        EXPECT_EQ(read_arguments(words_in(line)).target, target) << line;
    }
    EXPECT_EQ(read_arguments(words_in("ccache gcc -c a.c")).compiler(), "gcc");
    EXPECT_EQ(read_arguments(words_in("gcc a.o b.c")).compiler(), "gcc");
}

TEST(Arguments, ResponseFilesAreRead) {
    const ScratchFolder folder;
    folder.write("inner", "-c \"a b.c\"");
    folder.write("words", "-O2\n-o 'x y.o'\t@inner -DX=\\\"1\\\"\n");
    folder.write("endless", "-DY @endless");
    const arguments command = read_arguments({"gcc", "@words", "@none"}, folder.path());
    EXPECT_EQ(command.output, "x y.o");
    EXPECT_EQ(sources_of(command), "a b.c:c");
    EXPECT_TRUE(command.to_object);
    EXPECT_EQ(command.all.back().option, "@none");
    EXPECT_EQ(command.all[command.all.size() - 2].value, "X=\"1\"");
    EXPECT_EQ(read_arguments({"gcc", "@/dev/zero", "-c", "a.c"}).all[1].option, "@/dev/zero");
    EXPECT_TRUE(read_arguments({"gcc", "@endless", "-c", "a.c"}, folder.path()).makes_code);
}
