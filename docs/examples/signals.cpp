// The last words of a compiler that meets a segmentation fault.
#include <support/zesignalsupport.h>

#include <csignal>

// What the tool was doing, kept up to date for the report.
static char activity[32] = "compiling ";

// common_signal_handler takes more than a signal number, so each tool has a handler of
// its own in front of it.
static void handle_signal(int sig) {
    common_signal_handler(sig, "cl", "while %s", activity);
}

// The place for removing what is half written. Called for faults only.
static void clean_up(int /*sig*/) {}

int main() {
    install_common_handlers(handle_signal, clean_up);
    sigstrnappend(activity, sizeof activity, "%s line %d", "x.c", 42);
    std::raise(SIGSEGV);
}
