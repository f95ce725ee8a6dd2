// The command line of gas2interlist.
#include "gas2interlist/options.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace gas2interlist;

TEST(Gas2interlistOptions, WithoutArgumentsItIsAFilter) {
    const options result = read_options({});
    EXPECT_EQ(result.input, "-");
    EXPECT_EQ(result.output, "-");
    EXPECT_EQ(result.error, "");
}

TEST(Gas2interlistOptions, FilesAndMapsAreTakenInAnyOrder) {
    const options result = read_options({"--source-map", "/a=/b", "prog.s", "-o", "prog.asm",
                                         "--source-map=x=y=z", "--source-map=q="});
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.input, "prog.s");
    EXPECT_EQ(result.output, "prog.asm");
    EXPECT_EQ(result.source_map, (assembly::prefix_map{{"/a", "/b"}, {"x", "y=z"}, {"q", ""}}));
}

TEST(Gas2interlistOptions, TheOutputMayBeAttached) {
    EXPECT_EQ(read_options({"-oprog.asm"}).output, "prog.asm");
    EXPECT_EQ(read_options({"-o", "-"}).output, "-");
}

TEST(Gas2interlistOptions, ADoubleHyphenEndsTheOptions) {
    EXPECT_EQ(read_options({"--", "-o"}).input, "-o");
}

TEST(Gas2interlistOptions, HelpAndVersionEndTheReading) {
    EXPECT_TRUE(read_options({"--help", "--nonsense"}).help);
    EXPECT_TRUE(read_options({"a.s", "--version", "b.s"}).version);
}

TEST(Gas2interlistOptions, WhatMakesNoSenseIsNamed) {
    EXPECT_EQ(read_options({"-x"}).error, "unknown option '-x'");
    EXPECT_EQ(read_options({"--helpme"}).error, "unknown option '--helpme'");
    EXPECT_EQ(read_options({"-o"}).error, "option '-o' needs a value");
    EXPECT_EQ(read_options({"--source-map"}).error, "option '--source-map' needs a value");
    EXPECT_EQ(read_options({"--source-map", "a"}).error, "--source-map needs OLD=NEW, not 'a'");
    EXPECT_EQ(read_options({"--source-map="}).error, "--source-map needs OLD=NEW, not ''");
    EXPECT_EQ(read_options({"a.s", "b.s"}).error, "more than one input: 'b.s'");
}
