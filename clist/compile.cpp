// Makes and runs the command that turns a compile into one to assembly.
#include "clist/compile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <set>
#include <sstream>
#include <system_error>

#include "clist/files.h"
#include "clist/process.h"

namespace clist {
namespace {

namespace fs = std::filesystem;

// Without what an extra compile must not do: -Wp,-MD,FILE and its like name a dependency
// file to the preprocessor itself. Empty where nothing is left.
std::string without_dependencies(std::string_view list) {
    std::string kept;
    while (!list.empty()) {
        const auto next = [&] {
            const std::string_view part = list.substr(0, list.find(','));
            list.remove_prefix(std::min(part.size() + 1, list.size()));
            return part;
        };
        const std::string_view part = next();
        if (part == "-MD" || part == "-MMD" || part == "-MF" || part == "-MT" || part == "-MQ") {
            next();
        } else if (part != "-MP" && part != "-MG") {
            kept.append(kept.empty() ? "" : ",").append(part);
        }
    }
    return kept;
}

enum class treatment { keep, drop, assembly };

treatment treatment_of(const argument& each, bool is_this_source, bool is_extra) {
    switch (each.what) {
        case role::source:
            return is_this_source ? treatment::keep : treatment::drop;
        case role::to_object:
        case role::to_assembly:
            return treatment::assembly;
        case role::other_input:
        case role::output:
        case role::link_time:
        case role::split_debug:
            return treatment::drop;
        case role::dependencies:
        case role::dependency_file:
        case role::dependency_name:
        case role::dependency_rest:
        case role::side_file:
            return is_extra ? treatment::drop : treatment::keep;
        default:
            return treatment::keep;
    }
}

// The words put behind all others, so that nothing takes them back.
std::vector<std::string> added_words(const arguments& given, std::size_t source,
                                     const compile_settings& settings, const std::string& file) {
    std::vector<std::string> words;
    if (!given.to_object && !given.to_assembly) {
        words.emplace_back("-S");
    }
    if (!given.has_debug) {
        words.emplace_back("-g");
    }
    if (settings.intel) {
        words.emplace_back("-masm=intel");
    }
    const fs::path output = output_of(given, source);
    if (settings.is_extra) {
        words.emplace_back("-w");
        if (settings.tells_dependencies) {
            words.insert(words.end(), {"-MD", "-MF", file + ".d", "-MQ", "assembly"});
        }
    } else if (given.has(role::dependencies)) {
        // The names that the compiler would have made of its output's.
        if (!given.has(role::dependency_file) && (given.to_object || given.to_assembly)) {
            words.insert(words.end(), {"-MF", fs::path(output).replace_extension(".d")});
        }
        if (!given.has(role::dependency_name)) {
            words.insert(words.end(), {"-MQ", output});
        }
    }
    if (is_clang(given.compiler())) {
        if (!given.to_object && !given.to_assembly) {
            // What is for the linker is of no use here, and not worth a word.
            words.emplace_back("-Wno-unused-command-line-argument");
        }
    } else if (given.has(role::use_profile)) {
        // The profile is found by the name of the output.
        const std::string folder = output.parent_path();
        words.insert(words.end(), {"-dumpdir", folder.empty() ? "./" : folder + "/", "-dumpbase",
                                   output.stem().string() + ".c", "-dumpbase-ext", ".c"});
    }
    words.insert(words.end(), {"-o", file});
    return words;
}

// Response files that cannot be handed on as they are.
std::set<std::size_t> opened_response_files(const arguments& given, std::size_t source,
                                            bool is_extra) {
    std::set<std::size_t> opened = given.torn;
    for (std::size_t i = 0; i < given.all.size(); ++i) {
        const argument& each = given.all[i];
        if (treatment_of(each, i == source, is_extra) != treatment::keep ||
            each.what == role::end_of_options || (is_extra && each.what == role::preprocessor)) {
            opened.insert(each.top);
        }
    }
    return opened;
}

// Variables that name folders of headers that are a system's to the compiler. Those in $CPATH
// are not: they are as by -I.
struct folders_row {
    std::string_view language;
    const char* variable;
};

constexpr folders_row folder_variables[] = {
    {"c", "C_INCLUDE_PATH"},
    {"c++", "CPLUS_INCLUDE_PATH"},
    {"objective-c", "OBJC_INCLUDE_PATH"},
    {"objective-c++", "OBJCPLUS_INCLUDE_PATH"},
};

}  // namespace

std::vector<std::string> assembly_command(const arguments& given, std::size_t source,
                                          const compile_settings& settings,
                                          const std::string& file) {
    const std::vector<std::string> added = added_words(given, source, settings, file);
    const std::set<std::size_t> opened = opened_response_files(given, source, settings.is_extra);
    std::vector<std::string> words;
    bool has_added = false;
    std::size_t last_response = 0;
    for (std::size_t i = 0; i < given.all.size(); ++i) {
        const argument& each = given.all[i];
        const bool is_whole_response =
            given.given[each.top].starts_with('@') && !opened.contains(each.top);
        if (is_whole_response) {
            if (last_response != each.top) {
                words.push_back(given.given[each.top]);
                last_response = each.top;
            }
            continue;
        }
        const treatment what = treatment_of(each, i == source, settings.is_extra);
        if (what == treatment::drop) {
            continue;
        }
        if (each.what == role::end_of_options) {
            words.insert(words.end(), added.begin(), added.end());
            has_added = true;
        }
        if (what == treatment::assembly) {
            words.emplace_back("-S");
        } else if (settings.is_extra && each.what == role::preprocessor) {
            const std::string kept = without_dependencies(each.value);
            if (!kept.empty()) {
                words.push_back(each.option + kept);
            }
        } else {
            each.put_to(words);
        }
    }
    if (!has_added) {
        words.insert(words.end(), added.begin(), added.end());
    }
    return words;
}

std::string output_of(const arguments& given, std::size_t source) {
    if (given.output) {
        return *given.output;
    }
    return fs::path(given.all[source].option)
        .filename()
        .replace_extension(given.to_assembly ? ".s" : ".o");
}

bool uses_file(const arguments& given, const std::string& name) {
    std::error_code failure;
    return fs::is_regular_file(name, failure) &&
           std::any_of(given.all.begin(), given.all.end(), [&](const argument& each) {
               const bool is_file = each.what == role::source || each.what == role::other_input ||
                                    each.what == role::dependency_file;
               return is_file &&
                      fs::equivalent(name, each.value.empty() ? each.option : each.value, failure);
           });
}

std::vector<std::string> system_folders(const arguments& given, std::size_t source) {
    std::vector<std::string> folders;
    for (const argument& each : given.all) {
        if (each.what == role::system_folder) {
            folders.push_back(each.value);
        }
    }
    for (const folders_row& row : folder_variables) {
        const char* const value = std::getenv(row.variable);
        if (row.language != given.all[source].language || value == nullptr || *value == '\0') {
            continue;
        }
        std::istringstream parts(value + std::string(":"));
        for (std::string part; std::getline(parts, part, ':');) {
            folders.push_back(part.empty() ? "." : part);
        }
    }
    // Compilers also record where a folder really is.
    for (std::size_t i = 0, given_count = folders.size(); i < given_count; ++i) {
        std::error_code failure;
        const fs::path real = fs::canonical(folders[i], failure);
        if (!failure && real != folders[i]) {
            folders.push_back(real);
        }
    }
    // Empty where there is no folder any more that it starts from.
    const auto whole = [](const std::string& name) {
        std::error_code failure;
        return fs::absolute(name, failure).lexically_normal();
    };
    const fs::path file = whole(given.all[source].option);
    std::erase_if(folders, [&](const std::string& folder) {
        const fs::path path = whole(folder + "/").parent_path();
        return std::mismatch(path.begin(), path.end(), file.begin(), file.end()).first ==
               path.end();
    });
    return folders;
}

compiled compile(const arguments& given, std::size_t source, const compile_settings& settings) {
    scratch_folder scratch;
    const std::string name = given.all[source].option;
    const std::string stem = name == "-" ? "stdin" : fs::path(name).stem().string();
    const std::string file = scratch.file(stem + ".s");
    const std::string rule = scratch.file(stem + ".s.d");
    const std::string messages = scratch.file("messages");
    run_settings how;
    how.output_to_error = true;
    if (settings.is_extra) {
        how.messages_to = messages;
        how.environment = {"DEPENDENCIES_OUTPUT", "SUNPRO_DEPENDENCIES"};
    }
    const run_result ended = run(assembly_command(given, source, settings, file), how);

    compiled result;
    std::string ignored;
    if (settings.is_extra) {
        result.messages = read_whole(messages, ignored).value_or("");
    }
    if (!ended.succeeded()) {
        result.status = status_of(ended);
        // A compiler that ends by itself has told why.
        if (ended.status == 0 || settings.is_extra) {
            result.error = failure_text(given.given.front(), ended);
        }
        return result;
    }
    result.assembly = assembly::text_file::open(file);
    if (!result.assembly) {
        result.status = 1;
        result.error =
            given.given.front() + " left no assembly of " + name + ": " + std::strerror(errno);
        return result;
    }
    if (settings.tells_dependencies) {
        std::string error;
        const std::optional<std::string> text = read_whole(rule, error);
        if (!text) {
            result.status = 1;
            result.error =
                given.given.front() + " left no list of what " + name + " includes: " + error;
            return result;
        }
        result.dependencies = read_dependencies(*text);
    }
    return result;
}

std::vector<std::string> read_dependencies(std::string_view rule) {
    std::vector<std::string> files;
    bool is_target = true;
    std::string name;
    const auto end_name = [&] {
        if (!name.empty() && is_target && name.back() == ':') {
            is_target = false;
        } else if (!name.empty() && !is_target) {
            files.push_back(name);
        }
        name.clear();
    };
    for (std::size_t i = 0; i < rule.size(); ++i) {
        const char byte = rule[i];
        if (byte == '\\') {
            const std::size_t end = std::min(rule.find_first_not_of('\\', i), rule.size());
            const std::size_t count = end - i;
            const char next = end < rule.size() ? rule[end] : '\0';
            i = end - 1;
            if (next == '\n') {
                name.append(count - 1, '\\');
                end_name();
                ++i;
            } else if (next == ' ') {
                // Before a blank each backslash is doubled, and one more takes it into the name.
                name.append(count / 2, '\\');
                if (count % 2 == 1) {
                    name += ' ';
                    ++i;
                }
            } else if (next == '#') {
                name.append(count - 1, '\\');
                name += '#';
                ++i;
            } else {
                name.append(count, '\\');
            }
        } else if (byte == '$' && i + 1 < rule.size() && rule[i + 1] == '$') {
            name += '$';
            ++i;
        } else if (byte == '\n') {
            break;
        } else if (byte == ' ' || byte == '\t' || byte == '\r') {
            end_name();
        } else {
            name += byte;
        }
    }
    end_name();
    return files;
}

static std::string escaped_for_make(std::string_view name) {
    std::string text;
    std::size_t backslashes = 0;
    for (const char byte : name) {
        if (byte == ' ') {
            text.append(backslashes + 1, '\\');
        } else if (byte == '#') {
            text += '\\';
        } else if (byte == '$') {
            text += '$';
        }
        backslashes = byte == '\\' ? backslashes + 1 : 0;
        text += byte;
    }
    return text;
}

std::string dependency_rule(const std::string& target, const std::vector<std::string>& files) {
    std::string rule = escaped_for_make(target) + ":";
    for (const std::string& file : files) {
        // No rule can hold these.
        if (file.find('\n') == std::string::npos && !file.ends_with('\\')) {
            rule += " \\\n  " + escaped_for_make(file);
        }
    }
    return rule + "\n";
}

}  // namespace clist
