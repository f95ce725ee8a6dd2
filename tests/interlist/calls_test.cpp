// Reads and writes that the system answers otherwise than usual: interrupted, short, empty;
// and what a signal handler finds in the midst of one.
#include <gtest/gtest.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <string>
#include <string_view>

#include "interlist/input.h"
#include "interlist/output.h"
#include "interlist/source_file.h"
#include "interlist/state.h"
#include "tests/harness/program.h"
#include "tests/interlist/fresh_state.h"

// The linker leads every call in this program here.
extern "C" {
ssize_t __real_write(int descriptor, const void* from, std::size_t size);
ssize_t __real_pread(int descriptor, void* to, std::size_t size, off_t offset);
ssize_t __wrap_write(int descriptor, const void* from, std::size_t size);
ssize_t __wrap_pread(int descriptor, void* to, std::size_t size, off_t offset);
}

namespace {

// What stands in for the next call, which it may make or not.
std::function<ssize_t(int, std::string_view)> next_write;
std::function<ssize_t(int, char*, std::size_t, off_t)> next_pread;
std::size_t bytes_read = 0;

ssize_t interrupted() {
    errno = EINTR;
    return -1;
}

class Writing : public testing::Test {
  protected:
    Writing() {
        EXPECT_EQ(pipe(ends), 0);
        attach_output(output, ends[1]);
    }
    ~Writing() override {
        next_write = nullptr;
        close(ends[0]);
        if (output.descriptor >= 0) {
            close(ends[1]);
        }
    }

    // What has come through the pipe.
    std::string received() {
        close(ends[1]);
        output.descriptor = -1;
        std::string text(64, '\0');
        const ssize_t count = read(ends[0], text.data(), text.size());
        text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return text;
    }

    int ends[2] = {-1, -1};
    char buffer[8] = {};
    output_stream output{.buffer = buffer, .size = sizeof buffer};
};

class WritingAFile : public testing::Test {
  protected:
    WritingAFile() : file(std::fopen((folder / "x").c_str(), "w")) {
        attach_output(output, fileno(file));
    }
    ~WritingAFile() override { std::fclose(file); }

    ScratchFolder folder;
    FILE* file;
    char buffer[8] = {};
    output_stream output{.buffer = buffer, .size = sizeof buffer};
};

}  // namespace

ssize_t __wrap_write(int descriptor, const void* from, std::size_t size) {
    if (const auto call = std::exchange(next_write, nullptr)) {
        return call(descriptor, {static_cast<const char*>(from), size});
    }
    return __real_write(descriptor, from, size);
}

ssize_t __wrap_pread(int descriptor, void* to, std::size_t size, off_t offset) {
    if (const auto call = std::exchange(next_pread, nullptr)) {
        return call(descriptor, static_cast<char*>(to), size, offset);
    }
    const ssize_t count = __real_pread(descriptor, to, size, offset);
    bytes_read += static_cast<std::size_t>(std::max(count, ssize_t{0}));
    return count;
}

TEST_F(Writing, AWriteThatIsInterruptedIsTriedAgain) {
    next_write = [](int, std::string_view) { return interrupted(); };
    add_text(output, "abc");
    EXPECT_TRUE(flush_output(output));
    EXPECT_EQ(received(), "abc");
}

TEST_F(Writing, AShortWriteGoesOnWhereItEnded) {
    next_write = [](int to, std::string_view text) {
        return __real_write(to, text.data(), text.size() - 1);
    };
    add_text(output, "abc");
    EXPECT_TRUE(flush_output(output));
    EXPECT_EQ(received(), "abc");
}

TEST_F(Writing, AWriteThatTakesNothingFails) {
    next_write = [](int, std::string_view) {
        errno = EINTR;  // of an earlier call
        return ssize_t{0};
    };
    add_text(output, "abc");
    EXPECT_FALSE(flush_output(output));
    EXPECT_EQ(received(), "");
}

