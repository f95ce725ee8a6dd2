// The dialects, and the marks by which compilers' texts give theirs away.
#include "assembly/dialect.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace assembly {

static constexpr std::array<dialect, 16> dialects = {{
    {"x86_64", "#", ';', 2},
    {"aarch64", "//", ';', 4},
    {"arm", "@", ';', 4},
    {"riscv", "#", ';', 4},
    {"powerpc", "#", ';', 2},
    {"aarch64-apple", ";", '\0', 4},
    {"x86_64-apple", "##", ';', 2},
    {"avr", ";", '$', 2},
    {"mips", "#", ';', 4},
    {"s390", "#", ';', 2},
    {"sparc", "!", ';', 4},
    {"m68k", "|", ';', 2},
    {"loongarch", "#", ';', 4},
    {"sh", "!", ';', 2},
    {"msp430", ";", '{', 2},
    {"hppa", ";", '!', 4},
}};

static constexpr const dialect& common = dialects[0];

static const dialect& named(std::string_view name) {
    const auto* found = std::find_if(dialects.begin(), dialects.end(),
                                     [name](const dialect& it) { return it.name == name; });
    return found == dialects.end() ? common : *found;
}

namespace {

// How a target's name begins, and whose dialect it has. The first row that fits counts.
struct target_row {
    std::string_view prefix;
    std::string_view dialect;
};

// What begins a line, blanks aside, in the text of one dialect only.
struct mark_row {
    std::string_view beginning;
    std::string_view dialect;
};

// What stands anywhere in a line of the text of one dialect only.
struct part_row {
    std::string_view part;
    std::string_view dialect;
};

}  // namespace

static constexpr std::array<target_row, 22> targets = {{
    {"x86_64", "x86_64"}, {"amd64", "x86_64"}, {"i386", "x86_64"},         {"i486", "x86_64"},
    {"i586", "x86_64"},   {"i686", "x86_64"},  {"arm64", "aarch64"},       {"aarch64", "aarch64"},
    {"arm", "arm"},       {"thumb", "arm"},    {"riscv", "riscv"},         {"powerpc", "powerpc"},
    {"ppc", "powerpc"},   {"avr", "avr"},      {"mips", "mips"},           {"s390", "s390"},
    {"sparc", "sparc"},   {"m68k", "m68k"},    {"loongarch", "loongarch"}, {"sh", "sh"},
    {"msp430", "msp430"}, {"hppa", "hppa"},
}};

static constexpr std::array<mark_row, 16> marks = {{
    {".arch armv8", "aarch64"},
    {".arch armv9", "aarch64"},
    {".eabi_attribute", "arm"},
    {".syntax unified", "arm"},
    {".syntax divided", "arm"},
    {".attribute arch", "riscv"},
    {".attribute 5,", "riscv"},
    {".option nopic", "riscv"},
    {".option pic", "riscv"},
    {".abiversion", "powerpc"},
    {".machine power", "powerpc"},
    {".machinemode", "s390"},
    {"__SP_H__ =", "avr"},
    {".nan ", "mips"},
    {".register %g", "sparc"},
    {".cpu 430", "msp430"},
}};

// Comments that Clang writes about the function that follows.
static constexpr std::array<part_row, 5> parts = {{
    {"// -- Begin function", "aarch64"},
    {"@ -- Begin function", "arm"},
    {"## -- Begin function", "x86_64-apple"},
    {"; -- Begin function", "aarch64-apple"},
    {"# -- Begin function", "x86_64"},
}};

const dialect& dialect_of_target(std::string_view triple) {
    const auto* target =
        std::find_if(targets.begin(), targets.end(),
                     [triple](const target_row& it) { return triple.starts_with(it.prefix); });
    if (target == targets.end()) {
        return common;
    }
    const bool is_apple = triple.find("-apple-") != std::string_view::npos;
    return is_apple ? named(std::string(target->dialect) + "-apple") : named(target->dialect);
}

// A tab is as good as a blank.
static bool begins(std::string_view line, std::string_view beginning) {
    return line.size() >= beginning.size() &&
           std::equal(beginning.begin(), beginning.end(), line.begin(),
                      [](char one, char other) { return one == (other == '\t' ? ' ' : other); });
}

const dialect& dialect_of_text(std::string_view text) {
    if (text.starts_with("#NO_APP")) {
        return named("m68k");  // the only compiler left that begins a text like this
    }
    // Within this much every compiler has shown what it writes for.
    constexpr std::size_t most_lines = 4000;
    for (std::size_t lines = 0; lines < most_lines && !text.empty(); ++lines) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        for (const mark_row& row : marks) {
            if (begins(line, row.beginning)) {
                return named(row.dialect);
            }
        }
        if (line.find(" -- Begin function") == std::string_view::npos) {
            continue;
        }
        for (const part_row& row : parts) {
            if (line.find(row.part) != std::string_view::npos) {
                return named(row.dialect);
            }
        }
    }
    return common;
}

}  // namespace assembly
