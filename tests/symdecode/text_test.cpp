// What symdecode does to a text: which bytes are a name, what stays around it, and that
// the pieces in which a text arrives make no difference.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "symdecode/filter.h"

using namespace std::string_literals;
using namespace std::string_view_literals;

namespace {

using pass = std::size_t (*)(text_filter&, std::string_view, bool, std::string&);

text_filter with(int scheme) {
    text_filter filter;
    filter.decoder.settings.scheme = scheme;
    return filter;
}

// Feeds `text` in pieces of `step` bytes, the way the program reads.
std::string run(text_filter filter, pass through, std::string_view text, std::size_t step) {
    std::string held;
    std::string result;
    bool last = false;
    while (!last) {
        held += text.substr(0, step);
        text.remove_prefix(std::min(step, text.size()));
        last = text.empty();
        for (bool again = true; again;) {
            std::string out;
            held.erase(0, through(filter, held, last, out));
            again = out.size() > output_step && !held.empty();
            result += out;
        }
    }
    EXPECT_EQ(held, "");
    return result;
}

std::string decode_text(std::string_view text, const text_filter& filter = {}) {
    return run(filter, filter_text, text, text.size() + 1);
}

struct example {
    std::string_view text;
    std::string_view expected;
};

void expect_all(const std::vector<example>& examples, const text_filter& filter) {
    for (const auto& [text, expected] : examples) {
        EXPECT_EQ(decode_text(text, filter), expected) << text;
        EXPECT_EQ(run(filter, filter_text, text, 1), expected) << "byte by byte: " << text;
        EXPECT_EQ(run(filter, filter_text, text, 7), expected) << "by sevens: " << text;
    }
}

}  // namespace

TEST(SymdecodeText, ReplacesANameWhateverStandsAroundIt) {
    expect_all(
        {
            {"_Z1fi", "f(int)"},
            {"\tcall\t_ZN1A1fEi\n", "\tcall\tA::f(int)\n"},
            {"(_Z1fv)", "(f())"},
            {"`_Z1fv'", "`f()'"},
            {"[<_Z1fv>]", "[<f()>]"},
            {"_Z1fv,_Z1gi", "f(),g(int)"},
            {"a=_Z1fv+0x10", "a=f()+0x10"},
            {"_Z1fv-_Z1gv", "f()-g()"},
            {"\0_Z1fv\0_Z1gv\0"sv, "\0f()\0g()\0"sv},
            {"\"_ZTV1A\":", "\"Virtual function table for A\":"},
            {"; 12 | _Z1fv", "; 12 | f()"},
        },
        {});
}

TEST(SymdecodeText, LeavesEverythingElseAsItIs) {
    expect_all(
        {
            {"", ""},
            {"plain text, no newline", "plain text, no newline"},
            {"a_b _c d_ __ ___ _", "a_b _c d_ __ ___ _"},
            {"_Z", "_Z"},
            {"_Zq _ZTz1A _Z99short", "_Zq _ZTz1A _Z99short"},
            {"foo_Z1fv x_Z1fv 1_Z1fv", "foo_Z1fv x_Z1fv 1_Z1fv"},
            {"\xFF\xFE\0_\x80_"sv, "\xFF\xFE\0_\x80_"sv},
            {"i PKc", "i PKc"},
        },
        {});
}

TEST(SymdecodeText, LeavesAnExtraUnderscoreInFrontOfTheName) {
    expect_all({{"__Z1fv", "_f()"}, {"call __ZN1A1fEi;", "call _A::f(int);"}}, {});
    expect_all({{"___ct__1AFv", "_A::A()"},
                {"___vtbl__1A", "_virtual function table for A"},
                {"___Q2_1A1B", "_A::B"}},
               with(0));
}

TEST(SymdecodeText, AnUnderscoreThatBelongsToAnIdentifierStaysInIt) {
    expect_all({{"_f__1AFi", "A::_f(int)"}, {"___f__1AFi", "A::___f(int)"}}, with(0));
}

TEST(SymdecodeText, DropsTheUnderscoreOnRequest) {
    text_filter filter;
    filter.decoder.settings.strip_underscore = true;
    expect_all({{"__Z1fv", "f()"}, {"_Z1fv", "f()"}, {"_main", "_main"}, {"___Z1fv", "_f()"}},
               filter);
    filter.decoder.settings.scheme = 0;
    expect_all({{"_f__1AFi", "A::f(int)"},
                {"f__1AFi", "A::f(int)"},
                {"___ct__1AFv", "A::A()"},
                {"_main", "_main"}},
               filter);
}

