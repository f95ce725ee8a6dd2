#include "support/buildid.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/child.h"

namespace {

constexpr build_inputs plain{"Feb 19 2022", "16:54:09", "dev", "4.2.1", "17.", "Main"};

// The whole line for `inputs`.
std::string line_of(const build_inputs& inputs, const char* prefix = nullptr) {
    char* text = nullptr;
    std::size_t size = 0;
    FILE* const stream = open_memstream(&text, &size);
    EXPECT_EQ(buildid_of(inputs, stream, prefix), '\n');
    std::fclose(stream);
    std::string line(text, size);
    std::free(text);
    return line;
}

std::string of_date(const char* date) {
    build_inputs inputs = plain;
    inputs.date = date;
    return line_of(inputs);
}

std::string of_time(const char* time) {
    build_inputs inputs = plain;
    inputs.time = time;
    return line_of(inputs);
}

std::string of_tag(const char* tag) {
    build_inputs inputs = plain;
    inputs.build_tag = tag;
    return line_of(inputs);
}

std::string of_version1(const char* version) {
    build_inputs inputs = plain;
    inputs.version1 = version;
    return line_of(inputs);
}

std::string of_version2(const char* version) {
    build_inputs inputs = plain;
    inputs.version2 = version;
    return line_of(inputs);
}

std::string of_branch(const char* branch) {
    build_inputs inputs = plain;
    inputs.branch = branch;
    return line_of(inputs);
}

}  // namespace

TEST(BuildId, ComposesTheFieldsInOrder) {
    EXPECT_EQ(line_of(plain), "1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(line_of({"Mar  7 2024", "09:15:00", "abz", "1.2-3x", "9.1", "Release_8_3"}),
              "1YC7J-01P-RASBTC-ZAR-ZAY_T\n");
}

TEST(BuildId, ThePrefixIsWrittenUnchanged) {
    EXPECT_EQ(line_of(plain, "Build Number "), "Build Number 1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(line_of(plain, "100%s \xe9\n"), "100%s \xe9\n1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(line_of(plain, ""), "1WBJQ-34L-UASAR-RXA-C08D\n");
}

TEST(BuildId, ANullPrefixStartsTheLineWithTheNumber) {
    EXPECT_EQ(line_of(plain, nullptr), "1WBJQ-34L-UASAR-RXA-C08D\n");
}

TEST(BuildId, TheLibrarysOwnNumber) {
#ifdef DEFAULT_BUILD_INPUTS
    const Finished run = in_child([] { buildid(stdout, "Build Number "); });
    EXPECT_EQ(run.out, "Build Number 1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(run.err, "");
#else
    GTEST_SKIP() << "this build was given inputs of its own";
#endif
}

TEST(BuildId, ANullStreamIsStandardOutput) {
    const Finished run = in_child([] {
        buildid_of(plain, nullptr, "Build Number ");
        buildid_of(plain, nullptr, nullptr);
    });
    EXPECT_EQ(run.out, "Build Number 1WBJQ-34L-UASAR-RXA-C08D\n1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(BuildId, TheResultIsThatOfTheNewline) {
    FILE* const full = std::fopen("/dev/full", "w");
    ASSERT_NE(full, nullptr);
    std::setvbuf(full, nullptr, _IONBF, 0);
    EXPECT_EQ(buildid_of(plain, full, "Build Number "), EOF);
    std::fclose(full);
}

TEST(BuildId, CharactersAreWrittenOneByOneAndTwoCharacterCodesTogether) {
    std::vector<std::string> writes;
    cookie_io_functions_t functions{};
    functions.write = [](void* cookie, const char* bytes, std::size_t size) -> ssize_t {
        static_cast<std::vector<std::string>*>(cookie)->emplace_back(bytes, size);
        return static_cast<ssize_t>(size);
    };
    FILE* const stream = fopencookie(&writes, "w", functions);
    ASSERT_NE(stream, nullptr);
    std::setvbuf(stream, nullptr, _IONBF, 0);
    buildid_of({"Feb 19 2022", "16:54:09", "dev", "4", "", "opiZ9a"}, stream, nullptr);
    std::fclose(stream);
    EXPECT_EQ(writes, (std::vector<std::string>{"1", "W", "B", "J", "Q", "-", "3", "4", "L", "-",
                                                "U", "-", "-", "ZE", "ZZ", "Z9", "0", "\n"}));
}

TEST(BuildId, TheYearIsALetterWithoutWrapAround) {
    EXPECT_EQ(of_date("Feb 19 1999"), "1@BJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2000"), "1ABJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2022"), "1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2025"), "1ZBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2026"), "1[BJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2031"), "1`BJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2064"),
              "1\x81"
              "BJQ-34L-UASAR-RXA-C08D\n");
}

