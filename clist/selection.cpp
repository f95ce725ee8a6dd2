// Fits names, numbers and lines to the functions of the models.
#include "clist/selection.h"

#include <fnmatch.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <limits>
#include <numeric>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "clist/operands.h"

namespace clist {

using assembly::function_code;

static const function_code& code_of(const std::deque<annotation>& models,
                                    const selected_function& it) {
    return models[it.model].code().functions[it.function];
}

static std::vector<selected_function> all_functions(const std::deque<annotation>& models) {
    std::vector<selected_function> all;
    std::uint32_t number = 0;
    for (std::size_t model = 0; model < models.size(); ++model) {
        const std::vector<function_code>& functions = models[model].code().functions;
        for (std::uint32_t i = 0; i < functions.size(); ++i) {
            if (functions[i].instruction_count != 0) {
                all.push_back({model, i, ++number});
            }
        }
    }
    return all;
}

// How many letters must be changed, added or taken away to make one of the other.
static std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

// Keeps the candidate that is least far from what was asked for.
namespace {
struct nearest {
    std::string_view wanted;
    std::string name = {};
    std::size_t least = std::numeric_limits<std::size_t>::max();

    void offer(std::string_view candidate) {
        // Beyond this, names are not worth the time; they would not be near either.
        constexpr std::size_t longest = 400;
        if (candidate.empty() || candidate.size() > longest || wanted.size() > longest) {
            return;
        }
        // What was left out at both ends counts for less than letters that are wrong.
        const bool is_part = wanted.size() > 2 && candidate.find(wanted) != std::string_view::npos;
        const std::size_t far = distance(wanted, candidate) + (is_part ? 0 : longest);
        if (far < least) {
            least = far;
            name = candidate;
        }
    }
    std::string told() const { return name.empty() ? "" : "; the nearest is '" + name + "'"; }
};
}  // namespace

static bool fits(const std::string& pattern, std::string_view name) {
    return pattern == name || fnmatch(pattern.c_str(), std::string(name).c_str(), 0) == 0;
}

// The name as it is written where the function is called: without the arguments of
// templates, `const` behind it, and blanks behind `operator`.
//   std::operator +<char>          std::operator+
//   ns::list<int>::size const      ns::list::size
static std::string bare_name(std::string_view plain) {
    constexpr std::string_view word = "operator ";
    // Longer ones before those that they begin with.
    constexpr std::array<std::string_view, 8> with_angles = {"<=>", "<<=", ">>=", "->*",
                                                             "<<",  ">>",  "->",  "<="};
    std::string name;
    std::size_t depth = 0;
    for (std::size_t at = 0; at < plain.size(); ++at) {
        const bool begins = name.empty() || name.back() == ':';
        if (depth == 0 && begins && plain.substr(at).starts_with(word)) {
            at += word.size();
            name += "operator";
            if (at < plain.size() && std::isalpha(static_cast<unsigned char>(plain[at])) != 0) {
                name += ' ';
            }
            const auto* const sign =
                std::find_if(with_angles.begin(), with_angles.end(),
                             [&](std::string_view it) { return plain.substr(at).starts_with(it); });
            const std::size_t size = sign == with_angles.end() ? 1 : sign->size();
            name += plain.substr(at, size);
            at += size - 1;
        } else if (plain[at] == '<' && plain.substr(at).find('>') != std::string_view::npos &&
                   !(begins && plain.substr(at).starts_with("<unnamed>"))) {
            ++depth;
        } else if (plain[at] == '>' && depth != 0) {
            --depth;
        } else if (depth == 0) {
            name += plain[at];
        }
    }
    name.resize(std::min(name.find(" [clone"), name.size()));
    for (const std::string_view end : {" ", " &&", " &", " volatile", " const"}) {
        if (name.ends_with(end)) {
            name.resize(name.size() - end.size());
        }
    }
    return name;
}

static std::optional<std::uint32_t> as_number(const std::string& pattern) {
    std::uint32_t number = 0;
    const char* const end = pattern.data() + pattern.size();
    const auto [at, failure] = std::from_chars(pattern.data(), end, number);
    return failure == std::errc() && at == end ? std::optional(number) : std::nullopt;
}

// Marks the functions that a pattern fits.
static void mark_functions(const std::deque<annotation>& models,
                           const std::vector<selected_function>& all, const std::string& pattern,
                           std::vector<bool>& is_chosen, std::string& error) {
    if (const std::optional<std::uint32_t> number = as_number(pattern)) {
        if (*number == 0 || *number > all.size()) {
            error = "there is no function " + pattern + "; they count from 1 to " +
                    std::to_string(all.size());
        } else {
            is_chosen[*number - 1] = true;
        }
        return;
    }
    bool is_found = false;
    nearest near{.wanted = pattern};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const function_code& function = code_of(models, all[i]);
        const std::string_view readable = models[all[i].model].name_of(function);
        const std::string plain = name_table::plain(function.symbol);
        if (fits(pattern, function.symbol) || fits(pattern, readable) || fits(pattern, plain) ||
            fits(pattern, bare_name(plain))) {
            is_chosen[i] = is_found = true;
        } else if (!is_found) {
            near.offer(function.symbol);
            near.offer(readable);
            near.offer(bare_name(plain));
        }
    }
    if (!is_found) {
        error = "no function '" + pattern + "'" + near.told();
    }
}

