// How each target's assembler writes comments, and how a text gives its target away.
#include "assembly/dialect.h"

#include <gtest/gtest.h>

using namespace assembly;

TEST(Dialect, IsToldByTheTargetsName) {
    const struct {
        const char* triple;
        const char* comment;
        int word_size;
    } rows[] = {
        {"x86_64-linux-gnu", "#", 2},      {"i686-w64-mingw32", "#", 2},
        {"aarch64-linux-gnu", "//", 4},    {"arm-linux-gnueabihf", "@", 4},
        {"thumbv7-none-eabi", "@", 4},     {"riscv64-linux-gnu", "#", 4},
        {"powerpc64le-linux-gnu", "#", 2}, {"avr", ";", 2},
        {"arm64-apple-macos", ";", 4},     {"x86_64-apple-darwin", "##", 2},
        {"sparc64-linux-gnu", "!", 4},     {"m68k-linux-gnu", "|", 2},
        {"never-heard-of", "#", 2},        {"", "#", 2},
    };
    for (const auto& row : rows) {
        const dialect& it = dialect_of_target(row.triple);
        EXPECT_EQ(it.comment, row.comment) << row.triple;
        EXPECT_EQ(it.word_size, row.word_size) << row.triple;
    }
}

// The first lines that compilers write.
TEST(Dialect, IsToldByTheText) {
    const struct {
        const char* text;
        const char* name;
    } rows[] = {
        {"\t.file\t\"t.c\"\n\t.text\n.Ltext0:\n", "x86_64"},
        {"\t.text\n\t.file\t\"t.c\"\n\t.globl\tf   # -- Begin function f\n", "x86_64"},
        {"\t.arch armv8-a\n\t.file\t\"t.c\"\n", "aarch64"},
        {"\t.text\n\t.globl\tf                               // -- Begin function f\n", "aarch64"},
        {"\t.arch armv7-a\n\t.fpu vfpv3-d16\n\t.eabi_attribute 28, 1\n", "arm"},
        {"\t.text\n\t.syntax unified\n\t.eabi_attribute\t67, \"2.09\"\t@ Tag\n", "arm"},
        {"\t.file\t\"t.c\"\n\t.option pic\n\t.attribute arch, \"rv64i2p1\"\n", "riscv"},
        {"\t.text\n\t.attribute\t4, 16\n\t.attribute\t5, \"rv64i2p0\"\n", "riscv"},
        {"\t.file\t\"t.c\"\n\t.machine power8\n\t.abiversion 2\n", "powerpc"},
        {"\t.section\t__TEXT,__text\n\t.globl\t_f    ; -- Begin function f\n", "aarch64-apple"},
        {"\t.section\t__TEXT,__text\n\t.globl\t_f    ## -- Begin function f\n", "x86_64-apple"},
        {"\t.file\t\"t.c\"\n__SP_H__ = 0x3e\n", "avr"},
        {"#NO_APP\n\t.file\t\"t.c\"\n", "m68k"},
        {"", "x86_64"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(dialect_of_text(row.text).name, row.name) << row.text;
    }
}
