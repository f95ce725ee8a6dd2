// Scheme 1 with extended names: what newer compilers write beyond the fixed tables. Each of
// these is a bad name as long as extended names are not open.
#include <gtest/gtest.h>

#include <cstddef>

#include "tests/demangle/scheme1/rows.h"

namespace {

template <std::size_t count>
void expect_extended_rows(const Row (&rows)[count]) {
    for (const Row& row : rows) {
        EXPECT_EQ(decoded(row.name), bad) << row.name;
        const ExtendedNames extended;
        EXPECT_EQ(decoded(row.name), row.text) << row.name;
    }
}

}  // namespace

TEST(Scheme1Extended, ARequiresClauseStandsBehindTheQualifiers) {
    static constexpr Row rows[] = {
        {"_ZNK1AIiE1fEvQ1CIT_E", "A<int>::f() const requires C<T1>"},
        {"_ZNKR1AI1QIiEE1oEvQ1CIT_E", "A<Q<int>>::o() const & requires C<T1>"},
        {"_ZNO1AIiE1fEiQ1CIT_E", "A<int>::f(int) && requires C<T1>"},
        {"_ZNVK1AIiE1fEvQaa1CIT_E1DIS1_E", "A<int>::f() const volatile requires C<T1> && D<T1>"},
        {"_Z1fIiEvT_Q1CIS0_E", "void f<int>(T1) requires C<T1>"},
        {"_ZN1AIiEC2EvQ1CIT_E", "A<int>::A() requires C<T1> [subobject]"},
        {"_ZN1AIiED0EvQ1CIT_E", "A<int>::~A() requires C<T1> [deleting]"},
        {"_ZNK1AIiEcviEvQ1CIT_E", "A<int>::operator int() const requires C<T1>"},
        {"_ZNK1AIiE1fEvQ1CIT_E.cold", "A<int>::f() const requires C<T1> [clone .cold]"},
        {"_ZZNK1AIiE1fEvQ1CIT_EE1x", "A<int>::f() const requires C<T1>::x"},
        {"_ZZNK1AIiE1fEvQ1CIT_EEs", "A<int>::f() const requires C<T1>::string"},
        {"_ZNK3$_0clIiEEDaT_Q1CIS1_E", "auto $_0::operator ()<int>(T1) const requires C<T1>"},
    };
    expect_extended_rows(rows);
}

TEST(Scheme1Extended, OnlyTheParametersGoFromAConstrainedFunction) {
    const ExtendedNames extended;
    static constexpr Row rows[] = {
        {"_ZNK1AIiE1fEvQ1CIT_E", "A<int>::f const requires C<T1>"},
        {"_Z1fIiEvT_Q1CIS0_E", "f<int> requires C<T1>"},
        {"_Z2eiUa9enable_ifIXgtfL0p_Li1EEEi", "ei [enable_if:param#1[up 1 level] > 1]"},
    };
    expect_rows(rows, false);
}

TEST(Scheme1Extended, AFriendOfAClassTemplateSaysSo) {
    static constexpr Row rows[] = {
        {"_ZN1AIiEF1gES0_QgtstT_Li1E", "A<int>::friend g(A<int>) requires sizeof(T1) > 1"},
        {"_ZN1AIlEFeqES0_S0_Q3AnyIT_E",
         "A<long>::friend operator ==(A<long>, A<long>) requires Any<T1>"},
        {"_ZN1AIiEF1gIcEEvS0_T_Q1CITL0__E",
         "void A<int>::friend g<char>(A<int>, T1) requires C<T1>"},
        {"_ZN1AIiEF1gB1xES0_", "A<int>::friend g[abi:x](A<int>)"},
    };
    expect_extended_rows(rows);
}

