// The listing for machines (--json): one object a line for each line of code.
#include <string>
#include <vector>

#include "clist/forms/forms.h"
#include "clist/forms/json.h"

namespace clist {

// frames ::= "[" frame ("," frame)* "]", the innermost function first
static void append_frames(const annotation& model, const std::vector<frame>& frames,
                          std::string& text) {
    char before = '[';
    for (const frame& it : frames) {
        text += before;
        before = ',';
        text += "{\"function\":";
        append_json(text, it.function);
        text += ",\"file\":";
        const std::uint32_t source = it.source;
        append_json(text, source == none ? std::string_view() : model.sources()[source].recorded);
        text += ",\"line\":";
        append_json(text, it.line);
        text += '}';
    }
    text += ']';
}

bool write_objects(const form_input& from, output& to) {
    std::vector<frame> frames;
    std::string frames_text;
    std::string text;
    for (const selected_function& chosen : from.shown.functions) {
        const annotation& model = from.models[chosen.model];
        const assembly::function_code& function = model.code().functions[chosen.function];
        std::string head = "{\"symbol\":";
        append_json(head, function.symbol);
        head += ",\"text\":";
        origin last;
        frames_text.clear();
        for (std::uint32_t i = 0; i < function.instruction_count; ++i) {
            const std::uint32_t instruction = function.first_instruction + i;
            if (!from.shown.has_line(chosen.model, instruction)) {
                continue;
            }
            const origin it = model.origin_of(instruction);
            if (frames_text.empty() || it != last) {
                model.frames_of(it, function.symbol, frames);
                frames_text.clear();
                append_frames(model, frames, frames_text);
                last = it;
            }
            text = head;
            append_json(text, model.text_of(instruction));
            text += ",\"frames\":";
            text += frames_text;
            text += "}\n";
            to.put(text);
        }
    }
    return true;
}

}  // namespace clist
