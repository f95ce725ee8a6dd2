// The top of the grammar of the Itanium ABI decoder: functions and data, special names,
// thunks. Called by the entry, the local names and the literals.
#include <algorithm>
#include <array>
#include <cstring>

#include "demangle/scheme1/state.h"

// --- Call offsets ---------------------------------------------------------------

// [ n ] digits "_", printed as a signed number.
static const char* offset_number(const char* at, eabi_decode_state* state) {
    const bool negative = *at == 'n';
    std::uint64_t value = 0;
    at = eabi_number(at + (negative ? 1 : 0), &value, state);
    eabi_put_number(static_cast<std::int64_t>(negative ? 0 - value : value), state);
    return eabi_require(at, '_', state);
}

// call-offset ::= "h" offset "_"  |  "v" offset "_" virtual-offset "_"
static const char* eabi_call_offset(const char* at, eabi_decode_state* state) {
    if (*at != 'h' && *at != 'v') {
        report_bad_name(state);
        return at;
    }
    const bool is_virtual = *at == 'v';
    eabi_put("(offset ", state);
    at = offset_number(at + 1, state);
    if (is_virtual) {
        eabi_put(", virtual offset ", state);
        at = offset_number(at, state);
    }
    eabi_put(") ", state);
    return at;
}

// --- Functions ------------------------------------------------------------------

static const char* name_once(const char* at, eabi_decode_state* state) {
    eabi_name_record record;
    return eabi_name(at, &record, mode_both, state);
}

// Whether the encoding ends behind the name or the parameters.
static bool at_encoding_end(const char* at, const eabi_decode_state* state) {
    return *at == '\0' || *at == 'E' || (*at == '.' && state->extended);
}

// A return type in front of a parameter list, and the blank after it.
static const char* return_type(const char* at, eabi_decode_state* state) {
    at = eabi_whole_type(at, true, state);
    eabi_put(' ', state);
    return at;
}

static const char* parameter_list(const char* at, const eabi_name_record& record,
                                  eabi_decode_state* state) {
    eabi_put('(', state);
    if (record.explicit_object) {
        eabi_put("this ", state);
    }
    at = eabi_parameters(at, state);
    eabi_put(')', state);
    if (*at == 'Q' && state->extended) {
        eabi_put(" requires ", state);
        at = eabi_expression(at + 1, state);
    }
    return at;
}

// bare-function-type ::= [ return type ] parameter type+
static const char* eabi_bare_function_type(const char* at, const eabi_name_record& record,
                                           unsigned mode, eabi_decode_state* state) {
    if (!record.no_return_type) {
        const eabi_silence silent(state, (mode & mode_record) == 0);
        at = return_type(at, state);
    }
    const eabi_silence silent(state, (mode & mode_print) == 0);
    return parameter_list(at, record, state);
}

// "Q" name: the function that this one overrides.
[[gnu::noinline]] static const char* overridden(const char* at, eabi_decode_state* state) {
    eabi_put(" [overriding ", state);
    at = name_once(at + 1, state);
    eabi_put("] ", state);
    return at;
}

struct kind_suffix {
    char kind;
    std::string_view text;
};

// Of constructors and destructors.
static constexpr kind_suffix kind_suffixes[] = {
    {'0', " [deleting]"},   {'1', ""}, {'2', " [subobject]"},
    {'3', " [allocating]"}, {'7', ""}, {'8', " [static]"},
    {'9', " [delegation]"},
};

static void put_kind_suffix(char kind, eabi_decode_state* state) {
    for (const kind_suffix& suffix : kind_suffixes) {
        if (suffix.kind == kind) {
            eabi_put(suffix.text, state);
            state->is_subobject |= kind == '2' ? 1 : 0;
            return;
        }
    }
    if (!state->extended) {  // what newer compilers add prints nothing
        report_bad_name(state);
    }
}

