// Text split into words.
#include "clist/words.h"

#include <gtest/gtest.h>

using namespace clist;
using std::string;

TEST(Words, AResponseFileSplitsAtBlanksOutsideQuotes) {
    const std::pair<string, std::vector<string>> cases[] = {
        {"", {}},
        {" \n\t\v\f\r ", {}},
        {"a b\nc", {"a", "b", "c"}},
        {"'a b' \"c d\" e' 'f", {"a b", "c d", "e f"}},
        {"''", {""}},
        {"a\\ b \\\\ '\\'' \"\\\"\"", {"a b", "\\", "'", "\""}},
        {"'open end", {"open end"}},
        {"end\\", {"end\\"}},
    };
    for (const auto& [text, words] : cases) {
        EXPECT_EQ(split_response(text), words) << text;
    }
}

TEST(Words, ACommandSplitsAsAShellSplitsIt) {
    using words = std::vector<string>;
    const std::pair<string, std::optional<words>> cases[] = {
        {"", words{}},
        {"gcc  -c\ta.c\n", words{"gcc", "-c", "a.c"}},
        {"gcc '-DA=\"x\\\"'", words{"gcc", "-DA=\"x\\\""}},
        {"gcc \"-DA=\\\"x\\\" \\n \\$ \\` \\\\\"", words{"gcc", "-DA=\"x\" \\n $ ` \\"}},
        {"a\\ b '' \"\" c''d", words{"a b", "", "", "cd"}},
        {"a\\\nb", words{"ab"}},
        {"$HOME *", words{"$HOME", "*"}},
        {"end\\", words{"end\\"}},
        {"'open", std::nullopt},
        {"\"open", std::nullopt},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(split_command(text), expected) << text;
    }
}
