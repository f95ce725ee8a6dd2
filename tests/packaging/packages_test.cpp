// The packages that CPack makes: the Debian package in a root of its own, and the
// source archive.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/packaging/installed.h"

using std::string;

namespace {

// The Debian package, made once and unpacked into a root of its own.
struct Unpacked {
    ScratchFolder scratch;
    string package;  // the .deb
    string root;

    Unpacked() : root(scratch / "root") {
        const string folder = scratch / "package";
        output_of({CPACK, "-G", "DEB", "--config", BUILD_DIR "/CPackConfig.cmake", "-B", folder});
        package = lines_of(shell("ls $1/*.deb", {folder})).at(0);
        output_of({"dpkg-deb", "-x", package, root});
    }
};

const Unpacked& unpacked_package() {
    static const Unpacked unpacked;
    return unpacked;
}

string field(const string& name) {
    return output_of({"dpkg-deb", "-f", unpacked_package().package, name});
}

class DebianPackage : public testing::Test {
  protected:
    void SetUp() override {
        if (!has_command("dpkg-deb") || !has_command("dpkg-shlibdeps")) {
            GTEST_SKIP() << "needs dpkg-deb and dpkg-shlibdeps";
        }
    }
};

}  // namespace

TEST_F(DebianPackage, SaysWhatItIsAndNeeds) {
    EXPECT_EQ(field("Package"), "interlist\n");
    EXPECT_EQ(field("Version"), "8.3.12\n");
    EXPECT_EQ(field("Section"), "devel\n");
    EXPECT_EQ(field("Architecture"), output_of({"dpkg", "--print-architecture"}));
    EXPECT_EQ(field("Description").substr(0, 38), "C source interlister and C++ demangler");
    const string depends = field("Depends");
    EXPECT_NE(depends.find("libc6 (>= "), string::npos) << depends;
    EXPECT_NE(depends.find("libstdc++6 (>= "), string::npos) << depends;
    EXPECT_EQ(depends.find("interlist"), string::npos) << depends;
}

TEST_F(DebianPackage, TellsTheSystemOfItsSharedLibraries) {
    const string folder = unpacked_package().scratch / "control";
    output_of({"dpkg-deb", "-e", unpacked_package().package, folder});
    EXPECT_EQ(read_file(folder + "/triggers"), "activate-noawait ldconfig\n");
    EXPECT_EQ(files_below(folder), (std::set<string>{"control", "md5sums", "shlibs", "triggers"}));
    const string shlibs = read_file(folder + "/shlibs");
    EXPECT_NE(shlibs.find("libinterlist-demangle 8 interlist"), string::npos) << shlibs;
    EXPECT_NE(shlibs.find("libinterlist-support 8 interlist"), string::npos) << shlibs;
}

// The licence is its owner's to state.
TEST_F(DebianPackage, HasNothingForLintianToSayButOfTheLicence) {
    if (!has_command("lintian")) {
        GTEST_SKIP() << "no lintian here";
    }
    const Finished run =
        run_program({"lintian", "--allow-root", "--fail-on", "error,warning", "--suppress-tags",
                     "no-copyright-file", unpacked_package().package});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
}

TEST_F(DebianPackage, HasAChangelog) {
    const string text = output_of(
        {"gzip", "-dc", unpacked_package().root + "/usr/share/doc/interlist/changelog.gz"});
    EXPECT_TRUE(text.starts_with("interlist (8.3.12) ")) << text;
}

TEST_F(DebianPackage, GivesPkgConfigItsFoldersByName) {
    const string folder = unpacked_package().root + "/usr/lib/pkgconfig";
    EXPECT_EQ(shell("pkg-config --variable=includedir interlist-support interlist-demangle", {},
                    with_variable("PKG_CONFIG_PATH", folder)),
              "/usr/include /usr/include\n");
}

TEST_F(DebianPackage, BelongsToRoot) {
    for (const string& line : lines_of(output_of({"dpkg-deb", "-c", unpacked_package().package}))) {
        EXPECT_NE(line.find(" root/root "), string::npos) << line;
    }
}

TEST_F(DebianPackage, ProgramsRunFromAnotherRoot) {
    const string bin = unpacked_package().root + "/usr/bin/";
    EXPECT_EQ(output_of({bin + "symdecode", "_ZN1A1fEi", "f__1AFi"}), "A::f(int)\nA::f(int)\n");
    EXPECT_EQ(output_of({bin + "gas2interlist", "--version"}), "gas2interlist 8.3.12\n");
    EXPECT_EQ(output_of({bin + "clist", "--version"}), "clist 8.3.12\n");

    const ScratchFolder work;
    work.write("prog.c", "int f(void)\n{\n    return 1;\n}\n");
    work.write("prog.asm",
               "\t.ifile\t\"prog.c\"\n\t.ifunc\t1\n_f:\n\t.iline\t2\n\tret\n\t.iendfunc\t4\n");
    output_of({bin + "interlist", "prog.asm"}, in_folder(work.path()));
    EXPECT_NE(work.read("prog.cl").find(";   3 | return 1;"), string::npos);
}

TEST_F(DebianPackage, HoldsWhatTheInstalledTreeHoldsInDebiansPlaces) {
    const std::set<string> packaged = files_below(unpacked_package().root + "/usr");
    const string zsh = "share/zsh/site-functions/";
    for (string file : files_below(installed_tree())) {
        if (file.starts_with("share/man/")) {
            file += ".gz";
        } else if (file.starts_with(zsh)) {
            file = "share/zsh/vendor-completions/" + file.substr(zsh.size());
        }
        EXPECT_TRUE(packaged.contains(file)) << file;
    }
}

TEST(SourceArchive, BuildsOnItsOwn) {
    const ScratchFolder scratch;
    output_of({CPACK, "--config", BUILD_DIR "/CPackSourceConfig.cmake", "-B", scratch / "archive"});
    const string archive = lines_of(shell("ls $1/*.tar.gz", {scratch / "archive"})).at(0);
    EXPECT_TRUE(archive.ends_with("/interlist-8.3.12-Source.tar.gz")) << archive;

    output_of({"tar", "-xzf", archive, "-C", scratch.path()});
    const string source = scratch / "interlist-8.3.12-Source";
    const std::set<string> files = files_below(source);
    for (const string expected :
         {"CMakeLists.txt", "README.md", "support/filename.h", "demangle/decode_id.h",
          "docs/man/interlist.1", ".clang-format"}) {
        EXPECT_TRUE(files.contains(expected)) << expected;
    }
    for (const string& file : files) {
        EXPECT_FALSE(file.starts_with(".git/") || file.starts_with("build/")) << file;
    }

    configure(source, scratch / "build", {"-DINTERLIST_TESTS=OFF"});
    build(scratch / "build", {"--target", "interlist"});
    EXPECT_EQ(output_of({scratch / "build/bin/interlist"}).substr(0, 6), "Usage:");
}
