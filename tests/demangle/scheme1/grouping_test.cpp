// Scheme 1: parentheses and blanks without which a text would be read otherwise than it
// is meant.
#include <gtest/gtest.h>

#include <string_view>

#include "tests/demangle/scheme1/rows.h"

namespace {

// Without a buffer, too, a name needs room for its text.
template <std::size_t count>
void expect_sizes(const Row (&rows)[count]) {
    for (const Row& row : rows) {
        EXPECT_EQ(decode_into(row.name, 0, true).needed, std::string_view(row.text).size() + 1)
            << row.name;
    }
}

}  // namespace

TEST(Scheme1Grouping, ACommaInAListGoesIntoParentheses) {
    static constexpr Row rows[] = {
        {"_Z1fIiEDTcl1gcmfp_fp_fp_EET_", "decltype(g((param#1, param#1), param#1)) f<int>(T1)"},
        {"_Z1fI1AIXcmLi1ELi2EEiEEvv", "void f<A<(1, 2), int>>()"},
        {"1AIXcmLi1ELi2EEE", "A<(1, 2)>"},
        {"1AIJXcmLi1ELi2EEiEE", "A<(1, 2), int>"},
        {"1AIXcmgtT_Li1ELi2EEE", "A<((T1 > 1), 2)>"},
        {"Dtcl1gcmT_T0_EE", "decltype(g((T1, T2)))"},
        {"Dtcp1gcmT_T0_T_EE", "decltype((g)((T1, T2), T1))"},
        {"DtclcmT_T0_T_EE", "decltype((T1, T2)(T1))"},
        {"DtilcmT_T0_T_EE", "decltype({(T1, T2), T1})"},
        {"Dttl1AcmT_T0_EE", "decltype(A{(T1, T2)})"},
        {"Dtildi1xcmT_T0_EE", "decltype({.x = (T1, T2)})"},
        {"DtildxLi0EcmT_T0_EE", "decltype({[0] = (T1, T2)})"},
        {"Dtcvi_cmT_T0_T_EE", "decltype(int((T1, T2), T1))"},
        {"DtcvicmT_T0_E", "decltype(int((T1, T2)))"},
        {"Dtnw_ipicmT_T0_EE", "decltype(new int((T1, T2)))"},
        {"Dtnw_iilcmT_T0_EE", "decltype(new int{(T1, T2)})"},
        {"DtnwcmT_T0__iEE", "decltype(new ((T1, T2)) int)"},
        {"Dtv29builtinabcmT_T0_T_E", "decltype(builtin-operation-ab((T1, T2), T1))"},
        {"Dtv212clisubscriptcmT_T0_T_E", "decltype(subscript((T1, T2), T1))"},
        {"Dtu5__fooXcmT_T0_EEE", "decltype(__foo((T1, T2)))"},
        {"DtsPXcmT_T0_EEE", "decltype(sizeof...((T1, T2)))"},
        // One level of parentheses, however many commas.
        {"Dtcl1gcmcmT_T0_T1_EE", "decltype(g(((T1, T2), T3)))"},
        // No lists.
        {"DtcmT_T0_E", "decltype(T1, T2)"},
        {"DtszcmT_T0_E", "decltype(sizeof(T1, T2))"},
        {"DtnxcmT_T0_E", "decltype(noexcept(T1, T2))"},
        {"DtscicmT_T0_E", "decltype(static_cast<int>(T1, T2))"},
        {"DtixT_cmT0_T1_E", "decltype(T1[T2, T3])"},
        {"DtplcmT_T0_T1_E", "decltype((T1, T2) + T3)"},
        {"AcmT_T0__i", "int [T1, T2]"},
    };
    expect_rows(rows);
}

