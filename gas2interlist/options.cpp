// Reads the command line of gas2interlist.
#include "gas2interlist/options.h"

#include <optional>

namespace gas2interlist {

static constexpr std::string_view usage =
    R"(Usage: gas2interlist [-o FILE] [--source-map OLD=NEW]... [--no-warnings] [FILE]

Reads the assembly that gcc -S -g or clang -S -g writes and places the
directives in it by which interlist merges the C source lines into a listing.

  -o FILE               write to FILE instead of standard output
  --source-map OLD=NEW  for source files whose name begins with OLD, replace
                        that beginning with NEW; may be given several times,
                        and the first one that fits a name is used
  --no-warnings         say nothing of sources that may be others than were compiled,
                        nor of assembly without line information
  --help                print this text
  --version             print the version

Without FILE, or when it is -, standard input is read.
Exit status: 0 success, 1 unusable input or a failing file, 2 wrong usage.

Example: gcc -S -g prog.c -o - | gas2interlist > prog.asm && interlist prog.asm
)";

static bool add_source_map(options& result, std::string_view rule) {
    const std::size_t sign = rule.find('=');
    if (sign == std::string_view::npos) {
        result.error = "--source-map needs OLD=NEW, not '" + std::string(rule) + "'";
        return false;
    }
    result.source_map.emplace_back(rule.substr(0, sign), rule.substr(sign + 1));
    return true;
}

std::string_view usage_text() {
    return usage;
}

options read_options(const std::vector<std::string_view>& arguments) {
    constexpr std::string_view source_map = "--source-map";
    options result;
    bool has_input = false;
    bool takes_options = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        // The value of an option: what is attached to it, or else the next argument.
        const auto value = [&](std::string_view attached) -> std::optional<std::string_view> {
            if (!attached.empty()) {
                return attached;
            }
            if (i + 1 < arguments.size()) {
                return arguments[++i];
            }
            result.error = "option '" + std::string(argument) + "' needs a value";
            return std::nullopt;
        };
        if (!takes_options || argument == "-" || !argument.starts_with('-')) {
            if (has_input) {
                result.error = "more than one input: '" + std::string(argument) + "'";
                return result;
            }
            result.input = argument;
            has_input = true;
        } else if (argument == "--") {
            takes_options = false;
        } else if (argument == "--help" || argument == "--version") {
            result.help = argument == "--help";
            result.version = !result.help;
            return result;
        } else if (argument == "--no-warnings") {
            result.warnings = false;
        } else if (argument.starts_with("-o")) {
            const std::optional<std::string_view> name = value(argument.substr(2));
            if (!name) {
                return result;
            }
            result.output = *name;
        } else if (argument == source_map) {
            const std::optional<std::string_view> rule = value({});
            if (!rule || !add_source_map(result, *rule)) {
                return result;
            }
        } else if (argument.starts_with("--source-map=")) {
            if (!add_source_map(result, argument.substr(source_map.size() + 1))) {
                return result;
            }
        } else {
            result.error = "unknown option '" + std::string(argument) + "'";
            return result;
        }
    }
    return result;
}

}  // namespace gas2interlist
