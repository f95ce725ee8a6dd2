// The parts of a function's text, "result name<arguments>(parameters) qualifiers", and the
// replacement of the template parameters among them.
#include "tests/demangle/scheme1/corpus/template_arguments.h"

#include <cctype>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view openers = "(<[{";
constexpr std::string_view closers = ")>]}";

bool is_any_of(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
}

// Where the bracket that is closed at `close` was opened; npos when it was not.
std::size_t opening_of(std::string_view text, std::size_t close) {
    int depth = 0;
    for (std::size_t at = close + 1; at-- != 0;) {
        depth += is_any_of(text[at], closers) ? 1 : is_any_of(text[at], openers) ? -1 : 0;
        if (depth == 0) {
            return at;
        }
    }
    return std::string_view::npos;
}

std::vector<std::string> split_list(std::string_view list) {
    std::vector<std::string> items;
    int depth = 0;
    std::size_t start = 0;
    for (std::size_t at = 0; at <= list.size(); ++at) {
        if (at == list.size() || (depth == 0 && list[at] == ',')) {
            items.emplace_back(list.substr(start, at - start));
            start = at + 2;
        } else {
            depth += is_any_of(list[at], openers) ? 1 : is_any_of(list[at], closers) ? -1 : 0;
        }
    }
    return items;
}

// Behind the last blank outside brackets: where the name begins that ends at `end`.
std::size_t name_start(std::string_view text, std::size_t end) {
    int depth = 0;
    for (std::size_t at = end; at-- != 0;) {
        depth += is_any_of(text[at], closers) ? 1 : is_any_of(text[at], openers) ? -1 : 0;
        if (depth == 0 && text[at] == ' ') {
            return at + 1;
        }
    }
    return 0;
}

bool is_word(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// The end of the "T1" at `at`, or `at` itself when there is none.
std::size_t parameter_end(std::string_view text, std::size_t at) {
    if (text[at] != 'T' || (at != 0 && is_word(text[at - 1]))) {
        return at;
    }
    std::size_t end = at + 1;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])) != 0) {
        ++end;
    }
    return end == at + 1 || (end < text.size() && is_word(text[end])) ? at : end;
}

bool holds_parameter(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (parameter_end(text, at) != at) {
            return true;
        }
    }
    return false;
}

// Adds an argument behind what stands in `text`: qualifiers in front of a parameter are
// those of the argument's outermost level, and a reference takes none.
void add_argument(std::string& text, std::string argument) {
    for (const std::string_view qualifiers : {"const volatile ", "const ", "volatile "}) {
        if (!std::string_view(text).ends_with(qualifiers)) {
            continue;
        }
        if (argument.ends_with('&') || argument.starts_with(qualifiers)) {
            text.erase(text.size() - qualifiers.size());
        } else if (argument.ends_with('*')) {
            text.erase(text.size() - qualifiers.size());
            argument.append(qualifiers.substr(0, qualifiers.size() - 1));
        }
        break;
    }
    text += argument;
}

// A reference to a reference is one: "&&" only where both are.
std::size_t collapse_reference(std::string& text, std::string_view rest) {
    const std::size_t marks = rest.starts_with(" &&") ? 3 : rest.starts_with(" &") ? 2 : 0;
    if (marks == 0 || !text.ends_with('&')) {
        return 0;
    }
    if (marks == 2 && text.ends_with("&&")) {
        text.pop_back();
    }
    return marks;
}

// False for a number that the list does not have.
bool replace_parameters(std::string_view text, const std::vector<std::string>& arguments,
                        std::string& result) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = parameter_end(text, at);
        if (end == at) {
            result += text[at++];
            continue;
        }
        const auto number = static_cast<std::size_t>(
            std::atol(std::string(text.substr(at + 1, end - at - 1)).c_str()));
        if (number > arguments.size()) {
            return false;
        }
        add_argument(result, arguments[number - 1]);
        at = end + collapse_reference(result, text.substr(end));
    }
    return true;
}

}  // namespace

std::optional<std::string> with_arguments(const std::string& text) {
    for (const char* form : {"...", "auto:", "operator <", "operator >", "->", " < ", " > "}) {
        if (text.find(form) != std::string::npos) {
            return std::nullopt;
        }
    }
    std::string_view function = text;
    for (bool more = true; more;) {
        more = false;
        for (const std::string_view qualifier : {" const", " volatile", " &", " &&"}) {
            if (function.ends_with(qualifier)) {
                function.remove_suffix(qualifier.size());
                more = true;
            }
        }
    }
    if (!function.ends_with(')')) {
        return std::nullopt;
    }
    const std::size_t parameters = opening_of(function, function.size() - 1);
    if (parameters == std::string_view::npos || parameters == 0 ||
        function[parameters - 1] != '>') {
        return std::nullopt;
    }
    const std::size_t list = opening_of(function, parameters - 1);
    if (list == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t name = name_start(function, list);
    if (holds_parameter(function.substr(name, parameters - name))) {
        return std::nullopt;
    }
    const std::vector<std::string> arguments =
        split_list(function.substr(list + 1, parameters - list - 2));
    std::string whole;
    if (!replace_parameters(function.substr(0, name), arguments, whole)) {
        return std::nullopt;
    }
    whole += function.substr(name, parameters - name);
    if (!replace_parameters(function.substr(parameters), arguments, whole)) {
        return std::nullopt;
    }
    whole.append(text, function.size(), std::string::npos);
    return whole;
}
