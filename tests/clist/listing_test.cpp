// Listings in every form, of small assembly texts as compilers write them.
#include "clist/listing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assembly/text_file.h"
#include "tests/clist/listed.h"

using namespace clist;

namespace {

using change = std::function<void(listing_options&)>;

listed list(
    const std::vector<std::pair<std::string, std::string>>& texts,
    const change& set = [](listing_options&) {}) {
    listing_options options;
    options.source_map = {{"/src", "../data/inlined"}, {"/usr/include", "../data/library"}};
    set(options);
    std::vector<listing_input> inputs;
    for (const auto& [name, text] : texts) {
        inputs.push_back({.name = name,
                          .text = text,
                          .target = {},
                          .directory = {},
                          .modified = 0,
                          .command = {}});
    }
    return ::list(inputs, options);
}

// The listing of one text that there is nothing to say of.
std::string code(
    const std::string& text, const change& set = [](listing_options&) {}) {
    const listed it = list({{"t.s", text}}, set);
    EXPECT_EQ(it.messages, "");
    EXPECT_EQ(it.status, 0);
    return it.text;
}

std::string file(const std::string& name) {
    const std::optional<assembly::text_file> found = assembly::text_file::open("../data/" + name);
    EXPECT_TRUE(found) << name;
    return found ? std::string(found->text()) : "";
}

void all(listing_options& options) {
    options.all = true;
}
void own_sources(listing_options& options) {
    options.source_map[0].second = "../data/library";
    options.own_sources = true;
}

// Without warnings, of sources that are not there and the like.
void quiet(listing_options& options) {
    options.warnings = false;
}

// A function of these lines.
std::string function(const std::string& name, const std::string& body) {
    return "\t.text\n\t.globl\t" + name + "\n\t.type\t" + name + ", @function\n" + name +
           ":\n.LFB0:\n\t.cfi_startproc\n" + body + "\t.cfi_endproc\n.LFE0:\n\t.size\t" + name +
           ", .-" + name + "\n";
}

}  // namespace

TEST(CodeListing, ShowsTheLineWheneverTheCodeMovesToAnother) {
    EXPECT_EQ(code(file("inlined/gcc_5.s")),
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
              "\tret\n");
}

TEST(CodeListing, TellsOwnSourcesFromLibraries) {
    const change sources = [](listing_options& options) {
        options.source_map[0].second = "../data/library";
    };
    const std::string begin =
        "use:\n"
        "# use.c:6 |     *result = 0;\n"
        "\tmovl\t$0, (%rsi)\n";
    const std::string end =
        "# use.c:7 |     return measure(p) * 5;\n"
        "\tleal\t15(%rax,%rax,4), %eax\n"
        "# use.c:8 | }\n"
        "\tret\n";
    EXPECT_EQ(code(file("library/use.s"), sources),
              begin +
                  "# pair.h:6 |     return x * 19;\n"
                  "# inlined: twice at pair.h:9 in sum, at use.c:3 in measure, at use.c:7 in use\n"
                  "\tmovl\t(%rdi), %eax\n"
                  "\tleal\t(%rax,%rax,8), %edx\n"
                  "\tleal\t(%rax,%rdx,2), %eax\n"
                  "# pair.h:10 |         + p->second;\n"
                  "# inlined: sum at use.c:3 in measure, at use.c:7 in use\n"
                  "\taddl\t4(%rdi), %eax\n" +
                  end);
    EXPECT_EQ(code(file("library/use.s"), own_sources),
              begin +
                  "# use.c:3 |     return sum(p) + 3;\n"
                  "# inlined: sum at use.c:3 in measure, at use.c:7 in use\n"
                  "\tmovl\t(%rdi), %eax\n"
                  "\tleal\t(%rax,%rax,8), %edx\n"
                  "\tleal\t(%rax,%rdx,2), %eax\n"
                  "\taddl\t4(%rdi), %eax\n" +
                  end);
}

TEST(CodeListing, ALibrarysOwnFunctionKeepsItsLines) {
    const std::string text =
        "\t.file 1 \"/usr/include/pair.h\"\n" + function("sum", "\t.loc 1 9\n\tnop\n");
    EXPECT_EQ(code(text, own_sources), "sum:\n# pair.h:9 |     return twice(p->first)\n\tnop\n");
}

TEST(CodeListing, FoldersGivenForSystemHeadersAreALibrarys) {
    const std::string text = file("library/use.s");
    const change vendor = [](listing_options& options) {
        own_sources(options);
        options.source_map[1].first = "/src/vendor";
        options.system_directories = {"vendor"};
    };
    std::string moved = text;
    for (std::size_t at = moved.find("/usr/include"); at != std::string::npos;
         at = moved.find("/usr/include")) {
        moved.replace(at, 12, "/src/vendor");
    }
    EXPECT_EQ(code(moved, vendor), code(text, own_sources));
}

