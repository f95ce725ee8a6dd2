// The decoding state's primitives: what they write, count and read at their bounds.
#include "demangle/scheme0/state.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <string_view>

namespace {

// A state on a buffer of `size` bytes, every byte of which is 'z' at first.
struct Output {
    explicit Output(std::size_t size) {
        bytes.fill('z');
        state.out_buf = bytes.data();
        state.out_size = size;
    }
    std::string_view view(std::size_t count) const { return {bytes.data(), count}; }

    std::array<char, 32> bytes{};
    decode_state state;
};

struct Input {
    explicit Input(const char* name) : text(name) { state.input_end = text + std::strlen(text); }

    const char* text;
    decode_state state;
};

using namespace std::string_view_literals;

}  // namespace

TEST(Scheme0State, StartsAtZero) {
    const decode_state state;
    EXPECT_EQ(state.out_len, 0U);
    EXPECT_EQ(state.error_seen, 0);
    EXPECT_EQ(state.overflowed, 0);
    EXPECT_EQ(state.suppress_depth, 0U);
    EXPECT_EQ(state.uncompressed_len, 0U);
    EXPECT_EQ(state.nesting_level, 0U);
}

TEST(Scheme0State, CharactersAreStoredUpToTheNulsPlace) {
    Output out(4);
    for (const char letter : {'a', 'b', 'c'}) {
        emit_char(letter, &out.state);
    }
    EXPECT_EQ(out.view(5), "abczz");
    EXPECT_EQ(out.state.overflowed, 0);
    EXPECT_EQ(out.state.out_len, 3U);
}

TEST(Scheme0State, FirstCharacterTooManyOverflowsAndPutsTheNul) {
    Output out(4);
    emit_text("abcd", &out.state);
    EXPECT_EQ(out.view(5), "abc\0z"sv);
    EXPECT_EQ(out.state.overflowed, 1);
    EXPECT_EQ(out.state.out_len, 4U);
}

TEST(Scheme0State, CountingGoesOnAfterAnOverflow) {
    Output out(4);
    emit_text("abcdef", &out.state);
    emit_char('g', &out.state);
    emit_number(12345, &out.state);
    EXPECT_EQ(out.view(5), "abc\0z"sv);
    EXPECT_EQ(out.state.out_len, 12U);
}

TEST(Scheme0State, BufferOfSizeZeroIsNeverWritten) {
    Output out(0);
    out.state.out_buf = nullptr;
    emit_text("abc", &out.state);
    emit_char('d', &out.state);
    EXPECT_EQ(out.state.overflowed, 1);
    EXPECT_EQ(out.state.out_len, 4U);
}

TEST(Scheme0State, BufferOfSizeOneGetsTheNulWithTheFirstCharacter) {
    Output out(1);
    EXPECT_EQ(out.view(1), "z");
    emit_char('a', &out.state);
    EXPECT_EQ(out.view(2), "\0z"sv);
    EXPECT_EQ(out.state.overflowed, 1);
    EXPECT_EQ(out.state.out_len, 1U);
}

TEST(Scheme0State, EmptyTextDoesNothing) {
    Output out(0);
    emit_text("", &out.state);
    emit_text({"abc", 0}, &out.state);
    EXPECT_EQ(out.state.overflowed, 0);
    EXPECT_EQ(out.state.out_len, 0U);
}

TEST(Scheme0State, BytesAtOnceGiveWhatSingleCharactersGive) {
    for (std::size_t size = 0; size <= 8; ++size) {
        Output at_once(size);
        emit_text({"abcdef", 6}, &at_once.state);
        Output one_by_one(size);
        for (const char letter : "abcdef"sv) {
            emit_char(letter, &one_by_one.state);
        }
        EXPECT_EQ(at_once.bytes, one_by_one.bytes) << size;
        EXPECT_EQ(at_once.state.out_len, one_by_one.state.out_len) << size;
        EXPECT_EQ(at_once.state.overflowed, one_by_one.state.overflowed) << size;
    }
}

TEST(Scheme0State, SuppressedTextIsNeitherStoredNorCounted) {
    Output out(2);
    out.state.suppress_depth = 1;
    emit_text("abcdef", &out.state);
    EXPECT_EQ(out.state.out_len, 0U);
    EXPECT_EQ(out.state.overflowed, 0);
    EXPECT_EQ(out.view(2), "zz");
}

TEST(Scheme0State, NumbersOfAllLengthsAreDecimal) {
    for (const auto& [value, text] : {std::pair<std::uint64_t, std::string_view>{0, "0"},
                                      {7, "7"},
                                      {4096, "4096"},
                                      {UINT64_MAX, "18446744073709551615"}}) {
        Output out(32);
        emit_number(value, &out.state);
        EXPECT_EQ(out.view(text.size()), text);
        EXPECT_EQ(out.state.out_len, text.size());
    }
}

