// The entry of the Itanium ABI decoder and the top of its grammar: encodings,
// special names, thunks and functions. Called by the dispatcher of decode_id.h.
//
// A function's return type is encoded behind its name and printed in front of it.
// The order of the text asks for two passes over the name, one for the return type
// and one for the rest. A name that is well formed and fits the buffer is decoded
// in a single pass instead, and the return type moved in front of the name. Where
// that shows, after an error or when the buffer was too small for the move, the
// name is decoded once more in the order of the text.
#include "demangle/decode_eabi.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <memory>

#include "demangle/decode_eabi_internal.h"
#include "demangle/decode_id.h"

void report_bad_name(eabi_decode_state* state) {
    if (state->error_seen == 0) {
        state->error_seen = 1;
        ++state->suppress_depth;
        ++state->no_record_depth;
    }
}

void eabi_put_number(std::int64_t value, eabi_decode_state* state) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    emit_bytes(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()), state);
}

const char* eabi_number(const char* at, std::uint64_t* value, eabi_decode_state* state) {
    *value = 0;
    if (!eabi_is_digit(*at)) {
        report_bad_name(state);
        return at;
    }
    do {
        *value = *value * 10 + static_cast<std::uint64_t>(*at - '0');
        ++at;
    } while (eabi_is_digit(*at));
    return at;
}

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
    switch (record.ctor_dtor_kind) {
        case ' ':
        case '1':
        case '7':
            break;
        case '0':
            eabi_put(" [deleting]", state);
            break;
        case '2':
            eabi_put(" [subobject]", state);
            state->is_subobject = 1;
            break;
        case '3':
            eabi_put(" [allocating]", state);
            break;
        case '8':
            eabi_put(" [static]", state);
            break;
        case '9':
            eabi_put(" [delegation]", state);
            break;
        default:  // what newer compilers add prints nothing
            if (!state->extended) {
                report_bad_name(state);
            }
            break;
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
    std::int64_t number = 0;
    if (*at != '_' && *at != '\0') {
        for (; eabi_is_digit(*at) || (*at >= 'A' && *at <= 'Z'); ++at) {
            const int digit = eabi_is_digit(*at) ? *at - '0' : *at - 'A' + 10;
            if (number > (std::int64_t{1} << 32)) {
                report_bad_name(state);
                return at;
            }
            number = number * 36 + digit;
        }
        ++number;
    }
    if (*at == '_') {
        ++at;
    } else if (*at != '\0' || number != 0) {  // old compilers end right after the name
        report_bad_name(state);
    }
    if (state->suppress_depth == 0) {
        eabi_put('#', state);
        eabi_put_number(number, state);
        eabi_put(" for ", state);
        const eabi_no_record no_record(state);
        name_once(name, state);
    }
    return at;
}

