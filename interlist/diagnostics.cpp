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

const char* phrase_of(int signal_number) {
    const auto* const found =
        std::find_if(std::begin(signal_phrases), std::end(signal_phrases),
                     [=](const signal_phrase& row) { return row.signal_number == signal_number; });
    return found == std::end(signal_phrases) ? "experienced a fatal internal fault" : found->phrase;
}

// A report is put together here and written with as few calls as it takes,
// without the C library's streams, which the signal may have interrupted.
// Standard error is unbuffered, so the two do not get out of order.
class report {
  public:
    void add(std::string_view text) {
        while (!text.empty()) {
            const std::size_t taken = text.copy(text_.data() + used_, text_.size() - used_);
            used_ += taken;
            text.remove_prefix(taken);
            if (used_ == text_.size()) {
                write_out();
            }
        }
    }

    void add_number(unsigned number) {
        std::array<char, 16> digits{};
        const char* const end =
            std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        add({digits.data(), static_cast<std::size_t>(end - digits.data())});
    }

    void write_out() {
        const char* from = text_.data();
        while (used_ > 0) {
            const ssize_t put = write(STDERR_FILENO, from, used_);
            if (put <= 0) {
                break;
            }
            from += put;
            used_ -= static_cast<std::size_t>(put);
        }
        used_ = 0;
    }

  private:
    std::array<char, 4096> text_{};
    std::size_t used_ = 0;
};

void close_quietly(FILE*& stream) {
    if (stream != nullptr) {
        static_cast<void>(std::fclose(stream));
        stream = nullptr;
    }
}

void report_ended_from_outside(report& text, std::string_view name, std::string_view how) {
    text.add("[");
    text.add(name);
    text.add(how);
    text.write_out();
}

void report_internal_error(report& text, std::string_view name, const char* phrase) {
    text.add("\nINTERNAL ERROR: ");
    text.add(name);
    text.add(" ");
    text.add(phrase);
    text.add(" while\n");
    text.write_out();
    std::fflush(nullptr);
    text.add("                processing file ");
    text.add(assy_file_name);
    // A C line's number beside the assembly file's name: the pairing is meant.
    if (curr_line != 0) {
        text.add(" line ");
        text.add_number(curr_line);
    }
    text.add(
        "\n\n"
        "This is a serious problem.  Please contact Customer\n"
        "Support with this message and a copy of the input file\n"
        "and help us to continue to make the tools more robust.\n\n");
    text.write_out();
    std::fflush(nullptr);
}

}  // namespace

void signal_handler(int signal_number) {
    report text;
    const std::string_view name = prog_name == nullptr ? "" : prog_name;
    switch (signal_number) {
        case SIGHUP:
        case SIGINT:
            report_ended_from_outside(text, name, " forced exit]\n");
            break;
        case SIGTERM:
            report_ended_from_outside(text, name, " received a terminate signal]\n");
            break;
        default:
            report_internal_error(text, name, phrase_of(signal_number));
            flush_output(list_output);
            close_quietly(LIST);
            close_quietly(ASSY);
            close_quietly(CFILE);
    }
    end_program(2);
}
