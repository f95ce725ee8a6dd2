// The functions that work on the text of a name alone.
#include "support/filename.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Parts {
    std::string dir;
    std::string base;
    std::string ext;
    bool operator==(const Parts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Parts& parts) {
    return out << '{' << parts.dir << '|' << parts.base << '|' << parts.ext << '}';
}

Parts split(const char* name) {
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split(name, &dir, &base, &ext);
    return {dir, base, ext};
}

Parts split(const std::string& name) {
    return split(name.c_str());
}

// The name that fn_build allocates.
std::string built(const char* dir, const char* base, const char* ext) {
    char* const name = fn_build(nullptr, dir, base, ext);
    std::string text = name;
    std::free(name);
    return text;
}

std::string with_ext(const std::string& name, const char* ext, int replace) {
    std::array<char, 64> buffer{};
    name.copy(buffer.data(), buffer.size() - 1);
    fn_addext(buffer.data(), ext, replace);
    return buffer.data();
}

std::string without_ext(std::string name) {
    fn_delext(name.data());
    return name.substr(0, std::strlen(name.data()));
}

std::string of(std::size_t count, char c) {
    return std::string(count, c);
}

}  // namespace

TEST(Split, CutsANameIntoDirectoryBaseAndExtension) {
    EXPECT_EQ(split("src/main.c"), (Parts{"src/", "main", "c"}));
    EXPECT_EQ(split("/usr/include/a.b.h"), (Parts{"/usr/include/", "a.b", "h"}));
    EXPECT_EQ(split("a//b.c"), (Parts{"a//", "b", "c"}));
    EXPECT_EQ(split("/x.y"), (Parts{"/", "x", "y"}));
    EXPECT_EQ(split("../x.y"), (Parts{"../", "x", "y"}));
}

TEST(Split, ANameMayLackAnyPart) {
    EXPECT_EQ(split("main"), (Parts{"", "main", ""}));
    EXPECT_EQ(split("main.c"), (Parts{"", "main", "c"}));
    EXPECT_EQ(split("src/main"), (Parts{"src/", "main", ""}));
    EXPECT_EQ(split("src/"), (Parts{"src/", "", ""}));
    EXPECT_EQ(split("/"), (Parts{"/", "", ""}));
    EXPECT_EQ(split("src/.c"), (Parts{"src/", "", "c"}));
}

TEST(Split, APointInTheDirectoryIsNoExtension) {
    EXPECT_EQ(split("a.b/c"), (Parts{"a.b/", "c", ""}));
    EXPECT_EQ(split("a.b/"), (Parts{"a.b/", "", ""}));
    EXPECT_EQ(split("./c"), (Parts{"./", "c", ""}));
}

TEST(Split, ANameThatIsAllExtensionHasAnEmptyBase) {
    EXPECT_EQ(split(".profile"), (Parts{"", "", "profile"}));
}

TEST(Split, APointAtTheEndStaysInTheBase) {
    EXPECT_EQ(split("name."), (Parts{"", "name.", ""}));
    EXPECT_EQ(split("a.b."), (Parts{"", "a.b.", ""}));
    EXPECT_EQ(split("."), (Parts{"", ".", ""}));
    EXPECT_EQ(split(".."), (Parts{"", "..", ""}));
    EXPECT_EQ(split("d/name."), (Parts{"d/", "name.", ""}));
    EXPECT_EQ(split("a..b"), (Parts{"", "a.", "b"}));
}

TEST(Split, ANullOrEmptyNameGivesEmptyStrings) {
    split("src/main.c");
    EXPECT_EQ(split(nullptr), (Parts{"", "", ""}));
    split("src/main.c");
    EXPECT_EQ(split(""), (Parts{"", "", ""}));
}

TEST(Split, NoPartOfAnEarlierNameIsLeftBehind) {
    split("directory/basename.extension");
    EXPECT_EQ(split("a"), (Parts{"", "a", ""}));
    split("directory/basename.extension");
    EXPECT_EQ(split("d/"), (Parts{"d/", "", ""}));
}

