// Walks the entries of the debugging data, of which only those of functions are looked at,
// and lays their ranges over the lines of code.
#include "assembly/debug_info.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "assembly/dwarf.h"
#include "assembly/dwarf_ranges.h"
#include "assembly/dwarf_unit.h"

namespace assembly {

using namespace dwarf;

namespace {

// A part of a section's lines of code.
struct code_range {
    std::uint32_t scope;
    std::uint32_t section;
    std::uint32_t begin;
    std::uint32_t end;
};

// What is read of one function's entry.
struct function_entry {
    attribute_value name;
    attribute_value linkage_name;
    attribute_value decl_file;
    attribute_value decl_line;
    attribute_value low_pc;
    attribute_value high_pc;
    attribute_value ranges;
    attribute_value origin;
    attribute_value call_file;
    attribute_value call_line;
    attribute_value call_column;
};

struct info_reader {
    const assembly_file& assembly;
    debug_info& result;

    std::vector<code_range> ranges = {};
    std::vector<label_range> found = {};  // of the entry just read
    std::vector<unit> units = {};
    abbreviation_tables tables = {};
    // By where a function's entry lies: its index.
    std::unordered_map<const char*, std::uint32_t> known = {};
};

}  // namespace

// --- Entries ---

static std::uint32_t small_number(const attribute_value& value) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value.number, none - 1));
}

static attribute_value* field_of(function_entry& entry, std::uint16_t name) {
    switch (name) {
        case at_name:
            return &entry.name;
        case at_linkage_name:
        case at_mips_linkage_name:
            return &entry.linkage_name;
        case at_decl_file:
            return &entry.decl_file;
        case at_decl_line:
            return &entry.decl_line;
        case at_low_pc:
            return &entry.low_pc;
        case at_high_pc:
            return &entry.high_pc;
        case at_ranges:
            return &entry.ranges;
        case at_abstract_origin:
        case at_specification:
            return &entry.origin;
        case at_call_file:
            return &entry.call_file;
        case at_call_line:
            return &entry.call_line;
        case at_call_column:
            return &entry.call_column;
        default:
            return nullptr;
    }
}

static bool read_entry(cursor& from, const unit& in, const abbreviation& shape,
                       function_entry& entry) {
    attribute_value unused;
    const attribute_shape* const end = in.shapes->end(shape);
    for (const attribute_shape* it = in.shapes->begin(shape); it != end; ++it) {
        attribute_value* field = field_of(entry, it->name);
        if (!read_value(from, in, *it, field == nullptr ? unused : *field)) {
            return false;
        }
    }
    return true;
}

// --- Functions ---

// Where the entry that `value` refers to lies in its section; nothing for what is in
// another file.
static std::optional<std::size_t> target_of(const unit& in, const attribute_value& value) {
    if (value.form == nullptr) {
        return std::nullopt;
    }
    if (value.form->use == form_use::unit_reference) {
        return in.begin + value.number;
    }
    if (value.form->use == form_use::section_reference) {
        return number_at(*in.sections, in.sections->info, value.at, in.offset_size);
    }
    return std::nullopt;
}

static const unit* unit_around(const info_reader& reader, const unit& like, std::size_t at) {
    if (at >= like.first && at < like.end) {
        return &like;
    }
    const auto found = std::find_if(reader.units.begin(), reader.units.end(), [&](const unit& it) {
        return it.sections->info == like.sections->info && at >= it.first && at < it.end;
    });
    return found == reader.units.end() ? nullptr : &*found;
}

// What the function's own entry leaves open, the one that it refers to says: its
// declaration, or the function that it is a copy of.
static void complete(info_reader& reader, const unit& in, const function_entry& entry,
                     source_function& function) {
    const auto take = [&](const unit& from, const function_entry& it) {
        if (function.name.empty()) {
            function.name = text_of(from, it.name);
        }
        if (function.linkage_name.empty()) {
            function.linkage_name = text_of(from, it.linkage_name);
        }
        if (function.decl_file == none && it.decl_file.form != nullptr) {
            function.decl_file = small_number(it.decl_file);
        }
        if (function.decl_line == 0 && it.decl_line.form != nullptr) {
            function.decl_line = small_number(it.decl_line);
        }
    };
    take(in, entry);
    std::optional<std::size_t> target = target_of(in, entry.origin);
    const unit* from = &in;
    constexpr int most_steps = 8;
    for (int i = 0; i < most_steps && target; ++i) {
        from = unit_around(reader, *from, *target);
        if (from == nullptr) {
            return;
        }
        cursor at(bytes_of(from->sections->info), *target);
        const abbreviation* shape = from->shapes->find(at.uleb128());
        function_entry next;
        if (shape == nullptr || !read_entry(at, *from, *shape, next)) {
            return;
        }
        take(*from, next);
        target = target_of(*from, next.origin);
    }
}

