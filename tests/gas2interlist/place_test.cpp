// Which directives an assembly gets and where, over sources in memory.
#include "gas2interlist/place.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>
#include <string_view>

using namespace assembly;
using namespace gas2interlist;

namespace {

using Sources = std::map<std::string, std::string>;

std::string placed(std::string_view text, const Sources& sources,
                   const prefix_map& source_map = {}) {
    const source_access access{
        .read = [&](const std::string& name) -> std::optional<text_file> {
            const auto it = sources.find(name);
            errno = ENOENT;
            return it == sources.end() ? std::nullopt : std::optional(text_file::of(it->second));
        },
        .same =
            [&](const std::string& one, const std::string& other) {
                return sources.contains(one) && sources.contains(other) &&
                       sources.at(one) == sources.at(other);
            },
    };
    interlisted_text result{.assembly = text};
    const std::optional<assembly_error> error = place_directives(result, source_map, access);
    EXPECT_FALSE(error) << error->line << ": " << error->message;
    return merged(result);
}

// The directives alone, one a line, without their leading tab.
std::string directives(std::string_view text, const Sources& sources,
                       const prefix_map& source_map = {}) {
    const std::string output = placed(text, sources, source_map);
    std::string result;
    for (std::size_t at = 0; at < output.size();) {
        const std::size_t end = output.find('\n', at) + 1;
        const std::string line = output.substr(at, end - at);
        for (const std::string_view name :
             {"\t.ifile\t", "\t.ifunc\t", "\t.iline\t", "\t.iendfunc\t"}) {
            if (line.starts_with(name)) {
                result += line.substr(1);
            }
        }
        at = end;
    }
    return result;
}

// A function of the given body lines, with its label and its end.
std::string function(const std::string& name, const std::string& body) {
    return "\t.type\t" + name + ", @function\n" + name + ":\n" + body + "\t.size\t" + name +
           ", .-" + name + "\n";
}

const std::string source =
    "static int square(int x)\n"  // 1
    "{\n"                         // 2
    "    return x * x;\n"         // 3
    "}\n"                         // 4
    "\n"                          // 5
    "int\n"                       // 6
    "f(int a,\n"                  // 7
    "  int b)\n"                  // 8
    "{\n"                         // 9
    "    int c = a;\n"            // 10
    "\n"                          // 11
    "    /* call */\n"            // 12
    "    c += g(a,\n"             // 13
    "           b);\n"            // 14
    "    while (c) {\n"           // 15
    "        c -= square(c);\n"   // 16
    "    }\n"                     // 17
    "    return c;\n"             // 18
    "}\n"                         // 19
    "\n"                          // 20
    "int one(void) { return 1; } int two(void) { return 2; }\n";

const Sources sources = {{"a.c", source}};

}  // namespace

TEST(Placement, CLinesStandBeforeTheirCode) {
    EXPECT_EQ(placed("\t.file 1 \"a.c\"\n"
                     "\t.globl\tf\n"
                     "\t.type\tf, @function\n"
                     "f:\n"
                     "\t.loc 1 9 1\n"
                     "\t.cfi_startproc\n"
                     "\tpush\n"
                     "\t.loc 1 10 9\n"
                     "\tmov\n"
                     "\t.loc 1 13 5\n"
                     "\tcall\tg\n"
                     ".L2:\n"
                     "\t.loc 1 18 5\n"
                     "\tmov\n"
                     "\t.loc 1 19 1\n"
                     "\tret\n"
                     "\t.cfi_endproc\n"
                     "\t.size\tf, .-f\n",
                     sources),
              "\t.file 1 \"a.c\"\n"
              "\t.ifile\t\"a.c\"\n"
              "\t.ifunc\t6\n"
              "\t.globl\tf\n"
              "\t.type\tf, @function\n"
              "f:\n"
              "\t.loc 1 9 1\n"
              "\t.cfi_startproc\n"
              "\tpush\n"
              "\t.iline\t5\n"
              "\t.loc 1 10 9\n"
              "\tmov\n"
              "\t.iline\t6\n"  // from the blank line behind line 10, the comment included
              "\t.loc 1 13 5\n"
              "\tcall\tg\n"
              "\t.iline\t10\n"  // line 14 still belongs to the call
              ".L2:\n"
              "\t.loc 1 18 5\n"
              "\tmov\n"
              "\t.iline\t14\n"
              "\t.loc 1 19 1\n"
              "\tret\n"
              "\t.cfi_endproc\n"
              "\t.iendfunc\t20\n"
              "\t.size\tf, .-f\n");
}

