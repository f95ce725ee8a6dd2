// The positions that are known of the C files: of which file, how far apart, how many.
#include "interlist/source_position.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <vector>

#include "tests/harness/program.h"

namespace {

constexpr long distance = 1024;

struct stat status_of(int descriptor) {
    struct stat status {};
    fstat(descriptor, &status);
    return status;
}

// A file that exists only as long as it is open.
class open_file {
  public:
    open_file() : descriptor_(memfd_create("source", MFD_CLOEXEC)) { write("x"); }
    explicit open_file(const std::string& name) : descriptor_(open(name.c_str(), O_RDONLY)) {}
    open_file(open_file&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    ~open_file() { close(descriptor_); }
    open_file(const open_file&) = delete;
    open_file& operator=(const open_file&) = delete;
    open_file& operator=(open_file&&) = delete;

    void turn_to() const { turn_to_file(status_of(descriptor_)); }
    void write(const std::string& text) const {
        EXPECT_EQ(::write(descriptor_, text.data(), text.size()),
                  static_cast<ssize_t>(text.size()));
    }

  private:
    int descriptor_;
};

class SourcePosition : public testing::Test {
  protected:
    SourcePosition() { forget_positions(); }
    ~SourcePosition() override { forget_positions(); }

    // Enters the lines up to `last` that are not known yet, `size` bytes each.
    static void pass_lines(unsigned last, long size) {
        for (unsigned line = known_position(last).line + 1; line <= last; ++line) {
            if ((line - 1) * size >= next_wanted_position) {
                enter_position({line, (line - 1) * size});
            }
        }
    }

    // How far before a line of `size` bytes reading has to begin.
    static long way_to(unsigned line, long size) {
        const source_position known = known_position(line);
        EXPECT_EQ(known.position, (known.line - 1) * size);
        EXPECT_LE(known.line, line);
        return (line - 1) * size - known.position;
    }
};

}  // namespace

TEST_F(SourcePosition, TheBeginningIsAlwaysKnown) {
    const open_file file;
    file.turn_to();
    for (const unsigned line : {0U, 1U, 2U, 4294967295U}) {
        EXPECT_EQ(known_position(line).line, 1U);
        EXPECT_EQ(known_position(line).position, 0);
    }
}

TEST_F(SourcePosition, TheLastOneNotBehindTheLineIsGiven) {
    const open_file file;
    file.turn_to();
    enter_position({10, 2000});
    enter_position({20, 5000});
    EXPECT_EQ(known_position(9).line, 1U);
    EXPECT_EQ(known_position(10).line, 10U);
    EXPECT_EQ(known_position(10).position, 2000);
    EXPECT_EQ(known_position(19).line, 10U);
    EXPECT_EQ(known_position(20).position, 5000);
    EXPECT_EQ(known_position(4294967295U).position, 5000);
}

TEST_F(SourcePosition, ThoseThatLieCloseAreLeftOut) {
    const open_file file;
    file.turn_to();
    EXPECT_EQ(next_wanted_position, distance);
    enter_position({2, distance - 1});
    EXPECT_EQ(known_position(2).line, 1U);
    EXPECT_EQ(next_wanted_position, distance);
    enter_position({3, distance});
    EXPECT_EQ(known_position(3).line, 3U);
    EXPECT_EQ(next_wanted_position, 2 * distance);
    enter_position({4, 2 * distance - 1});
    EXPECT_EQ(known_position(4).line, 3U);
    EXPECT_EQ(next_wanted_position, 2 * distance);
    enter_position({5, 2 * distance});
    EXPECT_EQ(known_position(5).line, 5U);
}

TEST_F(SourcePosition, ThoseBetweenKnownOnesAreLeftOut) {
    const open_file file;
    file.turn_to();
    enter_position({10, 10 * distance});
    file.turn_to();
    enter_position({5, 5 * distance});
    EXPECT_EQ(known_position(5).line, 1U);
    EXPECT_EQ(next_wanted_position, 11 * distance);
}

TEST_F(SourcePosition, AFileIsKnownAgain) {
    const open_file one;
    const open_file other;
    one.turn_to();
    enter_position({10, 2000});
    other.turn_to();
    EXPECT_EQ(known_position(10).line, 1U);
    enter_position({20, 3000});
    one.turn_to();
    EXPECT_EQ(known_position(30).line, 10U);
    enter_position({30, 9000});
    other.turn_to();
    EXPECT_EQ(known_position(30).line, 20U);
    one.turn_to();
    EXPECT_EQ(known_position(30).line, 30U);
}

TEST_F(SourcePosition, AFileThatHasChangedIsAnotherOne) {
    const open_file file;
    file.turn_to();
    enter_position({10, 2000});
    file.write("more");
    file.turn_to();
    EXPECT_EQ(known_position(10).line, 1U);
}

TEST_F(SourcePosition, NothingIsKeptOfAPipe) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    turn_to_file(status_of(ends[0]));
    EXPECT_GT(next_wanted_position, 1L << 60);
    EXPECT_EQ(known_position(10).line, 1U);
    close(ends[0]);
    close(ends[1]);
}