TEST(BuildId, EveryMonthHasALetter) {
    EXPECT_EQ(of_date("Jan 19 2022"), "1WAJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Feb 19 2022"), "1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Mar 19 2022"), "1WCJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Apr 19 2022"), "1WDJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("May 19 2022"), "1WEJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Jun 19 2022"), "1WFJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Jul 19 2022"), "1WGJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Aug 19 2022"), "1WHJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Sep 19 2022"), "1WIJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Oct 19 2022"), "1WJJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Nov 19 2022"), "1WKJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_date("Dec 19 2022"), "1WLJQ-34L-UASAR-RXA-C08D\n");
}

TEST(BuildId, EveryDayHasADigitOrALetter) {
    const std::string codes = "123456789ABCDEFGHIJKLMNOPQRSTUV";
    for (std::size_t day = 1; day <= 31; ++day) {
        const std::string number = std::string(day < 10 ? " " : "") + std::to_string(day);
        EXPECT_EQ(of_date(("Feb " + number + " 2022").c_str()),
                  std::string("1WB") + codes[day - 1] + "Q-34L-UASAR-RXA-C08D\n");
    }
}

TEST(BuildId, EveryHourHasALetterAndTwentyFourIsMidnight) {
    const std::string codes = "ABCDEFGHIJKLMNOPQRSTUVWXA";
    for (std::size_t hour = 0; hour <= 24; ++hour) {
        const std::string number = std::string(hour < 10 ? "0" : "") + std::to_string(hour);
        EXPECT_EQ(of_time((number + ":59:59").c_str()),
                  std::string("1WBJ") + codes[hour] + "-34L-UASAR-RXA-C08D\n");
    }
}

TEST(BuildId, DatesAndTimesOfWholeBuilds) {
    EXPECT_EQ(line_of({"Feb 19 2022", "16:54:09", "", "", "", ""}), "1WBJQ----\n");
    EXPECT_EQ(line_of({"Mar  7 2024", "09:15:00", "", "", "", ""}), "1YC7J----\n");
    EXPECT_EQ(line_of({"Dec 31 2000", "00:30:00", "", "", "", ""}), "1ALVA----\n");
}

