// The functions that ask the file system or change it, on real files: full devices,
// removed directories and a second file system where the machine has one.
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/filename.h"
#include "tests/support/child.h"

// There when the program runs with a leak checker.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" [[gnu::weak]] void __lsan_disable();
extern "C" [[gnu::weak]] void __lsan_enable();
// NOLINTEND(bugprone-reserved-identifier)

namespace fs = std::filesystem;

namespace {

std::string of(std::size_t count, char c) {
    return std::string(count, c);
}

// A folder on another file system than the scratch folders, removed at the end.
class OtherDevice {
  public:
    explicit OtherDevice(const std::string& here) {
        std::string name = "/dev/shm/interlist-test-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            return;
        }
        path_ = name;
        struct stat mine {};
        struct stat theirs {};
        separate_ = stat(path_.c_str(), &mine) == 0 && stat(here.c_str(), &theirs) == 0 &&
                    mine.st_dev != theirs.st_dev;
    }
    ~OtherDevice() {
        if (!path_.empty()) {
            std::error_code ignored;
            fs::remove_all(path_, ignored);
        }
    }
    OtherDevice(const OtherDevice&) = delete;
    OtherDevice& operator=(const OtherDevice&) = delete;

    bool separate() const { return separate_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
    bool separate_ = false;
};

// Every byte value, in no period of the copy's chunks.
std::string bytes(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += static_cast<char>(i % 257 * 31);
    }
    return text;
}

void write_file(const std::string& name, const std::string& contents) {
    FILE* const file = std::fopen(name.c_str(), "wb");
    ASSERT_NE(file, nullptr) << name;
    ASSERT_EQ(std::fwrite(contents.data(), 1, contents.size(), file), contents.size());
    ASSERT_EQ(std::fclose(file), 0);
}

bool exists(const std::string& name) {
    return fn_exists(name.c_str()) == 1;
}
bool is_empty(const std::string& name) {
    return fn_is_empty(name.c_str());
}
int same(const std::string& a, const std::string& b) {
    return fn_samefile(a.c_str(), b.c_str());
}
int rename_file(const std::string& a, const std::string& b) {
    return fn_rename(a.c_str(), b.c_str());
}

std::size_t open_descriptors() {
    std::size_t count = 0;
    for (int fd = 0; fd < 1024; ++fd) {
        count += fcntl(fd, F_GETFD) != -1 ? 1 : 0;
    }
    return count;
}

// Begins a listing. Its stream is left open on purpose, which is no leak to report.
const char* first_entry(const std::string& dir, int* flag) {
    if (__lsan_disable != nullptr) {
        __lsan_disable();
    }
    const char* const entry = fn_get_dir_entry(dir.c_str(), flag);
    if (__lsan_enable != nullptr) {
        __lsan_enable();
    }
    return entry;
}

// Makes a folder below `top` whose full name has `length` characters, enters it, and
// returns the name.
std::string enter_deep(const std::string& top, std::size_t length) {
    std::string full = top;
    EXPECT_EQ(chdir(top.c_str()), 0);
    while (full.size() < length) {
        // A last component needs two characters, so never leave a single one.
        std::size_t size = std::min<std::size_t>(length - full.size() - 1, 100);
        if (length - full.size() - 1 - size == 1) {
            --size;
        }
        const std::string component = of(size, 'd');
        EXPECT_EQ(mkdir(component.c_str(), 0755), 0);
        EXPECT_EQ(chdir(component.c_str()), 0);
        full += "/" + component;
    }
    return full;
}

}  // namespace

TEST(Exists, WhatCanBeExamined) {
    const ScratchFolder scratch;
    const std::string file = scratch.write("a.c", "x");
    EXPECT_TRUE(exists(file));
    EXPECT_TRUE(exists(scratch.path()));
    EXPECT_TRUE(exists("/dev/null"));
    fs::create_symlink("a.c", scratch / "link");
    EXPECT_TRUE(exists(scratch / "link"));
    scratch.write("\xff\x80", "");
    EXPECT_TRUE(exists(scratch / "\xff\x80"));
}