TEST(Scheme0State, FirstErrorSilencesAndLaterOnesDoNothing) {
    Output out(8);
    emit_text("ab", &out.state);
    report_bad_name(&out.state);
    EXPECT_EQ(out.state.error_seen, 1);
    EXPECT_EQ(out.state.suppress_depth, 1U);
    report_bad_name(&out.state);
    EXPECT_EQ(out.state.suppress_depth, 1U);
    emit_text("cd", &out.state);
    EXPECT_EQ(out.state.out_len, 2U);
    EXPECT_EQ(out.view(4), "abzz");
}

TEST(Scheme0State, ReadingAtOrPastTheEndYieldsNul) {
    Input in("abc");
    EXPECT_EQ(peek_char(in.text, &in.state), 'a');
    EXPECT_EQ(peek_char(in.text + 2, &in.state), 'c');
    in.state.input_end = in.text + 2;
    EXPECT_EQ(peek_char(in.text + 2, &in.state), '\0');
    EXPECT_EQ(peek_char(in.text + 3, &in.state), '\0');
}

TEST(Scheme0State, NumberEndsAtTheFirstOtherCharacter) {
    Input in("0123a");
    std::uint64_t value = 77;
    EXPECT_EQ(read_number(in.text, &value, &in.state), in.text + 4);
    EXPECT_EQ(value, 123U);
    EXPECT_EQ(in.state.error_seen, 0);
}

TEST(Scheme0State, NumberEndsAtTheInputsEnd) {
    Input in("1234");
    in.state.input_end = in.text + 2;
    std::uint64_t value = 77;
    EXPECT_EQ(read_number(in.text, &value, &in.state), in.text + 2);
    EXPECT_EQ(value, 12U);
}

TEST(Scheme0State, NumberWithoutADigitIsAnErrorAndConsumesNothing) {
    Input in("a1");
    std::uint64_t value = 77;
    EXPECT_EQ(read_number(in.text, &value, &in.state), in.text);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(in.state.error_seen, 1);
}

TEST(Scheme0State, NumberWrapsAtSixtyFourBits) {
    Input in("18446744073709551617");
    std::uint64_t value = 77;
    EXPECT_EQ(read_number(in.text, &value, &in.state), in.text + 20);
    EXPECT_EQ(value, 1U);
    EXPECT_EQ(in.state.error_seen, 0);
}

TEST(Scheme0State, LengthNarrowsTheInputToTheName) {
    Input in("3abcdef");
    const char* const end = in.state.input_end;
    const char* saved_end = nullptr;
    std::uint64_t value = 77;
    EXPECT_EQ(read_length(in.text, &value, &saved_end, &in.state), in.text + 1);
    EXPECT_EQ(value, 3U);
    EXPECT_EQ(saved_end, end);
    EXPECT_EQ(in.state.input_end, in.text + 4);
    EXPECT_EQ(in.state.error_seen, 0);
}

TEST(Scheme0State, LengthMayReachExactlyToTheEnd) {
    Input in("12abcdefghijkl");
    const char* saved_end = nullptr;
    std::uint64_t value = 77;
    EXPECT_EQ(read_length(in.text, &value, &saved_end, &in.state), in.text + 2);
    EXPECT_EQ(value, 12U);
    EXPECT_EQ(in.state.input_end, in.text + 14);
    EXPECT_EQ(in.state.error_seen, 0);
}

TEST(Scheme0State, LengthPastTheEndIsAnErrorAndIsClampedToWhatRemains) {
    Input in("4abc");
    const char* const end = in.state.input_end;
    const char* saved_end = nullptr;
    std::uint64_t value = 77;
    EXPECT_EQ(read_length(in.text, &value, &saved_end, &in.state), in.text + 1);
    EXPECT_EQ(value, 3U);
    EXPECT_EQ(in.state.input_end, end);
    EXPECT_EQ(saved_end, end);
    EXPECT_EQ(in.state.error_seen, 1);
}

TEST(Scheme0State, LengthOfManyDigitsNeverWraps) {
    Input in("18446744073709551618ab");
    const char* const end = in.state.input_end;
    const char* saved_end = nullptr;
    std::uint64_t value = 77;
    read_length(in.text, &value, &saved_end, &in.state);
    EXPECT_EQ(in.state.error_seen, 1);
    EXPECT_EQ(in.state.input_end, end);
    EXPECT_LE(value, 22U);
}

TEST(Scheme0State, LengthWithoutADigitIsAnErrorAndConsumesNothing) {
    Input in("abc");
    const char* const end = in.state.input_end;
    const char* saved_end = nullptr;
    std::uint64_t value = 77;
    EXPECT_EQ(read_length(in.text, &value, &saved_end, &in.state), in.text);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(saved_end, end);
    EXPECT_EQ(in.state.input_end, end);
    EXPECT_EQ(in.state.error_seen, 1);
}