// What follows the parameters, and for a name without any the only part.
static void function_suffix(const eabi_name_record& record, bool is_function,
                            eabi_decode_state* state) {
    if (is_function) {
        if (record.cv_qualifiers != 0) {
            eabi_put(' ', state);
            eabi_cv_qualifiers(record.cv_qualifiers, false, state);
        }
        if (record.ref_qualifier != 0) {
            eabi_put(record.ref_qualifier == 1 ? " &" : " &&", state);
        }
    }
    if (record.ctor_dtor_kind != ' ') {
        put_kind_suffix(record.ctor_dtor_kind, state);
    }
}

// One of the two passes in the order of the text: the first enters what can be
// substituted and prints the return type, the second prints all the rest.
[[gnu::noinline]] static const char* eabi_function_encoding(const char* at, bool print_params,
                                                            bool first_pass,
                                                            eabi_decode_state* state) {
    const unsigned mode = first_pass ? mode_record : mode_print;
    const eabi_no_record no_record(state, !first_pass);
    eabi_name_record record;
    at = eabi_name(at, &record, mode, state);
    const bool is_function = !at_encoding_end(at, state);
    if (is_function) {
        if (*at == 'Q') {
            const eabi_silence silent(state, first_pass);
            at = overridden(at, state);
        }
        const eabi_silence silent(state, !print_params);
        at = eabi_bare_function_type(at, record, mode, state);
    }
    const eabi_silence silent(state, first_pass);
    function_suffix(record, is_function, state);
    return at;
}

// Moves the text from `middle` on in front of the text from `start` on, and with it
// what the entries from `first_entry` and from `middle_entry` on say of their place.
[[gnu::noinline]] static void move_to_front(std::uint64_t start, std::uint64_t middle,
                                            std::uint64_t first_entry, std::uint64_t middle_entry,
                                            eabi_decode_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    const std::uint64_t end = state->out_len;
    if (state->overflowed != 0) {
        state->rotation_missed = true;
    } else {
        std::array<char, 128> moved;  // NOLINT(*-member-init): only what is copied is read
        const std::size_t length = end - middle;
        char* const text = state->out_buf;
        if (length <= moved.size()) {
            std::memcpy(moved.data(), text + middle, length);
            std::memmove(text + start + length, text + start, middle - start);
            std::memcpy(text + start, moved.data(), length);
        } else {
            std::rotate(text + start, text + middle, text + end);
        }
    }
    for (std::uint64_t i = first_entry; i < state->subst_count; ++i) {
        eabi_subst_entry& entry = state->subst_table[i];
        entry.text_at = static_cast<std::uint32_t>(
            i < middle_entry ? entry.text_at + (end - middle) : entry.text_at - (middle - start));
    }
}

// Both passes in one, for a name without errors.
static const char* function_in_one_pass(const char* at, bool print_params,
                                        eabi_decode_state* state) {
    const std::uint64_t start = state->out_len;
    const std::uint64_t first_entry = state->subst_count;
    eabi_name_record record;
    at = eabi_name(at, &record, mode_both, state);
    const bool is_function = !at_encoding_end(at, state);
    if (is_function && state->error_seen == 0) {
        if (*at == 'Q') {
            at = overridden(at, state);
        }
        const eabi_silence silent(state, !print_params);
        if (!record.no_return_type) {
            const std::uint64_t middle = state->out_len;
            const std::uint64_t middle_entry = state->subst_count;
            at = return_type(at, state);
            move_to_front(start, middle, first_entry, middle_entry, state);
        }
        at = parameter_list(at, record, state);
    }
    function_suffix(record, is_function, state);
    return at;
}

static const char* function_encoding(const char* at, bool print_params, eabi_decode_state* state) {
    if (!state->two_passes) {
        return function_in_one_pass(at, print_params, state);
    }
    const char* end = eabi_function_encoding(at, print_params, true, state);
    // Where nothing is printed the second pass would only repeat the first.
    if (state->error_seen == 0 && state->suppress_depth == 0) {
        end = eabi_function_encoding(at, print_params, false, state);
    }
    return end;
}

// --- Special names --------------------------------------------------------------

