// clist: lists a compile, assembly at hand, or a whole project, with the source lines.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <deque>
#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "assembly/text_file.h"
#include "clist/arguments.h"
#include "clist/compile.h"
#include "clist/launcher.h"
#include "clist/listing.h"
#include "clist/memory.h"
#include "clist/messages.h"
#include "clist/options.h"
#include "clist/output.h"
#include "clist/process.h"
#include "clist/project.h"
#include "gas2interlist/output.h"
#include "gas2interlist/signals.h"

using namespace clist;
using assembly::text_file;

// Empty where there is none any more.
static std::string working_directory() {
    std::error_code failure;
    std::string directory = std::filesystem::current_path(failure);
    if (failure == std::errc::not_enough_memory) {
        throw std::bad_alloc();
    }
    return directory;
}

// What is listed: the texts, and the files that they lie in.
struct inputs {
    std::vector<listing_input> all;
    std::vector<text_file> files;
    std::deque<std::string> copies;

    void add(listing_input input, text_file file) {
        input.text = file.text();
        all.push_back(std::move(input));
        files.push_back(std::move(file));
    }
    // Keeps a text whose file is about to be written.
    void keep(const struct stat& file) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (files[i].is_mapped_from(file)) {
                copies.emplace_back(all[i].text);
                all[i].text = copies.back();
            }
        }
    }
};

static listing_input input_of_compile(const arguments& command, std::size_t source) {
    listing_input input;
    input.name = command.all[source].option;
    input.target = command.target;
    input.directory = working_directory();
    input.command = command.given;
    return input;
}

// Writes one listing of all inputs, to a file that is touched only when there is one to
// write. Gives the exit status.
static int write(inputs& from, const listing_options& options, const std::string& name) {
    struct stat old {};
    if (!name.empty() && stat(name.c_str(), &old) == 0) {
        from.keep(old);
    }
    std::size_t size = 0;
    for (const listing_input& it : from.all) {
        size += it.text.size();
    }
    expect_text(size);
    listing whole(from.all, options);
    if (!whole.read()) {
        return exit_failure;
    }
    if (whole.comes_from(name)) {
        say(name + ": a source of this listing");
        return exit_usage;
    }
    bool is_whole = true;
    const auto write_to = [&](int descriptor) {
        output out(descriptor);
        is_whole = whole.write(out);
        return out.flush() && is_whole;
    };
    std::string error;
    if (gas2interlist::write_output(name.empty() ? "-" : name, {.write = write_to}, error)) {
        return exit_success;
    }
    if (is_whole) {
        say((name.empty() ? "standard output" : name) + ": " + error);
    }
    return exit_failure;
}

static listing_options listing_options_for(const options& given) {
    listing_options options = given.listing;
    options.color = wants_color(given);
    return options;
}

static int list_assembly(const options& given) {
    inputs from;
    for (const std::string& name : given.words) {
        std::optional<text_file> file = text_file::open(name);
        listing_input input;
        input.name = name == "-" ? "standard input" : name;
        if (!file) {
            say(input.name + ": " + std::strerror(errno));
            return exit_failure;
        }
        input.directory = working_directory();
        input.modified = file->modified();
        from.add(std::move(input), std::move(*file));
    }
    return write(from, listing_options_for(given), given.output);
}

// Tells make and Ninja what the listing was made of, by names that lead there from anywhere.
static int write_dependencies(const options& given, std::vector<std::string> files) {
    const std::filesystem::path directory = working_directory();
    for (std::string& file : files) {
        file = (directory / file).lexically_normal();
    }
    const std::string rule = dependency_rule(given.output, files);
    std::string error;
    if (!gas2interlist::write_output(given.depfile, {.assembly = rule}, {}, error)) {
        say(given.depfile + ": " + error);
        return exit_failure;
    }
    return exit_success;
}

// Tells what stands where a source should. Gives the exit status.
static int refuse_without_source(const arguments& command) {
    for (const argument& each : command.all) {
        const bool is_program = each.what == role::program && !found_program(each.option).empty();
        const bool is_option =
            each.what != role::program && each.what != role::other_input &&
            (each.what != role::other || (each.option.starts_with("-") && each.option != "-"));
        if (is_program || is_option || each.option.empty()) {
            continue;
        }
        if (each.option == "-") {
            say("nothing to list: standard input needs -x c or -x c++");
            return exit_usage;
        }
        const std::string name = each.option.substr(each.option.front() == '@' ? 1 : 0);
        struct stat status {};
        if (stat(name.c_str(), &status) != 0) {
            say(name + ": " + std::strerror(errno));
            return exit_failure;
        }
        if (&each == &command.all.front() && S_ISDIR(status.st_mode)) {
            say(name + " is a folder: -p lists the project that was built in one");
        } else if (&each == &command.all.front()) {
            say(name + " is no program to run, no C or C++ source and no assembly (.s, .S, .asm)");
        } else {
            say("nothing to list: " + name + " is no C or C++ source");
        }
        return exit_usage;
    }
    say("nothing to list: there is no C or C++ source to compile; for a whole build there are "
        "--launcher and -p");
    return exit_usage;
}