TEST(Placement, APositionTwiceInARowIsGivenOnce) {
    EXPECT_EQ(
        directives("\t.file 1 \"a.c\"\n" + function("f",
                                                    "\t.loc 1 9\n\tnop\n\t.loc 1 10 1\n\tnop\n"
                                                    "\t.loc 1 10 9\n\tnop\n\t.loc 1 13\n\tnop\n"),
                   sources),
        ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iline\t6\n.iendfunc\t20\n");
}

TEST(Placement, APositionWithoutCodeIsNotGiven) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n" +
                             function("f", "\t.loc 1 9\n\tnop\n\t.loc 1 10\n\t.loc 1 13\n\tnop\n"),
                         sources),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n");
}

TEST(Placement, InlinedCodeOfOtherFunctionsAndFilesIsNotGiven) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n\t.file 2 \"b.h\"\n" +
                             function("f",
                                      "\t.loc 1 9\n\tnop\n\t.loc 1 3\n\tnop\n"
                                      "\t.loc 2 16\n\tnop\n\t.loc 1 21\n\tnop\n"
                                      "\t.loc 1 15\n\tnop\n"),
                         sources),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n");
}

TEST(Placement, LineZeroAndUnknownFilesAreNotGiven) {
    EXPECT_EQ(
        directives("\t.file 1 \"a.c\"\n" + function("f",
                                                    "\t.loc 1 9\n\tnop\n\t.loc 1 0\n\tnop\n"
                                                    "\t.loc 7 10\n\tnop\n\t.loc 1 18\n\tnop\n"),
                   sources),
        ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n");
}

TEST(Placement, AFileMayBeNamedAfterItsPositions) {
    EXPECT_EQ(
        directives(function("f", "\t.loc 1 9\n\tnop\n\t.loc 1 10\n\tnop\n") + "\t.file 1 \"a.c\"\n",
                   sources),
        ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n");
}

// 18 comes early, as where a compiler returns from the midst of a function.
TEST(Placement, AnEarlyJumpForwardDoesNotUseUpTheLines) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n" + function("f",
                                                          "\t.loc 1 9\n\tnop\n\t.loc 1 10\n\tnop\n"
                                                          "\t.loc 1 18\n\tnop\n\t.loc 1 13\n\tnop\n"
                                                          "\t.loc 1 15\n\tnop\n\t.loc 1 10\n\tnop\n"
                                                          "\t.loc 1 16\n\tnop\n"),
                         sources),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iline\t6\n.iline\t10\n.iline\t11\n"
              ".iendfunc\t20\n");
}

// The loop's head is stepped at its foot. The body has more code, so it is the line that
// stands above its own.
TEST(Placement, OfLinesOutOfOrderTheOneWithMoreCodeIsPlaced) {
    EXPECT_EQ(placed("\t.file 1 \"a.c\"\n" +
                         function("f",
                                  "\t.loc 1 2\n\tentry\n\t.loc 1 3\n\tclear\n"
                                  "\t.loc 1 5\n\tload\n\tmultiply\n\tadd\n"
                                  "\t.loc 1 4\n\tcount\n\tbranch\n\t.loc 1 6\n\treturn\n"),
                     {{"a.c",
                       "int f(int n)\n{\n    int s = 0;\n    for (; n; n--)\n"
                       "        s += n * n;\n    return s;\n}\n"}}),
              "\t.file 1 \"a.c\"\n\t.ifile\t\"a.c\"\n\t.ifunc\t1\n\t.type\tf, @function\nf:\n"
              "\t.loc 1 2\n\tentry\n\t.iline\t3\n\t.loc 1 3\n\tclear\n"
              "\t.iline\t4\n\t.loc 1 5\n\tload\n\tmultiply\n\tadd\n"
              "\t.loc 1 4\n\tcount\n\tbranch\n\t.iline\t6\n\t.loc 1 6\n\treturn\n"
              "\t.size\tf, .-f\n\t.iendfunc\t8\n");
}

TEST(Placement, AFileIsNamedWhenItChanges) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n\t.file 2 \"b.h\"\n\t.file 3 \"a.c\"\n" +
                             function("f", "\t.loc 1 9\n\tnop\n") +
                             function("square", "\t.loc 3 2\n\tnop\n") +
                             function("h", "\t.loc 2 1\n\tnop\n") +
                             function("square.constprop.0", "\t.loc 1 2\n\tnop\n"),
                         {{"a.c", source}, {"b.h", "int h(void)\n{\n}\n"}}),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iendfunc\t20\n.ifunc\t1\n.iendfunc\t5\n"
              ".ifile\t\"b.h\"\n.ifunc\t1\n.iendfunc\t4\n"
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iendfunc\t5\n");
}

