// Random scheme-0 literals, operands and expressions. Called by the drawing of types and
// of template arguments.
#include <algorithm>
#include <iterator>
#include <vector>

#include "tests/demangle/scheme0/draw.h"

namespace scheme0 {
namespace {

constexpr Coded binary_rows[] = {
    {"apl", "+="}, {"ami", "-="}, {"amu", "*="},  {"adv", "/="},  {"amd", "%="}, {"aer", "^="},
    {"aad", "&="}, {"aor", "|="}, {"als", "<<="}, {"ars", ">>="}, {"as", "="},   {"pl", "+"},
    {"mi", "-"},   {"ml", "*"},   {"dv", "/"},    {"md", "%"},    {"er", "^"},   {"ad", "&"},
    {"or", "|"},   {"lt", "<"},   {"gt", ">"},    {"ls", "<<"},   {"rs", ">>"},  {"eq", "=="},
    {"ne", "!="},  {"le", "<="},  {"ge", ">="},   {"aa", "&&"},   {"oo", "||"},  {"mn", "<?"},
    {"mx", ">?"},  {"rm", "->*"},
};
constexpr Coded member_rows[] = {{"rf", "->"}, {"dt", "."}};
constexpr Coded prefix_rows[] = {
    {"nt", "!"}, {"co", "~"},  {"ng", "-"},  {"ps", "+"},      {"de", "*"},         {"ao", "&"},
    {"ht", "%"}, {"pp", "++"}, {"mm", "--"}, {"tw", "throw "}, {"aw", "co_await "},
};
constexpr Coded cast_rows[] = {
    {"dc", "dynamic_cast<"},     {"sc", "static_cast<"}, {"cc", "const_cast<"},
    {"rc", "reinterpret_cast<"}, {"sf", "safe_cast<"},
};
constexpr Coded enclosing_rows[] = {
    {"rl", "__real("},   {"im", "__imag("}, {"sz", "sizeof("},    {"af", "__alignof__("},
    {"uu", "__uuidof("}, {"ty", "typeid("}, {"sk", "sizeof...("}, {"nx", "noexcept("},
};
constexpr Coded suffixed_rows[] = {
    {"i", ""}, {"Ui", "U"}, {"l", "L"}, {"Ul", "UL"}, {"L", "LL"}, {"UL", "ULL"},
};
constexpr Coded cast_literal_rows[] = {
    {"c", "char"},           {"w", "wchar_t"},
    {"g", "char16_t"},       {"k", "char32_t"},
    {"s", "short"},          {"Us", "unsigned short"},
    {"Sc", "signed char"},   {"Uc", "unsigned char"},
    {"m1", "__int8"},        {"m5", "__int40_t"},
    {"m16", "__int128"},     {"Um8", "unsigned __int64"},
    {"5Color", "Color"},     {"Q2_1N5Color", "N::Color"},
    {"PCc", "const char *"}, {"Pv", "void *"},
    {"Ci", "const int"},
};
constexpr Coded floating_rows[] = {
    {"f", "float"}, {"d", "double"}, {"r", "long double"}, {"xd", "_Complex double"}};

bool holds_greater(std::string_view text) {
    return text.find('>') != std::string_view::npos;
}

// The payload with its length, in one of the forms that its size allows.
std::string literal_code(Drawing& drawing, const std::string& payload) {
    const std::string size = std::to_string(payload.size());
    const unsigned form = draw(drawing, 100);
    if (form < 15 || payload.size() > 99) {
        return "_" + std::string(form < 4 ? "0" : "") + size + "_" + payload;
    }
    if (form < 30 || payload.size() > 9) {
        return (payload.size() < 10 ? "0" : "") + size + "_" + payload;
    }
    return (payload.size() == 1 ? std::string(1, mark::short_literal) : size) + payload;
}

std::string draw_digits(Drawing& drawing, unsigned most) {
    std::string digits(1, static_cast<char>('1' + draw(drawing, 9)));
    for (unsigned count = draw(drawing, most); count != 0; --count) {
        digits += static_cast<char>('0' + draw(drawing, 10));
    }
    return digits;
}

std::string printed(std::string payload) {
    std::replace(payload.begin(), payload.end(), 'd', '.');
    std::replace(payload.begin(), payload.end(), 'n', '-');
    std::replace(payload.begin(), payload.end(), 'p', '+');
    return payload;
}

std::string draw_integer(Drawing& drawing) {
    const unsigned most = chance(drawing, 2) ? 130 : chance(drawing, 70) ? 2 : 19;
    return (chance(drawing, 20) ? "n" : "") + draw_digits(drawing, most);
}

Expression draw_literal(Drawing& drawing) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 50) {
        const Coded& row = draw_row(drawing, suffixed_rows);
        const std::string payload = draw_integer(drawing);
        return {row.code + std::string("L") + literal_code(drawing, payload),
                printed(payload) + row.text};
    }
    if (kind < 62) {
        static constexpr Coded rows[] = {
            {"0", "false"}, {"1", "true"}, {"000", "false"}, {"00n", "true"}, {"7", "true"}};
        const Coded& row = draw_row(drawing, rows);
        return {"bL" + literal_code(drawing, row.code), row.text};
    }
    if (kind < 68) {
        const std::string payload = chance(drawing, 70) ? "0" : draw_integer(drawing);
        return {(chance(drawing, 50) ? "nL" : "jL") + literal_code(drawing, payload), "nullptr"};
    }
    if (kind < 76) {
        const Coded& row = draw_row(drawing, floating_rows);
        std::string payload = (chance(drawing, 20) ? "n" : "") + draw_digits(drawing, 3) + "d" +
                              draw_digits(drawing, 8);
        payload += chance(drawing, 20) ? "ep0" + draw_digits(drawing, 1) : "";
        return {row.code + std::string("L") + literal_code(drawing, payload),
                "(" + std::string(row.text) + ")" + printed(payload)};
    }
    const std::string payload = draw_integer(drawing);
    if (kind < 82) {
        std::string text;
        const std::string code = draw_template_param(drawing, "TUV", text);
        return {code + "L" + literal_code(drawing, payload), "(" + text + ")" + printed(payload)};
    }
    const Coded& row = draw_row(drawing, cast_literal_rows);
    return {row.code + std::string("L") + literal_code(drawing, payload),
            "(" + std::string(row.text) + ")" + printed(payload)};
}

