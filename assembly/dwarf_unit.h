// The units of the debugging data: which sections they lie in, what is at the head of each,
// and the values of their entries, expressions and indices followed to what they mean.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "assembly/dwarf.h"
#include "assembly/label_index.h"
#include "assembly/reader.h"

namespace assembly::dwarf {

// The sections that belong together: those of the object, or those of a file beside it.
// The ones that are not there are null.
struct section_set {
    const label_index* labels = nullptr;
    const debug_contents* info = nullptr;
    const debug_contents* abbrev = nullptr;
    const debug_contents* str = nullptr;
    const debug_contents* line_str = nullptr;
    const debug_contents* str_offsets = nullptr;
    const debug_contents* addr = nullptr;
    const debug_contents* ranges = nullptr;
    const debug_contents* rnglists = nullptr;
};

// All but the section of entries, of which there may be several.
section_set find_sections(const assembly_file& assembly, const label_index& labels, bool is_split);

inline std::string_view bytes_of(const debug_contents* contents) {
    return contents == nullptr ? std::string_view() : std::string_view(contents->bytes);
}

// The expression that stands for the value at `offset`, where it is one.
std::optional<label_value> expression_at(const section_set& sections,
                                         const debug_contents* contents, std::size_t offset);

// The label of the address at `offset`; null when there is none.
const label* address_at(const section_set& sections, const debug_contents* contents,
                        std::size_t offset);

// The value at `offset` as a number: that of an expression is where its label lies in a
// debugging section.
std::uint64_t number_at(const section_set& sections, const debug_contents* contents,
                        std::size_t offset, std::size_t size);

struct unit {
    const section_set* sections;
    std::size_t begin = 0;  // of its header
    std::size_t first = 0;  // of its entries
    std::size_t end = 0;
    std::uint16_t version = 0;
    std::uint8_t address_size = 0;
    std::uint8_t offset_size = 4;
    bool has_code = true;  // it is no unit of types
    const abbreviation_table* shapes = nullptr;
    std::uint64_t str_offsets_base = 0;
    std::uint64_t addr_base = 0;
    std::uint64_t ranges_base = 0;  // in the section that the version has
    std::string_view name = {};     // of the source
    std::string_view compilation_directory = {};
};

using abbreviation_tables =
    std::unordered_map<const char*, std::unique_ptr<abbreviation_table>>;  // by their bytes

// The header of the unit at `begin`; nothing when it cannot be read. `tables` keeps what it
// refers to.
std::optional<unit> read_header(const section_set& sections, std::size_t begin,
                                abbreviation_tables& tables);

// Reads the unit's own entry: where its indexed values lie, its name and directory. `skeleton` is
// the unit in the object that stands for one beside it, else null. False when it cannot be read.
bool read_bases(unit& it, const unit* skeleton);

// An attribute's value as it lies in the section.
struct attribute_value {
    const form_row* form = nullptr;  // null when there is no such attribute
    std::size_t at = 0;
    std::uint64_t number = 0;
};

// Reads one value. False when its form is unknown or the section ends.
bool read_value(cursor& from, const unit& in, const attribute_shape& shape, attribute_value& value);

// Passes over all values of an entry. False as above.
bool skip_values(cursor& from, const unit& in, const abbreviation& shape);

// The text that a value stands for; empty when it is none.
std::string_view text_of(const unit& in, const attribute_value& value);

// The label of the address that an index stands for; null when there is none.
const label* indexed_address(const unit& in, std::uint64_t index);

}  // namespace assembly::dwarf
