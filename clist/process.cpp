// Programs are started by posix_spawn, which tells why one could not be, and awaited
// together with the signals that are held back.
#include "clist/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "clist/messages.h"

namespace clist {
namespace {

// What ends a program from without, if it does nothing about it.
constexpr int ending[] = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM,   SIGALRM, SIGUSR1,
                          SIGUSR2, SIGPIPE, SIGXCPU, SIGVTALRM, SIGPROF};

sigset_t ending_signals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int each : ending) {
        sigaddset(&set, each);
    }
    return set;
}

std::vector<char*> pointers(const std::vector<std::string>& words) {
    std::vector<char*> result;
    result.reserve(words.size() + 1);
    for (const std::string& word : words) {
        result.push_back(const_cast<char*>(word.c_str()));
    }
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> changed_environment(const std::vector<std::string>& changes) {
    std::vector<std::string> result;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string entry = *each;
        const std::string name = entry.substr(0, entry.find('='));
        bool is_kept = true;
        for (const std::string& change : changes) {
            is_kept = is_kept && change.substr(0, change.find('=')) != name;
        }
        if (is_kept) {
            result.push_back(entry);
        }
    }
    for (const std::string& change : changes) {
        if (change.find('=') != std::string::npos) {
            result.push_back(change);
        }
    }
    return result;
}

// What a new program starts with besides its words.
struct spawn_setup {
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};

    explicit spawn_setup(const run_settings& settings) {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        if (!settings.messages_to.empty()) {
            posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
            posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, settings.messages_to.c_str(),
                                             O_WRONLY | O_CREAT | O_APPEND, 0600);
        }
        if (settings.output_to_error || !settings.messages_to.empty()) {
            posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
        }
        if (!settings.directory.empty()) {
            posix_spawn_file_actions_addchdir_np(&actions, settings.directory.c_str());
        }
    }
    spawn_setup(const spawn_setup&) = delete;
    spawn_setup& operator=(const spawn_setup&) = delete;
    ~spawn_setup() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
};

// Waits for the child. What arrives meanwhile to end us is for it as well, where it did
// not come from the terminal, which tells both; it gets its effect on us later.
run_result await(pid_t child, const sigset_t& awaited) {
    int last_signal = 0;
    int state = 0;
    while (true) {
        const pid_t ended = waitpid(child, &state, WNOHANG);
        if (ended == child) {
            break;
        }
        if (ended < 0 && errno != EINTR) {
            return {.error = errno};
        }
        siginfo_t info{};
        const int signal = sigwaitinfo(&awaited, &info);
        if (signal > 0 && signal != SIGCHLD) {
            last_signal = signal;
            if (info.si_code <= 0) {
                kill(child, signal);
            }
        }
    }
    if (last_signal != 0) {
        raise(last_signal);
    }
    run_result result;
    if (WIFSIGNALED(state)) {
        result.signal = WTERMSIG(state);
    } else {
        result.status = WEXITSTATUS(state);
    }
    return result;
}

}  // namespace

signal_hold::signal_hold() {
    const sigset_t set = ending_signals();
    sigprocmask(SIG_BLOCK, &set, &before_);
}

signal_hold::~signal_hold() {
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

run_result run(const std::vector<std::string>& words, const run_settings& settings) {
    // An ignored SIGCHLD would take the child's status away.
    std::signal(SIGCHLD, SIG_DFL);
    sigset_t awaited = ending_signals();
    sigaddset(&awaited, SIGCHLD);
    sigset_t before{};
    sigprocmask(SIG_BLOCK, &awaited, &before);

    spawn_setup setup(settings);
    sigset_t child_mask = before;
    for (const int each : ending) {
        sigdelset(&child_mask, each);
    }
    posix_spawnattr_setsigmask(&setup.attributes, &child_mask);
    posix_spawnattr_setflags(&setup.attributes, POSIX_SPAWN_SETSIGMASK);
    const std::vector<std::string> entries = changed_environment(settings.environment);
    pid_t child = -1;
    run_result result;
    result.error = posix_spawnp(&child, words.front().c_str(), &setup.actions, &setup.attributes,
                                pointers(words).data(), pointers(entries).data());
    if (result.error == 0) {
        result = await(child, awaited);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return result;
}

std::string found_program(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::string_view folders = path != nullptr ? path : "";
    const auto is_program = [](const std::filesystem::path& file) {
        std::error_code failure;
        return std::filesystem::is_regular_file(file, failure) && access(file.c_str(), X_OK) == 0;
    };
    if (name.find('/') != std::string::npos) {
        return is_program(name) ? name : "";
    }
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        const std::filesystem::path program = std::filesystem::path(folder) / name;
        if (is_program(program)) {
            return program;
        }
    }
    return {};
}

int become(const std::vector<std::string>& words) {
    execvp(words.front().c_str(), pointers(words).data());
    return errno;
}

std::string failure_text(const std::string& program, const run_result& result) {
    if (result.error != 0) {
        return "cannot run " + program + ": " + std::strerror(result.error);
    }
    if (result.signal != 0) {
        return program + " was ended by signal " + std::to_string(result.signal) + " (" +
               strsignal(result.signal) + ")";
    }
    return program + " failed with status " + std::to_string(result.status);
}

int status_of(const run_result& result) {
    constexpr int signal_base = 128;
    if (result.error != 0) {
        return 1;
    }
    return result.signal != 0 ? signal_base + result.signal : result.status;
}

scratch_folder::scratch_folder() {
    std::error_code failure;
    std::filesystem::path base = std::filesystem::temp_directory_path(failure);
    if (failure) {
        base = "/tmp";
    }
    path_ = base / "clist-XXXXXX";
    if (mkdtemp(path_.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(),
                                "no scratch folder in " + base.string());
    }
}

std::string scratch_folder::file(const std::string& name) {
    return files_.emplace_back(path_ + "/" + name);
}

scratch_folder::~scratch_folder() {
    for (const std::string& file : files_) {
        unlink(file.c_str());
    }
    if (rmdir(path_.c_str()) == 0) {
        return;
    }
    std::error_code failure;
    std::filesystem::remove_all(path_, failure);
    if (failure) {
        say("cannot remove " + path_ + ": " + failure.message());
    }
}

}  // namespace clist