TEST(CodeListing, KeepsWhatIsCodeAndWhatCodeRefersTo) {
    const std::string text =
        "\t.file 1 \"no.c\"\n"
        "\t.section\t.rodata.str1.1,\"aMS\",@progbits,1\n"
        ".LC0:\n"
        "\t.string\t\"used\"\n"
        ".LC1:\n"
        "\t.string\t\"not used\"\n" +
        function("f",
                 "\t.loc 1 3\n"
                 "\tleaq\t.LC0(%rip), %rdi\n"
                 "\tjmp\t*.L4(,%rax,8)\n"
                 "\t.section\t.rodata\n"
                 "\t.align 8\n"
                 ".L4:\n"
                 "\t.quad\t.L3\n"
                 "\t.text\n"
                 "\t.p2align 4\n"
                 ".L3:\n"
                 ".LVL1:\n"
                 "\t.loc 1 0\n"
                 "\tnop\n"
                 "# a remark\n"
                 ".L9:\n"
                 "\n"
                 "\tret\n") +
        function("g", "\tcall\tf\n\tleaq\t.LC0(%rip), %rdi\n") +
        "\t.section\t.debug_info,\"\",@progbits\n\t.long 0\n";
    EXPECT_EQ(list({{"t.s", text}}, quiet).text,
              "f:\n"
              "# no.c:3 | \n"
              "\tleaq\t.LC0(%rip), %rdi\n"
              "\tjmp\t*.L4(,%rax,8)\n"
              ".L3:\n"
              "# no line\n"
              "\tnop\n"
              "\tret\n"
              ".LC0:\n"
              "\t.string\t\"used\"\n"
              ".L4:\n"
              "\t.quad\t.L3\n"
              "\n"
              "g:\n"
              "# no line\n"
              "\tcall\tf\n"
              "\tleaq\t.LC0(%rip), %rdi\n");
}

// A label is shown where an operand names it, however long the line and wherever in it.
TEST(CodeListing, ShowsTheLabelsThatOperandsName) {
    const struct {
        const char* word;
        const char* before;
        const char* behind;
        bool is_named;
    } rows[] = {
        {"jmp", "", "", true},
        {"jmp", "*", "(,%rax,8)", true},
        {"movl", "$", ", %eax", true},
        {"leaq", "-8+", "(%rip), %rax", true},
        {"movq", "%fs:", "@tpoff, %rax", true},
        {"lock addl", "$1, ", "(%rip)", true},
        {"movl", "%eax, (%rbx,%rcx,8), ", "", true},
        {"add", "x0, x0, :lo12:", "", true},
        {"ldr", "w0, [x1,#", "]", true},
        {"call", "\"", "\"", true},
        {"b.eq", "", "", true},
        {"movl", "%", ", %eax", false},
        {"movl", "$1", ", %eax", false},
        {"jmp", "x", "", false},
        {"jmp", "", "x", false},
        {"movl", "%ebx", ", %eax", false},
    };
    for (const auto& row : rows) {
        for (std::size_t blanks = 0; blanks < 40; ++blanks) {
            std::string line = "\t";
            line.append(row.word).append("\t").append(blanks, ' ');
            line.append(row.before).append(".L7").append(row.behind).append("\n");
            EXPECT_EQ(list({{"t.s", function("f", line + ".L7:\n\tret\n")}}, quiet).text,
                      "f:\n# no line\n" + line + (row.is_named ? ".L7:\n" : "") + "\tret\n");
        }
    }
}

// What a large text has is looked through in several pieces and at the same time.
TEST(CodeListing, OfALargeTextHasAllThatASmallOneHas) {
    std::string text;
    std::string expected;
    for (unsigned i = 0; text.size() < (std::size_t{3} << 19); ++i) {
        const std::string number = std::to_string(i);
        text += "\t.section\t.rodata\n.LC" + number + ":\n\t.string\t\"" + number + "\"\n";
        text += function("f" + number, "\tmovl\t$.LC" + number + ", %edi\n\tjne\t.L" + number +
                                           "\n.LVL" + number + ":\n\tnop\n.L" + number +
                                           ":\n\tjmp\tputs\n");
        expected += (i == 0 ? "f" : "\nf") + number + ":\n# no line\n\tmovl\t$.LC" + number +
                    ", %edi\n\tjne\t.L" + number + "\n\tnop\n.L" + number + ":\n\tjmp\tputs\n.LC" +
                    number + ":\n\t.string\t\"" + number + "\"\n";
    }
    EXPECT_EQ(list({{"t.s", text}}, quiet).text, expected);
}

// Sources have lines of any length, many of them empty.
TEST(CodeListing, ShowsTheLinesOfLargeSources) {
    std::string source;
    std::string body;
    std::string expected = "f:\n";
    for (unsigned i = 1; i <= 3000; ++i) {
        const std::string line(i % 50 < 20 ? 0 : i * 7 % 150, static_cast<char>('a' + i % 26));
        const std::string end = i % 3 == 0 ? "\r\n" : "\n";
        source += line + (i == 3000 ? "" : end);
        body += "\t.loc 1 " + std::to_string(i) + "\n\tnop\n";
        expected += "# lines.c:" + std::to_string(i) + " | " + line + "\n\tnop\n";
    }
    const std::string folder = testing::TempDir();
    std::ofstream(folder + "/lines.c") << source;
    EXPECT_EQ(code("\t.file 1 \"/src/lines.c\"\n" + function("f", body),
                   [&](listing_options& options) {
                       options.source_map = {{"/src", folder}};
                   }),
              expected);
    std::filesystem::remove(folder + "/lines.c");
}

