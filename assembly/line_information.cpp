// Tells by a mark in the text what was done instead of giving positions in directives.
#include "assembly/line_information.h"

#include <algorithm>
#include <array>

namespace assembly {

namespace {
struct other_form {
    std::string_view mark;  // at the start of a line
    std::string_view advice;
};
}  // namespace

static constexpr std::array<other_form, 5> other_forms = {{
    {"source_filename = ", "intermediate code in place of assembly; compile without -flto"},
    {"\t.section\t.gnu.lto_", "no code, which -flto leaves to the linker; compile without -flto"},
    {"\t.cv_loc\t", "no lines but those of CodeView; compile with -gdwarf"},
    {"\t.stabn\t", "no lines but those of stabs; compile with -gdwarf"},
    {"\t.section\t.debug_line,", "no lines but those in a table; compile with -gas-loc-support"},
}};

static bool has_line(std::string_view text, std::string_view beginning) {
    for (std::size_t at = text.find(beginning); at != std::string_view::npos;
         at = text.find(beginning, at + 1)) {
        if (at == 0 || text[at - 1] == '\n') {
            return true;
        }
    }
    return false;
}

std::string_view missing_lines(const assembly_file& assembly, std::string_view text) {
    if (std::any_of(assembly.functions.begin(), assembly.functions.end(),
                    [](const function_code& function) { return function.entry.has_value(); })) {
        return {};
    }
    for (const other_form& form : other_forms) {
        if (has_line(text, form.mark)) {
            return form.advice;
        }
    }
    return assembly.functions.empty() ? "" : "no line information; compile with -g";
}

}  // namespace assembly
