// What keeps a hostile name from exhausting time, memory or the stack, in both schemes. A
// name that meets one of these bounds is a bad name.
#pragma once

#include <cstdint>

inline constexpr std::uint32_t most_nesting = 1024;  // fits a stack of 512 KiB
inline constexpr std::uint64_t longest_text = std::uint64_t{16} << 20;

// A routine that is not inlined where it is called. The grammar calls itself: what is
// inlined into a routine of the grammar enlarges the frame of every level of nesting, and
// moves apart the code that most names need.
#define OUT_OF_LINE [[gnu::noinline]]

// A routine that few names reach: what leads to it is laid out away from what most names need.
#define SELDOM [[gnu::cold]]

// A routine that is inlined wherever it is called.
#define IN_PLACE [[gnu::always_inline]] inline

// One level of nesting for as long as it lives, and one step of the grammar. The scheme's
// enter_level sees to it that neither goes past its bound.
template <typename State>
class nesting {
  public:
    explicit nesting(State* state) : state_(state) {
        ++state->depth;
        enter_level(state);
    }
    ~nesting() { --state_->depth; }
    nesting(const nesting&) = delete;
    nesting& operator=(const nesting&) = delete;

  private:
    State* state_;
};