Expression draw_parameter_value(Drawing& drawing) {
    Expression value;
    value.code = draw_template_param(drawing, "NOP", value.text) + mark::value;
    return value;
}

// "I", qualifiers, the number and the levels.
Expression draw_function_parameter(Drawing& drawing) {
    static constexpr const char* qualifiers[] = {"", "", "", "C", "V", "Dr", "CV", "E", "O", "DE"};
    const std::string number = std::to_string(draw(drawing, 14));
    const unsigned level = chance(drawing, 60) ? 0 : draw(drawing, 4);
    Expression value;
    value.code = "I" + std::string(draw_row(drawing, qualifiers)) + number;
    if (level == 0 && chance(drawing, 80)) {
        value.code += "I";
    } else {
        value.code += "_" + std::to_string(level);
        value.code += chance(drawing, 60) ? 'I' : mark::open_reference;
    }
    value.text = number == "0" ? "this" : "param#" + number;
    if (number != "0" && level != 0) {
        value.text += "[up " + std::to_string(level) + (level == 1 ? " level]" : " levels]");
    }
    return value;
}

// "__", a name, "__"; template parameters inside count from one level up.
Expression draw_name(Drawing& drawing, int depth) {
    Expression value;
    if (chance(drawing, 12)) {
        const Coded* row = &operator_codes[draw(drawing, operator_code_count)];
        while (!names_function(*row) || holds_greater(row->text)) {
            row = &operator_codes[draw(drawing, operator_code_count)];
        }
        value.code = operator_name_code(drawing, *row, value.text);
    } else {
        value.text = value.code = draw_identifier(drawing);
    }
    if (depth > 0 && chance(drawing, 15)) {
        ++drawing.nesting;
        const Arguments list = draw_arguments(drawing, depth - 1);
        --drawing.nesting;
        value.code += list.code;
        value.text = with_list(value.text, list);
    }
    value.code = "__" + value.code + mark::name_end;
    return value;
}

struct List {
    std::string code;
    std::string text;
};

List draw_list(Drawing& drawing, int depth, unsigned least) {
    List list;
    std::vector<std::string> items;
    for (unsigned count = least + draw(drawing, 3); count != 0; --count) {
        const Expression item = draw_operand(drawing, depth);
        list.code += item.code;
        items.push_back(item.text);
    }
    list.text = joined(items);
    return list;
}

std::string ended(std::string code) {
    return std::move(code) + mark::open_end;
}

Expression draw_with_list(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 25) {
        const Expression callee = draw_operand(drawing, depth);
        const List list = draw_list(drawing, depth, 0);
        return {ended("Ocl" + callee.code + list.code),
                operand_text(callee) + "(" + list.text + ")"};
    }
    if (kind < 40) {
        const Expression callee = draw_operand(drawing, depth);
        const List list = draw_list(drawing, depth, 0);
        return {ended("Ocp" + callee.code + list.code),
                "(" + operand_text(callee) + ")(" + list.text + ")"};
    }
    if (kind < 50) {
        const List list = draw_list(drawing, depth, 1);
        return {ended("Obi" + list.code), "builtin-operation(" + list.text + ")"};
    }
    if (kind < 60) {
        const List list = draw_list(drawing, depth, 1);
        return {ended("Osb" + list.code), "subscript(" + list.text + ")"};
    }
    if (kind < 80) {
        static constexpr Coded rows[] = {{"nw", "new "}, {"nwa", "new[] "}, {"gc", "gcnew "}};
        const Coded& row = draw_row(drawing, rows);
        const Type type = draw_object(drawing, depth);
        const List list = draw_list(drawing, depth, 0);
        return {ended("O" + std::string(row.code) + "T" + type.code + list.code),
                row.text + text_of(type) + "(" + list.text + ")", true};
    }
    // Braces are no parentheses: a ">" in them would count as outside.
    const List list = draw_list(drawing, depth, 0);
    if (holds_greater(list.text)) {
        return draw_literal(drawing);
    }
    if (kind < 90) {
        return {ended("Oil" + list.code), "{" + list.text + "}"};
    }
    const Type type = draw_object(drawing, depth);
    return {ended("OtlT" + type.code + list.code), text_of(type) + "{" + list.text + "}"};
}

