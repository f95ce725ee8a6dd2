// The interlister, every way that it reads and writes.
#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "tests/faults/promise.h"

static std::string lines(const std::string& text, int count) {
    std::string all;
    for (int i = 1; i <= count; ++i) {
        all.append(text).append(std::to_string(i)).append("\n");
    }
    return all;
}

// The function at line `first` of as many lines, with code for every other line.
static std::string function(int first, int count) {
    std::string text = "\t.ifunc\t" + std::to_string(first) + "\n";
    for (int line = 1; line < count; line += 2) {
        text += "\t.iline\t" + std::to_string(line) + "\n\tmov\n\tadd\n";
    }
    return text + "\t.iendfunc\t" + std::to_string(first + count) + "\n";
}

static std::string file(const std::string& name) {
    return "\t.ifile\t\"" + name + "\"\n";
}

static std::vector<scenario> scenarios() {
    const std::string source = lines("line ", 40);
    const std::string plain = file("a.c") + "\tfirst\n" + function(1, 10) + "\tlast\n";
    std::string far;  // jumps that leave the window, in both directions
    std::string alternating;
    for (int i = 0; i < 4; ++i) {
        far += function(i % 2 == 0 ? 9000 + i : 1 + i, 4);
        alternating += file(i % 2 == 0 ? "a.c" : "b.c") + function(1 + 4 * i, 4);
    }
    const std::string long_function =
        "\t.ifunc\t1\n" + std::string(200000, '\n') + "\t.iendfunc\t3\n";
    return {
        {"plain", {"p.asm"}, {{"a.c", source}, {"p.asm", plain}}, "", {"p.cl"}},
        {"an_old_listing",
         {"p.asm", "x.lst"},
         {{"a.c", source}, {"p.asm", plain}, {"x.lst", "old\n"}},
         "",
         {"x.lst"}},
        {"a_closed_standard_input",
         {"p.asm"},
         {{"a.c", source}, {"p.asm", plain}},
         "",
         {"p.cl"},
         {STDIN_FILENO}},
        {"empty", {"p.asm"}, {{"p.asm", ""}}, "", {"p.cl"}},
        {"no_directives", {"p.asm"}, {{"p.asm", lines("\tnop ", 30000)}}, "", {"p.cl"}},
        {"no_source", {"p.asm"}, {{"p.asm", plain}}, "", {"p.cl"}},
        {"far_jumps",
         {"p.asm"},
         {{"a.c", lines("a line of some length, so that the file is long ", 10000)},
          {"p.asm", file("a.c") + far}},
         "",
         {"p.cl"}},
        {"alternating_sources",
         {"p.asm", "-b"},
         {{"a.c", source}, {"b.c", source}, {"p.asm", alternating}},
         "",
         {"p.cl"}},
        {"a_long_function",
         {"p.asm"},
         {{"a.c", source}, {"p.asm", file("a.c") + long_function}},
         "",
         {"p.cl"}},
        {"a_long_line",
         {"p.asm", "-w", "60"},
         {{"a.c", std::string(40000, 'x') + "\n" + source}, {"p.asm", plain}},
         "",
         {"p.cl"}},
        {"carriage_returns",
         {"p.asm"},
         {{"a.c", "one\r\ntwo\r\n\x1athree\r\n"}, {"p.asm", file("a.c") + function(1, 3)}},
         "",
         {"p.cl"}},
        {"pipes", {"/dev/stdin", "/dev/stdout"}, {{"a.c", source}}, plain, {}},
        {"a_source_that_is_a_pipe",
         {"p.asm"},
         {{"p.asm", file("/dev/stdin") + function(1, 10)}},
         source,
         {"p.cl"}},
        {"version", {"--toolversion"}, {}, "", {}},
        {"usage", {"--help"}, {}, "", {}},
        {"three_names", {"a", "b", "c"}, {}, "", {}},
        {"no_input", {"p.asm"}, {}, "", {}},
        {"an_unknown_option", {"-x", "p.asm"}, {{"p.asm", plain}}, "", {"p.cl"}},
    };
}

// A listing without its C lines.
static std::string assembly_of(const std::string& listing) {
    std::string assembly;
    std::istringstream text(listing);
    for (std::string line; std::getline(text, line);) {
        if (!line.starts_with(';')) {
            assembly.append(line).append("\n");
        }
    }
    return assembly;
}

static std::string listing_of(const scenario& each, const outcome& run) {
    if (each.outputs.empty()) {
        return run.finished.out;
    }
    const auto found = run.files.find(each.outputs.front());
    return found == run.files.end() ? "" : found->second;
}

// Two outcomes with status 0 are the interlister's own rules: a C file that cannot be
// read is warned about and missing; and a read error of the assembly outside a function
// ends it like its end.
static bool is_excused(const scenario& each, const fault& what, const outcome& whole,
                       const outcome& now) {
    const std::string all = assembly_of(listing_of(each, whole));
    const std::string listed = assembly_of(listing_of(each, now));
    const std::string kind = what.calls != nullptr ? what.calls->name : "allocation";
    if (all == listed && now.finished.err.find("source file") != std::string::npos) {
        return true;
    }
    if (all == listed && now.finished.err.find("Cannot read again") != std::string::npos) {
        return true;
    }
    return kind == "read" && all.starts_with(listed);
}

const tested_program& program_under_test() {
    static const tested_program program{
        .path = INTERLIST, .scenarios = scenarios(), .excused = is_excused};
    return program;
}
