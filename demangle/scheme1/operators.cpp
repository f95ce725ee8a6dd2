// Operator codes of the Itanium ABI decoder: the text, the number of operands and the
// closing text of each. Called by the names (operator functions) and the expressions.
#include <array>

#include "demangle/scheme1/state.h"

struct operator_row {
    char code[3];
    unsigned char arity;
    std::string_view text;
    std::string_view closer;
};

static constexpr operator_row operators[] = {
    {"aa", 2, "&&", ""},
    {"ad", 1, "&", ""},
    {"an", 2, "&", ""},
    {"aN", 2, "&=", ""},
    {"aS", 2, "=", ""},
    {"at", 0, "alignof(", ")"},
    {"aw", 1, "co_await", ""},
    {"az", 1, "alignof(", ")"},
    {"cc", 1, "const_cast", ""},
    {"cl", 0, "()", ""},
    {"cm", 2, ",", ""},
    {"co", 1, "~", ""},
    {"cv", 1, "cast", ""},
    {"da", 1, "delete[] ", ""},
    {"dc", 1, "dynamic_cast", ""},
    {"de", 1, "*", ""},
    {"dl", 1, "delete ", ""},
    {"ds", 2, ".*", ""},
    {"dv", 2, "/", ""},
    {"dV", 2, "/=", ""},
    {"eo", 2, "^", ""},
    {"eO", 2, "^=", ""},
    {"eq", 2, "==", ""},
    {"ge", 2, ">=", ""},
    {"gt", 2, ">", ""},
    {"ix", 2, "[", "]"},
    {"le", 2, "<=", ""},
    {"ls", 2, "<<", ""},
    {"lS", 2, "<<=", ""},
    {"lt", 2, "<", ""},
    {"mi", 2, "-", ""},
    {"mI", 2, "-=", ""},
    {"ml", 2, "*", ""},
    {"mL", 2, "*=", ""},
    {"mm", 1, "--", ""},
    {"na", 2, "new[] ", ""},
    {"ne", 2, "!=", ""},
    {"ng", 1, "-", ""},
    {"nt", 1, "!", ""},
    {"nw", 2, "new ", ""},
    {"nx", 1, "noexcept(", ")"},
    {"oo", 2, "||", ""},
    {"or", 2, "|", ""},
    {"oR", 2, "|=", ""},
    {"pl", 2, "+", ""},
    {"pL", 2, "+=", ""},
    {"pm", 2, "->*", ""},
    {"pp", 1, "++", ""},
    {"ps", 1, "+", ""},
    {"pt", 2, "->", ""},
    {"qu", 3, "?", ""},
    {"rc", 1, "reinterpret_cast", ""},
    {"rm", 2, "%", ""},
    {"rM", 2, "%=", ""},
    {"rs", 2, ">>", ""},
    {"rS", 2, ">>=", ""},
    {"sc", 1, "static_cast", ""},
    {"st", 0, "sizeof(", ")"},
    {"sz", 1, "sizeof(", ")"},
    {"te", 1, "typeid(", ")"},
    {"ti", 0, "typeid(", ")"},
    {"tr", 0, "throw", ""},
    {"tw", 1, "throw ", ""},
};

// Vendor operators, tried in this order and matched by their whole spelling.
struct vendor_row {
    std::string_view code;
    std::string_view text;
    unsigned char arity;
    std::string_view closer;
};

static constexpr vendor_row vendor_operators[] = {
    {"v18alignofe", "__alignof__(", 1, ")"},
    {"v17alignof", "__alignof__(", 0, ")"},
    {"v19__uuidofe", "__uuidof(", 1, ")"},
    {"v18__uuidof", "__uuidof(", 0, ")"},
    {"v17typeide", "typeid(", 1, ")"},
    {"v16typeid", "typeid(", 0, ")"},
    {"v19clitypeid", "::typeid", 0, ""},
    {"v23min", "<?", 2, ""},
    {"v23max", ">?", 2, ""},
    {"v18__real__", "__real(", 1, ")"},
    {"v18__imag__", "__imag(", 1, ")"},
    {"v19clihandle", "%", 1, ""},
    {"v112clisafe_cast", "safe_cast", 1, ""},
};

// Rows by the two letters of the code, 1-based; 0 for no such code.
static constexpr std::size_t second_letters = 'z' - 'A' + 1;
static constexpr auto operator_index = [] {
    std::array<unsigned char, 26 * second_letters> index{};
    unsigned char row = 1;
    for (const operator_row& entry : operators) {
        index[static_cast<std::size_t>(entry.code[0] - 'a') * second_letters +
              static_cast<std::size_t>(entry.code[1] - 'A')] = row++;
    }
    return index;
}();

static eabi_operator vendor_operator(const char* at, const eabi_decode_state* state) {
    const std::string_view rest(at, static_cast<std::size_t>(state->input_end - at));
    for (const vendor_row& row : vendor_operators) {
        if (rest.starts_with(row.code)) {
            return {row.text, {}, row.closer, row.arity, row.code.size()};
        }
    }
    if (rest.size() >= 2 && eabi_is_digit(rest[1])) {
        const auto arity = static_cast<unsigned>(rest[1] - '0');
        const std::string_view name = rest.substr(2);
        constexpr std::string_view builtin = "9builtin";
        constexpr std::string_view subscript = "12clisubscript";
        if (name.starts_with(builtin) && name.size() >= builtin.size() + 2) {
            return {"builtin-operation-", name.substr(builtin.size(), 2), {}, arity, 12};
        }
        if (name.starts_with(subscript)) {
            return {"subscript", {}, {}, arity, 16};
        }
    }
    return {};
}

// "li" [ "n" ] length identifier: two quotes and the identifier.
static eabi_operator literal_operator(const char* at, eabi_decode_state* state) {
    const char* const start = at;
    at += 2;
    const bool negative = *at == 'n';
    std::uint64_t length = 0;
    at = eabi_number(at + (negative ? 1 : 0), &length, state);
    if (negative || length == 0 || length > static_cast<std::uint64_t>(state->input_end - at)) {
        report_bad_name(state);
        return {};
    }
    return {"\"\"", {at, length}, {}, 0, static_cast<std::size_t>(at - start) + length};
}

eabi_operator eabi_operator_info(const char* at, eabi_decode_state* state) {
    if (*at == '\0') {
        report_bad_name(state);
        return {};
    }
    if (*at < 'a' || *at > 'v' || at[1] < '0' || at[1] > 'z') {
        return {};
    }
    if (*at == 'v') {
        return vendor_operator(at, state);
    }
    if (at[0] == 'l' && at[1] == 'i') {
        return literal_operator(at, state);
    }
    if (at[0] == 's' && at[1] == 's' && state->extended) {
        return {"<=>", {}, {}, 2, 2};
    }
    if (at[1] < 'A') {
        return {};
    }
    const unsigned char row = operator_index[static_cast<std::size_t>(*at - 'a') * second_letters +
                                             static_cast<std::size_t>(at[1] - 'A')];
    if (row == 0) {
        return {};
    }
    const operator_row& found = operators[row - 1];
    return {found.text, {}, found.closer, found.arity, 2};
}
