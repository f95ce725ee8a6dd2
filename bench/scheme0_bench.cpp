// Scheme 0: names per second on drawn declarations, and how time grows with the length of
// hostile names. Each name goes through decode_identifier into a buffer that fits.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "demangle/decode.h"
#include "tests/demangle/scheme0/draw.h"
#include "tests/demangle/scheme0/shapes.h"

namespace {

struct Outcome {
    int error = 0;
    std::size_t needed = 0;
};

// The longest text that a name can have, with room for the expansion of one.
std::vector<char>& buffer() {
    static std::vector<char> memory(std::size_t{40} << 20);
    return memory;
}

Outcome decode(const std::string& name, int decorated) {
    Outcome outcome;
    int overflow = 0;
    decode_identifier(name.c_str(), buffer().data(), buffer().size(), &outcome.error, &overflow,
                      &outcome.needed, decorated);
    return outcome;
}

std::vector<std::string> drawn_names() {
    std::vector<std::string> names;
    for (std::uint64_t seed = 0; seed < 10000; ++seed) {
        names.push_back(scheme0::draw_declaration(seed).name);
    }
    return names;
}

void decode_all(benchmark::State& state, const std::vector<std::string>& names) {
    const int decorated = static_cast<int>(state.range(0));
    std::size_t characters = 0;
    for (const std::string& name : names) {
        characters += name.size();
    }
    for (auto iteration : state) {
        (void)iteration;
        for (const std::string& name : names) {
            benchmark::DoNotOptimize(decode(name, decorated));
        }
    }
    const auto rounds = static_cast<std::int64_t>(state.iterations());
    state.SetItemsProcessed(rounds * static_cast<std::int64_t>(names.size()));
    state.counters["length"] = static_cast<double>(characters) / static_cast<double>(names.size());
}

void drawn(benchmark::State& state) {
    static const std::vector<std::string> names = drawn_names();
    decode_all(state, names);
}

// What a linker map of a program in the scheme is made of.
void ordinary(benchmark::State& state) {
    static const std::vector<std::string> names = {
        "open__5ValveFi",
        "__ct__5ValveFPCci",
        "__dt__5ValveFv",
        "level__Q2_5plant4TankCFv",
        "__pl__6VectorFRC6Vector",
        "sort__FPvUlUlPFPCvPCv_i",
        "insert__29Table__tm__15_Pc5ValveXiL1516FPCcRC5Valve",
        "__vtbl__5Valve__4Tank",
        "main",
        "printf",
    };
    decode_all(state, names);
}

BENCHMARK(ordinary)->Arg(1)->Arg(0)->ArgName("decorated");
BENCHMARK(drawn)->Arg(1)->Arg(0)->ArgName("decorated");

// Time for each byte of text stays the same while it is linear.
void hostile(benchmark::State& state) {
    const scheme0::HostileShape& shape =
        scheme0::hostile_shapes()[static_cast<std::size_t>(state.range(0))];
    const std::string name = shape.name(static_cast<std::size_t>(state.range(1)));
    Outcome outcome = decode(name, 1);  // the first call makes the buffer
    for (auto iteration : state) {
        (void)iteration;
        outcome = decode(name, 1);
    }
    state.SetLabel(shape.what);
    state.counters["text"] = static_cast<double>(outcome.needed - 1);
    state.counters["bad"] = outcome.error;
}

void every_shape(benchmark::internal::Benchmark* family) {
    const auto shapes = static_cast<std::int64_t>(scheme0::hostile_shapes().size());
    family->ArgsProduct({benchmark::CreateDenseRange(0, shapes - 1, 1), {256, 1024, 4096}})
        ->ArgNames({"shape", "length"})
        ->Unit(benchmark::kMicrosecond);
}

BENCHMARK(hostile)->Apply(every_shape);

}  // namespace

BENCHMARK_MAIN();
