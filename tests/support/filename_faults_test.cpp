// The file-name functions when the C library fails: without memory, across devices
// that the machine need not have, with streams that fail at a chosen call; and what
// they ask of it.
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/filename.h"
#include "tests/support/child.h"
#include "tests/support/faults.h"

namespace {

using Trace = std::vector<std::string>;

// Every test starts with a C library that works.
class FileNameFaults : public testing::Test {
  protected:
    FileNameFaults() { faults = Faults(); }
    ~FileNameFaults() override { faults = Faults(); }
};

using FileNameFaultsDeathTest = FileNameFaults;

std::vector<std::size_t> sizes_of_build(const char* dir, const char* base, const char* ext) {
    faults.sizes.clear();
    faults.record = true;
    char* const name = fn_build(nullptr, dir, base, ext);
    faults.record = false;
    std::free(name);
    return faults.sizes;
}

// Copies a file of `size` bytes to "to" in `scratch`, as if that were another device,
// and gives fn_rename's result; the trace tells what it did.
int copy_of(std::size_t size, const ScratchFolder& scratch) {
    const std::string from = scratch.write("from", std::string(size, 'x'));
    const std::string to = scratch / "to";
    faults.rename_error = EXDEV;
    faults.record = true;
    const int result = fn_rename(from.c_str(), to.c_str());
    faults.record = false;
    return result;
}

std::string prefix_of(pid_t pid) {
    faults.pid = pid;
    char* const name = fn_tmpnam(nullptr, nullptr, nullptr);
    const std::string last = std::string(name).substr(std::string(name).rfind('/') + 1);
    std::free(name);
    return last.substr(0, 5);
}

}  // namespace

TEST_F(FileNameFaults, BuildAllocatesTheLengthsOneMoreForEachPartAndOne) {
    using Sizes = std::vector<std::size_t>;
    EXPECT_EQ(sizes_of_build("a", "b", "c"), Sizes{7});
    EXPECT_EQ(sizes_of_build("dir/", "base", ".ext"), Sizes{16});
    EXPECT_EQ(sizes_of_build("", "", ""), Sizes{4});
    EXPECT_EQ(sizes_of_build("a", nullptr, nullptr), Sizes{3});
    EXPECT_EQ(sizes_of_build(nullptr, "b", nullptr), Sizes{3});
    EXPECT_EQ(sizes_of_build(nullptr, nullptr, "c"), Sizes{3});
    EXPECT_EQ(sizes_of_build(nullptr, "", ""), Sizes{3});
    EXPECT_EQ(sizes_of_build(nullptr, nullptr, nullptr), Sizes{1});
}

TEST_F(FileNameFaults, BuildIntoADestinationAllocatesNothing) {
    std::array<char, 16> buffer{};
    faults.record = true;
    fn_build(buffer.data(), "a", "b", "c");
    faults.record = false;
    EXPECT_EQ(faults.sizes, std::vector<std::size_t>{});
}

TEST_F(FileNameFaults, WorkingDirAllocates501Bytes) {
    faults.record = true;
    char* const area = fn_get_working_dir(nullptr);
    faults.record = false;
    std::free(area);
    EXPECT_EQ(faults.sizes, std::vector<std::size_t>{501});
}

TEST_F(FileNameFaultsDeathTest, WithoutMemoryTheProcessEnds) {
    EXPECT_EXIT((faults.failing_allocation = 1, fn_build(nullptr, "a", "b", "c")),
                testing::ExitedWithCode(1), testing::Eq("ERROR: out of memory\n"));
    EXPECT_EXIT((faults.failing_allocation = 1, fn_realname("a")), testing::ExitedWithCode(1),
                testing::Eq("ERROR: out of memory\n"));
    EXPECT_EXIT((faults.failing_allocation = 1, fn_get_working_dir(nullptr)),
                testing::ExitedWithCode(1), testing::Eq("ERROR: out of memory\n"));
}

TEST_F(FileNameFaultsDeathTest, TheFirstFailureEndsTheProcessWhereverItComes) {
    for (int nth = 1; nth <= 3; ++nth) {
        const Finished run = in_child([nth] {
            faults.failing_allocation = nth;
            std::free(fn_build(nullptr, "a", "b", "c"));
            std::free(fn_realname("a"));
            std::free(fn_get_working_dir(nullptr));
        });
        EXPECT_EQ(run.err, "ERROR: out of memory\n") << nth;
        EXPECT_EQ(run.status, 1) << nth;
    }
}

TEST_F(FileNameFaultsDeathTest, ATemporaryNameWithoutMemory) {
    EXPECT_EXIT((faults.failing_allocation = 1, fn_tmpnam(nullptr, nullptr, nullptr)),
                testing::ExitedWithCode(1),
                testing::Eq("ERROR: cannot create temporary file name; out of memory\n"));
}

// Folders that are there, but too long for a name in them.
TEST_F(FileNameFaultsDeathTest, AnErrorFromBeforeIsNotTakenForTheCause) {
    std::string folder = "/";
    while (folder.size() < 4090) {
        folder += "./";
    }
    unsetenv("TMPDIR");
    errno = ENOMEM;
    EXPECT_EXIT(
        fn_tmpnam(nullptr, nullptr, folder.c_str()), testing::ExitedWithCode(1),
        testing::Eq("ERROR: cannot create temporary file name; check directory permissions\n"));
}

TEST_F(FileNameFaults, ATemporaryNameClearsTheErrorFromBefore) {
    errno = ENOMEM;
    std::free(fn_tmpnam(nullptr, nullptr, nullptr));
    EXPECT_EQ(errno, 0);
}

