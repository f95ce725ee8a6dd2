// Scheme 1: names that look well formed and are not.
#include <gtest/gtest.h>

#include <string>

#include "tests/demangle/scheme1/rows.h"

TEST(Scheme1BadNames, ParametersAndDecltypesBeginAPrefix) {
    static constexpr Row rows[] = {
        {"_ZN1A1BT_1xE", bad},
        {"_ZN1AT_1xE", bad},
        {"_ZN1AT_E", bad},
        {"_ZN1AIiET_1xE", bad},
        {"_ZNStT_1xE", bad},
        {"_ZNT_T0_1xE", bad},
        {"_ZNT_IiET0_1xE", bad},
        {"_ZNSsT_1xE", bad},
        {"_Z1f1ANS_T_1xE", bad},
        {"_ZN1A1BDtfp_E1xE", bad},
        {"_ZN1A1BDTfp_E1xE", bad},
        {"_ZN1ADtfp_EE", bad},
        {"_ZNDtfp_EDtfp_E1xE", bad},
        {"_ZNDtfp_ET_1xE", bad},
        {"_ZNT_1xE", "T1::x"},
        {"_ZNT_IiE1xE", "T1<int>::x"},
        {"_ZNDtfp_E1xE", "decltype(param#1)::x"},
        {"_ZNDTfp_E1xE", "decltype(param#1)::x"},
        {"_ZNT_E", bad},
        {"_ZNDtfp_EE", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1BadNames, ALengthIsAtLeastOneAndEndsInsideTheName) {
    static constexpr Row rows[] = {
        {"_Z0", bad},
        {"_Z0v", bad},
        {"_Z00v", bad},
        {"_ZN0E", bad},
        {"_ZN1A0E", bad},
        {"_ZN1A00E", bad},
        {"_ZN1A01B1CE", "A::B::C"},
        {"_ZN001A1BE", "A::B"},
        {"_ZN1A10BCDEFGHIJKE", "A::BCDEFGHIJK"},
        {"_ZN1A10BCDEFGHIJE", bad},
        {"_ZN1A2BCE", "A::BC"},
        {"_ZN1A3BCE", bad},
        {"_ZN1A4BCE", bad},
        {"_ZN1A99BCE", bad},
        {"_ZN1A999999999999999999999BCE", bad},
        {"_Z1fN1A0E", bad},
        {"_Z1f0", bad},
        {"_Z1f2A", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1BadNames, TheMarkOfAnInitialiserStandsBetweenTwoComponents) {
    static constexpr Row rows[] = {
        {"_Z1fN1AME", bad},
        {"_ZN1AME", bad},
        {"_ZN1AMEv", bad},
        {"_ZN1A1BME", bad},
        {"_ZN1AIiEME", bad},
        {"_ZN1AMMUlvE_E", bad},
        {"_ZNMUlvE_E", bad},
        {"_ZNStMUlvE_E", bad},
        {"_ZN1AMIiEUlvE_E", bad},
        {"_ZN1AMUlvE_E", "A::[lambda() (instance 1)]"},
        {"_ZN1AIiEMUlvE_E", "A<int>::[lambda() (instance 1)]"},
        {"_Z1fN1xMUlvE_ENS_MUlvE0_E", "f(x::[lambda() (instance 1)], x::[lambda() (instance 2)])"},
    };
    expect_rows(rows);
}

TEST(Scheme1BadNames, AMemberIsAName) {
    static constexpr Row rows[] = {
        {"_Z1fIXdtfp_T_EEvv", bad},
        {"DtdtT_T0_E", bad},
        {"DtptT_T0_E", bad},
        {"Dtdtfp_fp0_E", bad},
        {"Dtdtfp_Li1EE", bad},
        {"Dtptfp_LDnEE", bad},
        {"Dtdtfp_cl1gEE", bad},
        {"Dtptfp_cl1gEE", bad},
        {"Dtdtfp_plT_T0_E", bad},
        {"Dtdtfp_E", bad},
        {"Dtdtfp_1xE", "decltype(param#1.x)"},
        {"Dtdtfp_1xIiEE", "decltype(param#1.x<int>)"},
        {"DtdtT_sr1A1xE", "decltype(T1.A::x)"},
        {"DtptT_gssr1A1xE", "decltype(T1->::A::x)"},
        {"DtdtT_onplE", "decltype(T1.operator +)"},
        {"DtdtT_dnT_E", "decltype(T1.~T1)"},
    };
    expect_rows(rows);
}

TEST(Scheme1BadNames, DesignatorsStandInBracesOnly) {
    static constexpr Row rows[] = {
        {"_Z1fIXdi1xLi1EEEvv", bad},
        {"Dtdi1xLi1EE", bad},
        {"DtdxLi0ELi1EE", bad},
        {"DtdXLi0ELi1ELi2EE", bad},
        {"Dtcl1gdi1xLi1EEE", bad},
        {"Dtpldi1xLi1ELi2EE", bad},
        {"Dtcvi_di1xLi1EEE", bad},
        {"Dtnw_ipidi1xLi1EEE", bad},
        {"Dtildi1xLi1EEE", "decltype({.x = 1})"},
        {"Dttl1Adi1xLi1EEE", "decltype(A{.x = 1})"},
        {"DtildxLi0ELi1EEE", "decltype({[0] = 1})"},
        {"DtildXLi0ELi3ELi1EEE", "decltype({[0 ... 3] = 1})"},
        {"Dtildi1xdi1yLi1EEE", "decltype({.x.y = 1})"},
        {"Dtildi1xdxLi2ELi1EEE", "decltype({.x[2] = 1})"},
        {"Dtnw_1Aildi1xLi1EEE", "decltype(new A{.x = 1})"},
        {"Dtildi1xildi1yLi1EEEE", "decltype({.x = {.y = 1}})"},
        {"Dtilngdi1xLi1EEE", bad},
        {"Dtildi1xngdi1yLi1EEE", bad},
    };
    expect_rows(rows);
}

TEST(Scheme1BadNames, TheSecondFormOfACallTakesAName) {
    static constexpr Row rows[] = {
        {"_Z1fIXcpT_EEEvv", bad},
        {"DtcpT_T0_EE", bad},
        {"Dtcpfp_EE", bad},
        {"DtcpplT_T0_T_EE", bad},
        {"DtcpLi1EEE", bad},
        {"Dtcpcl1gEEE", bad},
        {"Dtcp1fEE", "decltype((f)())"},
        {"Dtcp1fIiET_EE", "decltype((f<int>)(T1))"},
        {"DtcponplT_EE", "decltype((operator +)(T1))"},
        {"Dtcpsr1A1fT_EE", "decltype((A::f)(T1))"},
    };
    expect_rows(rows);
}

TEST(Scheme1BadNames, TheSizeOfAVectorIsANumberOrMarked) {
    static constexpr Row rows[] = {
        {"_Z1fDv_2_x_f", "f(float __vector(_x))"},
        {"_Z1fDv_1x_f", "f(float __vector(x))"},
        {"_Z1fIiEvDv_T__f", "void f<int>(float __vector(T1))"},
        {"_Z1fIiEvDv_plT_Li1E_i", "void f<int>(int __vector(T1 + 1))"},
        {"_Z1fDv_Li4E_f", "f(float __vector(4))"},
        {"_Z1fDv_L_Z1xE_f", "f(float __vector(x))"},
        {"_Z1fDv4_f", "f(float __vector(4))"},
        {"_Z1fDv16_f", "f(float __vector(16))"},
        {"Dv_4_f", bad},
        {"Dv1n_i", bad},
        {"Dvn1_i", bad},
        {"DvT__f", "float __vector(T1)"},  // as GCC writes it
        {"DvLi4E_f", "float __vector(4)"},
        {"Dv4f", bad},
        {"Dv_f", bad},
        {"Dv__f", bad},
        {"Dv4_", bad},
        {"Dv", bad},
        {"Dv_T_f", bad},
    };
    expect_rows(rows);
}

// 16 MiB are a text that may be.
TEST(Scheme1BadNames, ASourceNameThatIsTooLongByItself) {
    constexpr std::size_t longest = std::size_t{16} << 20;
    const auto source_name = [](std::size_t length) {
        return std::to_string(length) + std::string(length, 'a');
    };
    EXPECT_EQ(decoded("_Z" + source_name(longest)).size(), longest);
    EXPECT_EQ(decoded("_Z" + source_name(longest + 1)), bad);
    EXPECT_EQ(decoded(source_name(longest)).size(), longest);
    EXPECT_EQ(decoded(source_name(longest + 1)), bad);
    EXPECT_EQ(decoded("_ZTI" + source_name(longest)), bad);
    EXPECT_EQ(decoded("_ZN1A" + source_name(longest - 3) + "E").size(), longest);
    EXPECT_EQ(decoded("_ZN1A" + source_name(longest - 2) + "E"), bad);
}

TEST(Scheme1BadNames, AFoldTakesAnOperatorOfTwoOperands) {
    static constexpr Row rows[] = {
        {"DtfladT_E", bad},
        {"DtfradT_E", bad},
        {"DtflatT_E", bad},
        {"DtfratT_E", bad},
        {"DtflawT_E", bad},
        {"DtfrawT_E", bad},
        {"DtflazT_E", bad},
        {"DtfrazT_E", bad},
        {"DtflccT_E", bad},
        {"DtfrccT_E", bad},
        {"DtflclT_E", bad},
        {"DtfrclT_E", bad},
        {"DtflcoT_E", bad},
        {"DtfrcoT_E", bad},
        {"DtfldaT_E", bad},
        {"DtfrdaT_E", bad},
        {"DtfldcT_E", bad},
        {"DtfrdcT_E", bad},
        {"DtfldeT_E", bad},
        {"DtfrdeT_E", bad},
        {"DtfldlT_E", bad},
        {"DtfrdlT_E", bad},
        {"DtflmmT_E", bad},
        {"DtfrmmT_E", bad},
        {"DtflnaT_E", bad},
        {"DtfrnaT_E", bad},
        {"DtflngT_E", bad},
        {"DtfrngT_E", bad},
        {"DtflntT_E", bad},
        {"DtfrntT_E", bad},
        {"DtflnwT_E", bad},
        {"DtfrnwT_E", bad},
        {"DtflnxT_E", bad},
        {"DtfrnxT_E", bad},
        {"DtflppT_E", bad},
        {"DtfrppT_E", bad},
        {"DtflpsT_E", bad},
        {"DtfrpsT_E", bad},
        {"DtflquT_E", bad},
        {"DtfrquT_E", bad},
        {"DtflrcT_E", bad},
        {"DtfrrcT_E", bad},
        {"DtflscT_E", bad},
        {"DtfrscT_E", bad},
        {"DtflstT_E", bad},
        {"DtfrstT_E", bad},
        {"DtflszT_E", bad},
        {"DtfrszT_E", bad},
        {"DtflteT_E", bad},
        {"DtfrteT_E", bad},
        {"DtfltiT_E", bad},
        {"DtfrtiT_E", bad},
        {"DtfltrT_E", bad},
        {"DtfrtrT_E", bad},
        {"DtfltwT_E", bad},
        {"DtfrtwT_E", bad},
        {"Dtflv18alignofeT_E", bad},
        {"Dtflv17alignofT_E", bad},
        {"Dtflv19__uuidofeT_E", bad},
        {"Dtflv17typeideT_E", bad},
        {"Dtflv16typeidT_E", bad},
        {"Dtflv19clitypeidT_E", bad},
        {"Dtflv18__real__T_E", bad},
        {"Dtflv18__imag__T_E", bad},
        {"Dtflv19clihandleT_E", bad},
        {"Dtflv112clisafe_castT_E", bad},
        {"DtfraaT_E", "decltype((T1 && ...))"},
        {"DtfranT_E", "decltype((T1 & ...))"},
        {"DtfraNT_E", "decltype((T1 &= ...))"},
        {"DtfraST_E", "decltype((T1 = ...))"},
        {"DtfrdvT_E", "decltype((T1 / ...))"},
        {"DtfrdVT_E", "decltype((T1 /= ...))"},
        {"DtfreoT_E", "decltype((T1 ^ ...))"},
        {"DtfreOT_E", "decltype((T1 ^= ...))"},
        {"DtfreqT_E", "decltype((T1 == ...))"},
        {"DtfrgeT_E", "decltype((T1 >= ...))"},
        {"DtfrgtT_E", "decltype((T1 > ...))"},
        {"DtfrleT_E", "decltype((T1 <= ...))"},
        {"DtfrlsT_E", "decltype((T1 << ...))"},
        {"DtfrlST_E", "decltype((T1 <<= ...))"},
        {"DtfrltT_E", "decltype((T1 < ...))"},
        {"DtfrmiT_E", "decltype((T1 - ...))"},
        {"DtfrmIT_E", "decltype((T1 -= ...))"},
        {"DtfrmlT_E", "decltype((T1 * ...))"},
        {"DtfrmLT_E", "decltype((T1 *= ...))"},
        {"DtfrneT_E", "decltype((T1 != ...))"},
        {"DtfrooT_E", "decltype((T1 || ...))"},
        {"DtfrorT_E", "decltype((T1 | ...))"},
        {"DtfroRT_E", "decltype((T1 |= ...))"},
        {"DtfrplT_E", "decltype((T1 + ...))"},
        {"DtfrpLT_E", "decltype((T1 += ...))"},
        {"DtfrrmT_E", "decltype((T1 % ...))"},
        {"DtfrrMT_E", "decltype((T1 %= ...))"},
        {"DtfrrsT_E", "decltype((T1 >> ...))"},
        {"DtfrrST_E", "decltype((T1 >>= ...))"},
        {"Dtfrv23minT_E", "decltype((T1 <? ...))"},
        {"Dtfrv23maxT_E", "decltype((T1 >? ...))"},
    };
    expect_rows(rows);
}