TEST(Split, BytesAbove127AreOrdinary) {
    EXPECT_EQ(split("\xe9\x80/\xff\xfe.\x81"), (Parts{"\xe9\x80/", "\xff\xfe", "\x81"}));
}

TEST(Split, OutputsThatAreNullAreLeftOut) {
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split("src/main.c", nullptr, &base, nullptr);
    EXPECT_STREQ(base, "main");
    fn_split("lib/util.h", &dir, nullptr, nullptr);
    EXPECT_STREQ(dir, "lib/");
    fn_split("etc/rc.conf", nullptr, nullptr, &ext);
    EXPECT_STREQ(ext, "conf");
    fn_split("x/y.z", nullptr, nullptr, nullptr);
    EXPECT_STREQ(dir, "x/");
    EXPECT_STREQ(base, "y");
    EXPECT_STREQ(ext, "z");
}

TEST(Split, TheNextCallOverwritesTheParts) {
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split("src/main.c", &dir, &base, &ext);
    const char* next_dir = nullptr;
    const char* next_base = nullptr;
    const char* next_ext = nullptr;
    fn_split("lib/util.h", &next_dir, &next_base, &next_ext);
    EXPECT_EQ(dir, next_dir);
    EXPECT_EQ(base, next_base);
    EXPECT_EQ(ext, next_ext);
    EXPECT_STREQ(dir, "lib/");
    EXPECT_STREQ(base, "util");
    EXPECT_STREQ(ext, "h");
}

TEST(SplitLimits, ADirectoryIsCutTo499Characters) {
    EXPECT_EQ(split(of(497, 'd') + "/m.c"), (Parts{of(497, 'd') + "/", "m", "c"}));
    EXPECT_EQ(split(of(498, 'd') + "/m.c"), (Parts{of(498, 'd') + "/", "m", "c"}));
    EXPECT_EQ(split(of(499, 'd') + "/m.c"), (Parts{of(499, 'd'), "m", "c"}));
    EXPECT_EQ(split(of(100000, 'd') + "/m.c"), (Parts{of(499, 'd'), "m", "c"}));
}

TEST(SplitLimits, ABaseWithoutAnExtensionIsCutTo499Characters) {
    EXPECT_EQ(split(of(498, 'b')), (Parts{"", of(498, 'b'), ""}));
    EXPECT_EQ(split(of(499, 'b')), (Parts{"", of(499, 'b'), ""}));
    EXPECT_EQ(split(of(500, 'b')), (Parts{"", of(499, 'b'), ""}));
    EXPECT_EQ(split(of(100000, 'b')), (Parts{"", of(499, 'b'), ""}));
}

TEST(SplitLimits, ABaseBeforeAnExtensionIsCutTo498Characters) {
    EXPECT_EQ(split(of(497, 'b') + ".c"), (Parts{"", of(497, 'b'), "c"}));
    EXPECT_EQ(split(of(498, 'b') + ".c"), (Parts{"", of(498, 'b'), "c"}));
    EXPECT_EQ(split(of(499, 'b') + ".c"), (Parts{"", of(498, 'b'), "c"}));
    EXPECT_EQ(split(of(500, 'b') + ".c"), (Parts{"", of(498, 'b'), "c"}));
    EXPECT_EQ(split(of(100000, 'b') + ".c"), (Parts{"", of(498, 'b'), "c"}));
}

TEST(SplitLimits, APointAtTheEndCountsAsACharacterOfTheBase) {
    EXPECT_EQ(split(of(497, 'b') + "."), (Parts{"", of(497, 'b') + ".", ""}));
    EXPECT_EQ(split(of(498, 'b') + "."), (Parts{"", of(498, 'b') + ".", ""}));
    EXPECT_EQ(split(of(499, 'b') + "."), (Parts{"", of(499, 'b'), ""}));
}

TEST(SplitLimits, AnExtensionIsCutTo499Characters) {
    EXPECT_EQ(split(std::string("b.") + of(498, 'e')), (Parts{"", "b", of(498, 'e')}));
    EXPECT_EQ(split(std::string("b.") + of(499, 'e')), (Parts{"", "b", of(499, 'e')}));
    EXPECT_EQ(split(std::string("b.") + of(500, 'e')), (Parts{"", "b", of(499, 'e')}));
    EXPECT_EQ(split(std::string("b.") + of(100000, 'e')), (Parts{"", "b", of(499, 'e')}));
}

