// Random expressions and unresolved names. Called by the drawing of types and of
// template arguments.
#include <array>
#include <memory>
#include <utility>

#include "tests/demangle/scheme1/draw.h"

namespace scheme1 {
namespace {

struct Coded {
    const char* code;
    const char* text;
};

constexpr Coded binary_rows[] = {
    {"aa", "&&"}, {"an", "&"},   {"aN", "&="}, {"aS", "="},  {"dv", "/"},   {"dV", "/="},
    {"eo", "^"},  {"eO", "^="},  {"eq", "=="}, {"ge", ">="}, {"gt", ">"},   {"le", "<="},
    {"ls", "<<"}, {"lS", "<<="}, {"lt", "<"},  {"mi", "-"},  {"mI", "-="},  {"ml", "*"},
    {"mL", "*="}, {"ne", "!="},  {"oo", "||"}, {"or", "|"},  {"oR", "|="},  {"pl", "+"},
    {"pL", "+="}, {"rm", "%"},   {"rM", "%="}, {"rs", ">>"}, {"rS", ">>="},
};
constexpr Coded vendor_binary_rows[] = {{"v23min", "<?"}, {"v23max", ">?"}};
constexpr Coded prefix_rows[] = {
    {"ad", "&"}, {"co", "~"},   {"de", "*"},   {"ng", "-"},         {"nt", "!"},
    {"ps", "+"}, {"pp_", "++"}, {"mm_", "--"}, {"aw", "co_await "}, {"tw", "throw "},
};
constexpr Coded closed_type_rows[] = {{"at", "alignof("}, {"st", "sizeof("}, {"ti", "typeid("}};
constexpr Coded closed_rows[] = {
    {"az", "alignof("}, {"sz", "sizeof("}, {"te", "typeid("}, {"nx", "noexcept("}};
constexpr Coded vendor_closed_type_rows[] = {
    {"v17alignof", "__alignof__("}, {"v18__uuidof", "__uuidof("}, {"v16typeid", "typeid("}};
constexpr Coded vendor_closed_rows[] = {{"v18alignofe", "__alignof__("},
                                        {"v19__uuidofe", "__uuidof("},
                                        {"v17typeide", "typeid("},
                                        {"v18__real__", "__real("},
                                        {"v18__imag__", "__imag("}};
constexpr Coded cast_rows[] = {{"dc", "dynamic_cast<"},
                               {"sc", "static_cast<"},
                               {"cc", "const_cast<"},
                               {"rc", "reinterpret_cast<"}};
// No ">" among them, which would count as outside parentheses.
constexpr Coded named_rows[] = {{"pl", "operator +"},  {"cl", "operator ()"},
                                {"ix", "operator []"}, {"nw", "operator new "},
                                {"aS", "operator ="},  {"li2_x", "operator \"\"_x"}};

template <std::size_t count>
const Coded& draw_row(Drawing& drawing, const Coded (&rows)[count]) {
    return rows[draw(drawing, count)];
}

// A template parameter as a value; only as a type would it enter the table.
Tree draw_parameter_value(Drawing& drawing) {
    Part part = *draw_parameter_type(drawing);
    part.identity.clear();
    return std::make_shared<const Part>(std::move(part));
}

Tree draw_function_parameter(Drawing& drawing) {
    const unsigned number = draw(drawing, 4);
    const char* qualifiers = chance(drawing, 20) ? "K" : "";
    const std::string text = "param#" + std::to_string(number + 1);
    if (chance(drawing, 70)) {
        return bare({"fp" + std::string(qualifiers) + sequence(number)}, text);
    }
    if (chance(drawing, 20)) {
        return bare({"fpT"}, "this");
    }
    const unsigned level = draw(drawing, 3);
    return bare({"fL" + std::to_string(level) + "p" + qualifiers + sequence(number)},
                text + "[up " + std::to_string(level + 1) + (level == 0 ? " level]" : " levels]"));
}

// A name with its arguments: never entered, unlike what stands in them.
Tree draw_simple_name(Drawing& drawing, int depth) {
    static constexpr std::array names = {"x", "value", "type", "foo"};
    const std::string name = names[draw(drawing, names.size())];
    if (depth > 0 && chance(drawing, 20)) {
        const Tree list = arguments(draw_arguments(drawing, depth - 1));
        return bare({source_name(name), list}, name + "<" + text_of(list) + ">");
    }
    return bare({source_name(name)}, name);
}

Tree draw_base_name(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 80) {
        return draw_simple_name(drawing, depth);
    }
    if (kind < 92) {
        const Coded& row = draw_row(drawing, named_rows);
        return bare({"on", row.code}, row.text);
    }
    if (chance(drawing, 50)) {
        const Tree type = draw_parameter_type(drawing);
        return bare({"dn", type}, "~" + text_of(type));
    }
    const Tree name = draw_simple_name(drawing, depth);
    return bare({"dn", name}, "~" + text_of(name));
}

Tree draw_unresolved_name(Drawing& drawing, int depth) {
    const Tree base = draw_base_name(drawing, depth);
    const bool global = chance(drawing, 10);
    const std::string marks = global ? "gs" : "";
    const std::string colons = global ? "::" : "";
    const unsigned kind = draw(drawing, 100);
    if (kind < 30) {
        return bare({marks, base}, colons + text_of(base));
    }
    if (kind < 45) {
        const Tree first = draw_simple_name(drawing, 0);
        const Tree second = draw_simple_name(drawing, depth);
        return bare({marks + "sr", first, second, "E", base},
                    colons + text_of(first) + "::" + text_of(second) + "::" + text_of(base));
    }
    if (kind < 55) {
        const Tree type = draw_parameter_type(drawing);
        const Tree level = draw_simple_name(drawing, depth);
        return bare({"srN", type, level, "E", base},
                    text_of(type) + "::" + text_of(level) + "::" + text_of(base));
    }
    Tree type = draw_parameter_type(drawing);
    if (kind < 75) {
        Name scope = member_name(std_namespace(), {fixed({"6traits"}, "traits"), "traits"});
        if (depth > 0 && chance(drawing, 60)) {
            scope = with_arguments(scope, draw_arguments(drawing, depth - 1));
        }
        type = type_of(scope);
    }
    return bare({"sr", type, base}, text_of(type) + "::" + text_of(base));
}

Tree draw_leaf(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 40) {
        return draw_parameter_value(drawing);
    }
    if (kind < 60) {
        return draw_literal(drawing, 0);
    }
    return kind < 80 ? draw_function_parameter(drawing) : draw_unresolved_name(drawing, depth);
}

