// Scheme 0's names, row by row: entities, class names, special and compressed names.
#include <gtest/gtest.h>

#include "demangle/decode.h"
#include "tests/demangle/scheme0/rows.h"

TEST(Scheme0Names, SymbolsThatAreNotMangledComeBackVerbatim) {
    expect_rows_alike({{"main", "main"},
                       {"", ""},
                       {"_", "_"},
                       {"__", "__"},
                       {"_______", "_______"},
                       {"_start", "_start"},
                       {"__main", "__main"},
                       {"__T_i", "__T_i"},
                       {"__TID_i", "__TID_i"},
                       {"__CPR3", "__CPR3"},
                       {"a_b_c_", "a_b_c_"}});
}

TEST(Scheme0Names, EntitiesReadWithScopeAndParameters) {
    expect_rows({{"f__1AFPCc", "A::f(const char *)"},
                 {"f__1ACFPCc", "A::f(const char *) const"},
                 {"f__Fv", "f()"},
                 {"f__F", "f()"},
                 {"f__Fi", "f(int)"},
                 {"f__Fie", "f(int, ...)"},
                 {"f__Fe", "f(...)"},
                 {"x__1A", "A::x"},
                 {"x__Q2_1A1B", "A::B::x"},
                 {"f__Q2_1A1BFi", "A::B::f(int)"},
                 {"f__Q21A1BFi", bad_name},
                 {"f__Fi_v", "void f(int)"},
                 {"f__Fi_PFi_v", "void (*)(int) f(int)"},
                 {"f" + args("i") + "__FZ1Z_v", "void f<int>(T1)"},
                 {"f__Fie_", bad_name},
                 {"f__Fii_", bad_name},
                 {"f__Fie1A", bad_name}});
}

TEST(Scheme0Names, NameEndsWhereASignatureOrArgumentsCanFollow) {
    expect_rows({{"my__var", "my__var"},
                 {"a__b__Fi", "a__b(int)"},
                 {"f___Fi", "f_(int)"},
                 {"f____Fi", "f__(int)"},
                 {"a__C__Fi", "a__C(int)"},
                 {"a__CVDrDLDRS__Fi", "a__CVDrDLDRS(int)"},
                 {"a__D__Fi", "a__D(int)"},
                 {"a__tm__b__Fi", "a__tm__b(int)"},
                 {"a__pt__2_i__Fi", "a<int>(int)"},
                 {"a__ps__2_i__Fi", "a<int>(int)"},
                 {"a__tm__2_i__Fi", "a<int>(int)"},
                 {"_f__Fi", "_f(int)"},
                 {"__f__Fi", "__f(int)"},
                 {"___f__1A", "A::___f"},
                 {"a__", "a__"}});
}

TEST(Scheme0Names, MemberQualifiersPrintInAFixedOrderAndOnce) {
    expect_rows({{"f__1ACFv", "A::f() const"},
                 {"f__1AVFv", "A::f() volatile"},
                 {"f__1ADrFv", "A::f() restrict"},
                 {"f__1ADLFv", "A::f() &"},
                 {"f__1ADRFv", "A::f() &&"},
                 {"f__1ASFv", "A::f()"},
                 {"f__1ADrVCFv", "A::f() const volatile restrict"},
                 {"f__1ADRCFv", "A::f() const &&"},
                 {"f__1ACCVVFv", "A::f() const volatile"},
                 {"f__1ADLDRFv", "A::f() &"},
                 {"f__1ADRDLFv", "A::f() &&"},
                 {"f__1ACSVFv", "A::f() const volatile"},
                 {"f__CFv", "f() const"},
                 {"f__1AC", bad_name},
                 {"f__1ADxFv", bad_name}});
}

