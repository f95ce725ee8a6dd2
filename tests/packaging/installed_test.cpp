// The installed tree as its users meet it: what it holds, that its programs run, and
// that a project of theirs finds the libraries with CMake and with pkg-config.
#include "tests/packaging/installed.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using std::string;

namespace {

string lib() {
    return installed_tree() + "/" LIBDIR;
}

const string consumer_output =
    "prog.cl\n"
    "A::f(int)\n"
    "A::f(int)\n"
    "1\n"
    "A::x\n"
    "f()\n"
    "Build Number 1WBJQ";

void expect_consumer(const string& program, const RunOptions& options = {}) {
    EXPECT_EQ(output_of({program}, options).substr(0, consumer_output.size()), consumer_output)
        << program;
}

}  // namespace

TEST(Installed, HoldsWhatAUserLooksFor) {
    const std::set<string> files = files_below(installed_tree());
    for (const string expected : {
             "bin/interlist",
             "bin/gas2interlist",
             "bin/symdecode",
             "bin/clist",
             LIBDIR "/libinterlist-support.a",
             LIBDIR "/libinterlist-support.so",
             LIBDIR "/libinterlist-support.so.8",
             LIBDIR "/libinterlist-support.so.8.3.12",
             LIBDIR "/libinterlist-demangle.a",
             LIBDIR "/libinterlist-demangle.so",
             LIBDIR "/libinterlist-demangle.so.8",
             LIBDIR "/libinterlist-demangle.so.8.3.12",
             LIBDIR "/cmake/interlist/interlistConfig.cmake",
             LIBDIR "/cmake/interlist/interlistConfigVersion.cmake",
             LIBDIR "/cmake/interlist/InterlistSources.cmake",
             LIBDIR "/pkgconfig/interlist-support.pc",
             LIBDIR "/pkgconfig/interlist-demangle.pc",
             "share/man/man1/interlist.1",
             "share/man/man1/gas2interlist.1",
             "share/man/man1/symdecode.1",
             "share/man/man1/clist.1",
             "share/bash-completion/completions/interlist",
             "share/bash-completion/completions/gas2interlist",
             "share/bash-completion/completions/symdecode",
             "share/bash-completion/completions/clist",
             "share/zsh/site-functions/_interlist",
             "share/zsh/site-functions/_gas2interlist",
             "share/zsh/site-functions/_symdecode",
             "share/zsh/site-functions/_clist",
             "share/fish/vendor_completions.d/interlist.fish",
             "share/fish/vendor_completions.d/gas2interlist.fish",
             "share/fish/vendor_completions.d/symdecode.fish",
             "share/fish/vendor_completions.d/clist.fish",
             "share/doc/interlist/README.md",
             "share/doc/interlist/CONTRIBUTING.md",
             "share/doc/interlist/docs/README.md",
         }) {
        EXPECT_TRUE(files.contains(expected)) << expected;
    }
}

TEST(Installed, HoldsThePublicHeadersOnly) {
    EXPECT_EQ(files_below(installed_tree() + "/include"), (std::set<string>{
                                                              "interlist/demangle/decode.h",
                                                              "interlist/demangle/decode_eabi.h",
                                                              "interlist/demangle/decode_id.h",
                                                              "interlist/support/buildid.h",
                                                              "interlist/support/filename.h",
                                                              "interlist/support/safealloc.h",
                                                              "interlist/support/zesignalsupport.h",
                                                          }));
}

TEST(Installed, EveryHeaderStandsAlone) {
    for (const string& header : files_below(installed_tree() + "/include/interlist")) {
        output_of({CXX, "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-I",
                   installed_tree() + "/include/interlist", "-include", header, "-fsyntax-only",
                   "-x", "c++", "/dev/null"});
    }
}

TEST(Installed, NamesNoFolderOfTheBuild) {
    for (const string& file : files_below(installed_tree() + "/" LIBDIR "/cmake")) {
        const string text = read_file(installed_tree() + "/" LIBDIR "/cmake/" + file);
        EXPECT_EQ(text.find(BUILD_DIR), string::npos) << file;
        EXPECT_EQ(text.find(SOURCE_DIR), string::npos) << file;
    }
}

TEST(Installed, ProgramsRun) {
    EXPECT_EQ(output_of({installed_tree() + "/bin/symdecode", "_Z1fi"}), "f(int)\n");
    EXPECT_EQ(output_of({installed_tree() + "/bin/gas2interlist", "--version"}),
              "gas2interlist 8.3.12\n");
    EXPECT_EQ(output_of({installed_tree() + "/bin/interlist"}).substr(0, 6), "Usage:");
    EXPECT_EQ(output_of({installed_tree() + "/bin/clist", "--version"}), "clist 8.3.12\n");
}

TEST(Installed, SharedLibrariesCarryAVersionedName) {
    for (const string library : {"support", "demangle"}) {
        const string dynamic =
            output_of({"readelf", "-d", "-W", lib() + "/libinterlist-" + library + ".so.8.3.12"});
        EXPECT_NE(dynamic.find("soname: [libinterlist-" + library + ".so.8]"), string::npos)
            << dynamic;
        EXPECT_EQ(dynamic.find("RUNPATH"), string::npos);
    }
}