TEST(BuildId, TagLettersAndDigitsTradePlaces) {
    EXPECT_EQ(of_tag("abz"), "1WBJQ-01P-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("k0_"), "1WBJQ-AQ%-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("AjJ"), "1WBJQ-099-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("KZz"), "1WBJQ-APP-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("059"), "1WBJQ-QVZ-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag(".- "), "1WBJQ-%%%-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("@[`"), "1WBJQ-%%%-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("{/:"), "1WBJQ-%%%-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("\x80\xe9\xff"), "1WBJQ-%%%-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("bcd"), "1WBJQ-123-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("efg"), "1WBJQ-456-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_tag("hiL"), "1WBJQ-78B-UASAR-RXA-C08D\n");
}

TEST(BuildId, VersionDigitsPointsAndHyphensHaveLetters) {
    EXPECT_EQ(of_version1("1.2-3x"), "1WBJQ-34L-RASBTC-RXA-C08D\n");
    EXPECT_EQ(of_version1("01234"), "1WBJQ-34L-QRSTU-RXA-C08D\n");
    EXPECT_EQ(of_version1("56789"), "1WBJQ-34L-VWXYZ-RXA-C08D\n");
    EXPECT_EQ(of_version1("aZ_/:"), "1WBJQ-34L-CCCCC-RXA-C08D\n");
    EXPECT_EQ(of_version1("\x80\xff %+"), "1WBJQ-34L-CCCCC-RXA-C08D\n");
    EXPECT_EQ(of_version2("1-."), "1WBJQ-34L-UASAR-RBA-C08D\n");
    EXPECT_EQ(of_version2("x09"), "1WBJQ-34L-UASAR-CQZ-C08D\n");
}

TEST(BuildId, BranchKeysHaveCodes) {
    EXPECT_EQ(of_branch("Release_"), "1WBJQ-34L-UASAR-RXA-ZA\n");
    EXPECT_EQ(of_branch("Development_"), "1WBJQ-34L-UASAR-RXA-ZB\n");
    EXPECT_EQ(of_branch("Qov"), "1WBJQ-34L-UASAR-RXA-ZC\n");
    EXPECT_EQ(of_branch("Tarn"), "1WBJQ-34L-UASAR-RXA-ZD\n");
    EXPECT_EQ(of_branch("opi"), "1WBJQ-34L-UASAR-RXA-ZE\n");
    EXPECT_EQ(of_branch("V7100"), "1WBJQ-34L-UASAR-RXA-ZE\n");
    EXPECT_EQ(of_branch("k48"), "1WBJQ-34L-UASAR-RXA-ZG\n");
    EXPECT_EQ(of_branch("bew"), "1WBJQ-34L-UASAR-RXA-ZH\n");
}

TEST(BuildId, TheShorterKeyBeforeTheLongerOneWins) {
    EXPECT_EQ(of_branch("Tarn8"), "1WBJQ-34L-UASAR-RXA-ZDY\n");
}

TEST(BuildId, BranchKeysMatchInAnyCaseAndAnywhere) {
    EXPECT_EQ(of_branch("release_"), "1WBJQ-34L-UASAR-RXA-ZA\n");
    EXPECT_EQ(of_branch("RELEASE_"), "1WBJQ-34L-UASAR-RXA-ZA\n");
    EXPECT_EQ(of_branch("v7100"), "1WBJQ-34L-UASAR-RXA-ZE\n");
    EXPECT_EQ(of_branch("OPI"), "1WBJQ-34L-UASAR-RXA-ZE\n");
    EXPECT_EQ(of_branch("xBEWx"), "1WBJQ-34L-UASAR-RXA-NZHN\n");
    EXPECT_EQ(of_branch("qovqovtarnk48"), "1WBJQ-34L-UASAR-RXA-ZCZCZDZG\n");
}

TEST(BuildId, ABranchThatEndsInsideAKeyIsTakenByCharacters) {
    EXPECT_EQ(of_branch("Release"), "1WBJQ-34L-UASAR-RXA-H4B40I4\n");
    EXPECT_EQ(of_branch("Tar"), "1WBJQ-34L-UASAR-RXA-J0H\n");
    EXPECT_EQ(of_branch("V710"), "1WBJQ-34L-UASAR-RXA-LXRQ\n");
    EXPECT_EQ(of_branch("k4"), "1WBJQ-34L-UASAR-RXA-AU\n");
}

TEST(BuildId, BranchCharactersHaveCodes) {
    EXPECT_EQ(of_branch("Release_8_3"), "1WBJQ-34L-UASAR-RXA-ZAY_T\n");
    EXPECT_EQ(of_branch("Development_Zed9"), "1WBJQ-34L-UASAR-RXA-ZBZZ43Z9\n");
    EXPECT_EQ(of_branch("Main"), "1WBJQ-34L-UASAR-RXA-C08D\n");
    EXPECT_EQ(of_branch("ABCDEFGHIJ"), "1WBJQ-34L-UASAR-RXA-0123456789\n");
    EXPECT_EQ(of_branch("KLMNOPQRSTUVWXYZ"), "1WBJQ-34L-UASAR-RXA-ABCDEFGHIJKLMNOZZ\n");
    EXPECT_EQ(of_branch("abcdefghij"), "1WBJQ-34L-UASAR-RXA-0123456789\n");
    EXPECT_EQ(of_branch("klmnopqrstuvwxyz"), "1WBJQ-34L-UASAR-RXA-ABCDEFGHIJKLMNOZZ\n");
    EXPECT_EQ(of_branch("0123456789"), "1WBJQ-34L-UASAR-RXA-QRSTUVWXYZ9\n");
    EXPECT_EQ(of_branch("_-."), "1WBJQ-34L-UASAR-RXA-_-.\n");
    EXPECT_EQ(of_branch("@[`{/: +%"), "1WBJQ-34L-UASAR-RXA-%%%%%%%%%\n");
    EXPECT_EQ(of_branch("\x80\xe9\xff"), "1WBJQ-34L-UASAR-RXA-%%%\n");
    EXPECT_EQ(of_branch(""), "1WBJQ-34L-UASAR-RXA-\n");
}