TEST(SplitLimits, EveryPartCanBeCutAtOnce) {
    EXPECT_EQ(split(of(600, 'd') + "/" + of(700, 'b') + "." + of(800, 'e')),
              (Parts{of(499, 'd'), of(498, 'b'), of(499, 'e')}));
}

TEST(Build, JoinsTheParts) {
    EXPECT_EQ(built("a", "b", "c"), "a/b.c");
    EXPECT_EQ(built("a/", "b", ".c"), "a/b.c");
    EXPECT_EQ(built("a/", "b", "c"), "a/b.c");
    EXPECT_EQ(built("a", "b", ".c"), "a/b.c");
    EXPECT_EQ(built("/", "b", "c"), "/b.c");
    EXPECT_EQ(built("a//", "b", "..c"), "a//b..c");
    EXPECT_EQ(built("a", "/b", "c"), "a//b.c");
    EXPECT_EQ(built("a", "b.", "c"), "a/b..c");
    EXPECT_EQ(built("a", "b", "."), "a/b.");
    EXPECT_EQ(built("\xe9", "\xff", "\x80"), "\xe9/\xff.\x80");
}

TEST(Build, EmptyPartsAddNothing) {
    EXPECT_EQ(built("", "b", "c"), "b.c");
    EXPECT_EQ(built("a", "", "c"), "a/.c");
    EXPECT_EQ(built("a", "b", ""), "a/b");
    EXPECT_EQ(built("", "", ""), "");
}

TEST(Build, NullPartsAddNothing) {
    EXPECT_EQ(built(nullptr, "b", "c"), "b.c");
    EXPECT_EQ(built("a", nullptr, "c"), "a/.c");
    EXPECT_EQ(built("a", "b", nullptr), "a/b");
    EXPECT_EQ(built(nullptr, nullptr, nullptr), "");
}

TEST(Build, WritesIntoADestination) {
    std::array<char, 16> buffer{};
    buffer.fill('#');
    EXPECT_EQ(fn_build(buffer.data(), "a", "b", "c"), buffer.data());
    EXPECT_EQ(std::string_view(buffer.data(), buffer.size()),
              std::string_view("a/b.c\0##########", 16));
    EXPECT_EQ(fn_build(buffer.data(), nullptr, nullptr, nullptr), buffer.data());
    EXPECT_STREQ(buffer.data(), "");
}

TEST(Build, HasNoLimit) {
    EXPECT_EQ(built(of(5000, 'd').c_str(), of(6000, 'b').c_str(), of(7000, 'e').c_str()),
              of(5000, 'd') + "/" + of(6000, 'b') + "." + of(7000, 'e'));
}

TEST(AddExt, ReplacesAnExtension) {
    EXPECT_EQ(with_ext("prog.asm", ".cl", 1), "prog.cl");
    EXPECT_EQ(with_ext("prog.asm", "cl", 1), "prog.cl");
    EXPECT_EQ(with_ext("prog.asm", "longer", 1), "prog.longer");
    EXPECT_EQ(with_ext("prog.a.b", "c", 1), "prog.a.c");
    EXPECT_EQ(with_ext("dir.x/prog.asm", ".cl", 1), "dir.x/prog.cl");
    EXPECT_EQ(with_ext("prog.", ".cl", 1), "prog.cl");
    EXPECT_EQ(with_ext(".profile", ".cl", 1), ".cl");
    EXPECT_EQ(with_ext(".", "cl", 1), ".cl");
    EXPECT_EQ(with_ext("prog.asm", ".cl", -7), "prog.cl");
}

TEST(AddExt, OnlyTheFirstPointOfANewExtensionIsItsLeadingOne) {
    EXPECT_EQ(with_ext("prog.asm", "..cl", 1), "prog..cl");
    EXPECT_EQ(with_ext("prog", "..cl", 1), "prog..cl");
}

