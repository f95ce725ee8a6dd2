// The command line of clist: where its options end, what each of them means, and which
// command lines make no sense.
#include "clist/options.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "tests/clist/words.h"
#include "tests/harness/program.h"

using namespace clist;
using std::string;

namespace {

options read(const string& line) {
    return read_options(words_in(line), {"my-cc -m32", "my-c++"});
}

std::vector<string> lines_of_text(const string& text) {
    std::vector<string> lines;
    std::istringstream stream(text);
    for (string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

TEST(ClistOptions, TheCompilersWordsBeginAtTheFirstWordThatIsNoOption) {
    struct {
        string line;
        work what;
        string words;
    } const cases[] = {
        {"gcc -O2 -c prog.c", work::compile, "gcc -O2 -c prog.c"},
        {"--all gcc -o x --list --help prog.c", work::compile, "gcc -o x --list --help prog.c"},
        {"-o out gcc -o in prog.c", work::compile, "gcc -o in prog.c"},
        {"-oout --function f --context 2 ccache gcc prog.c", work::compile, "ccache gcc prog.c"},
        {"-- gcc -- prog.c", work::compile, "gcc -- prog.c"},
        {"--function f --function=g ./gcc", work::compile, "./gcc"},
        {"--color always gcc", work::compile, "always gcc"},
        {"--launcher gcc --strict", work::launcher, "gcc --strict"},
        {"--launcher prog.c", work::launcher, "prog.c"},
        {"prog.c", work::compile, "my-cc -m32 -O2 prog.c"},
        {"dir/prog.c -O3 -DX", work::compile, "my-cc -m32 -O2 dir/prog.c -O3 -DX"},
        {"prog.cpp", work::compile, "my-c++ -O2 prog.cpp"},
        {"prog.cc", work::compile, "my-c++ -O2 prog.cc"},
        {"prog.cxx", work::compile, "my-c++ -O2 prog.cxx"},
        {"prog.C", work::compile, "my-c++ -O2 prog.C"},
        {"prog.i", work::compile, "my-cc -m32 -O2 prog.i"},
        {"prog.ii", work::compile, "my-c++ -O2 prog.ii"},
        {"prog.s", work::assembly, "prog.s"},
        {"a.s b.asm - c.S", work::assembly, "a.s b.asm - c.S"},
        {"a.s --all b.txt -o out", work::assembly, "a.s b.txt"},
        {"-", work::assembly, "-"},
        {"/dev/stdin", work::assembly, "/dev/stdin"},
        {"-- a.s", work::assembly, "a.s"},
        {"-- -", work::assembly, "-"},
        {"--list -- a.s --all", work::assembly, "a.s --all"},
        {"a.s -- b.s -- -o", work::assembly, "a.s b.s -- -o"},
        {"a.s --all -- b.s", work::assembly, "a.s b.s"},
        {"a.s --", work::assembly, "a.s"},
        {"-o -- a.s", work::assembly, "a.s"},
        {"-o -- -- gcc", work::compile, "gcc"},
        {"-- prog.c -- x", work::compile, "my-cc -m32 -O2 prog.c -- x"},
        {"--launcher -- gcc -- a.s", work::launcher, "gcc -- a.s"},
        {"--launcher -- a.s", work::launcher, "a.s"},
    };
    for (const auto& [line, what, words] : cases) {
        const options given = read(line);
        EXPECT_EQ(given.error, "") << line;
        EXPECT_EQ(given.what, what) << line;
        EXPECT_EQ(joined(given.words), words) << line;
    }
}

TEST(ClistOptions, OptionsMayStandBehindAssemblyFiles) {
    const options given = read("a.s --all b.s -o out --list -");
    EXPECT_TRUE(given.listing.all);
    EXPECT_EQ(given.listing.form, listing_form::list);
    EXPECT_EQ(given.output, "out");
    EXPECT_EQ(joined(given.words), "a.s b.s -");
}

TEST(ClistOptions, APipeIsAssembly) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(read(folder / "pipe").what, work::assembly);
    EXPECT_EQ(read(folder / "none").what, work::compile);
}

TEST(ClistOptions, SayWhatAListingLooksLike) {
    const options plain = read("gcc");
    EXPECT_EQ(plain.listing.form, listing_form::code);
    EXPECT_TRUE(plain.listing.warnings);
    EXPECT_FALSE(plain.listing.all || plain.listing.mangled || plain.listing.mca ||
                 plain.listing.own_sources || plain.listing.json || plain.intel);
    EXPECT_EQ(plain.color, color_choice::when_terminal);

    const options given = read(
        "--all --mangled --intel --sources own --no-warnings --comment ;; "
        "--function a* --function 12 --context 3 --source-map /a=/b --source-map=x=y=z gcc");
    EXPECT_EQ(given.error, "");
    EXPECT_TRUE(given.listing.all && given.listing.mangled && given.listing.own_sources &&
                given.intel);
    EXPECT_TRUE(read("--json gcc").listing.json);
    EXPECT_TRUE(read("--mca gcc").listing.mca);
    EXPECT_FALSE(given.listing.warnings);
    EXPECT_EQ(given.listing.comment, ";;");
    EXPECT_EQ(joined(given.listing.functions), "a* 12");
    EXPECT_EQ(given.listing.context, 3U);
    using map = std::vector<std::pair<string, string>>;
    EXPECT_EQ(given.listing.source_map, (map{{"/a", "/b"}, {"x", "y=z"}}));

    EXPECT_FALSE(read("--sources own --sources all gcc").listing.own_sources);
    EXPECT_EQ(read("--list gcc").listing.form, listing_form::list);
    EXPECT_EQ(read("--stats gcc").listing.form, listing_form::stats);
    EXPECT_EQ(read("--classic gcc").listing.form, listing_form::classic);
    EXPECT_EQ(read("--html gcc").listing.form, listing_form::page);
}

TEST(ClistOptions, LinesAreARangeOfAFile) {
    constexpr std::uint32_t end = std::numeric_limits<std::uint32_t>::max();
    const std::pair<string, line_range> cases[] = {
        {"a.c:3-9", {"a.c", 3, 9}}, {"a.c:7", {"a.c", 7, 7}},     {"a.c:5-", {"a.c", 5, end}},
        {"a.c:-5", {"a.c", 1, 5}},  {"c:/a:2-2", {"c:/a", 2, 2}}, {"a:b.c:1", {"a:b.c", 1, 1}},
    };
    for (const auto& [text, range] : cases) {
        const options given = read("--lines " + text + " gcc");
        EXPECT_EQ(given.error, "") << text;
        ASSERT_EQ(given.listing.lines.size(), 1U) << text;
        EXPECT_EQ(given.listing.lines[0], range) << text;
    }
    for (const string text : {"a.c", "a.c:", "a.c:-", ":3", "a.c:9-3", "a.c:0", "a.c:0-3", "a.c:x",
                              "a.c:3x", "a.c:3-4x", "a.c:4294967296", "a.c:+3"}) {
        EXPECT_EQ(read("--lines " + text + " gcc").error,
                  "--lines needs FILE:FROM-TO, not '" + text + "'");
    }
}

TEST(ClistOptions, ColorIsAChoice) {
    EXPECT_EQ(read("--color gcc").color, color_choice::always);
    EXPECT_EQ(read("--color=always gcc").color, color_choice::always);
    EXPECT_EQ(read("--color=never gcc").color, color_choice::never);
    EXPECT_EQ(read("--color=auto gcc").color, color_choice::when_terminal);
    EXPECT_TRUE(wants_color(read("--color gcc")));
    EXPECT_FALSE(wants_color(read("--color=never gcc")));
}

TEST(ClistOptions, TheLauncherNamesItsListings) {
    EXPECT_EQ(read("--launcher gcc").suffix, ".lst");
    EXPECT_EQ(read("--launcher --html gcc").suffix, ".html");
    EXPECT_EQ(read("--launcher --suffix .txt --html gcc").suffix, ".txt");
    EXPECT_TRUE(read("--launcher --strict gcc").strict);
}

TEST(ClistOptions, AProjectHasAFolderJobsAndALauncher) {
    const options given =
        read("-p build -j 3 -o out --through distcc --mangled --comment=# --html");
    EXPECT_EQ(given.error, "");
    EXPECT_EQ(given.what, work::project);
    EXPECT_EQ(given.build_dir, "build");
    EXPECT_EQ(given.jobs, "3");
    EXPECT_EQ(given.output, "out");
    EXPECT_EQ(joined(given.through), "distcc");
    EXPECT_EQ(joined(given.form_words), "--mangled --comment=# --html");
    EXPECT_EQ(joined(read_options({"-pbuild", "--through", " ccache  distcc "}, {}).through),
              "ccache distcc");
}

TEST(ClistOptions, HelpAndVersionEndTheReading) {
    EXPECT_EQ(read("--all --help --nonsense").what, work::help);
    EXPECT_EQ(read("-h").what, work::help);
    EXPECT_EQ(read("--version gcc").what, work::version);
    EXPECT_EQ(read("-V").what, work::version);
}

TEST(ClistOptions, WhatMakesNoSenseIsAnError) {
    const string classic = "--classic lists all code, in the one form that it has";
    const string order = ": the compiler's options stand behind its name";
    const string nothing =
        "nothing to list: name a compiler with its arguments, a source or assembly";
    const string mca = "--mca is for the listing of code alone";
    const string all = "--all is for the listing of code alone";
    const std::pair<string, string> cases[] = {
        {"", nothing},
        {"--all", nothing},
        {"--launcher", "--launcher needs a compiler behind it"},
        {"--launcher --strict --", "--launcher needs a compiler behind it"},
        {"--nonsense gcc", "unknown option '--nonsense'"},
        {"-q gcc", "unknown option '-q'" + order},
        {"-O2 prog.c", "unknown option '-O2'" + order},
        {"--all -std=c++20 prog.cpp", "unknown option '-std=c++20'" + order},
        {"-c prog.c", "unknown option '-c'" + order},
        {"a.s -O2", "unknown option '-O2'" + order},
        {"--all=1 gcc", "option '--all' takes no value"},
        {"--function", "option '--function' needs a value"},
        {"-o", "option '-o' needs a value"},
        {"--context -1 gcc", "--context needs a number, not '-1'"},
        {"--context x gcc", "--context needs a number, not 'x'"},
        {"--context 99999999999 gcc", "--context needs a number, not '99999999999'"},
        {"--sources mine gcc", "--sources needs own or all, not 'mine'"},
        {"--source-map x gcc", "--source-map needs OLD=NEW, not 'x'"},
        {"--color=red gcc", "--color needs always, never or auto, not 'red'"},
        {"--list --stats gcc", "--stats cannot stand beside another form of listing"},
        {"--html --classic gcc", "--classic cannot stand beside another form of listing"},
        {"--json --html gcc", "--json cannot stand beside --classic or --html"},
        {"--classic --json gcc", "--json cannot stand beside --classic or --html"},
        {"--classic --function f gcc", classic},
        {"--classic --lines a.c:1 gcc", classic},
        {"--all --classic gcc", classic},
        {"--classic --mangled a.s", classic},
        {"--classic --sources own gcc", classic},
        {"--launcher --classic --all gcc", classic},
        {"-p build --classic --all", classic},
        {"--classic --sources all gcc", ""},
        {"--mca --json gcc", mca},
        {"--mca --list gcc", mca},
        {"--stats --mca gcc", mca},
        {"--html --mca a.s", mca},
        {"--classic --mca gcc", mca},
        {"--context 1 gcc", "--context is for --function and --lines"},
        {"--context 1 --list a.s", "--context is for --function and --lines"},
        {"-p build --context 1", "--context is for --function and --lines"},
        {"--context 0 gcc", ""},
        {"--context 1 --lines a.c:1 gcc", ""},
        {"--all --list gcc", all},
        {"--stats --all a.s", all},
        {"--all --html a.s", all},
        {"--all --json gcc", all},
        {"--all --mca gcc", all},
        {"- -", "standard input can be named but once"},
        {"- a.s -", "standard input can be named but once"},
        {"-- - -", "standard input can be named but once"},
        {"gcc - -", ""},
        {"--suffix /x gcc", "--suffix needs what to put behind the object's name, not '/x'"},
        {"--suffix .x gcc", "--suffix is for --launcher"},
        {"--strict gcc", "--strict is for --launcher"},
        {"--launcher -o x gcc", "-o is not for --launcher: see --suffix"},
        {"--launcher -p build", "--launcher and -p exclude each other"},
        {"-p build gcc", "-p takes no compiler and no files"},
        {"-p build -- a.s", "-p takes no compiler and no files"},
        {"--", nothing},
        {"--all --", nothing},
        {"-p build a.s", "-p takes no compiler and no files"},
        {"-p build --function f", "--function and --lines are not for -p"},
        {"-p build -j 0", "--jobs needs a number from 1 on, not '0'"},
        {"-j 2 gcc", "-j is for -p"},
        {"--through ccache gcc", "--through is for -p"},
        {"--depfile d gcc", "--depfile needs -o"},
        {"--depfile x -o x gcc", "--depfile and -o name one file"},
        {"--depfile d -o x a.s", "--depfile is for a single compile"},
        {"--intel a.s", "--intel is for compiles: assembly at hand stays in its syntax"},
    };
    for (const auto& [line, error] : cases) {
        EXPECT_EQ(read(line).error, error) << line;
    }
    EXPECT_EQ(read_options({"--comment", "", "gcc"}, {}).error,
              "--comment needs what starts a comment, not ''");
    EXPECT_EQ(read_options({"-o", "", "gcc"}, {}).error, "--output needs a file name, not ''");
}

TEST(ClistOptions, TheEnvironmentNamesTheCompilers) {
    unsetenv("CC");
    setenv("CXX", " ", 1);
    EXPECT_EQ(environment_of_process().c_compiler, "cc");
    EXPECT_EQ(environment_of_process().cxx_compiler, "c++");
    setenv("CC", "ccache gcc", 1);
    setenv("CXX", "clang++", 1);
    EXPECT_EQ(environment_of_process().c_compiler, "ccache gcc");
    EXPECT_EQ(environment_of_process().cxx_compiler, "clang++");
    unsetenv("CC");
    unsetenv("CXX");
}

TEST(ClistHelp, FitsAScreen) {
    const std::vector<string> lines = lines_of_text(string(usage_text()));
    EXPECT_LE(lines.size(), 24U);
    for (const string& line : lines) {
        EXPECT_LE(line.size(), 79U) << line;
    }
}

TEST(ClistHelp, NamesEveryOption) {
    const string text(usage_text());
    for (const string option :
         {"-o ",        "--all",    "--mangled", "--sources",    "--function", "--lines",
          "--context",  "--list",   "--stats",   "--classic",    "--html",     "--json",
          "--intel",    "--mca",    "--comment", "--source-map", "--color",    "--no-warnings",
          "--launcher", "--suffix", "--strict",  "-p ",          "-j ",        "--through",
          "--depfile",  "--help",   "--version"}) {
        EXPECT_NE(text.find(option), string::npos) << option;
    }
}
