// The completions, loaded by the shells that are installed here.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "tests/packaging/installed.h"

using std::string;

namespace {

const std::vector<string> programs{"interlist", "gas2interlist", "symdecode", "clist"};

std::set<string> set_of_lines(const string& text) {
    std::set<string> lines;
    for (const string& line : lines_of(text)) {
        lines.insert(line.substr(0, line.find('\t')));
    }
    return lines;
}

// What bash offers for the last of the words.
std::set<string> bash_completes(const string& program, const std::vector<string>& words) {
    std::vector<string> argv{"bash",
                             "--norc",
                             "-c",
                             "source \"$1\"; shift; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
                             "compopt() { :; }; _$1; printf '%s\\n' \"${COMPREPLY[@]}\"",
                             "bash",
                             installed_tree() + "/share/bash-completion/completions/" + program,
                             program};
    argv.insert(argv.end(), words.begin(), words.end());
    return set_of_lines(output_of(argv));
}

std::set<string> fish_completes(const string& program, const string& line) {
    return set_of_lines(output_of(
        {"fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]",
         installed_tree() + "/share/fish/vendor_completions.d/" + program + ".fish", line}));
}

}  // namespace

TEST(BashCompletion, OffersOptionsAndValues) {
    if (!has_command("bash")) {
        GTEST_SKIP() << "no bash here";
    }
    EXPECT_EQ(bash_completes("symdecode", {"--s"}),
              (std::set<string>{"--scheme", "--strict", "--strip-underscore", "--style"}));
    EXPECT_EQ(bash_completes("symdecode", {"--style", "="}), (std::set<string>{"house", "gnu"}));
    EXPECT_EQ(bash_completes("symdecode", {"--style", "=", "g"}), std::set<string>{"gnu"});
    EXPECT_EQ(bash_completes("symdecode", {"--scheme", "=", "a"}), std::set<string>{"auto"});
    EXPECT_EQ(bash_completes("symdecode", {"--scheme", "="}), (std::set<string>{"0", "1", "auto"}));
    EXPECT_EQ(bash_completes("symdecode", {"-s", ""}), (std::set<string>{"0", "1", "auto"}));
    EXPECT_EQ(bash_completes("interlist", {"--"}),
              (std::set<string>{"--help", "--no_warnings", "--toolversion"}));
    EXPECT_EQ(bash_completes("gas2interlist", {"--s"}), std::set<string>{"--source-map"});
    EXPECT_EQ(bash_completes("clist", {"--str"}), std::set<string>{"--strict"});
    EXPECT_EQ(bash_completes("clist", {"--sources", ""}), (std::set<string>{"all", "own"}));
    EXPECT_EQ(bash_completes("clist", {"--color", "=", "n"}), std::set<string>{"never"});
    EXPECT_EQ(bash_completes("clist", {"--sources", "=", "own", "--st"}),
              (std::set<string>{"--stats", "--strict"}));
    EXPECT_EQ(bash_completes("clist", {"a.s", "--stri"}), std::set<string>{"--strict"});
    // Behind the compiler's name everything is the compiler's.
    EXPECT_EQ(bash_completes("clist", {"gcc", "--stri"}), std::set<string>{""});
    EXPECT_EQ(bash_completes("clist", {"gcc", "-c", "sample/CM"}),
              std::set<string>{"sample/CMakeLists.txt"});
    EXPECT_EQ(bash_completes("clist", {"-p", "sam"}), std::set<string>{"sample"});
    // Values are no compilers.
    for (const string option : {"-o", "--lines", "--depfile", "--function", "-j", "--suffix"}) {
        EXPECT_EQ(bash_completes("clist", {option, "wai"}), std::set<string>{""}) << option;
    }
    EXPECT_TRUE(bash_completes("clist", {"wai"}).contains("wait"));
    EXPECT_TRUE(bash_completes("clist", {"--through", "wai"}).contains("wait"));
    EXPECT_EQ(bash_completes("clist", {"--lines", "sample/CM"}),
              std::set<string>{"sample/CMakeLists.txt"});
    EXPECT_EQ(bash_completes("interlist", {"sample/CM"}),
              std::set<string>{"sample/CMakeLists.txt"});
}

TEST(FishCompletion, OffersOptionsAndValues) {
    if (!has_command("fish")) {
        GTEST_SKIP() << "no fish here";
    }
    EXPECT_EQ(fish_completes("symdecode", "symdecode --s"),
              (std::set<string>{"--scheme", "--strict", "--strip-underscore", "--style"}));
    EXPECT_EQ(fish_completes("symdecode", "symdecode --style=g"), std::set<string>{"--style=gnu"});
    EXPECT_EQ(fish_completes("symdecode", "symdecode --scheme=a"),
              std::set<string>{"--scheme=auto"});
    EXPECT_EQ(fish_completes("interlist", "interlist --"),
              (std::set<string>{"--help", "--no_warnings", "--toolversion"}));
    EXPECT_EQ(fish_completes("gas2interlist", "gas2interlist --s"),
              std::set<string>{"--source-map"});
    EXPECT_EQ(fish_completes("clist", "clist --function f --str"), std::set<string>{"--strict"});
    EXPECT_EQ(fish_completes("clist", "clist --sources "), (std::set<string>{"all", "own"}));
    EXPECT_EQ(fish_completes("clist", "clist gcc --str"), std::set<string>{});
}

TEST(ZshCompletion, OffersOptionsAndValues) {
    if (!has_command("zsh")) {
        GTEST_SKIP() << "no zsh here";
    }
    struct example {
        string program;
        string typed;
        string completed;
    };
    for (const auto& [program, typed, completed] : std::vector<example>{
             {"symdecode", "--names", "--names-only"},
             {"symdecode", "--scheme=a", "--scheme=auto"},
             {"symdecode", "--style=g", "--style=gnu"},
             {"interlist", "--tool", "--toolversion"},
             {"gas2interlist", "--so", "--source-map"},
             {"clist", "--mang", "--mangled"},
             {"clist", "--color=n", "--color=never"},
         }) {
        const string out =
            output_of({"timeout", "60", "zsh", "-f", "complete.zsh",
                       installed_tree() + "/share/zsh/site-functions", program, typed});
        EXPECT_NE(out.find("got:" + completed + "."), string::npos) << out;
    }
}