TEST(AddExt, KeepsAnExtensionThatIsNotToBeReplaced) {
    EXPECT_EQ(with_ext("prog.asm", ".cl", 0), "prog.asm");
    EXPECT_EQ(with_ext("prog.asm", "cl", 0), "prog.asm");
    EXPECT_EQ(with_ext("prog.", ".cl", 0), "prog.");
    EXPECT_EQ(with_ext("prog.asm", "", 0), "prog.asm");
    EXPECT_EQ(with_ext("prog.asm", ".", 0), "prog.asm");
}

TEST(AddExt, AppendsToANameWithoutOne) {
    EXPECT_EQ(with_ext("prog", ".cl", 1), "prog.cl");
    EXPECT_EQ(with_ext("prog", ".cl", 0), "prog.cl");
    EXPECT_EQ(with_ext("prog", "cl", 1), "prog.cl");
    EXPECT_EQ(with_ext("prog", "cl", 0), "prog.cl");
    EXPECT_EQ(with_ext("prog", ".", 1), "prog.");
    EXPECT_EQ(with_ext("", ".cl", 1), ".cl");
    EXPECT_EQ(with_ext("", "cl", 0), ".cl");
    EXPECT_EQ(with_ext("dir/", "cl", 0), "dir/.cl");
}

TEST(AddExt, APointInTheDirectoryIsNoExtension) {
    EXPECT_EQ(with_ext("dir.x/prog", ".cl", 1), "dir.x/prog.cl");
    EXPECT_EQ(with_ext("dir.x/prog", ".cl", 0), "dir.x/prog.cl");
    EXPECT_EQ(with_ext("dir.x/prog", "", 1), "dir.x/prog");
    EXPECT_EQ(with_ext("../prog", "cl", 1), "../prog.cl");
}

TEST(AddExt, AnEmptyExtensionTakesThePointAway) {
    EXPECT_EQ(with_ext("prog.asm", "", 1), "prog");
    EXPECT_EQ(with_ext("prog.a.b", "", 1), "prog.a");
    EXPECT_EQ(with_ext("prog.", "", 1), "prog");
    EXPECT_EQ(with_ext(".profile", "", 1), "");
    EXPECT_EQ(with_ext("prog", "", 1), "prog");
    EXPECT_EQ(with_ext("prog", "", 0), "prog");
}

TEST(AddExt, APointAsTheExtensionIsKept) {
    EXPECT_EQ(with_ext("prog.asm", ".", 1), "prog.");
}

TEST(AddExt, ANullExtensionChangesNothing) {
    EXPECT_EQ(with_ext("prog.asm", nullptr, 1), "prog.asm");
    EXPECT_EQ(with_ext("prog.asm", nullptr, 0), "prog.asm");
    EXPECT_EQ(with_ext("prog", nullptr, 1), "prog");
    EXPECT_EQ(with_ext("prog", nullptr, 0), "prog");
    EXPECT_EQ(with_ext("", nullptr, 1), "");
}

TEST(AddExt, WritesNothingBehindTheResult) {
    std::array<char, 12> buffer{'p', '.', 'x', '\0', '#', '#', '#', '#', '#', '#', '#', '#'};
    fn_addext(buffer.data(), ".asm", 1);
    EXPECT_EQ(std::string_view(buffer.data(), buffer.size()),
              std::string_view("p.asm\0######", 12));
}

TEST(DelExt, CutsAtTheLastPointOfTheLastComponent) {
    EXPECT_EQ(without_ext("a/b.c"), "a/b");
    EXPECT_EQ(without_ext("b.c.d"), "b.c");
    EXPECT_EQ(without_ext("b."), "b");
    EXPECT_EQ(without_ext(".profile"), "");
    EXPECT_EQ(without_ext("a/.profile"), "a/");
    EXPECT_EQ(without_ext(".."), ".");
    EXPECT_EQ(without_ext("\xe9.\xff"), "\xe9");
}

