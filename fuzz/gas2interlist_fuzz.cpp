// Fuzzes the placement of directives: one input is an assembly text and, behind a line
// of equals signs, the source file that every name in it leads to. What comes out must
// be the assembly itself once the directive lines are taken away again, with functions
// that begin and end in turn.
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "gas2interlist/place.h"

using namespace gas2interlist;
using assembly::source_access;

static void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

static void check(std::string_view assembly, std::string_view output) {
    bool in_function = false;
    std::string rest;
    while (!output.empty()) {
        const std::size_t end = output.find('\n');
        const std::string_view line =
            output.substr(0, end == std::string_view::npos ? output.size() : end + 1);
        output.remove_prefix(line.size());
        if (line.starts_with("\t.ifunc\t")) {
            require(!in_function);
            in_function = true;
        } else if (line.starts_with("\t.iendfunc\t")) {
            require(in_function);
            in_function = false;
        } else if (line.starts_with("\t.iline\t")) {
            require(in_function);
        } else if (line.starts_with("\t.ifile\t")) {
            require(!in_function);
        } else {
            rest += line;
        }
    }
    require(!in_function);
    require(rest == assembly);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    constexpr std::string_view mark = "\n====\n";
    const std::size_t at = input.find(mark);
    const bool has_source = at != std::string_view::npos;
    const std::string_view assembly = has_source ? input.substr(0, at + 1) : input;
    const std::string source(has_source ? input.substr(at + mark.size()) : std::string_view());
    const source_access sources{
        .read = [&](const std::string& name) -> std::optional<assembly::text_file> {
            errno = ENOENT;
            return has_source && !name.starts_with("/no")
                       ? std::optional(assembly::text_file::of(source))
                       : std::nullopt;
        },
        .same = [](const std::string& one, const std::string& other) { return one == other; },
    };
    interlisted_text result{.assembly = assembly};
    if (!place_directives(result, {{"/old", "new"}}, sources)) {
        check(assembly, merged(result));
    }
    return 0;
}
