// clist -p: listings of all that a compile database names, by the real Ninja.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/harness/program.h"

namespace fs = std::filesystem;
using std::string;

namespace {

// A folder with sources and a compile database in build/.
struct Project {
    ScratchFolder folder;

    Project() {
        folder.write("src/one.c",
                     "#include \"both.h\"\nint one(int n)\n{\n    return ONE - n;\n}\n");
        folder.write("src/two.cpp", "int two(int n)\n{\n    return 2 - n;\n}\n");
        folder.write("include/both.h", "#define ONE 1\n");
        database(R"([
  {"directory": ".", "file": "../src/one.c",
   "command": "cc -I../include -O2 -MD -MF real.d -c ../src/one.c -o one.o"},
  {"directory": "SRC", "file": "two.cpp",
   "arguments": ["c++", "-DX=\"a b\"", "-c", "two.cpp", "-o", "two.o"]}
])");
    }

    // SRC stands for the sources' folder.
    void database(string text) const {
        const string mark = "SRC";
        for (std::size_t at = text.find(mark); at != string::npos; at = text.find(mark, at)) {
            text.replace(at, mark.size(), folder / "src");
        }
        folder.write("build/compile_commands.json", text);
    }

    Finished list(const std::vector<string>& options = {}) const {
        std::vector<string> words{CLIST, "-p", "build"};
        words.insert(words.end(), options.begin(), options.end());
        RunOptions where;
        where.directory = folder.path();
        where.unset = {"NINJA_STATUS"};
        return run_program(words, where);
    }

    // What a run makes, by comparing the times before and after it.
    std::set<string> made(const std::vector<string>& options = {}) const {
        std::map<string, fs::file_time_type> before = times();
        const Finished run = list(options);
        EXPECT_EQ(run.status, 0) << run.out << run.err;
        std::set<string> names;
        for (const auto& [name, time] : times()) {
            if (!before.contains(name) || before[name] != time) {
                names.insert(name);
            }
        }
        return names;
    }

    void change(const string& name, const string& text) const {
        const auto before = fs::last_write_time(folder / name);
        folder.write(name, text);
        if (fs::last_write_time(folder / name) <= before) {
            fs::last_write_time(folder / name, before + std::chrono::seconds(1));
        }
    }

  private:
    std::map<string, fs::file_time_type> times() const {
        std::map<string, fs::file_time_type> found;
        const string listings = folder / "build/listings";
        if (fs::exists(listings)) {
            for (const auto& entry : fs::recursive_directory_iterator(listings)) {
                const string name = entry.path().lexically_relative(listings);
                if (entry.is_regular_file() && !name.starts_with(".clist")) {
                    found[name] = entry.last_write_time();
                }
            }
        }
        return found;
    }
};

bool shows(const string& text, const string& part) {
    return text.find(part) != string::npos;
}

const std::set<string> both{"one.c.lst", "two.cpp.lst"};

}  // namespace

TEST(ClistProject, MakesAListingOfEverySource) {
    const Project project;
    const Finished run = project.list();
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_EQ(run.err, "clist: 2 listings in " + (project.folder / "build/listings") + "\n");
    EXPECT_TRUE(shows(run.out, "clist: [2/2] ")) << run.out;
    EXPECT_TRUE(shows(project.folder.read("build/listings/one.c.lst"), "|     return ONE - n;"));
    EXPECT_TRUE(shows(project.folder.read("build/listings/two.cpp.lst"), "|     return 2 - n;"));
    for (const string file : {"build/one.o", "build/real.d", "src/two.o"}) {
        EXPECT_FALSE(project.folder.has(file)) << file;
    }
}

TEST(ClistProject, ASecondRunMakesNothing) {
    const Project project;
    EXPECT_EQ(project.made(), both);
    EXPECT_EQ(project.made(), std::set<string>{});
    EXPECT_EQ(project.list().err,
              "clist: 2 listings in " + (project.folder / "build/listings") + "\n");
}

TEST(ClistProject, AChangeMakesWhatDependsOnIt) {
    const Project project;
    EXPECT_EQ(project.made(), both);
    project.change("include/both.h", "#define ONE 11\n");
    EXPECT_EQ(project.made(), std::set<string>{"one.c.lst"});
    project.change("src/two.cpp", "int two(int n)\n{\n    return 22 - n;\n}\n");
    EXPECT_EQ(project.made(), std::set<string>{"two.cpp.lst"});
    EXPECT_TRUE(shows(project.folder.read("build/listings/two.cpp.lst"), "|     return 22 - n;"));
    EXPECT_EQ(project.made({"--mangled"}), both);
    project.database(R"([{"directory": "SRC", "file": "one.c",
      "command": "cc -I../include -O3 -c one.c"}, {"directory": "SRC", "file": "two.cpp",
   "arguments": ["c++", "-DX=\"a b\"", "-c", "two.cpp", "-o", "two.o"]}])");
    EXPECT_EQ(project.made({"--mangled"}), std::set<string>{"one.c.lst"});
}