// "GI" { "W" [ "P" ] source-name }
static const char* module_initializer(const char* at, eabi_decode_state* state) {
    bool first = true;
    while (*at == 'W' && state->error_seen == 0) {
        ++at;
        const bool partition = *at == 'P';
        if (partition) {
            ++at;
        }
        if (partition || !first) {
            eabi_put(partition ? ':' : '.', state);
        }
        first = false;
        at = eabi_source_name(at, state);
    }
    if (first) {
        report_bad_name(state);
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
        return module_initializer(at + 2, state);
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

// --- The entry ------------------------------------------------------------------

static void free_table(eabi_decode_state* state) {
    if (state->subst_table != state->first_entries) {
        std::free(state->subst_table);
    }
    state->subst_table = nullptr;
}

// The table starts in the state itself and moves to the heap when it outgrows that.
static void use_first_entries(eabi_decode_state* state) {
    state->subst_table = state->first_entries;
    state->subst_capacity = std::size(state->first_entries);
}

// Puts the state back to where a call starts, on the same buffer and input.
static void restart(eabi_decode_state* state) {
    free_table(state);
    state->out_len = 0;
    state->error_seen = 0;
    state->overflowed = 0;
    state->suppress_depth = 0;
    state->no_record_depth = 0;
    state->conversion_seen = 0;
    state->is_subobject = 0;
    state->subst_count = 0;
    use_first_entries(state);
    state->depth = 0;
    state->steps_left = eabi_max_steps;
    state->parentheses = 0;
    state->greater_seen = false;
    state->lambda_flag = 0;
    state->rotation_missed = false;
    state->skipped_in_use = false;
}

// One attempt at the whole name; gives the position where decoding stopped.
static const char* attempt(bool decorated, eabi_decode_state* state) {
    const char* at = state->input;
    if (state->input_length > eabi_max_input) {
        report_bad_name(state);
        return at;
    }
    if (at[0] != '_' || at[1] != 'Z') {
        return eabi_whole_type(at, true, state);
    }
    at = eabi_encoding(at + 2, decorated, state);
    if (*at == '.' && state->extended) {
        eabi_put(" [clone ", state);
        eabi_put(at, static_cast<std::size_t>(state->input_end - at), state);
        eabi_put(']', state);
        at = state->input_end;
    }
    if (state->out_len > eabi_max_text) {
        report_bad_name(state);
    }
    return at;
}

static const char* attempt_and_retry(bool decorated, eabi_decode_state* state) {
    const char* end = attempt(decorated, state);
    // The type of a conversion operator may have to take the template arguments
    // that the first attempt gave to the operator.
    if (state->error_seen != 0 && state->conversion_seen != 0) {
        restart(state);
        state->retrying = 1;
        end = attempt(decorated, state);
    }
    return end;
}

decode_result eabi_decode(const char* name, std::size_t length, char* buffer,
                          std::size_t buffer_size, bool decorated) {
    eabi_decode_state state;
    state.out_buf = buffer;
    state.out_size = buffer_size;
    state.input = name;
    state.input_length = length;
    state.input_end = name + length;
    state.extended = decode_extended_names != 0;
    use_first_entries(&state);

    const char* end = attempt_and_retry(decorated, &state);
    if (state.error_seen != 0) {
        // What is left in the buffer is what the two passes print before the error.
        state.two_passes = true;
        restart(&state);
        end = attempt(decorated, &state);
        report_bad_name(&state);
    } else if (state.overflowed != 0 && state.rotation_missed) {
        // The text is known to be good, and how long it is: only its beginning is
        // still to be put in order.
        const std::uint64_t text_length = state.out_len;
        state.two_passes = true;
        restart(&state);
        attempt(decorated, &state);
        state.out_len = text_length;
        state.overflowed = 1;
    }

    if (state.overflowed != 0) {
        state.error_seen = 1;
    } else {
        if (buffer_size != 0) {
            buffer[state.out_len] = '\0';
        }
        if (*end != '\0') {
            report_bad_name(&state);
        }
    }
    free_table(&state);
    return {state.error_seen, state.overflowed, state.out_len + 1};
}

void decode_identifier_eabi(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                            int* overflow_out, std::size_t* needed_size_out, int decorated) {
    const decode_result result =
        eabi_decode(name, std::strlen(name), buffer, buffer_size, decorated != 0);
    *error_out = result.error;
    *overflow_out = result.overflow;
    *needed_size_out = result.needed_size;
}

bool decode_is_ia64_subobject(const char* name) {
    if (name[0] != '_' || name[1] != 'Z') {
        return false;
    }
    const std::size_t size = std::strlen(name) + 1;
    const auto copy = std::make_unique<char[]>(size);  // NOLINT(modernize-avoid-c-arrays)
    std::memcpy(copy.get(), name, size);
    eabi_decode_state state;
    state.input = copy.get();
    state.input_length = size - 1;
    state.input_end = copy.get() + size - 1;
    state.extended = decode_extended_names != 0;
    use_first_entries(&state);
    eabi_encoding(copy.get() + 2, false, &state);
    free_table(&state);
    return state.is_subobject != 0;
}
