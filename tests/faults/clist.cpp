// clist, every form of listing and every way that it reads and writes by itself.
#include "tests/faults/promise.h"

static const char* const source =
    "int f(int x)\n{\n    return x;\n}\n\nint g(int y)\n{\n    return y;\n}\n";

// What a compiler writes for a function of `lines` lines at line `first` of file 1.
static std::string function(const std::string& name, int first, int lines) {
    std::string text = "\t.globl " + name + "\n\t.type " + name + ", @function\n" + name + ":\n";
    for (int line = first; line < first + lines; ++line) {
        text += "\t.loc 1 " + std::to_string(line) + " 5\n\tmovl\t%eax, %ebx\n";
    }
    return text + "\tret\n\t.size " + name + ", .-" + name + "\n";
}

static std::vector<scenario> scenarios() {
    const std::string head = "\t.file \"a.c\"\n\t.text\n\t.file 1 \"a.c\"\n";
    const std::string assembly = head + function("f", 1, 3) + function("g", 6, 3);
    std::string much = head;
    for (int i = 0; i < 100; ++i) {
        much += function(std::string("f").append(std::to_string(i)), 1 + i % 7, 3);
    }
    std::vector<scenario> all = {
        {"filter", {"-"}, {{"a.c", source}}, assembly, {}},
        {"to_a_file", {"-o", "out", "-"}, {{"a.c", source}}, assembly, {"out"}},
        {"over_a_file",
         {"-o", "out", "in.s"},
         {{"a.c", source}, {"in.s", assembly}, {"out", "old\n"}},
         "",
         {"out"}},
        {"in_place", {"-o", "in.s", "in.s"}, {{"a.c", source}, {"in.s", assembly}}, "", {"in.s"}},
        {"much", {"-o", "out", "in.s"}, {{"a.c", source}, {"in.s", much}}, "", {"out"}},
        {"two_files", {"in.s", "in.s"}, {{"a.c", source}, {"in.s", assembly}}, "", {}},
        {"without_the_source", {"in.s"}, {{"in.s", assembly}}, "", {}},
        {"malformed", {"in.s", "-o", "x"}, {{"in.s", "\t.loc 1 x\n"}, {"x", "old\n"}}, "", {"x"}},
        {"no_such_function",
         {"--function", "none", "-o", "x", "in.s"},
         {{"in.s", assembly}, {"x", "old\n"}},
         "",
         {"x"}},
        {"no_input", {"none.s"}, {}, "", {}},
        {"an_unknown_option", {"--wrong"}, {}, "", {}},
        {"a_project_with_a_broken_database",
         {"-p", "."},
         {{"compile_commands.json", "[{\"file\": 1}]"}},
         "",
         {}},
        {"no_compiler", {"/none/cc", "-c", "a.c"}, {{"a.c", source}}, "", {}},
        {"help", {"--help"}, {}, "", {}},
        {"version", {"--version"}, {}, "", {}},
    };
    for (const std::string form : {"--all", "--list", "--stats", "--json"}) {
        all.push_back(
            {form.substr(2), {form, "in.s"}, {{"a.c", source}, {"in.s", assembly}}, "", {}});
    }
    return all;
}

// A source that cannot be read is told, and costs its lines.
static bool lacks_a_source(const scenario&, const fault&, const outcome&, const outcome& now) {
    return now.finished.err.starts_with("clist: a.c: ");
}

const tested_program& program_under_test() {
    static const tested_program program{.path = CLIST,
                                        .scenarios = scenarios(),
                                        .keeps_old_outputs = true,
                                        .excused = lacks_a_source};
    return program;
}
