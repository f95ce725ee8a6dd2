// The one call into either scheme that the entry points stand on: what its options ask for
// and what it gives back beside the text.
#include "demangle/schemes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string_view>

#include "demangle/decode_id.h"

namespace {

struct decoded_name {
    decode_result result;
    std::array<char, 64> buffer{};
    std::string_view text() const { return buffer.data(); }
};

decoded_name decode_name(std::string_view name, const decode_options& options,
                         std::size_t size = 64) {
    decoded_name decoded;
    decoded.result = decode(name, options, {decoded.buffer.data(), size});
    return decoded;
}

}  // namespace

TEST(Schemes, TheNumberSelectsTheScheme) {
    EXPECT_EQ(decode_name("f__1AFi", {.scheme = 0}).text(), "A::f(int)");
    EXPECT_EQ(decode_name("_ZN1A1fEi", {.scheme = 1}).text(), "A::f(int)");
    EXPECT_EQ(decode_name("_ZN1A1fEi", {.scheme = 0}).text(), "_ZN1A1fEi");
}

TEST(Schemes, WhatTheProcessHasChosenDoesNotMatter) {
    decode_mangle_scheme = 2;
    decode_extended_names = 1;
    EXPECT_TRUE(decode_name("g", {.scheme = 1}).result.error);
    decode_extended_names = 0;
    EXPECT_EQ(decode_name("g", {.scheme = 1, .extended = true}).text(), "__float128");
    decode_mangle_scheme = 0;
}

TEST(Schemes, UndecoratedNamesLeaveTheSignatureOut) {
    EXPECT_EQ(decode_name("f__1AFi", {.scheme = 0, .decorated = false}).text(), "f");
    EXPECT_EQ(decode_name("_ZN1A1fEi", {.scheme = 1, .decorated = false}).text(), "A::f");
}

TEST(Schemes, TextLengthAndNeededSizeAreToldApart) {
    // A compressed name takes room for its expansion, "f__F1A1A" and a NUL, too.
    const decode_result compressed = decode_name("__CPR8__f__F1AJ4J", {.scheme = 0}).result;
    EXPECT_EQ(compressed.text_length, std::strlen("f(A, A)"));
    EXPECT_EQ(compressed.needed_size, std::strlen("f(A, A)") + 1 + 9);
    const decode_result plain = decode_name("_Z1fi", {.scheme = 1}).result;
    EXPECT_EQ(plain.text_length, std::strlen("f(int)"));
    EXPECT_EQ(plain.needed_size, std::strlen("f(int)") + 1);
}

TEST(Schemes, ABufferThatIsTooSmallIsAnErrorAndTellsWhatItTakes) {
    for (const auto& [name, scheme] : {std::pair{"f__1AFi", 0}, {"_ZN1A1fEi", 1}}) {
        for (const std::size_t size : {0U, 1U, 5U, 9U}) {
            const decoded_name decoded = decode_name(name, {.scheme = scheme}, size);
            EXPECT_TRUE(decoded.result.error);
            EXPECT_TRUE(decoded.result.overflow);
            EXPECT_EQ(decoded.result.needed_size, 10U);
            EXPECT_EQ(decoded.result.text_length, 9U);
            EXPECT_EQ(decoded.text(),
                      std::string_view("A::f(int)").substr(0, size == 0 ? 0 : size - 1));
        }
    }
}

TEST(Schemes, ABadNameIsAnErrorWithoutOverflow) {
    for (const auto& [name, scheme, text] :
         {std::tuple{"f__Fh", 0, "f("}, {"_Z1fIiEPKc?", 1, "const char * "}}) {
        const decoded_name decoded = decode_name(name, {.scheme = scheme});
        EXPECT_TRUE(decoded.result.error);
        EXPECT_FALSE(decoded.result.overflow);
        EXPECT_EQ(decoded.text(), text);
        EXPECT_EQ(decoded.result.text_length, std::strlen(text));
    }
}

TEST(SchemesDeathTest, ANumberThatIsNoSchemesEndsTheProcess) {
    EXPECT_EXIT(decode_name("f__1AFi", {.scheme = 2}), testing::ExitedWithCode(1),
                "DECODE>> internal error: Invalid mangling scheme selected\n");
}
