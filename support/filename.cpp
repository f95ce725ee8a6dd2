// The POSIX flavour of the tool chain's file-name functions. The interlister derives
// its listing name with fn_addext; the rest serves the other tools.
#include "support/filename.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <span>
#include <string_view>

#include "support/safealloc.h"

// The parts that fn_split hands out.
constexpr std::size_t longest_part = 499;
using part_buffer = std::array<char, 512>;
static part_buffer split_dir{};
static part_buffer split_base{};
static part_buffer split_ext{};

static void store(part_buffer& buffer, std::string_view part) {
    *std::copy_n(part.begin(), std::min(part.size(), longest_part), buffer.begin()) = '\0';
}

// The beginning of fn_tmpnam's names: as long as tempnam takes, with room for the
// digits of the process id behind the letters.
static std::array<char, 6> tmp_prefix{"Ze000"};

constexpr std::string_view digits =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
static_assert(digits.size() == 62);

static void set_tmp_prefix(unsigned long pid) {
    tmp_prefix[2] = digits[pid / 3844 % 62];
    tmp_prefix[3] = digits[pid / 62 % 62];
    tmp_prefix[4] = digits[pid % 62];
}

static bool is_directory(const char* name) {
    struct stat status {};
    return stat(name, &status) == 0 && S_ISDIR(status.st_mode);
}

// Where a temporary file goes: $TMPDIR, which is not believed with borrowed rights, `dir`, or
// the system's folder, the first of them that is one.
static const char* temporary_folder(const char* dir) {
    const bool is_trusted = getuid() == geteuid() && getgid() == getegid();
    const char* const named = is_trusted ? std::getenv("TMPDIR") : nullptr;
    for (const char* const folder : {named, dir, P_tmpdir}) {
        if (folder != nullptr && is_directory(folder)) {
            return folder;
        }
    }
    return nullptr;
}

// Digits that another call, or another process, hardly gets.
static void set_random_digits(std::span<char> place) {
    static std::uint64_t state = 0;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    state += static_cast<std::uint64_t>(now.tv_nsec) * 1000003 +
             static_cast<std::uint64_t>(now.tv_sec) + reinterpret_cast<std::uintptr_t>(&state);
    std::uint64_t mixed = (state ^ state >> 30) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ mixed >> 27) * 0x94d049bb133111eb;
    mixed ^= mixed >> 31;
    for (char& digit : place) {
        digit = digits[mixed % digits.size()];
        mixed /= digits.size();
    }
}

// What the C library's tempnam gives for tmp_prefix: the name of no file, in memory of
// malloc; null, and errno tells why. Linkers warn of any program that mentions tempnam.
static char* temporary_name(const char* dir) {
    constexpr std::size_t random_digits = 6;
    constexpr int most_attempts = 62 * 62 * 62;
    const char* const folder = temporary_folder(dir);
    if (folder == nullptr) {
        errno = ENOENT;
        return nullptr;
    }
    std::string_view base = folder;
    while (base.size() > 1 && base.ends_with('/')) {
        base.remove_suffix(1);
    }
    const std::size_t fixed = base.size() + 1 + tmp_prefix.size() - 1;
    if (fixed + random_digits + 1 > FILENAME_MAX) {
        errno = EINVAL;
        return nullptr;
    }
    auto* const name = static_cast<char*>(std::malloc(fixed + random_digits + 1));
    if (name == nullptr) {
        return nullptr;
    }
    *std::copy(base.begin(), base.end(), name) = '/';
    std::copy_n(tmp_prefix.begin(), tmp_prefix.size() - 1, name + base.size() + 1);
    name[fixed + random_digits] = '\0';
    const int errno_before = errno;
    int failure = EEXIST;
    for (int attempt = 0; attempt < most_attempts && failure == EEXIST; ++attempt) {
        set_random_digits({name + fixed, random_digits});
        struct stat status {};
        if (lstat(name, &status) != 0) {
            failure = errno;
        }
    }
    if (failure == ENOENT) {
        errno = errno_before;
        return name;
    }
    std::free(name);
    errno = failure;
    return nullptr;
}

