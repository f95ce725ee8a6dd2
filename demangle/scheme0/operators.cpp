// The operator codes of scheme 0.
#include "demangle/scheme0/operators.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace scheme0 {

// In the order of trial: a code of three characters wins over the one of two that it
// begins with.
static constexpr operator_code operator_codes[] = {
    {"apl", "+=", operator_form::infix},
    {"ami", "-=", operator_form::infix},
    {"amu", "*=", operator_form::infix},
    {"adv", "/=", operator_form::infix},
    {"amd", "%=", operator_form::infix},
    {"aer", "^=", operator_form::infix},
    {"aad", "&=", operator_form::infix},
    {"aor", "|=", operator_form::infix},
    {"ars", ">>=", operator_form::greater},
    {"als", "<<=", operator_form::infix},
    {"ppe", "++", operator_form::postfix},
    {"mme", "--", operator_form::postfix},
    {"nwa", "new[]", operator_form::creation},
    {"dla", "delete[]", operator_form::deletion},
    {"nw", "new", operator_form::creation},
    {"gc", "gcnew", operator_form::creation},
    {"dl", "delete", operator_form::deletion},
    {"pl", "+", operator_form::infix},
    {"mi", "-", operator_form::infix},
    {"ml", "*", operator_form::infix},
    {"dv", "/", operator_form::infix},
    {"md", "%", operator_form::infix},
    {"er", "^", operator_form::infix},
    {"ad", "&", operator_form::infix},
    {"or", "|", operator_form::infix},
    {"co", "~", operator_form::prefix},
    {"nt", "!", operator_form::prefix},
    {"as", "=", operator_form::infix},
    {"lt", "<", operator_form::infix},
    {"gt", ">", operator_form::greater},
    {"ls", "<<", operator_form::infix},
    {"rs", ">>", operator_form::greater},
    {"eq", "==", operator_form::infix},
    {"ne", "!=", operator_form::infix},
    {"le", "<=", operator_form::infix},
    {"ge", ">=", operator_form::greater},
    {"aa", "&&", operator_form::infix},
    {"oo", "||", operator_form::infix},
    {"pp", "++", operator_form::prefix},
    {"mm", "--", operator_form::prefix},
    {"cm", ",", operator_form::comma},
    {"rm", "->*", operator_form::infix},
    {"rf", "->", operator_form::member},
    {"cl", "()", operator_form::call},
    {"cp", "()", operator_form::second_call},
    {"vc", "[]", operator_form::subscript},
    {"qs", "?", operator_form::conditional},
    {"mn", "<?", operator_form::infix},
    {"mx", ">?", operator_form::greater},
    {"ds", ".*", operator_form::member_pointer},
    {"dt", ".", operator_form::member},
    {"ps", "+", operator_form::prefix},
    {"ng", "-", operator_form::prefix},
    {"de", "*", operator_form::prefix},
    {"ao", "&", operator_form::prefix},
    {"rl", "__real(", operator_form::enclosing},
    {"im", "__imag(", operator_form::enclosing},
    {"dc", "dynamic_cast<", operator_form::named_cast},
    {"sc", "static_cast<", operator_form::named_cast},
    {"cc", "const_cast<", operator_form::named_cast},
    {"rc", "reinterpret_cast<", operator_form::named_cast},
    {"sf", "safe_cast<", operator_form::named_cast},
    {"tw", "throw ", operator_form::prefix},
    {"sz", "sizeof(", operator_form::enclosing},
    {"cs", "cast", operator_form::cast},
    {"af", "__alignof__(", operator_form::enclosing},
    {"uu", "__uuidof(", operator_form::enclosing},
    {"ty", "typeid(", operator_form::enclosing},
    {"ct", "::typeid", operator_form::type_of},
    {"bi", "builtin-operation", operator_form::function},
    {"sp", "...", operator_form::expansion},
    {"sk", "sizeof...(", operator_form::enclosing},
    {"ht", "%", operator_form::prefix},
    {"sb", "subscript", operator_form::function},
    {"il", "{", operator_form::braces},
    {"tl", "{", operator_form::typed_braces},
    {"nx", "noexcept(", operator_form::enclosing},
    {"li", "\"\"", operator_form::literal},
    {"aw", "co_await", operator_form::prefix_word},
};

}  // namespace scheme0

using namespace scheme0;

const operator_code* lookup_operator_code(const char* at, const decode_state* state, int* length) {
    const char letters[3] = {peek_char(at, state), peek_char(at + 1, state),
                             peek_char(at + 2, state)};
    *length = 2;
    if (letters[0] == '\0' || letters[1] == '\0') {
        return nullptr;
    }
    const auto* const found = std::find_if(
        std::begin(operator_codes), std::end(operator_codes), [&](const operator_code& row) {
            return row.code[0] == letters[0] && row.code[1] == letters[1] &&
                   (row.code[2] == '\0' || row.code[2] == letters[2]);
        });
    if (found == std::end(operator_codes)) {
        return nullptr;
    }
    *length = static_cast<int>(std::strlen(found->code));
    return found;
}
