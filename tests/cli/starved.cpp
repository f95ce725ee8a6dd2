// Memory that runs out for good: the whole program takes it from here, and gets so many
// portions as the environment allows.
#include <cstdlib>
#include <new>

static int portions_left() {
    const char* const allowed = std::getenv("PORTIONS_OF_MEMORY");
    return allowed == nullptr ? 0 : std::atoi(allowed);
}

void* operator new(std::size_t size) {
    static int left = portions_left();
    void* const portion = left > 0 ? std::malloc(size) : nullptr;
    if (portion == nullptr) {
        if (const std::new_handler without_memory = std::get_new_handler()) {
            without_memory();
        }
        throw std::bad_alloc();
    }
    --left;
    return portion;
}

void operator delete(void* portion) noexcept {
    std::free(portion);
}

void operator delete(void* portion, std::size_t) noexcept {
    std::free(portion);
}
