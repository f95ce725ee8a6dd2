// Makes compressed names ("__CPR12__...") out of ordinary scheme-0 names; used by the
// encoder and mutation tests.
#pragma once

#include <string>
#include <string_view>

namespace scheme0 {

// The name with each length-prefixed component that stood whole before replaced by a
// back-reference to its first place, and "J" doubled.
std::string compressed(std::string_view name);

// What the expansion of a compressed name occupies of the caller's buffer, its NUL included.
inline std::size_t expansion_size(std::string_view name) {
    return name.size() + 1;
}

}  // namespace scheme0
