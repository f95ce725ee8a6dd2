// What the listing should show decides where the directives go. The interlister lists,
// before the code that stands ahead of an `.iline`, the C lines up to but not including
// that position. So the position given at the beginning of a stretch of code is the
// first line of the text that is to stand above it: the line of the code itself, and
// before it whatever lies between the end of the previous statement and this one.
#include "gas2interlist/place.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_map>

#include "assembly/line_information.h"
#include "assembly/outline.h"
#include "assembly/symbol.h"

namespace gas2interlist {

using namespace assembly;

namespace {

// The longest name that an `.ifile` line can carry to the interlister.
constexpr std::size_t longest_name = 16000;

// A listing is made with a line buffer of this size; only lines that fit it keep
// their carriage returns in step.
constexpr std::size_t listing_line_limit = 16382;

// A source file by the name that is written for it. Several file numbers may share one.
struct Source {
    std::string name;  // empty when there is no usable one
    std::optional<text_file> file = {};
    std::optional<source_outline> outline = {};
    // First lines of the functions that the assembly holds code of, ascending.
    std::vector<std::uint32_t> entries = {};
};

// The lines that a function owns, declaration to closing brace.
struct Extent {
    Source* source = nullptr;
    std::uint32_t first = 0;
    std::uint32_t body = 0;  // the line of the opening brace
    std::uint32_t last = 0;
};

struct Placer {
    const assembly_file& assembly;
    const prefix_map& source_map;
    const source_access& access;

    std::int64_t modified;
    interlisted_text& result;

