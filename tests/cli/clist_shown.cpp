// What the built clist shows of code, as its options choose: which functions and lines, which
// figures, in which syntax and colours.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/harness/program.h"

using std::string;

namespace {

// An assembly text in a folder with its source.
struct Sample {
    ScratchFolder folder;

    Sample() {
        folder.write("src/inlined.c", read_file("../data/inlined/inlined.c"));
        string text = read_file("../data/inlined/gcc_5.s");
        const string recorded = "\"/src\"";
        for (std::size_t at = 0; (at = text.find(recorded, at)) != string::npos; at += 2) {
            text.replace(at + 1, recorded.size() - 2, folder / "src");
        }
        folder.write("code.s", text);
    }

    Finished list(std::vector<string> words, const RunOptions& how = {}) const {
        RunOptions options = how;
        options.directory = how.directory.empty() ? folder.path() : folder / how.directory;
        words.insert(words.begin(), CLIST);
        return run_program(words, options);
    }

    string shown(const std::vector<string>& words, const RunOptions& how = {}) const {
        const Finished run = list(words, how);
        EXPECT_EQ(run.status, 0) << words.front();
        EXPECT_EQ(run.err, "");
        return run.out;
    }
};

const string plain =
    "outer:\n"
    "# inlined.c:11 |     *result = a;\n"
    "\tmovl\t%edi, (%rdx)\n"
    "# inlined.c:2 |     return x * x;\n"
    "# inlined: square at inlined.c:7 in sum_of_squares, at inlined.c:12 in outer\n"
    "\timull\t%esi, %esi\n"
    "# inlined.c:2 |     return x * x;\n"
    "# inlined: square at inlined.c:6 in sum_of_squares, at inlined.c:12 in outer\n"
    "\timull\t%edi, %edi\n"
    "# inlined.c:12 |     return sum_of_squares(a, b) - 7;\n"
    "\tleal\t-7(%rdi,%rsi), %eax\n"
    "# inlined.c:13 | }\n"
    "\tret\n";

#define LABEL "\x1b[33m"
#define SOURCE "\x1b[36m"
#define INLINED "\x1b[35m"
#define PLAIN "\x1b[0m"
const string coloured = LABEL
    "outer:" PLAIN "\n" SOURCE "# inlined.c:11 |     *result = a;" PLAIN
    "\n"
    "\tmovl\t%edi, (%rdx)\n" INLINED "# inlined.c:2 |     return x * x;" PLAIN "\n" INLINED
    "# inlined: square at inlined.c:7 in sum_of_squares, at inlined.c:12 in outer" PLAIN
    "\n"
    "\timull\t%esi, %esi\n" INLINED "# inlined.c:2 |     return x * x;" PLAIN "\n" INLINED
    "# inlined: square at inlined.c:6 in sum_of_squares, at inlined.c:12 in outer" PLAIN
    "\n"
    "\timull\t%edi, %edi\n" SOURCE "# inlined.c:12 |     return sum_of_squares(a, b) - 7;" PLAIN
    "\n"
    "\tleal\t-7(%rdi,%rsi), %eax\n" SOURCE "# inlined.c:13 | }" PLAIN
    "\n"
    "\tret\n";

std::vector<nlohmann::json> objects_in(const string& text) {
    std::vector<nlohmann::json> objects;
    std::istringstream stream(text);
    for (string line; std::getline(stream, line);) {
        objects.push_back(nlohmann::json::parse(line));
    }
    return objects;
}

}  // namespace

