// Random types and template arguments. Called by the drawing of names, expressions
// and declarations.
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "tests/demangle/scheme1/draw.h"

namespace scheme1 {
namespace {

struct Coded {
    const char* code;
    const char* text;
};

constexpr Coded builtin_rows[] = {
    {"a", "signed char"},
    {"b", "bool"},
    {"c", "char"},
    {"d", "double"},
    {"e", "long double"},
    {"f", "float"},
    {"h", "unsigned char"},
    {"i", "int"},
    {"j", "unsigned int"},
    {"l", "long"},
    {"m", "unsigned long"},
    {"n", "__int128"},
    {"o", "unsigned __int128"},
    {"s", "short"},
    {"t", "unsigned short"},
    {"w", "wchar_t"},
    {"x", "long long"},
    {"y", "unsigned long long"},
    {"Da", "auto"},
    {"Dc", "decltype(auto)"},
    {"Di", "char32_t"},
    {"Ds", "char16_t"},
    {"Dn", "std::nullptr_t"},
    {"Du", "char8_t"},
    {"DF16_", "_Float16"},
    {"DF64_", "_Float64"},
    {"DF32x", "_Float32x"},
    {"DF16b", "std::bfloat16_t"},
    {"DB8_", "_BitInt(8)"},
    {"DU32_", "unsigned _BitInt(32)"},
};

constexpr Coded extended_rows[] = {
    {"DAs", "short _Accum"}, {"DRj", "unsigned _Fract"}, {"DSDRi", "_Sat _Fract"},
    {"g", "__float128"},     {"Dd", "_Decimal64"},       {"De", "_Decimal128"},
    {"Df", "_Decimal32"},    {"Dh", "_Float16"},
};

Tree draw_builtin(Drawing& drawing) {
    if (drawing.extended && chance(drawing, 20)) {
        const Coded& row = extended_rows[draw(drawing, std::size(extended_rows))];
        return builtin(row.code, row.text);
    }
    if (chance(drawing, 2)) {
        drawing.house_form = true;
        return builtin("DN", "__nullptr");
    }
    // The first rows are what programs are made of.
    const auto rows = static_cast<unsigned>(chance(drawing, 70) ? 18 : std::size(builtin_rows));
    const Coded& row = builtin_rows[draw(drawing, rows)];
    return builtin(row.code, row.text);
}

std::string draw_qualifiers(Drawing& drawing) {
    static constexpr std::array letters = {"K", "K", "K", "K", "V", "VK", "KV", "r", "rVK", "rK"};
    return letters[draw(drawing, letters.size())];
}

Tree draw_function(Drawing& drawing, int depth, bool of_member);

// Vendor qualifiers go on what has no mark yet; letters behind them belong to them, and
// letters in front are qualifiers of the whole.
Tree draw_vendor_qualified(Drawing& drawing, int depth) {
    if (depth > 1 && chance(drawing, 15)) {
        const Tree function = draw_function(drawing, depth - 1, false);
        return chance(drawing, 50) ? prefixed("U13block_pointer", "block_pointer ", function)
                                   : pointer("P", prefixed_whole("U6ms_abi", "ms_abi ", function));
    }
    Tree type = draw_builtin(drawing);
    if (chance(drawing, 50)) {
        type = type_of(draw_class(drawing, depth - 1));
    }
    if (depth > 0 && chance(drawing, 15)) {
        type = draw_vendor_qualified(drawing, 0);
        return qualified(chance(drawing, 50) ? "K" : "VK", type);
    }
    std::string letters;
    std::string words;
    for (unsigned count = 1 + draw(drawing, 2); count != 0; --count) {
        static constexpr std::array spaces = {"AS1", "AS3", "ptrauth"};
        const std::string space = spaces[draw(drawing, spaces.size())];
        letters += 'U';
        letters += source_name(space);
        words += space + " ";
    }
    if (chance(drawing, 40)) {
        const std::string qualifiers = chance(drawing, 50) ? "K" : "VK";
        letters += qualifiers;
        words += qualifier_text(qualifiers) + " ";
    }
    return prefixed(letters, words, type);
}

Tree draw_function(Drawing& drawing, int depth, bool of_member) {
    Signature signature;
    signature.result = chance(drawing, 40) ? builtin("v", "void") : draw_object(drawing, depth - 1);
    signature.parameters = draw_parameters(drawing, depth - 1);
    signature.variadic = chance(drawing, 8);
    if (of_member) {
        signature.qualifiers = chance(drawing, 50) ? "K" : chance(drawing, 10) ? "VK" : "";
        signature.reference = chance(drawing, 10) ? 'R' : chance(drawing, 10) ? 'O' : ' ';
    }
    if (chance(drawing, 10)) {
        signature.exception = fixed({"Do"}, " noexcept");
    } else if (chance(drawing, 5)) {
        const Tree condition = draw_expression(drawing, depth - 1);
        signature.exception =
            fixed({"DO", condition, "E"}, " noexcept(" + text_of(condition) + ")");
    } else if (chance(drawing, 5)) {
        const Tree thrown = draw_object(drawing, depth - 1);
        signature.exception = fixed({"Dw", thrown, "E"}, " throw(" + text_of(thrown) + ")");
    }
    signature.transaction_safe = chance(drawing, 3);
    signature.extern_c = chance(drawing, 3);
    return function_type(signature);
}

Tree draw_array(Drawing& drawing, int depth) {
    Tree element = draw_object(drawing, depth - 1);
    if (chance(drawing, 20)) {
        element = array_of("2", "2", element);
    }
    if (chance(drawing, 10)) {
        return array_of("", "", element);
    }
    if (chance(drawing, 15)) {
        // A bound that begins with a digit is a number; brackets are no parentheses, so a
        // ">" in them would count as outside.
        const Tree bound = draw_expression(drawing, depth - 1);
        if (bound->plain.find_first_of("0123456789") != 0 && !bound->greater) {
            return array_of(bound, element);
        }
    }
    const std::string bound = std::to_string(draw(drawing, 1000));
    const bool qualified = element->plain.find_first_of("KVr") == 0;
    if (element->shape == Shape::name && !qualified && chance(drawing, 10)) {
        return qualified_array("K", bound, element);
    }
    return array_of(bound, bound, element);
}

Tree draw_pointer(Drawing& drawing, int depth) {
    if (chance(drawing, 15)) {
        return pointer("P", draw_function(drawing, depth, false));
    }
    if (chance(drawing, 8)) {
        return pointer("P", draw_array(drawing, depth));
    }
    if (chance(drawing, 10)) {
        return pointer("P", builtin("v", "void"));
    }
    return pointer("P", draw_object(drawing, depth - 1));
}

Tree draw_member_pointer(Drawing& drawing, int depth) {
    const Tree owner = type_of(draw_class(drawing, depth - 1));
    if (chance(drawing, 50)) {
        return member_pointer(owner, draw_function(drawing, depth, true));
    }
    return member_pointer(
        owner, chance(drawing, 10) ? draw_array(drawing, depth) : draw_object(drawing, depth - 1));
}

Tree draw_vector(Drawing& drawing, int depth) {
    const Tree element = builtin("f", "float");
    if (chance(drawing, 30)) {
        const Tree count = draw_expression(drawing, depth - 1);
        return entered({"Dv_", count, "_", element}, "float __vector(" + text_of(count) + ")");
    }
    const std::string count = std::to_string(1U << (1 + draw(drawing, 5)));
    return entered({"Dv" + count + "_", element}, "float __vector(" + count + ")");
}

Tree draw_vendor_type(Drawing& drawing, int depth) {
    if (chance(drawing, 60)) {
        return entered({"u", source_name("__vendor")}, "__vendor");
    }
    const Tree list = arguments({draw_object(drawing, depth - 1)});
    return entered({"u", source_name("__matrix"), list}, "__matrix<" + text_of(list) + ">");
}

Tree draw_new_object(Drawing& drawing, int depth) {
    if (depth <= 0) {
        return chance(drawing, 20) ? draw_parameter_type(drawing) : draw_builtin(drawing);
    }
    const unsigned kind = draw(drawing, 100);
    if (kind < 22) {
        return draw_builtin(drawing);
    }
    if (kind < 46) {
        return type_of(draw_class(drawing, depth - 1));
    }
    if (kind < 66) {
        return draw_pointer(drawing, depth);
    }
    if (kind < 76) {
        // Qualifiers go on a type that has none; a name or a pointer will do.
        const Tree inner = chance(drawing, 50)   ? type_of(draw_class(drawing, depth - 1))
                           : chance(drawing, 50) ? draw_pointer(drawing, depth)
                                                 : draw_builtin(drawing);
        return qualified(draw_qualifiers(drawing), inner);
    }
    if (kind < 82) {
        return draw_parameter_type(drawing);
    }
    if (kind < 85) {
        const Name name = of_parameter(draw_parameter_type(drawing));
        return type_of(with_arguments(name, draw_arguments(drawing, depth - 1)));
    }
    if (kind < 90) {
        return draw_member_pointer(drawing, depth);
    }
    if (kind < 92) {
        return prefixed("C", "_Complex ", builtin("f", "float"));
    }
    if (kind < 94) {
        return draw_vector(drawing, depth);
    }
    if (kind < 95) {
        return draw_vendor_type(drawing, depth);
    }
    if (kind < 97) {
        return draw_vendor_qualified(drawing, depth);
    }
    if (kind < 98) {
        static constexpr Coded elaborated[] = {
            {"Ts", "struct "}, {"Tu", "union "}, {"Te", "enum "}};
        const Coded& row = elaborated[draw(drawing, std::size(elaborated))];
        const Name name = member_name(of_parameter(draw_parameter_type(drawing)),
                                      {fixed({"5inner"}, "inner"), "inner"});
        return entered({row.code, entity_of(name, "")}, row.text + name.text);
    }
    const Tree expression = draw_expression(drawing, depth - 1);
    return entered({chance(drawing, 50) ? "Dt" : "DT", expression, "E"},
                   "decltype(" + text_of(expression) + ")");
}

std::string cast_text(std::string_view type, std::string_view value) {
    std::string text = "(";
    text += type;
    text += ')';
    text += value;
    return text;
}

Tree draw_float_literal(Drawing& drawing) {
    struct Row {
        const char* letters;
        const char* text;
    };
    static constexpr Row rows[] = {
        {"Lf3fc00000E", "(float)1.5"},
        {"Lf00000000E", "(float)0"},
        {"Lfbf800000E", "(float)-1"},
        {"Lf42c80000E", "(float)1e+02"},
        {"Lf3dcccccdE", "(float)0.1"},
        {"Lf40490fdbE", "(float)3.1415927"},
        {"Ld3ff8000000000000E", "(double)1.5"},
        {"Ld3ff0000000000000E", "(double)1"},
        {"Ldbfd3333333333333E", "(double)-0.3"},
        {"Ld4059000000000000E", "(double)1e+02"},
        {"Ld400921fb54442d18E", "(double)3.141592653589793"},
        {"Ld7fefffffffffffffE", "(double)1.7976931348623157e+308"},
        {"Ld0000000000000001E", "(double)5e-324"},
        {"Le3fff8000000000000000E", "(long double)1"},
        {"Lec000c000000000000000E", "(long double)-3"},
    };
    // The long double images are the 80-bit format's.
    const std::size_t known = std::numeric_limits<long double>::digits == 64 ? 0 : 2;
    const Row& row = rows[draw(drawing, static_cast<unsigned>(std::size(rows) - known))];
    return bare({row.letters}, row.text);
}

}  // namespace

Tree draw_literal(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    const std::string digits = std::to_string(draw(drawing, 300));
    const bool negative = chance(drawing, 15);
    const std::string letters = (negative ? "n" : "") + digits;
    const std::string value = (negative ? "-" : "") + digits;
    if (kind < 30) {
        return bare({"Li", letters, "E"}, value);
    }
    if (kind < 50) {
        static constexpr Coded suffixed[] = {
            {"j", "U"}, {"l", "L"}, {"m", "UL"}, {"x", "LL"}, {"y", "ULL"}};
        const Coded& row = suffixed[draw(drawing, std::size(suffixed))];
        return bare({"L", row.code, letters, "E"}, value + row.text);
    }
    if (kind < 60) {
        const unsigned truth = draw(drawing, 3);
        return bare({"Lb", std::to_string(truth), "E"}, truth == 0   ? "false"
                                                        : truth == 1 ? "true"
                                                                     : "(bool)2");
    }
    if (kind < 70) {
        static constexpr Coded cast[] = {{"a", "signed char"},    {"c", "char"},
                                         {"h", "unsigned char"},  {"s", "short"},
                                         {"t", "unsigned short"}, {"w", "wchar_t"},
                                         {"n", "__int128"},       {"o", "unsigned __int128"},
                                         {"Ds", "char16_t"},      {"Di", "char32_t"}};
        const Coded& row = cast[draw(drawing, std::size(cast))];
        return bare({"L", row.code, letters, "E"}, cast_text(row.text, value));
    }
    if (kind < 78) {
        const Tree type = type_of(draw_class(drawing, depth > 0 ? 1 : 0));
        return bare({"L", type, letters, "E"}, cast_text(text_of(type), value));
    }
    if (kind < 82) {
        return bare({chance(drawing, 50) ? "LDnE" : "LDn0E"}, "nullptr");
    }
    if (kind < 85) {
        const Tree type = pointer("P", draw_object(drawing, depth - 1));
        return bare({"L", type, "0E"}, cast_text(text_of(type), "0"));
    }
    if (kind < 88) {
        const Tree type = array_of(digits, digits, qualified("K", builtin("c", "char")));
        return bare({"L", type, "E"}, cast_text(text_of(type), "\"...\""));
    }
    if (kind < 93) {
        return draw_float_literal(drawing);
    }
    if (kind < 94) {
        const Tree type = prefixed("C", "_Complex ", builtin("f", "float"));
        return bare({"L", type, "3f800000_c0000000E"}, "(_Complex float)(1, -2)");
    }
    if (depth <= 0) {
        return bare({"Li0E"}, "0");
    }
    const bool in_lambda = drawing.in_lambda;
    drawing.in_lambda = false;
    std::vector<Tree> objects = std::exchange(drawing.objects, {});
    std::vector<Name> classes = std::exchange(drawing.classes, {});
    const Encoding entity = draw_encoding(drawing, depth - 1);
    drawing.in_lambda = in_lambda;
    drawing.objects = std::move(objects);
    drawing.classes = std::move(classes);
    return bare({"L_Z", entity.tree, "E"}, entity.decorated);
}

unsigned draw(Drawing& drawing, unsigned limit) {
    return static_cast<unsigned>(drawing.engine() % limit);
}

bool chance(Drawing& drawing, unsigned percent) {
    return draw(drawing, 100) < percent;
}

Tree draw_parameter_type(Drawing& drawing) {
    drawing.template_params = true;
    return template_param(draw(drawing, 4), drawing.in_lambda);
}

Tree draw_object(Drawing& drawing, int depth) {
    if (!drawing.objects.empty() && chance(drawing, 35)) {
        return drawing.objects[draw(drawing, static_cast<unsigned>(drawing.objects.size()))];
    }
    Tree type = draw_new_object(drawing, depth);
    drawing.objects.push_back(type);
    return type;
}

Tree draw_type(Drawing& drawing, int depth) {
    const unsigned kind = depth > 0 ? draw(drawing, 100) : 0;
    if (kind < 60) {
        return draw_object(drawing, depth);
    }
    if (kind < 80) {
        const char* code = chance(drawing, 70) ? "R" : "O";
        const Tree to = chance(drawing, 10)   ? draw_array(drawing, depth)
                        : chance(drawing, 10) ? draw_function(drawing, depth, false)
                                              : draw_object(drawing, depth - 1);
        return pointer(code, to);
    }
    if (kind < 88) {
        return draw_function(drawing, depth, chance(drawing, 20));
    }
    return kind < 95 ? draw_array(drawing, depth) : builtin("v", "void");
}

std::vector<Tree> draw_parameters(Drawing& drawing, int depth) {
    std::vector<Tree> list;
    for (unsigned count = draw(drawing, depth > 1 ? 5 : 3); count != 0; --count) {
        const unsigned kind = draw(drawing, 100);
        if (kind < 60) {
            list.push_back(draw_object(drawing, depth));
        } else if (kind < 90) {
            list.push_back(
                pointer(chance(drawing, 70) ? "R" : "O", draw_object(drawing, depth - 1)));
        } else {
            Tree pattern = draw_parameter_type(drawing);
            if (chance(drawing, 50)) {
                pattern = pointer("R", qualified("K", pattern));
            }
            list.push_back(expansion(pattern));
        }
    }
    return list;
}

std::vector<Tree> draw_arguments(Drawing& drawing, int depth) {
    std::vector<Tree> list;
    const unsigned count = 1 + draw(drawing, depth > 0 ? 3 : 2);
    while (list.size() < count) {
        const unsigned kind = draw(drawing, 100);
        if (kind < 62) {
            list.push_back(draw_type(drawing, depth - 1));
        } else if (kind < 78) {
            list.push_back(draw_literal(drawing, depth - 1));
        } else if (kind < 90) {
            list.push_back(expression_argument(draw_expression(drawing, depth - 1)));
        } else {
            std::vector<Tree> elements;
            for (unsigned size = draw(drawing, 3); size != 0; --size) {
                elements.push_back(chance(drawing, 70) ? draw_type(drawing, depth - 1)
                                                       : draw_literal(drawing, depth - 1));
            }
            list.push_back(pack(elements));
        }
    }
    return list;
}

}  // namespace scheme1