TEST(DelExt, LeavesANameWithoutOneAlone) {
    EXPECT_EQ(without_ext("a.d/b"), "a.d/b");
    EXPECT_EQ(without_ext("a.d/"), "a.d/");
    EXPECT_EQ(without_ext("b"), "b");
    EXPECT_EQ(without_ext(""), "");
}

TEST(HasDir, TellsWhetherThereIsASlash) {
    EXPECT_EQ(fn_hasdir("a/b"), 1);
    EXPECT_EQ(fn_hasdir("/"), 1);
    EXPECT_EQ(fn_hasdir("a/"), 1);
    EXPECT_EQ(fn_hasdir("a"), 0);
    EXPECT_EQ(fn_hasdir("a\\b"), 0);
    EXPECT_EQ(fn_hasdir(".."), 0);
    EXPECT_EQ(fn_hasdir(""), 0);
}

TEST(BaseName, PointsBehindTheLastSlash) {
    const char* const name = "src/lib/main.c";
    EXPECT_EQ(fn_basename(name), name + 8);
    const char* const rooted = "/main.c";
    EXPECT_EQ(fn_basename(rooted), rooted + 1);
}

TEST(BaseName, IsTheNameItselfWithoutASlash) {
    const char* const name = "main.c";
    EXPECT_EQ(fn_basename(name), name);
}

TEST(BaseName, IsEmptyBehindASlashAtTheEnd) {
    const char* const name = "src/";
    EXPECT_EQ(fn_basename(name), name + 4);
    EXPECT_STREQ(fn_basename("/"), "");
}

TEST(BaseName, IsNullForANullOrEmptyName) {
    EXPECT_EQ(fn_basename(nullptr), nullptr);
    EXPECT_EQ(fn_basename(""), nullptr);
}

TEST(Compare, EqualNamesGiveZero) {
    EXPECT_EQ(fn_strcmp("a.c", "a.c"), 0);
    EXPECT_EQ(fn_strcmp("", ""), 0);
    EXPECT_EQ(fn_strcmp("\xff\x80", "\xff\x80"), 0);
}

TEST(Compare, GivesTheDifferenceOfTheFirstDifferingCharacters) {
    EXPECT_EQ(fn_strcmp("A.C", "a.c"), -32);
    EXPECT_EQ(fn_strcmp("a.c", "A.C"), 32);
    EXPECT_EQ(fn_strcmp("abz", "aaa"), 1);
    EXPECT_EQ(fn_strcmp("a/b", "a.b"), 1);
    EXPECT_EQ(fn_strcmp("a", "z"), -25);
}

TEST(Compare, TheEndOfANameCountsAsZero) {
    EXPECT_EQ(fn_strcmp("abc", "ab"), 99);
    EXPECT_EQ(fn_strcmp("ab", "abc"), -99);
    EXPECT_EQ(fn_strcmp("", "a"), -97);
}

TEST(Compare, CharactersAreSigned) {
    EXPECT_EQ(fn_strcmp("\xff", "\x01"), -2);
    EXPECT_EQ(fn_strcmp("\x80", "\x7f"), -255);
    EXPECT_EQ(fn_strcmp("\x7f", "\x80"), 255);
    EXPECT_EQ(fn_strcmp("", "\xff"), 1);
    EXPECT_EQ(fn_strcmp("\xff", ""), -1);
    EXPECT_EQ(fn_strcmp("\x80", "\xff"), -127);
}

TEST(FullPath, BeginsWithASlash) {
    EXPECT_EQ(fn_has_full_path("/a"), 1);
    EXPECT_EQ(fn_has_full_path("/"), 1);
    EXPECT_EQ(fn_has_full_path("a/b"), 0);
    EXPECT_EQ(fn_has_full_path("./a"), 0);
    EXPECT_EQ(fn_has_full_path("\\a"), 0);
    EXPECT_EQ(fn_has_full_path("c:/a"), 0);
    EXPECT_EQ(fn_has_full_path(""), 0);
}