TEST(CodeListing, DataLeadToFurtherData) {
    const std::string text = function("f", "\tmovq\tnames(%rip), %rax\n") +
                             "\t.data\n"
                             "\t.align 8\n"
                             "\t.type\tnames, @object\n"
                             "\t.size\tnames, 16\n"
                             "names:\n"
                             "\t.quad\t.LC0\n"
                             "\t.quad\tf\n"
                             "\t.globl\tother\n"
                             "other:\n"
                             "\t.long\t1\n"
                             "\t.section\t.rodata\n"
                             ".LC0:\n"
                             "\t.string\t\"first\"\n";
    EXPECT_EQ(list({{"t.s", text}}, quiet).text,
              "f:\n# no line\n\tmovq\tnames(%rip), %rax\n"
              "names:\n\t.quad\t.LC0\n\t.quad\tf\n"
              ".LC0:\n\t.string\t\"first\"\n");
}

TEST(CodeListing, DataAreReachedFromAnAnchorToo) {
    const std::string text =
        "\t.arch armv7-a\n\t.eabi_attribute 28, 1\n" +
        function("f", "\tldr\tr3, .L3\n\tbx\tlr\n.L4:\n\t.align 2\n.L3:\n\t.word\t.LANCHOR0\n") +
        "\t.bss\n\t.align 2\n\t.set\t.LANCHOR0,. + 0\n"
        "\t.type\tcounter, %object\ncounter:\n\t.space\t4\nother:\n\t.space\t4\n";
    EXPECT_EQ(list({{"t.s", text}}, quiet).text,
              "f:\n@ no line\n\tldr\tr3, .L3\n\tbx\tlr\n.L3:\n\t.word\t.LANCHOR0\n"
              ".LANCHOR0:\ncounter:\n\t.space\t4\nother:\n\t.space\t4\n");
}

TEST(CodeListing, KeepsInlineAssemblyWhole) {
    const std::string text = "\t.file 1 \"no.c\"\n" + function("f",
                                                               "\t.loc 1 3\n"
                                                               "\tnop\n"
                                                               "\t.loc 1 4\n"
                                                               "#APP\n"
                                                               "# 4 \"no.c\" 1\n"
                                                               "\tcpuid; rdtsc\n"
                                                               "\t.byte\t0x0f, 0x0b\n"
                                                               "\n"
                                                               "1:\tpause\n"
                                                               "\t.pushsection .mine,\"a\"\n"
                                                               "\t.long\t1b\n"
                                                               "\t.popsection\n"
                                                               "\t.macro m\n"
                                                               "\thlt\n"
                                                               "\t.endm\n"
                                                               "# 0 \"\" 2\n"
                                                               "\t.loc 1 5\n"
                                                               ".LVL3:\n"
                                                               "#NO_APP\n"
                                                               "\tret\n");
    EXPECT_EQ(list({{"t.s", text}}, quiet).text,
              "f:\n"
              "# no.c:3 | \n"
              "\tnop\n"
              "#APP\n"
              "# no.c:4 | \n"
              "\tcpuid; rdtsc\n"
              "\t.byte\t0x0f, 0x0b\n"
              "1:\tpause\n"
              "\t.pushsection .mine,\"a\"\n"
              "\t.long\t1b\n"
              "\t.popsection\n"
              "\t.macro m\n"
              "\thlt\n"
              "\t.endm\n"
              "#NO_APP\n"
              "# no.c:5 | \n"
              "\tret\n");
}

TEST(CodeListing, ChosenLinesHaveInlineAssemblyWholeOrNotAtAll) {
    const std::string text = "\t.file 1 \"no.c\"\n" + function("f",
                                                               "\t.loc 1 3\n"
                                                               "\tnop\n"
                                                               "\t.loc 1 4\n"
                                                               "#APP\n"
                                                               "\t.p2align 4\n"
                                                               "\tpause\n"
                                                               "\t.byte\t0x0f, 0x0b\n"
                                                               "#NO_APP\n"
                                                               "#APP\n"
                                                               "\t.long\t1\n"
                                                               "#NO_APP\n"
                                                               "\t.loc 1 5\n"
                                                               "\tret\n");
    const auto listed = [&](std::uint32_t line) {
        return list({{"t.s", text}},
                    [&](listing_options& options) {
                        quiet(options);
                        options.lines = {{"no.c", line, line}};
                    })
            .text;
    };
    EXPECT_EQ(listed(5),
              "f:\n"
              "# no.c:5 | \n"
              "\tret\n");
    EXPECT_TRUE(
        listed(4).starts_with("f:\n"
                              "#APP\n"
                              "\t.p2align 4\n"
                              "# no.c:4 | \n"
                              "\tpause\n"
                              "\t.byte\t0x0f, 0x0b\n"
                              "#NO_APP\n"))
        << listed(4);
}

TEST(CodeListing, DemanglesLabelsAndOperands) {
    const std::string text = function("_ZN1A1fEi",
                                      "\tcall\t_ZN1A1gEv@PLT\n\tleaq\t_ZN1A5countE(%rip), %rax\n"
                                      "\tmovl\t$_Z1hv, %edi\n\tcall\t_Znothing\n");
    EXPECT_EQ(list({{"t.s", text}}, quiet).text,
              "A::f(int):\n# no line\n\tcall\tA::g()@PLT\n\tleaq\tA::count(%rip), %rax\n"
              "\tmovl\t$h(), %edi\n\tcall\t_Znothing\n");
    const change mangled = [](listing_options& options) {
        quiet(options);
        options.mangled = true;
    };
    EXPECT_EQ(list({{"t.s", text}}, mangled).text,
              "_ZN1A1fEi:\n# no line\n\tcall\t_ZN1A1gEv@PLT\n\tleaq\t_ZN1A5countE(%rip), %rax\n"
              "\tmovl\t$_Z1hv, %edi\n\tcall\t_Znothing\n");
}

