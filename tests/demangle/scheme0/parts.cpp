// How scheme-0 pieces are put together; called by the drawing of declarations.
#include "tests/demangle/scheme0/parts.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace scheme0 {

const Coded operator_codes[] = {
    {"apl", "+="},
    {"ami", "-="},
    {"amu", "*="},
    {"adv", "/="},
    {"amd", "%="},
    {"aer", "^="},
    {"aad", "&="},
    {"aor", "|="},
    {"ars", ">>="},
    {"als", "<<="},
    {"ppe", "++"},
    {"mme", "--"},
    {"nwa", "new[]"},
    {"dla", "delete[]"},
    {"nw", "new"},
    {"gc", "gcnew"},
    {"dl", "delete"},
    {"pl", "+"},
    {"mi", "-"},
    {"ml", "*"},
    {"dv", "/"},
    {"md", "%"},
    {"er", "^"},
    {"ad", "&"},
    {"or", "|"},
    {"co", "~"},
    {"nt", "!"},
    {"as", "="},
    {"lt", "<"},
    {"gt", ">"},
    {"ls", "<<"},
    {"rs", ">>"},
    {"eq", "=="},
    {"ne", "!="},
    {"le", "<="},
    {"ge", ">="},
    {"aa", "&&"},
    {"oo", "||"},
    {"pp", "++"},
    {"mm", "--"},
    {"cm", ","},
    {"rm", "->*"},
    {"rf", "->"},
    {"cl", "()"},
    {"cp", "()"},
    {"vc", "[]"},
    {"qs", "?"},
    {"mn", "<?"},
    {"mx", ">?"},
    {"ds", ".*"},
    {"dt", "."},
    {"ps", "+"},
    {"ng", "-"},
    {"de", "*"},
    {"ao", "&"},
    {"rl", "__real("},
    {"im", "__imag("},
    {"dc", "dynamic_cast<"},
    {"sc", "static_cast<"},
    {"cc", "const_cast<"},
    {"rc", "reinterpret_cast<"},
    {"sf", "safe_cast<"},
    {"tw", "throw "},
    {"sz", "sizeof("},
    {"cs", "cast"},
    {"af", "__alignof__("},
    {"uu", "__uuidof("},
    {"ty", "typeid("},
    {"ct", "::typeid"},
    {"bi", "builtin-operation"},
    {"sp", "..."},
    {"sk", "sizeof...("},
    {"ht", "%"},
    {"sb", "subscript"},
    {"il", "{"},
    {"tl", "{"},
    {"nx", "noexcept("},
    {"li", "\"\""},
    {"aw", "co_await"},
};
const unsigned operator_code_count = static_cast<unsigned>(std::size(operator_codes));

namespace {

bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

bool begins_with_operator_code(std::string_view letters) {
    return std::any_of(std::begin(operator_codes), std::end(operator_codes),
                       [&](const Coded& row) { return letters.starts_with(row.code); });
}

bool begins_with_long_index(std::string_view letters) {
    const std::size_t end = letters.find_first_not_of("0123456789");
    return end != 0 && end != std::string_view::npos && letters[end] == '_';
}

// The letters as a decoder meets them from here on, marks taken away.
std::string plain_letters(std::string_view letters) {
    std::string plain;
    for (const char letter : letters) {
        if (letter == mark::open_end) {
            plain += 'O';
        } else if (letter == mark::short_literal) {
            plain += '1';
        } else if (letter == mark::name_end) {
            plain += "__";
        } else if (letter > mark::name_end) {
            plain += letter;
        }
    }
    return plain;
}

bool fits_behind(char sign, std::string_view rest) {
    const std::string next = plain_letters(rest.substr(0, 24));
    const char first = next.empty() ? '\0' : next[0];
    switch (sign) {
        case mark::open_end:
            return !begins_with_operator_code(next);
        case mark::short_index:
            return !begins_with_long_index(next);
        case mark::one_byte:
            return first != '6';
        case mark::value:
            return first != 'L';
        case mark::open_reference:
            return first != 'I' && !is_digit(first);
        default:
            return true;
    }
}

// A declarator's text stands behind a blank, unless a mark or a parenthesis opens it.
std::string spaced(const Type& type) {
    const bool tight =
        type.shape == Shape::marked || type.shape == Shape::function || type.shape == Shape::array;
    return tight ? type.before : type.before + " ";
}

Type with_mark(std::string code, std::string_view sign, const Type& to, bool tight) {
    Type type;
    type.code = std::move(code) + to.code;
    type.shape = Shape::marked;
    type.after = to.after;
    if (to.shape == Shape::function || to.shape == Shape::array) {
        type.before = to.before + "(";
        type.after = ")" + to.after;
    } else if (to.shape == Shape::marked || (tight && to.shape != Shape::qualified)) {
        type.before = to.before;
    } else {
        type.before = to.before + " ";
    }
    type.before += sign;
    return type;
}

}  // namespace