struct List {
    Pieces pieces;
    std::string text;
};

List draw_list(Drawing& drawing, int depth, unsigned most, std::string open) {
    List list{{std::move(open)}, ""};
    std::vector<std::string> items;
    for (unsigned count = draw(drawing, most + 1); count != 0; --count) {
        const Tree item = draw_expression(drawing, depth);
        list.pieces.emplace_back(item);
        items.push_back(item_text(item));
    }
    list.pieces.emplace_back("E");
    list.text = joined(items);
    return list;
}

// Braces and brackets are no parentheses, so a ">" in them would count as outside.
bool holds_greater(const List& list) {
    return list.text.find('>') != std::string::npos;
}

Tree draw_operation(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    const Tree first = draw_expression(drawing, depth - 1);
    if (kind < 45) {
        const Tree second = draw_expression(drawing, depth - 1);
        if (chance(drawing, 8)) {
            return comma(first, second);
        }
        if (chance(drawing, 6)) {
            static constexpr Coded rows[] = {{"ds", ".*"}, {"pm", " ->* "}};
            const Coded& row = draw_row(drawing, rows);
            return operation({row.code, first, second},
                             operand_text(first) + row.text + operand_text(second));
        }
        const bool vendor = chance(drawing, 4);
        const Coded& row =
            vendor ? draw_row(drawing, vendor_binary_rows) : draw_row(drawing, binary_rows);
        drawing.house_form |= vendor;
        return operation({row.code, first, second},
                         operand_text(first) + " " + row.text + " " + operand_text(second),
                         std::string(row.text).find('>') != std::string::npos);
    }
    if (kind < 75) {
        const Coded& row = draw_row(drawing, prefix_rows);
        return operation({row.code, first}, row.text + operand_text(first));
    }
    if (kind < 80) {
        const bool up = chance(drawing, 50);
        return operation({up ? "pp" : "mm", first}, operand_text(first) + (up ? "++" : "--"));
    }
    if (kind < 88) {
        const Tree second = draw_expression(drawing, depth - 1);
        const Tree third = draw_expression(drawing, depth - 1);
        return operation(
            {"qu", first, second, third},
            operand_text(first) + " ? " + operand_text(second) + " : " + operand_text(third));
    }
    if (kind < 91) {
        const bool all = chance(drawing, 30);
        return operation({all ? "da" : "dl", first},
                         (all ? "delete[] " : "delete ") + operand_text(first));
    }
    if (kind < 94) {
        const Tree type = draw_object(drawing, depth - 1);
        const List list = draw_list(drawing, depth - 1, 2, "_");
        Pieces pieces = {"nw_", type, "pi"};
        pieces.insert(pieces.end(), list.pieces.begin() + 1, list.pieces.end());
        return operation(std::move(pieces), "new " + text_of(type) + "(" + list.text + ")");
    }
    if (kind < 96) {
        const Tree type = draw_object(drawing, depth - 1);
        return operation({"nw_", type, "E"}, "new " + text_of(type));
    }
    if (kind < 97) {
        return operation({"tr"}, "throw");
    }
    return operation({"sp", first}, operand_text(first) + "...");
}