TEST(Exists, NotWhatCannot) {
    const ScratchFolder scratch;
    scratch.write("a.c", "x");
    EXPECT_FALSE(exists(scratch / "A.C"));
    EXPECT_FALSE(exists(""));
    EXPECT_FALSE(exists(scratch / "a.c/b"));
    EXPECT_FALSE(exists(of(300, 'n')));
    EXPECT_FALSE(exists(of(100000, 'n')));
    fs::create_symlink("nowhere", scratch / "dangling");
    EXPECT_FALSE(exists(scratch / "dangling"));
    fs::create_symlink("loop", scratch / "loop");
    EXPECT_FALSE(exists(scratch / "loop"));
}

TEST(Exists, NotWhatLiesInAFolderWithoutPermission) {
    const ScratchFolder scratch;
    scratch.write("closed/a.c", "");
    chmod(scratch.path().c_str(), 0755);
    chmod((scratch / "closed").c_str(), 0);
    const Finished run = in_child([&] {
        become_unprivileged();
        std::printf("%d %d", exists(scratch / "closed/a.c"), is_empty(scratch / "closed/a.c"));
    });
    EXPECT_EQ(run.out, "0 0");
    chmod((scratch / "closed").c_str(), 0755);
}

TEST(IsEmpty, OfAName) {
    const ScratchFolder scratch;
    EXPECT_TRUE(is_empty(scratch.write("empty", "")));
    EXPECT_FALSE(is_empty(scratch.write("byte", "x")));
    EXPECT_FALSE(is_empty(scratch / "missing"));
    EXPECT_FALSE(is_empty(""));
    EXPECT_FALSE(is_empty(scratch / "byte/below"));
    EXPECT_FALSE(is_empty(of(100000, 'n')));
    EXPECT_TRUE(is_empty("/dev/null"));
}

TEST(IsEmpty, OfAStream) {
    const ScratchFolder scratch;
    FILE* const file = std::fopen((scratch / "file").c_str(), "wb");
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file_is_empty(file));
    std::fputs("x", file);
    EXPECT_EQ(scratch.read("file"), "");
    EXPECT_FALSE(file_is_empty(file));
    EXPECT_EQ(scratch.read("file"), "x");
    std::fclose(file);
}

TEST(IsEmpty, AStreamWithoutAStatusIsNotEmpty) {
    std::array<char, 16> memory{};
    FILE* const in_memory = fmemopen(memory.data(), memory.size(), "w");
    ASSERT_NE(in_memory, nullptr);
    EXPECT_FALSE(file_is_empty(in_memory));
    std::fclose(in_memory);

    FILE* const torn = std::tmpfile();
    ASSERT_NE(torn, nullptr);
    EXPECT_TRUE(file_is_empty(torn));
    close(fileno(torn));
    EXPECT_FALSE(file_is_empty(torn));
    std::fclose(torn);
}

TEST(SameFile, NamesOfOneFile) {
    const ScratchFolder scratch;
    const std::string file = scratch.write("d/a.c", "");
    EXPECT_EQ(same(file, file), 1);
    EXPECT_EQ(same(file, scratch / "d/../d/./a.c"), 1);
    EXPECT_EQ(same(file, scratch / "d//a.c"), 1);
    fs::create_hard_link(file, scratch / "hard");
    EXPECT_EQ(same(file, scratch / "hard"), 1);
    fs::create_symlink("d/a.c", scratch / "soft");
    EXPECT_EQ(same(scratch / "soft", file), 1);
    EXPECT_EQ(same(scratch.path(), scratch / "d/.."), 1);
}

TEST(SameFile, DifferentFilesWithEqualContents) {
    const ScratchFolder scratch;
    EXPECT_EQ(same(scratch.write("a", "x"), scratch.write("b", "x")), 0);
    EXPECT_EQ(same(scratch / "a", scratch.path()), 0);
}

TEST(SameFile, AMissingFileIsNotEvenItself) {
    const ScratchFolder scratch;
    const std::string file = scratch.write("a", "");
    EXPECT_EQ(same(scratch / "missing", scratch / "missing"), 0);
    EXPECT_EQ(same(file, scratch / "missing"), 0);
    EXPECT_EQ(same(scratch / "missing", file), 0);
    EXPECT_EQ(same("", ""), 0);
    EXPECT_EQ(same(of(5000, 'n'), of(5000, 'n')), 0);
}

