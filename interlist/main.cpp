// The interlister: merges the C lines that produced a compiler's assembly file
// into a listing of it.
#include <csignal>
#include <cstdio>
#include <exception>

#include "interlist/command_line.h"
#include "interlist/diagnostics.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "interlist/state.h"
#include "support/zesignalsupport.h"

constexpr int caught_signals[] = {SIGINT,  SIGTERM, SIGHUP, SIGILL, SIGABRT, SIGFPE,
                                  SIGSEGV, SIGTRAP, SIGBUS, SIGSYS, SIGXCPU, SIGXFSZ};

static void install_signal_handler() {
    for (const int signal_number : caught_signals) {
        std::signal(signal_number, signal_handler);
    }
}

static void close_stream(FILE*& stream, const char* name) {
    if (stream != nullptr && std::fclose(stream) != 0) {
        file_error("Failed to close", name);
    }
    stream = nullptr;
}

int main(int argc, char** argv) {
    prog_name = argv[0];
    std::setvbuf(stdout, nullptr, _IONBF, 0);  // the signal handler does not flush it
    install_signal_handler();
    try {
        init(argc, argv);
        process_assy();
        end_listing();
        close_stream(ASSY, assy_file_name);
        close_stream(CFILE, curr_open_file_name);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "Unhandled exception: %s\n\n", exception.what());
        std::fputs(support_message_text(), stderr);
        end_program(1);
    }
    return 0;
}
