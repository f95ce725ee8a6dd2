// The operator codes of scheme 1.
#include "demangle/scheme1/operators.h"

#include "demangle/scheme1/code_index.h"
#include "demangle/scheme1/input.h"

namespace scheme1 {

namespace {

struct operator_row {
    std::string_view code;
    operator_form form;
    unsigned char arity;
    std::string_view text;
    std::string_view closer;
    names_mode mode;
};

}  // namespace

static constexpr operator_row operators[] = {
    {"aa", operator_form::infix, 2, "&&", "", always},
    {"ad", operator_form::prefix, 1, "&", "", always},
    {"an", operator_form::infix, 2, "&", "", always},
    {"aN", operator_form::infix, 2, "&=", "", always},
    {"aS", operator_form::infix, 2, "=", "", always},
    {"at", operator_form::enclosing_type, 0, "alignof(", ")", always},
    {"aw", operator_form::prefix_word, 1, "co_await", "", always},
    {"az", operator_form::enclosing, 1, "alignof(", ")", always},
    {"cc", operator_form::named_cast, 1, "const_cast", "", always},
    {"cl", operator_form::call, 0, "()", "", always},
    {"cm", operator_form::comma, 2, ",", "", always},
    {"co", operator_form::prefix, 1, "~", "", always},
    {"cv", operator_form::conversion, 1, "cast", "", always},
    {"da", operator_form::deletion, 1, "delete[] ", "", always},
    {"dc", operator_form::named_cast, 1, "dynamic_cast", "", always},
    {"de", operator_form::prefix, 1, "*", "", always},
    {"dl", operator_form::deletion, 1, "delete ", "", always},
    {"ds", operator_form::member_pointer, 2, ".*", "", always},
    {"dv", operator_form::infix, 2, "/", "", always},
    {"dV", operator_form::infix, 2, "/=", "", always},
    {"eo", operator_form::infix, 2, "^", "", always},
    {"eO", operator_form::infix, 2, "^=", "", always},
    {"eq", operator_form::infix, 2, "==", "", always},
    {"ge", operator_form::greater, 2, ">=", "", always},
    {"gt", operator_form::greater, 2, ">", "", always},
    {"ix", operator_form::subscript, 2, "[", "]", always},
    {"le", operator_form::infix, 2, "<=", "", always},
    {"li", operator_form::literal, 0, "\"\"", "", always},
    {"ls", operator_form::infix, 2, "<<", "", always},
    {"lS", operator_form::infix, 2, "<<=", "", always},
    {"lt", operator_form::infix, 2, "<", "", always},
    {"mi", operator_form::infix, 2, "-", "", always},
    {"mI", operator_form::infix, 2, "-=", "", always},
    {"ml", operator_form::infix, 2, "*", "", always},
    {"mL", operator_form::infix, 2, "*=", "", always},
    {"mm", operator_form::step, 1, "--", "", always},
    {"na", operator_form::creation, 2, "new[] ", "", always},
    {"ne", operator_form::infix, 2, "!=", "", always},
    {"ng", operator_form::prefix, 1, "-", "", always},
    {"nt", operator_form::prefix, 1, "!", "", always},
    {"nw", operator_form::creation, 2, "new ", "", always},
    {"nx", operator_form::enclosing, 1, "noexcept(", ")", always},
    {"oo", operator_form::infix, 2, "||", "", always},
    {"or", operator_form::infix, 2, "|", "", always},
    {"oR", operator_form::infix, 2, "|=", "", always},
    {"pl", operator_form::infix, 2, "+", "", always},
    {"pL", operator_form::infix, 2, "+=", "", always},
    {"pm", operator_form::infix, 2, "->*", "", always},
    {"pp", operator_form::step, 1, "++", "", always},
    {"ps", operator_form::prefix, 1, "+", "", always},
    {"pt", operator_form::member, 2, "->", "", always},
    {"qu", operator_form::conditional, 3, "?", "", always},
    {"rc", operator_form::named_cast, 1, "reinterpret_cast", "", always},
    {"rm", operator_form::infix, 2, "%", "", always},
    {"rM", operator_form::infix, 2, "%=", "", always},
    {"rs", operator_form::greater, 2, ">>", "", always},
    {"rS", operator_form::greater, 2, ">>=", "", always},
    {"sc", operator_form::named_cast, 1, "static_cast", "", always},
    {"ss", operator_form::infix, 2, "<=>", "", extended},
    {"st", operator_form::enclosing_type, 0, "sizeof(", ")", always},
    {"sz", operator_form::enclosing, 1, "sizeof(", ")", always},
    {"te", operator_form::enclosing, 1, "typeid(", ")", always},
    {"ti", operator_form::enclosing_type, 0, "typeid(", ")", always},
    {"tr", operator_form::word, 0, "throw", "", always},
    {"tw", operator_form::prefix, 1, "throw ", "", always},
};
static constexpr code_index operator_index{operators};

// Vendor operators, tried in this order and matched by their whole spelling.
static constexpr operator_row vendor_operators[] = {
    {"v18alignofe", operator_form::enclosing, 1, "__alignof__(", ")", always},
    {"v17alignof", operator_form::enclosing_type, 0, "__alignof__(", ")", always},
    {"v19__uuidofe", operator_form::enclosing, 1, "__uuidof(", ")", always},
    {"v18__uuidof", operator_form::enclosing_type, 0, "__uuidof(", ")", always},
    {"v17typeide", operator_form::enclosing, 1, "typeid(", ")", always},
    {"v16typeid", operator_form::enclosing_type, 0, "typeid(", ")", always},
    {"v19clitypeid", operator_form::type_of, 0, "::typeid", "", always},
    {"v23min", operator_form::infix, 2, "<?", "", always},
    {"v23max", operator_form::greater, 2, ">?", "", always},
    {"v18__real__", operator_form::enclosing, 1, "__real(", ")", always},
    {"v18__imag__", operator_form::enclosing, 1, "__imag(", ")", always},
    {"v19clihandle", operator_form::prefix, 1, "%", "", always},
    {"v112clisafe_cast", operator_form::named_cast, 1, "safe_cast", "", always},
};

namespace {

// A vendor operator of as many operands as the digit behind the "v" says.
struct counted_operator_row {
    std::string_view code;  // behind the digit
    std::string_view text;
    std::size_t tail_length;  // the letters behind the code that end the text
};

}  // namespace

static constexpr counted_operator_row counted_operators[] = {
    {"9builtin", "builtin-operation-", 2},
    {"12clisubscript", "subscript", 0},
};

static found_operator found(const operator_row& row) {
    return {row.text, {}, row.closer, row.form, row.arity, row.code.size()};
}

static found_operator vendor_operator(const char* at, const eabi_decode_state* state) {
    const std::string_view rest(at, static_cast<std::size_t>(state->input_end - at));
    for (const operator_row& row : vendor_operators) {
        if (is_open(row.mode, state) && rest.starts_with(row.code)) {
            return found(row);
        }
    }
    if (rest.size() < 2 || !is_digit(rest[1])) {
        return {};
    }
    const auto arity = static_cast<unsigned>(rest[1] - '0');
    const std::string_view name = rest.substr(2);
    for (const counted_operator_row& row : counted_operators) {
        const std::size_t length = row.code.size() + row.tail_length;
        if (name.starts_with(row.code) && name.size() >= length) {
            return {row.text, name.substr(row.code.size(), row.tail_length),
                    {},       operator_form::operation,
                    arity,    2 + length};
        }
    }
    return {};
}

// "li" [ "n" ] length identifier: two quotes and the identifier.
static found_operator literal_operator(const char* at, const operator_row& row,
                                       eabi_decode_state* state) {
    signed_number length;
    const char* const identifier = read_signed_number(at + 2, &length, state);
    if (length.negative || length.size == 0 ||
        length.size > static_cast<std::uint64_t>(state->input_end - identifier)) {
        report_bad_name(state);
        return {};
    }
    found_operator whole = found(row);
    whole.tail = {identifier, length.size};
    whole.code_length = static_cast<std::size_t>(identifier - at) + length.size;
    return whole;
}

}  // namespace scheme1

using namespace scheme1;

found_operator eabi_operator_info(const char* at, eabi_decode_state* state) {
    if (*at == '\0') {
        report_bad_name(state);
        return {};
    }
    if (*at == 'v') {
        return vendor_operator(at, state);
    }
    const unsigned index = operator_index[at];
    if (index == 0 || !is_open(operators[index - 1].mode, state)) {
        return {};
    }
    const operator_row& row = operators[index - 1];
    return row.form == operator_form::literal ? literal_operator(at, row, state) : found(row);
}
