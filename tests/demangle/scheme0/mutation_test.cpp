// A few thousand drawn scheme-0 names cut short, changed by one byte and decoded into
// buffers of every size: flags, sizes and guard zones hold each time.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "tests/demangle/hostile.h"
#include "tests/demangle/scheme0/compress.h"
#include "tests/demangle/scheme0/draw.h"

namespace {

// Drawn names of a length that leaves the suite quick, compressed ones among them.
std::string draw_name(std::uint64_t seed) {
    scheme0::Declaration drawn = scheme0::draw_declaration(seed);
    while (drawn.name.size() > 160) {
        drawn = scheme0::draw_declaration(seed += 1000000);
    }
    return seed % 4 == 0 ? scheme0::compressed(drawn.name) : drawn.name;
}

void expect_promises(const std::string& name) {
    for (const int decorated : {1, 0}) {
        const std::string broken = hostile::broken_promise(name, decorated);
        ASSERT_EQ(broken, "") << hostile::printable(name) << " decorated " << decorated;
    }
}

TEST(Scheme0Mutation, EveryTruncationKeepsThePromises) {
    for (std::uint64_t seed = 0; seed != hostile::scaled(4000); ++seed) {
        const std::string name = draw_name(seed);
        for (std::size_t length = 0; length != name.size(); ++length) {
            ASSERT_NO_FATAL_FAILURE(expect_promises(name.substr(0, length))) << "of " << name;
        }
    }
}

// Digits, separators, the letters that open or close something, and bytes no name holds.
TEST(Scheme0Mutation, EveryByteChangedToATellingOneKeepsThePromises) {
    constexpr std::string_view bytes = "0129_QZOXLJFTNPAIMHCeTvUtmp\x01 \x80\xff";
    for (std::uint64_t seed = 10000; seed != 10000 + hostile::scaled(2000); ++seed) {
        const std::string name = draw_name(seed);
        for (std::size_t at = 0; at != name.size(); ++at) {
            // The offset spreads the bytes over the names: each place meets a quarter of them.
            for (std::size_t which = (seed + at) % 4; which < bytes.size(); which += 4) {
                std::string changed = name;
                changed[at] = bytes[which];
                ASSERT_NO_FATAL_FAILURE(expect_promises(changed)) << "from " << name;
            }
        }
    }
}

TEST(Scheme0Mutation, EveryByteChangedToEveryOtherKeepsThePromises) {
    for (std::uint64_t seed = 20000; seed != 20000 + hostile::scaled(60); ++seed) {
        const std::string name = draw_name(seed);
        for (std::size_t at = 0; at != name.size(); ++at) {
            for (int byte = 1; byte != 256; ++byte) {
                std::string changed = name;
                changed[at] = static_cast<char>(byte);
                ASSERT_NO_FATAL_FAILURE(expect_promises(changed)) << "from " << name;
            }
        }
    }
}

TEST(Scheme0Mutation, EveryBufferSizeGetsThePrefixThatFits) {
    for (std::uint64_t seed = 30000; seed != 30000 + hostile::scaled(3000); ++seed) {
        const scheme0::Declaration drawn = scheme0::draw_declaration(seed);
        for (const int decorated : {1, 0}) {
            if (decorated == 0 && !drawn.plain_name) {
                continue;
            }
            const std::string& text = decorated != 0 ? drawn.decorated : drawn.undecorated;
            for (std::size_t size = 0; size != text.size() + 4; ++size) {
                const hostile::Result result = hostile::decode(drawn.name, decorated, size);
                ASSERT_EQ(hostile::difference(result, text, size, 0), "")
                    << drawn.name << " -> " << text << " in " << size;
            }
        }
    }
}

TEST(Scheme0Mutation, EveryBufferSizeOfACompressedNameLeavesRoomForItsExpansion) {
    for (std::uint64_t seed = 40000; seed != 40000 + hostile::scaled(2000); ++seed) {
        const scheme0::Declaration drawn = scheme0::draw_declaration(seed);
        const std::string name = scheme0::compressed(drawn.name);
        const std::size_t expansion = scheme0::expansion_size(drawn.name);
        for (const int decorated : {1, 0}) {
            if (decorated == 0 && !drawn.plain_name) {
                continue;
            }
            const std::string& text = decorated != 0 ? drawn.decorated : drawn.undecorated;
            for (std::size_t size = 0; size != text.size() + expansion + 4; ++size) {
                const hostile::Result result = hostile::decode(name, decorated, size);
                ASSERT_EQ(hostile::difference(result, text, size, expansion), "")
                    << name << " -> " << text << " in " << size;
            }
        }
    }
}

// Arguments of a template that a parameter can show and those that a conversion can are
// the same. Anything else behind "__op" makes no conversion.
TEST(Scheme0Mutation, WhatAConversionIsMadeToIsReadAsAnyTypeIs) {
    constexpr std::string_view bytes = "0129_QZOXLJFTNPAIMHCeTvUtmpgR";
    unsigned types = 0;
    unsigned others = 0;
    for (std::uint64_t seed = 50000; seed != 50000 + hostile::scaled(20000); ++seed) {
        scheme0::Drawing drawing;
        drawing.engine.seed(seed);
        std::string items = scheme0::draw_arguments(drawing, 3).code;
        for (unsigned changes = scheme0::draw(drawing, 3); changes != 0; --changes) {
            items[scheme0::draw(drawing, static_cast<unsigned>(items.size()))] =
                bytes[scheme0::draw(drawing, static_cast<unsigned>(bytes.size()))];
        }
        const std::string type = scheme0::length_prefixed("A" + items);
        const hostile::Result parameter = hostile::decode_whole("f__F" + type, 1);
        const hostile::Result conversion = hostile::decode_whole("__op" + type + "__1XFv", 1);
        if (parameter.error) {
            ++others;
            ASSERT_EQ(conversion.text.find("operator A"), std::string::npos) << type;
        } else {
            ++types;
            ASSERT_EQ("f(" + conversion.text.substr(std::string_view("X::operator ").size()),
                      parameter.text.substr(0, parameter.text.size() - 1) + "()")
                << type;
        }
    }
    EXPECT_GT(types, others / 4);
    EXPECT_GT(others, types / 4);
}

}  // namespace
