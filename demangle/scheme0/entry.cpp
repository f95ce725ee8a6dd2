// The entry of scheme 0: symbols that are not mangled, compressed names, the special
// names of what compilers make, and ordinary names.
#include "demangle/scheme0/entry.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>

#include "demangle/decode.h"
#include "demangle/scheme0/grammar.h"

namespace scheme0 {

namespace {

// What follows a special name's prefix.
enum class operand_kind { table, entity, resolver, target, type, surrogate };

struct special_name {
    std::string_view prefix;
    const char* phrase;
    operand_kind operand;
};

}  // namespace

// In the order of trial.
static constexpr special_name special_names[] = {
    {"__vtbl__", "virtual function table for ", operand_kind::table},
    {"__CBI__", "can-be-instantiated flag for ", operand_kind::entity},
    {"__DNI__", "do-not-instantiate flag for ", operand_kind::entity},
    {"__TIR__", "template-instantiation-request flag for ", operand_kind::entity},
    {"__LSG__", "initialization guard variable for ", operand_kind::entity},
    {"__THI__", "thread_local initialization routine for ", operand_kind::entity},
    {"__IFV__", "ifunc variable for ", operand_kind::entity},
    {"__RES__", "resolver function for ", operand_kind::resolver},
    {"__IFC__", "ifunc function for ", operand_kind::entity},
    {"__TGT__", "", operand_kind::target},
    {"__TWR__", "thread_local wrapper for ", operand_kind::entity},
    {"__TID_", "type identifier for ", operand_kind::type},
    {"__T_", "typeinfo for ", operand_kind::type},
    {"__VFE__", "surrogate in class ", operand_kind::surrogate},
};

static std::string_view rest_of(const char* at, const grammar_state* state) {
    return {at, static_cast<std::size_t>(state->input_end - at)};
}

static bool is_mangled(std::string_view name) {
    if (name.starts_with("__Q")) {
        return true;
    }
    const std::size_t first = name.find_first_not_of('_');
    return first != std::string_view::npos && name.find("__", first) != std::string_view::npos;
}

namespace {

// Puts the expansion of a compressed name together in the tail of the caller's buffer.
class expansion {
  public:
    expansion(char* to, std::uint64_t length) : to_(to), length_(length) {}

    bool add(std::string_view text) {
        if (text.size() > length_ - used_) {
            return false;
        }
        std::memmove(to_ + used_, text.data(), text.size());
        used_ += text.size();
        return true;
    }

    // Copies the length-prefixed name that begins at `offset`, all of which must be
    // there already.
    bool repeat(std::uint64_t offset) {
        std::uint64_t length = 0;
        std::uint64_t at = offset;
        for (; at < used_ && is_digit(to_[at]); ++at) {
            length = length * 10 + static_cast<std::uint64_t>(to_[at] - '0');
            if (length > length_) {
                return false;
            }
        }
        return at != offset && length <= used_ - at &&
               add({to_ + offset, static_cast<std::size_t>(at - offset + length)});
    }

    bool is_complete() const { return used_ == length_; }

