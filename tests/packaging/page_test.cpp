// A clist without the page, as -DINTERLIST_PAGE=OFF makes it: says so, and can all the rest.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/packaging/installed.h"

using std::string;

namespace {

Finished clist_without_page(std::vector<string> arguments, const string& folder) {
    arguments.insert(arguments.begin(), CLIST_WITHOUT_PAGE);
    return run_program(arguments, in_folder(folder));
}

}  // namespace

TEST(WithoutPage, HtmlIsRefusedBeforeAnythingIsDone) {
    const ScratchFolder folder;
    folder.write("prog.c", "int f(void) { return 1; }\n");
    folder.write("prog.s", "f:\n\tret\n");
    folder.write("compile_commands.json",
                 R"([{"directory": ".", "file": "prog.c", "command": "cc -c prog.c"}])");
    for (const std::vector<string>& words : {std::vector<string>{"--html", "cc", "-c", "prog.c"},
                                             {"--html", "prog.s"},
                                             {"--html", "-o", "prog.html", "prog.s"},
                                             {"--launcher", "--html", "cc", "-c", "prog.c"},
                                             {"-p", ".", "--html"}}) {
        const Finished ended = clist_without_page(words, folder.path());
        EXPECT_EQ(ended.status, 2);
        EXPECT_EQ(ended.out, "");
        EXPECT_EQ(ended.err,
                  "clist: --html: this clist was built without the page\nTry 'clist --help'.\n");
    }
    EXPECT_EQ(files_below(folder.path()),
              (std::set<string>{"compile_commands.json", "prog.c", "prog.s"}));
}

TEST(WithoutPage, AllOtherFormsAreThere) {
    const ScratchFolder folder;
    folder.write("prog.s", "\t.text\n\t.type\tf, @function\nf:\n\tret\n\t.size\tf, .-f\n");
    for (const char* form : {"--list", "--stats", "--classic", "--json", "--all"}) {
        const Finished ended = clist_without_page({form, "--no-warnings", "prog.s"}, folder.path());
        EXPECT_EQ(ended.status, 0) << form;
        EXPECT_EQ(ended.err, "") << form;
        EXPECT_NE(ended.out, "") << form;
    }
}

TEST(WithoutPage, TheBuildNeedsNeitherZlibNorThePage) {
    const ScratchFolder folder;
    output_of({CMAKE, "-S", SOURCE_DIR, "-B", folder.path(), "-G", "Ninja", "-DINTERLIST_PAGE=OFF",
               "-DINTERLIST_TESTS=OFF", "-DCMAKE_DISABLE_FIND_PACKAGE_ZLIB=ON",
               string("-DCMAKE_CXX_COMPILER=") + CXX});
    const string commands = output_of({"ninja", "-C", folder.path(), "-t", "commands", "clist"});
    EXPECT_NE(commands.find("clist/forms/page/absent.cpp"), string::npos);
    EXPECT_EQ(commands.find("clist/forms/page/form.cpp"), string::npos);
    EXPECT_EQ(commands.find("page/dist"), string::npos);
    EXPECT_EQ(commands.find("libz"), string::npos);
}
