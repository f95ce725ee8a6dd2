// Where the output of the built gas2interlist goes, and what stands there when it cannot.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/harness/program.h"

namespace fs = std::filesystem;

namespace {

const std::string input =
    "\t.file 1 \"a.c\"\n"
    "\t.type f, @function\n"
    "f:\n"
    "\t.loc 1 3\n"
    "\tret\n"
    "\t.size f, .-f\n";
const std::string output =
    "\t.file 1 \"a.c\"\n"
    "\t.ifile\t\"a.c\"\n"
    "\t.ifunc\t3\n"
    "\t.type f, @function\n"
    "f:\n"
    "\t.loc 1 3\n"
    "\tret\n"
    "\t.size f, .-f\n"
    "\t.iendfunc\t4\n";

// A folder with the input as a.s in it.
struct Folder : ScratchFolder {
    Folder() { write("a.s", input); }

    // A shell's command in the folder, gas2interlist as $0.
    Finished shell(const std::string& command) const {
        RunOptions options;
        options.directory = path();
        return run_program({"sh", "-c", command, GAS2INTERLIST}, options);
    }
    std::size_t entries() const {
        const fs::directory_iterator all(path());
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }
    bool is_link(const std::string& name) const { return fs::is_symlink(*this / name); }
    struct stat status(const std::string& name) const {
        struct stat found {};
        EXPECT_EQ(stat((*this / name).c_str(), &found), 0) << name;
        return found;
    }
};

void expect_success(const Finished& run) {
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
}

void expect_failure(const Finished& run, const std::string& message) {
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "gas2interlist: " + message + "\n");
}

}  // namespace

TEST(Gas2interlistOutput, ANewFileGetsThePermissionsOfAnyNewFile) {
    const Folder folder;
    expect_success(folder.shell("umask 027; \"$0\" a.s -o new.asm"));
    EXPECT_EQ(folder.status("new.asm").st_mode & 07777U, 0640U);
    EXPECT_EQ(folder.read("new.asm"), output);
    EXPECT_EQ(folder.entries(), 2U);
}

TEST(Gas2interlistOutput, AnOldFileIsReplacedAsAWhole) {
    const Folder folder;
    folder.write("old.asm", "old");
    const ino_t before = folder.status("old.asm").st_ino;
    const int reader = open((folder / "old.asm").c_str(), O_RDONLY | O_CLOEXEC);
    expect_success(folder.shell("\"$0\" a.s -o old.asm"));
    EXPECT_EQ(folder.read("old.asm"), output);
    EXPECT_NE(folder.status("old.asm").st_ino, before);
    char kept[4] = "";
    EXPECT_EQ(read(reader, kept, 3), 3);
    EXPECT_STREQ(kept, "old");
    close(reader);
}

TEST(Gas2interlistOutput, LinksAreFollowedAndKept) {
    const Folder folder;
    folder.write("sub/real.asm", "old");
    fs::create_symlink("sub/second", folder / "first");
    fs::create_symlink("real.asm", folder / "sub/second");
    expect_success(folder.shell("\"$0\" a.s -o first"));
    EXPECT_TRUE(folder.is_link("first"));
    EXPECT_TRUE(folder.is_link("sub/second"));
    EXPECT_EQ(folder.read("sub/real.asm"), output);
}

TEST(Gas2interlistOutput, TheTargetOfADanglingLinkIsCreated) {
    const Folder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("sub/real.asm", folder / "link");
    expect_success(folder.shell("\"$0\" a.s -o link"));
    EXPECT_TRUE(folder.is_link("link"));
    EXPECT_EQ(folder.read("sub/real.asm"), output);
    EXPECT_EQ(folder.entries(), 3U);
}

TEST(Gas2interlistOutput, ALinkThatLeadsNowhereIsReported) {
    const Folder folder;
    fs::create_symlink("absent/real.asm", folder / "link");
    expect_failure(folder.shell("\"$0\" a.s -o link"), "link: No such file or directory");
    fs::create_symlink("loop", folder / "loop");
    expect_failure(folder.shell("\"$0\" a.s -o loop"), "loop: Too many levels of symbolic links");
    EXPECT_TRUE(folder.is_link("link"));
    EXPECT_TRUE(folder.is_link("loop"));
}

