// Merges what the reader lists apart: labels, lines of code, data and inline assembly.
#include "clist/function_lines.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "assembly/directive.h"
#include "assembly/operand.h"
#include "clist/operands.h"

namespace clist {

using assembly::assembly_file;
using assembly::function_code;
using assembly::text_range;

static constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

static std::uint32_t line_begin(std::string_view text, std::uint32_t at) {
    const std::size_t before = at == 0 ? std::string_view::npos : text.rfind('\n', at - 1);
    return before == std::string_view::npos ? 0 : static_cast<std::uint32_t>(before + 1);
}

static bool is_local(std::string_view name) {
    return name.empty() || name.starts_with('.') || name.starts_with('$') ||
           name.starts_with('L') || assembly::is_digit(name.front());
}

static bool is_shown(const annotation& model, const references& used, std::uint32_t label) {
    return !is_local(model.code().name_of(model.code().labels[label])) || used.is_used(label);
}

static bool is_of_data(const annotation& model, std::uint32_t label) {
    const assembly_file& code = model.code();
    return code.sections[code.labels[label].section].kind == assembly::section_kind::data;
}

namespace {

// One of the reader's lists, as far as it lies within a function, by where its lines begin.
template <class Place>
class lane {
  public:
    lane(std::size_t begin, std::size_t end, Place place_of)
        : at_(begin), end_(end), place_of_(place_of) {
        look();
    }

    // Where the next one's line begins; nowhere behind the last.
    std::uint32_t place() const { return place_; }

    // Its index; then the next is the one behind it.
    std::uint32_t take() {
        const std::size_t taken = at_++;
        look();
        return static_cast<std::uint32_t>(taken);
    }

    void skip_to(std::uint32_t end) {
        while (place_ < end) {
            take();
        }
    }

  private:
    void look() { place_ = at_ == end_ ? nowhere : place_of_(at_); }