  private:
    char* to_;
    std::uint64_t length_;
    std::uint64_t used_ = 0;
};

}  // namespace

// compressed := { character | "JJ" | "J" offset "J" }
static bool expand(const char* at, expansion* expanded, grammar_state* state) {
    while (at < state->input_end && state->error_seen == 0) {
        const std::string_view text = rest_of(at, state);
        const std::size_t plain = std::min(text.find('J'), text.size());
        if (!expanded->add(text.substr(0, plain))) {
            return false;
        }
        at += plain;
        if (at == state->input_end) {
            break;
        }
        if (*++at == 'J') {
            if (!expanded->add("J")) {
                return false;
            }
        } else {
            std::uint64_t offset = 0;
            at = read_number(at, &offset, state);
            if (peek_char(at, state) != 'J' || !expanded->repeat(offset)) {
                return false;
            }
        }
        ++at;
    }
    return expanded->is_complete();
}

// "__CPR" n "__" text, n the length of the expanded text. Gives where that begins;
// null when decoding ends here, with the state telling why.
static const char* expand_compressed(const char* name, grammar_state* state) {
    std::uint64_t length = 0;
    const char* const text = read_number(name + 5, &length, state);
    if (!follows(text, "__", state) || length > longest_text) {
        report_bad_name(state);
    }
    if (state->error_seen != 0) {
        return nullptr;
    }
    state->uncompressed_len = length;
    if (state->out_size <= length + 1) {
        state->overflowed = 1;
        if (state->out_size != 0) {
            state->out_buf[0] = '\0';
            state->out_buf[state->out_size - 1] = '\0';
        }
        return nullptr;
    }
    state->out_size -= length + 1;
    char* const tail = state->out_buf + state->out_size;
    expansion expanded(tail, length);
    if (!expand(text + 2, &expanded, state)) {
        report_bad_name(state);
        return nullptr;
    }
    tail[length] = '\0';
    state->base = tail;
    state->input_end = tail + length;
    return tail;
}

// target "__" entity
static const char* target_entity(const char* at, grammar_state* state) {
    const std::string_view rest = rest_of(at, state);
    const std::size_t length = rest.find("__");
    if (length == std::string_view::npos) {
        report_bad_name(state);
        return at;
    }
    const char* const end = full_entity(at + length + 2, state);
    emit_text(" __attribute__((target(", state);
    emit_text({at, length}, state);
    emit_text(")))", state);
    return end;
}

// type "__" entity
static const char* surrogate(const char* at, grammar_state* state) {
    at = whole_type(at, state);
    if (!follows(at, "__", state)) {
        report_bad_name(state);
        return at;
    }
    emit_text(" for ", state);
    return full_entity(at + 2, state);
}

static const char* special_operand(const char* at, operand_kind kind, grammar_state* state) {
    switch (kind) {
        case operand_kind::table:
            return table_classes(at, state);
        case operand_kind::resolver:
            if (follows(at, "__IFC__", state)) {
                emit_text("ifunc function for ", state);
                at += 7;
            }
            return full_entity(at, state);
        case operand_kind::entity:
            return full_entity(at, state);
        case operand_kind::target:
            return target_entity(at, state);
        case operand_kind::type:
            return whole_type(at, state);
        case operand_kind::surrogate:
            return surrogate(at, state);
    }
    return at;
}

// "__" length letters "__U" kind: an unnamed type or lambda by itself. One further on,
// in the signature of a function, is not meant.
static bool is_unnamed_form(std::string_view name) {
    if (!name.starts_with("__")) {
        return false;
    }
    name.remove_prefix(2);
    std::size_t length = std::string_view::npos;  // and for one that is out of range
    const auto [digits_end, error] =
        std::from_chars(name.data(), name.data() + name.size(), length);
    if (error == std::errc::invalid_argument) {
        return false;
    }
    name.remove_prefix(static_cast<std::size_t>(digits_end - name.data()));
    name = name.substr(0, length);
    for (std::size_t at = name.find("__U", 1); at != std::string_view::npos;
         at = name.find("__U", at + 1)) {
        const std::string_view kind = name.substr(at + 3, 1);
        if (kind == "t" || kind == "l" || kind == "m" || kind == "d") {
            return true;
        }
    }
    return false;
}

// The plain name stands for the whole; what follows it is not looked at. The letters of
// a special prefix are a name that the prefix's own "__" ends.
static const char* plain_name(const char* at, grammar_state* state) {
    const std::string_view name = rest_of(at, state);
    for (const special_name& row : special_names) {
        if (row.prefix.ends_with("__") && name.starts_with(row.prefix)) {
            emit_text({at, row.prefix.size() - 2}, state);
            return state->input_end;
        }
    }
    at = name_only(at, state);
    return follows(at, "__", state) ? state->input_end : at;
}

// "__STV__" name "__" [ entity ]: a static variable, named after the function it
// lives in. Null when one of the two parts is missing.
static const char* static_variable(const char* at, bool decorated, grammar_state* state) {
    std::string_view rest = rest_of(at, state);
    if (!rest.starts_with("__STV__")) {
        return nullptr;
    }
    rest.remove_prefix(7);
    // Leading underscores are the name's own.
    const std::size_t length = rest.find("__", rest.find_first_not_of('_'));
    if (length == std::string_view::npos) {
        return nullptr;
    }
    const char* end = rest.data() + length + 2;
    if (decorated && end != state->input_end) {
        end = full_entity(end, state);
        emit_text("::", state);
    } else {
        end = state->input_end;
    }
    emit_text({rest.data(), length}, state);
    return end;
}

static const char* mangled_name(const char* at, bool decorated, grammar_state* state) {
    const std::string_view name = rest_of(at, state);
    if (decorated) {
        for (const special_name& row : special_names) {
            if (name.starts_with(row.prefix)) {
                emit_text(row.phrase, state);
                return special_operand(at + row.prefix.size(), row.operand, state);
            }
        }
    }
    if (name.starts_with("__Q") || is_unnamed_form(name)) {
        return scope_name(at + 2, {}, state);
    }
    if (const char* const end = static_variable(at, decorated, state)) {
        return end;
    }
    return decorated ? full_entity(at, state) : plain_name(at, state);
}

// Null when a compressed name could not be expanded.
static const char* whole_name(const char* name, bool decorated, grammar_state* state) {
    const std::string_view text = rest_of(name, state);
    if (!is_mangled(text)) {
        emit_text({text.data(), text.size()}, state);
        return state->input_end;
    }
    if (text.starts_with("__CPR")) {
        name = expand_compressed(name, state);
    }
    if (name == nullptr) {
        return nullptr;
    }
    const char* const end = mangled_name(name, decorated, state);
    if (state->out_len > longest_text) {
        report_bad_name(state);
    }
    return end;
}

bool looks_mangled(const char* name) {
    return name[0] == '_' && std::strstr(name, "__") != nullptr;
}

decode_result decode(std::string_view name, const decode_options& options, std::span<char> buffer) {
    grammar_state state;
    state.out_buf = buffer.data();
    state.out_size = buffer.size();
    state.base = name.data();
    state.input_end = name.data() + name.size();
    const char* const end = whole_name(name.data(), options.decorated, &state);
    // A text that stops short of the name's end makes the whole name invalid.
    if (end != nullptr && state.overflowed == 0 && end != state.input_end) {
        report_bad_name(&state);
    }
    if (state.overflowed != 0) {
        state.error_seen = 1;
    } else if (state.out_size != 0) {
        state.out_buf[state.out_len] = '\0';
    }
    std::uint64_t needed = state.out_len + 1;
    if (state.uncompressed_len != 0 || (end == nullptr && state.overflowed != 0)) {
        needed += state.uncompressed_len + 1;
    }
    return {state.error_seen != 0, state.overflowed != 0, needed, state.out_len};
}

}  // namespace scheme0

void decode_identifier(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                       int* overflow_out, std::size_t* needed_size_out, int decorated) {
    store_result(scheme0::decode(name, {.decorated = decorated != 0}, {buffer, buffer_size}),
                 error_out, overflow_out, needed_size_out);
}
