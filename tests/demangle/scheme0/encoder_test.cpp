// Scheme-0 declarations drawn from a seed, as they are and compressed: the decoder must
// read every name as the text that was drawn with it.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "demangle/decode_id.h"
#include "tests/demangle/hostile.h"
#include "tests/demangle/scheme0/compress.h"
#include "tests/demangle/scheme0/draw.h"

namespace {

constexpr std::uint64_t declaration_count = 100000;
constexpr int reported_at_most = 10;

// Reports a difference, and stops a test that only repeats itself.
class Report {
  public:
    void difference(std::uint64_t seed, const std::string& name, int decorated,
                    std::string_view expected, const std::string& what) {
        ADD_FAILURE() << "seed " << seed << ", decorated " << decorated << "\n  name     " << name
                      << "\n  expected " << expected << "\n  got      " << what;
        ++count_;
    }
    bool enough() const { return count_ >= reported_at_most; }

  private:
    int count_ = 0;
};

// What decode_id makes of a text: the name itself when there is none.
std::string_view shown(std::string_view name, std::string_view text) {
    return text.empty() ? name : text;
}

TEST(Scheme0Encoder, DrawnDeclarationsReadAsTheyWereDrawn) {
    Report report;
    for (std::uint64_t seed = 0; seed != declaration_count && !report.enough(); ++seed) {
        const scheme0::Declaration drawn = scheme0::draw_declaration(seed);
        for (const int decorated : {1, 0}) {
            if (decorated == 0 && !drawn.plain_name) {
                continue;
            }
            const std::string& text = decorated != 0 ? drawn.decorated : drawn.undecorated;
            const hostile::Result result = hostile::decode(drawn.name, decorated, text.size() + 1);
            const std::string what = hostile::difference(result, text, text.size() + 1, 0);
            if (!what.empty()) {
                report.difference(seed, drawn.name, decorated, text, what);
            }
            const std::string_view id = decode_id(drawn.name.c_str(), decorated);
            if (id != shown(drawn.name, text)) {
                report.difference(seed, drawn.name, decorated, text,
                                  "decode_id: " + std::string(id));
            }
        }
    }
}

TEST(Scheme0Encoder, CompressedNamesReadAsTheNamesTheyStandFor) {
    Report report;
    std::uint64_t referring = 0;
    for (std::uint64_t seed = 0; seed != declaration_count && !report.enough(); ++seed) {
        const scheme0::Declaration drawn = scheme0::draw_declaration(seed);
        const std::string name = scheme0::compressed(drawn.name);
        const std::size_t prefix_size = std::string_view(name).find("__", 2) + 2;
        const std::size_t expansion = scheme0::expansion_size(drawn.name);
        referring += name.size() < prefix_size + drawn.name.size();
        for (const int decorated : {1, 0}) {
            if (decorated == 0 && !drawn.plain_name) {
                continue;
            }
            const std::string& text = decorated != 0 ? drawn.decorated : drawn.undecorated;
            const std::size_t size = text.size() + 1 + expansion;
            const hostile::Result result = hostile::decode(name, decorated, size);
            const std::string what = hostile::difference(result, text, size, expansion);
            if (!what.empty()) {
                report.difference(seed, name, decorated, text, what);
            }
            const std::string_view id = decode_id(name.c_str(), decorated);
            if (id != shown(name, text)) {
                report.difference(seed, name, decorated, text, "decode_id: " + std::string(id));
            }
        }
    }
    EXPECT_GT(referring, 5000U) << "hardly a name has back-references that save room";
}

// The drawing itself: no form of the grammar may silently drop out of it.
TEST(Scheme0Encoder, EveryFormIsDrawn) {
    std::set<std::string> missing = {
        "virtual function table for ", " in ", " (ambiguous)", "can-be-instantiated flag for ",
        "do-not-instantiate flag for ", "template-instantiation-request flag for ",
        "initialization guard variable for ", "thread_local initialization routine for ",
        "ifunc variable for ", "resolver function for ",
        "resolver function for ifunc function for ", "ifunc function for ",
        " __attribute__((target(", "thread_local wrapper for ", "type identifier for ",
        "typeinfo for ", "surrogate in class ",
        // Types.
        "signed ", "unsigned ", "_Complex ", "bool", "wchar_t", "char16_t", "char32_t", "short",
        "long long", "float", "long double", "__int8", "__int16", "__int32", "__int40_t", "__int64",
        "__int128", "std::nullptr_t", "__nullptr", "auto", "decltype(auto)", "typeof(", "decltype(",
        "decltype((", "__underlying_type(", "interior_ptr<", "pin_ptr<", "^", "%", "(^)", "(*)[",
        "(&)[", "(&&)", "::*", "(*const)(", "(**)(", "[]", "][", "__attribute__((vector_size(16)))",
        "const volatile restrict ", "*const *", ") const volatile restrict &&", ") &", ", ...)",
        "(...)", "()", "T1", "U2", "V3", "T_4_1", "T_0_", "N1", "O2", "P3", "N_4_1",
        // Names.
        "[unnamed type (instance ", "[lambda (instance ",
        "[lambda in member initializer (instance ", "[lambda in default argument (instance ", "::~",
        "operator \"\"_km", "operator < <", "operator int", "operator const ", "<>", "::::",
        // Values.
        "true", "false", "nullptr", "5U", "5L", "5UL", "5LL", "5ULL", "(char)", "(Color)",
        "(float)", "(T1)", "-", "e+0", "this", "param#1", "[up 1 level]", "[up 3 levels]",
        // Expressions.
        " ? ", " : ", "++)", "--)", "->", ".*", ")(", "builtin-operation(", "subscript(", "new ",
        "new[] ", "gcnew ", "delete ", "delete[] ", "static_cast<", "dynamic_cast<", "const_cast<",
        "reinterpret_cast<", "safe_cast<", "::typeid", "sizeof(", "sizeof...(", "__alignof__(",
        "__uuidof(", "typeid(", "noexcept(", "__real(", "__imag(", "throw ", "co_await ", "...",
        "{", "int{", "<(", " <? ", " >? ", " ->* "};
    for (unsigned row = 0; row != scheme0::operator_code_count; ++row) {
        if (scheme0::names_function(scheme0::operator_codes[row])) {
            missing.insert("operator " + std::string(scheme0::operator_codes[row].text));
        }
    }
    for (std::uint64_t seed = 0; seed != declaration_count && !missing.empty(); ++seed) {
        const std::string text = scheme0::draw_declaration(seed).decorated;
        std::erase_if(
            missing, [&](const std::string& form) { return text.find(form) != std::string::npos; });
    }
    for (const std::string& form : missing) {
        ADD_FAILURE() << "never drawn: " << form;
    }
}

}  // namespace
