// Has the C library take memory in one piece rather than vector by vector.
#include "clist/memory.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace clist {

void expect_text(std::size_t size) {
#if defined(M_TOP_PAD) && defined(MADV_HUGEPAGE)
    constexpr std::size_t least = std::size_t{4} << 20;
    constexpr std::size_t most = std::size_t{512} << 20;
    if (size < least) {
        return;
    }
    constexpr int greatest_threshold = 32 << 20;  // that the library takes
    const int piece = static_cast<int>(std::min(size, most));
    mallopt(M_MMAP_THRESHOLD, greatest_threshold);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_TOP_PAD, piece);
    // The heap's end moves by the whole piece with the first request that needs more.
    constexpr std::size_t huge = std::size_t{2} << 20;
    const auto begin = (reinterpret_cast<std::uintptr_t>(sbrk(0)) + huge - 1) / huge * huge;
    void* volatile first = std::malloc(huge);  // volatile: no compiler leaves it out
    std::free(first);
    const auto end = reinterpret_cast<std::uintptr_t>(sbrk(0));
    if (begin < end) {
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    }
#endif
}

}  // namespace clist
