// What the reader takes from an assembly text: files, functions, positions, errors.
#include "assembly/reader.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using namespace assembly;

namespace {

assembly_file read(std::string_view text) {
    assembly_file assembly;
    const std::optional<assembly_error> error = read_assembly(text, assembly);
    EXPECT_FALSE(error) << error->line << ": " << error->message;
    return assembly;
}

// "LINE: MESSAGE", or nothing when the text is fine.
std::string error_of(std::string_view text) {
    assembly_file assembly;
    const std::optional<assembly_error> error = read_assembly(text, assembly);
    return error ? std::to_string(error->line) + ": " + error->message : "";
}

// The lines of each function, with its symbol before them.
std::vector<std::string> functions(std::string_view text) {
    std::vector<std::string> result;
    for (const function_code& it : read(text).functions) {
        result.push_back(std::string(it.symbol) + "|" +
                         std::string(text.substr(it.begin, it.end - it.begin)));
    }
    return result;
}

// The source lines that code was found for, in the only function of the text.
std::vector<unsigned> lines_with_code(std::string_view body) {
    std::string text = "\t.type f, @function\nf:\n";
    text += body;
    text += "\t.size f, .-f\n";
    std::vector<unsigned> lines;
    for (const code_position& it : read(text).positions) {
        lines.push_back(it.line);
    }
    return lines;
}

// The source line of each line of code; "-" where there is none.
std::vector<std::string> lines_of_code(std::string_view text) {
    const assembly_file assembly = read(text);
    std::vector<std::string> result;
    for (const instruction& it : assembly.instructions) {
        result.push_back(
            it.position == none ? "-" : std::to_string(assembly.positions[it.position].line));
    }
    return result;
}

using Lines = std::vector<unsigned>;
using Texts = std::vector<std::string>;

}  // namespace

TEST(AssemblyFiles, BothFormsOfAnEntryAreRead) {
    const assembly_file assembly = read(
        "\t.file\t\"main.c\"\n"
        "\t.file 1 \"a.c\"\n"
        "\t.file\t2 \"dir\" \"b.h\" md5 0x0123456789abcdef0123456789abcdef\n"
        "\t.file 3 \"c.c\" md5 0x0123456789abcdef0123456789abcdef\n");
    EXPECT_EQ(assembly.main_file, "main.c");
    EXPECT_EQ(assembly.files.at(1).directory, "");
    EXPECT_EQ(assembly.files.at(1).name, "a.c");
    EXPECT_EQ(assembly.files.at(2).directory, "dir");
    EXPECT_EQ(assembly.files.at(2).name, "b.h");
    EXPECT_EQ(assembly.files.at(3).name, "c.c");
    EXPECT_EQ(assembly.files.at(1).md5, "");
    EXPECT_EQ(assembly.files.at(2).md5, "0123456789abcdef0123456789abcdef");
    EXPECT_EQ(assembly.files.at(3).md5, "0123456789abcdef0123456789abcdef");
}

TEST(AssemblyFiles, AChecksumIsWrittenWithoutItsLeadingZeros) {
    EXPECT_EQ(read("\t.file 1 \"a.c\" md5 0x123\n").files.at(1).md5,
              "00000000000000000000000000000123");
}

TEST(AssemblyFiles, EscapesInNamesAreResolved) {
    const assembly_file assembly = read(
        "\t.file 1 \"a b.c\"\n"
        "\t.file 2 \"a\\\"b\\\\c.c\"\n"
        "\t.file 3 \"\\303\\251t\\303\\251.c\"\n"
        "\t.file 4 \"\\x41\\b\\f\\n\\r\\t\\q\\1012.c\"\n");
    EXPECT_EQ(assembly.files.at(1).name, "a b.c");
    EXPECT_EQ(assembly.files.at(2).name, "a\"b\\c.c");
    EXPECT_EQ(assembly.files.at(3).name, "\303\251t\303\251.c");
    EXPECT_EQ(assembly.files.at(4).name, "A\b\f\n\r\tqA2.c");
}

// As the GNU assembler reads them.
TEST(AssemblyFiles, EightAndNineAreOctalDigitsToo) {
    const assembly_file assembly = read(
        "\t.file 1 \"\\8\"\n"
        "\t.file 2 \"\\18\"\n"
        "\t.file 3 \"\\9a\"\n"
        "\t.file 4 \"\\1018\"\n");
    EXPECT_EQ(assembly.files.at(1).name, "\x08");
    EXPECT_EQ(assembly.files.at(2).name, "\x10");
    EXPECT_EQ(assembly.files.at(3).name, "\ta");
    EXPECT_EQ(assembly.files.at(4).name, "A8");
}

