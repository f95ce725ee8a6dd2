// Random scheme-0 types, names of classes and lists of parameters. Called by the drawing
// of declarations and of expressions.
#include <cstddef>
#include <vector>

#include "tests/demangle/scheme0/draw.h"

namespace scheme0 {
namespace {

constexpr Coded builtin_rows[] = {
    {"b", "bool"},
    {"c", "char"},
    {"w", "wchar_t"},
    {"g", "char16_t"},
    {"k", "char32_t"},
    {"s", "short"},
    {"i", "int"},
    {"l", "long"},
    {"L", "long long"},
    {"f", "float"},
    {"d", "double"},
    {"r", "long double"},
    {"m1\x04", "__int8"},
    {"m2", "__int16"},
    {"m4", "__int32"},
    {"m5", "__int40_t"},
    {"m8", "__int64"},
    {"m16", "__int128"},
    {"n", "std::nullptr_t"},
    {"j", "__nullptr"},
    {"u", "auto"},
    {"q", "decltype(auto)"},
};
constexpr Coded modifier_rows[] = {{"S", "signed "}, {"U", "unsigned "}, {"x", "_Complex "}};
constexpr Coded modified_rows[] = {
    {"c", "char"},  {"s", "short"},  {"i", "int"},         {"l", "long"},     {"L", "long long"},
    {"f", "float"}, {"d", "double"}, {"r", "long double"}, {"m2", "__int16"}, {"m16", "__int128"},
};
constexpr Coded qualifier_rows[] = {
    {"C", "const"},
    {"C", "const"},
    {"V", "volatile"},
    {"Dr", "restrict"},
    {"VC", "const volatile"},
    {"CC", "const"},
    {"CV", "const volatile"},
    {"CDr", "const restrict"},
    {"VDr", "volatile restrict"},
    {"CVDr", "const volatile restrict"},
};
constexpr Coded unnamed_rows[] = {
    {"t", "unnamed type"},
    {"l", "lambda"},
    {"m", "lambda in member initializer"},
    {"d", "lambda in default argument"},
};

Type draw_builtin(Drawing& drawing) {
    if (chance(drawing, 75)) {
        const Coded& row = draw_row(drawing, builtin_rows);
        return named(row.code, row.text);
    }
    const Coded& modifier = draw_row(drawing, modifier_rows);
    const Coded& row = draw_row(drawing, modified_rows);
    return named(std::string(modifier.code) + row.code, std::string(modifier.text) + row.text);
}

Type draw_wrapped(Drawing& drawing, int depth) {
    static constexpr Coded of_type[] = {{"t", "typeof("}, {"o", "__underlying_type("}};
    static constexpr Coded of_expression[] = {
        {"p", "typeof("}, {"y", "decltype("}, {"Y", "decltype(("}};
    if (chance(drawing, 40)) {
        const Coded& row = draw_row(drawing, of_type);
        const Type type = draw_type(drawing, depth);
        return named(row.code + type.code, row.text + text_of(type) + ")");
    }
    const Coded& row = draw_row(drawing, of_expression);
    const Expression expression = draw_expression(drawing, depth);
    return named(row.code + expression.code,
                 row.text + expression.text + (row.code[0] == 'Y' ? "))" : ")"));
}

Type draw_param_type(Drawing& drawing) {
    std::string text;
    const std::string code = draw_template_param(drawing, "TUV", text);
    return named(code, text);
}

// A class as a type of its own.
Type draw_class_type(Drawing& drawing, int depth) {
    const Scope scope = draw_scope(drawing, depth);
    return named(scope.code, scope.text);
}

Type draw_member_pointer(Drawing& drawing, int depth) {
    const Type owner =
        chance(drawing, 15) ? draw_param_type(drawing) : draw_class_type(drawing, depth);
    const Type member = draw_type(drawing, depth);
    return marked("M" + owner.code, text_of(owner) + "::*", member);
}

Type draw_array(Drawing& drawing, int depth) {
    const Type element =
        chance(drawing, 20) ? draw_array(drawing, depth - 1) : draw_object(drawing, depth);
    if (element.shape == Shape::marked && chance(drawing, 30)) {
        // The qualifiers of an array are its elements'.
        Type array = array_of("7", "7", qualified("", "const", element));
        array.code = "C" + array.code;
        return array;
    }
    const unsigned kind = draw(drawing, 100);
    if (kind < 20) {
        return array_of("", "", element);
    }
    if (kind < 75 || depth <= 0) {
        const std::string bound = std::to_string(draw(drawing, 5000));
        return array_of((chance(drawing, 4) ? "00" : "") + bound, bound, element);
    }
    // A ">" in brackets would count as outside parentheses.
    const Expression bound = draw_operand(drawing, depth - 1);
    return bound.text.find('>') == std::string::npos
               ? array_of("X" + bound.code, bound.text, element)
               : array_of("", "", element);
}

Type draw_function(Drawing& drawing, int depth) {
    const FunctionQualifiers qualifiers =
        chance(drawing, 20) ? draw_function_qualifiers(drawing, false) : FunctionQualifiers{};
    const Parameters parameters = draw_parameters(drawing, depth - 1);
    return function(qualifiers, parameters,
                    chance(drawing, 40)   ? named("v", "void")
                    : chance(drawing, 85) ? draw_object(drawing, depth - 1)
                                          : marked("R", "&", draw_object(drawing, depth - 1)));
}

Type draw_pointee(Drawing& drawing, int depth) {
    return chance(drawing, 8) ? named("v", "void") : draw_type(drawing, depth);
}

// The name that a text of `name` reads as inside a run, with its list and unnamed form.
struct Run {
    std::string code;
    std::string text;
    std::string repeated;
};

Run draw_run(Drawing& drawing, int depth) {
    static constexpr const char* inner[] = {"a__b", "x__1A", "f__Fi", "Outer__Inner", "end_"};
    Run run;
    run.code = chance(drawing, 6) ? draw_row(drawing, inner) : draw_identifier(drawing);
    run.text = run.repeated = run.code;
    if (depth > 0 && chance(drawing, 25)) {
        const Arguments list = draw_arguments(drawing, depth - 1);
        run.code += list.code;
        run.text = with_list(run.text, list);
    }
    if (chance(drawing, 6)) {
        const Coded& row = draw_row(drawing, unnamed_rows);
        const std::string number = std::to_string(1 + draw(drawing, 20));
        run.code += std::string("__U") + row.code + number;
        run.repeated = std::string("[") + row.text + " (instance " + number + ")]";
        run.text += "::" + run.repeated;
    }
    return run;
}

Scope draw_simple(Drawing& drawing, int depth) {
    if (!drawing.classes.empty() && chance(drawing, 30)) {
        const auto count = static_cast<unsigned>(drawing.classes.size());
        const Scope& known = drawing.classes[draw(drawing, count)];
        if (known.nesting == drawing.nesting) {
            return known;
        }
    }
    const Run run = draw_run(drawing, depth);
    drawing.classes.push_back(
        {length_prefixed(bounded(drawing, run.code)), run.text, run.repeated, drawing.nesting});
    return drawing.classes.back();
}

Scope draw_qualified(Drawing& drawing, int depth);

Scope draw_component(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 6) {
        const Type param = draw_param_type(drawing);
        return {param.code, text_of(param), text_of(param), drawing.nesting};
    }
    if (kind < 8) {
        return {"G", "", "", drawing.nesting};
    }
    if (kind < 10) {
        const Type type =
            chance(drawing, 50) ? draw_builtin(drawing) : draw_wrapped(drawing, depth - 1);
        return {type.code, text_of(type), "", drawing.nesting};
    }
    if (kind < 12 && depth > 0) {
        const Scope scope = draw_qualified(drawing, depth - 1);
        return {scope.code, scope.text, "", drawing.nesting};
    }
    return draw_simple(drawing, depth);
}

Scope draw_qualified(Drawing& drawing, int depth) {
    const unsigned count = 1 + draw(drawing, chance(drawing, 4) ? 12 : 4);
    Scope scope;
    for (unsigned number = 0; number != count; ++number) {
        const Scope component = draw_component(drawing, depth);
        scope.code += component.code;
        scope.text += (number == 0 ? "" : "::") + component.text;
        scope.repeated = component.repeated;
    }
    const bool digit = scope.code[0] >= '0' && scope.code[0] <= '9';
    const bool separated = digit || chance(drawing, 50);
    scope.code = "Q" + std::to_string(count) + (separated ? "_" : "") + scope.code;
    return scope;
}

}  // namespace

