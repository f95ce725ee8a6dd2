// A growing array without a single test for null.
#include <support/safealloc.h>

#include <cstdio>
#include <cstdlib>

int main() {
    std::size_t capacity = 2;
    auto* squares = static_cast<int*>(safecalloc(capacity, sizeof(int)));
    for (std::size_t i = 0; i < 10; ++i) {
        if (i == capacity) {
            capacity *= 2;
            squares = static_cast<int*>(saferealloc(squares, capacity * sizeof(int)));
        }
        squares[i] = static_cast<int>(i * i);
    }
    std::printf("%d, in room for %zu\n", squares[9], capacity);
    std::free(squares);  // the C library's own
}
