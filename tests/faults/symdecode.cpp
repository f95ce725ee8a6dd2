// symdecode, every way that it reads and writes.
#include "tests/faults/promise.h"

static std::vector<scenario> scenarios() {
    std::string much;
    for (int i = 0; i < 20000; ++i) {
        much += "call _ZN1A" + std::to_string(i % 9 + 1) +
                std::string(static_cast<std::size_t>(1 + i % 9), 'f') + "Ei at f__Fi\n";
    }
    std::string types;
    for (int i = 100; i < 700; ++i) {
        types += "4A" + std::to_string(i);
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
        {"gnu_style", {"--style=gnu"}, {}, "call _ZN1A1fEi and f__Fi\n", {}},
        {"gnu_style_names", {"--style=gnu", "_ZN1A1fEi", "f__Fi", "_Zq"}, {}, "", {}},
        // A table of substitutions that outgrows its first room.
        {"a_long_name", {}, {}, "_Z1f" + types + "\n", {}},
        {"a_bad_scheme", {"--scheme=7"}, {}, "", {}},
        {"an_unknown_option", {"--wrong"}, {}, "", {}},
        {"help", {"--help"}, {}, "", {}},
        {"version", {"--version"}, {}, "", {}},
    };
}

// The library has no other word for what it cannot decode for want of memory than for a name
// that is not valid, and such a name stays as it is.
static bool stays_as_it_is(const scenario& each, const fault&, const outcome& /*whole*/,
                           const outcome& now) {
    return each.name == "a_long_name" && now.finished.out == each.input;
}

const tested_program& program_under_test() {
    static const tested_program program{
        .path = SYMDECODE, .scenarios = scenarios(), .excused = stays_as_it_is};
    return program;
}