    std::size_t at_;
    std::size_t end_;
    Place place_of_;
    std::uint32_t place_ = nowhere;
};

}  // namespace

// The indices of the elements that lie within a function: `offset_of` gives the offset of an
// element, which ascends, `place_of` that of its line by the element's index.
static auto lane_within(const function_code& function, const auto& all, auto offset_of,
                        auto place_of) {
    const auto from = [&](std::uint32_t place) {
        const auto found = std::partition_point(
            all.begin(), all.end(), [&](const auto& it) { return offset_of(it) < place; });
        return static_cast<std::size_t>(found - all.begin());
    };
    return lane(from(function.begin), from(function.end), place_of);
}

// Whether a line within inline assembly is the compiler's own: a mark for the line of the
// source, a position, a label that is only there for the debugging data.
static bool is_compilers(const annotation& model, const references& used, std::string_view line) {
    assembly::skip_blanks(line);
    if (line.empty() || line.starts_with(".loc") || line.starts_with(".cfi_")) {
        return true;
    }
    if (line.starts_with('.') && line.ends_with(':')) {
        const assembly::label* it = model.labels().find(line.substr(0, line.size() - 1));
        return it != nullptr &&
               !used.is_used(static_cast<std::uint32_t>(it - model.code().labels.data()));
    }
    line.remove_prefix(std::min(line.find_first_not_of("#@/;"), line.size()));
    return line.size() > 2 && line[0] == ' ' && assembly::is_digit(line[1]) &&
           line.find('"') != std::string_view::npos;
}

static std::string_view without_return(std::string_view line) {
    while (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

void read_function_lines(const annotation& model, const references& used,
                         const function_code& function, std::vector<function_line>& lines) {
    const assembly_file& code = model.code();
    auto codes =
        lane(function.first_instruction, function.first_instruction + function.instruction_count,
             [&](std::size_t i) { return code.instructions[i].at; });
    auto labels = lane_within(
        function, code.labels, [](const assembly::label& it) { return it.name_at; },
        [&](std::size_t i) { return line_begin(code.text, code.labels[i].name_at); });
    auto data = lane_within(
        function, code.data_lines, [](std::uint32_t at) { return at; },
        [&](std::size_t i) { return code.data_lines[i]; });
    auto inlined = lane_within(
        function, code.inline_assembly, [](const text_range& it) { return it.begin; },
        [&](std::size_t i) { return code.inline_assembly[i].begin; });
    lines.clear();
    bool is_led_to = false;  // a label that is shown was the last thing before
    while (true) {
        const std::uint32_t at =
            std::min({codes.place(), labels.place(), data.place(), inlined.place()});
        if (at == nowhere) {
            return;
        }
        assembly::prefetch(code.text, at);
        if (inlined.place() == at) {
            const std::uint32_t block = inlined.take();
            const text_range range = code.inline_assembly[block];
            for (std::size_t line = range.begin; line < range.end;) {
                const std::string_view text = line_at(code.text, line);
                const auto place = static_cast<std::uint32_t>(line);
                if (codes.place() == place) {
                    lines.push_back({line_kind::code, place, codes.take()});
                } else if (!is_compilers(model, used, without_return(text))) {
                    lines.push_back({line_kind::inlined, place, block});
                }
                line += text.size() + 1;
            }
            labels.skip_to(range.end);
            data.skip_to(range.end);
        } else if (labels.place() == at) {
            // On the line of what it stands for it is part of that.
            const bool is_alone = codes.place() != at && data.place() != at;
            const std::uint32_t label = labels.take();
            // That of a table in between goes behind the function with it.
            if (!is_of_data(model, label) && is_shown(model, used, label)) {
                is_led_to = true;
                if (is_alone) {
                    lines.push_back({line_kind::label, at, label});
                }
            }
        } else if (codes.place() == at) {
            lines.push_back({line_kind::code, at, codes.take()});
            is_led_to = false;
        } else {
            // Data that no label leads to are none that the code uses.
            data.take();
            if (is_led_to) {
                lines.push_back({line_kind::data, at});
            }
        }
    }
}

void take_data_lines(const annotation& model, references& used, std::uint32_t function,
                     std::vector<function_line>& lines) {
    const assembly_file& code = model.code();
    lines.clear();
    std::size_t shown_up_to = 0;
    for (std::uint32_t label : used.take_data_of(function)) {
        const text_range range = used.extent_of(label);
        std::size_t at = std::max<std::size_t>(range.begin, shown_up_to);
        while (at < range.end) {
            const std::string_view line = line_at(code.text, at);
            const std::size_t end = at + line.size();
            const auto place = static_cast<std::uint32_t>(at);
            while (label < code.labels.size() && code.labels[label].name_at < at) {
                ++label;
            }
            const bool has_label = label < code.labels.size() && code.labels[label].name_at < end;
            if (read_data_line(line).has_data) {
                lines.push_back({line_kind::data, place});
            } else if (has_label && is_shown(model, used, label)) {
                lines.push_back({line_kind::label, place, label});
            }
            at = end + 1;
        }
        shown_up_to = at;
    }
}

// Behind the last line of the inline assembly that begins at `first`.
static auto end_of_inlined(auto first, auto end) {
    auto after = first;
    for (auto it = first; it != end; ++it) {
        if (it->kind == line_kind::inlined) {
            if (it->index != first->index) {
                break;
            }
            after = it + 1;
        }
    }
    return after;
}

void keep_chosen_lines(const selection& chosen, std::size_t model, std::uint32_t own_label,
                       std::vector<function_line>& lines) {
    if (chosen.lines.empty()) {
        return;
    }
    std::vector<function_line> kept;
    std::vector<function_line> waiting;  // labels, for a line behind them
    const auto is_chosen = [&](const function_line& line) {
        return line.kind == line_kind::code && chosen.has_line(model, line.index);
    };
    for (auto line = lines.begin(); line != lines.end();) {
        auto after = line + 1;
        if (line->kind == line_kind::label && line->index != own_label) {
            waiting.push_back(*line);
            line = after;
            continue;
        }
        bool is_kept = line->kind != line_kind::code || is_chosen(*line);
        if (line->kind == line_kind::inlined) {
            after = end_of_inlined(line, lines.end());
            is_kept = std::any_of(line, after, is_chosen);
        }
        if (is_kept) {
            kept.insert(kept.end(), waiting.begin(), waiting.end());
            kept.insert(kept.end(), line, after);
        }
        waiting.clear();
        line = after;
    }
    lines = std::move(kept);
}

void append_line(const annotation& model, const function_line& line, std::string& text) {
    const assembly_file& code = model.code();
    if (line.kind == line_kind::label) {
        text += model.names().readable(code.name_of(code.labels[line.index]));
        text += ':';
    } else {
        const std::string_view whole = line.kind == line_kind::code
                                           ? code.line_of(code.instructions[line.index])
                                           : line_at(code.text, line.at);
        model.names().append_operands(without_return(whole), text);
    }
}

}  // namespace clist
