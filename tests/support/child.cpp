#include "tests/support/child.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

std::string contents(int fd) {
    std::string text;
    std::array<char, 4096> chunk{};
    lseek(fd, 0, SEEK_SET);
    ssize_t got = 0;
    while ((got = read(fd, chunk.data(), chunk.size())) > 0) {
        text.append(chunk.data(), static_cast<std::size_t>(got));
    }
    return text;
}

Finished run(const std::function<void()>& body, bool one_output) {
    const int err = memfd_create("err", 0);
    const int out = one_output ? dup(err) : memfd_create("out", 0);
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        body();
        std::fflush(nullptr);
        _exit(0);
    }
    Finished finished;
    int state = 0;
    while (waitpid(pid, &state, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(state)) {
        finished.status = WEXITSTATUS(state);
    } else if (WIFSIGNALED(state)) {
        finished.signal = WTERMSIG(state);
    }
    finished.out = one_output ? "" : contents(out);
    finished.err = contents(err);
    close(out);
    close(err);
    return finished;
}

}  // namespace

Finished in_child(const std::function<void()>& body) {
    return run(body, false);
}

Finished in_child_with_one_output(const std::function<void()>& body) {
    return run(body, true);
}

void write_now(int fd, const char* text) {
    if (write(fd, text, std::strlen(text)) < 0) {
        _exit(124);
    }
}

void become_unprivileged() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && setresuid(nobody, nobody, nobody) != 0) {
        std::perror("setresuid");
        _exit(125);
    }
}
