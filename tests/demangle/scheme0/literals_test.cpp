// Scheme 0's literals and the operands of its expressions.
#include <gtest/gtest.h>

#include "tests/demangle/scheme0/rows.h"

TEST(Scheme0Literals, LengthHasThreeForms) {
    expect_operands({{"iL15", "5"},
                     {"iL3123", "123"},
                     {"iL_1_5", "5"},
                     {"iL10_1234567890", "1234567890"},
                     {"iL_10_1234567890", "1234567890"},
                     {"iL_010_1234567890", "1234567890"},
                     {"iL01_5", "5"},
                     {"iL_0_", ""},
                     {"iL0", ""}});
}

TEST(Scheme0Literals, ThreeDigitsAreOneDigitAndAPayload) {
    expect_operands({{"iL3100", "100"}, {"iL212", "12"}});
    // Three digits and "_": the first is the length, and a "_" is no payload.
    expect_operands({{"iL512_345", bad_name}});
}

TEST(Scheme0Literals, LengthOfAHundredNeedsTheFormWithTwoUnderscores) {
    const std::string digits(100, '7');
    expect_operands({{"iL_100_" + digits, digits}, {"iL100_" + digits, bad_name}});
}

TEST(Scheme0Literals, LengthPastTheEndIsABadName) {
    expect_operands({{"iL9123", bad_name},
                     {"iL12_123", bad_name},
                     {"iL_4_123", bad_name},
                     {"iL_3_123", "123"},
                     {"iL_99999999999999999999_1", bad_name},
                     {"iL", bad_name},
                     {"iLx", bad_name},
                     {"iL_", bad_name},
                     {"iL__5", bad_name},
                     {"iL_1", bad_name},
                     {"iL_1x5", bad_name}});
}

// Here the bound is the end of a run, and more of the name follows.
TEST(Scheme0Literals, PayloadPastItsOwnBoundIsABadName) {
    expect_rows({{"x__Q2_16A__tm__8_XiL_2_11B", bad_name},
                 {"x__Q2_17A__tm__9_XiL_2_121B", "A<12>::B::x"},
                 {"x__Q2_15A__tm__7_XiL_2_1B", bad_name},
                 {"x__Q2_14A__tm__6_XiL211B", bad_name},
                 {"x__Q2_14A__tm__6_XiL111B", "A<1>::B::x"},
                 {"x__Q2_13A__tm__5_XiL11B", bad_name},
                 {"x__Q2_16A__tm__8_XiL02_11B", bad_name},
                 {"x__Q2_17A__tm__9_XiL02_121B", "A<12>::B::x"}});
}

TEST(Scheme0Literals, LettersStandForPunctuation) {
    expect_operands({{"iL3n42", "-42"},
                     {"dL31d5", "(double)1.5"},
                     {"fL31d5", "(float)1.5"},
                     {"dL51d5e7", "(double)1.5e7"},
                     {"dL_7_1d5ep10", "(double)1.5e+10"},
                     {"dL71d5en10", "(double)1.5e-10"},
                     {"iL2_5", bad_name},
                     {"iL25_", bad_name}});
}

TEST(Scheme0Literals, TypeDecidesOnSuffixWordOrCast) {
    expect_operands({{"iL15", "5"},
                     {"UiL15", "5U"},
                     {"lL15", "5L"},
                     {"UlL15", "5UL"},
                     {"LL15", "5LL"},
                     {"ULL15", "5ULL"},
                     {"cL297", "(char)97"},
                     {"sL15", "(short)5"},
                     {"UcL15", "(unsigned char)5"},
                     {"SiL15", "(signed int)5"},
                     {"m8L15", "(__int64)5"},
                     {"5ColorL12", "(Color)2"},
                     {"PCcL10", "(const char *)0"},
                     {"PFi_vL10", "(void (*)(int))0"},
                     {"Z1ZL15", "(T1)5"},
                     {"CiL15", "(const int)5"},
                     {"iL_1d", bad_name},
                     {"iL_", bad_name},
                     {"i15", bad_name},
                     {"hL15", bad_name}});
}

TEST(Scheme0Literals, BooleansAreWords) {
    expect_operands({{"bL10", "false"},
                     {"bL11", "true"},
                     {"bL3000", "false"},
                     {"bL3002", "true"},
                     {"bL1n", "true"},
                     {"bL1d", "true"},
                     {"bL1p", "true"},
                     {"bL0", "false"},
                     {"bL1_", bad_name}});
}

TEST(Scheme0Literals, NullPointersAreAWordWhateverTheirDigits) {
    expect_operands({{"nL10", "nullptr"},
                     {"jL10", "nullptr"},
                     {"nL17", "nullptr"},
                     {"nL0", "nullptr"},
                     {"nL1_", bad_name}});
}

TEST(Scheme0Literals, LengthsOfDigitsBehindAnUnderscoreNeedTheLongForm) {
    // A one-digit length, a digit and "_" are a two-digit length.
    expect_rows({{"f__FAXiL_1_5_i", "f(int [5])"}, {"f__FAXiL15_i", bad_name}});
}

TEST(Scheme0Operands, ParameterReferences) {
    expect_operands({{"I0I", "this"},
                     {"I1I", "param#1"},
                     {"I2_1I", "param#2[up 1 level]"},
                     {"I2_3I", "param#2[up 3 levels]"},
                     {"I2_0I", "param#2"},
                     {"I0_3I", "this"},
                     {"I2_1", "param#2[up 1 level]"},
                     {"ICI", bad_name},
                     {"IC2I", "param#2"},
                     {"ICVDr2I", "param#2"},
                     {"IE2I", "param#2"},
                     {"IO2I", "param#2"},
                     {"II2I", "param#2"},
                     {"IDE2I", "param#2"},
                     {"IDI2I", "param#2"},
                     {"IDO2I", "param#2"},
                     {"IDx2I", bad_name},
                     {"I2", bad_name},
                     {"I2x", bad_name},
                     {"I2_I", bad_name},
                     {"I18446744073709551615I", "param#-1"}});
    expect_operands({{"OplI1II2_1IO", "param#1 + param#2[up 1 level]"}});
}

TEST(Scheme0Operands, NamesEndAtTheFirstPairOfUnderscores) {
    expect_operands({{"__f__", "f"},
                     {"__f", "f"},
                     {"__f" + args("i") + "__", "f<int>"},
                     {"__f" + args("i"), "f<int>"},
                     {"____pl__", "operator +"},
                     {"____opi__", "operator int"},
                     {"____ct__", bad_name},
                     {"____dt__", bad_name},
                     {"__", bad_name},
                     {"Opl__f____g__O", "f + g"}});
    expect_rows({{"f" + args("X__a__i") + "__Fv", "f<a, int>()"}});
}

TEST(Scheme0Operands, ConversionsInConversionsAreReadOnceEach) {
    std::string name = "iL11";
    std::string text = "1";
    for (int level = 0; level < 60; ++level) {
        name = "____opyOng" + name + "O__";
        text = "operator decltype(-" + text + ")";
    }
    expect_operands({{name, text}});
    std::string type = "i";
    text = "int";
    for (int level = 0; level < 200; ++level) {
        type = run("A" + args("X____op" + type + "__"));
        text = "A<operator " + text + ">";
    }
    expect_types({{type, text}});
    expect_rows({{"__op" + type + "__1BFv", "B::operator " + text + "()"}});
}
