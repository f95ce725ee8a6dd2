// Back references of the Itanium ABI decoder: the substitution table, the standard
// abbreviations and template parameters. Called by the names and the types.
#include <algorithm>
#include <cstdlib>

#include "demangle/scheme1/state.h"

// --- The standard abbreviations -------------------------------------------------

struct abbreviation {
    char code;
    std::string_view text;
    const char* source_name;  // what a constructor behind it repeats
};

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

// --- The table ------------------------------------------------------------------

const char* eabi_last_name(std::uint32_t last_name, const eabi_decode_state* state) {
    if (last_name == 0) {
        return nullptr;
    }
    if (last_name >= eabi_abbreviation_name) {
        return find_abbreviation(static_cast<char>(last_name & 0xFFU))->source_name;
    }
    return state->input + (last_name - 1);
}

bool eabi_grow_table(eabi_decode_state* state) {
    constexpr std::uint64_t step = 500;
    // The first entries lie in the state; from then on the table is on the heap.
    const bool on_heap = state->subst_table != state->first_entries;
    const std::uint64_t capacity = on_heap ? state->subst_capacity + step : step;
    void* const table =
        std::realloc(on_heap ? state->subst_table : nullptr, capacity * sizeof(eabi_subst_entry));
    if (table == nullptr) {
        report_bad_name(state);
        return false;
    }
    auto* const entries = static_cast<eabi_subst_entry*>(table);
    if (!on_heap) {
        std::copy_n(state->first_entries, state->subst_count, entries);
    }
    state->subst_table = entries;
    state->subst_capacity = capacity;
    return true;
}

// --- Printing a component again -------------------------------------------------

static constexpr unsigned all_shapes =
    shape_mark | shape_suffix | shape_direct | shape_qualified | shape_greater;

static constexpr unsigned component_flags =
    entry_conversion | entry_ends_in_less | 0xFFU << entry_kind_shift;