TEST(ClistShown, ColoursAreForTerminalsThatTakeThem) {
    const Sample sample;
    struct {
        bool is_terminal;
        std::map<string, string> set;
        std::vector<string> unset;
        std::vector<string> options;
        bool is_coloured;
    } const cases[] = {
        {true, {{"TERM", "xterm"}}, {"NO_COLOR"}, {}, true},
        {true, {{"TERM", "xterm"}}, {"NO_COLOR"}, {"--color=auto"}, true},
        {true, {{"TERM", "xterm"}}, {"NO_COLOR"}, {"--color=never"}, false},
        {true, {{"TERM", "xterm"}, {"NO_COLOR", "1"}}, {}, {}, false},
        {true, {{"TERM", "xterm"}, {"NO_COLOR", ""}}, {}, {}, true},
        {true, {{"TERM", "xterm"}, {"NO_COLOR", "1"}}, {}, {"--color"}, true},
        {true, {{"TERM", "dumb"}}, {"NO_COLOR"}, {}, false},
        {true, {{"TERM", "dumb"}}, {"NO_COLOR"}, {"--color"}, true},
        {true, {}, {"TERM", "NO_COLOR"}, {}, false},
        {false, {{"TERM", "xterm"}}, {"NO_COLOR"}, {}, false},
        {false, {{"TERM", "xterm"}}, {"NO_COLOR"}, {"--color=auto"}, false},
        {false, {{"TERM", "xterm"}}, {"NO_COLOR"}, {"--color"}, true},
        {false, {{"NO_COLOR", "1"}}, {"TERM"}, {"--color=always"}, true},
    };
    for (const auto& [is_terminal, set, unset, options, is_coloured] : cases) {
        RunOptions how;
        how.output_is_terminal = is_terminal;
        how.set = set;
        how.unset = unset;
        std::vector<string> words = options;
        words.emplace_back("code.s");
        EXPECT_EQ(sample.shown(words, how), is_coloured ? coloured : plain)
            << is_terminal << testing::PrintToString(set) << testing::PrintToString(options);
    }
    // A file is no terminal, even where the messages go to one.
    RunOptions how;
    how.output_is_terminal = true;
    how.set["TERM"] = "xterm";
    how.unset = {"NO_COLOR"};
    EXPECT_EQ(sample.shown({"-o", "out", "code.s"}, how), "");
    EXPECT_EQ(sample.folder.read("out"), plain);
}

TEST(ClistShown, LinesAreThoseOfAFileByAnyNameThatLeadsThere) {
    const Sample sample;
    sample.folder.write("other/inlined.c", "");
    const string line = "outer:\n# inlined.c:11 |     *result = a;\n\tmovl\t%edi, (%rdx)\n";
    const std::pair<string, std::vector<string>> cases[] = {
        {"",
         {"inlined.c", "src/inlined.c", "./src/inlined.c", "other/../src/inlined.c",
          sample.folder / "src/inlined.c", sample.folder / "src/../src/inlined.c"}},
        {"src", {"inlined.c", "./inlined.c", "../src/inlined.c", ".//inlined.c"}},
        {"other", {"../src/inlined.c", "./../src/inlined.c", "../other/../src/inlined.c"}},
    };
    for (const auto& [directory, names] : cases) {
        RunOptions how;
        how.directory = directory;
        for (const string& name : names) {
            EXPECT_EQ(sample.shown({"--lines", name + ":11", sample.folder / "code.s"}, how), line)
                << name << " in " << directory;
        }
    }
    RunOptions other;
    other.directory = "other";
    for (const string name : {"../inlined.c", "../other/inlined.c", "../../src/inlined.c"}) {
        const Finished run = sample.list({"--lines", name + ":11", "../code.s"}, other);
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "clist: no code of " + name + "; the nearest is 'inlined.c'\n");
    }
    EXPECT_EQ(sample.shown({"--lines", "inlined.c:11", "--lines", "inlined.c:13", "code.s"}),
              line + "# inlined.c:13 | }\n\tret\n");
    EXPECT_EQ(sample.list({"--lines", "inlined.c:20-30", "code.s"}).err,
              "clist: no code of inlined.c:20-30; the nearest is line 13\n");
}

