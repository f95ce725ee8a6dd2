// File problems, text beyond the limit, fatal and terminating signals.
#include "interlist/diagnostics.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "interlist/output.h"
#include "interlist/state.h"

void end_program(int status) {
    flush_output(list_output);
    std::exit(status);
}

// errno is taken first: the flushes may change it.
static void report_file_problem(const char* message, const char* name) {
    const int error = errno;
    std::fflush(stdout);
    std::fflush(stderr);
    std::fprintf(stderr, ">> WARNING: %s '%s': %s\n", message, name, std::strerror(error));
    std::fflush(stderr);
}

// The fatal report says WARNING as well; tools that read it know it so.
void file_error(const char* message, const char* name) {
    report_file_problem(message, name);
    end_program(1);
}

void end_report() {
    if (std::ferror(stdout) != 0) {
        file_error("Cannot write", "standard output");
    }
    end_program(0);
}

void file_warn(const char* message, const char* name) {
    if (no_warnings == 0) {
        report_file_problem(message, name);
    }
}

void limit_error() {
    std::puts("\n>> FATAL ERROR - String exceeds internal limit!!");
    end_program(1);
}

void copy_text(char (&buffer)[buffer_size], std::string_view text) {
    if (text.size() > longest_text) {
        limit_error();
    }
    buffer[text.copy(buffer, text.size())] = '\0';
}

namespace {

struct signal_phrase {
    int signal_number;
    const char* phrase;
};

}  // namespace

constexpr signal_phrase signal_phrases[] = {
    {SIGILL, "executed an illegal instruction"},
    {SIGTRAP, "received a TRAP signal"},
    {SIGABRT, "aborted"},
    {SIGFPE, "received a floating point exception"},
    {SIGBUS, "experienced a bus alignment fault"},
    {SIGSEGV, "experienced a segmentation fault"},
    {SIGSYS, "experienced a bad system call"},
    {SIGXCPU, "exceeded the CPU time limit"},
    {SIGXFSZ, "exceeded the file size limit"},
};

static const char* phrase_of(int signal_number) {
    const auto* const found =
        std::find_if(std::begin(signal_phrases), std::end(signal_phrases),
                     [=](const signal_phrase& row) { return row.signal_number == signal_number; });
    return found == std::end(signal_phrases) ? "experienced a fatal internal fault" : found->phrase;
}

static void report_ended_from_outside(output_stream& report, std::string_view name,
                                      std::string_view how) {
    add_text(report, "[");
    add_text(report, name);
    add_text(report, how);
}

static void add_number(output_stream& report, unsigned number) {
    std::array<char, 16> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    add_text(report, {digits.data(), static_cast<std::size_t>(end - digits.data())});
}

static void report_internal_error(output_stream& report, std::string_view name,
                                  const char* phrase) {
    add_text(report, "\nINTERNAL ERROR: ");
    add_text(report, name);
    add_text(report, " ");
    add_text(report, phrase);
    add_text(report, " while\n                processing file ");
    add_text(report, assy_file_name);
    // A C line's number beside the assembly file's name: the pairing is meant.
    if (curr_line != 0) {
        add_text(report, " line ");
        add_number(report, curr_line);
    }
    add_text(report,
             "\n\n"
             "This is a serious problem.  Please contact Customer\n"
             "Support with this message and a copy of the input file\n"
             "and help us to continue to make the tools more robust.\n\n");
}

// The signal may have interrupted anything, an allocation or the C library's streams in
// the middle of their work, so nothing of these is called here and no lock is taken:
// text goes to the descriptors, and the program is left without the exit handlers.
// Standard output holds nothing back, because main() takes its buffer away.
void signal_handler(int signal_number) {
    std::array<char, 4096> text;
    output_stream report{.descriptor = STDERR_FILENO, .buffer = text.data(), .size = text.size()};
    const std::string_view name = prog_name == nullptr ? "" : prog_name;
    switch (signal_number) {
        case SIGHUP:
        case SIGINT:
            report_ended_from_outside(report, name, " forced exit]\n");
            break;
        case SIGTERM:
            report_ended_from_outside(report, name, " received a terminate signal]\n");
            break;
        default:
            report_internal_error(report, name, phrase_of(signal_number));
    }
    flush_output(report);
    rescue_output(list_output);
    close(list_output.descriptor);
    close(assy_input.descriptor);
    close(cfile_input.descriptor);
    _exit(2);
}
