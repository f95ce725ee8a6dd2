// The forms as a table, and the reading of values and abbreviations.
#include "assembly/dwarf.h"

#include <algorithm>
#include <array>
#include <limits>

namespace assembly::dwarf {

using enum form_kind;
using enum form_use;

static constexpr form_row forms[] = {
    {0x01, address},
    {0x03, block, 2},
    {0x04, block, 4},
    {0x05, number, 2},
    {0x06, number, 4},
    {0x07, number, 8},
    {0x08, text},
    {0x09, block},
    {0x0a, block, 1},
    {0x0b, number, 1},
    {0x0c, number, 1},
    {0x0d, sleb128},
    {0x0e, offset, 0, string},
    {0x0f, uleb128},
    {0x10, offset, 0, section_reference},
    {0x11, number, 1, unit_reference},
    {0x12, number, 2, unit_reference},
    {0x13, number, 4, unit_reference},
    {0x14, number, 8, unit_reference},
    {0x15, uleb128, 0, unit_reference},
    {0x16, indirect},
    {0x17, offset},
    {0x18, block},
    {0x19, present},
    {0x1a, uleb128, 0, string_index},
    {0x1b, uleb128, 0, address_index},
    {0x1c, number, 4},
    {0x1d, offset},
    {0x1e, number, 16},
    {0x1f, offset, 0, line_string},
    {0x20, number, 8},
    {0x21, implicit},
    {0x22, uleb128},
    {0x23, uleb128, 0, range_index},
    {0x24, number, 8},
    {0x25, number, 1, string_index},
    {0x26, number, 2, string_index},
    {0x27, number, 3, string_index},
    {0x28, number, 4, string_index},
    {0x29, number, 1, address_index},
    {0x2a, number, 2, address_index},
    {0x2b, number, 3, address_index},
    {0x2c, number, 4, address_index},
    {0x1f01, uleb128, 0, address_index},
    {0x1f02, uleb128, 0, string_index},
    {0x1f20, offset},
    {0x1f21, offset},
};
static constexpr form_row no_form = {0};

const form_row& find_form(std::uint64_t code) {
    const auto* found = std::find_if(std::begin(forms), std::end(forms),
                                     [code](const form_row& it) { return it.code == code; });
    return found == std::end(forms) ? no_form : *found;
}

std::uint64_t cursor::number(std::size_t size) {
    if (at_ > bytes_.size() || bytes_.size() - at_ < size) {
        at_ = bytes_.size() + 1;
        return 0;
    }
    std::uint64_t value = 0;
    for (std::size_t i = std::min(size, sizeof value); i-- != 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes_[at_ + i]);
    }
    at_ += size;
    return value;
}

std::uint64_t cursor::uleb128() {
    std::uint64_t value = 0;
    for (unsigned shift = 0;; shift += 7) {
        const std::uint64_t byte = number(1);
        if (shift < 64) {
            value |= (byte & 0x7f) << shift;
        }
        if ((byte & 0x80) == 0) {
            return value;
        }
    }
}

std::int64_t cursor::sleb128() {
    std::uint64_t value = 0;
    for (unsigned shift = 0;;) {
        const std::uint64_t byte = number(1);
        if (shift < 64) {
            value |= (byte & 0x7f) << shift;
            shift += 7;
        }
        if ((byte & 0x80) == 0) {
            if (shift < 64 && (byte & 0x40) != 0) {
                value |= ~std::uint64_t{0} << shift;
            }
            return static_cast<std::int64_t>(value);
        }
    }
}

std::string_view cursor::text() {
    const std::size_t end = at_ > bytes_.size() ? std::string_view::npos : bytes_.find('\0', at_);
    if (end == std::string_view::npos) {
        at_ = bytes_.size() + 1;
        return {};
    }
    const std::string_view result = bytes_.substr(at_, end - at_);
    at_ = end + 1;
    return result;
}

void cursor::skip(std::uint64_t count) {
    at_ = at_ > bytes_.size() || bytes_.size() - at_ < count ? bytes_.size() + 1 : at_ + count;
}

static void add_size(abbreviation& it, const form_row& form) {
    switch (form.kind) {
        case number:
            it.fixed_size += form.size;
            return;
        case offset:
            ++it.offset_count;
            return;
        case address:
            ++it.address_count;
            return;
        case present:
        case implicit:
            return;
        default:
            it.is_fixed = false;
    }
}

// table ::= (code tag has-children (name form [implicit-value])* 0 0)* 0
abbreviation_table::abbreviation_table(std::string_view bytes, std::size_t at) {
    cursor from(bytes, at);
    while (!from.is_at_end()) {
        const std::uint64_t code = from.uleb128();
        if (code == 0) {
            return;
        }
        abbreviation it;
        it.tag = static_cast<std::uint16_t>(from.uleb128());
        it.has_children = from.number(1) != 0;
        it.first = static_cast<std::uint32_t>(shapes_.size());
        while (!from.is_at_end()) {
            const std::uint64_t name = from.uleb128();
            const std::uint64_t form_code = from.uleb128();
            if (name == 0 && form_code == 0) {
                break;
            }
            const form_row& form = find_form(form_code);
            const bool is_known = name <= std::numeric_limits<std::uint16_t>::max();
            shapes_.push_back({static_cast<std::uint16_t>(is_known ? name : 0), &form, 0});
            if (form.kind == implicit) {
                shapes_.back().implicit = static_cast<std::uint64_t>(from.sleb128());
            }
            add_size(it, form);
        }
        it.count = static_cast<std::uint32_t>(shapes_.size()) - it.first;
        // No compiler writes this many; reading them again and again would take forever.
        constexpr std::uint32_t most_attributes = 256;
        if (it.count > most_attributes) {
            return;
        }
        if (code == by_code_.size() + 1) {
            by_code_.push_back(it);
        } else {
            others_.try_emplace(code, it);
        }
    }
}

const abbreviation* abbreviation_table::find(std::uint64_t code) const {
    if (code - 1 < by_code_.size()) {
        return &by_code_[code - 1];
    }
    const auto other = others_.find(code);
    return other == others_.end() ? nullptr : &other->second;
}

}  // namespace assembly::dwarf
