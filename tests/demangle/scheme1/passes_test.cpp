// That scheme 1's result does not show how it got there: a name decoded
// in one pass, in two, or into a buffer of any size reads the same.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "demangle/decode_eabi.h"

namespace {

struct Outcome {
    std::string text;
    int error = 0;
    int overflow = 0;
    std::size_t needed = 0;
};

Outcome decode_into(const char* name, std::size_t size, int decorated = 1) {
    std::vector<char> buffer(size + 1, '#');
    Outcome outcome;
    decode_identifier_eabi(name, buffer.data(), size, &outcome.error, &outcome.overflow,
                           &outcome.needed, decorated);
    EXPECT_EQ(buffer[size], '#') << name;
    if (size != 0) {
        outcome.text = buffer.data();
    }
    return outcome;
}

struct Row {
    const char* name;
    const char* text;
};

}  // namespace

// The return type is printed in front of a name that may not fit any more.
TEST(Scheme1Passes, EveryBufferSizeHoldsTheBeginningOfTheText) {
    static constexpr Row rows[] = {
        {"_Z1fIiEPFvvEv", "void (*)() f<int>()"},
        {"_Z3fooI3BarEPKT_RS0_S1_", "const T1 * foo<Bar>(T1 &, const T1)"},
        {"_ZN1A1BI1CE1fIS1_EES2_T_S3_", "A::B<C> A::B<C>::f<C>(T1, T1)"},
        {"_ZZ1fIiEPKcT_E1x", "const char * f<int>(T1)::x"},
        {"_ZZ1gI1XES0_T_EN1Y1hI1ZEES3_S0_", "Z X g<X>(T1)::Y::h<Z>(X)"},
        {"_ZThn8_N1A1fIiEEvT_", "Thunk for (offset -8) void A::f<int>(T1)"},
        {"_Z1fI1AIXgtLi2ELi1EEEEvT_", "void f<A<(2 > 1)>>(T1)"},
    };
    for (const Row& row : rows) {
        const std::string text = decode_into(row.name, 500).text;
        for (std::size_t size = 0; size <= text.size() + 2; ++size) {
            const Outcome outcome = decode_into(row.name, size);
            const bool fits = size > text.size();
            EXPECT_EQ(outcome.needed, text.size() + 1) << row.name << ' ' << size;
            EXPECT_EQ(outcome.overflow, fits ? 0 : 1) << row.name << ' ' << size;
            EXPECT_EQ(outcome.error, fits ? 0 : 1) << row.name << ' ' << size;
            EXPECT_EQ(outcome.text, size == 0 ? "" : text.substr(0, size - 1)) << row.name;
        }
    }
}

TEST(Scheme1Passes, AnErrorInTheNameOrBehindItLeavesOnlyTheReturnType) {
    static constexpr Row rows[] = {
        {"_ZN1A1f?Ev", ""},
        {"_Z1fi?", ""},
        {"_Z1fIiEPKc?", "const char * "},
        {"_Z1fIiEPKci?", "const char * "},
        {"_ZZ1fIiEPKciE?", ""},
        {"_ZTV?", "Virtual function table for "},
        {"_ZThn8_1fi?", "Thunk for (offset -8) "},
        {"_ZT?", ""},
        {"_ZGX", ""},
        {"PK?", ""},
        {"PT0", ""},
        {"_ZTIT0?", "Typeinfo for "},
        {"1AIT0E", "A<"},
        {"_ZGVZ1fvEd0x", "Initialization guard variable for f()::"},
        {"_ZGVUt0?", "Initialization guard variable for [unnamed type (instance "},
        {"UlvE?", "[lambda() (instance "},
        {"DTfp0E", "decltype("},
    };
    for (const Row& row : rows) {
        const Outcome outcome = decode_into(row.name, 500);
        EXPECT_EQ(outcome.text, row.text) << row.name;
        EXPECT_EQ(outcome.needed, std::string(row.text).size() + 1) << row.name;
        EXPECT_EQ(outcome.error, 1) << row.name;
        EXPECT_EQ(outcome.overflow, 0) << row.name;
    }
}

