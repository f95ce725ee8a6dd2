// symdecode, every way that it reads and writes.
#include "tests/faults/promise.h"

static std::vector<scenario> scenarios() {
    std::string much;
    for (int i = 0; i < 20000; ++i) {
        much += "call _ZN1A" + std::to_string(i % 9 + 1) +
                std::string(static_cast<std::size_t>(1 + i % 9), 'f') + "Ei at f__Fi\n";
    }
    return {
        {"filter", {}, {}, "call _ZN1A1fEi and f__Fi\n", {}},
        {"nothing", {}, {}, "", {}},
        {"much", {}, {}, much, {}},
        {"a_long_word", {}, {}, std::string(300000, '_') + "\n", {}},
        {"names", {"_ZN1A1fEi", "f__Fi", "plain"}, {}, "", {}},
        {"names_only", {"-p", "_ZN1A1fEi"}, {}, "", {}},
        {"lines", {"--lines"}, {}, "_ZN1A1fEi\nf__Fi\nplain\n", {}},
        {"json", {"--json"}, {}, "call _ZN1A1fEi and f__Fi\n", {}},
        {"much_json", {"--json", "--lines"}, {}, much, {}},
        {"a_bad_scheme", {"--scheme=7"}, {}, "", {}},
        {"an_unknown_option", {"--wrong"}, {}, "", {}},
        {"help", {"--help"}, {}, "", {}},
        {"version", {"--version"}, {}, "", {}},
    };
}

const tested_program& program_under_test() {
    static const tested_program program{.path = SYMDECODE, .scenarios = scenarios()};
    return program;
}