TEST(AssemblyFiles, TheCompilationDirectoryIsThatOfFileZeroOrOfTheMainFile) {
    EXPECT_EQ(read("\t.file 0 \"/dir\" \"a.c\"\n\t.file 1 \"x\" \"a.c\"\n").compilation_directory,
              "/dir");
    EXPECT_EQ(read("\t.file \"a.c\"\n\t.file 1 \"/dir\" \"a.c\"\n").compilation_directory, "/dir");
    EXPECT_EQ(read("\t.file 1 \"/dir\" \"a.c\"\n").compilation_directory, "/dir");
    EXPECT_EQ(read("\t.file \"a.c\"\n\t.file 1 \"/usr\" \"b.h\"\n").compilation_directory, "");
}

TEST(AssemblyFiles, AnEntryMayBeRepeatedButNotChanged) {
    EXPECT_EQ(error_of("\t.file 1 \"a.c\"\n\t.file 1 \"a.c\"\n"), "");
    EXPECT_EQ(error_of("\t.file 1 \"a.c\"\n\t.file 1 \"b.c\"\n"),
              "2: file number 1 is already in use");
}

TEST(AssemblyFunctions, BeginWithTheDirectivesBeforeTheirLabel) {
    const std::string_view text =
        "\t.text\n"
        ".Ltext0:\n"
        "\t.globl\tf\n"
        "\t.type\tf, @function\n"
        "f:\n"
        "\t.cfi_startproc\n"
        "\tret\n"
        "\t.cfi_endproc\n"
        "\t.size\tf, .-f\n";
    EXPECT_EQ(functions(text),
              Texts{"f|\t.globl\tf\n\t.type\tf, @function\nf:\n\t.cfi_startproc\n\tret\n"
                    "\t.cfi_endproc\n"});
}

TEST(AssemblyFunctions, WithoutUnwindTablesEndWithTheirSize) {
    const std::string_view text =
        "\t.type\tf, %function\n"
        "f:\n"
        "\tbx lr\n"
        "\t.size\tg, .-g\n"
        "\t.size\tf, .-f\n"
        "\t.ident \"x\"\n";
    EXPECT_EQ(functions(text),
              Texts{"f|\t.type\tf, %function\nf:\n\tbx lr\n\t.size\tg, .-g\n\t.size\tf, .-f\n"});
}

TEST(AssemblyFunctions, WithoutAnyEndReachToTheNextOne) {
    const std::string_view text =
        "\t.type f, #function\n"
        "\t.type g, STT_FUNC\n"
        "f:\n"
        "\tnop\n"
        "g:\n"
        "\tnop";
    EXPECT_EQ(functions(text),
              (Texts{"f|\t.type f, #function\n\t.type g, STT_FUNC\nf:\n\tnop\n", "g|g:\n"}));
}

TEST(AssemblyFunctions, AreFoundByTheirProcedureWhereNoTypeIsGiven) {
    const std::string_view text =
        "_data:\n"
        "\t.long 5\n"
        "\t.section __TEXT,__text,regular,pure_instructions\n"
        "\t.globl\t_f                              ## -- Begin function f\n"
        "_f:                                     ## @f\n"
        "Lfunc_begin0:\n"
        "\t.file\t1 \"/dir\" \"a.c\"\n"
        "\t.loc\t1 7 0                           ## a.c:7:0\n"
        "\t.cfi_startproc\n"
        "\tretq\n"
        "\t.cfi_endproc\n";
    const assembly_file assembly = read(text);
    ASSERT_EQ(assembly.functions.size(), 1U);
    EXPECT_EQ(assembly.functions[0].symbol, "_f");
    ASSERT_TRUE(assembly.functions[0].entry);
    EXPECT_EQ(assembly.functions[0].entry->line, 7U);
    EXPECT_TRUE(text.substr(assembly.functions[0].begin).starts_with("\t.section __TEXT"));
}

TEST(AssemblyFunctions, OfWindowsObjectsAreTypedBetweenDefAndEndef) {
    EXPECT_EQ(functions("\t.def\tf;\t.scl\t2;\t.type\t32;\t.endef\nf:\n\tret\n"),
              Texts{"f|\t.def\tf;\t.scl\t2;\t.type\t32;\t.endef\nf:\n\tret\n"});
    EXPECT_EQ(functions("\t.def\t f;\n\t.scl\t2;\n\t.type\t32;\n\t.endef\nf:\n\tret\n"),
              Texts{"f|\t.def\t f;\n\t.scl\t2;\n\t.type\t32;\n\t.endef\nf:\n\tret\n"});
    EXPECT_EQ(functions("\t.def\tv;\t.scl\t2;\t.type\t0;\t.endef\nv:\n\t.long 1\n"), Texts{});
}

