// Writing to the listing.
#include "interlist/listing_output.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <span>

#include "interlist/diagnostics.h"
#include "interlist/state.h"

namespace {

std::array<char, 65536> gathered;
std::size_t gathered_size = 0;  // moves on only when the text is in place

void listing_failed() {
    file_error("Failed to close", temp_file_name);
}

// The free part of the buffer, never empty. Blocks are written full, so that
// they stay aligned in the file.
std::span<char> room() {
    if (gathered_size == gathered.size() && !flush_listing()) {
        listing_failed();
    }
    return std::span(gathered).subspan(gathered_size);
}

}  // namespace

// The text is let go of first: whatever happens to it, it is not written twice.
bool flush_listing() {
    const std::size_t size = gathered_size;
    gathered_size = 0;
    return size == 0 || LIST == nullptr || std::fwrite(gathered.data(), 1, size, LIST) == size;
}

void close_listing() {
    if (LIST == nullptr) {
        return;
    }
    if (!flush_listing() || std::fclose(LIST) != 0) {
        listing_failed();
    }
    LIST = nullptr;
}

void write_listing(std::string_view text) {
    while (!text.empty()) {
        const std::span<char> free = room();
        const std::size_t size = std::min(free.size(), text.size());
        std::memcpy(free.data(), text.data(), size);
        gathered_size += size;
        text.remove_prefix(size);
    }
}

void fill_listing(char fill, std::size_t count) {
    while (count > 0) {
        const std::span<char> free = room();
        const std::size_t size = std::min(free.size(), count);
        std::memset(free.data(), fill, size);
        gathered_size += size;
        count -= size;
    }
}
