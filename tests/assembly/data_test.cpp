// The bytes that debugging sections are read into, and what ends them.
#include "assembly/data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

using namespace assembly;
using namespace std::string_literals;

namespace {

assembly_file read(std::string_view text, const char* target = "x86_64") {
    assembly_file assembly;
    EXPECT_FALSE(
        read_assembly(text, assembly, {.language = &dialect_of_target(target), .debug = true}));
    return assembly;
}

std::string bytes_of(const std::string& lines, const char* target = "x86_64") {
    const std::string text = "\t.section .debug_info\n" + lines;
    const assembly_file assembly = read(text, target);
    return assembly.debug.empty() ? "" : assembly.debug[0].bytes;
}

}  // namespace

TEST(DebugData, NumbersAreReadInEverySizeAndBase) {
    const struct {
        const char* line;
        std::string bytes;
    } rows[] = {
        {"\t.byte\t0x1f", "\x1f"s},
        {"\t.byte\t5", "\5"s},
        {"\t.byte\t010", "\10"s},
        {"\t.byte 0b101", "\5"s},
        {"\t.byte\t-1", "\xff"s},
        {"\t.byte 1, 2,3 # three", "\1\2\3"s},
        {"\t.byte\t0", "\0"s},
        {"\t.byte\t12                              # Abbrev [12]", "\14"s},
        {"\t.value\t0x1234", "\x34\x12"s},
        {"\t.2byte\t0x1234", "\x34\x12"s},
        {"\t.short\t300", "\x2c\1"s},
        {"\t.hword\t300", "\x2c\1"s},
        {"\t.half\t300", "\x2c\1"s},
        {"\t.long\t0x12345678", "\x78\x56\x34\x12"s},
        {"\t.4byte\t0xABCDEF01", "\x01\xef\xcd\xab"s},
        {"\t.int\t1", "\1\0\0\0"s},
        {"\t.quad\t0x0123456789abcdef", "\xef\xcd\xab\x89\x67\x45\x23\x01"s},
        {"\t.quad\t0xffffffffffffffff", "\xff\xff\xff\xff\xff\xff\xff\xff"s},
        {"\t.quad\t18446744073709551615", "\xff\xff\xff\xff\xff\xff\xff\xff"s},
        {"\t.8byte\t1", "\1\0\0\0\0\0\0\0"s},
        {"\t.xword\t1", "\1\0\0\0\0\0\0\0"s},
        {"\t.dword\t1", "\1\0\0\0\0\0\0\0"s},
        {"\t.uleb128 0x7f", "\x7f"s},
        {"\t.uleb128 128", "\x80\1"s},
        {"\t.uleb128 1, 2", "\1\2"s},
        {"\t.sleb128 -1", "\x7f"s},
        {"\t.sleb128 63", "\x3f"s},
        {"\t.sleb128 64", "\xc0\0"s},
        {"\t.sleb128 -65", "\xbf\x7f"s},
        {"\t.sleb128 -9223372036854775808", "\x80\x80\x80\x80\x80\x80\x80\x80\x80\x7f"s},
        {"\t.ascii \"ab\\0\"", "ab\0"s},
        {"\t.string\t\"ab\", \"c\"", "ab\0c\0"s},
        {"\t.asciz\t\"a\\\"b\\\\\"", "a\"b\\\0"s},
        {"\t.zero\t3", "\0\0\0"s},
        {"\t.skip 2,7", "\7\7"s},
        {"\t.zero 4000000000", ""s},
        {"# comment", ""s},
        {"\t# comment", ""s},
        {"", ""s},
        {".La: .byte 1", "\1"s},
    };
    for (const auto& row : rows) {
        for (const char* end : {"", "\n", "\r\n"}) {
            EXPECT_EQ(bytes_of(std::string(row.line) + end), row.bytes) << row.line;
            // The same where much text follows, which the quicker way asks for.
            EXPECT_EQ(bytes_of(std::string(row.line) + "\n" + std::string(100, '\n')), row.bytes);
        }
    }
}

TEST(DebugData, AWordIsOfTheTargetsSize) {
    EXPECT_EQ(bytes_of("\t.word 1\n", "x86_64"), "\1\0"s);
    EXPECT_EQ(bytes_of("\t.word 1\n", "riscv64"), "\1\0\0\0"s);
}

TEST(DebugData, ExpressionsAreLeftForLater) {
    const std::string_view text =
        "\t.section .debug_info\n"
        "\t.byte\t9\n"
        "\t.long\t.LASF1\n"
        "\t.quad\t.Lb-.La\n"
        "\t.uleb128 .Lb-.La\n"
        "\t.long\t4+5\n"
        "\t.secrel32\t.LASF2\n"
        "\t.byte\t1\n"
        "                                                                     \n";
    const assembly_file assembly = read(text);
    const debug_contents& contents = assembly.debug.at(0);
    EXPECT_EQ(contents.bytes, "\11"s + std::string(4 + 8 + 1 + 4 + 4, '\0') + "\1");
    std::vector<std::string> expressions;
    for (const debug_contents::expression& it : contents.expressions) {
        const std::string_view rest = text.substr(it.text_at);
        expressions.push_back(std::to_string(it.offset) + " " +
                              std::string(rest.substr(0, rest.find('\n'))));
    }
    EXPECT_EQ(expressions, (std::vector<std::string>{"1 .LASF1", "5 .Lb-.La", "13 .Lb-.La",
                                                     "14 4+5", "18 .LASF2"}));
}

