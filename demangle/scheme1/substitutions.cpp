// The substitution table, printing a component again, and what else stands for something.
#include "demangle/scheme1/substitutions.h"

#include <algorithm>
#include <cstdlib>

#include "demangle/scheme1/expressions.h"
#include "demangle/scheme1/function_types.h"
#include "demangle/scheme1/input.h"
#include "demangle/scheme1/names.h"
#include "demangle/scheme1/types.h"
#include "demangle/scheme1/unqualified_names.h"

namespace scheme1 {

// ---- The standard abbreviations ----

namespace {

struct abbreviation {
    char code;
    std::string_view text;
    const char* source_name;  // what a constructor behind it repeats
};

}  // namespace

static constexpr abbreviation abbreviations[] = {
    {'t', "std", "3std"},
    {'a', "std::allocator", "9allocator"},
    {'b', "std::basic_string", "12basic_string"},
    {'s', "std::basic_string<char, std::char_traits<char>, std::allocator<char>>",
     "12basic_string"},
    {'i', "std::basic_istream<char, std::char_traits<char>>", "13basic_istream"},
    {'o', "std::basic_ostream<char, std::char_traits<char>>", "13basic_ostream"},
    {'d', "std::basic_iostream<char, std::char_traits<char>>", "14basic_iostream"},
};

static const abbreviation* find_abbreviation(char code) {
    const auto* const row =
        std::find_if(std::begin(abbreviations), std::end(abbreviations),
                     [code](const abbreviation& entry) { return entry.code == code; });
    return row == std::end(abbreviations) ? nullptr : row;
}

// The tags of an abbreviation, at `at`: with them it is entered.
OUT_OF_LINE static const char* tagged_abbreviation(const char* start, const char* at,
                                                   std::uint64_t text_at,
                                                   const last_component* component,
                                                   eabi_decode_state* state) {
    at = abi_tags(at, state);
    eabi_add_substitution(start, subst_prefix, at,
                          component != nullptr ? *component : last_component{}, text_at, state);
    return at;
}

// ---- The table ----

const char* last_name_of(const last_component& component, const eabi_decode_state* state) {
    const std::uint32_t last_name = component.last_name;
    if (last_name == 0) {
        return nullptr;
    }
    if (last_name >= abbreviation_name) {
        return find_abbreviation(static_cast<char>(last_name & 0xFFU))->source_name;
    }
    return state->input + (last_name - 1);
}

bool grow_table(eabi_decode_state* state) {
    constexpr std::uint64_t step = 500;
    // The first entries lie in the state; from then on the table is on the heap.
    const bool on_heap = state->subst_table != state->first_entries;
    const std::uint64_t capacity = on_heap ? state->subst_capacity + step : step;
    void* const table =
        std::realloc(on_heap ? state->subst_table : nullptr, capacity * sizeof(subst_entry));
    if (table == nullptr) {
        report_bad_name(state);
        return false;
    }
    auto* const entries = static_cast<subst_entry*>(table);
    if (!on_heap) {
        std::copy_n(state->first_entries, state->subst_count, entries);
    }
    state->subst_table = entries;
    state->subst_capacity = capacity;
    return true;
}

// ---- Printing a component again ----

// Decodes the entry's component anew.
static void decode_again(const subst_entry& entry, subst_mode mode, unsigned cv, bool marked,
                         eabi_decode_state* state) {
    const nesting level(state);
    if (state->error_seen != 0) {
        return;
    }
    const no_record unrecorded(state);
    last_component component;
    const char* at = entry.start;
    if (mode != subst_type_suffix && entry.kind != subst_type) {
        eabi_cv_qualifiers(cv, true, state);
    }
    if (mode == subst_type_suffix) {
        eabi_type_suffix(at, cv, marked, state);
    } else {
        switch (entry.kind) {
            case subst_name:
                if (at[0] == 'S' && at[1] == 't') {
                    emit_text("std::", state);
                    at += 2;
                }
                unqualified_name(at, &component, state);
                break;
            case subst_prefix:
            case subst_prefix_and_name:
                at = prefix(at, state->input + entry.prefix_end, false, nullptr, &component, state);
                if (entry.kind == subst_prefix_and_name) {
                    emit_text("::", state);
                    unqualified_name(at, &component, state);
                }
                break;
            case subst_type:
                eabi_type(at, cv, (entry.component.flags & without_args) == 0, state);
                if (mode == subst_whole) {
                    finish_type(at, cv, state);
                }
                break;
            case subst_template_param:
                eabi_template_param(at, state);
                break;
        }
    }
}

// Whether the entry's text stands in the output as it reads here: a template parameter
// is named differently in a lambda's parameter list and outside.
static bool text_can_be_copied(const subst_entry& entry, const eabi_decode_state* state) {
    return entry.text_length != no_text &&
           (entry.component.flags & (in_lambda | in_leveled_lambda)) == state->lambda_flag;
}

// Copies the entry's text when it stands in the output and the qualifiers can be
// put beside it; says whether it did.
static bool copy_entry(const subst_entry& entry, unsigned cv, eabi_decode_state* state) {
    if (!text_can_be_copied(entry, state)) {
        return false;
    }
    if (state->out_len + entry.text_length > longest_text) {
        report_bad_name(state);
        return true;
    }
    const bool marked = (entry.component.shape & shape_mark) != 0;
    if (cv != 0 && (entry.component.shape & (shape_qualified | shape_suffix)) != 0) {
        return false;
    }
    if (cv != 0 && !marked) {
        eabi_cv_qualifiers(cv, true, state);
    }
    // Past the buffer's end texts are only counted: there is none to point at.
    const char* const text =
        state->overflowed != 0 ? state->out_buf : state->out_buf + entry.text_at;
    emit_text({text, entry.text_length}, state);
    if (cv != 0 && marked) {
        eabi_cv_qualifiers(cv, false, state);
    }
    return true;
}

static void set_component(const subst_entry& entry, last_component* component) {
    if (component != nullptr) {
        *component = entry.component;
        component->flags &= is_conversion | is_less | is_complete | is_closed;
        component->shape = 0;
    }
}

// Takes the entry by value: decoding it again must not meet a table that has moved.
OUT_OF_LINE static void print_entry(subst_entry entry, subst_mode mode, unsigned cv, bool marked,
                                    last_component* component, eabi_decode_state* state) {
    set_component(entry, component);
    if (state->suppress_depth == 0) {
        if (mode == subst_type_suffix) {
            if (entry.kind == subst_type) {
                decode_again(entry, mode, cv, marked, state);
            }
        } else if (!copy_entry(entry, cv, state)) {
            decode_again(entry, mode, cv, marked, state);
        }
        if (state->out_len > longest_text) {
            report_bad_name(state);
        }
    }
    unsigned shape = entry.component.shape;
    if ((shape & shape_greater) != 0) {
        show_greater(state);
    }
    if (cv != 0) {
        // Those of a function stand behind its parameters.
        if ((shape & shape_mark) != 0 && !at_function(entry.start)) {
            shape ^= shape_mark | shape_mark_qualified;
        }
        shape |= shape_qualified;
    }
    state->shape = shape;
}

const subst_entry* referenced_entry(const char* at, const eabi_decode_state* state) {
    std::uint64_t index = 0;
    const bool readable = read_sequence_number(at + 1, &index) != nullptr;
    return readable && index < state->subst_count ? &state->subst_table[index] : nullptr;
}

bool is_template_reference(const char* at, const eabi_decode_state* state) {
    if (at[1] >= 'a' && at[1] <= 'z') {
        return at[1] == 'a' || at[1] == 'b';
    }
    const subst_entry* const entry = referenced_entry(at, state);
    return entry != nullptr && entry->kind < subst_type;
}

bool is_dependent_reference(const char* at, const eabi_decode_state* state) {
    if (at[1] >= 'a' && at[1] <= 'z') {
        return false;
    }
    const subst_entry* const entry = referenced_entry(at, state);
    return entry != nullptr && (*entry->start == 'T' || *entry->start == 'D');
}

const char* spelled_type(const char* at, const eabi_decode_state* state) {
    if (*at != 'S' || (at[1] >= 'a' && at[1] <= 'z')) {
        return at;
    }
    const subst_entry* const entry = referenced_entry(at, state);
    return entry != nullptr && entry->kind == subst_type ? entry->start : at;
}

// Whether the entry's text can be copied in steps, as nearly all can.
static bool reads_as_it_stands(const subst_entry& entry, const eabi_decode_state* state) {
    const std::uint64_t steps_end = state->out_len + entry.text_length + copy_step;
    return text_can_be_copied(entry, state) && state->suppress_depth == 0 &&
           steps_end < state->out_size && steps_end < longest_text;
}

// An abbreviation, and its tags.
static const char* abbreviation_at(const char* at, subst_mode mode, unsigned cv,
                                   last_component* component, eabi_decode_state* state) {
    const char* const start = at;
    const abbreviation* const found = find_abbreviation(at[1]);
    if (component != nullptr) {
        *component = last_component{};
        if (found != nullptr) {
            component->last_name = abbreviation_name | static_cast<unsigned char>(at[1]);
        }
    }
    at += 2;
    if (mode != subst_type_suffix) {
        eabi_cv_qualifiers(cv, true, state);
        const std::uint64_t text_at = state->out_len;
        if (found != nullptr) {
            emit_text(found->text, state);
        }
        if (*at == 'B') {
            at = tagged_abbreviation(start, at, text_at, component, state);
        }
    }
    state->shape = named_shape(cv);
    return at;
}

// Notes that the entry's text has been printed where the next reference is to copy it from:
// it may have been entered in silence, or read differently where it stood.
static void keep_text(std::uint64_t text_at, subst_entry* entry, const eabi_decode_state* state) {
    if ((entry->component.shape & shape_suffix) == 0) {
        entry->text_at = static_cast<std::uint32_t>(text_at);
        entry->text_length = static_cast<std::uint32_t>(state->out_len - text_at);
        entry->component.flags = static_cast<unsigned char>(
            (entry->component.flags & ~(in_lambda | in_leveled_lambda)) | state->lambda_flag);
    }
}

// eabi_substitution for whatever reference stands there.
OUT_OF_LINE static const char* any_reference(const char* at, subst_mode mode, unsigned cv,
                                             bool marked, last_component* component,
                                             eabi_decode_state* state) {
    if (at[1] >= 'a' && at[1] <= 'z') {
        return abbreviation_at(at, mode, cv, component, state);
    }
    std::uint64_t index = 0;
    const char* const index_end = read_sequence_number(at + 1, &index);
    if (index_end == nullptr || index >= state->subst_count ||
        // the name of a module, without a name behind it
        (state->subst_table[index].component.flags & names_module) != 0) {
        report_bad_name(state);
        return at + 1;
    }
    const std::uint64_t text_at = state->out_len;
    print_entry(state->subst_table[index], mode, cv, marked, component, state);
    if (cv == 0 && mode != subst_type_suffix && state->suppress_depth == 0) {
        keep_text(text_at, &state->subst_table[index], state);
    }
    return index_end + 1;
}

}  // namespace scheme1