// Of a compile, sources stand where the command names them from.
TEST(ClistShown, LinesOfACompileAreToldFromWhereItRuns) {
    const ScratchFolder folder;
    folder.write("src/prog.c",
                 "#include \"part.h\"\nint whole(int n)\n{\n    return part(n);\n}\n");
    folder.write("src/part.h", "static int part(int n)\n{\n    return 3 * n;\n}\n");
    folder.write("build/none", "");
    RunOptions options;
    options.directory = folder / "build";
    for (const auto& [wanted, line] :
         {std::pair{"../src/prog.c:5", "# prog.c:5 | }\n"},
          {"prog.c:5", "# prog.c:5 | }\n"},
          {"../src/part.h:3", "# part.h:3 |     return 3 * n;\n"},
          {"./../src/part.h:-3", "# part.h:3 |     return 3 * n;\n"}}) {
        const Finished run =
            run_program({CLIST, "--lines", wanted, "cc", "-O2", "-c", "../src/prog.c"}, options);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_NE(run.out.find(line), string::npos) << wanted << "\n" << run.out;
        EXPECT_EQ(run.out.find(" | "), run.out.rfind(" | ")) << "more lines than asked for";
    }
}

TEST(ClistShown, FunctionsAreChosenWithWhatTheyCall) {
    const ScratchFolder folder;
    string text;
    for (const auto& [name, called] :
         std::map<string, string>{{"a", "b"}, {"b", "c"}, {"c", "puts"}, {"d", "a"}}) {
        text += "\t.type\t" + name + ", @function\n" + name + ":\n\tcall\t" + called +
                "\n\t.size\t" + name + ", .-" + name + "\n";
    }
    folder.write("code.s", text);
    RunOptions options;
    options.directory = folder.path();
    const auto names = [&](std::vector<string> words) {
        words.insert(words.begin(), {CLIST, "--no-warnings"});
        words.emplace_back("code.s");
        const Finished run = run_program(words, options);
        EXPECT_EQ(run.status, 0) << run.err;
        string found;
        std::istringstream stream(run.out);
        for (string line; std::getline(stream, line);) {
            found += line.ends_with(':') ? line : "";
        }
        return found;
    };
    EXPECT_EQ(names({}), "a:b:c:d:");
    EXPECT_EQ(names({"--function", "a"}), "a:");
    EXPECT_EQ(names({"--function", "a", "--context", "0"}), "a:");
    EXPECT_EQ(names({"--function", "a", "--context", "1"}), "a:b:");
    EXPECT_EQ(names({"--function", "4", "--context", "2"}), "a:b:d:");
    EXPECT_EQ(names({"--function", "d", "--context", "99"}), "a:b:c:d:");
    EXPECT_EQ(names({"--function", "[bd]", "--context", "1"}), "a:b:c:d:");
    EXPECT_EQ(names({"--function", "d", "--function", "2"}), "b:d:");
    const Finished none =
        run_program({CLIST, "--no-warnings", "--function", "x", "code.s"}, options);
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_TRUE(none.err.starts_with("clist: no function 'x'; the nearest is '")) << none.err;
}

TEST(ClistShown, FiguresAreARowAFunction) {
    const Sample sample;
    EXPECT_EQ(sample.shown({"--list", "code.s"}), "     1        5  outer\n");
    EXPECT_EQ(sample.shown({"--stats", "code.s"}),
              "number    instr  inlined  lines   bytes            largest line  function\n"
              "     1        5      40%      4      70           2 inlined.c:2  outer\n");
    EXPECT_EQ(sample.shown({"--list", "--json", "code.s"}),
              "{\"number\":1,\"instructions\":5,\"symbol\":\"outer\",\"name\":\"outer\"}\n");
    EXPECT_EQ(sample.shown({"--stats", "--json", "code.s"}),
              "{\"number\":1,\"instructions\":5,\"inlined\":2,\"lines\":4,\"bytes\":70,"
              "\"largest\":{\"file\":\"inlined.c\",\"line\":2,\"instructions\":2},"
              "\"symbol\":\"outer\",\"name\":\"outer\"}\n");
    EXPECT_EQ(sample.shown({"--json", "--lines", "inlined.c:7", "code.s"}),
              "{\"symbol\":\"outer\",\"text\":\"imull\\t%esi, %esi\",\"frames\":["
              "{\"function\":\"square\",\"file\":\"inlined.c\",\"line\":2},"
              "{\"function\":\"sum_of_squares\",\"file\":\"inlined.c\",\"line\":7},"
              "{\"function\":\"outer\",\"file\":\"inlined.c\",\"line\":12}]}\n");
}

