// Fuzzes the whole pass: options, assembly and C file are cut from one input,
// and the listing is held against the slow second interlister of the tests.
//
// The input's first line holds the options, the rest the assembly and, behind a
// line "%%", the C file "a.c". A byte of value 1 stands for 4090 copies of the
// byte behind it, so that lines as long as the buffers come from short inputs.
#include <algorithm>
#include <cerrno>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "interlist/command_line.h"
#include "interlist/listing.h"
#include "interlist/listing_output.h"
#include "tests/interlist/fresh_state.h"
#include "tests/interlist/reference_model.h"

// The core ends the process through exit and writes the listing through write, which
// the linker turns into these. Nothing between here and the run needs a destructor.
static bool running = false;
static std::jmp_buf after_the_run;

// A listing that is full soon: a width or a position may ask for gigabytes.
static std::string listing;
constexpr std::size_t longest_listing = 2000000;

// The linker gives these their names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" [[noreturn]] void __real_exit(int status);
extern "C" [[noreturn]] void __wrap_exit(int status) {
    if (running) {
        std::longjmp(after_the_run, 1);
    }
    __real_exit(status);
}

extern "C" ssize_t __real_write(int descriptor, const void* text, std::size_t size);
extern "C" ssize_t __wrap_write(int descriptor, const void* text, std::size_t size) {
    if (!running || descriptor != list_output.descriptor) {
        return __real_write(descriptor, text, size);
    }
    if (listing.size() > longest_listing) {
        errno = ENOSPC;
        return -1;
    }
    listing.append(static_cast<const char*>(text), size);
    return static_cast<ssize_t>(size);
}
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

// The folder that the runs work in; it goes with the process.
struct ScratchFolder {
    std::filesystem::path path;

    ScratchFolder() {
        std::string name = std::filesystem::temp_directory_path() / "interlist-fuzz-XXXXXX";
        path = mkdtemp(name.data());
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
};

static std::string expanded(const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == 1 && i + 1 < text.size()) {
            all.append(4090, text[++i]);
        } else {
            all += text[i];
        }
    }
    return all;
}

static void write_file(const char* name, const std::string& bytes) {
    std::ofstream(name, std::ios::binary) << bytes;
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
    static const ScratchFolder folder;
    // The fuzzer reads its corpus by the names that it was given.
    const std::filesystem::path home = std::filesystem::current_path();
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t options_end = std::min(input.find('\n'), input.size());
    std::string rest = input.substr(std::min(options_end + 1, input.size()));
    const std::size_t mark = rest.find("%%\n");
    const std::string source = mark == std::string::npos ? "" : expanded(rest.substr(mark + 3));
    std::string assembly = expanded(rest.substr(0, mark));
    // No way out of the folder.
    std::replace(assembly.begin(), assembly.end(), '/', '_');

    start_afresh();
    assy_input.size = cfile_input.size = 32768;
    std::filesystem::current_path(folder.path);
    write_file("x.asm", assembly);
    write_file("a.c", source);

    std::vector<std::string> arguments{"interlist"};
    std::istringstream option_words(input.substr(0, options_end));
    for (std::string word; option_words >> word;) {
        word = word.substr(0, word.find('\0'));
        // Other words would be file names.
        if (word[0] == '-' || word.find_first_not_of("0123456789") == std::string::npos) {
            arguments.push_back(word);
        }
    }
    arguments.push_back("x.asm");
    arguments.push_back("x.cl");
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (auto& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    listing.clear();
    // A -w at the end takes the name for its value.
    const bool complete = run(words) && std::string("x.asm") == assy_file_name;
    const ModelOptions options{skip_blanks != 0, preserve_sp != 0, cut_colm};
    if (complete && model_listing(assembly, {{"a.c", source}}, options).listing != listing) {
        std::abort();
    }
    start_afresh();
    std::filesystem::current_path(home);
    return 0;
}
