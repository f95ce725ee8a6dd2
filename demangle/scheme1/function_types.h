// What the type files of the Itanium ABI decoder share beyond the general grammar:
// where function, array and vendor types meet the declarator around them.
#pragma once

#include "demangle/scheme1/state.h"

// What a mark leaves of the shape of the type in front of it.
inline constexpr unsigned shape_behind = shape_suffix | shape_greater;

// Enters the type at `start`, which was decoded with that permission. A text that a suffix will
// still be added to, or that carries qualifiers from outside, is not its own.
inline void eabi_enter_type(const char* start, std::uint64_t text_at, bool own_text,
                            bool allow_template_args, eabi_decode_state* state) {
    if (state->no_record_depth == 0) {
        const bool whole = own_text && (state->shape & shape_suffix) == 0;
        eabi_add_type(start, whole ? text_at : entry_no_text, allow_template_args, state);
    }
}

// --- Function types (decode_eabi_function_types.cpp) ----------------------------

// Whether a function type starts here, its exception specification in front.
inline bool eabi_at_function(const char* at) {
    return *at == 'F' ||
           (*at == 'D' && (at[1] == 'o' || at[1] == 'O' || at[1] == 'w' || at[1] == 'x'));
}

// Its return type's prefix part; gives the end of the whole type.
const char* eabi_function_prefix(const char* at, eabi_decode_state* state);

// Its parameters and qualifiers; gives the position of its return type.
const char* eabi_function_suffix(const char* at, unsigned cv, bool marked,
                                 eabi_decode_state* state);

// --- Arrays and types with a size (decode_eabi_sized_types.cpp) -----------------

// The prefix part of the element; gives the end of the whole type.
const char* eabi_array_prefix(const char* at, unsigned cv, bool allow_template_args,
                              eabi_decode_state* state);

// The bounds in brackets; gives the position of the element.
const char* eabi_array_suffix(const char* at, bool marked, eabi_decode_state* state);

// "Dv", "DB", "DU" and "DF".
const char* eabi_sized_type(const char* at, unsigned cv, bool allow_template_args,
                            eabi_decode_state* state);

// --- Vendor qualifiers (decode_eabi_vendor_qualifiers.cpp) ----------------------

enum class eabi_vendor_place { mark, around, before };

// A qualifier that is known by its name and has a text of its own.
struct eabi_vendor_form {
    std::string_view name;
    std::string_view text;
    std::string_view closer;
    eabi_vendor_place place;
};

struct eabi_vendor_qualifier {
    std::string_view name;
    const eabi_vendor_form* form = nullptr;  // null for a name that stands as it is
    const char* args = nullptr;              // at its "I", if it has any
};

// "U" source-name [ args ]
const char* eabi_read_vendor_qualifier(const char* at, eabi_vendor_qualifier* qualifier,
                                       eabi_decode_state* state);

// What stands in front of the qualified type, with its blank.
void eabi_put_vendor_name(const eabi_vendor_qualifier& qualifier, eabi_decode_state* state);