Tree draw_fold(Drawing& drawing, int depth) {
    const Coded& row = draw_row(drawing, binary_rows);
    const Tree first = draw_expression(drawing, depth - 1);
    const std::string text = row.text;
    switch (draw(drawing, 4)) {
        case 0:
            return bare({"fl", row.code, first}, "(... " + text + " " + operand_text(first) + ")");
        case 1:
            return bare({"fr", row.code, first}, "(" + operand_text(first) + " " + text + " ...)");
        default: {
            const Tree second = draw_expression(drawing, depth - 1);
            return bare({chance(drawing, 50) ? "fL" : "fR", row.code, first, second},
                        "(" + operand_text(first) + " " + text + " ... " + text + " " +
                            operand_text(second) + ")");
        }
    }
}

Tree draw_braces(Drawing& drawing, int depth) {
    if (chance(drawing, 40)) {
        List list = draw_list(drawing, depth - 1, 3, "il");
        if (!holds_greater(list)) {
            return bare(std::move(list.pieces), "{" + list.text + "}");
        }
    }
    const Tree type = draw_object(drawing, depth - 1);
    List list = draw_list(drawing, depth - 1, 3, "tl");
    if (holds_greater(list)) {
        return draw_leaf(drawing, depth - 1);
    }
    list.pieces.insert(list.pieces.begin() + 1, type);
    return bare(std::move(list.pieces), text_of(type) + "{" + list.text + "}");
}

Tree draw_call(Drawing& drawing, int depth) {
    const bool parenthesised = chance(drawing, 20);
    const Tree callee =
        parenthesised ? draw_base_name(drawing, depth - 1) : draw_expression(drawing, depth - 1);
    List list = draw_list(drawing, depth - 1, 3, parenthesised ? "cp" : "cl");
    list.pieces.insert(list.pieces.begin() + 1, callee);
    std::string text = operand_text(callee);
    if (parenthesised) {
        text = "(" + text + ")";
    }
    return bare(std::move(list.pieces), text + "(" + list.text + ")");
}

Tree draw_conversion(Drawing& drawing, int depth) {
    const Tree type = draw_object(drawing, depth - 1);
    if (chance(drawing, 50)) {
        List list = draw_list(drawing, depth - 1, 3, "_");
        Pieces pieces = {"cv", type};
        pieces.insert(pieces.end(), list.pieces.begin(), list.pieces.end());
        return cast(std::move(pieces), type, list.text);
    }
    const Tree operand = draw_expression(drawing, depth - 1);
    return cast({"cv", type, operand}, type, item_text(operand));
}

