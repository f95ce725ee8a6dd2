// Feeds symdecode's passes arbitrary text, whole and in pieces: no crash, the same
// output either way, and what holds no underscore comes through unchanged.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "symdecode/filter.h"

using pass = std::size_t (*)(text_filter&, std::string_view, bool, std::string&);

static std::string run(text_filter filter, pass through, std::string_view text, std::size_t step) {
    std::string held;
    std::string result;
    for (bool last = false; !last;) {
        const std::size_t size = std::min(step, text.size());
        held += text.substr(0, size);
        text.remove_prefix(size);
        last = text.empty();
        for (bool again = true; again;) {
            std::string out;
            held.erase(0, through(filter, held, last, out));
            again = out.size() > output_step && !held.empty();
            result += out;
        }
    }
    if (!held.empty()) {
        std::abort();
    }
    return result;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    text_filter filter;
    filter.decoder.settings.scheme = data[0] % 3 - 1;
    filter.decoder.settings.names_only = (data[0] & 16) != 0;
    filter.decoder.settings.strip_underscore = (data[0] & 32) != 0;
    filter.decoder.settings.extended = (data[0] & 64) == 0;
    filter.json = (data[0] & 128) != 0;
    const std::size_t step = 1 + data[1] % 32;
    const std::string_view text(reinterpret_cast<const char*>(data + 2), size - 2);

    for (const pass through : {filter_text, filter_lines}) {
        const std::string whole = run(filter, through, text, text.size() + 1);
        // Large output makes the passes stop inside a run, which the pieces then begin with.
        if (whole.size() < output_step && run(filter, through, text, step) != whole) {
            std::abort();
        }
        if (!filter.json && text.find('_') == std::string_view::npos && whole != text) {
            std::abort();
        }
    }
    return 0;
}
