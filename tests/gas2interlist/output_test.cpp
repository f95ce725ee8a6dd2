// Output that the file system allows in one way only, and what signals do to it and to
// reports midway.
#include "gas2interlist/output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <filesystem>
#include <string>

#include "gas2interlist/report.h"
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

TEST(UnfinishedFile, IsNotMadeUnderANameThatWasCutShort) {
    std::string folder = ".";
    while (folder.size() < PATH_MAX) {
        folder += "/.";
    }
    unfinished_file beside;
    EXPECT_EQ(beside.create(folder), -1);
    EXPECT_EQ(errno, ENAMETOOLONG);
}

// A signal interrupts a write that waits, which has written a part by then.
TEST(Report, IsWrittenOnWhereAWriteStopped) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const auto capacity = static_cast<std::size_t>(fcntl(ends[1], F_SETPIPE_SZ, 4096));
    std::string text;
    for (int i = 0; text.size() < 30000; ++i) {
        text += std::to_string(i) + ' ';
    }
    const pid_t child = fork();
    if (child == 0) {
        struct sigaction ignoring {};
        ignoring.sa_handler = [](int) {};
        sigaction(SIGUSR1, &ignoring, nullptr);
        dup2(ends[1], STDERR_FILENO);
        report({text});
        _exit(0);
    }
    close(ends[1]);
    for (int filled = 0; static_cast<std::size_t>(filled) < capacity; sched_yield()) {
        ASSERT_EQ(ioctl(ends[0], FIONREAD, &filled), 0);
    }
    for (int i = 0; i < 100; ++i) {
        kill(child, SIGUSR1);
        sched_yield();
    }
    std::string read_back;
    std::array<char, 4096> block;
    for (ssize_t count = 0; (count = read(ends[0], block.data(), block.size())) > 0;) {
        read_back.append(block.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(read_back, "gas2interlist: " + text + "\n");
}