TEST(Placement, FunctionsOnOneLineEachListIt) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n" + function("one", "\t.loc 1 21 15\n\tret\n") +
                             function("two", "\t.loc 1 21 43\n\tret\n"),
                         sources),
              ".ifile\t\"a.c\"\n.ifunc\t21\n.iendfunc\t22\n.ifunc\t21\n.iendfunc\t22\n");
}

TEST(Placement, AFirstPositionInAnotherFileDoesNotMoveTheFunctionThere) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n\t.file 2 \"b.h\"\n" +
                             function("f", "\t.loc 2 3\n\tnop\n\t.loc 1 10\n\tnop\n"),
                         {{"a.c", source}, {"b.h", "int h(void)\n{\n  return 1;\n}\n"}}),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n");
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n\t.file 2 \"missing.h\"\n" +
                             function("_f", "\t.loc 2 3\n\tnop\n\t.loc 1 10\n\tnop\n"),
                         sources),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n");
}

TEST(Placement, MangledNamesLeadToTheirDeclarations) {
    const Sources cpp = {{"a.cpp",
                          "struct Box {\n"                           // 1
                          "  Box() {}\n"                             // 2
                          "  template <class T> T get(T t) const\n"  // 3
                          "  { return t; }\n"                        // 4
                          "  bool operator!() { return false; }\n"   // 5
                          "};\n"                                     // 6
                          "int get(int a) {\n"                       // 7
                          "  return a;\n"                            // 8
                          "}\n"}};
    const std::string file = "\t.file 1 \"a.cpp\"\n";
    EXPECT_EQ(directives(file + function("_Z3geti", "\t.loc 1 5\n\tnop\n\t.loc 1 8\n\tnop\n"), cpp),
              ".ifile\t\"a.cpp\"\n.ifunc\t7\n.iline\t2\n.iendfunc\t10\n");
    EXPECT_EQ(directives(file + function("_ZNK3Box3getIiEET_S1_", "\t.loc 1 4\n\tnop\n"), cpp),
              ".ifile\t\"a.cpp\"\n.ifunc\t3\n.iendfunc\t5\n");
    EXPECT_EQ(directives(file + function("_ZN3BoxC1Ev", "\t.loc 1 2\n\tnop\n"), cpp),
              ".ifile\t\"a.cpp\"\n.ifunc\t2\n.iendfunc\t3\n");
    EXPECT_EQ(directives(file + function("_ZN3BoxntEv", "\t.loc 1 5\n\tnop\n"), cpp),
              ".ifile\t\"a.cpp\"\n.ifunc\t5\n.iendfunc\t6\n");
}

TEST(Placement, AColdPartListsTheLinesItHasCodeOf) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n" +
                             function("f", "\t.loc 1 9\n\tnop\n\t.loc 1 18\n\tret\n") +
                             function("f.cold",
                                      "\t.loc 1 16\n\tnop\n\t.loc 1 3\n\tnop\n"
                                      "\t.loc 1 16\n\tnop\n\t.loc 1 10\n\tnop\n") +
                             function("square.cold.1", "\t.loc 1 3\n\tnop\n") +
                             function("one.cold", "\t.loc 1 3\n\tnop\n"),
                         sources),
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n"
              ".ifunc\t16\n.iendfunc\t17\n.ifunc\t10\n.iendfunc\t11\n"
              ".ifunc\t3\n.iendfunc\t4\n"
              ".ifunc\t3\n.iendfunc\t4\n");
}

TEST(Placement, OnlyPartsThatWereSplitOffAreListedInPieces) {
    const std::string part = "\t.loc 1 16\n\tnop\n\t.loc 1 10\n\tnop\n";
    const std::string pieces =
        ".ifile\t\"a.c\"\n.ifunc\t16\n.iendfunc\t17\n"
        ".ifunc\t10\n.iendfunc\t11\n";
    const std::string whole = ".ifile\t\"a.c\"\n.ifunc\t6\n.iline\t5\n.iendfunc\t20\n";
    const auto placed_as = [&](const std::string& symbol) {
        return directives("\t.file 1 \"a.c\"\n" + function(symbol, part), sources);
    };
    EXPECT_EQ(placed_as("f.cold"), pieces);
    EXPECT_EQ(placed_as("f.cold.12"), pieces);
    EXPECT_EQ(placed_as("f.constprop.0.cold"), pieces);
    EXPECT_EQ(placed_as("f.__part.3"), pieces);
    EXPECT_EQ(placed_as("f.part.0"), whole);
    EXPECT_EQ(placed_as("f.isra.0"), whole);
    EXPECT_EQ(placed_as("f.colder"), whole);
}

