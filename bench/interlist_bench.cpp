// The listing pass inside one process, on made-up programs that differ in one
// thing each. The rate is that of the assembly read.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "tests/interlist/fresh_state.h"

namespace {

constexpr int functions = 400;
constexpr int function_lines = 50;

struct Shape {
    bool reverse = false;         // functions in reverse order of the C file
    bool behind = false;          // every other position lies behind
    bool ends = true;             // functions have their .iendfunc
    const char* line_end = "\n";  // of the assembly
};

std::string source() {
    std::string text;
    for (int i = 0; i < functions * function_lines; ++i) {
        text += "\tline_of_source(\"about as long as code is\");\n";
    }
    return text;
}

std::string assembly(const Shape& shape, const std::string& c_name) {
    std::string text;
    const auto line = [&](const std::string& what) { text.append(what).append(shape.line_end); };
    line("\t.ifile\t\"" + c_name + '"');
    for (int i = 0; i < functions; ++i) {
        const int first = function_lines * (shape.reverse ? functions - 1 - i : i) + 1;
        line("\t.ifunc\t" + std::to_string(first));
        for (int j = 1; j < function_lines; j += 4) {
            line("\t.iline\t" + std::to_string(j));
            for (int k = 0; k < 8; ++k) {
                line("\tmovl\t%eax, %ebx");
            }
            if (shape.behind) {
                line("\t.iline\t0");
            }
        }
        if (shape.ends) {
            line("\t.iendfunc\t" + std::to_string(first + function_lines));
        }
    }
    return text;
}

void list(benchmark::State& state, const Shape& shape) {
    const auto folder = std::filesystem::temp_directory_path();
    const std::string c_name = folder / "interlist-bench.c";
    std::string assembly_name = folder / "interlist-bench.asm";
    const std::string text = assembly(shape, c_name);
    std::ofstream(c_name, std::ios::binary) << source();
    std::ofstream(assembly_name, std::ios::binary) << text;
    char listing_name[] = "/dev/null";
    char program_name[] = "interlist";
    for (auto iteration : state) {
        (void)iteration;
        start_afresh();
        char* words[] = {program_name, assembly_name.data(), listing_name, nullptr};
        init(3, words);
        process_assy();
        end_listing();
    }
    start_afresh();
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

}  // namespace

BENCHMARK_CAPTURE(list, source_order, Shape{});
BENCHMARK_CAPTURE(list, reverse_order, Shape{.reverse = true});
BENCHMARK_CAPTURE(list, positions_behind, Shape{.behind = true});
BENCHMARK_CAPTURE(list, functions_without_end, Shape{.ends = false});
BENCHMARK_CAPTURE(list, carriage_returns, Shape{.line_end = "\r\n"});

BENCHMARK_MAIN();