TEST(RelativePath, BeginsWithOneOrTwoPointsAndASlash) {
    EXPECT_EQ(fn_has_relative_path("./x"), 1);
    EXPECT_EQ(fn_has_relative_path("../x"), 1);
    EXPECT_EQ(fn_has_relative_path("./"), 1);
    EXPECT_EQ(fn_has_relative_path("../"), 1);
    EXPECT_EQ(fn_has_relative_path(".x"), 0);
    EXPECT_EQ(fn_has_relative_path("..x/y"), 0);
    EXPECT_EQ(fn_has_relative_path(".../x"), 0);
    EXPECT_EQ(fn_has_relative_path("x"), 0);
    EXPECT_EQ(fn_has_relative_path("a.c"), 0);
    EXPECT_EQ(fn_has_relative_path("x/../y"), 0);
    EXPECT_EQ(fn_has_relative_path("."), 0);
    EXPECT_EQ(fn_has_relative_path(".."), 0);
    EXPECT_EQ(fn_has_relative_path("/x"), 0);
    EXPECT_EQ(fn_has_relative_path(""), 0);
}

TEST(MatchesExt, ComparesWithTheExtensionExactly) {
    EXPECT_TRUE(fn_matches_ext("x.c", "c"));
    EXPECT_FALSE(fn_matches_ext("x.c", ".c"));
    EXPECT_FALSE(fn_matches_ext("x.c", "C"));
    EXPECT_FALSE(fn_matches_ext("x.cpp", "c"));
    EXPECT_FALSE(fn_matches_ext("x.c", "cpp"));
    EXPECT_FALSE(fn_matches_ext("x.c", ""));
    EXPECT_TRUE(fn_matches_ext("x", ""));
    EXPECT_TRUE(fn_matches_ext("x.", ""));
    EXPECT_TRUE(fn_matches_ext("a.c/x", ""));
    EXPECT_TRUE(fn_matches_ext("a.b.c", "c"));
    EXPECT_TRUE(fn_matches_ext(".c", "c"));
    EXPECT_TRUE(fn_matches_ext("", ""));
    EXPECT_TRUE(fn_matches_ext(nullptr, ""));
    EXPECT_TRUE(fn_matches_ext("x.\xe9", "\xe9"));
}

TEST(MatchesExt, OverwritesTheSplitBuffers) {
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split("src/main.c", &dir, &base, &ext);
    fn_matches_ext("lib/util.h", "h");
    EXPECT_STREQ(dir, "lib/");
    EXPECT_STREQ(base, "util");
    EXPECT_STREQ(ext, "h");
}

TEST(MatchesExt, SeesALongExtensionAsSplitCutsIt) {
    EXPECT_TRUE(fn_matches_ext((std::string("x.") + of(500, 'e')).c_str(), of(499, 'e').c_str()));
    EXPECT_FALSE(fn_matches_ext((std::string("x.") + of(500, 'e')).c_str(), of(500, 'e').c_str()));
}

TEST(RealName, IsAnUnresolvedCopy) {
    const std::string name = "../a/./b//c\xff";
    char* const copy = fn_realname(name.c_str());
    EXPECT_STREQ(copy, "../a/./b//c\xff");
    EXPECT_NE(copy, name.c_str());
    std::free(copy);
    char* const empty = fn_realname("");
    EXPECT_STREQ(empty, "");
    std::free(empty);
}

TEST(StreamNames, AreExactlyStdoutAndStderr) {
    EXPECT_TRUE(fn_is_user_specified_stream("stdout"));
    EXPECT_TRUE(fn_is_user_specified_stream("stderr"));
    EXPECT_FALSE(fn_is_user_specified_stream("stdin"));
    EXPECT_FALSE(fn_is_user_specified_stream("STDOUT"));
    EXPECT_FALSE(fn_is_user_specified_stream("Stderr"));
    EXPECT_FALSE(fn_is_user_specified_stream("stdout "));
    EXPECT_FALSE(fn_is_user_specified_stream("stdou"));
    EXPECT_FALSE(fn_is_user_specified_stream("./stdout"));
    EXPECT_FALSE(fn_is_user_specified_stream("-"));
    EXPECT_FALSE(fn_is_user_specified_stream(""));
}

