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

#include "tests/demangle/scheme1/rows.h"

namespace {

// Names of the tables: they read the same whether extended names are open or not.
template <std::size_t count>
void expect_rows_alike(const Row (&rows)[count]) {
    expect_rows(rows);
    const ExtendedNames extended;
    expect_rows(rows);
}

// Names that are bad names as long as extended names are not open.
template <std::size_t count>
void expect_extended_rows(const Row (&rows)[count]) {
    for (const Row& row : rows) {
        EXPECT_EQ(decoded(row.name), bad) << row.name;
        const ExtendedNames extended;
        EXPECT_EQ(decoded(row.name), row.text) << row.name;
    }
}

}  // namespace

TEST(Scheme1Compiled, MemberFunctionsAndOperators) {
    static constexpr Row rows[] = {
        // S is ns::v1::S, v1 an inline namespace.
        {"_ZNVKR2ns2v11S1fEv", "ns::v1::S::f() const volatile &"},
        {"_ZN2ns2v11SdlEPvm", "ns::v1::S::operator delete (void *, unsigned long)"},
        {"_ZNKR1ZawEv", "Z::operator co_await() const &"},
        // template <class T> S &S::operator<<(T)
        {"_ZN1SlsIiEERS_T_", "S & S::operator << <int>(T1)"},
        // template <class T> struct Vv { template <class U> struct In; };
        // template <class V> bool operator<(In, V), a friend of In
        {"_ZltIiEbN2VvIiE2InIcEET_", "bool operator < <int>(Vv<int>::In<char>, T1)"},
        // template <char...> int operator""_t(), called by 12_t
        {"_Zli2_tIJLc49ELc50EEEiv", "int operator \"\"_t<(char)49, (char)50>()"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, ConversionOperatorsShowTheirTypeAndThenTheirArguments) {
    static constexpr Row rows[] = {
        // template <class T> operator T *() const
        {"_ZNK2ns2v11ScvPT_IPS1_EEv", "ns::v1::S::operator T1 *<ns::v1::S *>() const"},
        // template <class T> operator T() &&
        {"_ZNO2ns2v11ScvT_IlEEv", "ns::v1::S::operator T1<long>() &&"},
        // template <class U> using FP = void (*)(U); template <class U> operator FP<U>()
        {"_ZN2CacvPFvT_EIiEEv", "Ca::operator void (*)(T1)<int>()"},
        // template <class U> using AR = U (&)[3]; template <class U> operator AR<U>()
        {"_ZN2CacvRA3_T_IcEEv", "Ca::operator T1 (&)[3]<char>()"},
        // template <class U, class V = U> operator X<X<U>> *() const &
        {"_ZNKR2CacvP1XIS0_IT_EEIccEEv", "Ca::operator X<X<T1>> *<char, char>() const &"},
        // template <template <class> class TT> operator TT<int>()
        {"_ZN2CacvT_IiEI1XEEv", "Ca::operator T1<int><X>()"},
        // template <class T, const int *(A::*)()> void g(const T *, const T *), with the
        // address of what A's template <class U> operator const U *() gives for int
        {"_Z1gIcXadL_ZN1AcvPKT_IiEEvEEEvS3_S3_",
         "void g<char, &A::operator const T1 *<int>()>(const T1 *, const T1 *)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, ConstructorsOfTemplatesAndInheritedOnes) {
    static constexpr Row rows[] = {
        // template <class V> Ou<int>::In<char>::In(V)
        {"_ZN2OuIiE2InIcEC1IlEET_", "Ou<int>::In<char>::In<long>(T1)"},
        // struct D1 : B1 { using B1::B1; }, of B1(char) and template <class T> B1(T, int)
        {"_ZN2D1CI12B1Ec", "D1::D1(char)"},
        {"_ZN2D1CI22B1IdEET_i", "D1::D1(T1, int) [subobject]"},
        // template <class T> struct D2 : T { using T::T; }
        {"_ZN2D2I2B1ECI1S0_Ec", "D2<B1>::D2(char)"},
        // std::allocator<char>::allocator(const allocator<U> &)
        {"_ZNSaIcEC1IiEERKSaIT_E",
         "std::allocator<char>::allocator<int>(const std::allocator<T1> &)"},
        {"_ZNSs1RC1Ev",
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>>::R::R()"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, LocalEntitiesAndTheirDiscriminators) {
    static constexpr Row rows[] = {
        // The twelfth static v of inline int many()
        {"_ZZ4manyvE1v__10_", "many()::v (instance 12)"},
        // The discriminator of the class L stands behind its member's name.
        {"_ZZZ4manyvEN1L1fE_0vE1k", "many()::L::f (instance 2)()::k"},
        {"_ZZ4calliEN1LD2E_1v", "call(int)::L::~L (instance 3)() [subobject]"},
        // template <class T> void f(T t) { struct L { void f(T) { static int s; } }; }
        {"_ZZZ1fIiEvT_EN1L1fEiE1s", "void f<int>(T1)::L::f(int)::s"},
        // extern "C" int cfun(int x) { struct L { static int g(int y) { static int z; } }; }
        {"_ZZZ4cfunEN1L1gEiE1z", "cfun::L::g(int)::z"},
        // static int intern2(S *p, int (*)(S *)) { static S loc; }
        {"_ZZN2nsL7intern2EPNS_2v11SEPFiS2_EE3loc",
         "ns::intern2(ns::v1::S *, int (*)(ns::v1::S *))::loc"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, LambdasOfFunctionsAndDefaultArguments) {
    static constexpr Row rows[] = {
        {"_ZZZ4manyvENKUliE_clEiENKUliE_clEi",
         "many()::[lambda(int) (instance 1)]::operator ()(int) const"
         "::[lambda(int) (instance 1)]::operator ()(int) const"},
        // int g(int a = [](auto x) { return x; }(1), int b = [] { return 2; }())
        {"_ZZZ4manyvEN2L21gEiiEd0_NKUlT_E_clIiEEDaS0_",
         "auto many()::L2::g(int, int)::[default argument 2 (from end)]"
         "::[lambda(auto:1) (instance 1)]::operator ()<int>(T1) const"},
        // int f(int i = [] { static int n; return n++; }())
        {"_ZZZZ4manyvEN2L21fEiEd_NKUlvE_clEvE1n",
         "many()::L2::f(int)::[default argument 1 (from end)]"
         "::[lambda() (instance 1)]::operator ()() const::n"},
        // template <class T> void f(T t) { auto l = [t](T x, auto y) {}; }
        {"_ZZ1fIiEvT_ENKUliS0_E_clIiEEDaiS0_",
         "auto void f<int>(T1)::[lambda(int, auto:1) (instance 1)]"
         "::operator ()<int>(int, T1) const"},
        // [](auto... x) { return [=](auto y, decltype(y) *p) {}; }, from GCC and from Clang
        {"_ZZZ1fIiEvT_ENKUlDpT_E_clIJiiEEEDaS2_ENKUlS0_PDtfp_EE_clIiEEDaS0_S6_",
         "auto auto void f<int>(T1)::[lambda(auto:1...) (instance 1)]"
         "::operator ()<int, int>(T1...) const"
         "::[lambda(auto:1, decltype(param#1) *) (instance 1)]"
         "::operator ()<int>(T1, decltype(param#1) *) const"},
        {"_ZZZ1fIiEvT_ENKUlDpT_E_clIJiiEEEDaS2_ENKUlS0_PDtfL0p_EE_clIiEEDaS0_S6_",
         "auto auto void f<int>(T1)::[lambda(auto:1...) (instance 1)]"
         "::operator ()<int, int>(T1...) const"
         "::[lambda(auto:1, decltype(param#1[up 1 level]) *) (instance 1)]"
         "::operator ()<int>(T1, decltype(param#1[up 1 level]) *) const"},
        // template <class T, auto L = [](T x) { return x; }> void f(T)
        {"_Z1fIcXtlUlcE1_EEEvT_", "void f<char, [lambda(char) (instance 3)]{}>(T1)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, LambdasOfVariablesAndMembers) {
    static constexpr Row rows[] = {
        // int (*fpl)(int) = [](int x) { return x; };
        {"_ZNK3fplMUliE_clEi", "fpl::[lambda(int) (instance 1)]::operator ()(int) const"},
        // inline auto gl3 = [](auto &&a, auto *b, const auto &...c) -> decltype(auto), from
        // Clang, which counts the variable among the components that can come back
        {"_ZNK3gl3MUlOT_PT0_DpRKT1_E_clIRiiJcdEEEDcS1_S3_S7_",
         "decltype(auto) gl3::[lambda(auto:1 &&, auto:2 *, const auto:3 &...) (instance 1)]"
         "::operator ()<int &, int, char, double>(T1 &&, T2 *, const T3 &...) const"},
        // inline auto iv2 = [](auto x) { return [](auto y) { return y; }(x); }
        {"_ZZNK3iv2MUlT_E_clIiEEDaS0_ENKUlS0_E_clIiEEDaS0_",
         "auto auto iv2::[lambda(auto:1) (instance 1)]::operator ()<int>(T1) const"
         "::[lambda(auto:1) (instance 1)]::operator ()<int>(T1) const"},
        // template <class T> auto tv = [](T a, auto b) { return a + b; }, from both
        {"_ZNK2tvIiEUliT_E_clIlEEDaiS1_",
         "auto tv<int>::[lambda(int, auto:1) (instance 1)]::operator ()<long>(int, T1) const"},
        {"_ZNK2tvIiEMUliT_E_clIlEEDaiS1_",
         "auto tv<int>::[lambda(int, auto:1) (instance 1)]::operator ()<long>(int, T1) const"},
        // struct M { static inline auto sl = [](int) { return 3; }; }
        {"_ZNK1MUliE_clEi", "M::[lambda(int) (instance 1)]::operator ()(int) const"},
        // inline int f1(int a = [](int q = [] { return 1; }()) { return q; }())
        {"_ZNKUliE_UlvE0_clEv",
         "[lambda(int) (instance 1)]::[lambda() (instance 2)]::operator ()() const"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, LambdasWithTemplateParametersOfTheirOwn) {
    static constexpr Row rows[] = {
        // inline auto gl2 = []<class... T>(T &&...)
        {"_ZNK3gl2MUlTpTyDpOT_E_clIJRiiDnEEEDaS2_",
         "auto gl2::[lambda(auto:1 &&...) (instance 1)]"
         "::operator ()<int &, int, std::nullptr_t>(T1 &&...) const"},
        // inline auto gl = []<class T, int N, template <class> class TT>(T (&)[N], TT<T> *)
        {"_ZNK2glMUlTyTniTtTyERAT0__T_PT1_IS0_EE_clIiLi3E2BxEEDaS2_S5_",
         "auto gl::[lambda(auto:1 (&)[auto:2], auto:3<auto:1> *) (instance 1)]"
         "::operator ()<int, 3, Bx>(T1 (&)[T2], T3<T1> *) const"},
        // [](auto x) { return [x]<class U>(U u, decltype(x) v) { static int s; }; }
        {"_ZZZZ2f1vENKUlT_E_clIiEEDaS_ENKUlTyS_iE_clIcEEDaS_iE1s",
         "auto auto f1()::[lambda(auto:1) (instance 1)]::operator ()<int>(T1) const"
         "::[lambda(auto:1, int) (instance 1)]::operator ()<char>(T1, int) const::s"},
    };
    expect_extended_rows(rows);
}

TEST(Scheme1Compiled, UnnamedTypesBindingsAndTags) {
    static constexpr Row rows[] = {
        // struct Out { struct { int ff(); } mem; enum { X1 }; enum { Y1 }; };
        {"_ZN3OutUt_2ffEv", "Out::[unnamed type (instance 1)]::ff()"},
        // auto &[sc, sd, se] = ...; of namespace ns, and a local one
        {"_ZN2nsDC2sc2sd2seEE", "ns::[sc, sd, se]"},
        {"_ZGVZ3sblvEDC1x1yE", "Initialization guard variable for sbl()::[x, y]"},
        // struct __attribute__((abi_tag("t1", "t2"))) Tag
        {"_ZN3TagB2t1B2t2C2Ev", "Tag[abi:t1][abi:t2]::Tag() [subobject]"},
        // Tag vart; takes over the tags of its type.
        {"_Z4vartB2t1B2t2", "vart[abi:t1][abi:t2]"},
        {"_ZNK2OpcviB2cvEv", "Op::operator int[abi:cv]() const"},
        // template <class T> T tagged [[gnu::abi_tag("ft")]] (T t) { static T st; }
        {"_ZZ6taggedB2ftIiET_S0_E2st", "T1 tagged[abi:ft]<int>(T1)::st"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, TablesThunksGuardsAndThreadLocals) {
    static constexpr Row rows[] = {
        {"_ZTv0_n24_NR2DD1fEi", "Thunk for (offset 0, virtual offset -24) DD::f(int) &"},
        {"_ZTv0_n48_NK2DDcviEv",
         "Thunk for (offset 0, virtual offset -48) DD::operator int() const"},
        {"_ZTchn16_h16_N2VD6clone2Ev", "Covariant thunk for (offset -16) (offset 16) VD::clone2()"},
        {"_ZTcv0_n32_v0_n24_N2VMIN12_GLOBAL__N_11ZEE1cEv",
         "Covariant thunk for (offset 0, virtual offset -32) (offset 0, virtual offset -24) "
         "VM<<unnamed>::Z>::c()"},
    };
    static constexpr Row extended[] = {
        {"_ZTC2VF0_2VE", "Construction vtable for VE-in-VF"},
        // struct Agg { const NT &a; const NT &b; const int &c; }; Agg agg{NT(1), NT(2), 3};
        {"_ZGR3agg1_", "Reference temporary #2 for agg"},
        {"_ZGRN3TL2IiE1rE_", "Reference temporary #0 for TL2<int>::r"},
        // struct S : Bs { int y; const int *p; float f; double d; };
        // template <S s> const S *f() { return &s; }
        {"_ZTAXtl1Stl2BsLi1EELi2EadsoKiL_Z3arrE8ELf3fc00000ELdc004000000000000EEE",
         "Template parameter object for "
         "S{Bs{1}, 2, &arr.<const int at offset 8>, (float)1.5, (double)-2.5}"},
        // template <const IN &r> void fr(), called with a template parameter of type IN
        {"_Z2frIL_ZTAXtl2INLi3EEEEEvv", "void fr<Template parameter object for IN{3}>()"},
        {"_ZGTtN2TS1fEi", "Transaction clone for TS::f(int)"},
        {"_ZZN1SC4EiEd_NKUlvE_clEv",
         "S::S(int)::[default argument 1 (from end)]::[lambda() (instance 1)]::operator ()() "
         "const"},
        {"_ZL4partiii.constprop.0.cold", "part(int, int, int) [clone .constprop.0.cold]"},
        // The frame of a coroutine, as GCC names it
        {"_Z2coPZ2coiE12_Z2coi.Frame.actor", "co(co(int)::_Z2coi.Frame *) [clone .actor]"},
    };
    expect_rows_alike(rows);
    expect_extended_rows(extended);
}

TEST(Scheme1Compiled, TypesOfParameters) {
    static constexpr Row rows[] = {
        {"_Z1fDnDuDsDiwahxyz",
         "f(std::nullptr_t, char8_t, char16_t, char32_t, wchar_t, signed char, unsigned char, "
         "long long, unsigned long long, ...)"},
        {"_Z1fRA_iOA3_iPPVKiPA3_PFicEPA2_M1AiMSA_S1_PMSA_KFviREPFRA5_iiE",
         "f(int (&)[], int (&&)[3], const volatile int **, int (*(*)[3])(char), int A::*(*)[2], "
         "int (A::*)[3], void (A::**)(int) const &, int (&(*)(int))[5])"},
        {"_Z1fOA_iPiPKM1AViPVPKS1_RFRiOiEMS2_FPS2_SF_E",
         "f(int (&&)[], int *, volatile int A::*const *, int *const *volatile *, "
         "int &(&)(int &&), A *(A::*)(A *))"},
        {"_Z2f2PDoFvvEM1AKDoFviEPFvS0_E",
         "f2(void (*)() noexcept, void (A::*)(int) const noexcept, void (*)(void (*)() noexcept))"},
        {"_Z1fPDxFvvEPDoDxFvvE",
         "f(void (*)() transaction_safe, void (*)() transaction_safe noexcept)"},
        {"_Z2f22FTIFvvEES_IKFvvEES_IVFiiOEES_IDoFvvEES_IFvzEES_IA_iES_IA3_iES_IKiES_IvE",
         "f2(FT<void ()>, FT<void () const>, FT<int (int) volatile &&>, FT<void () noexcept>, "
         "FT<void (...)>, FT<int []>, FT<int [3]>, FT<const int>, FT<void>)"},
        {"_Z1fDB17_PDU8_RKDB64_", "f(_BitInt(17), unsigned _BitInt(8) *, const _BitInt(64) &)"},
        {"_Z2ftILi5EEvDBT__DUplT_Li1E_", "void ft<5>(_BitInt(T1), unsigned _BitInt(T1 + 1))"},
        {"_Z1fDv4_iPDv2_fRKS_", "f(int __vector(4), float __vector(2) *, const int __vector(4) &)"},
        // int __attribute__((vector_size(N * 4)))
        {"_Z1fILi4EEvN1VIXT_EE1tEDvmlT_Li4E_i", "void f<4>(V<T1>::t, int __vector(T1 * 4))"},
        // GCC's alias, in an older form of the ABI, of a name with int __vector(4)
        {"_Z2f51APKiU8__vectoriPA3_i",
         "f5(A, const int *, __attribute__((vector_size(?))) int, int (*)[3])"},
        // int __attribute__((address_space(1))) * and its like for const char
        {"_Z1fPU3AS1iPU3AS2Kc", "f(AS1 int *, AS2 const char *)"},
        {"_Z2ftILi3EEvPU2ASIT_Ei", "void ft<3>(AS<T1> int *)"},
        {"_Z1fPU6ms_abiFviEPFviE", "f(ms_abi void (*)(int), void (*)(int))"},
        {"_Z1fU13block_pointerFiiEU13block_pointerFvvE",
         "f(block_pointer int (int), block_pointer void ())"},
        {"_ZSt2bsPSaIcEPSt11char_traitsIcEPSsPSbIwS1_IwESaIwEEPSaIiE",
         "std::bs(std::allocator<char> *, std::char_traits<char> *, "
         "std::basic_string<char, std::char_traits<char>, std::allocator<char>> *, "
         "std::basic_string<wchar_t, std::char_traits<wchar_t>, std::allocator<wchar_t>> *, "
         "std::allocator<int> *)"},
    };
    static constexpr Row extended[] = {
        {"_Z1fgCfCenPo",
         "f(__float128, _Complex float, _Complex long double, __int128, unsigned __int128 *)"},
    };
    expect_rows_alike(rows);
    expect_extended_rows(extended);
}

TEST(Scheme1Compiled, TypesThatDependOnTemplateParameters) {
    static constexpr Row rows[] = {
        {"_Z4tmpfIiEM1AKFviET_", "void (A::*)(int) const tmpf<int>(T1)"},
        // template <class T> void f(T (&)[3], T (*)[2][4], const T (&)[sizeof(T)], T *)
        {"_Z1fIiEvRA3_T_PA2_A4_S0_RAstS0__KS0_PS0_",
         "void f<int>(T1 (&)[3], T1 (*)[2][4], const T1 (&)[sizeof(T1)], T1 *)"},
        {"_Z1fIiLi3EEvRAT0__T_PAplT0_Li1E_iPAmlLi2ET0__i",
         "void f<int, 3>(T1 (&)[T2], int (*)[T2 + 1], int (*)[2 * T2])"},
        // template <class R, class C, class... A> void f(R (C::*)(A...) const &)
        {"_Z1fIi1SJiEEvMT0_KFT_DpT1_RE", "void f<int, S, int>(T1 (T2::*)(T3...) const &)"},
        {"_Z2f4IiEvPDOnxcvT__EEFvS0_E", "void f4<int>(void (*)(T1) noexcept(noexcept(T1())))"},
        {"_Z1fI2TtEvNT_1NIS1_E4typeETeNS1_1EETsNS1_1SETuNS1_1UE",
         "void f<Tt>(T1::N<T1>::type, enum T1::E, struct T1::S, union T1::U)"},
        // void f3(T, typename decltype(T())::I, decltype(T()), decltype(T::x))
        {"_Z2f3I2TtEvT_NDTcvS1__EE1IES2_DtsrS1_1xE",
         "void f3<Tt>(T1, decltype(T1())::I, decltype(T1()), decltype(T1::x))"},
        // template <class U> static void g(typename Ba<U>::I, typename Ba<U>::template J<T>, ...)
        {"_ZN2BaIPiE1gIcEEvNS_IT_E1IENS4_1JIiEEN2TvIS4_E4typeE",
         "void Ba<int *>::g<char>(Ba<T1>::I, Ba<T1>::J<int>, Tv<Ba<T1>>::type)"},
        {"_ZN2NnILi2EE2MmILi3EE1gILi2EEEvS_IXplLi2ET_EENS1_IXT_EEERAplLi3ET__cS_IXgtT_Li2EEE",
         "void Nn<2>::Mm<3>::g<2>(Nn<2 + T1>, Nn<2>::Mm<T1>, char (&)[3 + T1], Nn<(T1 > 2)>)"},
        // template <class T, class U = X<T>, class V = TL<T, U, X<U>>> struct Big
        {"_ZN3BigIN2ns2NAE1XIS1_E2TLIJS1_S3_S2_IS3_EEEE2ItC1EPS7_PS3_OS6_",
         "Big<ns::NA, X<ns::NA>, TL<ns::NA, X<ns::NA>, X<X<ns::NA>>>>::It::It("
         "Big<ns::NA, X<ns::NA>, TL<ns::NA, X<ns::NA>, X<X<ns::NA>>>> *, X<ns::NA> *, "
         "TL<ns::NA, X<ns::NA>, X<X<ns::NA>>> &&)"},
        // auto f5(auto x, const auto &y, auto *...z)
        {"_Z2f5IiiJiiEEDaT_RKT0_DpPT1_", "auto f5<int, int, int, int>(T1, const T2 &, T3 *...)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, ValuesAsTemplateArguments) {
    static constexpr Row rows[] = {
        // template <auto V> void f(W<V>)
        {"_Z1fILDs120EEv1WIXT_EE", "void f<(char16_t)120>(W<T1>)"},
        {"_Z1fILnn5EEv1WIXT_EE", "void f<(__int128)-5>(W<T1>)"},
        {"_Z1fIJLi1ELc99ELl2ELDn0EEEv2AVIJXspT_EEE", "void f<1, (char)99, 2L, nullptr>(AV<T1...>)"},
        // template <class T, T v> void f(IC<T, v>)
        {"_Z1fIPcLS0_0EEv2ICIT_XT0_EE", "void f<char *, (char *)0>(IC<T1, T2>)"},
        {"_Z1fILd8000000000000000EEvv", "void f<(double)-0>()"},
        // 3.25L
        {"_Z2flILe0000000000004000d000000000000000EEvv", "void fl<(long double)3.25>()"},
        {"_Z1fIXadL_ZNK1AplERKS0_EEEv1WIXT_EE", "void f<&A::operator +(const A &) const>(W<T1>)"},
        {"_Z1fIXadL_ZNK1A2tfIiEEiT_EEEv1WIXT_EE", "void f<&int A::tf<int>(T1) const>(W<T1>)"},
        // template <int &R> void f(WR<R>)
        {"_Z1fIL_Z4gvarEEv2WRIXT_EE", "void f<gvar>(WR<T1>)"},
        {"_Z2fpIXcvPKiadL_Z4gvarEEEvv", "void fp<const int *(&gvar)>()"},
        // Parts of objects, as GCC writes them
        {"_Z1fIXaddtixL_Z2saELl1E1aEEv1WIXT_EE", "void f<&sa[1L].a>(W<T1>)"},
        // and as Clang does
        {"_Z1fIXtl1SadsoKiL_Z1dE56pEEEEvv",
         "void f<S{&d.<const int at offset 56, past the end>}>()"},
        // struct S { int D::*p; } with a member of D's base class SO
        {"_Z1fIXtl1SmcM1DiadL_ZN2SO1aEEEEEEvv", "void f<S{int D::*(&SO::a)}>()"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, ObjectsAsTemplateArguments) {
    static constexpr Row rows[] = {
        // struct S { int a[3]; const char *p; int S::*m; struct { int x, y; } u; }
        {"_Z1fIXtl1StlA3_iLi1ELi2EEadL_Z2gcELMS0_i0EtlNS0_Ut_ELi1ELi2EEEEEvv",
         "void f<S{int [3]{1, 2}, &gc, (int S::*)0, S::[unnamed type (instance 1)]{1, 2}}>()"},
        // union U { int a; float b; }
        {"_Z1fIXtl1Udi1bLf3fc00000EEEEvv", "void f<U{.b = (float)1.5}>()"},
        // template <unsigned n> struct Str { char c[n]; }; template <Str s> const void *f()
        {"_Z1fIXtl3StrILj4EEtlA4_cLc97ELc98ELc99EEEEEPKvv",
         "const void * f<Str<4U>{char [4]{(char)97, (char)98, (char)99}}>()"},
        {"_Z2f3IXtl2SCLCf3f800000_40000000EEEEvv", "void f3<SC{(_Complex float)(1, 2)}>()"},
        {"_Z2f3IXtl2SCtlCfLf3f800000ELf40000000EEEEEvv",
         "void f3<SC{_Complex float{(float)1, (float)2}}>()"},
        {"_Z2f3IXtl2SVtlDv4_iLi1ELi2ELi3ELi4EEEEEvv", "void f3<SV{int __vector(4){1, 2, 3, 4}}>()"},
        // template <IN v> auto fx(Kk<v>, int (*)[v.l + v.g()]) -> Kk<IN{v.l + 1}>
        {"_Z2fxIXtl2INLi2EEEE2KkIXtlS0_pldtT_1lLi1EEEES1_IXT_EEPApldtT_1lcldtT_1gE_i",
         "Kk<IN{T1.l + 1}> fx<IN{2}>(Kk<T1>, int (*)[T1.l + T1.g()])"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, PacksAndTheirExpansions) {
    static constexpr Row rows[] = {
        {"_Z1fIJicEEv2TLIJDpPT_EES0_IJDpS0_IJS1_EEiEEDpPFiS1_E",
         "void f<int, char>(TL<T1 *...>, TL<TL<T1>..., int>, int (*)(T1)...)"},
        // template <template <class...> class TT, class... T> void f(TT<T...>, TT<TT<T>...>)
        {"_Z1fI2TLJiEEvT_IJDpT0_EES1_IJDpS1_IJS2_EEEE",
         "void f<TL, int>(T1<T2...>, T1<T1<T2>...>)"},
        // template <template <class...> class... TT> void f(PP<TT...>, TT<int>...)
        {"_Z1fIJ1X1YEEv2PPIJDpT_EEDpS3_IJiEE", "void f<X, Y>(PP<T1...>, T1<int>...)"},
        // template <class... T> using Al = UL<sizeof...(T)>; template <class... V> Al<int, V...> f
        {"_Z1fIJiiEE2ULIXsPiDpT_EEES2_", "UL<sizeof...(int, T1...)> f<int, int>(T1...)"},
        {"_Z1fIJiiEEDTcmcl2ggspfp_Ecl2ggspcl2zzfp_ELi1EEEDpT_",
         "decltype(gg(param#1...), gg(zz(param#1)..., 1)) f<int, int>(T1...)"},
        {"_Z2alIJcEEDTcl1fIiDpT_Ecv2TLIJiS1_EE_EEES2_IJS1_EE",
         "decltype(f<int, T1...>(TL<int, T1...>())) al<char>(TL<T1...>)"},
        // auto call(F &&f, A &&...a) -> decltype(f(static_cast<A &&>(a)...))
        {"_ZN3CRTI2CKE4callIZ4callvEUliE_JiEEEDTclfp_spscOT0_fp0_EEOT_DpS5_",
         "decltype(param#1(static_cast<T2 &&>(param#2)...)) "
         "CRT<CK>::call<call()::[lambda(int) (instance 1)], int>(T1 &&, T2 &&...)"},
        {"_ZN3CRTI2CKE2nwIJEEEDTnw_S0_pispfp_EEDpT_",
         "decltype(new CK(param#1...)) CRT<CK>::nw<>(T1...)"},
        {"_ZN3CRTI2CKE2fpIJiEEEvDpPFvT_EDpMS0_S3_",
         "void CRT<CK>::fp<int>(void (*)(T1)..., T1 CK::*...)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, FoldExpressions) {
    static constexpr Row rows[] = {
        {"_Z1fIJilEEP1XIDTfraafp_EEDpT_", "X<decltype((param#1 && ...))> * f<int, long>(T1...)"},
        {"_Z1fIJilEEP1XIDTfRcmfp_Li0EEEDpT_",
         "X<decltype((param#1, ..., 0))> * f<int, long>(T1...)"},
        {"_Z1fIJilEEP1XIDTflrsmifp_Li1EEEDpT_",
         "X<decltype((... >> (param#1 - 1)))> * f<int, long>(T1...)"},
        {"_Z2f5IJLi3ELi1EEE1IIXfRmiT_Li0EEEv", "I<(T1 - ... - 0)> f5<3, 1>()"},
        {"_Z2f3IJiiEE1IIXfLorLi0EcvistT_EEDpS1_",
         "I<(0 | ... | int(sizeof(T1)))> f3<int, int>(T1...)"},
        {"_Z2f6IJLi1ELi2EEE2BoIXfraagtT_Li0EEEv", "Bo<((T1 > 0) && ...)> f6<1, 2>()"},
        {"_Z1fIJiiEE2BoIXnefrplstT_Li0EEEDpS1_", "Bo<(sizeof(T1) + ...) != 0> f<int, int>(T1...)"},
        {"_Z2f7IJiiEEDTfRaSfp_Li1EEDpRT_", "decltype((param#1 = ... = 1)) f7<int, int>(T1 &...)"},
    };
    expect_rows_alike(rows);
}

// From here on f is template <class T, class U> auto f(T t, U u) -> X<decltype(E)> *, E
// being given where the text does not show it.
TEST(Scheme1Compiled, OperatorExpressions) {
    static constexpr Row rows[] = {
        // (t + u) * -t - ~u
        {"_Z1fIilEP1XIDTmimlplfp_fp0_ngfp_cofp0_EET_T0_",
         "X<decltype(((param#1 + param#2) * (-param#1)) - (~param#2))> * f<int, long>(T1, T2)"},
        // (t < u) ? -t : (t, u)
        {"_Z1fIilEP1XIDTqultfp_fp0_ngfp_cmfp_fp0_EET_T0_",
         "X<decltype((param#1 < param#2) ? (-param#1) : (param#1, param#2))> * "
         "f<int, long>(T1, T2)"},
        {"_Z1fIilEP1XIDTdeadfp_EET_T0_", "X<decltype(*(&param#1))> * f<int, long>(T1, T2)"},
        // t ? t : throw u
        {"_Z1fIiiEP1XIDTqufp_fp_twfp0_EET_T0_",
         "X<decltype(param#1 ? param#1 : (throw param#2))> * f<int, int>(T1, T2)"},
        {"_Z1fIiiEP1XIDTcmtrfp0_EET_T0_", "X<decltype((throw), param#2)> * f<int, int>(T1, T2)"},
        // __real__ t
        {"_Z1fIiiEP1XIDTv18__real__fp_EET_T0_",
         "X<decltype(__real(param#1))> * f<int, int>(T1, T2)"},
        {"_Z1fIiiEP1XIDTu11__alignof__Xfp_EEEET_T0_",
         "X<decltype(__alignof__(param#1))> * f<int, int>(T1, T2)"},
        // t + 'a' + u8'b' + L'c' + 1u + ... in GCC's sixteen bytes of a long double
        {"_Z1fIiiEP1XIDTplplplplplplplfp_Lc97ELDu98ELw99ELj1ELd3ff8000000000000ELe0000000000004"
         "000d000000000000000ELb1EEET_T0_",
         "X<decltype(((((((param#1 + (char)97) + (char8_t)98) + (wchar_t)99) + 1U) + "
         "(double)1.5) + (long double)3.25) + true)> * f<int, int>(T1, T2)"},
        // t + 1.5i
        {"_Z1fIiiEP1XIDTplfp_LCd0000000000000000_3ff8000000000000EEET_T0_",
         "X<decltype(param#1 + (_Complex double)(0, 1.5))> * f<int, int>(T1, T2)"},
        // "abc"[t], from GCC
        {"_Z1fIiiEP1XIDTixtlA4_KcLS1_97ELS1_98ELS1_99EEfp_EET_T0_",
         "X<decltype(const char [4]{(const char)97, (const char)98, (const char)99}[param#1])> * "
         "f<int, int>(T1, T2)"},
        // void f(T (*)[sizeof(T) > 2 ? 3 : 4], Bo<(sizeof(T) > 2)>, Bo<(T() > T()) == 1>,
        //        I<(sizeof(T) >> 1)>, TL<Bo<(sizeof(T) > 1)>>)
        {"_Z1fIiEvPAqugtstT_Li2ELi3ELi4E_S0_2BoIXgtstS0_Li2EEES3_IXeqgtcvS0__EcvS0__ELi1EEE1IIXrsst"
         "S0_Li1EEE2TLIJS3_IXgtstS0_Li1EEEEE",
         "void f<int>(T1 (*)[(sizeof(T1) > 2) ? 3 : 4], Bo<(sizeof(T1) > 2)>, "
         "Bo<(T1() > T1()) == 1>, I<(sizeof(T1) >> 1)>, TL<Bo<(sizeof(T1) > 1)>>)"},
    };
    static constexpr Row extended[] = {
        {"_Z1fIiiEP1XIDTssfp_fp0_EET_T0_",
         "X<decltype(param#1 <=> param#2)> * f<int, int>(T1, T2)"},
    };
    expect_rows_alike(rows);
    expect_extended_rows(extended);
}

TEST(Scheme1Compiled, SizesAndIdentitiesOfOperands) {
    static constexpr Row rows[] = {
        {"_Z2f2I1AE2BoIXaanxptfp_1mgeszixfp_Li1EstT_EEPS2_",
         "Bo<noexcept(param#1->m) && (sizeof(param#1[1]) >= sizeof(T1))> f2<A>(T1 *)"},
        {"_Z1fI1AEDTplplplszdtfp_1mszsrT_1matRS1_nxcldtfp_1fEES1_",
         "decltype(((sizeof(param#1.m) + sizeof(T1::m)) + alignof(T1 &)) + "
         "noexcept(param#1.f())) f<A>(T1)"},
        // sizeof(int[sizeof(t)]) + alignof(decltype(t))
        {"_Z1fIiEDTplstAszfp__iatDtfp_EET_",
         "decltype(sizeof(int [sizeof(param#1)]) + alignof(decltype(param#1))) f<int>(T1)"},
        // template <class T> void f2(T t, void (*)(T x, decltype(x + t)))
        {"_Z2f2IiEvT_PFvS0_DTplfL0p_fL1p_EE",
         "void f2<int>(T1, void (*)(T1, decltype(param#1[up 1 level] + param#1[up 2 levels])))"},
        // void f3(const T t, volatile T u, decltype(t + u) *)
        {"_Z2f3IiEvT_S0_PDTplfL0pK_fL0pV0_E",
         "void f3<int>(T1, T1, decltype(param#1[up 1 level] + param#2[up 1 level]) *)"},
        // decltype(this->x + u)
        {"_ZN1QIiE1gIiEEDTplptfpT1xfp_ET_", "decltype(this->x + param#1) Q<int>::g<int>(T1)"},
        {"_ZNK1QIiE1hIiEEDTpldtdefpT1xfp_ET_",
         "decltype((*this).x + param#1) Q<int>::h<int>(T1) const"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, CastsAndInitialisers) {
    static constexpr Row rows[] = {
        {"_Z1fI1AlEP1XIDTdcPKT_adfp_EES2_T0_",
         "X<decltype(dynamic_cast<const T1 *>(&param#1))> * f<A, long>(T1, T2)"},
        // (U *)0
        {"_Z1fIilEP1XIDTcvPT0_Li0EEET_S1_", "X<decltype(T2 *(0))> * f<int, long>(T1, T2)"},
        {"_Z1fI1GlEP1XIDTtlT_di1adtfp_1adi1bilLi1ELi2EEEEES2_T0_",
         "X<decltype(T1{.a = param#1.a, .b = {1, 2}})> * f<G, long>(T1, T2)"},
        {"_Z1fI1GlEP1XIDTtlT_di1aLi1Edi1bildxLi1ELi2EEEEES2_T0_",
         "X<decltype(T1{.a = 1, .b = {[1] = 2}})> * f<G, long>(T1, T2)"},
        // (G){t, {u}}
        {"_Z1fIiiEP1XIDTtl1Gfp_ilfp0_EEEET_T0_",
         "X<decltype(G{param#1, {param#2}})> * f<int, int>(T1, T2)"},
        // const_cast<T &&>(t).x, (t.x), t.y[1].x, t.template g<1>()
        {"_Z1fI2EVEDTcmcmcmdtccOT_fp_1xdtfp_1xdtixdtfp_1yLi1E1xcldtfp_1gILi1EEEES2_",
         "decltype(((const_cast<T1 &&>(param#1).x, param#1.x), param#1.y[1].x), "
         "param#1.g<1>()) f<EV>(T1 &&)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, NewAndDeleteExpressions) {
    static constexpr Row rows[] = {
        {"_Z1fIiiEP1XIDTnw_T_ilfp_EEES1_T0_", "X<decltype(new T1{param#1})> * f<int, int>(T1, T2)"},
        {"_Z1fIiiEP1XIDTgsnwadfp0__T_EEES1_T0_",
         "X<decltype(::new (&param#2) T1)> * f<int, int>(T1, T2)"},
        // new T[u], from GCC and from Clang
        {"_Z1fIiiEP1XIDTna_Afp0__T_EEES1_T0_",
         "X<decltype(new[] T1 [param#2])> * f<int, int>(T1, T2)"},
        {"_Z1fIiiEP1XIDTna_T_EEES1_T0_", "X<decltype(new[] T1)> * f<int, int>(T1, T2)"},
        {"_Z1fIP1AiEP1XIDTgsdafp_EET_T0_", "X<decltype(::delete[] param#1)> * f<A *, int>(T1, T2)"},
        // t < u ? static_cast<const T &>(t) : *new T(u)
        {"_Z2f2IilEDTqultfp_fp0_scRKT_fp_denw_S0_pifp0_EES0_T0_",
         "decltype((param#1 < param#2) ? static_cast<const T1 &>(param#1) : "
         "(*(new T1(param#2)))) f2<int, long>(T1, T2)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, CallsAndMembers) {
    static constexpr Row rows[] = {
        // (zz)(t), whose name needs no argument to be found
        {"_Z1fI1AlEP1XIDTclL_Z2zzS0_Efp_EEET_T0_",
         "X<decltype(zz(A)(param#1))> * f<A, long>(T1, T2)"},
        {"_Z1fI1AlEP1XIDTcldtfp_2tfIT0_Efp0_EEET_S2_",
         "X<decltype(param#1.tf<T2>(param#2))> * f<A, long>(T1, T2)"},
        {"_Z1fI1AiEP1XIDTpmadfp_adsrT_1mEES2_T0_",
         "X<decltype((&param#1) ->* (&T1::m))> * f<A, int>(T1, T2)"},
        // t.*t.pm, (t.*t.pf)(1), t->*t.pm
        {"_Z1fI2PMEDTcmcmdsfp_dtfp_2pmcldsfp_dtfp_2pfLi1EEpmfp_dtfp_2pmET_",
         "decltype(((param#1.*param#1.pm), (param#1.*param#1.pf)(1)), "
         "(param#1 ->* param#1.pm)) f<PM>(T1)"},
        // t.A::m and t.T::m
        {"_Z1fI1BiEP1XIDtdtfp_sr1AE1mEET_T0_", "X<decltype(param#1.A::m)> * f<B, int>(T1, T2)"},
        {"_Z1fI1BiEP1XIDtdtfp_srT_1mEES2_T0_", "X<decltype(param#1.T1::m)> * f<B, int>(T1, T2)"},
        // t.~T() and t.A::~A()
        {"_Z1fI1AiEP1XIDTcldtfp_dnT_EEES2_T0_", "X<decltype(param#1.~T1())> * f<A, int>(T1, T2)"},
        {"_Z1fI1BiEP1XIDTcldtfp_sr1AEdn1AEEET_T0_",
         "X<decltype(param#1.A::~A())> * f<B, int>(T1, T2)"},
        // t.operator int(), t.operator T *(), t.operator X<T>(), t.operator->()
        {"_Z1fI2OCEDTcmcmcmcldtfp_oncviEcldtfp_oncvPT_Ecldtfp_oncv1XIS1_EEcldtfp_onptEES1_",
         "decltype(((param#1.operator int(), param#1.operator T1 *()), "
         "param#1.operator X<T1>()), param#1.operator ->()) f<OC>(T1)"},
        // operator-<int>(t, 1) + ::operator+(t, 2)
        {"_Z2f3I2OPEDTplclonmiIiEfp_Li1EEclL_ZplS0_iEfp_Li2EEET_",
         "decltype(operator -<int>(param#1, 1) + operator +(OP, int)(param#1, 2)) f3<OP>(T1)"},
        // t + 1_a + operator""_a(t)
        {"_Z1fIiEDTplplfp_clL_Zli2_ayELy1EEclonli2_afp_EET_",
         "decltype((param#1 + operator \"\"_a(unsigned long long)(1ULL)) + "
         "operator \"\"_a(param#1)) f<int>(T1)"},
        // dv<T>() + dv<T &>().m() + dv<const T *>()->k
        {"_Z1fI2DmEDTplplcl2dvIT_EEcldtcl2dvIRS1_EE1mEptcl2dvIPKS1_EE1kES1_",
         "decltype((dv<T1>() + dv<T1 &>().m()) + dv<const T1 *>()->k) f<Dm>(T1)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, QualifiedNamesInExpressions) {
    static constexpr Row rows[] = {
        // T::template N<U>::sf(u), from Clang
        {"_Z1fI1BiEP1XIDTclsrNT_1NIT0_EE2sffp0_EEES2_S3_",
         "X<decltype(T1::N<T2>::sf(param#2))> * f<B, int>(T1, T2)"},
        {"_Z1fI1AiEP1XIDtsrDtfp_E2smEET_T0_",
         "X<decltype(decltype(param#1)::sm)> * f<A, int>(T1, T2)"},
        // decltype(t)::template in<T>::value, from Clang
        {"_Z2f4I2TrIiEE2BoIXsrNDtfp_E2inIT_EE5valueEES4_",
         "Bo<decltype(param#1)::in<T1>::value> f4<Tr<int>>(T1)"},
        // TT<T>::value && TT<T *>::template in<T>::value of a template template parameter
        {"_Z2f2I2TriE2BoIXaasrT_IT0_E5valuesrNS2_IPS3_E2inIS3_EE5valueEES4_",
         "Bo<T1<T2>::value && T1<T2 *>::in<T2>::value> f2<Tr, int>(T1<T2>)"},
        // ns::NA::st<T>(t), from GCC and from Clang
        {"_Z1fIN2ns2NAEiEP1XIDTclsrS1_2stIT_Efp_EEES3_T0_",
         "X<decltype(ns::NA::st<T1>(param#1))> * f<ns::NA, int>(T1, T2)"},
        {"_Z1fIN2ns2NAEiEP1XIDTclsr2ns2NAE2stIT_Efp_EEES3_T0_",
         "X<decltype(ns::NA::st<T1>(param#1))> * f<ns::NA, int>(T1, T2)"},
        // ::ns::h<T>(t) + ::h0<T>(t)
        {"_Z2f3IiEDTplclgssr2nsE1hIT_Efp_Eclgs2h0IS0_Efp_EES0_",
         "decltype(::ns::h<T1>(param#1) + ::h0<T1>(param#1)) f3<int>(T1)"},
        // trait<trait<T>>::value, from Clang
        {"_Z2f9IiE3eifIXsr5traitI5traitIT_EEE5valueEvES3_",
         "eif<trait<trait<T1>>::value, void> f9<int>(trait<T1>)"},
        // trait<T>::di::value, from GCC and from Clang
        {"_Z2f7IiE3eifIXsrN5traitIT_E2diE5valueES2_ES2_",
         "eif<trait<T1>::di::value, T1> f7<int>(T1)"},
        {"_Z2f7IiE3eifIXsr5traitIT_E2diE5valueES1_ES1_",
         "eif<trait<T1>::di::value, T1> f7<int>(T1)"},
        // std::v2::is_y<T>::value, v2 an inline namespace, from GCC
        {"_Z2f4IiE2BoIXsrNSt2v24is_yIT_EE5valueEES3_", "Bo<std::v2::is_y<T1>::value> f4<int>(T1)"},
    };
    expect_rows_alike(rows);
}

// Clang enters nothing of "T::M" in "T::M::dim", GCC enters it like a type. A name that cannot
// be read the first way is read the second way.
TEST(Scheme1Compiled, ScopesBehindATemplateParameterAreEnteredOrNot) {
    static constexpr Row rows[] = {
        {"_Z1fI1BiEP1XIDTclsrNT_1NIT0_EE2sfcvS3__EEEES2_S3_",
         "X<decltype(T1::N<T2>::sf(T2()))> * f<B, int>(T1, T2)"},
        {"_Z1fI1BiEP1XIDTclsrNT_1NIT0_EE2sfcvS4__EEEES2_S4_",
         "X<decltype(T1::N<T2>::sf(T2()))> * f<B, int>(T1, T2)"},
        {"_Z1gI1BE1PIXsrNT_1ME3dimEERKS2_PS4_", "P<T1::M::dim> g<B>(const T1 &, const T1 *)"},
        {"_Z1hI1BiE1PIXsrNT_1NIT0_EE1vEERKS2_S3_PKS3_PS5_",
         "P<T1::N<T2>::v> h<B, int>(const T1 &, T2, const T2 *, const T1 *)"},
        {"_Z1kI1BE1PIXsrNT_1ME3dimEERKS2_1XINS2_1MEES6_IPS4_ES6_ISA_ESA_",
         "P<T1::M::dim> k<B>(const T1 &, X<T1::M>, X<const T1 *>, X<X<const T1 *>>, X<const T1 "
         "*>)"},
        {"_Z1kI1BE1PIXsrNT_1ME3dimEERKS2_1XIS3_ES7_IPS5_ES7_ISA_ESA_",
         "P<T1::M::dim> k<B>(const T1 &, X<T1::M>, X<const T1 *>, X<X<const T1 *>>, X<const T1 "
         "*>)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, NamesOfModules) {
    static constexpr Row rows[] = {
        // export module foo.bar; with its parts foo.bar:part and foo.bar:impl
        {"_ZGIW3fooW3bar", "Initializer for module foo.bar"},
        {"_ZGIW3fooW3barWP4part", "Initializer for module foo.bar:part"},
        {"_ZNW3fooW3bar1K1mEPS1_i", "K@foo.bar::m(K@foo.bar *, int)"},
        {"_Z4userIPN1NW3fooW3bar1ZEEvT_", "void user<N::Z@foo.bar *>(T1)"},
        {"_ZW3baz4twohPW3fooW3bar1K", "twoh@baz(K@foo.bar *)"},
    };
    expect_extended_rows(rows);
}

// GCC writes "sr" class member where the class is a type, Clang "sr" class+ "E" member; the
// classes of the first enter the table like any type.
TEST(Scheme1Compiled, MembersOfAClassThatDependsOnItsArguments) {
    static constexpr Row rows[] = {
        {"_Z1qIiEN3eifIXsr5traitIT_E5valueEvE4typeES2_",
         "eif<trait<T1>::value, void>::type q<int>(T1)"},
        {"_Z2q2IiEN3eifIXsr5traitIT_E5valueE3FooE4typeES2_",
         "eif<trait<T1>::value, Foo>::type q2<int>(T1)"},
        {"_Z2q8IiiE3eifIXsr5traitIT_E5valueES1_IT0_EES2_S4_S3_",
         "eif<trait<T1>::value, trait<T2>> q8<int, int>(T1, T2, trait<T1>)"},
        {"_Z2q9IiE3eifIXsr5traitIS1_IT_EE5valueEvES3_",
         "eif<trait<trait<T1>>::value, void> q9<int>(trait<T1>)"},
        {"_Z2q2IiEvP1IIXplsr5traitIT_E1vsrS1_IPS2_E1vEEPAsrS3_1v_i",
         "void q2<int>(I<trait<T1>::v + trait<T1 *>::v> *, int (*)[trait<T1>::v])"},
        {"_Z2q3IiEDTplplsr2TvIT_E1vsrS2_1wIiEL_ZNS0_IiE1vEEES1_",
         "decltype((Tv<T1>::v + Tv<T1>::w<int>) + Tv<int>::v) q3<int>(T1)"},
        {"_Z1qI1BiEP1XIDtdtfp_sr1A1mEET_T0_", "X<decltype(param#1.A::m)> * q<B, int>(T1, T2)"},
    };
    expect_rows_alike(rows);
}

TEST(Scheme1Compiled, MembersOfAClassBehindANamespaceOrClassThatComesBack) {
    static constexpr Row rows[] = {
        {"_ZN2nn1qIiEENS_3eifIXsrNS_5traitIT_EE5valueEvE4typeES3_",
         "nn::eif<nn::trait<T1>::value, void>::type nn::q<int>(T1)"},
        {"_ZN2nn2q2IiEENS_3eifIXsrNS_5traitIT_EE5valueES3_E4typeEPS3_RKS3_",
         "nn::eif<nn::trait<T1>::value, T1>::type nn::q2<int>(T1 *, const T1 &)"},
        {"_ZN2FnIiEaSIiEENS0_3eifIXsrNS0_4CallIT_EE5valueERS0_E4typeEOS4_",
         "Fn<int>::eif<Fn<int>::Call<T1>::value, Fn<int> &>::type Fn<int>::operator =<int>(T1 &&)"},
        {"_ZNSt6chrono13duration_castINS_8durationIlSt5ratioILl1ELl1000000000EEEElS2_"
         "ILl3600ELl1EEEENSt9enable_ifIXsrNS_13__is_durationIT_EE5valueES8_E4typeERKNS1_IT0_T1_EE",
         "std::enable_if<std::chrono::__is_duration<T1>::value, T1>::type "
         "std::chrono::duration_cast<std::chrono::duration<long, std::ratio<1L, 1000000000L>>, "
         "long, std::ratio<3600L, 1L>>(const std::chrono::duration<T2, T3> &)"},
    };
    expect_rows_alike(rows);
}

// template <int... T> void q2(I<T>...), by GCC with -fabi-version=5.
TEST(Scheme1Compiled, PacksOfOldCompilersReadAsOthers) {
    static constexpr Row rows[] = {
        {"_Z2q2IILi1ELi2EEEvDp1IIXT_EE", "void q2<1, 2>(I<T1>...)"},
        {"_ZNSt5dequeINSt10filesystem4_DirESaIS1_EE12emplace_backIIS1_EEERS1_DpOT_",
         "std::filesystem::_Dir & std::deque<std::filesystem::_Dir, "
         "std::allocator<std::filesystem::_Dir>>::emplace_back<std::filesystem::_Dir>(T1 &&...)"},
    };
    expect_rows_alike(rows);
}

// Files of the modules foo.bar and baz, of GCC with -fmodules-ts.
TEST(Scheme1Compiled, ModulesThatComeBack) {
    static constexpr Row rows[] = {
        {"_ZW3fooW3bar2peS0_2Pk", "pe@foo.bar(Pk@foo.bar)"},
        {"_ZW3fooW3bar2ftIiET_S2_PS0_1K", "T1 ft@foo.bar<int>(T1, K@foo.bar *)"},
        {"_ZW3baz2B2PS_1B", "B2@baz(B@baz *)"},
        {"_ZW3fooW3barL6internPS0_1K", "intern@foo.bar(K@foo.bar *)"},
        {"_ZN1NW3fooW3bar2TmIS1_1KE1fES3_", "N::Tm@foo.bar<K@foo.bar>::f(K@foo.bar)"},
        {"_ZN1NW3fooW3bar2fnENS_S1_1ZES1_1K", "N::fn@foo.bar(N::Z@foo.bar, K@foo.bar)"},
        {"_ZN1PW3fooW3bar2hfENS_S1_3HidEN1NS1_1ZEPS1_1K",
         "P::hf@foo.bar(P::Hid@foo.bar, N::Z@foo.bar, K@foo.bar *)"},
        {"_ZW3baz3twoPW3fooW3bar1KPN1NS1_1ZEPNS4_S1_2TmIS2_EE",
         "two@baz(K@foo.bar *, N::Z@foo.bar *, N::Tm@foo.bar<K@foo.bar> *)"},
        // Behind what has a part that follows the declarator.
        {"_ZW3baz1fA3_S_1B", "f@baz(B@baz [3])"},
        {"_ZW3baz1fRA3_KS_1B", "f@baz(const B@baz (&)[3])"},
        {"_ZW3baz1fA_PS_1B", "f@baz(B@baz *[])"},
        {"_ZW3baz1fA2_A3_S_1B", "f@baz(B@baz [2][3])"},
        {"_ZW3baz1fPFS_1BvE", "f@baz(B@baz (*)())"},
        {"_ZW3baz1fPFRS_1BS0_E", "f@baz(B@baz &(*)(B@baz))"},
        {"_ZW3baz1fPFS_1BPS0_E", "f@baz(B@baz (*)(B@baz *))"},
        {"_ZW3baz1fM1CFS_1BvE", "f@baz(B@baz (C::*)())"},
        {"_ZW3baz1fMS_1BA3_S0_", "f@baz(B@baz (B@baz::*)[3])"},
        {"_ZW3baz1fRA3_S_1BIiE", "f@baz(B@baz<int> (&)[3])"},
        {"_ZW3baz1fRA3_NS_1B1CE", "f@baz(B@baz::C (&)[3])"},
        {"_ZW3baz1fDTcvRA3_S_1Bfp_E", "f@baz(decltype(B@baz (&)[3](param#1)))"},
    };
    expect_extended_rows(rows);
}