TEST(CodeListing, WritesCommentsAsTheTargetsAssemblerDoes) {
    const struct {
        const char* head;
        const char* comment;
    } rows[] = {
        {"", "#"},
        {"\t.arch armv8-a\n", "//"},
        {"\t.syntax unified\n", "@"},
        {"__SP_H__ = 0x3d\n", ";"},
        {"\t.section\t__TEXT,__text,regular\n\t.globl\t_x ; -- Begin function x\n", ";"},
        {"\t.option pic\n", "#"},
        {"\t.abiversion 2\n", "#"},
    };
    for (const auto& row : rows) {
        const std::string text = row.head + function("f", "\tnop\n");
        EXPECT_EQ(list({{"t.s", text}}, quiet).text,
                  std::string("f:\n") + row.comment + " no line\n\tnop\n");
    }
    EXPECT_EQ(list({{"t.s", function("f", "\tnop\n")}},
                   [](listing_options& options) {
                       quiet(options);
                       options.comment = ";;";
                   })
                  .text,
              "f:\n;; no line\n\tnop\n");
}

// "# 12" would be a line marker for the assembler.
TEST(CodeListing, NamesOfFilesAreUniqueAndNeverReadAsMarkers) {
    const std::string text =
        "\t.file 0 \"/d\" \"7zip.c\"\n"
        "\t.file 1 \"one/same.h\"\n"
        "\t.file 2 \"two/same.h\"\n"
        "\t.file 3 \"two/other.h\"\n"
        "\t.file 4 \" 12 \\\"x\\\"\"\n"
        "\t.file 5 \"line\\nend.h\"\n"
        "\t.file 6 \"two/unused/other.h\"\n" +
        function("f",
                 "\t.loc 0 1\n\tnop\n\t.loc 1 2\n\tnop\n\t.loc 2 3\n\tnop\n\t.loc 3 4\n\tnop\n"
                 "\t.loc 4 5\n\tnop\n\t.loc 5 6\n\tnop\n");
    EXPECT_EQ(list({{"t.s", text}}, quiet).text,
              "f:\n"
              "# ./7zip.c:1 | \n\tnop\n"
              "# one/same.h:2 | \n\tnop\n"
              "# two/same.h:3 | \n\tnop\n"
              "# other.h:4 | \n\tnop\n"
              "# ./ 12 \"x\":5 | \n\tnop\n"
              "# line?end.h:6 | \n\tnop\n");
}

TEST(CodeListing, PartsFunctionsByABlankLine) {
    const std::string text = function("f", "\tnop\n");
    EXPECT_EQ(list({{"a.s", text}, {"b.s", function("g", "\tret\n")}}, quiet).text,
              "f:\n# no line\n\tnop\n\ng:\n# no line\n\tret\n");
}

TEST(CodeListing, IsColoredOnDemand) {
    const std::string text =
        code(file("inlined/gcc_5.s"), [](listing_options& options) { options.color = true; });
    EXPECT_TRUE(
        text.starts_with("\x1b[33mouter:\x1b[0m\n"
                         "\x1b[36m# inlined.c:11 |     *result = a;\x1b[0m\n"
                         "\tmovl\t%edi, (%rdx)\n"
                         "\x1b[35m# inlined.c:2 |     return x * x;\x1b[0m\n"
                         "\x1b[35m# inlined: square at "))
        << text;
}

// --- Every line kept ---

TEST(WholeListing, AddsNothingButComments) {
    const std::string text = file("inlined/gcc_5.s");
    const std::string listing = code(text, all);
    std::string rest;
    std::string added;
    for (std::size_t at = 0; at < listing.size();) {
        const std::size_t end = listing.find('\n', at) + 1;
        (listing.compare(at, 2, "# ") == 0 ? added : rest) += listing.substr(at, end - at);
        at = end;
    }
    EXPECT_EQ(rest, text);
    EXPECT_EQ(added,
              "# inlined.c:11 |     *result = a;\n"
              "# inlined.c:2 |     return x * x;\n"
              "# inlined: square at inlined.c:7 in sum_of_squares, at inlined.c:12 in outer\n"
              "# inlined.c:2 |     return x * x;\n"
              "# inlined: square at inlined.c:6 in sum_of_squares, at inlined.c:12 in outer\n"
              "# inlined.c:12 |     return sum_of_squares(a, b) - 7;\n"
              "# inlined.c:13 | }\n");
}

TEST(WholeListing, PutsCommentsAheadOfTheirCodeWithItsLineEnds) {
    EXPECT_EQ(
        code("\t.file 1 \"/src/inlined.c\"\r\nf:\tnop\r\n\t.loc 1 3\r\nx: y: nop; nop\r\n", all),
        "\t.file 1 \"/src/inlined.c\"\r\n# no line\r\nf:\tnop\r\n\t.loc 1 3\r\n"
        "# inlined.c:3 | }\r\nx: y: nop; nop\r\n");
    EXPECT_EQ(code("\t.file 1 \"/src/inlined.c\"\nf:\n\t.loc 1 3\n\tnop", all),
              "\t.file 1 \"/src/inlined.c\"\nf:\n\t.loc 1 3\n# inlined.c:3 | }\n\tnop");
}

