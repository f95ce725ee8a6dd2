// Scheme 0's operator codes, and the expressions that they make.
#include "demangle/scheme0/operators.h"

#include <gtest/gtest.h>

#include <cstring>
#include <span>

#include "tests/demangle/scheme0/parts.h"
#include "tests/demangle/scheme0/rows.h"

namespace {

struct Found {
    std::string text;
    int length = 0;
};

Found lookup(const char* letters, std::size_t readable) {
    decode_state state;
    state.input_end = letters + readable;
    Found found;
    const scheme0::operator_code* const row = lookup_operator_code(letters, &state, &found.length);
    found.text = row == nullptr ? "none" : row->text;
    return found;
}

Found lookup(const char* letters) {
    return lookup(letters, std::strlen(letters));
}

}  // namespace

TEST(Scheme0Operators, EveryCodeHasItsText) {
    for (const scheme0::Coded& row :
         std::span(scheme0::operator_codes, scheme0::operator_code_count)) {
        const Found found = lookup(row.code);
        EXPECT_EQ(found.text, row.text) << row.code;
        EXPECT_EQ(found.length, static_cast<int>(std::strlen(row.code))) << row.code;
    }
}

TEST(Scheme0Operators, LongerCodeWins) {
    EXPECT_EQ(lookup("ppe").length, 3);
    EXPECT_EQ(lookup("ppx").length, 2);
    EXPECT_EQ(lookup("nwax").text, "new[]");
    EXPECT_EQ(lookup("nwb").text, "new");
    EXPECT_EQ(lookup("adv").text, "/=");
    EXPECT_EQ(lookup("adx").text, "&");
}

TEST(Scheme0Operators, UnknownOrCutCodeDoesNotMatch) {
    EXPECT_EQ(lookup("zz").text, "none");
    EXPECT_EQ(lookup("zz").length, 2);
    EXPECT_EQ(lookup("op").text, "none");
    EXPECT_EQ(lookup("PL").text, "none");
    EXPECT_EQ(lookup("pl", 1).text, "none");
    EXPECT_EQ(lookup("pl", 1).length, 2);
    EXPECT_EQ(lookup("pl", 0).text, "none");
    EXPECT_EQ(lookup("ppe", 2).text, "++");
    EXPECT_EQ(lookup("ppe", 2).length, 2);
}

TEST(Scheme0Expressions, BinaryOperatorsStandBetweenSingleBlanks) {
    static const Row rows[] = {
        {"apl", "N1 += N2"},  {"ami", "N1 -= N2"},  {"amu", "N1 *= N2"},    {"adv", "N1 /= N2"},
        {"amd", "N1 %= N2"},  {"aer", "N1 ^= N2"},  {"aad", "N1 &= N2"},    {"aor", "N1 |= N2"},
        {"als", "N1 <<= N2"}, {"pl", "N1 + N2"},    {"mi", "N1 - N2"},      {"ml", "N1 * N2"},
        {"dv", "N1 / N2"},    {"md", "N1 % N2"},    {"er", "N1 ^ N2"},      {"ad", "N1 & N2"},
        {"or", "N1 | N2"},    {"as", "N1 = N2"},    {"lt", "N1 < N2"},      {"ls", "N1 << N2"},
        {"eq", "N1 == N2"},   {"ne", "N1 != N2"},   {"le", "N1 <= N2"},     {"aa", "N1 && N2"},
        {"oo", "N1 || N2"},   {"rm", "N1 ->* N2"},  {"mn", "N1 <? N2"},     {"cm", "N1, N2"},
        {"rf", "N1->N2"},     {"ds", "N1.*N2"},     {"dt", "N1.N2"},        {"gt", "(N1 > N2)"},
        {"rs", "(N1 >> N2)"}, {"ge", "(N1 >= N2)"}, {"ars", "(N1 >>= N2)"}, {"mx", "(N1 >? N2)"},
    };
    for (const Row& row : rows) {
        expect_operands({{"O" + row.name + "Z1ZZ2ZO", row.text},
                         {"O" + row.name + "Z1ZO", bad_name},
                         {"O" + row.name + "Z1ZZ2ZZ3ZO", bad_name}});
    }
}