TEST(AssemblyFunctions, SplitInTwoAreTwo) {
    const std::string_view text =
        "\t.type\tf, @function\n"
        "f:\n"
        "\t.cfi_startproc\n"
        "\tjne .L2\n"
        "\t.cfi_endproc\n"
        "\t.section\t.text.unlikely\n"
        "\t.cfi_startproc\n"
        "\t.type\tf.cold, @function\n"
        "f.cold:\n"
        ".L2:\n"
        "\tcall abort\n"
        "\t.cfi_endproc\n"
        "\t.text\n"
        "\t.size\tf, .-f\n"
        "\t.section\t.text.unlikely\n"
        "\t.size\tf.cold, .-f.cold\n";
    EXPECT_EQ(functions(text),
              (Texts{"f|\t.type\tf, @function\nf:\n\t.cfi_startproc\n\tjne .L2\n\t.cfi_endproc\n",
                     "f.cold|\t.section\t.text.unlikely\n\t.cfi_startproc\n"
                     "\t.type\tf.cold, @function\nf.cold:\n.L2:\n\tcall abort\n\t.cfi_endproc\n"}));
}

TEST(AssemblyFunctions, MayHaveAQuotedName) {
    EXPECT_EQ(functions("\t.type \"a b\", @function\n\"a b\":\n\tret\n"),
              Texts{"a b|\t.type \"a b\", @function\n\"a b\":\n\tret\n"});
}

// Several statements of one line may belong to two functions.
TEST(AssemblyFunctions, DoNotOverlap) {
    EXPECT_EQ(functions("\t.type g, @function\n\t.type f, @function\n"
                        "f:\tnop\n\t.size f, .-f; .globl g\n"
                        "g:\tnop\n\t.size g, .-g\n"),
              (Texts{"f|\t.type g, @function\n\t.type f, @function\nf:\tnop\n",
                     "g|\t.size f, .-f; .globl g\ng:\tnop\n\t.size g, .-g\n"}));
    EXPECT_EQ(functions("f:\t.cfi_startproc\n\tnop\n\t.cfi_endproc; g: .cfi_startproc\n"
                        "\tnop\n\t.cfi_endproc\n"),
              (Texts{"f|f:\t.cfi_startproc\n\tnop\n",
                     "g|\t.cfi_endproc; g: .cfi_startproc\n\tnop\n\t.cfi_endproc\n"}));
}

TEST(AssemblyFunctions, OnDataLabelsAreNone) {
    EXPECT_EQ(functions("\t.type v, @object\nv:\n\t.long 1\n"), Texts{});
}

TEST(AssemblyPositions, AreThoseWithCodeBehindThem) {
    EXPECT_EQ(lines_with_code("\t.loc 1 3 1\n"
                              "\t.loc 1 4 3 view .LVU1\n"
                              "\t.loc 1 5 3 is_stmt 0 view .LVU2\n"
                              "\tmovl %eax, %ebx\n"
                              "\t.loc 1 6\n"
                              "\t.loc 1 7 1 prologue_end discriminator 2\n"
                              "\tret\n"
                              "\t.loc 1 8\n"),
              (Lines{5, 7}));
}

TEST(AssemblyPositions, LineZeroIsAPositionButNoEntry) {
    const std::string_view text =
        "\t.type f, @function\nf:\n\t.loc 1 0 0\n\tnop\n\t.loc 1 9 0\n\tnop\n";
    const assembly_file assembly = read(text);
    ASSERT_TRUE(assembly.functions[0].entry);
    EXPECT_EQ(assembly.functions[0].entry->line, 9U);
    ASSERT_EQ(assembly.positions.size(), 2U);
    EXPECT_EQ(assembly.positions[0].line, 0U);
    EXPECT_EQ(assembly.positions[1].line, 9U);
}

TEST(AssemblyPositions, NoTargetsCommentIsCode) {
    EXPECT_EQ(lines_with_code("\t.loc 1 3 1\n"
                              "\t.loc 1 4 1\n"
                              "# %bb.0:\n"
                              "\t#DEBUG_VALUE: x <- 0\n"
                              "@ arm\n"
                              "\t@ arm\n"
                              "// aarch64\n"
                              "; several\n"
                              "| 68k\n"
                              "! sparc\n"
                              "/* any */\n"
                              "\n"
                              "\t.loc 1 5 1\n"
                              "\t{ r0 = r1 }\n"),
              Lines{5});
}

TEST(AssemblyPositions, DirectivesBetweenAPositionAndItsCodeDoNotPartThem) {
    EXPECT_EQ(lines_with_code("\t.loc 1 3\n\t.loc 1 4\n\t.cfi_def_cfa_offset 16\n.L3:\n\tnop\n"),
              Lines{4});
}

