// Scheme 1's two entry points as a caller meets them: flags, sizes, buffers, and the
// base-object test; and the same through the entry points that both schemes share.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "tests/demangle/scheme1/decode.h"

namespace {

class Scheme1Entry : public testing::Test {
  protected:
    Scheme1Entry() { decode_mangle_scheme = 1; }
    ~Scheme1Entry() override { decode_mangle_scheme = 0; }
};

}  // namespace

TEST(Scheme1Interface, ABufferThatIsLargeEnoughTakesTheTextAndItsNul) {
    const Decoded result = decode_into("_ZN1A1fEi", 10, true);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.overflow, 0);
    EXPECT_EQ(result.needed, 10U);
    EXPECT_EQ(result.text, "A::f(int)");
}

TEST(Scheme1Interface, ABufferOneByteShortSetsBothFlagsAndHoldsAPrefix) {
    const Decoded result = decode_into("_ZN1A1fEi", 9, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 1);
    EXPECT_EQ(result.needed, 10U);
    EXPECT_EQ(result.text, "A::f(int");
    EXPECT_TRUE(result.guarded);
}

TEST(Scheme1Interface, ABufferOfSizeZeroIsNeverWritten) {
    const Decoded result = decode_into("_ZN1A1fEi", 0, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 1);
    EXPECT_EQ(result.needed, 10U);
    EXPECT_TRUE(result.guarded);
}

TEST(Scheme1Interface, ANullBufferOfSizeZeroGivesTheSize) {
    int error = -1;
    int overflow = -1;
    std::size_t needed = 0;
    decode_identifier_eabi("_Z1fv", nullptr, 0, &error, &overflow, &needed, 1);
    EXPECT_EQ(error, 1);
    EXPECT_EQ(overflow, 1);
    EXPECT_EQ(needed, 4U);
}

TEST(Scheme1Interface, ABufferOfOneByteHoldsItsNul) {
    const Decoded result = decode_into("i", 1, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 1);
    EXPECT_EQ(result.needed, 4U);
    EXPECT_EQ(result.text, "");
    EXPECT_TRUE(result.terminated);
}

TEST(Scheme1Interface, AnEmptyTextFitsInOneByte) {
    const Decoded result = decode_into("Sx", 1, true);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.overflow, 0);
    EXPECT_EQ(result.needed, 1U);
    EXPECT_EQ(result.text, "");
}

TEST(Scheme1Interface, ABadNameSetsTheErrorAloneAndKeepsTheTextBeforeIt) {
    const Decoded result = decode_into("_ZTVz", 100, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 0);
    EXPECT_EQ(result.text, "Virtual function table for ");
    EXPECT_EQ(result.needed, result.text.size() + 1);
}

TEST(Scheme1Interface, AnUnknownSpecialNameLeavesNothing) {
    for (const char* name : {"_ZTX1A", "_ZT", "_ZGX", "_ZG", "_ZGR1x_"}) {
        const Decoded result = decode_into(name, 100, true);
        EXPECT_EQ(result.error, 1) << name;
        EXPECT_EQ(result.overflow, 0) << name;
        EXPECT_EQ(result.text, "") << name;
        EXPECT_EQ(result.needed, 1U) << name;
    }
}

TEST(Scheme1Interface, LeftoverInputIsAnErrorBehindTheWholeText) {
    const Decoded result = decode_into("ii", 100, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 0);
    EXPECT_EQ(result.text, "int");
    EXPECT_EQ(result.needed, 4U);
}

TEST(Scheme1Interface, LeftoverInputIsNotLookedForAfterAnOverflow) {
    const Decoded result = decode_into("ii", 3, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 1);
    EXPECT_EQ(result.needed, 4U);
    EXPECT_EQ(result.text, "in");
}

TEST(Scheme1Interface, TheSecondAttemptStartsFromAnEmptyText) {
    const Decoded result = decode_into("_ZN1AcvMT_IiEcEvq", 100, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 0);
    EXPECT_LE(result.needed, 1 + std::strlen("A::operator char T1<int>::*("));
}

TEST(Scheme1Interface, AnOverflowWithALaterErrorEndsWithTheErrorOnTheSecondCall) {
    const std::string name = "_ZTVN1A1Bz";
    const Decoded first = decode_into(name, 5, true);
    EXPECT_EQ(first.error, 1);
    EXPECT_EQ(first.overflow, 1);
    const Decoded second = decode_into(name, first.needed, true);
    EXPECT_EQ(second.error, 1);
    EXPECT_EQ(second.overflow, 0);
}

