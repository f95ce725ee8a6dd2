// How the texts of two demanglers compare: first in one style, then by the classes of
// differences that README.md in this folder explains.
#include "tests/demangle/scheme1/corpus/agreement.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>

#include "tests/demangle/scheme1/corpus/house_style.h"
#include "tests/demangle/scheme1/corpus/template_arguments.h"

namespace {

bool refers_to_template_parameters(const std::string& name) {
    for (std::size_t at = name.find('T'); at != std::string::npos; at = name.find('T', at + 1)) {
        std::size_t end = at + 1;
        while (end < name.size() && std::isdigit(static_cast<unsigned char>(name[end])) != 0) {
            ++end;
        }
        if (end < name.size() && name[end] == '_') {
            return true;
        }
    }
    return false;
}

bool holds_expression(const std::string& name) {
    for (const char* form : {"IX", "EX", "JX", "_X", "DT", "Dt", "L_Z", "XL", "Xad"}) {
        if (name.find(form) != std::string::npos) {
            return true;
        }
    }
    return false;
}

std::string squeezed(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

}  // namespace

std::string without_kinds(const std::string& text) {
    std::string plain = text;
    for (const std::string_view kind :
         {" [deleting]", " [subobject]", " [allocating]", " [static]", " [delegation]"}) {
        if (plain.ends_with(kind)) {
            plain.resize(plain.size() - kind.size());
        }
    }
    // Those in brackets belong to unnamed types and closures, which the other shows.
    constexpr std::string_view mark = " (instance ";
    std::size_t at = 0;
    while ((at = plain.find(mark, at)) != std::string::npos) {
        const std::size_t close = plain.find(')', at);
        if (close + 1 < plain.size() && plain[close + 1] == ']') {
            at = close;
        } else {
            plain.erase(at, close + 1 - at);
        }
    }
    return plain;
}

// Cuts " [clone .cold]" off a text and gives ".cold"; the other demangler shows one such
// for each part of a suffix.
static std::string cut_clones(std::string& text) {
    constexpr std::string_view mark = " [clone ";
    const std::size_t start = text.find(mark);
    if (start == std::string::npos) {
        return "";
    }
    std::string clones;
    for (std::size_t at = start; at != std::string::npos; at = text.find(mark, at)) {
        at += mark.size();
        clones += text.substr(at, text.find(']', at) - at);
    }
    text.resize(start);
    return clones;
}

// Whether `shorter` is `longer` without a text that stands there once or several times:
// "void f<int>()::x" here is "f<int>()::x" there.
static bool is_without_repeated_text(const std::string& longer, const std::string& shorter) {
    const auto apart = std::mismatch(longer.begin(), longer.end(), shorter.begin(), shorter.end());
    const auto common = static_cast<std::size_t>(apart.first - longer.begin());
    const std::size_t surplus = longer.size() - std::min(longer.size(), shorter.size());
    for (std::size_t times = 1; times <= surplus; ++times) {
        if (surplus % times != 0) {
            continue;
        }
        const std::string text = longer.substr(common, surplus / times);
        std::string without;
        for (std::size_t at = 0; at < longer.size();) {
            if (without.size() < shorter.size() && longer[at] == shorter[without.size()]) {
                without += longer[at++];
            } else if (longer.compare(at, text.size(), text) == 0) {
                at += text.size();
            } else {
                break;
            }
        }
        if (without == shorter) {
            return true;
        }
    }
    return false;
}

Agreement compare(const std::string& name, const std::string& other_text,
                  const std::string& our_text) {
    std::string theirs = other_text;
    std::string ours = our_text;
    if (cut_clones(theirs) != cut_clones(ours)) {
        return Agreement::different;
    }
    theirs = house_style(name, theirs);
    ours = without_kinds(ours);
    if (theirs == ours) {
        return Agreement::same;
    }
    if (refers_to_template_parameters(name)) {
        const std::optional<std::string> replaced = with_arguments(ours);
        return replaced && squeezed(*replaced) == squeezed(theirs) ? Agreement::with_arguments
                                                                   : Agreement::template_parameters;
    }
    if (holds_expression(name)) {
        return Agreement::expression;
    }
    if (name.find('Z', 2) != std::string::npos && is_without_repeated_text(ours, theirs)) {
        return Agreement::enclosing_result;
    }
    if (name.find("CI1") != std::string::npos || name.find("CI2") != std::string::npos) {
        return Agreement::inherited_constructor;
    }
    for (const char* structor : {"_C1E", "_C2E", "_C5E", "_D0E", "_D1E", "_D2E", "_D5E"}) {
        if (name.find(structor) != std::string::npos &&
            (name.find("Ut") != std::string::npos || name.find("Ul") != std::string::npos)) {
            return Agreement::unnamed_class;
        }
    }
    return Agreement::different;
}