TEST(ClistProject, ListingsGoWhereTold) {
    const Project project;
    const Finished run = project.list({"-o", "out put", "-j", "1"});
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_TRUE(project.folder.has("out put/one.c.lst"));
    EXPECT_FALSE(project.folder.has("build/listings"));
    // The database itself may be named as well.
    const Finished named = run_program(
        {CLIST, "-p", project.folder / "build/compile_commands.json", "-o", project.folder / "o"});
    EXPECT_EQ(named.status, 0);
    EXPECT_TRUE(project.folder.has("o/two.cpp.lst"));
}

// When an entry goes, or all listings change their names with the folder that the sources share.
TEST(ClistProject, ListingsOfWhatIsNoLongerNamedAreRemoved) {
    const Project project;
    const string listings = project.folder / "build/listings";
    const auto files = [&] {
        std::set<string> names;
        for (const auto& entry : fs::recursive_directory_iterator(listings)) {
            const string name = entry.path().lexically_relative(listings);
            if (!name.starts_with(".clist")) {
                names.insert(name);
            }
        }
        return names;
    };
    project.folder.write("other/three.c", "int three;\nint f(void) { return three; }\n");
    const string two = R"({"directory": "SRC", "file": "two.cpp", "command": "c++ -c two.cpp"})";
    const string one = R"({"directory": "SRC", "file": "one.c",
                           "command": "cc -I../include -c one.c"})";
    const string three = R"({"directory": "SRC", "file": "../other/three.c",
                             "command": "cc -c ../other/three.c"})";
    project.database("[" + one + "," + two + "]");
    project.made();
    EXPECT_EQ(files(), both);
    project.folder.write("build/listings/notes.lst", "mine");
    project.database("[" + one + "," + two + "," + three + "]");
    project.made();
    EXPECT_EQ(files(), (std::set<string>{"notes.lst", "other", "other/three.c.lst", "src",
                                         "src/one.c.lst", "src/two.cpp.lst"}));
    project.database("[" + one + "]");
    project.made();
    EXPECT_EQ(files(), (std::set<string>{"notes.lst", "one.c.lst"}));
#if CLIST_HAS_PAGE
    // Listings and pages do not go in each other's place.
    project.database("[" + one + "," + two + "]");
    project.made();
    project.made({"--html"});
    project.database("[" + one + "]");
    project.made();
    EXPECT_EQ(files(), (std::set<string>{"index.html", "notes.lst", "one.c.html", "one.c.lst",
                                         "two.cpp.html"}));
    project.made({"--html"});
    EXPECT_EQ(files(), (std::set<string>{"index.html", "notes.lst", "one.c.html", "one.c.lst"}));
#endif
}

TEST(ClistProject, GoesOnPastFailuresAndSumsUp) {
    const Project project;
    project.database(R"([
  {"directory": "SRC", "file": "none.c", "command": "cc -c none.c"},
  {"directory": "SRC", "file": "bad.c", "command": "cc -c bad.c"},
  {"directory": "SRC", "file": "two.cpp", "command": "c++ -c two.cpp"},
  {"directory": "/none", "file": "three.c", "command": "cc -c three.c"}
])");
    project.folder.write("src/bad.c", "int f(void) { return }\n");
    const Finished run = project.list();
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(shows(run.err, "clist: 3 of 4 listings failed: ")) << run.err;
    for (const string name : {"none.c", "bad.c", "three.c"}) {
        EXPECT_TRUE(shows(run.err, name)) << run.err;
    }
    EXPECT_FALSE(shows(run.err, "two.cpp")) << run.err;
    EXPECT_TRUE(shows(run.out, "bad.c:1:")) << run.out;
    project.folder.write("src/bad.c", "int f(void) { return 1; }\n");
    const Finished again = project.list();
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(shows(again.err, "clist: 2 of 4 listings failed: ")) << again.err;
}

TEST(ClistProject, AFailureLosesNothingOld) {
    const Project project;
    EXPECT_EQ(project.made(), both);
    const string old = project.folder.read("build/listings/two.cpp.lst");
    project.change("src/two.cpp", "int two( {\n");
    const Finished run = project.list();
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(shows(run.err, "clist: 1 of 2 listings failed: two.cpp\n")) << run.err;
    EXPECT_EQ(project.folder.read("build/listings/two.cpp.lst"), old);
    project.change("src/two.cpp", "int two()\n{\n    return 222;\n}\n");
    EXPECT_EQ(project.made(), std::set<string>{"two.cpp.lst"});
}

