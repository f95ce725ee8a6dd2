#include "tests/harness/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

// The child's half of start_program: never returns.
[[noreturn]] void become(const std::vector<std::string>& argv, const RunOptions& options, int in,
                         int out, int err) {
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    if (options.input_from) {
        const int from = open(options.input_from->c_str(), O_RDONLY | O_CLOEXEC);
        if (from < 0 || dup2(from, STDIN_FILENO) < 0) {
            _exit(126);
        }
    }
    if (options.output_to) {
        const int to = open(options.output_to->c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
        if (to < 0 || dup2(to, STDOUT_FILENO) < 0) {
            _exit(126);
        }
    }
    if (!options.directory.empty() && chdir(options.directory.c_str()) != 0) {
        _exit(126);
    }
    for (const auto& [name, value] : options.set) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    for (const auto& name : options.unset) {
        unsetenv(name.c_str());
    }
    if (options.address_space_limit) {
        const rlimit limit{*options.address_space_limit, *options.address_space_limit};
        setrlimit(RLIMIT_AS, &limit);
    }
    std::vector<char*> words;
    for (const auto& word : argv) {
        words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    if (options.argv0) {
        words[0] = const_cast<char*>(options.argv0->c_str());
    }
    signal(SIGPIPE, SIG_DFL);
    if (options.before_start) {
        options.before_start();
    }
    execvp(argv[0].c_str(), words.data());
    _exit(127);
}

// A terminal: what it shows, and what a program writes to.
bool open_terminal(std::array<int, 2>& ends) {
    std::array<char, 64> name{};
    ends[0] = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (ends[0] < 0 || grantpt(ends[0]) != 0 || unlockpt(ends[0]) != 0 ||
        ptsname_r(ends[0], name.data(), name.size()) != 0) {
        return false;
    }
    ends[1] = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios modes{};
    if (tcgetattr(ends[1], &modes) != 0) {
        return false;
    }
    cfmakeraw(&modes);
    return tcsetattr(ends[1], TCSANOW, &modes) == 0;
}

void close_if_open(int& fd) {
    if (fd >= 0) {
        close(fd);
        fd = -1;
    }
}

// Moves what is ready on `fd` to the end of `text`; closes `fd` at its end.
void drain(int& fd, std::string& text) {
    std::array<char, 65536> chunk{};
    const ssize_t got = read(fd, chunk.data(), chunk.size());
    if (got > 0) {
        text.append(chunk.data(), static_cast<std::size_t>(got));
    } else if (got == 0 || errno != EINTR) {
        close_if_open(fd);
    }
}

}  // namespace

Running start_program(const std::vector<std::string>& argv, const RunOptions& options) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    std::array<int, 2> err{};
    const bool has_output =
        options.output_is_terminal ? open_terminal(out) : pipe2(out.data(), O_CLOEXEC) == 0;
    if (!has_output || pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(err.data(), O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipe or terminal";
        return {};
    }
    const pid_t pid = fork();
    if (pid == 0) {
        become(argv, options, in[0], out[1], err[1]);
    }
    close(in[0]);
    close(out[1]);
    close(err[1]);
    return {pid, out[0], err[0], options.input, in[1]};
}

Finished finish_program(Running& running) {
    signal(SIGPIPE, SIG_IGN);
    Finished finished;
    std::size_t fed = 0;
    if (running.input.empty()) {
        close_if_open(running.in_fd);
    } else {
        fcntl(running.in_fd, F_SETFL, O_NONBLOCK);
    }
    while (running.out_fd >= 0 || running.err_fd >= 0) {
        std::array<pollfd, 3> waits{pollfd{running.out_fd, POLLIN, 0},
                                    pollfd{running.err_fd, POLLIN, 0},
                                    pollfd{running.in_fd, POLLOUT, 0}};
        if (poll(waits.data(), waits.size(), -1) < 0) {
            continue;
        }
        if (running.out_fd >= 0 && waits[0].revents != 0) {
            drain(running.out_fd, finished.out);
        }
        if (running.err_fd >= 0 && waits[1].revents != 0) {
            drain(running.err_fd, finished.err);
        }
        if (running.in_fd >= 0 && waits[2].revents != 0) {
            const ssize_t put =
                write(running.in_fd, running.input.data() + fed, running.input.size() - fed);
            if (put > 0) {
                fed += static_cast<std::size_t>(put);
            }
            if (fed == running.input.size() || (put < 0 && errno != EAGAIN && errno != EINTR)) {
                close_if_open(running.in_fd);
            }
        }
    }
    close_if_open(running.in_fd);
    int state = 0;
    while (waitpid(running.pid, &state, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(state)) {
        finished.status = WEXITSTATUS(state);
    } else if (WIFSIGNALED(state)) {
        finished.signal = WTERMSIG(state);
    }
    return finished;
}

Finished run_program(const std::vector<std::string>& argv, const RunOptions& options) {
    Running running = start_program(argv, options);
    return finish_program(running);
}

bool has_command(const std::string& name) {
    return run_program({"sh", "-c", "command -v \"$1\"", "sh", name}).status == 0;
}

ScratchFolder::ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "interlist-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        ADD_FAILURE() << "no scratch folder";
    }
    path_ = name;
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string ScratchFolder::write(const std::string& name, const std::string& contents) const {
    const std::string full = path_ + "/" + name;
    std::filesystem::create_directories(std::filesystem::path(full).parent_path());
    std::ofstream(full, std::ios::binary) << contents;
    return full;
}

std::string ScratchFolder::read(const std::string& name) const {
    return read_file(path_ + "/" + name);
}

bool ScratchFolder::has(const std::string& name) const {
    return std::filesystem::exists(path_ + "/" + name);
}

std::string read_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file) {
        ADD_FAILURE() << "cannot read " << name;
        return {};
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
