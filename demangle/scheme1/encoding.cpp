// Functions in their passes, special names, thunks.
#include "demangle/scheme1/encoding.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <span>

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/function_types.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/modules.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/template_args.h"
#include "demangle/scheme1/types.h"
#include "demangle/scheme1/unqualified_names.h"

namespace scheme1 {

// offset "_", printed as a signed number.
static const char* offset_number(const char* at, eabi_decode_state* state) {
    signed_number offset;
    at = read_signed_number(at, &offset, state);
    emit_signed(offset.value(), state);
    return expect(at, '_', state);
}

// ---- Functions ----

// Whether the encoding ends behind the name or the parameters.
static bool at_encoding_end(const char* at, const eabi_decode_state* state) {
    return *at == '\0' || *at == 'E' || (*at == '.' && state->extended);
}

// A return type in front of a parameter list, and the blank after it.
static const char* return_type(const char* at, eabi_decode_state* state) {
    at = whole_type(at, state);
    emit_char(' ', state);
    return at;
}

static const char* parameter_list(const char* at, const name_record& record,
                                  eabi_decode_state* state) {
    emit_char('(', state);
    if (record.explicit_object) {
        emit_text("this ", state);
    }
    at = parameters(at, state);
    emit_char(')', state);
    return at;
}

// "Q" name: the function that this one overrides.
OUT_OF_LINE static const char* overridden(const char* at, eabi_decode_state* state) {
    emit_text(" [overriding ", state);
    at = name_once(at + 1, state);
    emit_text("] ", state);
    return at;
}

static void put_kind_suffix(char kind, eabi_decode_state* state) {
    const constructor_kind* const row = find_constructor_kind(kind, state);
    if (row == nullptr) {
        report_bad_name(state);
        return;
    }
    emit_text(row->suffix, state);
    state->is_subobject |= kind == '2' ? 1 : 0;
}

// "Ua9enable_if" "I" { template-arg } "E": the conditions of a call, behind the name. They are
// printed last, and here only read.
OUT_OF_LINE static const char* call_conditions(const char* at, const char** conditions,
                                               eabi_decode_state* state) {
    constexpr std::string_view code = "Ua9enable_ifI";
    if (!state->extended ||
        !std::string_view(at, static_cast<std::size_t>(state->input_end - at)).starts_with(code)) {
        return at;
    }
    const silence silent(state);
    *conditions = at + code.size();
    return enclosed_args(*conditions, state);
}

OUT_OF_LINE static void put_call_conditions(const char* at, eabi_decode_state* state) {
    const no_record unrecorded(state);
    emit_text(" [enable_if:", state);
    ++state->parentheses;
    for (bool first = true; *at != 'E' && state->error_seen == 0; first = false) {
        if (!first) {
            emit_text(", ", state);
        }
        const bool is_expression = *at == 'X';
        at = list_item(is_expression ? at + 1 : at, state);
        at = is_expression ? expect(at, 'E', state) : at;
    }
    --state->parentheses;
    emit_char(']', state);
}

// What follows the parameters, and for a name without any the only part.
static const char* function_suffix(const char* at, const name_record& record, bool is_function,
                                   eabi_decode_state* state) {
    if (is_function) {
        if (record.cv_qualifiers != 0) {
            emit_char(' ', state);
            eabi_cv_qualifiers(record.cv_qualifiers, false, state);
        }
        if (record.ref_qualifier != 0) {
            emit_text(record.ref_qualifier == 1 ? " &" : " &&", state);
        }
        if (*at == 'Q' && state->extended) {
            emit_text(" requires ", state);
            at = expression(at + 1, state);
        }
    }
    if (record.ctor_dtor_kind != ' ') {
        put_kind_suffix(record.ctor_dtor_kind, state);
    }
    return at;
}

// Moves the text from `middle` on in front of the text from `start` on, and with it what
// the entries say of their place.
OUT_OF_LINE static void move_to_front(std::uint64_t start, std::uint64_t middle,
                                      eabi_decode_state* state) {
    if (state->suppress_depth != 0) {
        return;
    }
    const std::uint64_t end = state->out_len;
    if (state->overflowed != 0) {
        state->rotation_missed = true;
    } else {
        std::array<char, 512> moved;  // NOLINT(*-member-init): only what is copied is read
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
    for (subst_entry& entry : std::span(state->subst_table, state->subst_count)) {
        if (entry.text_at >= start) {
            entry.text_at = static_cast<std::uint32_t>(entry.text_at < middle
                                                           ? entry.text_at + (end - middle)
                                                           : entry.text_at - (middle - start));
        }
    }
}

// Both passes in one, for a name without errors.
static const char* function_in_one_pass(const char* at, bool print_params,
                                        eabi_decode_state* state) {
    const std::uint64_t start = state->out_len;
    name_record record;
    const char* conditions = nullptr;
    at = eabi_name(at, &record, mode_both, state);
    if (*at == 'U') [[unlikely]] {
        at = call_conditions(at, &conditions, state);
    }
    const bool is_function = !at_encoding_end(at, state);
    if (is_function && state->error_seen == 0) {
        if (*at == 'Q') {
            at = overridden(at, state);
        }
        const silence silent(state, !print_params);
        if (!record.no_return_type) {
            const std::uint64_t middle = state->out_len;
            at = return_type(at, state);
            move_to_front(start, middle, state);
        }
        at = parameter_list(at, record, state);
    }
    at = function_suffix(at, record, is_function, state);
    if (conditions != nullptr) [[unlikely]] {
        put_call_conditions(conditions, state);
    }
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

// ---- Special names ----

static const char* type(const char* at, eabi_decode_state* state) {
    return whole_type(at, state);
}

// call-offset encoding, the offset's letter being the code's last one
static const char* thunk(const char* at, eabi_decode_state* state) {
    return eabi_encoding(eabi_call_offset(at - 1, state), true, state);
}

// call-offset call-offset encoding
static const char* covariant_thunk(const char* at, eabi_decode_state* state) {
    at = eabi_call_offset(at, state);
    return eabi_encoding(eabi_call_offset(at, state), true, state);
}

static const char* transaction_clone(const char* at, eabi_decode_state* state) {
    return eabi_encoding(at, true, state);
}

static const char* template_parameter_object(const char* at, eabi_decode_state* state) {
    bool first = true;
    return template_arg(at, &first, state);
}

// derived offset "_" base: the base is printed first.
static const char* construction_vtable(const char* at, eabi_decode_state* state) {
    const char* const derived = at;
    at = skip_type(at, state);
    std::uint64_t offset = 0;
    at = expect(read_number(at, &offset, state), '_', state);
    at = whole_type(at, state);
    if (state->suppress_depth == 0) {
        emit_text("-in-", state);
        const no_record unrecorded(state);
        whole_type(derived, state);
    }
    return at;
}

// name [ base-36 number ] "_": the number is printed first.
static const char* reference_temporary(const char* at, eabi_decode_state* state) {
    const char* const name = at;
    {
        const silence silent(state);
        at = name_once(at, state);
    }
    std::uint64_t number = 0;
    if (*at != '\0') {  // old compilers end right after the name
        const char* const number_end = read_sequence_number(at, &number);
        if (number_end == nullptr) {
            report_bad_name(state);
            return at;
        }
        at = number_end + 1;
    }
    if (state->suppress_depth == 0) {
        emit_char('#', state);
        emit_signed(static_cast<std::int64_t>(number), state);
        emit_text(" for ", state);
        const no_record unrecorded(state);
        name_once(name, state);
    }
    return at;
}

namespace {

struct special_name {
    std::string_view code;
    std::string_view text;
    const char* (*read)(const char* at, eabi_decode_state* state);  // what follows the code
    names_mode mode;
};

}  // namespace

static constexpr special_name special_names[] = {
    {"TV", "Virtual function table for ", type, always},
    {"TT", "Virtual table table for ", type, always},
    {"TI", "Typeinfo for ", type, always},
    {"TS", "Typeinfo name for ", type, always},
    {"Th", "Thunk for ", thunk, always},
    {"Tv", "Thunk for ", thunk, always},
    {"Tc", "Covariant thunk for ", covariant_thunk, always},
    {"TH", "Thread-local initialization routine for ", name_once, always},
    {"TW", "Thread-local wrapper routine for ", name_once, always},
    {"GV", "Initialization guard variable for ", name_once, always},
    {"TC", "Construction vtable for ", construction_vtable, extended},
    {"TA", "Template parameter object for ", template_parameter_object, extended},
    {"GR", "Reference temporary ", reference_temporary, extended},
    {"GTt", "Transaction clone for ", transaction_clone, extended},
    {"GTn", "Transaction clone for ", transaction_clone, extended},
    {"GI", "Initializer for module ", module_initializer, extended},
};

static const char* special_name_encoding(const char* at, eabi_decode_state* state) {
    const std::string_view rest(at, static_cast<std::size_t>(state->input_end - at));
    const auto* const row = std::ranges::find_if(special_names, [=](const special_name& name) {
        // The second letter tells nearly all of them apart.
        return name.code[1] == at[1] && rest.starts_with(name.code) && is_open(name.mode, state);
    });
    if (row == std::end(special_names)) {
        report_bad_name(state);
        return at;
    }
    emit_text(row->text, state);
    return row->read(at + row->code.size(), state);
}

}  // namespace scheme1

using namespace scheme1;

// call-offset ::= "h" offset "_"  |  "v" offset "_" virtual-offset "_"
const char* eabi_call_offset(const char* at, eabi_decode_state* state) {
    if (*at != 'h' && *at != 'v') {
        report_bad_name(state);
        return at;
    }
    const bool is_virtual = *at == 'v';
    emit_text("(offset ", state);
    at = offset_number(at + 1, state);
    if (is_virtual) {
        emit_text(", virtual offset ", state);
        at = offset_number(at, state);
    }
    emit_text(") ", state);
    return at;
}

// bare-function-type ::= [ return type ] parameter type+
const char* eabi_bare_function_type(const char* at, const name_record& record, unsigned mode,
                                    eabi_decode_state* state) {
    if (!record.no_return_type) {
        const silence silent(state, (mode & mode_record) == 0);
        at = return_type(at, state);
    }
    const silence silent(state, (mode & mode_print) == 0);
    return parameter_list(at, record, state);
}

OUT_OF_LINE const char* eabi_function_encoding(const char* at, bool print_params, bool first_pass,
                                               eabi_decode_state* state) {
    const unsigned mode = first_pass ? mode_record : mode_print;
    const no_record unrecorded(state, !first_pass);
    name_record record;
    const char* conditions = nullptr;
    at = eabi_name(at, &record, mode, state);
    if (*at == 'U') {
        at = call_conditions(at, &conditions, state);
    }
    const bool is_function = !at_encoding_end(at, state);
    if (is_function) {
        if (*at == 'Q') {
            const silence silent(state, first_pass);
            at = overridden(at, state);
        }
        const silence silent(state, !print_params);
        at = eabi_bare_function_type(at, record, mode, state);
    }
    const silence silent(state, first_pass);
    at = function_suffix(at, record, is_function, state);
    if (conditions != nullptr) {
        put_call_conditions(conditions, state);
    }
    return at;
}

// encoding ::= special-name | function or data name
const char* eabi_encoding(const char* at, bool print_params, eabi_decode_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return at;
    }
    return *at == 'T' || *at == 'G' ? special_name_encoding(at, state)
                                    : function_encoding(at, print_params, state);
}
