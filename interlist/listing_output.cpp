// Writing to the listing.
#include "interlist/listing_output.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "interlist/diagnostics.h"
#include "interlist/state.h"

void write_listing(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), LIST) != text.size()) {
        file_error("Failed to close", temp_file_name);
    }
}

void fill_listing(char fill, std::size_t count) {
    std::array<char, 256> run{};
    run.fill(fill);
    for (; count > run.size(); count -= run.size()) {
        write_listing({run.data(), run.size()});
    }
    write_listing({run.data(), count});
}
