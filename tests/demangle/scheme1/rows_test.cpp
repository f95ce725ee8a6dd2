// Scheme 1, row by row: every entry of its tables, the house style, and the names that
// are no names. Expected texts are literal.
#include "tests/demangle/scheme1/rows.h"

#include <gtest/gtest.h>

#include <string>

TEST(Scheme1Rows, BuiltinTypes) {
    static constexpr Row rows[] = {
        {"a", "signed char"},
        {"b", "bool"},
        {"c", "char"},
        {"d", "double"},
        {"e", "long double"},
        {"f", "float"},
        {"h", "unsigned char"},
        {"i", "int"},
        {"j", "unsigned int"},
        {"l", "long"},
        {"m", "unsigned long"},
        {"n", "__int128"},
        {"o", "unsigned __int128"},
        {"s", "short"},
        {"t", "unsigned short"},
        {"u8__vendor", "__vendor"},
        {"v", "void"},
        {"w", "wchar_t"},
        {"x", "long long"},
        {"y", "unsigned long long"},
        {"z", bad},
        {"g", bad},
        {"k", bad},
        {"p", bad},
        {"q", bad},
        {"", bad},
        {"Da", "auto"},
        {"Dc", "decltype(auto)"},
        {"Di", "char32_t"},
        {"Ds", "char16_t"},
        {"Dn", "std::nullptr_t"},
        {"DN", "__nullptr"},
        {"Dd", bad},
        {"De", bad},
        {"Df", bad},
        {"Dh", bad},
        {"Dr", bad},
        {"DP", bad},
        {"Db", bad},
        {"Du", "char8_t"},
        {"DF16_", "_Float16"},
        {"DF64_", "_Float64"},
        {"DF32x", "_Float32x"},
        {"DF16b", "std::bfloat16_t"},
        {"DB8_", "_BitInt(8)"},
        {"DU8_", "unsigned _BitInt(8)"},
        {"DBT__", "_BitInt(T1)"},
        {"Dv4_f", "float __vector(4)"},
        {"Dv_T__f", "float __vector(T1)"},
        {"Cf", "_Complex float"},
        {"Gd", "_Imaginary double"},
        {"u3mapIiE", "map<int>"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, QualifiersStandBeforeNamesAndBehindMarks) {
    static constexpr Row rows[] = {
        {"PKc", "const char *"},
        {"KPc", "char *const"},
        {"PKPKc", "const char *const *"},
        {"rVKi", "const volatile restrict int"},
        {"KrVi", "const volatile restrict int"},
        {"rPc", "char *restrict"},
        {"PPc", "char **"},
        {"RPc", "char *&"},
        {"OPKc", "const char *&&"},
        {"RKPc", "char *const &"},
        {"KRi", "int &const"},
        {"KA3_i", "const int [3]"},
        {"A3_Ki", "const int [3]"},
        {"PVKi", "const volatile int *"},
        {"KM1Ai", "int A::*const"},
        {"KPFvvE", "void (*const)()"},
        {"RKPFvvE", "void (*const &)()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, FunctionsArraysAndMembers) {
    static constexpr Row rows[] = {
        {"PFivE", "int (*)()"},
        {"FivE", "int ()"},
        {"FizE", "int (...)"},
        {"FiizE", "int (int, ...)"},
        {"RA3_i", "int (&)[3]"},
        {"PA_i", "int (*)[]"},
        {"A2_A3_i", "int [2][3]"},
        {"AT__i", "int [T1]"},
        {"PKFviE", "void (*)(int) const"},
        {"M1AKFvvE", "void (A::*)() const"},
        {"M1AFvvRE", "void (A::*)() &"},
        {"M1AKFvvOE", "void (A::*)() const &&"},
        {"M1Ai", "int A::*"},
        {"PM1Ai", "int A::**"},
        {"PDoFvvE", "void (*)() noexcept"},
        {"PDOT_EFvvE", "void (*)() noexcept(T1)"},
        {"PDwiEFvvE", "void (*)() throw(int)"},
        {"PDwicEFvvE", "void (*)() throw(int, char)"},
        {"PDxFvvE", "void (*)() transaction_safe"},
        {"PFYvvE", "void (*)()"},
        {"PFPFvvEiE", "void (*(*)(int))()"},
        {"M1AKDoDxFvvRE", "void (A::*)() const & transaction_safe noexcept"},
        {"_Z1fIiEPFvvEv", "void (*)() f<int>()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, VendorQualifiers) {
    static constexpr Row rows[] = {
        {"U3AS1i", "AS1 int"},
        {"_Z1fPU3AS1i", "f(AS1 int *)"},
        {"_Z1fPU3AS1KiS_", "f(AS1 const int *, AS1 const int)"},
        {"U14__interior_ptri", "interior_ptr<int>"},
        {"U9__pin_ptri", "pin_ptr<int>"},
        {"U8__vectorf", "__attribute__((vector_size(?))) float"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, SpecialNames) {
    static constexpr Row rows[] = {
        {"_ZTV1A", "Virtual function table for A"},
        {"_ZTT1A", "Virtual table table for A"},
        {"_ZTI1A", "Typeinfo for A"},
        {"_ZTIPKc", "Typeinfo for const char *"},
        {"_ZTIFvvE", "Typeinfo for void ()"},
        {"_ZTS1A", "Typeinfo name for A"},
        {"_ZTSN1A1BIiEE", "Typeinfo name for A::B<int>"},
        {"_ZThn16_N1A1fEi", "Thunk for (offset -16) A::f(int)"},
        {"_ZTh16_N1A1fEi", "Thunk for (offset 16) A::f(int)"},
        {"_ZTvn8_n24_N1A1fEi", "Thunk for (offset -8, virtual offset -24) A::f(int)"},
        {"_ZTch8_v4_n12_N1A1fEi",
         "Covariant thunk for (offset 8) (offset 4, virtual offset -12) A::f(int)"},
        {"_ZTh1_Th2_N1A1fEi", "Thunk for (offset 1) Thunk for (offset 2) A::f(int)"},
        {"_ZTH1x", "Thread-local initialization routine for x"},
        {"_ZTWN1A1xE", "Thread-local wrapper routine for A::x"},
        {"_ZGV1x", "Initialization guard variable for x"},
        {"_ZGVZ1fvE1x", "Initialization guard variable for f()::x"},
    };
    static constexpr Row refused[] = {
        {"_ZT", bad},           {"_ZTX1A", bad},        {"_ZTC1A0_1B", bad},
        {"_ZTAXtl1AEE", bad},   {"_ZG", bad},           {"_ZGR1x_", bad},
        {"_ZGTt1fv", bad},      {"_ZThN1A1fEi", bad},   {"_ZTh16N1A1fEi", bad},
        {"_ZTv8_N1A1fEi", bad}, {"_ZTcx8_h8_1fv", bad}, {"_Z", bad},
        {"_ZTF1A", bad},        {"_ZTJ1A", bad},        {"_Zx", bad},
    };
    expect_rows(rows);
    expect_rows(refused);
}

TEST(Scheme1Rows, ThunksShowTheirTargetsSignatureEitherWay) {
    EXPECT_EQ(decoded("_ZTh16_N1A1fEi", false), "Thunk for (offset 16) A::f(int)");
    EXPECT_EQ(decoded("_ZTv1_2_1fIiEvT_", false),
              "Thunk for (offset 1, virtual offset 2) void f<int>(T1)");
}

TEST(Scheme1Rows, ConstructorsAndDestructors) {
    static constexpr Row rows[] = {
        {"_ZN1AC0Ev", "A::A() [deleting]"},
        {"_ZN1AC1Ev", "A::A()"},
        {"_ZN1AC2Ev", "A::A() [subobject]"},
        {"_ZN1AC3Ev", "A::A() [allocating]"},
        {"_ZN1AC4Ev", bad},
        {"_ZN1AC5Ev", bad},
        {"_ZN1AC6Ev", bad},
        {"_ZN1AC7Ev", "A::A()"},
        {"_ZN1AC8Ev", "A::A() [static]"},
        {"_ZN1AC9Ev", "A::A() [delegation]"},
        {"_ZN1AD0Ev", "A::~A() [deleting]"},
        {"_ZN1AD1Ev", "A::~A()"},
        {"_ZN1AD2Ev", "A::~A() [subobject]"},
        {"_ZN1AD4Ev", bad},
        {"_ZN1AD5Ev", bad},
        {"_ZN1ACxEv", bad},
        {"_ZN3FooIiEC1Ev", "Foo<int>::Foo()"},
        {"_ZNSsD1Ev",
         "std::basic_string<char, std::char_traits<char>, "
         "std::allocator<char>>::~basic_string()"},
        {"_ZNSaIcEC1Ev", "std::allocator<char>::allocator()"},
        {"_ZNSbIcEC1Ev", "std::basic_string<char>::basic_string()"},
        {"_ZNSiC1Ev", "std::basic_istream<char, std::char_traits<char>>::basic_istream()"},
        {"_ZNSoD0Ev",
         "std::basic_ostream<char, std::char_traits<char>>::~basic_ostream() [deleting]"},
        {"_ZNSdD2Ev",
         "std::basic_iostream<char, std::char_traits<char>>::~basic_iostream() [subobject]"},
        {"_ZN1AB3tagC1Ev", "A[abi:tag]::A()"},
        {"_ZN1AC1B3tagEv", "A::A[abi:tag]()"},
        {"_ZN1AC1IiEET_", "A::A<int>(T1)"},
        {"_ZN1DCI11BEi", "D::D(int)"},
        {"_ZN1A1BCI2N1A1CEEi", "A::B::B(int) [subobject]"},
        {"_ZNT_C1Ev", "T1::T1()"},
        {"_ZNUlvE_C1Ev", "[lambda() (instance 1)]::[lambda() (instance 1)]()"},
        {"_ZNDtfp_EC1Ev", bad},
        {"_ZNplC1Ev", bad},
        {"_ZNC1Ev", bad},
        {"_ZC1v", bad},
        {"_ZN1AIN1BC4EEE1fEv", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, UndecoratedNamesKeepQualifiersAndSuffixes) {
    static constexpr Row rows[] = {
        {"_Z1fi", "f"},
        {"_Z1fIiEvT_", "f<int>"},
        {"_ZNK1A1fEi", "A::f const"},
        {"_ZNVKO1A1fEi", "A::f const volatile &&"},
        {"_ZNR1A1fEi", "A::f &"},
        {"_ZN1AC2Ev", "A::A [subobject]"},
        {"_ZN1AD0Ev", "A::~A [deleting]"},
        {"_ZZ1fvE1x", "f()::x"},
        {"_ZZ1fiEN1A1gEc", "f(int)::A::g"},
        {"_ZTV1A", "Virtual function table for A"},
        {"_ZN1AcvPKcEv", "A::operator const char *"},
        {"_Z1fIXadL_Z3foocEEEvv", "f<&foo(char)>"},
        {"PFviE", "void (*)(int)"},
    };
    expect_rows(rows, false);
}

TEST(Scheme1Rows, OverridingNamesStandBeforeTheParameters) {
    EXPECT_EQ(decoded("_Z1fQ1gi"), "f [overriding g] (int)");
    EXPECT_EQ(decoded("_ZN1A1fEQN1B1fEv"), "A::f [overriding B::f] ()");
    EXPECT_EQ(decoded("_ZNK1A1fEQN1B1fEv"), "A::f [overriding B::f] () const");
    // The blank behind the bracket and the one before the qualifiers both stay.
    EXPECT_EQ(decoded("_ZNK1A1fEQN1B1fEv", false), "A::f [overriding B::f]  const");
}

TEST(Scheme1Rows, LocalNames) {
    static constexpr Row rows[] = {
        {"_ZZ1fvE1x", "f()::x"},
        {"_ZZ1fvE1x_0", "f()::x (instance 2)"},
        {"_ZZ1fvE1x_9", "f()::x (instance 11)"},
        {"_ZZ1fvE1x__10_", "f()::x (instance 12)"},
        {"_ZZ1fvE1x__10", bad},
        {"_ZZ1fvE1x_", bad},
        {"_ZZ1fvEs", "f()::string"},
        {"_ZZ1fvEs_0", "f()::string (instance 2)"},
        {"_ZZ1fiEd_1x", "f(int)::[default argument 1 (from end)]::x"},
        {"_ZZ1fiEd0_1x", "f(int)::[default argument 2 (from end)]::x"},
        {"_ZZ1fiEdn1_1x", "f(int)::[default argument 1 (from end)]::x"},
        {"_ZZ1fiEdn0_1x", "f(int)::[default argument 2 (from end)]::x"},
        {"_ZZ1fiEdn2_1x", bad},
        {"_ZZ1fiEd01x", bad},
        {"_ZZ1fiEd_NKUlvE_clEv",
         "f(int)::[default argument 1 (from end)]::[lambda() (instance 1)]::operator ()() const"},
        {"_ZZ1fvENKUlvE_clEv", "f()::[lambda() (instance 1)]::operator ()() const"},
        {"_ZZ1fvEN1A1gEi", "f()::A::g(int)"},
        {"_ZZ1fvEN1AC2Ev", "f()::A::A() [subobject]"},
        {"_ZZ1fIiEvT_E1x", "void f<int>(T1)::x"},
        {"_ZZZ1fvEN1A1gEvE1x", "f()::A::g()::x"},
        {"_ZZN1A1fEvE1x", "A::f()::x"},
        {"_ZZNK1A1fEvE1x", "A::f() const::x"},
        {"_ZZ1fvE", bad},
        {"_ZZ1fv", bad},
        {"_ZZ1fv1x", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, Names) {
    static constexpr Row rows[] = {
        {"_Z1f", "f"},
        {"_Z1fv", "f()"},
        {"_Z1fz", "f(...)"},
        {"_Z1fiz", "f(int, ...)"},
        {"_ZN1A1B1CE", "A::B::C"},
        {"_ZSt4cout", "std::cout"},
        {"_ZNSt1AIiE1fEv", "std::A<int>::f()"},
        {"_ZB1x1f", bad},
        {"_ZN1A", bad},
        {"_ZN1A1f", bad},
        {"_ZNE", bad},
        {"_ZNStE", bad},
        {"_Z1fIiEv", bad},
        {"_Z2f", bad},
        {"_Z0v", bad},
        {"_Z99999999999999999999f", bad},
        {"_ZL3foov", "foo()"},
        {"_ZN1aL3barEi", "a::bar(int)"},
        {"_ZN12_GLOBAL__N_11fEv", "<unnamed>::f()"},
        {"_ZN14_GLOBAL__N_x_11fEv", "<unnamed>::f()"},
        {"_ZDC1a1bE", "[a, b]"},
        {"_ZDC1aE", "[a]"},
        {"_ZN1ADC1a1bEE", "A::[a, b]"},
        {"_Z1fB5cxx11v", "f[abi:cxx11]()"},
        {"_Z1fB5cxx11B1xv", "f[abi:cxx11][abi:x]()"},
        {"_Z1fB5cxx11IiEvT_", "void f[abi:cxx11]<int>(T1)"},
        {"_ZN1AUt_E", "A::[unnamed type (instance 1)]"},
        {"_ZN1AUt0_E", "A::[unnamed type (instance 2)]"},
        {"_ZN1AUlvE_E", "A::[lambda() (instance 1)]"},
        {"_ZN1AUliE0_E", "A::[lambda(int) (instance 2)]"},
        {"_ZN1AUlT_T0_E_E", "A::[lambda(auto:1, auto:2) (instance 1)]"},
        {"_ZN1A1xMUlvE_E", "A::x::[lambda() (instance 1)]"},
        {"_ZNK1A1xMUlvE_clEv", "A::x::[lambda() (instance 1)]::operator ()() const"},
        {"_ZNK3fooUlvE_clEv", "foo::[lambda() (instance 1)]::operator ()() const"},
        {"_Z1fi.part.0", bad},
        {"_Z1fi@@V1", bad},
        {"_Z1fvv", "f(void, void)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, TemplateArguments) {
    static constexpr Row rows[] = {
        {"_Z1fIiEvT_", "void f<int>(T1)"},
        {"_Z1fI1AI1BI1CEEEvv", "void f<A<B<C>>>()"},
        {"_ZltIiEbT_S0_", "bool operator < <int>(T1, T1)"},
        {"_ZlsIiEbT_S0_", "bool operator << <int>(T1, T1)"},
        {"_ZgtIiEbT_S0_", "bool operator ><int>(T1, T1)"},
        {"_Z1fIJidEEvDpT_", "void f<int, double>(T1...)"},
        {"_Z1fIJEEvDpT_", "void f<>(T1...)"},
        {"_Z1fIiJEEvT_", "void f<int>(T1)"},
        {"_Z1fIJEiEvT0_", "void f<int>(T2)"},
        {"1AIiJEE", "A<int>"},
        {"1AIJEJEE", "A<>"},
        {"_Z1fI1AEvv", "void f<A>()"},
        {"_Z1fISaEvv", "void f<std::allocator>()"},
        {"1AILi5EE", "A<5>"},
        {"1AILin5EE", "A<-5>"},
        {"1AILj5EE", "A<5U>"},
        {"1AILl5EE", "A<5L>"},
        {"1AILm5EE", "A<5UL>"},
        {"1AILx5EE", "A<5LL>"},
        {"1AILy5EE", "A<5ULL>"},
        {"1AILc97EE", "A<(char)97>"},
        {"1AILsn1EE", "A<(short)-1>"},
        {"1AIL5Color2EE", "A<(Color)2>"},
        {"1AILb0EE", "A<false>"},
        {"1AILb1EE", "A<true>"},
        {"1AILb2EE", "A<(bool)2>"},
        {"1AILDnEE", "A<nullptr>"},
        {"1AILDn0EE", "A<nullptr>"},
        {"1AILPc0EE", "A<(char *)0>"},
        {"1AILf3fc00000EE", "A<(float)1.5>"},
        {"1AILd3ff0000000000000EE", "A<(double)1>"},
        {"1AILd4059000000000000EE", "A<(double)1e+02>"},
        {"1AILf3FC00000EE", bad},
        {"1AILf3fc0000EE", bad},
        {"1AILCf3f800000_40000000EE", "A<(_Complex float)(1, 2)>"},
        {"1AILA4_KcEE", "A<(const char [4])\"...\">"},
        {"2CBIL_Z3foocEE", "CB<foo(char)>"},
        {"1AIXadL_Z3foocEEE", "A<&foo(char)>"},
        {"1AIXgtLi1ELi2EEE", "A<(1 > 2)>"},
        {"1AIXrsLi1ELi2EEE", "A<(1 >> 2)>"},
        {"1AIXgeLi1ELi2EEE", "A<(1 >= 2)>"},
        {"1AIXltLi1ELi2EEE", "A<1 < 2>"},
        {"1AIXscbLi1EEE", "A<static_cast<bool>(1)>"},
        {"1AIXptT_1xEE", "A<T1->x>"},
        {"1AIXplgtT_Li2ELi1EEE", "A<(T1 > 2) + 1>"},
        {"1AIXcvDTgtT_T0_ET_EE", "A<decltype(T1 > T2)(T1)>"},
        {"1AIXscPDOgtT_T0_EFvvET_EE", "A<static_cast<void (*)() noexcept(T1 > T2)>(T1)>"},
        {"1AIXcvDv_rsT_T0__fT1_EE", "A<float __vector(T1 >> T2)(T3)>"},
        {"1AICfLS0_3f800000_c0000000EE", "A<_Complex float, (_Complex float)(1, -2)>"},
        {"1AILA4_KcELS1_EE", "A<(const char [4])\"...\", (const char [4])\"...\">"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, TemplateParameters) {
    static constexpr Row rows[] = {
        {"T_", "T1"},
        {"T0_", "T2"},
        {"T1_", "T3"},
        {"T10_", "T12"},
        {"Tn1_", bad},
        {"T", bad},
        {"T0", bad},
        {"Tx_", bad},
        {"T_IiE", "T1<int>"},
        {"DpT_", "T1..."},
        {"DpRKT_", "const T1 &..."},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, Substitutions) {
    static constexpr Row rows[] = {
        {"S_", bad},
        {"St", bad},
        {"Sa", "std::allocator"},
        {"Sb", "std::basic_string"},
        {"Ss", "std::basic_string<char, std::char_traits<char>, std::allocator<char>>"},
        {"Si", "std::basic_istream<char, std::char_traits<char>>"},
        {"So", "std::basic_ostream<char, std::char_traits<char>>"},
        {"Sd", "std::basic_iostream<char, std::char_traits<char>>"},
        {"Sx", ""},
        {"KSs", "const std::basic_string<char, std::char_traits<char>, std::allocator<char>>"},
        {"_Z1f1AS_", "f(A, A)"},
        {"_Z1f1AS0_", bad},
        {"_Z1f1AS", bad},
        {"_Z1f1AS*_", bad},
        {"_Z1f1ASa_", bad},
        {"_Z1f1AS_S_S_", "f(A, A, A, A)"},
        {"_Z1fPKcS0_S_", "f(const char *, const char *, const char)"},
        {"_Z1fPFvvES0_S_", "f(void (*)(), void (*)(), void ())"},
        {"_Z1fN1A1BES_S0_", "f(A::B, A, A::B)"},
        {"_Z1fN1A1BIiEES_NS0_IcEES1_", "f(A::B<int>, A, A::B<char>, A::B<int>)"},
        {"_Z1fSt1AS_", "f(std::A, std::A)"},
        {"_Z1fSt6vectorIiES_IcES0_", "f(std::vector<int>, std::vector<char>, std::vector<int>)"},
        {"_Z1fSaIiES_", "f(std::allocator<int>, std::allocator<int>)"},
        {"_Z1fRKSsS1_S_", bad},
        {"_Z1fRKSsS0_S_",
         "f(const std::basic_string<char, std::char_traits<char>, std::allocator<char>> &, "
         "const std::basic_string<char, std::char_traits<char>, std::allocator<char>> &, "
         "const std::basic_string<char, std::char_traits<char>, std::allocator<char>>)"},
        {"_ZN1A1fES_", "A::f(A)"},
        {"_ZN1AC1ERKS_", "A::A(const A &)"},
        {"_ZN1AplERKS_", "A::operator +(const A &)"},
        {"_Z1fM1AFvvES_S0_S1_", "f(void (A::*)(), A, void (), void (A::*)())"},
        {"_Z1fIiEvT_S0_", "void f<int>(T1, T1)"},
        {"_Z1fIiEvPT_S1_S0_", "void f<int>(T1 *, T1 *, T1)"},
        {"_Z1fPPPiS9_", bad},
        {"_Z1fPiSZZZZZZZZZZZZZZZZZZZZ_", bad},
    };
    expect_rows(rows);
}

// Names as GCC and Clang both write them for small declarations.
TEST(Scheme1Rows, NamesThatCompilersWrite) {
    static constexpr Row rows[] = {
        {"_Z2arRA3_iPA2_A4_KiPFPFvvEiE", "ar(int (&)[3], const int (*)[2][4], void (*(*)(int))())"},
        {"_Z2dtIiEDTplfp_fp0_ET_S1_", "decltype(param#1 + param#2) dt<int>(T1, T1)"},
        {"_Z2gtILi2ELi1EE1CIXgtT_T0_EES0_IXT_EES0_IXT0_EE", "C<(T1 > T2)> gt<2, 1>(C<T1>, C<T2>)"},
        {"_Z2mpMN1n1SEiMS0_KFvvREMS0_DoFiiE",
         "mp(int n::S::*, void (n::S::*)() const &, int (n::S::*)(int) noexcept)"},
        {"_Z2pkIJicEEvDpN1n1PIT_iEEDpPS2_", "void pk<int, char>(n::P<T1, int>..., T1 *...)"},
        {"_Z2sbN1n1PIiiE1IENS1_1QIcEENS3_IS2_EERS1_NS_1EE",
         "sb(n::P<int, int>::I, n::P<int, int>::Q<char>, n::P<int, int>::Q<n::P<int, int>::I>, "
         "n::P<int, int> &, n::E)"},
        {"_Z2ttIN1n1PEiEvT_IT0_S3_EPS2_IS3_iE", "void tt<n::P, int>(T1<T2, T2>, T1<T2, int> *)"},
        {"_Z3sz2IJiiEEvP1CIXsZT_EEPN1n1PIDpT_EE",
         "void sz2<int, int>(C<sizeof...(T1)> *, n::P<T1...> *)"},
        {"_Z4foldIJicEE1CIXfRplstT_Li0EEEDpS1_",
         "C<(sizeof(T1) + ... + 0)> fold<int, char>(T1...)"},
        {"_ZN1n1S1gIiEET_S2_PS0_", "T1 n::S::g<int>(T1, n::S *)"},
        {"_ZNKR1n1S1fEv", "n::S::f() const &"},
        {"_Z1fILi1EiEv1XIXplT_Li1EEEPT0_S3_", "void f<1, int>(X<T1 + 1>, T2 *, T2 *)"},
        {"_Z1gILi1EiEv1XIXT_EEPT0_S3_", "void g<1, int>(X<T1>, T2 *, T2 *)"},
        {"_Z1gI1SEvNDTcldtcvT__E1fEE5innerEPS3_PS2_",
         "void g<S>(decltype(T1().f())::inner, decltype(T1().f())::inner *, "
         "decltype(T1().f()) *)"},
        {"_ZN1AcvPT_Ii1XILi1EEEEv", "A::operator T1 *<int, X<1>>()"},
        {"_ZN1AcvRT_IiEEv", "A::operator T1 &<int>()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, SubstitutionNumbersCountInBase36) {
    const std::string name = "_Z1f" + std::string(39, 'P') + "i";
    const std::string text = "f(int " + std::string(39, '*') + ", int ";
    EXPECT_EQ(decoded(name + "S_"), text + "*)");
    EXPECT_EQ(decoded(name + "S9_"), text + std::string(11, '*') + ")");
    EXPECT_EQ(decoded(name + "SA_"), text + std::string(12, '*') + ")");
    EXPECT_EQ(decoded(name + "SZ_"), text + std::string(37, '*') + ")");
    EXPECT_EQ(decoded(name + "S10_"), text + std::string(38, '*') + ")");
    EXPECT_EQ(decoded(name + "S11_"), text + std::string(39, '*') + ")");
    EXPECT_EQ(decoded(name + "S12_"), bad);
}

TEST(Scheme1Rows, ConversionOperatorsAndTheSecondAttempt) {
    static constexpr Row rows[] = {
        {"_ZN1AcviEv", "A::operator int()"},
        {"_ZN1AcvPKcEv", "A::operator const char *()"},
        {"_ZN1AcvPFvvEEv", "A::operator void (*)()()"},
        {"_ZN1AcvT_IiEEv", "A::operator T1<int>()"},
        {"_ZN1AcvM1BT_IiEEv", "A::operator T1 B::*<int>()"},
        // A list in the class of a member pointer can only be the class's.
        {"_ZN1AcvMT_IiEcEv", "A::operator char T1<int>::*()"},
        {"_ZN1AcvMT_IiEcE", "A::operator char T1<int>::*"},
        {"_ZN1AcvMT_IiEcEvq", bad},
        // Two lists behind the type: only the second attempt gives the first to the type.
        {"_ZN1AcvT_IiEI1BEEv", "A::operator T1<int><B>()"},
        {"_ZN1AcvPT_IiEI1BEEv", "A::operator T1<int> *<B>()"},
        {"_ZN1AcvT_IiEI1BEIcEEv", bad},
        {"_ZN1AIiEcvS0_Ev", "A<int>::operator A<int>()"},
        {"_ZN1AcvDv4_T_IiEEv", "A::operator T1 __vector(4)<int>()"},
        // A part of the operator's type keeps to that where it is referred to.
        {"_ZN1AcvRA3_T_IiEES2_", "A::operator T1 (&)[3]<int>(T1 (&)[3])"},
        {"_ZN1AcvRA3_T_IiEEPS1_", "A::operator T1 (&)[3]<int>(T1 (*)[3])"},
        {"_ZN1AcvRKT_IiEEVS1_", "A::operator const T1 &<int>(const volatile T1)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, OperatorNames) {
    static constexpr Row rows[] = {
        {"_Zaav", "operator &&()"},
        {"_Zadv", "operator &()"},
        {"_Zanv", "operator &()"},
        {"_ZaNv", "operator &=()"},
        {"_ZaSv", "operator =()"},
        {"_Zatv", "operator alignof()()"},
        {"_Zawv", "operator co_await()"},
        {"_Zazv", "operator alignof()()"},
        {"_Zccv", "operator const_cast()"},
        {"_Zclv", "operator ()()"},
        {"_Zcmv", "operator ,()"},
        {"_Zcov", "operator ~()"},
        {"_Zdav", "operator delete[] ()"},
        {"_Zdcv", "operator dynamic_cast()"},
        {"_Zdev", "operator *()"},
        {"_ZdlPv", "operator delete (void *)"},
        {"_Zdsv", "operator .*()"},
        {"_Zdvv", "operator /()"},
        {"_ZdVv", "operator /=()"},
        {"_Zeov", "operator ^()"},
        {"_ZeOv", "operator ^=()"},
        {"_Zeqv", "operator ==()"},
        {"_Zgev", "operator >=()"},
        {"_Zgtv", "operator >()"},
        {"_Zixv", "operator []()"},
        {"_Zlev", "operator <=()"},
        {"_Zlsv", "operator <<()"},
        {"_ZlSv", "operator <<=()"},
        {"_Zltv", "operator <()"},
        {"_Zmiv", "operator -()"},
        {"_ZmIv", "operator -=()"},
        {"_Zmlv", "operator *()"},
        {"_ZmLv", "operator *=()"},
        {"_Zmmv", "operator --()"},
        {"_Znav", "operator new[] ()"},
        {"_Znev", "operator !=()"},
        {"_Zngv", "operator -()"},
        {"_Zntv", "operator !()"},
        {"_Znwm", "operator new (unsigned long)"},
        {"_Znxv", "operator noexcept()()"},
        {"_Zoov", "operator ||()"},
        {"_Zorv", "operator |()"},
        {"_ZoRv", "operator |=()"},
        {"_Zplv", "operator +()"},
        {"_ZpLv", "operator +=()"},
        {"_Zpmv", "operator ->*()"},
        {"_Zppv", "operator ++()"},
        {"_Zpsv", "operator +()"},
        {"_Zptv", "operator ->()"},
        {"_Zquv", "operator ?()"},
        {"_Zrcv", "operator reinterpret_cast()"},
        {"_Zrmv", "operator %()"},
        {"_ZrMv", "operator %=()"},
        {"_Zrsv", "operator >>()"},
        {"_ZrSv", "operator >>=()"},
        {"_Zscv", "operator static_cast()"},
        {"_Zstv", "operator sizeof()()"},
        {"_Zszv", "operator sizeof()()"},
        {"_Ztev", "operator typeid()()"},
        {"_Ztiv", "operator typeid()()"},
        {"_Ztrv", "operator throw()"},
        {"_Ztwv", "operator throw ()"},
        {"_Zv18alignofev", "operator __alignof__()()"},
        {"_Zv17alignofv", "operator __alignof__()()"},
        {"_Zv19__uuidofev", "operator __uuidof()()"},
        {"_Zv18__uuidofv", "operator __uuidof()()"},
        {"_Zv17typeidev", "operator typeid()()"},
        {"_Zv16typeidv", "operator typeid()()"},
        {"_Zv19clitypeidv", "operator ::typeid()"},
        {"_Zv23minv", "operator <?()"},
        {"_Zv23maxv", "operator >?()"},
        {"_Zv18__real__v", "operator __real()()"},
        {"_Zv18__imag__v", "operator __imag()()"},
        {"_Zv19clihandlev", "operator %()"},
        {"_Zv112clisafe_castv", "operator safe_cast()"},
        {"_Zv39builtinabv", "operator builtin-operation-ab()"},
        {"_Zv212clisubscriptv", "operator subscript()"},
        {"_Zli2_xy", "operator \"\"_x(unsigned long long)"},
        {"_Zli0v", bad},
        {"_Zli9_xv", bad},
        {"_Zliv", bad},
        {"_Zlin2_xv", bad},
        {"_Zssv", bad},
        {"_Zzzv", bad},
        {"_Zv15otherv", bad},
        {"_Zv", bad},
        {"_Za", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, Expressions) {
    static constexpr Row rows[] = {
        {"DtplT_Li1EE", "decltype(T1 + 1)"},
        {"DtmlplT_Li1ELi2EE", "decltype((T1 + 1) * 2)"},
        {"DtngT_E", "decltype(-T1)"},
        {"DtntaaT_T0_E", "decltype(!(T1 && T2))"},
        {"DtquT_Li1ELi2EE", "decltype(T1 ? 1 : 2)"},
        {"Dtcl1fT_Li2EEE", "decltype(f(T1, 2))"},
        {"Dtcl1fEE", "decltype(f())"},
        {"Dtcp1fT_EE", "decltype((f)(T1))"},
        {"DtclplT_T0_T1_EE", "decltype((T1 + T2)(T3))"},
        {"DtsrT_1xE", "decltype(T1::x)"},
        {"DtsrSt1A1xE", "decltype(std::A::x)"},
        {"DtsrN1A1BE1xE", "decltype(A::B::x)"},
        {"Dtsr1A1BE1xE", "decltype(A::B::x)"},
        {"DtsrNT_1BE1xE", "decltype(T1::B::x)"},
        {"Dtgssr1AE1xE", "decltype(::A::x)"},
        {"Dtgs1xE", "decltype(::x)"},
        {"DtszT_E", "decltype(sizeof(T1))"},
        {"DtstT_E", "decltype(sizeof(T1))"},
        {"DtsZT_E", "decltype(sizeof...(T1))"},
        {"DtsZfp_E", "decltype(sizeof...(param#1))"},
        {"DtsPicEE", "decltype(sizeof...(int, char))"},
        {"DtscRiT_E", "decltype(static_cast<int &>(T1))"},
        {"DtdcPiT_E", "decltype(dynamic_cast<int *>(T1))"},
        {"DtcciT_E", "decltype(const_cast<int>(T1))"},
        {"DtrciT_E", "decltype(reinterpret_cast<int>(T1))"},
        {"DtcviT_E", "decltype(int(T1))"},
        {"DtcvPiT_E", "decltype(int *(T1))"},
        {"Dtcvi_T_T0_EE", "decltype(int(T1, T2))"},
        {"Dtcvi_EE", "decltype(int())"},
        {"DttliT_Li2EEE", "decltype(int{T1, 2})"},
        {"DtilT_Li2EEE", "decltype({T1, 2})"},
        {"Dtnw_ipiLi5EEE", "decltype(new int(5))"},
        {"Dtnw_iEE", "decltype(new int)"},
        {"Dtnw_ipiEE", "decltype(new int())"},
        {"Dtgsnw_iEE", "decltype(::new int)"},
        {"Dtna_iEE", "decltype(new[] int)"},
        {"DtdlT_E", "decltype(delete T1)"},
        {"DtdaT_E", "decltype(delete[] T1)"},
        {"DtgsdlT_E", "decltype(::delete T1)"},
        {"Dtdtfp_1xE", "decltype(param#1.x)"},
        {"Dtptfp_1xE", "decltype(param#1->x)"},
        {"Dtdsfp_fp0_E", "decltype(param#1.*param#2)"},
        {"Dtpmfp_fp0_E", "decltype(param#1 ->* param#2)"},
        {"Dtcmfp_fp0_E", "decltype(param#1, param#2)"},
        {"Dtixfp_Li0EE", "decltype(param#1[0])"},
        {"DtflplT_E", "decltype((... + T1))"},
        {"DtfrplT_E", "decltype((T1 + ...))"},
        {"DtfLplT_Li0EE", "decltype((T1 + ... + 0))"},
        {"DtfRplT_Li0EE", "decltype((T1 + ... + 0))"},
        {"DtflixT_E", bad},
        {"Dtfp_E", "decltype(param#1)"},
        {"DtfpK0_E", "decltype(param#2)"},
        {"DtfL0p_E", "decltype(param#1[up 1 level])"},
        {"DtfL0p0_E", "decltype(param#2[up 1 level])"},
        {"DtfL1p_E", "decltype(param#1[up 2 levels])"},
        {"DtfpTE", "decltype(this)"},
        {"Dtpp_T_E", "decltype(++T1)"},
        {"DtppT_E", "decltype(T1++)"},
        {"Dtmm_T_E", "decltype(--T1)"},
        {"DtngppT_E", "decltype(-(T1++))"},
        {"DtawT_E", "decltype(co_await T1)"},
        {"DttwT_E", "decltype(throw T1)"},
        {"DttrE", "decltype(throw)"},
        {"DtspT_E", "decltype(T1...)"},
        {"DttiiE", "decltype(typeid(int))"},
        {"DtteT_E", "decltype(typeid(T1))"},
        {"DtatiE", "decltype(alignof(int))"},
        {"DtazT_E", "decltype(alignof(T1))"},
        {"DtnxT_E", "decltype(noexcept(T1))"},
        {"Dtu5__fooT_E", bad},
        {"Dtu5__fooT_EE", "decltype(__foo(T1))"},
        {"DtdnT_E", "decltype(~T1)"},
        {"DtonplE", "decltype(operator +)"},
        {"DtonplIiEE", "decltype(operator +<int>)"},
        {"DtsrT_dn1AE", "decltype(T1::~A)"},
        {"Dtv18alignofeT_E", "decltype(__alignof__(T1))"},
        {"Dtv17alignofiE", "decltype(__alignof__(int))"},
        {"Dtv19clitypeidiE", "decltype(int::typeid)"},
        {"Dtv23minT_T0_E", "decltype(T1 <? T2)"},
        {"Dtv18__real__T_E", "decltype(__real(T1))"},
        {"Dtv19clihandleT_E", "decltype(%T1)"},
        {"Dtv112clisafe_castiT_E", "decltype(safe_cast<int>(T1))"},
        {"Dtv29builtinabT_T0_E", "decltype(builtin-operation-ab(T1, T2))"},
        {"Dtv212clisubscriptT_T0_E", "decltype(subscript(T1, T2))"},
        {"Dtli2_xE", bad},
        {"DTplT_Li1EE", "decltype(T1 + 1)"},
        {"DtzzT_E", bad},
        {"DtplT_E", bad},
        {"DtT_", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Rows, ExtendedNames) {
    static constexpr Row rows[] = {
        {"g", "__float128"},
        {"Dd", "_Decimal64"},
        {"De", "_Decimal128"},
        {"Df", "_Decimal32"},
        {"Dh", "_Float16"},
        {"_Zssv", "operator <=>()"},
        {"DtssT_Li1EE", "decltype(T1 <=> 1)"},
        {"DtfrssT_E", "decltype((T1 <=> ...))"},
        {"_ZTC1A0_1B", "Construction vtable for B-in-A"},
        {"_ZTAXtl1AEE", "Template parameter object for A{}"},
        {"_ZGR1x_", "Reference temporary #0 for x"},
        {"_ZGR1x0_", "Reference temporary #1 for x"},
        {"_ZGTt1fv", "Transaction clone for f()"},
        {"_ZGTn1fv", "Transaction clone for f()"},
        {"_ZN1AC4Ev", "A::A()"},
        {"_ZN1AC5Ev", "A::A()"},
        {"_ZN1AD4Ev", "A::~A()"},
        {"_ZN1AD5Ev", "A::~A()"},
        {"_Z1fi.part.0", "f(int) [clone .part.0]"},
        {"_Z1f.cold", "f [clone .cold]"},
        {"_Z1fi", "f(int)"},
        {"_ZN1AC6Ev", bad},
        {"z", bad},
        {"_ZTX1A", bad},
    };
    const ExtendedNames extended;
    expect_rows(rows);
}
