// Plans the listings of a project, writes the Ninja file and runs Ninja on it.
#include "clist/project.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <system_error>
#include <tuple>

#include "clist/arguments.h"
#include "clist/files.h"
#include "clist/forms/page.h"
#include "clist/messages.h"
#include "clist/output.h"
#include "clist/process.h"
#include "gas2interlist/output.h"

namespace clist {
namespace {

namespace fs = std::filesystem;

// The folder that all of the sources lie in.
fs::path common_folder(const std::vector<listing_step>& steps) {
    fs::path common;
    for (const listing_step& step : steps) {
        const fs::path folder = fs::path(step.source).parent_path();
        if (common.empty()) {
            common = folder;
        }
        const auto [end, ignored] =
            std::mismatch(common.begin(), common.end(), folder.begin(), folder.end());
        fs::path shared;
        for (auto part = common.begin(); part != end; ++part) {
            shared /= *part;
        }
        common = shared;
    }
    return common;
}

// A build that is compiled through clist's launcher is listed by the compile itself.
std::vector<std::string> without_launcher(const std::vector<std::string>& words) {
    if (fs::path(words.front()).filename() != "clist") {
        return words;
    }
    const options inner = read_options({words.begin() + 1, words.end()}, {});
    return inner.what == work::launcher && inner.error.empty() ? inner.words : words;
}

// The words without the sources other than `file`, which have entries of their own.
std::vector<std::string> words_for(const arguments& given, const fs::path& file,
                                   const fs::path& directory) {
    std::vector<std::string> words = given.given;
    if (given.sources.size() < 2) {
        return words;
    }
    std::set<std::size_t> others;
    for (const std::size_t source : given.sources) {
        const argument& each = given.all[source];
        if ((directory / each.option).lexically_normal() != file) {
            others.insert(each.top);
        }
    }
    if (others.size() < given.sources.size()) {
        for (auto at = others.rbegin(); at != others.rend(); ++at) {
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(*at));
        }
    }
    return words;
}

std::string quoted_for_shell(std::string_view word) {
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=./,:@%";
    if (!word.empty() && word.find_first_not_of(plain) == std::string_view::npos) {
        return std::string(word);
    }
    std::string quoted = "'";
    for (const char byte : word) {
        if (byte == '\'') {
            quoted += "'\\''";
        } else {
            quoted += byte;
        }
    }
    return quoted + "'";
}

// The value of a variable in a Ninja file. Names of files are always given as variables: as
// they stand they could not hold every byte.
std::string escaped_for_ninja(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        escaped.append(byte == '$' ? "$$" : std::string(1, byte));
    }
    return escaped;
}

bool has_line_break(const listing_step& step) {
    const auto breaks = [](const std::string& word) {
        return word.find_first_of("\r\n") != std::string::npos;
    };
    return breaks(step.output) || breaks(step.directory) ||
           std::any_of(step.words.begin(), step.words.end(), breaks);
}

bool is_path(const std::string& program) {
    return program.find('/') != std::string::npos;
}

std::string own_program() {
    std::error_code failure;
    const fs::path self = fs::read_symlink("/proc/self/exe", failure);
    return failure ? "clist" : self.string();
}

// Ninja tells of a dry run what is still to be made, a description on each line.
std::vector<std::string> remaining_steps(const std::vector<std::string>& ninja,
                                         const std::vector<listing_step>& steps) {
    scratch_folder scratch;
    run_settings quietly;
    quietly.messages_to = scratch.file("steps");
    quietly.environment = {"NINJA_STATUS="};
    std::vector<std::string> words = ninja;
    words.emplace_back("-n");
    run(words, quietly);
    std::string ignored;
    const std::string text = read_whole(quietly.messages_to, ignored).value_or("");
    std::set<std::string_view> lines;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        lines.insert(line);
    }
    std::vector<std::string> names;
    for (const listing_step& step : steps) {
        if (lines.contains(step.name)) {
            names.push_back(step.name);
        }
    }
    return names;
}

}  // namespace

