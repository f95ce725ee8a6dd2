// Finds the next characters by which a line of assembly may be more than one plain statement;
// the reader asks of each line.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace assembly {

// The next places of characters by which a line may be more than one plain statement, so
// that lines without any of them cost one comparison for all.
class special_places {
  public:
    special_places(std::string_view text, char parting)
        : text_(text), marks_{parting, '/', '=', ':'} {}

    // Looks for those that stand in the stretch from `from` to `to`; stretches follow each
    // other.
    void move_to(std::size_t from, std::size_t to) {
        to_ = to;
        if (nearest_ < from || to > horizon_) {
            look(from);
        }
    }

    bool any() const { return nearest_ < to_; }
    bool more_than_colon() const {
        return at_[separator] < to_ || at_[comment] < to_ || at_[equals] < to_;
    }
    bool needs_parting() const { return at_[separator] < to_ || at_[comment] < to_; }

    // How far it looks ahead. What is read next has then just come into the processor's
    // cache. Further on there may be none of some, and debugging data, which need none.
    static constexpr std::size_t far = std::size_t{1} << 14;

  private:
    enum mark : std::uint8_t { separator, comment, equals, colon };
    static constexpr std::size_t nowhere = std::string_view::npos;

    void look(std::size_t from) {
        const bool is_further = to_ > horizon_;
        if (is_further) {
            horizon_ = std::max(to_, std::min(from + far, text_.size()));
        }
        const std::string_view near = text_.substr(0, horizon_);
        nearest_ = nowhere;
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            if (at_[i] < from || (is_further && at_[i] == nowhere)) {
                at_[i] = i == comment ? near.find("/*", from) : near.find(marks_[i], from);
            }
            nearest_ = std::min(nearest_, at_[i]);
        }
    }

    std::string_view text_;
    std::array<char, 4> marks_;
    std::array<std::size_t, 4> at_{};  // behind the stretch, or in it, or nowhere up to the horizon
    std::size_t horizon_ = 0;
    std::size_t nearest_ = 0;
    std::size_t to_ = 0;
};

}  // namespace assembly
