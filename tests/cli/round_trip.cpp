// From a C file through the system's compilers, gas2interlist and interlist: a listing
// that is the compiler's assembly, with the C lines above their code.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/harness/program.h"

namespace {

const std::string examples = "../../examples/";
const std::string data = "../data/gas/";

// A run in `folder` with `input` on standard input.
RunOptions in(const std::string& folder, const std::string& input = {}) {
    RunOptions options;
    options.directory = folder;
    options.input = input;
    return options;
}

struct ListedLine {
    std::size_t number;
    std::string text;
};

struct Listing {
    std::string assembly;  // every line that is neither a C line nor a separator
    std::vector<ListedLine> lines;
};

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

// No compiler for this machine begins a line with a semicolon.
Listing read_listing(const std::string& text) {
    Listing listing;
    for (const std::string& line : split(text)) {
        if (!line.starts_with(';')) {
            listing.assembly += line + "\n";
        } else if (!line.starts_with(";-")) {
            const std::size_t bar = line.find(" | ");
            EXPECT_NE(bar, std::string::npos) << line;
            listing.lines.push_back({std::stoul(line.substr(1)), trimmed(line.substr(bar + 3))});
        }
    }
    return listing;
}

std::vector<std::string> installed(std::vector<std::string> compilers) {
    std::erase_if(compilers, [](const std::string& name) { return !has_command(name); });
    return compilers;
}

// Compiles `source` in `folder` and makes a listing of it with whole, unshifted lines.
Listing round_trip(const ScratchFolder& folder, const std::string& compiler,
                   const std::vector<std::string>& options, const std::string& source) {
    std::vector<std::string> compile = {compiler, "-S", "-g", "-w", source, "-o", "out.s"};
    compile.insert(compile.end(), options.begin(), options.end());
    const RunOptions here = in(folder.path());
    const Finished compiled = run_program(compile, here);
    EXPECT_EQ(compiled.status, 0) << compiled.err;
    const Finished placed = run_program({GAS2INTERLIST, "out.s", "-o", "out.asm"}, here);
    EXPECT_EQ(placed.status, 0);
    EXPECT_EQ(placed.err, "");
    const Finished listed = run_program({INTERLIST, "-pw", "300", "out.asm", "out.cl"}, here);
    EXPECT_EQ(listed.status, 0) << listed.err;
    EXPECT_EQ(listed.err, "");
    return read_listing(folder.read("out.cl"));
}

void expect_faithful(const Listing& listing, const std::string& assembly,
                     const std::vector<std::vector<std::string>>& sources) {
    EXPECT_TRUE(listing.assembly == assembly);
    EXPECT_FALSE(listing.lines.empty());
    for (const ListedLine& line : listing.lines) {
        const bool is_of_a_source =
            std::any_of(sources.begin(), sources.end(), [&](const std::vector<std::string>& text) {
                return line.number >= 1 && line.number <= text.size() &&
                       text[line.number - 1] == line.text;
            });
        EXPECT_TRUE(is_of_a_source) << line.number << " | " << line.text;
    }
}

void check(const std::vector<std::string>& compilers, const std::vector<std::string>& files,
           const std::string& main_file) {
    const ScratchFolder folder;
    std::vector<std::vector<std::string>> sources;
    for (const std::string& file : files) {
        const std::string text = read_file(file);
        folder.write(file.substr(file.rfind('/') + 1), text);
        sources.push_back(split(text));
    }
    const std::vector<std::vector<std::string>> option_sets = {
        {"-O0"}, {"-O1"}, {"-O2", "-ffunction-sections"}, {"-O3"}, {"-O1", "-gdwarf-4"}};
    for (const std::string& compiler : compilers) {
        for (const std::vector<std::string>& options : option_sets) {
            SCOPED_TRACE(testing::Message() << compiler << " " << options[0] << " " << main_file);
            const Listing listing = round_trip(folder, compiler, options, main_file);
            expect_faithful(listing, folder.read("out.s"), sources);
        }
    }
}

const std::vector<std::string> c_compilers = {"cc", "gcc", "clang"};
const std::vector<std::string> cpp_compilers = {"g++", "clang++"};

}  // namespace

