// Checked allocation, with the C library failing when the test says so and with no
// address space left.
#include "support/safealloc.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <string>

#include "support/filename.h"
#include "tests/support/child.h"
#include "tests/support/faults.h"

namespace {

constexpr const char* out_of_memory = "ERROR: out of memory\n";

// The next allocation fails.
void fail_next() {
    faults.failing_allocation = 1;
}

char* bytes_of(void* block) {
    return static_cast<char*>(block);
}

// Leaves the process `more` bytes of address space.
void limit_address_space(std::size_t more) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t size = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + more;
    const rlimit limit{size, size};
    setrlimit(RLIMIT_AS, &limit);
}

}  // namespace

TEST(SafeAlloc, GivesBlocksThatBelongToTheCaller) {
    char* const block = bytes_of(safemalloc(100));
    std::memset(block, 'x', 100);
    char* const grown = bytes_of(saferealloc(block, 10000));
    EXPECT_EQ(std::string(grown, 100), std::string(100, 'x'));
    char* const shrunk = bytes_of(saferealloc(grown, 3));
    EXPECT_EQ(std::string(shrunk, 3), "xxx");
    std::free(shrunk);
}

TEST(SafeAlloc, CallocZeroFillsCountTimesSizeBytes) {
    char* const block = bytes_of(safecalloc(30, 7));
    EXPECT_EQ(std::string(block, 210), std::string(210, '\0'));
    std::free(block);
}

TEST(SafeAlloc, ReallocOfNullAllocates) {
    faults.sizes.clear();
    faults.record = true;
    void* const block = saferealloc(nullptr, 4711);
    faults.record = false;
    EXPECT_EQ(faults.sizes, std::vector<std::size_t>{4711});
    std::memset(block, 'x', 4711);
    std::free(block);
}

TEST(SafeAlloc, ASizeOfZeroIsPassedOn) {
    faults.sizes.clear();
    faults.record = true;
    void* const block = safemalloc(0);
    faults.record = false;
    EXPECT_EQ(faults.sizes, std::vector<std::size_t>{0});
    EXPECT_NE(block, nullptr);
    std::free(block);
    void* const zeroes = safecalloc(0, 8);
    EXPECT_NE(zeroes, nullptr);
    std::free(zeroes);
}

// The C library frees the block and answers null, which counts as a failure.
TEST(SafeAllocDeathTest, ReallocToZeroAnsweredWithNullIsAFailure) {
    void* const probe = std::realloc(std::malloc(1), 0);
    if (probe != nullptr) {
        std::free(probe);
        GTEST_SKIP() << "this C library keeps a block of size 0";
    }
    EXPECT_EXIT(saferealloc(std::malloc(1), 0), testing::ExitedWithCode(1),
                testing::Eq(out_of_memory));
}

TEST(SafeAllocDeathTest, AFailureIsReportedAndEndsTheProcess) {
    EXPECT_EXIT((fail_next(), safemalloc(10)), testing::ExitedWithCode(1),
                testing::Eq(out_of_memory));
    EXPECT_EXIT((fail_next(), safecalloc(10, 10)), testing::ExitedWithCode(1),
                testing::Eq(out_of_memory));
    EXPECT_EXIT((fail_next(), saferealloc(nullptr, 10)), testing::ExitedWithCode(1),
                testing::Eq(out_of_memory));
    void* const block = std::malloc(5);
    EXPECT_EXIT((fail_next(), saferealloc(block, 10)), testing::ExitedWithCode(1),
                testing::Eq(out_of_memory));
    std::free(block);
}

TEST(SafeAllocDeathTest, TheFirstFailureEndsTheProcessWhereverItComes) {
    for (int nth = 1; nth <= 5; ++nth) {
        const Finished run = in_child([nth] {
            faults.failing_allocation = nth;
            for (const char* const letter : {"a", "b", "c", "d", "e"}) {
                std::free(safemalloc(8));
                write_now(STDOUT_FILENO, letter);
            }
        });
        EXPECT_EQ(run.out, std::string("abcde").substr(0, static_cast<std::size_t>(nth) - 1));
        EXPECT_EQ(run.err, out_of_memory);
        EXPECT_EQ(run.status, 1);
    }
}

TEST(SafeAllocDeathTest, TheReportIsOneWriteOf21Bytes) {
    // A pipe in packet mode keeps writes apart.
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_DIRECT), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        fail_next();
        safemalloc(10);
        _exit(0);
    }
    close(ends[1]);
    std::array<char, 4096> packet{};
    ASSERT_EQ(read(ends[0], packet.data(), packet.size()), 21);
    EXPECT_EQ(std::string(packet.data(), 21), "ERROR: out of memory\n");
    EXPECT_EQ(read(ends[0], packet.data(), packet.size()), 0);
    close(ends[0]);
    int state = 0;
    ASSERT_EQ(waitpid(child, &state, 0), child);
    EXPECT_TRUE(WIFEXITED(state));
    EXPECT_EQ(WEXITSTATUS(state), 1);
}

