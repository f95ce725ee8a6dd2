// The last words of a tool that dies: a report of what happened, an optional line of
// detail, and a fixed text that asks the user to report the defect. A tool installs one
// handler of its own for all fatal signals and calls common_signal_handler from it.
//
// A text pointer handed to common_signal_handler or sigstrnappend counts as present
// only when it is not null and its value is at least 100001: after a fault a smaller
// one is more likely damage than text. The module keeps static buffers and is
// single-threaded; a second fault during a report is not guarded against.
#pragma once

#include <cstdint>

// The support text that follows the report of an internal failure: twelve lines, the
// last one empty, each with its newline. A constant; the caller does not free it.
const char* support_message_text();

// The place for leaving a core file for `sig`; common_signal_handler calls it last. On
// this platform it does nothing: the system's own core files serve.
void try_gen_corefile(int sig);

// The cleanup function: common_signal_handler calls it with the signal number before it
// ends the process on a fault, and never after a terminating signal. No signal handler
// itself. Null until install_common_handlers sets it; a tool may set it as well.
extern void (*callback)(int);

// Installs `handler` with signal() for SIGILL, SIGABRT, SIGFPE, SIGSEGV, SIGTERM,
// SIGINT, SIGHUP, SIGTRAP, SIGBUS, SIGSYS, SIGXCPU and SIGXFSZ, and makes `cleanup`, which
// may be null, the callback.
void install_common_handlers(void (*handler)(int), void (*cleanup)(int));

// Reports the signal `sig` on standard error for the tool named `tool` ("unknown" when
// that is not present) and ends the process at once with status 2: no exit handlers
// run, and streams are flushed only where this says so.
//   SIGTERM          "[TOOL received a terminate signal]"
//   SIGINT, SIGHUP   "[TOOL forced exit]"
//                    both without the C library's streams, whatever was interrupted
//   any other        an empty line, "INTERNAL ERROR: TOOL PHRASE", the detail behind
//                    eighteen blanks when there is one, an empty line; then the support
//                    text, with all output streams flushed before and after it; then the
//                    cleanup function and try_gen_corefile
// The phrase tells what the signal means; it is settled by the first fault of the
// process. The detail is the printf format `fmt` with its arguments, cut to 2047
// bytes; `fmt` may be null.
[[noreturn, gnu::format(printf, 3, 4)]] void common_signal_handler(int sig, const char* tool,
                                                                   const char* fmt, ...);

// Appends the printf format `fmt` with its arguments, cut to 2047 bytes, to the text in
// `dst`, a buffer of `size` bytes. What does not fit is cut off, and the last byte of
// the buffer always ends up a terminator. When `fmt` is not present the text of the
// previous call is appended again (nothing at first). Without a `dst`, or with a
// `size` of 0, does nothing.
[[gnu::format(printf, 3, 4)]] void sigstrnappend(char* dst, std::uint32_t size, const char* fmt,
                                                 ...);
