// Scheme-0 names made to break a decoder: all of them end, as a text or as a bad name.
#include "tests/demangle/hostile.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "tests/demangle/scheme0/shapes.h"

namespace {

constexpr std::size_t text_limit = std::size_t{16} << 20;

TEST(Scheme0Hostile, NamesOfEveryShapeAndLengthEndWithThePromisesKept) {
    for (const scheme0::HostileShape& shape : scheme0::hostile_shapes()) {
        for (const std::size_t length : {64U, 200U, 1000U, 4096U}) {
            const std::string name = shape.name(length);
            ASSERT_LE(name.size(), 4096U) << shape.what;
            for (const int decorated : {1, 0}) {
                EXPECT_EQ(hostile::broken_promise(name, decorated), "")
                    << shape.what << " of " << length << ", decorated " << decorated;
            }
        }
    }
}

TEST(Scheme0Hostile, NumbersWrapAtSixtyFourBits) {
    struct Case {
        const char* name;
        const char* text;
    };
    static constexpr Case cases[] = {
        {"f__FZ18446744073709551617Z", "f(T1)"},
        {"__Q18446744073709551618_1A1B", "A::B"},
        {"__CPR18446744073709551621__f__Fv", "f()"},
        {"f__FyOngI18446744073709551618IO", "f(decltype(-param#2))"},
    };
    for (const Case& row : cases) {
        EXPECT_STREQ(hostile::decode_whole(row.name, 1).text.c_str(), row.text) << row.name;
        EXPECT_FALSE(hostile::decode_whole(row.name, 1).error) << row.name;
    }
}

TEST(Scheme0Hostile, LengthsNeverWrap) {
    for (const char* name :
         {"f__18446744073709551617A", "f__F18446744073709551617A", "f__FyiL_18446744073709551617_1",
          "f__tm__18446744073709551618_i__Fv", "__vtbl__18446744073709551617A",
          "__18446744073709551621a__Ut1", "__Q2_1A18446744073709551617B"}) {
        const hostile::Result result = hostile::decode_whole(name, 1);
        EXPECT_EQ(result.damage, "") << name;
        EXPECT_TRUE(result.error) << name;
    }
}

TEST(Scheme0Hostile, LengthPastTheEndIsABadName) {
    for (const char* name : {"f__2A", "f__F2A", "f__FyiL3", "f__FyiL22_1", "f__FyiL_2_1",
                             "f__tm__3_i__", "__vtbl__2A", "__Q2_1A2B", "f__1"}) {
        const hostile::Result result = hostile::decode_whole(name, 1);
        EXPECT_EQ(result.damage, "") << name;
        EXPECT_TRUE(result.error) << name;
        EXPECT_FALSE(result.overflow) << name;
    }
}

TEST(Scheme0Hostile, TextOfSixteenMebibytesIsTheLongest) {
    const std::string name = std::string(text_limit - 2, 'a') + "__Fv";
    const hostile::Result longest = hostile::decode_whole(name, 1);
    EXPECT_EQ(longest.damage, "");
    EXPECT_FALSE(longest.error);
    EXPECT_EQ(longest.needed, text_limit + 1);

    const hostile::Result longer = hostile::decode_whole("a" + name, 1);
    EXPECT_EQ(longer.damage, "");
    EXPECT_TRUE(longer.error);
    EXPECT_FALSE(longer.overflow);
}

TEST(Scheme0Hostile, ExpansionPastSixteenMebibytesIsABadName) {
    for (const char* name : {"__CPR16777217__f", "__CPR999999999999__f", "__CPR4294967296__f",
                             "__CPR18446744073709551615__f", "__CPR9223372036854775808__f"}) {
        for (const std::size_t size : {0U, 1U, 100U}) {
            const hostile::Result result = hostile::decode(name, 1, size);
            EXPECT_EQ(result.damage, "") << name;
            EXPECT_TRUE(result.error) << name;
            EXPECT_FALSE(result.overflow) << name;
        }
    }
}

TEST(Scheme0Hostile, TextThatRepetitionWouldCarryPastTheLimitIsABadName) {
    // Each list holds ten times the one in it.
    const std::string bomb =
        "f__F" + scheme0::repeated(12, "PF") + "i" + scheme0::repeated(12, "N91_v");
    const hostile::Result result = hostile::decode_whole(bomb, 1);
    EXPECT_EQ(result.damage, "");
    EXPECT_TRUE(result.error);
    EXPECT_LE(result.needed, text_limit + 2);

    const std::string small =
        "f__F" + scheme0::repeated(3, "PF") + "i" + scheme0::repeated(3, "N91_v");
    EXPECT_FALSE(hostile::decode_whole(small, 1).error);
}

}  // namespace