std::vector<listing_step> plan_listings(const std::vector<database_entry>& entries,
                                        const std::string& base, const std::string& folder,
                                        const options& given) {
    std::vector<listing_step> steps;
    std::set<std::tuple<fs::path, fs::path, std::vector<std::string>>> known;
    for (const database_entry& entry : entries) {
        const fs::path directory = (fs::path(base) / entry.directory).lexically_normal();
        const fs::path file = (directory / entry.file).lexically_normal();
        const arguments command = read_arguments(without_launcher(entry.words), directory);
        std::vector<std::string> words = words_for(command, file, directory);
        if (!command.makes_code || command.reads_standard_input ||
            !known.emplace(directory, file, words).second) {
            continue;
        }
        words.insert(words.begin(), given.through.begin(), given.through.end());
        steps.push_back({file, {}, {}, directory, std::move(words)});
    }
    const fs::path common = common_folder(steps);
    // "index" is taken: index.html leads to the pages.
    std::map<std::string, int> uses{{"index", 1}};
    for (listing_step& step : steps) {
        step.name = fs::path(step.source).lexically_relative(common);
        const int use = ++uses[step.name];
        if (use > 1) {
            step.name.append(".").append(std::to_string(use));
        }
        step.output = (fs::path(folder) / (step.name + given.suffix)).lexically_normal();
    }
    return steps;
}

std::string ninja_file(const std::vector<listing_step>& steps, const std::string& self,
                       const std::string& folder, const options& given) {
    std::string text = "# Written by clist -p, which replaces it.\nninja_required_version = 1.5\n";
    const auto set = [&](const char* name, const std::string& value) {
        text.append(name).append(" = ").append(escaped_for_ninja(value)).append("\n");
    };
    std::string maker = quoted_for_shell(self);
    for (const std::string& word : given.form_words) {
        maker.append(" ").append(quoted_for_shell(word));
    }
    set("builddir", folder);
    set("clist", self);
    set("list", maker);
    text +=
        "\nrule list\n"
        "  command = cd $in_directory && $list --depfile $quoted.d -o $quoted $words\n"
        "  description = $name\n  depfile = $out.d\n  deps = gcc\n";
    for (const listing_step& step : steps) {
        std::string words = "--";
        for (const std::string& word : step.words) {
            words.append(" ").append(quoted_for_shell(word));
        }
        text += "\n";
        set("listing", step.output);
        text.append("build $listing: list").append(is_path(self) ? " | $clist\n" : "\n");
        set("  name", step.name);
        set("  quoted", quoted_for_shell(step.output));
        set("  in_directory", quoted_for_shell(step.directory));
        set("  words", words);
    }
    return text;
}

// Removes what Ninja has made in this form of listing and what no step makes any more.
static void remove_leftovers(const std::vector<listing_step>& steps, const fs::path& folder,
                             const options& given) {
    std::set<std::string_view> outputs;
    for (const listing_step& step : steps) {
        outputs.insert(step.output);
    }
    const std::string beginning = folder / "";
    std::string ignored;
    const std::string log = read_whole(folder / ".clist" / ".ninja_log", ignored).value_or("");
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        // Its start, end and time, what was made, and a hash, parted by tabs.
        std::size_t begin = 0;
        for (int fields = 0; fields < 3; ++fields) {
            begin = line.find('\t', begin) + 1;
        }
        const std::size_t end = line.rfind('\t');
        if (begin == 0 || end <= begin || end == std::string::npos) {
            continue;
        }
        const std::string made = line.substr(begin, end - begin);
        if (!made.starts_with(beginning) || !made.ends_with(given.suffix) ||
            outputs.contains(made)) {
            continue;
        }
        std::error_code failure;
        // The folder itself holds the log.
        for (fs::path left = made; fs::remove(left, failure);) {
            left = left.parent_path();
        }
    }
}

// Writes the Ninja file, unless it is there already, and makes the folders for the listings.
// Gives the file's name, or nothing after a message.
static std::optional<std::string> write_plan(const std::vector<listing_step>& steps,
                                             const fs::path& folder, const options& given) {
    const fs::path own_folder = folder / ".clist";
    std::error_code failure;
    fs::create_directories(own_folder, failure);
    for (const listing_step& step : steps) {
        if (!failure) {
            fs::create_directories(fs::path(step.output).parent_path(), failure);
        }
    }
    if (failure) {
        say(folder.string() + ": " + failure.message());
        return std::nullopt;
    }
    const std::string plan = own_folder / "build.ninja";
    const std::string text = ninja_file(steps, own_program(), own_folder, given);
    std::string error;
    if (read_whole(plan, error) != text &&
        !gas2interlist::write_output(plan, {.assembly = text}, {}, error)) {
        say(plan + ": " + error);
        return std::nullopt;
    }
    return plan;
}

