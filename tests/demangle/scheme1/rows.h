// Rows of scheme-1 names with their texts.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>

#include "tests/demangle/scheme1/decode.h"

inline constexpr const char* bad = "<bad name>";

struct Row {
    const char* name;
    const char* text;
};

template <std::size_t count>
void expect_rows(const Row (&rows)[count], bool decorated = true) {
    for (const Row& row : rows) {
        EXPECT_EQ(decoded(row.name, decorated), row.text) << row.name;
    }
}
