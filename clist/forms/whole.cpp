// The listing that keeps every line (--all): comments are all that is added.
#include <algorithm>

#include "assembly/operand.h"
#include "clist/forms/comments.h"
#include "clist/forms/forms.h"

namespace clist {

// Writes the text from `begin` to `end`, with the comments of the lines of code in it.
static void write_range(const annotation& model, comment_lines& comments,
                        const assembly::function_code& function, assembly::text_range range,
                        output& to) {
    const std::string_view text = model.code().text;
    std::uint32_t copied = range.begin;
    comments.begin();
    for (std::uint32_t i = 0; i < function.instruction_count; ++i) {
        const std::uint32_t instruction = function.first_instruction + i;
        const std::string_view lines = comments.lines_before(instruction);
        if (!lines.empty()) {
            const std::uint32_t at = model.code().instructions[instruction].at;
            to.put(text.substr(copied, at - copied));
            to.put(lines);
            copied = at;
        }
    }
    to.put(text.substr(copied, range.end - copied));
}

// Where the lines begin that lead up to a line of code, the label of a jump to it and its
// position, behind `after`.
static std::uint32_t begin_of(const assembly::assembly_file& code, std::uint32_t instruction,
                              std::uint32_t after) {
    const assembly::instruction& it = code.instructions[instruction];
    const std::uint32_t lead =
        it.position == none ? it.at : std::min(code.positions[it.position].at, it.at);
    return lead < after ? it.at : lead;
}

// Writes a function's label, and of its code the chosen lines with what leads up to them or
// lies between them.
static void write_chosen(const annotation& model, comment_lines& comments, const selection& chosen,
                         const selected_function& which, output& to) {
    const assembly::assembly_file& code = model.code();
    const assembly::function_code& function = code.functions[which.function];
    const auto behind = [&](std::uint32_t end) {
        return std::min(end + 1, static_cast<std::uint32_t>(code.text.size()));
    };
    std::uint32_t copied = function.begin;
    if (function.label != none) {
        const std::uint32_t name_at = code.labels[function.label].name_at;
        const std::size_t before = code.text.substr(0, name_at).rfind('\n');
        const auto begin = static_cast<std::uint32_t>(before + 1);  // 0 in the first line
        const auto end = static_cast<std::uint32_t>(assembly::end_of_line(code.text, name_at));
        if (code.instructions[function.first_instruction].at != begin) {
            copied = behind(end);
            to.put(code.text.substr(begin, copied - begin));
        }
    }
    comments.begin();
    bool goes_on = false;
    for (std::uint32_t i = 0; i < function.instruction_count; ++i) {
        const std::uint32_t instruction = function.first_instruction + i;
        const assembly::instruction& it = code.instructions[instruction];
        if (chosen.has_line(which.model, instruction)) {
            const std::uint32_t from = goes_on ? copied : begin_of(code, instruction, copied);
            to.put(code.text.substr(from, it.at - from));
            to.put(comments.lines_before(instruction));
            to.put(code.text.substr(it.at, behind(it.end) - it.at));
            goes_on = true;
        } else {
            goes_on = false;
        }
        copied = behind(it.end);
    }
}

bool write_whole(const form_input& from, output& to) {
    // Only what was asked for is left, or every byte between the functions too.
    std::size_t next = 0;
    for (std::size_t m = 0; m < from.models.size(); ++m) {
        const annotation& model = from.models[m];
        comment_lines comments(model, from.options);
        std::uint32_t copied = 0;
        const auto end = static_cast<std::uint32_t>(model.code().text.size());
        for (; next < from.shown.functions.size() && from.shown.functions[next].model == m;
             ++next) {
            const assembly::function_code& function =
                model.code().functions[from.shown.functions[next].function];
            if (!from.shown.lines.empty()) {
                write_chosen(model, comments, from.shown, from.shown.functions[next], to);
                continue;
            }
            const std::uint32_t begin = from.shown.is_all ? copied : function.begin;
            write_range(model, comments, function, {begin, function.end}, to);
            copied = function.end;
        }
        if (from.shown.is_all) {
            to.put(model.code().text.substr(copied, end - copied));
        }
    }
    return true;
}

}  // namespace clist
