// Lays the functions of a model out as rows, then walks the assembly once for what stands
// between them.
#include "clist/forms/page/rows.h"

#include <algorithm>
#include <numeric>

#include "clist/function_lines.h"
#include "clist/operands.h"
#include "clist/references.h"

namespace clist::page {

using assembly::text_range;

namespace {

class row_maker {
  public:
    row_maker(const form_input& from, std::size_t index)
        : from_(from),
          index_(index),
          model_(from.models[index]),
          used_(model_.used()),
          made_{.rows = {},
                .functions = {},
                .tails = {},
                .frames = frame_table(model_),
                .code = {},
                .hidden = {}} {
        for (const selected_function& it : from.shown.functions) {
            if (it.model == index) {
                add_function(it.function);
            }
        }
    }

    unit_rows& made() { return made_; }

  private:
    void add_function(std::uint32_t number);
    void add_line(const function_line& line, char kind);
    void add_code(const function_line& line, std::string_view symbol);

    const form_input& from_;
    std::size_t index_;
    const annotation& model_;
    references& used_;
    unit_rows made_;
    std::vector<function_line> lines_;
};

}  // namespace

// What stands behind a label's colon.
static std::string_view tail_of(const annotation& model, const function_line& line) {
    const assembly::label& label = model.code().labels[line.index];
    std::string_view rest = line_at(model.code().text, label.name_at + label.name_size);
    rest.remove_prefix(std::min(rest.find(':'), rest.size()));
    rest.remove_prefix(rest.empty() ? 0 : 1);
    return rest.substr(0, rest.find_last_not_of(" \t\r") + 1);
}

void row_maker::add_line(const function_line& line, char kind) {
    if (line.kind == line_kind::label) {
        if (const std::string_view tail = tail_of(model_, line); !tail.empty()) {
            const auto row = static_cast<std::uint32_t>(made_.rows.size());
            made_.tails.push_back({.row = row, .text = tail});
        }
    }
    made_.rows.push_back({.at = line.at, .kind = kind});
    append_line(model_, line, made_.code);
    made_.code += '\n';
}

void row_maker::add_code(const function_line& line, std::string_view symbol) {
    add_line(line, 'i');
    const std::uint32_t frame = made_.frames.of(model_.origin_of(line.index), symbol);
    made_.rows.back().frame = frame;
    function_row& function = made_.functions.back();
    ++function.instructions;
    if (frame != none) {
        function.inlined += made_.frames.rows()[frame].parent != none ? 1 : 0;
        if (function.frame == none) {
            function.frame = made_.frames.outermost(frame);
        }
    }
}

void row_maker::add_function(std::uint32_t number) {
    const assembly::function_code& function = model_.code().functions[number];
    if (!made_.rows.empty()) {
        made_.rows.push_back({.at = none, .kind = 'b'});
        made_.code += '\n';
    }
    const auto first = static_cast<std::uint32_t>(made_.rows.size());
    made_.functions.push_back({.function = number, .row = first});
    read_function_lines(model_, used_, function, lines_);
    keep_chosen_lines(from_.shown, index_, function.label, lines_);
    for (const function_line& line : lines_) {
        switch (line.kind) {
            case line_kind::code:
                add_code(line, function.symbol);
                break;
            case line_kind::label:
                add_line(line, line.index == function.label ? 'f' : 'l');
                break;
            case line_kind::data:
                add_line(line, 'd');
                break;
            case line_kind::inlined:
                add_line(line, 'c');
                break;
        }
    }
    take_data_lines(model_, used_, number, lines_);
    for (const function_line& line : lines_) {
        add_line(line, line.kind == line_kind::label ? 'l' : 'd');
    }
    made_.functions.back().rows = static_cast<std::uint32_t>(made_.rows.size()) - first;
}

// The part of the text that lines are hidden in rather than left out: all of it, or the
// functions that were asked for.
static std::vector<text_range> shown_ranges(const annotation& model, const selection& shown,
                                            const std::vector<function_row>& functions) {
    if (shown.is_all) {
        return {{0, static_cast<std::uint32_t>(model.code().text.size())}};
    }
    std::vector<text_range> ranges;
    for (const function_row& it : functions) {
        const assembly::function_code& function = model.code().functions[it.function];
        ranges.push_back({function.begin, function.end});
    }
    return ranges;
}

// Gives rows the numbers of their lines and gathers what stands between them. Rows of data
// may stand elsewhere in the assembly than behind their function.
static void hide_others(std::string_view text, const std::vector<text_range>& ranges,
                        unit_rows& made) {
    std::vector<row*> order;
    for (row& it : made.rows) {
        if (it.at != none) {
            order.push_back(&it);
        }
    }
    std::sort(order.begin(), order.end(), [](const row* a, const row* b) { return a->at < b->at; });
    std::uint32_t line = 1;
    auto next = order.begin();
    for (const text_range& range : ranges) {
        std::size_t at = range.begin;
        const auto hide_up_to = [&](std::size_t end) {
            const std::string_view between = text.substr(at, end - at);
            made.hidden += between;
            line += static_cast<std::uint32_t>(std::count(between.begin(), between.end(), '\n'));
        };
        for (; next != order.end() && (*next)->at < range.end; ++next) {
            row& it = **next;
            if (it.at >= at) {
                hide_up_to(it.at);
                it.line = line++;
                at = std::min<std::size_t>(it.at + line_at(text, it.at).size() + 1, range.end);
            }
        }
        hide_up_to(range.end);
    }
}

unit_rows make_rows(const form_input& from, std::size_t model) {
    row_maker maker(from, model);
    unit_rows& made = maker.made();
    const annotation& it = from.models[model];
    hide_others(it.code().text, shown_ranges(it, from.shown, made.functions), made);
    return std::move(made);
}

}  // namespace clist::page
