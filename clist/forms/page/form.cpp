// The page as one form of a listing: a unit for each input.
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "clist/forms/forms.h"
#include "clist/forms/page.h"
#include "clist/forms/page/chunk.h"
#include "clist/forms/page/unit.h"

namespace clist {

bool has_page() {
    return true;
}

// Now, or when those who want the same page each time say it is.
static std::string now() {
    const char* const fixed = std::getenv("SOURCE_DATE_EPOCH");
    const std::time_t time = fixed == nullptr ? std::time(nullptr) : std::atoll(fixed);
    std::tm parts = {};
    gmtime_r(&time, &parts);
    char text[64];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

bool write_page(const form_input& from, output& to) {
    if (from.models.empty()) {
        return true;
    }
    page::source_texts texts(from.models.front().sources());
    std::vector<page::unit> units;
    const std::string made = now();
    for (std::size_t i = 0; i < from.models.size(); ++i) {
        units.push_back(page::make_unit(from, i, texts, made));
    }
    std::vector<page::chunk> chunks;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const std::string number = std::to_string(i) + '/';
        const page::unit& it = units[i];
        chunks.push_back({.name = number + "unit", .text = it.head});
        chunks.push_back({.name = number + "rows", .text = it.rows});
        chunks.push_back({.name = number + "code", .text = it.code});
        chunks.push_back({.name = number + "hidden", .text = it.hidden});
    }
    for (const page::source_texts::named_text& it : texts.all()) {
        chunks.push_back({.name = std::string(it.chunk), .text = it.text});
    }
    page::write(chunks, {}, to);
    return true;
}

}  // namespace clist
