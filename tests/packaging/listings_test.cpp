// interlist_sources, the CMake function of the package, on a program of three files in
// two languages: every source gets its listing, and only what changed gets a new one.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/packaging/installed.h"

namespace fs = std::filesystem;
using std::string;

namespace {

const std::vector<string> all_listings{"main.c.cl", "part/area.c.cl", "part/names.cpp.cl"};

// The sample program, copied so that it can be changed.
struct Sample {
    ScratchFolder scratch;
    string source = scratch / "sample";
    string folder = scratch / "build";

    explicit Sample(const std::vector<string>& options = {}) {
        fs::copy("sample", source, fs::copy_options::recursive);
        configure(source, folder, options);
    }

    string listing(const string& name) const { return read_file(folder + "/listings/" + name); }

    // Builds, and tells which listings were made.
    std::set<string> made_by_build() const {
        std::map<string, fs::file_time_type> before;
        for (const string& name : all_listings) {
            before[name] = time_of(name);
        }
        build(folder);
        std::set<string> made;
        for (const string& name : all_listings) {
            if (time_of(name) != before[name]) {
                made.insert(name);
            }
        }
        return made;
    }

    // Changes a file in a way that shows in the listing, and in its time.
    void append(const string& name, const string& text) const {
        const string file = source + "/" + name;
        const auto time = fs::last_write_time(file);
        shell("printf %s \"$2\" >> \"$1\"", {file, text});
        if (fs::last_write_time(file) <= time) {
            fs::last_write_time(file, time + std::chrono::seconds(1));
        }
    }

  private:
    fs::file_time_type time_of(const string& name) const {
        std::error_code missing;
        return fs::last_write_time(folder + "/listings/" + name, missing);
    }
};

const std::set<string> everything{all_listings.begin(), all_listings.end()};

bool shows(const string& listing, const string& line) {
    return listing.find(line) != string::npos;
}

}  // namespace

TEST(InterlistSources, GivesEverySourceAListingWithItsLines) {
    const Sample sample;
    EXPECT_EQ(sample.made_by_build(), everything);
    EXPECT_TRUE(shows(sample.listing("main.c.cl"), ";   7 |     puts(GREETING);"));
    EXPECT_TRUE(shows(sample.listing("part/area.c.cl"), ";   4 |     int inner = width * height;"));
    EXPECT_TRUE(shows(sample.listing("part/names.cpp.cl"),
                      ";  11 |     for (const auto name : names::all) {"));
    EXPECT_TRUE(shows(sample.listing("part/names.cpp.cl"), "\nname_length:"));
}

TEST(InterlistSources, ASecondBuildMakesNothing) {
    const Sample sample;
    sample.made_by_build();
    EXPECT_EQ(sample.made_by_build(), std::set<string>{});
}

TEST(InterlistSources, AChangedSourceGetsItsListingAndNoOther) {
    const Sample sample;
    sample.made_by_build();
    sample.append("part/area.c", "int half(int value) {\n    return value / 2;\n}\n");
    EXPECT_EQ(sample.made_by_build(), std::set<string>{"part/area.c.cl"});
    EXPECT_TRUE(shows(sample.listing("part/area.c.cl"), ";   8 |     return value / 2;"));
}

TEST(InterlistSources, AChangedHeaderReachesTheSourcesThatIncludeIt) {
    const Sample sample;
    sample.made_by_build();
    sample.append("include/scale.h", "/* changed */\n");
    EXPECT_EQ(sample.made_by_build(), (std::set<string>{"part/area.c.cl", "part/names.cpp.cl"}));
}

TEST(InterlistSources, AChangedOptionReachesAllListings) {
    const Sample sample;
    sample.made_by_build();
    sample.append("CMakeLists.txt", "target_compile_options(sample PRIVATE -O2)\n");
    EXPECT_EQ(sample.made_by_build(), everything);
}

TEST(InterlistSources, CanBeLeftOutOfTheWholeBuild) {
    const Sample sample({"-DLISTINGS=EXCLUDE_FROM_ALL"});
    EXPECT_EQ(sample.made_by_build(), std::set<string>{});
    build(sample.folder, {"--target", "sample_listings"});
    EXPECT_TRUE(fs::exists(sample.folder + "/listings/main.c.cl"));
}

