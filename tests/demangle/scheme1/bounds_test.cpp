// Scheme 1 and names built to exhaust it: nesting without end on a small stack, and
// substitutions that multiply their text at each step. All of them end, as bad names
// where the text or the depth passes its bound; none is timed here.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <string>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "tests/demangle/scheme1/decode.h"

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif
#else
constexpr bool sanitized = false;
#endif

// Sanitizers pad each frame, and without optimisation nothing shares one, so such builds
// get more; the bound is for real ones.
#ifdef __OPTIMIZE__
constexpr bool optimised = true;
#else
constexpr bool optimised = false;
#endif
constexpr std::size_t stack_size = (sanitized ? 8UL : optimised ? 1UL : 4UL) * 512 * 1024;

void* run_function(void* argument) {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
}

void on_small_stack(std::function<void()> function) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stack_size), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, run_function, &function), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (; count != 0; --count) {
        all += text;
    }
    return all;
}

// A name that opens something again and again, holds something, and closes it all.
struct Nest {
    const char* start;
    const char* open;
    const char* middle;
    const char* close;
    const char* end;
};

std::string nested(const Nest& nest, std::size_t depth) {
    return nest.start + repeated(nest.open, depth) + nest.middle + repeated(nest.close, depth) +
           nest.end;
}

constexpr Nest nests[] = {
    {"", "P", "i", "", ""},
    {"", "RK", "i", "", ""},
    {"", "O", "i", "", ""},
    {"", "KV", "i", "", ""},
    {"", "C", "f", "", ""},
    {"", "A3_", "i", "", ""},
    {"", "A_", "i", "", ""},
    {"", "M1A", "i", "", ""},
    {"", "M", "i", "i", ""},
    {"", "F", "v", "vE", ""},
    {"", "PF", "v", "vE", ""},
    {"", "Fv", "v", "E", ""},
    {"", "Dp", "i", "", ""},
    {"", "Dv4_", "f", "", ""},
    {"", "Dv_", "T_", "_f", ""},
    {"", "U3AS1", "i", "", ""},
    {"", "U1AI", "i", "Ei", ""},
    {"", "u1AI", "i", "E", ""},
    {"", "1AI", "i", "E", ""},
    {"", "N1AI", "i", "EE", ""},
    {"", "T_I", "i", "E", ""},
    {"", "SaI", "i", "E", ""},
    {"", "1AIJ", "i", "EE", ""},
    {"1AI", "J", "i", "E", "E"},
    {"", "DTcv", "i", "T_E", ""},
    {"", "DOT_", "FvvE", "", ""},
    {"", "DO", "T_", "EFvvE", ""},
    {"", "Dw", "i", "EFvvE", ""},
    {"", "A", "T_", "_i", ""},
    {"", "Dt", "T_", "E", ""},
    {"Dt", "ng", "T_", "", "E"},
    {"Dt", "pl", "T_", "T_", "E"},
    {"Dt", "plT_", "T_", "", "E"},
    {"Dt", "qu", "T_", "T_T_", "E"},
    {"Dt", "cl", "T_", "E", "E"},
    {"Dt", "cp1f", "T_", "E", "E"},
    {"Dt", "il", "T_", "E", "E"},
    {"Dt", "tli", "T_", "E", "E"},
    {"Dt", "cvi", "T_", "", "E"},
    {"Dt", "cvi_", "T_", "E", "E"},
    {"Dt", "nw_ipi", "T_", "E", "E"},
    {"Dt", "nw", "T_", "_iE", "E"},
    {"Dt", "sz", "T_", "", "E"},
    {"Dt", "st", "i", "", "E"},
    {"Dt", "stDt", "T_", "E", "E"},
    {"Dt", "sci", "T_", "", "E"},
    {"Dt", "dt", "T_", "1x", "E"},
    {"Dt", "flpl", "T_", "", "E"},
    {"Dt", "fLpl", "T_", "T_", "E"},
    {"Dt", "sr", "T_", "1x", "E"},
    {"Dt", "srDt", "T_", "E1x", "E"},
    {"Dt", "sp", "T_", "", "E"},
    {"Dt", "tw", "T_", "", "E"},
    {"Dt", "sP", "T_", "E", "E"},
    {"Dt", "u1aX", "T_", "EE", "E"},
    {"Dt", "v18alignofe", "T_", "", "E"},
    {"Dt", "gs", "1x", "", "E"},
    {"Dt", "1fIX", "T_", "EE", "E"},
    {"Dt", "onplIX", "T_", "EE", "E"},
    {"Dt", "dnDt", "T_", "E", "E"},
    {"Dt", "L_Z1fIX", "T_", "EEvvE", "E"},
    {"Dt", "L", "i", "0E", "E"},
    {"Dt", "di1x", "T_", "", "E"},
    {"Dt", "sr1AIDt", "T_", "EE1x", "E"},
    {"Dt", "sr1AIDt", "T_", "EE1BE1x", "E"},
    {"Dt", "sr1B1AIDt", "T_", "EE", "E"},
    {"Dt", "srN1AIDt", "T_", "EEE1x", "E"},
    {"Dt", "soi", "T_", "4_1pE", "E"},
    {"Dt", "soDt", "T_", "ET_E", "E"},
    {"Dt", "mci", "T_", "8E", "E"},
    {"Dt", "rqX", "T_", "NE", "E"},
    {"Dt", "rqQ", "T_", "E", "E"},
    {"Dt", "rqTDt", "T_", "EE", "E"},
    {"Dt", "rQDt", "T_", "E_TiE", "E"},
    {"_Z", "Z", "1fv", "E1x", ""},
    {"_Z", "Z", "1fv", "E1xv", ""},
    {"_Z", "Z", "1fv", "EN1A1gEv", ""},
    {"_Z", "Z", "1fv", "Es", ""},
    {"_Z", "Z", "1fv", "Ed_1xv", ""},
    {"_Z", "Z", "1fIiEvT_", "E1xIiEvT_", ""},
    {"_Z1f", "Z1fvE1AI", "i", "E", ""},
    {"_Z1f", "Z1f", "v", "E1A", ""},
    {"_Z1fI", "L_Z1fI", "i", "EvvE", "Evv"},
    {"_ZN", "1A", "1f", "", "Ev"},
    {"_ZN", "1AI", "i", "E", "1fEv"},
    {"_ZN", "1AIiE", "1f", "", "Ev"},
    {"_ZN1A", "cv", "i", "", "Ev"},
    {"_ZN1A", "cvN1A", "cvi", "E", "Ev"},
    {"_ZNUl", "NUl", "v", "E_E", "E_1fEv"},
    {"_Z1f", "NUl", "i", "E_1AE", ""},
    {"_ZN1A", "CI1N1A", "C1", "E", "Ei"},
    {"_ZN1ACI1", "N1BCI1", "1C", "E", "Ei"},
    {"_Z", "Th1_", "1fv", "", ""},
    {"_Z", "Tch1_h1_", "1fv", "", ""},
    {"_Z", "GV", "1x", "", ""},
    {"_Z", "TV", "1x", "", ""},
    {"_Z1f", "Q", "1g", "", "i"},
    {"_Z1f", "Q1g", "", "", "i"},
    {"_Z1f", "B1x", "", "", "i"},
    {"_Z", "L", "1f", "", "i"},
    {"_ZDC", "1a", "", "", "E"},
    {"_ZN", "Dt", "T_", "E1A", "1fEv"},
    {"_ZTI", "Ts", "1A", "", ""},
};