TEST(Scheme1Interface, BaseObjectConstructorsAndDestructorsAreSubobjects) {
    for (const char* name : {"_ZN1AC2Ev", "_ZN1AD2Ev", "_ZN1A1BC2ERKS0_", "_ZNSsC2Ev",
                             "_ZN1AC2IiEET_", "_ZThn8_N1AD2Ev", "_ZZN1AC2EvE1x"}) {
        EXPECT_TRUE(decode_is_ia64_subobject(name)) << name;
    }
}

TEST(Scheme1Interface, OtherNamesAreNoSubobjects) {
    for (const char* name : {"_ZN1AC1Ev", "_ZN1AD0Ev", "_ZN1AD1Ev", "_Z1fv", "_ZTV1A", "", "_",
                             "_Z", "N1AC2Ev", "ZN1AC2Ev", "__ZN1AC2Ev", "C2", "_ZN1A2C2Ev"}) {
        EXPECT_FALSE(decode_is_ia64_subobject(name)) << name;
    }
}

TEST(Scheme1Interface, ASubobjectThatGoesWrongLaterStillCounts) {
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2E"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2Ez!"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2Evgarbage"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AD2"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2X"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2B"));
    EXPECT_FALSE(decode_is_ia64_subobject("_ZN1AC1"));
    EXPECT_FALSE(decode_is_ia64_subobject("_ZN1AC"));
    EXPECT_FALSE(decode_is_ia64_subobject("_ZN9AC2Ev"));
}

TEST_F(Scheme1Entry, TheSharedEntryPointsReachTheDecoder) {
    char buffer[64];
    int error = -1;
    int overflow = -1;
    std::size_t needed = 0;
    decode_to_decorid("_ZNK1A1fEi", buffer, sizeof buffer, &error, &overflow, &needed);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(overflow, 0);
    EXPECT_STREQ(buffer, "A::f(int) const");
    EXPECT_EQ(needed, 16U);
    decode_to_origid("_ZNK1A1fEi", buffer, sizeof buffer, &error, &overflow, &needed);
    EXPECT_EQ(error, 0);
    EXPECT_STREQ(buffer, "A::f const");
    EXPECT_EQ(needed, 11U);
}

TEST_F(Scheme1Entry, DecodeIdGivesTheTextOrTheNameItself) {
    EXPECT_STREQ(decode_id("_Z1fi", 1), "f(int)");
    EXPECT_STREQ(decode_id("_Z1fi", 0), "f");
    EXPECT_STREQ(decode_id("_Z1fi!", 1), "_Z1fi!");
    EXPECT_STREQ(decode_id("Sx", 1), "Sx");
    EXPECT_STREQ(decode_id("i", 1), "int");
    EXPECT_STREQ(decode_id("", 1), "");
}

TEST_F(Scheme1Entry, DecodeIdTakesItsOwnResultAsAName) {
    EXPECT_STREQ(decode_id(decode_id("foo_bar", 1), 1), "foo_bar");
    EXPECT_STREQ(decode_id(decode_id("_Z1fi", 1), 1), "f(int)");
    EXPECT_STREQ(decode_id(decode_id("_Z1f1Ah?", 1), 1), "_Z1f1Ah?");
    EXPECT_STREQ(decode_id(decode_id("i", 1), 1), "int");
    // The text in front of the error needs a longer buffer than the name.
    const std::string name = "_Z1f" + std::string(450, 'i') + "?";
    EXPECT_EQ(decode_id(decode_id(name.c_str(), 1), 1), name);
}

TEST_F(Scheme1Entry, DecodeIdGrowsItsBufferForLongTexts) {
    const std::string identifier(600, 'x');
    EXPECT_EQ(decode_id(("_Z600" + identifier + "v").c_str(), 1), identifier + "()");
    const std::string wrong = "_Z" + std::string(3000, '!');
    EXPECT_EQ(decode_id(wrong.c_str(), 1), wrong);
}

TEST_F(Scheme1Entry, ANameLooksMangledWhenItBeginsWithTheMark) {
    EXPECT_EQ(probably_mangled_symbol_name("_Z"), 1);
    EXPECT_EQ(probably_mangled_symbol_name("_Z1fv"), 1);
    EXPECT_EQ(probably_mangled_symbol_name("__Z1fv"), 0);
    EXPECT_EQ(probably_mangled_symbol_name("Z1fv"), 0);
    EXPECT_EQ(probably_mangled_symbol_name("_"), 0);
    EXPECT_EQ(probably_mangled_symbol_name(""), 0);
}
