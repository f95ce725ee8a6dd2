// Reports of fatal signals and internal failures.
#include "support/zesignalsupport.h"

#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace {

struct signal_phrase {
    int signal;
    const char* phrase;
};

}  // namespace

constexpr signal_phrase signal_phrases[] = {
    {SIGILL, "executed an illegal instruction"},
    {SIGABRT, "had an internal inconsistency and aborted"},
    {SIGFPE, "received a floating point exception"},
    {SIGSEGV, "experienced a segmentation fault"},
    {SIGTRAP, "received a TRAP signal"},
    {SIGBUS, "experienced a bus alignment fault"},
    {SIGSYS, "experienced a bad system call"},
    {SIGXCPU, "exceeded the CPU time limit"},
    {SIGXFSZ, "exceeded the file size limit"},
};

constexpr int handled_signals[] = {SIGILL, SIGABRT, SIGFPE, SIGSEGV, SIGTERM, SIGINT,
                                   SIGHUP, SIGTRAP, SIGBUS, SIGSYS,  SIGXCPU, SIGXFSZ};

// The formatted texts keep their contents between calls.
static std::array<char, 2048> signal_text_buffer{};
static std::array<char, 2048> append_text_buffer{};

// After a fault, a text pointer below this is damage, not text.
constexpr std::uintptr_t lowest_valid_pointer = 100001;

static bool is_valid(const char* text) {
    return reinterpret_cast<std::uintptr_t>(text) >= lowest_valid_pointer;
}

static const char* phrase_of(int sig) {
    const auto* const row =
        std::find_if(std::begin(signal_phrases), std::end(signal_phrases),
                     [sig](const signal_phrase& candidate) { return candidate.signal == sig; });
    return row != std::end(signal_phrases) ? row->phrase : "experienced a fatal internal fault";
}

// A process dies of its first fault: a report that a later one starts, out of the
// cleanup for instance, repeats the first phrase. Whoever is first settles it, without
// a lock that a second signal could wait for.
static const char* describe_signal(int sig) {
    static std::atomic<const char*> phrase = nullptr;
    const char* settled = nullptr;
    const char* const mine = phrase_of(sig);
    return phrase.compare_exchange_strong(settled, mine) ? mine : settled;
}

// Writes to standard error's descriptor, in one piece where it takes that: its stream may
// be what the signal has interrupted.
static void write_error(std::initializer_list<std::string_view> texts) {
    std::array<iovec, 4> parts{};
    std::transform(texts.begin(), texts.end(), parts.begin(), [](std::string_view text) {
        return iovec{const_cast<char*>(text.data()), text.size()};
    });
    const ssize_t at_once = writev(STDERR_FILENO, parts.data(), static_cast<int>(texts.size()));
    auto written = static_cast<std::size_t>(std::max<ssize_t>(at_once, 0));
    for (std::string_view rest : texts) {
        const std::size_t here = std::min(written, rest.size());
        written -= here;
        rest.remove_prefix(here);
        while (!rest.empty()) {
            const ssize_t more = write(STDERR_FILENO, rest.data(), rest.size());
            if (more > 0) {
                rest.remove_prefix(static_cast<std::size_t>(more));
            } else if (more == 0 || errno != EINTR) {
                return;
            }
        }
    }
}

[[noreturn]] static void report_fault(int sig, const char* name, bool with_detail) {
    write_error({"\nINTERNAL ERROR: ", name, " ", describe_signal(sig)});
    if (with_detail && signal_text_buffer[0] != '\0') {
        write_error({"\n                  ", signal_text_buffer.data()});
    }
    write_error({"\n\n"});
    std::fflush(nullptr);
    write_error({support_message_text()});
    std::fflush(nullptr);
    if (callback != nullptr) {
        callback(sig);
    }
    try_gen_corefile(sig);
    std::_Exit(2);
}

void (*callback)(int) = nullptr;

const char* support_message_text() {
    return "This is caused by a defect in the Ze C Source Interlister.\n"
           "Ze Customer Support may be able to suggest a workaround to avoid this.\n"
           "\n"
           "Upgrading to the newest version of the compiler may fix this problem.\n"
           "\n"
           "Contact Ze in the Ze Developer Exchange support forums at https://support.ze.example "
           "under\n"
           "\"Development Tools\", \"Ze C/C++ Compiler\".  See the link titled\n"
           "\"Submitting an issue\".\n"
           "\n"
           "We need to see this ENTIRE error message and a complete, reproducible\n"
           "test case including ALL of the command-line options.\n"
           "\n";
}

void try_gen_corefile(int /*sig*/) {}

void install_common_handlers(void (*handler)(int), void (*cleanup)(int)) {
    callback = cleanup;
    for (const int sig : handled_signals) {
        std::signal(sig, handler);
    }
}

void common_signal_handler(int sig, const char* tool, const char* fmt, ...) {
    const char* const name = is_valid(tool) ? tool : "unknown";
    if (sig == SIGTERM) {
        write_error({"[", name, " received a terminate signal]\n"});
        std::_Exit(2);
    }
    if (sig == SIGINT || sig == SIGHUP) {
        write_error({"[", name, " forced exit]\n"});
        std::_Exit(2);
    }
    va_list arguments;
    va_start(arguments, fmt);
    if (is_valid(fmt)) {
        // The analyzer does not always see the va_start above.
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        std::vsnprintf(signal_text_buffer.data(), signal_text_buffer.size(), fmt, arguments);
    }
    va_end(arguments);
    // A damaged format that is not null still shows what the buffer holds from before.
    report_fault(sig, name, fmt != nullptr);
}

void sigstrnappend(char* dst, std::uint32_t size, const char* fmt, ...) {
    if (!is_valid(dst) || size == 0) {
        return;
    }
    va_list arguments;
    va_start(arguments, fmt);
    if (is_valid(fmt)) {
        // The analyzer does not always see the va_start above.
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        std::vsnprintf(append_text_buffer.data(), append_text_buffer.size(), fmt, arguments);
    }
    va_end(arguments);
    const std::size_t capacity = size - 1;
    const std::size_t length = strnlen(dst, size);
    if (length < capacity) {
        std::strncat(dst, append_text_buffer.data(), capacity - length);
    }
    dst[capacity] = '\0';
}
