// Range lists of both kinds.
#include "assembly/dwarf_ranges.h"

namespace assembly::dwarf {

static void add_range(std::vector<label_range>& ranges, const label* begin, const label* end) {
    if (begin != nullptr && end != nullptr && begin->section == end->section &&
        begin->place < end->place) {
        ranges.push_back({begin, end});
    }
}

// Range lists of versions 2 to 4: pairs of addresses, perhaps less a base, up to two zeros.
// The labels tell without the base.
static void add_old_ranges(const unit& in, std::size_t at, std::vector<label_range>& ranges) {
    const debug_contents* contents = in.sections->ranges;
    const std::string_view bytes = bytes_of(contents);
    const std::size_t size = in.address_size;
    for (; at + 2 * size <= bytes.size(); at += 2 * size) {
        const label* begin = address_at(*in.sections, contents, at);
        const label* end = address_at(*in.sections, contents, at + size);
        if (begin == nullptr && end == nullptr) {
            return;
        }
        add_range(ranges, begin, end);
    }
}

// Range lists of version 5. Lengths and offsets are differences of labels, of which the
// first is the end that is asked for.
static void add_new_ranges(const unit& in, std::size_t at, std::vector<label_range>& ranges) {
    enum : std::uint8_t {
        end_of_list,
        base_addressx,
        startx_endx,
        startx_length,
        offset_pair,
        base_address,
        start_end,
        start_length,
    };
    const debug_contents* contents = in.sections->rnglists;
    cursor from(bytes_of(contents), at);
    const auto address = [&] {
        const label* it = address_at(*in.sections, contents, from.at());
        from.skip(in.address_size);
        return it;
    };
    const auto distance = [&] {
        const label* it = address_at(*in.sections, contents, from.at());
        from.uleb128();
        return it;
    };
    while (!from.is_at_end()) {
        const label* begin = nullptr;
        switch (from.number(1)) {
            case base_addressx:
                from.uleb128();
                break;
            case startx_endx:
                begin = indexed_address(in, from.uleb128());
                add_range(ranges, begin, indexed_address(in, from.uleb128()));
                break;
            case startx_length:
                begin = indexed_address(in, from.uleb128());
                add_range(ranges, begin, distance());
                break;
            case offset_pair:
                begin = distance();
                add_range(ranges, begin, distance());
                break;
            case base_address:
                address();
                break;
            case start_end:
                begin = address();
                add_range(ranges, begin, address());
                break;
            case start_length:
                begin = address();
                add_range(ranges, begin, distance());
                break;
            default:
                return;
        }
    }
}

void add_ranges(const unit& in, const attribute_value& low, const attribute_value& high,
                const attribute_value& list, std::vector<label_range>& ranges) {
    const debug_contents* info = in.sections->info;
    if (low.form != nullptr && high.form != nullptr) {
        const auto label_of = [&](const attribute_value& value) {
            return value.form->use == form_use::address_index
                       ? indexed_address(in, value.number)
                       : address_at(*in.sections, info, value.at);
        };
        return add_range(ranges, label_of(low), label_of(high));
    }
    if (list.form == nullptr) {
        return;
    }
    const bool is_new = in.version >= 5;
    std::uint64_t at = 0;
    if (list.form->use == form_use::range_index) {
        const std::uint64_t slot = in.ranges_base + list.number * in.offset_size;
        at = in.ranges_base + number_at(*in.sections, in.sections->rnglists, slot, in.offset_size);
    } else {
        const std::size_t size =
            list.form->kind == form_kind::number ? list.form->size : in.offset_size;
        at = number_at(*in.sections, info, list.at, size) + (is_new ? 0 : in.ranges_base);
    }
    if (is_new) {
        add_new_ranges(in, at, ranges);
    } else {
        add_old_ranges(in, at, ranges);
    }
}

}  // namespace assembly::dwarf
