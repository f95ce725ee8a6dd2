// Writes the output: into what the name stands for, or beside it and then in its place.
#include "gas2interlist/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>

#include "assembly/descriptor.h"
#include "gas2interlist/signals.h"

namespace gas2interlist {

namespace fs = std::filesystem;
using assembly::descriptor;

static constexpr mode_t all_may_use = 0666;

// --- The text ---

static bool write_all(int to, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(to, text.data(), text.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Pieces are put together first: most are some lines long. Nor does a write ever touch a
// mapped input, whose loss it would report as its own failure.
static bool write_pieces(int to, const interlisted_text& text) {
    std::array<char, std::size_t{1} << 16> block;
    std::size_t filled = 0;
    const bool is_written = for_each_piece(text, [&](std::string_view piece) {
        while (!piece.empty()) {
            const std::size_t taken = std::min(piece.size(), block.size() - filled);
            std::copy_n(piece.data(), taken, block.data() + filled);
            piece.remove_prefix(taken);
            filled += taken;
            if (filled == block.size() &&
                !write_all(to, {block.data(), std::exchange(filled, 0)})) {
                return false;
            }
        }
        return true;
    });
    return is_written && write_all(to, {block.data(), filled});
}

static bool is_same_file(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// Writes into what is open, emptied first if it `is_named` and a regular file.
static bool write_into(descriptor& file, bool is_named, const output_text& text) {
    struct stat status {};
    if (fstat(file.number, &status) != 0) {
        return false;
    }
    if (text.overwriting) {
        text.overwriting(status);
    }
    if (is_named && S_ISREG(status.st_mode) && ftruncate(file.number, 0) != 0) {
        return false;
    }
    return text.write(file.number) && file.close();
}

// --- What a name stands for ---

namespace {
struct destination {
    fs::path path;        // behind all symbolic links
    int descriptor = -1;  // of this process, that the name leads to; -1 for none
};
}  // namespace

// The number of this process's descriptor that `path` is the system's name for, or -1.
static int own_descriptor(const fs::path& folder, const std::string& name) {
    const std::string own = "/proc/" + std::to_string(getpid()) + "/";
    if (!folder.native().starts_with(own) || folder.filename() != "fd") {
        return -1;
    }
    int number = -1;
    const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), number);
    return failure == std::errc() && end == name.data() + name.size() ? number : -1;
}

static destination destination_of(const std::string& name) {
    constexpr int most_links = 40;
    fs::path path = name;
    for (int links = 0; links < most_links; ++links) {
        std::error_code failure;
        const fs::path parent = path.parent_path();
        const fs::path folder = fs::canonical(parent.empty() ? fs::path(".") : parent, failure);
        if (failure) {
            break;
        }
        path = folder / path.filename();
        if (const int own = own_descriptor(folder, path.filename()); own >= 0) {
            return {path, own};
        }
        const fs::path target = fs::read_symlink(path, failure);
        if (failure) {
            return {path};
        }
        path = folder / target;
    }
    return {name};
}

// Whether a new file under this name, with the same permissions, would be the same to
// everyone but for its text.
static bool is_plain(const descriptor& file, const struct stat& status, const fs::path& path) {
    struct stat named {};
    return S_ISREG(status.st_mode) && status.st_nlink == 1 &&
           (status.st_mode & (S_ISUID | S_ISGID)) == 0 && lstat(path.c_str(), &named) == 0 &&
           is_same_file(named, status) && flistxattr(file.number, nullptr, 0) <= 0;
}

// --- Replacing ---

namespace {
enum class replacement : std::uint8_t { done, failed, not_here };
}  // namespace

// Whether a new file cannot be put here, though the old one may be written.
static bool forbids_new_file() {
    return errno == EACCES || errno == EPERM || errno == EROFS || errno == EBUSY ||
           errno == ENAMETOOLONG;
}

// Writes a new file and moves it to `path`. `old` is the file that is there.
static replacement replace(const fs::path& path, const std::optional<struct stat>& old,
                           const output_text& text) {
    unfinished_file beside;
    const fs::path folder = path.parent_path();
    descriptor file(beside.create(folder.empty() ? "." : folder));
    if (file.number < 0) {
        return forbids_new_file() ? replacement::not_here : replacement::failed;
    }
    if (old) {
        struct stat made {};
        if (fstat(file.number, &made) != 0 || made.st_uid != old->st_uid ||
            made.st_gid != old->st_gid || fchmod(file.number, old->st_mode & 07777) != 0) {
            return replacement::not_here;
        }
    }
    if (!text.write(file.number) || !file.close()) {
        return replacement::failed;
    }
    if (!beside.move_to(path)) {
        return forbids_new_file() ? replacement::not_here : replacement::failed;
    }
    return replacement::done;
}

static bool write_named(const std::string& name, const output_text& text) {
    const destination to = destination_of(name);
    if (to.descriptor >= 0) {
        descriptor own(to.descriptor);
        return write_into(own, false, text);
    }
    descriptor file(::open(name.c_str(), O_WRONLY | O_CLOEXEC));
    std::optional<struct stat> old;
    if (file.number >= 0) {
        old.emplace();
        if (fstat(file.number, &*old) != 0) {
            return false;
        }
    } else if (errno != ENOENT) {
        return false;
    }
    std::error_code ignored;
    const bool may_replace =
        old ? is_plain(file, *old, to.path)
            : to.path.has_filename() &&
                  fs::symlink_status(to.path, ignored).type() == fs::file_type::not_found;
    if (may_replace) {
        if (const replacement result = replace(to.path, old, text);
            result != replacement::not_here) {
            return result == replacement::done;
        }
    }
    if (!old) {
        file.number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, all_may_use);
    }
    return file.number >= 0 && write_into(file, old && S_ISREG(old->st_mode), text);
}

bool write_output(const std::string& name, const output_text& text, std::string& error) {
    bool is_written = false;
    if (name == "-") {
        descriptor standard(STDOUT_FILENO);
        is_written = write_into(standard, false, text);
    } else {
        is_written = write_named(name, text);
    }
    if (!is_written) {
        error = std::strerror(errno);
    }
    return is_written;
}

bool write_output(const std::string& name, const interlisted_text& text,
                  const std::optional<assembly::text_file>& input, std::string& error) {
    std::optional<std::string> copy;
    const auto write = [&](int to) { return copy ? write_all(to, *copy) : write_pieces(to, text); };
    // The text may lie in the very file that is written.
    const auto overwriting = [&](const struct stat& file) {
        if (input && input->is_mapped_from(file)) {
            copy = merged(text);
        }
    };
    return write_output(name, {write, overwriting}, error);
}

}  // namespace gas2interlist
