// Opening files above the standard descriptors.
#include "interlist/files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

static FILE* with_descriptor(int descriptor, const char* mode) {
    FILE* const file = descriptor < 0 ? nullptr : fdopen(descriptor, mode);
    if (file == nullptr && descriptor >= 0) {
        close(descriptor);
    }
    return file;
}

FILE* open_file(const char* name, const char* mode) {
    FILE* const file = std::fopen(name, mode);
    if (file == nullptr || fileno(file) > STDERR_FILENO) {
        return file;
    }
    FILE* const moved =
        with_descriptor(fcntl(fileno(file), F_DUPFD_CLOEXEC, STDERR_FILENO + 1), mode);
    const int error = errno;
    std::fclose(file);
    errno = error;
    return moved;
}
