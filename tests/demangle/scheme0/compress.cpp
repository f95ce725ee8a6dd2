// The compressor: back-references wherever a component comes again, whether that is
// shorter or not.
#include "tests/demangle/scheme0/compress.h"

#include <cstddef>
#include <map>

namespace scheme0 {

// A length and that many characters, or nothing when none begins there.
static std::string_view component_at(std::string_view name, std::size_t at) {
    std::size_t length = 0;
    std::size_t end = at;
    for (; end < name.size() && name[end] >= '0' && name[end] <= '9'; ++end) {
        length = length * 10 + static_cast<std::size_t>(name[end] - '0');
        if (length > name.size()) {
            return {};
        }
    }
    return end == at || length == 0 || length > name.size() - end
               ? std::string_view{}
               : name.substr(at, end - at + length);
}

std::string compressed(std::string_view name) {
    std::map<std::string_view, std::size_t> first_places;
    std::string text = "__CPR" + std::to_string(name.size()) + "__";
    for (std::size_t at = 0; at < name.size();) {
        const std::string_view component = component_at(name, at);
        if (!component.empty()) {
            const auto [place, fresh] = first_places.emplace(component, at);
            if (!fresh && place->second + component.size() <= at) {
                text += "J" + std::to_string(place->second) + "J";
                at += component.size();
                continue;
            }
        }
        text += name[at] == 'J' ? "JJ" : std::string(1, name[at]);
        ++at;
    }
    return text;
}

}  // namespace scheme0