    std::unordered_map<std::uint32_t, Source*> by_number = {};
    std::unordered_map<std::string, std::unique_ptr<Source>> by_name = {};
    std::unordered_map<std::string_view, Extent> by_symbol = {};
    const Source* current = nullptr;  // named by the last `.ifile`
};

// --- Source files ---

// Whether an `.ifile` line can carry the name. "<built-in>" and its like are no files.
bool is_usable_name(std::string_view name) {
    return !name.empty() && name.size() <= longest_name && name.front() != '<' &&
           name.find('\n') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

// The source file of a file number, or null when it has no usable name.
Source* source_of(Placer& placer, std::uint32_t number) {
    const auto [known, is_new] = placer.by_number.try_emplace(number, nullptr);
    if (!is_new) {
        return known->second;
    }
    const auto entry = placer.assembly.files.find(number);
    if (entry == placer.assembly.files.end()) {
        return nullptr;
    }
    found_source found = find_source(placer.assembly, entry->second, placer.source_map,
                                     placer.access, placer.modified);
    if (!is_usable_name(found.name)) {
        return nullptr;
    }
    std::unique_ptr<Source>& source = placer.by_name[found.name];
    if (!source) {
        source = std::make_unique<Source>();
        if (!found.doubt.empty()) {
            placer.result.warnings.push_back(found.name + ": " + found.doubt);
        }
        source->name = std::move(found.name);
        source->file = std::move(found.file);
        if (source->file) {
            source->outline = outline_source(source->file->text());
        }
    }
    known->second = source.get();
    return known->second;
}

// --- Extents ---

Extent extent_of(Source* source, std::size_t block) {
    const source_block& it = source->outline->blocks[block];
    return {.source = source, .first = it.header_line, .body = it.open_line, .last = it.close_line};
}

// The function at a position, provided that its declaration has `name`.
std::optional<Extent> named_extent(Placer& placer, const code_position& position,
                                   std::string_view name) {
    Source* source = source_of(placer, position.file);
    if (source == nullptr || !source->outline) {
        return std::nullopt;
    }
    const source_outline& outline = *source->outline;
    for (const std::size_t block : {function_declared_at(outline, position.line, name),
                                    function_around(outline, position.line)}) {
        if (block != no_block && declares(outline, block, name)) {
            return extent_of(source, block);
        }
    }
    return std::nullopt;
}

// Whether the assembly has another function that begins between the given lines: then
// no single declaration stands there, but text that a macro makes functions of.
bool is_shared(const Source& source, std::uint32_t after, std::uint32_t up_to) {
    const auto next = std::upper_bound(source.entries.begin(), source.entries.end(), after);
    return next != source.entries.end() && *next <= up_to;
}

// The positions of a function's code but its entry, which stands for the whole way in.
std::vector<code_position> further_positions(const assembly_file& assembly,
                                             const function_code& function) {
    const auto first = assembly.positions.begin() + function.first_position;
    std::vector<code_position> result;
    std::remove_copy_if(first, first + function.position_count, std::back_inserter(result),
                        [&function](const code_position& it) {
                            return function.entry && it.directive == function.entry->directive;
                        });
    return result;
}

// What the assembly alone tells: a function begins at its entry's line and ends before
// the next one that begins in the same file; it has no lines behind its last position.
std::optional<Extent> extent_from_assembly(Placer& placer, const function_code& function) {
    const code_position& entry = *function.entry;
    Source* source = source_of(placer, entry.file);
    if (source == nullptr) {
        return std::nullopt;
    }
    const auto next = std::upper_bound(source->entries.begin(), source->entries.end(), entry.line);
    Extent extent{.source = source, .first = entry.line, .body = entry.line, .last = entry.line};
    for (const code_position& it : further_positions(placer.assembly, function)) {
        if (it.line > extent.last && source_of(placer, it.file) == source &&
            (next == source->entries.end() || it.line < *next)) {
            extent.last = it.line;
        }
    }
    return extent;
}

// The first of a function's positions that lies in a function called `name`. An entry
// elsewhere is code that was inlined ahead of the function's own.
std::optional<Extent> find_named_extent(Placer& placer, const function_code& function,
                                        std::string_view name) {
    const code_position& entry = *function.entry;
    if (std::optional<Extent> extent = named_extent(placer, entry, name)) {
        return is_shared(*extent->source, std::max(entry.line, extent->first), extent->body)
                   ? extent_from_assembly(placer, function)
                   : extent;
    }
    code_position last = entry;
    for (const code_position& it : further_positions(placer.assembly, function)) {
        if (it.line == 0 || (it.file == last.file && it.line == last.line)) {
            continue;
        }
        last = it;
        if (std::optional<Extent> extent = named_extent(placer, it, name)) {
            return extent;
        }
    }
    return std::nullopt;
}

// Where a function stands in the source: where its name is declared, or else where it is
// entered.
std::optional<Extent> find_extent(Placer& placer, const function_code& function) {
    const std::string_view name = declared_name(function.symbol);
    if (!name.empty()) {
        if (std::optional<Extent> extent = find_named_extent(placer, function, name)) {
            return extent;
        }
    }
    // Some formats put an underscore before every C symbol.
    if (name.size() > 1 && name.front() == '_') {
        if (std::optional<Extent> extent = find_named_extent(placer, function, name.substr(1))) {
            return extent;
        }
    }
    const code_position& entry = *function.entry;
    Source* source = source_of(placer, entry.file);
    if (source != nullptr && source->outline) {
        const std::size_t declared = function_declared_at(*source->outline, entry.line, {});
        if (declared != no_block &&
            !is_shared(*source, entry.line, source->outline->blocks[declared].open_line)) {
            return extent_of(source, declared);
        }
    }
    return extent_from_assembly(placer, function);
}

bool owns(Placer& placer, const Extent& extent, const code_position& position) {
    return position.line >= extent.first && position.line <= extent.last &&
           source_of(placer, position.file) == extent.source;
}

// --- Directives ---

void insert(Placer& placer, std::size_t at, std::string_view directive, std::string_view operand) {
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

void insert(Placer& placer, std::size_t at, std::string_view directive, std::uint32_t number) {
    insert(placer, at, directive, std::to_string(number));
}

void insert_file(Placer& placer, std::size_t at, const Source& source) {
    if (placer.current != &source) {
        std::string quoted(1, '"');
        quoted += source.name;
        quoted += '"';
        insert(placer, at, ".ifile", quoted);
        placer.current = &source;
    }
}

// The first line to list above code of `line` when the code before it was of
// `previous`: what follows the end of the previous statement goes with the new code.
std::uint32_t boundary(const Extent& extent, std::uint32_t previous, std::uint32_t line) {
    if (!extent.source->outline) {
        return line;
    }
    const std::vector<bool>& ends = extent.source->outline->statement_end;
    // Positions may lie far behind the end of a source that has changed since.
    const std::size_t limit = std::min<std::size_t>(line - 1, ends.size());
    for (std::size_t at = previous; at < limit; ++at) {
        if (ends[at]) {
            return static_cast<std::uint32_t>(at) + 1;
        }
    }
    return line;
}

// The own lines' positions in the order of the text, those that follow each other on one
// line taken together.
std::vector<code_position> own_positions(Placer& placer, const function_code& function,
                                         const Extent& extent) {
    std::vector<code_position> own;
    for (const code_position& it : further_positions(placer.assembly, function)) {
        if (it.line <= extent.body || !owns(placer, extent, it)) {
            continue;
        }
        if (!own.empty() && own.back().line == it.line) {
            own.back().code += it.code;
        } else {
            own.push_back(it);
        }
    }
    return own;
}

// The best run up to each line, in a tree of prefix maxima over the lines' ranks.
class BestRuns {
  public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    BestRuns(std::size_t ranks, const std::vector<std::uint64_t>& worth)
        : tree_(ranks + 1, none), worth_(worth) {}

    // The run of most worth that ends on a line of a lower rank.
    std::size_t below(std::size_t rank) const {
        std::size_t best = none;
        for (; rank != 0; rank &= rank - 1) {
            best = better(best, tree_[rank]);
        }
        return best;
    }

    void enter(std::size_t rank, std::size_t run) {
        for (++rank; rank < tree_.size(); rank += rank & (~rank + 1)) {
            tree_[rank] = better(tree_[rank], run);
        }
    }

  private:
    std::size_t better(std::size_t one, std::size_t other) const {
        if (one == none || other == none) {
            return one == none ? other : one;
        }
        return worth_[other] > worth_[one] ? other : one;
    }

    std::vector<std::size_t> tree_;
    const std::vector<std::uint64_t>& worth_;  // by number of the run's last step
};

// The positions that a function's directives are made of: a run of own lines that only
// moves forward, because each line is listed once. Optimised code jumps; of all such runs
// the one is taken that puts the most code below its own line, loop bodies before the odd
// instruction that was moved out of them.
std::vector<code_position> forward_positions(Placer& placer, const function_code& function,
                                             const Extent& extent) {
    const std::vector<code_position> steps = own_positions(placer, function, extent);
    std::vector<std::uint32_t> lines(steps.size());
    std::transform(steps.begin(), steps.end(), lines.begin(),
                   [](const code_position& step) { return step.line; });
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());

    std::vector<std::uint64_t> worth(steps.size());  // of the best run that ends in a step
    std::vector<std::size_t> before(steps.size());   // the step before it in that run
    BestRuns best(lines.size(), worth);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const auto rank = static_cast<std::size_t>(
            std::lower_bound(lines.begin(), lines.end(), steps[i].line) - lines.begin());
        before[i] = best.below(rank);
        // Between runs with as much code the one that shows more lines wins.
        worth[i] = (before[i] == BestRuns::none ? 0 : worth[before[i]]) + steps[i].code + 1;
        best.enter(rank, i);
    }
    std::vector<code_position> run;
    for (std::size_t step = best.below(lines.size()); step != BestRuns::none; step = before[step]) {
        run.push_back(steps[step]);
    }
    std::reverse(run.begin(), run.end());
    return run;
}

void place_function(Placer& placer, const function_code& function, const Extent& extent) {
    insert_file(placer, function.begin, *extent.source);
    insert(placer, function.begin, ".ifunc", extent.first);
    std::uint32_t previous = extent.body;
    for (const code_position& it : forward_positions(placer, function, extent)) {
        insert(placer, it.at, ".iline", boundary(extent, previous, it.line) - extent.first + 1);
        previous = it.line;
    }
    insert(placer, function.end, ".iendfunc", extent.last + 1);
}

// A part that was split off lists no more than the lines that it has code of: each is
// made a function of one line.
void place_part(Placer& placer, const function_code& function, const Extent& extent) {
    std::uint32_t shown = 0;
    const auto show = [&](std::size_t at, const code_position& position) {
        if (position.line == shown || !owns(placer, extent, position)) {
            return;
        }
        if (shown != 0) {
            insert(placer, at, ".iendfunc", shown + 1);
        }
        insert_file(placer, at, *extent.source);
        insert(placer, at, ".ifunc", position.line);
        shown = position.line;
    };
    show(function.begin, *function.entry);
    for (const code_position& it : further_positions(placer.assembly, function)) {
        show(it.at, it);
    }
    if (shown != 0) {
        insert(placer, function.end, ".iendfunc", shown + 1);
    }
}

void collect_entries(Placer& placer) {
    for (const function_code& function : placer.assembly.functions) {
        if (function.entry && function.is_declared &&
            part_mark(function.symbol) == std::string_view::npos) {
            if (Source* source = source_of(placer, function.entry->file)) {
                source->entries.push_back(function.entry->line);
            }
        }
    }
    for (const auto& [name, source] : placer.by_name) {
        std::sort(source->entries.begin(), source->entries.end());
    }
}

// A read-back of the function's lines drops end-of-file marks and bytes of value 255,
// so a function that has any is better left alone.
bool survives_listing(std::string_view lines) {
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

void place(Placer& placer, const function_code& function) {
    if (!function.entry || !function.is_declared) {
        return;
    }
    const std::size_t mark = part_mark(function.symbol);
    const bool is_part = mark != std::string_view::npos;
    const auto whole = placer.by_symbol.find(function.symbol.substr(0, mark));
    std::optional<Extent> extent;
    if (is_part && whole != placer.by_symbol.end()) {
        extent = whole->second;
    } else {
        extent = find_extent(placer, function);
    }
    if (!extent) {
        return;
    }
    placer.by_symbol.try_emplace(function.symbol, *extent);
    const std::string_view lines =
        placer.assembly.text.substr(function.begin, function.end - function.begin);
    if (!survives_listing(lines)) {
        return;
    }
    if (is_part) {
        place_part(placer, function, *extent);
    } else {
        place_function(placer, function, *extent);
    }
}

}  // namespace

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
                                               const source_access& sources,
                                               std::int64_t modified) {
    assembly_file assembly;
    if (std::optional<assembly_error> error = read_assembly(result.assembly, assembly)) {
        return error;
    }
    result.added.clear();
    result.insertions.clear();
    result.warnings.clear();
    Placer placer{.assembly = assembly,
                  .source_map = source_map,
                  .access = sources,
                  .modified = modified,
                  .result = result};
    if (const std::string_view missing = missing_lines(assembly, result.assembly);
        !missing.empty()) {
        result.warnings.emplace_back(missing);
    }
    collect_entries(placer);
    for (const function_code& function : assembly.functions) {
        place(placer, function);
    }
    return std::nullopt;
}

}  // namespace gas2interlist
