// Scheme 1 and names that are cut, changed, or met with every size of buffer. A fault
// must end as a bad name, with nothing written outside the buffer.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "tests/demangle/scheme1/decode.h"
#include "tests/demangle/scheme1/draw.h"

namespace {

// What every call promises, whatever the name.
testing::AssertionResult keeps_its_promises(const std::string& name, std::size_t size,
                                            bool decorated) {
    const Decoded result = decode_into(name, size, decorated);
    const auto broken = [&](const char* what) {
        return testing::AssertionFailure()
               << what << ": size " << size << (decorated ? "" : ", undecorated") << ", " << name;
    };
    if (!result.guarded) {
        return broken("wrote outside the buffer");
    }
    if (!result.terminated) {
        return broken("left the text without a NUL");
    }
    if ((result.error != 0 && result.error != 1) ||
        (result.overflow != 0 && result.overflow != 1)) {
        return broken("a flag is neither 0 nor 1");
    }
    if (result.overflow == 1 && result.error != 1) {
        return broken("an overflow without the error flag");
    }
    if (result.overflow == 0 && result.needed != result.text.size() + 1) {
        return broken("a size that is not the text's");
    }
    if (result.overflow == 1 && size != 0 && result.text.size() != size - 1) {
        return broken("a prefix that does not fill the buffer");
    }
    // A text of nothing overflows no buffer, not even one without room for its NUL.
    const bool too_long = result.needed > 1 && result.needed > size;
    if (result.overflow != (too_long ? 1 : 0)) {
        return broken("an overflow flag that the size contradicts");
    }
    return testing::AssertionSuccess();
}

// Letters that mean something in most places, and some that never do.
constexpr std::string_view replacements = "_EISTNZLXDKPFABRJMQUVahcefilnostuvz019.!\x80\xff";

constexpr std::uint64_t first_seed = 500000;

}  // namespace

TEST(Scheme1Hostile, EveryTruncationEndsCleanly) {
    for (std::uint64_t seed = first_seed; seed < first_seed + 4000; ++seed) {
        const std::string name = scheme1::draw_declaration(seed, seed % 4 == 0).name;
        for (std::size_t length = 0; length < name.size(); ++length) {
            const std::string cut = name.substr(0, length);
            ASSERT_TRUE(keeps_its_promises(cut, 1500, true));
            (void)decode_is_ia64_subobject(cut.c_str());
        }
    }
}

TEST(Scheme1Hostile, EverySingleByteChangeEndsCleanly) {
    for (std::uint64_t seed = first_seed; seed < first_seed + 2000; ++seed) {
        std::string name = scheme1::draw_declaration(seed, false).name;
        for (char& place : name) {
            const char before = place;
            for (const char byte : replacements) {
                place = byte;
                ASSERT_TRUE(keeps_its_promises(name, 1500, seed % 2 == 0));
            }
            place = before;
        }
    }
}

TEST(Scheme1Hostile, EverySingleByteChangeEndsCleanlyWithExtendedNames) {
    const ExtendedNames extended;
    for (std::uint64_t seed = first_seed; seed < first_seed + 1000; ++seed) {
        std::string name = scheme1::draw_declaration(seed, true).name;
        for (char& place : name) {
            const char before = place;
            for (const char byte : replacements) {
                place = byte;
                ASSERT_TRUE(keeps_its_promises(name, 1500, true));
            }
            place = before;
        }
    }
}

TEST(Scheme1Hostile, EveryByteValueAtEveryPlaceOfSomeNames) {
    for (std::uint64_t seed = first_seed; seed < first_seed + 100; ++seed) {
        std::string name = scheme1::draw_declaration(seed, false).name;
        for (char& place : name) {
            const char before = place;
            for (int byte = 1; byte < 256; ++byte) {
                place = static_cast<char>(byte);
                ASSERT_TRUE(keeps_its_promises(name, 1500, true));
            }
            place = before;
        }
    }
}

TEST(Scheme1Hostile, EveryInsertedAndDroppedByteEndsCleanly) {
    for (std::uint64_t seed = first_seed; seed < first_seed + 1000; ++seed) {
        const std::string name = scheme1::draw_declaration(seed, false).name;
        for (std::size_t at = 0; at <= name.size(); ++at) {
            std::string changed = name;
            ASSERT_TRUE(keeps_its_promises(changed.erase(at, 1), 1500, true));
            for (const char byte : {'S', 'I', 'E', 'N', 'Z', '_', 'T', '9', 'X', 'L'}) {
                changed = name;
                changed.insert(at, 1, byte);
                ASSERT_TRUE(keeps_its_promises(changed, 1500, true));
            }
        }
    }
}