// Types that each hold the one before `width` times, by its number in the table.
struct Bomb {
    const char* first;
    std::size_t entries;  // that `first` leaves in the table
    const char* open;
    const char* close;
};

constexpr Bomb bombs[] = {
    {"FviE", 1, "Fv", "E"},         {"FviE", 1, "PFv", "E"},    {"1AIiE", 2, "S_I", "E"},
    {"1AIiE", 2, "NS_I", "EE"},     {"1AIiE", 2, "S_IJ", "EE"}, {"1AIiE", 2, "u1xI", "E"},
    {"1AIiE", 2, "Z1gI", "EvvE1x"}, {"1AIiE", 2, "Z1g", "E1x"}, {"1AIiE", 2, "Dw", "EFvvE"},
    {"1AIiE", 2, "DtstS_I", "EE"},  {"1AIiE", 2, "M", ""},      {"1AIiE", 2, "S_IL_Z1gI", "EvvEE"},
    {"1AIiE", 2, "DtrQ", "_TiEE"},
};

std::string bomb_name(const Bomb& bomb, std::size_t levels, std::size_t width) {
    std::string name = "_Z1f";
    name += bomb.first;
    for (std::size_t level = 0; level < levels; ++level) {
        const std::size_t last = bomb.entries - 1 + level;
        std::string use = "S";
        if (last != 0) {
            use += "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[last - 1];
        }
        use += '_';
        name += bomb.open;
        name += repeated(use, width);
        name += bomb.close;
    }
    return name;
}

