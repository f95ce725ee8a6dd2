// Under which name a source is found, and what is doubtful about it.
#include "assembly/sources.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>

#include "assembly/md5.h"

using namespace assembly;

namespace {

struct source {
    std::string text;
    std::int64_t modified = 0;
    int file = 0;   // names of one number are names of one file
    int error = 0;  // why it cannot be read
};

struct compile {
    std::string directory;
    file_entry main = {};  // file 0, when it has a name
};

constexpr std::int64_t assembly_modified = 1000;

// "NAME", "NAME: DOUBT", or "NAME (missing)".
std::string found(const compile& how, const file_entry& entry,
                  const std::map<std::string, source>& files, const prefix_map& renames = {}) {
    assembly_file assembly;
    assembly.compilation_directory = how.directory;
    if (!how.main.name.empty()) {
        assembly.files[0] = how.main;
    }
    const source_access access{
        .read = [&](const std::string& name) -> std::optional<text_file> {
            const auto it = files.find(name);
            errno = it == files.end() ? ENOENT : it->second.error;
            return errno != 0 ? std::nullopt
                              : std::optional(text_file::of(it->second.text, it->second.modified));
        },
        .same =
            [&](const std::string& one, const std::string& other) {
                return files.contains(one) && files.contains(other) &&
                       files.at(one).file == files.at(other).file;
            },
    };
    const found_source it = find_source(assembly, entry, renames, access, assembly_modified);
    return it.name + (it.file ? "" : " (missing)") + (it.doubt.empty() ? "" : ": " + it.doubt);
}

const std::string here_for_src = "u.c: found here, though it was compiled as /src/u.c";
const std::string here_for_any =
    "u.c: found here, though the assembly does not tell where it was compiled";

}  // namespace

// A short name means a file in the directory that the compiler ran in.
TEST(FindSource, ARelativeNameIsKeptWhereItLeadsToTheSameFile) {
    const compile in_src{"/src"};
    const source it{"", 0, 1};
    const source another{"", 0, 2};
    EXPECT_EQ(found(in_src, {"", "u.c"}, {{"u.c", it}, {"/src/u.c", it}}), "u.c");
    EXPECT_EQ(found(in_src, {"", "./u.c"}, {{"u.c", it}, {"/src/u.c", it}}), "u.c");
    EXPECT_EQ(found(in_src, {"sub", "u.c"}, {{"sub/u.c", it}, {"/src/sub/u.c", it}}), "sub/u.c");
    EXPECT_EQ(found(in_src, {"/src", "u.c"}, {{"u.c", it}, {"/src/u.c", it}}), "u.c");
    EXPECT_EQ(found(in_src, {"/src/sub", "u.c"}, {{"sub/u.c", it}, {"/src/sub/u.c", it}}),
              "sub/u.c");
    EXPECT_EQ(found(in_src, {"", "u.c"}, {{"/src/u.c", it}}), "/src/u.c");
    EXPECT_EQ(found(in_src, {"", "u.c"}, {{"u.c", another}, {"/src/u.c", it}}), "/src/u.c");
    EXPECT_EQ(found({"/"}, {"", "u.c"}, {{"u.c", another}, {"/u.c", it}}), "/u.c");
}

TEST(FindSource, AnAbsoluteNameStaysAbsolute) {
    const source it{"", 0, 1};
    const std::map<std::string, source> files = {{"u.c", it}, {"/src/u.c", it}};
    EXPECT_EQ(found({"/src"}, {"", "/src/u.c"}, files), "/src/u.c");
    EXPECT_EQ(found({"/src"}, {"/src", "/src/u.c"}, files), "/src/u.c");
    EXPECT_EQ(found({""}, {"", "/src/u.c"}, files), "/src/u.c");
    EXPECT_EQ(found({"/other"}, {"/src", "u.c"}, files), "/src/u.c");
    // Only file 0 tells how the main file was given.
    EXPECT_EQ(found({"/src", {"/src", "/src/u.c"}}, {"", "u.c"}, files), "/src/u.c");
    EXPECT_EQ(found({"/src", {"/src", "u.c"}}, {"", "u.c"}, files), "u.c");
}

