// Tells by a mark in the text what was done instead of giving positions in directives.
#include "assembly/line_information.h"

#include <algorithm>
#include <array>

namespace assembly {

namespace {
struct other_form {
    std::string_view mark;  // at the start of a line
    bool has_functions;
    std::string_view advice;
};
}  // namespace

static constexpr std::array<other_form, 6> other_forms = {{
    {"source_filename = ", false, "intermediate code in place of assembly; compile without -flto"},
    {"\t.section\t.gnu.lto_", false,
     "no code, which -flto leaves to the linker; compile without -flto"},
    {"\t.cv_loc\t", true, "no lines but those of CodeView; compile with -gdwarf"},
    {"\t.stabn\t", true, "no lines but those of stabs; compile with -gdwarf"},
    {"\t.section\t.debug_line,", true,
     "no lines but those in a table; compile with -gas-loc-support"},
    {"", true, "no line information; compile with -g"},
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
    const bool has_functions =
        std::any_of(assembly.functions.begin(), assembly.functions.end(),
                    [](const function_code& function) { return function.is_declared; });
    const auto* const form =
        std::find_if(other_forms.begin(), other_forms.end(), [&](const other_form& it) {
            return it.has_functions == has_functions && has_line(text, it.mark);
        });
    return form == other_forms.end() ? "" : form->advice;
}

}  // namespace assembly
