// Decodes the symbols of the libraries given, strict and extended, beside the run-time
// library's own demangler, and counts what is refused, by cause, and what agrees.
//   scheme1_corpus [--list] FILE-OR-FOLDER...     folders: every *.so and *.so.* in them
//   scheme1_corpus [--list] -                     names from standard input, one a line
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "tests/demangle/scheme1/corpus/agreement.h"
#include "tests/demangle/scheme1/corpus/elf_symbols.h"
#include "tests/demangle/scheme1/corpus/house_style.h"
#include "tests/demangle/scheme1/corpus/refusals.h"
#include "tests/demangle/scheme1/decode.h"

namespace {

constexpr const char* bad = "<bad name>";

void add_file(const std::string& file, std::set<std::string>& names) {
    for (std::string& name : mangled_symbols(file)) {
        names.insert(std::move(name));
    }
}

void add_folder(const std::string& folder, std::set<std::string>& names) {
    using Options = std::filesystem::directory_options;
    std::error_code error;
    std::filesystem::recursive_directory_iterator entries(folder, Options::skip_permission_denied,
                                                          error);
    for (; !error && entries != std::filesystem::recursive_directory_iterator();
         entries.increment(error)) {
        const std::string name = entries->path().filename().string();
        std::error_code unreadable;
        if ((name.ends_with(".so") || name.find(".so.") != std::string::npos) &&
            entries->is_regular_file(unreadable) && !entries->is_symlink(unreadable)) {
            add_file(entries->path().string(), names);
        }
    }
}

const char* word_for(Agreement agreement) {
    switch (agreement) {
        case Agreement::same:
            return "the same but for style";
        case Agreement::with_arguments:
            return "the same with arguments for template parameters";
        case Agreement::template_parameters:
            return "template parameters, by number here";
        case Agreement::expression:
            return "expressions, parenthesised otherwise";
        case Agreement::enclosing_result:
            return "the result of an enclosing template, shown here only";
        case Agreement::inherited_constructor:
            return "inherited constructors, which repeat the base class there";
        case Agreement::unnamed_class:
            return "constructors of unnamed classes, which repeat another name there";
        default:
            return "DIFFERENT";
    }
}

struct Counts {
    std::size_t names = 0;
    std::size_t known_to_other = 0;
    std::size_t strict = 0;
    std::size_t extended = 0;
    std::size_t extended_refused = 0;
    std::map<std::string, std::size_t> strict_refused;
    std::map<Agreement, std::size_t> agreement;
};

void count_name(const std::string& name, bool list, Counts& counts) {
    const std::string other = black_box_text(name);
    ++counts.names;
    const std::string strict = decoded(name);
    std::string ours;
    {
        const ExtendedNames extended;
        ours = decoded(name);
    }
    counts.strict += strict != bad ? 1 : 0;
    counts.extended += ours != bad ? 1 : 0;
    if (other.empty()) {
        return;
    }
    ++counts.known_to_other;
    if (strict == bad) {
        const std::string form = extended_form(name, other);
        ++counts.strict_refused[form.empty() ? "UNEXPLAINED" : form];
        if (form.empty() && list) {
            std::cout << "UNEXPLAINED " << name << '\n';
        }
    }
    if (ours == bad) {
        ++counts.extended_refused;
        if (list) {
            std::cout << "REFUSED " << name << '\n';
        }
        return;
    }
    const Agreement agreement = compare(name, other, ours);
    ++counts.agreement[agreement];
    if (agreement == Agreement::different && list) {
        std::cout << "DIFFERENT " << name << "\n  theirs " << house_style(name, other)
                  << "\n  ours   " << without_kinds(ours) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::set<std::string> names;
    bool list = false;
    for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
        if (argument == "--list") {
            list = true;
        } else if (argument == "-") {
            for (std::string line; std::getline(std::cin, line);) {
                names.insert(line);
            }
        } else if (std::filesystem::is_directory(argument)) {
            add_folder(argument, names);
        } else {
            add_file(argument, names);
        }
    }
    if (names.empty()) {
        std::cerr << "usage: " << argv[0] << " [--list] FILE-OR-FOLDER... | -\n";
        return 2;
    }

    Counts counts;
    for (const std::string& name : names) {
        count_name(name, list, counts);
    }
    std::cout << counts.names << " names, " << counts.known_to_other
              << " known to the other demangler\n"
              << counts.strict << " decode strictly, " << counts.extended << " as extended names\n"
              << counts.extended_refused
              << " refused as extended names though known to the other\n";
    std::cout << "refused strictly though known to the other, by cause:\n";
    for (const auto& [cause, count] : counts.strict_refused) {
        std::cout << "  " << count << "  " << cause << '\n';
    }
    std::cout << "texts, as extended names:\n";
    for (const auto& [agreement, count] : counts.agreement) {
        std::cout << "  " << count << "  " << word_for(agreement) << '\n';
    }
    const bool clean = counts.extended_refused == 0 &&
                       counts.strict_refused.count("UNEXPLAINED") == 0 &&
                       counts.agreement[Agreement::different] == 0;
    return clean ? 0 : 1;
}
