// gas2interlist: places interlist directives in a GNU-style compiler's assembly.
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/sources.h"
#include "gas2interlist/files.h"
#include "gas2interlist/options.h"
#include "gas2interlist/place.h"

using namespace gas2interlist;

static void report(const std::string& message) {
    std::fputs(("gas2interlist: " + message + "\n").c_str(), stderr);
}

static int print(std::string_view text) {
    std::string error;
    if (!write_output("-", text, error)) {
        report("standard output: " + error);
        return exit_failure;
    }
    return exit_success;
}

static int run(const Options& options) {
    const std::string input = options.input == "-" ? "standard input" : options.input;
    const std::string output = options.output == "-" ? "standard output" : options.output;
    std::string failure;
    const std::optional<std::string> text = read_input(options.input, failure);
    if (!text) {
        report(input + ": " + failure);
        return exit_failure;
    }
    std::string result;
    if (const std::optional<assembly::assembly_error> error =
            interlist_assembly(*text, options.source_map, assembly::system_sources(), result)) {
        report(input + ":" + std::to_string(error->line) + ": " + error->message);
        return exit_failure;
    }
    if (!write_output(options.output, result, failure)) {
        report(output + ": " + failure);
        return exit_failure;
    }
    return exit_success;
}

int main(int argc, char** argv) {
    try {
        const Options options = read_options({argv + (argc > 0 ? 1 : 0), argv + argc});
        if (options.help) {
            return print(usage_text());
        }
        if (options.version) {
            return print("gas2interlist " GAS2INTERLIST_VERSION "\n");
        }
        if (!options.error.empty()) {
            report(options.error + "\nTry 'gas2interlist --help'.");
            return exit_usage;
        }
        return run(options);
    } catch (const std::exception& failure) {
        report(failure.what());
        return exit_failure;
    }
}
