// The listing pass inside one process, on made-up programs that differ in one
// thing each. The rate is that of the assembly read.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "tests/interlist/fresh_state.h"

namespace {

constexpr int functions = 400;
constexpr int function_lines = 50;

enum class order { as_in_the_source, reverse, random };

struct Shape {
    order functions_in = order::as_in_the_source;
    bool two_sources = false;     // functions of two C files in turn
    bool long_line = false;       // a long C line is listed before each function
    bool behind = false;          // every other position lies behind
    bool ends = true;             // functions have their .iendfunc
    const char* line_end = "\n";  // of the assembly
};

// The first line is longer than a listed one may be.
std::string source() {
    std::string text = std::string(20000, 'x') + "\n";
    for (int i = 0; i < functions * function_lines; ++i) {
        text += "\tline_of_source(\"about as long as code is\");\n";
    }
    return text;
}

std::vector<int> order_of_functions(const Shape& shape) {
    std::vector<int> numbers(functions);
    std::iota(numbers.begin(), numbers.end(), 0);
    if (shape.functions_in == order::reverse) {
        std::reverse(numbers.begin(), numbers.end());
    } else if (shape.functions_in == order::random) {
        std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    }
    return numbers;
}

std::string assembly(const Shape& shape, const std::array<std::string, 2>& c_names) {
    std::string text;
    const auto line = [&](const std::string& what) { text.append(what).append(shape.line_end); };
    bool other = false;
    for (const int i : order_of_functions(shape)) {
        other = !other && shape.two_sources;
        line("\t.ifile\t\"" + c_names[other ? 1 : 0] + '"');
        if (shape.long_line) {
            line("\t.ifunc\t1");
            line("\t.iendfunc\t2");
        }
        const int first = function_lines * i + 3;
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
    const std::array<std::string, 2> c_names{folder / "interlist-bench-1.c",
                                             folder / "interlist-bench-2.c"};
    std::string assembly_name = folder / "interlist-bench.asm";
    const std::string text = assembly(shape, c_names);
    for (const std::string& name : c_names) {
        std::ofstream(name, std::ios::binary) << source();
    }
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
BENCHMARK_CAPTURE(list, reverse_order, Shape{.functions_in = order::reverse});
BENCHMARK_CAPTURE(list, random_order, Shape{.functions_in = order::random});
BENCHMARK_CAPTURE(list, two_sources_in_turn, Shape{.two_sources = true});
BENCHMARK_CAPTURE(list, two_sources_in_random_order,
                  Shape{.functions_in = order::random, .two_sources = true});
BENCHMARK_CAPTURE(list, a_long_line_each_time, Shape{.long_line = true});
BENCHMARK_CAPTURE(list, positions_behind, Shape{.behind = true});
BENCHMARK_CAPTURE(list, functions_without_end, Shape{.ends = false});
BENCHMARK_CAPTURE(list, carriage_returns, Shape{.line_end = "\r\n"});

BENCHMARK_MAIN();