// Each copy lists the whole function, wherever its own code begins.
TEST(Placement, CopiesOfAFunctionHaveItsExtent) {
    const std::string text =
        "/* adds up */\n"                             // 1
        "__attribute__((target_clones(\"avx2\")))\n"  // 2
        "int sum(const int* a,\n"                     // 3
        "        int n)\n"                            // 4
        "{\n"                                         // 5
        "    int s = 0;\n"                            // 6
        "    while (n--)\n"                           // 7
        "        s += a[n];\n"                        // 8
        "    return s;\n"                             // 9
        "}\n";
    const std::string body = "\t.loc 1 6\n\tclear\n\t.loc 1 8\n\tadd\n";
    const std::string lines = ".ifunc\t2\n.iline\t5\n.iline\t6\n.iendfunc\t11\n";
    EXPECT_EQ(
        directives("\t.file 1 \"a.c\"\n" + function("sum.default", "\t.loc 1 5\n\tpush\n" + body) +
                       function("sum.avx2", "\t.loc 1 3\n\tpush\n" + body) +
                       function("sum.resolver", "\t.loc 1 2\n\tpush\n") +
                       function("sum.part.0", "\t.loc 1 7\n\tpush\n\t.loc 1 8\n\tadd\n") +
                       function("sum.constprop.0.isra.0", "\t.loc 1 4\n\tpush\n" + body),
                   {{"a.c", text}}),
        ".ifile\t\"a.c\"\n" + lines + lines + ".ifunc\t2\n.iendfunc\t11\n" +
            ".ifunc\t2\n.iline\t5\n.iendfunc\t11\n" + lines);
}

TEST(Placement, CopiesWithoutASourceReachAsFarAsTheirCode) {
    EXPECT_EQ(directives("\t.file 1 \"gone.c\"\n" +
                             function("f", "\t.loc 1 2\n\tpush\n\t.loc 1 8\n\tadd\n") +
                             function("f.part.0", "\t.loc 1 5\n\tpush\n\t.loc 1 7\n\tadd\n") +
                             function("g", "\t.loc 1 12\n\tret\n"),
                         {}),
              ".ifile\t\"gone.c\"\n.ifunc\t2\n.iline\t7\n.iendfunc\t9\n"
              ".ifunc\t5\n.iline\t3\n.iendfunc\t8\n.ifunc\t12\n.iendfunc\t13\n");
}

// The part that resumes a coroutine first jumps to where it stopped, and that code has the
// position of the closing brace.
TEST(Placement, ThePartsOfACoroutineHaveItsExtent) {
    const std::string text =
        "task run(int n)\n"                      // 1
        "{\n"                                    // 2
        "  for (int i = 0; i < n; i++) {\n"      // 3
        "    g(i);\n"                            // 4
        "    co_await std::suspend_always{};\n"  // 5
        "  }\n"                                  // 6
        "}\n";
    EXPECT_EQ(
        directives("\t.file 1 \"a.cpp\"\n" +
                       function("_Z3runPZ3runiE13_Z3runi.Frame.actor",
                                "\t.loc 1 1\n\tpush\n\t.loc 1 7\n\ta\n\tb\n\tc\n\td\n"
                                "\t.loc 1 3\n\te\n\t.loc 1 4\n\tf\n\t.loc 1 5\n\tg\n") +
                       function("_Z3runPZ3runiE13_Z3runi.Frame.destroy", "\t.loc 1 1\n\tret\n") +
                       function("_Z3runi", "\t.loc 1 2\n\tpush\n\t.loc 1 7\n\tret\n"),
                   {{"a.cpp", text}}),
        ".ifile\t\"a.cpp\"\n.ifunc\t1\n.iline\t3\n.iline\t4\n.iline\t5\n.iendfunc\t8\n"
        ".ifunc\t1\n.iendfunc\t8\n.ifunc\t1\n.iline\t3\n.iendfunc\t8\n");
}

