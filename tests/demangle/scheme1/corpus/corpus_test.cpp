// Scheme 1 on real names: the C++ run-time library's own symbols, beside that library's
// own demangler. Skipped where the library is linked statically.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <exception>
#include <map>
#include <string>
#include <vector>

#include "tests/demangle/scheme1/corpus/agreement.h"
#include "tests/demangle/scheme1/corpus/elf_symbols.h"
#include "tests/demangle/scheme1/corpus/house_style.h"
#include "tests/demangle/scheme1/corpus/refusals.h"
#include "tests/demangle/scheme1/decode.h"

namespace {

constexpr const char* bad = "<bad name>";
constexpr int failures_shown = 20;

std::vector<std::string> runtime_library_symbols() {
    Dl_info library{};
    const auto function = reinterpret_cast<const void*>(&std::terminate);
    if (dladdr(function, &library) == 0 || library.dli_fname == nullptr ||
        std::string(library.dli_fname).find(".so") == std::string::npos) {
        return {};
    }
    return mangled_symbols(library.dli_fname);
}

class Scheme1Corpus : public testing::Test {
  protected:
    void SetUp() override {
        names_ = runtime_library_symbols();
        if (names_.empty()) {
            GTEST_SKIP() << "the C++ run-time library is not a shared one here";
        }
    }

    std::vector<std::string> names_;
};

}  // namespace

TEST_F(Scheme1Corpus, ExtendedNamesDecodeWhateverTheOtherDemanglerDecodes) {
    const ExtendedNames extended;
    int refused = 0;
    for (const std::string& name : names_) {
        if (!black_box_text(name).empty() && decoded(name) == bad) {
            if (++refused <= failures_shown) {
                ADD_FAILURE() << name;
            }
        }
    }
    EXPECT_EQ(refused, 0) << "of " << names_.size();
}

TEST_F(Scheme1Corpus, StrictDecodingRefusesOnlyFormsBeyondItsTables) {
    int unexplained = 0;
    for (const std::string& name : names_) {
        const std::string other = black_box_text(name);
        if (!other.empty() && decoded(name) == bad && extended_form(name, other).empty()) {
            if (++unexplained <= failures_shown) {
                ADD_FAILURE() << name;
            }
        }
    }
    EXPECT_EQ(unexplained, 0) << "of " << names_.size();
}

TEST_F(Scheme1Corpus, StrictTextsAreThoseOfExtendedNames) {
    for (const std::string& name : names_) {
        const std::string strict = decoded(name);
        if (strict != bad) {
            const ExtendedNames extended;
            ASSERT_EQ(decoded(name), strict) << name;
        }
    }
}

TEST_F(Scheme1Corpus, TextsAgreeWithTheOtherDemanglerButForStyle) {
    const ExtendedNames extended;
    std::map<Agreement, int> counts;
    int shown = 0;
    for (const std::string& name : names_) {
        const std::string other = black_box_text(name);
        if (other.empty()) {
            continue;
        }
        const std::string ours = decoded(name);
        const Agreement agreement = compare(name, other, ours);
        ++counts[agreement];
        if (agreement == Agreement::different && ++shown <= failures_shown) {
            ADD_FAILURE() << name << "\ntheirs " << house_style(name, other) << "\nours   "
                          << without_kinds(ours);
        }
    }
    EXPECT_EQ(counts[Agreement::different], 0);
    // Most of the library's names have nothing that the rules do not cover.
    EXPECT_GT(counts[Agreement::same] * 10, static_cast<int>(names_.size()) * 7);
}

TEST_F(Scheme1Corpus, KindsStandBehindTheNamesThatHaveThem) {
    for (const std::string& name : names_) {
        const std::string text = decoded(name);
        const bool base = text.ends_with(" [subobject]");
        const bool deleting = text.ends_with(" [deleting]");
        if (base) {
            EXPECT_TRUE(name.find("C2") != std::string::npos ||
                        name.find("D2") != std::string::npos)
                << name;
        }
        if (deleting) {
            EXPECT_NE(name.find("D0"), std::string::npos) << name;
        }
    }
}
