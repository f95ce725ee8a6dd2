// What clist says: on standard error, each message behind the program's name.
#pragma once

#include <string_view>

#include "gas2interlist/report.h"

namespace clist {

inline void say(std::string_view message) {
    gas2interlist::report({message});
}

}  // namespace clist