// "TC" derived offset "_" base: the base is printed first.
static const char* construction_vtable(const char* at, eabi_decode_state* state) {
    const char* const derived = at;
    at = eabi_skip_type(at, state);
    std::uint64_t offset = 0;
    at = eabi_require(eabi_number(at, &offset, state), '_', state);
    at = eabi_whole_type(at, true, state);
    if (state->suppress_depth == 0) {
        eabi_put("-in-", state);
        const eabi_no_record no_record(state);
        eabi_whole_type(derived, true, state);
    }
    return at;
}

// "GR" name [ base-36 number ] "_": the number is printed first.
static const char* reference_temporary(const char* at, eabi_decode_state* state) {
    const char* const name = at;
    {
        const eabi_silence silent(state);
        at = name_once(at, state);
    }
    std::uint64_t number = 0;
    if (*at != '\0') {  // old compilers end right after the name
        const char* const number_end = eabi_sequence_number(at, &number);
        if (number_end == nullptr) {
            report_bad_name(state);
            return at;
        }
        at = number_end + 1;
    }
    if (state->suppress_depth == 0) {
        eabi_put('#', state);
        eabi_put_number(static_cast<std::int64_t>(number), state);
        eabi_put(" for ", state);
        const eabi_no_record no_record(state);
        name_once(name, state);
    }
    return at;
}

enum class after_text { type, thunk, covariant_thunk, name };

struct special_name {
    char first;
    char second;
    std::string_view text;
    after_text follows;
};

static constexpr std::array special_names = {
    special_name{'T', 'V', "Virtual function table for ", after_text::type},
    special_name{'T', 'T', "Virtual table table for ", after_text::type},
    special_name{'T', 'I', "Typeinfo for ", after_text::type},
    special_name{'T', 'S', "Typeinfo name for ", after_text::type},
    special_name{'T', 'h', "Thunk for ", after_text::thunk},
    special_name{'T', 'v', "Thunk for ", after_text::thunk},
    special_name{'T', 'c', "Covariant thunk for ", after_text::covariant_thunk},
    special_name{'T', 'H', "Thread-local initialization routine for ", after_text::name},
    special_name{'T', 'W', "Thread-local wrapper routine for ", after_text::name},
    special_name{'G', 'V', "Initialization guard variable for ", after_text::name},
};

// What newer compilers write beyond the table.
[[gnu::noinline]] static const char* extended_special_name(const char* at,
                                                           eabi_decode_state* state) {
    const std::string_view code(at, at[1] == '\0' ? 1 : 2);
    if (code == "TC") {
        eabi_put("Construction vtable for ", state);
        return construction_vtable(at + 2, state);
    }
    if (code == "TA") {
        eabi_put("Template parameter object for ", state);
        bool first = true;
        return eabi_template_arg(at + 2, &first, state);
    }
    if (code == "GR") {
        eabi_put("Reference temporary ", state);
        return reference_temporary(at + 2, state);
    }
    if (code == "GT" && (at[2] == 't' || at[2] == 'n')) {
        eabi_put("Transaction clone for ", state);
        return eabi_encoding(at + 3, true, state);
    }
    if (code == "GI") {
        eabi_put("Initializer for module ", state);
        return eabi_module_initializer(at + 2, state);
    }
    report_bad_name(state);
    return at;
}

// encoding ::= special-name | function or data name
const char* eabi_encoding(const char* at, bool print_params, eabi_decode_state* state) {
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return at;
    }
    if (*at != 'T' && *at != 'G') {
        return function_encoding(at, print_params, state);
    }
    const auto* const row = std::find_if(
        special_names.begin(), special_names.end(),
        [at](const special_name& name) { return name.first == at[0] && name.second == at[1]; });
    if (row == special_names.end()) {
        if (state->extended) {
            return extended_special_name(at, state);
        }
        report_bad_name(state);
        return at;
    }
    eabi_put(row->text, state);
    switch (row->follows) {
        case after_text::type:
            return eabi_whole_type(at + 2, true, state);
        case after_text::thunk:
            return eabi_encoding(eabi_call_offset(at + 1, state), true, state);
        case after_text::covariant_thunk:
            at = eabi_call_offset(at + 2, state);
            return eabi_encoding(eabi_call_offset(at, state), true, state);
        case after_text::name:
            break;
    }
    return name_once(at + 2, state);
}