TEST(Scheme0Names, ConstructorsAndDestructorsRepeatTheirClass) {
    expect_rows({{"__ct__1AFv", "A::A()"},
                 {"__dt__1AFv", "A::~A()"},
                 {"__ct__Q2_1A1BFv", "A::B::B()"},
                 {"__dt__Q2_1A1BFv", "A::B::~B()"},
                 // A component that is qualified itself is a type, which prints whole.
                 {"__ct__Q2_1AQ2_1B1CFv", "A::B::C::B::C()"},
                 {"__dt__Q2_1AQ2_1B1CFv", "A::B::C::~B::C()"},
                 {"__ct__" + run("A" + args("i")) + "Fv", "A<int>::A()"},
                 {"__dt__" + run("A" + args("i")) + "Fv", "A<int>::~A()"},
                 {"__ct" + args("i") + "__1AFZ1Z", "A::A<int>(T1)"},
                 {"__ct__Q2_1AZ1ZFv", "A::T1::T1()"},
                 {"__ct__" + run("point__Ut1") + "Fv",
                  "point::[unnamed type (instance 1)]::[unnamed type (instance 1)]()"},
                 {"__ct__Fv", bad_name},
                 {"__dt__Fv", bad_name},
                 {"__ctor__Fv", "__ctor()"},
                 {"__dtor__1A", "A::__dtor"}});
    expect_rows({{"__ct__1AFv", "A"},
                 {"__dt__Q2_1A1BFv", "~B"},
                 {"__dt__Q2_1AQ2_1B1CFv", "~B::C"},
                 {"__ct__" + run("A" + args("i")) + "Fv", "A"},
                 {"__ct__Fv", bad_name}},
                0);
}

TEST(Scheme0Names, OperatorFunctionsPrintTheirTextAsItStands) {
    expect_rows({{"__pl__1AFRC1A", "A::operator +(const A &)"},
                 {"__cl__1AFv", "A::operator ()()"},
                 {"__vc__1AFi", "A::operator [](int)"},
                 {"__nwa__FUl", "operator new[](unsigned long)"},
                 {"__dla__FPv", "operator delete[](void *)"},
                 {"__apl__1AFi", "A::operator +=(int)"},
                 {"__tw__Fi", "operator throw (int)"},
                 {"__aw__Fi", "operator co_await(int)"},
                 {"__lt" + args("i") + "__FZ1ZT1_b", "bool operator < <int>(T1, T1)"},
                 {"__ls" + args("i") + "__Fv", "operator << <int>()"},
                 {"__gt" + args("i") + "__Fv", "operator ><int>()"},
                 {"__plus__Fv", "__plus()"},
                 {"__pl", "__pl"},
                 {"__pl__x", bad_name}});
    expect_rows({{"__pl__1AFRC1A", "operator +"}, {"__nwa__FUl", "operator new[]"}}, 0);
}

TEST(Scheme0Names, ConversionsPrintTheirType) {
    expect_rows({{"__opPCc__1AFv", "A::operator const char *()"},
                 {"__opi__1ACFv", "A::operator int() const"},
                 {"__opPFi_v__1AFv", "A::operator void (*)(int)()"},
                 {"__op1B__1AFv", "A::operator B()"},
                 {"__opZ1Z" + args("i") + "__1AFv", "A::operator T1<int>()"},
                 {"__option__Fv", "__option()"},
                 {"__operator__Fv", "__operator()"},
                 {"__op__Fv", "__op()"}});
    expect_rows({{"__opPCc__1AFv", "operator const char *"}}, 0);
}

