// Scheme 1's vendor qualifiers: "U" and a name in front of a type.
#pragma once

#include <string_view>

#include "demangle/scheme1/state.h"

namespace scheme1 {

enum class vendor_place { mark, around, before };

// A qualifier that is known by its name and has a text of its own.
struct vendor_form {
    std::string_view name;
    std::string_view text;
    std::string_view closer;
    vendor_place place;
};

struct vendor_qualifier {
    std::string_view name;
    const vendor_form* form = nullptr;  // null for a name that stands as it is
    const char* args = nullptr;         // at its "I", if it has any
};

// "U" source-name [ args ]
const char* read_vendor_qualifier(const char* at, vendor_qualifier* qualifier,
                                  eabi_decode_state* state);

// A block: the function type behind it is a type of its own.
inline bool is_block_pointer(const vendor_qualifier& qualifier) {
    return qualifier.name == "block_pointer" && qualifier.args == nullptr;
}

// What stands in front of the qualified type, with its blank.
void emit_vendor_name(const vendor_qualifier& qualifier, eabi_decode_state* state);

}  // namespace scheme1
