// Which functions code came through, by the debugging data of one small program that
// several compilers made assembly of.
#include "assembly/debug_info.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/label_index.h"
#include "assembly/reader.h"
#include "assembly/text_file.h"

using namespace assembly;

namespace {

struct program {
    std::optional<text_file> file = {};
    assembly_file code = {};
    debug_info debug = {};
};

program read(std::string_view text) {
    program it;
    EXPECT_FALSE(read_assembly(text, it.code, {.debug = true}));
    it.debug = read_debug_info(it.code, label_index(it.code));
    return it;
}

// "square:2 sum_of_squares:6 outer:12": each function with the line that the code is on,
// or that it was called on.
std::string chain(const program& it, std::size_t index) {
    const std::uint32_t position = it.code.instructions[index].position;
    std::uint32_t line = position == none ? 0 : it.code.positions[position].line;
    std::string result;
    for (std::uint32_t scope = it.debug.scope_of[index]; scope != none;
         scope = it.debug.scopes[scope].parent) {
        result += result.empty() ? "" : " ";
        result += it.debug.functions[it.debug.scopes[scope].function].name;
        result += ':';
        result += std::to_string(line);
        line = it.debug.scopes[scope].call_line;
    }
    return result;
}

}  // namespace

namespace {

// One compiler's assembly of inlined.c, and what begins a line of code for each source line.
struct build {
    const char* name;
    const char* store;     // *result = a
    const char* square_a;  // in line 6
    const char* square_b;  // in line 7
    const char* minus;     // - 7
};

constexpr build builds[] = {
    {"gcc_4", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "leal\t-7("},
    {"gcc_4_split", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "leal\t-7("},
    {"gcc_5", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "leal\t-7("},
    {"gcc_5_split", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "leal\t-7("},
    {"gcc_5_mingw", "movl\t%ecx, (", "imull\t%ecx", "imull\t%edx", "leal\t-7("},
    {"clang_4", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "addl\t$-7"},
    {"clang_5", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "addl\t$-7"},
    {"clang_5_split", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "addl\t$-7"},
    {"clang_lines_only", "movl\t%edi, (", "imull\t%edi", "imull\t%esi", "addl\t$-7"},
    // Here one instruction multiplies and adds, and counts as the addition.
    {"clang_4_darwin", "str\tw0, [", nullptr, "mul\tw8, w1, w1", "sub\tw0, w8, #7"},
};

program read_build(const char* name) {
    std::optional<text_file> file = text_file::open("../data/inlined/" + std::string(name) + ".s");
    EXPECT_TRUE(file) << name;
    program it = read(file->text());
    it.file = std::move(file);
    return it;
}

// The chain of the only line of code that begins so.
std::string chain_of(const program& it, std::string_view code) {
    std::string result = "none";
    for (std::size_t i = 0; i < it.code.instructions.size(); ++i) {
        std::string_view line = it.code.text.substr(it.code.instructions[i].at);
        line.remove_prefix(line.find_first_not_of(" \t"));
        if (line.starts_with(code)) {
            EXPECT_EQ(result, "none");
            result = chain(it, i);
        }
    }
    return result;
}

}  // namespace

TEST(DebugInfo, TellsTheChainOfInlinedFunctions) {
    for (const build& row : builds) {
        SCOPED_TRACE(row.name);
        const program it = read_build(row.name);
        EXPECT_FALSE(it.debug.is_partial);
        EXPECT_EQ(chain_of(it, row.store), "outer:11");
        if (row.square_a != nullptr) {
            EXPECT_EQ(chain_of(it, row.square_a), "square:2 sum_of_squares:6 outer:12");
        }
        EXPECT_EQ(chain_of(it, row.square_b), "square:2 sum_of_squares:7 outer:12");
        EXPECT_EQ(chain_of(it, row.minus), "outer:12");
    }
}

