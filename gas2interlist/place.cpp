// What the listing should show decides where the directives go. The interlister lists,
// before the code that stands ahead of an `.iline`, the C lines up to but not including
// that position. So the position given at the beginning of a stretch of code is the
// first line of the text that is to stand above it: the line of the code itself, and
// before it whatever lies between the end of the previous statement and this one.
#include "gas2interlist/place.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "assembly/debug_info.h"
#include "assembly/line_information.h"
#include "assembly/symbol.h"
#include "gas2interlist/ascent.h"
#include "gas2interlist/extent.h"
#include "gas2interlist/source_table.h"

namespace gas2interlist {

using namespace assembly;

// The longest name that an `.ifile` line can carry to the interlister.
static constexpr std::size_t longest_name = 16000;

// A listing is made with a line buffer of this size; only lines that fit it keep
// their carriage returns in step.
static constexpr std::size_t listing_line_limit = 16383;

namespace {

struct placer {
    const assembly_file& assembly;
    interlisted_text& result;
    source_table sources;

    const source_file* current = nullptr;  // named by the last `.ifile`
    std::unordered_map<std::string_view, function_extent> by_symbol = {};
};

// Code of one line in a function's own text, up to that of another.
struct own_run {
    std::size_t at;  // where its directive goes
    source_file* source;
    std::uint32_t line;
    std::uint64_t code;
};

}  // namespace

// --- Directives ---

static void insert(placer& placer, std::size_t at, std::string_view directive,
                   std::string_view operand) {
    std::string& added = placer.result.added;
    added += '\t';
    added += directive;
    added += '\t';
    added += operand;
    added += placer.assembly.carriage_returns ? "\r\n" : "\n";
    std::vector<insertion>& insertions = placer.result.insertions;
    if (insertions.empty() || insertions.back().at != at) {
        insertions.push_back({at, 0});
    }
    insertions.back().added_end = added.size();
}

static void insert(placer& placer, std::size_t at, std::string_view directive,
                   std::uint32_t number) {
    insert(placer, at, directive, std::to_string(number));
}

// Whether an `.ifile` line can carry the name. "<built-in>" and its like are no files.
static bool is_usable_name(std::string_view name) {
    return !name.empty() && name.size() <= longest_name && name.front() != '<' &&
           name.find('\n') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

static void begin_lines(placer& placer, std::size_t at, source_file& source, std::uint32_t first) {
    if (placer.current != &source) {
        insert(placer, at, ".ifile", '"' + source.found.name + '"');
        placer.current = &source;
        if (!source.found.doubt.empty()) {
            placer.result.warnings.push_back(source.found.name + ": " +
                                             std::exchange(source.found.doubt, {}));
        }
    }
    insert(placer, at, ".ifunc", first);
}

static void end_lines(placer& placer, std::size_t at, std::uint32_t last) {
    insert(placer, at, ".iendfunc", last + 1);
}

// --- Functions ---

// The runs of own code in the order of the text, but those of the function's own source
// up to `body`.
static std::vector<own_run> own_runs(placer& placer, const function_code& function,
                                     const function_extent& extent, std::uint32_t body) {
    std::vector<own_run> runs;
    for (const code_position& it : further_positions(placer.assembly, function)) {
        source_file* const source = own_source(placer.sources, extent, it);
        if (source == nullptr || (source == extent.source && it.line <= body)) {
            continue;
        }
        if (!runs.empty() && runs.back().source == source && runs.back().line == it.line) {
            runs.back().code += it.code;
        } else {
            runs.push_back({it.at, source, it.line, it.code});
        }
    }
    return runs;
}

namespace {
// A run at which the listing goes on, from `begin`: the line of the run's code, and before
// it whatever follows the end of the previous statement.
struct step {
    std::size_t run;
    std::uint32_t begin;
};
}  // namespace

static std::vector<step> steps_of(const std::vector<own_run>& runs, const function_extent& extent,
                                  bool is_actor) {
    // Code above its line tells a reader nothing, while code that returns to a line stands
    // below it somewhere. Where a coroutine is resumed, it begins with a switch that has the
    // position of its closing brace.
    constexpr std::uint64_t above_weight = 4;
    const auto line_of = [&](std::uint32_t line, std::uint64_t code) {
        return line_run{line, end_of_statement(*extent.source, line).value_or(line), code,
                        is_actor && line == extent.last ? 0 : above_weight * code};
    };
    std::vector<line_run> lines;
    std::vector<std::size_t> index;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i].source == extent.source) {
            lines.push_back(line_of(runs[i].line, runs[i].code));
            index.push_back(i);
        }
    }
    std::vector<step> steps;
    line_run last = line_of(extent.body, 0);
    for (const std::size_t i : best_ascent(lines, last)) {
        const std::uint32_t listed =
            last.statement_end < lines[i].line ? last.statement_end : last.line;
        steps.push_back(
            {index[i], end_of_statement(*extent.source, last.line) ? listed + 1 : lines[i].line});
        last = lines[i];
    }
    return steps;
}