TEST(RoundTrip, AListingOfCIsTheAssemblyWithItsLines) {
    const std::vector<std::string> compilers = installed(c_compilers);
    if (compilers.empty()) {
        GTEST_SKIP() << "no C compiler is installed";
    }
    check(compilers, {examples + "fir.c"}, "fir.c");
    check(compilers, {examples + "matrix.c"}, "matrix.c");
    check(compilers, {examples + "checksum.c"}, "checksum.c");
    check(compilers, {data + "sample.c", data + "limits.h"}, "sample.c");
}

TEST(RoundTrip, AListingOfCppIsTheAssemblyWithItsLines) {
    const std::vector<std::string> compilers = installed(cpp_compilers);
    if (compilers.empty()) {
        GTEST_SKIP() << "no C++ compiler is installed";
    }
    check(compilers, {data + "sample.cpp"}, "sample.cpp");
}

// fir() of fir.c reaches from line 5 to line 21.
TEST(RoundTrip, EveryLineOfAFunctionIsListedOnceAndInOrder) {
    const std::vector<std::string> compilers = installed(c_compilers);
    if (compilers.empty()) {
        GTEST_SKIP() << "no C compiler is installed";
    }
    const ScratchFolder folder;
    folder.write("fir.c", read_file(examples + "fir.c"));
    for (const std::string& compiler : compilers) {
        for (const std::string level : {"-O0", "-O1", "-O2", "-O3"}) {
            SCOPED_TRACE(testing::Message() << compiler << " " << level);
            std::vector<std::size_t> numbers;
            for (const ListedLine& line : round_trip(folder, compiler, {level}, "fir.c").lines) {
                numbers.push_back(line.number);
            }
            EXPECT_EQ(numbers, (std::vector<std::size_t>{5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16,
                                                         17, 18, 19, 20, 21}));
        }
    }
}

// Unoptimised code of a line stands below that line and above the next with code.
TEST(RoundTrip, CodeStandsBelowItsOwnLine) {
    const std::vector<std::string> compilers = installed(c_compilers);
    if (compilers.empty()) {
        GTEST_SKIP() << "no C compiler is installed";
    }
    const ScratchFolder folder;
    folder.write("a.c",
                 "void mark(int);\n"
                 "void f(void)\n"
                 "{\n"
                 "    mark(111);\n"
                 "\n"
                 "    /* then */\n"
                 "    mark(222);\n"
                 "    mark(333);\n"
                 "}\n");
    for (const std::string& compiler : compilers) {
        round_trip(folder, compiler, {"-O0"}, "a.c");
        const std::string listing = folder.read("out.cl");
        std::size_t at = 0;
        for (const std::string_view step :
             {";   2 | void f(void)", ";   3 | {", "f:", ";   4 |     mark(111);", "111", "mark",
              ";   5 |", ";   6 |     /* then */", ";   7 |     mark(222);", "222", "mark",
              ";   8 |     mark(333);", "333", "mark", ";   9 | }", "ret"}) {
            const std::size_t found = listing.find(step, at);
            ASSERT_NE(found, std::string::npos) << compiler << ": " << step;
            at = found + step.size();
        }
    }
}

namespace {

// What gas2interlist says of assembly that was compiled with these arguments, and the name
// that it gives the source: `err` and `out`.
Finished names_of(const ScratchFolder& folder, std::vector<std::string> compile) {
    compile.insert(compile.end(), {"-S", "-w", "-o", "out.s"});
    const Finished compiled = run_program(compile, in(folder.path()));
    EXPECT_EQ(compiled.status, 0) << compiled.err;
    Finished placed = run_program({GAS2INTERLIST, "out.s"}, in(folder.path()));
    EXPECT_EQ(placed.status, 0);
    const std::size_t at = std::min(placed.out.find("\t.ifile\t"), placed.out.size());
    placed.out = placed.out.substr(at, placed.out.find('\n', at) - at);
    return placed;
}

const std::string warning = "gas2interlist: out.s: warning: ";

}  // namespace

