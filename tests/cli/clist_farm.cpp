// clist's launcher in front of ccache and distcc: compiles are cached and run elsewhere as
// without it, and the listings are the same.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "tests/harness/program.h"

namespace fs = std::filesystem;
using std::string;

namespace {

bool shows(const string& text, const string& part) {
    return text.find(part) != string::npos;
}

// The words behind clist --launcher.
std::vector<string> launched(std::vector<string> words) {
    words.insert(words.begin(), {CLIST, "--launcher"});
    return words;
}

RunOptions in(const string& folder) {
    RunOptions options;
    options.directory = folder;
    return options;
}

}  // namespace

TEST(Launcher, StandsBeforeCcache) {
    if (!has_command("ccache")) {
        GTEST_SKIP() << "no ccache here";
    }
    const ScratchFolder folder;
    folder.write("a.c", "int f(int n)\n{\n    return 3 * n;\n}\n");
    RunOptions options = in(folder.path());
    options.set["CCACHE_DIR"] = folder / "cache";
    options.set["CCACHE_CONFIGPATH"] = folder / "none";
    options.unset = {"CCACHE_BASEDIR", "CCACHE_NOHASHDIR", "CCACHE_PREFIX", "CCACHE_DISABLE"};
    const std::vector<string> words{"cc", "-O2", "-MMD", "-c", "a.c", "-o", "a.o"};
    std::vector<string> cached = words;
    cached.insert(cached.begin(), "ccache");
    ASSERT_EQ(run_program(launched(words), options).status, 0);
    const string object = folder.read("a.o");
    const string listing = folder.read("a.o.lst");
    EXPECT_TRUE(shows(listing, "|     return 3 * n;"));
    for (const string hits : {"0", "2"}) {
        fs::remove(folder / "a.o");
        fs::remove(folder / "a.o.lst");
        const Finished run = run_program(launched(cached), options);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out + run.err, "");
        EXPECT_EQ(folder.read("a.o"), object);
        EXPECT_EQ(folder.read("a.o.lst"), listing);
        const string statistics = run_program({"ccache", "--print-stats"}, options).out;
        EXPECT_TRUE(shows(statistics, "\ndirect_cache_hit\t" + hits + "\n")) << statistics;
        EXPECT_TRUE(shows(statistics, "\ncache_miss\t2\n")) << statistics;
    }
}

namespace {

std::size_t count_of(const string& text, const string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

// A distcc server on the loopback address.
class Distccd {
  public:
    explicit Distccd(const ScratchFolder& folder) : log_(folder / "log") {
        fs::create_directory(folder / "home");
        // The server gives up root's rights and then writes its log.
        folder.write("log", "");
        chmod(log_.c_str(), 0666);
        chmod(folder.path().c_str(), 0755);
        const int first = 20000 + getpid() % 20000;
        for (port_ = first; port_ < first + 20 && !starts(); ++port_) {
        }
    }
    Distccd(const Distccd&) = delete;
    Distccd& operator=(const Distccd&) = delete;
    ~Distccd() {
        if (running_.pid > 0) {
            kill(running_.pid, SIGTERM);
            finish_program(running_);
        }
    }
    bool is_up() const { return running_.pid > 0; }
    string host() const { return "127.0.0.1:" + std::to_string(port_); }
    string log() const { return read_file(log_); }
    // Whether it has compiled so often. It writes that down when the client has gone on already.
    bool has_compiled(std::size_t times) const {
        for (int turn = 0; turn < 500 && count_of(log(), "COMPILE_OK") < times; ++turn) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return count_of(log(), "COMPILE_OK") == times;
    }

  private:
    bool starts() {
        running_ =
            start_program({"distccd", "--no-detach", "--daemon", "--listen", "127.0.0.1", "--port",
                           std::to_string(port_), "--allow", "127.0.0.1", "--enable-tcp-insecure",
                           "--jobs", "2", "--log-file", log_, "--verbose"});
        // It has started when it says so, and ended when the port is taken.
        while (!shows(log(), "preforking daemon started")) {
            if (waitid(P_PID, static_cast<id_t>(running_.pid), nullptr,
                       WEXITED | WNOHANG | WNOWAIT) != 0) {
                return false;
            }
            siginfo_t ended{};
            waitid(P_PID, static_cast<id_t>(running_.pid), &ended, WEXITED | WNOHANG | WNOWAIT);
            if (ended.si_pid == running_.pid) {
                finish_program(running_);
                running_.pid = -1;
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return true;
    }

    string log_;
    int port_ = 0;
    Running running_;
};

}  // namespace

TEST(Launcher, StandsBeforeDistcc) {
    if (!has_command("distccd") || !has_command("distcc")) {
        GTEST_SKIP() << "no distcc here";
    }
    const ScratchFolder server_folder;
    const Distccd server(server_folder);
    ASSERT_TRUE(server.is_up()) << server.log();
    const ScratchFolder folder;
    folder.write("a.c", "int f(int n)\n{\n    return 3 * n;\n}\n");
    RunOptions options = in(folder.path());
    options.set["DISTCC_HOSTS"] = server.host();
    options.set["DISTCC_FALLBACK"] = "0";
    options.set["DISTCC_DIR"] = server_folder / "home";
    const std::vector<string> words{"gcc", "-O2", "-MMD", "-c", "a.c", "-o", "a.o"};
    std::vector<string> remote = words;
    remote.insert(remote.begin(), "distcc");
    ASSERT_EQ(run_program(launched(words), options).status, 0);
    const string listing = folder.read("a.o.lst");
    EXPECT_TRUE(shows(listing, "|     return 3 * n;"));
    ASSERT_EQ(run_program(remote, options).status, 0);
    const string object = folder.read("a.o");
    EXPECT_TRUE(server.has_compiled(1)) << server.log();
    fs::remove(folder / "a.o");
    fs::remove(folder / "a.o.lst");

    const Finished run = run_program(launched(remote), options);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(folder.read("a.o"), object);
    EXPECT_EQ(folder.read("a.o.lst"), listing);
    EXPECT_TRUE(server.has_compiled(3)) << server.log();

    if (!has_command("ccache")) {
        return;
    }
    options.set["CCACHE_DIR"] = server_folder / "cache";
    options.set["CCACHE_CONFIGPATH"] = server_folder / "none";
    options.set["CCACHE_PREFIX"] = "distcc";
    options.unset = {"CCACHE_BASEDIR", "CCACHE_NOHASHDIR", "CCACHE_DISABLE"};
    std::vector<string> cached = words;
    cached.insert(cached.begin(), "ccache");
    for (int turn = 0; turn < 2; ++turn) {
        fs::remove(folder / "a.o.lst");
        EXPECT_EQ(run_program(launched(cached), options).status, 0);
        EXPECT_EQ(folder.read("a.o"), object);
        EXPECT_EQ(folder.read("a.o.lst"), listing);
        EXPECT_TRUE(server.has_compiled(5)) << server.log();
    }
}
