// JSON objects of a page's data: members one by one, and whole columns of them.
#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "assembly/reader.h"
#include "clist/forms/json.h"

namespace clist::page {

// An index as the data have it: -1 for none.
inline std::int64_t index_or_none(std::uint32_t index) {
    return index == assembly::none ? -1 : std::int64_t{index};
}

// An object that is written to `text`, until its end().
class object {
  public:
    explicit object(std::string& text) : text_(text) { text_ += '{'; }

    // Begins a member; its value is for the caller to add to the text.
    void begin(std::string_view name) {
        if (!is_first_) {
            text_ += ',';
        }
        is_first_ = false;
        append_json(text_, name);
        text_ += ':';
    }

    void member(std::string_view name, const auto& value) {
        begin(name);
        append(value);
    }

    // An array with what `value_of` makes of each row: a number or a text.
    void column(std::string_view name, const auto& rows, const auto& value_of) {
        begin(name);
        text_ += '[';
        bool is_first = true;
        for (const auto& row : rows) {
            if (!is_first) {
                text_ += ',';
            }
            is_first = false;
            append(value_of(row));
        }
        text_ += ']';
    }

    void end() { text_ += '}'; }

  private:
    void append(const auto& value) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(value)>, bool>) {
            text_ += value ? "true" : "false";
        } else if constexpr (std::is_convertible_v<decltype(value), std::string_view>) {
            append_json(text_, std::string_view(value));
        } else {
            char digits[24];
            const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
            text_ += std::string_view(digits, static_cast<std::size_t>(end - digits));
        }
    }

    std::string& text_;
    bool is_first_ = true;
};

}  // namespace clist::page