TEST(AssemblyPositions, ADirectiveGoesBeforeTheLabelsThatLeadToTheCode) {
    const std::string_view text =
        "\t.type f, @function\n"
        "f:\n"
        "\t.loc 1 3\n"
        "\tnop\n"
        "\t.cfi_def_cfa_offset 16\n"
        "\t.p2align 4,,10\n"
        ".L3:\n"
        "\t.loc 1 5\n"
        "\tnop\n";
    const assembly_file assembly = read(text);
    ASSERT_EQ(assembly.positions.size(), 2U);
    EXPECT_TRUE(text.substr(assembly.positions[1].at).starts_with("\t.p2align"));
    EXPECT_TRUE(text.substr(assembly.positions[1].directive).starts_with("\t.loc 1 5"));
}

// What leads up to the code of a function may begin before the function does.
TEST(AssemblyPositions, AreWithinTheirFunctionAndAscend) {
    for (const std::string_view text : {
             "\n\nf:\t.loc 1 9\n\t.loc 1 66\n\t.cfi_startproc\n\tnop\n\t.cfi_endproc\n",
             "\n\t.loc 1 9\n\t.type f, @function\nf:\n\tnop\n\t.loc 1 66\n\tnop\n",
             "\t.type f, @function\n\t.type g, @function\n"
             "f:\n\t.loc 1 3\n\tnop\n.L1:\n\t.loc 1 4\n"
             "g:\n\t.loc 1 9\n\tnop\n\t.loc 1 10\n\tnop\n",
             "\t.type f, @function\n\t.type g, @function\n"
             "f:\tnop\n\t.size f, .-f; .globl g; g: .loc 1 9; nop; .loc 1 10\n\tnop\n",
         }) {
        const assembly_file assembly = read(text);
        std::uint32_t before = 0;
        for (const function_code& function : assembly.functions) {
            EXPECT_LE(before, function.begin) << text;
            before = function.begin;
            for (std::uint32_t i = 0; i < function.position_count; ++i) {
                const code_position& it = assembly.positions[function.first_position + i];
                EXPECT_LE(before, it.at) << text;
                before = it.at;
            }
            EXPECT_LE(before, function.end) << text;
            before = function.end;
        }
    }
}

TEST(AssemblyPositions, OfCodeWithoutALabelAreInAFunctionThatNothingDeclares) {
    const assembly_file assembly = read("\t.loc 1 3\n\tnop\n");
    ASSERT_EQ(assembly.functions.size(), 1U);
    EXPECT_FALSE(assembly.functions[0].is_declared);
    EXPECT_EQ(assembly.functions[0].symbol, "");
    EXPECT_EQ(assembly.functions[0].instruction_count, 1U);
    EXPECT_EQ(assembly.positions.size(), 1U);
}

TEST(AssemblyPositions, HaveTheirColumn) {
    const assembly_file assembly =
        read("\t.loc 1 3 17 is_stmt 0 view .LVU4\n\tnop\n\t.loc 1 4\n\tnop\n");
    EXPECT_EQ(column_of(assembly, assembly.positions[0]), 17U);
    EXPECT_EQ(column_of(assembly, assembly.positions[1]), 0U);
}

// What the object's line table says of each line of code: a `.loc` is of the section that
// the code after it goes to, and lasts there.
TEST(AssemblyCode, HasTheLastPositionOfItsSection) {
    const std::string_view text =
        "\t.loc 1 1\n"
        "\tnop\n"
        "\tnop\n"
        "\t.section .text.unlikely\n"
        "\tnop\n"
        "\t.loc 1 2\n"
        "\t.text\n"
        "\tnop\n"
        "\t.section .text.unlikely,\"ax\",@progbits\n"
        "\t.loc 1 0\n"
        "\t.loc 1 3\n"
        "\tnop\n"
        "\t.previous\n"
        "\tnop\n"
        "\t.pushsection .text.unlikely\n"
        "\tnop\n"
        "\t.popsection\n"
        "\tnop\n";
    EXPECT_EQ(lines_of_code(text), (Texts{"1", "1", "-", "2", "3", "2", "3", "2"}));
}

