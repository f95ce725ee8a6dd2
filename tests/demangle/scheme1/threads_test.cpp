// Scheme 1 on many threads at once: everything of a call is its own, the texts of the
// literal operators and of the builtin operations included.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "tests/demangle/scheme1/decode.h"
#include "tests/demangle/scheme1/draw.h"

namespace {

constexpr unsigned thread_count = 8;

// The buffers that decode_id made for the threads. The library never frees them, by
// contract; held here, they are not taken for leaks once their threads have ended.
std::array<const char*, thread_count> result_buffers;

// Runs the same work on each thread and gives the number of texts that were wrong.
template <typename Work>
int wrong_texts(Work work) {
    std::array<int, thread_count> wrong{};
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < thread_count; ++number) {
        threads.emplace_back([&wrong, number, work] { wrong[number] = work(number); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    int sum = 0;
    for (const int count : wrong) {
        sum += count;
    }
    return sum;
}

}  // namespace

TEST(Scheme1Threads, LiteralOperatorsOfDifferentLengths) {
    EXPECT_EQ(wrong_texts([](unsigned number) {
                  int wrong = 0;
                  for (unsigned round = 0; round < 1500; ++round) {
                      const std::string suffix(1 + (round * 7 + number * 31) % 400,
                                               static_cast<char>('a' + number));
                      const std::string name =
                          "_Zli" + std::to_string(suffix.size()) + suffix + "v";
                      wrong += decoded(name) != "operator \"\"" + suffix + "()" ? 1 : 0;
                  }
                  return wrong;
              }),
              0);
}

TEST(Scheme1Threads, BuiltinOperationsOfDifferentNames) {
    EXPECT_EQ(wrong_texts([](unsigned number) {
                  int wrong = 0;
                  for (unsigned round = 0; round < 3000; ++round) {
                      const std::string letters = {static_cast<char>('a' + number),
                                                   static_cast<char>('a' + round % 26)};
                      wrong += decoded("Dtv29builtin" + letters + "T_T0_E") !=
                                       "decltype(builtin-operation-" + letters + "(T1, T2))"
                                   ? 1
                                   : 0;
                      wrong += decoded("_Zv29builtin" + letters + "i") !=
                                       "operator builtin-operation-" + letters + "(int)"
                                   ? 1
                                   : 0;
                  }
                  return wrong;
              }),
              0);
}

TEST(Scheme1Threads, RandomDeclarations) {
    EXPECT_EQ(wrong_texts([](unsigned number) {
                  int wrong = 0;
                  for (std::uint64_t seed = 0; seed < 1500; ++seed) {
                      const auto declaration = scheme1::draw_declaration(seed * 8 + number, false);
                      wrong += decoded(declaration.name) != declaration.decorated ? 1 : 0;
                      (void)decode_is_ia64_subobject(declaration.name.c_str());
                  }
                  return wrong;
              }),
              0);
}

TEST(Scheme1Threads, DecodeIdHasABufferForEachThread) {
    decode_mangle_scheme = 1;
    EXPECT_EQ(wrong_texts([](unsigned number) {
                  int wrong = 0;
                  for (std::uint64_t seed = 0; seed < 1500; ++seed) {
                      const auto declaration =
                          scheme1::draw_declaration(700000 + seed * 8 + number, false);
                      const char* text = decode_id(declaration.name.c_str(), 1);
                      wrong += text != declaration.decorated ? 1 : 0;
                      result_buffers[number] = text;
                  }
                  return wrong;
              }),
              0);
    decode_mangle_scheme = 0;
}
