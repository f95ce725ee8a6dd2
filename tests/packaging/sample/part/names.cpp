#include <string_view>

#include "scale.h"

namespace names {
constexpr std::string_view all[] = {"one", "three"};
}

int name_length() {
    int sum = 0;
    for (const auto name : names::all) {
        sum += static_cast<int>(name.size());
    }
    return sum;
}
