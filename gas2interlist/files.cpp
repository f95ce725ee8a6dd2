// File access of gas2interlist over the POSIX calls, which tell the difference between
// a short file and a failing one.
#include "gas2interlist/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace gas2interlist {
namespace {

constexpr mode_t all_may_use = 0666;

struct Descriptor {
    int number = -1;

    explicit Descriptor(int opened) : number(opened) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    bool close() {
        const int closing = number;
        number = -1;
        return closing < 0 || ::close(closing) == 0;
    }
};

bool read_all(int descriptor, std::string& text) {
    constexpr std::size_t block = std::size_t{1} << 16;
    struct stat status {};
    std::size_t filled = 0;
    // One byte more than the file has, so that its end shows without growing.
    if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        text.resize(static_cast<std::size_t>(status.st_size) + 1);
    }
    while (true) {
        if (filled == text.size()) {
            text.resize(text.size() + std::max(block, text.size()));
        }
        const ssize_t count = ::read(descriptor, text.data() + filled, text.size() - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            text.resize(filled);
            return count == 0;
        }
        filled += static_cast<std::size_t>(count);
    }
}

bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string system_text() {
    return std::strerror(errno);
}

bool write_in_place(const std::string& name, std::string_view text) {
    Descriptor file(::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, all_may_use));
    return file.number >= 0 && write_all(file.number, text) && file.close();
}

// Writes a new file next to `name` and moves it there. `mode` is the one to give it.
bool replace(const std::string& name, std::string_view text, mode_t mode) {
    std::string beside = name + ".XXXXXX";
    Descriptor file(mkostemp(beside.data(), O_CLOEXEC));
    if (file.number < 0) {
        return false;
    }
    if (write_all(file.number, text) && fchmod(file.number, mode) == 0 && file.close() &&
        std::rename(beside.c_str(), name.c_str()) == 0) {
        return true;
    }
    const int failure = errno;
    unlink(beside.c_str());
    errno = failure;
    return false;
}

mode_t new_file_mode() {
    const mode_t mask = umask(0);
    umask(mask);
    return all_may_use & ~mask;
}

// The file itself where `name` is a symbolic link to one.
std::string link_target(const std::string& name) {
    std::error_code failure;
    const std::filesystem::path target = std::filesystem::canonical(name, failure);
    return failure ? name : target.string();
}

}  // namespace

std::optional<std::string> read_input(const std::string& name, std::string& error) {
    std::string text;
    const bool is_standard = name == "-";
    Descriptor file(is_standard ? -1 : ::open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if ((is_standard || file.number >= 0) &&
        read_all(is_standard ? STDIN_FILENO : file.number, text)) {
        return text;
    }
    error = system_text();
    return std::nullopt;
}

bool write_output(const std::string& name, std::string_view text, std::string& error) {
    bool is_written = false;
    struct stat status {};
    if (name == "-") {
        is_written = write_all(STDOUT_FILENO, text) && ::close(STDOUT_FILENO) == 0;
    } else if (stat(name.c_str(), &status) != 0) {
        is_written = replace(name, text, new_file_mode());
    } else if (S_ISREG(status.st_mode)) {
        is_written = replace(link_target(name), text, status.st_mode & 07777);
    } else {
        is_written = write_in_place(name, text);
    }
    if (!is_written) {
        error = system_text();
    }
    return is_written;
}

}  // namespace gas2interlist