TEST(ClistProject, ABrokenDatabaseIsReportedWithItsPlace) {
    const Project project;
    const std::pair<string, string> cases[] = {
        {"[\n{]", "clist: build/compile_commands.json:2:2: "},
        {"[\n\n{\"file\": 1}]",
         "clist: build/compile_commands.json:3: \"file\" holds something else than text\n"},
        {"[]", "clist: build/compile_commands.json: no C or C++ source is compiled there\n"},
        {R"([{"directory": "a\nb", "file": "x.c", "command": "cc -c x.c"}])",
         "clist: build/compile_commands.json: x.c: a line break in a name or an argument\n"},
    };
    for (const auto& [text, error] : cases) {
        project.database(text);
        const Finished run = project.list();
        EXPECT_EQ(run.status, 1) << text;
        EXPECT_EQ(run.err.substr(0, error.size()), error);
        EXPECT_EQ(run.out, "");
        EXPECT_FALSE(project.folder.has("build/listings"));
    }
    fs::remove(project.folder / "build/compile_commands.json");
    EXPECT_EQ(project.list().status, 1);
    EXPECT_EQ(project.list().err,
              "clist: build/compile_commands.json: No such file or directory; CMake writes it with "
              "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON\n");
    fs::remove_all(project.folder / "build");
    EXPECT_EQ(project.list().status, 1);
    EXPECT_EQ(project.list().err, "clist: build: No such file or directory\n");
    const string none = project.folder / "none";
    EXPECT_EQ(run_program({CLIST, "-p", none}).err,
              "clist: " + none + ": No such file or directory\n");
}

TEST(ClistProject, ListingsNeedAFolder) {
    const Project project;
    project.folder.write("file", "");
    const Finished none = project.list({"-o", "file/listings"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "clist: " + (project.folder / "file/listings") + ": Not a directory\n");
    const string plan = project.folder / "out/.clist/build.ninja";
    fs::create_directories(plan);
    const Finished unplanned = project.list({"-o", "out"});
    EXPECT_EQ(unplanned.status, 1);
    EXPECT_EQ(unplanned.err, "clist: " + plan + ": Is a directory\n");
}

TEST(ClistProject, WithoutNinjaItSaysWhatToInstall) {
    const Project project;
    fs::create_directory(project.folder / "bin");
    RunOptions options;
    options.directory = project.folder.path();
    options.set["PATH"] = project.folder / "bin";
    const Finished run = run_program({CLIST, "-p", "build"}, options);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              "clist: -p needs Ninja, which is not here: install the package ninja-build (ninja on "
              "Arch, Alpine and macOS)\n");
}

TEST(ClistProject, CompilesMayRunThroughAnotherProgram) {
    const Project project;
    const string wrapper = project.folder.write(
        "wrap", "#!/bin/sh\necho \"$1\" >> " + (project.folder / "seen") + "\nexec \"$@\"\n");
    fs::permissions(wrapper, fs::perms::owner_all);
    EXPECT_EQ(project.made({"--through", wrapper, "-j", "1"}), both);
    EXPECT_EQ(project.folder.read("seen").size(), string("cc\nc++\n").size());
}

// Two compiles that wait for each other, and compiles that must not meet.
TEST(ClistProject, AsManyCompilesRunAtOnceAsTold) {
    const Project project;
    ASSERT_EQ(mkfifo((project.folder / "meet").c_str(), 0600), 0);
    const auto script = [&](const string& name, const string& text) {
        const string file =
            project.folder.write(name, "#!/bin/sh\n(cd " + project.folder.path() + " && " + text +
                                           ") || exit 9\n\"$@\"\nstatus=$?\necho end >> " +
                                           (project.folder / "log") + "\nexit $status\n");
        fs::permissions(file, fs::perms::owner_all);
        return file;
    };
    const string meeting = script(
        "meeting",
        "case \"$*\" in *one.c*) timeout 300 sh -c 'echo > meet';; *) timeout 300 cat meet;; "
        "esac");
    EXPECT_EQ(project.made({"--through", meeting, "-j", "2"}), both);
    const string counting = script("counting", "echo begin >> log");
    project.folder.write("log", "");
    EXPECT_EQ(project.made({"--through", counting, "-j", "1"}), both);
    EXPECT_EQ(project.folder.read("log"), "begin\nend\nbegin\nend\n");
}

TEST(ClistProject, ProgressIsShownOnATerminalOnOneLine) {
    const Project project;
    RunOptions where;
    where.directory = project.folder.path();
    where.unset = {"NINJA_STATUS"};
    where.set["TERM"] = "xterm";
    where.output_is_terminal = true;
    const Finished run = run_program({CLIST, "-p", "build", "-j", "1"}, where);
    EXPECT_EQ(run.status, 0) << run.err;
    for (const string step : {"\rclist: [1/2] ", "\rclist: [2/2] "}) {
        EXPECT_TRUE(shows(run.out, step)) << run.out;
    }
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1) << run.out;
    EXPECT_EQ(run.err, "clist: 2 listings in " + (project.folder / "build/listings") + "\n");
    // In the words that the environment has for it.
    where.unset = {};
    where.set["NINJA_STATUS"] = "<%f> ";
    fs::remove_all(project.folder / "build/listings");
    EXPECT_TRUE(shows(run_program({CLIST, "-p", "build"}, where).out, "\r<2> "));
}