TEST(DebugInfo, TellsWhereAFunctionIsDeclared) {
    for (const build& row : builds) {
        SCOPED_TRACE(row.name);
        const program it = read_build(row.name);
        std::vector<std::string> functions;
        for (const source_function& function : it.debug.functions) {
            functions.push_back(std::string(function.name) + ":" +
                                std::to_string(function.decl_line));
            EXPECT_TRUE(it.code.files.contains(function.decl_file) ||
                        std::string_view(row.name) == "clang_lines_only");
        }
        std::sort(functions.begin(), functions.end());
        if (std::string_view(row.name) == "clang_lines_only") {
            EXPECT_EQ(functions,
                      (std::vector<std::string>{"outer:0", "square:0", "sum_of_squares:0"}));
        } else {
            EXPECT_EQ(functions,
                      (std::vector<std::string>{"outer:10", "square:1", "sum_of_squares:5"}));
        }
    }
}

TEST(DebugInfo, TellsTheDirectoryThatTheCompilerRanIn) {
    for (const build& row : builds) {
        const program it = read_build(row.name);
        EXPECT_EQ(it.debug.compilation_directory, "/src") << row.name;
        const file_entry main = compiled_file(it.code, label_index(it.code));
        EXPECT_EQ(main.directory, "/src") << row.name;
        // Where the data stand beside the object, what is left in it tells no name.
        const bool is_split = std::string_view(row.name).ends_with("_split");
        EXPECT_EQ(main.name, is_split ? "" : "inlined.c") << row.name;
    }
}

TEST(DebugInfo, CodeOfNoFunctionHasNoScope) {
    const program it = read(
        "f:\n\tnop\n\t.section .debug_info\n\t.long .Lend-.Lbegin\n.Lbegin:\n\t.value 5\n"
        "\t.byte 1\n\t.byte 8\n\t.long .Labbrev\n\t.byte 1\n.Lend:\n"
        "\t.section .debug_abbrev\n.Labbrev:\n\t.byte 1, 0x11, 0, 0, 0, 0\n");
    EXPECT_FALSE(it.debug.is_partial);
    EXPECT_EQ(it.debug.scope_of, std::vector<std::uint32_t>{none});
}

TEST(DebugInfo, SaysWhenSomethingIsNotUnderstood) {
    // A unit of version 6, one without abbreviations, one that is longer than its section,
    // one with an unknown abbreviation, one with an unknown form.
    const struct {
        const char* info;
        const char* abbrev;
    } rows[] = {
        {"\t.long 8\n\t.value 6\n\t.byte 1, 8\n\t.long 0\n\t.byte 1\n",
         "\t.byte 1, 0x11, 0, 0, 0, 0\n"},
        {"\t.long 9\n\t.value 5\n\t.byte 1, 8\n\t.long 0\n\t.byte 1\n", ""},
        {"\t.long 99\n\t.value 5\n\t.byte 1, 8\n\t.long 0\n\t.byte 1\n",
         "\t.byte 1, 0x11, 0, 0, 0, 0\n"},
        {"\t.long 10\n\t.value 5\n\t.byte 1, 8\n\t.long 0\n\t.byte 1, 7\n",
         "\t.byte 1, 0x11, 1, 0, 0, 0\n"},
        {"\t.long 10\n\t.value 5\n\t.byte 1, 8\n\t.long 0\n\t.byte 1, 2\n",
         "\t.byte 1, 0x11, 1, 0, 0, 2, 0x2e, 0, 3, 0x7f, 0, 0, 0\n"},
    };
    for (const auto& row : rows) {
        const std::string text = std::string("f:\n\tnop\n\t.section .debug_info\n") + row.info +
                                 "\t.section .debug_abbrev\n" + row.abbrev;
        EXPECT_TRUE(read(text).debug.is_partial) << row.info;
    }
}

// Wherever the text is cut off, reading ends, within memory that is its own.
TEST(DebugInfo, MayBeCutOffAnywhere) {
    for (const build& row : builds) {
        const program whole = read_build(row.name);
        const std::string_view text = whole.code.text;
        for (std::size_t size = text.size() * 2 / 5; size < text.size(); size += 11) {
            // A copy, so that a look beyond its end is one beyond its memory.
            const std::string cut(text.substr(0, size));
            assembly_file code;
            if (!read_assembly(cut, code, {.debug = true})) {
                EXPECT_LE(read_debug_info(code, label_index(code)).scopes.size(), 4U);
            }
        }
    }
}
