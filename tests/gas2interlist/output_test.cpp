// Output that the file system allows in one way only, and what signals do to it midway.
#include "gas2interlist/output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <string>

#include "gas2interlist/signals.h"
#include "tests/harness/program.h"

using namespace gas2interlist;

namespace {

// Root may do everything: for its scope the process is somebody who may not.
struct nobody {
    bool was_root = geteuid() == 0;

    nobody() {
        constexpr uid_t someone = 65534;
        EXPECT_TRUE(!was_root || seteuid(someone) == 0);
    }
    nobody(const nobody&) = delete;
    nobody& operator=(const nobody&) = delete;
    ~nobody() { EXPECT_TRUE(!was_root || seteuid(0) == 0); }
};

// What a shell's ">" would say; empty for success.
std::string write_as_nobody(const std::string& name) {
    const nobody somebody_else;
    std::string error;
    write_output(name, {.assembly = "new"}, {}, error);
    return error;
}

std::size_t entries(const std::string& folder) {
    const std::filesystem::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

}  // namespace

TEST(WriteOutput, AFileThatMayNotBeWrittenIsRefused) {
    const ScratchFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const std::string name = folder.write("old", "old");
    ASSERT_EQ(chmod(name.c_str(), 0444), 0);
    EXPECT_EQ(write_as_nobody(name), "Permission denied");
    EXPECT_EQ(folder.read("old"), "old");
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(WriteOutput, AFileIsWrittenInAFolderThatTakesNoOther) {
    const ScratchFolder folder;
    const std::string name = folder.write("old", "a longer text");
    ASSERT_EQ(chmod(name.c_str(), 0666), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    EXPECT_EQ(write_as_nobody(name), "");
    EXPECT_EQ(folder.read("old"), "new");
    EXPECT_EQ(write_as_nobody(folder / "other"), "Permission denied");
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(UnfinishedFile, IsRemovedAtTheEndOfItsScope) {
    const ScratchFolder folder;
    {
        unfinished_file beside;
        ASSERT_GE(beside.create(folder.path()), 0);
        EXPECT_EQ(entries(folder.path()), 1U);
    }
    EXPECT_EQ(entries(folder.path()), 0U);
    {
        unfinished_file beside;
        ASSERT_GE(beside.create(folder.path()), 0);
        ASSERT_TRUE(beside.move_to(folder / "done"));
    }
    EXPECT_TRUE(folder.has("done"));
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(UnfinishedFile, TakesANameThatNoOtherHas) {
    const ScratchFolder folder;
    const std::string taken =
        folder.write(".gas2interlist-" + std::to_string(getpid()) + "-0", "other");
    unfinished_file beside;
    ASSERT_GE(beside.create(folder.path()), 0);
    EXPECT_EQ(entries(folder.path()), 2U);
    EXPECT_EQ(read_file(taken), "other");
}

TEST(UnfinishedFile, ASignalRemovesItAndEndsTheProgram) {
    for (const int number : {SIGHUP, SIGINT, SIGTERM, SIGXCPU, SIGXFSZ}) {
        const ScratchFolder folder;
        const pid_t child = fork();
        if (child == 0) {
            const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
            dup2(nowhere, STDERR_FILENO);
            signal(number, SIG_DFL);  // the tests may be run where it is ignored
            catch_signals();
            unfinished_file beside;
            const int made = beside.create(folder.path());
            if (made < 0 || entries(folder.path()) != 1) {
                _exit(100);
            }
            raise(number);
            _exit(101);
        }
        int state = 0;
        ASSERT_EQ(waitpid(child, &state, 0), child);
        EXPECT_TRUE(WIFEXITED(state)) << number;
        EXPECT_EQ(WEXITSTATUS(state), 1) << number;
        EXPECT_EQ(entries(folder.path()), 0U) << number;
    }
}