TEST(SameFile, AnInodeNumberOfAnotherDeviceIsAnotherFile) {
    // The roots of the kernel's own file systems share their numbers.
    struct stat proc {};
    struct stat sys {};
    if (stat("/proc", &proc) != 0 || stat("/sys", &sys) != 0 || proc.st_ino != sys.st_ino ||
        proc.st_dev == sys.st_dev) {
        GTEST_SKIP() << "no two devices here that share an inode number";
    }
    EXPECT_EQ(same("/proc", "/sys"), 0);
}

TEST(Delete, RemovesFilesAndEmptyFolders) {
    const ScratchFolder scratch;
    const std::string file = scratch.write("a", "x");
    EXPECT_EQ(fn_delete(file.c_str()), 0);
    EXPECT_FALSE(scratch.has("a"));
    fs::create_directory(scratch / "d");
    EXPECT_EQ(fn_delete((scratch / "d").c_str()), 0);
    EXPECT_FALSE(scratch.has("d"));
}

TEST(Delete, GivesTheFailureOfTheSystem) {
    const ScratchFolder scratch;
    scratch.write("d/a", "x");
    EXPECT_EQ(fn_delete((scratch / "missing").c_str()), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(fn_delete((scratch / "d").c_str()), -1);
    EXPECT_EQ(errno, ENOTEMPTY);
    EXPECT_EQ(fn_delete(""), -1);
    EXPECT_TRUE(scratch.has("d/a"));
}

TEST(WorkingDir, GoesIntoTheBufferOrANewArea) {
    const ScratchFolder scratch;
    const std::string folder = fs::canonical(scratch.path()).string();
    const Finished run = in_child([&] {
        fn_change_dir(folder.c_str());
        std::array<char, 500> buffer{};
        char* const area = fn_get_working_dir(buffer.data());
        std::printf("%d %s\n", area == buffer.data(), area);
        char* const fresh = fn_get_working_dir(nullptr);
        std::printf("%s\n", fresh);
        std::free(fresh);
    });
    EXPECT_EQ(run.out, "1 " + folder + "\n" + folder + "\n");
    EXPECT_EQ(run.err, "");
}

TEST(WorkingDir, OfUpTo499CharactersFits) {
    const ScratchFolder scratch;
    const std::string top = fs::canonical(scratch.path()).string();
    const Finished run = in_child([&] {
        const std::string deep = enter_deep(top, 499);
        std::array<char, 500> buffer{};
        std::printf("%d", fn_get_working_dir(buffer.data()) == deep);
        char* const fresh = fn_get_working_dir(nullptr);
        std::printf("%d", fresh == deep);
        std::free(fresh);
    });
    EXPECT_EQ(run.out, "11");
    EXPECT_EQ(run.err, "");
}

TEST(WorkingDir, OfMoreCharactersIsReported) {
    const ScratchFolder scratch;
    const std::string top = fs::canonical(scratch.path()).string();
    for (const std::size_t length : {std::size_t{500}, std::size_t{1000}, std::size_t{6000}}) {
        fs::create_directory(scratch / std::to_string(length));
        const Finished run = in_child([&] {
            enter_deep(top + "/" + std::to_string(length), length);
            const auto buffer = std::make_unique<char[]>(500);
            std::printf("%d", fn_get_working_dir(buffer.get()) == buffer.get());
            char* const fresh = fn_get_working_dir(nullptr);
            std::printf("%d", fresh != nullptr);
            std::free(fresh);
        });
        EXPECT_EQ(run.out, "11");
        EXPECT_EQ(run.err,
                  "getcwd in fn_get_working_dir: Numerical result out of range\n"
                  "getcwd in fn_get_working_dir: Numerical result out of range\n");
        EXPECT_EQ(run.status, 0);
    }
}

TEST(WorkingDir, ThatWasRemovedIsReported) {
    const ScratchFolder scratch;
    const Finished run = in_child([&] {
        fs::create_directory(scratch / "gone");
        fn_change_dir((scratch / "gone").c_str());
        fs::remove(scratch / "gone");
        std::array<char, 500> buffer{};
        std::printf("%d", fn_get_working_dir(buffer.data()) == buffer.data());
        char* const fresh = fn_get_working_dir(nullptr);
        std::printf("%d", fresh != nullptr);
        std::free(fresh);
    });
    EXPECT_EQ(run.out, "11");
    EXPECT_EQ(run.err,
              "getcwd in fn_get_working_dir: No such file or directory\n"
              "getcwd in fn_get_working_dir: No such file or directory\n");
    EXPECT_EQ(run.status, 0);
}

TEST(ChangeDir, ChangesTheWorkingDirectory) {
    const ScratchFolder scratch;
    scratch.write("d/here", "");
    const Finished run = in_child([&] {
        fn_change_dir(scratch.path().c_str());
        fn_change_dir("d");
        fn_change_dir(nullptr);
        std::printf("%d", fn_exists("here"));
    });
    EXPECT_EQ(run.out, "1");
    EXPECT_EQ(run.err, "");
}

TEST(ChangeDir, ReportsAFailureAndReturns) {
    const ScratchFolder scratch;
    scratch.write("file", "");
    const Finished run = in_child([&] {
        fn_change_dir(scratch.path().c_str());
        fn_change_dir("missing");
        fn_change_dir("file");
        fn_change_dir("");
        fn_change_dir(of(5000, 'n').c_str());
        std::printf("%d", fn_exists("file"));
    });
    EXPECT_EQ(run.out, "1");
    EXPECT_EQ(run.err,
              "chdir in fn_change_dir: No such file or directory\n"
              "chdir in fn_change_dir: Not a directory\n"
              "chdir in fn_change_dir: No such file or directory\n"
              "chdir in fn_change_dir: File name too long\n");
    EXPECT_EQ(run.status, 0);
}

TEST(ChangeDir, WithoutPermissionIsReported) {
    const ScratchFolder scratch;
    fs::create_directory(scratch / "closed");
    chmod(scratch.path().c_str(), 0755);
    chmod((scratch / "closed").c_str(), 0);
    const Finished run = in_child([&] {
        become_unprivileged();
        fn_change_dir((scratch / "closed").c_str());
    });
    EXPECT_EQ(run.err, "chdir in fn_change_dir: Permission denied\n");
}

TEST(Rename, OnOneDeviceMovesTheFile) {
    const ScratchFolder scratch;
    const std::string from = scratch.write("from", "text");
    EXPECT_EQ(rename_file(from, scratch / "to"), 1);
    EXPECT_FALSE(scratch.has("from"));
    EXPECT_EQ(scratch.read("to"), "text");
}

TEST(Rename, OnOneDeviceReplacesTheDestination) {
    const ScratchFolder scratch;
    const std::string from = scratch.write("from", "new");
    const std::string to = scratch.write("to", "old");
    EXPECT_EQ(rename_file(from, to), 1);
    EXPECT_FALSE(scratch.has("from"));
    EXPECT_EQ(scratch.read("to"), "new");
}

TEST(Rename, AFailureOnOneDeviceCopiesNothing) {
    const ScratchFolder scratch;
    const std::string from = scratch.write("from", "text");
    fs::create_directory(scratch / "folder");
    EXPECT_EQ(rename_file(scratch / "missing", scratch / "to"), 0);
    EXPECT_EQ(rename_file(from, scratch / "folder"), 0);
    EXPECT_EQ(rename_file(from, scratch / "nofolder/to"), 0);
    EXPECT_EQ(rename_file(from, from + "/below"), 0);
    EXPECT_EQ(rename_file(from, ""), 0);
    EXPECT_EQ(rename_file("", scratch / "to"), 0);
    EXPECT_EQ(rename_file(from, scratch / of(300, 'n')), 0);
    EXPECT_EQ(scratch.read("from"), "text");
    EXPECT_FALSE(scratch.has("to"));
}

TEST(RenameAcrossDevices, CopiesAndLeavesTheSource) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    for (const std::size_t size : {0U, 1U, 1023U, 1024U, 1025U, 4096U, 5000U, 100000U}) {
        const std::string from = scratch.write("from", bytes(size));
        EXPECT_EQ(rename_file(from, other / "to"), 1) << size;
        EXPECT_EQ(read_file(from), bytes(size)) << size;
        EXPECT_EQ(read_file(other / "to"), bytes(size)) << size;
    }
}

