// Which section of the object a line goes to: the directives that change it, with the
// stack that they keep.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "assembly/directive.h"
#include "assembly/reader.h"

namespace assembly {

class section_track {
  public:
    explicit section_track(std::vector<section>& sections);

    // Acts on a directive of one of the kinds for sections; `operands` is what stands
    // behind its name. Any other is passed over.
    void follow(const directive_row& row, std::string_view operands);

    std::uint32_t current() const { return current_; }

  private:
    void enter(std::string_view name, std::string_view operands);
    void enter_subsection(std::string_view number);
    void move_to(std::uint32_t index);
    std::uint32_t find(std::string key, std::string_view name, section_kind kind);

    std::vector<section>& sections_;
    std::unordered_map<std::string, std::uint32_t> by_key_;
    std::vector<std::uint32_t> whole_;  // by index: the section that it is a subsection of
    std::uint32_t current_ = 0;
    std::uint32_t previous_ = 0;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> stack_;  // current and previous
};

}  // namespace assembly