TEST(Scheme1Hostile, EveryBufferSizeGivesItsPrefixAndTheSizeNeeded) {
    for (std::uint64_t seed = first_seed; seed < first_seed + 3000; ++seed) {
        const bool decorated = seed % 3 != 0;
        const auto declaration = scheme1::draw_declaration(seed, false);
        const std::string& whole = decorated ? declaration.decorated : declaration.undecorated;
        const std::size_t needed = whole.size() + 1;
        for (std::size_t size = 0; size <= needed + 2; ++size) {
            const Decoded result = decode_into(declaration.name, size, decorated);
            const bool fits = size >= needed;
            ASSERT_TRUE(result.guarded && result.terminated) << declaration.name << ' ' << size;
            ASSERT_EQ(result.needed, needed) << declaration.name << ' ' << size;
            ASSERT_EQ(result.error, fits ? 0 : 1) << declaration.name << ' ' << size;
            ASSERT_EQ(result.overflow, fits ? 0 : 1) << declaration.name << ' ' << size;
            ASSERT_EQ(result.text, fits ? whole : whole.substr(0, size == 0 ? 0 : size - 1))
                << declaration.name << ' ' << size;
        }
    }
}

TEST(Scheme1Hostile, EveryBufferSizeOfABadNameKeepsThePromises) {
    for (std::uint64_t seed = first_seed; seed < first_seed + 1000; ++seed) {
        const auto declaration = scheme1::draw_declaration(seed, false);
        const std::string name = declaration.name.substr(0, declaration.name.size() * 3 / 4) + "!";
        for (std::size_t size = 0; size <= declaration.decorated.size() + 2; ++size) {
            ASSERT_TRUE(keeps_its_promises(name, size, true));
        }
    }
}

TEST(Scheme1Hostile, RunsOfRandomLettersEndCleanly) {
    std::mt19937_64 engine(7);
    for (int round = 0; round < 200000; ++round) {
        std::string name = round % 4 == 0 ? "" : "_Z";
        for (auto length = engine() % 40; length != 0; --length) {
            name += replacements[engine() % replacements.size()];
        }
        ASSERT_TRUE(keeps_its_promises(name, 1500, true));
    }
}

TEST(Scheme1Hostile, SizesAndNumbersPastEveryWordEndCleanly) {
    const std::string digits(40, '9');
    const std::vector<std::string> names = {"_Z" + digits + "f",
                                            "_ZTh" + digits + "_1fv",
                                            "_ZTv" + digits + "_n" + digits + "_1fv",
                                            "_ZZ1fvE1x__" + digits + "_",
                                            "_ZZ1fvEd" + digits + "_1x",
                                            "T" + digits + "_",
                                            "_Z1fS" + digits + "_",
                                            "_ZN1AUt" + digits + "_E",
                                            "_ZN1AUlvE" + digits + "_E",
                                            "A" + digits + "_i",
                                            "Dv" + digits + "_f",
                                            "DB" + digits + "_",
                                            "DF" + digits + "_",
                                            "Dtfp" + digits + "_E",
                                            "DtfL" + digits + "p" + digits + "_E",
                                            "_Zli" + digits + "xv",
                                            "u" + digits + "x",
                                            "U" + digits + "xi",
                                            "_Z1fB" + digits + "x",
                                            "1AILi" + digits + "EE",
                                            "_Z18446744073709551615f",
                                            "_Z18446744073709551617f"};
    for (const std::string& name : names) {
        for (const std::size_t size : {0UL, 1UL, 7UL, 1500UL}) {
            EXPECT_TRUE(keeps_its_promises(name, size, true));
        }
        const ExtendedNames extended;
        EXPECT_TRUE(keeps_its_promises(name, 1500, true));
    }
}

// What stands behind a name looks at the name's last letter: not at that of a bad one.
TEST(Scheme1Hostile, NothingIsReadOfANameThatIsLongerThanTheInput) {
    for (const std::string length :
         {"99", "9999", "99999999", "9999999999999999", "18446744073709551615"}) {
        for (const std::string& name : {length + "IiE",
                                        "1AI" + length + "IiEE",
                                        "_ZN1AI" + length + "IiEE1fEv",
                                        "_ZN1A<" + length + "IiEEv",
                                        "_Zlt" + length + "IiEv",
                                        "_Z1fI1A<I" + length + "IiE",
                                        "_Z1fISt" + length + "IiEEvv",
                                        "_ZN1AI" + length + "C1IiEEEv",
                                        "_ZN2A<" + length + "C1IiEEv",
                                        "_ZN2A<" + length + "D1IiEEv",
                                        "_Z1fI1AIL_Z" + length + "IiEEvv",
                                        "Dt1AIX" + length + "IiEEEE",
                                        "DtsrT_" + length + "IiEE",
                                        "Dtdtfp_" + length + "IiEE",
                                        "Dton" + length + "IiEE",
                                        "_Z1fI2a<S_IiE" + length + "IiEE",
                                        "u" + length + "IiE",
                                        "U" + length + "IiEi",
                                        "1AIU" + length + "IiEiE",
                                        "_Z1fI" + length + "B1<IiEEvv"}) {
            for (const std::size_t size : {0UL, 1UL, 2UL, 3UL, 4UL, 7UL, 100UL}) {
                EXPECT_TRUE(keeps_its_promises(name, size, true));
                const ExtendedNames extended;
                EXPECT_TRUE(keeps_its_promises(name, size, true));
            }
            EXPECT_EQ(decoded(name), "<bad name>") << name;
        }
    }
}
