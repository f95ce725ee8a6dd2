// The demangler's entry points as their callers see them: flags and sizes, the thread's
// own result buffer and its growth, the fall-back to the name, and the fatal error.
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "demangle/decode_id.h"
#include "tests/demangle/hostile.h"

// The linker hands every allocation of the program's own objects and static libraries to
// these (--wrap), so that the sizes asked for can be seen. The names are the linker's.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* memory, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

struct Allocation {
    char kind = ' ';  // "m" or "r"
    std::size_t size = 0;
    bool operator==(const Allocation&) const = default;
};
void PrintTo(const Allocation& allocation, std::ostream* out) {
    *out << allocation.kind << allocation.size;
}

constexpr std::size_t most_allocations = 16;
thread_local Allocation seen_allocations[most_allocations];
thread_local std::size_t seen_count = most_allocations;  // not recording

void record(char kind, std::size_t size) {
    if (seen_count < most_allocations) {
        seen_allocations[seen_count++] = {kind, size};
    }
}

// What decode_id allocates for the name.
std::vector<Allocation> allocations_of(const std::string& name) {
    seen_count = 0;
    decode_id(name.c_str(), 1);
    const std::size_t count = seen_count;
    seen_count = most_allocations;
    return {seen_allocations, seen_allocations + count};
}

// Each on a thread of its own, which has no result buffer yet.
void on_new_thread(void (*body)()) {
    std::thread(body).join();
}

std::string function_name(std::size_t text_size) {
    return std::string(text_size - 2, 'x') + "__Fv";
}

// A scheme for the length of one test.
struct Scheme {
    explicit Scheme(int scheme) { decode_mangle_scheme = scheme; }
    ~Scheme() { decode_mangle_scheme = 0; }
    Scheme(const Scheme&) = delete;
    Scheme& operator=(const Scheme&) = delete;
};

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier)
void* __wrap_malloc(std::size_t size) {
    record('m', size);
    return __real_malloc(size);
}