Expression draw_enclosed(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 45) {
        const Coded& row = draw_row(drawing, enclosing_rows);
        if (chance(drawing, 50)) {
            const Type type = draw_type(drawing, depth);
            return {"O" + std::string(row.code) + "T" + type.code + "O",
                    row.text + text_of(type) + ")"};
        }
        const Expression operand = draw_operand(drawing, depth);
        return {"O" + std::string(row.code) + operand.code + "O", row.text + operand.text + ")"};
    }
    const Type type = draw_object(drawing, depth);
    if (kind < 55) {
        return {"OctT" + type.code + "O", text_of(type) + "::typeid"};
    }
    const Expression operand = draw_operand(drawing, depth);
    if (kind < 70) {
        return {"OcsT" + type.code + operand.code + "O",
                "(" + text_of(type) + ")" + operand_text(operand)};
    }
    const Coded& row = draw_row(drawing, cast_rows);
    return {"O" + std::string(row.code) + "T" + type.code + operand.code + "O",
            row.text + text_of(type) + ">(" + operand.text + ")"};
}

// "O", the code and what follows. Together they must not give a longer code, as "ao" and
// a long double give "aor".
std::string operator_letters(Drawing& drawing, const Coded& row, const std::string& operands) {
    const std::string letters = row.code + operands;
    const std::string_view code = row.code;
    for (unsigned other = 0; other != operator_code_count; ++other) {
        const std::string_view longer = operator_codes[other].code;
        if (longer.size() > code.size() && letters.starts_with(longer)) {
            drawing.clash = true;
        }
    }
    return "O" + letters;
}

Expression draw_operation(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    const Expression first = draw_operand(drawing, depth);
    const std::string left = operand_text(first);
    if (kind < 18) {
        const Coded& row = draw_row(drawing, prefix_rows);
        return {operator_letters(drawing, row, first.code) + "O", row.text + left, true};
    }
    if (kind < 23) {
        const bool up = chance(drawing, 50);
        return {(up ? "Oppe" : "Omme") + first.code + "O", left + (up ? "++" : "--"), true};
    }
    if (kind < 27) {
        const bool all = chance(drawing, 50);
        return {(all ? "Odla" : "Odl") + first.code + "O", (all ? "delete[] " : "delete ") + left,
                true};
    }
    if (kind < 30) {
        return {"Osp" + first.code + "O", left + "...", true};
    }
    const Expression second = draw_operand(drawing, depth);
    const std::string right = operand_text(second);
    if (kind < 36) {
        const Expression third = draw_operand(drawing, depth);
        return {"Oqs" + first.code + second.code + third.code + "O",
                left + " ? " + right + " : " + operand_text(third), true};
    }
    const std::string operands = first.code + second.code + "O";
    if (kind < 41) {
        const bool comma = chance(drawing, 60);
        return {(comma ? "Ocm" : "Ods") + operands, left + (comma ? ", " : ".*") + right, true};
    }
    if (kind < 48) {
        const Coded& row = draw_row(drawing, member_rows);
        return {"O" + std::string(row.code) + operands, left + row.text + right};
    }
    if (kind < 53 && !holds_greater(second.text)) {
        return {"Ovc" + operands, left + "[" + second.text + "]"};
    }
    const Coded& row = draw_row(drawing, binary_rows);
    const std::string_view sign = row.text;
    return {operator_letters(drawing, row, operands), left + " " + row.text + " " + right, true,
            holds_greater(sign) && !sign.starts_with("->")};
}

}  // namespace

Expression draw_expression(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (depth <= 0 || kind < 35) {
        return chance(drawing, 45) ? draw_parameter_value(drawing) : draw_literal(drawing);
    }
    return kind < 70   ? draw_operation(drawing, depth - 1)
           : kind < 85 ? draw_enclosed(drawing, depth - 1)
                       : draw_with_list(drawing, depth - 1);
}

Expression draw_operand(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    return kind < 12   ? draw_function_parameter(drawing)
           : kind < 28 ? draw_name(drawing, depth)
                       : draw_expression(drawing, depth);
}

}  // namespace scheme0
