// Maps files, and reads what cannot be mapped: pipes, terminals, empty files.
#include "assembly/text_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace assembly {
namespace {

constexpr off_t greatest_source = off_t{1} << 28;

// Opens without waiting for the other end of a FIFO, which no source is.
constexpr int source_flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;

struct descriptor {
    int number;

    explicit descriptor(int opened) : number(opened) {}
    descriptor(const descriptor&) = delete;
    descriptor& operator=(const descriptor&) = delete;
    ~descriptor() {
        if (number >= 0) {
            const int kept = errno;
            ::close(number);
            errno = kept;
        }
    }
};

bool read_all(int number, std::string& text) {
    constexpr std::size_t block = std::size_t{1} << 16;
    std::size_t filled = 0;
    while (true) {
        if (filled == text.size()) {
            text.resize(text.size() + std::max(block, text.size()));
        }
        const ssize_t count = ::read(number, text.data() + filled, text.size() - filled);
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

}  // namespace

bool text_file::load(int number) {
    struct stat status {};
    if (fstat(number, &status) != 0) {
        return false;
    }
    if (S_ISREG(status.st_mode)) {
        constexpr std::int64_t second = 1'000'000'000;
        modified_ = status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec;
    }
    // What was read of standard input before is no part of it.
    if (S_ISREG(status.st_mode) && status.st_size > 0 && lseek(number, 0, SEEK_CUR) == 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        void* at = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, number, 0);
        if (at != MAP_FAILED) {
            mapped_ = {static_cast<const char*>(at), size};
            return true;
        }
    }
    return read_all(number, read_);
}

std::optional<text_file> text_file::open(const std::string& name) {
    text_file file;
    if (name == "-") {
        return file.load(STDIN_FILENO) ? std::optional(std::move(file)) : std::nullopt;
    }
    const descriptor opened(::open(name.c_str(), O_RDONLY | O_CLOEXEC));
    return opened.number >= 0 && file.load(opened.number) ? std::optional(std::move(file))
                                                          : std::nullopt;
}

std::optional<text_file> text_file::open_source(const std::string& name) {
    const descriptor opened(::open(name.c_str(), source_flags));
    struct stat status {};
    text_file file;
    if (opened.number < 0 || fstat(opened.number, &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > greatest_source || !file.load(opened.number)) {
        return std::nullopt;
    }
    return file;
}

text_file::text_file(text_file&& other) noexcept
    : mapped_(std::exchange(other.mapped_, {})),
      read_(std::move(other.read_)),
      modified_(other.modified_) {}

text_file& text_file::operator=(text_file&& other) noexcept {
    std::swap(mapped_, other.mapped_);
    std::swap(read_, other.read_);
    std::swap(modified_, other.modified_);
    return *this;
}

text_file::~text_file() {
    if (mapped_.data() != nullptr) {
        munmap(const_cast<char*>(mapped_.data()), mapped_.size());
    }
}

}  // namespace assembly
