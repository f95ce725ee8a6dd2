// Composes the build-number line. Every input is turned into letters and digits by
// a fixed code, one character at a time; the branch name by a table of keys first.
#include "support/buildid.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>

// The code works on ASCII whatever locale the tool has set.
static constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
static constexpr char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
static constexpr char shifted(char c, int distance) {
    return static_cast<char>(c + distance);
}

namespace {

struct branch_key {
    std::string_view key;
    std::string_view code;
};

}  // namespace

// The first key that matches wins, so the last row is never reached: "Tarn" takes
// its names. Two rows share ZE, and there is no ZF and no ZI. Numbers that are
// already in use depend on all of it.
// clang-format off
constexpr branch_key branch_key_table[] = {
    {"Release_", "ZA"},
    {"Development_", "ZB"},
    {"Qov", "ZC"},
    {"Tarn", "ZD"},
    {"opi", "ZE"},
    {"V7100", "ZE"},
    {"k48", "ZG"},
    {"bew", "ZH"},
    {"Tarn8", "ZJ"},
};
// clang-format on

constexpr std::string_view months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Years after 2025 run on past Z: the code has no wrap-around.
static char year_code(const char* date) {
    return static_cast<char>(std::atoi(date + 7) - 1935);
}

static char month_code(const char* date) {
    const auto* const month =
        std::find(std::begin(months), std::end(months), std::string_view(date, 3));
    return shifted('A', static_cast<int>(month - std::begin(months)));
}

static char day_code(const char* date) {
    const int day = std::atoi(date + 4);
    return static_cast<char>(day < 10 ? day + '0' : day + 55);
}

static char hour_code(const char* time) {
    const int hour = std::atoi(time);
    return shifted('A', hour == 24 ? 0 : hour);
}

static char tag_code(char tag_character) {
    const char c = upper(tag_character);
    if (c >= 'A' && c <= 'J') {
        return shifted(c, '0' - 'A');
    }
    if (c >= 'K' && c <= 'Z') {
        return shifted(c, 'A' - 'K');
    }
    return is_digit(c) ? shifted(c, 'Q' - '0') : '%';
}

static char version_code(char c) {
    if (is_digit(c)) {
        return shifted(c, 'Q' - '0');
    }
    if (c == '.') {
        return 'A';
    }
    return c == '-' ? 'B' : 'C';
}

// The code of a branch character, upper-cased, that no key covers. Z and 9 are not
// among them: they take two characters.
static char branch_code(char c) {
    if (c >= 'A' && c <= 'J') {
        return shifted(c, '0' - 'A');
    }
    if (c >= 'K' && c <= 'Y') {
        return shifted(c, 'A' - 'K');
    }
    if (c >= '0' && c <= '8') {
        return shifted(c, 'Q' - '0');
    }
    return c == '_' || c == '-' || c == '.' ? c : '%';
}

static bool starts_with_key(std::string_view text, std::string_view key) {
    return text.size() >= key.size() &&
           std::equal(key.begin(), key.end(), text.begin(),
                      [](char a, char b) { return upper(a) == upper(b); });
}

static void put_pair(std::string_view code, FILE* stream) {
    std::fwrite(code.data(), 1, 2, stream);
}

static void put_branch(std::string_view branch, FILE* stream) {
    while (!branch.empty()) {
        const auto* const row =
            std::find_if(std::begin(branch_key_table), std::end(branch_key_table),
                         [branch](const branch_key& k) { return starts_with_key(branch, k.key); });
        if (row != std::end(branch_key_table)) {
            put_pair(row->code, stream);
            branch.remove_prefix(row->key.size());
            continue;
        }
        const char c = upper(branch.front());
        if (c == 'Z') {
            put_pair("ZZ", stream);
        } else if (c == '9') {
            put_pair("Z9", stream);
        } else {
            std::putc(branch_code(c), stream);
        }
        branch.remove_prefix(1);
    }
}

static void put_coded(std::string_view text, char (*code)(char), FILE* stream) {
    for (const char c : text) {
        std::putc(code(c), stream);
    }
}

int buildid_of(const build_inputs& inputs, FILE* stream, const char* prefix) {
    if (stream == nullptr) {
        stream = stdout;
    }
    if (prefix != nullptr) {
        std::fputs(prefix, stream);
    }
    std::putc('1', stream);
    std::putc(year_code(inputs.date), stream);
    std::putc(month_code(inputs.date), stream);
    std::putc(day_code(inputs.date), stream);
    std::putc(hour_code(inputs.time), stream);
    std::putc('-', stream);
    put_coded(inputs.build_tag, tag_code, stream);
    std::putc('-', stream);
    put_coded(inputs.version1, version_code, stream);
    std::putc('-', stream);
    put_coded(inputs.version2, version_code, stream);
    std::putc('-', stream);
    put_branch(inputs.branch, stream);
    return std::putc('\n', stream);
}

int buildid(FILE* stream, const char* prefix) {
    constexpr build_inputs this_build{INTERLIST_BUILD_DATE,     INTERLIST_BUILD_TIME,
                                      INTERLIST_BUILD_TAG,      INTERLIST_BUILD_VERSION1,
                                      INTERLIST_BUILD_VERSION2, INTERLIST_BUILD_BRANCH};
    return buildid_of(this_build, stream, prefix);
}