// A `.loc` and its code may have a change of sections between them. What the table has is what
// objects made by GNU as and by Clang's assembler tell of such texts.
TEST(AssemblyCode, HasThePositionThatTheAssemblerGivesIt) {
    struct row {
        std::string_view text;  // after code with line 1; an A goes to another section, a T back
        Texts gnu;
        Texts clang;
    };
    const std::vector<row> rows = {
        {"2 T n", {"2"}, {"2"}},
        {"2 A n T n", {"2", "1"}, {"-", "1"}},
        {"2 3 A n T n", {"3", "2"}, {"-", "2"}},
        {"2 3 4 A n T n", {"4", "3"}, {"-", "3"}},
        {"2 3 push n pop n", {"3", "2"}, {"-", "2"}},
        {"2 3 n A n T n", {"3", "-", "3"}, {"3", "-", "3"}},
        {"2 A 3 n T n A n", {"3", "1", "3"}, {"3", "1", "3"}},
        {"2 A 3 T n A n", {"3", "2"}, {"1", "-"}},
        {"2 3 A T n A n 4 n T n", {"3", "-", "4", "3"}, {"2", "-", "4", "2"}},
        {"2 3 A 4 B T n A n", {"4", "3"}, {"2", "-"}},
        {"2 3 A T B n T n A n", {"3", "2", "-"}, {"-", "2", "-"}},
        {"2 data byte T n", {"2"}, {"1"}},
        {"2 data room T n", {"2"}, {"1"}},
        {"data 2 byte T n", {"2"}, {"1"}},
        {"2 byte A n T n", {"2", "1"}, {"-", "2"}},
        {"2 room A n T n", {"2", "1"}, {"-", "1"}},
    };
    const std::map<std::string_view, std::string_view> statements = {
        {"A", ".section .a,\"ax\""},
        {"B", ".section .b,\"ax\""},
        {"T", ".text"},
        {"push", ".pushsection .a,\"ax\""},
        {"pop", ".popsection"},
        {"n", "nop"},
        {"data", ".data"},
        {"byte", ".byte 1"},
        {"room", ".zero 1"},
    };
    for (const row& it : rows) {
        std::string text = "\t.loc 1 1\n\tnop\n";
        std::istringstream words{std::string(it.text)};
        for (std::string word; words >> word;) {
            const auto known = statements.find(word);
            text += "\t";
            text += known == statements.end() ? ".loc 1 " + word : std::string(known->second);
            text += "\n";
        }
        Texts gnu = {"1"};
        gnu.insert(gnu.end(), it.gnu.begin(), it.gnu.end());
        Texts clang = {"1"};
        clang.insert(clang.end(), it.clang.begin(), it.clang.end());
        EXPECT_EQ(lines_of_code(text + "\t.ident\t\"GCC: (Debian 12.2.0-14) 12.2.0\"\n"), gnu)
            << it.text;
        EXPECT_EQ(lines_of_code(text + "\t.ident\t\"Debian clang version 14.0.6\"\n"), clang)
            << it.text;
        EXPECT_EQ(lines_of_code(text + "\t.addrsig\n"), clang) << it.text;
        EXPECT_EQ(lines_of_code(text + ".subsections_via_symbols\n"), clang) << it.text;
    }
}

// With a view, which GCC gives, a `.loc` is of the section that it stands in.
TEST(AssemblyCode, HasNoPositionWithAViewFromAnotherSection) {
    const std::string_view text =
        "\t.loc 1 1\n"
        "\tnop\n"
        "\t.loc 1 2 is_stmt 0 view .LVU1\n"
        "\t.section .text.unlikely\n"
        "\tnop\n"
        "\t.loc 1 3 view -0\n"
        "\tnop\n"
        "\t.loc 1 4\n"
        "\t.pushsection .text\n"
        "\tnop\n"
        "\t.popsection\n"
        "\tnop\n"
        "\t.text\n"
        "\t.loc 1 5 view .LVU1\n"
        "\t.pushsection .data\n"
        "\t.byte 1\n"
        "\t.popsection\n"
        "\tnop\n";
    EXPECT_EQ(lines_of_code(text), (Texts{"1", "-", "3", "4", "3", "5"}));
}

TEST(AssemblyCode, IsToldBySectionAndPlace) {
    const assembly_file assembly = read(
        "f:\n"
        "\tnop\n"
        ".La:\n"
        "\t.pushsection .fixup,\"ax\"\n"
        ".Lb:\n"
        "1:\tnop\n"
        ".Lc:\n"
        "\t.popsection\n"
        "\tnop\n"
        ".Ld:\n");
    Texts labels;
    for (const label& it : assembly.labels) {
        labels.push_back(std::string(assembly.name_of(it)) + " " +
                         std::string(assembly.sections[it.section].name) + " " +
                         std::to_string(it.place));
    }
    EXPECT_EQ(labels, (Texts{"f .text 0", ".La .text 1", ".Lb .fixup 0", "1 .fixup 0",
                             ".Lc .fixup 1", ".Ld .text 2"}));
}

