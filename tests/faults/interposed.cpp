// Loaded in front of the C library: the n-th call of one of its functions fails, or a
// signal arrives inside it. INTERPOSED holds the function's name, n, "+" where all calls
// behind it fail as well, and the signal's number, 0 for a failure: "malloc 3+ 0".
// A byte goes to mark_descriptor then.
//
// A function that a signal has interrupted holds its locks. From there on every call of
// a function here is a handler that would wait for one, or find a structure half
// changed: the program ends with status 99.
#include <dlfcn.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

static constexpr int mark_descriptor = 99;
static constexpr int waiting_handler = 99;

static char wanted[32];        // the function
static int countdown = -1;     // to the call that is due; -1: INTERPOSED was not read yet
static bool lasting = false;   // stay at it
static int signal_number = 0;  // what to raise in place of failing
static bool interrupted = false;

static void read_wish() {
    countdown = 0;
    const char* const wish = std::getenv("INTERPOSED");
    if (wish == nullptr) {
        return;
    }
    const char* const name_end = std::strchr(wish, ' ');
    std::memcpy(wanted, wish, static_cast<std::size_t>(name_end - wish));
    char* rest = nullptr;
    countdown = static_cast<int>(std::strtol(name_end, &rest, 10));
    lasting = *rest == '+';
    signal_number = static_cast<int>(std::strtol(rest + (lasting ? 1 : 0), nullptr, 10));
    // The programs that this one starts are to be left alone.
    unsetenv("INTERPOSED");
}

static void say(const char* text) {
    syscall(SYS_write, STDERR_FILENO, text, std::strlen(text));
}

// Before its handlers stand, a program is not there yet as far as signals go.
static bool handler_stands() {
    struct sigaction action {};
    return sigaction(signal_number, nullptr, &action) == 0 && action.sa_handler != SIG_DFL;
}

// True when this call of the function is to fail. Raises the signal, if that is wanted.
static bool is_due(const char* name) {
    if (countdown < 0) {
        read_wish();
    }
    if (countdown == 0 || std::strcmp(name, wanted) != 0 ||
        (signal_number != 0 && !handler_stands()) || --countdown > 0) {
        return false;
    }
    countdown = lasting ? 1 : 0;
    syscall(SYS_write, mark_descriptor, "!", 1);
    if (signal_number != 0) {
        interrupted = true;
        static_cast<void>(std::raise(signal_number));
        return false;
    }
    errno = ENOMEM;
    return true;
}

static bool fails(const char* name) {
    if (interrupted) {
        say("a handler that has interrupted ");
        say(wanted);
        say(" calls ");
        say(name);
        say("\n");
        _exit(waiting_handler);
    }
    return is_due(name);
}

// The C library's own function of that name.
template <typename Function>
static Function* library(Function*& known, const char* name) {
    if (known == nullptr) {
        known = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
    }
    return known;
}

// The names that the C library keeps for those who take the others.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);
extern "C" void __libc_free(void* block);
// NOLINTEND(bugprone-reserved-identifier)

extern "C" {

void* malloc(std::size_t size) {
    return fails("malloc") ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return fails("malloc") ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    return fails("malloc") ? nullptr : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return fails("malloc") ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    if (fails("malloc")) {
        return ENOMEM;
    }
    *block = __libc_memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void* block) {
    fails("free");
    __libc_free(block);
}

FILE* fopen(const char* name, const char* mode) {
    static FILE* (*known)(const char*, const char*) = nullptr;
    return fails("fopen") ? nullptr : library(known, "fopen")(name, mode);
}

FILE* fdopen(int descriptor, const char* mode) {
    static FILE* (*known)(int, const char*) = nullptr;
    return fails("fdopen") ? nullptr : library(known, "fdopen")(descriptor, mode);
}

int fclose(FILE* stream) {
    static int (*known)(FILE*) = nullptr;
    const bool failed = fails("fclose");
    const int result = library(known, "fclose")(stream);
    return failed ? EOF : result;
}

int fflush(FILE* stream) {
    static int (*known)(FILE*) = nullptr;
    return fails("fflush") ? EOF : library(known, "fflush")(stream);
}

std::size_t fread(void* to, std::size_t size, std::size_t count, FILE* stream) {
    static std::size_t (*known)(void*, std::size_t, std::size_t, FILE*) = nullptr;
    fails("fread");
    return library(known, "fread")(to, size, count, stream);
}

std::size_t fwrite(const void* from, std::size_t size, std::size_t count, FILE* stream) {
    static std::size_t (*known)(const void*, std::size_t, std::size_t, FILE*) = nullptr;
    return fails("fwrite") ? 0 : library(known, "fwrite")(from, size, count, stream);
}

int fseek(FILE* stream, long offset, int whence) {
    static int (*known)(FILE*, long, int) = nullptr;
    return fails("fseek") ? -1 : library(known, "fseek")(stream, offset, whence);
}

int puts(const char* text) {
    static int (*known)(const char*) = nullptr;
    return fails("puts") ? EOF : library(known, "puts")(text);
}

int fputs(const char* text, FILE* stream) {
    static int (*known)(const char*, FILE*) = nullptr;
    return fails("fputs") ? EOF : library(known, "fputs")(text, stream);
}

int printf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = fails("printf") ? -1 : vfprintf(stdout, format, arguments);
    va_end(arguments);
    return result;
}

int fprintf(FILE* stream, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = fails("printf") ? -1 : vfprintf(stream, format, arguments);
    va_end(arguments);
    return result;
}

// Handlers may write. The signal comes when the bytes are written and the caller does
// not know it yet.
ssize_t write(int descriptor, const void* from, std::size_t size) {
    const long written = syscall(SYS_write, descriptor, from, size);
    is_due("write");
    return written;
}

void exit(int status) {
    static void (*known)(int) = nullptr;
    fails("exit");
    library(known, "exit")(status);
    _exit(status);
}

}  // extern "C"
