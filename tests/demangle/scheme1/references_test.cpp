// Scheme 1: which components enter the table of substitutions, and how what stands in it
// reads where it is referred to.
#include <gtest/gtest.h>

#include "tests/demangle/scheme1/rows.h"

TEST(Scheme1References, AnArrayReadsByWhereTheReferenceStands) {
    static constexpr Row rows[] = {
        {"_Z1fKA3_PiRS0_", "f(int *const [3], int *(&)[3])"},
        {"_Z1fKA3_PiRS1_", "f(int *const [3], int *const (&)[3])"},
        {"_Z1fKA3_PiS0_", "f(int *const [3], int *[3])"},
        {"_Z1fKA3_PiS1_", "f(int *const [3], int *const [3])"},
        {"_Z1fKA3_PiPS0_", "f(int *const [3], int *(*)[3])"},
        {"_Z1fKA3_PiRKS0_", "f(int *const [3], int *const (&)[3])"},
        {"_Z1fKA3_PiVS0_", "f(int *const [3], int *volatile [3])"},
        {"_Z1fKA3_PiVS1_", "f(int *const [3], int *const volatile [3])"},
        {"_Z1fVA3_PiRS0_", "f(int *volatile [3], int *(&)[3])"},
        {"_Z1fA3_PiRKS0_", "f(int *[3], int *const (&)[3])"},
        {"_Z1fKA3_PiA2_S0_", "f(int *const [3], int *[2][3])"},
        {"_Z1fKA2_A3_PiRS0_", "f(int *const [2][3], int *(&)[3])"},
        {"_Z1fKA2_A3_PiRS1_", "f(int *const [2][3], int *(&)[2][3])"},
        {"_Z1fKA2_A3_PiRS2_", "f(int *const [2][3], int *const (&)[2][3])"},
        {"_Z1fKA3_iRS_", "f(const int [3], int (&)[3])"},
        {"_Z1fKA3_iRS0_", "f(const int [3], const int (&)[3])"},
        {"_Z1fKA3_1ARS0_", "f(const A [3], A (&)[3])"},
        {"_Z1fRA3_KPiS1_", "f(int *const (&)[3], int *const [3])"},
        {"_Z1fKA3_M1AiRS1_", "f(int A::*const [3], int A::*(&)[3])"},
        {"_Z1fKA3_PiPFRS0_vE", "f(int *const [3], int *(&(*)())[3])"},
        {"_Z1f1AIKA3_PiEPS1_", "f(A<int *const [3]>, int *(*)[3])"},
        {"_Z1fU3AS1A3_PiRS0_", "f(AS1 int *[3], int *(&)[3])"},
        {"_Z1fU3AS1A3_PiRS1_", "f(AS1 int *[3], AS1 int *(&)[3])"},
        {"_Z1fIPiEvKA3_T_RS2_", "void f<int *>(const T1 [3], T1 (&)[3])"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, AFunctionReadsByWhereTheReferenceStands) {
    static constexpr Row rows[] = {
        {"_Z1fKA3_PFvvES1_", "f(void (*const [3])(), void (*[3])())"},
        {"_Z1fKA3_PFvvERS1_", "f(void (*const [3])(), void (*(&)[3])())"},
        {"_Z1fKA3_PFvvES0_S_", "f(void (*const [3])(), void (*)(), void ())"},
        {"_Z1fM1AKFvvEPS0_", "f(void (A::*)() const, void (*)() const)"},
        {"_Z1fPDoFvvES_S0_", "f(void (*)() noexcept, void () noexcept, void (*)() noexcept)"},
        {"_Z1fPFPivERS0_", "f(int *(*)(), int *(&)())"},
        {"_Z1fKPFPivERS0_KS1_", "f(int *(*const)(), int *(&)(), int *(*const)())"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, AnExpansionReadsAlikeSpelledOutAndByReference) {
    static constexpr Row rows[] = {
        {"_Z1fDpFvvERDpFvvE", "f(void ()..., void ()... &)"},
        {"_Z1fDpFvvERS0_", "f(void ()..., void ()... &)"},
        {"_Z1fDpFvvERS_", "f(void ()..., void (&)())"},
        {"_Z1fDpA3_iPS0_", "f(int [3]..., int [3]... *)"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, UnnamedTypesAreNamesAndNoVendorQualifiers) {
    static constexpr Row rows[] = {
        {"_Z1fRA3_Ut_", "f([unnamed type (instance 1)] (&)[3])"},
        {"_Z1fA3_Ut_", "f([unnamed type (instance 1)] [3])"},
        {"_Z1fKA3_Ut_", "f(const [unnamed type (instance 1)] [3])"},
        {"_Z1fRA2_A3_Ut0_", "f([unnamed type (instance 2)] (&)[2][3])"},
        {"_Z1fPFUlvE_vE", "f([lambda() (instance 1)] (*)())"},
        {"_Z1fPFUlvE_S_E", "f([lambda() (instance 1)] (*)([lambda() (instance 1)]))"},
        {"_Z1fM1AFUlvE_vE", "f([lambda() (instance 1)] (A::*)())"},
        {"_Z1fPFPFUliE0_vEvE", "f([lambda(int) (instance 2)] (*(*)())())"},
        {"_Z1fRA3_U3AS1Ut_", "f(AS1 [unnamed type (instance 1)] (&)[3])"},
        {"_Z1fRA3_KUt_RS0_",
         "f(const [unnamed type (instance 1)] (&)[3], const [unnamed type (instance 1)] &)"},
        {"_Z1fUt_PS_RA2_S_",
         "f([unnamed type (instance 1)], [unnamed type (instance 1)] *, "
         "[unnamed type (instance 1)] (&)[2])"},
        {"_Z1fRA3_Ux_", bad},
        {"_Z1fRA3_U", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1References, LettersInFrontOfAVendorQualifierAreAnEntryOfTheirOwn) {
    static constexpr Row rows[] = {
        {"_Z2f5PKU7_AtomiciS1_PS_", "f5(const _Atomic int *, const _Atomic int *, _Atomic int *)"},
        {"_Z2f5PKU7_AtomiciS0_", "f5(const _Atomic int *, const _Atomic int)"},
        {"_Z2f5PKU7_AtomiciS2_", bad},
        {"_Z3volPVU7_Atomici", "vol(volatile _Atomic int *)"},
        {"_Z1fPVU7_AtomiciS1_S0_S_",
         "f(volatile _Atomic int *, volatile _Atomic int *, volatile _Atomic int, _Atomic int)"},
        {"_Z1fPVKU7_AtomiciS1_S0_",
         "f(const volatile _Atomic int *, const volatile _Atomic int *, "
         "const volatile _Atomic int)"},
        // Letters behind it make one entry with it.
        {"_Z1fPU7_AtomicViS0_S_",
         "f(_Atomic volatile int *, _Atomic volatile int *, _Atomic volatile int)"},
        {"_Z1fPU7_AtomicViS1_", bad},
        {"_Z1fPU3AS1U3AS2KiS_S0_",
         "f(AS1 AS2 const int *, AS1 AS2 const int, AS1 AS2 const int *)"},
        {"_Z1fPU3AS1U3AS2KiS1_", bad},
        {"_Z1fPU3AS1rVKiS_",
         "f(AS1 const volatile restrict int *, AS1 const volatile restrict int)"},
        // Both.
        {"_Z1fPU3AS1KU3AS2iS_S0_S1_",
         "f(AS1 const AS2 int *, AS2 int, AS1 const AS2 int, AS1 const AS2 int *)"},
        {"_Z1fPKU3AS1KiS_S0_", "f(const AS1 const int *, AS1 const int, const AS1 const int)"},
        {"_Z1fPKU8__handle1AS_S0_S1_", "f(A ^const *, A, A ^, A ^const)"},
        {"_Z1fKU14__interior_ptriS_S0_",
         "f(const interior_ptr<int>, interior_ptr<int>, const interior_ptr<int>)"},
        {"_Z1fKU8__vectorfS_",
         "f(const __attribute__((vector_size(?))) float, __attribute__((vector_size(?))) float)"},
        {"_Z1fKU16__opencl_vector4fS_",
         "f(const OpenCL Vector of 4 float, OpenCL Vector of 4 float)"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, QualifiersReadInTheOrderInWhichTheyStand) {
    static constexpr Row rows[] = {
        {"PKU7_Atomici", "const _Atomic int *"},
        {"PU7_AtomicKi", "_Atomic const int *"},
        {"_Z1fPU7_AtomiciPKS_PVS_",
         "f(_Atomic int *, const _Atomic int *, volatile _Atomic int *)"},
        {"_Z1fPU3AS1KiPVS_", "f(AS1 const int *, volatile AS1 const int *)"},
        {"_Z1fIiEvPKU3AS1T_", "void f<int>(const AS1 T1 *)"},
        {"_Z1f1APKU3AS1S_", "f(A, const AS1 A *)"},
        {"KU3AS1A3_i", "const AS1 int [3]"},
        {"KU3AS1U3AS2i", "const AS1 AS2 int"},
        {"KU1aIiEc", "const a<int> char"},
        // Behind a mark they qualify the mark.
        {"KU3AS1Pi", "AS1 int *const"},
        {"PKU3AS1Pi", "AS1 int *const *"},
        {"KU3AS1M1Ai", "AS1 int A::*const"},
        {"KU3AS1PFvvE", "AS1 void (*const)()"},
        {"KU3AS1A3_Pi", "AS1 int *const [3]"},
        {"_Z1fPiKU3AS1S_", "f(int *, AS1 int *const)"},
        {"_Z2atU7_AtomicPiPKS0_", "at(_Atomic int *, _Atomic int *const *)"},
    };
    expect_rows(rows);
}

// As Clang writes blocks and calling conventions.
TEST(Scheme1References, BehindABlockPointerTheFunctionIsEnteredAndThenTheBlock) {
    static constexpr Row rows[] = {
        {"_ZN1S2gtIiEEU13block_pointerFvvET_S2_",
         "block_pointer void () S::gt<int>(T1, block_pointer void ())"},
        {"_Z2f1U13block_pointerFvvES0_", "f1(block_pointer void (), block_pointer void ())"},
        {"_Z2f1U13block_pointerFvvES_", "f1(block_pointer void (), void ())"},
        {"_Z2f1U13block_pointerFvvES1_", bad},
        {"_Z2f1U13block_pointerFvvES0_PS0_S0_PKS0_",
         "f1(block_pointer void (), block_pointer void (), block_pointer void (*)(), "
         "block_pointer void (), const block_pointer void (*)())"},
        {"_Z2f2U13block_pointerFiicES0_U13block_pointerFKiU13block_pointerFviEE",
         "f2(block_pointer int (int, char), block_pointer int (int, char), "
         "block_pointer const int (block_pointer void (int)))"},
        {"_Z2nnU13block_pointerDoFvvES0_",
         "nn(block_pointer void () noexcept, block_pointer void () noexcept)"},
        {"_Z3ft2IU13block_pointerFvvEEvT_PS2_", "void ft2<block_pointer void ()>(T1, T1 *)"},
        {"_Z2ftIiEvU13block_pointerFvT_EU13block_pointerFS0_vERKS2_",
         "void ft<int>(block_pointer void (T1), block_pointer T1 (), "
         "const block_pointer void (&)(T1))"},
        {"_Z1bU13block_pointerFvP11objc_objectEU13block_pointerFS0_PU11objcproto1P11objc_objectE",
         "b(block_pointer void (objc_object *), "
         "block_pointer objc_object *(objcproto1P objc_object *))"},
        // What is no function makes one entry with it.
        {"_Z1fU13block_pointeriS_", "f(block_pointer int, block_pointer int)"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, ACallingConventionAndItsFunctionAreOneEntry) {
    static constexpr Row rows[] = {
        {"_Z1fPU6ms_abiFiiES_S0_", "f(ms_abi int (*)(int), ms_abi int (int), ms_abi int (*)(int))"},
        {"_Z1fPU6ms_abiFiiES1_", bad},
        {"_Z3msmM1AU6ms_abiKFviES0_S1_",
         "msm(ms_abi void (A::*)(int) const, ms_abi void (int) const, "
         "ms_abi void (A::*)(int) const)"},
        {"_Z1fU13block_pointerU6ms_abiFvvES_S0_",
         "f(block_pointer ms_abi void (), ms_abi void (), block_pointer ms_abi void ())"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, StandardAbbreviationsWithTagsAreEnteredWithThem) {
    static constexpr Row rows[] = {
        {"SsB3foo",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:foo]"},
        {"_Z1fSsB1XS_",
         "f(std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X], "
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X])"},
        {"_Z1fSsB1XB2yzS_",
         "f(std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X][abi:yz], "
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X][abi:yz])"},
        {"_Z1fKSsB1XS0_S_",
         "f(const std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X], "
         "const std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X], "
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X])"},
        {"_Z1fPSiB1xS_",
         "f(std::basic_istream<char, std::char_traits<char>>[abi:x] *, "
         "std::basic_istream<char, std::char_traits<char>>[abi:x])"},
        {"_Z1fSbB5cxx11IcE", "f(std::basic_string[abi:cxx11]<char>)"},
        {"_Z1fSbB5cxx11IcES0_S_IwE",
         "f(std::basic_string[abi:cxx11]<char>, std::basic_string[abi:cxx11]<char>, "
         "std::basic_string[abi:cxx11]<wchar_t>)"},
        {"_Z1fSaB1XIiES_IcES0_",
         "f(std::allocator[abi:X]<int>, std::allocator[abi:X]<char>, std::allocator[abi:X]<int>)"},
        {"_ZNSsB1X1fEv",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X]::f()"},
        {"_ZNKSsB1X1fES_",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X]::f("
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X]) const"},
        {"_ZNSsB1XC1ES_",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X]"
         "::basic_string("
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X])"},
        {"_ZNSbB5cxx11IcE1fES_S0_",
         "std::basic_string[abi:cxx11]<char>::f(std::basic_string[abi:cxx11], "
         "std::basic_string[abi:cxx11]<char>)"},
        {"_ZNSaB1XIcED1Ev", "std::allocator[abi:X]<char>::~allocator()"},
        {"_Z1fN1AESsB1XS0_S1_", bad},
        {"_Z1f1ASsB1XS0_",
         "f(A, std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X], "
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>[abi:X])"},
        {"_Z1fSsB", bad},
        {"_Z1fSsBx", bad},
        {"_Z1fSsB0", bad},
        {"_Z1fSsB9X", bad},
        {"_ZNSsB1XEv", bad},
        {"_Z1fStB1X", bad},
        {"_Z1f1AS_B1X", bad},
    };
    expect_rows(rows);
}

// Arguments behind what is no template.
TEST(Scheme1References, WhatIsNoTemplateTakesNoArguments) {
    static constexpr Row rows[] = {
        // In a list of arguments an older pack follows.
        {"_Z1fIJA_FhvES1_ItEEEvv",
         "void f<unsigned char [](), unsigned char [](), unsigned short>()"},
        {"_Z1fPiS_IcE", bad},
        {"_Z1fA3_PiS0_IcE", bad},
        {"_Z1fPFvvES_IcE", bad},
        {"_Z1fPFvvES0_IcE", bad},
        {"_Z1fM1AiS0_IcE", bad},
        {"_Z1fPKiS_IcE", bad},
        {"_Z1fRA3_iRS_IcE", bad},
        {"_Z1f1AS_IcE", "f(A, A<char>)"},
        {"_Z1fN1A1BES0_IcE", "f(A::B, A::B<char>)"},
        {"_Z1fIiEvT_S0_IcE", "void f<int>(T1, T1<char>)"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, WhatWasEnteredInSilenceReadsTheSameEachTime) {
    static constexpr Row rows[] = {
        {"_Z1fIXgtstN1N1AELi1EEEvNS0_1BENS0_1CE", "void f<(sizeof(N::A) > 1)>(N::B, N::C)"},
        // The return type is behind the name, and its text in front of it.
        {"_Z1fIXgtstN1N1AELi1EEENS0_1BENS0_1CE", "N::B f<(sizeof(N::A) > 1)>(N::C)"},
        {"_Z1fIXgtstN1N1AELi1EEENS0_1BENS0_1CENS0_1DE", "N::B f<(sizeof(N::A) > 1)>(N::C, N::D)"},
        {"_Z1fIXgtstN1N1AELi1EEES1_S1_S1_", "N::A f<(sizeof(N::A) > 1)>(N::A, N::A)"},
        {"_Z1fIXgtstPiLi1EEES0_KS0_S0_", "int * f<(sizeof(int *) > 1)>(int *const, int *)"},
        {"_Z1fIXgtstPFivELi1EEES1_S1_PKS1_",
         "int (*)() f<(sizeof(int (*)()) > 1)>(int (*)(), int (*const *)())"},
        {"_Z1fIXgtstA3_iLi1EEEPS0_RS0_S1_",
         "int (*)[3] f<(sizeof(int [3]) > 1)>(int (&)[3], int (*)[3])"},
    };
    expect_rows(rows);
}

TEST(Scheme1References, InAndOutsideOfALambda) {
    static constexpr Row rows[] = {
        {"_Z1fN1N1AEUlNS_1BENS_1CEE_NS_1DE", "f(N::A, [lambda(N::B, N::C) (instance 1)], N::D)"},
        {"_Z1fIiEvT_S0_UlS0_S0_E_S0_S0_",
         "void f<int>(T1, T1, [lambda(auto:1, auto:1) (instance 1)], T1, T1)"},
        {"_Z1fIiEvUlT_E_S0_UlS0_S0_E_S0_S0_",
         "void f<int>([lambda(auto:1) (instance 1)], T1, [lambda(auto:1, auto:1) (instance 1)], "
         "T1, T1)"},
    };
    expect_rows(rows);
}