TEST(SafeAllocDeathTest, OpenStreamsAreFlushedAndExitHandlersRun) {
    const Finished run = in_child([] {
        std::atexit([] { write_now(STDOUT_FILENO, "handler "); });
        std::fputs("stream", stdout);
        fail_next();
        safemalloc(10);
    });
    EXPECT_EQ(run.out, "handler stream");
    EXPECT_EQ(run.err, out_of_memory);
    EXPECT_EQ(run.status, 1);
}

namespace {
char* old_block = nullptr;
}

TEST(SafeAllocDeathTest, AFailingReallocLeavesTheOldBlockUntouched) {
    const Finished run = in_child([] {
        old_block = bytes_of(safemalloc(7));
        std::strcpy(old_block, "intact");
        std::atexit([] { write_now(STDOUT_FILENO, old_block); });
        fail_next();
        saferealloc(old_block, 600);
    });
    EXPECT_EQ(run.out, "intact");
    EXPECT_EQ(run.err, out_of_memory);
    EXPECT_EQ(run.status, 1);
}

TEST(SafeAllocDeathTest, ARequestBeyondAllMemoryFails) {
    if (under_address_sanitizer()) {
        GTEST_SKIP() << "the sanitizer ends the process itself";
    }
    // Not known to the compiler, which would warn.
    volatile std::size_t all = std::numeric_limits<std::size_t>::max();
    EXPECT_EXIT(safemalloc(all), testing::ExitedWithCode(1), testing::Eq(out_of_memory));
    EXPECT_EXIT(safecalloc(all, 2), testing::ExitedWithCode(1), testing::Eq(out_of_memory));
    EXPECT_EXIT(safecalloc(2, all), testing::ExitedWithCode(1), testing::Eq(out_of_memory));
    EXPECT_EXIT(saferealloc(nullptr, all), testing::ExitedWithCode(1), testing::Eq(out_of_memory));
    void* const block = std::malloc(5);
    EXPECT_EXIT(saferealloc(block, all), testing::ExitedWithCode(1), testing::Eq(out_of_memory));
    std::free(block);
}

TEST(SafeAllocDeathTest, WithoutAddressSpaceItFails) {
    if (under_address_sanitizer()) {
        GTEST_SKIP() << "the sanitizer needs the address space itself";
    }
    const Finished run = in_child([] {
        limit_address_space(std::size_t{64} << 20);
        void* const fits = safemalloc(std::size_t{16} << 20);
        void* const fits_too = safecalloc(16, std::size_t{1} << 20);
        std::printf("%d", fits != nullptr && fits_too != nullptr);
        safemalloc(std::size_t{256} << 20);
        std::printf("not reached");
    });
    EXPECT_EQ(run.out, "1");
    EXPECT_EQ(run.err, out_of_memory);
    EXPECT_EQ(run.status, 1);
}

TEST(SafeAllocDeathTest, WithNothingLeftAtAllItStillReports) {
    if (under_address_sanitizer()) {
        GTEST_SKIP() << "the sanitizer needs the address space itself";
    }
    const Finished run = in_child([] {
        limit_address_space(std::size_t{8} << 20);
        for (std::size_t size = std::size_t{1} << 20; size > 0; size /= 2) {
            while (void* volatile const block = std::malloc(size)) {
                static_cast<void>(block);
            }
        }
        safecalloc(1, 1);
    });
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, out_of_memory);
    EXPECT_EQ(run.status, 1);
}

TEST(FileNameDeathTest, WithNothingLeftAtAllTemporaryNamesAreOutOfMemory) {
    if (under_address_sanitizer()) {
        GTEST_SKIP() << "the sanitizer needs the address space itself";
    }
    const ScratchFolder scratch;
    const Finished run = in_child([&scratch] {
        unsetenv("TMPDIR");
        limit_address_space(std::size_t{8} << 20);
        for (std::size_t size = std::size_t{1} << 20; size > 0; size /= 2) {
            while (void* volatile const block = std::malloc(size)) {
                static_cast<void>(block);
            }
        }
        fn_tmpnam(nullptr, nullptr, scratch.path().c_str());
    });
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "ERROR: cannot create temporary file name; out of memory\n");
    EXPECT_EQ(run.status, 1);
}