TEST(Scheme0Expressions, UnaryOperators) {
    expect_operands({{"OntZ1ZO", "!N1"},
                     {"OcoZ1ZO", "~N1"},
                     {"OngZ1ZO", "-N1"},
                     {"OpsZ1ZO", "+N1"},
                     {"OdeZ1ZO", "*N1"},
                     {"OaoZ1ZO", "&N1"},
                     {"OhtZ1ZO", "%N1"},
                     {"OppZ1ZO", "++N1"},
                     {"OmmZ1ZO", "--N1"},
                     {"OawZ1ZO", "co_await N1"},
                     {"OtwZ1ZO", "throw N1"},
                     {"OppeZ1ZO", "N1++"},
                     {"OmmeZ1ZO", "N1--"},
                     {"OspZ1ZO", "N1..."},
                     {"OdlZ1ZO", "delete N1"},
                     {"OdlaZ1ZO", "delete[] N1"},
                     {"OntO", bad_name},
                     {"OntZ1ZZ2ZO", bad_name}});
}

TEST(Scheme0Expressions, FormsWithOperandsOfTheirOwnKind) {
    expect_operands({{"OqsZ1ZiL11iL12O", "N1 ? 1 : 2"},
                     {"OqsZ1ZiL11O", bad_name},
                     {"Ocl__f__Z1ZZ2ZO", "f(N1, N2)"},
                     {"Ocl__f__O", "f()"},
                     {"Ocp__f__Z1ZO", "(f)(N1)"},
                     {"OcpOplZ1ZZ2ZOZ3ZO", "((N1 + N2))(N3)"},
                     {"OvcZ1ZiL10O", "N1[0]"},
                     {"OsbZ1ZZ2ZO", "subscript(N1, N2)"},
                     {"ObiZ1ZZ2ZO", "builtin-operation(N1, N2)"},
                     {"OdcTPi"
                      "Z1ZO",
                      "dynamic_cast<int *>(N1)"},
                     {"OscTiZ1ZO", "static_cast<int>(N1)"},
                     {"OccTPiZ1ZO", "const_cast<int *>(N1)"},
                     {"OrcTPiZ1ZO", "reinterpret_cast<int *>(N1)"},
                     {"OsfTHh1AZ1ZO", "safe_cast<A^>(N1)"},
                     {"OcsTiZ1ZO", "(int)N1"},
                     {"OcsTiOngZ1ZOO", "(int)(-N1)"},
                     {"OrlZ1ZO", "__real(N1)"},
                     {"OimZ1ZO", "__imag(N1)"},
                     {"OszTiO", "sizeof(int)"},
                     {"OszZ1ZO", "sizeof(N1)"},
                     {"OafTiO", "__alignof__(int)"},
                     {"OuuT1AO", "__uuidof(A)"},
                     {"OtyZ1ZO", "typeid(N1)"},
                     {"OskZ1ZO", "sizeof...(N1)"},
                     {"OnxZ1ZO", "noexcept(N1)"},
                     {"OctTiO", "int::typeid"},
                     {"OnwTiiL15O", "new int(5)"},
                     {"OnwTiO", "new int()"},
                     {"OnwaTiiL15O", "new[] int(5)"},
                     {"OgcT1AO", "gcnew A()"},
                     {"OilZ1ZZ2ZO", "{N1, N2}"},
                     {"OilO", "{}"},
                     {"OtlTiZ1ZZ2ZO", "int{N1, N2}"},
                     {"OscZ1ZO", bad_name},
                     {"OszO", bad_name},
                     {"OctZ1ZO", bad_name},
                     {"OliZ1ZO", bad_name},
                     {"OzzZ1ZO", bad_name},
                     {"OplZ1ZZ2Z", bad_name}});
}

