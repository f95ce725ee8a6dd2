// Takes a compiler's command line apart by a table of options.
#include "clist/arguments.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <system_error>

#include "assembly/text_file.h"
#include "clist/words.h"

namespace clist {
namespace {

enum class form : std::uint8_t {
    alone,   // the word as it stands
    next,    // the value is the next word
    joined,  // the value follows in the same word; it may be empty
    either,  // in the same word, or the next one
};

struct compiler_option {
    std::string_view name;
    form how;
    role what;
};

using enum form;

// Of the rows that fit a word the longest name counts.
constexpr compiler_option compiler_options[] = {
    {"-o", either, role::output},
    {"--output", next, role::output},
    {"--output=", joined, role::output},
    {"-x", either, role::language},
    {"--language", next, role::language},
    {"--language=", joined, role::language},
    {"-c", alone, role::to_object},
    {"--compile", alone, role::to_object},
    {"-S", alone, role::to_assembly},
    {"--assemble", alone, role::to_assembly},
    {"--", alone, role::end_of_options},

    {"-E", alone, role::no_code},
    {"--preprocess", alone, role::no_code},
    {"-M", alone, role::no_code},
    {"-MM", alone, role::no_code},
    {"--dependencies", alone, role::no_code},
    {"--user-dependencies", alone, role::no_code},
    {"-fsyntax-only", alone, role::no_code},
    {"--analyze", alone, role::no_code},
    {"-emit-llvm", alone, role::no_code},
    {"-emit-ast", alone, role::no_code},
    {"--precompile", alone, role::no_code},
    {"-rewrite-objc", alone, role::no_code},
    {"-###", alone, role::no_code},
    {"--version", alone, role::no_code},
    {"--help", joined, role::no_code},
    {"-help", alone, role::no_code},
    {"--target-help", alone, role::no_code},
    {"-dumpversion", alone, role::no_code},
    {"-dumpfullversion", alone, role::no_code},
    {"-dumpmachine", alone, role::no_code},
    {"-dumpspecs", alone, role::no_code},
    {"-print-", joined, role::no_code},
    {"--print-", joined, role::no_code},

    {"-MD", alone, role::dependencies},
    {"-MMD", alone, role::dependencies},
    {"--write-dependencies", alone, role::dependencies},
    {"--write-user-dependencies", alone, role::dependencies},
    {"-MF", either, role::dependency_file},
    {"-MT", either, role::dependency_name},
    {"-MQ", either, role::dependency_name},
    {"-MP", alone, role::dependency_rest},
    {"-MG", alone, role::dependency_rest},
    {"-MV", alone, role::dependency_rest},
    {"-Mno-modules", alone, role::dependency_rest},
    {"--print-missing-file-dependencies", alone, role::dependency_rest},
    {"-Wp,", joined, role::preprocessor},

    {"-g", alone, role::debug_on},
    {"-g1", alone, role::debug_on},
    {"-g2", alone, role::debug_on},
    {"-g3", alone, role::debug_on},
    {"-ggdb", joined, role::debug_on},
    {"-gdwarf", joined, role::debug_on},
    {"-gdwarf32", alone, role::other},
    {"-gdwarf64", alone, role::other},
    {"-glldb", alone, role::debug_on},
    {"-gmlt", alone, role::debug_on},
    {"-gline-tables-only", alone, role::debug_on},
    {"-g0", alone, role::debug_off},
    {"-ggdb0", alone, role::debug_off},
    {"-gsplit-dwarf", joined, role::split_debug},

    {"-flto", alone, role::link_time},
    {"-flto=", joined, role::link_time},
    {"-fwhole-program-vtables", alone, role::link_time},
    {"-fprofile-use", alone, role::use_profile},
    {"-fprofile-use=", joined, role::use_profile},

    {"-save-temps", joined, role::side_file},
    {"--save-temps", joined, role::side_file},
    {"-aux-info", either, role::side_file},
    {"-dumpdir", next, role::side_file},
    {"-dumpbase", next, role::side_file},
    {"-dumpbase-ext", next, role::side_file},
    {"-fdump-", joined, role::side_file},
    {"-fopt-info", joined, role::side_file},
    {"-fcompare-debug", joined, role::side_file},
    {"-fprofile-note=", joined, role::side_file},
    {"-fsave-optimization-record", joined, role::side_file},
    {"-foptimization-record-file=", joined, role::side_file},
    {"-ftime-trace", joined, role::side_file},
    {"-fdiagnostics-format=", joined, role::side_file},
    {"-fmodule-output", joined, role::side_file},
    {"-MJ", either, role::side_file},
    {"-serialize-diagnostics", next, role::side_file},
    {"--serialize-diagnostics", next, role::side_file},
    {"-index-store-path", next, role::side_file},

    {"-isystem", either, role::system_folder},
    {"-cxx-isystem", either, role::system_folder},
    {"-idirafter", either, role::system_folder},
    {"--target=", joined, role::target},
    {"-target", next, role::target},

    {"-I", either, role::other},
    {"-D", either, role::other},
    {"-U", either, role::other},
    {"-L", either, role::other},
    {"-l", either, role::other},
    {"-A", either, role::other},
    {"-B", either, role::other},
    {"-F", either, role::other},
    {"-G", either, role::other},
    {"-T", either, role::other},
    {"-u", either, role::other},
    {"-z", either, role::other},
    {"-e", next, role::other},
    {"-h", next, role::other},
    {"-include", either, role::other},
    {"-include-pch", next, role::other},
    {"-imacros", either, role::other},
    {"-iquote", either, role::other},
    {"-iprefix", either, role::other},
    {"-iwithprefix", either, role::other},
    {"-iwithprefixbefore", either, role::other},
    {"-isysroot", either, role::system_folder},
    {"-iframework", either, role::system_folder},
    {"-iframeworkwithsysroot", either, role::other},
    {"-isystem-after", either, role::system_folder},
    {"-imultilib", either, role::other},
    {"-imultiarch", either, role::other},
    {"-ivfsoverlay", either, role::other},
    {"-stdlib++-isystem", either, role::system_folder},
    {"--sysroot", next, role::system_folder},
    {"--sysroot=", joined, role::system_folder},
    {"--param", next, role::other},
    {"--param=", joined, role::other},
    {"--include-directory", next, role::other},
    {"--define-macro", next, role::other},
    {"--undefine-macro", next, role::other},
    {"--config", next, role::other},
    {"-specs", next, role::other},
    {"-specs=", joined, role::other},
    {"-wrapper", next, role::other},
    {"-arch", next, role::other},
    {"-framework", next, role::other},
    {"-gcc-toolchain", next, role::other},
    {"-mllvm", next, role::other},
    {"-mthread-model", next, role::other},
    {"-rpath", next, role::other},
    {"-install_name", next, role::other},
    {"-working-directory", next, role::other},
    {"-resource-dir", next, role::other},
    {"-Xassembler", next, role::other},
    {"-Xclang", next, role::other},
    {"-Xlinker", next, role::other},
    {"-Xpreprocessor", next, role::other},
    {"-Xanalyzer", next, role::other},
    {"-Xopenmp-target", next, role::other},
};

struct language_row {
    std::string_view suffix;
    std::string_view language;
};

constexpr language_row languages[] = {
    {".c", "c"},
    {".i", "cpp-output"},
    {".cc", "c++"},
    {".cp", "c++"},
    {".cxx", "c++"},
    {".cpp", "c++"},
    {".CPP", "c++"},
    {".c++", "c++"},
    {".C", "c++"},
    {".ii", "c++-cpp-output"},
    {".m", "objective-c"},
    {".mi", "objective-c-cpp-output"},
    {".mm", "objective-c++"},
    {".M", "objective-c++"},
    {".mii", "objective-c++-cpp-output"},
};

constexpr std::string_view other_inputs[] = {".s", ".S",  ".sx", ".o",   ".obj",  ".lo",
                                             ".a", ".so", ".ld", ".lds", ".dylib"};

std::string_view suffix_of(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    const std::string_view last = slash == std::string_view::npos ? name : name.substr(slash + 1);
    const std::size_t dot = last.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view{} : last.substr(dot);
}

bool is_code_language(std::string_view language) {
    return std::any_of(std::begin(languages), std::end(languages),
                       [&](const language_row& row) { return row.language == language; });
}

bool fits(const compiler_option& row, std::string_view word) {
    return row.how == alone || row.how == next ? word == row.name : word.starts_with(row.name);
}

const compiler_option* row_of(std::string_view word) {
    const compiler_option* best = nullptr;
    for (const compiler_option& row : compiler_options) {
        if (fits(row, word) && (best == nullptr || row.name.size() > best->name.size())) {
            best = &row;
        }
    }
    return best;
}

struct word {
    std::string text;
    std::size_t top = 0;
};

// A response file may name others, itself included; beyond this its name is kept.
constexpr std::size_t most_response_files = 2000;

void add_words(std::vector<word>& words, const std::string& text, std::size_t top,
               const std::filesystem::path& directory, std::size_t& budget) {
    if (text.size() < 2 || text.front() != '@' || budget == 0) {
        words.push_back({text, top});
        return;
    }
    // What is no regular file can be read but once, by the compiler.
    const std::optional<assembly::text_file> contents =
        assembly::text_file::open_source(directory / text.substr(1));
    if (!contents) {
        words.push_back({text, top});
        return;
    }
    --budget;
    for (const std::string& inner : split_response(contents->text())) {
        add_words(words, inner, top, directory, budget);
    }
}

// The reading of one command line.
struct reader {
    arguments result;
    std::string language;  // by -x
    bool takes_options = true;
    bool in_program = true;