TEST(SymdecodeText, LeavesVersionsAndRelocationsBehindTheName) {
    expect_all(
        {
            {"_Z1fv@plt", "f()@plt"},
            {"_Z1fv@@GLIBCXX_3.4", "f()@@GLIBCXX_3.4"},
            {"_Z1fv@CXXABI_1.3", "f()@CXXABI_1.3"},
            {"_Z1fv@GOTPCREL(%rip)", "f()@GOTPCREL(%rip)"},
            {"_Z1fv$local", "f()$local"},
            {"_Z3a$bv", "a$b()"},
            {"_Z1f3a$b", "f(a$b)"},
        },
        {});
}

TEST(SymdecodeText, ReadsASuffixAsAClone) {
    expect_all(
        {
            {"_Z1fv.cold", "f() [clone .cold]"},
            {"_Z1fi.constprop.0:", "f(int) [clone .constprop.0]:"},
            {"_ZN1A1fEv.isra.0.cold+4", "A::f() [clone .isra.0.cold]+4"},
        },
        {});
}

TEST(SymdecodeText, LeavesASuffixBehindAStrictName) {
    text_filter filter;
    filter.decoder.settings.extended = false;
    expect_all({{"_Z1fv.cold", "f().cold"}, {"_Z1fDh", "_Z1fDh"}}, filter);
}

TEST(SymdecodeText, AFullStopBehindANameEndsTheSentence) {
    expect_all({{"see _Z1fv.", "see f()."}, {"_Z1fv... _Z1gv.\n", "f()... g().\n"}}, {});
}

TEST(SymdecodeText, ANameMayBeginBehindAFullStopOrADollarSign) {
    expect_all(
        {
            {".text._Z1fv", ".text.f()"},
            {".gcc_except_table._ZN1A1fEi", ".gcc_except_table.A::f(int)"},
            {"movl $_Z1fv, %eax", "movl $f(), %eax"},
            {".L_Z1fv$local:", ".Lf()$local:"},
            {"..._Z1fv", "...f()"},
            {"L_Z1fv", "L_Z1fv"},
        },
        {});
}

TEST(SymdecodeText, ANameMayStandBehindAWordOfTheToolsOwn) {
    expect_all(
        {
            {"__imp__Z1fv", "__imp_f()"},
            {"_GLOBAL__sub_I__ZN1A1fEi", "_GLOBAL__sub_I_A::f(int)"},
            {"__wrap__Z1fv", "__wrap_f()"},
            {"_GLOBAL__sub_I_main", "_GLOBAL__sub_I_main"},
        },
        {});
}

TEST(SymdecodeText, NamesMayHoldCharactersBeyondAscii) {
    expect_all(
        {
            {"_Z5caf\xC3\xA9v", "caf\xC3\xA9()"},
            {"_Z5caf\xC3\xA9v...", "caf\xC3\xA9()..."},
            {"_ZN5caf\xC3\xA9"
             "1fEv;",
             "caf\xC3\xA9::f();"},
        },
        {});
}

TEST(SymdecodeText, QuotationMarksBeyondAsciiAreNoPartOfAName) {
    expect_all(
        {
            {"\xE2\x80\x98_Z1fv\xE2\x80\x99",
             "\xE2\x80\x98"
             "f()\xE2\x80\x99"},
            {"\xE2\x80\x9C_Z5caf\xC3\xA9v\xE2\x80\x9D",
             "\xE2\x80\x9C"
             "caf\xC3\xA9()\xE2\x80\x9D"},
            {"\xC2\xAB_Z1fv\xC2\xBB",
             "\xC2\xAB"
             "f()\xC2\xBB"},
            {"\xFF_Z1fv\xFE",
             "\xFF"
             "f()\xFE"},
        },
        {});
}

TEST(SymdecodeText, SchemeZeroDecodesEveryNameOfItsKind) {
    expect_all(
        {
            {"jsr f__1AFi", "jsr A::f(int)"},
            {"f__Fv g__Fi", "f() g(int)"},
            {"x__1A:", "A::x:"},
            {"__ct__1AFv", "A::A()"},
            {"__vtbl__1A+8", "virtual function table for A+8"},
            {"__Q2_1A1B", "A::B"},
            {".text:f__1AFi$local", ".text:A::f(int)$local"},
            {"$f__1AFi", "$A::f(int)"},
            {"f$x__1AFi", "A::f$x(int)"},
            {".text.f__1AFi", ".text.A::f(int)"},
            {"main my__var __foo__bar", "main my__var __foo__bar"},
            {"0x__1A", "0x__1A"},
            {"_Z1fv", "_Z1fv"},
        },
        with(0));
}

TEST(SymdecodeText, SchemeOneLeavesTheOtherSchemesNames) {
    expect_all({{"_f__1AFi f__Fv _Z1fv", "_f__1AFi f__Fv f()"}}, with(1));
}

