// The translation of another demangler's texts into this decoder's style: one rewriting
// step for each rule, applied in turn to the whole text.
#include "tests/demangle/scheme1/corpus/house_style.h"

#include <cxxabi.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace {

bool is_word(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

void replace_all(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

// The same for whole words only.
void replace_words(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
        const std::size_t end = at + from.size();
        const bool whole = (at == 0 || (!is_word(text[at - 1]) && text[at - 1] != ':')) &&
                           (end == text.size() || !is_word(text[end]));
        if (whole) {
            text.replace(at, from.size(), to);
        }
        at += whole ? to.size() : from.size();
    }
}

// Operator symbols are set aside while marks and brackets are rewritten: each stands
// as one control character, and "operator" with its blank in front of it.
constexpr std::array<std::string_view, 44> symbols = {
    "()", "[]", "->*", "->", "<=>", "<<=", ">>=",   "<<",       ">>",  "<=",     ">=",
    "==", "!=", "&&",  "||", "++",  "--",  "+=",    "-=",       "*=",  "/=",     "%=",
    "&=", "|=", "^=",  "+",  "-",   "*",   "/",     "%",        "^",   "&",      "|",
    "~",  "!",  "=",   "<",  ">",   ",",   "new[]", "delete[]", "new", "delete", "\"\"",
};
constexpr char first_symbol = '\x80';

void set_operators_aside(std::string& text) {
    constexpr std::string_view word = "operator";
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const std::size_t after = at + word.size();
        if ((at != 0 && is_word(text[at - 1])) || after == text.size() || is_word(text[after])) {
            continue;
        }
        const std::size_t symbol = text[after] == ' ' ? after + 1 : after;
        const auto* const row = std::find_if(
            symbols.begin(), symbols.end(),
            [&](std::string_view each) { return text.compare(symbol, each.size(), each) == 0; });
        if (row == symbols.end() ||
            (text[after] == ' ' && !is_word(row->front()) && row->front() != '"')) {
            continue;  // a conversion operator: what follows is a type
        }
        // "new" and "delete" begin the names of types, too.
        const std::size_t end = symbol + row->size();
        if (is_word(row->front()) && end < text.size() && is_word(text[end])) {
            continue;
        }
        std::size_t rest = end;
        if (row->front() == '"' && rest < text.size() && text[rest] == ' ') {
            ++rest;
        }
        std::string aside = " ";
        aside += static_cast<char>(first_symbol + (row - symbols.begin()));
        text.replace(after, rest - after, aside);
    }
}

void put_operators_back(std::string& text) {
    std::string whole;
    for (const char c : text) {
        const auto row = static_cast<std::size_t>(static_cast<unsigned char>(c)) -
                         static_cast<unsigned char>(first_symbol);
        if (static_cast<unsigned char>(c) >= static_cast<unsigned char>(first_symbol) &&
            row < symbols.size()) {
            whole += symbols[row];
            if (is_word(symbols[row].front())) {
                whole += ' ';
            }
        } else {
            whole += c;
        }
    }
    text = std::move(whole);
}

// Where the type name that ends at `end` begins: back over words, "::", and whole
// groups of brackets; over a blank only between the words of one builtin type and
// behind the qualifiers of an enclosing member function.
std::size_t name_start(const std::string& text, std::size_t end) {
    std::size_t at = end;
    int depth = 0;
    while (at != 0) {
        const char c = text[at - 1];
        if (c == '>' || c == ')' || c == ']' || c == '}') {
            ++depth;
        } else if (c == '<' || c == '(' || c == '[' || c == '{') {
            if (depth == 0) {
                return at;
            }
            --depth;
        } else if (depth == 0 && c == ',') {
            return at;
        } else if (depth == 0 && c == ' ') {
            const std::string_view before = std::string_view(text).substr(0, at - 1);
            const std::string_view rest = std::string_view(text).substr(at, end - at);
            const bool builtin = before.ends_with("unsigned") || before.ends_with("signed") ||
                                 before.ends_with("long") || rest.starts_with("__vector(");
            const bool qualifier = rest.starts_with("const::") || rest.starts_with("volatile::") ||
                                   rest.starts_with("&::") || rest.starts_with("&&::");
            if (!builtin && !qualifier) {
                return at;
            }
        }
        --at;
    }
    return 0;
}