// On real code: the list counts what is shown, the table of figures is sorted and counts the
// same, and so do the objects.
TEST(ClistShown, FiguresOfRealCodeAgree) {
    const ScratchFolder folder;
    const string code = folder / "odd.s";
    ASSERT_EQ(run_program({"c++", "-std=c++20", "-O2", "-g", "-w", "-S", "../data/listed/odd.cpp",
                           "-o", code})
                  .status,
              0);
    const auto shown = [&](std::vector<string> words) {
        words.insert(words.begin(), CLIST);
        words.push_back(code);
        const Finished run = run_program(words);
        EXPECT_EQ(run.status, 0) << run.err;
        return run.out;
    };
    std::map<string, std::size_t> counts;
    std::map<string, std::size_t> inlined;
    for (const nlohmann::json& each : objects_in(shown({"--json"}))) {
        const string symbol = each["symbol"];
        ++counts[symbol];
        inlined[symbol] += each["frames"].size() > 1 ? 1 : 0;
    }
    EXPECT_GT(counts.size(), 5U);
    std::map<string, std::size_t> listed;
    for (const nlohmann::json& each : objects_in(shown({"--list", "--json"}))) {
        listed[each["symbol"]] += each["instructions"].get<std::size_t>();
        EXPECT_EQ(each["number"], listed.size());
    }
    EXPECT_EQ(listed, counts);
    std::map<string, std::size_t> rows;
    std::size_t last = SIZE_MAX;
    for (const nlohmann::json& each : objects_in(shown({"--stats", "--json"}))) {
        const std::size_t count = each["instructions"];
        const string symbol = each["symbol"];
        EXPECT_LE(count, last);
        last = count;
        rows[symbol] += count;
        EXPECT_EQ(each["inlined"], inlined[symbol]) << symbol;
    }
    EXPECT_EQ(rows, counts);
}

TEST(ClistShown, RealCodeMayBeInIntelsSyntax) {
    if (run_program({"cc", "-dumpmachine"}).out.rfind("x86_64", 0) != 0) {
        GTEST_SKIP() << "not on x86-64";
    }
    const ScratchFolder folder;
    folder.write("prog.c", "int more(int n)\n{\n    return n + 77;\n}\n");
    RunOptions options;
    options.directory = folder.path();
    for (const string compiler : {"gcc", "clang"}) {
        if (!has_command(compiler)) {
            continue;
        }
        const std::vector<string> compile{compiler, "-O2", "-c", "prog.c"};
        std::vector<string> words{CLIST};
        words.insert(words.end(), compile.begin(), compile.end());
        const string usual = run_program(words, options).out;
        EXPECT_NE(usual.find("77(%rdi), %eax\n"), string::npos) << usual;
        words.insert(words.begin() + 1, "--intel");
        const Finished intel = run_program(words, options);
        EXPECT_EQ(intel.status, 0) << intel.err;
        EXPECT_NE(intel.out.find("eax, "), string::npos) << intel.out;
        EXPECT_NE(intel.out.find("# prog.c:3 |     return n + 77;\n"), string::npos) << intel.out;
        EXPECT_EQ(intel.out.find('%'), string::npos) << intel.out;
    }
}