TEST(SymdecodeText, AutoTellsTheSchemesApartNameByName) {
    expect_all({{"_Z1fi f__1AFi x__1A __vtbl__1A __ct__1AFv _f__Fi _a__b__1AFi f__tm__2_i__Fv",
                 "f(int) A::f(int) A::x virtual function table for A A::A() _f(int) A::_a__b(int) "
                 "f<int>()"}},
               {});
}

TEST(SymdecodeText, AutoLeavesOrdinaryIdentifiersAlone) {
    const std::string_view text =
        "__foo__bar my__var __FILE__ __func__ __attribute__((__noreturn__)) __cplusplus\n"
        "Get__File x__Find __init__ __lt__ __or__ __x86.get_pc_thunk.bx __libc_start_main\n"
        "_GLOBAL__N_1 _GLOBAL_OFFSET_TABLE_ __gnu_cxx __m_MOD_f __bss_start__ _Static_assert\n"
        "ada__directories__append__2Xn a__b__1AFi __init__.py __x86.get_pc_thunk.bx\n"
        "__aarch64_ldadd4_acq_rel __sync_fetch_and_add__4 __DTOR_END__ __op__ __pl__ a__1\n";
    EXPECT_EQ(decode_text(text), text);
}

TEST(SymdecodeText, NamesOnlyLeavesOutTheSignature) {
    text_filter filter;
    filter.decoder.settings.names_only = true;
    expect_all({{"_ZN1A1fEi", "A::f"}, {"f__1AFi", "f"}, {"__ct__1AFv", "A"}}, filter);
}

TEST(SymdecodeText, ARunTooLongForANameIsCopied) {
    const std::string run_of_names = "_Z1fv." + std::string(longest_name, 'a');
    const std::string text = "<" + run_of_names + "> _Z1fv";
    const std::string expected = "<" + run_of_names + "> f()";
    EXPECT_EQ(decode_text(text), expected);
    EXPECT_EQ(run({}, filter_text, text, 4096), expected);
    EXPECT_EQ(run({}, filter_text, text, 3 * longest_name), expected);
}

TEST(SymdecodeText, ALongNameShortOfTheLimitIsDecoded) {
    const std::string word(longest_name - 100, 'a');
    EXPECT_EQ(decode_text("_Z" + std::to_string(word.size()) + word + "v "), word + "() ");
}

TEST(SymdecodeText, HoldsBackNoMoreThanTheRunAtTheEnd) {
    text_filter filter;
    std::string out;
    EXPECT_EQ(filter_text(filter, "one _Z1fv two_", false, out), 10U);
    EXPECT_EQ(out, "one f() ");
    out.clear();
    EXPECT_EQ(filter_text(filter, "prompt> ", false, out), 8U);
    EXPECT_EQ(out, "prompt> ");
    out.clear();
    EXPECT_EQ(filter_text(filter, " ....", false, out), 4U);
    EXPECT_EQ(out, " ...");
}

TEST(SymdecodeText, OutputComesInStepsHoweverMuchANameGrows) {
    std::string text;
    for (int index = 0; index < 20000; ++index) {
        text += "_ZTv0_n24_N1A1fEv ";
    }
    text_filter filter;
    std::string out;
    EXPECT_LT(filter_text(filter, text, true, out), text.size());
    EXPECT_GT(out.size(), output_step);
    EXPECT_LT(out.size(), output_step + 1000);
}

TEST(SymdecodeJson, NamesWhatTheTextHoldsAndWhere) {
    text_filter filter;
    filter.json = true;
    expect_all(
        {
            {"x _Z1fi\n\n\t__Z1gv@plt _Z1hv.cold end\n",
             R"js({"line":1,"column":3,"name":"_Z1fi","decoded":"f(int)","scheme":1}
{"line":3,"column":3,"name":"_Z1gv","decoded":"g()","scheme":1}
{"line":3,"column":13,"name":"_Z1hv.cold","decoded":"h() [clone .cold]","scheme":1}
)js"},
            {"f__1AFi",
             R"js({"line":1,"column":1,"name":"f__1AFi","decoded":"A::f(int)","scheme":0}
)js"},
            {"nothing here\n", ""},
        },
        filter);
}

TEST(SymdecodeJson, DroppingAnUnderscoreDoesNotMoveThePosition) {
    text_filter filter;
    filter.json = true;
    filter.decoder.settings.strip_underscore = true;
    expect_all({{" __Z1fv", R"js({"line":1,"column":3,"name":"_Z1fv","decoded":"f()","scheme":1}
)js"}},
               filter);
}

TEST(SymdecodeJson, EscapesWhatJsonForbids) {
    text_filter filter;
    filter.json = true;
    std::string out;
    filter_symbol(filter, "a\"b\\c\x01\x1F\x7F\t\n", out);
    EXPECT_EQ(out,
              R"js({"name":"a\"b\\c\u0001\u001f\u007f\u0009\u000a","decoded":null,"scheme":null}
)js");
}

