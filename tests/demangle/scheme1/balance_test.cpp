// Scheme 1: whatever a name holds, brackets are balanced in a text that comes out without
// an error.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/demangle/hostile.h"
#include "tests/demangle/scheme1/decode.h"
#include "tests/demangle/scheme1/draw.h"

namespace {

// Operators that show an angle bracket, the longest first. In an expression blanks stand
// around them, but for the arrows; as names they stand behind "operator ".
constexpr std::string_view operators[] = {
    "<=>", "<<=", ">>=", "->*", "<<", ">>", "<=", ">=", "->", "<?", ">?", "<", ">"};

// Names of operators that end in a blank, which opens no operator.
constexpr std::string_view blank_names[] = {"new ", "new[] ", "delete ", "delete[] "};

template <std::size_t count>
std::size_t length_of_one(const std::string_view (&ops)[count], std::string_view text) {
    for (const std::string_view op : ops) {
        if (text.starts_with(op)) {
            return op.size();
        }
    }
    return 0;
}

// The text without the operators among whose letters are angle brackets, and without
// what an empty string literal shows.
std::string without_operators(std::string_view text) {
    std::string left;
    while (!text.empty()) {
        constexpr std::string_view name = "operator ";
        std::size_t skipped = 0;
        if (text.starts_with("operator <unnamed>")) {
            skipped = 0;
        } else if (text.starts_with(name)) {
            const std::string_view op = text.substr(name.size());
            skipped = name.size() +
                      std::max(length_of_one(operators, op), length_of_one(blank_names, op));
        } else if (text.starts_with(' ')) {
            const std::size_t length = length_of_one(operators, text.substr(1));
            skipped = length != 0 && text.substr(1 + length).starts_with(' ') ? length + 1 : 0;
        } else if (text.starts_with("->") || text.starts_with("--")) {
            skipped = 2;
        }
        if (skipped == 0) {
            left += text.front();
            skipped = 1;
        }
        text.remove_prefix(skipped);
    }
    return left;
}

bool is_balanced(std::string_view text) {
    constexpr std::string_view opening = "([{<";
    constexpr std::string_view closing = ")]}>";
    std::string open;
    for (const char character : without_operators(text)) {
        if (opening.find(character) != std::string_view::npos) {
            open += character;
        } else if (const std::size_t kind = closing.find(character);
                   kind != std::string_view::npos) {
            if (open.empty() || open.back() != opening[kind]) {
                return false;
            }
            open.pop_back();
        }
    }
    return open.empty();
}

std::string text_of(const std::string& name) {
    const std::string text = decoded(name);
    return text == "<bad name>" ? "" : text;
}

// What a mutation puts into a name: no letters that are brackets themselves.
constexpr std::string_view pieces[] = {
    "_",   "E",      "I",    "S_",  "S0_", "S1_", "S2_", "S3_",   "S4_",   "T_",  "T0_", "N",
    "Z",   "L",      "X",    "D",   "K",   "P",   "R",   "O",     "F",     "A",   "A3_", "A_",
    "M",   "B1x",    "J",    "C1",  "U",   "Ul",  "Ut_", "U3AS1", "v",     "i",   "z",   "Dp",
    "Dt",  "DT",     "Dv4_", "DB8", "Do",  "DO",  "Dw",  "Dx",    "cl",    "cv",  "pl",  "gt",
    "sr",  "srN",    "on",   "dn",  "fp_", "fl",  "il",  "tl",    "di",    "nw",  "st",  "sZ",
    "L_Z", "LA4_Kc", "St",   "Ss",  "Sa",  "1x",  "1A",  "FvvE",  "PFivE", "IiE", "0",   "1",
};

std::string mutated(std::string name, std::mt19937_64& engine) {
    const auto below = [&](std::size_t limit) {
        return static_cast<std::size_t>(engine() % limit);
    };
    for (std::size_t changes = 1 + below(3); changes != 0; --changes) {
        const std::size_t at = below(name.size() + 1);
        const std::string piece(pieces[below(std::size(pieces))]);
        switch (below(4)) {
            case 0:
                name.insert(at, piece);
                break;
            case 1:
                name.erase(at, 1 + below(3));
                break;
            case 2:
                name.replace(at, std::min<std::size_t>(piece.size(), name.size() - at), piece);
                break;
            default:
                name.insert(at, name.substr(below(name.size() + 1), below(8)));
                break;
        }
    }
    return name;
}

void expect_balanced(const std::string& name) {
    const std::string text = text_of(name);
    // Of an operator that ends a list by itself only a reader knows what it is.
    if (text.find("operator >") == std::string::npos) {
        ASSERT_TRUE(is_balanced(text)) << name << "\n" << text;
    }
}

}  // namespace

TEST(Scheme1Balance, TellsWhetherBracketsAreBalanced) {
    for (const char* text :
         {"", "f(int (&)[3])", "A<(1 > 2)>", "operator <<<int>(T1)", "operator < <int>(T1)",
          "T1->x", "A<T1 ->* T2>", "f(A<B<int>>)", "A<1 < 2>", "int{T1, 2}", "x <=> y",
          "A::operator ->() const", "operator <=><int>()", "A<T1-->", "f(A<operator new > &)"}) {
        EXPECT_TRUE(is_balanced(text)) << text;
    }
    for (const char* text : {"f(", "f)", "f(int (&)[3)]", "A<1 > 2", "A<int", "f(A<B<int>)",
                             "(int (*)[3]", "{", "operator <<int>("}) {
        EXPECT_FALSE(is_balanced(text)) << text;
    }
}

TEST(Scheme1Balance, OfNamesThatGoWrongInAnyWay) {
    std::mt19937_64 engine(1);
    for (std::uint64_t seed = 0; seed < hostile::scaled(60000); ++seed) {
        const bool extended = seed % 4 == 0;
        const std::string name = scheme1::draw_declaration(seed, extended).name;
        for (int i = 0; i < 6; ++i) {
            const std::string changed = mutated(name, engine);
            ASSERT_NO_FATAL_FAILURE(expect_balanced(changed));
            const ExtendedNames open;
            ASSERT_NO_FATAL_FAILURE(expect_balanced(changed));
        }
    }
}

TEST(Scheme1Balance, OfRandomPieces) {
    std::mt19937_64 engine(2);
    for (std::uint64_t round = 0; round < hostile::scaled(400000); ++round) {
        std::string name = round % 2 == 0 ? "_Z1f" : "_Z1fIiEv";
        for (std::uint64_t count = 1 + engine() % 10; count != 0; --count) {
            name += pieces[engine() % std::size(pieces)];
        }
        ASSERT_NO_FATAL_FAILURE(expect_balanced(name));
        const ExtendedNames open;
        ASSERT_NO_FATAL_FAILURE(expect_balanced(name));
    }
}
