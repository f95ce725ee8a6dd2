// Maps files, and reads what cannot be mapped: pipes, terminals, empty files.
#include "assembly/text_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <utility>

#include "assembly/descriptor.h"

namespace assembly {
namespace {

constexpr off_t greatest_source = off_t{1} << 28;

// Opens without waiting for the other end of a FIFO, which no source is.
constexpr int source_flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK;

}  // namespace

// False where there is nothing to map: in a pipe, a device, an empty file or one that only
// looks empty.
bool text_file::map_rest(int number, const struct stat& status) {
    const off_t begin = lseek(number, 0, SEEK_CUR);
    if (begin < 0 || !S_ISREG(status.st_mode) || status.st_size <= begin) {
        return false;
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const at = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, number, 0);
    if (at == MAP_FAILED) {
        return false;
    }
    memory_.reset(at, [size](void* mapped) { munmap(mapped, size); });
    text_ = std::string_view(static_cast<const char*>(at), size);
    text_.remove_prefix(static_cast<std::size_t>(begin));
    lseek(number, 0, SEEK_END);  // whoever shares the descriptor finds its file read
    mapped_from_ = status;
    return true;
}

// The C library's allocation grows without a second copy.
bool text_file::read_rest(int number) {
    std::unique_ptr<void, decltype(&std::free)> memory(nullptr, &std::free);
    std::size_t capacity = 0;
    std::size_t filled = 0;
    while (true) {
        if (filled == capacity) {
            capacity += std::max(std::size_t{1} << 16, capacity / 2);
            void* const grown = std::realloc(memory.get(), capacity);
            if (grown == nullptr) {
                if (const std::new_handler without_memory = std::get_new_handler()) {
                    without_memory();
                }
                throw std::bad_alloc();
            }
            static_cast<void>(memory.release());
            memory.reset(grown);
        }
        char* const text = static_cast<char*>(memory.get());
        const ssize_t count = ::read(number, text + filled, capacity - filled);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            text_ = std::string_view(text, filled);
            memory_ = std::move(memory);
            return count == 0;
        }
        filled += static_cast<std::size_t>(count);
    }
}

bool text_file::load(int number) {
    struct stat status {};
    if (fstat(number, &status) != 0) {
        return false;
    }
    if (S_ISREG(status.st_mode)) {
        constexpr std::int64_t second = 1'000'000'000;
        modified_ = status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec;
    }
    return map_rest(number, status) || read_rest(number);
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
    if (opened.number < 0 || fstat(opened.number, &status) != 0) {
        return std::nullopt;
    }
    if (!S_ISREG(status.st_mode) || status.st_size > greatest_source) {
        errno = S_ISREG(status.st_mode) ? EFBIG : S_ISDIR(status.st_mode) ? EISDIR : ENODEV;
        return std::nullopt;
    }
    text_file file;
    return file.load(opened.number) ? std::optional(std::move(file)) : std::nullopt;
}

text_file text_file::of(std::string text, std::int64_t modified) {
    text_file file;
    const auto memory = std::make_shared<std::string>(std::move(text));
    file.text_ = *memory;
    file.memory_ = memory;
    file.modified_ = modified;
    return file;
}

bool text_file::is_mapped_from(const struct stat& file) const {
    return mapped_from_ && file.st_dev == mapped_from_->st_dev &&
           file.st_ino == mapped_from_->st_ino;
}

}  // namespace assembly