// What stands within a name decides too, wherever in the type the name stands.
TEST(Scheme0Names, WhatIsNoTypeBehindOpMakesAnIdentifier) {
    expect_rows(
        {{"__op14my__var__tm__1___Fv", "__op14my__var<>()"},
         {"__opP14my__var__tm__1___Fv", "__opP14my__var<>()"},
         {"__opQ2_1A14my__var__tm__1___Fv", "__opQ2_1A14my__var<>()"},
         {"__op0__Fv", "__op0()"},
         {"__opC0__Fv", "__opC0()"},
         {"__opQ2_1A0__Fv", "__opQ2_1A0()"},
         {"__opM0i__Fv", "__opM0i()"},
         {"__opFv_0__Fv", "__opFv_0()"},
         {"__opF0_v__Fv", "__opF0_v()"},
         {"__opA5_0__Fv", "__opA5_0()"},
         {"__opB5_0__Fv", "__opB5_0()"},
         {"__opHi0__Fv", "__opHi0()"},
         {"__opt0__Fv", "__opt0()"},
         {"__op" + run("A" + args("0")) + "__Fv", bad_name},
         {"__op" + run("A" + args("i")) + "__Fv", "operator A<int>()"},
         {"__op" + run("A" + args(run("B" + args("i")))) + "__1CFv", "C::operator A<B<int>>()"},
         {"__op" + run("A" + args("XOgtZ1ZiL11O")) + "__1CFv", "C::operator A<(N1 > 1)>()"},
         {"__op6A__Ut1__1CFv", "C::operator A::[unnamed type (instance 1)]()"},
         {"__op5A__Ut__1CFv", "C::operator A__Ut()"}});
    expect_rows({{"__op14my__var__tm__1___Fv", "__op14my__var<>"}, {"__op0__Fv", "__op0"}}, 0);
}

TEST(Scheme0Names, ABlankStandsBetweenANameThatEndsInLessAndItsArguments) {
    expect_rows(
        {{"__li2a<__tm__2_i__Fv", "operator \"\"a< <int>()"},
         {"__li2_<" + args("i") + "__Fv", "operator \"\"_< <int>()"},
         {"__lt" + args("i") + "__Fv", "operator < <int>()"},
         {"a<" + args("i") + "__Fv", "a< <int>()"},
         {"<" + args("i") + "__Fv", "< <int>()"},
         {"f__F" + run("a<" + args("i")), "f(a< <int>)"},
         {"__ct" + args("i") + "__2A<FZ1Z", "A<::A< <int>(T1)"},
         {"__dt" + args("i") + "__2A<Fv", "A<::~A< <int>()"},
         {"__ct" + args("i") + "__" + run("A<" + args("c")) + "Fv", "A< <char>::A< <int>()"},
         {"__ct" + args("i") + "__" + run("A<__Ut1") + "Fv",
          "A<::[unnamed type (instance 1)]::[unnamed type (instance 1)]<int>()"},
         {"__op2A<" + args("i") + "__1BFv", "B::operator A< <int>()"},
         {"__opC2A<" + args("i") + "__1BFv", "B::operator const A< <int>()"},
         {"__opQ2_1B2A<" + args("i") + "__1BFv", "B::operator B::A< <int>()"},
         {"__op" + run("A<" + args("c")) + args("i") + "__1BFv", "B::operator A< <char><int>()"},
         {"__opP2A<" + args("i") + "__1BFv", "B::operator A< *<int>()"},
         {"__opHh2A<" + args("i") + "__1BFv", "B::operator A<^<int>()"},
         {"__opM2A<i" + args("i") + "__1BFv", "B::operator int A<::*<int>()"},
         {"__opA_2A<" + args("i") + "__1BFv", "B::operator A< []<int>()"},
         {"__opt2A<" + args("i") + "__1BFv", "B::operator typeof(A<)<int>()"}});
    expect_rows({{"__li2a<__tm__2_i__Fv", "operator \"\"a< <int>"},
                 {"__ct" + args("i") + "__2A<FZ1Z", "A< <int>"},
                 {"__op2A<" + args("i") + "__1BFv", "operator A< <int>"}},
                0);
    expect_operands({{"__g<" + args("i") + "__", "g< <int>"},
                     {"__li2a<" + args("i") + "__", "li2a< <int>"},
                     {"____li2a<" + args("i") + "__", "operator \"\"a< <int>"}});
    // The text's length is the same however little of it fits.
    for (const std::string& name :
         {"__ct" + args("i") + "__2A<FZ1Z", "__op2A<" + args("i") + "__1BFv"}) {
        const std::string text = decoded(name);
        for (std::size_t size = 0; size <= text.size() + 1; ++size) {
            EXPECT_EQ(hostile::difference(hostile::decode(name, 1, size), text, size, 0), "")
                << name << ' ' << size;
        }
    }
}

