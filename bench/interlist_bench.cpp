// The listing pass inside one process, on made-up programs that differ from the plain one in
// one thing each. The rate is that of the assembly and the listing together; of_plain is
// what a byte of them costs, as a multiple of what it costs in the plain program, which
// runs in turn with the other.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <ctime>
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
    bool long_line = false;       // the first C line is longer than a listed one may be
    bool lists_it = false;        // before each function
    bool behind = false;          // every other position lies behind
    bool ends = true;             // functions have their .iendfunc
    const char* line_end = "\n";  // of the assembly
};

std::string source(const Shape& shape) {
    std::string text = std::string(shape.long_line ? 20000 : 20, 'x') + "\n";
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
        if (shape.lists_it) {
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

// What one shape reads, in files of its own.
class input_files {
  public:
    explicit input_files(const Shape& shape) {
        static int count = 0;
        const std::string stem = std::filesystem::temp_directory_path() / "interlist-bench-";
        const std::string base = stem + std::to_string(++count);
        c_names_ = {base + "-1.c", base + "-2.c"};
        assembly_name_ = base + ".asm";
        const std::string text = assembly(shape, c_names_);
        for (const std::string& name : c_names_) {
            std::ofstream(name, std::ios::binary) << source(shape);
        }
        std::ofstream(assembly_name_, std::ios::binary) << text;
        listing_name_ = base + ".cl";
        list();
        size_ = text.size() + std::filesystem::file_size(listing_name_);
        std::filesystem::remove(listing_name_);
        listing_name_ = "/dev/null";
    }
    ~input_files() {
        for (const std::string& name : {c_names_[0], c_names_[1], assembly_name_}) {
            std::filesystem::remove(name);
        }
    }
    input_files(const input_files&) = delete;
    input_files& operator=(const input_files&) = delete;

    // Seconds of the processor that a run takes.
    double list() {
        const std::clock_t start = std::clock();
        char program_name[] = "interlist";
        char* words[] = {program_name, assembly_name_.data(), listing_name_.data(), nullptr};
        start_afresh();
        init(3, words);
        process_assy();
        end_listing();
        start_afresh();
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    }

    // Bytes of assembly and listing.
    double size() const { return static_cast<double>(size_); }

  private:
    std::array<std::string, 2> c_names_;
    std::string assembly_name_;
    std::string listing_name_;
    std::size_t size_ = 0;
};

void list(benchmark::State& state, const Shape& shape) {
    input_files plain(Shape{});
    input_files shaped(shape);
    double seconds = 0;
    double plain_seconds = 0;
    for (auto iteration : state) {
        (void)iteration;
        plain_seconds += plain.list();
        const double now = shaped.list();
        seconds += now;
        state.SetIterationTime(now);
    }
    state.SetBytesProcessed(
        static_cast<std::int64_t>(static_cast<double>(state.iterations()) * shaped.size()));
    state.counters["of_plain"] = (seconds / shaped.size()) / (plain_seconds / plain.size());
}

}  // namespace

#define LIST(name, ...) BENCHMARK_CAPTURE(list, name, Shape{__VA_ARGS__})->UseManualTime()

LIST(source_order);
LIST(reverse_order, .functions_in = order::reverse);
LIST(random_order, .functions_in = order::random);
LIST(two_sources_in_turn, .two_sources = true);
LIST(two_sources_in_random_order, .functions_in = order::random, .two_sources = true);
LIST(behind_a_long_line, .functions_in = order::random, .long_line = true);
LIST(a_long_line_each_time, .long_line = true, .lists_it = true);
LIST(positions_behind, .behind = true);
LIST(functions_without_end, .ends = false);
LIST(carriage_returns, .line_end = "\r\n");

BENCHMARK_MAIN();