TEST(DebugData, LabelsHaveTheirOffset) {
    const assembly_file assembly = read(
        "\t.section .debug_str,\"MS\",@progbits,1\n"
        ".LASF0:\n\t.string \"ab\"\n.LASF1:\n\t.string \"c\"\n");
    ASSERT_EQ(assembly.labels.size(), 2U);
    EXPECT_EQ(assembly.labels[0].place, 0U);
    EXPECT_EQ(assembly.labels[1].place, 3U);
    EXPECT_EQ(assembly.labels[1].section, assembly.debug[0].section);
}

TEST(DebugData, EndsWhereTheSectionDoes) {
    const struct {
        const char* name;
        const char* line;
    } rows[] = {
        {".section", "\t.section .text"}, {".text", "\t.text"},
        {".text in column one", ".text"}, {".text behind blanks", "  \t .text"},
        {".previous", "\t.previous"},     {".pushsection", "\t.pushsection .text"},
        {".data", "\t.data\n\t.text"},    {".bss", "\t.bss\n\t.text"},
    };
    for (const auto& row : rows) {
        for (const char* section : {".debug_info", ".debug_loclists"}) {
            for (const std::size_t lines : {0U, 1U, 2U, 3U, 20U, 21U}) {
                std::string text = "\t.section " + std::string(section) + "\n";
                for (std::size_t i = 0; i < lines; ++i) {
                    text += "\t.byte\t1\n.Lx" + std::to_string(i) + ":\n\t.string \".text\"\n";
                }
                text += row.line;
                text += "\n\tnop\n";
                EXPECT_EQ(read(text).instructions.size(), 1U) << row.name << " " << lines;
            }
        }
    }
}

// Wherever in the text it stands, and whatever stands before it.
TEST(DebugData, ThatIsNotReadEndsAtEveryDirectiveThatMatters) {
    const char* const rows[] = {
        "\t.section\t.text",
        "\t.text",
        "\t.text 1",
        "\t.subsection 1\n.text",
        "\t.data\n.text",
        "\t.bss\n.text",
        "\t.rdata\n.text",
        "\t.sdata\n.text",
        "\t.sbss\n.text",
        "\t.cstring\n.text",
        "\t.const\n.text",
        "\t.previous",
        "\t.pushsection .text",
        "\t.file 7 \"a.c\"\n.text",
    };
    for (const char* row : rows) {
        for (std::size_t letters = 0; letters < 140; ++letters) {
            const std::string text = "\t.section .debug_loclists\n\t.quad\t.L" +
                                     std::string(letters, 'x') + "\n" + row + "\n\tnop\n";
            const assembly_file assembly = read(text);
            ASSERT_EQ(assembly.instructions.size(), 1U) << row << " " << letters;
            ASSERT_EQ(assembly.files.count(7), std::string(row).find("file") != std::string::npos);
        }
    }
}

TEST(DebugData, EndsAtEveryDirectiveThatMatters) {
    for (const std::string section : {".debug_info", ".debug_loclists"}) {
        const std::string data = "\t.section " + section + "\n\t.byte\t1\n";
        for (const char* name : {".data", ".bss", ".rdata", ".sdata", ".sbss", ".cstring", ".const",
                                 ".seh_handlerdata"}) {
            const std::string text = data + "\t" + name + "\n\t.byte\t2\n";
            const assembly_file assembly = read(text);
            EXPECT_TRUE(std::any_of(assembly.sections.begin(), assembly.sections.end(),
                                    [=](const auto& it) { return it.name == name; }))
                << section << name;
        }
        EXPECT_EQ(read(data + "\t.subsection 1\n\t.byte\t2\n").sections.size(),
                  read(data).sections.size() + 1)
            << section;
        EXPECT_EQ(read("\t.pushsection " + section + "\n\t.byte\t1\n\t.popsection\n\tnop\n")
                      .instructions.size(),
                  1U)
            << section;
        for (const char* name : {".ifile", ".ifunc", ".iline", ".isym", ".iendfunc"}) {
            assembly_file assembly;
            EXPECT_TRUE(read_assembly(data + "\t" + name + "\t1\n", assembly, {.debug = true}))
                << section << name;
        }
    }
}

// No compiler leaves more room than its text is long.
TEST(DebugData, RoomIsLeftUpToTheLengthOfTheText) {
    const std::string text = "\t.section .debug_info\n\t.zero\t";
    EXPECT_EQ(read(text + "32\n").debug[0].bytes, std::string(text.size() + 3, '\0'));
    EXPECT_EQ(read(text + "33\n").debug[0].bytes, "");
}

TEST(DebugData, ReturnsToASectionThatWasLeft) {
    const assembly_file assembly = read(
        "\t.section .debug_info\n\t.byte 1\n\t.section .debug_abbrev\n\t.byte 2\n"
        "\t.section .debug_info\n\t.byte 3\n");
    ASSERT_EQ(assembly.debug.size(), 2U);
    EXPECT_EQ(assembly.debug[0].bytes, "\1\3");
    EXPECT_EQ(assembly.debug[1].bytes, "\2");
}

// Compilers name a file as they come to it, between the entries of types too.
TEST(DebugData, MayHaveFilesNamedInIt) {
    for (const char* section : {".debug_info", ".debug_types"}) {
        const assembly_file assembly = read("\t.section " + std::string(section) +
                                            "\n\t.byte 1\n\t.file\t7 \"a.c\"\n\t.byte 2\n");
        EXPECT_EQ(assembly.files.count(7), 1U) << section;
    }
}

TEST(DebugData, IsNotReadUnlessWanted) {
    assembly_file assembly;
    EXPECT_FALSE(read_assembly("\t.section .debug_info\n\t.byte 1\n", assembly));
    EXPECT_TRUE(assembly.debug.empty());
    EXPECT_TRUE(read("\t.section .debug_line\n\t.byte 1\n").debug.empty());
}
