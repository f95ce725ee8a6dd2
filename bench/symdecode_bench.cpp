// symdecode against the library that it stands on: what finding the names in the output
// of nm costs beside decoding them. The library measured is this program's own C++
// library, or the one that SYMDECODE_LIBRARY names.
#include <benchmark/benchmark.h>
#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "demangle/decode_id.h"
#include "symdecode/filter.h"

namespace {

std::string library_name() {
    if (const char* const named = std::getenv("SYMDECODE_LIBRARY")) {
        return named;
    }
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find("libstdc++") != std::string::npos) {
            return line.substr(line.find('/'));
        }
    }
    return {};
}

const std::string& nm_output() {
    static const std::string text = [] {
        std::string result;
        const std::string command = "nm -D '" + library_name() + "'";
        FILE* const pipe = popen(command.c_str(), "r");
        char chunk[4096];
        while (pipe != nullptr) {
            const std::size_t count = fread(chunk, 1, sizeof chunk, pipe);
            if (count == 0) {
                pclose(pipe);
                break;
            }
            result.append(chunk, count);
        }
        return result;
    }();
    return text;
}

// The mangled names of the text, one string each, as a caller of the library has them.
const std::vector<std::string>& names() {
    static const std::vector<std::string> found = [] {
        std::vector<std::string> result;
        const std::string_view text = nm_output();
        for (std::size_t at = text.find(" _Z"); at != std::string_view::npos;
             at = text.find(" _Z", at + 1)) {
            result.emplace_back(text.substr(at + 1, text.find_first_of("@\n", at) - at - 1));
        }
        return result;
    }();
    return found;
}

void decode_names() {
    decode_mangle_scheme = 1;
    decode_extended_names = 1;
    char buffer[65536];
    int error = 0;
    int overflow = 0;
    std::size_t needed = 0;
    for (const std::string& name : names()) {
        decode_to_decorid(name.c_str(), buffer, sizeof buffer, &error, &overflow, &needed);
        benchmark::DoNotOptimize(buffer);
    }
}

void filter_nm_output() {
    static text_filter filter;
    static std::string out;
    for (std::string_view text = nm_output(); !text.empty();) {
        out.clear();
        text.remove_prefix(filter_text(filter, text, true, out));
        benchmark::DoNotOptimize(out.data());
    }
}

// Processor time: what else runs on the machine does not count.
double seconds_now() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double seconds_of(void (*work)()) {
    const double start = seconds_now();
    work();
    return seconds_now() - start;
}

// Both in turns, so that whatever else the machine does meets both; the time reported
// is the filter's.
void filter_beside_library(benchmark::State& state) {
    if (names().empty()) {
        state.SkipWithError("no C++ library to read");
        return;
    }
    double filter = 0;
    double library = 0;
    for (auto iteration : state) {
        (void)iteration;
        library += seconds_of(decode_names);
        const double once = seconds_of(filter_nm_output);
        filter += once;
        state.SetIterationTime(once);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["names"] = static_cast<double>(names().size());
    state.counters["names_per_second"] = static_cast<double>(names().size()) * runs / filter;
    state.counters["times_library"] = filter / library;
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(nm_output().size()));
}

// Text without a name in it: the cost of looking.
void filter_plain_text(benchmark::State& state) {
    std::string text;
    while (text.size() < (1 << 20)) {
        text +=
            "\tmovq\t%rax, -8(%rbp)\n\taddl\t$1, 16(%rdx,%rcx,4)\n.L12:\n; 42 | int my_var = "
            "f(x_1);\n";
    }
    text_filter filter;
    std::string out;
    for (auto iteration : state) {
        (void)iteration;
        for (std::string_view rest = text; !rest.empty();) {
            out.clear();
            rest.remove_prefix(filter_text(filter, rest, true, out));
            benchmark::DoNotOptimize(out.data());
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

}  // namespace

BENCHMARK(filter_beside_library)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(filter_plain_text)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
