// The signals that end the program, and the one file that must not outlive it.
#include "gas2interlist/signals.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <new>
#include <string_view>

#include "gas2interlist/options.h"
#include "gas2interlist/report.h"

namespace gas2interlist {
namespace {

struct caught_signal {
    int number;
    std::string_view message;
};
}  // namespace

static constexpr std::array<caught_signal, 6> caught_signals = {{
    {SIGHUP, "stopped by a hang-up"},
    {SIGINT, "interrupted"},
    {SIGTERM, "stopped by a request to terminate"},
    {SIGXCPU, "stopped by the limit of processor time"},
    {SIGXFSZ, "stopped by the limit of file sizes"},
    // Reading a mapped file behind its new end.
    {SIGBUS, "the input was cut short while it was read"},
}};

// The unfinished file. Read by the handler, changed only while its signals are held.
static std::array<char, PATH_MAX> unfinished_name{};
static bool has_unfinished = false;

static void remove_unfinished() {
    if (has_unfinished) {
        unlink(unfinished_name.data());
        has_unfinished = false;
    }
}

[[noreturn]] static void end_with(std::string_view message) {
    remove_unfinished();
    report({message});
    _exit(exit_failure);
}

extern "C" {
static void end_by_signal(int number) {
    const auto* const it =
        std::find_if(caught_signals.begin(), caught_signals.end(),
                     [number](const caught_signal& each) { return each.number == number; });
    end_with(it == caught_signals.end() ? std::string_view("stopped by a signal") : it->message);
}
}

static sigset_t caught_set() {
    sigset_t set;
    sigemptyset(&set);
    for (const caught_signal& each : caught_signals) {
        sigaddset(&set, each.number);
    }
    return set;
}

namespace {
struct signals_held {
    sigset_t before{};

    signals_held() {
        const sigset_t set = caught_set();
        sigprocmask(SIG_BLOCK, &set, &before);
    }
    signals_held(const signals_held&) = delete;
    signals_held& operator=(const signals_held&) = delete;
    ~signals_held() { sigprocmask(SIG_SETMASK, &before, nullptr); }
};
}  // namespace

void catch_signals() {
    struct sigaction catching {};
    catching.sa_handler = end_by_signal;
    catching.sa_mask = caught_set();
    for (const caught_signal& each : caught_signals) {
        struct sigaction before {};
        if (sigaction(each.number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(each.number, &catching, nullptr);
        }
    }
}

void catch_lack_of_memory() {
    std::set_new_handler([] { end_with("out of memory"); });
}

void keep_standard_streams_apart() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(number, F_GETFD) < 0) {
            // Another program that is started from here finds it closed, as it was.
            open("/dev/null", (number == STDIN_FILENO ? O_WRONLY : O_RDONLY) | O_CLOEXEC);
        }
    }
}

int unfinished_file::create(const std::string& folder) {
    constexpr int most_attempts = 1000;
    constexpr mode_t all_may_use = 0666;
    const signals_held held;
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        const int size = std::snprintf(
            unfinished_name.data(), unfinished_name.size(), "%s/.%s-%ld-%d", folder.c_str(),
            std::string(program_name()).c_str(), static_cast<long>(getpid()), attempt);
        if (size < 0 || static_cast<std::size_t>(size) >= unfinished_name.size()) {
            errno = ENAMETOOLONG;
            return -1;
        }
        const int made =
            open(unfinished_name.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, all_may_use);
        if (made >= 0 || errno != EEXIST) {
            has_unfinished = made >= 0;
            return made;
        }
    }
    return -1;
}

bool unfinished_file::move_to(const std::string& name) {
    const signals_held held;
    if (std::rename(unfinished_name.data(), name.c_str()) != 0) {
        return false;
    }
    has_unfinished = false;
    return true;
}

unfinished_file::~unfinished_file() {
    const int failure = errno;
    const signals_held held;
    remove_unfinished();
    errno = failure;
}

}  // namespace gas2interlist