TEST(RenameAcrossDevices, ReplacesALongerDestination) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    const std::string from = scratch.write("from", "new");
    write_file(other / "to", "much longer than that");
    EXPECT_EQ(rename_file(from, other / "to"), 1);
    EXPECT_EQ(read_file(other / "to"), "new");
    EXPECT_EQ(scratch.read("from"), "new");
}

TEST(RenameAcrossDevices, AMissingSourceMakesNoDestination) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    EXPECT_EQ(rename_file(scratch / "missing", other / "to"), 0);
    EXPECT_FALSE(exists(other / "to"));
}

TEST(RenameAcrossDevices, ADestinationThatCannotBeOpenedClosesTheSourceAgain) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    const std::string from = scratch.write("from", "text");
    fs::create_directory(other / "folder");
    const std::size_t open_before = open_descriptors();
    EXPECT_EQ(rename_file(from, other / "folder"), 0);
    EXPECT_EQ(open_descriptors(), open_before);
    EXPECT_EQ(scratch.read("from"), "text");
}

TEST(RenameAcrossDevices, AFullDeviceIsAFailure) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    // Never the device's own name: on one file system it would be replaced.
    fs::create_symlink("/dev/full", other / "full");
    const std::size_t open_before = open_descriptors();
    // A few bytes fail when the destination is closed, many when they are written.
    for (const std::size_t size : {1U, 1024U, 100000U}) {
        const std::string from = scratch.write("from", bytes(size));
        EXPECT_EQ(rename_file(from, other / "full"), 0) << size;
        EXPECT_EQ(scratch.read("from"), bytes(size)) << size;
        EXPECT_TRUE(fs::is_symlink(other / "full")) << size;
    }
    EXPECT_EQ(open_descriptors(), open_before);
}