// The index of the function that an entry at `at` stands for. An inlined one stands for
// what it refers to.
static std::uint32_t function_of(info_reader& reader, const unit& in, const function_entry& entry,
                                 std::size_t at) {
    const std::optional<std::size_t> origin = target_of(in, entry.origin);
    const bool has_own_name = entry.name.form != nullptr || entry.linkage_name.form != nullptr;
    const std::string_view bytes = bytes_of(in.sections->info);
    const std::size_t key = origin && !has_own_name ? *origin : at;
    if (key >= bytes.size()) {
        return none;
    }
    const auto [it, is_new] = reader.known.try_emplace(
        bytes.data() + key, static_cast<std::uint32_t>(reader.result.functions.size()));
    if (is_new) {
        source_function function;
        complete(reader, in, entry, function);
        reader.result.functions.push_back(function);
    }
    return it->second;
}

// --- Units ---

// The scope that the function's entry just read begins within `around`; none when it is a
// declaration, or a function that only lives on in others.
static std::uint32_t begin_scope(info_reader& reader, const unit& in, const function_entry& entry,
                                 std::size_t at, bool is_inlined, std::uint32_t around) {
    const bool has_code =
        is_inlined ? around != none : entry.low_pc.form != nullptr || entry.ranges.form != nullptr;
    const std::uint32_t function = has_code ? function_of(reader, in, entry, at) : none;
    if (function == none) {
        return none;
    }
    code_scope scope{.function = function};
    if (is_inlined) {
        scope.parent = around;
        scope.call_file = entry.call_file.form == nullptr ? none : small_number(entry.call_file);
        scope.call_line = small_number(entry.call_line);
        scope.call_column = small_number(entry.call_column);
    }
    const auto index = static_cast<std::uint32_t>(reader.result.scopes.size());
    reader.result.scopes.push_back(scope);
    reader.found.clear();
    add_ranges(in, entry.low_pc, entry.high_pc, entry.ranges, reader.found);
    for (const label_range& it : reader.found) {
        reader.ranges.push_back({index, it.begin->section, it.begin->place, it.end->place});
    }
    return index;
}

// Goes through a unit's entries in their order. Those between a function and what is
// inlined in it (blocks, namespaces, classes) count for nothing. False when an entry
// cannot be read.
static bool walk(info_reader& reader, const unit& in) {
    cursor from(bytes_of(in.sections->info), in.first);
    std::vector<std::uint32_t> open;  // what was around each entry that has children
    std::uint32_t around = none;
    while (from.at() < in.end) {
        const std::size_t at = from.at();
        const std::uint64_t code = from.uleb128();
        if (code == 0) {
            if (!open.empty()) {  // or it is padding
                around = open.back();
                open.pop_back();
            }
            continue;
        }
        const abbreviation* shape = in.shapes->find(code);
        if (shape == nullptr) {
            return false;
        }
        std::uint32_t inner = around;
        const bool is_inlined = shape->tag == tag_inlined_subroutine;
        if (is_inlined || shape->tag == tag_subprogram) {
            function_entry entry;
            if (!read_entry(from, in, *shape, entry)) {
                return false;
            }
            inner = begin_scope(reader, in, entry, at, is_inlined, around);
        } else if (!skip_values(from, in, *shape)) {
            return false;
        }
        if (shape->has_children) {
            open.push_back(around);
            around = inner;
        }
    }
    return true;
}

