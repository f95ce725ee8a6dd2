#include "tests/faults/fault.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <thread>

// Calls that newer machines have only in their newer form.
#ifdef SYS_rename
#define OLD_CALL(name) SYS_##name
#else
#define OLD_CALL(name) SYS_renameat2
#endif

// A sanitizer asks with a pipe whether an object is one, and takes a failure for a no.
static const int pipe_call = std::string_view(FAULTS_SANITIZED).empty() ? SYS_pipe2 : SYS_dup3;

std::span<const call_kind> call_kinds() {
    static const std::vector<call_kind> kinds{
        {"open", {SYS_openat}, EMFILE},
        {"read", {SYS_read, SYS_readv, SYS_pread64}, EIO},
        {"write", {SYS_write, SYS_writev, SYS_pwrite64, SYS_copy_file_range, SYS_sendfile}, ENOSPC},
        {"short_read", {SYS_read, SYS_pread64}, 0},
        {"short_write", {SYS_write}, 0},
        {"seek", {SYS_lseek}, EINVAL},
        {"close", {SYS_close}, EIO},
        {"stat", {SYS_newfstatat, SYS_fstat, SYS_statx}, EIO},
        {"map", {SYS_mmap, SYS_mremap}, ENOMEM},
        {"rename", {SYS_renameat2, OLD_CALL(rename), OLD_CALL(renameat)}, EACCES},
        {"unlink", {SYS_unlinkat, OLD_CALL(unlink)}, EACCES},
        {"truncate", {SYS_ftruncate}, EIO},
        {"mode", {SYS_fchmod, SYS_fchown}, EPERM},
        {"sync", {SYS_fsync, SYS_fdatasync}, EIO},
        {"descriptor", {SYS_fcntl, SYS_dup, SYS_dup3, pipe_call}, EMFILE},
    };
    return kinds;
}

namespace {

// Hands the calls of one kind to whoever holds the descriptor that it returns.
int filter_calls(const call_kind& kind) {
    std::vector<sock_filter> program;
    program.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
    for (const long number : kind.numbers) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(number), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        return -1;
    }
    return static_cast<int>(
        syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &filter));
}

// One byte, and a descriptor with it if there is one.
void send_descriptor(int socket, int descriptor) {
    char byte = 0;
    iovec bytes{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> room{};
    msghdr message{};
    message.msg_iov = &bytes;
    message.msg_iovlen = 1;
    if (descriptor >= 0) {
        message.msg_control = room.data();
        message.msg_controllen = room.size();
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(header), &descriptor, sizeof(int));
    }
    if (sendmsg(socket, &message, 0) != 1) {
        _exit(123);
    }
}