bool settle(std::string& letters) {
    std::string settled;
    bool fits = true;
    for (std::size_t at = 0; at < letters.size(); ++at) {
        const char letter = letters[at];
        if (letter == mark::short_literal) {
            const bool underscore = plain_letters(letters.substr(at + 2, 24)).starts_with('_');
            settled += underscore ? "_1_" : "1";
        } else if (letter == mark::name_end) {
            const bool left_out = at + 1 == letters.size() && at % 2 == 0;
            settled += left_out ? "" : "__";
        } else if (letter > mark::name_end) {
            settled += letter;
        } else {
            fits = fits && fits_behind(letter, std::string_view(letters).substr(at + 1));
            settled += letter == mark::open_end ? "O" : "";
        }
    }
    letters = settled;
    return fits;
}

std::string text_of(const Type& type) {
    return type.before + type.after;
}

std::string operand_text(const Expression& expression) {
    return expression.operation ? "(" + expression.text + ")" : expression.text;
}

std::string joined(const std::vector<std::string>& items) {
    std::string text;
    for (std::size_t at = 0; at < items.size(); ++at) {
        text += at == 0 ? items[at] : ", " + items[at];
    }
    return text;
}

Type named(std::string_view code, std::string_view text) {
    Type type;
    type.code = code;
    type.before = text;
    type.plain = true;
    return type;
}

Type marked(std::string_view code, std::string_view sign, const Type& to) {
    return with_mark(std::string(code), sign, to, false);
}

Type handle(char letter, const Type& to) {
    return with_mark(std::string("H") + letter, letter == 'h' ? "^" : "%", to, true);
}

Type bracketed(char letter, const Type& to) {
    Type type;
    type.code = std::string("H") + letter + to.code;
    type.before = (letter == 'i' ? "interior_ptr<" : "pin_ptr<") + text_of(to) + ">";
    type.shape = Shape::bracketed;
    return type;
}

Type qualified(std::string_view code, std::string_view words, const Type& type) {
    Type whole = type;
    whole.code = std::string(code) + type.code;
    whole.plain = false;
    if (type.shape == Shape::name || type.shape == Shape::array) {
        whole.before = std::string(words) + " " + type.before;
        return whole;
    }
    whole.before += (type.shape == Shape::bracketed ? " " : "") + std::string(words);
    whole.shape = Shape::qualified;
    return whole;
}

Type function(const FunctionQualifiers& qualifiers, const Parameters& parameters,
              const Type& result) {
    Type type;
    type.code = qualifiers.code + "F" + parameters.code + "_" + result.code;
    type.before = spaced(result);
    type.after = "(" + parameters.text + ")" + qualifiers.text + result.after;
    type.shape = Shape::function;
    return type;
}

Type array_of(std::string_view bound_code, std::string_view bound_text, const Type& element) {
    Type type;
    type.code = "A" + std::string(bound_code) + "_" + element.code;
    type.before = spaced(element);
    type.after = "[" + std::string(bound_text) + "]" + element.after;
    type.shape = Shape::array;
    type.plain = element.plain;
    return type;
}

Type vector_of(unsigned size, const Type& element) {
    const std::string digits = std::to_string(size);
    Type type = element;
    type.code = "B" + digits + "_" + element.code;
    type.before = "__attribute__((vector_size(" + digits + "))) " + element.before;
    return type;
}

std::string with_list(const std::string& name, const Arguments& arguments) {
    return name + (name.ends_with('<') && !arguments.text.empty() ? " " : "") + arguments.text;
}

std::string length_prefixed(std::string_view run) {
    return std::to_string(run.size()) + std::string(run);
}

}  // namespace scheme0
