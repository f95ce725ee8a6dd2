// The programs of the library guide: the page shows their sources as they are, and what
// it says that they print is what they print.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/harness/program.h"

namespace {

// A program as the page shows it: its name, its source and what it prints.
struct Shown {
    std::string name;
    std::string source;
    std::string output;
};

// The text of the fenced block that begins with `fence` at or after `at`, which moves
// to its end.
std::string block(const std::string& page, const std::string& fence, std::size_t& at) {
    const std::size_t opening = page.find("\n" + fence + "\n", at);
    if (opening == std::string::npos) {
        ADD_FAILURE() << "no block " << fence;
        return {};
    }
    const std::size_t start = opening + fence.size() + 2;
    const std::size_t end = page.find("```\n", start);
    at = end;
    return page.substr(start, end - start);
}

std::vector<Shown> programs_of_the_guide() {
    const std::string page = read_file(std::string(DOCUMENTS) + "/library-guide.md");
    const std::string before = "`docs/examples/";
    const std::string after = ".cpp`:\n";
    std::vector<Shown> programs;
    std::size_t at = 0;
    while ((at = page.find(before, at)) != std::string::npos) {
        const std::size_t name_end = page.find(after, at);
        Shown shown;
        shown.name = page.substr(at + before.size(), name_end - at - before.size());
        at = name_end;
        shown.source = block(page, "```cpp", at);
        shown.output = block(page, "```text", at);
        programs.push_back(shown);
    }
    return programs;
}

}  // namespace

TEST(LibraryGuide, ShowsEveryExample) {
    std::vector<std::string> files;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(DOCUMENTS) + "/examples")) {
        files.push_back(entry.path().stem().string());
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> shown;
    for (const Shown& program : programs_of_the_guide()) {
        shown.push_back(program.name);
    }
    std::sort(shown.begin(), shown.end());
    EXPECT_EQ(shown, files);
    EXPECT_EQ(shown, (std::vector<std::string>{"buildid", "demangle", "filename", "safealloc",
                                               "signals"}));
}

TEST(LibraryGuide, ShowsTheSourcesAsTheyAre) {
    for (const Shown& program : programs_of_the_guide()) {
        EXPECT_EQ(program.source,
                  read_file(std::string(DOCUMENTS) + "/examples/" + program.name + ".cpp"));
    }
}

TEST(LibraryGuide, ShowsWhatTheProgramsPrint) {
    for (const Shown& program : programs_of_the_guide()) {
        const Finished run = run_program({std::string(EXAMPLES) + "/example_" + program.name});
        const bool dies = program.name == "signals";
        EXPECT_EQ(run.out, dies ? "" : program.output) << program.name;
        EXPECT_EQ(run.err, dies ? program.output : "") << program.name;
        EXPECT_EQ(run.status, dies ? 2 : 0) << program.name;
    }
}
