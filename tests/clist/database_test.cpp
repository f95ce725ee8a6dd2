// Compile databases: both forms of entries, and what is wrong with broken ones.
#include "clist/database.h"

#include <gtest/gtest.h>

#include "tests/clist/words.h"

using namespace clist;
using std::string;

TEST(Database, TakesBothFormsOfEntries) {
    const database known = read_database(R"([
  {"directory": "/b", "file": "a.c", "arguments": ["cc", "-c", "a b.c"], "output": "a.o"},
  {
    "command": "cc -DX='a b' -c \"b.c\"", "file": "../b.c", "directory": "sub",
    "more": [1, {"file": ["x"]}, null, true, 1.5, "text"]
  },
  {"directory": "d", "file": "c.c", "command": "not 'this", "arguments": ["this"]}
])");
    EXPECT_EQ(known.error, "");
    ASSERT_EQ(known.entries.size(), 3U);
    EXPECT_EQ(known.entries[0].directory, "/b");
    EXPECT_EQ(known.entries[0].file, "a.c");
    EXPECT_EQ(known.entries[0].words, (std::vector<string>{"cc", "-c", "a b.c"}));
    EXPECT_EQ(known.entries[0].line, 2U);
    EXPECT_EQ(known.entries[1].directory, "sub");
    EXPECT_EQ(known.entries[1].file, "../b.c");
    EXPECT_EQ(known.entries[1].words, (std::vector<string>{"cc", "-DX=a b", "-c", "b.c"}));
    EXPECT_EQ(known.entries[1].line, 3U);
    EXPECT_EQ(joined(known.entries[2].words), "this");
    EXPECT_EQ(read_database("[]").error, "");
}

TEST(Database, ABrokenOneIsReportedWithItsPlace) {
    const std::pair<string, string> cases[] = {
        {"{}", "1: not a list of compile commands"},
        {"\n\"text\"", "2: not a list of compile commands"},
        {"7", "1: not a list of compile commands"},
        {"[\n1]", "2: an entry that is no object"},
        {"[[]]", "1: an entry that is no object"},
        {"[\n\n{}]", "3: an entry without \"directory\""},
        {"[{\"directory\": \"d\"}]", "1: an entry without \"file\""},
        {"[{\"directory\": \"d\", \"file\": \"f\"}]",
         "1: an entry without \"arguments\" and \"command\""},
        {"[{\"directory\": \"d\", \"file\": \"f\", \"arguments\": []}]",
         "1: an entry without \"arguments\" and \"command\""},
        {"[{\"directory\": \"d\",\n\"file\": 1}]", "2: \"file\" holds something else than text"},
        {"[{\"command\": [\"x\"]}]", "1: \"command\" holds something else than text"},
        {"[{\"arguments\": \"x\"}]", "1: \"arguments\" is no list"},
        {"[{\"arguments\": [\n1]}]", "2: \"arguments\" holds something else than text"},
        {"[{\"arguments\": [[\"x\"]]}]", "1: \"arguments\" holds something else than text"},
        {"[{\"file\": \"a\\u0000\"}]", "1: \"file\" holds a zero byte"},
        {"[\n{\"directory\": \"d\", \"file\": \"f\",\n \"command\": \"cc 'x\"}]",
         "2: a \"command\" with a quote that is not closed"},
    };
    for (const auto& [text, error] : cases) {
        const database known = read_database(text);
        EXPECT_EQ(known.error, error) << text;
        EXPECT_TRUE(known.entries.empty()) << text;
    }
}

TEST(Database, TextThatIsNoJsonIsReportedWithItsPlace) {
    const std::pair<string, string> cases[] = {
        {"", "1:1: "},
        {"[\n{\"file\" 1}]", "2:9: "},
        {"[{\"directory\": \"d\"", "1:19: "},
        {"[\n\n  \"\377\"]", "3:4: "},
        {"[]\n]", "2:1: "},
    };
    for (const auto& [text, place] : cases) {
        EXPECT_EQ(read_database(text).error.substr(0, place.size()), place)
            << text << read_database(text).error;
    }
}

TEST(Database, NestingCostsNoStack) {
    const string deep(1000000, '[');
    EXPECT_NE(read_database(deep).error, "");
    EXPECT_NE(read_database("[{\"x\": " + deep).error, "");
}

// A good one cut at every byte, and with each byte changed, is taken or refused.
TEST(Database, SurvivesDamage) {
    const string good =
        R"([{"directory":"d","file":"f","arguments":["cc","-c"]},{"directory":"d","file":"f",)"
        R"("command":"cc 'a b' \"c\""}])";
    ASSERT_EQ(read_database(good).entries.size(), 2U);
    for (std::size_t at = 0; at < good.size(); ++at) {
        EXPECT_NE(read_database(good.substr(0, at)).error, "") << at;
        for (const char byte : {'\0', '"', '\\', '[', '}', '\377', '\'', ' '}) {
            string damaged = good;
            damaged[at] = byte;
            const database known = read_database(damaged);
            EXPECT_TRUE(known.error.empty() || known.entries.empty());
        }
    }
}
