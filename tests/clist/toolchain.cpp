// Runs the tools and reads what they print.
#include "tests/clist/toolchain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <sstream>

#include "tests/harness/program.h"

static bool is_cpp(std::string_view source) {
    return source.ends_with(".cpp") || source.ends_with(".cc");
}

static std::string tool(const toolchain& with, const std::string& name) {
    return with.prefix + name;
}

static bool is_native(const toolchain& with) {
    return *with.prefix == '\0';
}

static bool is_windows(const toolchain& with) {
    return std::string_view(with.target).find("mingw") != std::string_view::npos;
}

std::vector<std::string> compiler(const toolchain& with, std::string_view source) {
    if (!with.is_clang) {
        return {tool(with, is_cpp(source) ? "g++" : "gcc")};
    }
    std::vector<std::string> words = {is_cpp(source) ? "clang++" : "clang"};
    if (!is_native(with)) {
        words.push_back("--target=" + std::string(with.target));
    }
    return words;
}

std::vector<std::string> assembler(const toolchain& with, std::string_view flags) {
    std::vector<std::string> words =
        with.is_clang ? compiler(with, "") : std::vector<std::string>();
    if (with.is_clang) {
        words.insert(words.end(), {"-c", "-x", "assembler"});
        if (flags.find("-gdwarf-4") != std::string_view::npos) {
            words.push_back("-gdwarf-4");
        }
    } else {
        words.push_back(tool(with, "as"));
    }
    return words;
}

std::string missing_programs(const toolchain& with) {
    std::string missing;
    for (const std::string& program :
         {compiler(with, "a.c").front(), compiler(with, "a.cpp").front(), tool(with, "gcc"),
          tool(with, "as"), tool(with, "ld"), tool(with, "nm"), tool(with, "objcopy"),
          std::string("llvm-dwarfdump"), std::string("llvm-symbolizer")}) {
        if (!has_command(program) && missing.find(program) == std::string::npos) {
            missing += " " + program;
        }
    }
    return missing;
}

// --- What the tools print ---

static std::string run(const std::vector<std::string>& command, const std::string& folder,
                       const std::string& input = {}) {
    RunOptions options;
    options.directory = folder;
    options.input = input;
    const Finished it = run_program(command, options);
    EXPECT_EQ(it.status, 0) << command.front() << ": " << it.err;
    return it.out;
}

static std::string whole(const std::string& folder, const std::string& name) {
    return (std::filesystem::path(folder) / name).lexically_normal();
}

// "\303\251", as names that are no plain text are printed.
static std::string without_escapes(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && at + 3 < text.size() && text[at + 1] >= '0' &&
            text[at + 1] <= '3') {
            result += static_cast<char>((text[at + 1] - '0') * 64 + (text[at + 2] - '0') * 8 +
                                        (text[at + 3] - '0'));
            at += 3;
        } else {
            at += text[at] == '\\' ? 1 : 0;
            result += text[at];
        }
    }
    return result;
}

static std::string quoted_in(const std::string& line) {
    const std::size_t begin = line.find('"') + 1;
    return without_escapes(std::string_view(line).substr(begin, line.rfind('"') - begin));
}

static unsigned number_behind(const std::string& line, std::string_view what) {
    return static_cast<unsigned>(
        std::strtoul(line.c_str() + line.find(what) + what.size(), nullptr, 10));
}

static void read_lines(const std::string& text, const std::string& folder, object_truth& truth) {
    std::vector<std::string> folders;
    std::map<unsigned, std::string> files;
    std::string name;
    unsigned number = 0;
    std::map<std::uint64_t, source_line> sequence;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("debug_line[")) {
            folders = {folder};
            files.clear();
        } else if (line.starts_with("include_directories[")) {
            const unsigned index = number_behind(line, "[");
            folders.resize(std::max<std::size_t>(folders.size(), index + 1));
            folders[index] = whole(folder, quoted_in(line));
        } else if (line.starts_with("file_names[")) {
            number = number_behind(line, "[");
        } else if (line.find("   name: ") != std::string::npos) {
            name = quoted_in(line);
        } else if (line.find("dir_index: ") != std::string::npos) {
            files[number] = whole(folders.at(number_behind(line, ": ")), name);
        } else if (line.starts_with("0x")) {
            std::istringstream row(line.substr(line.find(' ')));
            unsigned in_source = 0;
            unsigned column = 0;
            unsigned file = 0;
            row >> in_source >> column >> file;
            const std::uint64_t address = std::strtoull(line.c_str(), nullptr, 16);
            if (line.find("end_sequence") == std::string::npos) {
                sequence[address] = {files[file], in_source};
                continue;
            }
            // What begins where other code ends may come before or behind it.
            sequence.erase(address);
            for (const auto& [begin, place] : sequence) {
                truth.lines[begin] = place;
            }
            truth.lines.try_emplace(address, std::nullopt);
            sequence.clear();
        }
    }
}

static std::vector<called_line> read_frames(std::istringstream& stream) {
    std::vector<called_line> frames;
    std::string function;
    std::string place;
    while (std::getline(stream, function) && !function.empty() && std::getline(stream, place)) {
        const std::size_t column = place.rfind(':');
        const std::size_t line = place.rfind(':', column - 1);
        frames.push_back(
            {function, {whole("", place.substr(0, line)), number_behind(place.substr(line), ":")}});
    }
    return frames;
}

static std::vector<std::string> linker(const toolchain& with) {
    std::vector<std::string> words = {tool(with, "ld"), "-e", "0", "--noinhibit-exec"};
    if (!is_windows(with)) {
        words.insert(words.end(), {"-Ttext=0x400000", "--unresolved-symbols=ignore-all",
                                   "--defsym=__dso_handle=0"});
    }
    if (std::string_view(with.target).starts_with("riscv")) {
        words.push_back("--no-relax");
    }
    words.insert(words.end(), {"truth.o", "-o", "truth.exe"});
    return words;
}

object_truth read_object(const toolchain& with, const std::string& folder,
                         const std::string& assembly, std::string_view flags,
                         const std::string& prefix) {
    object_truth truth;
    std::vector<std::string> assemble = assembler(with, flags);
    assemble.insert(assemble.end(), {assembly, "-o", "truth.o"});
    run(assemble, folder);
    RunOptions in_folder;
    in_folder.directory = folder;
    // Of what is not there it complains, for some targets with a status.
    run_program(linker(with), in_folder);
    std::istringstream symbols(run({tool(with, "nm"), "truth.exe"}, folder));
    for (std::string line; std::getline(symbols, line);) {
        truth.labels[line.substr(line.rfind(' ') + 1)] = std::strtoull(line.c_str(), nullptr, 16);
    }
    // Symbols would tell other names of functions than the debugging data.
    run({tool(with, "objcopy"), "-w", "-N", "*", "truth.exe"}, folder);
    read_lines(run({"llvm-dwarfdump", "--debug-line", "truth.exe"}, folder), folder, truth);
    std::string addresses;
    std::size_t count = 0;
    for (auto it = truth.labels.find(prefix + "0"); it != truth.labels.end();
         it = truth.labels.find(prefix + std::to_string(++count))) {
        addresses += std::to_string(it->second) + "\n";
    }
    std::istringstream frames(run(
        {"llvm-symbolizer", "--obj=truth.exe", "--no-demangle", "--inlines"}, folder, addresses));
    for (std::size_t i = 0; i < count; ++i) {
        truth.frames.push_back(read_frames(frames));
    }
    return truth;
}
