// Finding the row of a table whose code is two letters, a small one and any.
#pragma once

#include <array>
#include <cstddef>

namespace scheme1 {

// Rows by the letters of their codes, 1-based; 0 where there is none.
class code_index {
  public:
    template <typename Row, std::size_t count>
    explicit constexpr code_index(const Row (&rows)[count]) {
        static_assert(count < 256);
        for (std::size_t row = 0; row < count; ++row) {
            rows_[place(rows[row].code[0], rows[row].code[1])] =
                static_cast<unsigned char>(row + 1);
        }
    }

    constexpr unsigned operator[](const char* at) const {
        const bool in_range = at[0] >= 'a' && at[0] <= 'z' && at[1] >= 'A' && at[1] <= 'z';
        return in_range ? rows_[place(at[0], at[1])] : 0U;
    }

  private:
    static constexpr std::size_t second_letters = 'z' - 'A' + 1;

    static constexpr std::size_t place(char first, char second) {
        return static_cast<std::size_t>(first - 'a') * second_letters +
               static_cast<std::size_t>(second - 'A');
    }

    std::array<unsigned char, 26 * second_letters> rows_{};
};

}  // namespace scheme1
