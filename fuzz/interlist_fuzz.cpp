// Fuzzes the whole pass: options, assembly and C file are cut from one input, and the
// listing is held against the slow second interlister of the tests.
//
// The input's first line holds the options, the rest the assembly and, behind a line
// "%%", the C file "a.c". In either a byte of value 1 stands for 4090 copies of the byte
// behind it, a few times, so that lines as long as the buffers come from short inputs.
// An option line that begins with "|" makes them no regular files, which are read byte
// by byte.
//
// Nothing touches the disk: the linker turns the calls that the interlister opens,
// reads, writes and closes its files with into those below.
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/reference_model.h"

namespace {

// The files of a run. A descriptor is the place of a file here, above all real ones.
struct memory_file {
    const char* name;
    const char* mode;  // of opening it, by which it is told from a C file of its name
    std::string bytes = {};
    FILE* stream = nullptr;
};

constexpr int first_descriptor = 100000;

}  // namespace

static memory_file files[] = {{"x.asm", "rb"}, {"a.c", "r"}, {"x.cl", "w"}};
static bool are_regular = true;
constexpr memory_file& assembly = files[0];
constexpr memory_file& source = files[1];
constexpr memory_file& listing = files[2];

// A listing is full soon: a width or a position may ask for gigabytes.
constexpr std::size_t longest_listing = 40000;

static bool running = false;
static std::jmp_buf after_the_run;

static memory_file* file_of(int descriptor) {
    return descriptor < first_descriptor ? nullptr : &files[descriptor - first_descriptor];
}

static memory_file* file_of(FILE* stream) {
    auto* const found = std::find_if(std::begin(files), std::end(files),
                                     [=](const memory_file& f) { return f.stream == stream; });
    return found == std::end(files) ? nullptr : found;
}

// The linker gives these their names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

[[noreturn]] void __real_exit(int status);
FILE* __real_fopen(const char* name, const char* mode);
int __real_fclose(FILE* stream);
int __real_fileno(FILE* stream);
int __real_fstat(int descriptor, struct stat* status);
ssize_t __real_pread(int descriptor, void* to, std::size_t size, off_t from);
ssize_t __real_write(int descriptor, const void* text, std::size_t size);

// Nothing between here and the run needs a destructor.
[[noreturn]] void __wrap_exit(int status) {
    if (running) {
        std::longjmp(after_the_run, 1);
    }
    __real_exit(status);
}

FILE* __wrap_fopen(const char* name, const char* mode) {
    if (!running) {
        return __real_fopen(name, mode);
    }
    auto* const found =
        std::find_if(std::begin(files), std::end(files), [=](const memory_file& file) {
            return std::string_view(file.name) == name && std::string_view(file.mode) == mode;
        });
    if (found == std::end(files)) {
        errno = ENOENT;
        return nullptr;
    }
    // It is read only where the file is not regular. It takes no empty text.
    found->stream =
        fmemopen(found->bytes.data(), std::max<std::size_t>(found->bytes.size(), 1), "r");
    if (found->bytes.empty()) {
        std::fgetc(found->stream);
    }
    return found->stream;
}

int __wrap_fclose(FILE* stream) {
    if (memory_file* const file = file_of(stream)) {
        file->stream = nullptr;
    }
    return __real_fclose(stream);
}

int __wrap_fileno(FILE* stream) {
    const memory_file* const file = file_of(stream);
    return file == nullptr ? __real_fileno(stream)
                           : first_descriptor + static_cast<int>(file - files);
}

int __wrap_fstat(int descriptor, struct stat* status) {
    const memory_file* const file = file_of(descriptor);
    if (file == nullptr) {
        return __real_fstat(descriptor, status);
    }
    *status = {};
    status->st_mode = are_regular ? S_IFREG : S_IFIFO;
    return 0;
}

ssize_t __wrap_pread(int descriptor, void* to, std::size_t size, off_t from) {
    const memory_file* const file = file_of(descriptor);
    if (file == nullptr) {
        return __real_pread(descriptor, to, size, from);
    }
    const auto at = std::min(static_cast<std::size_t>(from), file->bytes.size());
    return static_cast<ssize_t>(file->bytes.copy(static_cast<char*>(to), size, at));
}

ssize_t __wrap_write(int descriptor, const void* text, std::size_t size) {
    memory_file* const file = file_of(descriptor);
    if (file == nullptr) {
        return __real_write(descriptor, text, size);
    }
    if (file->bytes.size() > longest_listing) {
        errno = ENOSPC;
        return -1;
    }
    file->bytes.append(static_cast<const char*>(text), size);
    return static_cast<ssize_t>(size);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

static bool run(std::vector<char*>& words) {
    running = true;
    if (setjmp(after_the_run) != 0) {
        running = false;
        return false;
    }
    init(static_cast<int>(words.size()) - 1, words.data());
    process_assy();
    end_listing();
    running = false;
    return true;
}

static std::string expanded(std::string_view text) {
    constexpr std::size_t long_enough = 20000;
    std::string all;
    all.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == 1 && i + 1 < text.size() && all.size() < long_enough) {
            all.append(4090, text[++i]);
        } else {
            all += text[i];
        }
    }
    return all;
}

// The words of the option line that are no file names.
static std::vector<std::string> option_words(std::string_view line) {
    std::vector<std::string> words;
    while (!line.empty()) {
        std::string word(line.substr(0, line.find_first_of(" \t\r\v\f")));
        line.remove_prefix(std::min(word.size() + 1, line.size()));
        word.resize(std::min(word.find('\0'), word.size()));
        if (!word.empty() &&
            (word[0] == '-' || word.find_first_not_of("0123456789") == std::string::npos)) {
            words.push_back(word);
        }
    }
    return words;
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    // The program's own messages are of no interest here.
    static std::vector<char*> words(*argv, *argv + *argc);
    static char no_messages[] = "-close_fd_mask=3";
    words.insert(words.begin() + 1, no_messages);
    words.push_back(nullptr);
    *argv = words.data();
    ++*argc;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::string_view options_line = input.substr(0, input.find('\n'));
    const std::string_view rest = input.substr(std::min(options_line.size() + 1, input.size()));
    const std::size_t mark = rest.find("%%\n");
    are_regular = !options_line.starts_with('|');
    options_line.remove_prefix(are_regular ? 0 : 1);

    assy_input.size = cfile_input.size = 32768;
    list_output.size = 4096;
    assembly.bytes = expanded(rest.substr(0, mark));
    source.bytes = mark == std::string_view::npos ? "" : expanded(rest.substr(mark + 3));
    listing.bytes.clear();

    std::vector<std::string> arguments = option_words(options_line);
    arguments.insert(arguments.begin(), "interlist");
    arguments.insert(arguments.end(), {"x.asm", "x.cl"});
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (auto& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    // A -w at the end takes the name for its value.
    const bool complete = run(words) && std::string_view("x.asm") == assy_file_name;
    const ModelOptions options{skip_blanks != 0, preserve_sp != 0, cut_colm};
    if (complete &&
        model_listing(assembly.bytes, {{"a.c", source.bytes}}, options).listing != listing.bytes) {
        std::abort();
    }
    start_afresh();
    return 0;
}
