// Loaded in front of the C library: the n-th allocation fails, or all from the n-th
// on where FAILING_ALLOCATION ends with "+". Writes a byte to mark_descriptor then.
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

static constexpr int mark_descriptor = 99;

// The names that the C library keeps for those who take the others.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)

static long failing = -1;  // counts down to the allocation that fails; -1: not yet known
static bool lasting = false;

static void read_wish() {
    const char* const wish = std::getenv("FAILING_ALLOCATION");
    char* rest = nullptr;
    failing = wish != nullptr ? std::strtol(wish, &rest, 10) : 0;
    lasting = rest != nullptr && *rest == '+';
    // The programs that this one starts are to be left alone.
    unsetenv("FAILING_ALLOCATION");
}

static bool fails() {
    if (failing < 0) {
        read_wish();
    }
    if (failing == 0 || --failing > 0) {
        return false;
    }
    if (lasting) {
        failing = 1;
    }
    static_cast<void>(!write(mark_descriptor, "!", 1));
    errno = ENOMEM;
    return true;
}

extern "C" {

void* malloc(std::size_t size) {
    return fails() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    return fails() ? nullptr : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    if (fails()) {
        return ENOMEM;
    }
    *block = __libc_memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

}  // extern "C"