TEST(WholeListing, OfAFunctionHasAllItsLines) {
    const std::string text = function("f", "\tnop\n") + function("g", "\tret\n");
    EXPECT_EQ(list({{"t.s", text}},
                   [](listing_options& options) {
                       quiet(options);
                       options.all = true;
                       options.functions = {"g"};
                   })
                  .text,
              "\t.text\n\t.globl\tg\n\t.type\tg, @function\ng:\n.LFB0:\n\t.cfi_startproc\n"
              "# no line\n\tret\n\t.cfi_endproc\n");
}

TEST(WholeListing, OfLinesHasWhatLeadsUpToThemAndLiesBetween) {
    const std::string text =
        "\t.file 1 \"no.c\"\n" +
        function("f",
                 "\t.loc 1 1\n\tpush\t1\n\t.cfi_offset 1\n"
                 "\t.loc 1 2\n.LBB1:\n\tadd\t2\n\t.loc 1 3\n\tsub\t3\n"
                 "\t.cfi_offset 3\n.L7:\n\t.loc 1 2\n\tadd\t4\n.LVL1:\n\t.cfi_offset 4\n"
                 "\tadd\t5\n.LBE1:\n\t.loc 1 2 view 1\n\tadd\t6\n\t.cfi_offset 6\n"
                 "\t.loc 1 4\n\tret\n") +
        function("g", "\t.loc 1 9\n\tnop\n") + "\t.loc 1 12\nh:\tnop\n\t.loc 1 2\n\tadd\t7\n";
    const auto shown = [&](const line_range& lines) {
        return list({{"t.s", text}},
                    [&](listing_options& options) {
                        quiet(options);
                        options.all = true;
                        options.lines = {lines};
                    })
            .text;
    };
    EXPECT_EQ(shown({"no.c", 2, 2}),
              "f:\n"
              "\t.loc 1 2\n.LBB1:\n# no.c:2 | \n\tadd\t2\n"
              ".L7:\n\t.loc 1 2\n\tadd\t4\n.LVL1:\n\t.cfi_offset 4\n"
              "\tadd\t5\n.LBE1:\n\t.loc 1 2 view 1\n\tadd\t6\n"
              "\t.loc 1 2\n# no.c:2 | \n\tadd\t7\n");
    EXPECT_EQ(shown({"no.c", 4, 9}),
              "f:\n\t.loc 1 4\n# no.c:4 | \n\tret\n"
              "g:\n\t.loc 1 9\n# no.c:9 | \n\tnop\n");
}

// --- For machines ---

TEST(ObjectListing, HasOneObjectForEachLineOfCode) {
    const change json = [](listing_options& options) { options.json = true; };
    EXPECT_EQ(code(file("inlined/gcc_5.s"), json),
              R"--({"symbol":"outer","text":"movl\t%edi, (%rdx)","frames":[)--"
              R"--({"function":"outer","file":"inlined.c","line":11}]})--"
              "\n"
              R"--({"symbol":"outer","text":"imull\t%esi, %esi","frames":[)--"
              R"--({"function":"square","file":"inlined.c","line":2},)--"
              R"--({"function":"sum_of_squares","file":"inlined.c","line":7},)--"
              R"--({"function":"outer","file":"inlined.c","line":12}]})--"
              "\n"
              R"--({"symbol":"outer","text":"imull\t%edi, %edi","frames":[)--"
              R"--({"function":"square","file":"inlined.c","line":2},)--"
              R"--({"function":"sum_of_squares","file":"inlined.c","line":6},)--"
              R"--({"function":"outer","file":"inlined.c","line":12}]})--"
              "\n"
              R"--({"symbol":"outer","text":"leal\t-7(%rdi,%rsi), %eax","frames":[)--"
              R"--({"function":"outer","file":"inlined.c","line":12}]})--"
              "\n"
              R"--({"symbol":"outer","text":"ret","frames":[)--"
              R"--({"function":"outer","file":"inlined.c","line":13}]})--"
              "\n");
}

TEST(ObjectListing, EscapesWhatItMust) {
    const std::string text = function("\"a\\b\xc3\xa9\xff\"", "\tnop # \x01\x7f\"\n");
    EXPECT_EQ(list({{"t.s", text}},
                   [](listing_options& options) {
                       quiet(options);
                       options.json = true;
                   })
                  .text,
              "{\"symbol\":\"a\\\\b\xc3\xa9\\ufffd\",\"text\":\"nop # \\u0001\\u007f\\\"\","
              "\"frames\":[{\"function\":\"a\\\\b\xc3\xa9\\ufffd\",\"file\":\"\",\"line\":0}]}\n");
}

// --- Functions and figures ---