TEST(RenameAcrossDevices, NothingToWriteSucceedsOnAFullDevice) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    fs::create_symlink("/dev/full", other / "full");
    EXPECT_EQ(rename_file(scratch.write("from", ""), other / "full"), 1);
}

TEST(RenameAcrossDevices, APartOfACopyStaysAfterAFailure) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    const std::string from = scratch.write("from", bytes(100000));
    const Finished run = in_child([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{20000, 20000};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::printf("%d", rename_file(from, other / "to"));
    });
    EXPECT_EQ(run.out, "0");
    EXPECT_EQ(read_file(other / "to"), bytes(20000));
    EXPECT_EQ(scratch.read("from"), bytes(100000));
}

TEST(RenameAcrossDevices, AReadThatFailsEndsTheCopyLikeTheEndOfTheFile) {
    const ScratchFolder scratch;
    const OtherDevice other(scratch.path());
    if (!other.separate()) {
        GTEST_SKIP() << "no second file system at /dev/shm";
    }
    fs::create_directory(scratch / "folder");
    EXPECT_EQ(rename_file(scratch / "folder", other / "to"), 1);
    EXPECT_EQ(read_file(other / "to"), "");
    EXPECT_TRUE(scratch.has("folder"));
}

TEST(DirEntry, ListsEveryEntryInTheSystemsOrder) {
    const ScratchFolder scratch;
    for (const char* name : {"b", "a", "C", "\xff\x80", "with blank", ".hidden"}) {
        scratch.write(name, "");
    }
    scratch.write("folder/below", "");
    std::vector<std::string> expected;
    DIR* const stream = opendir(scratch.path().c_str());
    ASSERT_NE(stream, nullptr);
    while (const dirent* entry = readdir(stream)) {
        expected.emplace_back(entry->d_name);
    }
    closedir(stream);

    std::vector<std::string> names;
    int flag = 77;
    const char* name = first_entry(scratch.path(), &flag);
    while (name != nullptr) {
        EXPECT_EQ(flag, 0);
        flag = 77;
        names.emplace_back(name);
        name = fn_get_dir_entry(nullptr, &flag);
    }
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(names, expected);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{".", "..", ".hidden", "C", "a", "b", "folder",
                                               "with blank", "\xff\x80"}));
}

TEST(DirEntry, WithoutAListingThereIsNone) {
    int flag = 77;
    EXPECT_EQ(fn_get_dir_entry(nullptr, &flag), nullptr);
    EXPECT_EQ(flag, 0);
}

