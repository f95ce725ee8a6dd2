// Writes in large pieces.
#include "clist/output.h"

#include <unistd.h>

#include <cerrno>

namespace clist {

static constexpr std::size_t buffer_size = std::size_t{1} << 17;

output::output(int descriptor) : descriptor_(descriptor) {
    buffer_.reserve(buffer_size);
}

void output::put(std::string_view text) {
    if (buffer_.size() + text.size() > buffer_size) {
        flush();
        // What would fill the buffer by itself need not be copied.
        if (text.size() >= buffer_size) {
            return write(text);
        }
    }
    buffer_ += text;
}

std::string& output::next() {
    if (buffer_.size() >= buffer_size / 2) {
        flush();
    }
    return buffer_;
}

bool output::flush() {
    write(buffer_);
    buffer_.clear();
    if (error_ != 0) {
        errno = error_;
    }
    return error_ == 0;
}

void output::write(std::string_view text) {
    while (!text.empty() && error_ == 0) {
        const ssize_t count = ::write(descriptor_, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            error_ = errno;
        }
    }
}

}  // namespace clist