TEST(Gas2interlistOutput, ANameOfADescriptorStandsForThatDescriptor) {
    const Folder folder;
    fs::create_symlink("/proc/self/fd/1", folder / "own");
    fs::create_symlink("own", folder / "second");
    for (const std::string name : {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1",
                                   "/proc/thread-self/fd/1", "own", "second"}) {
        folder.write("log", "kept\n");
        expect_success(folder.shell("\"$0\" a.s -o " + name + " >> log"));
        EXPECT_EQ(folder.read("log"), "kept\n" + output) << name;
        const Finished piped = folder.shell("\"$0\" a.s -o " + name + " | cat");
        EXPECT_EQ(piped.out, output) << name;
        const Finished between =
            folder.shell("{ echo before; \"$0\" a.s -o " + name + "; echo after; } > log");
        expect_success(between);
        EXPECT_EQ(folder.read("log"), "before\n" + output + "after\n") << name;
    }
    expect_success(folder.shell("\"$0\" a.s -o /dev/fd/7 7> seven"));
    EXPECT_EQ(folder.read("seven"), output);
    expect_failure(folder.shell("\"$0\" a.s -o /dev/fd/7"), "/dev/fd/7: Bad file descriptor");
    EXPECT_TRUE(folder.is_link("own"));
    EXPECT_TRUE(folder.is_link("second"));
}

TEST(Gas2interlistOutput, AFileMayHaveTheNameOfADescriptor) {
    const Folder folder;
    fs::create_directory(folder / "fd");
    expect_success(folder.shell("\"$0\" -o fd/1 a.s"));
    EXPECT_EQ(folder.read("fd/1"), output);
}

TEST(Gas2interlistOutput, ADescriptorsFileMayHaveNoNameAnyMore) {
    const Folder folder;
    fs::create_symlink("/proc/self/fd/1", folder / "own");
    const Finished run =
        folder.shell("exec 3> gone 4< gone; rm gone; \"$0\" a.s -o own >&3 && cat <&4");
    expect_success(run);
    EXPECT_EQ(run.out, output);
    EXPECT_TRUE(folder.is_link("own"));
}

TEST(Gas2interlistOutput, DevicesAndPipesAreWrittenInto) {
    const Folder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink("pipe", folder / "to_pipe");
    fs::create_symlink("/dev/full", folder / "full");
    fs::create_symlink("/dev/null", folder / "null");
    for (const std::string name : {"pipe", "to_pipe"}) {
        const Finished run = folder.shell("cat pipe & \"$0\" a.s -o " + name + "; wait");
        EXPECT_EQ(run.out, output);
        EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    }
    expect_failure(folder.shell("\"$0\" a.s -o full"), "full: No space left on device");
    expect_success(folder.shell("\"$0\" a.s -o null"));
    EXPECT_TRUE(folder.is_link("to_pipe") && folder.is_link("full") && folder.is_link("null"));
}

TEST(Gas2interlistOutput, NamesMayBeAsLongAsTheSystemAllows) {
    for (const std::size_t length : {std::size_t{249}, std::size_t{250}, std::size_t{255}}) {
        const Folder folder;
        const std::string name(length, 'n');
        for (int i = 0; i < 2; ++i) {
            expect_success(folder.shell("\"$0\" a.s -o " + name));
            EXPECT_EQ(folder.read(name), output);
        }
        EXPECT_EQ(folder.entries(), 2U);
    }
    const Folder folder;
    const std::string name(256, 'n');
    expect_failure(folder.shell("\"$0\" a.s -o " + name), name + ": File name too long");
}