TEST(Scheme1Extended, LambdasThatSpellTheLevelOfTheirParameters) {
    static constexpr Row rows[] = {
        {"_ZN1DIiE1hIcEEvPNS0_UlT_iTL0__E_E",
         "void D<int>::h<char>(D<int>::[lambda(T1, int, auto:1) (instance 1)] *)"},
        {"_ZN1DUlTL0__T_E_E", "D::[lambda(auto:1, T1) (instance 1)]"},
        {"_ZN1DUlT_PTL0_0_E_E", "D::[lambda(T1, auto:2 *) (instance 1)]"},
        {"_ZN1DUlT0_1AIT_TL0__EE_E", "D::[lambda(T2, A<T1, auto:1>) (instance 1)]"},
        {"_ZN1DUlT_TL0__S0_S1_E_E", "D::[lambda(T1, auto:1, T1, auto:1) (instance 1)]"},
        // The parameters of a lambda within and of one around are their own.
        {"_ZN1DUlT_NUlTL0__E_EE_E",
         "D::[lambda(auto:1, [lambda(auto:1) (instance 1)]) (instance 1)]"},
        {"_ZN1DUlTL0__NUlT_E_EE_E",
         "D::[lambda(auto:1, [lambda(auto:1) (instance 1)]) (instance 1)]"},
        {"_ZN1DUlT_Z1fITL0__EvvE1xE_E", "D::[lambda(auto:1, void f<T1>()::x) (instance 1)]"},
        // A source name that only looks so.
        {"_ZN1DUlT_3TL0E_EvTL0__", "D::[lambda(auto:1, TL0) (instance 1)](void, T1)"},
    };
    const ExtendedNames extended;
    expect_rows(rows);
}

TEST(Scheme1Extended, Blocks) {
    static constexpr Row rows[] = {
        {"_ZZZ2usvEUb_E1s", "us()::[block (instance 1)]::s"},
        {"_ZZZ2usvEUb0_E1s", "us()::[block (instance 2)]::s"},
        {"_ZZZ2usvEUb8_E1s", "us()::[block (instance 10)]::s"},
        {"_ZZ1S1mMUb_E1s", bad},
        {"_ZZN1S1mMUb_EE1s", "S::m::[block (instance 1)]::s"},
        {"_ZZZ3us2iEUb_EN1L1mEv", "us2(int)::[block (instance 1)]::L::m()"},
        {"_ZZZZ3us2iEUb_EUb_E1z", "us2(int)::[block (instance 1)]::[block (instance 1)]::z"},
        {"_Z1fRA3_Ub_", "f([block (instance 1)] (&)[3])"},
        {"_Z1fPFUb_vES_", "f([block (instance 1)] (*)(), [block (instance 1)])"},
        {"_ZNUb_C1Ev", "[block (instance 1)]::[block (instance 1)]()"},
    };
    expect_extended_rows(rows);
    static constexpr Row refused[] = {
        {"_ZZZ2usvEUbE1s", bad}, {"_ZZZ2usvEUbx_E1s", bad}, {"_ZZZ2usvEUbn1_E1s", bad}};
    const ExtendedNames extended;
    expect_rows(refused);
}

TEST(Scheme1Extended, ConditionsOfACallAreWrittenBehindTheNameAndReadLast) {
    static constexpr Row rows[] = {
        {"_Z2eiUa9enable_ifIXgtfL0p_Li1EEEi", "ei(int) [enable_if:param#1[up 1 level] > 1]"},
        {"_Z2eiUa9enable_ifIXgtfL0p_Li1EEXooeqfL0p_fL0p0_fL0p0_EEii",
         "ei(int, int) [enable_if:param#1[up 1 level] > 1, "
         "(param#1[up 1 level] == param#2[up 1 level]) || param#2[up 1 level]]"},
        {"_Z3eitIiEUa9enable_ifIXgtLm4ELi1EEEvT_", "void eit<int>(T1) [enable_if:4UL > 1]"},
        {"_ZN2EI1nEUa9enable_ifILb1EEi", "EI::n(int) [enable_if:true]"},
        {"_ZNK2EI1mEUa9enable_ifIXfL0p_EEi", "EI::m(int) const [enable_if:param#1[up 1 level]]"},
        {"_ZNKR1AIiE1fEUa9enable_ifILb1EEvQ1CIT_E",
         "A<int>::f() const & requires C<T1> [enable_if:true]"},
        {"_ZN1AC2EUa9enable_ifILb1EEi", "A::A(int) [subobject] [enable_if:true]"},
        {"_Z2eiUa9enable_ifILb1EEi.cold", "ei(int) [enable_if:true] [clone .cold]"},
        {"_ZZ2eiUa9enable_ifILb1EEiE1x", "ei(int) [enable_if:true]::x"},
        // What a condition holds is entered like anything else.
        {"_Z2eiUa9enable_ifIXst1AEE1BS_S0_", "ei(B, A, B) [enable_if:sizeof(A)]"},
    };
    static constexpr Row refused[] = {
        {"_Z2eiUa9enable_ifi", bad},       {"_Z2eiUa9enable_ifILb1Ei", bad},
        {"_Z2eiUa9enable_xfILb1EEi", bad}, {"_Z2eiUa8enable_iILb1EEi", bad},
        {"_Z2eiUb9enable_ifILb1EEi", bad}, {"_Z2eiUa9enable_ifILb1EEUa9enable_ifILb1EEi", bad},
    };
    expect_extended_rows(rows);
    const ExtendedNames extended;
    expect_rows(refused);
}

