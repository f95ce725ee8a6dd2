// A segment tree over a row of numbers: the greatest of the first so many is found, and
// the first so many are changed at once, in logarithmic time.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace gas2interlist {

class prefix_maximum {
  public:
    struct maximum {
        std::int64_t value;
        std::size_t place;
    };

    // So many places, each without a number yet.
    explicit prefix_maximum(std::size_t places)
        : leaves_(std::bit_ceil(places + 1)), nodes_(2 * leaves_) {
        for (std::size_t place = 0; place < leaves_; ++place) {
            nodes_[leaves_ + place].place = place;
        }
    }

    // The greatest number in the first `count` places, one of which has one. Then `value` is
    // added to each of them.
    maximum take_below(std::size_t count, std::int64_t value) {
        std::size_t at = leaves_ + count;
        std::int64_t within = nodes_[at].added;  // what is added behind, as far as it was met
        std::int64_t behind = 0;
        maximum best{least, 0};
        nodes_[at].added += value;
        for (; at > 1; at /= 2) {
            const node& other = nodes_[at ^ 1U];
            const bool is_right = at % 2 != 0;
            const bool is_better = is_right && other.value + within > best.value;
            best = is_better ? maximum{other.value + within, other.place} : best;
            within += is_right ? other.added : 0;
            behind += is_right ? 0 : other.added;
            update(at / 2);
        }
        best.value += behind;
        return best;
    }

    // Puts a number in a place unless a greater one, or the same, is there. Tells whether
    // it did.
    bool raise(std::size_t place, std::int64_t value) {
        node& leaf = nodes_[leaves_ + place];
        const std::int64_t own = value - added_behind(place);
        if (leaf.value >= own) {
            return false;
        }
        leaf.value = own;
        for (std::size_t at = (leaves_ + place) / 2; at > 0; at /= 2) {
            update(at);
        }
        return true;
    }

  private:
    static constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min() / 4;

    // What is added to the first places lies in the leaf behind the last of them, and
    // counts for what is left of that.
    struct node {
        std::int64_t added = 0;
        std::int64_t value = least;  // the greatest, with what is added within the node
        std::size_t place = 0;       // where it is
    };

    std::int64_t added_behind(std::size_t place) const {
        std::int64_t added = 0;
        for (std::size_t at = leaves_ + place; at > 1; at /= 2) {
            added += at % 2 == 0 ? nodes_[at + 1].added : 0;
        }
        return added;
    }

    void update(std::size_t at) {
        const node& left = nodes_[2 * at];
        const node& right = nodes_[2 * at + 1];
        const bool is_left = left.value + right.added > right.value;
        nodes_[at] = {left.added + right.added, is_left ? left.value + right.added : right.value,
                      is_left ? left.place : right.place};
    }

    std::size_t leaves_;
    std::vector<node> nodes_;  // the root is 1, the children of `at` 2 * at and the next
};

}  // namespace gas2interlist