TEST(Gas2interlistOutput, NoFileComesOfANameThatEndsInASlash) {
    const Folder folder;
    expect_failure(folder.shell("\"$0\" a.s -o new/"), "new/: Is a directory");
    expect_failure(folder.shell("\"$0\" a.s -o ."), ".: Is a directory");
    expect_failure(folder.shell("\"$0\" a.s -o a.s/x"), "a.s/x: Not a directory");
    expect_failure(folder.shell("\"$0\" a.s -o ''"), ": No such file or directory");
    EXPECT_EQ(folder.entries(), 1U);
}

TEST(Gas2interlistOutput, AllNamesOfAFileKeepTogether) {
    const Folder folder;
    folder.write("one.asm", "a text that is longer than what is written in its place" + output);
    fs::create_hard_link(folder / "one.asm", folder / "two.asm");
    expect_success(folder.shell("\"$0\" a.s -o two.asm"));
    EXPECT_EQ(folder.read("one.asm"), output);
    EXPECT_EQ(folder.status("one.asm").st_nlink, 2U);
}

TEST(Gas2interlistOutput, AFileKeepsItsOwnerAndGroup) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    const Folder folder;
    for (const auto& [owner, group] : {std::pair(12345U, 0U), std::pair(0U, 12345U)}) {
        folder.write("old.asm", "old");
        ASSERT_EQ(chown((folder / "old.asm").c_str(), owner, group), 0);
        expect_success(folder.shell("\"$0\" a.s -o old.asm"));
        EXPECT_EQ(folder.read("old.asm"), output);
        EXPECT_EQ(folder.status("old.asm").st_uid, owner);
        EXPECT_EQ(folder.status("old.asm").st_gid, group);
        fs::remove(folder / "old.asm");
    }
}

TEST(Gas2interlistOutput, AFileKeepsWhatIsAttachedToIt) {
    const Folder folder;
    folder.write("old.asm", "old");
    if (setxattr((folder / "old.asm").c_str(), "user.note", "n", 1, 0) != 0) {
        GTEST_SKIP() << "this file system has no attributes for users";
    }
    expect_success(folder.shell("\"$0\" a.s -o old.asm"));
    EXPECT_EQ(folder.read("old.asm"), output);
    EXPECT_EQ(getxattr((folder / "old.asm").c_str(), "user.note", nullptr, 0), 1);
}

TEST(Gas2interlistOutput, TheInputMayBeTheOutput) {
    for (const std::string command :
         {"\"$0\" a.s -o a.s", "ln a.s b.s; \"$0\" b.s -o b.s", "\"$0\" a.s 1<> a.s",
          "\"$0\" 0<a.s 1<> a.s", "ln a.s b.s; \"$0\" -o b.s < a.s"}) {
        const Folder folder;
        expect_success(folder.shell(command));
        EXPECT_EQ(folder.read("a.s"), output) << command;
    }
    const Folder folder;
    expect_success(folder.shell("\"$0\" a.s >> a.s"));
    EXPECT_EQ(folder.read("a.s"), input + output);
}

TEST(Gas2interlistOutput, AClosedStandardStreamFailsAsOneAndIsNoOther) {
    const Folder folder;
    expect_failure(folder.shell("\"$0\" a.s >&-"), "standard output: Bad file descriptor");
    expect_failure(folder.shell("\"$0\" <&-"), "standard input: Bad file descriptor");
    EXPECT_EQ(folder.shell("\"$0\" a.s >&- 2>&-").status, 1);
    const Finished run = folder.shell("\"$0\" missing.s -o new.asm 0<&- >&- 2>&-");
    EXPECT_EQ(run.status, 1);
    EXPECT_FALSE(folder.has("new.asm"));
    EXPECT_EQ(folder.shell("\"$0\" a.s -o new.asm 0<&- >&- 2>&-").status, 0);
    EXPECT_EQ(folder.read("new.asm"), output);
}