TEST(FunctionList, NumbersThemThroughAllTexts) {
    const std::string two = function("_Z1fi", "\tnop\n\tnop\n") + function("g", "\tret\n");
    const change form = [](listing_options& options) {
        quiet(options);
        options.form = listing_form::list;
    };
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"a.s", two}, {"b.s", function("h", "\tret\n")}};
    EXPECT_EQ(list(texts, form).text,
              "     1        2  f(int)\n"
              "     2        1  g\n"
              "     3        1  h\n");
    EXPECT_EQ(list(texts,
                   [&](listing_options& options) {
                       form(options);
                       options.json = true;
                       options.functions = {"1", "3"};
                   })
                  .text,
              "{\"number\":1,\"instructions\":2,\"symbol\":\"_Z1fi\",\"name\":\"f(int)\"}\n"
              "{\"number\":3,\"instructions\":1,\"symbol\":\"h\",\"name\":\"h\"}\n");
}

TEST(Figures, AreThoseOfEachFunctionMostCodeFirst) {
    const change form = [](listing_options& options) { options.form = listing_form::stats; };
    const std::string text = function("small", "\tnop\n") + file("inlined/gcc_5.s");
    EXPECT_EQ(code(text, form),
              "number    instr  inlined  lines   bytes            largest line  function\n"
              "     2        5      40%      4      70           2 inlined.c:2  outer\n"
              "     1        1       0%      0       0                      0   small\n");
    EXPECT_EQ(code(text,
                   [&](listing_options& options) {
                       form(options);
                       options.json = true;
                       options.functions = {"outer"};
                   }),
              "{\"number\":2,\"instructions\":5,\"inlined\":2,\"lines\":4,\"bytes\":70,"
              "\"largest\":{\"file\":\"inlined.c\",\"line\":2,\"instructions\":2},"
              "\"symbol\":\"outer\",\"name\":\"outer\"}\n");
}

// --- What is shown ---

TEST(Selection, IsByNameNumberOrGlob) {
    const std::string text = function("_ZN1A1fEi", "\tnop\n") + function("_ZN1A1gEv", "\tnop\n") +
                             function("main", "\tnop\n") + function("\"a*b\"", "\tnop\n");
    const auto shown = [&](const std::vector<std::string>& patterns) {
        return list({{"t.s", text}},
                    [&](listing_options& options) {
                        quiet(options);
                        options.form = listing_form::list;
                        options.functions = patterns;
                    })
            .text;
    };
    const std::string f = "     1        1  A::f(int)\n";
    const std::string g = "     2        1  A::g()\n";
    const std::string m = "     3        1  main\n";
    EXPECT_EQ(shown({"main"}), m);
    EXPECT_EQ(shown({"3"}), m);
    EXPECT_EQ(shown({"_ZN1A1fEi"}), f);
    EXPECT_EQ(shown({"A::f(int)"}), f);
    EXPECT_EQ(shown({"A::f"}), f);
    EXPECT_EQ(shown({"A::*"}), f + g);
    EXPECT_EQ(shown({"*f*"}), f);
    EXPECT_EQ(shown({"2", "m?in", "2"}), g + m);
    EXPECT_EQ(shown({"a*b"}), "     4        1  a*b\n");
}

TEST(Selection, ByNameLeavesOutWhatIsNotWrittenWhereItIsCalled) {
    const struct {
        const char* symbol;
        const char* pattern;
    } rows[] = {
        {"_ZSt16__introsort_loopIPilEvT_S1_T0_.isra.0", "std::__introsort_loop"},
        {"_ZNK2ns1S3sumEi", "ns::S::sum"},
        {"_ZNKR2ns1S3sumEi", "ns::S::sum"},
        {"_ZNVKO2ns1S3sumEi", "ns::S::sum"},
        {"_ZN4listIiE4sizeIcEEvv", "list::size"},
        {"_ZStplIcEvPKcT_", "std::operator+"},
        {"_ZltIcEbT_S0_", "operator<"},
        {"_ZlsIcEvT_", "operator<<"},
        {"_ZssIcEvT_", "operator<=>"},
        {"_ZNK1SIiEptEv", "S::operator->"},
        {"_ZNK1SIiEgtEi", "S::operator>"},
        {"_ZNK1SIiEclEv", "S::operator()"},
        {"_ZN1SeqERKS_", "S::operator=="},
        {"_ZN1ScvPKcEv", "S::operator const char *"},
        {"_ZnwmPv", "operator new"},
        {"_ZN12_GLOBAL__N_11gEv", "<unnamed>::g"},
    };
    for (const auto& row : rows) {
        const listed it =
            list({{"t.s", function(row.symbol, "\tnop\n")}}, [&](listing_options& options) {
                quiet(options);
                options.json = true;
                options.functions = {row.pattern};
            });
        EXPECT_EQ(it.messages, "") << row.symbol;
    }
}

TEST(CodeListing, SaysWhatIsThereInPlaceOfLines) {
    const struct {
        const char* text;
        const char* message;
        bool has_code;
    } rows[] = {
        {"\t.text\nf:\n\tnop\n", "no line information; compile with -g", true},
        {"\tnop\n", "no line information; compile with -g", true},
        {"\t.type f, @function\nf:\n\tnop\n", "no line information; compile with -g", true},
        {"\t.section\t.gnu.lto_.opts,\"e\",@progbits\n\t.string \"-O\"\n",
         "no code, which -flto leaves to the linker; compile without -flto", false},
        {"source_filename = \"a.c\"\ndefine i32 @f() {\n  ret i32 0\n}\n",
         "intermediate code in place of assembly; compile without -flto", false},
    };
    for (const auto& row : rows) {
        const listed it = list({{"t.s", row.text}});
        EXPECT_EQ(it.messages, "clist: t.s: " + std::string(row.message) + "\n");
        EXPECT_EQ(!it.text.empty(), row.has_code) << row.text << it.text;
    }
}