TEST(Scheme1Extended, LambdasAsArguments) {
    static constexpr Row rows[] = {
        {"_ZN1S1fILb1EEEv1XILUlvE_EE", "void S::f<true>(X<[lambda() (instance 1)]>)"},
        {"1XILUliE0_EE", "X<[lambda(int) (instance 2)]>"},
        {"1XILUlT_E_EiE", "X<[lambda(auto:1) (instance 1)], int>"},
        {"1XIXcl1gLUlvE_EEEE", "X<g([lambda() (instance 1)])>"},
        {"_Z1f1XILUlvE_EES0_S1_",
         "f(X<[lambda() (instance 1)]>, [lambda() (instance 1)], "
         "X<[lambda() (instance 1)]>)"},
    };
    expect_extended_rows(rows);
    const ExtendedNames extended;
    EXPECT_EQ(decoded("1XILUt_EE"), bad);
    EXPECT_EQ(decoded("1XIL1AEE"), bad);
}

TEST(Scheme1Extended, FixedPointTypes) {
    static constexpr Row rows[] = {
        {"DAs", "short _Accum"},
        {"DAt", "unsigned short _Accum"},
        {"DAi", "_Accum"},
        {"DAj", "unsigned _Accum"},
        {"DAl", "long _Accum"},
        {"DAm", "unsigned long _Accum"},
        {"DRs", "short _Fract"},
        {"DRt", "unsigned short _Fract"},
        {"DRi", "_Fract"},
        {"DRj", "unsigned _Fract"},
        {"DRl", "long _Fract"},
        {"DRm", "unsigned long _Fract"},
        {"DSDAs", "_Sat short _Accum"},
        {"DSxAi", bad},
        {"DSKAi", bad},
        {"DSDUi", bad},
        {"DSDAt", "_Sat unsigned short _Accum"},
        {"DSDAi", "_Sat _Accum"},
        {"DSDRi", "_Sat _Fract"},
        {"DSDRm", "_Sat unsigned long _Fract"},
        {"KDAi", "const _Accum"},
        {"PKDSDRi", "const _Sat _Fract *"},
        {"_Z1fDAiDRiDAjDSDRi", "f(_Accum, _Fract, unsigned _Accum, _Sat _Fract)"},
        // They are not entered.
        {"_Z1fDAiDSDRiPDAiPDSDRiS_S0_",
         "f(_Accum, _Sat _Fract, _Accum *, _Sat _Fract *, _Accum *, _Sat _Fract *)"},
        {"DAx", bad},
        {"DA", bad},
        {"DAc", bad},
        {"DRa", bad},
        {"DS", bad},
        {"DSi", bad},
        {"DSDSDAi", bad},
        {"DSDa", bad},
        {"DSDB8_", bad},
    };
    expect_extended_rows(rows);
    const ExtendedNames extended;
    EXPECT_EQ(decoded("Ds"), "char16_t");
    EXPECT_EQ(decoded("Da"), "auto");
}

