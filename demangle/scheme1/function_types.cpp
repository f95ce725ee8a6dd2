// Function types of the Itanium ABI decoder and the parameter lists that functions and
// lambdas share with them. Called by the types, the encodings and the names.
#include "demangle/scheme1/function_types.h"

// What may stand in front of a function type's "F".
struct function_head {
    const char* exception = nullptr;  // at its "D"
    bool transaction_safe = false;
};

// [ "Do" | "DO" expression "E" | "Dw" type+ "E" ] [ "Dx" ] "F" [ "Y" ]
static const char* read_function_head(const char* at, function_head* head,
                                      eabi_decode_state* state) {
    if (at[0] == 'D' && at[1] != 'x') {
        head->exception = at;
        const char kind = at[1];
        at += 2;
        if (kind == 'O') {
            bool ignored = false;
            at = eabi_require(eabi_skip_expression(at, &ignored, state), 'E', state);
        } else if (kind == 'w') {
            do {
                at = eabi_skip_type(at, state);
            } while (*at != 'E' && state->error_seen == 0);
            at = eabi_require(at, 'E', state);
        }
    }
    if (at[0] == 'D' && at[1] == 'x') {
        head->transaction_safe = true;
        at += 2;
    }
    at = eabi_require(at, 'F', state);
    return *at == 'Y' ? at + 1 : at;
}

static void put_exception(const char* at, eabi_decode_state* state) {
    const eabi_no_record no_record(state);
    if (at[1] == 'o') {
        eabi_put(" noexcept", state);
    } else if (at[1] == 'O') {
        eabi_put(" noexcept", state);
        eabi_enclosed_expression(at + 2, state);
    } else {
        eabi_put(" throw(", state);
        for (at += 2; *at != 'E' && state->error_seen == 0;) {
            at = eabi_whole_type(at, true, state);
            if (*at != 'E') {
                eabi_put(", ", state);
            }
        }
        eabi_put(')', state);
    }
}

// function-type: its return type's prefix; the parameters are read for later.
const char* eabi_function_prefix(const char* at, eabi_decode_state* state) {
    const char* const start = at;
    function_head head;
    const char* const result = read_function_head(at, &head, state);
    at = eabi_type(result, 0, true, state);
    state->shape = (state->shape & (shape_mark | shape_greater)) | shape_suffix | shape_direct;
    if (const eabi_skipped* const found = eabi_find_skipped(start, state)) {
        return state->input + found->end;
    }
    eabi_remember_skipped(result, at, false, state);
    const unsigned shape = state->shape;
    const eabi_silence silent(state);
    at = eabi_parameters(at, state);
    if (*at == 'R' || *at == 'O') {
        ++at;
    }
    state->shape = shape;
    at = eabi_require(at, 'E', state);
    eabi_remember_skipped(start, at, false, state);
    return at;
}

// The parameters and qualifiers of the function type at `at`; gives the position of
// its return type.
const char* eabi_function_suffix(const char* at, unsigned cv, bool marked,
                                 eabi_decode_state* state) {
    function_head head;
    const char* const result = read_function_head(at, &head, state);
    if (marked) {
        eabi_put(')', state);
    }
    at = eabi_skip_type(result, state);
    eabi_put('(', state);
    at = eabi_parameters(at, state);
    eabi_put(')', state);
    if (cv != 0) {
        eabi_put(' ', state);
        eabi_cv_qualifiers(cv, false, state);
    }
    if (*at == 'R' || *at == 'O') {
        eabi_put(*at == 'R' ? " &" : " &&", state);
    }
    if (head.transaction_safe) {
        eabi_put(" transaction_safe", state);
    }
    if (head.exception != nullptr) {
        put_exception(head.exception, state);
    }
    return result;
}

// Where a list of parameter types ends: the NUL, "E", or a reference qualifier and "E".
static bool at_parameters_end(const char* at, const eabi_decode_state* state) {
    return *at == '\0' || *at == 'E' || ((*at == 'R' || *at == 'O') && at[1] == 'E') ||
           (state->extended && (*at == '.' || *at == 'Q'));
}

// "v"  |  { type } [ "z" ], at least one
const char* eabi_parameters(const char* at, eabi_decode_state* state) {
    if (*at == 'v' && at_parameters_end(at + 1, state)) {
        return at + 1;
    }
    bool first = true;
    do {
        if (!first) {
            eabi_put(", ", state);
        }
        first = false;
        if (*at == 'z') {
            eabi_put("...", state);
            ++at;
        } else {
            at = eabi_whole_type(at, true, state);
        }
    } while (state->error_seen == 0 && !at_parameters_end(at, state));
    return at;
}
