// Which listings a project gets, and the Ninja file that makes them.
#include "clist/project.h"

#include <gtest/gtest.h>

#include "tests/clist/words.h"

using namespace clist;
using std::string;

namespace {

struct row {
    string directory;
    string file;
    string words;
};

std::vector<listing_step> plan(const std::vector<row>& rows, const options& given = {}) {
    std::vector<database_entry> entries;
    for (const row& each : rows) {
        entries.push_back({each.directory, each.file, words_in(each.words), 1});
    }
    return plan_listings(entries, "/p/build", "/p/build/listings", given);
}

options with_suffix(const string& suffix) {
    options given;
    given.suffix = suffix;
    return given;
}

}  // namespace

TEST(Project, ListingsAreNamedFromTheFolderThatAllSourcesShare) {
    const auto steps = plan({{".", "../src/a.c", "cc -c ../src/a.c"},
                             {"sub", "/p/src/part/b.cpp", "c++ -c /p/src/part/b.cpp"},
                             {"/p/src", "a.m", "cc -c a.m"}},
                            with_suffix(".lst"));
    ASSERT_EQ(steps.size(), 3U);
    EXPECT_EQ(steps[0].name, "a.c");
    EXPECT_EQ(steps[0].output, "/p/build/listings/a.c.lst");
    EXPECT_EQ(steps[0].directory, "/p/build/");
    EXPECT_EQ(steps[1].name, "part/b.cpp");
    EXPECT_EQ(steps[1].output, "/p/build/listings/part/b.cpp.lst");
    EXPECT_EQ(steps[1].directory, "/p/build/sub");
    EXPECT_EQ(steps[2].name, "a.m");
}

TEST(Project, ASourceThatIsCompiledInSeveralWaysHasAListingForEach) {
    const auto steps = plan({{"/p", "a.c", "cc -c a.c"},
                             {"/p", "a.c", "cc -c a.c"},
                             {"/p", "a.c", "cc -DX -c a.c"},
                             {"/p", "./a.c", "cc -DX -c a.c"},
                             {"/p", "b.c", "cc -c b.c"}});
    ASSERT_EQ(steps.size(), 3U);
    EXPECT_EQ(steps[0].name, "a.c");
    EXPECT_EQ(steps[1].name, "a.c.2");
    EXPECT_EQ(joined(steps[1].words), "cc -DX -c a.c");
    EXPECT_EQ(steps[2].name, "b.c");
}

TEST(Project, NoPageTakesTheNameOfTheIndex) {
    const auto steps = plan({{"/p", "index", "cc -x c -c index"}}, with_suffix(".html"));
    ASSERT_EQ(steps.size(), 1U);
    EXPECT_EQ(steps[0].output, "/p/build/listings/index.2.html");
}

TEST(Project, WhatIsNoCOrCppIsLeftOut) {
    EXPECT_TRUE(plan({{"/p", "a.s", "cc -c a.s"},
                      {"/p", "a.rs", "rustc a.rs"},
                      {"/p", "a.f90", "gfortran -c a.f90"},
                      {"/p", "a.c", "cc -E a.c"},
                      {"/p", "a.o", "cc -o a a.o"}})
                    .empty());
}

TEST(Project, SourcesOfOneCommandAreListedEach) {
    const auto steps = plan({{"/p", "a.c", "cc -c a.c b.c"}, {"/p", "b.c", "cc -c a.c b.c"}});
    ASSERT_EQ(steps.size(), 2U);
    EXPECT_EQ(joined(steps[0].words), "cc -c a.c");
    EXPECT_EQ(joined(steps[1].words), "cc -c b.c");
}

TEST(Project, CompilesMayRunThroughAnotherProgram) {
    options given;
    given.through = {"ccache", "distcc"};
    EXPECT_EQ(joined(plan({{"/p", "a.c", "cc -c a.c"}}, given).at(0).words),
              "ccache distcc cc -c a.c");
}

TEST(Project, ALauncherOfItsOwnIsTakenAway) {
    const auto steps = plan({{"/p", "a.c", "/usr/bin/clist --launcher --suffix .x cc -c a.c"}});
    EXPECT_EQ(joined(steps.at(0).words), "cc -c a.c");
}

TEST(NinjaFile, QuotesForTheShellAndForNinja) {
    options given;
    given.form_words = {"--all", "--comment=#"};
    const std::vector<listing_step> steps{
        {"/s/a$b c.c", "a$b c.c", "/o o/a$b:c.lst", "/d'd", {"cc", "-DX=\"a b\"", "$HOME", ""}}};
    EXPECT_EQ(ninja_file(steps, "/bin/clist", "/o o/.clist", given),
              R"(# Written by clist -p, which replaces it.
ninja_required_version = 1.5
builddir = /o o/.clist
clist = /bin/clist
list = /bin/clist --all '--comment=#'

rule list
  command = cd $in_directory && $list --depfile $quoted.d -o $quoted $words
  description = $name
  depfile = $out.d
  deps = gcc

listing = /o o/a$$b:c.lst
build $listing: list | $clist
  name = a$$b c.c
  quoted = '/o o/a$$b:c.lst'
  in_directory = '/d'\''d'
  words = -- cc '-DX="a b"' '$$HOME' ''
)");
}