TEST(StreamNames, AdviceGoesToStandardOutputAndStandardError) {
    EXPECT_TRUE(user_specified_advice_stream(stdout));
    EXPECT_TRUE(user_specified_advice_stream(stderr));
    EXPECT_FALSE(user_specified_advice_stream(stdin));
    EXPECT_FALSE(user_specified_advice_stream(nullptr));
    FILE* const file = std::tmpfile();
    EXPECT_FALSE(user_specified_advice_stream(file));
    std::fclose(file);
}

TEST(StreamNames, NoneDisablesAnOutput) {
    EXPECT_TRUE(fn_explicit_disable("none"));
    EXPECT_FALSE(fn_explicit_disable("None"));
    EXPECT_FALSE(fn_explicit_disable("NONE"));
    EXPECT_FALSE(fn_explicit_disable("none "));
    EXPECT_FALSE(fn_explicit_disable("non"));
    EXPECT_FALSE(fn_explicit_disable("./none"));
    EXPECT_FALSE(fn_explicit_disable(""));
}

TEST(Strings, FileNamesAndPlainStringsConvertByCopy) {
    const std::string text("a/\xff.c\0d", 7);
    EXPECT_EQ(cstr_to_fn(text), std::string("a/\xff.c\0d", 7));
    EXPECT_EQ(fn_to_cstr(text), std::string("a/\xff.c\0d", 7));
    EXPECT_EQ(cstr_to_fn(""), "");
    EXPECT_EQ(fn_to_cstr(""), "");
}

namespace {

// Splits and builds `name`, which is within the limits, and expects it back.
void expect_round_trip(const std::string& name) {
    const char* dir = nullptr;
    const char* base = nullptr;
    const char* ext = nullptr;
    fn_split(name.c_str(), &dir, &base, &ext);
    ASSERT_EQ(built(dir, base, ext), name);
    ASSERT_EQ(std::strchr(base, '/'), nullptr) << name;
    ASSERT_EQ(std::strpbrk(ext, "./"), nullptr) << name;
    ASSERT_TRUE(*dir == '\0' || std::string_view(dir).ends_with('/')) << name;
}

}  // namespace

TEST(SplitAndBuild, GiveEveryShortNameBack) {
    for (std::size_t length = 0; length <= 8; ++length) {
        std::string name(length, '/');
        const auto next = [&name] {
            for (char& c : name) {
                c = c == '/' ? '.' : c == '.' ? 'a' : '/';
                if (c != '/') {
                    return true;
                }
            }
            return false;
        };
        do {
            ASSERT_NO_FATAL_FAILURE(expect_round_trip(name));
        } while (next());
    }
}

TEST(SplitAndBuild, GiveDrawnNamesWithinTheLimitsBack) {
    std::uint32_t state = 1;
    const auto draw = [&state](std::uint32_t below) {
        state = state * 1664525U + 1013904223U;
        return (state >> 8) % below;
    };
    const auto component = [&draw](std::size_t limit, bool points) {
        std::string text;
        // As often near the limit as far from it.
        const std::size_t length =
            draw(2) == 0 ? draw(20) : limit - std::min<std::size_t>(limit, draw(3));
        while (text.size() < length) {
            const char c = static_cast<char>(1 + draw(255));
            text += c == '/' || (c == '.' && !points) ? 'x' : c;
        }
        return text;
    };
    for (int i = 0; i < 20000; ++i) {
        std::string dir;
        while (draw(3) != 0 && dir.size() < 450) {
            dir += component(40, true);
            dir += '/';
        }
        const std::string base = component(498, true);
        const std::string ext = draw(3) == 0 ? "" : std::string(".") + component(499, false);
        ASSERT_NO_FATAL_FAILURE(expect_round_trip(dir + base + ext));
    }
}

TEST(SplitAndBuild, LongestPartsOfEachKindAreGivenBack) {
    expect_round_trip(of(498, 'd') + "/" + of(498, 'b') + "." + of(499, 'e'));
    expect_round_trip(of(498, 'd') + "/" + of(499, 'b'));
    expect_round_trip(of(498, 'd') + "/" + of(498, 'b') + ".");
}
