// Follows the values of debugging data through its sections.
#include "assembly/dwarf_unit.h"

#include <algorithm>

namespace assembly::dwarf {

// By their names, the prefix and ".dwo" left out.
section_set find_sections(const assembly_file& assembly, const label_index& labels, bool is_split) {
    constexpr struct {
        std::string_view name;
        const debug_contents* section_set::*member;
    } members[] = {
        {"abbrev", &section_set::abbrev},     {"str", &section_set::str},
        {"line_str", &section_set::line_str}, {"str_offsets", &section_set::str_offsets},
        {"addr", &section_set::addr},         {"ranges", &section_set::ranges},
        {"rnglists", &section_set::rnglists},
    };
    section_set set{.labels = &labels};
    for (const debug_contents& it : assembly.debug) {
        std::string_view name = assembly.sections[it.section].name;
        const std::size_t prefix = name.find("debug_");
        const std::size_t suffix = name.find(".dwo");
        if (prefix == std::string_view::npos || (suffix != std::string_view::npos) != is_split) {
            continue;
        }
        name = name.substr(0, suffix).substr(prefix + std::string_view("debug_").size());
        for (const auto& row : members) {
            if (name == row.name && set.*row.member == nullptr) {
                set.*row.member = &it;
            }
        }
    }
    return set;
}

std::optional<label_value> expression_at(const section_set& sections,
                                         const debug_contents* contents, std::size_t offset) {
    if (contents == nullptr) {
        return std::nullopt;
    }
    const auto& all = contents->expressions;
    const auto it = std::lower_bound(
        all.begin(), all.end(), offset,
        [](const debug_contents::expression& one, std::size_t at) { return one.offset < at; });
    if (it == all.end() || it->offset != offset) {
        return std::nullopt;
    }
    return sections.labels->value_at(it->text_at);
}

const label* address_at(const section_set& sections, const debug_contents* contents,
                        std::size_t offset) {
    const std::optional<label_value> value = expression_at(sections, contents, offset);
    return value ? value->plus : nullptr;
}

std::uint64_t number_at(const section_set& sections, const debug_contents* contents,
                        std::size_t offset, std::size_t size) {
    const std::optional<label_value> value = expression_at(sections, contents, offset);
    if (!value) {
        return cursor(bytes_of(contents), offset).number(size);
    }
    return value->plus == nullptr ? value->number : value->plus->place + value->number;
}

static std::string_view text_at(const debug_contents* contents, std::uint64_t offset) {
    const std::string_view bytes = bytes_of(contents);
    return offset < bytes.size() ? cursor(bytes, offset).text() : std::string_view();
}

std::string_view text_of(const unit& in, const attribute_value& value) {
    if (value.form == nullptr) {
        return {};
    }
    const section_set& sections = *in.sections;
    switch (value.form->use) {
        case form_use::string:
            return text_at(sections.str,
                           number_at(sections, sections.info, value.at, in.offset_size));
        case form_use::line_string:
            return text_at(sections.line_str,
                           number_at(sections, sections.info, value.at, in.offset_size));
        case form_use::string_index: {
            const std::uint64_t at = in.str_offsets_base + value.number * in.offset_size;
            return text_at(sections.str,
                           number_at(sections, sections.str_offsets, at, in.offset_size));
        }
        default:
            return value.form->kind == form_kind::text
                       ? cursor(bytes_of(sections.info), value.at).text()
                       : std::string_view();
    }
}

const label* indexed_address(const unit& in, std::uint64_t index) {
    return address_at(*in.sections, in.sections->addr, in.addr_base + index * in.address_size);
}

static const abbreviation_table* shapes_at(const debug_contents* abbrev, std::uint64_t at,
                                           abbreviation_tables& tables) {
    const std::string_view bytes = bytes_of(abbrev);
    if (at >= bytes.size()) {
        return nullptr;
    }
    std::unique_ptr<abbreviation_table>& table = tables[bytes.data() + at];
    if (!table) {
        table = std::make_unique<abbreviation_table>(bytes, at);
    }
    return table.get();
}

// header ::= length version abbreviations address-size                  up to version 4
//          | length 5 kind address-size abbreviations [id | signature type]
std::optional<unit> read_header(const section_set& sections, std::size_t begin,
                                abbreviation_tables& tables) {
    constexpr std::uint64_t wide_mark = 0xffffffff;
    enum kind : std::uint8_t { type_unit = 2, skeleton = 4, split = 5, split_type = 6 };
    const std::string_view bytes = bytes_of(sections.info);
    unit it{.sections = &sections, .begin = begin};
    cursor from(bytes, begin);
    std::uint64_t length = number_at(sections, sections.info, begin, 4);
    from.skip(4);
    if (length == wide_mark) {
        it.offset_size = 8;
        length = number_at(sections, sections.info, from.at(), 8);
        from.skip(8);
    }
    if (length > bytes.size() - std::min(from.at(), bytes.size())) {
        return std::nullopt;
    }
    it.end = from.at() + length;
    it.version = static_cast<std::uint16_t>(from.number(2));
    std::uint64_t unit_kind = 0;
    if (it.version >= 5) {
        unit_kind = from.number(1);
        it.address_size = static_cast<std::uint8_t>(from.number(1));
    }
    const std::uint64_t shapes = number_at(sections, sections.info, from.at(), it.offset_size);
    from.skip(it.offset_size);
    if (it.version < 5) {
        it.address_size = static_cast<std::uint8_t>(from.number(1));
    }
    constexpr std::size_t id_size = 8;
    if (unit_kind == skeleton || unit_kind == split) {
        from.skip(id_size);
    } else if (unit_kind == type_unit || unit_kind == split_type) {
        from.skip(id_size + it.offset_size);
        it.has_code = false;
    }
    it.first = from.at();
    it.shapes = shapes_at(sections.abbrev, shapes, tables);
    const bool is_usable = it.version >= 2 && it.version <= 5 && it.shapes != nullptr &&
                           (it.address_size == 2 || it.address_size == 4 || it.address_size == 8);
    return is_usable ? std::optional(it) : std::nullopt;
}

bool read_bases(unit& it, const unit* skeleton) {
    const section_set& sections = *it.sections;
    if (skeleton != nullptr) {
        // The part beside the object leaves out what it has from the beginning of its sections.
        constexpr std::uint64_t list_header = 12;
        constexpr std::uint64_t offsets_header = 8;
        it.addr_base = skeleton->addr_base;
        it.ranges_base = it.version >= 5 ? list_header : skeleton->ranges_base;
        it.str_offsets_base = it.version >= 5 ? offsets_header : 0;
    }
    cursor from(bytes_of(sections.info), it.first);
    const abbreviation* shape = it.shapes->find(from.uleb128());
    if (shape == nullptr) {
        return false;
    }
    attribute_value name;  // its text may need a base that comes later
    attribute_value directory;
    const attribute_shape* const end = it.shapes->end(*shape);
    for (const attribute_shape* at = it.shapes->begin(*shape); at != end; ++at) {
        attribute_value value;
        if (!read_value(from, it, *at, value)) {
            return false;
        }
        name = at->name == at_name ? value : name;
        directory = at->name == at_comp_dir ? value : directory;
        const auto base = [&] {
            return number_at(sections, sections.info, value.at, it.offset_size);
        };
        switch (at->name) {
            case at_str_offsets_base:
                it.str_offsets_base = base();
                break;
            case at_addr_base:
            case at_gnu_addr_base:
                it.addr_base = base();
                break;
            case at_rnglists_base:
            case at_gnu_ranges_base:
                it.ranges_base = base();
                break;
            default:
                break;
        }
    }
    it.name = text_of(it, name);
    it.compilation_directory = text_of(it, directory);
    return true;
}

bool read_value(cursor& from, const unit& in, const attribute_shape& shape,
                attribute_value& value) {
    const form_row* form = shape.form;
    if (form->kind == form_kind::indirect) {
        form = &find_form(from.uleb128());
    }
    value = {form, from.at(), 0};
    switch (form->kind) {
        case form_kind::number:
            value.number = from.number(form->size);
            break;
        case form_kind::offset:
            value.number = from.number(in.offset_size);
            break;
        case form_kind::address:
            value.number = from.number(in.address_size);
            break;
        case form_kind::uleb128:
            value.number = from.uleb128();
            break;
        case form_kind::sleb128:
            value.number = static_cast<std::uint64_t>(from.sleb128());
            break;
        case form_kind::text:
            from.text();
            break;
        case form_kind::block:
            from.skip(form->size == 0 ? from.uleb128() : from.number(form->size));
            break;
        case form_kind::present:
            value.number = 1;
            break;
        case form_kind::implicit:
            value.number = shape.implicit;
            break;
        default:
            return false;
    }
    return !from.failed();
}

bool skip_values(cursor& from, const unit& in, const abbreviation& shape) {
    if (shape.is_fixed) {
        from.skip(std::uint64_t{shape.fixed_size} +
                  std::uint64_t{shape.offset_count} * in.offset_size +
                  std::uint64_t{shape.address_count} * in.address_size);
        return !from.failed();
    }
    attribute_value value;
    const attribute_shape* const end = in.shapes->end(shape);
    return std::all_of(in.shapes->begin(shape), end,
                       [&](const attribute_shape& it) { return read_value(from, in, it, value); });
}

}  // namespace assembly::dwarf
