// How scheme 1's texts read: blanks, marks, declarators, templates,
// literals and expressions. Expected texts are literal.
#include <gtest/gtest.h>

#include "tests/demangle/scheme1/rows.h"

TEST(Scheme1Style, OneBlankStandsBeforeTheFirstMarkAndBetweenQualifiersAndAMark) {
    static constexpr Row rows[] = {
        {"PKc", "const char *"},
        {"KPc", "char *const"},
        {"PKPKc", "const char *const *"},
        {"PPc", "char **"},
        {"RPc", "char *&"},
        {"OPKc", "const char *&&"},
        {"RKPc", "char *const &"},
        {"KRi", "int &const"},
        {"KVri", "const volatile restrict int"},
        {"rVKPi", "int *const volatile restrict"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, DeclaratorsOfFunctionsAndArraysOpenAParenthesis) {
    static constexpr Row rows[] = {
        {"PFivE", "int (*)()"},
        {"FivE", "int ()"},
        {"RA3_i", "int (&)[3]"},
        {"PA_i", "int (*)[]"},
        {"A3_A4_i", "int [3][4]"},
        {"A3_Pc", "char *[3]"},
        {"A3_KPc", "char *const [3]"},
        {"KA3_i", "const int [3]"},
        {"PFviE", "void (*)(int)"},
        {"PKFviE", "void (*)(int) const"},
        {"M1AKFvvE", "void (A::*)() const"},
        {"M1AFvvRE", "void (A::*)() &"},
        {"M1AKFvvOE", "void (A::*)() const &&"},
        {"M1Ai", "int A::*"},
        {"PDoFvvE", "void (*)() noexcept"},
        {"PDxFvvE", "void (*)() transaction_safe"},
        {"PFPFvvEiE", "void (*(*)(int))()"},
        {"PA2_PFivE", "int (*(*)[2])()"},
        {"_Z1fIiEPFvvEv", "void (*)() f<int>()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, TemplateListsCloseWithoutABlankAndPacksStandInPlace) {
    static constexpr Row rows[] = {
        {"_Z1fI1AI1BI1CEEEvv", "void f<A<B<C>>>()"},
        {"_ZltIiEbT_S0_", "bool operator < <int>(T1, T1)"},
        {"_Z1fIJidEEvDpT_", "void f<int, double>(T1...)"},
        {"_Z1fIJEEvDpT_", "void f<>(T1...)"},
        {"_Z1fIJiEEvKDpT_S1_S2_", "void f<int>(const T1..., T1..., const T1...)"},
        {"KDpPFvT_E", "void (*const)(T1)..."},
        {"1AIiJEE", "A<int>"},
        {"1AIJEiE", "A<int>"},
        {"1AIJJEJicEEE", "A<int, char>"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, LiteralsCarrySuffixesOrCasts) {
    static constexpr Row rows[] = {
        {"1AILi5EE", "A<5>"},
        {"1AILin5EE", "A<-5>"},
        {"1AILj5EE", "A<5U>"},
        {"1AILl5EE", "A<5L>"},
        {"1AILm5EE", "A<5UL>"},
        {"1AILx5EE", "A<5LL>"},
        {"1AILy5EE", "A<5ULL>"},
        {"1AILc97EE", "A<(char)97>"},
        {"1AIL5Color2EE", "A<(Color)2>"},
        {"1AILsn1EE", "A<(short)-1>"},
        {"1AILb1EE", "A<true>"},
        {"1AILb0EE", "A<false>"},
        {"1AILb2EE", "A<(bool)2>"},
        {"1AILDnEE", "A<nullptr>"},
        {"1AILDn0EE", "A<nullptr>"},
        {"1AILPc0EE", "A<(char *)0>"},
        {"1AILf3fc00000EE", "A<(float)1.5>"},
        {"1AILd3ff0000000000000EE", "A<(double)1>"},
        {"1AILd4059000000000000EE", "A<(double)1e+02>"},
        {"1AILe3fffc000000000000000EE", "A<(long double)1.5>"},
        {"1AILCf3f800000_40000000EE", "A<(_Complex float)(1, 2)>"},
        {"1AILf3FC00000EE", bad},
        {"1AILf3fc0000EE", bad},
        {"1AILA4_KcEE", "A<(const char [4])\"...\">"},
        {"2CBIL_Z3foocEE", "CB<foo(char)>"},
        {"1AIXadL_Z3foocEEE", "A<&foo(char)>"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, ExpressionsParenthesiseOperandsThatAreOperators) {
    static constexpr Row rows[] = {
        {"1AIXplT_Li1EEE", "A<T1 + 1>"},
        {"1AIXmlplT_Li1ELi2EEE", "A<(T1 + 1) * 2>"},
        {"1AIXngT_EE", "A<-T1>"},
        {"1AIXntaaT_T0_EE", "A<!(T1 && T2)>"},
        {"1AIXquT_Li1ELi2EEE", "A<T1 ? 1 : 2>"},
        {"1AIXcl1fT_Li2EEEE", "A<f(T1, 2)>"},
        {"1AIXcp1fT_EEE", "A<(f)(T1)>"},
        {"1AIXsrT_1xEE", "A<T1::x>"},
        {"1AIXszT_EE", "A<sizeof(T1)>"},
        {"1AIXsZT_EE", "A<sizeof...(T1)>"},
        {"1AIXsciT_EE", "A<static_cast<int>(T1)>"},
        {"1AIXcviT_EE", "A<int(T1)>"},
        {"1AIXcvPiT_EE", "A<int *(T1)>"},
        {"1AIXtliT_Li2EEEE", "A<int{T1, 2}>"},
        {"1AIXnw_ipiLi5EEEE", "A<new int(5)>"},
        {"1AIXfl"
         "plT_EE",
         "A<(... + T1)>"},
        {"1AIXfRplT_Li0EEE", "A<(T1 + ... + 0)>"},
        {"1AIXgtT_Li1EEE", "A<(T1 > 1)>"},
        {"_Z1fIiEvRAgtT_Li1E_i1AIXcvS1_T_EE",
         "void f<int>(int (&)[T1 > 1], A<(int (&)[T1 > 1](T1))>)"},
        {"1AIXptT_1xEE", "A<T1->x>"},
        {"1AIXcmT_T0_EE", "A<(T1, T2)>"},
        {"1AIXdsT_T0_EE", "A<T1.*T2>"},
        {"1AIXpmT_T0_EE", "A<T1 ->* T2>"},
        {"1AIXawT_EE", "A<co_await T1>"},
        {"1AIXv19clitypeidiEE", "A<int::typeid>"},
        {"1AIXu5__fooT_EEE", "A<__foo(T1)>"},
        {"1AIXv212clisubscriptT_T0_EE", "A<subscript(T1, T2)>"},
        {"1AIXv29builtinabT_T0_EE", "A<builtin-operation-ab(T1, T2)>"},
        {"1AIXli1xT_EE", bad},
        {"1AIXflixT_EE", bad},
        {"_Z1fIiEDTdtfp_1xET_", "decltype(param#1.x) f<int>(T1)"},
        {"_Z1fIiEDTptfp_1xET_", "decltype(param#1->x) f<int>(T1)"},
        {"_Z1fIiEDTfL0p0_ET_", "decltype(param#2[up 1 level]) f<int>(T1)"},
        {"_Z1fIiEDTfpTET_", "decltype(this) f<int>(T1)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, ThingsWithoutANameAreShownInBrackets) {
    static constexpr Row rows[] = {
        {"UlvE_", "[lambda() (instance 1)]"},
        {"UliE0_", "[lambda(int) (instance 2)]"},
        {"Ut_", "[unnamed type (instance 1)]"},
        {"Ut0_", "[unnamed type (instance 2)]"},
        {"UlT_E_", "[lambda(auto:1) (instance 1)]"},
        {"_ZNK3lamMUlT_iE_clIcEEDaS0_i",
         "auto lam::[lambda(auto:1, int) (instance 1)]::operator ()<char>(T1, int) const"},
        {"_ZN12_GLOBAL__N_11fEv", "<unnamed>::f()"},
        {"_ZDC1a1bE", "[a, b]"},
        {"_Z1fB5cxx11v", "f[abi:cxx11]()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, ConstructorsRepeatWhatNamesTheirClass) {
    static constexpr Row rows[] = {
        {"_ZN3FooIiEC1Ev", "Foo<int>::Foo()"},
        {"_ZNSsD1Ev",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>::~basic_string()"},
        {"_ZNT_C1Ev", "T1::T1()"},
        {"_ZN1DCI11BEi", "D::D(int)"},
        {"_ZN1AB1tC1Ev", "A[abi:t]::A()"},
        {"_ZNDtT_EC1Ev", bad},
        {"_ZNplC1Ev", bad},
        {"_ZN1AC4Ev", bad},
        {"_ZC1v", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, NewerTypesAndVendorQualifiers) {
    static constexpr Row rows[] = {
        {"Dv4_f", "float __vector(4)"},
        {"DB8_", "_BitInt(8)"},
        {"DU8_", "unsigned _BitInt(8)"},
        {"Du", "char8_t"},
        {"DF16_", "_Float16"},
        {"DF32x", "_Float32x"},
        {"DF16b", "std::bfloat16_t"},
        {"U3AS1i", "AS1 int"},
        {"_Z1fPU3AS1i", "f(AS1 int *)"},
        {"U8__handle3Foo", "Foo ^"},
        {"U8__trkref3Foo", "Foo %"},
        {"U14__interior_ptri", "interior_ptr<int>"},
        {"U9__pin_ptri", "pin_ptr<int>"},
        {"U8__vectorf", "__attribute__((vector_size(?))) float"},
        {"U16__opencl_vector4f", "OpenCL Vector of 4 float"},
        {"U17__opencl_vector04f", "OpenCL Vector of 4 float"},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, NamesThatNameNothingAndEmptyParameterListsAreBad) {
    static constexpr Row rows[] = {
        {"_ZNStEv", bad},  {"_Z1f1ANS_Ev", bad}, {"_ZNT_Ev", bad},
        {"_Z1fIiEv", bad}, {"_ZB1x1fv", bad},
    };
    expect_rows(rows);
}

// The first four are Clang's, for template<V v> void l(), struct V { const int *p; } and
// their like.
TEST(Scheme1Style, PartsOfObjectsReadAsMembersWithTheirTypeAndPlace) {
    static constexpr Row rows[] = {
        {"_Z1lIXtl1VadsoKiL_Z1aE4EEEEvv", "void l<V{&a.<const int at offset 4>}>()"},
        {"_Z1lIXtl1VadsoKiL_Z1aE24_EEEEvv", "void l<V{&a.<const int at offset 24>}>()"},
        {"_Z1hIXtl1WmcM1DiadL_ZN4Base1mEE4EEEEvv", "void h<W{int D::*(&Base::m)}>()"},
        {"_Z1nIXtl2WBmcM1DFvvEadL_ZN4Base2fnEvE4EEEEvv",
         "void n<WB{void (D::*)()(&Base::fn())}>()"},
        {"_Z1fIXsoKcL_Z1xEEEEvv", "void f<x.<const char at offset 0>>()"},
        {"_Z1fIXsoKcL_Z1xEn8EEEvv", "void f<x.<const char at offset -8>>()"},
        {"_Z1fIXsoKcL_Z1xE2__0_12EEEvv", "void f<x.<const char at offset 2>>()"},
        {"_Z1fIXadsoA4_iL_Z1xE16_pEEEvv", "void f<&x.<int [4] at offset 16, past the end>>()"},
        {"_Z1fIXsoKcplL_Z1xELi1E2EEEvv", "void f<(x + 1).<const char at offset 2>>()"},
        {"_Z1fIXmcM1DiadL_ZN1B1mEEEEEvv", "void f<int D::*(&B::m)>()"},
        {"_Z1fIXmcM1DiadL_ZN1B1mEEn8EEEvv", "void f<int D::*(&B::m)>()"},
        {"_Z1fIXsoKcL_Z1xE2pqEEEvv", bad},
        {"_Z1fIXsoKcL_Z1xEnEEEvv", bad},
        {"_Z1fIXsoKcL_Z1xE2", bad},
        {"_Z1fIXmcM1DiadL_ZN1B1mEE8_EEEvv", bad},
        {"_Z1fIXmcM1Di", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, RequiresExpressionsListTheirRequirements) {
    static constexpr Row rows[] = {
        {"_Z1fIXrqTNT_4typeEEEEvv", "void f<requires { typename T1::type; }>()"},
        {"_Z1fIXrQT_i_Xdtfp_1xEEEvv", "void f<requires(T1, int) { param#1.x; }>()"},
        {"_Z1fIXrQv_Xcl1gEEEEvv", "void f<requires() { g(); }>()"},
        {"_Z1fIXrQT__Xplfp_Li1ENEEEvv", "void f<requires(T1) { {param#1 + 1} noexcept; }>()"},
        {"_Z1fIXrQT__Xplfp_Li1ER1CEEEvv", "void f<requires(T1) { {param#1 + 1} -> C; }>()"},
        {"_Z1fIXrQT__Xplfp_Li1ENRN1N1CIiEEEEEvv",
         "void f<requires(T1) { {param#1 + 1} noexcept -> N::C<int>; }>()"},
        {"_Z1fIXrqXL_Z1xEQntLb0EEEEvv", "void f<requires { x; requires !false; }>()"},
        {"_Z1fIXrqXplT_Li2EEEEvv", "void f<requires { T1 + 2; }>()"},
        {"_Z1fIXrqXgtT_Li2EEEEvv", "void f<(requires { T1 > 2; })>()"},
        {"_Z1fIXrqQrqQLb1EEEEEvv", "void f<requires { requires requires { requires true; }; }>()"},
        {"_Z1fIXntrqTiEEEvv", "void f<!requires { typename int; }>()"},
        {"_Z1fIXrqEEEvv", bad},
        {"_Z1fIXrQTiEEEvv", bad},
        {"_Z1fIXrQ_TiEEEvv", bad},
        {"_Z1fIXrqZiEEEvv", bad},
        {"_Z1fIXrqXLi1ENNEEEvv", bad},
        {"_Z1fIXrqTi", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Style, NamesOfModulesStandForNothingByThemselves) {
    const ExtendedNames extended;
    static constexpr Row rows[] = {
        {"_ZW3foo1fPS_1K", "f@foo(K@foo *)"},
        {"_ZW3foo1fPS_W3bar1KPS0_WP4part1L", "f@foo(K@foo.bar *, L@foo.bar:part *)"},
        {"_ZGIW3fooWP3bar", "Initializer for module foo:bar"},
        {"_ZW3foo1fPS_", bad},
        {"_ZW3foo1fNS_E", bad},
        {"_ZW3foo1fS1K", bad},
        {"_ZW3foo1fS_1", bad},
        {"_ZW3foo1fS_W", bad},
        {"_ZW3foo1fDTsrS_1xE", bad},
        {"_ZGI", bad},
        {"_ZGISIS0_", bad},
    };
    expect_rows(rows);
}
