// gas2interlist, every way that it reads and writes.
#include "tests/faults/promise.h"

// What a compiler writes for a function of `lines` lines at line `first` of file 1.
static std::string function(const std::string& name, int first, int lines) {
    std::string text = "\t.type " + name + ", @function\n" + name + ":\n";
    for (int line = first; line < first + lines; ++line) {
        text += "\t.loc 1 " + std::to_string(line) + " 5\n\tmovl\t%eax, %ebx\n";
    }
    return text + "\tret\n\t.size " + name + ", .-" + name + "\n";
}

static std::vector<scenario> scenarios() {
    const std::string source =
        "int f(int x)\n{\n    return x;\n}\n\nint g(int y)\n{\n    return y;\n}\n";
    const std::string head = "\t.file \"a.c\"\n\t.text\n\t.file 1 \"a.c\"\n";
    const std::string assembly = head + function("f", 1, 3) + function("g", 6, 3);
    std::string much = head;
    for (int i = 0; i < 100; ++i) {
        much += function(std::string("f").append(std::to_string(i)), 1 + i % 7, 3);
    }
    return {
        {"filter", {}, {{"a.c", source}}, assembly, {}},
        {"to_a_file", {"-o", "out.asm"}, {{"a.c", source}}, assembly, {"out.asm"}},
        {"over_a_file",
         {"-o", "out.asm", "in.s"},
         {{"a.c", source}, {"in.s", assembly}, {"out.asm", "old\n"}},
         "",
         {"out.asm"}},
        {"in_place", {"-o", "in.s", "in.s"}, {{"a.c", source}, {"in.s", assembly}}, "", {"in.s"}},
        {"much",
         {"-o", "out.asm", "in.s"},
         {{"a.c", source}, {"in.s", much}, {"out.asm", "old\n"}},
         "",
         {"out.asm"}},
        {"much_through_pipes", {}, {{"a.c", source}}, much, {}},
        {"without_the_source", {"in.s"}, {{"in.s", assembly}}, "", {}},
        {"a_source_that_moved",
         {"--source-map", "a=b/c", "in.s"},
         {{"b/c.c", source}, {"in.s", assembly}},
         "",
         {}},
        {"malformed", {"in.s", "-o", "x"}, {{"in.s", "\t.loc 1 x\n"}, {"x", "old\n"}}, "", {"x"}},
        {"no_input", {"none.s"}, {}, "", {}},
        {"an_unknown_option", {"--wrong"}, {}, "", {}},
        {"help", {"--help"}, {}, "", {}},
        {"version", {"--version"}, {}, "", {}},
    };
}

// A source that cannot be read is told, and its functions are placed by what the assembly
// tells of them.
static bool excused(const scenario&, const fault&, const outcome&, const outcome& now) {
    return now.finished.err.find(".c: cannot be read: ") != std::string::npos;
}

const tested_program& program_under_test() {
    static const tested_program program{.path = GAS2INTERLIST,
                                        .scenarios = scenarios(),
                                        .keeps_old_outputs = true,
                                        .excused = excused};
    return program;
}
