// Scheme 1 on names that GCC 12 and Clang 14 wrote for small sources: each row gives the
// declaration that was compiled, where its text does not show it, the name that the
// compiler made of it, and what the declaration reads like in the decoder's style.
//
// The sources share these declarations:
//   struct A { int m; static int sm; int arr[4]; enum En { e1 }; using I = int;
//              int f(int) const; template <class T> int tf(T) const; ... };
//   struct B : A { struct Inner { static int w; }; };
//   struct G { int a; int b[2]; };
//   namespace ns { int g(int); template <class T> int h(T);
//                  struct NA { template <class T> static int st(T); }; }
//   int g0(int); int gvar; int zz(A); template <class T> int h0(T);
//   template <class> struct X; template <int> struct I; template <bool> struct Bo;
//   template <class...> struct TL; template <unsigned long> struct UL;
#include <gtest/gtest.h>

#include <cstddef>

#include "tests/demangle/scheme1_decode.h"

namespace {

struct Row {
    const char* name;
    const char* text;
};

// Names of the tables: they read the same whether extended names are open or not.
template <std::size_t count>
void expect_rows(const Row (&rows)[count]) {
    for (const Row& row : rows) {
        EXPECT_EQ(decoded(row.name), row.text) << row.name;
        const ExtendedNames extended;
        EXPECT_EQ(decoded(row.name), row.text) << row.name;
    }
}

// Names that are bad names as long as extended names are not open.
template <std::size_t count>
void expect_extended_rows(const Row (&rows)[count]) {
    for (const Row& row : rows) {
        EXPECT_EQ(decoded(row.name), "<bad name>") << row.name;
        const ExtendedNames extended;
        EXPECT_EQ(decoded(row.name), row.text) << row.name;
    }
}

}  // namespace

TEST(Scheme1Compiled, MemberFunctionsAndOperators) {
    static constexpr Row rows[] = {
        // S is ns::v1::S, v1 an inline namespace.
        {"_ZNVKR2ns2v11S1fEv", "ns::v1::S::f() const volatile &"},
        {"_ZN2ns2v11SC1EOS1_", "ns::v1::S::S(ns::v1::S &&)"},
        {"_ZN2ns2v11SaSERKS1_", "ns::v1::S::operator =(const ns::v1::S &)"},
        {"_ZNK2ns2v11SclEii", "ns::v1::S::operator ()(int, int) const"},
        {"_ZN2ns2v11SdlEPvm", "ns::v1::S::operator delete (void *, unsigned long)"},
        {"_ZN2ns2v11SpmEi", "ns::v1::S::operator ->*(int)"},
        {"_ZNKR1ZawEv", "Z::operator co_await() const &"},
        // template <class T> S &S::operator<<(T)
        {"_ZN1SlsIiEERS_T_", "S & S::operator << <int>(T1)"},
        // template <class T> struct Vv { template <class U> struct In; };
        // template <class V> bool operator<(In, V), a friend of In
        {"_ZltIiEbN2VvIiE2InIcEET_", "bool operator < <int>(Vv<int>::In<char>, T1)"},
        {"_Zli3_kme", "operator \"\"_km(long double)"},
        // template <char...> int operator""_t(), called by 12_t
        {"_Zli2_tIJLc49ELc50EEEiv", "int operator \"\"_t<(char)49, (char)50>()"},
        // struct NT { char c[4]; }; template <NT> int operator""_d(), called by "a"_d
        {"_Zli2_dIXtl2NTtlA4_cLc97EEEEEiv", "int operator \"\"_d<NT{char [4]{(char)97}}>()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Compiled, ConversionOperatorsShowTheirTypeAndThenTheirArguments) {
    static constexpr Row rows[] = {
        {"_ZNV2ns2v11ScvbEv", "ns::v1::S::operator bool() volatile"},
        // template <class T> operator T *() const
        {"_ZNK2ns2v11ScvPT_IPS1_EEv", "ns::v1::S::operator T1 *<ns::v1::S *>() const"},
        // template <class T> operator T() &&
        {"_ZNO2ns2v11ScvT_IlEEv", "ns::v1::S::operator T1<long>() &&"},
        // template <class U> using FP = void (*)(U); template <class U> operator FP<U>()
        {"_ZN2CacvPFvT_EIiEEv", "Ca::operator void (*)(T1)<int>()"},
        // template <class U> using AR = U (&)[3]; template <class U> operator AR<U>()
        {"_ZN2CacvRA3_T_IcEEv", "Ca::operator T1 (&)[3]<char>()"},
        {"_ZNK2CacvRKT_IlEEv", "Ca::operator const T1 &<long>() const"},
        {"_ZNK2Cacv1XIT_EIiEEv", "Ca::operator X<T1><int>() const"},
        // template <class U, class V = U> operator X<X<U>> *() const &
        {"_ZNKR2CacvP1XIS0_IT_EEIccEEv", "Ca::operator X<X<T1>> *<char, char>() const &"},
        // template <template <class> class TT> operator TT<int>()
        {"_ZN2CacvT_IiEI1XEEv", "Ca::operator T1<int><X>()"},
        // P<int, char>::operator TL<T...>()
        {"_ZN1PIJicEEcv2TLIJicEEEv", "P<int, char>::operator TL<int, char>()"},
    };
    expect_rows(rows);
}

TEST(Scheme1Compiled, ConstructorsOfTemplatesAndInheritedOnes) {
    static constexpr Row rows[] = {
        // template <class V> Ou<int>::In<char>::In(V)
        {"_ZN2OuIiE2InIcEC1IlEET_", "Ou<int>::In<char>::In<long>(T1)"},
        {"_ZN2OuIiE2InIcED2Ev", "Ou<int>::In<char>::~In() [subobject]"},
        // struct D1 : B1 { using B1::B1; }, of B1(char) and template <class T> B1(T, int)
        {"_ZN2D1CI12B1Ec", "D1::D1(char)"},
        {"_ZN2D1CI22B1IdEET_i", "D1::D1(T1, int) [subobject]"},
        // template <class T> struct D2 : T { using T::T; }
        {"_ZN2D2I2B1ECI1S0_Ec", "D2<B1>::D2(char)"},
        {"_ZN12_GLOBAL__N_12AnD0Ev", "<unnamed>::An::~An() [deleting]"},
        // std::allocator<char>::allocator(const allocator<U> &)
        {"_ZNSaIcEC1IiEERKSaIT_E",
         "std::allocator<char>::allocator<int>(const std::allocator<T1> &)"},
        {"_ZNSs1RC1Ev",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>::R::R()"},
    };
    expect_rows(rows);
}
