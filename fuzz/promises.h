// What the fuzz targets of both mangling schemes check of a name.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/demangle/hostile.h"

// Decodes `name` by the scheme in force, plain and decorated; ends the process when
// something was written that should not be, or when the results contradict each other.
inline void expect_promises(const std::string& name) {
    for (const int decorated : {0, 1}) {
        const std::string broken = hostile::broken_promise(name, decorated);
        if (!broken.empty()) {
            std::fprintf(stderr, "%s: %s\n", hostile::printable(name).c_str(), broken.c_str());
            std::abort();
        }
    }
}
