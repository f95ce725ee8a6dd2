#include "tests/support/faults.h"

#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

Faults faults;

namespace {

// Counts one down and tells whether this is the call that fails.
bool is_due(int& countdown) {
    return countdown > 0 && --countdown == 0;
}

bool allocation_fails() {
    if (!is_due(faults.failing_allocation)) {
        return false;
    }
    errno = ENOMEM;
    return true;
}

void trace(const char* call, std::size_t size) {
    if (faults.record) {
        faults.trace.push_back(std::string(call) + " " + std::to_string(size));
    }
}

bool is_interrupted() {
    static bool last = false;
    last = faults.interrupts_writes && !last;
    if (last) {
        errno = EINTR;
    }
    return last;
}

std::size_t number_of(FILE* stream) {
    const auto found = std::find(faults.opened.begin(), faults.opened.end(), stream);
    return static_cast<std::size_t>(found - faults.opened.begin()) + 1;
}

}  // namespace

// The linker's names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* ptr, std::size_t size);
FILE* __real_fopen(const char* name, const char* mode);
int __real_fclose(FILE* stream);
std::size_t __real_fread(void* to, std::size_t size, std::size_t count, FILE* stream);
std::size_t __real_fwrite(const void* from, std::size_t size, std::size_t count, FILE* stream);
ssize_t __real_write(int descriptor, const void* from, std::size_t size);
ssize_t __real_writev(int descriptor, const iovec* parts, int count);
int __real_rename(const char* from, const char* to);
pid_t __real_getpid();
void (*__real_signal(int sig, void (*handler)(int)))(int);

void* __wrap_malloc(std::size_t size) {
    if (faults.record) {
        faults.record = false;  // the record allocates too
        faults.sizes.push_back(size);
        faults.record = true;
    }
    return allocation_fails() ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return allocation_fails() ? nullptr : __real_calloc(count, size);
}

void* __wrap_realloc(void* ptr, std::size_t size) {
    return allocation_fails() ? nullptr : __real_realloc(ptr, size);
}

FILE* __wrap_fopen(const char* name, const char* mode) {
    FILE* const stream = __real_fopen(name, mode);
    if (faults.record) {
        faults.trace.push_back(std::string("open ") + mode + (stream != nullptr ? "" : " failed"));
        faults.opened.push_back(stream);
    }
    return stream;
}

int __wrap_fclose(FILE* stream) {
    trace("close", number_of(stream));
    const int result = __real_fclose(stream);
    return is_due(faults.failing_close) ? EOF : result;
}

std::size_t __wrap_fread(void* to, std::size_t size, std::size_t count, FILE* stream) {
    const std::size_t got = __real_fread(to, size, count, stream);
    trace("read", got * size);
    return got;
}

std::size_t __wrap_fwrite(const void* from, std::size_t size, std::size_t count, FILE* stream) {
    trace("write", count * size);
    return __real_fwrite(from, size, is_due(faults.failing_write) ? count - 1 : count, stream);
}

ssize_t __wrap_write(int descriptor, const void* from, std::size_t size) {
    if (is_interrupted()) {
        return -1;
    }
    const bool is_short = faults.longest_write != 0;
    return __real_write(descriptor, from, is_short ? std::min(size, faults.longest_write) : size);
}

ssize_t __wrap_writev(int descriptor, const iovec* parts, int count) {
    if (is_interrupted()) {
        return -1;
    }
    if (faults.longest_write == 0) {
        return __real_writev(descriptor, parts, count);
    }
    std::string text;
    for (const iovec* part = parts; part != parts + count; ++part) {
        text.append(static_cast<const char*>(part->iov_base), part->iov_len);
    }
    return __real_write(descriptor, text.data(), std::min(text.size(), faults.longest_write));
}

int __wrap_rename(const char* from, const char* to) {
    if (faults.rename_error != 0) {
        errno = faults.rename_error;
        return -1;
    }
    return __real_rename(from, to);
}

pid_t __wrap_getpid() {
    return faults.pid != 0 ? faults.pid : __real_getpid();
}

void (*__wrap_signal(int sig, void (*handler)(int)))(int) {
    faults.signals.push_back(sig);
    return __real_signal(sig, handler);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