// What handles exceptions has tables that a directive of its own begins, not `.section`.
TEST(AssemblyCode, HasNoDataInTablesOfHandlers) {
    for (const std::string_view text : {
             "f:\n\tnop\n\t.seh_handlerdata\n.LLSDA0:\n\t.byte 0xff\n\t.uleb128 .LEHB0-.LFB0\n"
             "\t.text\n\tnop\n",
             "f:\n\tnop\n\t.handlerdata\n.LLSDA0:\n\t.uleb128 .LEHB0-.LFB0\n\t.text\n\t.fnend\n"
             "\tnop\n",
             "f:\n\tnop\n\t.handlerdata\n.LLSDA0:\n\t.uleb128 .LEHB0-.LFB0\n\t.fnend\n\tnop\n",
         }) {
        const assembly_file assembly = read(text);
        EXPECT_TRUE(assembly.data_lines.empty()) << text;
        EXPECT_EQ(assembly.sections.front().instruction_count, 2U) << text;
    }
}

TEST(AssemblyCode, IsTheSameSectionByNameAndGroup) {
    const auto count = [](std::string_view text) { return read(text).sections.size() - 1; };
    EXPECT_EQ(count("\t.section .a,\"ax\",@progbits\n\t.text\n\t.section .a\n"), 1U);
    EXPECT_EQ(count("\t.section .a,\"axG\",@progbits,f,comdat\n"
                    "\t.section .a,\"axG\",@progbits,g,comdat\n"
                    "\t.section .a,\"axG\",@progbits,f,comdat\n"),
              2U);
    EXPECT_EQ(count("\t.section .a,\"ax\",@progbits,unique,1\n"
                    "\t.section .a,\"ax\",@progbits,unique,2\n"),
              2U);
    EXPECT_EQ(count("\t.section \".text\"\n\t.text 0\n\t.subsection 0\n"), 0U);
    EXPECT_EQ(count("\t.text 1\n\t.subsection 2\n\t.subsection 1\n\t.text\n"), 2U);
    EXPECT_EQ(count("\t.section __TEXT,__text,regular,pure_instructions\n"
                    "\t.section __TEXT,__const\n\t.section __TEXT,__text\n"),
              2U);
}

TEST(AssemblyCode, SectionsAreOfAKind) {
    const struct {
        const char* operands;
        section_kind kind;
    } rows[] = {
        {".text.hot", section_kind::code},
        {".text$f,\"x\"", section_kind::code},
        {".mine,\"ax\",@progbits", section_kind::code},
        {"__TEXT,__text,regular,pure_instructions", section_kind::code},
        {".rodata.str1.1,\"aMS\",@progbits,1", section_kind::data},
        {".rdata,\"dr\"", section_kind::data},
        {".init_array,\"aw\"", section_kind::data},
        {"__TEXT,__cstring,cstring_literals", section_kind::data},
        {".debug_info,\"\",@progbits", section_kind::debug},
        {"__DWARF,__debug_info,regular,debug", section_kind::debug},
        {".note.GNU-stack,\"\",@progbits", section_kind::other},
        {".gcc_except_table,\"a\",@progbits", section_kind::other},
    };
    for (const auto& row : rows) {
        const std::string text = std::string("\t.section\t") + row.operands + "\n";
        EXPECT_EQ(read(text).sections.back().kind, row.kind) << row.operands;
    }
}

// Each text is one line of code, or none.
TEST(AssemblyCode, IsALineWithAnInstruction) {
    const struct {
        const char* line;
        std::size_t count;
    } rows[] = {
        {"\tnop", 1},
        {"nop", 1},
        {"  rep ret", 1},
        {"f: g: nop", 1},
        {"1:nop", 1},
        {"\tnop; nop", 1},
        {"\t.p2align 4; nop", 1},
        {"/* why */ nop", 1},
        {"\tnop /* why\n not */", 1},
        {"\t{ r0 = r1 }", 1},
        {"\t.inst 0xd503201f", 1},
        {"\t.insn r 0x33, 0, 0, a0, a1, a2", 1},
        {"\"a b\": nop", 1},
        {"\tcmpl $1, x(%rip)", 1},
        {"f:", 0},
        {"f = 5", 0},
        {"f=.", 0},
        {"# nop; nop", 0},
        {"\t# nop", 0},
        {"/* nop\nnop\nnop */", 0},
        {"\t.string \"x; nop\"", 0},
        {"\t.string \"/*\"", 0},
        {"\t.ascii \"\\\"; nop\"", 0},
        {"\t.cfi_def_cfa_offset 16 # x; nop", 0},
        {"\t.macro m\n\tnop\n\t.macro n\n\t.endm\n\tnop\n\t.endm", 0},
        {"/APP", 0},
    };
    for (const auto& row : rows) {
        for (const char* end : {"", "\n", "\r\n"}) {
            EXPECT_EQ(read(std::string(row.line) + end).instructions.size(), row.count) << row.line;
        }
    }
}