TEST(ClistProject, NamesMayHoldBlanksAndTheLike) {
    const Project project;
    const string name = "a $bcd:e#f(gh%i\\j\303\244";
    project.folder.write("src/" + name + ".c",
                         "#include \""
                         "h $:#.h"
                         "\"\nint f(void)\n{\n    return 3;\n}\n");
    project.folder.write("src/h $:#.h", "\n");
    project.database(R"([{"directory": "SRC", "file": "a $bcd:e#f(gh%i\\jä.c",
      "arguments": ["cc", "-c", "a $bcd:e#f(gh%i\\jä.c"]}])");
    EXPECT_EQ(project.made(), std::set<string>{name + ".c.lst"});
    EXPECT_EQ(project.made(), std::set<string>{});
    project.change("src/h $:#.h", "#define X\n");
    EXPECT_EQ(project.made(), std::set<string>{name + ".c.lst"});
}

// Ninja does not read such names in a list of headers, so these are made each time.
TEST(ClistProject, NamesMayEvenHoldQuotes) {
    const Project project;
    const string name = "a'b\"c&d;e|f";
    project.folder.write("src/" + name + ".c", "int f(void)\n{\n    return 3;\n}\n");
    project.database(R"([{"directory": "SRC", "file": "a'b\"c&d;e|f.c",
      "arguments": ["cc", "-c", "a'b\"c&d;e|f.c"]}])");
    EXPECT_EQ(project.made(), std::set<string>{name + ".c.lst"});
}

#if CLIST_HAS_PAGE

namespace {

const std::set<string> both_pages{"index.html", "one.c.html", "two.cpp.html"};

bool has_unit(const Project& project, const string& number) {
    return shows(project.folder.read("build/listings/index.html"),
                 "data-chunk=\"" + number + "/unit\"");
}

}  // namespace

TEST(ClistProject, PagesAreJoinedInAnIndex) {
    const Project project;
    EXPECT_EQ(project.made({"--html"}), both_pages);
    EXPECT_TRUE(has_unit(project, "0") && has_unit(project, "1"));
    EXPECT_FALSE(has_unit(project, "2"));
    EXPECT_EQ(project.made({"--html"}), std::set<string>{});
    const Finished run = project.list({"--html"});
    EXPECT_EQ(run.err,
              "clist: 2 listings in " + (project.folder / "build/listings/index.html") + "\n");
    project.change("src/two.cpp", "int two(int n)\n{\n    return 22 - n;\n}\n");
    EXPECT_EQ(project.made({"--html"}), (std::set<string>{"index.html", "two.cpp.html"}));
    fs::remove(project.folder / "build/listings/index.html");
    EXPECT_EQ(project.made({"--html"}), std::set<string>{"index.html"});
}

TEST(ClistProject, AnIndexHasThePagesOfWhatIsInTheDatabase) {
    const Project project;
    EXPECT_EQ(project.made({"--html"}), both_pages);
    project.database(R"([{"directory": "SRC", "file": "two.cpp",
   "arguments": ["c++", "-DX=\"a b\"", "-c", "two.cpp", "-o", "two.o"]}])");
    EXPECT_EQ(project.made({"--html"}), std::set<string>{"index.html"});
    EXPECT_TRUE(has_unit(project, "0"));
    EXPECT_FALSE(has_unit(project, "1"));
}

TEST(ClistProject, AnIndexHasThePagesThatAreThere) {
    const Project project;
    project.folder.write("src/one.c", "int one( {\n");
    const Finished run = project.list({"--html"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(shows(run.err, "clist: 1 of 2 listings failed: one.c\n")) << run.err;
    EXPECT_TRUE(has_unit(project, "0"));
    EXPECT_FALSE(has_unit(project, "1"));
    project.folder.write("src/two.cpp", "int two( {\n");
    fs::remove_all(project.folder / "build/listings");
    EXPECT_EQ(project.list({"--html"}).status, 1);
    EXPECT_FALSE(project.folder.has("build/listings/index.html"));
}

TEST(ClistProject, AnIndexThatCannotBeWrittenIsAFailure) {
    const Project project;
    fs::create_directories(project.folder / "build/listings/index.html");
    const Finished run = project.list({"--html"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(shows(run.err, "/build/listings/index.html: Is a directory\n")) << run.err;
}

#endif