TEST(Scheme0Names, ConversionNestedPastTheBoundIsNoIdentifier) {
    expect_rows_alike({{"__op" + std::string(1100, 'P') + "i__1AFv", bad_name}});
}

TEST(Scheme0Names, LiteralOperatorsShowTheirSuffix) {
    expect_rows({{"__li2_x__Fd", "operator \"\"_x(double)"},
                 {"__li3_ab__FUL", "operator \"\"_ab(unsigned long long)"},
                 {"__li2_x" + args("i") + "__Fv", "operator \"\"_x<int>()"},
                 {"__li__Fd", "__li(double)"},
                 {"__li0__Fd", "__li0(double)"},
                 {"__li9_x__Fd", "__li9_x(double)"},
                 {"__li1_x__Fd", "__li1_x(double)"}});
    expect_rows({{"__li2_x__Fd", "operator \"\"_x"}}, 0);
}

TEST(Scheme0Names, NameOnlyLeavesScopeAndSignatureOut) {
    expect_rows({{"f__1AFi", "f"},
                 {"f" + args("i") + "__FZ1Z", "f<int>"},
                 {"my__var", "my__var"},
                 {"a__b__Fi", "a__b"},
                 {"f__1A\x01not looked at", "f"},
                 {"__vtbl__1A", "__vtbl"},
                 {"__VFE__x", "__VFE"},
                 {"__CBI__f__Fi", "__CBI"}},
                0);
}

TEST(Scheme0Names, StaticVariablesAreNamedAfterTheirFunction) {
    expect_rows({{"__STV__count__f__Fi", "f(int)::count"},
                 {"__STV__n__f__1AFi", "A::f(int)::n"},
                 {"__STV__count__", "count"},
                 {"__STV__count", "__STV__count"},
                 {"__STV____x__f__Fi", "f(int)::__x"},
                 {"__STV____x__", "__x"},
                 {"__STV_____", "__STV_____"},
                 {"__STV____f", "__STV____f"}});
    expect_rows({{"__STV__count__f__Fi", "count"},
                 {"__STV____x__f__Fi", "__x"},
                 {"__STV__count__", "count"},
                 {"__STV__count__\x01", "count"}},
                0);
}

TEST(Scheme0Names, QualifiedNamesPrintWholeInBothModes) {
    expect_rows_alike({{"__Q2_1A1B", "A::B"},
                       {"__Q2Z1Z1A", "T1::A"},
                       {"__Q21A1B", bad_name},
                       {"__Q1_1A", "A"},
                       {"__Q3_1AG1B", "A::::B"},
                       {"__Q2_1AZ2Z", "A::T2"},
                       {"__Q2_1APCc", "A::const char *"},
                       {"__Q2_1A" + run("B" + args("i")), "A::B<int>"},
                       {"__Q0_", ""},
                       {"__Q2_1A", bad_name},
                       {"__Q2", bad_name},
                       {"__Q", bad_name},
                       {"__Qx", bad_name},
                       {"__Q1_1A1B", bad_name}});
}

TEST(Scheme0Names, UnnamedTypesAndLambdasStandInBrackets) {
    expect_rows_alike({{"__10point__Ut1", "point::[unnamed type (instance 1)]"},
                       {"__10point__Ul2", "point::[lambda (instance 2)]"},
                       {"__10point__Um3", "point::[lambda in member initializer (instance 3)]"},
                       {"__11point__Ud14", "point::[lambda in default argument (instance 14)]"},
                       {"__10p_2nt__Ut1", "p_2nt::[unnamed type (instance 1)]"}});
    expect_rows(
        {{"f__F10point__Ut1", "f(point::[unnamed type (instance 1)])"},
         {"f__F" + run("p" + args("i") + "__Ut1"), "f(p<int>::[unnamed type (instance 1)])"},
         {"f__F10point__Ux1", "f(point__Ux1)"},
         // One in the signature of a function does not make the function one.
         {"__1f__F6A__Ut1", "__1f(A::[unnamed type (instance 1)])"},
         {"__1f" + args("6A__Ut1") + "__Fv", "__1f<A::[unnamed type (instance 1)]>()"},
         {"f__F9point__Ut", "f(point__Ut)"}});
}