TEST_F(SourcePosition, NothingIsKnownOfNoFile) {
    const open_file file;
    file.turn_to();
    enter_position({10, 2000});
    turn_to_file({});
    EXPECT_EQ(known_position(10).line, 1U);
    EXPECT_GT(next_wanted_position, 1L << 60);
}

TEST_F(SourcePosition, ALargeFileIsCoveredAllOver) {
    constexpr unsigned lines = 3000000;
    constexpr long size = 40;
    const open_file file;
    file.turn_to();
    pass_lines(lines, size);
    for (unsigned line = 1; line <= lines; line += 97) {
        EXPECT_LE(way_to(line, size), 128 * distance);
    }
    // 120 MB over at most 8192 positions.
    EXPECT_LE(way_to(lines, size), 32 * distance);
}

TEST_F(SourcePosition, FilesOfAllSizesShareTheTable) {
    constexpr long size = 100;
    std::vector<open_file> files(3000);
    // Function by function in each of the files in turn, the first being large.
    for (unsigned round = 1; round <= 5; ++round) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            files[i].turn_to();
            pass_lines(i == 0 ? 40000 * round : 20 * round, size);
        }
    }
    files[0].turn_to();
    long longest = 0;
    for (unsigned line = 1; line <= 200000; line += 7) {
        longest = std::max(longest, way_to(line, size));
    }
    EXPECT_LE(longest, 32 * distance);
    for (const open_file& file : files) {
        file.turn_to();
        EXPECT_LE(way_to(60, size), 6000);
    }
}

TEST_F(SourcePosition, WhatIsKnownStaysTrueWhileTheTableIsThinnedOut) {
    std::vector<open_file> files(40);
    for (unsigned round = 1; round <= 10; ++round) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            const long size = 30 + static_cast<long>(i);
            files[i].turn_to();
            pass_lines(20000 * round, size);
            for (unsigned line = 1; line <= 20000 * round; line += 1009) {
                EXPECT_LE(way_to(line, size), 256 * distance);
            }
        }
    }
}

TEST_F(SourcePosition, AFileThatIsLeftOutGivesItsPlaceToNone) {
    std::vector<open_file> files(1100);
    const auto size_of = [](std::size_t i) { return 40 + static_cast<long>(i % 50); };
    for (std::size_t i = 0; i < files.size(); ++i) {
        files[i].turn_to();
        const long bytes = i % 3 == 0 ? 8000 : 1500;
        pass_lines(static_cast<unsigned>(bytes / size_of(i)), size_of(i));
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        files[i].turn_to();
        EXPECT_LE(way_to(90, size_of(i)), 8000) << i;
    }
}

TEST_F(SourcePosition, WhatIsForgottenIsNotKnownAgain) {
    const open_file file;
    file.turn_to();
    enter_position({10, 2000});
    forget_positions();
    file.turn_to();
    EXPECT_EQ(known_position(10).line, 1U);
}