// The listing in progress.
static DIR* dir_stream = nullptr;

// The longest working directory that fn_get_working_dir gives, with its terminator.
constexpr std::size_t working_dir_size = 500;

// The last point of the name, when it lies in the last component; otherwise null.
static char* extension_point(char* name) {
    char* const point = std::strrchr(name, '.');
    return point != nullptr && std::strchr(point, '/') == nullptr ? point : nullptr;
}

static bool is_given(const char* part) {
    return part != nullptr && *part != '\0';
}

static std::size_t room_for(const char* part) {
    return part != nullptr ? std::strlen(part) + 1 : 0;
}

// Copies until a read returns nothing, which a failing read does too.
static bool copy_all(FILE* source, FILE* destination) {
    std::array<char, 1024> chunk{};
    while (const std::size_t got = std::fread(chunk.data(), 1, chunk.size(), source)) {
        if (std::fwrite(chunk.data(), 1, got, destination) != got) {
            return false;
        }
    }
    return true;
}

static bool copy_file(const char* from, const char* to) {
    FILE* const source = std::fopen(from, "rb");
    if (source == nullptr) {
        return false;
    }
    FILE* const destination = std::fopen(to, "wb");
    if (destination == nullptr) {
        std::fclose(source);
        return false;
    }
    const bool copied = copy_all(source, destination);
    const bool source_closed = std::fclose(source) == 0;
    const bool destination_closed = std::fclose(destination) == 0;
    return copied && source_closed && destination_closed;
}

void fn_split(const char* name, const char** dir, const char** base, const char** ext) {
    split_dir[0] = '\0';
    split_base[0] = '\0';
    split_ext[0] = '\0';
    if (dir != nullptr) {
        *dir = split_dir.data();
    }
    if (base != nullptr) {
        *base = split_base.data();
    }
    if (ext != nullptr) {
        *ext = split_ext.data();
    }
    if (!is_given(name)) {
        return;
    }
    std::string_view rest = name;
    const std::size_t base_start = rest.rfind('/') + 1;  // npos + 1 is 0
    store(split_dir, rest.substr(0, base_start));
    rest.remove_prefix(base_start);

    const std::size_t point = rest.rfind('.');
    const std::string_view extension =
        point != std::string_view::npos ? rest.substr(point + 1) : std::string_view();
    // The limit holds with the point still there, and the point is dropped afterwards
    // and only in front of an extension: "name." keeps it, and a base that was cut in
    // front of an extension is one shorter than one without.
    std::size_t base_length = std::min(rest.size() - extension.size(), longest_part);
    if (!extension.empty()) {
        --base_length;
    }
    store(split_base, rest.substr(0, base_length));
    store(split_ext, extension);
}

char* fn_build(char* dst, const char* dir, const char* base, const char* ext) {
    if (dst == nullptr) {
        dst = static_cast<char*>(safemalloc(room_for(dir) + room_for(base) + room_for(ext) + 1));
    }
    char* end = dst;
    const auto append = [&end](std::string_view part) {
        end = std::copy(part.begin(), part.end(), end);
    };
    if (is_given(dir)) {
        append(dir);
        if (end[-1] != '/') {
            append("/");
        }
    }
    if (base != nullptr) {
        append(base);
    }
    if (is_given(ext)) {
        if (*ext != '.') {
            append(".");
        }
        append(ext);
    }
    *end = '\0';
    return dst;
}

void fn_addext(char* name, const char* ext, int replace) {
    if (ext == nullptr) {
        return;
    }
    char* const point = extension_point(name);
    const char* const bare_ext = *ext == '.' ? ext + 1 : ext;
    if (point == nullptr) {
        if (*ext != '\0') {
            std::strcat(name, ".");
            std::strcat(name, bare_ext);
        }
    } else if (replace != 0) {
        if (*ext == '\0') {
            *point = '\0';
        } else {
            std::strcpy(point + 1, bare_ext);
        }
    }
}

void fn_delext(char* name) {
    if (char* const point = extension_point(name)) {
        *point = '\0';
    }
}

int fn_hasdir(const char* name) {
    return std::strchr(name, '/') != nullptr ? 1 : 0;
}