TEST(Scheme0Names, WholeRunOfASimpleNameIsUsed) {
    expect_rows({{"f__F6a__b_c", "f(a__b_c)"},
                 {"f__F" + run("a" + args("i") + "x"), bad_name},
                 {"f__F0", bad_name},
                 {"f__F5A", bad_name},
                 {"f__F3__a", "f(__a)"}});
}

TEST(Scheme0Names, TemplateArgumentsCloseWithoutABlank) {
    expect_rows({{"f__F" + run("A" + args("i")), "f(A<int>)"},
                 {"f__F" + run("A" + args("iPCc")), "f(A<int, const char *>)"},
                 {"f__F" + run("B" + args(run("A" + args("i")))), "f(B<A<int>>)"},
                 {"f__F" + run("A" + args("")), "f(A<>)"},
                 {"f__FA__tm__6_XiL15", bad_name},
                 {"f__F13A__tm__6_XiL15", bad_name},
                 {"f__F14A__tm__6_XiL15", "f(A<5>)"},
                 {"f__F8A__tm__0", bad_name},
                 {"f__F10A__tm__9_i", bad_name}});
}

TEST(Scheme0Names, SpecialNames) {
    expect_rows({
        {"__vtbl__1A", "virtual function table for A"},
        {"__CBI__f__Fi", "can-be-instantiated flag for f(int)"},
        {"__DNI__f__Fi", "do-not-instantiate flag for f(int)"},
        {"__TIR__f__Fi", "template-instantiation-request flag for f(int)"},
        {"__LSG__x__1A", "initialization guard variable for A::x"},
        {"__THI__x__1A", "thread_local initialization routine for A::x"},
        {"__IFV__f__Fi", "ifunc variable for f(int)"},
        {"__RES__f__Fi", "resolver function for f(int)"},
        {"__RES____IFC__f__Fi", "resolver function for ifunc function for f(int)"},
        {"__IFC__f__Fi", "ifunc function for f(int)"},
        {"__TGT__arch=avx2__f__Fi", "f(int) __attribute__((target(arch=avx2)))"},
        {"__TWR__x__1A", "thread_local wrapper for A::x"},
        {"__TID_5a__bc", "type identifier for a__bc"},
        {"__T_5a__bc", "typeinfo for a__bc"},
        {"__T_A3_5a__bc", "typeinfo for a__bc [3]"},
        {"__VFE__1A__f__1AFv", "surrogate in class A for A::f()"},
        {"__VFE__PFv_v__f__Fi", "surrogate in class void (*)() for f(int)"},
    });
    expect_rows({{"__VFE__1A_f__Fi", bad_name},
                 {"__VFE__1A", bad_name},
                 {"__TGT__f", bad_name},
                 {"__CBI__", bad_name},
                 {"__T_5a__bcx", bad_name},
                 {"__vtbl__", bad_name},
                 {"__vtbl__x", bad_name},
                 {"__LSG__n__Fvx", bad_name}});
}