TEST(Scheme0Expressions, OperationsAsOperandsGoIntoParentheses) {
    expect_operands({{"OmlOplZ1ZiL11OiL12O", "(N1 + 1) * 2"},
                     {"OntOaaZ1ZZ2ZOO", "!(N1 && N2)"},
                     {"OngOngZ1ZOO", "-(-N1)"},
                     {"OplOppeZ1ZOiL11O", "(N1++) + 1"},
                     {"OplOqsZ1ZiL11iL12OiL13O", "(N1 ? 1 : 2) + 3"},
                     {"OplOspZ1ZOiL11O", "(N1...) + 1"},
                     {"OplOtwZ1ZOiL11O", "(throw N1) + 1"},
                     {"OplOnwTiOiL11O", "(new int()) + 1"},
                     {"OplOdlZ1ZOiL11O", "(delete N1) + 1"},
                     {"OplOcl__f__OiL11O", "f() + 1"},
                     {"OplOdtZ1ZZ2ZOiL11O", "N1.N2 + 1"},
                     {"OplOrfZ1ZZ2ZOiL11O", "N1->N2 + 1"},
                     {"OplOvcZ1ZZ2ZOiL11O", "N1[N2] + 1"},
                     {"OplOscTiZ1ZOiL11O", "static_cast<int>(N1) + 1"},
                     {"OplOszTiOiL11O", "sizeof(int) + 1"},
                     {"OplOtlTiOiL11O", "int{} + 1"},
                     {"Ocl__f__OplZ1ZZ2ZOO", "f(N1 + N2)"}});
}

TEST(Scheme0Expressions, GreaterOutsideParenthesesPutsAnArgumentIntoThem) {
    expect_operands({{"OplOgtZ1ZZ2ZOiL11O", "(N1 > N2) + 1"},
                     {"Ocl__f__OgtZ1ZZ2ZOO", "f(N1 > N2)"},
                     {"OszOgtZ1ZZ2ZOO", "sizeof(N1 > N2)"},
                     {"OrfZ1ZZ2ZO", "N1->N2"},
                     {"OqsZ1ZZ2ZOgtZ1ZZ2ZOO", "N1 ? N2 : (N1 > N2)"},
                     {"__g" + args("XOgtZ1ZZ2ZO") + "__", "g<(O1 > O2)>"}});
    expect_rows({{"f" + args("XOgtZ1ZZ2ZOi") + "__Fv", "f<(N1 > N2), int>()"}});
}

TEST(Scheme0Expressions, GreaterInATypeCountsWhereItPrints) {
    expect_operands({{"OctTAXOgtZ1ZZ2ZO_iO", "(int [N1 > N2]::typeid)"},
                     {"OctTPFAXOgtZ1ZZ2ZO_i_vO", "void (*)(int [N1 > N2])::typeid"},
                     {"OctTyOgtZ1ZZ2ZOO", "decltype(N1 > N2)::typeid"},
                     {"Ong____opAXOgtZ1ZZ2ZO_i__O", "(-operator int [O1 > O2])"}});
    // Each time that the parameter is repeated.
    const std::string name = "A" + args("XOctTAXOgtZ1ZZ2ZO_iO");
    expect_rows(
        {{"f__F" + run(name) + "T1", "f(A<(int [N1 > N2]::typeid)>, A<(int [N1 > N2]::typeid)>)"}});
}

TEST(Scheme0Expressions, Examples) {
    expect_rows({{"f__tm__18_XOplZ1ZiL11OXbL10__Fv", "f<N1 + 1, false>()"},
                 {"g__tm__8_XOszTiO__Fv", "g<sizeof(int)>()"},
                 {"f" + args("XOcmZ1ZZ2ZO") + "__Fv", "f<N1, N2>()"}});
}
