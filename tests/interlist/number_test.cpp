// Decimal numbers as options and directives carry them.
#include "interlist/number.h"

#include <gtest/gtest.h>

TEST(LeadingNumber, IsReadUpToTheFirstOtherCharacter) {
    EXPECT_EQ(leading_number("12"), 12);
    EXPECT_EQ(leading_number("12\n"), 12);
    EXPECT_EQ(leading_number("7x9"), 7);
    EXPECT_EQ(leading_number("0012"), 12);
    EXPECT_EQ(leading_number("3.5"), 3);
}

TEST(LeadingNumber, MayFollowWhiteSpaceAndOneSign) {
    EXPECT_EQ(leading_number(" \t\n\v\f\r5"), 5);
    EXPECT_EQ(leading_number("-5"), -5);
    EXPECT_EQ(leading_number("+5"), 5);
    EXPECT_EQ(leading_number("  -0"), 0);
}

TEST(LeadingNumber, NeedsADigit) {
    for (const char* text : {"", " ", "\n", "x1", "-", "+", "--5", "+-5", "-+5", "++5", "- 5"}) {
        EXPECT_EQ(leading_number(text), std::nullopt) << text;
    }
}

TEST(LeadingNumber, StopsAtTheEndsOfInt) {
    EXPECT_EQ(leading_number("2147483647"), 2147483647);
    EXPECT_EQ(leading_number("2147483648"), 2147483647);
    EXPECT_EQ(leading_number("4294967296"), 2147483647);
    EXPECT_EQ(leading_number("99999999999999999999999"), 2147483647);
    EXPECT_EQ(leading_number("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(leading_number("-2147483649"), -2147483647 - 1);
    EXPECT_EQ(leading_number("-99999999999999999999999"), -2147483647 - 1);
}