TEST(Gas2interlistOutput, PastTheLimitOfFileSizesTheOldFileStays) {
    const Folder folder;
    folder.write("big.s", std::string(1 << 16, '\n'));
    folder.write("old.asm", "old");
    signal(SIGXFSZ, SIG_DFL);
    for (const std::string name : {"old.asm", "new.asm"}) {
        expect_failure(folder.shell("ulimit -f 8; \"$0\" big.s -o " + name),
                       "stopped by the limit of file sizes");
        expect_failure(folder.shell("trap '' XFSZ; ulimit -f 8; \"$0\" big.s -o " + name),
                       name + ": File too large");
    }
    EXPECT_EQ(folder.read("old.asm"), "old");
    EXPECT_EQ(folder.entries(), 3U);
}

TEST(Gas2interlistOutput, SignalsAreReportedWithStatusOne) {
    struct Case {
        int number;
        std::string name;
        std::string message;
    };
    const Folder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    RunOptions options;
    options.directory = folder.path();
    for (const Case& each :
         {Case{SIGHUP, "HUP", "stopped by a hang-up"}, Case{SIGINT, "INT", "interrupted"},
          Case{SIGTERM, "TERM", "stopped by a request to terminate"},
          Case{SIGXCPU, "XCPU", "stopped by the limit of processor time"},
          Case{SIGXFSZ, "XFSZ", "stopped by the limit of file sizes"}}) {
        signal(each.number, SIG_DFL);  // the tests may be run where it is ignored
        for (const bool is_ignored : {false, true}) {
            const std::string ignore = is_ignored ? "trap '' " + each.name + "; " : "";
            Running running = start_program(
                {"sh", "-c", ignore + "exec \"$0\" pipe -o new.asm", GAS2INTERLIST}, options);
            // Once the pipe is open at both ends the program has long been set up.
            const int feed = open((folder / "pipe").c_str(), O_WRONLY | O_CLOEXEC);
            kill(running.pid, each.number);
            if (is_ignored) {
                EXPECT_EQ(write(feed, input.data(), input.size()),
                          static_cast<ssize_t>(input.size()));
                close(feed);
                expect_success(finish_program(running));
                EXPECT_EQ(folder.read("new.asm"), output);
            } else {
                expect_failure(finish_program(running), each.message);
                EXPECT_FALSE(folder.has("new.asm"));
                close(feed);
            }
            fs::remove(folder / "new.asm");
        }
    }
}

TEST(Gas2interlistOutput, AnInputThatIsCutShortIsReported) {
    const Folder folder;
    folder.write("big.s", std::string(std::size_t{4} << 20, '\n'));
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    // The input lies in memory when the output is opened, which waits for a reader; the
    // reader takes the first bytes, and the rest of the input goes.
    const Finished run = folder.shell(
        "\"$0\" big.s -o pipe & exec 3< pipe; head -c 1 <&3 >/dev/null; : > big.s; cat <&3 "
        ">/dev/null; wait $!");
    expect_failure(run, "the input was cut short while it was read");
}

// The program under test takes memory as it comes and gets none after so many times.
TEST(Gas2interlistOutput, WithoutMemoryItSaysSo) {
    const Folder folder;
    folder.write("a.c", "int\nf(void)\n{\n}\n");
    folder.write("old.asm", "old");
    const std::string placed = "\t.file 1 \"a.c\"\n\t.ifile\t\"a.c\"\n\t.ifunc\t1\n" +
                               input.substr(input.find('\n') + 1) + "\t.iendfunc\t5\n";
    for (int portions = 0;; ++portions) {
        ASSERT_LT(portions, 1000);
        RunOptions options;
        options.directory = folder.path();
        options.set["PORTIONS_OF_MEMORY"] = std::to_string(portions);
        const Finished run = run_program({STARVED_GAS2INTERLIST, "--no-warnings", "--source-map",
                                          "/a/long/beginning/of/a/name=x", "a.s", "-o", "old.asm"},
                                         options);
        EXPECT_EQ(folder.entries(), 3U);
        if (run.status == 0) {
            EXPECT_GT(portions, 10);
            EXPECT_EQ(run.err, "");
            EXPECT_EQ(folder.read("old.asm"), placed);
            break;
        }
        expect_failure(run, "out of memory");
        EXPECT_EQ(folder.read("old.asm"), "old");
    }
}
