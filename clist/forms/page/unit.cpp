// Writes a unit's rows, frames, files and functions as columns.
#include "clist/forms/page/unit.h"

#include <algorithm>
#include <utility>

#include "assembly/md5.h"
#include "clist/forms/page/columns.h"
#include "clist/forms/page/rows.h"

namespace clist::page {

static std::uint32_t line_count(std::string_view text) {
    const auto ends = std::count(text.begin(), text.end(), '\n');
    return static_cast<std::uint32_t>(ends) + (text.empty() || text.ends_with('\n') ? 0 : 1);
}

const source_texts::entry& source_texts::of(std::uint32_t source) {
    std::optional<entry>& known = known_[source];
    if (!known) {
        known.emplace();
        const std::string_view text = sources_.text(source);
        if (sources_[source].found.file) {
            known->chunk = "text/";
            known->chunk += assembly::md5_of(text);
            known->lines = line_count(text);
            const auto is_same = [&](const named_text& it) { return it.chunk == known->chunk; };
            if (std::none_of(all_.begin(), all_.end(), is_same)) {
                all_.push_back({.chunk = known->chunk, .text = text});
            }
        }
    }
    return *known;
}

namespace {

// The source files that the frames of a unit name, by their number in it.
struct unit_files {
    std::vector<std::uint32_t> sources;    // indices in the source list
    std::vector<std::uint32_t> last_line;  // that code came from, at any depth
    std::vector<std::uint32_t> number_of;  // by index in the source list, or none

    unit_files(const frame_table& frames, std::uint32_t source_count)
        : number_of(source_count, none) {
        for (const frame_row& it : frames.rows()) {
            if (it.source == none) {
                continue;
            }
            std::uint32_t& number = number_of[it.source];
            if (number == none) {
                number = static_cast<std::uint32_t>(sources.size());
                sources.push_back(it.source);
                last_line.push_back(0);
            }
            last_line[number] = std::max(last_line[number], it.line);
        }
    }

