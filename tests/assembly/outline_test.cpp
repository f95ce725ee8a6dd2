// Where functions begin and end in C and C++ texts.
#include "assembly/outline.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using namespace assembly;

namespace {

using Texts = std::vector<std::string>;

// The functions of a text as "FIRST-OPEN-LAST" line numbers.
Texts functions(std::string_view text) {
    Texts result;
    for (const source_block& it : outline_source(text).blocks) {
        if (it.kind == block_kind::function) {
            result.push_back(std::to_string(it.header_line) + "-" + std::to_string(it.open_line) +
                             "-" + std::to_string(it.close_line));
        }
    }
    return result;
}

std::string span(const source_outline& outline, std::size_t block) {
    return block == no_block ? "none"
                             : std::to_string(outline.blocks[block].header_line) + "-" +
                                   std::to_string(outline.blocks[block].close_line);
}

}  // namespace

TEST(SourceOutline, AFunctionBeginsWithTheFirstWordOfItsDeclaration) {
    EXPECT_EQ(functions("int v;\n"
                        "/* f */\n"
                        "static int\n"
                        "f(int a,\n"
                        "  int b)\n"
                        "{\n"
                        "    return a;\n"
                        "}\n"),
              Texts{"3-6-8"});
}

TEST(SourceOutline, CommentsLiteralsAndDirectivesHideTheirBraces) {
    EXPECT_EQ(functions("void f(void) {\n"
                        "  // {\n"
                        "  /* { \n"
                        "     { */ char c = '{', d = '\\'', e = '\"';\n"
                        "  const char *s = \"{\\\"{\\\\\";\n"
                        "#define OPEN { /* {\n"
                        "{ */ {\n"
                        "#define LONG { \\\n"
                        "  {\n"
                        "}\n"
                        "void g(void) {}\n"),
              (Texts{"1-1-10", "11-11-11"}));
}

TEST(SourceOutline, ALiteralWithoutAnEndEndsWithItsLine) {
    EXPECT_EQ(functions("void f(void) {\n#error don't {\n  x = ';\n}\nvoid g(void) {\n}\n"),
              (Texts{"1-1-4", "5-5-6"}));
}

TEST(SourceOutline, RawStringsAndDigitSeparatorsAreOneToken) {
    EXPECT_EQ(functions("void f() {\n"
                        "  auto s = R\"(}\"{)\";\n"
                        "  auto t = u8R\"x(\n"
                        "}})\")x\";\n"
                        "  int n = 1'000'000, m = 0x1'F;\n"
                        "}\n"),
              Texts{"1-1-6"});
}

TEST(SourceOutline, OldStyleParametersBelongToTheFunction) {
    EXPECT_EQ(functions("int g(int);\n"
                        "int f(a, b)\n"
                        "  int a;\n"
                        "  char *b;\n"
                        "{\n"
                        "}\n"
                        "int h(int);\n"
                        "struct s { int a; };\n"),
              Texts{"2-5-6"});
}

TEST(SourceOutline, ControlStatementsInitializersAndScopesAreNoFunctions) {
    EXPECT_EQ(functions("struct s { int a; };\n"
                        "int v[] = { 1, 2 };\n"
                        "enum e { A, B };\n"
                        "extern \"C\" {\n"
                        "namespace n EXPORTED(x) {\n"
                        "class EXPORTED(x) c final {\n"
                        "};\n"
                        "struct s f(void) {\n"
                        "  if (a) { } else { }\n"
                        "  for (;;) { }\n"
                        "  while (x) { }\n"
                        "  switch (x) { case 1: { } }\n"
                        "  do { } while (0);\n"
                        "  each(x, y) { }\n"
                        "  struct s t = { .a = (int){ 1 } };\n"
                        "  use((struct s){ 1 });\n"
                        "  int n = ({ int m = 1; m; });\n"
                        "}\n"
                        "} }\n"),
              Texts{"8-8-18"});
}

TEST(SourceOutline, MembersConstructorsOperatorsAndLambdasAreFunctions) {
    EXPECT_EQ(functions("template <typename T, int N = 3>\n"
                        "struct S : Base<T> {\n"
                        "  S() : a{1},\n"
                        "        b(2)\n"
                        "  {\n"
                        "  }\n"
                        "  int operator()(int x) const { return x; }\n"
                        "  bool operator==(const S&) const noexcept {\n"
                        "    return true;\n"
                        "  }\n"
                        "  int a{0};\n"
                        "};\n"
                        "void f(S s = {}) {\n"
                        "  auto g = [&](int x) {\n"
                        "    return x;\n"
                        "  };\n"
                        "  each(v, [] {\n"
                        "  });\n"
                        "  v[0] = S{1};\n"
                        "}\n"
                        "auto h() -> decltype(v) {\n"
                        "}\n"),
              (Texts{"3-5-6", "7-7-7", "8-8-10", "13-13-20", "14-14-16", "17-17-18", "21-21-22"}));
}

TEST(SourceOutline, BothBranchesOfAConditionalOpenOneFunction) {
    EXPECT_EQ(functions("#ifdef A\n"
                        "int f(int a) {\n"
                        "#else\n"
                        "int f(void) {\n"
                        "#endif\n"
                        "  return 0;\n"
                        "}\n"
                        "int g(void) {\n"
                        "}\n"),
              (Texts{"2-2-7", "4-4-7", "8-8-9"}));
}

TEST(SourceOutline, ABraceThatOnlyOneBranchOpensIsClosedByALaterConditional) {
    EXPECT_EQ(functions("int f(int a) {\n"
                        "#ifdef A\n"
                        "  if (a) {\n"
                        "#else\n"
                        "  a++;\n"
                        "#endif\n"
                        "  a--;\n"
                        "#ifdef A\n"
                        "  }\n"
                        "#endif\n"
                        "}\n"
                        "int g(void) {\n"
                        "}\n"),
              (Texts{"1-1-11", "12-12-13"}));
}