static void read_units(info_reader& reader, const section_set& sections, const unit* skeleton) {
    const std::size_t size = bytes_of(sections.info).size();
    const std::size_t first = reader.units.size();
    for (std::size_t at = 0; at < size;) {
        std::optional<unit> it = read_header(sections, at, reader.tables);
        if (!it || it->end <= at) {
            reader.result.is_partial = true;
            break;
        }
        at = it->end;
        if (it->has_code && read_bases(*it, skeleton)) {
            reader.units.push_back(*it);
            if (reader.result.compilation_directory.empty()) {
                reader.result.compilation_directory = it->compilation_directory;
            }
        }
    }
    for (std::size_t i = first; i < reader.units.size(); ++i) {
        if (!walk(reader, reader.units[i])) {
            reader.result.is_partial = true;
        }
    }
}

// --- Lines of code ---

// The innermost scope of each line: ranges are laid from the last to the first, which puts
// inner ones before those around them, over lines that are still free. Each line is laid
// once; `next` leads past those that are.
static void lay_ranges(info_reader& reader) {
    const assembly_file& assembly = reader.assembly;
    std::vector<std::uint32_t> first;  // by section: its lines in one numbering of all
    std::uint32_t count = 0;
    for (const section& it : assembly.sections) {
        first.push_back(count);
        count += it.instruction_count;
    }
    std::vector<std::uint32_t> scope_at(count, none);
    std::vector<std::uint32_t> next(count + 1);
    for (std::uint32_t i = 0; i <= count; ++i) {
        next[i] = i;
    }
    const auto next_free = [&next](std::uint32_t at) {
        while (next[at] != at) {
            next[at] = next[next[at]];
            at = next[at];
        }
        return at;
    };
    std::stable_sort(
        reader.ranges.begin(), reader.ranges.end(),
        [](const code_range& one, const code_range& other) { return one.scope > other.scope; });
    for (const code_range& it : reader.ranges) {
        const std::uint32_t end = first[it.section] + it.end;
        for (std::uint32_t at = next_free(first[it.section] + it.begin); at < end;
             at = next_free(at)) {
            scope_at[at] = it.scope;
            next[at] = at + 1;
        }
    }
    std::vector<std::uint32_t> line = first;
    reader.result.scope_of.reserve(assembly.instructions.size());
    for (const instruction& it : assembly.instructions) {
        reader.result.scope_of.push_back(scope_at[line[it.section]++]);
    }
}

debug_info read_debug_info(const assembly_file& assembly, const label_index& labels) {
    debug_info result;
    info_reader reader{.assembly = assembly, .result = result};
    const section_set whole = find_sections(assembly, labels, false);
    section_set split = find_sections(assembly, labels, true);
    split.addr = whole.addr;
    if (split.ranges == nullptr) {
        split.ranges = whole.ranges;
    }
    // One set for each section of entries: types are in groups of their own.
    std::vector<section_set> sets;
    sets.reserve(assembly.debug.size());
    std::optional<unit> skeleton;
    for (const bool is_split : {false, true}) {
        const std::string_view name = is_split ? "debug_info.dwo" : "debug_info";
        for (const debug_contents& it : assembly.debug) {
            if (assembly.sections[it.section].name.ends_with(name)) {
                sets.push_back(is_split ? split : whole);
                sets.back().info = &it;
                read_units(reader, sets.back(), skeleton ? &*skeleton : nullptr);
            }
        }
        if (!reader.units.empty()) {
            skeleton = reader.units.front();
        }
    }
    lay_ranges(reader);
    return result;
}

file_entry compiled_file(const assembly_file& assembly, const label_index& labels) {
    section_set sections = find_sections(assembly, labels, false);
    abbreviation_tables tables;
    for (const debug_contents& contents : assembly.debug) {
        if (!assembly.sections[contents.section].name.ends_with("debug_info")) {
            continue;
        }
        sections.info = &contents;
        for (std::size_t at = 0; at < contents.bytes.size();) {
            std::optional<unit> it = read_header(sections, at, tables);
            if (!it || it->end <= at) {
                break;
            }
            at = it->end;
            if (it->has_code) {
                read_bases(*it, nullptr);
                return {std::string(it->compilation_directory), std::string(it->name)};
            }
        }
    }
    return {};
}

}  // namespace assembly