unsigned draw(Drawing& drawing, unsigned limit) {
    return static_cast<unsigned>(drawing.engine() % limit);
}

bool chance(Drawing& drawing, unsigned percent) {
    return draw(drawing, 100) < percent;
}

std::string bounded(Drawing& drawing, std::string letters) {
    if (!settle(letters)) {
        drawing.clash = true;
    }
    return letters;
}

std::string draw_identifier(Drawing& drawing) {
    static constexpr const char* names[] = {
        "a", "f",   "x",    "foo",  "bar_2", "_own",  "point", "Point", "Matrix", "string",
        "J", "aJb", "JJ1J", "b2c3", "x_y_z", "Queue", "Fi",    "_Z1a",  "count",  "vector"};
    if (chance(drawing, 98)) {
        return draw_row(drawing, names);
    }
    std::string name(1, 'n');
    for (unsigned count = draw(drawing, 150); count != 0; --count) {
        name += static_cast<char>('a' + draw(drawing, 26));
    }
    return name;
}

std::string draw_template_param(Drawing& drawing, std::string_view letters, std::string& text) {
    const std::string index = std::to_string(1 + draw(drawing, chance(drawing, 5) ? 200 : 4));
    const bool given = chance(drawing, 30);
    const unsigned own = given ? draw(drawing, 6) : 1;
    const unsigned level = own + drawing.nesting;
    if (level >= 1 && level <= 3) {
        text = letters[level - 1] + index;
    } else {
        text = letters[0] + ("_" + std::to_string(level)) + "_" + index;
    }
    return "Z" + index + (given ? "_" + std::to_string(own) : "") + "Z";
}