TEST(FindSource, WhatIsMissingKeepsTheNameThatItWasGiven) {
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, {}), "u.c (missing)");
    EXPECT_EQ(found({"/src"}, {"/src", "u.c"}, {}), "/src/u.c (missing)");
    EXPECT_EQ(found({"/src"}, {"", "/src/u.c"}, {}), "/src/u.c (missing)");
    EXPECT_EQ(found({"/src", {"/src", "/src/u.c"}}, {"", "u.c"}, {}), "/src/u.c (missing)");
    EXPECT_EQ(found({""}, {"", "u.c"}, {}), "u.c (missing)");
    EXPECT_EQ(found({"."}, {"", "u.c"}, {}), "u.c (missing)");
}

TEST(FindSource, AGuessIsDoubtful) {
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, {{"u.c", {}}}), here_for_src);
    EXPECT_EQ(found({"/src"}, {"", "/src/u.c"}, {{"u.c", {}}}), here_for_src);
    EXPECT_EQ(found({"."}, {"", "u.c"}, {{"u.c", {}}}), here_for_any);
    EXPECT_EQ(found({"build"}, {"", "u.c"}, {{"u.c", {}}, {"build/u.c", {}}}), here_for_any);
    EXPECT_EQ(found({"build"}, {"", "u.c"}, {{"build/u.c", {}}}), "build/" + here_for_any);
    EXPECT_EQ(found({"."}, {"", "/src/u.c"}, {{"/src/u.c", {}}}), "/src/u.c");
}

// Without a directory at all there is nothing to guess.
TEST(FindSource, WithoutADirectoryANameStandsForItself) {
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"u.c", {}}}), "u.c");
    EXPECT_EQ(found({""}, {"sub", "u.c"}, {{"sub/u.c", {}}}), "sub/u.c");
}

TEST(FindSource, TheFirstRuleThatFitsDecides) {
    const std::map<std::string, source> files = {{"new/u.c", {}}};
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, files, {{"/no", "x"}, {"/src", "new"}, {"/", "y"}}),
              "new/u.c");
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, files, {{"u", "new/u"}, {"/src", "y"}}), "new/u.c");
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, {{"u.c", {}}}, {{"/src", "old"}}), "old/u.c (missing)");
}

TEST(FindSource, TheChecksumTellsAGuessFromTheFileItself) {
    const std::string right = md5_of("int x;\n");
    const std::string wrong = md5_of("int y;\n");
    const std::map<std::string, source> files = {{"u.c", {"int x;\n", 2000}}};
    EXPECT_EQ(found({"."}, {"", "u.c", right}, files), "u.c");
    EXPECT_EQ(found({"/src"}, {"", "u.c", right}, files), "u.c");
    EXPECT_EQ(found({""}, {"", "u.c", right}, files), "u.c");
    EXPECT_EQ(found({"."}, {"", "u.c", wrong}, files), "u.c: not the text that was compiled");
    EXPECT_EQ(found({""}, {"", "u.c", wrong}, files, {{"u", "u"}}),
              "u.c: not the text that was compiled");
}

TEST(FindSource, ASourceThatWasChangedLaterIsDoubtful) {
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"u.c", {"", 1001}}}), "u.c: newer than the assembly");
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"u.c", {"", 1000}}}), "u.c");
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"u.c", {"", 0}}}), "u.c");
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, {{"u.c", {"", 1001}}}), here_for_src);
}

TEST(FindSource, AFileThatCannotBeReadIsNoMissingOne) {
    const source broken{"", 0, 1, EIO};
    const std::string reason = " (missing): cannot be read: Input/output error";
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, {{"u.c", {}}, {"/src/u.c", broken}}),
              "/src/u.c" + reason);
    EXPECT_EQ(found({"/src"}, {"", "u.c"}, {{"u.c", broken}, {"/src/u.c", broken}}),
              "u.c" + reason);
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"u.c", broken}}), "u.c" + reason);
    EXPECT_EQ(found({"."}, {"", "u.c"}, {{"u.c", broken}}), "u.c" + reason);
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"v.c", broken}}, {{"u", "v"}}), "v.c" + reason);
    EXPECT_EQ(found({""}, {"", "u.c"}, {{"u.c", {"", 0, 1, ENOTDIR}}}), "u.c (missing)");
}
