// Names a second of the Itanium ABI decoder beside the standard library's demangler
// and, where the LLVM library is installed, its own, all in one run on one corpus.
//
//   scheme1_bench [benchmark options] [FILE]
//
// FILE holds one mangled name a line (bench/collect_symbols.sh writes such a file);
// without it the names come from the C++ libraries of the machine, by the same kind of
// commands. Compare the three figures with each other, not across runs.
#include <benchmark/benchmark.h>
#include <cxxabi.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "demangle/decode_id.h"

namespace {

std::vector<std::string> names;

// The demangler of the LLVM library: name, buffer from malloc, its size, status.
using LlvmDemangle = char* (*)(const char*, char*, std::size_t*, int*);
constexpr const char* llvm_symbol = "_ZN4llvm15itaniumDemangleEPKcPcPmPi";

void count_names(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}

void decode_id_names(benchmark::State& state, int extended) {
    decode_mangle_scheme = 1;
    decode_extended_names = extended;
    for (auto iteration : state) {
        (void)iteration;
        for (const std::string& name : names) {
            benchmark::DoNotOptimize(decode_id(name.c_str(), 1));
        }
    }
    count_names(state);
}

// Both peers get a buffer that they keep, as decode_id keeps its own.
template <typename Demangle>
void peer_names(benchmark::State& state, Demangle demangle) {
    std::size_t size = 512;
    char* buffer = static_cast<char*>(std::malloc(size));
    for (auto iteration : state) {
        (void)iteration;
        for (const std::string& name : names) {
            int status = 0;
            if (char* const text = demangle(name.c_str(), buffer, &size, &status)) {
                buffer = text;
            }
            benchmark::DoNotOptimize(buffer);
        }
    }
    std::free(buffer);
    count_names(state);
}

bool read_names(std::istream& input) {
    for (std::string name; std::getline(input, name);) {
        if (name.starts_with("_Z")) {
            names.push_back(name);
        }
    }
    return !names.empty();
}

bool collect_names() {
    constexpr const char* command =
        "for f in /usr/lib/x86_64-linux-gnu/*.so* /usr/lib/llvm-*/lib/*.so*; do "
        "nm -D \"$f\"; done 2>/dev/null | awk '{print $NF}' | sed 's/@.*//' | "
        "grep '^_Z' | LC_ALL=C sort -u";
    std::FILE* const pipe = popen(command, "r");  // NOLINT(cert-env33-c)
    if (pipe == nullptr) {
        return false;
    }
    std::string line;
    for (int byte = 0; (byte = std::fgetc(pipe)) != EOF;) {
        if (byte != '\n') {
            line.push_back(static_cast<char>(byte));
        } else {
            names.push_back(line);
            line.clear();
        }
    }
    pclose(pipe);
    return !names.empty();
}

LlvmDemangle find_llvm() {
    for (const char* const library : {"libLLVM-14.so.1", "libLLVM-15.so.1", "libLLVM-16.so.1"}) {
        if (void* const handle = dlopen(library, RTLD_LAZY)) {
            if (void* const symbol = dlsym(handle, llvm_symbol)) {
                return reinterpret_cast<LlvmDemangle>(symbol);
            }
        }
    }
    return nullptr;
}

void decode_id_strict(benchmark::State& state) {
    decode_id_names(state, 0);
}
void decode_id_extended(benchmark::State& state) {
    decode_id_names(state, 1);
}
void standard_library(benchmark::State& state) {
    peer_names(state, &abi::__cxa_demangle);
}

void llvm_library(benchmark::State& state) {
    if (const LlvmDemangle llvm = find_llvm()) {
        peer_names(state, llvm);
    } else {
        state.SkipWithError("no LLVM library");
    }
}

BENCHMARK(decode_id_strict);
BENCHMARK(decode_id_extended);
BENCHMARK(standard_library);
BENCHMARK(llvm_library);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc > 1) {
        std::ifstream file(argv[1]);
        if (!read_names(file)) {
            std::cerr << "no mangled names in " << argv[1] << '\n';
            return 2;
        }
    } else if (!collect_names()) {
        std::cerr << "no C++ libraries found: give a file of names\n";
        return 2;
    }
    std::cout << names.size() << " names\n";
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
