// Names a second of scheme 1's decoder beside every public demangler that the machine
// has (bench/peers.h), on one corpus or several.
//
//   scheme1_bench [benchmark options] [FILE...]
//   scheme1_bench --once=DECODER FILE
//
// Each FILE is a corpus of one mangled name a line; bench/collect_symbols.sh writes them,
// and without FILE it is run for the names of the machine's own libraries. All decoders
// take turns over the whole corpus, so that whatever else the machine does meets all of
// them, and the middle one of the rounds counts. "of_fastest_peer" is how many times the
// names of the fastest peer in this run a decoder reads.
//
// --once decodes each name once by the decoder of this label, and does nothing more: for
// `valgrind --tool=callgrind --toggle-collect='*decode_all*'`, whose counts of
// instructions repeat exactly.
#include <benchmark/benchmark.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "bench/peers.h"
#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"

namespace {

constexpr int rounds = 15;

const char* decode_by_id(const char* name, int extended) {
    decode_extended_names = extended;
    return decode_id(name, 1);
}

// The decoder itself, into the caller's buffer.
const char* decode_into_buffer(const char* name) {
    static std::array<char, std::size_t{1} << 20> buffer;
    decode_extended_names = 1;
    int error = 0;
    int overflow = 0;
    std::size_t needed = 0;
    decode_identifier_eabi(name, buffer.data(), buffer.size(), &error, &overflow, &needed, 1);
    return error == 0 ? buffer.data() : nullptr;
}

std::vector<decoder> own_decoders() {
    return {{"decode_id_strict", [](const char* name) { return decode_by_id(name, 0); }},
            {"decode_id", [](const char* name) { return decode_by_id(name, 1); }},
            {"decode_identifier_eabi", decode_into_buffer}};
}

struct corpus {
    std::string label;
    std::vector<std::string> names;
};

// What a caller does with a text is at least to find its end. Not inlined: callgrind
// collects inside this function.
[[gnu::noinline]] std::size_t decode_all(const decoder& decoder,
                                         const std::vector<std::string>& names) {
    std::size_t length = 0;
    for (const std::string& name : names) {
        if (const char* const text = decoder.decode(name.c_str())) {
            length += std::strlen(text);
        }
    }
    return length;
}

// Processor time: what else runs on the machine does not count.
double seconds_now() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// What a corpus gives: the seconds that each decoder takes for it, the own ones first.
struct measurements {
    corpus names;
    std::vector<decoder> decoders;
    std::size_t own = 0;
    std::vector<double> seconds;
    double fastest_peer = 0;
};

std::vector<measurements> corpora;

measurements prepare(corpus names) {
    measurements all{std::move(names), own_decoders(), 0, {}, 0};
    all.own = all.decoders.size();
    std::ranges::move(find_peers(), std::back_inserter(all.decoders));
    return all;
}

void measure(measurements& all) {
    std::vector<std::vector<double>> times(all.decoders.size());
    for (int round = -1; round < rounds; ++round) {  // the first warms up
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double start = seconds_now();
            benchmark::DoNotOptimize(decode_all(all.decoders[i], all.names.names));
            if (round >= 0) {
                times[i].push_back(seconds_now() - start);
            }
        }
    }
    for (std::vector<double>& of_one : times) {
        std::nth_element(of_one.begin(), of_one.begin() + rounds / 2, of_one.end());
        all.seconds.push_back(of_one[rounds / 2]);
    }
    all.fastest_peer = *std::min_element(all.seconds.begin() + static_cast<std::ptrdiff_t>(all.own),
                                         all.seconds.end());
}

// One benchmark for each decoder of a corpus; the first that runs measures all of them.
void names_per_second(benchmark::State& state) {
    measurements& all = corpora[static_cast<std::size_t>(state.range(0))];
    const auto row = static_cast<std::size_t>(state.range(1));
    if (all.seconds.empty()) {
        measure(all);
    }
    for (auto iteration : state) {
        (void)iteration;
        state.SetIterationTime(all.seconds[row]);
    }
    state.counters["names_per_second"] =
        static_cast<double>(all.names.names.size()) / all.seconds[row];
    state.counters["of_fastest_peer"] = all.fastest_peer / all.seconds[row];
    state.SetLabel(all.names.label + ": " + all.decoders[row].label);
}

// What BENCHMARK does, with a name for what it makes: the corpora are known only in main.
benchmark::internal::Benchmark* const family = benchmark::internal::RegisterBenchmarkInternal(
    new benchmark::internal::FunctionBenchmark("scheme1", names_per_second));

void add_benchmarks() {
    family->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
    family->ArgNames({"corpus", "decoder"});
    for (std::size_t i = 0; i < corpora.size(); ++i) {
        for (std::size_t j = 0; j < corpora[i].decoders.size(); ++j) {
            family->Args({static_cast<std::int64_t>(i), static_cast<std::int64_t>(j)});
        }
    }
}

corpus read_file(const char* path) {
    corpus result{path, {}};
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("_Z")) {
            result.names.push_back(line);
        }
    }
    return result;
}

corpus collect_names() {
    corpus result{"libraries", {}};
    std::FILE* const pipe = popen(COLLECT_SYMBOLS, "r");  // NOLINT(cert-env33-c)
    std::string line;
    for (int byte = 0; pipe != nullptr && (byte = std::fgetc(pipe)) != EOF;) {
        if (byte != '\n') {
            line.push_back(static_cast<char>(byte));
        } else {
            result.names.push_back(line);
            line.clear();
        }
    }
    if (pipe != nullptr) {
        pclose(pipe);
    }
    return result;
}

int decode_once(std::string_view label, const std::vector<std::string>& names) {
    std::vector<decoder> decoders = own_decoders();
    if (std::ranges::find(decoders, label, &decoder::label) == decoders.end()) {
        decoders = find_peers();
    }
    const auto found = std::ranges::find(decoders, label, &decoder::label);
    if (found == decoders.end()) {
        std::cerr << "no such decoder: " << label << '\n';
        return 2;
    }
    benchmark::DoNotOptimize(decode_all(*found, names));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    constexpr std::string_view once = "--once=";
    std::string_view only;
    decode_mangle_scheme = 1;
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word.starts_with(once)) {
            only = word.substr(once.size());
        } else {
            corpora.push_back(prepare(read_file(argv[i])));
        }
    }
    if (corpora.empty()) {
        corpora.push_back(prepare(collect_names()));
    }
    for (const measurements& all : corpora) {
        if (all.names.names.empty()) {
            std::cerr << "no mangled names: " << all.names.label << '\n';
            return 2;
        }
    }
    if (!only.empty()) {
        return decode_once(only, corpora.front().names.names);
    }
    for (const measurements& all : corpora) {
        std::cout << all.names.label << ": " << all.names.names.size() << " names\n";
    }
    add_benchmarks();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
