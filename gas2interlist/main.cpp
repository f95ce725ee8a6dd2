// gas2interlist: places interlist directives in a GNU-style compiler's assembly.
#include <cerrno>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "assembly/sources.h"
#include "assembly/text_file.h"
#include "gas2interlist/options.h"
#include "gas2interlist/output.h"
#include "gas2interlist/place.h"
#include "gas2interlist/report.h"
#include "gas2interlist/signals.h"

using namespace gas2interlist;
using assembly::assembly_error;
using assembly::text_file;

static int write(const std::string& name, const interlisted_text& text,
                 const std::optional<text_file>& input) {
    std::string error;
    if (!write_output(name, text, input, error)) {
        report({name == "-" ? "standard output" : name, ": ", error});
        return exit_failure;
    }
    return exit_success;
}

static int print(std::string_view text) {
    return write("-", {.assembly = text}, {});
}

static int run(const options& chosen) {
    const std::string name = chosen.input == "-" ? "standard input" : chosen.input;
    const std::optional<text_file> input = text_file::open(chosen.input);
    if (!input) {
        report({name, ": ", std::strerror(errno)});
        return exit_failure;
    }
    interlisted_text result{.assembly = input->text()};
    if (const std::optional<assembly_error> error = place_directives(
            result, chosen.source_map, assembly::system_sources(), input->modified())) {
        report({name, ":", std::to_string(error->line), ": ", error->message});
        return exit_failure;
    }
    if (chosen.warnings) {
        for (const std::string& warning : result.warnings) {
            report({name, ": warning: ", warning});
        }
    }
    return write(chosen.output, result, input);
}

int main(int argc, char** argv) {
    keep_standard_streams_apart();
    catch_signals();
    catch_lack_of_memory();
    try {
        const options chosen = read_options({argv + (argc > 0 ? 1 : 0), argv + argc});
        if (chosen.help) {
            return print(usage_text());
        }
        if (chosen.version) {
            return print("gas2interlist " GAS2INTERLIST_VERSION "\n");
        }
        if (!chosen.error.empty()) {
            report({chosen.error, "\nTry 'gas2interlist --help'."});
            return exit_usage;
        }
        return run(chosen);
    } catch (const std::exception& failure) {
        report({failure.what()});
    }
    return exit_failure;
}
