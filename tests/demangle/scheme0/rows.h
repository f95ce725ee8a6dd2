// Rows of scheme-0 names with their texts, and the parts of names whose lengths would
// otherwise be counted by hand.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/demangle/hostile.h"

inline const std::string bad_name = "<bad name>";

inline std::string decoded(const std::string& name, int decorated = 1) {
    const hostile::Result result = hostile::decode_whole(name, decorated);
    if (!result.damage.empty()) {
        return result.damage;
    }
    return result.error ? bad_name : result.text;
}

struct Row {
    std::string name;
    std::string text;
};

inline void expect_rows(const std::vector<Row>& rows, int decorated = 1) {
    for (const Row& row : rows) {
        EXPECT_EQ(decoded(row.name, decorated), row.text) << row.name;
    }
}

// The same in both modes.
inline void expect_rows_alike(const std::vector<Row>& rows) {
    expect_rows(rows, 1);
    expect_rows(rows, 0);
}

// Types, as the second parameter of a function shows them.
inline void expect_types(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        const std::string expected = row.text == bad_name ? bad_name : "f(A::B, " + row.text + ")";
        EXPECT_EQ(decoded("f__FQ2_1A1B" + row.name), expected) << row.name;
    }
}

// "__tm__" n "_" items
inline std::string args(std::string_view items) {
    return "__tm__" + std::to_string(items.size() + 1) + "_" + std::string(items);
}

// length run
inline std::string run(std::string_view text) {
    return std::to_string(text.size()) + std::string(text);
}

// Operands, as the arguments of a function template show them.
inline void expect_operands(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        const std::string expected = row.text == bad_name ? bad_name : "f<" + row.text + ">()";
        EXPECT_EQ(decoded("f" + args("X" + row.name) + "__Fv"), expected) << row.name;
    }
}