void* __wrap_realloc(void* memory, std::size_t size) {
    record('r', size);
    return __real_realloc(memory, size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

TEST(Scheme0Interface, SchemeZeroIsSelectedAtFirst) {
    EXPECT_EQ(decode_mangle_scheme, 0);
}

struct Case {
    const char* name;
    const char* decorated;
    const char* undecorated;
};

TEST(Scheme0Interface, DecoratedTakesTheSignatureAndUndecoratedTheNameAlone) {
    static constexpr Case cases[] = {
        {"f__1ACFPCc", "A::f(const char *) const", "f"},
        {"__vtbl__1A", "virtual function table for A", "__vtbl"},
        {"__dt__Q2_1A1BFv", "A::B::~B()", "~B"},
        {"main", "main", "main"},
    };
    for (const Case& row : cases) {
        const std::string decorated = row.decorated;
        const std::string undecorated = row.undecorated;
        EXPECT_EQ(hostile::difference(hostile::decode(row.name, 1, 100), decorated, 100, 0), "");
        EXPECT_EQ(hostile::difference(hostile::decode(row.name, 0, 100), undecorated, 100, 0), "");
        for (const int yes : {1, 2, -1, INT_MAX, INT_MIN}) {
            EXPECT_EQ(decode_id(row.name, yes), decorated);
        }
        EXPECT_EQ(decode_id(row.name, 0), undecorated);
    }
}

TEST(Scheme0Interface, DispatcherRoutesBothForms) {
    for (const int decorated : {0, 1}) {
        char buffer[32] = "";
        int error = 7;
        int overflow = 7;
        std::size_t needed = 0;
        decode_by_scheme("f__1AFi", buffer, sizeof buffer, &error, &overflow, &needed, decorated);
        EXPECT_STREQ(buffer, decorated != 0 ? "A::f(int)" : "f");
        EXPECT_EQ(error, 0);
        EXPECT_EQ(overflow, 0);
        EXPECT_EQ(needed, decorated != 0 ? 10U : 2U);
    }
}

TEST(Scheme0Interface, EverySizeOfBufferGetsThePrefixThatFits) {
    const std::string text = "A::f(const char *) const";
    for (std::size_t size = 0; size != 30; ++size) {
        const hostile::Result result = hostile::decode("f__1ACFPCc", 1, size);
        EXPECT_EQ(hostile::difference(result, text, size, 0), "") << size;
    }
}

TEST(Scheme0Interface, BufferOfSizeOneHoldsOnlyANul) {
    const hostile::Result result = hostile::decode("f__Fv", 1, 1);
    EXPECT_EQ(result.damage, "");
    EXPECT_TRUE(result.error);
    EXPECT_TRUE(result.overflow);
    EXPECT_EQ(result.needed, 4U);
    EXPECT_EQ(result.text, "");
}

TEST(Scheme0Interface, EmptyTextNeedsOneByteAndOverflowsNone) {
    for (const char* name : {"", "__Q0_"}) {
        for (const std::size_t size : {0U, 1U, 2U}) {
            const hostile::Result result = hostile::decode(name, 1, size);
            EXPECT_EQ(result.damage, "") << name;
            EXPECT_FALSE(result.error) << name << " in " << size;
            EXPECT_FALSE(result.overflow) << name << " in " << size;
            EXPECT_EQ(result.needed, 1U) << name;
            EXPECT_EQ(result.text, "") << name;
        }
    }
}

TEST(Scheme0Interface, MalformedNameKeepsTheTextUpToItsError) {
    // The code letter h is no type.
    const hostile::Result result = hostile::decode("f__1AFih", 1, 100);
    EXPECT_EQ(result.damage, "");
    EXPECT_TRUE(result.error);
    EXPECT_FALSE(result.overflow);
    EXPECT_EQ(result.needed, result.text.size() + 1);
    EXPECT_EQ(result.text.substr(0, 8), "A::f(int");
}

TEST(Scheme0Interface, MalformedNameInASmallBufferOverflowsFirst) {
    const hostile::Result result = hostile::decode("f__1AFih", 1, 4);
    EXPECT_EQ(result.damage, "");
    EXPECT_TRUE(result.error);
    EXPECT_TRUE(result.overflow);
    EXPECT_EQ(result.text, "A::");
}

TEST(Scheme0Interface, InputLeftOverIsAnError) {
    for (const char* name : {"f__Fv_i1A", "__Q2_1A1Bx", "__vtbl__1A1B", "x__1Ai"}) {
        const hostile::Result result = hostile::decode(name, 1, 100);
        EXPECT_TRUE(result.error) << name;
        EXPECT_FALSE(result.overflow) << name;
    }
}

TEST(Scheme0Interface, NameThatIsNotMangledComesBackVerbatim) {
    for (const char* name : {"main", "_", "__", "____________", "__main", "_x_y", "a_b_c",
                             "operator", "with blank", "\x01\xff", "__T_i", "__TID_i", "x_"}) {
        for (const int decorated : {0, 1}) {
            const hostile::Result result = hostile::decode(name, decorated, 100);
            EXPECT_EQ(hostile::difference(result, name, 100, 0), "") << name;
            EXPECT_STREQ(decode_id(name, decorated), name);
        }
    }
}

TEST(Scheme0Interface, MalformedNameComesBackUnchanged) {
    for (const char* name :
         {"f__1", "f__FT1", "f__Fh", "__Q2", "__vtbl__0", "__CPRx__f", "x__12A"}) {
        EXPECT_TRUE(hostile::decode(name, 1, 100).error) << name;
        EXPECT_STREQ(decode_id(name, 1), name);
    }
}

TEST(Scheme0Interface, NameThatDecodesToNothingComesBackUnchanged) {
    EXPECT_STREQ(decode_id("__Q0_", 1), "__Q0_");
    EXPECT_STREQ(decode_id("__Q0_", 0), "__Q0_");
    EXPECT_STREQ(decode_id("", 1), "");
}

TEST(Scheme0Interface, ResultLastsUntilTheThreadsNextCall) {
    const char* first = decode_id("f__Fi", 1);
    EXPECT_STREQ(first, "f(int)");
    const char* second = decode_id("g__Fd", 1);
    EXPECT_EQ(first, second);
    EXPECT_STREQ(second, "g(double)");
}

TEST(Scheme0Interface, ResultCanBeGivenBackAsTheNextName) {
    const char* text = decode_id("main", 1);
    EXPECT_STREQ(decode_id(text, 1), "main");
    // Neither a text before an error nor a longer buffer changes what is given back.
    text = decode_id("f__Fih", 1);
    EXPECT_STREQ(decode_id(text, 1), "f__Fih");
    on_new_thread([] {
        // It fits as it is, but not with the text of its parameters before the error.
        const std::string bad_name = "f__F" + std::string(400, 'i') + 'h';
        const char* result = decode_id(decode_id(bad_name.c_str(), 1), 1);
        EXPECT_EQ(result, bad_name);
        std::free(const_cast<char*>(result));
    });
    on_new_thread([] {
        // A malformed name that fills the buffer to its last byte, and then one more.
        const std::string exact = "f__Fh" + std::string(506, 'x');
        EXPECT_EQ(decode_id(decode_id(exact.c_str(), 1), 1), exact);
        const char* result = decode_id(decode_id((exact + 'x').c_str(), 1), 1);
        EXPECT_EQ(result, exact + 'x');
        std::free(const_cast<char*>(result));
    });
}

TEST(Scheme0Interface, ThreadsHaveBuffersOfTheirOwn) {
    const char* mine = decode_id("f__Fi", 1);
    std::thread([mine] {
        const char* other = decode_id("g__Fd", 1);
        EXPECT_NE(mine, other);
        EXPECT_STREQ(other, "g(double)");
        std::free(const_cast<char*>(other));
    }).join();
    EXPECT_STREQ(mine, "f(int)");
}

TEST(Scheme0Interface, TextOfSixHundredCharactersReportsAndGetsItsSize) {
    const std::string name = function_name(600);
    const std::string text = std::string(598, 'x') + "()";
    for (const std::size_t size : {512U, 600U, 601U, 602U}) {
        EXPECT_EQ(hostile::difference(hostile::decode(name, 1, size), text, size, 0), "") << size;
    }
    EXPECT_EQ(decode_id(name.c_str(), 1), text);
}

TEST(Scheme0Interface, BufferStartsAt512AndGrowsToTheReportedSize) {
    on_new_thread([] {
        const std::string name = function_name(600);
        // The copy, the thread's buffer, the dispatcher's copy; then the larger buffer
        // and the dispatcher's copy once more.
        const std::size_t copy = name.size() + 1;
        EXPECT_EQ(allocations_of(name),
                  (std::vector<Allocation>{
                      {'m', copy}, {'m', 512}, {'m', copy}, {'r', 601}, {'m', copy}}));
        EXPECT_EQ(allocations_of("f__Fv"), (std::vector<Allocation>{{'m', 6}, {'m', 6}}));
        EXPECT_EQ(allocations_of(name), (std::vector<Allocation>{{'m', copy}, {'m', copy}}));
        std::free(decode_id("f", 1));
    });
}

TEST(Scheme0Interface, TextThatJustFitsGrowsNothing) {
    on_new_thread([] {
        const std::string name = function_name(511);
        const std::size_t copy = name.size() + 1;
        EXPECT_EQ(allocations_of(name),
                  (std::vector<Allocation>{{'m', copy}, {'m', 512}, {'m', copy}}));
        std::free(decode_id("f", 1));
    });
}

TEST(Scheme0Interface, MalformedNameThatDoesNotFitGrowsTheBufferFirst) {
    on_new_thread([] {
        // The text ends at the first parameter, so that only the name itself lacks room.
        const std::string shorter = "f__Fh" + std::string(506, 'x');
        ASSERT_TRUE(hostile::decode(shorter, 1, 4096).error);
        EXPECT_EQ(allocations_of(shorter),
                  (std::vector<Allocation>{{'m', 512}, {'m', 512}, {'m', 512}}));
        EXPECT_EQ(decode_id(shorter.c_str(), 1), shorter);
        const std::string longer = "f__Fh" + std::string(507, 'x');
        EXPECT_EQ(allocations_of(longer),
                  (std::vector<Allocation>{{'m', 513}, {'m', 513}, {'r', 513}}));
        EXPECT_EQ(decode_id(longer.c_str(), 1), longer);
        std::free(decode_id("f", 1));
    });
}

TEST(Scheme0Interface, MalformedNameThatIsAlsoTooLongComesBackUnchanged) {
    on_new_thread([] {
        const std::string name = std::string(700, 'x') + "__Fh";
        EXPECT_EQ(decode_id(name.c_str(), 1), name);
        EXPECT_STREQ(decode_id("f__Fv", 1), "f()");
        std::free(decode_id("f", 1));
    });
}

TEST(Scheme0Interface, SymbolLooksMangledWithAnUnderscoreInFrontAndAPairAnywhere) {
    struct Row {
        const char* name;
        int scheme_0;
        int scheme_1;
    };
    static constexpr Row rows[] = {
        {"__", 1, 0},    {"_a__b", 1, 0}, {"___", 1, 0},     {"_f___", 1, 0}, {"__vtbl__1A", 1, 0},
        {"_", 0, 0},     {"", 0, 0},      {"f__1AFi", 0, 0}, {"_a_b_", 0, 0}, {"_Z", 0, 1},
        {"_Z1fv", 0, 1}, {"_Z__", 1, 1},  {"__Z1fv", 1, 0},  {"Z_", 0, 0},    {"_z", 0, 0},
    };
    for (const Row& row : rows) {
        for (const int scheme : {0, 2, -1}) {
            const Scheme selected(scheme);
            EXPECT_EQ(probably_mangled_symbol_name(row.name), row.scheme_0) << row.name;
        }
        const Scheme selected(1);
        EXPECT_EQ(probably_mangled_symbol_name(row.name), row.scheme_1) << row.name;
    }
}

class Scheme0InterfaceDeathTest : public testing::Test {
  protected:
    Scheme0InterfaceDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

void decode_with_scheme(int scheme, void (*call)()) {
    decode_mangle_scheme = scheme;
    call();
    std::_Exit(0);
}

void expect_fatal_scheme(int scheme, void (*call)()) {
    EXPECT_EXIT(decode_with_scheme(scheme, call), testing::ExitedWithCode(1),
                "^DECODE>> internal error: Invalid mangling scheme selected\n$");
}

TEST_F(Scheme0InterfaceDeathTest, AnySchemeButZeroAndOneIsFatal) {
    for (const int scheme : {2, -1}) {
        expect_fatal_scheme(scheme, [] { decode_id("f__Fi", 1); });
        expect_fatal_scheme(scheme, [] { hostile::decode("f__Fi", 1, 100); });
        expect_fatal_scheme(scheme, [] { hostile::decode("f__Fi", 0, 100); });
        expect_fatal_scheme(scheme, [] { hostile::decode("main", 0, 0); });
    }
}

TEST_F(Scheme0InterfaceDeathTest, FatalErrorNamesItsMessageAndEndsWithStatusOne) {
    EXPECT_EXIT(dec_die("the %s is taken as it stands"), testing::ExitedWithCode(1),
                "^DECODE>> internal error: the %s is taken as it stands\n$");
}

}  // namespace
