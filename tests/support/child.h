// Runs a piece of a test in a forked child, for code that ends its process or that
// changes what belongs to the whole process: its streams, environment, directory,
// limits or user.
#pragma once

#include <functional>

#include "tests/harness/program.h"

// Runs `body` with both output streams caught, and exits with status 0 when it returns,
// flushing the streams but running no exit handlers.
Finished in_child(const std::function<void()>& body);

// The same with both streams going to one place, in the order of the writes, as a
// terminal shows them: all of it is in `err`.
Finished in_child_with_one_output(const std::function<void()>& body);

// For use in a child: writes `text` to the descriptor `fd` behind the streams' backs.
void write_now(int fd, const char* text);

// For use in a child: gives up the super-user's rights, if the process has them.
void become_unprivileged();

// True when the program runs with a sanitizer that cannot stand what some tests
// provoke: address-space limits, requests beyond all memory, a root folder left behind.
constexpr bool under_address_sanitizer() {
#if defined(__SANITIZE_ADDRESS__)
    return true;
#elif defined(__has_feature)
    return __has_feature(address_sanitizer);
#else
    return false;
#endif
}