int receive_descriptor(int socket) {
    char byte = 0;
    iovec bytes{&byte, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> room{};
    msghdr message{};
    message.msg_iov = &bytes;
    message.msg_iovlen = 1;
    message.msg_control = room.data();
    message.msg_controllen = room.size();
    int descriptor = -1;
    if (recvmsg(socket, &message, MSG_CMSG_CLOEXEC) == 1) {
        if (const cmsghdr* const header = CMSG_FIRSTHDR(&message)) {
            std::memcpy(&descriptor, CMSG_DATA(header), sizeof(int));
        }
    }
    return descriptor;
}

// Tells the calls of the C library from those of the loader and of other code by the
// place that they come from.
class code_map {
  public:
    explicit code_map(pid_t pid) : maps_("/proc/" + std::to_string(pid) + "/maps") {}

    bool is_library_call(std::uint64_t address) {
        const mapping* found = find(address);
        if (found == nullptr) {
            read();
            found = find(address);
        }
        return found != nullptr && found->is_library;
    }

  private:
    struct mapping {
        std::uint64_t from = 0;
        std::uint64_t to = 0;
        bool is_library = false;
    };

    const mapping* find(std::uint64_t address) const {
        const auto found = std::find_if(mappings_.begin(), mappings_.end(), [=](const mapping& m) {
            return address >= m.from && address < m.to;
        });
        return found == mappings_.end() ? nullptr : &*found;
    }

    void read() {
        mappings_.clear();
        std::ifstream file(maps_);
        for (std::string line; std::getline(file, line);) {
            mapping next;
            char dash = 0;
            std::string access;
            std::istringstream words(line);
            words >> std::hex >> next.from >> dash >> next.to >> access;
            if (access.find('x') != std::string::npos) {
                next.is_library = std::filesystem::path(line.substr(line.rfind(' ') + 1))
                                      .filename()
                                      .string()
                                      .starts_with("libc.so");
                mappings_.push_back(next);
            }
        }
    }

    std::string maps_;
    std::vector<mapping> mappings_;
};

// Makes half of a read or write for the program, which stands waiting in it. What is
// already as short as can be is made whole.
void answer_shortly(pid_t pid, const seccomp_notif& call, seccomp_notif_resp& answer) {
    const auto size = static_cast<std::size_t>(call.data.args[2]);
    const int process = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    const int descriptor =
        static_cast<int>(syscall(SYS_pidfd_getfd, process, call.data.args[0], 0));
    close(process);
    if (size < 2 || descriptor < 0) {
        close(descriptor);
        return;
    }
    std::string bytes(size / 2, ' ');
    iovec here{bytes.data(), bytes.size()};
    iovec there{reinterpret_cast<void*>(call.data.args[1]), bytes.size()};
    ssize_t count = -1;
    if (call.data.nr == SYS_write) {
        process_vm_readv(pid, &here, 1, &there, 1, 0);
        count = write(descriptor, bytes.data(), bytes.size());
    } else {
        count = call.data.nr == SYS_read ? read(descriptor, bytes.data(), bytes.size())
                                         : pread(descriptor, bytes.data(), bytes.size(),
                                                 static_cast<off_t>(call.data.args[3]));
        here.iov_len = there.iov_len = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        process_vm_writev(pid, &here, 1, &there, 1, 0);
    }
    answer.flags = 0;
    answer.val = count;
    answer.error = count < 0 ? -errno : 0;
    close(descriptor);
}

// Decides about each call until the program has ended.
void supervise(int listener, pid_t pid, const fault& what, faulted_run& run) {
    code_map code(pid);
    for (;;) {
        pollfd wait{listener, POLLIN, 0};
        if (poll(&wait, 1, -1) < 0 || (wait.revents & POLLIN) == 0) {
            return;
        }
        seccomp_notif call{};
        if (ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &call) != 0) {
            continue;
        }
        seccomp_notif_resp answer{};
        answer.id = call.id;
        answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
        if (call.pid == static_cast<unsigned>(pid) &&
            code.is_library_call(call.data.instruction_pointer)) {
            const int calls = ++run.calls;
            if (calls == what.nth) {
                run.hit = true;
                run.descriptor = static_cast<int>(call.data.args[0]);
            }
            const bool due = calls == what.nth || (what.lasting && calls > what.nth &&
                                                   call.data.args[0] != STDERR_FILENO);
            if (due && what.signal_number != 0) {
                kill(pid, what.signal_number);
                continue;  // the call is never made: the signal interrupts it
            }
            if (due && what.calls->error == 0) {
                answer_shortly(pid, call, answer);
            } else if (due) {
                answer.flags = 0;
                answer.error = -what.calls->error;
            }
        }
        ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer);
    }
}

std::optional<faulted_run> run_with_failing_call(const std::vector<std::string>& argv,
                                                 RunOptions options, const fault& what) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return std::nullopt;
    }
    options.before_start = [&what, at = ends[1], more = options.before_start] {
        if (more) {
            more();
        }
        alarm(longest_run);
        send_descriptor(at, filter_calls(*what.calls));
    };
    Running running = start_program(argv, options);
    close(ends[1]);
    const int listener = receive_descriptor(ends[0]);
    close(ends[0]);
    faulted_run run;
    std::thread supervisor;
    if (listener >= 0) {
        supervisor = std::thread([&] { supervise(listener, running.pid, what, run); });
    }
    run.finished = finish_program(running);
    if (listener < 0) {
        return std::nullopt;
    }
    supervisor.join();
    close(listener);
    return run;
}

std::optional<faulted_run> run_with_failing_function(const std::vector<std::string>& argv,
                                                     RunOptions options, const fault& what) {
    if (!std::string_view(FAULTS_SANITIZED).empty()) {
        return std::nullopt;  // its own functions are not to be replaced
    }
    std::array<int, 2> mark{};
    if (pipe2(mark.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return std::nullopt;
    }
    options.set["LD_PRELOAD"] = INTERPOSED;
    options.set["INTERPOSED"] = std::string(what.function) + " " + std::to_string(what.nth) +
                                (what.lasting ? "+ " : " ") + std::to_string(what.signal_number);
    options.before_start = [at = mark[1], more = options.before_start] {
        if (more) {
            more();
        }
        alarm(longest_run);
        dup2(at, 99);
    };
    faulted_run run;
    run.finished = run_program(argv, options);
    char byte = 0;
    run.hit = read(mark[0], &byte, 1) == 1;
    close(mark[0]);
    close(mark[1]);
    return run;
}

}  // namespace

std::optional<faulted_run> run_with_fault(const std::vector<std::string>& argv, RunOptions options,
                                          const fault& what) {
    return what.calls != nullptr ? run_with_failing_call(argv, std::move(options), what)
                                 : run_with_failing_function(argv, std::move(options), what);
}
