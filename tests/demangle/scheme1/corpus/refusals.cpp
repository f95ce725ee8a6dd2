// Finds the form that makes a name one for extended names only.
#include "tests/demangle/scheme1/corpus/refusals.h"

#include <array>
#include <string_view>

namespace {

struct Form {
    std::string_view letters;
    const char* cause;
};

// What the beginning of a name tells.
constexpr std::array<Form, 6> beginnings = {{
    {"_ZTC", "TC, construction vtable"},
    {"_ZTA", "TA, template parameter object"},
    {"_ZGR", "GR, reference temporary"},
    {"_ZGTt", "GTt, transaction clone"},
    {"_ZGTn", "GTn, transaction clone"},
    {"_ZGI", "GI, module initializer"},
}};

// What the other demangler's words tell.
constexpr std::array<Form, 6> words = {{
    {"operator<=>", "ss, operator <=>"},
    {" <=> ", "ss, operator <=>"},
    {"__float128", "g, __float128"},
    {"decimal", "Dd De Df, decimal floating point"},
    {"half", "Dh, half precision"},
    {" requires ", "Q, constraint"},
}};

// Constructor and destructor kinds that the tables leave out.
constexpr std::array<Form, 4> kinds = {{
    {"C4", "C4 D4, constructor kind"},
    {"D4", "C4 D4, constructor kind"},
    {"C5", "C5 D5, constructor kind"},
    {"D5", "C5 D5, constructor kind"},
}};

}  // namespace

std::string extended_form(const std::string& name, const std::string& other_text) {
    for (const Form& form : beginnings) {
        if (name.starts_with(form.letters)) {
            return form.cause;
        }
    }
    if (name.find('.') != std::string::npos) {
        return ".suffix, clone of a function";
    }
    for (const Form& form : words) {
        // An identifier of the name's own tells nothing.
        if (other_text.find(form.letters) != std::string::npos &&
            name.find(form.letters) == std::string::npos) {
            return form.cause;
        }
    }
    for (const Form& form : kinds) {
        for (const char after : {'E', 'I', 'B'}) {
            if (name.find(std::string(form.letters) + after) != std::string::npos) {
                return form.cause;
            }
        }
    }
    return "";
}