TEST(AssemblyCode, CommentsAreThoseOfTheTarget) {
    const auto count = [](std::string_view text, const char* target) {
        assembly_file assembly;
        EXPECT_FALSE(read_assembly(text, assembly, {.language = &dialect_of_target(target)}));
        return assembly.instructions.size();
    };
    EXPECT_EQ(count("@DEBUG_VALUE: f:x <- 1\n", "arm-linux-gnueabihf"), 0U);
    EXPECT_EQ(count("\tmov r0, #1; f: nop @ g: nop; nop\n", "arm-linux-gnueabihf"), 1U);
    EXPECT_EQ(count(";DEBUG_VALUE: f:x <- 1\n", "arm64-apple-macos"), 0U);
    EXPECT_EQ(count("//DEBUG_VALUE: f:x <- 1\n", "aarch64-linux-gnu"), 0U);
}

TEST(AssemblyCode, OfADataDirectiveIsData) {
    const std::string_view text = "f:\n\tnop\n.L4:\n\t.word .LC0, 5\n\t.data\n\t.word 5\n";
    const assembly_file assembly = read(text);
    EXPECT_EQ(assembly.instructions.size(), 1U);
    ASSERT_EQ(assembly.data_lines.size(), 1U);
    EXPECT_TRUE(text.substr(assembly.data_lines[0]).starts_with("\t.word .LC0"));
}

// The marks of one compiler for one target each.
TEST(AssemblyCode, FromTheSourceIsMarked) {
    const struct {
        const char* text;
        const char* marked;
    } rows[] = {
        {"#APP\n# 6 \"t.c\" 1\n\tnop\n# 0 \"\" 2\n.LVL2:\n#NO_APP\n\tret\n",
         "#APP\n# 6 \"t.c\" 1\n\tnop\n# 0 \"\" 2\n.LVL2:\n#NO_APP\n"},
        {"/APP\n # 6 \"t.c\" 1\n\tnop\n # 0 \"\" 2\n/NO_APP\n\tret\n",
         "/APP\n # 6 \"t.c\" 1\n\tnop\n # 0 \"\" 2\n/NO_APP\n"},
        {"\t.syntax unified\n@ 6 \"t.c\" 1\n\tnop\n@ 0 \"\" 2\n\tbx lr\n",
         "@ 6 \"t.c\" 1\n\tnop\n@ 0 \"\" 2\n"},
        {"\t//APP\n\tnop\n\t//NO_APP\n\tret\n", "\t//APP\n\tnop\n\t//NO_APP\n"},
        {"\t@APP\n\tnop\n\t@NO_APP\n\t.syntax unified\n", "\t@APP\n\tnop\n\t@NO_APP\n"},
        {"\t; InlineAsm Start\n\tnop\n\t; InlineAsm End\n\tret ; -- Begin function\n",
         "\t; InlineAsm Start\n\tnop\n\t; InlineAsm End\n"},
    };
    for (const auto& row : rows) {
        const std::string_view text = row.text;
        const assembly_file assembly = read(text);
        ASSERT_EQ(assembly.inline_assembly.size(), 1U) << text;
        const text_range range = assembly.inline_assembly[0];
        EXPECT_EQ(text.substr(range.begin, range.end - range.begin), row.marked);
    }
}

TEST(AssemblyText, OtherNamesOfSymbolsAreKept) {
    const assembly_file assembly = read("\t.set C1,C2\n\tx = 5\n");
    ASSERT_EQ(assembly.aliases.size(), 2U);
    EXPECT_EQ(assembly.aliases[0].name, "C1");
    EXPECT_EQ(assembly.aliases[0].value, "C2");
    EXPECT_EQ(assembly.aliases[1].name, "x");
    EXPECT_EQ(assembly.aliases[1].value, "5");
}

TEST(AssemblyText, ABackslashDoesNotJoinLines) {
    EXPECT_EQ(lines_of_code("\t.loc 1 1\n\tnop # \\\n\t.loc 1 2\n\tnop\n"), (Texts{"1", "2"}));
}

TEST(AssemblyText, MacroBodiesAreNotRead) {
    EXPECT_EQ(error_of("\t.macro m file\n\t.loc \\file\n\t.endm\n"), "");
    EXPECT_EQ(error_of("\t.macro m file\n\t.endm\n\t.loc \\file\n"), "3: bad file number in .loc");
}

TEST(AssemblyText, CarriageReturnsEndLinesToo) {
    const assembly_file assembly = read("\t.type f, @function\r\nf:\r\n\t.loc 1 3\r\n\tret\r\n");
    EXPECT_TRUE(assembly.carriage_returns);
    ASSERT_EQ(assembly.functions.size(), 1U);
    EXPECT_EQ(assembly.functions[0].entry->line, 3U);
}

