// Scheme 1 against an encoder of its own: declarations drawn from a seed, mangled with
// full substitution compression, must read as the same description says they do.
#include <cxxabi.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "tests/demangle/scheme1/decode.h"
#include "tests/demangle/scheme1/draw.h"

namespace {

using scheme1::Declaration;
using scheme1::draw_declaration;

constexpr int failures_shown = 20;

// Counts what does not read as described and shows the first few of it.
int disagreements(std::uint64_t first, std::uint64_t last, bool extended) {
    int count = 0;
    for (std::uint64_t seed = first; seed < last; ++seed) {
        const Declaration declaration = draw_declaration(seed, extended);
        const std::string decorated = decoded(declaration.name, true);
        const std::string undecorated = decoded(declaration.name, false);
        if (decorated == declaration.decorated && undecorated == declaration.undecorated) {
            continue;
        }
        if (++count <= failures_shown) {
            const bool plain = decorated == declaration.decorated;
            ADD_FAILURE() << "seed " << seed << (plain ? ", undecorated" : "") << "\nname     "
                          << declaration.name << "\nexpected "
                          << (plain ? declaration.undecorated : declaration.decorated)
                          << "\nread     " << (plain ? undecorated : decorated);
        }
    }
    return count;
}

// The standard library's own reading of a name, empty when it cannot read it.
std::string other_reading(const std::string& name) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return text ? text.get() : "";
}

// Forms that the other decoder of GCC 12 reads in its own way: it counts decltypes,
// unnamed types and closures twice in places, enters vendor qualifiers and qualifiers
// in an unusual order one by one, takes the type of an alignof for a name and the length
// of a name for more digits of a discriminator, enters abbreviations without their tags and
// functions without their calling convention, and does not know newer builtin types and
// vendor types with arguments.
bool read_its_own_way(const std::string& name) {
    for (const char* form :
         {"Ut", "Ul", "DF", "Dt", "DT", "CI", "at", "U3AS", "U7ptrauth", "KV", "rK", "u8__matrix",
          "SsB", "SiB", "SoB", "SdB", "U6ms_abi", "U13block"}) {
        if (name.find(form) != std::string::npos) {
            return true;
        }
    }
    const auto digit = [&](std::size_t at) {
        return at < name.size() && name[at] >= '0' && name[at] <= '9';
    };
    for (std::size_t at = name.find('_'); at != std::string::npos; at = name.find('_', at + 1)) {
        if (digit(at + 1) && digit(at + 2)) {
            return true;
        }
    }
    return false;
}

}  // namespace

TEST(Scheme1Encoder, HundredThousandDeclarationsReadAsDescribed) {
    EXPECT_EQ(disagreements(0, 100000, false), 0);
}

TEST(Scheme1Encoder, DeclarationsWithExtendedNamesReadAsDescribed) {
    const ExtendedNames extended;
    EXPECT_EQ(disagreements(0, 10000, true), 0);
}

TEST(Scheme1Encoder, StrictDeclarationsReadTheSameWithExtendedNames) {
    const ExtendedNames extended;
    EXPECT_EQ(disagreements(0, 10000, false), 0);
}

// The encoder itself: another decoder must take each number for what it stands for, so
// it reads the compressed name like the one that spells everything out.
TEST(Scheme1Encoder, NumbersAreTheOnesThatAnotherDecoderCounts) {
    int compared = 0;
    for (std::uint64_t seed = 0; seed < 120000; ++seed) {
        const Declaration declaration = draw_declaration(seed, false);
        if (declaration.house_form || declaration.template_params ||
            declaration.name == declaration.uncompressed ||
            read_its_own_way(declaration.uncompressed)) {
            continue;
        }
        const std::string text = other_reading(declaration.name);
        if (text.empty()) {
            continue;
        }
        ++compared;
        ASSERT_EQ(text, other_reading(declaration.uncompressed)) << declaration.name;
    }
    EXPECT_GT(compared, 4000);
}