Arguments draw_arguments(Drawing& drawing, int depth) {
    static constexpr const char* openings[] = {"__tm__", "__tm__", "__pt__", "__ps__"};
    std::string list = "_";
    std::vector<std::string> items;
    for (unsigned count = chance(drawing, 5) ? 0 : 1 + draw(drawing, 3); count != 0; --count) {
        if (chance(drawing, 65)) {
            const Type type = draw_pointee(drawing, depth);
            list += type.code;
            items.push_back(text_of(type));
        } else {
            const Expression value = draw_operand(drawing, depth);
            list += "X" + value.code;
            items.push_back(value.greater ? "(" + value.text + ")" : value.text);
        }
    }
    list = bounded(drawing, list);
    return {draw_row(drawing, openings) + std::to_string(list.size()) + list,
            "<" + joined(items) + ">"};
}

Scope draw_scope(Drawing& drawing, int depth) {
    return chance(drawing, 60) ? draw_simple(drawing, depth) : draw_qualified(drawing, depth - 1);
}

FunctionQualifiers draw_function_qualifiers(Drawing& drawing, bool of_signature) {
    static constexpr const char* letters[] = {"C", "V", "Dr", "DL", "DR"};
    FunctionQualifiers qualifiers;
    bool seen[5] = {};
    for (unsigned count = 1 + draw(drawing, 5); count != 0; --count) {
        const unsigned which = draw(drawing, 5);
        const bool known = seen[which] || (which > 2 && (seen[3] || seen[4]));
        if (!known || of_signature) {
            qualifiers.code += letters[which];
            seen[which] = seen[which] || which <= 2 || !known;
        }
    }
    static constexpr const char* words[] = {" const", " volatile", " restrict", " &", " &&"};
    for (std::size_t which = 0; which != 5; ++which) {
        qualifiers.text += seen[which] ? words[which] : "";
    }
    return qualifiers;
}

