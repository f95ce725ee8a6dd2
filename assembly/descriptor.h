// A file descriptor that is closed at the end of its scope.
#pragma once

#include <unistd.h>

#include <cerrno>

namespace assembly {

struct descriptor {
    int number = -1;  // -1 for none

    explicit descriptor(int opened) : number(opened) {}
    descriptor(const descriptor&) = delete;
    descriptor& operator=(const descriptor&) = delete;
    ~descriptor() {
        const int kept = errno;
        close();
        errno = kept;
    }

    // False on failure, and errno tells why; it is closed all the same.
    bool close() {
        const int closing = number;
        number = -1;
        return closing < 0 || ::close(closing) == 0;
    }
};

}  // namespace assembly