// "char const*" -> "const char*": qualifiers behind a name go in front of it, in their
// fixed order. Behind a mark they stay, and behind a parameter list too.
void move_qualifiers(std::string& text) {
    static constexpr std::array<std::string_view, 3> words = {"const", "volatile", "restrict"};
    std::size_t at = 0;
    while ((at = text.find(' ', at)) != std::string::npos) {
        std::array<bool, 3> found{};
        std::size_t end = at;
        for (bool more = true; more;) {
            more = false;
            for (std::size_t word = 0; word < words.size(); ++word) {
                const std::size_t start = end + 1;
                const std::size_t stop = start + words[word].size();
                if (end < text.size() && text[end] == ' ' &&
                    text.compare(start, words[word].size(), words[word]) == 0 &&
                    (stop == text.size() || !is_word(text[stop])) &&
                    text.compare(stop, 2, "::") != 0) {
                    found[word] = true;
                    end = stop;
                    more = true;
                }
            }
        }
        if (end == at || at == 0) {
            ++at;
            continue;
        }
        std::string qualifiers;
        for (std::size_t word = 0; word < words.size(); ++word) {
            if (found[word]) {
                qualifiers += qualifiers.empty() ? "" : " ";
                qualifiers += words[word];
            }
        }
        const char before = text[at - 1];
        if (before == ')' || before == '*' || before == '&') {
            const bool mark = before != ')';
            // "(anonymous namespace)" and vectors end in a parenthesis and are names.
            const std::size_t start = name_start(text, at);
            if (mark || text.compare(start, 9, "decltype(") != 0) {
                const std::string stay = (mark ? "" : " ") + qualifiers;
                text.replace(at, end - at, stay);
                at += stay.size();
                continue;
            }
        }
        text.erase(at, end - at);
        const std::size_t start = name_start(text, at);
        text.insert(start, qualifiers + " ");
        at += qualifiers.size() + 1;
    }
}

// "char*" -> "char *", "char* (*)()" -> "char *(*)()", "(&) [3]" -> "(&)[3]", "> >" -> ">>".
void respace(std::string& text) {
    std::string spaced;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        const char last = spaced.empty() ? '(' : spaced.back();
        if ((c == '*' || c == '&') &&
            (is_word(last) || last == '>' || last == ')' || last == ']' || last == '}')) {
            spaced += ' ';
        }
        const char next = at + 1 < text.size() ? text[at + 1] : ' ';
        const bool mark = last == '*' || last == '&';
        if (c == ' ' && ((last == '>' && next == '>') || (last == ')' && next == '[') ||
                         (mark && (next == '(' || next == '[')))) {
            continue;
        }
        spaced += c;
    }
    text = std::move(spaced);
}

// "A * B::*" -> "A *B::*".
void close_up_member_pointers(std::string& text) {
    constexpr std::string_view mark = "::*";
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
        const std::size_t start = name_start(text, at);
        if (start >= 2 && text[start - 1] == ' ' &&
            (text[start - 2] == '*' || text[start - 2] == '&')) {
            text.erase(start - 1, 1);
            --at;
        }
    }
}

// "5ul" -> "5UL".
void capitalize_suffixes(std::string& text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (std::isdigit(static_cast<unsigned char>(text[at])) == 0 ||
            (at != 0 && is_word(text[at - 1]))) {
            continue;
        }
        while (at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) != 0) {
            ++at;
        }
        for (; at < text.size() && (text[at] == 'u' || text[at] == 'l'); ++at) {
            text[at] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[at])));
        }
    }
}

// "{lambda(int)#2}" -> "[lambda(int) (instance 2)]", and the like.
void rename_unnamed(std::string& text) {
    struct Rule {
        std::string_view open;
        std::string_view new_open;
        std::string_view before_number;
        std::string_view after_number;
    };
    static constexpr Rule rules[] = {
        {"{lambda(", "[lambda(", " (instance ", ")]"},
        {"{unnamed type", "[unnamed type", " (instance ", ")]"},
        {"{default arg", "[default argument", " ", " (from end)]"},
    };
    for (const Rule& rule : rules) {
        std::size_t at = 0;
        while ((at = text.find(rule.open, at)) != std::string::npos) {
            int depth = 0;
            std::size_t close = at;
            for (; close < text.size(); ++close) {
                depth += text[close] == '{' ? 1 : text[close] == '}' ? -1 : 0;
                if (depth == 0) {
                    break;
                }
            }
            const std::size_t number = text.rfind('#', close);
            const std::string digits = text.substr(number + 1, close - number - 1);
            text.replace(number, close + 1 - number,
                         std::string(rule.before_number) + digits + std::string(rule.after_number));
            text.replace(at, rule.open.size(), rule.new_open);
            ++at;
        }
    }
}