TEST(InterlistSources, WorksWithMakeToo) {
    if (!has_command("make")) {
        GTEST_SKIP() << "no make here";
    }
    const Sample sample({"-G", "Unix Makefiles"});
    EXPECT_EQ(sample.made_by_build(), everything);
    EXPECT_EQ(sample.made_by_build(), std::set<string>{});
    sample.append("part/area.c", "int half(int value) {\n    return value / 2;\n}\n");
    EXPECT_EQ(sample.made_by_build(), std::set<string>{"part/area.c.cl"});
}

// The make rule of the documents, as it stands there.
TEST(MakeRule, MakesOnlyTheListingsThatNeedIt) {
    if (!has_command("make")) {
        GTEST_SKIP() << "no make here";
    }
    const string document = read_file("../../docs/build-systems.md");
    const string opening = "```make\n";
    const std::size_t begin = document.find(opening) + opening.size();
    const ScratchFolder work;
    work.write("Makefile", document.substr(begin, document.find("```\n", begin) - begin));
    work.write("one.c", "#include \"both.h\"\nint one(void) {\n    return ONE;\n}\n");
    work.write("two.c", "int two(void) {\n    return 2;\n}\n");
    work.write("both.h", "#define ONE 1\n");
    const RunOptions options = in_folder(work.path());
    const string make = "PATH=\"$1/bin:$PATH\" make --no-print-directory -j2 CC=\"$2\" listings";
    const std::vector<string> arguments{installed_tree(), CC};

    shell(make, arguments, options);
    EXPECT_TRUE(shows(work.read("one.cl"), ";   3 |     return ONE;"));
    EXPECT_TRUE(shows(work.read("two.cl"), ";   2 |     return 2;"));
    EXPECT_TRUE(shows(shell(make, arguments, options), "Nothing to be done"));

    shell("touch -d '+2 seconds' both.h", {}, options);
    const string again = shell(make, arguments, options);
    EXPECT_TRUE(shows(again, "one.cl")) << again;
    EXPECT_FALSE(shows(again, "two.cl")) << again;
}

TEST(InterlistSources, CompilesASourceAsItsTargetDoes) {
    const ScratchFolder scratch;
    configure("library", scratch.path());
    build(scratch.path());
    const string folder = "checks_listings/";
    EXPECT_TRUE(shows(scratch.read(folder + "a part/checks.c.cl"), "| return value + GENERATED;"));
    EXPECT_TRUE(shows(scratch.read(folder + "checks.cpp.cl"), "| return values.front();"));
    // A source outside the target's folder goes by its name and a mark of its path.
    const std::set<string> listings = files_below(scratch / "checks_listings");
    EXPECT_TRUE(std::any_of(listings.begin(), listings.end(),
                            [](const string& name) { return name.ends_with("/made.c.cl"); }));
}

namespace {

struct Ordered : testing::TestWithParam<std::pair<string, string>> {};

}  // namespace

TEST_P(Ordered, CompilesAfterWhatTheTargetComesAfter) {
    const auto& [generator, jobs] = GetParam();
    if (generator != "Ninja" && !has_command("make")) {
        GTEST_SKIP() << "no make here";
    }
    for (const string which : {"", "EXCLUDE_FROM_ALL"}) {
        if (!which.empty() && jobs == "1") {
            continue;
        }
        const ScratchFolder scratch;
        configure("ordered", scratch.path(), {"-G", generator, "-DLISTINGS=" + which});
        std::vector<string> options{"-j", jobs};
        if (!which.empty()) {
            options.insert(options.end(), {"--target", "ordered_listings", "part_listings"});
        }
        build(scratch.path(), options);
        EXPECT_TRUE(shows(scratch.read("ordered_listings/main.c.cl"), "| return own + before"));
        EXPECT_TRUE(shows(scratch.read("part_listings/part.c.cl"), "| return part + FOUND;"));
        EXPECT_TRUE(shows(scratch.read("part_listings/odd.c.cl"), "| return 5;"));
        EXPECT_TRUE(
            shows(shell("cat $1/part_listings/*/made.c.cl", {scratch.path()}), "| int made"));
        std::vector<string> made = lines_of(scratch.read("made"));
        std::sort(made.begin(), made.end());
        EXPECT_EQ(made, (std::vector<string>{"before", "depended", "made.c", "own", "part"}));
    }
}

INSTANTIATE_TEST_SUITE_P(InterlistSources, Ordered,
                         testing::Values(std::pair("Ninja", "1"), std::pair("Ninja", "4"),
                                         std::pair("Unix Makefiles", "1"),
                                         std::pair("Unix Makefiles", "4")));