using namespace scheme1;

// "S" [ base-36 digits ] "_" | "S" letter
const char* eabi_substitution(const char* at, subst_mode mode, unsigned cv_qualifiers, bool marked,
                              last_component* component, eabi_decode_state* state) {
    std::uint64_t index = 0;
    const char* const end = read_sequence_number(at + 1, &index);
    if (end != nullptr && index < state->subst_count && cv_qualifiers == 0 &&
        mode != subst_type_suffix && reads_as_it_stands(state->subst_table[index], state)) {
        const subst_entry& entry = state->subst_table[index];
        copy_in_steps(state->out_buf + state->out_len, state->out_buf + entry.text_at,
                      entry.text_length);
        state->out_len += entry.text_length;
        set_component(entry, component);
        state->shape = entry.component.shape;
        return end + 1;
    }
    return any_reference(at, mode, cv_qualifiers, marked, component, state);
}

// template-param ::= "T" [ [ "n" ] number ] "_", with "L" level "_" in front of the
// number where newer compilers give one.
const char* eabi_template_param(const char* at, eabi_decode_state* state) {
    ++at;
    const bool leveled = *at == 'L' && state->extended;
    if (leveled) {
        std::uint64_t ignored = 0;
        at = expect(read_number(at + 1, &ignored, state), '_', state);
        state->level_seen = state->level_seen || state->lambda_flag != 0;
    }
    std::int64_t number = 1;
    if (*at != '_') {
        signed_number value;
        at = read_signed_number(at, &value, state);
        if (value.negative && value.size != 0) {
            report_bad_name(state);
        }
        number = static_cast<std::int64_t>(value.size + 2);
    }
    at = expect(at, '_', state);
    if (state->suppress_depth == 0) {
        if (state->lambda_flag == in_lambda || (state->lambda_flag != 0 && leveled)) {
            emit_text("auto:", state);
        } else {
            emit_char('T', state);
        }
        if (number >= 1 && number <= 9) {
            emit_char(static_cast<char>('0' + number), state);
        } else {
            emit_signed(number, state);
        }
    }
    return at;
}
