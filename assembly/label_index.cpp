// A hash table that is filled once, without a look at memory for each of its entries but
// the table itself.
#include "assembly/label_index.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "assembly/operand.h"

namespace assembly {

static std::uint64_t hash_of(std::string_view name) {
    constexpr std::uint64_t factor = 0x9e3779b97f4a7c15;
    std::uint64_t hash = name.size();
    while (name.size() > sizeof hash) {
        std::uint64_t part = 0;
        std::memcpy(&part, name.data(), sizeof part);
        hash = (std::rotl(hash, 23) ^ part) * factor;
        name.remove_prefix(sizeof part);
    }
    std::uint64_t part = 0;
    std::memcpy(&part, name.data(), name.size());
    hash = (std::rotl(hash, 23) ^ part) * factor;
    return hash ^ hash >> 32;
}

namespace {

// ".LVL7" taken apart; `prefix` is 0 where a name is not of this kind.
struct numbered_name {
    std::uint64_t prefix = 0;
    std::uint32_t number = 0;
};

}  // namespace

static numbered_name take_apart(std::string_view name) {
    constexpr std::size_t most_digits = 8;
    std::size_t digits = 0;
    std::uint32_t number = 0;
    std::uint32_t weight = 1;
    while (digits < most_digits && digits < name.size() &&
           is_digit(name[name.size() - digits - 1])) {
        number += weight * static_cast<std::uint32_t>(name[name.size() - digits - 1] - '0');
        weight *= 10;
        ++digits;
    }
    const std::size_t letters = name.size() - digits;
    const bool has_leading_zero = digits > 1 && name[letters] == '0';
    numbered_name it;
    if (digits == 0 || letters == 0 || letters > sizeof it.prefix || has_leading_zero ||
        is_digit(name[letters - 1])) {
        return it;
    }
    for (std::size_t i = 0; i < letters; ++i) {
        it.prefix = it.prefix << 8 | static_cast<unsigned char>(name[i]);
    }
    it.number = number;
    return it;
}

const std::uint32_t* label_index::find_numbered(std::string_view name) const {
    const numbered_name it = take_apart(name);
    if (it.prefix == 0) {
        return nullptr;
    }
    for (const family& one : families_) {
        if (one.prefix == it.prefix) {
            return it.number < one.index_of.size() ? &one.index_of[it.number] : nullptr;
        }
    }
    return nullptr;
}

// Where the index of a label of this name goes; null when it is for the table of all names.
std::uint32_t* label_index::place_numbered(std::string_view name) {
    constexpr std::size_t most_families = 32;
    const numbered_name it = take_apart(name);
    if (it.prefix == 0 || it.number > greatest_number_) {
        return nullptr;
    }
    auto one = std::find_if(families_.begin(), families_.end(),
                            [&](const family& known) { return known.prefix == it.prefix; });
    if (one == families_.end()) {
        if (families_.size() == most_families) {
            return nullptr;
        }
        one = families_.insert(one, {it.prefix, {}});
    }
    if (one->index_of.size() <= it.number) {
        one->index_of.resize(it.number + 1, none);
    }
    return &one->index_of[it.number];
}

label_index::label_index(const assembly_file& assembly)
    : assembly_(assembly),
      greatest_number_(static_cast<std::uint32_t>(
          std::min<std::size_t>(assembly.labels.size() * 2 + 1000, none - 1))) {
    const std::vector<label>& labels = assembly.labels;
    std::vector<std::uint32_t> others;
    constexpr std::size_t ahead = 16;  // names lie all over a large text
    for (std::uint32_t i = 0; i < labels.size(); ++i) {
        if (i + ahead < labels.size()) {
            __builtin_prefetch(assembly.text.data() + labels[i + ahead].name_at);
        }
        std::uint32_t* const place = place_numbered(assembly.name_of(labels[i]));
        if (place == nullptr) {
            others.push_back(i);
        } else if (*place == none) {
            *place = i;
        }
    }
    table_.resize(std::bit_ceil(others.size() * 2 + 1));
    for (const std::uint32_t i : others) {
        const std::string_view name = assembly.name_of(labels[i]);
        const std::uint64_t hash = hash_of(name);
        const std::size_t at = place_of(name, hash);
        if (table_[at].index == none) {
            table_[at] = {static_cast<std::uint32_t>(hash >> 32), i};
        }
    }
    for (const alias& it : assembly.aliases) {
        aliases_.try_emplace(it.name, it.value);
    }
}

// Where the name stands in the table, or the free place where it would.
std::size_t label_index::place_of(std::string_view name, std::uint64_t hash) const {
    const std::size_t mask = table_.size() - 1;
    std::size_t at = hash & mask;
    for (; table_[at].index != none; at = (at + 1) & mask) {
        if (table_[at].tag == hash >> 32 &&
            assembly_.name_of(assembly_.labels[table_[at].index]) == name) {
            break;
        }
    }
    return at;
}

const label* label_index::find_label(std::string_view name) const {
    const std::uint32_t* const numbered = find_numbered(name);
    const std::uint32_t index = numbered != nullptr && *numbered != none
                                    ? *numbered
                                    : table_[place_of(name, hash_of(name))].index;
    return index == none ? nullptr : &assembly_.labels[index];
}

const label* label_index::find(std::string_view name) const {
    const label* found = find_label(name);
    constexpr int most_names = 8;
    for (int i = 0; found == nullptr && i < most_names; ++i) {
        const auto other = aliases_.find(name);
        if (other == aliases_.end()) {
            break;
        }
        std::string_view rest = other->second;
        name = take_symbol(rest);
        found = find_label(name);
    }
    return found;
}

// expression ::= ["-"] term (("+" | "-") term)*
// term ::= number | symbol | "(" expression ")"
void label_index::add_expression(std::string_view& rest, bool is_negative, unsigned depth,
                                 label_value& value) const {
    constexpr unsigned most_depth = 8;
    bool is_term_negative = is_negative;
    while (depth < most_depth) {
        skip_blanks(rest);
        if (rest.starts_with('-')) {
            is_term_negative = !is_term_negative;
            rest.remove_prefix(1);
            skip_blanks(rest);
        }
        if (rest.starts_with('(')) {
            rest.remove_prefix(1);
            add_expression(rest, is_term_negative, depth + 1, value);
            if (rest.starts_with(')')) {
                rest.remove_prefix(1);
            }
        } else if (!rest.empty() && is_digit(rest.front())) {
            const std::uint64_t number = take_value(rest).value_or(0);
            value.number += is_term_negative ? 0 - number : number;
        } else {
            add_symbol(take_symbol(rest), is_term_negative, depth, value);
        }
        skip_blanks(rest);
        if (!rest.starts_with('+') && !rest.starts_with('-')) {
            return;
        }
        is_term_negative = is_negative != rest.starts_with('-');
        rest.remove_prefix(1);
    }
    value.is_known = false;
}

void label_index::add_symbol(std::string_view name, bool is_negative, unsigned depth,
                             label_value& value) const {
    const label* found = find_label(name);
    if (found == nullptr) {
        // "f@GOTOFF" says how f is reached, not another name.
        found = find_label(name.substr(0, name.find('@')));
    }
    if (found != nullptr) {
        const label*& term = is_negative ? value.minus : value.plus;
        value.is_known = value.is_known && term == nullptr;
        term = found;
        return;
    }
    const auto other = aliases_.find(name);
    if (other == aliases_.end()) {
        value.is_known = false;
        return;
    }
    std::string_view rest = other->second;
    add_expression(rest, is_negative, depth + 1, value);
}

label_value label_index::value_at(std::uint32_t text_at) const {
    label_value value;
    std::string_view rest = assembly_.text.substr(text_at);
    add_expression(rest, false, 0, value);
    // Labels of one debugging section lie as far apart as their offsets say.
    if (value.plus != nullptr && value.minus != nullptr &&
        value.plus->section == value.minus->section &&
        assembly_.sections[value.plus->section].kind == section_kind::debug) {
        value.number += std::uint64_t{value.plus->place} - value.minus->place;
        value.plus = value.minus = nullptr;
    }
    return value;
}

}  // namespace assembly
