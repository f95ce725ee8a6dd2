// The functions of a listing (--list): number, lines of code, name.
#include <algorithm>
#include <string>

#include "clist/forms/forms.h"
#include "clist/forms/json.h"

namespace clist {

// How many of a function's lines are shown.
static std::uint32_t shown_lines(const form_input& from, const selected_function& chosen) {
    const assembly::function_code& it = from.models[chosen.model].code().functions[chosen.function];
    std::uint32_t count = 0;
    for (std::uint32_t i = 0; i < it.instruction_count; ++i) {
        count += from.shown.has_line(chosen.model, it.first_instruction + i) ? 1 : 0;
    }
    return count;
}

static void append_right(std::string& text, std::uint32_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    text.append(width - std::min(width, digits.size()), ' ');
    text += digits;
}

bool write_list(const form_input& from, output& to) {
    for (const selected_function& chosen : from.shown.functions) {
        const annotation& model = from.models[chosen.model];
        const assembly::function_code& function = model.code().functions[chosen.function];
        std::string text;
        if (from.options.json) {
            text = "{\"number\":";
            append_json(text, chosen.number);
            text += ",\"instructions\":";
            append_json(text, shown_lines(from, chosen));
            text += ",\"symbol\":";
            append_json(text, function.symbol);
            text += ",\"name\":";
            append_json(text, model.name_of(function));
            text += "}\n";
        } else {
            append_right(text, chosen.number, 6);
            append_right(text, shown_lines(from, chosen), 9);
            text += "  ";
            text += model.name_of(function);
            text += '\n';
        }
        to.put(text);
    }
    return true;
}

}  // namespace clist