TEST(Scheme1Grouping, ACastWhoseTypeDoesNotEndInANameGoesIntoParenthesesAsAnOperand) {
    static constexpr Row rows[] = {
        {"_ZN5test211read_memberINS_1AEEEDtptcvPT_Li0E6memberERS2_",
         "decltype((T1 *(0))->member) test2::read_member<test2::A>(T1 &)"},
        {"DtptcvPT_Li0E1xE", "decltype((T1 *(0))->x)"},
        {"DtdtcvRT_fp_1xE", "decltype((T1 &(param#1)).x)"},
        {"DtdtcvOT_fp_1xE", "decltype((T1 &&(param#1)).x)"},
        {"DtplcvPT_Li0ELi1EE", "decltype((T1 *(0)) + 1)"},
        {"DtplLi1EcvPT_Li0EE", "decltype(1 + (T1 *(0)))"},
        {"DtngcvPT_Li0EE", "decltype(-(T1 *(0)))"},
        {"DtdecvPKT_Li0EE", "decltype(*(const T1 *(0)))"},
        {"DtppcvPT_Li0EE", "decltype((T1 *(0))++)"},
        {"Dtpp_cvPT_Li0EE", "decltype(++(T1 *(0)))"},
        {"DtquT_cvPT_Li0ELDnEE", "decltype(T1 ? (T1 *(0)) : nullptr)"},
        {"DtixcvPT_Li0ELi1EE", "decltype((T1 *(0))[1])"},
        {"DtclcvPFvvELi0EEE", "decltype((void (*)()(0))())"},
        {"DtdscvRT_fp_fp0_E", "decltype((T1 &(param#1)).*param#2)"},
        {"DtpmT_cvM1AiLi0EE", "decltype(T1 ->* (int A::*(0)))"},
        {"DtflplcvPT_fp_E", "decltype((... + (T1 *(param#1))))"},
        {"DtptcvPT__E1xE", "decltype((T1 *())->x)"},
        {"DtptcvKPT_Li0E1xE", "decltype((T1 *const(0))->x)"},
        {"DtdtcvA3_ifp_1xE", "decltype((int [3](param#1)).x)"},
        {"DtplcvDtfp_ELi0ELi1EE", "decltype((decltype(param#1)(0)) + 1)"},
        {"DtplcvDv4_iLi0ELi1EE", "decltype((int __vector(4)(0)) + 1)"},
        // These end in one.
        {"DtdtcvT__E1xE", "decltype(T1().x)"},
        {"DtdtcvT_fp_1xE", "decltype(T1(param#1).x)"},
        {"DtplcviT_Li1EE", "decltype(int(T1) + 1)"},
        {"DtplcvjT_Li1EE", "decltype(unsigned int(T1) + 1)"},
        {"Dtdtcv1AIT_Efp_1xE", "decltype(A<T1>(param#1).x)"},
        {"DtdtcvN1A1BEfp_1xE", "decltype(A::B(param#1).x)"},
        {"DtdtcvKT_fp_1xE", "decltype(const T1(param#1).x)"},
        // No operands.
        {"DtcvPT_Li0EE", "decltype(T1 *(0))"},
        {"Dtcl1gcvPT_Li0EEE", "decltype(g(T1 *(0)))"},
        {"DtixT_cvPT_Li0EE", "decltype(T1[T1 *(0)])"},
        {"DtptscPT_Li0E1xE", "decltype(static_cast<T1 *>(0)->x)"},
    };
    expect_rows(rows);
}

TEST(Scheme1Grouping, ABlankStandsBetweenANameThatEndsInLessAndItsArguments) {
    static constexpr Row rows[] = {
        {"_Z2a<IiEvv", "void a< <int>()"},
        {"_Z2<<IiEvv", "void << <int>()"},
        {"_Z2<aIiEvv", "void <a<int>()"},
        {"2a<IiE", "a< <int>"},
        {"N1A2b<IiEE", "A::b< <int>"},
        {"St2a<IiE", "std::a< <int>"},
        {"_ZN2a<IiE1fEv", "a< <int>::f()"},
        {"_Z1f2a<S_IiE", "f(a<, a< <int>)"},
        {"_Z1fN1A2b<ES0_IiE", "f(A::b<, A::b< <int>)"},
        {"_Z1fN1A2b<ENS_2b<IiEE", "f(A::b<, A::b< <int>)"},
        {"_Z1fN1A2b<ENS0_IiE1cE", "f(A::b<, A::b< <int>::c)"},
        {"_Zli2_<IiEvv", "void operator \"\"_< <int>()"},
        {"_Zli2_xIiEvv", "void operator \"\"_x<int>()"},
        {"_ZltIiEvv", "void operator < <int>()"},
        {"_ZN1AltIiEEvv", "void A::operator < <int>()"},
        {"_ZN2A<C1IiEEv", "A<::A< <int>()"},
        {"_ZN2A<cv2b<IiEEv", "A<::operator b< <int>()"},
        {"u2a<IiE", "a< <int>"},
        {"U2a<IiEc", "a< <int> char"},
        {"Dt2a<IiEE", "decltype(a< <int>)"},
        {"Dtsr1A2a<IiEE", "decltype(A::a< <int>)"},
        {"Dtonli2_<IiEE", "decltype(operator \"\"_< <int>)"},
        {"DtdtT_2a<IiEE", "decltype(T1.a< <int>)"},
        {"DtsrT_dn2A<IiEE", "decltype(T1::~A< <int>)"},
        // The list follows the tag.
        {"_Z2a<B1xIiEvv", "void a<[abi:x]<int>()"},
        {"_ZltB1xIiEvv", "void operator <[abi:x]<int>()"},
        {"_Z2a<B2x<IiEvv", "void a<[abi:x<]<int>()"},
    };
    expect_rows(rows);
}