TEST(DirEntry, AfterTheEndTheListingIsForgotten) {
    const ScratchFolder scratch;
    // The descriptor that the listing's stream is going to have.
    const int fd = dup(STDIN_FILENO);
    close(fd);
    int flag = 77;
    EXPECT_NE(first_entry(scratch.path(), &flag), nullptr);
    EXPECT_NE(fn_get_dir_entry(nullptr, &flag), nullptr);
    EXPECT_EQ(fn_get_dir_entry(nullptr, &flag), nullptr);
    EXPECT_EQ(fn_get_dir_entry(nullptr, &flag), nullptr);
    // Not even a stream that has entries again is read any more.
    EXPECT_EQ(lseek(fd, 0, SEEK_SET), 0);
    EXPECT_EQ(fn_get_dir_entry(nullptr, &flag), nullptr);
}

TEST(DirEntry, TheStreamIsLeftOpenAtTheEnd) {
    const ScratchFolder scratch;
    const std::size_t open_before = open_descriptors();
    int flag = 77;
    const char* name = first_entry(scratch.path(), &flag);
    while (name != nullptr) {
        name = fn_get_dir_entry(nullptr, &flag);
    }
    EXPECT_EQ(open_descriptors(), open_before + 1);
}

TEST(DirEntry, ANewListingTakesThePlaceOfTheOldOne) {
    const ScratchFolder scratch;
    scratch.write("first/1", "");
    scratch.write("second/2", "");
    int flag = 77;
    EXPECT_NE(first_entry(scratch / "first", &flag), nullptr);
    std::vector<std::string> names;
    const char* name = first_entry(scratch / "second", &flag);
    while (name != nullptr) {
        names.emplace_back(name);
        name = fn_get_dir_entry(nullptr, &flag);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{".", "..", "2"}));
}

TEST(DirEntry, AFolderThatCannotBeOpenedEndsTheListing) {
    const ScratchFolder scratch;
    scratch.write("file", "");
    for (const std::string& bad :
         {scratch / "missing", scratch / "file", std::string(), scratch / of(5000, 'n')}) {
        int flag = 77;
        EXPECT_NE(first_entry(scratch.path(), &flag), nullptr);
        flag = 77;
        EXPECT_EQ(first_entry(bad, &flag), nullptr);
        EXPECT_EQ(flag, 0);
        EXPECT_EQ(fn_get_dir_entry(nullptr, &flag), nullptr);
    }
}

TEST(DirEntry, WithoutPermissionThereIsNone) {
    const ScratchFolder scratch;
    fs::create_directory(scratch / "closed");
    chmod(scratch.path().c_str(), 0755);
    chmod((scratch / "closed").c_str(), 0);
    const Finished run = in_child([&] {
        become_unprivileged();
        int flag = 77;
        std::printf("%d", first_entry(scratch / "closed", &flag) == nullptr);
        std::printf("%d", flag);
    });
    EXPECT_EQ(run.out, "10");
    EXPECT_EQ(run.err, "");
}

TEST(DirEntry, ARemovedFolderHasNoEntries) {
    const ScratchFolder scratch;
    const Finished run = in_child([&] {
        fs::create_directory(scratch / "gone");
        fn_change_dir((scratch / "gone").c_str());
        fs::remove(scratch / "gone");
        int flag = 77;
        std::printf("%d", first_entry(".", &flag) == nullptr);
    });
    EXPECT_EQ(run.out, "1");
}

namespace {

// The temporary name that a child gets with TMPDIR as given (null: unset) and `dir`.
Finished temporary_name(const char* tmpdir, const char* dir) {
    return in_child([=] {
        if (tmpdir != nullptr) {
            setenv("TMPDIR", tmpdir, 1);
        } else {
            unsetenv("TMPDIR");
        }
        char* const name = fn_tmpnam(nullptr, nullptr, dir);
        std::fputs(name, stdout);
        std::free(name);
    });
}

// Whether `name` is `folder` and a last component of "Ze", three digits of the process
// id, and what the system adds, six more.
bool is_temporary_name(const std::string& name, const std::string& folder) {
    const std::string_view last = std::string_view(name).substr(name.rfind('/') + 1);
    return name.starts_with(folder + "/") && name.size() == folder.size() + 12 &&
           last.size() == 11 && last.starts_with("Ze") &&
           std::all_of(last.begin(), last.end(), [](unsigned char c) { return std::isalnum(c); });
}

}  // namespace