TEST(Scheme1Passes, ATextThatOverflowsBeforeAnErrorAsksForRoomFirst) {
    const Outcome small = decode_into("_Z1fIiEPKc?", 8);
    EXPECT_EQ(small.text, "const c");
    EXPECT_EQ(small.error, 1);
    EXPECT_EQ(small.overflow, 1);
    EXPECT_EQ(small.needed, 14U);
    const Outcome enough = decode_into("_Z1fIiEPKc?", small.needed);
    EXPECT_EQ(enough.error, 1);
    EXPECT_EQ(enough.overflow, 0);
}

TEST(Scheme1Passes, InputLeftOverIsAnErrorBehindTheWholeText) {
    const Outcome outcome = decode_into("_Z1fvE", 500);
    EXPECT_EQ(outcome.text, "f()");
    EXPECT_EQ(outcome.error, 1);
    EXPECT_EQ(outcome.overflow, 0);
    // It asks for no second attempt.
    const Outcome conversion = decode_into("_ZN1AcvPT_IiEEvE", 500);
    EXPECT_EQ(conversion.text, "A::operator T1 *<int>()");
    EXPECT_EQ(conversion.error, 1);
}

TEST(Scheme1Passes, ReferencesToMovedTextReadTheSame) {
    // S_ and the rest are entered while the name stands where the return type will.
    EXPECT_EQ(decode_into("_ZN2ns1fI1AEEPT_PS1_S_S3_", 500).text, "T1 * ns::f<A>(A *, ns, T1 *)");
    EXPECT_EQ(decode_into("_ZN2ns1fI1AEEPT_NS_1BES4_S1_", 500).text,
              "T1 * ns::f<A>(ns::B, ns::B, A)");
}

TEST(Scheme1Passes, MoreEntriesThanTheTableStartsWithAreKept) {
    std::string name = "_Z1f";
    std::string text = "f(";
    for (int i = 0; i < 700; ++i) {
        const std::string number = std::to_string(1000 + i);
        name += "5C" + number;
        text += "C" + number + ", ";
    }
    // "Z" is 35 in base 36, so "SZ_" is the entry with index 36; "JE" is 698.
    EXPECT_EQ(decode_into((name + "SZ_").c_str(), 20000).text, text + "C1036)");
    EXPECT_EQ(decode_into((name + "SJE_").c_str(), 20000).text, text + "C1699)");
    EXPECT_EQ(decode_into((name + "SJF_").c_str(), 20000).error, 1);
}

TEST(Scheme1Passes, UndecoratedNamesKeepQualifiersAndSuffixes) {
    EXPECT_EQ(decode_into("_ZNK1A1fEi", 500, 0).text, "A::f const");
    EXPECT_EQ(decode_into("_ZN1AC2Ev", 500, 0).text, "A::A [subobject]");
    EXPECT_EQ(decode_into("_Z1fIiEPFvvEv", 500, 0).text, "f<int>");
    EXPECT_EQ(decode_into("_ZThn8_N1A1fEv", 500, 0).text, "Thunk for (offset -8) A::f()");
}

TEST(Scheme1Passes, AConstructorCountsWhateverBadComponentFollowsIt) {
    for (const char* const bad : {"?", "9x", "T?", "Dt?E", "I?E", "S_E"}) {
        EXPECT_TRUE(decode_is_ia64_subobject((std::string("_ZN1AC2") + bad).c_str())) << bad;
    }
    EXPECT_FALSE(decode_is_ia64_subobject("_ZN1AC21B?"));
}

TEST(Scheme1Passes, SubobjectsAreToldWithoutABuffer) {
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2Ev"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AD2Ev"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZN1AC2E?"));
    EXPECT_FALSE(decode_is_ia64_subobject("_ZN1AC1Ev"));
    EXPECT_FALSE(decode_is_ia64_subobject("N1AC2Ev"));
}