    void take_option(const std::vector<word>& words, std::size_t& at);
    void take_name(const std::string& name, std::size_t top);
    void note(const argument& taken);
};

void reader::take_name(const std::string& name, std::size_t top) {
    argument taken{role::other_input, name, {}, false, {}, top};
    const std::string_view suffix = suffix_of(name);
    if (!language.empty()) {
        taken.language = language;
    } else if (const std::optional<std::string_view> by_name = language_of_name(name)) {
        taken.language = *by_name;
    }
    const bool is_input = !language.empty() || !taken.language.empty() ||
                          std::find(std::begin(other_inputs), std::end(other_inputs), suffix) !=
                              std::end(other_inputs);
    if (in_program && (top == 0 || !is_input)) {
        taken.what = role::program;
        taken.language.clear();
    } else {
        in_program = false;
        if (is_code_language(taken.language)) {
            taken.what = role::source;
            result.sources.push_back(result.all.size());
            result.reads_standard_input |= name == "-";
        } else if (!is_input) {
            taken.what = role::other;
        }
    }
    result.all.push_back(taken);
}

void reader::note(const argument& taken) {
    switch (taken.what) {
        case role::output:
            result.output = taken.value;
            break;
        case role::language:
            language = taken.value == "none" ? "" : taken.value;
            break;
        case role::debug_on:
            result.has_debug = true;
            break;
        case role::debug_off:
            result.has_debug = false;
            break;
        case role::target:
            result.target = taken.value;
            break;
        case role::end_of_options:
            takes_options = false;
            break;
        default:
            break;
    }
}

void reader::take_option(const std::vector<word>& words, std::size_t& at) {
    in_program = false;
    argument taken;
    taken.option = words[at].text;
    taken.top = words[at].top;
    if (const compiler_option* const row = row_of(taken.option)) {
        taken.what = row->what;
        taken.is_split =
            row->how == next || (row->how == either && taken.option.size() == row->name.size());
        if (taken.is_split && at + 1 < words.size()) {
            taken.value = words[++at].text;
            if (words[at].top != taken.top) {
                result.torn.insert(words[at].top);
            }
        } else if (row->how == joined || row->how == either) {
            taken.is_split = false;
            taken.value = taken.option.substr(row->name.size());
            taken.option.resize(row->name.size());
        } else {
            taken.is_split = false;
        }
    }
    note(taken);
    result.all.push_back(std::move(taken));
}

// The triple in front of a cross compiler's name: TRIPLE-gcc, TRIPLE-g++-12.
std::string target_of_name(std::string_view name) {
    name.remove_prefix(name.rfind('/') + 1);
    for (const std::string_view compiler : {"-gcc", "-g++", "-cc", "-c++", "-clang", "-clang++"}) {
        const std::size_t at = name.rfind(compiler);
        const std::string_view rest =
            at == std::string_view::npos ? name : name.substr(at + compiler.size());
        if (at != std::string_view::npos &&
            rest.find_first_not_of("-.0123456789") == std::string_view::npos &&
            name.substr(0, at).find('-') != std::string_view::npos) {
            return std::string(name.substr(0, at));
        }
    }
    return {};
}

}  // namespace

void argument::put_to(std::vector<std::string>& words) const {
    if (is_split) {
        words.push_back(option);
        words.push_back(value);
    } else {
        words.push_back(option + value);
    }
}

bool arguments::has(role what) const {
    return std::any_of(all.begin(), all.end(),
                       [&](const argument& each) { return each.what == what; });
}

const std::string& arguments::compiler() const {
    const auto rest = std::find_if(all.begin(), all.end(),
                                   [](const argument& each) { return each.what != role::program; });
    static const std::string none;
    return rest == all.begin() ? none : std::prev(rest)->option;
}

arguments read_arguments(const std::vector<std::string>& words, const std::string& directory) {
    std::vector<word> flat;
    std::size_t budget = most_response_files;
    for (std::size_t top = 0; top < words.size(); ++top) {
        if (top == 0) {
            flat.push_back({words[top], top});
        } else {
            add_words(flat, words[top], top, directory, budget);
        }
    }
    reader reading;
    for (std::size_t at = 0; at < flat.size(); ++at) {
        const std::string& text = flat[at].text;
        if (at > 0 && reading.takes_options && text.size() > 1 && text.front() == '-') {
            reading.take_option(flat, at);
        } else {
            reading.take_name(text, flat[at].top);
        }
    }
    arguments& result = reading.result;
    result.given = words;
    result.to_object = result.has(role::to_object);
    result.to_assembly = result.has(role::to_assembly);
    result.has_link_time = result.has(role::link_time);
    result.makes_code = !result.sources.empty() && !result.has(role::no_code);
    if (result.target.empty()) {
        result.target = target_of_name(result.compiler());
    }
    return std::move(reading.result);
}

std::optional<std::string_view> language_of_name(std::string_view name) {
    const auto* const row =
        std::find_if(std::begin(languages), std::end(languages),
                     [&](const language_row& each) { return each.suffix == suffix_of(name); });
    return row == std::end(languages) ? std::nullopt : std::optional(row->language);
}

bool is_clang(const std::string& compiler) {
    namespace fs = std::filesystem;
    const auto names_clang = [](const fs::path& path) {
        return path.filename().string().find("clang") != std::string::npos;
    };
    const char* const path = std::getenv("PATH");
    if (names_clang(compiler) || path == nullptr) {
        return names_clang(compiler);
    }
    std::error_code failure;
    if (compiler.find('/') != std::string::npos) {
        return names_clang(fs::canonical(compiler, failure));
    }
    std::string_view folders = path;
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        const fs::path found = fs::canonical(fs::path(folder) / compiler, failure);
        if (!failure) {
            return names_clang(found);
        }
    }
    return false;
}

}  // namespace clist