const char* fn_basename(const char* name) {
    if (!is_given(name)) {
        return nullptr;
    }
    const char* const slash = std::strrchr(name, '/');
    return slash != nullptr ? slash + 1 : name;
}

bool fn_matches_ext(const char* name, const char* ext) {
    fn_split(name, nullptr, nullptr, nullptr);
    return fn_strcmp(split_ext.data(), ext) == 0;
}

int fn_has_full_path(const char* name) {
    return *name == '/' ? 1 : 0;
}

int fn_has_relative_path(const char* name) {
    const std::string_view path = name;
    return path.starts_with("./") || path.starts_with("../") ? 1 : 0;
}

int fn_strcmp(const char* a, const char* b) {
    while (*a != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<signed char>(*a) - static_cast<signed char>(*b);
}

int fn_samefile(const char* a, const char* b) {
    struct stat status_a {};
    struct stat status_b {};
    if (stat(a, &status_a) != 0 || stat(b, &status_b) != 0) {
        return 0;
    }
    if (status_a.st_ino == status_b.st_ino && status_a.st_dev == status_b.st_dev) {
        return 1;
    }
    return fn_strcmp(a, b) == 0 ? 1 : 0;
}

char* fn_realname(const char* name) {
    const std::size_t size = std::strlen(name) + 1;
    return static_cast<char*>(std::memcpy(safemalloc(size), name, size));
}

char* fn_tmpnam(char* dst, const char* /*ignored*/, const char* dir) {
    errno = 0;
    set_tmp_prefix(static_cast<unsigned long>(getpid()));
    char* const name = temporary_name(dir);
    if (name == nullptr) {
        std::fprintf(stderr, "ERROR: cannot create temporary file name; %s\n",
                     errno == ENOMEM ? "out of memory" : "check directory permissions");
        std::exit(1);
    }
    if (dst == nullptr) {
        return name;
    }
    std::strcpy(dst, name);
    std::free(name);
    return dst;
}

char* fn_get_working_dir(char* buf) {
    char* const area = buf != nullptr ? buf : static_cast<char*>(safemalloc(working_dir_size + 1));
    if (getcwd(area, working_dir_size) == nullptr) {
        std::perror("getcwd in fn_get_working_dir");
    }
    return area;
}

std::string cstr_to_fn(const std::string& text) {
    return text;
}

std::string fn_to_cstr(const std::string& name) {
    return name;
}

int fn_exists(const char* name) {
    struct stat status {};
    return stat(name, &status) == 0 ? 1 : 0;
}

bool fn_is_empty(const char* name) {
    struct stat status {};
    return stat(name, &status) == 0 && status.st_size == 0;
}

bool file_is_empty(FILE* stream) {
    std::fflush(stream);
    struct stat status {};
    return fstat(fileno(stream), &status) == 0 && status.st_size == 0;
}

int fn_delete(const char* name) {
    return std::remove(name);
}

int fn_rename(const char* from, const char* to) {
    if (std::rename(from, to) == 0) {
        return 1;
    }
    return errno == EXDEV && copy_file(from, to) ? 1 : 0;
}

void fn_change_dir(const char* dir) {
    if (dir != nullptr && chdir(dir) != 0) {
        std::perror("chdir in fn_change_dir");
    }
}

const char* fn_get_dir_entry(const char* dir, int* flag) {
    *flag = 0;
    if (dir != nullptr) {
        dir_stream = opendir(dir);
    }
    if (dir_stream == nullptr) {
        return nullptr;
    }
    if (const dirent* const entry = readdir(dir_stream)) {
        return entry->d_name;
    }
    // The stream is forgotten, not closed: the last name handed out lies in it.
    dir_stream = nullptr;
    return nullptr;
}

bool user_specified_advice_stream(FILE* stream) {
    return stream == stdout || stream == stderr;
}

bool fn_is_user_specified_stream(const char* name) {
    return fn_strcmp(name, "stdout") == 0 || fn_strcmp(name, "stderr") == 0;
}

bool fn_explicit_disable(const char* name) {
    return fn_strcmp(name, "none") == 0;
}
