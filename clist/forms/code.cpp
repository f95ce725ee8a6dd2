// The listing in the code's own order without what is not code: directives, debugging data,
// labels that nothing refers to. The data that code refers to stand behind their function.
#include <optional>
#include <string>
#include <vector>

#include "clist/forms/comments.h"
#include "clist/forms/forms.h"
#include "clist/forms/machine.h"
#include "clist/function_lines.h"
#include "clist/messages.h"
#include "clist/references.h"

namespace clist {

namespace {

// What is at hand for the functions of one model.
struct model_writer {
    const annotation& model;
    const form_input& from;
    std::size_t index;
    references& used;
    comment_lines comments;
    std::vector<function_line> lines = {};
    bool& has_all;  // false once something is missing, which was said

    model_writer(const form_input& input, std::size_t at, bool& is_whole)
        : model(input.models[at]),
          from(input),
          index(at),
          used(model.used()),
          comments(model, input.options),
          has_all(is_whole) {}
};

}  // namespace

static void write_line(model_writer& writer, const function_line& line, output& to) {
    const bool is_painted = line.kind == line_kind::label && writer.from.options.color;
    std::string& text = to.next();
    if (is_painted) {
        text += color_code(color::label);
    }
    append_line(writer.model, line, text);
    if (is_painted) {
        text += color_code(color::plain);
    }
    text += '\n';
}

static void write_function(model_writer& writer, const selected_function& chosen, output& to) {
    const assembly::function_code& function = writer.model.code().functions[chosen.function];
    read_function_lines(writer.model, writer.used, function, writer.lines);
    machine_figures figures;
    if (writer.from.options.mca) {
        figures = machine_analysis(writer.model, writer.lines);
        if (!figures.failure.empty()) {
            const std::string_view name = writer.model.name_of(function);
            say("no figures of " + std::string(name) + ": " + figures.failure);
            writer.has_all = false;
        }
    }
    keep_chosen_lines(writer.from.shown, writer.index, function.label, writer.lines);
    writer.comments.begin();
    for (const function_line& line : writer.lines) {
        if (line.kind == line_kind::code) {
            to.put(writer.comments.lines_before(line.index));
        }
        write_line(writer, line, to);
    }
    to.put(figures.comments);
    take_data_lines(writer.model, writer.used, chosen.function, writer.lines);
    for (const function_line& line : writer.lines) {
        write_line(writer, line, to);
    }
}

bool write_code(const form_input& from, output& to) {
    std::optional<model_writer> writer;
    bool has_all = true;
    bool is_first = true;
    for (const selected_function& it : from.shown.functions) {
        if (!writer || writer->index != it.model) {
            writer.emplace(from, it.model, has_all);
        }
        if (!is_first) {
            to.put('\n');
        }
        is_first = false;
        write_function(*writer, it, to);
    }
    return has_all;
}

}  // namespace clist