TEST(AssemblyErrors, NameTheLine) {
    EXPECT_EQ(error_of("\tnop\n\t.loc\n"), "2: bad file number in .loc");
    EXPECT_EQ(error_of("\t.loc x 1\n"), "1: bad file number in .loc");
    EXPECT_EQ(error_of("\t.loc -1 1\n"), "1: bad file number in .loc");
    EXPECT_EQ(error_of("\t.loc 4294967296 1\n"), "1: bad file number in .loc");
    EXPECT_EQ(error_of("\t.loc 1\n"), "1: bad line number in .loc");
    EXPECT_EQ(error_of("\t.loc 1 x\n"), "1: bad line number in .loc");
    EXPECT_EQ(error_of("\t.loc 1 12x\n"), "1: bad line number in .loc");
    EXPECT_EQ(error_of("\t.loc 1 2147483647\n"), "1: bad line number in .loc");
    EXPECT_EQ(error_of("\t.loc 1 2147483646\n"), "");
    EXPECT_EQ(error_of("\t.file\n"), "1: bad file name in .file");
    EXPECT_EQ(error_of("\t.file a.c\n"), "1: bad file name in .file");
    EXPECT_EQ(error_of("\t.file 1\n"), "1: bad file name in .file");
    EXPECT_EQ(error_of("\t.file 1 \"a.c\n"), "1: bad file name in .file");
    EXPECT_EQ(error_of("\t.file 1 \"a.c\\\n"), "1: bad file name in .file");
    EXPECT_EQ(error_of("\t.file 1 \"dir\" \"a.c\n"), "1: bad file name in .file");
    EXPECT_EQ(error_of("\t.file 1x \"a.c\"\n"), "1: bad file number in .file");
}

TEST(AssemblyErrors, ProceduresMustBeginAndEndInTurn) {
    EXPECT_EQ(error_of("\t.cfi_startproc\n\n\t.cfi_startproc\n"),
              "3: a procedure begins inside the one of line 1");
    EXPECT_EQ(error_of("\n\t.cfi_endproc\n"), "2: a procedure ends that has not begun");
    EXPECT_EQ(error_of("f:\n\t.cfi_startproc\n\tnop\n"),
              "3: the input ends inside the procedure of line 2");
}

TEST(AssemblyErrors, InterlistDirectivesMustNotBeThereYet) {
    EXPECT_EQ(error_of("\tnop\n\t.ifile\t\"a.c\"\n"),
              "2: the input already has interlist directives (.ifile)");
    EXPECT_EQ(error_of("\t.ifunc\t1\n"), "1: the input already has interlist directives (.ifunc)");
    EXPECT_EQ(error_of("\t.iline\t1\n"), "1: the input already has interlist directives (.iline)");
    EXPECT_EQ(error_of("\t.isym\t_f\n"), "1: the input already has interlist directives (.isym)");
    EXPECT_EQ(error_of("\t.iendfunc\t1\n"),
              "1: the input already has interlist directives (.iendfunc)");
    EXPECT_EQ(error_of(" .iline\t1\n\t.iline 1\n\t.ident\t\"x\"\n"), "");
}

// The interlister acts on them wherever they stand in a file.
TEST(AssemblyErrors, InterlistDirectivesMustNotBeWhereAssemblersPassThemOver) {
    EXPECT_EQ(error_of("\t.macro m\n\t.ifunc\t1\n\t.endm\n"),
              "2: the input already has interlist directives (.ifunc)");
    EXPECT_EQ(error_of("/* text\n\t.ifile\t\"a.c\"\n*/\n"),
              "2: the input already has interlist directives (.ifile)");
    EXPECT_EQ(error_of("/* text\n\t.iline\t*/ nop\n"),
              "2: the input already has interlist directives (.iline)");
    for (const char* directive : {".ifile", ".ifunc", ".iline", ".isym", ".iendfunc"}) {
        for (const bool debug : {false, true}) {
            const std::string text =
                "\t.section\t.debug_info,\"\",@progbits\n\t.long\t1\n\t.string\t\"name\"\n\t" +
                std::string(directive) + "\t1\n\t.byte\t1\n";
            assembly_file assembly;
            const std::optional<assembly_error> error =
                read_assembly(text, assembly, {.debug = debug});
            ASSERT_TRUE(error) << directive << debug;
            EXPECT_EQ(error->line, 4);
            EXPECT_EQ(error->message, "the input already has interlist directives (" +
                                          std::string(directive) + ")");
        }
    }
    EXPECT_EQ(error_of("\t.macro m\n\t.ifdef\tx\n .ifunc\t1\n\t.ifunc 1\n\t.endm\n"), "");
}