// Decodes the entry's component anew.
static void decode_again(const eabi_subst_entry& entry, eabi_subst_mode mode, unsigned cv,
                         bool marked, eabi_decode_state* state) {
    const eabi_level level(state);
    if (state->error_seen != 0) {
        return;
    }
    const eabi_no_record no_record(state);
    eabi_component component;
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
                    eabi_put("std::", state);
                    at += 2;
                }
                eabi_unqualified_name(at, &component, state);
                break;
            case subst_prefix:
            case subst_prefix_and_name:
                at = eabi_prefix(at, state->input + entry.prefix_end, false, nullptr, &component,
                                 state);
                if (entry.kind == subst_prefix_and_name) {
                    eabi_put("::", state);
                    eabi_unqualified_name(at, &component, state);
                }
                break;
            case subst_type:
                eabi_type(at, cv, (entry.type_flags & entry_without_args) == 0, state);
                if (mode == subst_whole) {
                    eabi_finish_type(at, cv, state);
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
static bool text_can_be_copied(const eabi_subst_entry& entry, const eabi_decode_state* state) {
    return entry.text_length != entry_no_text &&
           (entry.type_flags & entry_in_lambda) == state->lambda_flag;
}

// Copies the entry's text when it stands in the output and the qualifiers can be
// put beside it; says whether it did.
static bool copy_text(const eabi_subst_entry& entry, unsigned cv, eabi_decode_state* state) {
    if (!text_can_be_copied(entry, state)) {
        return false;
    }
    const bool marked = (entry.type_flags & shape_mark) != 0;
    if (cv != 0 && (entry.type_flags & (shape_qualified | shape_suffix)) != 0) {
        return false;
    }
    if (cv != 0 && !marked) {
        eabi_cv_qualifiers(cv, true, state);
    }
    // Past the buffer's end texts are only counted: there is none to point at.
    const char* const text =
        state->overflowed != 0 ? state->out_buf : state->out_buf + entry.text_at;
    eabi_put(text, entry.text_length, state);
    if (cv != 0 && marked) {
        eabi_cv_qualifiers(cv, false, state);
    }
    return true;
}

static void set_component(const eabi_subst_entry& entry, eabi_component* component) {
    if (component != nullptr) {
        component->last_name = entry.last_name;
        component->flags = entry.type_flags & component_flags;
    }
}

// Takes the entry by value: decoding it again must not meet a table that has moved.
[[gnu::noinline]] static void print_entry(eabi_subst_entry entry, eabi_subst_mode mode, unsigned cv,
                                          bool marked, eabi_component* component,
                                          eabi_decode_state* state) {
    set_component(entry, component);
    if (state->suppress_depth == 0) {
        if (mode == subst_type_suffix) {
            if (entry.kind == subst_type) {
                decode_again(entry, mode, cv, marked, state);
            }
        } else if (!copy_text(entry, cv, state)) {
            decode_again(entry, mode, cv, marked, state);
        }
        if (state->out_len > eabi_max_text) {
            report_bad_name(state);
        }
    }
    unsigned shape = entry.type_flags & all_shapes;
    if ((shape & shape_greater) != 0) {
        eabi_show_greater(state);
    }
    if (cv != 0) {
        shape = (shape & ~static_cast<unsigned>(shape_mark)) | shape_qualified;
    }
    state->shape = shape;
}

// The value of one of 0 to 9 and A to Z.
static std::uint64_t base36_digit(char digit) {
    return static_cast<std::uint64_t>(eabi_is_digit(digit) ? digit - '0' : digit - 'A' + 10);
}

const char* eabi_sequence_number(const char* at, std::uint64_t* number) {
    constexpr std::uint64_t limit = std::uint64_t{1} << 40;
    *number = 0;
    if (*at == '_') {
        return at;
    }
    do {
        if ((!eabi_is_digit(*at) && (*at < 'A' || *at > 'Z')) || *number > limit) {
            return nullptr;
        }
        *number = *number * 36 + base36_digit(*at);
        ++at;
    } while (*at != '_');
    ++*number;
    return at;
}

const char* eabi_substitution(const char* at, eabi_subst_mode mode, unsigned cv_qualifiers,
                              bool marked, eabi_component* component, eabi_decode_state* state) {
    ++at;
    if (*at >= 'a' && *at <= 'z') {
        const abbreviation* const found = find_abbreviation(*at);
        if (component != nullptr) {
            *component = eabi_component{};
            if (found != nullptr) {
                component->last_name = eabi_abbreviation_name | static_cast<unsigned char>(*at);
            }
        }
        if (mode != subst_type_suffix) {
            eabi_cv_qualifiers(cv_qualifiers, true, state);
            if (found != nullptr) {
                eabi_put(found->text, state);
            }
        }
        state->shape = cv_qualifiers != 0 ? shape_qualified : 0U;
        return at + 1;
    }
    std::uint64_t index = 0;
    const char* const index_end = eabi_sequence_number(at, &index);
    if (index_end == nullptr || index >= state->subst_count ||
        // the name of a module, without a name behind it
        (state->subst_table[index].type_flags & entry_module) != 0) {
        report_bad_name(state);
        return at;
    }
    const eabi_subst_entry& entry = state->subst_table[index];
    const bool copied =
        cv_qualifiers == 0 && mode != subst_type_suffix && text_can_be_copied(entry, state) &&
        state->out_len + entry.text_length < std::min(state->out_size, eabi_max_text);
    if (copied) {  // most references end here
        eabi_put(state->out_buf + entry.text_at, entry.text_length, state);
        set_component(entry, component);
        state->shape = entry.type_flags & all_shapes;
    } else {
        print_entry(entry, mode, cv_qualifiers, marked, component, state);
    }
    return index_end + 1;
}

const eabi_subst_entry* eabi_referenced_entry(const char* at, const eabi_decode_state* state) {
    std::uint64_t index = 0;
    const bool readable = eabi_sequence_number(at + 1, &index) != nullptr;
    return readable && index < state->subst_count ? &state->subst_table[index] : nullptr;
}

bool eabi_is_template_reference(const char* at, const eabi_decode_state* state) {
    if (at[1] >= 'a' && at[1] <= 'z') {
        return at[1] == 'a' || at[1] == 'b';
    }
    const eabi_subst_entry* const entry = eabi_referenced_entry(at, state);
    return entry != nullptr && entry->kind < subst_type;
}

bool eabi_is_dependent_reference(const char* at, const eabi_decode_state* state) {
    if (at[1] >= 'a' && at[1] <= 'z') {
        return false;
    }
    const eabi_subst_entry* const entry = eabi_referenced_entry(at, state);
    return entry != nullptr && (*entry->start == 'T' || *entry->start == 'D');
}

const char* eabi_spelled_type(const char* at, const eabi_decode_state* state) {
    if (*at != 'S' || (at[1] >= 'a' && at[1] <= 'z')) {
        return at;
    }
    const eabi_subst_entry* const entry = eabi_referenced_entry(at, state);
    return entry != nullptr && entry->kind == subst_type ? entry->start : at;
}

// --- Template parameters --------------------------------------------------------

// template-param ::= "T" [ [ "n" ] number ] "_", with "L" level "_" in front of the
// number where newer compilers give one.
const char* eabi_template_param(const char* at, eabi_decode_state* state) {
    ++at;
    if (*at == 'L' && state->extended) {
        std::uint64_t ignored = 0;
        at = eabi_require(eabi_number(at + 1, &ignored, state), '_', state);
    }
    std::int64_t number = 1;
    if (*at != '_') {
        const bool negative = *at == 'n';
        std::uint64_t value = 0;
        at = eabi_number(at + (negative ? 1 : 0), &value, state);
        if (negative && value != 0) {
            report_bad_name(state);
        }
        number = static_cast<std::int64_t>(value + 2);
    }
    at = eabi_require(at, '_', state);
    if (state->suppress_depth == 0) {
        eabi_put(state->lambda_flag != 0 ? "auto:" : "T", state);
        if (number >= 1 && number <= 9) {
            eabi_put(static_cast<char>('0' + number), state);
        } else {
            eabi_put_number(number, state);
        }
    }
    return at;
}