// Code of lines that were taken from another file lists these, each by itself, as a
// function would be; the function's own lines go on behind it.
static void place_function(placer& placer, const function_code& function,
                           const function_extent& extent) {
    const std::vector<own_run> runs = own_runs(placer, function, extent, extent.body);
    const std::vector<step> steps = steps_of(runs, extent, function.symbol.ends_with(".actor"));
    begin_lines(placer, function.begin, *extent.source, extent.first);
    std::uint32_t first = extent.first;
    const own_run* other = nullptr;  // the lines of another file that are open
    auto next = steps.begin();
    const auto switch_to = [&](std::size_t at, const own_run* run) {
        const std::uint32_t rest = next == steps.end() ? extent.last + 1 : next->begin;
        end_lines(placer, at, (other == nullptr ? rest - 1 : other->line));
        other = run;
        if (run == nullptr) {
            first = rest;
        }
        begin_lines(placer, at, run == nullptr ? *extent.source : *run->source,
                    run == nullptr ? rest : run->line);
    };
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const bool is_other = runs[i].source != extent.source;
        if (is_other || other != nullptr) {
            switch_to(runs[i].at, is_other ? &runs[i] : nullptr);
        }
        if (next != steps.end() && next->run == i) {
            insert(placer, runs[i].at, ".iline", next->begin - first + 1);
            ++next;
        }
    }
    if (other != nullptr) {
        switch_to(function.end, nullptr);
    }
    end_lines(placer, function.end, extent.last);
}

// A part that was split off lists no more than the lines that it has code of: each is
// made a function of one line.
static void place_part(placer& placer, const function_code& function,
                       const function_extent& extent) {
    std::vector<own_run> runs = own_runs(placer, function, extent, 0);
    if (source_file* const source = own_source(placer.sources, extent, *function.entry)) {
        runs.insert(runs.begin(), {function.begin, source, function.entry->line, 0});
    }
    const own_run* shown = nullptr;
    for (const own_run& run : runs) {
        if (shown != nullptr && shown->source == run.source && shown->line == run.line) {
            continue;
        }
        if (shown != nullptr) {
            end_lines(placer, run.at, shown->line);
        }
        begin_lines(placer, run.at, *run.source, run.line);
        shown = &run;
    }
    if (shown != nullptr) {
        end_lines(placer, function.end, shown->line);
    }
}

// A read-back of the function's lines drops end-of-file marks and bytes of value 255,
// so a function that has any is better left alone.
static bool survives_listing(std::string_view lines) {
    if (lines.find('\x1a') != std::string_view::npos ||
        lines.find('\xff') != std::string_view::npos) {
        return false;
    }
    if (lines.find('\r') == std::string_view::npos) {
        return true;
    }
    while (!lines.empty()) {
        const std::size_t size = std::min(lines.find('\n'), lines.size() - 1) + 1;
        if (size > listing_line_limit) {
            return false;
        }
        lines.remove_prefix(size);
    }
    return true;
}

static void place(placer& placer, const function_code& function) {
    if (!function.entry || !function.is_declared) {
        return;
    }
    const std::size_t mark = part_mark(function.symbol);
    const bool is_part = mark != std::string_view::npos;
    const auto whole = placer.by_symbol.find(function.symbol.substr(0, mark));
    const std::optional<function_extent> extent = is_part && whole != placer.by_symbol.end()
                                                      ? whole->second
                                                      : find_extent(placer.sources, function);
    if (!extent || !is_usable_name(extent->source->found.name)) {
        return;
    }
    placer.by_symbol.try_emplace(function.symbol, *extent);
    if (!survives_listing(
            placer.assembly.text.substr(function.begin, function.end - function.begin))) {
        return;
    }
    if (is_part) {
        place_part(placer, function, *extent);
    } else {
        place_function(placer, function, *extent);
    }
}

// Older formats leave what was compiled, and where, to the debugging data.
static void learn_compile(assembly_file& assembly) {
    if (!assembly.debug.empty()) {
        const auto [zero, is_new] =
            assembly.files.try_emplace(0, compiled_file(assembly, label_index(assembly)));
        if (!zero->second.directory.empty()) {
            assembly.compilation_directory = zero->second.directory;
        }
    }
    // By "." a compiler tells no directory either: what stands there is a guess.
    if (assembly.compilation_directory.empty() && assembly.files.contains(0)) {
        assembly.compilation_directory.assign(1, '.');
    }
}

std::string merged(const interlisted_text& text) {
    std::string whole;
    whole.reserve(text.assembly.size() + text.added.size());
    for_each_piece(text, [&](std::string_view piece) {
        whole += piece;
        return true;
    });
    return whole;
}

std::optional<assembly_error> place_directives(interlisted_text& result,
                                               const prefix_map& source_map,
                                               const source_access& access, std::int64_t modified) {
    assembly_file assembly;
    if (std::optional<assembly_error> error =
            read_assembly(result.assembly, assembly, {.compile = true})) {
        return error;
    }
    learn_compile(assembly);
    result.added.clear();
    result.insertions.clear();
    result.warnings.clear();
    // Room for what most texts get, taken but not touched, saves moving it about.
    result.added.reserve(assembly.positions.size() * 8);
    result.insertions.reserve(assembly.positions.size() / 2);
    if (const std::string_view missing = missing_lines(assembly, result.assembly);
        !missing.empty()) {
        result.warnings.emplace_back(missing);
    }
    placer placer{.assembly = assembly,
                  .result = result,
                  .sources = source_table_of(assembly, source_map, access, modified)};
    for (const function_code& function : assembly.functions) {
        place(placer, function);
    }
    return std::nullopt;
}

}  // namespace gas2interlist