TEST(Scheme0Names, TablesNameTheClassesTheyLieWithin) {
    expect_rows({
        {"__vtbl__1A__1B", "virtual function table for A in B"},
        {"__vtbl__1A__A", "virtual function table for A (ambiguous)"},
        {"__vtbl__1A__A__1B", "virtual function table for A (ambiguous) in B"},
        {"__vtbl__Q2_1A1B__1C", "virtual function table for A::B in C"},
        {"__vtbl__4A__B", "virtual function table for A in B"},
        {"__vtbl__7A__B__C", "virtual function table for A in B in C"},
        {"__vtbl__4A__B__A__Q2_1C1D", "virtual function table for A in B (ambiguous) in C::D"},
        {"__vtbl__" + run("A" + args("i") + "__B"), "virtual function table for A<int> in B"},
        {"__vtbl__" + run("p__Ut1__B"),
         "virtual function table for p::[unnamed type (instance 1)] in B"},
        {"__vtbl__3A__", bad_name},
        {"__vtbl__" + run("A" + args("i") + "x"), bad_name},
        {"__vtbl__" + run("A" + args("i") + "xy"), bad_name},
        {"__vtbl__" + run("A" + args("i") + "xyz"), bad_name},
        {"__vtbl__" + run("A" + args("i") + "_"), bad_name},
        {"__vtbl__" + run("A" + args("i") + "__"), bad_name},
        {"__vtbl__" + run("A" + args("i") + "__") + "__1B", bad_name},
        {"__vtbl__3A__1B", bad_name},
        {"__vtbl__1A__", bad_name},
        {"__vtbl__1Ax", bad_name},
    });
}

TEST(Scheme0Names, OneOrTwoCharactersLeftOfATablesRunAreNoFurtherClass) {
    for (const Row& row :
         {Row{"__vtbl__3A__", "virtual function table for A"},
          Row{"__vtbl__6A__B__", "virtual function table for A in B"},
          Row{"__vtbl__" + run("A" + args("i") + "_"), "virtual function table for A<int>"},
          Row{"__vtbl__" + run("A" + args("i") + "__"), "virtual function table for A<int>"},
          Row{"__vtbl__" + run("A" + args("i") + "xyz"), "virtual function table for A<int>"}}) {
        const hostile::Result result = hostile::decode(row.name, 1, 100);
        EXPECT_TRUE(result.error) << row.name;
        EXPECT_EQ(result.text, row.text) << row.name;
    }
}

TEST(Scheme0Names, CompressedNamesExpand) {
    expect_rows({
        {"__CPR5__f__Fi", "f(int)"},
        {"__CPR05__f__Fi", "f(int)"},
        {"__CPR8__f__F1AJ4J", "f(A, A)"},
        {"__CPR10__f__F1AJ4JJ6J", "f(A, A, A)"},
        {"__CPR12__f__F3abcJ4J", "f(abc, abc)"},
        {"__CPR5__JJ__Fi", "J(int)"},
        {"__CPR9____vtbl__1A", bad_name},
        {"__CPR10____vtbl__1A", "virtual function table for A"},
        {"__CPR7____Q1_1A", "A"},
    });
    expect_rows({{"__CPR8__f__F1AJ4J", "f"}, {"__CPR7____Q1_1A", "A"}}, 0);
}

TEST(Scheme0Names, CompressedNamesThatAreNotWellFormedAreBad) {
    expect_rows_alike({
        {"__CPR4__f__Fi", bad_name},      // one character more than announced
        {"__CPR6__f__Fi", bad_name},      // one less
        {"__CPR__f__Fi", bad_name},       // no length
        {"__CPRx__f__Fi", bad_name},      // no number
        {"__CPR5_f__Fi", bad_name},       // a single underscore
        {"__CPR8__f__F1AJ5J", bad_name},  // no digit at the offset
        {"__CPR8__f__F1AJ6J", bad_name},  // nothing at the offset yet
        {"__CPR8__f__F1AJ9J", bad_name},  // an offset past the text
        {"__CPR8__f__F1AJ4", bad_name},   // no closing "J"
        {"__CPR8__f__F1AJxJ", bad_name},  // no number
        {"__CPR7__f__F1AJ", bad_name},    // nothing behind a "J"
        {"__CPR7__f__F1AJ4J", bad_name},  // the copy runs past the tail
        {"__CPR8__f__F3aJ4J", bad_name},  // a component that is not complete
        {"__CPR16777217__f__Fi", bad_name},
        {"__CPR99999999999999999999__f__Fi", bad_name},
        // A length that is 1 in 64 bits: its component is not complete.
        {"__CPR47__a18446744073709551617bJ1J__Fv", bad_name},
    });
    EXPECT_EQ(decoded("__CPR9__a1bJ1J__Fv"), "a1b1b()");
    EXPECT_EQ(decoded("__CPR6__a1bJ1J"), bad_name);  // one character less
    EXPECT_EQ(decoded("__CPR4__a1bJ1J"), bad_name);  // one more
    EXPECT_EQ(decoded("__CPR5__a1bJ1J"), "a1b1b");
}

