// Figures of each function (--stats): how much code, how much of it inlined, how many source
// lines with how many bytes, and which line has the most code. Those with most code first.
#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "clist/forms/forms.h"
#include "clist/forms/json.h"

namespace clist {

namespace {

struct function_figures {
    const selected_function* function;
    std::uint32_t instructions = 0;
    std::uint32_t inlined = 0;
    std::uint32_t lines = 0;    // of the source that its code is of
    std::uint64_t bytes = 0;    // that these have
    std::uint32_t largest = 0;  // instructions of the line that has most
    std::uint32_t largest_source = none;
    std::uint32_t largest_line = 0;
};

}  // namespace

static function_figures figures_of(const form_input& from, const selected_function& chosen) {
    const annotation& model = from.models[chosen.model];
    const assembly::function_code& function = model.code().functions[chosen.function];
    function_figures figures{.function = &chosen};
    std::unordered_map<std::uint64_t, std::uint32_t> counts;  // by source and line
    for (std::uint32_t i = 0; i < function.instruction_count; ++i) {
        const std::uint32_t instruction = function.first_instruction + i;
        if (!from.shown.has_line(chosen.model, instruction)) {
            continue;
        }
        ++figures.instructions;
        const std::uint32_t scope = model.debug().scope_of[instruction];
        figures.inlined += scope != none && model.debug().scopes[scope].parent != none ? 1 : 0;
        const origin it = model.origin_of(instruction);
        if (it.source != none && it.line != 0) {
            ++counts[std::uint64_t{it.source} << 32 | it.line];
        }
    }
    figures.lines = static_cast<std::uint32_t>(counts.size());
    for (const auto& [key, count] : counts) {
        const auto source = static_cast<std::uint32_t>(key >> 32);
        const auto line = static_cast<std::uint32_t>(key);
        figures.bytes += model.sources().line(source, line).size();
        // Of lines with as much code the first one counts.
        if (count > figures.largest ||
            (count == figures.largest &&
             std::pair(source, line) < std::pair(figures.largest_source, figures.largest_line))) {
            figures.largest = count;
            figures.largest_source = source;
            figures.largest_line = line;
        }
    }
    return figures;
}

static std::string place_of(const annotation& model, const function_figures& it) {
    return it.largest_source == none
               ? ""
               : model.sources()[it.largest_source].shown + ":" + std::to_string(it.largest_line);
}

static std::string as_object(const annotation& model, const function_figures& it) {
    const assembly::function_code& function = model.code().functions[it.function->function];
    std::string text = "{\"number\":";
    append_json(text, it.function->number);
    text += ",\"instructions\":";
    append_json(text, it.instructions);
    text += ",\"inlined\":";
    append_json(text, it.inlined);
    text += ",\"lines\":";
    append_json(text, it.lines);
    text += ",\"bytes\":";
    append_json(text, it.bytes);
    text += ",\"largest\":{\"file\":";
    const std::uint32_t source = it.largest_source;
    append_json(text, source == none ? std::string_view() : model.sources()[source].recorded);
    text += ",\"line\":";
    append_json(text, it.largest_line);
    text += ",\"instructions\":";
    append_json(text, it.largest);
    text += "},\"symbol\":";
    append_json(text, function.symbol);
    text += ",\"name\":";
    append_json(text, model.name_of(function));
    return text + "}\n";
}

static std::string padded(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

static std::string as_row(const annotation& model, const function_figures& it) {
    const std::uint32_t share =
        it.instructions == 0
            ? 0
            : (it.inlined * std::uint64_t{100} + it.instructions / 2) / it.instructions & 0xff;
    std::string largest = std::to_string(it.largest);
    largest += " ";
    largest += place_of(model, it);
    return padded(std::to_string(it.function->number), 6) +
           padded(std::to_string(it.instructions), 9) + padded(std::to_string(share) + "%", 9) +
           padded(std::to_string(it.lines), 7) + padded(std::to_string(it.bytes), 8) +
           padded(largest, 24) + "  " +
           std::string(model.name_of(model.code().functions[it.function->function])) + "\n";
}

bool write_stats(const form_input& from, output& to) {
    std::vector<function_figures> rows;
    for (const selected_function& chosen : from.shown.functions) {
        rows.push_back(figures_of(from, chosen));
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const function_figures& one, const function_figures& other) {
                         return one.instructions > other.instructions;
                     });
    if (!from.options.json) {
        to.put("number    instr  inlined  lines   bytes            largest line  function\n");
    }
    for (const function_figures& it : rows) {
        const annotation& model = from.models[it.function->model];
        to.put(from.options.json ? as_object(model, it) : as_row(model, it));
    }
    return true;
}

}  // namespace clist
