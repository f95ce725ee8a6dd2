// What is said of assembly without positions, by what it has instead.
#include "assembly/line_information.h"

#include <gtest/gtest.h>

#include <string>

using namespace assembly;

namespace {

std::string said_of(const std::string& text) {
    assembly_file assembly;
    EXPECT_FALSE(read_assembly(text, assembly));
    return std::string(missing_lines(assembly, text));
}

const std::string function = "\t.type\tf, @function\nf:\n\tret\n\t.size\tf, .-f\n";

}  // namespace

TEST(MissingLines, AreNoneWhereAFunctionHasOne) {
    EXPECT_EQ(said_of("\t.type\tf, @function\nf:\n\t.loc 1 2\n\tret\n"), "");
    EXPECT_EQ(said_of("\t.type\tf, @function\nf:\n\t.loc 1 2\n\tret\n" + function), "");
}

TEST(MissingLines, AreNoneWhereThereIsNoFunction) {
    EXPECT_EQ(said_of(""), "");
    EXPECT_EQ(said_of("\t.data\nx:\n\t.long 1\n"), "");
    EXPECT_EQ(said_of("\t.data\nx:\n\t.long 1\n\t.section\t.debug_line,\"\",@progbits\n"), "");
}

TEST(MissingLines, AskForTheirOption) {
    EXPECT_EQ(said_of(function), "no line information; compile with -g");
    EXPECT_EQ(said_of("\t.type\tf, @function\nf:\n\t.loc 1 0\n\tret\n"),
              "no line information; compile with -g");
}

TEST(MissingLines, AskForTheFormThatIsRead) {
    EXPECT_EQ(said_of(function + "\t.cv_loc\t0 1 3 0\n"),
              "no lines but those of CodeView; compile with -gdwarf");
    EXPECT_EQ(said_of(function + "\t.stabn\t68,0,3,.LM0-.LFBB1\n"),
              "no lines but those of stabs; compile with -gdwarf");
    EXPECT_EQ(said_of(function + "\t.section\t.debug_line,\"\",@progbits\n"),
              "no lines but those in a table; compile with -gas-loc-support");
    EXPECT_EQ(said_of(function + "\t.ascii\t\"\t.cv_loc\t\"\n"),
              "no line information; compile with -g");
}

TEST(MissingLines, AskForCodeInPlaceOfWhatIsLeftToTheLinker) {
    EXPECT_EQ(said_of("\t.section\t.gnu.lto_.opts,\"e\",@progbits\n\t.string \"-O\"\n"),
              "no code, which -flto leaves to the linker; compile without -flto");
    EXPECT_EQ(said_of("source_filename = \"a.c\"\n\ndefine i32 @f() {\n  ret i32 0\n}\n"),
              "intermediate code in place of assembly; compile without -flto");
}