TEST_F(FileNameFaults, ATemporaryNameInADestinationLeavesNoAllocationBehind) {
    // Seen by the leak checkers.
    std::array<char, 4096> buffer{};
    EXPECT_EQ(fn_tmpnam(buffer.data(), nullptr, nullptr), buffer.data());
    EXPECT_NE(buffer[0], '\0');
}

TEST_F(FileNameFaults, TheTemporaryPrefixIsTheProcessIdInBase62) {
    EXPECT_EQ(prefix_of(1), "Ze001");
    EXPECT_EQ(prefix_of(9), "Ze009");
    EXPECT_EQ(prefix_of(10), "Ze00a");
    EXPECT_EQ(prefix_of(35), "Ze00z");
    EXPECT_EQ(prefix_of(36), "Ze00A");
    EXPECT_EQ(prefix_of(61), "Ze00Z");
    EXPECT_EQ(prefix_of(62), "Ze010");
    EXPECT_EQ(prefix_of(3843), "Ze0ZZ");
    EXPECT_EQ(prefix_of(3844), "Ze100");
    EXPECT_EQ(prefix_of(12345), "Ze3d7");
    EXPECT_EQ(prefix_of(238327), "ZeZZZ");
}

TEST_F(FileNameFaults, TheTemporaryPrefixKeepsTheLowestThreeDigits) {
    EXPECT_EQ(prefix_of(238328), "Ze000");
    EXPECT_EQ(prefix_of(4194304), "ZeB84");
    EXPECT_EQ(prefix_of(2147483647), "ZeCB1");
}

TEST_F(FileNameFaults, OnlyAnotherDeviceIsCopiedTo) {
    const ScratchFolder scratch;
    const std::string from = scratch.write("from", "text");
    for (const int error : {EACCES, EPERM, ENOENT, EBUSY, ENOSPC, EROFS, EINTR}) {
        faults.rename_error = error;
        faults.record = true;
        EXPECT_EQ(fn_rename(from.c_str(), (scratch / "to").c_str()), 0);
        faults.record = false;
        EXPECT_EQ(faults.trace, Trace{});
    }
    EXPECT_FALSE(scratch.has("to"));
}

TEST_F(FileNameFaults, ACopyGoesInChunksOf1024Bytes) {
    const ScratchFolder scratch;
    EXPECT_EQ(copy_of(2500, scratch), 1);
    EXPECT_EQ(faults.trace,
              (Trace{"open rb", "open wb", "read 1024", "write 1024", "read 1024", "write 1024",
                     "read 452", "write 452", "read 0", "close 1", "close 2"}));
    EXPECT_EQ(scratch.read("to"), std::string(2500, 'x'));
    EXPECT_EQ(scratch.read("from"), std::string(2500, 'x'));
}

TEST_F(FileNameFaults, AnEmptyFileIsCopied) {
    const ScratchFolder scratch;
    EXPECT_EQ(copy_of(0, scratch), 1);
    EXPECT_EQ(faults.trace, (Trace{"open rb", "open wb", "read 0", "close 1", "close 2"}));
    EXPECT_EQ(scratch.read("to"), "");
}

TEST_F(FileNameFaults, AShortWriteStopsTheCopyAndLeavesItsPart) {
    const ScratchFolder scratch;
    faults.failing_write = 2;
    EXPECT_EQ(copy_of(5000, scratch), 0);
    EXPECT_EQ(faults.trace, (Trace{"open rb", "open wb", "read 1024", "write 1024", "read 1024",
                                   "write 1024", "close 1", "close 2"}));
    EXPECT_EQ(scratch.read("to"), std::string(2047, 'x'));
    EXPECT_EQ(scratch.read("from"), std::string(5000, 'x'));
}

TEST_F(FileNameFaults, AFailingCloseOfTheSourceStillClosesTheDestination) {
    const ScratchFolder scratch;
    faults.failing_close = 1;
    EXPECT_EQ(copy_of(10, scratch), 0);
    EXPECT_EQ(faults.trace,
              (Trace{"open rb", "open wb", "read 10", "write 10", "read 0", "close 1", "close 2"}));
    EXPECT_EQ(scratch.read("to"), std::string(10, 'x'));
}

TEST_F(FileNameFaults, AFailingCloseOfTheDestinationIsAFailure) {
    const ScratchFolder scratch;
    faults.failing_close = 2;
    EXPECT_EQ(copy_of(10, scratch), 0);
    EXPECT_EQ(faults.trace,
              (Trace{"open rb", "open wb", "read 10", "write 10", "read 0", "close 1", "close 2"}));
}

TEST_F(FileNameFaults, ASourceThatCannotBeOpenedEndsTheCopy) {
    const ScratchFolder scratch;
    faults.rename_error = EXDEV;
    faults.record = true;
    EXPECT_EQ(fn_rename((scratch / "missing").c_str(), (scratch / "to").c_str()), 0);
    faults.record = false;
    EXPECT_EQ(faults.trace, Trace{"open rb failed"});
    EXPECT_FALSE(scratch.has("to"));
}

TEST_F(FileNameFaults, ADestinationThatCannotBeOpenedClosesTheSource) {
    const ScratchFolder scratch;
    const std::string from = scratch.write("from", "text");
    faults.rename_error = EXDEV;
    faults.record = true;
    EXPECT_EQ(fn_rename(from.c_str(), (scratch / "nofolder/to").c_str()), 0);
    faults.record = false;
    EXPECT_EQ(faults.trace, (Trace{"open rb", "open wb failed", "close 1"}));
    EXPECT_EQ(scratch.read("from"), "text");
}
