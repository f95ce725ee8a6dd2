// Scheme 0's types, row by row, and lists of parameters.
#include <gtest/gtest.h>

#include "tests/demangle/scheme0/rows.h"

TEST(Scheme0Types, BuiltinCodes) {
    expect_types({{"b", "bool"},
                  {"c", "char"},
                  {"w", "wchar_t"},
                  {"g", "char16_t"},
                  {"k", "char32_t"},
                  {"s", "short"},
                  {"i", "int"},
                  {"l", "long"},
                  {"L", "long long"},
                  {"f", "float"},
                  {"d", "double"},
                  {"r", "long double"},
                  {"m1", "__int8"},
                  {"m2", "__int16"},
                  {"m4", "__int32"},
                  {"m5", "__int40_t"},
                  {"m8", "__int64"},
                  {"m16", "__int128"},
                  {"n", "std::nullptr_t"},
                  {"j", "__nullptr"},
                  {"u", "auto"},
                  {"q", "decltype(auto)"},
                  {"Pv", "void *"},
                  {"h", bad_name},
                  {"m", bad_name},
                  {"m3", bad_name},
                  {"m17", bad_name},
                  {"a", bad_name},
                  {"z", bad_name},
                  {"W", bad_name},
                  {"I", bad_name}});
}

TEST(Scheme0Types, OneModifierStandsBeforeACode) {
    expect_types({{"Sc", "signed char"},
                  {"Ui", "unsigned int"},
                  {"Uc", "unsigned char"},
                  {"UL", "unsigned long long"},
                  {"Um16", "unsigned __int128"},
                  {"xd", "_Complex double"},
                  {"UUi", bad_name},
                  {"USi", bad_name},
                  {"U", bad_name},
                  {"U1A", bad_name}});
}

TEST(Scheme0Types, WrappingCodes) {
    expect_types({{"ti", "typeof(int)"},
                  {"tA3_i", "typeof(int [3])"},
                  {"pZ1Z", "typeof(N1)"},
                  {"yOplZ1ZZ2ZO", "decltype(N1 + N2)"},
                  {"YZ1Z", "decltype((N1))"},
                  {"oPFv_v", "__underlying_type(void (*)())"},
                  {"o5Color", "__underlying_type(Color)"},
                  {"PyZ1Z", "decltype(N1) *"},
                  {"yI1I", bad_name},
                  {"y__f__", bad_name}});
}

TEST(Scheme0Types, PointersAndReferences) {
    expect_types({{"Pi", "int *"},
                  {"Ri", "int &"},
                  {"Ei", "int &&"},
                  {"PCc", "const char *"},
                  {"CPc", "char *const"},
                  {"PPc", "char **"},
                  {"RPc", "char *&"},
                  {"EPCc", "const char *&&"},
                  {"RCPc", "char *const &"},
                  {"PCPCc", "const char *const *"},
                  {"CVDrPc", "char *const volatile restrict"},
                  {"DrVCPc", "char *const volatile restrict"},
                  {"CVc", "const volatile char"},
                  {"CCc", "const char"},
                  {"PC1A", "const A *"},
                  {"PZ1Z", "T1 *"},
                  {"P", bad_name},
                  {"DLi", bad_name},
                  {"PDRi", bad_name}});
}

TEST(Scheme0Types, ArraysAndFunctions) {
    expect_types({{"RA3_i", "int (&)[3]"},
                  {"PA3_Ci", "const int (*)[3]"},
                  {"PCA3_i", "const int (*)[3]"},
                  {"A_i", "int []"},
                  {"A007_i", "int [7]"},
                  {"A0_i", "int [0]"},
                  {"A2_A3_i", "int [2][3]"},
                  {"A3_Pi", "int *[3]"},
                  {"A3_PFi_v", "void (*[3])(int)"},
                  {"AXZ1Z_i", "int [N1]"},
                  {"AXOmiZ1ZiL11O_i", "int [N1 - 1]"},
                  {"AX__n___i", "int [n]"},
                  {"Fi_v", "void (int)"},
                  {"PFi_v", "void (*)(int)"},
                  {"PF_v", "void (*)()"},
                  {"RFv_i", "int (&)()"},
                  {"PFPFv_v_i", "int (*)(void (*)())"},
                  {"PFi_PFv_v", "void (*(*)(int))()"},
                  {"PFie_v", "void (*)(int, ...)"},
                  {"PCFv_v", "void (*)() const"},
                  {"PFi_PA3_i", "int (*(*)(int))[3]"},
                  {"CPFv_v", "void (*const)()"},
                  {"A3i", bad_name},
                  {"PFi", bad_name},
                  {"PFi_", bad_name}});
}

