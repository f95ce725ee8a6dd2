// Scheme 1 at the edges of its rules: names that differ in one character from names that
// read otherwise.
#include <gtest/gtest.h>

#include "demangle/decode_eabi.h"
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