Tree draw_vendor(Drawing& drawing, int depth) {
    drawing.house_form = true;
    const Tree type = draw_object(drawing, depth - 1);
    const Tree operand = draw_expression(drawing, depth - 1);
    switch (draw(drawing, 6)) {
        case 0: {
            const Coded& row = draw_row(drawing, vendor_closed_type_rows);
            return bare({row.code, type}, row.text + text_of(type) + ")");
        }
        case 1: {
            const Coded& row = draw_row(drawing, vendor_closed_rows);
            return bare({row.code, operand}, row.text + text_of(operand) + ")");
        }
        case 2:
            return bare({"v19clitypeid", type}, text_of(type) + "::typeid");
        case 3:
            return bare({"v112clisafe_cast", type, operand},
                        "safe_cast<" + text_of(type) + ">(" + text_of(operand) + ")");
        case 4: {
            const Tree second = draw_expression(drawing, depth - 1);
            return bare(
                {"v29builtinab", operand, second},
                "builtin-operation-ab(" + item_text(operand) + ", " + item_text(second) + ")");
        }
        default: {
            const Tree second = draw_expression(drawing, depth - 1);
            return bare({"v212clisubscript", operand, second},
                        "subscript(" + item_text(operand) + ", " + item_text(second) + ")");
        }
    }
}

Tree draw_vendor_call(Drawing& drawing, int depth) {
    Pieces pieces = {"u5__foo"};
    std::vector<std::string> items;
    for (const Tree& argument : draw_arguments(drawing, depth - 1)) {
        pieces.emplace_back(argument);
        items.push_back(text_of(argument));
    }
    pieces.emplace_back("E");
    return bare(std::move(pieces), "__foo(" + joined(items) + ")");
}

Tree draw_primary(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 15) {
        const Coded& row = draw_row(drawing, closed_type_rows);
        const Tree type = draw_type(drawing, depth - 1);
        return bare({row.code, type}, row.text + text_of(type) + ")");
    }
    if (kind < 27) {
        const Coded& row = draw_row(drawing, closed_rows);
        const Tree operand = draw_expression(drawing, depth - 1);
        return bare({row.code, operand}, row.text + text_of(operand) + ")");
    }
    if (kind < 40) {
        const Coded& row = draw_row(drawing, cast_rows);
        const Tree type = draw_type(drawing, depth - 1);
        const Tree operand = draw_expression(drawing, depth - 1);
        return bare({row.code, type, operand},
                    row.text + text_of(type) + ">(" + text_of(operand) + ")");
    }
    if (kind < 52) {
        return draw_call(drawing, depth);
    }
    if (kind < 62) {
        return draw_conversion(drawing, depth);
    }
    if (kind < 70) {
        return draw_braces(drawing, depth);
    }
    if (kind < 78) {
        const bool arrow = chance(drawing, 40);
        const Tree object = draw_expression(drawing, depth - 1);
        const Tree member = draw_base_name(drawing, depth - 1);
        return bare({arrow ? "pt" : "dt", object, member},
                    operand_text(object) + (arrow ? "->" : ".") + text_of(member));
    }
    if (kind < 82) {
        const Tree object = draw_expression(drawing, depth - 1);
        const Tree index = draw_leaf(drawing, 0);
        return bare({"ix", object, index}, operand_text(object) + "[" + text_of(index) + "]");
    }
    if (kind < 86) {
        const Tree name =
            chance(drawing, 50) ? draw_parameter_value(drawing) : draw_function_parameter(drawing);
        return bare({"sZ", name}, "sizeof...(" + text_of(name) + ")");
    }
    if (kind < 88) {
        Pieces pieces = {"sP"};
        std::vector<std::string> items;
        for (const Tree& argument : draw_arguments(drawing, depth - 1)) {
            pieces.emplace_back(argument);
            items.push_back(text_of(argument));
        }
        pieces.emplace_back("E");
        return bare(std::move(pieces), "sizeof...(" + joined(items) + ")");
    }
    if (kind < 94) {
        return draw_fold(drawing, depth);
    }
    if (kind < 96) {
        return draw_vendor_call(drawing, depth);
    }
    return draw_vendor(drawing, depth);
}

}  // namespace

Tree draw_expression(Drawing& drawing, int depth) {
    if (depth <= 0) {
        return draw_leaf(drawing, 0);
    }
    const unsigned kind = draw(drawing, 100);
    return kind < 30   ? draw_leaf(drawing, depth)
           : kind < 65 ? draw_operation(drawing, depth)
                       : draw_primary(drawing, depth);
}

}  // namespace scheme1