TEST(Scheme0Types, PointersToMembers) {
    expect_types({{"M1Ai", "int A::*"},
                  {"M1ACFv_v", "void (A::*)() const"},
                  {"M1ACDLFv_v", "void (A::*)() const &"},
                  {"M1ADRFi_v", "void (A::*)(int) &&"},
                  {"MQ2_1A1Bi", "int A::B::*"},
                  {"MZ1Zi", "int T1::*"},
                  {"CM1Ai", "int A::*const"},
                  {"PM1Ai", "int A::**"},
                  {"M1AA3_i", "int (A::*)[3]"},
                  {"M1AM1Bi", "int B::*A::*"},
                  {"Mii", bad_name},
                  {"MP1Ai", bad_name},
                  {"M1A", bad_name}});
}

TEST(Scheme0Types, Vectors) {
    expect_types({{"B16_f", "__attribute__((vector_size(16))) float"},
                  {"CB16_f", "const __attribute__((vector_size(16))) float"},
                  {"PB8_i", "__attribute__((vector_size(8))) int *"},
                  {"B_f", bad_name},
                  {"B16f", bad_name}});
}

TEST(Scheme0Types, ManagedPointers) {
    expect_types({{"Hii", "interior_ptr<int>"},
                  {"Hpi", "pin_ptr<int>"},
                  {"Hh1A", "A^"},
                  {"Ht1A", "A%"},
                  {"PHh1A", "A^*"},
                  {"CHh1A", "A^const"},
                  {"CHii", "interior_ptr<int> const"},
                  {"CVDrHpi", "pin_ptr<int> const volatile restrict"},
                  {"HhA3_i", "int (^)[3]"},
                  {"HiPFv_v", "interior_ptr<void (*)()>"},
                  {"HhC1A", "const A^"},
                  {"Hxi", bad_name},
                  {"H", bad_name}});
}

TEST(Scheme0Types, TemplateParametersHaveShortNamesAtThreeLevels) {
    expect_types({{"Z2Z", "T2"},
                  {"Z2_1Z", "T2"},
                  {"Z2_2Z", "U2"},
                  {"Z2_3Z", "V2"},
                  {"Z2_4Z", "T_4_2"},
                  {"Z2_0Z", "T_0_2"},
                  {"Z12_34Z", "T_34_12"},
                  {"Z2", bad_name},
                  {"Z2_Z", bad_name},
                  {"ZZ", bad_name}});
}

TEST(Scheme0Types, NestedNamesRaiseTheLevelOfTheirParameters) {
    expect_operands({{"Z3Z", "N3"},
                     {"Z3_2Z", "O3"},
                     {"Z3_3Z", "P3"},
                     {"Z3_4Z", "N_4_3"},
                     {"__g" + args("Z1Z") + "__", "g<U1>"},
                     {"__g" + args("XZ1Z") + "__", "g<O1>"},
                     {"__g" + args("X__h" + args("Z1Z") + "__") + "__", "g<h<V1>>"},
                     {"__g" + args("Z1_3Z") + "__", "g<T_4_1>"}});
}

TEST(Scheme0Types, RepeatedParameters) {
    expect_rows({
        {"f__FPCcT1N21", "f(const char *, const char *, const char *, const char *)"},
        {"f__FiT1", "f(int, int)"},
        {"f__FicT2T1", "f(int, char, char, int)"},
        {"f__FiN01", "f(int)"},
        {"f__FiT1e", "f(int, int, ...)"},
        {"f__FiT1_v", "void f(int, int)"},
        {"f__FiN91T11_", bad_name},  // only ten have been seen
        {"f__FiN91T10_", "f(int, int, int, int, int, int, int, int, int, int, int)"},
        {"f__FiN911AT11_", "f(int, int, int, int, int, int, int, int, int, int, A, A)"},
        {"f__FiT12ab", "f(int, int, ab)"},
        {"f__FPFcT1_vT1", "f(void (*)(char, char), void (*)(char, char))"},
        {"f__FiPFcT1_v", "f(int, void (*)(char, char))"},
        {"f__FT1", bad_name},
        {"f__FiT2", bad_name},
        {"f__FiT0", bad_name},
        {"f__FiN2", bad_name},
        {"f__FiN", bad_name},
        {"f__FiT", bad_name},
        {"f__FcPFT1_v", bad_name},
    });
}

TEST(Scheme0Types, TheLastOfManyParametersCanBeRepeated) {
    std::string list;
    for (int i = 1; i < 4096; ++i) {
        list += "int, ";
    }
    expect_rows({{"f__F" + std::string(4095, 'i') + "cT4096_", "f(" + list + "char, char)"},
                 {"f__F" + std::string(4095, 'i') + "cT4097_", bad_name}});
}

TEST(Scheme0Types, EmptyParameterListsReadAlike) {
    expect_rows({{"f__FPFv_v", "f(void (*)())"}, {"f__FPF_v", "f(void (*)())"}});
}

TEST(Scheme0Types, OwnersInOwnersAreReadOnceEach) {
    std::string name = "M1Ai";
    std::string text = "int A::*";
    for (int level = 0; level < 60; ++level) {
        name = "MQ1_" + name + "i";
        text = "int " + text + "::*";
    }
    expect_types({{name, text}});
}
