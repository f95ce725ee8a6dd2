// The ranges of code that an entry of the debugging data has, as labels: whatever their
// form, the labels tell without an address.
#pragma once

#include <vector>

#include "assembly/dwarf_unit.h"

namespace assembly::dwarf {

struct label_range {
    const label* begin;
    const label* end;
};

// Adds the ranges of an entry: from `low` to `high`, or the list that `list` refers to.
// What has no labels in one section is left out.
void add_ranges(const unit& in, const attribute_value& low, const attribute_value& high,
                const attribute_value& list, std::vector<label_range>& ranges);

}  // namespace assembly::dwarf