Parameters draw_parameters(Drawing& drawing, int depth) {
    Parameters parameters;
    std::vector<std::string> items;
    const unsigned count = chance(drawing, 3) ? 14 : draw(drawing, 4);
    for (unsigned number = 0; number != count; ++number) {
        const unsigned kind = draw(drawing, 100);
        if (items.empty() || kind < 75) {
            const Type type = draw_type(drawing, count == 14 ? 0 : depth);
            parameters.code += type.code;
            items.push_back(text_of(type));
            continue;
        }
        const unsigned which = draw(drawing, static_cast<unsigned>(items.size()));
        unsigned times = 1;
        if (kind < 88) {
            parameters.code += "T";
        } else {
            times = chance(drawing, 4) ? 0 : 1 + draw(drawing, chance(drawing, 10) ? 9 : 3);
            parameters.code += "N" + std::to_string(times);
        }
        parameters.code += std::to_string(which + 1);
        parameters.code += which < 9 ? mark::short_index : '_';
        items.insert(items.end(), times, std::string(items[which]));
    }
    if (chance(drawing, 8)) {
        parameters.code += "e";
        items.emplace_back("...");
    } else if (items.empty() && chance(drawing, 95)) {
        parameters.code = "v";
    }
    parameters.text = joined(items);
    return parameters;
}

Type draw_object(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (depth <= 0 || kind < 30) {
        return chance(drawing, 12)   ? draw_param_type(drawing)
               : chance(drawing, 80) ? draw_builtin(drawing)
                                     : draw_class_type(drawing, 0);
    }
    if (kind < 50) {
        return draw_class_type(drawing, depth - 1);
    }
    if (kind < 72) {
        return marked("P", "*", draw_pointee(drawing, depth - 1));
    }
    if (kind < 78) {
        return draw_member_pointer(drawing, depth - 1);
    }
    if (kind < 82) {
        const Type element =
            chance(drawing, 80) ? draw_builtin(drawing) : draw_class_type(drawing, 0);
        return vector_of(1U << draw(drawing, 8), element);
    }
    if (kind < 84) {
        return handle(chance(drawing, 60) ? 'h' : 't', draw_type(drawing, depth - 1));
    }
    if (kind < 86) {
        return bracketed(chance(drawing, 50) ? 'i' : 'p', draw_class_type(drawing, depth - 1));
    }
    if (kind < 90) {
        return draw_wrapped(drawing, depth - 1);
    }
    Type type = draw_object(drawing, depth - 1);
    if (type.shape == Shape::qualified || (type.shape == Shape::name && !type.plain)) {
        return type;
    }
    const Coded& row = draw_row(drawing, qualifier_rows);
    return qualified(row.code, row.text, type);
}

Type draw_type(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (depth <= 0 || kind < 65) {
        return draw_object(drawing, depth);
    }
    if (kind < 77) {
        const Type type = draw_type(drawing, depth - 1);
        return chance(drawing, 70) ? marked("R", "&", type) : marked("E", "&&", type);
    }
    if (kind < 88) {
        return marked("P", "*", draw_function(drawing, depth - 1));
    }
    if (kind < 92) {
        return draw_function(drawing, depth - 1);
    }
    const Type array = draw_array(drawing, depth - 1);
    return array.plain && chance(drawing, 20) ? qualified("C", "const", array) : array;
}

}  // namespace scheme0
