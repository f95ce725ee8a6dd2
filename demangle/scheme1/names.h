// Scheme 1's names: unscoped, nested and local ones.
#pragma once

#include "demangle/scheme1/state.h"

namespace scheme1 {

// What a name tells the routine that finishes the signature.
struct name_record {
    bool no_return_type = false;
    unsigned cv_qualifiers = 0;
    unsigned ref_qualifier = 0;  // 0, 1 "&", 2 "&&"
    char ctor_dtor_kind = ' ';
    bool explicit_object = false;  // the first parameter is declared "this"
};

enum name_mode : unsigned { mode_record = 1, mode_print = 2, mode_both = 3 };

// The components of a nested name from `at` and its "E", or up to `bound` when it is
// not null. `whole_is_type` enters the last component too.
const char* prefix(const char* at, const char* bound, bool whole_is_type, name_record* record,
                   last_component* component, eabi_decode_state* state);

// A class or enumeration type: any name, entered whole. `*component` is filled.
const char* class_type(const char* at, last_component* component, eabi_decode_state* state);

// A name that is printed and entered, where what it tells does not matter.
const char* name_once(const char* at, eabi_decode_state* state);

}  // namespace scheme1

// Any name, printed and entered as `mode` says; fills the record.
const char* eabi_name(const char* at, scheme1::name_record* record, unsigned mode,
                      eabi_decode_state* state);