TEST(RoundTrip, TheNameOfASourceIsThatOfTheFileThatWasCompiled) {
    for (const std::string& compiler : installed({"gcc", "clang"})) {
        const ScratchFolder folder;
        folder.write("u.c", "int f(void)\n{\n    return 1;\n}\n");
        const std::string full = folder / "u.c";
        for (const std::string version : {"-gdwarf-5", "-gdwarf-4", "-gdwarf-2"}) {
            SCOPED_TRACE(testing::Message() << compiler << " " << version);
            const Finished brief = names_of(folder, {compiler, version, "u.c"});
            EXPECT_EQ(brief.out + brief.err, "\t.ifile\t\"u.c\"");
            const Finished absolute = names_of(folder, {compiler, version, full});
            EXPECT_EQ(absolute.out + absolute.err, "\t.ifile\t\"" + full + "\"");
        }
    }
}

TEST(RoundTrip, ASourceOfTheSameNameIsTakenWithAWarning) {
    for (const std::string& compiler : installed({"gcc", "clang"})) {
        SCOPED_TRACE(compiler);
        const ScratchFolder folder;
        folder.write("u.c", "int f(void)\n{\n    return 1;\n}\n");
        const std::string map = "-fdebug-prefix-map=" + folder.path() + "=";
        const std::vector<std::string> moved = {compiler, "-g", map + "/src", "u.c"};
        const std::vector<std::string> nowhere = {compiler, "-g", map + ".", "u.c"};
        const bool has_checksum = compiler == "clang";
        EXPECT_EQ(
            names_of(folder, moved).err,
            has_checksum ? "" : warning + "u.c: found here, though it was compiled as /src/u.c\n");
        EXPECT_EQ(names_of(folder, nowhere).err,
                  has_checksum ? ""
                               : warning +
                                     "u.c: found here, though the assembly does not tell "
                                     "where it was compiled\n");
        // Another file of that name, older than the assembly.
        folder.write("sub/u.c", folder.read("u.c") + "\n");
        const Finished compiled = run_program(
            {compiler, "-g", "-S", map + "/src", "u.c", "-o", "sub/out.s"}, in(folder.path()));
        EXPECT_EQ(compiled.status, 0) << compiled.err;
        EXPECT_EQ(
            run_program({GAS2INTERLIST, "out.s"}, in(folder / "sub")).err,
            warning + (has_checksum ? "u.c: not the text that was compiled\n"
                                    : "u.c: found here, though it was compiled as /src/u.c\n"));
    }
}

TEST(RoundTrip, AssemblyWithoutLinesTellsHowToGetThem) {
    struct Case {
        std::string compiler;
        std::vector<std::string> options;
        std::string message;
    };
    const ScratchFolder folder;
    folder.write("u.c", "int f(void)\n{\n    return 1;\n}\n");
    for (const Case& each :
         std::vector<Case>{{"gcc", {}, "no line information; compile with -g"},
                           {"clang", {}, "no line information; compile with -g"},
                           {"gcc",
                            {"-g", "-flto"},
                            "no code, which -flto leaves to the linker; compile without "
                            "-flto"},
                           {"clang",
                            {"-g", "-flto"},
                            "intermediate code in place of assembly; compile without "
                            "-flto"},
                           {"gcc",
                            {"-g", "-gno-as-loc-support"},
                            "no lines but those in a table; compile with "
                            "-gas-loc-support"},
                           {"clang",
                            {"-g", "-gcodeview", "--target=x86_64-pc-windows-msvc"},
                            "no lines but those of CodeView; compile with -gdwarf"}}) {
        if (!has_command(each.compiler)) {
            continue;
        }
        std::vector<std::string> compile = {each.compiler, "u.c"};
        compile.insert(compile.end(), each.options.begin(), each.options.end());
        const Finished run = names_of(folder, compile);
        EXPECT_EQ(run.err, warning + each.message + "\n") << testing::PrintToString(compile);
        EXPECT_EQ(run.out, "");
    }
}