TEST(SymdecodeJson, PutsAReplacementCharacterForWhatIsNotUtf8) {
    const std::vector<example> examples{
        {"caf\xC3\xA9", "caf\xC3\xA9"},
        {"\xE2\x82\xAC\xF0\x9F\x98\x80", "\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"a\xFF"
         "b",
         "a\xEF\xBF\xBD"
         "b"},
        {"\xC3", "\xEF\xBF\xBD"},
        {"\x80", "\xEF\xBF\xBD"},
        {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"\xE0\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"\xE2\x82", "\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (const auto& [text, expected] : examples) {
        text_filter filter;
        filter.json = true;
        std::string out;
        filter_symbol(filter, text, out);
        EXPECT_EQ(
            out, "{\"name\":\"" + std::string(expected) + "\",\"decoded\":null,\"scheme\":null}\n");
    }
}

TEST(SymdecodeSymbol, IsDecodedWhole) {
    const std::vector<example> examples{
        {"_Z1fi", "f(int)\n"},
        {"_ZN1A1fEi@@VERSION_1", "A::f(int)@@VERSION_1\n"},
        {"_Z1fv@plt", "f()@plt\n"},
        {"__Z1fv", "_f()\n"},
        {"_Z1fv.cold", "f() [clone .cold]\n"},
        {"_GLOBAL__sub_I__Z1fv", "_GLOBAL__sub_I_f()\n"},
        {"f__1AFi", "A::f(int)\n"},
        {"f__Fi", "f(int)\n"},
        {"___ct__1AFv", "_A::A()\n"},
        {"main", "main\n"},
        {"my__var", "my__var\n"},
        {"_Z1fv junk", "_Z1fv junk\n"},
        {"i", "i\n"},
        {"", "\n"},
    };
    for (const auto& [symbol, expected] : examples) {
        text_filter filter;
        std::string out;
        filter_symbol(filter, symbol, out);
        EXPECT_EQ(out, expected) << symbol;
    }
}

TEST(SymdecodeSymbol, JsonSetsWhatSurroundsTheNameApart) {
    text_filter filter;
    filter.json = true;
    std::string out;
    filter_symbol(filter, "__Z1fv@@V1", out);
    EXPECT_EQ(out, R"js({"before":"_","after":"@@V1","name":"_Z1fv","decoded":"f()","scheme":1}
)js");
}

TEST(SymdecodeLines, EachLineIsOneSymbol) {
    const std::string_view text = "_Z1fi\nf__Fv\nmain\n\n_Z1fv _Z1gv\n_Z1hv\r\n\0_Z1fv\n_Z1iv"sv;
    const std::string_view expected = "f(int)\nf()\nmain\n\n_Z1fv _Z1gv\nh()\r\n\0_Z1fv\ni()"sv;
    EXPECT_EQ(run({}, filter_lines, text, text.size()), expected);
    EXPECT_EQ(run({}, filter_lines, text, 1), expected);
    EXPECT_EQ(run({}, filter_lines, text, 7), expected);
}

TEST(SymdecodeLines, JsonGivesOneObjectForEachLine) {
    text_filter filter;
    filter.json = true;
    const std::string text = "_Z1fi\r\nmain\n" + std::string(longest_name, 'a') + "\n\n_Z1gv";
    const std::string_view expected = R"js({"name":"_Z1fi","decoded":"f(int)","scheme":1}
{"name":"main","decoded":null,"scheme":null}
{"name":null,"decoded":null,"scheme":null}
{"name":"","decoded":null,"scheme":null}
{"name":"_Z1gv","decoded":"g()","scheme":1}
)js";
    EXPECT_EQ(run(filter, filter_lines, text, text.size()), expected);
    EXPECT_EQ(run(filter, filter_lines, text, 1), expected);
    EXPECT_EQ(run(filter, filter_lines, text, 1000), expected);
}

TEST(SymdecodeLines, ALineTooLongForASymbolIsCopied) {
    const std::string text = "_Z1fv" + std::string(3 * longest_name, ' ') + "\n_Z1fv\n";
    const std::string expected = "_Z1fv" + std::string(3 * longest_name, ' ') + "\nf()\n";
    EXPECT_EQ(run({}, filter_lines, text, text.size()), expected);
    EXPECT_EQ(run({}, filter_lines, text, 4096), expected);
}
