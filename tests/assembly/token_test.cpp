// Where C and C++ tokens end.
#include "assembly/token.h"

#include <gtest/gtest.h>

using namespace assembly;

TEST(TokenEnd, OfALiteralIsItsUnescapedQuoteOrTheLinesEnd) {
    EXPECT_EQ(end_of_literal("\"a\\\"b\" c", 0), 6U);
    EXPECT_EQ(end_of_literal("'\\\\' c", 0), 4U);
    EXPECT_EQ(end_of_literal("'a\nb'", 0), 2U);
    EXPECT_EQ(end_of_literal("\"a\\\nb\"c", 0), 6U);
    EXPECT_EQ(end_of_literal("\"a\\\r\nb\"c", 0), 7U);
    EXPECT_EQ(end_of_literal("\"a\\", 0), 3U);
    EXPECT_EQ(end_of_literal("'", 0), 1U);
}

TEST(TokenEnd, OfARawStringIsItsOwnDelimiter) {
    EXPECT_EQ(end_of_raw_string("\"(a)\" b", 0), 5U);
    EXPECT_EQ(end_of_raw_string("\"x(a)\"\n)x\" b", 0), 10U);
    EXPECT_EQ(end_of_raw_string("\"(a", 0), 3U);
    EXPECT_EQ(end_of_raw_string("\"0123456789abcdef(\")0123456789abcdef\"b", 0), 37U);
    // No delimiter is as long as this one.
    EXPECT_EQ(end_of_raw_string("\"0123456789abcdef0(a\"b", 0), 21U);
}

TEST(TokenEnd, OfANumberTakesSeparatorsAndExponents) {
    EXPECT_EQ(end_of_number("1'000'000;", 0), 9U);
    EXPECT_EQ(end_of_number("1.5e+3f+1", 0), 7U);
    EXPECT_EQ(end_of_number("0x1p-2 ", 0), 6U);
    EXPECT_EQ(end_of_number("1' '", 0), 1U);
}

TEST(TokenEnd, OfALineSeesSplices) {
    EXPECT_EQ(end_of_logical_line("a\\\nb\nc", 0), 4U);
    EXPECT_EQ(end_of_logical_line("a\\\r\nb", 0), 5U);
    EXPECT_EQ(end_of_logical_line("\n", 0), 0U);
}

TEST(TokenEnd, OfACommentIsTheTextsWhereItIsMissing) {
    EXPECT_EQ(end_of_block_comment("/*/ */a", 0), 6U);
    EXPECT_EQ(end_of_block_comment("/*/", 0), 3U);
    EXPECT_EQ(end_of_block_comment("/*", 0), 2U);
}