// What the buffer happens to hold is no part of the expansion.
TEST(Scheme0Names, CompressedNamesRepeatNothingThatIsNotThereYet) {
    for (const char filler : {'1', '0', 'b', '_'}) {
        for (const char* const name :
             {"__CPR11__a3bJ1J__Fv", "__CPR7__aJ1J__Fv", "__CPR9__a2bJ1J__Fv",
              "__CPR10__a12J1J__Fv", "__CPR7__a1J1J_Fv", "__CPR10__a2bJ1J__F"}) {
            std::string buffer(64, filler);
            int error = 0;
            int overflow = 0;
            std::size_t needed = 0;
            decode_identifier(name, buffer.data(), buffer.size(), &error, &overflow, &needed, 1);
            EXPECT_EQ(error, 1) << name << ' ' << filler;
            EXPECT_EQ(overflow, 0) << name << ' ' << filler;
            EXPECT_STREQ(buffer.c_str(), "") << name << ' ' << filler;
        }
    }
}

TEST(Scheme0Names, TheExpansionStandsInTheTailOfTheBufferWithItsNul) {
    std::string buffer(32, '?');
    int error = 1;
    int overflow = 1;
    std::size_t needed = 0;
    decode_identifier("__CPR8__f__F1AJ4J", buffer.data(), buffer.size(), &error, &overflow, &needed,
                      1);
    EXPECT_EQ(error, 0);
    EXPECT_EQ(overflow, 0);
    using namespace std::string_view_literals;
    EXPECT_EQ(buffer, "f(A, A)\0???????????????f__F1A1A\0"sv);
}

// Nothing stands for nothing, but its NUL and that of its text need room.
TEST(Scheme0Names, CompressedNameOfNoLengthIsABadNameThatNeedsRoom) {
    for (const char* const name : {"__CPR0__", "__CPR0__x"}) {
        for (const int decorated : {0, 1}) {
            for (const std::size_t size : {0U, 1U}) {
                const hostile::Result result = hostile::decode(name, decorated, size);
                EXPECT_TRUE(result.error && result.overflow) << name << ' ' << size;
                EXPECT_EQ(result.needed, 2U) << name << ' ' << size;
                EXPECT_EQ(result.damage, "");
            }
            const hostile::Result result = hostile::decode(name, decorated, 2);
            EXPECT_TRUE(result.error && !result.overflow) << name;
            EXPECT_EQ(result.needed, 1U) << name;
            EXPECT_EQ(result.text, "");
        }
    }
}

TEST(Scheme0Names, CompressedNameNeedsRoomForItsExpansion) {
    // The expansion has 8 characters, the text 7; each has a NUL.
    const std::string name = "__CPR8__f__F1AJ4J";
    for (const std::size_t size : {0U, 1U, 9U}) {
        const hostile::Result result = hostile::decode(name, 1, size);
        EXPECT_TRUE(result.error && result.overflow) << size;
        EXPECT_EQ(result.needed, 10U) << size;
    }
    const hostile::Result partly = hostile::decode(name, 1, 10);
    EXPECT_TRUE(partly.error && partly.overflow);
    EXPECT_EQ(partly.needed, 17U);
    const hostile::Result whole = hostile::decode(name, 1, 17);
    EXPECT_FALSE(whole.error || whole.overflow);
    EXPECT_EQ(whole.text, "f(A, A)");
    EXPECT_EQ(whole.needed, 17U);
}