std::string offset_text(const std::string& name, std::size_t& at) {
    const auto number = [&] {
        std::string value = name[at] == 'n' ? "-" : "";
        at += name[at] == 'n' ? 1 : 0;
        while (at < name.size() && name[at] != '_') {
            value += name[at++];
        }
        ++at;
        return value;
    };
    const bool is_virtual = name[at++] == 'v';
    std::string text = "(offset " + number();
    if (is_virtual) {
        text += ", virtual offset " + number();
    }
    return text + ") ";
}

// The words that a special name begins with; thunks get their offsets from the name.
std::string special_start(const std::string& name, std::string& text) {
    struct Rule {
        std::string_view theirs;
        const char* ours;
    };
    static constexpr Rule rules[] = {
        {"vtable for ", "Virtual function table for "},
        {"VTT for ", "Virtual table table for "},
        {"typeinfo for ", "Typeinfo for "},
        {"typeinfo name for ", "Typeinfo name for "},
        {"guard variable for ", "Initialization guard variable for "},
        {"TLS init function for ", "Thread-local initialization routine for "},
        {"TLS wrapper function for ", "Thread-local wrapper routine for "},
        {"construction vtable for ", "Construction vtable for "},
        {"reference temporary #", "Reference temporary #"},
        {"template parameter object for ", "Template parameter object for "},
        {"transaction clone for ", "Transaction clone for "},
        {"non-transaction clone for ", "Transaction clone for "},
    };
    for (const Rule& rule : rules) {
        if (text.starts_with(rule.theirs)) {
            text.erase(0, rule.theirs.size());
            return rule.ours;
        }
    }
    for (const std::string_view words :
         {"non-virtual thunk to ", "virtual thunk to ", "covariant return thunk to "}) {
        if (text.starts_with(words)) {
            text.erase(0, words.size());
            const bool covariant = name.starts_with("_ZTc");
            std::size_t at = covariant ? 4 : 3;
            std::string start = covariant ? "Covariant thunk for " : "Thunk for ";
            start += offset_text(name, at);
            return covariant ? start + offset_text(name, at) : start;
        }
    }
    return "";
}

}  // namespace

std::string black_box_text(const std::string& name) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return text ? text.get() : "";
}

std::string house_style(const std::string& name, const std::string& text) {
    std::string styled = text;
    const std::string start = special_start(name, styled);
    replace_all(styled, "(anonymous namespace)", "<unnamed>");
    replace_all(styled, "decltype(nullptr)", "std::nullptr_t");
    replace_all(styled, "::string literal", "::string");
    for (const auto& [there, here] :
         {std::pair{"decimal32", "_Decimal32"}, std::pair{"decimal64", "_Decimal64"},
          std::pair{"decimal128", "_Decimal128"}, std::pair{"half", "_Float16"}}) {
        // Their words for builtin types are ordinary identifiers, too.
        if (name.find(there) == std::string::npos) {
            replace_words(styled, there, here);
        }
    }
    replace_words(styled, "std::string",
                  "std::basic_string<char, std::char_traits<char>, std::allocator<char>>");
    replace_words(styled, "std::istream", "std::basic_istream<char, std::char_traits<char>>");
    replace_words(styled, "std::ostream", "std::basic_ostream<char, std::char_traits<char>>");
    replace_words(styled, "std::iostream", "std::basic_iostream<char, std::char_traits<char>>");
    set_operators_aside(styled);
    move_qualifiers(styled);
    for (const std::string real : {"long double", "double", "float"}) {
        replace_words(styled, real + " const _Complex", "const _Complex " + real);
        replace_words(styled, real + " _Complex", "_Complex " + real);
    }
    respace(styled);
    close_up_member_pointers(styled);
    capitalize_suffixes(styled);
    rename_unnamed(styled);
    put_operators_back(styled);
    return start + styled;
}
