// clist, every form of listing and every way that it reads and writes by itself.
#include <string>
#include <string_view>
#include <vector>

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

// Writes what "compiling" gives to the place behind -o, or beside the source, and what
// it depends on behind -MF.
static const char* const compiler =
    "#!/bin/sh\n"
    "out=a.o\n"
    "while [ $# -gt 0 ]; do\n"
    "  case $1 in -o) out=$2;; -MF) echo 'x: a.c' > \"$2\";; esac\n"
    "  shift\n"
    "done\n"
    "cat in.s > \"$out\"\n";

// Programs by these names are found in the folder of the run.
static const std::map<std::string, std::string> here = {{"PATH", "."}};

// What it is given to tell of stands behind what it tells.
static const char* const analyzer =
    "#!/bin/sh\nfor last; do :; done\necho Cycles:\n/bin/cat \"$last\"\n";

// Makes the listing that the plan is for.
static const char* const builder =
    "#!/bin/sh\ncase \" $* \" in *' -n '*) exit;; esac\n/bin/cat listing > listings/a.c.lst\n";

static const char* const database =
    "[{\"directory\": \".\", \"file\": \"a.c\", \"command\": \"./cc -c a.c\"}]";

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
        {"a_compile",
         {"-o", "out", "./cc", "-c", "a.c"},
         {{"a.c", source}, {"in.s", assembly}, {"cc", compiler}, {"out", "old\n"}},
         "",
         {"out"}},
        {"a_compile_with_dependencies",
         {"--depfile", "d", "-o", "out", "./cc", "-c", "a.c"},
         {{"a.c", source}, {"in.s", assembly}, {"cc", compiler}},
         "",
         {"out", "d"}},
        {"the_launcher",
         {"--launcher", "./cc", "-c", "a.c"},
         {{"a.c", source}, {"in.s", assembly}, {"cc", compiler}, {"a.o.lst", "old\n"}},
         "",
         {"a.o", "a.o.lst"}},
        {"a_strict_launcher",
         {"--launcher", "--strict", "./cc", "-c", "a.c"},
         {{"a.c", source}, {"in.s", assembly}, {"cc", compiler}},
         "",
         {"a.o", "a.o.lst"}},
        {"figures_of_the_machine",
         {"--mca", "-o", "out", "in.s"},
         {{"a.c", source}, {"in.s", assembly}, {"llvm-mca", analyzer}, {"out", "old\n"}},
         "",
         {"out"},
         {},
         here},
        {"classic",
         {"--classic", "-o", "out", "in.s"},
         {{"a.c", source}, {"in.s", assembly}, {"out", "old\n"}},
         "",
         {"out"}},
        {"a_project",
         {"-p", "."},
         {{"a.c", source},
          {"compile_commands.json", database},
          {"ninja", builder},
          {"listing", "new\n"},
          {"listings/a.c.lst", "old\n"}},
         "",
         {"listings/a.c.lst", "listings/.clist/build.ninja"},
         {},
         here},
        {"no_compiler", {"/none/cc", "-c", "a.c"}, {{"a.c", source}}, "", {}},
        {"help", {"--help"}, {}, "", {}},
        {"version", {"--version"}, {}, "", {}},
    };
    for (const std::string form : {"--all", "--list", "--stats", "--json"}) {
        all.push_back(
            {form.substr(2), {form, "in.s"}, {{"a.c", source}, {"in.s", assembly}}, "", {}});
    }
#if CLIST_HAS_PAGE
    all.push_back({"page",
                   {"--html", "-o", "out", "in.s"},
                   {{"a.c", source}, {"in.s", assembly}, {"out", "old\n"}},
                   "",
                   {"out"},
                   {},
                   {{"SOURCE_DATE_EPOCH", "1"}}});
#endif
    // A sanitized run takes several times as long: one of each way to work.
    if (!std::string_view(FAULTS_SANITIZED).empty()) {
        std::erase_if(all, [](const scenario& each) {
            return each.name != "over_a_file" && each.name != "a_compile" &&
                   each.name != "the_launcher";
        });
    }
    return all;
}

// A source that cannot be read costs its lines, and is told; so is a folder of our own that
// cannot be removed. The launcher tells only of a listing that fails, and the build goes on.
static bool is_allowed(const scenario& each, const fault&, const outcome& whole,
                       const outcome& now) {
    const std::string& told = now.finished.err;
    if (each.arguments.front() == "-p") {
        // Where it does not find out what it is itself, it is clist.
        return now.files.at("listings/a.c.lst") == "new\n";
    }
    if (each.arguments.front() != "--launcher") {
        return told.starts_with("clist: a.c: ") || told.starts_with("clist: cannot remove ");
    }
    const bool has_object =
        now.files.contains("a.o") && now.files.at("a.o") == whole.files.at("a.o");
    const bool has_listing = now.files.contains("a.o.lst") &&
                             now.files.at("a.o.lst").find("\ng:\n") != std::string::npos;
    const bool is_strict = each.arguments.at(1) == "--strict";
    return has_object && (has_listing || (!is_strict && told.starts_with("clist: ")));
}

const tested_program& program_under_test() {
    static const tested_program program{.path = CLIST,
                                        .scenarios = scenarios(),
                                        .keeps_old_outputs = true,
                                        .allocation_step = 11,
                                        .excused = is_allowed};
    return program;
}
