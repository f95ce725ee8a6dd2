// What README shows is what the programs print.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "tests/harness/program.h"

using std::string;

namespace {

// The block of code behind the one that holds just this command.
string shown_output(const string& document, const string& command) {
    const string fence = "```\n";
    const std::size_t at = document.find(fence + command + "\n" + fence);
    EXPECT_NE(at, string::npos) << command;
    if (at == string::npos) {
        return {};
    }
    const std::size_t behind = at + fence.size() + command.size() + 1 + fence.size();
    const std::size_t begin = document.find(fence, behind) + fence.size();
    return document.substr(begin, document.find(fence, begin) - begin);
}

// Without what README leaves out, and without blanks at the ends of lines.
string without_debugging(const string& listing) {
    static const std::regex data(R"(\s*\.section\s+\.debug_.*)");
    static const std::regex directive(
        R"(\s*\.(file|text|loc|cfi_|type|size).*|\.L(text|etext|VL|FB|FE|BB|BE|BI).*)");
    std::istringstream lines(listing);
    string kept;
    for (string line; std::getline(lines, line) && !std::regex_match(line, data);) {
        if (!std::regex_match(line, directive)) {
            kept += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
        }
    }
    return kept;
}

// The listings in README are those of this compiler.
bool is_compiler_of_readme() {
    return run_program({"gcc", "-dumpfullversion"}).out.starts_with("12.") &&
           run_program({"gcc", "-dumpmachine"}).out.starts_with("x86_64-");
}

Finished in_examples(std::vector<string> words) {
    words.insert(words.begin(), CLIST);
    RunOptions options;
    options.directory = "../../examples";
    return run_program(words, options);
}

}  // namespace

TEST(Readme, ShowsTheListingInBothForms) {
    if (!is_compiler_of_readme()) {
        GTEST_SKIP() << "needs GCC 12 for x86-64";
    }
    const string readme = read_file("../../README.md");
    const Finished code = in_examples({"gcc", "-O1", "-c", "walk.c"});
    EXPECT_EQ(code.err, "");
    EXPECT_EQ(code.out, shown_output(readme, "clist gcc -O1 -c walk.c"));
    const Finished classic = in_examples({"--classic", "gcc", "-O1", "-c", "walk.c"});
    EXPECT_EQ(classic.err, "");
    EXPECT_EQ(without_debugging(classic.out),
              shown_output(readme, "clist --classic gcc -O1 -c walk.c"));
    // "most of them are debugging data"
    const string kept = without_debugging(classic.out);
    EXPECT_GT(std::count(classic.out.begin(), classic.out.end(), '\n'),
              2 * std::count(kept.begin(), kept.end(), '\n'));
}

// Every option of --help, as each document spells it: bash's words stand between blanks.
TEST(Documents, NameEveryOptionOfClist) {
    const string help = in_examples({"--help"}).out;
    const string manual = read_file("../../docs/man/clist.1");
    const string bash = read_file("../../completions/clist.bash");
    const string zsh = read_file("../../completions/_clist");
    const string fish = read_file("../../completions/clist.fish");
    static const std::regex option(R"((?:^|[\s(])--?([a-z][a-z-]*)\b)");
    std::set<string> names;
    for (std::sregex_iterator at(help.begin(), help.end(), option); at != std::sregex_iterator();
         ++at) {
        names.insert((*at)[1]);
    }
    // gcc's own.
    names.erase("O");
    names.erase("c");
    EXPECT_GE(names.size(), 27U);
    for (const string& name : names) {
        const bool is_letter = name.size() == 1;
        const string word = (is_letter ? "-" : "--") + name;
        const auto matches = [&](const string& text, const string& pattern) {
            return std::regex_search(text, std::regex(pattern));
        };
        EXPECT_TRUE(matches(manual, "(Fl|,) " + word.substr(1) + "\\b")) << word;
        EXPECT_TRUE(matches(bash, "\\s" + word + "[\\s']")) << word;
        EXPECT_TRUE(matches(zsh, word + "[^a-z]")) << word;
        EXPECT_TRUE(matches(fish, (is_letter ? "-s " : "-l ") + name + "\\b")) << word;
    }
}

TEST(Readme, SaysWhatTheProgramsTake) {
    const string help = in_examples({"--help"}).out;
    const string readme = read_file("../../README.md");
    for (const string option : {"--function", "--context", "--list", "--stats", "--json", "--all",
                                "--intel", "--mca", "--html", "--launcher", "--classic", "-p"}) {
        EXPECT_NE(help.find(option), string::npos) << option;
        EXPECT_NE(readme.find(option), string::npos) << option;
    }
}