// --- Lines ---

// Whether a file is the one that is meant: its name ends in that one's parts, or it is there.
static bool is_meant(const source_file& file, const std::string& wanted) {
    const std::filesystem::path given(wanted);
    const std::string name = given.lexically_normal();
    std::error_code failure;
    if (given.is_relative() &&
        file.path == (std::filesystem::current_path(failure) / given).lexically_normal()) {
        return true;
    }
    const auto ends = [&name](std::string_view path) {
        return path.ends_with(name) &&
               (path.size() == name.size() || path[path.size() - name.size() - 1] == '/');
    };
    return ends(file.path) || ends(file.recorded);
}

namespace {

// What one --lines asks for, in one model.
struct line_search {
    const annotation& model;
    const line_range& wanted;
    std::vector<bool> is_meant_source;  // by index of a source
    bool is_file_known = false;
    std::uint32_t nearest_line = 0;

    bool is_wanted(std::uint32_t source, std::uint32_t line) {
        if (source == none || line == 0 || !is_meant_source[source]) {
            return false;
        }
        is_file_known = true;
        if (line >= wanted.from && line <= wanted.to) {
            return true;
        }
        const auto far = [this](std::uint32_t it) {
            return it < wanted.from ? wanted.from - it : it - wanted.to;
        };
        if (nearest_line == 0 || far(line) < far(nearest_line) ||
            (far(line) == far(nearest_line) && line < nearest_line)) {
            nearest_line = line;
        }
        return false;
    }
};

}  // namespace

// Marks the lines of code that came from the wanted lines, or through calls on them.
static void mark_lines(const std::deque<annotation>& models, const line_range& wanted,
                       std::vector<std::vector<bool>>& is_chosen, std::string& error) {
    bool is_found = false;
    bool is_file_known = false;
    std::uint32_t nearest_line = 0;
    for (std::size_t m = 0; m < models.size(); ++m) {
        const annotation& model = models[m];
        line_search search{.model = model, .wanted = wanted, .is_meant_source = {}};
        for (std::uint32_t i = 0; i < model.sources().size(); ++i) {
            search.is_meant_source.push_back(is_meant(model.sources()[i], wanted.file));
        }
        // What is inlined on one of the lines, or into such code.
        std::vector<bool> is_wanted_scope;
        for (const assembly::code_scope& it : model.debug().scopes) {
            is_wanted_scope.push_back(
                it.parent != none &&
                (is_wanted_scope[it.parent] ||
                 search.is_wanted(model.source_of(it.call_file), it.call_line)));
        }
        for (std::uint32_t i = 0; i < model.code().instructions.size(); ++i) {
            const std::uint32_t scope = model.debug().scope_of[i];
            const std::uint32_t index = model.code().instructions[i].position;
            bool is_one = scope != none && is_wanted_scope[scope];
            if (!is_one && index != none) {
                const assembly::code_position& position = model.code().positions[index];
                is_one = search.is_wanted(model.source_of(position.file), position.line);
            }
            if (is_one) {
                is_chosen[m][i] = is_found = true;
            }
        }
        is_file_known = is_file_known || search.is_file_known;
        nearest_line = search.nearest_line != 0 ? search.nearest_line : nearest_line;
    }
    if (is_found) {
        return;
    }
    std::string what = wanted.file;
    what += ':';
    what += std::to_string(wanted.from);
    if (wanted.to != wanted.from) {
        what += '-';
        what += std::to_string(wanted.to);
    }
    if (is_file_known) {
        error = "no code of " + what + "; the nearest is line " + std::to_string(nearest_line);
        return;
    }
    nearest near{.wanted = wanted.file};
    for (std::uint32_t i = 0; !models.empty() && i < models.front().sources().size(); ++i) {
        const source_file& file = models.front().sources()[i];
        if (file.is_used) {
            near.offer(file.recorded);
            near.offer(std::string_view(file.recorded).substr(file.recorded.rfind('/') + 1));
        }
    }
    error = "no code of " + wanted.file + near.told();
}

