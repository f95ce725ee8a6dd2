// Tells sections by their names and groups, and what they are for by name and flags.
#include "assembly/section.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "assembly/operand.h"

namespace assembly {

// How the names of sections begin whose content is neither code nor a program's data.
static constexpr std::array<std::string_view, 18> other_names = {
    ".eh_frame",    ".gcc_except_table",
    ".note",        ".comment",
    ".ARM.ex",      ".ARM.attributes",
    ".stack",       ".pdata",
    ".xdata",       ".drectve",
    ".gnu.warning", ".llvm",
    ".ctors",       ".dtors",
    "__LD,",        ".mdebug",
    ".handlerdata", ".seh_handlerdata",
};
static constexpr std::array<std::string_view, 4> debug_names = {".debug_", ".zdebug_", "__DWARF,",
                                                                ".gnu.debug"};
static constexpr std::array<std::string_view, 5> code_names = {".text", ".init", ".fini", ".plt",
                                                               "__TEXT,__text"};
// Begin as code does, and are tables.
static constexpr std::array<std::string_view, 2> table_names = {".init_array", ".fini_array"};

static bool begins_with_one(std::string_view name, const auto& beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(),
                       [name](std::string_view it) { return name.starts_with(it); });
}

// `flags` are the letters that follow the name of a section, quotes not among them.
static section_kind kind_of(std::string_view name, std::string_view flags) {
    if (begins_with_one(name, debug_names)) {
        return section_kind::debug;
    }
    if (begins_with_one(name, other_names)) {
        return section_kind::other;
    }
    const bool is_code = begins_with_one(name, code_names) && !begins_with_one(name, table_names);
    return is_code || flags.find('x') != std::string_view::npos ? section_kind::code
                                                                : section_kind::data;
}

section_track::section_track(std::vector<section>& sections) : sections_(sections) {
    current_ = previous_ = find(".text", ".text", section_kind::code);
}

std::uint32_t section_track::find(std::string key, std::string_view name, section_kind kind) {
    const auto [it, is_new] =
        by_key_.try_emplace(std::move(key), static_cast<std::uint32_t>(sections_.size()));
    if (is_new) {
        sections_.push_back({.name = name, .kind = kind});
        whole_.push_back(it->second);
    }
    return it->second;
}

void section_track::move_to(std::uint32_t index) {
    previous_ = current_;
    current_ = index;
}

// section-directive ::= ".section" name ["," flags ["," type ["," rest]]]
//                     | ".section" segment "," name ["," rest]
// A section in a group has the rest of its operands for a name too.
void section_track::enter(std::string_view name, std::string_view operands) {
    skip_blanks(operands);
    std::string key(name);
    std::string_view flags;
    if (operands.starts_with(',')) {
        std::string_view rest = operands.substr(1);
        skip_blanks(rest);
        const bool has_flags = rest.starts_with('"') || rest.starts_with('#');
        if (has_flags) {
            rest.remove_prefix(1);
            flags = rest.substr(0, rest.find('"'));
            if (flags.find('G') != std::string_view::npos ||
                operands.find("unique") != std::string_view::npos) {
                key += operands;
            }
        } else {
            // The second word of a Mach-O section's name ends where the next one does.
            const std::string_view second = rest.substr(0, rest.find(','));
            name = {name.data(),
                    static_cast<std::size_t>(second.data() + second.size() - name.data())};
            key = name;
        }
    }
    move_to(find(std::move(key), name, kind_of(name, flags)));
}

// `.text` without a number and `.text 0` are the section itself.
void section_track::enter_subsection(std::string_view number) {
    const std::uint32_t whole = whole_[current_];
    const std::uint64_t value = take_value(number).value_or(0);
    if (value == 0) {
        current_ = whole;
        return;
    }
    const section like = sections_[whole];
    const std::string key = std::to_string(whole) + "\n" + std::to_string(value);
    move_to(find(key, like.name, like.kind));
    whole_[current_] = whole;
}

void section_track::follow(const directive_row& row, std::string_view operands) {
    const auto enter_named = [&] {
        skip_blanks(operands);
        std::string_view name;
        if (operands.starts_with('"')) {
            name = take_symbol(operands);
        } else {
            name = operands.substr(0, operands.find_first_of(", \t"));
            operands.remove_prefix(name.size());
        }
        enter(name, operands);
    };
    switch (row.kind) {
        case directive::named_section:
            return enter_named();
        case directive::own_section:
            enter(row.name, {});
            return enter_subsection(operands);
        case directive::push_section:
            stack_.emplace_back(current_, previous_);
            return enter_named();
        case directive::pop_section:
            if (!stack_.empty()) {
                std::tie(current_, previous_) = stack_.back();
                stack_.pop_back();
            }
            return;
        case directive::previous_section:
            return std::swap(current_, previous_);
        case directive::subsection:
            return enter_subsection(operands);
        case directive::end_handler:
            if (sections_[current_].name == ".handlerdata") {
                current_ = previous_;
            }
            return;
        default:
            return;
    }
}

}  // namespace assembly
