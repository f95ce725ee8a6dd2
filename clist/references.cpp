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

// What a line of data has but for the directive that it begins with.
static std::string_view behind_directive(std::string_view line) {
    std::string_view rest = line;
    const bool is_directive = line.starts_with('.') && !assembly::take_symbol(rest).empty();
    return is_directive && !rest.starts_with(':') ? rest : line;
}

void references::visit(std::string_view text, const auto& use) const {
    for_each_label(labels_, text, [&](const label& it) {
        use(static_cast<std::uint32_t>(&it - code_.labels.data()));
    });
}

// Strings refer to nothing.
void references::visit_data(const text_range& range, const auto& use) const {
    for (std::size_t at = range.begin; at < range.end;) {
        const std::string_view line = line_at(code_.text, at);
        at += line.size() + 1;
        std::string_view operands = line;
        assembly::skip_blanks(operands);
        if (!operands.starts_with(".string") && !operands.starts_with(".asci")) {
            visit(behind_directive(operands), use);
        }
    }
}

void references::visit_function(const function_code& function, const auto& use) const {
    const auto first = code_.instructions.begin() + function.first_instruction;
    for (auto it = first; it != first + function.instruction_count; ++it) {
        assembly::prefetch(code_.text, it->at);
        if (may_have_names(code_.text, it->at, it->end)) {
            visit(operands_of(code_.line_of(*it)), use);
        }
    }
    auto data = std::lower_bound(code_.data_lines.begin(), code_.data_lines.end(), function.begin);
    for (; data != code_.data_lines.end() && *data < function.end; ++data) {
        visit(line_at(code_.text, *data), use);
    }
}

bool references::is_data(std::uint32_t index) const {
    return code_.sections[code_.labels[index].section].kind == assembly::section_kind::data;
}

references::references(const assembly::assembly_file& code, const assembly::label_index& labels)
    : code_(code), labels_(labels), is_used_(code.labels.size()), is_taken_(code.labels.size()) {
    std::vector<std::uint32_t> data;
    const auto use = [&](std::uint32_t found) {
        if (!is_used_[found] && is_data(found)) {
            data.push_back(found);
        }
        is_used_[found] = true;
    };
    for (const function_code& it : code.functions) {
        data_begin_.push_back(static_cast<std::uint32_t>(data_.size()));
        visit_function(it, [&](std::uint32_t found) {
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
        visit_data(it.extent, [&](std::uint32_t found) {
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
    const std::vector<label>& labels = code_.labels;
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
    const std::size_t before = code_.text.rfind('\n', code_.labels[index].name_at);
    const auto begin =
        static_cast<std::uint32_t>(before == std::string_view::npos ? 0 : before + 1);
    text_range range{begin, begin};
    bool is_anchor = false;  // it stands for all data behind it, up to the next of its kind
    bool has_data = false;
    int names = 0;
    for (std::size_t at = begin; at < code_.text.size();) {
        const std::string_view line = line_at(code_.text, static_cast<std::uint32_t>(at));
        const data_line it = read_data_line(line);
        is_anchor = is_anchor || (at == begin && it.is_anchor);
        const bool is_next = it.has_label && at != begin &&
                             (is_anchor ? it.is_anchor : has_data || ++names == most_names);
        if (it.is_foreign || is_next) {
            break;
        }
        at = std::min(at + line.size() + 1, code_.text.size());
        has_data = has_data || it.has_data;
        if (it.has_label || it.has_data) {
            range.end = static_cast<std::uint32_t>(at);
        }
    }
    return range;
}

}  // namespace clist