// As of a macro that tests and loops, and of its argument.
TEST(Placement, CodeThatReturnsToALineStandsBelowIt) {
    EXPECT_EQ(
        placed("\t.file 1 \"a.c\"\n" +
                   function("f",
                            "\t.loc 1 2\n\tentry\n\t.loc 1 3\n\ttest\n\t.loc 1 4\n\tstore\n"
                            "\t.loc 1 3\n\tload\n\tshift\n\tcount\n\t.loc 1 5\n\treturn\n"),
               {{"a.c", "int f(void)\n{\n    GET(uc);\n    if (uc) STOP();\n    return 1;\n}\n"}}),
        "\t.file 1 \"a.c\"\n\t.ifile\t\"a.c\"\n\t.ifunc\t1\n\t.type\tf, @function\nf:\n"
        "\t.loc 1 2\n\tentry\n\t.iline\t3\n\t.loc 1 3\n\ttest\n"
        "\t.iline\t4\n\t.loc 1 4\n\tstore\n"
        "\t.loc 1 3\n\tload\n\tshift\n\tcount\n"
        "\t.iline\t5\n\t.loc 1 5\n\treturn\n"
        "\t.size\tf, .-f\n\t.iendfunc\t7\n");
}

// An argument of the second line is worked out ahead of the call on the first.
TEST(Placement, AStatementWhoseCodeIsNotInOrderIsListedAsAWhole) {
    const Sources call = {{"a.c", "int f(void)\n{\n    g(1,\n      h());\n    return 1;\n}\n"}};
    EXPECT_EQ(directives(
                  "\t.file 1 \"a.c\"\n" + function("f",
                                                   "\t.loc 1 2\n\tentry\n\t.loc 1 4\n\tcall\th\n"
                                                   "\t.loc 1 3\n\tcall\tg\n\t.loc 1 5\n\treturn\n"),
                  call),
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iline\t3\n.iline\t5\n.iendfunc\t7\n");
    EXPECT_EQ(directives(
                  "\t.file 1 \"a.c\"\n" + function("f",
                                                   "\t.loc 1 2\n\tentry\n\t.loc 1 3\n\tone\n"
                                                   "\t.loc 1 4\n\tcall\th\n\t.loc 1 5\n\treturn\n"),
                  call),
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iline\t3\n.iline\t4\n.iline\t5\n.iendfunc\t7\n");
}

// What a parser generator makes: the actions of the grammar stand in its own function.
TEST(Placement, LinesTakenFromAnotherFileAreListedAboveTheirCode) {
    const std::string parser =
        "int parse(void)\n"        // 1
        "{\n"                      // 2
        "  switch (rule()) {\n"    // 3
        "    case 2:\n"            // 4
        "#line 7 \"calc.y\"\n"     // 5
        "    { value = a + b;\n"   // 6
        "      check(value); }\n"  // 7
        "#line 9 \"calc.c\"\n"     // 8
        "    break;\n"             // 9
        "  }\n"                    // 10
        "  return 0;\n"            // 11
        "}\n";
    const std::string files = "\t.file 1 \"calc.c\"\n\t.file 2 \"calc.y\"\n";
    const std::string code =
        "\t.loc 1 2\n\tentry\n\t.loc 1 3\n\tswitch\n"
        "\t.loc 2 7\n\tadd\n\t.loc 2 8\n\tcall\n"
        "\t.loc 1 9\n\tjump\n\t.loc 1 11\n\treturn\n";
    const Sources sources_of_parser = {{"calc.c", parser}, {"calc.y", "%%\n"}};
    EXPECT_EQ(placed(files + function("parse", code), sources_of_parser),
              files +
                  "\t.ifile\t\"calc.c\"\n\t.ifunc\t1\n\t.type\tparse, @function\nparse:\n"
                  "\t.loc 1 2\n\tentry\n\t.iline\t3\n\t.loc 1 3\n\tswitch\n"
                  "\t.iendfunc\t4\n\t.ifile\t\"calc.y\"\n\t.ifunc\t7\n\t.loc 2 7\n\tadd\n"
                  "\t.iendfunc\t8\n\t.ifunc\t8\n\t.loc 2 8\n\tcall\n"
                  "\t.iendfunc\t9\n\t.ifile\t\"calc.c\"\n\t.ifunc\t4\n\t.iline\t1\n"
                  "\t.loc 1 9\n\tjump\n\t.iline\t7\n\t.loc 1 11\n\treturn\n"
                  "\t.size\tparse, .-parse\n\t.iendfunc\t13\n");
    // Where the other file is not there, its lines are code from elsewhere.
    EXPECT_EQ(directives(files + function("parse", code), {{"calc.c", parser}}),
              ".ifile\t\"calc.c\"\n.ifunc\t1\n.iline\t3\n.iline\t4\n.iline\t10\n.iendfunc\t13\n");
    // Another function of this source has no such lines.
    EXPECT_EQ(directives(files + function("other", "\t.loc 1 14\n\tentry\n\t.loc 2 7\n\tadd\n"),
                         {{"calc.c", parser + "int other(void)\n{\n}\n"}, {"calc.y", ""}}),
              ".ifile\t\"calc.c\"\n.ifunc\t13\n.iendfunc\t16\n");
}

TEST(Placement, AFunctionMayEndInLinesTakenFromAnotherFile) {
    const Sources made = {{"a.c", "int f(void)\n{\n#line 3 \"a.y\"\n  g();\n}\n"}, {"a.y", ""}};
    const std::string files = "\t.file 1 \"a.c\"\n\t.file 2 \"a.y\"\n";
    const std::string code =
        "\t.loc 1 2\n\tentry\n\t.loc 2 3\n\tcall\n\t.loc 2 3 7\n\tcall\n\t.loc 2 4\n\tret\n";
    EXPECT_EQ(directives(files + function("f", code), made),
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iendfunc\t6\n"
              ".ifile\t\"a.y\"\n.ifunc\t3\n.iendfunc\t4\n.ifunc\t4\n.iendfunc\t5\n"
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iendfunc\t6\n");
    EXPECT_EQ(directives(files + function("f", "\t.loc 1 2\n\tret\n") +
                             function("f.cold", "\t.loc 2 3\n\tcall\n\t.loc 1 5\n\tret\n"),
                         made),
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iendfunc\t6\n"
              ".ifile\t\"a.y\"\n.ifunc\t3\n.iendfunc\t4\n"
              ".ifile\t\"a.c\"\n.ifunc\t5\n.iendfunc\t6\n");
    // Its first line is one, code without a line has none.
    EXPECT_EQ(directives(files + function("f",
                                          "\t.loc 1 2\n\tentry\n\t.loc 2 0\n\tnop\n"
                                          "\t.loc 2 1\n\tcall\n"),
                         made),
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iendfunc\t6\n"
              ".ifile\t\"a.y\"\n.ifunc\t1\n.iendfunc\t2\n"
              ".ifile\t\"a.c\"\n.ifunc\t6\n.iendfunc\t6\n");
}

TEST(Placement, WithoutTheSourceTheAssemblyTellsTheExtent) {
    EXPECT_EQ(directives("\t.file 1 \"gone.c\"\n" +
                             function("f",
                                      "\t.loc 1 9\n\tnop\n\t.loc 1 3\n\tnop\n"
                                      "\t.loc 1 15\n\tnop\n\t.loc 1 40\n\tnop\n"
                                      "\t.loc 1 18\n\tnop\n") +
                             function("h", "\t.loc 1 30\n\tret\n"),
                         {}),
              ".ifile\t\"gone.c\"\n.ifunc\t9\n.iline\t7\n.iline\t10\n.iendfunc\t19\n"
              ".ifunc\t30\n.iendfunc\t31\n");
}

TEST(Placement, PositionsBehindTheEndOfAChangedSourceCostNothing) {
    std::string body = "\t.loc 1 100\n\tnop\n";
    for (unsigned line = 1000000000; line < 1000001000; ++line) {
        body += "\t.loc 1 " + std::to_string(line) + "\n\tnop\n\t.loc 1 " +
                std::to_string(line + 1000000000) + "\n\tnop\n";
    }
    const std::string result = directives("\t.file 1 \"a.c\"\n" + function("late", body), sources);
    EXPECT_TRUE(result.starts_with(".ifile\t\"a.c\"\n.ifunc\t100\n.iline\t999999901\n"));
    EXPECT_TRUE(result.ends_with(".iendfunc\t2000001000\n"));
}

TEST(Placement, FunctionsMadeByMacrosKeepToTheirLine) {
    EXPECT_EQ(directives("\t.file 1 \"a.c\"\n" + function("first", "\t.loc 1 1\n\tret\n") +
                             function("second", "\t.loc 1 2\n\tret\n") +
                             function("third", "\t.loc 1 3\n\tret\n"),
                         {{"a.c", "DEFINE(first)\nDEFINE(second)\nint third(void)\n{\n}\n"}}),
              ".ifile\t\"a.c\"\n.ifunc\t1\n.iendfunc\t2\n.ifunc\t2\n.iendfunc\t3\n"
              ".ifunc\t1\n.iendfunc\t6\n");
}

TEST(Placement, AFunctionWithoutPositionsGetsNothing) {
    const std::string text = "\t.file 1 \"a.c\"\n" + function("f", "\tnop\n\t.loc 1 0\n\tnop\n") +
                             function("g", "\t.loc 9 1\n\tnop\n");
    EXPECT_EQ(placed(text, sources), text);
}

TEST(Placement, AFunctionThatAListingWouldDamageGetsNothing) {
    const std::string text =
        "\t.file 1 \"a.c\"\n" + function("f", "\t.loc 1 9\n\tnop # \377\n\t.loc 1 10\n\tnop\n");
    EXPECT_EQ(placed(text, sources), text);
}

TEST(Placement, ALastLineWithoutAnEndStaysTheLast) {
    EXPECT_EQ(placed("\t.file 1 \"a.c\"\n\t.type f, @function\nf:\n\t.loc 1 9\n\tret", sources),
              "\t.file 1 \"a.c\"\n\t.ifile\t\"a.c\"\n\t.ifunc\t6\n\t.type f, @function\nf:\n"
              "\t.loc 1 9\n\t.iendfunc\t20\n\tret");
}

TEST(Placement, AFunctionMayEndWithALineWithoutAnEnd) {
    EXPECT_EQ(
        placed("\t.file 1 \"a.c\"\n\t.type f, @function\nf:\n\t.loc 1 9\n\tret\n\t.size f, .-f",
               sources),
        "\t.file 1 \"a.c\"\n\t.ifile\t\"a.c\"\n\t.ifunc\t6\n\t.type f, @function\nf:\n"
        "\t.loc 1 9\n\tret\n\t.iendfunc\t20\n\t.size f, .-f");
    EXPECT_EQ(placed("\t.file 1 \"a.c\"\nf:\n\t.cfi_startproc\n\t.loc 1 9\n\tret\n\t.cfi_endproc",
                     sources),
              "\t.file 1 \"a.c\"\n\t.ifile\t\"a.c\"\n\t.ifunc\t6\nf:\n\t.cfi_startproc\n"
              "\t.loc 1 9\n\tret\n\t.iendfunc\t20\n\t.cfi_endproc");
}

TEST(Placement, DirectiveLinesEndAsTheOthersDo) {
    EXPECT_EQ(placed("\t.file 1 \"a.c\"\r\n\t.type f, @function\r\nf:\r\n\t.loc 1 9\r\n\tret\r\n",
                     sources),
              "\t.file 1 \"a.c\"\r\n\t.ifile\t\"a.c\"\r\n\t.ifunc\t6\r\n\t.type f, @function\r\n"
              "f:\r\n\t.loc 1 9\r\n\tret\r\n\t.iendfunc\t20\r\n");
}

TEST(SourceNames, BlanksQuotesAndOctalEscapesReachTheDirective) {
    const std::string name = "a \"b\" \303\251.c";
    EXPECT_EQ(directives("\t.file 1 \"a \\\"b\\\" \\303\\251.c\"\n" +
                             function("one", "\t.loc 1 21\n\tret\n"),
                         {{name, source}}),
              ".ifile\t\"a \"b\" \303\251.c\"\n.ifunc\t21\n.iendfunc\t22\n");
}

TEST(SourceNames, ThatNoDirectiveCanCarryAreLeftOut) {
    for (const std::string& name :
         {std::string("a\\012.c"), std::string("<built-in>"), std::string(),
          std::string(16001, 'x'), std::string("a\\000.c")}) {
        const std::string text =
            "\t.file 1 \"" + name + "\"\n" + function("one", "\t.loc 1 21\n\tret\n");
        EXPECT_EQ(placed(text, {}), text);
    }
}

TEST(SourceNames, ADirectoryIsPutBeforeItsFile) {
    const std::string body = function("one", "\t.loc 1 21\n\tret\n");
    const std::string rest = "\n.ifunc\t21\n.iendfunc\t22\n";
    EXPECT_EQ(directives("\t.file 1 \"dir\" \"a.c\"\n" + body, {}), ".ifile\t\"dir/a.c\"" + rest);
    EXPECT_EQ(directives("\t.file 1 \"/dir/\" \"a.c\"\n\t.file \"x.c\"\n" + body, {}),
              ".ifile\t\"/dir/a.c\"" + rest);
    EXPECT_EQ(directives("\t.file 1 \"dir\" \"/abs/a.c\"\n" + body, {}),
              ".ifile\t\"/abs/a.c\"" + rest);
}

// The compilation directory is /dir. A short name is kept where it means the same file.
TEST(SourceNames, ARelativeNameIsLookedForInTheCompilationDirectory) {
    const std::string zero = "\t.file 0 \"/dir\" \"a.c\" md5 0x0\n";
    const std::string one = zero + "\t.file 1 \"a.c\"\n";
    const std::string in_zero = zero + function("one", "\t.loc 0 21\n\tret\n");
    const std::string in_one = one + function("one", "\t.loc 1 21\n\tret\n");
    const std::string rest = "\n.ifunc\t21\n.iendfunc\t22\n";
    for (const std::string& text : {in_zero, in_one}) {
        EXPECT_EQ(directives(text, {{"a.c", source}, {"/dir/a.c", source}}),
                  ".ifile\t\"a.c\"" + rest);
        EXPECT_EQ(directives(text, {{"a.c", "another"}, {"/dir/a.c", source}}),
                  ".ifile\t\"/dir/a.c\"" + rest);
        EXPECT_EQ(directives(text, {{"/dir/a.c", source}}), ".ifile\t\"/dir/a.c\"" + rest);
        EXPECT_EQ(directives(text, {{"a.c", source}}), ".ifile\t\"a.c\"" + rest);
    }
    EXPECT_EQ(directives(in_zero, {}), ".ifile\t\"/dir/a.c\"" + rest);
    EXPECT_EQ(directives(in_one, {}), ".ifile\t\"a.c\"" + rest);
}

TEST(SourceNames, ASourceIsReadOnce) {
    int reads = 0;
    const source_access access{
        .read = [&](const std::string&) -> std::optional<text_file> {
            ++reads;
            return text_file::of(source);
        },
        .same = [](const std::string&, const std::string&) { return false; },
    };
    const std::string text = "\t.file 1 \"/dir/a.c\"\n" +
                             function("square", "\t.loc 1 3\n\tret\n") +
                             function("f", "\t.loc 1 9\n\tret\n");
    interlisted_text result{.assembly = text};
    EXPECT_FALSE(place_directives(result, {}, access));
    EXPECT_EQ(reads, 1);
}

TEST(SourceNames, TheFirstMapThatFitsIsUsed) {
    const std::string text =
        "\t.file 0 \"/dir\" \"src/a.c\"\n" + function("one", "\t.loc 0 21\n\tret\n");
    const std::string rest = "\n.ifunc\t21\n.iendfunc\t22\n";
    EXPECT_EQ(directives(text, {}, {{"/other", "x"}, {"/dir/src", "moved"}, {"/dir", "y"}}),
              ".ifile\t\"moved/a.c\"" + rest);
    const std::string relative = "\t.file 0 \"/dir\" \"x.c\"\n\t.file 1 \"src/a.c\"\n" +
                                 function("one", "\t.loc 1 21\n\tret\n");
    EXPECT_EQ(directives(relative, {}, {{"src/", ""}}), ".ifile\t\"a.c\"" + rest);
    EXPECT_EQ(directives(relative, {}, {{"/dir", "/new"}}), ".ifile\t\"/new/src/a.c\"" + rest);
}

// The interlister drops these bytes from the lines of a function.
TEST(Placement, AFunctionWithBytesThatAListingLosesGetsNone) {
    const auto has_directives = [](const std::string& body) {
        const std::string text =
            "\t.file 1 \"a.c\"\n" + function("f", "\t.loc 1 1\n" + body + "\n");
        return placed(text, {}) != text;
    };
    EXPECT_TRUE(has_directives("\tnop # \351\376\001"));
    EXPECT_FALSE(has_directives("\tnop # \377"));
    EXPECT_FALSE(has_directives("\tnop # \032"));
    EXPECT_TRUE(has_directives("\tnop # " + std::string(20000, 'x')));
    EXPECT_TRUE(has_directives("\tnop\r"));
    EXPECT_FALSE(has_directives("\tnop # " + std::string(20000, 'x') + "\r"));
    // Of a line of this size the interlister reads one piece, and of one byte more it counts
    // two where it copies one.
    constexpr std::size_t limit = 16383;
    const std::string longest = "\tnop # " + std::string(limit - 9, 'x') + "\r";
    EXPECT_TRUE(has_directives(longest));
    EXPECT_FALSE(has_directives("x" + longest));
}