TEST(SourceOutline, AParenthesisLeftOpenDoesNotHideTheBodiesBehindIt) {
    EXPECT_EQ(functions("#ifdef A\n"
                        "CHECK(\n"
                        "#endif\n"
                        "int f(void)\n"
                        "{\n"
                        "  return v[0;\n"
                        "}\n"
                        "int g(void) {\n"
                        "  auto h = [] {\n"
                        "  };\n"
                        "}\n")
                  .size(),
              3U);
}

TEST(SourceOutline, DisabledTextIsNotRead) {
    EXPECT_EQ(functions("#if 0\n"
                        "isn't { read\n"
                        "# if X\n"
                        "{ {\n"
                        "# endif\n"
                        "#else\n"
                        "int f(void) {\n"
                        "#endif\n"
                        "}\n"),
              Texts{"7-7-9"});
}

TEST(SourceOutline, AMacroAheadOfADeclarationIsNoPartOfItAcrossABlankLine) {
    EXPECT_EQ(functions("BEGIN_DECLARATIONS\n\nint f(void)\n{\n}\n"), Texts{"3-4-5"});
}

TEST(SourceOutline, AMissingBraceIsTakenToBeAtTheEnd) {
    EXPECT_EQ(functions("int f(void) {\n  if (x) {\n}\n\n"), Texts{"1-1-5"});
    EXPECT_EQ(functions("}}}\nint f(void) {\n}\n"), Texts{"2-2-3"});
}

TEST(SourceOutline, StatementsEndAtSemicolonsAndBlockBraces) {
    const source_outline outline = outline_source(
        "void f(int a) {\n"       // 1 {
        "  int v[] = { 1,\n"      // 2
        "    2 };\n"              // 3 ;
        "  for (int i = 0; i;\n"  // 4
        "       i++) {\n"         // 5 {
        "    a = g(a,\n"          // 6
        "          a); // x\n"    // 7 ;
        "    /* y */\n"           // 8
        "  }\n"                   // 9 }
        "}");                     // 10 }
    std::vector<unsigned> ends;
    for (unsigned line = 1; line <= 10; ++line) {
        if (outline.statement_end[line]) {
            ends.push_back(line);
        }
    }
    EXPECT_EQ(ends, (std::vector<unsigned>{1, 3, 5, 7, 9, 10}));
}

TEST(SourceLookup, AFunctionIsFoundByAnyLineOfItsDeclaration) {
    const source_outline outline = outline_source("int\nf(int a)\n{\n  if (a) {\n  }\n}\n");
    EXPECT_EQ(span(outline, function_declared_at(outline, 1, "")), "1-6");
    EXPECT_EQ(span(outline, function_declared_at(outline, 3, "")), "1-6");
    EXPECT_EQ(span(outline, function_declared_at(outline, 4, "")), "none");
    EXPECT_EQ(span(outline, function_around(outline, 4)), "1-6");
    EXPECT_EQ(span(outline, function_around(outline, 7)), "none");
}

TEST(SourceLookup, TheNameTellsFunctionsOnOneLineApart) {
    const source_outline outline =
        outline_source("int f(void) { return 1; } int g(void) {\n  return 2;\n}\n");
    EXPECT_EQ(span(outline, function_declared_at(outline, 1, "f")), "1-1");
    EXPECT_EQ(span(outline, function_declared_at(outline, 1, "g")), "1-3");
    EXPECT_EQ(span(outline, function_declared_at(outline, 1, "x")), "1-1");
}

TEST(SourceLookup, ADeclarationHasANameOnlyAsAWholeWord) {
    const source_outline outline = outline_source("int foobar(int bar) { }\n");
    EXPECT_TRUE(declares(outline, 0, "foobar"));
    EXPECT_TRUE(declares(outline, 0, "bar"));
    EXPECT_FALSE(declares(outline, 0, "foo"));
    EXPECT_FALSE(declares(outline, 0, "oobar"));
    EXPECT_FALSE(declares(outline, 0, "ob"));
    EXPECT_FALSE(declares(outline, 0, ""));
}

TEST(SourceLookup, AnyTextHasAnOutline) {
    for (const std::string_view text :
         {"", "#", "\\", "'", "\"", "/*", "R\"", "R\"(", "#if", "#endif\n#else\n", "{", "}", "1'",
          "a(", ")]}", "[", "#if 0\n", "//\\", "operator()"}) {
        const source_outline outline = outline_source(text);
        EXPECT_EQ(span(outline, function_around(outline, 1)), "none") << text;
    }
}

TEST(Outline, LinesThatWereTakenFromElsewhereAreTold) {
    const source_outline outline = outline_source(
        "#line 7 \"a.y\"\nint f(void)\n{\n  #  line 8 \"b \\\"c\\\".y\" // taken\n#line 9\n"
        "#if 0\n#line 3 \"no.y\"\n#endif\n#line X \"\n}\n#line 5 \"a.c\"");
    ASSERT_EQ(outline.origins.size(), 3U);
    EXPECT_EQ(outline.origins[0].line, 1U);
    EXPECT_EQ(outline.origins[0].file, "a.y");
    EXPECT_EQ(outline.origins[1].line, 4U);
    EXPECT_EQ(outline.origins[1].file, "b \\\"c\\\".y");
    EXPECT_EQ(outline.origins[2].line, 11U);
    EXPECT_EQ(outline.origins[2].file, "a.c");
}