TEST(TemporaryName, LiesInTheFolderThatTMPDIRNames) {
    const ScratchFolder first;
    const ScratchFolder second;
    const Finished run = temporary_name(first.path().c_str(), second.path().c_str());
    EXPECT_PRED2(is_temporary_name, run.out, first.path());
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_PRED2(is_temporary_name, temporary_name(first.path().c_str(), nullptr).out,
                 first.path());
}

TEST(TemporaryName, LiesInTheGivenFolderWithoutTMPDIR) {
    const ScratchFolder scratch;
    EXPECT_PRED2(is_temporary_name, temporary_name(nullptr, scratch.path().c_str()).out,
                 scratch.path());
}

TEST(TemporaryName, LiesInTheGivenFolderWhenTMPDIRNamesNone) {
    const ScratchFolder scratch;
    const std::string file = scratch.write("file", "");
    const std::string missing = scratch / "missing";
    for (const std::string& tmpdir : {file, missing, std::string()}) {
        EXPECT_PRED2(is_temporary_name, temporary_name(tmpdir.c_str(), scratch.path().c_str()).out,
                     scratch.path());
    }
}

TEST(TemporaryName, LiesInTheSystemsFolderWithoutAnother) {
    if (!fs::is_directory(P_tmpdir)) {
        GTEST_SKIP() << "the system's folder for temporary files is missing";
    }
    EXPECT_PRED2(is_temporary_name, temporary_name(nullptr, nullptr).out, P_tmpdir);
    EXPECT_PRED2(is_temporary_name, temporary_name("/nowhere", "/nowhere").out, P_tmpdir);
}

// The C library's own function, which linkers warn of, is the standard.
TEST(TemporaryName, LiesWhereTheCLibraryPutsIt) {
    using name_function = char* (*)(const char*, const char*);
    const auto tempnam_of_system = reinterpret_cast<name_function>(dlsym(RTLD_DEFAULT, "tempnam"));
    if (tempnam_of_system == nullptr) {
        GTEST_SKIP() << "the C library's symbols cannot be looked up";
    }
    const ScratchFolder scratch;
    const std::string file = scratch.write("file", "");
    fs::create_directory_symlink(scratch.path(), scratch / "link");
    const std::string some = scratch.path();
    const std::string folders[] = {
        some, some + "/",  some + "///", scratch / "link", some + "//.//", file, "/", "//",
        "",   "/nowhere/", "."};
    for (const std::string& tmpdir : folders) {
        for (const std::string& dir : folders) {
            const Finished run = in_child([&] {
                setenv("TMPDIR", tmpdir.c_str(), 1);
                char* const expected = tempnam_of_system(dir.c_str(), "Ze000");
                char* const name = fn_tmpnam(nullptr, nullptr, dir.c_str());
                std::printf("%s\n%s", expected, name);
                std::free(expected);
                std::free(name);
            });
            const std::size_t end = run.out.find('\n');
            ASSERT_NE(end, std::string::npos);
            const std::string theirs = run.out.substr(0, end);
            const std::string ours = run.out.substr(end + 1);
            EXPECT_EQ(ours.size(), theirs.size()) << ours;
            EXPECT_EQ(ours.substr(0, ours.rfind('/')), theirs.substr(0, theirs.rfind('/')));
        }
    }
}

TEST(TemporaryName, AFolderThatMayNotBeSearchedIsAFailure) {
    const ScratchFolder scratch;
    fs::create_directory(scratch / "closed");
    chmod(scratch.path().c_str(), 0755);
    chmod((scratch / "closed").c_str(), 0);
    const Finished run = in_child([&] {
        become_unprivileged();
        unsetenv("TMPDIR");
        fn_tmpnam(nullptr, nullptr, (scratch / "closed").c_str());
    });
    EXPECT_EQ(run.err, "ERROR: cannot create temporary file name; check directory permissions\n");
    EXPECT_EQ(run.status, 1);
}

