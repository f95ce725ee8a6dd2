// The listing that keeps every line (--all): comments are all that is added.
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