// Also where the buffer is too small, and only the letters of the name can tell.
TEST(Scheme1Grouping, NoBlankStandsWhereSomethingFollowsALess) {
    static constexpr Row rows[] = {
        {"_Z1fN2a<IiEES0_IiE", "f(a< <int>, a< <int><int>)"},
        {"_Z1f2a<IiES0_IiE", "f(a< <int>, a< <int><int>)"},
        {"_Z1fN1AltES0_IiE", "f(A::operator <, A::operator < <int>)"},
        {"_Z1f2a<S_IiES0_IiE", "f(a<, a< <int>, a< <int><int>)"},
        {"_Z1fPN2a<IiEES_S0_IiE", "f(a< <int> *, a<, a< <int><int>)"},
        {"_Z1f2a<B1xIiE", "f(a<[abi:x]<int>)"},
        {"_Z1f2a<B1xS_IiE", "f(a<[abi:x], a<[abi:x]<int>)"},
        {"_ZN1AltB1xIiEEvv", "void A::operator <[abi:x]<int>()"},
        {"_ZN2a<C1IiEEi", "a<::a< <int>(int)"},
        {"_ZN2a<C1B2x1IiEEi", "a<::a<[abi:x1]<int>(int)"},
        {"_Z1fZ1gvE2a<_0S_IiE", "f(g()::a< (instance 2), g()::a< (instance 2)<int>)"},
        {"_Z1fZ1gvE2a<S_IiE", "f(g()::a<, g()::a< <int>)"},
    };
    expect_rows(rows);
    expect_sizes(rows);
    static constexpr Row of_modules[] = {
        {"_ZW3foo2a<IiEvv", "void a<@foo<int>()"},
        {"_ZN1AW3foo2a<IiEEvv", "void A::a<@foo<int>()"},
        {"_ZW3fooltIiEvv", "void operator <@foo<int>()"},
        {"_ZN1AW3foolsIiEEvv", "void A::operator <<@foo<int>()"},
        {"_ZW3fooli2_<IiEvv", "void operator \"\"_<@foo<int>()"},
        {"_Z1fW3foo2a<S0_IiE", "f(a<@foo, a<@foo<int>)"},
    };
    const ExtendedNames extended;
    expect_rows(of_modules);
    expect_sizes(of_modules);
}

TEST(Scheme1Grouping, VendorQualifiersOfTheTableStandWithoutArguments) {
    static constexpr Row rows[] = {
        {"_Z1fU9__pin_ptrIiEi", "f(__pin_ptr<int> int)"},
        {"_Z1fU9__pin_ptri", "f(pin_ptr<int>)"},
        {"_Z1fU14__interior_ptrIiEi", "f(__interior_ptr<int> int)"},
        {"_Z1fU8__handleIiE1A", "f(__handle<int> A)"},
        {"_Z1fU8__trkrefIiE1A", "f(__trkref<int> A)"},
        {"_Z1fU8__trkref1A", "f(A %)"},
        {"_Z1fU8__vectorIiEf", "f(__vector<int> float)"},
        {"_Z1fU16__opencl_vector4IiEf", "f(__opencl_vector4<int> float)"},
        {"_Z1fU8__handlIiE1A", bad},
        {"_Z1fU7__handl1A", "f(__handl A)"},
        {"_Z1fU9__handle_1A", "f(__handle_ A)"},
        {"_Z1fU9x__handle1A", "f(x__handle A)"},
        {"_Z1fU9__pin_ptrIiEiS_", "f(__pin_ptr<int> int, __pin_ptr<int> int)"},
        {"_Z1fRA3_U9__pin_ptrIiEi", "f(__pin_ptr<int> int (&)[3])"},
        {"_Z1fRA3_U9__pin_ptrA2_i", "f(pin_ptr<int [2]> (&)[3])"},
        {"_Z1fU9__pin_ptrIiEA3_i", "f(__pin_ptr<int> int [3])"},
    };
    expect_rows(rows);
}
