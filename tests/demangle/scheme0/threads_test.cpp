// Scheme-0 names decoded by several threads at once, and deep ones on a small stack.
#include <gtest/gtest.h>
#include <pthread.h>

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "demangle/decode_id.h"
#include "tests/demangle/hostile.h"
#include "tests/demangle/scheme0/compress.h"
#include "tests/demangle/scheme0/draw.h"
#include "tests/demangle/scheme0/shapes.h"

namespace {

// Instrumented frames are several times as large.
constexpr std::size_t small_stack = std::size_t{512} * 1024 * (hostile::instrumented ? 8 : 1);

void on_small_stack(void* (*body)(void*)) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, small_stack), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, body, nullptr), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

TEST(Scheme0Threads, EightThreadsDecodeDifferentNamesAtOnce) {
    constexpr std::uint64_t names_each = hostile::scaled(4000);
    std::vector<std::thread> threads;
    std::vector<std::string> differences(8);
    for (std::uint64_t number = 0; number != 8; ++number) {
        threads.emplace_back([number, &difference = differences[number]] {
            const std::uint64_t first = 1000000 + number * names_each;
            for (std::uint64_t seed = first; seed != first + names_each; ++seed) {
                const scheme0::Declaration drawn = scheme0::draw_declaration(seed);
                const std::string compressed = scheme0::compressed(drawn.name);
                for (const std::string& name : {drawn.name, compressed}) {
                    const std::string text = decode_id(name.c_str(), 1);
                    if (text != (drawn.decorated.empty() ? name : drawn.decorated)) {
                        difference.assign(name).append(" -> ").append(text);
                    }
                }
            }
            std::free(decode_id("f", 1));
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const std::string& difference : differences) {
        EXPECT_EQ(difference, "");
    }
}

TEST(Scheme0Nesting, ThousandLevelsDecodeOnASmallStack) {
    on_small_stack([](void*) -> void* {
        for (const scheme0::Nesting& row : scheme0::nestings()) {
            // Of several levels some may count as one, and a few more stand around them.
            const std::size_t count = row.levels == 1 ? 1024 : 1016 / row.levels;
            const hostile::Result result = hostile::decode_whole(row.name(count), 1);
            EXPECT_EQ(result.damage, "") << row.what;
            EXPECT_FALSE(result.error) << row.what << " in " << count << " levels";
        }
        return nullptr;
    });
}

TEST(Scheme0Nesting, DeeperNamesAreBadNamesOnASmallStack) {
    on_small_stack([](void*) -> void* {
        for (const scheme0::Nesting& row : scheme0::nestings()) {
            for (const std::size_t count : {1025U, 1026U, 2000U, 5000U}) {
                const hostile::Result result = hostile::decode_whole(row.name(count), 1);
                EXPECT_EQ(result.damage, "") << row.what;
                EXPECT_TRUE(result.error) << row.what << " in " << count << " levels";
                EXPECT_FALSE(result.overflow) << row.what << " in " << count << " levels";
            }
        }
        return nullptr;
    });
}

// Neither pass may go deeper than the other, and none may come back from its bound.
TEST(Scheme0Nesting, EveryDepthBehindTheFirstBadOneIsBad) {
    on_small_stack([](void*) -> void* {
        for (const scheme0::Nesting& row : scheme0::nestings()) {
            bool bad = false;
            for (std::size_t count = 1; count <= 1040;
                 count += count < 150 || count > 950 ? 1 : 25) {
                const bool error = hostile::decode_whole(row.name(count), 1).error;
                EXPECT_TRUE(error || !bad) << row.what << " in " << count << " levels";
                bad = bad || error;
            }
        }
        return nullptr;
    });
}

}  // namespace