// Joins the pages that are there in one, unless it is newer than they and what it was planned
// by. False after a message.
static bool write_index(const std::string& plan, const std::vector<listing_step>& steps,
                        const fs::path& folder) {
    const std::string index = folder / "index.html";
    std::error_code failure;
    const auto made = [&](const std::string& file) { return fs::last_write_time(file, failure); };
    // What is not there is older than everything.
    const fs::file_time_type last = made(index);
    bool is_outdated = made(plan) > last;
    std::vector<joined_page> pages;
    for (const listing_step& step : steps) {
        if (fs::exists(step.output, failure)) {
            is_outdated = is_outdated || made(step.output) > last;
            pages.push_back({step.output, fs::path(step.output).lexically_relative(folder)});
        }
    }
    if (pages.empty() || !is_outdated) {
        return true;
    }
    bool is_joined = true;
    const auto write = [&](int descriptor) {
        output to(descriptor);
        is_joined = join_pages(pages, common_folder(steps).filename(), to);
        return to.flush() && is_joined;
    };
    std::string error;
    if (gas2interlist::write_output(index, {.write = write}, error)) {
        return true;
    }
    if (is_joined) {
        say(index + ": " + error);
    }
    return false;
}

// Runs Ninja and sums up.
static int run_plan(const std::string& ninja, const std::string& plan,
                    const std::vector<listing_step>& steps, const fs::path& folder,
                    const options& given) {
    const std::vector<std::string> words{ninja, "-f", plan};
    std::vector<std::string> all = words;
    all.insert(all.end(), {"-k", "0"});
    if (!given.jobs.empty()) {
        all.insert(all.end(), {"-j", given.jobs});
    }
    run_settings settings;
    if (std::getenv("NINJA_STATUS") == nullptr) {
        settings.environment = {"NINJA_STATUS=clist: [%f/%t] "};
    }
    const run_result ended = run(all, settings);
    const bool is_page = given.listing.form == listing_form::page;
    const bool has_index =
        !is_page || ended.error != 0 || ended.signal != 0 || write_index(plan, steps, folder);
    const std::string total = std::to_string(steps.size());
    if (ended.succeeded()) {
        say((steps.size() == 1 ? "1 listing" : total + " listings") + " in " +
            (is_page ? folder / "index.html" : folder).string());
        return has_index ? exit_success : exit_failure;
    }
    const std::vector<std::string> failed = remaining_steps(words, steps);
    if (ended.error != 0 || ended.signal != 0 || failed.empty()) {
        say(failure_text(ninja, ended));
        return exit_failure;
    }
    std::string names;
    for (const std::string& name : failed) {
        names.append(names.empty() ? "" : ", ").append(name);
    }
    say(std::to_string(failed.size()) + " of " + total + " listings failed: " + names);
    return exit_failure;
}

int list_project(const options& given) {
    std::error_code failure;
    fs::path file = given.build_dir;
    if (fs::is_directory(file, failure)) {
        file /= "compile_commands.json";
    }
    std::string error;
    const std::optional<std::string> text = read_whole(file, error);
    if (!text) {
        const bool is_missing = file.string() != given.build_dir && !fs::exists(file, failure);
        say(file.string() + ": " + error +
            (is_missing ? "; CMake writes it with -DCMAKE_EXPORT_COMPILE_COMMANDS=ON" : ""));
        return exit_failure;
    }
    const database known = read_database(*text);
    if (!known.error.empty()) {
        say(file.string() + ":" + known.error);
        return exit_failure;
    }
    const fs::path base = fs::absolute(file).parent_path().lexically_normal();
    const fs::path folder =
        fs::absolute(given.output.empty() ? base / "listings" : fs::path(given.output))
            .lexically_normal();
    const std::vector<listing_step> steps = plan_listings(known.entries, base, folder, given);
    if (steps.empty()) {
        say(file.string() + ": no C or C++ source is compiled there");
        return exit_failure;
    }
    const auto broken = std::find_if(steps.begin(), steps.end(), has_line_break);
    if (broken != steps.end()) {
        say(file.string() + ": " + broken->name + ": a line break in a name or an argument");
        return exit_failure;
    }
    const std::string ninja = found_program("ninja").empty() ? "ninja-build" : "ninja";
    if (found_program(ninja).empty()) {
        say("-p needs Ninja, which is not here: install the package ninja-build (ninja on Arch, "
            "Alpine and macOS)");
        return exit_failure;
    }
    remove_leftovers(steps, folder, given);
    const std::optional<std::string> plan = write_plan(steps, folder, given);
    return plan ? run_plan(ninja, *plan, steps, folder, given) : exit_failure;
}

}  // namespace clist