TEST(Selection, NamesWhatIsAskedForInPart) {
    const listed it = list({{"t.s", function("_ZSt16__introsort_loopIPilEvT_S1_T0_", "\tnop\n") +
                                        function("sortit", "\tnop\n")}},
                           [](listing_options& options) {
                               quiet(options);
                               options.functions = {"introsort"};
                           });
    EXPECT_EQ(it.messages,
              "clist: no function 'introsort'; the nearest is 'std::__introsort_loop'\n");
}

TEST(Selection, ThatFitsNothingNamesTheNearest) {
    const struct {
        change set;
        const char* message;
    } rows[] = {
        {[](listing_options& options) { options.functions = {"outr"}; },
         "clist: no function 'outr'; the nearest is 'outer'\n"},
        {[](listing_options& options) {
             options.functions = {"outer", "0"};
         },
         "clist: there is no function 0; they count from 1 to 1\n"},
        {[](listing_options& options) { options.functions = {"2"}; },
         "clist: there is no function 2; they count from 1 to 1\n"},
        {[](listing_options& options) {
             options.lines = {{"inlined.c", 3, 4}};
         },
         "clist: no code of inlined.c:3-4; the nearest is line 2\n"},
        {[](listing_options& options) {
             options.lines = {{"inlined.c", 9, 9}};
         },
         "clist: no code of inlined.c:9; the nearest is line 7\n"},
        {[](listing_options& options) {
             options.lines = {{"./inlined.c", 3, 4}};
         },
         "clist: no code of ./inlined.c:3-4; the nearest is line 2\n"},
        {[](listing_options& options) {
             options.lines = {{"none/.././inlined.c", 3, 4}};
         },
         "clist: no code of none/.././inlined.c:3-4; the nearest is line 2\n"},
        {[](listing_options& options) {
             options.lines = {{"inline.c", 3, 4}};
         },
         "clist: no code of inline.c; the nearest is 'inlined.c'\n"},
    };
    for (const auto& row : rows) {
        const listed it = list({{"t.s", file("inlined/gcc_5.s")}}, row.set);
        EXPECT_EQ(it.messages, row.message);
        EXPECT_EQ(it.text, "");
        EXPECT_EQ(it.status, 1);
    }
}

TEST(Selection, OfLinesHasWhatWasInlinedOnThem) {
    const auto shown = [](const line_range& lines) {
        return code(file("inlined/gcc_5.s"),
                    [&](listing_options& options) { options.lines = {lines}; });
    };
    const std::string a =
        "# inlined.c:2 |     return x * x;\n"
        "# inlined: square at inlined.c:6 in sum_of_squares, at inlined.c:12 in outer\n"
        "\timull\t%edi, %edi\n";
    const std::string b =
        "# inlined.c:2 |     return x * x;\n"
        "# inlined: square at inlined.c:7 in sum_of_squares, at inlined.c:12 in outer\n"
        "\timull\t%esi, %esi\n";
    EXPECT_EQ(shown({"inlined.c", 6, 6}), "outer:\n" + a);
    EXPECT_EQ(shown({"inlined.c", 5, 8}), "outer:\n" + b + a);
    EXPECT_EQ(shown({"src/inlined.c", 2, 2}), "outer:\n" + b + a);
    EXPECT_EQ(shown({"inlined.c", 12, 12}),
              "outer:\n" + b + a +
                  "# inlined.c:12 |     return sum_of_squares(a, b) - 7;\n"
                  "\tleal\t-7(%rdi,%rsi), %eax\n");
}

TEST(Selection, OfContextHasWhatIsCalled) {
    const std::string text = function("a", "\tcall\tb\n\tcall\tputs@PLT\n") +
                             function("b", "\tjmp\tc2\n\tnop\n") + function("c", "\tret\n") +
                             function("d", "\tcall\ta\n") + "\t.set\tc2,c\n";
    const auto shown = [&](unsigned levels) {
        return list({{"t.s", text}},
                    [&](listing_options& options) {
                        quiet(options);
                        options.form = listing_form::list;
                        options.functions = {"a"};
                        options.context = levels;
                    })
            .text;
    };
    const std::string a = "     1        2  a\n";
    const std::string b = "     2        2  b\n";
    const std::string c = "     3        1  c\n";
    EXPECT_EQ(shown(0), a);
    EXPECT_EQ(shown(1), a + b);
    EXPECT_EQ(shown(2), a + b + c);
    EXPECT_EQ(shown(100), a + b + c);
}

// --- The interlister's listing ---

TEST(ClassicListing, IsMadeByTheInterlister) {
    const std::string listing = code(file("inlined/gcc_5.s"), [](listing_options& options) {
        options.form = listing_form::classic;
    });
    EXPECT_NE(listing.find(";  10 | int outer(int a, int b, int* result) {"), std::string::npos);
    EXPECT_NE(listing.find(".cfi_startproc"), std::string::npos);
    EXPECT_EQ(listing.find(".iline"), std::string::npos);
}

// --- Messages ---