// Where a name goes wrong otherwise: Clang enters them, the ABI does not.
TEST(Scheme1Extended, TypesWithANumberOfBitsMayBeEntered) {
    static constexpr Row rows[] = {
        {"_Z10VectorTestDv2_DB64_S0_",
         "VectorTest(_BitInt(64) __vector(2), _BitInt(64) __vector(2))"},
        {"_Z2bvDv2_DB64_PS0_", "bv(_BitInt(64) __vector(2), _BitInt(64) __vector(2) *)"},
        {"_Z2biDB17_DU64_PS_S_",
         "bi(_BitInt(17), unsigned _BitInt(64), _BitInt(17) *, _BitInt(17))"},
        {"_Z2biDB3_S_PKS_", "bi(_BitInt(3), _BitInt(3), const _BitInt(3) *)"},
        {"_Z1fDU8_S_", "f(unsigned _BitInt(8), unsigned _BitInt(8))"},
        {"_Z1fKDB8_S_S0_", "f(const _BitInt(8), _BitInt(8), const _BitInt(8))"},
        {"_Z1fILi5EEvDBT__S0_", "void f<5>(_BitInt(T1), _BitInt(T1))"},
    };
    expect_extended_rows(rows);
    static constexpr Row alike[] = {
        {"_Z1fDB8_1AS_", "f(_BitInt(8), A, A)"},
        {"_Z1fDF16_1AS_", "f(_Float16, A, A)"},
    };
    expect_rows(alike);
    const ExtendedNames extended;
    expect_rows(alike);
    EXPECT_EQ(decoded("_Z1fDF16_S_"), bad);
}

TEST(Scheme1Extended, OlderSpellings) {
    static constexpr Row rows[] = {
        {"_Z1g2CBILZ3foocEE", "g(CB<foo(char)>)"},
        {"_Z1fILZ1giEEvv", "void f<g(int)>()"},
        {"_ZN2NpILPi0ELZ2giEE1mEv", "Np<(int *)0, gi>::m()"},
        {"_Z1fIXadLZ1giEEEvv", "void f<&g(int)>()"},
    };
    expect_extended_rows(rows);
    static constexpr Row uuidof[] = {
        {"_Z2utI1GEvT_P2UGIXu8__uuidoftS1_EE", "void ut<G>(T1, UG<__uuidof(T1)> *)"},
        {"_Z2utI1GEvP2UPIXadu8__uuidoft1AEE", "void ut<G>(UP<&__uuidof(A)> *)"},
        {"_Z2ueI1GEDTadu8__uuidofzfp_ET_", "decltype(&__uuidof(param#1)) ue<G>(T1)"},
        {"Dtu8__uuidoft1AE", "decltype(__uuidof(A))"},
        {"DTu8__uuidofzT_E", "decltype(__uuidof(T1))"},
        {"Dtplu8__uuidofzT_Li1EE", "decltype(__uuidof(T1) + 1)"},
        {"Dtu8__uuidoftE", bad},
        {"Dtu8__uuidofzE", bad},
    };
    expect_extended_rows(uuidof);
    // What can be read by the tables is.
    static constexpr Row alike[] = {
        {"Dtu8__uuidofXfp_EEE", "decltype(__uuidof(param#1))"},
        {"Dtu8__uuidof1AEE", "decltype(__uuidof(A))"},
        {"Dtu8__uuidofT_EE", "decltype(__uuidof(T1))"},
        {"Dtu8__uuidoft1AEE", "decltype(__uuidof(unsigned short, A))"},
        {"Dtu8__uuidoxtEE", "decltype(__uuidox(unsigned short))"},
        {"1AILZ1fvE1B0EE", "A<(f()::B)0>"},
    };
    expect_rows(alike);
    const ExtendedNames extended;
    expect_rows(alike);
}

TEST(Scheme1Extended, ALastDiscriminatorOfDigitsAlone) {
    static constexpr Row rows[] = {
        {"_ZZ1fvE1x0", "f()::x (instance 2)"},
        {"_ZZ1fvE1x10", "f()::x (instance 12)"},
        {"_ZZN1A1fEvE7Opcodes10", "A::f()::Opcodes (instance 12)"},
        {"_ZZ1fvEs7", "f()::string (instance 9)"},
        {"_ZGVZ1fvE1x3", "Initialization guard variable for f()::x (instance 5)"},
    };
    expect_extended_rows(rows);
    const ExtendedNames extended;
    static constexpr Row others[] = {
        {"_ZZ1fvE1x0i", bad},
        {"_ZZ1fvE1x_0", "f()::x (instance 2)"},
        {"_ZZ1fvE1x__10_", "f()::x (instance 12)"},
        {"_Z1fZ1gvE1x0", "f(g()::x (instance 2))"},
        {"_Z1fZ1gvE1x0i", bad},
        {"_Z1x0", bad},
    };
    expect_rows(others);
}