// --- Calls ---

namespace {

// By model and index of a label: the function that begins there, as an index of all.
using function_labels = std::vector<std::vector<std::uint32_t>>;

}  // namespace

static function_labels find_function_labels(const std::deque<annotation>& models,
                                            const std::vector<selected_function>& all) {
    function_labels by_label;
    for (const annotation& it : models) {
        by_label.emplace_back(it.code().labels.size(), none);
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (const std::uint32_t label = code_of(models, all[i]).label; label != none) {
            by_label[all[i].model][label] = static_cast<std::uint32_t>(i);
        }
    }
    return by_label;
}

// Adds the functions that the shown lines of another name.
static void add_called(const std::deque<annotation>& models, const function_labels& by_label,
                       const selected_function& from, const selection& shown,
                       std::vector<bool>& is_chosen) {
    const annotation& model = models[from.model];
    const function_code& function = code_of(models, from);
    for (std::uint32_t i = 0; i < function.instruction_count; ++i) {
        const std::uint32_t instruction = function.first_instruction + i;
        if (!shown.has_line(from.model, instruction)) {
            continue;
        }
        const std::string_view line = model.code().line_of(model.code().instructions[instruction]);
        for_each_label(model.labels(), operands_of(line), [&](const assembly::label& it) {
            const auto index = static_cast<std::size_t>(&it - model.code().labels.data());
            if (const std::uint32_t called = by_label[from.model][index]; called != none) {
                is_chosen[called] = true;
            }
        });
    }
}

// Functions that are only there because others call them are shown whole.
static void show_whole(const function_code& function, std::vector<bool>& lines) {
    const auto first = lines.begin() + function.first_instruction;
    std::fill(first, first + function.instruction_count, true);
}

static void add_context(const std::deque<annotation>& models,
                        const std::vector<selected_function>& all, unsigned levels,
                        std::vector<bool>& is_chosen, selection& shown) {
    const function_labels by_label = find_function_labels(models, all);
    std::vector<bool> is_done(all.size());
    for (unsigned level = 0; level < levels; ++level) {
        std::vector<bool> reached = is_chosen;
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (is_chosen[i] && !is_done[i]) {
                is_done[i] = true;
                add_called(models, by_label, all[i], shown, reached);
            }
        }
        for (std::size_t i = 0; i < all.size() && !shown.lines.empty(); ++i) {
            if (reached[i] && !is_chosen[i]) {
                show_whole(code_of(models, all[i]), shown.lines[all[i].model]);
            }
        }
        if (reached == is_chosen) {
            return;
        }
        is_chosen = std::move(reached);
    }
}

// --- All of it ---

// Whether any line of a function is among those shown.
static bool has_shown_line(const function_code& function, const std::vector<bool>& lines) {
    const auto first = lines.begin() + function.first_instruction;
    return std::find(first, first + function.instruction_count, true) !=
           first + function.instruction_count;
}

selection select(const std::deque<annotation>& models, const listing_options& options,
                 std::string& error) {
    selection shown;
    const std::vector<selected_function> all = all_functions(models);
    if (options.functions.empty() && options.lines.empty()) {
        shown.functions = all;
        return shown;
    }
    shown.is_all = false;
    std::vector<bool> is_chosen(all.size(), options.functions.empty());
    for (const std::string& pattern : options.functions) {
        mark_functions(models, all, pattern, is_chosen, error);
    }
    if (!options.lines.empty()) {
        for (const annotation& it : models) {
            shown.lines.emplace_back(it.code().instructions.size());
        }
        for (const line_range& wanted : options.lines) {
            mark_lines(models, wanted, shown.lines, error);
        }
        for (std::size_t i = 0; i < all.size(); ++i) {
            is_chosen[i] =
                is_chosen[i] && has_shown_line(code_of(models, all[i]), shown.lines[all[i].model]);
        }
        if (error.empty() &&
            std::find(is_chosen.begin(), is_chosen.end(), true) == is_chosen.end()) {
            error = "the functions that were asked for have no code of the lines";
        }
    }
    add_context(models, all, options.context, is_chosen, shown);
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (is_chosen[i]) {
            shown.functions.push_back(all[i]);
        }
    }
    return shown;
}

}  // namespace clist
