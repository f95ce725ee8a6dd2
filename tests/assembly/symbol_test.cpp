// What symbols tell: the name to look for in the source, and parts split off.
#include "assembly/symbol.h"

#include <gtest/gtest.h>

using namespace assembly;

TEST(SymbolName, OfCIsTheSymbolWithoutTheMarksOfClones) {
    EXPECT_EQ(declared_name("main"), "main");
    EXPECT_EQ(declared_name("f.constprop.0"), "f");
    EXPECT_EQ(declared_name("f.part.0.cold"), "f");
    EXPECT_EQ(declared_name("_f"), "_f");
    EXPECT_EQ(declared_name(".f"), ".f");
    EXPECT_EQ(declared_name(""), "");
}

TEST(SymbolName, OfCppIsTheLastNameBeforeTheParameters) {
    EXPECT_EQ(declared_name("_Z3fooi"), "foo");
    EXPECT_EQ(declared_name("_ZL6helperii"), "helper");
    EXPECT_EQ(declared_name("__Z3fooi"), "foo");
    EXPECT_EQ(declared_name("_Z3fooIiEvT_"), "foo");
    EXPECT_EQ(declared_name("_ZN1n3Box3getEv"), "get");
    EXPECT_EQ(declared_name("_ZNK1n3Box3getEv.isra.0"), "get");
    EXPECT_EQ(declared_name("_ZNSt6vectorIiSaIiEE9push_backERKi"), "push_back");
    EXPECT_EQ(declared_name("_ZN3BoxINS_1XILi3EEEE3putEv"), "put");
    EXPECT_EQ(declared_name("_ZN12_GLOBAL__N_14takeEv"), "take");
}

TEST(SymbolName, OfAConstructorOrDestructorIsItsClass) {
    EXPECT_EQ(declared_name("_ZN3BoxC1Ei"), "Box");
    EXPECT_EQ(declared_name("_ZN3BoxIiED0Ev"), "Box");
}

TEST(SymbolName, OfWhatNoDeclarationSpellsOutIsEmpty) {
    EXPECT_EQ(declared_name("_ZplRK1AS1_"), "");
    EXPECT_EQ(declared_name("_ZN1AplERKS_"), "");
    EXPECT_EQ(declared_name("_ZZ4mainENKUlvE_clEv"), "");
    EXPECT_EQ(declared_name("_Z"), "");
    EXPECT_EQ(declared_name("_Z99x"), "");
    EXPECT_EQ(declared_name("_ZN"), "");
}

TEST(SymbolPart, IsMarkedByItsSuffix) {
    EXPECT_EQ(part_mark("f.cold"), 1U);
    EXPECT_EQ(part_mark("f.cold.3"), 1U);
    EXPECT_EQ(part_mark("f.part.0.cold"), 8U);
    EXPECT_EQ(part_mark("f.__part.1"), 1U);
    EXPECT_EQ(part_mark("f"), std::string_view::npos);
    EXPECT_EQ(part_mark("f.part.0"), std::string_view::npos);
    EXPECT_EQ(part_mark("f.colder"), std::string_view::npos);
    EXPECT_EQ(part_mark(".cold"), std::string_view::npos);
}
