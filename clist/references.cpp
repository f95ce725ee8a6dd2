// Looks up every symbol in the operands of code, and in the data that these lead to.
#include "clist/references.h"

#include <algorithm>

#include "assembly/directive.h"
#include "assembly/operand.h"
#include "clist/operands.h"

namespace clist {

using assembly::function_code;
using assembly::label;
using assembly::text_range;

// Calls `visit` with the index of each label that a stretch of assembly refers to.
static void for_each_index(const annotation& model, std::string_view text, const auto& visit) {
    for_each_label(model.labels(), text, [&](const label& it) {
        visit(static_cast<std::uint32_t>(&it - model.code().labels.data()));
    });
}

// Strings refer to nothing.
static void for_each_index(const annotation& model, const text_range& range, const auto& visit) {
    for (std::size_t at = range.begin; at < range.end;) {
        const std::string_view line = line_at(model.code().text, at);
        at += line.size() + 1;
        std::string_view operands = line;
        assembly::skip_blanks(operands);
        if (!operands.starts_with(".string") && !operands.starts_with(".asci")) {
            for_each_index(model, line, visit);
        }
    }
}

static void read_function(const annotation& model, const function_code& function,
                          const auto& visit) {
    const assembly::assembly_file& code = model.code();
    const auto first = code.instructions.begin() + function.first_instruction;
    for (auto it = first; it != first + function.instruction_count; ++it) {
        for_each_index(model, operands_of(line_at(code.text, it->at)), visit);
    }
    auto data = std::lower_bound(code.data_lines.begin(), code.data_lines.end(), function.begin);
    for (; data != code.data_lines.end() && *data < function.end; ++data) {
        for_each_index(model, line_at(code.text, *data), visit);
    }
}

bool references::is_data(std::uint32_t index) const {
    const assembly::assembly_file& code = model_.code();
    return code.sections[code.labels[index].section].kind == assembly::section_kind::data;
}

references::references(const annotation& model)
    : model_(model), is_used_(model.code().labels.size()), is_taken_(model.code().labels.size()) {
    std::vector<std::uint32_t> data;
    const auto use = [&](std::uint32_t found) {
        if (!is_used_[found] && is_data(found)) {
            data.push_back(found);
        }
        is_used_[found] = true;
    };
    for (const function_code& it : model.code().functions) {
        data_begin_.push_back(static_cast<std::uint32_t>(data_.size()));
        read_function(model, it, [&](std::uint32_t found) {
            if (is_data(found)) {
                data_.push_back(found);
            }
            use(found);
        });
    }
    data_begin_.push_back(static_cast<std::uint32_t>(data_.size()));
    // `data` grows while it is gone through.
    for (std::size_t i = 0; i < data.size(); ++i) {
        stretch& it = stretches_[data[i]];
        it.extent = find_extent(data[i]);
        for_each_index(model, it.extent, [&](std::uint32_t found) {
            if (is_data(found)) {
                it.data.push_back(found);
            }
            use(found);
        });
    }
}

std::vector<std::uint32_t> references::take_data_of(std::uint32_t function) {
    std::vector<std::uint32_t> data;
    const auto take = [&](std::uint32_t found) {
        if (is_data(found) && !is_taken_[found]) {
            is_taken_[found] = true;
            data.push_back(found);
        }
    };
    std::for_each(data_.begin() + data_begin_[function], data_.begin() + data_begin_[function + 1],
                  take);
    const std::vector<label>& labels = model_.code().labels;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const stretch& it = stretches_.at(data[i]);
        // Other labels of the same lines need not be shown again.
        for (std::size_t next = data[i] + 1;
             next < labels.size() && labels[next].name_at < it.extent.end; ++next) {
            is_taken_[next] = true;
        }
        std::for_each(it.data.begin(), it.data.end(), take);
    }
    std::sort(data.begin(), data.end());
    return data;
}

data_line read_data_line(std::string_view line) {
    data_line it;
    while (true) {
        assembly::skip_blanks(line);
        if (line.empty() || std::string_view("#/;@|!").find(line.front()) < line.size()) {
            return it;
        }
        const std::string_view word = assembly::take_symbol(line);
        if (!line.starts_with(':')) {
            const assembly::directive kind = assembly::find_directive(word).kind;
            using of = assembly::directive;
            it.is_anchor = kind == of::set;
            it.has_label = it.has_label || it.is_anchor;
            it.has_data = assembly::is_data(kind);
            it.is_foreign = !word.starts_with('.') || kind == of::named_section ||
                            kind == of::own_section || kind == of::push_section ||
                            kind == of::pop_section || kind == of::previous_section ||
                            kind == of::subsection || kind == of::end_handler || kind == of::loc ||
                            kind == of::begin_procedure;
            return it;
        }
        it.has_label = true;
        line.remove_prefix(1);
    }
}

text_range references::find_extent(std::uint32_t index) const {
    // More labels than this for one place are nobody's.
    constexpr int most_names = 16;
    const assembly::assembly_file& code = model_.code();
    const std::size_t before = code.text.rfind('\n', code.labels[index].name_at);
    const auto begin =
        static_cast<std::uint32_t>(before == std::string_view::npos ? 0 : before + 1);
    text_range range{begin, begin};
    bool is_anchor = false;  // it stands for all data behind it, up to the next of its kind
    bool has_data = false;
    int names = 0;
    for (std::size_t at = begin; at < code.text.size();) {
        const std::string_view line = line_at(code.text, static_cast<std::uint32_t>(at));
        const data_line it = read_data_line(line);
        is_anchor = is_anchor || (at == begin && it.is_anchor);
        const bool is_next = it.has_label && at != begin &&
                             (is_anchor ? it.is_anchor : has_data || ++names == most_names);
        if (it.is_foreign || is_next) {
            break;
        }
        at = std::min(at + line.size() + 1, code.text.size());
        has_data = has_data || it.has_data;
        if (it.has_label || it.has_data) {
            range.end = static_cast<std::uint32_t>(at);
        }
    }
    return range;
}

}  // namespace clist