// The flags that a bad name and a good one end with; anything else fails.
void ends_cleanly(const std::string& name, const Nest& nest, std::size_t depth) {
    for (const bool decorated : {true, false}) {
        const Decoded result = decode_into(name, 200, decorated);
        EXPECT_TRUE(result.guarded && result.terminated) << nest.open << " x " << depth;
        EXPECT_TRUE(result.error == 0 || result.error == 1) << nest.open << " x " << depth;
    }
    (void)decode_is_ia64_subobject(name.c_str());
}

}  // namespace

TEST(Scheme1Bounds, NestingOfEveryKindEndsOnASmallStack) {
    on_small_stack([] {
        for (const Nest& nest : nests) {
            for (const std::size_t depth : {1UL, 10UL, 100UL, 500UL, 1000UL, 1025UL, 3000UL}) {
                ends_cleanly(nested(nest, depth), nest, depth);
            }
        }
    });
}

TEST(Scheme1Bounds, NestingOfEveryKindEndsWithExtendedNames) {
    const ExtendedNames extended;
    on_small_stack([] {
        for (const Nest& nest : nests) {
            for (const std::size_t depth : {100UL, 1000UL, 3000UL}) {
                ends_cleanly(nested(nest, depth), nest, depth);
            }
        }
    });
}

TEST(Scheme1Bounds, NestingThatIsNeverClosedEndsOnASmallStack) {
    on_small_stack([] {
        for (const Nest& nest : nests) {
            for (const std::size_t depth : {100UL, 1000UL, 20000UL}) {
                ends_cleanly(nest.start + repeated(nest.open, depth), nest, depth);
            }
        }
    });
}

TEST(Scheme1Bounds, AThousandPointersAreRead) {
    on_small_stack(
        [] { EXPECT_EQ(decoded(std::string(1000, 'P') + "i"), "int " + std::string(1000, '*')); });
}

TEST(Scheme1Bounds, ALevelMoreThanTheDeepestIsABadName) {
    on_small_stack([] {
        EXPECT_EQ(decoded(std::string(1023, 'P') + "i"), "int " + std::string(1023, '*'));
        EXPECT_EQ(decoded(std::string(1024, 'P') + "i"), "<bad name>");
    });
}

TEST(Scheme1Bounds, NestedTemplateArgumentsAreRead) {
    on_small_stack([] {
        EXPECT_EQ(decoded(repeated("1AI", 200) + "i" + repeated("E", 200)),
                  repeated("A<", 200) + "int" + repeated(">", 200));
    });
}

TEST(Scheme1Bounds, NestingFarPastTheBoundIsABadName) {
    on_small_stack([] {
        for (const Nest& nest : {Nest{"", "P", "i", "", ""}, Nest{"", "1AI", "i", "E", ""},
                                 Nest{"", "PF", "v", "vE", ""}, Nest{"Dt", "ng", "T_", "", "E"},
                                 Nest{"_Z", "Z", "1fv", "E1xv", ""}, Nest{"", "M1A", "i", "", ""},
                                 Nest{"", "A_", "i", "", ""}}) {
            for (const std::size_t depth : {5000UL, 100000UL}) {
                EXPECT_EQ(decoded(nested(nest, depth)), "<bad name>")
                    << nest.open << " x " << depth;
            }
        }
    });
}

TEST(Scheme1Bounds, SubstitutionsThatMultiplyTheirTextEnd) {
    for (const Bomb& bomb : bombs) {
        for (const std::size_t width : {1UL, 2UL, 5UL, 20UL}) {
            for (const std::size_t levels : {5UL, 20UL, 34UL}) {
                const std::string name = bomb_name(bomb, levels, width);
                for (const bool decorated : {true, false}) {
                    const Decoded result = decode_into(name, 100, decorated);
                    EXPECT_TRUE(result.guarded && result.terminated) << name;
                }
                (void)decode_is_ia64_subobject(name.c_str());
            }
        }
    }
}

TEST(Scheme1Bounds, ATextPastSixteenMebibytesIsABadName) {
    // Each list holds the one before twice: a text of 2^30 times "A<int>" and more.
    const std::string name = bomb_name({"1AIiE", 2, "S_I", "E"}, 30, 2);
    const std::size_t bound = 16UL * 1024 * 1024;
    EXPECT_LE(decode_into(name, 16, true).needed, bound + 1);
    const Decoded result = decode_into(name, bound + 100, true);
    EXPECT_EQ(result.error, 1);
    EXPECT_EQ(result.overflow, 0);
}