    std::int64_t number(std::uint32_t source) const {
        return index_or_none(source == none ? none : number_of[source]);
    }
};

// How many instructions a line has.
struct heat {
    std::uint32_t file;
    std::uint32_t line;
    std::uint32_t count;
};

}  // namespace

static std::vector<heat> heat_of(const unit_rows& from, const unit_files& files) {
    std::vector<heat> all;
    for (const row& it : from.rows) {
        if (it.frame != none) {
            const frame_row& frame = from.frames.rows()[it.frame];
            all.push_back({files.number_of[frame.source], frame.line, 1});
        }
    }
    const auto place = [](const heat& it) { return std::pair(it.file, it.line); };
    std::sort(all.begin(), all.end(),
              [&](const heat& a, const heat& b) { return place(a) < place(b); });
    std::vector<heat> sums;
    for (const heat& it : all) {
        if (!sums.empty() && place(sums.back()) == place(it)) {
            ++sums.back().count;
        } else {
            sums.push_back(it);
        }
    }
    return sums;
}

static void write_rows(const unit_rows& from, const unit_files& files, std::string& text) {
    object rows(text);
    std::string kinds;
    for (const row& it : from.rows) {
        kinds += it.kind;
    }
    rows.member("kinds", kinds);

    const std::vector<frame_row>& frames = from.frames.rows();
    rows.column("names", from.frames.names(), [](std::string_view it) { return it; });
    rows.column("frame_function", frames, [](const frame_row& it) { return it.function; });
    rows.column("frame_file", frames, [&](const frame_row& it) { return files.number(it.source); });
    rows.column("frame_line", frames, [](const frame_row& it) { return it.line; });
    rows.column("frame_parent", frames,
                [](const frame_row& it) { return index_or_none(it.parent); });

    struct run {
        std::uint32_t frame;
        std::uint32_t rows;
    };
    std::vector<run> runs;
    for (const row& it : from.rows) {
        if (runs.empty() || runs.back().frame != it.frame) {
            runs.push_back({it.frame, 0});
        }
        ++runs.back().rows;
    }
    rows.column("run_rows", runs, [](const run& it) { return it.rows; });
    rows.column("run_frame", runs, [](const run& it) { return index_or_none(it.frame); });

    rows.column("tail_row", from.tails, [](const label_tail& it) { return it.row; });
    rows.column("tail", from.tails, [](const label_tail& it) { return it.text; });

    std::int64_t last = 0;
    rows.column("assembly_line", from.rows, [&last](const row& it) {
        const std::int64_t step = it.line == 0 ? 0 : it.line - last;
        last += step;
        return step;
    });
    rows.end();
}

static void write_files(const source_list& sources, const unit_files& files,
                        const std::vector<heat>& heats, source_texts& texts, std::string& text) {
    text += '[';
    auto next = heats.begin();
    for (std::uint32_t number = 0; number < files.sources.size(); ++number) {
        const std::uint32_t index = files.sources[number];
        const source_texts::entry& found = texts.of(index);
        text += number == 0 ? "" : ",";
        object file(text);
        file.member("path", sources[index].recorded);
        if (found.chunk.empty()) {
            file.begin("text");
            text += "null";
            file.member("lines", files.last_line[number]);
        } else {
            file.member("text", found.chunk);
            file.member("lines", found.lines);
        }
        file.member("system", !sources[index].is_own);
        const auto end =
            std::find_if(next, heats.end(), [&](const heat& it) { return it.file != number; });
        const std::span<const heat> own(next, end);
        std::int64_t last = 0;
        file.column("heat_line", own,
                    [&last](const heat& it) { return it.line - std::exchange(last, it.line); });
        file.column("heat_count", own, [](const heat& it) { return it.count; });
        file.end();
        next = end;
    }
    text += ']';
}

static void write_functions(const annotation& model, const unit_rows& from, const unit_files& files,
                            std::string& text) {
    object columns(text);
    const auto write = [&](std::string_view name, const auto& value_of) {
        columns.column(name, from.functions, value_of);
    };
    const auto code_of = [&](const function_row& it) -> const assembly::function_code& {
        return model.code().functions[it.function];
    };
    const auto frame_of = [&](const function_row& it) {
        return it.frame == none ? frame_row{0, none, 0, none} : from.frames.rows()[it.frame];
    };
    write("name", [&](const function_row& it) { return model.name_of(code_of(it)); });
    write("symbol", [&](const function_row& it) { return code_of(it).symbol; });
    write("file", [&](const function_row& it) { return files.number(frame_of(it).source); });
    write("line", [&](const function_row& it) { return frame_of(it).line; });
    write("row", [](const function_row& it) { return it.row; });
    write("rows", [](const function_row& it) { return it.rows; });
    write("instructions", [](const function_row& it) { return it.instructions; });
    write("inlined", [](const function_row& it) { return it.inlined; });
    columns.end();
}

namespace {

// A function that stands nowhere by itself: all of its code was inlined.
struct inlined_function {
    std::uint32_t name = none;
    std::uint32_t source = none;
    std::uint32_t line = 0;          // the first of that source that code comes from
    std::uint32_t instructions = 0;  // in all places, with those that were inlined in it
};

}  // namespace

static std::vector<inlined_function> inlined_functions(const unit_rows& from) {
    const std::vector<frame_row>& frames = from.frames.rows();
    std::vector<std::uint32_t> instructions(frames.size());
    for (const row& it : from.rows) {
        if (it.frame != none && it.kind == 'i') {
            ++instructions[it.frame];
        }
    }
    // A parent stands before its children.
    for (std::size_t i = frames.size(); i-- > 0;) {
        if (frames[i].parent != none) {
            instructions[frames[i].parent] += instructions[i];
        }
    }
    std::vector<inlined_function> by_name(from.frames.names().size());
    std::vector<bool> stands(by_name.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const frame_row& it = frames[i];
        inlined_function& function = by_name[it.function];
        stands[it.function] = stands[it.function] || it.parent == none;
        if (it.parent == none || frames[it.parent].function != it.function) {
            function.instructions += instructions[i];
        }
        if (it.source == none) {
            continue;
        }
        if (function.source == none) {
            function = {it.function, it.source, it.line, function.instructions};
        } else if (function.source == it.source) {
            function.line = std::min(function.line, it.line);
        }
    }
    std::erase_if(by_name,
                  [&](const inlined_function& it) { return it.name == none || stands[it.name]; });
    return by_name;
}

static void write_inlined(const unit_rows& from, const unit_files& files, std::string& text) {
    const std::vector<inlined_function> functions = inlined_functions(from);
    object columns(text);
    columns.column("name", functions,
                   [&](const inlined_function& it) { return from.frames.names()[it.name]; });
    columns.column("file", functions,
                   [&](const inlined_function& it) { return files.number(it.source); });
    columns.column("line", functions, [](const inlined_function& it) { return it.line; });
    columns.column("instructions", functions,
                   [](const inlined_function& it) { return it.instructions; });
    columns.end();
}

// What the compiler calls itself, which it writes behind the code.
static std::string_view compiler_of(std::string_view assembly) {
    constexpr std::string_view directive = "\t.ident\t\"";
    const std::size_t at = assembly.rfind(directive);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view rest = assembly.substr(at + directive.size());
    return rest.substr(0, rest.find_first_of("\"\n"));
}

unit make_unit(const form_input& from, std::size_t model_index, source_texts& texts,
               std::string_view made) {
    const annotation& model = from.models[model_index];
    unit_rows rows = make_rows(from, model_index);
    const unit_files files(rows.frames, model.sources().size());
    unit out;
    write_rows(rows, files, out.rows);
    object head(out.head);
    head.member("format", 1);
    head.member("name", model.input().name);
    head.column("command", model.input().command, [](const std::string& it) { return it; });
    head.member("compiler", compiler_of(model.code().text));
    head.member("target", model.input().target);
    head.member("comment", model.comment());
    head.member("program", "clist " CLIST_VERSION);
    head.member("made", made);
    head.member("rows", rows.rows.size());
    head.member("instructions", std::count_if(rows.rows.begin(), rows.rows.end(),
                                              [](const row& it) { return it.kind == 'i'; }));
    head.begin("files");
    write_files(model.sources(), files, heat_of(rows, files), texts, out.head);
    head.begin("functions");
    write_functions(model, rows, files, out.head);
    head.begin("inlined");
    write_inlined(rows, files, out.head);
    head.end();
    out.code = std::move(rows.code);
    out.hidden = std::move(rows.hidden);
    return out;
}

}  // namespace clist::page