TEST(TemporaryName, AFolderThatCannotBeWrittenIsTakenAllTheSame) {
    const ScratchFolder scratch;
    fs::create_directory(scratch / "closed");
    chmod(scratch.path().c_str(), 0755);
    chmod((scratch / "closed").c_str(), 0555);
    const Finished run = in_child([&] {
        become_unprivileged();
        setenv("TMPDIR", (scratch / "closed").c_str(), 1);
        char* const name = fn_tmpnam(nullptr, nullptr, nullptr);
        std::fputs(name, stdout);
        std::free(name);
    });
    EXPECT_PRED2(is_temporary_name, run.out, scratch / "closed");
    EXPECT_EQ(run.status, 0);
}

TEST(TemporaryName, BelongsToNoFileAndIsNewEachTime) {
    const ScratchFolder scratch;
    const Finished run = in_child([&] {
        unsetenv("TMPDIR");
        std::vector<std::string> names;
        for (int i = 0; i < 100; ++i) {
            char* const name = fn_tmpnam(nullptr, "ignored", scratch.path().c_str());
            std::printf("%d", fn_exists(name));
            names.emplace_back(name);
            std::free(name);
        }
        std::sort(names.begin(), names.end());
        std::printf(" %d", std::adjacent_find(names.begin(), names.end()) == names.end());
    });
    EXPECT_EQ(run.out, of(100, '0') + " 1");
}

TEST(TemporaryName, IsCopiedIntoADestination) {
    const ScratchFolder scratch;
    const Finished run = in_child([&] {
        unsetenv("TMPDIR");
        std::array<char, 4096> buffer{};
        char* const name = fn_tmpnam(buffer.data(), nullptr, scratch.path().c_str());
        std::printf("%d%s", name == buffer.data(), buffer.data());
    });
    EXPECT_EQ(run.out.substr(0, 1), "1");
    EXPECT_PRED2(is_temporary_name, run.out.substr(1), scratch.path());
}

TEST(TemporaryName, CarriesTheProcessIdInBase62) {
    const ScratchFolder scratch;
    for (int i = 0; i < 5; ++i) {
        const Finished run = in_child([&] {
            unsetenv("TMPDIR");
            char* const name = fn_tmpnam(nullptr, nullptr, scratch.path().c_str());
            std::printf("%d %s", getpid(), std::strrchr(name, '/') + 1);
            std::free(name);
        });
        const std::size_t blank = run.out.find(' ');
        ASSERT_NE(blank, std::string::npos);
        const std::string name = run.out.substr(blank + 1);
        ASSERT_EQ(name.size(), 11U);
        const std::string digits = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
        const std::size_t value =
            digits.find(name[2]) * 3844 + digits.find(name[3]) * 62 + digits.find(name[4]);
        EXPECT_EQ(value, std::stoul(run.out.substr(0, blank)) % 238328) << run.out;
    }
}

TEST(TemporaryName, AFolderWithTooLongANameIsAFailure) {
    const ScratchFolder scratch;
    // Exists, but leaves no room for a last component.
    std::string folder = scratch.path() + "/.";
    while (folder.size() < 4088) {
        folder += "/.";
    }
    const Finished run = temporary_name(nullptr, folder.c_str());
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "ERROR: cannot create temporary file name; check directory permissions\n");
    EXPECT_EQ(run.status, 1);
}

TEST(TemporaryName, WithoutAnyFolderIsAFailure) {
    const ScratchFolder scratch;
    if (under_address_sanitizer()) {
        GTEST_SKIP() << "the sanitizer's check at exit needs the real root folder";
    }
    if (geteuid() != 0) {
        GTEST_SKIP() << "only the super-user can leave the system's folder behind";
    }
    const Finished run = in_child([&] {
        unsetenv("TMPDIR");
        if (chroot(scratch.path().c_str()) != 0 || chdir("/") != 0) {
            _exit(125);
        }
        std::printf("flushed");
        fn_tmpnam(nullptr, nullptr, "/nowhere");
    });
    if (run.status == 125) {
        GTEST_SKIP() << "cannot change the root folder here";
    }
    EXPECT_EQ(run.out, "flushed");
    EXPECT_EQ(run.err, "ERROR: cannot create temporary file name; check directory permissions\n");
    EXPECT_EQ(run.status, 1);
}
