// Scheme 1 at the edges of its rules: names that differ in one character from names that
// read otherwise.
#include <gtest/gtest.h>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "tests/demangle/scheme1/rows.h"

TEST(Scheme1Edges, UnnamedNamespacesBeginWithAFixedText) {
    static constexpr Row rows[] = {
        {"_ZN9_GLOBAL__1fEv", "_GLOBAL__::f()"},      {"_ZN10_GLOBAL__N1fEv", "<unnamed>::f()"},
        {"_ZN10_GLOBAL__M1fEv", "_GLOBAL__M::f()"},   {"_ZN10_GLOBAL_N_1fEv", "_GLOBAL_N_::f()"},
        {"_ZN11_GLOBAL__N_1fEv", "<unnamed>::f()"},   {"_ZN11_GLOBAL__Nx1fEv", "<unnamed>::f()"},
        {"_ZN11x_GLOBAL__N1fEv", "x_GLOBAL__N::f()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, QualifiersOfFunctionTypes) {
    static constexpr Row rows[] = {
        {"_Z1fM1ArFvvE", "f(void (A::*)() restrict)"},
        {"_Z1fM1AVFvvE", "f(void (A::*)() volatile)"},
        {"_Z1fM1ArVKFvvE", "f(void (A::*)() const volatile restrict)"},
        {"_ZNr1A1fEv", "A::f() restrict"},
        {"_Z1fPKFFvvEvE", "f(void (*)() const())"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, NumbersWithoutDigits) {
    static constexpr Row rows[] = {
        {"DB_", bad},
        {"DU_", bad},
        {"DB1_", "_BitInt(1)"},
        {"DF_", bad},
        {"DFx", bad},
        {"DFb", bad},
        {"DF8b", bad},
        {"DF160b", bad},
        {"_Z1fU15__opencl_vectorf", "f(__opencl_vector float)"},
        {"_Z1fU16__opencl_vector4f", "f(OpenCL Vector of 4 float)"},
        {"_Z1fU17__opencl_vector16f", "f(OpenCL Vector of 16 float)"},
        {"_Z1fU16__opencl_vector41A", "f(OpenCL Vector of 4 A)"},
        {"_Z1fU17__opencl_vector0410stringviewPS0_",
         "f(OpenCL Vector of 4 stringview, OpenCL Vector of 4 stringview *)"},
        {"_Z1fU16__opencl_vectorxf", "f(__opencl_vectorx float)"},
        {"_Z1fU15__opencl_vector1A", "f(__opencl_vector A)"},
        {"_Z1fU17__opencl_vector1xf", "f(__opencl_vector1x float)"},
        {"_Z1fU17x__opencl_vector4f", "f(x__opencl_vector4 float)"},
    };
    expect_rows(rows);
}

// An image of the 80 bits of an x87 number, of the same in 12 and in 16 bytes, and of
// the 128 bits of a quadruple number.
TEST(Scheme1Edges, ImagesOfLongDoubles) {
    static constexpr Row rows[] = {
        {"1AILe3fff8000000000000000EE", "A<(long double)1>"},
        {"1AILe00003fff8000000000000000EE", "A<(long double)1>"},
        {"1AILe0000000000003fff8000000000000000EE", "A<(long double)1>"},
        {"1AILe12343fff8000000000000000EE", "A<(long double)1>"},  // padding is no part of it
        {"1AILe3fff0000000000000000000000000000EE", "A<(long double)1>"},
        {"1AILec0008000000000000000EE", "A<(long double)-2>"},
        {"1AILe80000000000000000000000000000000EE", "A<(long double)-0>"},
        {"1AILe3fff0000000000008000000000000000EE",  // 1 + 2^-49
         "A<(long double)1.0000000000000017764>"},
        {"1AILe0000c0008000000000000000EE", "A<(long double)-2>"},
        {"1AILec0000000000000000000000000000000EE", "A<(long double)-2>"},
        {"1AILe3ff8000000000000EE", "A<(long double)1.5>"},
        {"1AILe3ff800000000000EE", bad},
        {"1AILe3fff800000000000000EE", bad},
        {"1AILe03fff8000000000000000EE", bad},
        {"1AILe0003fff8000000000000000EE", bad},
        {"1AILe000003fff8000000000000000EE", bad},
        {"1AILe000000000003fff8000000000000000EE", bad},
        {"1AILe00000000000003fff8000000000000000EE", bad},
        {"1AILe3FFF8000000000000000EE", bad},
        {"1AILe3fff800000000000000gEE", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, LiteralsOfArraysAreStrings) {
    static constexpr Row rows[] = {
        {"1AILA4_KcEE", "A<(const char [4])\"...\">"},
        {"1AILKA4_cEE", "A<(const char [4])\"...\">"},
        {"1AILKA4_DuEE", "A<(const char8_t [4])\"...\">"},
        {"1AILKcEE", bad},
        {"1AILcEE", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, AnEntityLocalToAFunctionCountsNoParametersOfALambdaAround) {
    static constexpr Row rows[] = {
        {"_ZNK1xMUlZ1gIiEvT_E1yE_clEv",
         "x::[lambda(void g<int>(T1)::y) (instance 1)]::operator ()() const"},
        {"_ZNK1xMUlT_Z1gIiEvS0_E1yS0_E_clEv",
         "x::[lambda(auto:1, void g<int>(T1)::y, auto:1) (instance 1)]::operator ()() const"},
        {"_ZNK1xMUlT_Z1gIiEvT_E1yT_E_clEv",
         "x::[lambda(auto:1, void g<int>(T1)::y, auto:1) (instance 1)]::operator ()() const"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, OneBaseObjectConstructorMakesASubobject) {
    EXPECT_EQ(decoded("_ZZN1AC2EvEN1BC1Ev"), "A::A() [subobject]::B::B()");
    EXPECT_TRUE(decode_is_ia64_subobject("_ZZN1AC2EvEN1BC1Ev"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZZN1AC1EvEN1BC2Ev"));
    EXPECT_TRUE(decode_is_ia64_subobject("_ZZN1AD2EvEN1BD0Ev"));
    EXPECT_FALSE(decode_is_ia64_subobject("_ZZN1AC1EvEN1BC1Ev"));
}

TEST(Scheme1Edges, ACovariantThunkHasTwoOffsets) {
    static constexpr Row rows[] = {
        {"_ZTch0_h8_1fv", "Covariant thunk for (offset 0) (offset 8) f()"},
        {"_ZTch0_1fv", bad},
        {"_ZTch0_x8_1fv", bad},
        {"_ZTc1fv", bad},
        {"_ZTcv0_n1_1fv", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, ValuesThatAreNoNumbers) {
    static constexpr Row rows[] = {
        {"1AILe7fff8000000000000000EE", "A<(long double)inf>"},
        {"1AILeffff8000000000000000EE", "A<(long double)-inf>"},
        {"1AILe7fffc000000000000000EE", "A<(long double)nan>"},
        {"1AILe7fff8000000000000001EE", "A<(long double)nan>"},
        {"1AILe7fff0000000000000000000000000000EE", "A<(long double)inf>"},
        {"1AILe7fff0000000000000000000000000001EE", "A<(long double)nan>"},
        {"1AILe7fff8000000000000000000000000000EE", "A<(long double)nan>"},
        {"1AILf7f800000EE", "A<(float)inf>"},
        {"1AILd7ff8000000000000EE", "A<(double)nan>"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, AbbreviationsAsClassesAndTemplates) {
    static constexpr Row rows[] = {
        {"_ZNStC1Ev", "std::std()"},
        {"_ZNStD1Ev", "std::~std()"},
        {"_ZNSaIcEC1Ev", "std::allocator<char>::allocator()"},
        {"_ZN1AcvPSaIiEEv", "A::operator std::allocator<int> *()"},
        {"_ZN1AcvPSbIcEEv", "A::operator std::basic_string<char> *()"},
        {"_ZN1AcvSsIiEEv",
         "A::operator std::basic_string<char, std::char_traits<char>, "
         "std::allocator<char>><int>()"},
        {"_Z1fSz", "f()"},
        {"_Z1fPSz", "f( *)"},
        {"_Z1fSe", "f()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, ElaboratedTypesTakeAnyNameOfAClass) {
    static constexpr Row rows[] = {
        {"Ts1A", "struct A"},
        {"TuN1A1BE", "union A::B"},
        {"TeZ1fvE1x", "enum f()::x"},
        {"TsSt1A", "struct std::A"},
        {"_Z1f1ATsS_", "f(A, struct A)"},
        {"TsUt_", "struct [unnamed type (instance 1)]"},
        {"Tsi", bad},
        {"TsP1A", bad},
        {"Ts", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, VendorOperatorsBeginWithTheNumberOfTheirOperands) {
    static constexpr Row rows[] = {
        {"Dtv19builtinabT_E", "decltype(builtin-operation-ab(T1))"},
        {"Dtv09builtinabE", "decltype(builtin-operation-ab())"},
        {"_Zv19builtinabi", "operator builtin-operation-ab(int)"},
        {"_Zvx9builtinabi", bad},
        {"_Zv/9builtinabi", bad},
        {"_Zv:12clisubscripti", bad},
        {"Dtvx9builtinabT_E", bad},
        {"Dtv:9builtinabT_E", bad},
        {"Dtv/9builtinabT_E", bad},
        {"Dtvx12clisubscriptT_E", bad},
        {"Dtv", bad},
        {"Dtv1", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, GreaterInATypeThatAnExpressionShows) {
    static constexpr Row rows[] = {
        {"1AIXscAgtT_T0__iT_EE", "A<(static_cast<int [T1 > T2]>(T1))>"},
        {"1AIXcvAgtT_T0__iT_EE", "A<(int [T1 > T2](T1))>"},
        {"1AIXspcvAgtT_T0__iT_EE", "A<(int [T1 > T2](T1))...>"},
        {"1AIXspgtT_T0_EE", "A<(T1 > T2)...>"},
        {"1AIXsr1BIXgtT_T0_EE1xEE", "A<B<(T1 > T2)>::x>"},
        {"1AIXstAgtT_T0__iEE", "A<sizeof(int [T1 > T2])>"},
        {"1AIXszgtT_T0_EE", "A<sizeof(T1 > T2)>"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, AReferenceToAFunctionKeepsTheArgumentsOfItsParameters) {
    static constexpr Row rows[] = {
        {"_Z1fIiEvPDoFvT_IiEEPS2_",
         "void f<int>(void (*)(T1<int>) noexcept, void (*)(T1<int>) noexcept)"},
        {"_Z1fIiEvPFvT_IiEEPS2_", "void f<int>(void (*)(T1<int>), void (*)(T1<int>))"},
        {"_Z1fIiEvPDwiEFvT_IiEEPS2_",
         "void f<int>(void (*)(T1<int>) throw(int), void (*)(T1<int>) throw(int))"},
        {"_Z1fIiEvPDxFvT_IiEEPS2_",
         "void f<int>(void (*)(T1<int>) transaction_safe, void (*)(T1<int>) transaction_safe)"},
        {"_Z1fIiEvM1ADoFvT_IiEEMS0_S3_",
         "void f<int>(void (A::*)(T1<int>) noexcept, void (A::*)(T1<int>) noexcept)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, ParametersOfALambdaMayBeConstrainedTemplates) {
    const ExtendedNames extended;
    static constexpr Row rows[] = {
        {"_ZN1xMUlTtTyEvE_E", "x::[lambda() (instance 1)]"},
        {"_ZN1xMUlTtTyQ1CIT_EET_E_clEv", "x::[lambda(auto:1) (instance 1)]::operator ()()"},
        {"_Z1fUlTyT_Q1CIT_EE_", "f([lambda(auto:1) (instance 1)])"},
        {"_Z1fUlTyQ1CIT_ET_E_", "f([lambda(auto:1) (instance 1)])"},
        {"_ZN1xMUlTtTyQ1CIiEvE_E", bad},
        {"_ZN1xMUlTtTyR1CIiEEvE_E", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, SubobjectsAreToldByTheNamesThatAreOpen) {
    EXPECT_FALSE(decode_is_ia64_subobject("_ZGTtN1AC2Ev"));
    for (const int open : {1, 2, -1}) {
        decode_extended_names = open;
        EXPECT_TRUE(decode_is_ia64_subobject("_ZGTtN1AC2Ev")) << open;
        EXPECT_EQ(decoded("_ZTIDh"), "Typeinfo for _Float16") << open;
    }
    decode_extended_names = 0;
}

TEST(Scheme1Edges, ClassesOfAMemberInAnExpression) {
    static constexpr Row rows[] = {
        {"Dtsr1A1xE", "decltype(A::x)"},
        {"Dtsr1A1BE1xE", "decltype(A::B::x)"},
        {"Dtsr1A1B1CE1xE", "decltype(A::B::C::x)"},
        {"Dtsr1AIiE1B1CE1xE", "decltype(A<int>::B::C::x)"},
        {"Dtsr1A1B1xEE", bad},
        // Whether the levels behind "srN" are entered is told by what the name says later.
        {"_Z1f1ADTsrNS_1BE1xEPi1TIiES2_IcE", "f(A, decltype(A::B::x), int *, T<int>, T<char>)"},
        {"_Z1f1ADTsrNS_1BE1xEPi1TIiES3_IcE", "f(A, decltype(A::B::x), int *, T<int>, T<char>)"},
    };
    expect_rows(rows);
    const std::string name(4200, 'a');
    EXPECT_EQ(decoded("_Z1f4200" + name + "1BIXsr1A1xEE"), "f(" + name + ", B<A::x>)");
    EXPECT_EQ(decoded("_Z1f4200" + name + "1BIXsr1A1CE1xEE"), "f(" + name + ", B<A::C::x>)");
}

TEST(Scheme1Edges, ConstrainedPlaceholdersTakeQualifiers) {
    const ExtendedNames extended;
    static constexpr Row rows[] = {
        {"_Z1fDk1C", "f(C auto)"},
        {"_Z1fKDk1C", "f(const C auto)"},
        {"_Z1fPKDK1C", "f(const C decltype(auto) *)"},
        {"_Z1fOVDk1CIiE", "f(volatile C<int> auto &&)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, NamesOfOneCharacterAndOfMany) {
    static constexpr Row rows[] = {
        {"_ZN1:C1ERKS_S1_S1_S1_S1_", "::::(const : &, const : &, const : &, const : &, const : &)"},
        {"_ZN1/C1ERKS_S1_S1_S1_S1_", "/::/(const / &, const / &, const / &, const / &, const / &)"},
        {"12abcdefghijk<IiE", "abcdefghijk< <int>"},
        {"_ZN12abcdefghijk<IiE1fEv", "abcdefghijk< <int>::f()"},
        {"_Z012abcdefghijklv", "abcdefghijkl()"},
    };
    expect_rows(rows);
}

// Where the name's end is near, and where it is not.
TEST(Scheme1Edges, TextsOfAllLengthsAtTheEndOfAName) {
    static constexpr Row rows[] = {
        {"_Z1x", "x"},
        {"_ZN1x1yE", "x::y"},
        {"_Z26abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvwxyz"},
        {"_Z27abcdefghijklmnopqrstuvwxyzA", "abcdefghijklmnopqrstuvwxyzA"},
        {"_Z28abcdefghijklmnopqrstuvwxyzAB", "abcdefghijklmnopqrstuvwxyzAB"},
        {"_Z29abcdefghijklmnopqrstuvwxyzABC", "abcdefghijklmnopqrstuvwxyzABC"},
        {"_Z31abcdefghijklmnopqrstuvwxyzABCDE", "abcdefghijklmnopqrstuvwxyzABCDE"},
        {"_Z32abcdefghijklmnopqrstuvwxyzABCDEF", "abcdefghijklmnopqrstuvwxyzABCDEF"},
        {"_Z33abcdefghijklmnopqrstuvwxyzABCDEFG", "abcdefghijklmnopqrstuvwxyzABCDEFG"},
        {"_Z34abcdefghijklmnopqrstuvwxyzABCDEFGH", "abcdefghijklmnopqrstuvwxyzABCDEFGH"},
        {"_ZN31abcdefghijklmnopqrstuvwxyzABCDE1xEv", "abcdefghijklmnopqrstuvwxyzABCDE::x()"},
        {"_ZN1x31abcdefghijklmnopqrstuvwxyzABCDEEv", "x::abcdefghijklmnopqrstuvwxyzABCDE()"},
        {"_ZN1x31abcdefghijklmnopqrstuvwxyzABCDEEPKcS1_S1_S1_S1_S1_S1_S1_S1_",
         "x::abcdefghijklmnopqrstuvwxyzABCDE(const char *, const char *, const char *, const char "
         "*, const char *, const char *, const char *, const char *, const char *)"},
        {"_ZN32abcdefghijklmnopqrstuvwxyzABCDEF1xEv", "abcdefghijklmnopqrstuvwxyzABCDEF::x()"},
        {"_ZN1x32abcdefghijklmnopqrstuvwxyzABCDEFEv", "x::abcdefghijklmnopqrstuvwxyzABCDEF()"},
        {"_ZN1x32abcdefghijklmnopqrstuvwxyzABCDEFEPKcS1_S1_S1_S1_S1_S1_S1_S1_",
         "x::abcdefghijklmnopqrstuvwxyzABCDEF(const char *, const char *, const char *, const char "
         "*, const char *, const char *, const char *, const char *, const char *)"},
        {"_ZN33abcdefghijklmnopqrstuvwxyzABCDEFG1xEv", "abcdefghijklmnopqrstuvwxyzABCDEFG::x()"},
        {"_ZN1x33abcdefghijklmnopqrstuvwxyzABCDEFGEv", "x::abcdefghijklmnopqrstuvwxyzABCDEFG()"},
        {"_ZN1x33abcdefghijklmnopqrstuvwxyzABCDEFGEPKcS1_S1_S1_S1_S1_S1_S1_S1_",
         "x::abcdefghijklmnopqrstuvwxyzABCDEFG(const char *, const char *, const char *, const "
         "char *, const char *, const char *, const char *, const char *, const char *)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Edges, QualifiersAroundAVendorQualifierFollowAMark) {
    static constexpr Row rows[] = {
        {"_Z1fKU3AS1i", "f(const AS1 int)"},
        {"_Z1fKU3AS1Pi", "f(AS1 int *const)"},
        {"_Z1fKU3AS1U8__handle3Foo", "f(AS1 Foo ^const)"},
        {"_Z1fKU3AS1U14__interior_ptrPi", "f(const AS1 interior_ptr<int *>)"},
        {"_Z1fKU3AS1U8__vectorPi", "f(AS1 __attribute__((vector_size(?))) int *const)"},
    };
    expect_rows(rows);
}

// Its arguments then belong to the type and are entered with it.
TEST(Scheme1Edges, AConversionToATemplateThatIsMetByReference) {
    static constexpr Row rows[] = {
        {"_ZN1AIiEcvS_IcEEv", "A<int>::operator A<char>()"},
        {"_ZN1AIiEcvS_IcEE1BS1_", "A<int>::operator A<char>(B, A<char>)"},
    };
    expect_rows(rows);
}