// However much code there is of a source, what there is to say of it is said once.
TEST(Messages, TellOnceOfASourceThatIsNotTheOneCompiled) {
    const std::string code = function("f", "\t.loc 1 1\n\tnop\n\t.loc 1 2\n\tnop\n") +
                             function("g", "\t.loc 1 1\n\tnop\n");
    const std::string sum = "\t.file 1 \"/src/inlined.c\" md5 0x";
    const std::string right = "5fc23a8730f34ccf133857d4efcf0f3e";
    const listed same = list({{"t.s", sum + right + "\n" + code}});
    EXPECT_EQ(same.messages, "");
    const listed other = list({{"t.s", sum + std::string(32, '0') + "\n" + code}});
    EXPECT_EQ(other.messages, "clist: /src/inlined.c: not the text that was compiled\n");
    EXPECT_EQ(list({{"t.s", sum + std::string(32, '0') + "\n" + code}}, quiet).messages, "");
    const listed gone = list({{"t.s", "\t.file 1 \"/old/gone.c\"\n" + code}});
    EXPECT_EQ(gone.messages,
              "clist: /old/gone.c: there is no such file, so its lines stay empty\n");
    const listed moved = list({{"t.s", "\t.file 1 \"/src/gone.c\"\n" + code}});
    EXPECT_EQ(moved.messages,
              "clist: ../data/inlined/gone.c: there is no such file, so its lines stay empty\n");
    for (const char* const name : {"<stdin>", "-"}) {
        const listed typed = list({{"t.s", "\t.file 1 \"" + std::string(name) + "\"\n" + code}});
        EXPECT_EQ(typed.messages,
                  "clist: <stdin>: compiled from standard input, so its lines stay empty\n");
    }
}

// Where clist ran the compiler itself, it knows the folder whatever the assembly says of it.
TEST(Messages, OfASourceThatIsOnlyFoundHereAreForAssemblyAtHand) {
    for (const std::string folder : {".", "/elsewhere"}) {
        const std::string text = "\t.file 0 \"" + folder + "\" \"../data/inlined/inlined.c\"\n" +
                                 function("f", "\t.loc 0 2\n\tnop\n");
        listing_input input;
        input.name = "t.s";
        input.text = text;
        const listed at_hand = ::list({input}, {});
        EXPECT_EQ(at_hand.messages,
                  "clist: ../data/inlined/inlined.c: found here, though " +
                      std::string(folder == "." ? "the assembly does not tell where it was compiled"
                                                : "it was compiled as "
                                                  "/elsewhere/../data/inlined/inlined.c") +
                      "\n");
        input.command = {"cc", "-c", "../data/inlined/inlined.c"};
        const listed compiled = ::list({input}, {});
        EXPECT_EQ(compiled.messages, "");
        EXPECT_EQ(compiled.text, "f:\n# inlined.c:2 |     return x * x;\n\tnop\n");
    }
}

TEST(Messages, TellOnceOfASourceThatIsNewerThanTheAssembly) {
    const std::string text =
        "\t.file 1 \"/src/inlined.c\"\n" + function("f", "\t.loc 1 1\n\tnop\n\t.loc 1 2\n\tnop\n");
    listing_options options;
    options.source_map = {{"/src", "../data/inlined"}};
    listing_input input;
    input.name = "t.s";
    input.text = text;
    input.modified = 1;
    EXPECT_EQ(::list({input}, options).messages,
              "clist: /src/inlined.c: newer than the assembly\n");
    options.warnings = false;
    EXPECT_EQ(::list({input}, options).messages, "");
}

TEST(CodeForm, LeavesOutTablesOfHandlers) {
    EXPECT_EQ(code("\t.text\n\t.def f;\t.scl 2;\t.type 32;\t.endef\n\t.seh_proc f\nf:\n"
                   ".LFB0:\n\t.loc 1 1\n.LEHB0:\n\tcall g\n.LEHE0:\n\tret\n.L2:\n\tjmp g\n"
                   "\t.seh_handler h, @unwind, @except\n\t.seh_handlerdata\n.LLSDA0:\n"
                   "\t.byte 0xff\n\t.uleb128 .LLSDACSE0-.LLSDACSB0\n.LLSDACSB0:\n"
                   "\t.uleb128 .LEHB0-.LFB0\n\t.uleb128 .L2-.LFB0\n.LLSDACSE0:\n"
                   "\t.text\n\t.seh_endproc\n"),
              "f:\n# no line\n\tcall g\n\tret\n\tjmp g\n");
}

TEST(Messages, TellWhatCannotBeShown) {
    const struct {
        const char* text;
        const char* message;
    } rows[] = {
        {"", "clist: t.s: no functions\n"},
        {"\t.ident \"x\"\n", "clist: t.s: no functions\n"},
        {"\t.loc x\n", "clist: t.s:1: bad file number in .loc\n"},
        {"\t.file 1 \"/src/gone.c\"\nf:\n\t.loc 1 1\n\tnop\n",
         "clist: ../data/inlined/gone.c: there is no such file, so its lines stay empty\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(list({{"t.s", row.text}}).messages, row.message);
    }
    const std::string none = list({{"t.s", function("f", "\tnop\n")}}).messages;
    EXPECT_TRUE(none.starts_with("clist: t.s: no line information")) << none;
    EXPECT_EQ(list({{"t.s", function("f", "\tnop\n")}}, quiet).messages, "");
}