// By the triple; an empty one is the compiler's own.
static bool may_be_x86(std::string_view target) {
    constexpr std::array<std::string_view, 6> names = {"x86_64", "i386", "i486",
                                                       "i586",   "i686", "amd64"};
    return target.empty() || std::any_of(names.begin(), names.end(), [&](std::string_view name) {
               return target.starts_with(name);
           });
}

static int list_compile(const options& given) {
    const arguments command = read_arguments(given.words);
    if (command.sources.empty()) {
        return refuse_without_source(command);
    }
    if (!command.makes_code) {
        say("nothing to list: what is asked of the compiler makes no code");
        return exit_usage;
    }
    for (const std::string& file : {given.output, given.depfile}) {
        if (uses_file(command, file)) {
            say(file + ": the compile itself uses this file");
            return exit_usage;
        }
    }
    if (given.intel && !may_be_x86(command.target)) {
        say("--intel is for x86, not for " + command.target);
        return exit_usage;
    }
    if (command.has_link_time) {
        say("-flto is left out: with it, code is made only when linking");
    }
    compile_settings settings;
    settings.intel = given.intel;
    settings.is_extra = settings.tells_dependencies = !given.depfile.empty();
    inputs from;
    listing_options options = listing_options_for(given);
    std::vector<std::string> dependencies;
    int status = exit_success;
    for (const std::size_t source : command.sources) {
        compiled made = compile(command, source, settings);
        if (made.status != 0) {
            std::fputs(made.messages.c_str(), stderr);
            if (made.messages.empty() && !made.error.empty()) {
                say(made.error);
            }
            status = status == exit_success ? made.status : status;
            continue;
        }
        from.add(input_of_compile(command, source), std::move(*made.assembly));
        for (std::string& folder : system_folders(command, source)) {
            options.system_directories.push_back(std::move(folder));
        }
        dependencies.insert(dependencies.end(), made.dependencies.begin(), made.dependencies.end());
    }
    if (status != exit_success) {
        const auto own = std::find_if(given.words.begin(), given.words.end(), is_own_option);
        if (own != given.words.end()) {
            say(*own + " was given to the compiler: clist's own options stand before its name");
        }
        return status;
    }
    status = write(from, options, given.output);
    return status == exit_success && !given.depfile.empty()
               ? write_dependencies(given, std::move(dependencies))
               : status;
}

static bool write_beside(const arguments& command, std::size_t source, compiled& made,
                         const options& given, const std::string& file) {
    const signal_hold whole_files_only;
    inputs from;
    from.add(input_of_compile(command, source), std::move(*made.assembly));
    listing_options options = given.listing;
    options.warnings = false;
    options.system_directories = system_folders(command, source);
    return write(from, options, file) == exit_success;
}

static int print(std::string_view text) {
    std::string error;
    if (gas2interlist::write_output("-", {.assembly = text}, {}, error)) {
        return exit_success;
    }
    say("standard output: " + error);
    return exit_failure;
}

static int run(const options& given) {
    if (!given.error.empty()) {
        say(given.error + "\nTry 'clist --help'.");
        return exit_usage;
    }
    // A launched compile ends by the signals that would have ended the compiler.
    if (given.what != work::launcher) {
        gas2interlist::catch_signals();
    }
    switch (given.what) {
        case work::compile:
            return list_compile(given);
        case work::assembly:
            return list_assembly(given);
        case work::launcher:
            return launch(given, write_beside);
        case work::project:
            return list_project(given);
        case work::help:
            return print(usage_text());
        case work::version:
            return print("clist " CLIST_VERSION "\n");
    }
    return exit_failure;
}

// Without any memory not even an exception can be thrown.
[[noreturn]] static void end_without_memory() {
    say("out of memory");
    _exit(exit_failure);
}

int main(int argc, char** argv) {
    gas2interlist::set_program_name("clist");
    std::set_terminate(end_without_memory);
    gas2interlist::keep_standard_streams_apart();
    try {
        return run(
            read_options({argv + (argc > 0 ? 1 : 0), argv + argc}, environment_of_process()));
    } catch (const std::bad_alloc&) {
        say("out of memory");
    } catch (const std::exception& failure) {
        say(failure.what());
    }
    return exit_failure;
}