// x86 (unless this machine is none), ARM, AArch64 and RISC-V.
TEST(RoundTrip, MostAssemblersRefuseAListing) {
    const ScratchFolder folder;
    folder.write("f.c", "void f(void)\n{\n}\n");
    folder.write("f.asm", "\t.ifile\t\"f.c\"\n\t.ifunc\t1\nf:\n\tnop\n\t.iendfunc\t4\n");
    ASSERT_EQ(run_program({INTERLIST, "f.asm"}, in(folder.path())).status, 0);
    folder.write("f.s", read_listing(folder.read("f.cl")).assembly);
    for (const std::string assembler :
         {"as", "arm-linux-gnueabihf-as", "aarch64-linux-gnu-as", "riscv64-linux-gnu-as"}) {
        if (run_program({assembler, "--version"}).status != 0) {
            continue;
        }
        const Finished code = run_program({assembler, "f.s", "-o", "f.o"}, in(folder.path()));
        EXPECT_EQ(code.status, 0) << assembler << code.err;
        const Finished listing = run_program({assembler, "f.cl", "-o", "f.o"}, in(folder.path()));
        EXPECT_NE(listing.status, 0) << assembler;
    }
}

// Another folder's file of the same name is not taken for the one that was compiled, or not
// without a word, whatever version of the debugging format tells where that was.
TEST(RoundTrip, AnotherFileOfTheSameNameIsNeverTakenSilently) {
    const ScratchFolder compiled;
    const ScratchFolder elsewhere;
    compiled.write("v.c", "int f(void)\n{\n\treturn 1;\n}\n");
    elsewhere.write("v.c", "/* another */\nint other(void) { return 1; }\n");
    const std::string full = compiled / "v.c";
    const std::string assembly = compiled / "v.s";
    const std::string map = "-fdebug-prefix-map=" + compiled.path() + "=";
    const auto has_name = [](const Finished& run, const std::string& name) {
        return run.out.find("\t.ifile\t\"" + name + "\"\n") != std::string::npos;
    };
    const auto place = [&](const ScratchFolder& from) {
        return run_program({GAS2INTERLIST, assembly}, in(from.path()));
    };
    for (const std::string& compiler : installed({"gcc", "clang"})) {
        for (const std::string version : {"-gdwarf-2", "-gdwarf-3", "-gdwarf-4", "-gdwarf-5"}) {
            SCOPED_TRACE(testing::Message() << compiler << " " << version);
            const auto compile = [&](const std::string& option, const std::string& name) {
                const Finished made = run_program(
                    {compiler, "-S", version, option, name, "-o", "v.s"}, in(compiled.path()));
                EXPECT_EQ(made.status, 0) << made.err;
            };
            for (const std::string& name : {full, std::string("v.c")}) {
                compile("-w", name);
                EXPECT_EQ(place(compiled).err, "");
                const Finished run = place(elsewhere);
                EXPECT_EQ(run.err, "");
                EXPECT_TRUE(has_name(run, full));
            }
            const bool has_checksum = compiler == "clang" && version == "-gdwarf-5";
            const std::string not_told =
                "found here, though the assembly does not tell where it was compiled";
            for (const auto& [folder, doubt] : std::vector<std::pair<std::string, std::string>>{
                     {"", not_told},
                     {".", not_told},
                     {"/nowhere", "found here, though it was compiled as /nowhere/v.c"}}) {
                compile(map + folder, "v.c");
                EXPECT_EQ(place(elsewhere).err,
                          "gas2interlist: " + assembly + ": warning: v.c: " +
                              (has_checksum ? "not the text that was compiled" : doubt) + "\n");
            }
            EXPECT_EQ(
                run_program({GAS2INTERLIST, "--no-warnings", assembly}, in(elsewhere.path())).err,
                "");
            // What this leads to is another name, or the same one.
            for (const std::string& name : {full, std::string("v.c")}) {
                compile(map + "renamed", name);
                const Finished run = place(elsewhere);
                EXPECT_NE(has_name(run, "v.c"), run.err.empty()) << run.err;
            }
        }
    }
}
