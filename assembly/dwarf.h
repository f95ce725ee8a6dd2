// The debugging format's building blocks: a cursor over a section's bytes, the shapes of
// its entries (abbreviations) and the forms of their attributes. Versions 2 to 5.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembly/reader.h"

namespace assembly::dwarf {

// The tags and attributes that tell of functions.
enum tag : std::uint16_t {
    tag_compile_unit = 0x11,
    tag_inlined_subroutine = 0x1d,
    tag_subprogram = 0x2e,
    tag_skeleton_unit = 0x4a,
};
enum attribute : std::uint16_t {
    at_name = 0x03,
    at_low_pc = 0x11,
    at_high_pc = 0x12,
    at_comp_dir = 0x1b,
    at_abstract_origin = 0x31,
    at_decl_file = 0x3a,
    at_decl_line = 0x3b,
    at_specification = 0x47,
    at_ranges = 0x55,
    at_call_column = 0x57,
    at_call_file = 0x58,
    at_call_line = 0x59,
    at_linkage_name = 0x6e,
    at_str_offsets_base = 0x72,
    at_addr_base = 0x73,
    at_rnglists_base = 0x74,
    at_mips_linkage_name = 0x2007,
    at_gnu_ranges_base = 0x2132,
    at_gnu_addr_base = 0x2133,
};

// How the value of an attribute lies in the section.
enum class form_kind : std::uint8_t {
    unknown,  // what follows it cannot be read
    number,   // of the form's size
    offset,   // of the unit's offset size
    address,  // of the unit's address size
    uleb128,
    sleb128,
    text,      // up to a NUL
    block,     // bytes; their count, of the form's size or a uleb128, is ahead of them
    present,   // takes no room
    implicit,  // stands in the abbreviation
    indirect,  // the form itself stands ahead of the value
};
// And what it means.
enum class form_use : std::uint8_t {
    plain,
    unit_reference,     // offset from the unit's beginning
    section_reference,  // offset in the section
    string,             // offset in .debug_str
    line_string,        // offset in .debug_line_str
    string_index,
    address_index,
    range_index,
};

struct form_row {
    std::uint16_t code;
    form_kind kind = form_kind::unknown;
    std::uint8_t size = 0;
    form_use use = form_use::plain;
};

const form_row& find_form(std::uint64_t code);

// Reads values of a section in turn. Past its end every value is zero and `failed` holds.
class cursor {
  public:
    cursor(std::string_view bytes, std::size_t at) : bytes_(bytes), at_(at) {}

    std::size_t at() const { return at_; }
    bool failed() const { return at_ > bytes_.size(); }
    bool is_at_end() const { return at_ >= bytes_.size(); }

    std::uint64_t number(std::size_t size);
    std::uint64_t uleb128();
    std::int64_t sleb128();
    std::string_view text();  // and its NUL
    void skip(std::uint64_t count);

  private:
    std::string_view bytes_;
    std::size_t at_;
};

struct attribute_shape {
    std::uint16_t name;
    const form_row* form;
    std::uint64_t implicit;
};

struct abbreviation {
    std::uint16_t tag = 0;
    bool has_children = false;
    std::uint32_t first = 0;  // of its attributes in the table
    std::uint32_t count = 0;
    // How many bytes its values take, where that does not depend on them: a part that is
    // the same in every unit, and how many offsets and addresses.
    bool is_fixed = true;
    std::uint32_t fixed_size = 0;
    std::uint16_t offset_count = 0;
    std::uint16_t address_count = 0;
};

class abbreviation_table {
  public:
    abbreviation_table(std::string_view bytes, std::size_t at);

    // Null when there is none.
    const abbreviation* find(std::uint64_t code) const;
    const attribute_shape* begin(const abbreviation& it) const { return shapes_.data() + it.first; }
    const attribute_shape* end(const abbreviation& it) const { return begin(it) + it.count; }

  private:
    std::vector<attribute_shape> shapes_;
    std::vector<abbreviation> by_code_;  // of codes that follow each other from 1
    std::unordered_map<std::uint64_t, abbreviation> others_;
};

}  // namespace assembly::dwarf