TEST(Installed, SharedLibrariesExportThePublicNamesOnly) {
    const auto names_in = [](const string& library) {
        const string symbols = output_of({"nm", "-D", "--defined-only", "-j", lib() + library});
        const string names = output_of(
            {installed_tree() + "/bin/symdecode", "--lines", "--names-only"}, reading(symbols));
        std::set<string> result;
        for (const string& line : lines_of(names)) {
            result.insert(line.substr(0, line.find('@')));
        }
        return result;
    };
    EXPECT_EQ(names_in("/libinterlist-demangle.so"), (std::set<string>{
                                                         "INTERLIST_8",
                                                         "dec_die",
                                                         "decode_by_scheme",
                                                         "decode_extended_names",
                                                         "decode_id",
                                                         "decode_identifier",
                                                         "decode_identifier_eabi",
                                                         "decode_is_ia64_subobject",
                                                         "decode_mangle_scheme",
                                                         "decode_to_decorid",
                                                         "decode_to_origid",
                                                         "probably_mangled_symbol_name",
                                                     }));
    EXPECT_EQ(names_in("/libinterlist-support.so"), (std::set<string>{
                                                        "INTERLIST_8",
                                                        "buildid",
                                                        "buildid_of",
                                                        "callback",
                                                        "common_signal_handler",
                                                        "cstr_to_fn",
                                                        "file_is_empty",
                                                        "fn_addext",
                                                        "fn_basename",
                                                        "fn_build",
                                                        "fn_change_dir",
                                                        "fn_delete",
                                                        "fn_delext",
                                                        "fn_exists",
                                                        "fn_explicit_disable",
                                                        "fn_get_dir_entry",
                                                        "fn_get_working_dir",
                                                        "fn_has_full_path",
                                                        "fn_has_relative_path",
                                                        "fn_hasdir",
                                                        "fn_is_empty",
                                                        "fn_is_user_specified_stream",
                                                        "fn_matches_ext",
                                                        "fn_realname",
                                                        "fn_rename",
                                                        "fn_samefile",
                                                        "fn_split",
                                                        "fn_strcmp",
                                                        "fn_tmpnam",
                                                        "fn_to_cstr",
                                                        "install_common_handlers",
                                                        "safecalloc",
                                                        "safemalloc",
                                                        "saferealloc",
                                                        "sigstrnappend",
                                                        "support_message_text",
                                                        "try_gen_corefile",
                                                        "user_specified_advice_stream",
                                                    }));
}

TEST(Installed, IsFoundByCMake) {
    const ScratchFolder scratch;
    configure("consumer", scratch.path());
    build(scratch.path());
    expect_consumer(scratch / "consumer_static");
    expect_consumer(scratch / "consumer_shared");
}

TEST(Installed, IsNotFoundByCMakeUnderAnotherMajorVersion) {
    const ScratchFolder project;
    project.write("CMakeLists.txt",
                  "cmake_minimum_required(VERSION 3.25)\nproject(other LANGUAGES CXX)\n"
                  "find_package(interlist 9 REQUIRED)\n");
    const Finished run =
        run_program({CMAKE, "-S", project.path(), "-B", project / "build", "-G", GENERATOR,
                     "-DCMAKE_CXX_COMPILER=" CXX, "-DCMAKE_PREFIX_PATH=" + installed_tree()});
    EXPECT_NE(run.status, 0);
    EXPECT_NE(run.err.find("version: 8.3.12"), string::npos) << run.err;
}

TEST(Installed, PkgConfigCallsItsFoldersByName) {
    const ScratchFolder scratch;
    output_of({CMAKE, "--install", BUILD_DIR, "--prefix", "tree"}, in_folder(scratch.path()));
    const RunOptions options =
        with_variable("PKG_CONFIG_PATH", scratch / "tree/" LIBDIR "/pkgconfig");
    EXPECT_EQ(shell("pkg-config --cflags --libs interlist-support interlist-demangle", {}, options),
              "-I" + (scratch / "tree/include/interlist") + " -L" + (scratch / "tree/" LIBDIR) +
                  " -linterlist-support -linterlist-demangle \n");
}

// The tree has been moved.
TEST(Installed, IsFoundByPkgConfig) {
    const ScratchFolder scratch;
    const RunOptions options = with_variable("PKG_CONFIG_PATH", lib() + "/pkgconfig");
    EXPECT_EQ(shell("pkg-config --modversion interlist-support interlist-demangle", {}, options),
              "8.3.12\n8.3.12\n");
    shell(
        "libraries='interlist-support interlist-demangle'\n"
        "$1 $3 -std=c++20 consumer/consumer.cpp -o $2/shared"
        " $(pkg-config --define-prefix --cflags --libs $libraries)\n"
        "$1 $3 -std=c++20 consumer/consumer.cpp -o $2/static $(pkg-config --define-prefix --cflags "
        "$libraries)"
        " -Wl,--fatal-warnings -Wl,-Bstatic $(pkg-config --define-prefix --libs $libraries) "
        "-Wl,-Bdynamic\n",
        {CXX, scratch.path(), CXX_FLAGS}, options);
    expect_consumer(scratch / "shared", with_variable("LD_LIBRARY_PATH", lib()));
    expect_consumer(scratch / "static");
}
