#include "tests/packaging/installed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

RunOptions in_folder(const std::string& folder) {
    RunOptions options;
    options.directory = folder;
    return options;
}

RunOptions with_variable(const std::string& name, const std::string& value) {
    RunOptions options;
    options.set[name] = value;
    return options;
}

RunOptions reading(const std::string& input) {
    RunOptions options;
    options.input = input;
    return options;
}

std::string output_of(const std::vector<std::string>& argv, const RunOptions& options) {
    const Finished run = run_program(argv, options);
    std::string command;
    for (const std::string& word : argv) {
        command += word + ' ';
    }
    EXPECT_EQ(run.status, 0) << command << '\n' << run.out << run.err;
    return run.out;
}

std::string shell(const std::string& script, const std::vector<std::string>& arguments,
                  const RunOptions& options) {
    std::vector<std::string> argv{"sh", "-e", "-c", script, "sh"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    return output_of(argv, options);
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

std::set<std::string> files_below(const std::string& folder) {
    std::set<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_directory()) {
            const fs::path inside = fs::relative(entry.path().parent_path(), folder);
            files.insert((inside / entry.path().filename()).lexically_normal());
        }
    }
    return files;
}

const std::string& installed_tree() {
    static const ScratchFolder scratch;
    static const std::string tree = [] {
        output_of({CMAKE, "--install", BUILD_DIR, "--prefix", scratch / "first"});
        fs::rename(scratch / "first", scratch / "tree");
        return scratch / "tree";
    }();
    return tree;
}

void configure(const std::string& project, const std::string& folder,
               const std::vector<std::string>& options) {
    std::vector<std::string> argv{CMAKE,
                                  "-S",
                                  project,
                                  "-B",
                                  folder,
                                  "-G",
                                  GENERATOR,
                                  "-DCMAKE_C_COMPILER=" CC,
                                  "-DCMAKE_CXX_COMPILER=" CXX,
                                  "-DCMAKE_CXX_FLAGS=" CXX_FLAGS,
                                  "-DCMAKE_PREFIX_PATH=" + installed_tree()};
    argv.insert(argv.end(), options.begin(), options.end());
    // A cache may give assembly of another run, whose folders are gone.
    RunOptions without_cache;
    without_cache.unset = {"CMAKE_C_COMPILER_LAUNCHER", "CMAKE_CXX_COMPILER_LAUNCHER"};
    output_of(argv, without_cache);
}

std::string build(const std::string& folder, const std::vector<std::string>& options) {
    std::vector<std::string> argv{CMAKE, "--build", folder};
    argv.insert(argv.end(), options.begin(), options.end());
    return output_of(argv);
}
