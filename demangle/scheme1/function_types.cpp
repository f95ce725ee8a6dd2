// Function types, in their two parts, and parameter lists.
#include "demangle/scheme1/function_types.h"

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/skip.h"
#include "demangle/scheme1/types.h"

namespace scheme1 {

namespace {

// What may stand in front of a function type's "F".
struct function_head {
    const char* exception = nullptr;  // at its "D"
    bool transaction_safe = false;
};

}  // namespace

// [ "Do" | "DO" expression "E" | "Dw" type+ "E" ] [ "Dx" ] "F" [ "Y" ]
static const char* read_function_head(const char* at, function_head* head,
                                      eabi_decode_state* state) {
    if (at[0] == 'D' && at[1] != 'x') {
        head->exception = at;
        const char kind = at[1];
        at += 2;
        if (kind == 'O') {
            bool ignored = false;
            at = expect(skip_expression(at, &ignored, state), 'E', state);
        } else if (kind == 'w') {
            do {
                at = skip_type(at, state);
            } while (*at != 'E' && state->error_seen == 0);
            at = expect(at, 'E', state);
        }
    }
    if (at[0] == 'D' && at[1] == 'x') {
        head->transaction_safe = true;
        at += 2;
    }
    at = expect(at, 'F', state);
    return *at == 'Y' ? at + 1 : at;
}

static void put_exception(const char* at, eabi_decode_state* state) {
    const no_record unrecorded(state);
    if (at[1] == 'o') {
        emit_text(" noexcept", state);
    } else if (at[1] == 'O') {
        emit_text(" noexcept", state);
        enclosed_expression(at + 2, state);
    } else {
        emit_text(" throw(", state);
        for (at += 2; *at != 'E' && state->error_seen == 0;) {
            at = whole_type(at, state);
            if (*at != 'E') {
                emit_text(", ", state);
            }
        }
        emit_char(')', state);
    }
}

// function-type: its return type's prefix; the parameters are read for later.
const char* function_prefix(const char* at, eabi_decode_state* state) {
    const char* const start = at;
    function_head head;
    const char* const result = read_function_head(at, &head, state);
    at = eabi_type(result, 0, true, state);
    state->shape = (state->shape & (shape_mark | shape_greater)) | shape_suffix | shape_direct;
    if (const skip_record* const found = find_skipped(start, state)) {
        return state->input + found->end;
    }
    remember_skipped(result, at, false, state);
    const unsigned shape = state->shape;
    const silence silent(state);
    at = parameters(at, state);
    if (*at == 'R' || *at == 'O') {
        ++at;
    }
    state->shape = shape;
    at = expect(at, 'E', state);
    remember_skipped(start, at, false, state);
    return at;
}

// The parameters and qualifiers of the function type at `at`; gives the position of
// its return type.
const char* function_suffix(const char* at, unsigned cv, bool marked, eabi_decode_state* state) {
    function_head head;
    const char* const result = read_function_head(at, &head, state);
    if (marked) {
        emit_char(')', state);
    }
    at = skip_type(result, state);
    emit_char('(', state);
    at = parameters(at, state);
    emit_char(')', state);
    if (cv != 0) {
        emit_char(' ', state);
        eabi_cv_qualifiers(cv, false, state);
    }
    if (*at == 'R' || *at == 'O') {
        emit_text(*at == 'R' ? " &" : " &&", state);
    }
    if (head.transaction_safe) {
        emit_text(" transaction_safe", state);
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
const char* parameters(const char* at, eabi_decode_state* state) {
    if (*at == 'v' && at_parameters_end(at + 1, state)) {
        return at + 1;
    }
    bool first = true;
    do {
        if (!first) {
            emit_text(", ", state);
        }
        first = false;
        if (*at == 'z') {
            emit_text("...", state);
            ++at;
        } else {
            at = whole_type(at, state);
        }
    } while (state->error_seen == 0 && !at_parameters_end(at, state));
    return at;
}

}  // namespace scheme1
