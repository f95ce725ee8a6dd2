// Makes every call of a program fail, one after another until none is left, in each of
// its scenarios, and holds every outcome against the promise.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string_view>

#include "tests/faults/promise.h"

namespace {

// A text that does not depend on where it was made.
std::string without(const std::string& folder, std::string text) {
    for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;) {
        text.erase(at, folder.size());
    }
    return text;
}

outcome run_once(const scenario& each, const fault* what, bool& hit, int& descriptor,
                 bool& possible) {
    const ScratchFolder folder;
    for (const auto& [name, contents] : each.files) {
        const std::string file = folder.write(name, contents);
        if (contents.starts_with("#!")) {
            std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        }
    }
    RunOptions options;
    options.directory = folder.path();
    options.set = each.set;
    options.set["TMPDIR"] = folder.path();
    options.input = each.input;
    options.before_start = [&each] {
        for (const int absent : each.closed) {
            close(absent);
        }
    };
    std::vector<std::string> words{program_under_test().path};
    words.insert(words.end(), each.arguments.begin(), each.arguments.end());
    outcome result;
    if (what == nullptr) {
        result.finished = run_program(words, options);
    } else if (std::optional<faulted_run> run = run_with_fault(words, options, *what)) {
        result.finished = run->finished;
        hit = run->hit;
        descriptor = run->descriptor;
    } else {
        possible = false;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
        if (entry.is_regular_file()) {
            const std::string name =
                entry.path().lexically_relative(folder.path()).generic_string();
            result.files[name] = without(folder.path(), folder.read(name));
        }
    }
    return result;
}

bool is_output(const scenario& each, const std::string& name) {
    return std::count(each.outputs.begin(), each.outputs.end(), name) != 0;
}

struct sweep {
    const scenario* each;
    const call_kind* calls;
    bool lasting;
};

// What a scenario does where nothing fails.
const outcome& undisturbed(const scenario& each) {
    static std::map<std::string, outcome> outcomes;
    auto found = outcomes.find(each.name);
    if (found == outcomes.end()) {
        bool hit = false;
        bool possible = true;
        int descriptor = -1;
        found =
            outcomes.emplace(each.name, run_once(each, nullptr, hit, descriptor, possible)).first;
    }
    return found->second;
}

// Every call in turn, but of those that a run makes by the hundred, and of faults that stay
// in a sanitized run, which starts slowly, each of so many.
int step_of(const sweep& of) {
    if (of.calls == nullptr && std::getenv("EVERY_ALLOCATION") == nullptr) {
        return program_under_test().allocation_step;
    }
    return of.lasting && !std::string_view(FAULTS_SANITIZED).empty() ? 3 : 1;
}

// A message is on standard error, or marked as the interlister marks them. Where the
// write of a message fails there is none.
bool says_why(int descriptor, const outcome& whole, const outcome& now) {
    const bool message_fails =
        descriptor == STDERR_FILENO || (descriptor == STDOUT_FILENO && whole.finished.status != 0);
    return message_fails || now.finished.err != whole.finished.err ||
           now.finished.out.find(">>") != std::string::npos;
}

void expect_promise(const scenario& each, const fault& what, int descriptor, const outcome& whole,
                    const outcome& now) {
    const tested_program& program = program_under_test();
    EXPECT_EQ(now.finished.signal, 0) << (now.finished.signal == SIGALRM ? "it hangs" : "it dies");
    const bool same = now.finished.status == whole.finished.status &&
                      now.finished.out == whole.finished.out && now.files == whole.files;
    if (what.calls != nullptr && what.calls->error == 0) {
        EXPECT_TRUE(same) << "a call that does half of the work changes the outcome\n"
                          << now.finished.err;
    }
    const bool is_excused = now.finished.status == 0 && !same && program.excused &&
                            program.excused(each, what, whole, now);
    if (now.finished.status == 0 && !same) {
        EXPECT_TRUE(is_excused) << "status 0 without the whole output\nstandard output: "
                                << now.finished.out << "\nstandard error: " << now.finished.err;
    }
    if (now.finished.status != 0 && !same) {
        EXPECT_TRUE(says_why(descriptor, whole, now))
            << "status " << now.finished.status << " without a word";
    }
    for (const auto& [name, contents] : each.files) {
        const auto found = now.files.find(name);
        if (found == now.files.end()) {
            ADD_FAILURE() << name << " is lost";
        } else if (!is_output(each, name)) {
            EXPECT_EQ(found->second, contents) << name << " has changed";
        } else if (program.keeps_old_outputs && !is_excused) {
            EXPECT_TRUE(found->second == contents || found->second == whole.files.at(name))
                << name << " is neither old nor new:\n"
                << found->second;
        }
    }
    for (const auto& [name, contents] : now.files) {
        EXPECT_TRUE(each.files.contains(name) || is_output(each, name) || is_excused)
            << name << " is left over";
    }
}

std::vector<sweep> all_sweeps() {
    std::vector<sweep> sweeps;
    for (const scenario& each : program_under_test().scenarios) {
        for (const bool lasting : {false, true}) {
            for (const call_kind& kind : call_kinds()) {
                sweeps.push_back({&each, &kind, lasting});
            }
            sweeps.push_back({&each, nullptr, lasting});
        }
    }
    return sweeps;
}

std::string name_of(const testing::TestParamInfo<sweep>& info) {
    return info.param.each->name +
           (info.param.calls != nullptr ? std::string("_") + info.param.calls->name
                                        : "_allocation") +
           (info.param.lasting ? "_lasting" : "");
}

// GoogleTest prints the bytes of what it cannot print otherwise.
void PrintTo(const sweep& each, std::ostream* to) {
    *to << each.each->name;
}

class EveryFault : public testing::TestWithParam<sweep> {};

}  // namespace

TEST_P(EveryFault, KeepsThePromise) {
    const auto& [each, calls, lasting] = GetParam();
    bool hit = true;
    bool possible = true;
    int descriptor = -1;
    const outcome& whole = undisturbed(*each);
    const int step = step_of(GetParam());
    fault what{.calls = calls, .lasting = lasting};
    what.nth = 1 + static_cast<int>(each->name.size()) % step;
    for (; hit; what.nth += step) {
        SCOPED_TRACE("call " + std::to_string(what.nth));
        hit = false;
        descriptor = -1;
        const outcome now = run_once(*each, &what, hit, descriptor, possible);
        if (!possible) {
            GTEST_SKIP() << "not possible on this system, or with this sanitizer";
        }
        expect_promise(*each, what, descriptor, whole, now);
        if (HasFailure()) {
            return;
        }
    }
    RecordProperty("faults", what.nth - 2);
}

// Or everything above would hold for nothing.
TEST(Faults, ReachTheProgram) {
    const scenario& each = program_under_test().scenarios.front();
    for (const call_kind& kind : call_kinds()) {
        if (kind.name == std::string("write")) {
            const fault what{.calls = &kind, .lasting = true};
            bool hit = false;
            bool possible = true;
            int descriptor = -1;
            const outcome now = run_once(each, &what, hit, descriptor, possible);
            if (!possible) {
                GTEST_SKIP() << "not possible on this system";
            }
            EXPECT_TRUE(hit);
            EXPECT_EQ(now.finished.status, 1);
            EXPECT_NE(now.finished.err.find("No space left on device"), std::string::npos);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, EveryFault, testing::ValuesIn(all_sweeps()), name_of);