TEST_F(Writing, WhatAWriteToAPipeHeldIsLetGoOf) {
    next_write = [this](int to, std::string_view text) {
        const ssize_t count = __real_write(to, text.data(), text.size());
        rescue_output(output);
        return count;
    };
    add_text(output, "abc");
    EXPECT_TRUE(flush_output(output));
    EXPECT_EQ(received(), "abc");
}

TEST_F(Writing, WhatNoWriteHasHeldIsRescued) {
    add_text(output, "abc");
    EXPECT_TRUE(flush_output(output));
    add_text(output, "def");
    rescue_output(output);
    EXPECT_EQ(received(), "abcdef");
}

TEST_F(WritingAFile, WhatAWriteHasLeftIsRescuedAtEachByte) {
    for (std::size_t written = 0; written <= 3; ++written) {
        next_write = [&](int to, std::string_view text) {
            const ssize_t count = written == 0 ? 0 : __real_write(to, text.data(), written);
            rescue_output(output);
            return count == 0 ? ssize_t{-1} : static_cast<ssize_t>(text.size());
        };
        EXPECT_EQ(ftruncate(fileno(file), 0), 0);
        EXPECT_EQ(lseek(fileno(file), 0, SEEK_SET), 0);
        attach_output(output, fileno(file));
        add_text(output, "abc");
        flush_output(output);
        EXPECT_EQ(folder.read("x"), "abc") << written;
    }
}

TEST_F(WritingAFile, WhatWasWrittenBeforeIsNotRescuedAgain) {
    add_text(output, "abcdefgh");
    add_text(output, "ij");
    next_write = [&](int to, std::string_view text) {
        const ssize_t count = __real_write(to, text.data(), 1);
        rescue_output(output);
        return count == 1 ? static_cast<ssize_t>(text.size()) : count;
    };
    EXPECT_TRUE(flush_output(output));
    EXPECT_EQ(folder.read("x"), "abcdefghij");
}

TEST(Reading, AReadThatIsInterruptedIsTriedAgain) {
    const ScratchFolder folder;
    folder.write("x", "abc\n");
    FILE* const file = std::fopen((folder / "x").c_str(), "r");
    char window[64];
    input_stream input{.window = window, .size = sizeof window};
    attach_input(input, file);
    next_pread = [](int, char*, std::size_t, off_t) { return interrupted(); };
    std::string_view line;
    EXPECT_TRUE(next_piece(input, 10, line));
    EXPECT_EQ(line, "abc\n");
    EXPECT_FALSE(input.failed);
    std::fclose(file);
}

TEST(Reading, AShortReadIsNotTheEnd) {
    const ScratchFolder folder;
    folder.write("x", "abc\n");
    FILE* const file = std::fopen((folder / "x").c_str(), "r");
    char window[64];
    input_stream input{.window = window, .size = sizeof window};
    attach_input(input, file);
    next_pread = [](int from, char* to, std::size_t, off_t offset) {
        return __real_pread(from, to, 1, offset);
    };
    std::string_view line;
    EXPECT_TRUE(next_piece(input, 10, line));
    EXPECT_EQ(line, "abc\n");
    std::fclose(file);
}

TEST(Reading, LinesBehindALongOneThatWasListedAreJumpedTo) {
    std::string text(20000, 'x');
    for (int i = 1; i <= 40000; ++i) {
        text.append("\nline ").append(std::to_string(i));
    }
    const ScratchFolder folder;
    start_afresh();
    open_cfile(folder.write("x.c", text).c_str());
    go_to_line(39000);
    go_to_line(1);
    for (int piece = 1; piece <= 2; ++piece) {
        read_source_line(16377);
        line_is_done();
    }
    bytes_read = 0;
    go_to_line(39000);
    read_source_line(100);
    EXPECT_STREQ(in_rec, "line 38998\n");
    EXPECT_LT(bytes_read, text.size() / 4);
    start_afresh();
}