TEST(Scheme1Bounds, ATextThatDoublesTenTimesIsRead) {
    std::string last = "A<int>";
    std::string all = "f(" + last;
    for (int level = 0; level < 10; ++level) {
        std::string text = "A<";
        text.append(last).append(", ").append(last).append(">");
        all.append(", ").append(text);
        last = text;
    }
    EXPECT_EQ(decoded(bomb_name({"1AIiE", 2, "S_I", "E"}, 10, 2)), all + ")");
}

TEST(Scheme1Bounds, NestedArgumentsOfVendorQualifiersReadInFull) {
    const std::string name = repeated("U1AI", 60) + "i" + repeated("Ei", 60);
    EXPECT_EQ(decoded(name), repeated("A<", 60) + "int" + repeated("> int", 60));
}

TEST(Scheme1Bounds, NestedLocalNamesReadInFull) {
    const std::string name = "_Z" + repeated("Z", 60) + "1fv" + repeated("E1gv", 60);
    EXPECT_EQ(decoded(name), "f()" + repeated("::g()", 60));
}

TEST(Scheme1Bounds, NestedFunctionTypesReadInFull) {
    const std::string name = repeated("PF", 100) + "v" + repeated("vE", 100);
    EXPECT_EQ(decoded(name), "void (" + repeated("*(", 99) + "*" + repeated(")()", 100));
}

// Reading the inside of each level once for every level around it would take more steps
// than a name is given.
TEST(Scheme1Bounds, WhatIsSkippedIsNotReadAgainByEveryLevelAround) {
    const std::string ints = repeated("i", 40);
    const std::string listed = "int" + repeated(", int", 39);
    EXPECT_EQ(decoded("_Z1f" + repeated("PFv" + ints, 400) + "i" + repeated("E", 400)),
              "f(" + repeated("void (*)(" + listed + ", ", 400) + "int" + repeated(")", 401));
    EXPECT_EQ(decoded("_Z1f" + repeated("PF", 500) + "i" + repeated(ints + "E", 500)),
              "f(int (" + repeated("*(", 499) + "*" + repeated(")(" + listed + ")", 500) + ")");
    EXPECT_EQ(decoded("_Z1f" + repeated("M1AI" + ints, 400) + "i" + repeated("Ei", 400)),
              "f(" + repeated("int A<" + listed + ", ", 400) + "int" + repeated(">::*", 400) + ")");
    EXPECT_EQ(decoded("_Z1fI" + repeated("Xst1AI" + ints, 250) + "i" + repeated("EE", 250) + "Evv"),
              "void f<" + repeated("sizeof(A<" + listed + ", ", 250) + "int" + repeated(">)", 250) +
                  ">()");
}

// Whether one class or several stand behind "sr" shows only behind them.
TEST(Scheme1Bounds, NestedScopesAreNotLookedAtAgainByEveryLevelAround) {
    EXPECT_EQ(decoded("_Z1fI" + repeated("Xsr1AIi", 300) + "i" + repeated("EE1xE", 300) + "Evv"),
              "void f<" + repeated("A<int, ", 300) + "int" + repeated(">::x", 300) + ">()");
    EXPECT_EQ(
        decoded("_Z1fI" + repeated("Xsr1BIiE1AI", 300) + "i" + repeated("EE1xE", 300) + "Evv"),
        "void f<" + repeated("B<int>::A<", 300) + "int" + repeated(">::x", 300) + ">()");
    EXPECT_EQ(decoded("_Z1fI" + repeated("Xsr1AI", 340) + "i" + repeated("E1xE", 340) + "Evv"),
              "void f<" + repeated("A<", 340) + "int" + repeated(">::x", 340) + ">()");
}

TEST(Scheme1Bounds, ScopesNestFarIntoALongNameToo) {
    const std::string function(5000, 'f');
    EXPECT_EQ(
        decoded("_Z5000" + function + "I" + repeated("Xsr1AIi", 30) + "i" + repeated("EE1xE", 30) +
                "Evv"),
        "void " + function + "<" + repeated("A<int, ", 30) + "int" + repeated(">::x", 30) + ">()");
}

TEST(Scheme1Bounds, LongNamesOfManyComponentsAreRead) {
    const std::string parameters = repeated("i", 100000);
    EXPECT_EQ(decoded("_Z1f" + parameters), "f(int" + repeated(", int", 99999) + ")");
    EXPECT_EQ(decoded("_Z100000" + std::string(100000, 'x')), std::string(100000, 'x'));
}
