// Random scheme-0 entities and whole symbols, special ones included.
#include "tests/demangle/scheme0/draw.h"

#include <string_view>

namespace scheme0 {
namespace {

// Names that only an entity's own place can hold: the "__" in them opens nothing there.
std::string draw_entity_identifier(Drawing& drawing) {
    static constexpr const char* names[] = {"a__b",       "my__var", "end_",
                                            "__lib_init", "__plus",  "operator_"};
    return chance(drawing, 10) ? draw_row(drawing, names) : draw_identifier(drawing);
}

// What stands before the scope.
struct Name {
    std::string code;
    std::string text;
    bool function = false;
    bool identifier = false;
    bool structor = false;
};

Name draw_operator_name(Drawing& drawing, int depth) {
    Name name;
    name.function = true;
    if (chance(drawing, 25)) {
        const Type type = draw_object(drawing, depth);
        name.code = "__op" + type.code;
        name.text = "operator " + text_of(type);
    } else {
        const Coded* row = &operator_codes[draw(drawing, operator_code_count)];
        while (!names_function(*row)) {
            row = &operator_codes[draw(drawing, operator_code_count)];
        }
        name.code = operator_name_code(drawing, *row, name.text);
    }
    return name;
}

Name draw_name(Drawing& drawing, int depth, const Scope& scope) {
    Name name;
    const unsigned kind = draw(drawing, 100);
    if (kind < 15 && !scope.repeated.empty()) {
        const bool constructor = chance(drawing, 60);
        name.code = constructor ? "__ct" : "__dt";
        name.text = (constructor ? "" : "~") + scope.repeated;
        name.function = name.structor = true;
    } else if (kind < 35) {
        name = draw_operator_name(drawing, depth);
    } else {
        name.text = name.code = draw_entity_identifier(drawing);
        name.identifier = true;
        name.function = kind < 90;
    }
    if (chance(drawing, name.structor ? 3 : 20)) {
        const Arguments list = draw_arguments(drawing, depth - 1);
        name.code += list.code;
        name.text = with_list(name.text, list);
    }
    return name;
}

struct Special {
    const char* prefix;
    const char* phrase;
};
constexpr Special entity_rows[] = {
    {"__CBI__", "can-be-instantiated flag for "},
    {"__DNI__", "do-not-instantiate flag for "},
    {"__TIR__", "template-instantiation-request flag for "},
    {"__LSG__", "initialization guard variable for "},
    {"__THI__", "thread_local initialization routine for "},
    {"__IFV__", "ifunc variable for "},
    {"__RES__", "resolver function for "},
    {"__RES____IFC__", "resolver function for ifunc function for "},
    {"__IFC__", "ifunc function for "},
    {"__TWR__", "thread_local wrapper for "},
};

// What the plain name keeps of such a prefix: "__" and three letters.
constexpr std::size_t prefix_letters = 5;

// One operand of a virtual function table: a qualified name or a run of names.
Scope draw_table_class(Drawing& drawing, int depth) {
    if (chance(drawing, 40)) {
        Scope scope = draw_scope(drawing, depth);
        while (scope.code[0] != 'Q') {
            scope = draw_scope(drawing, depth);
        }
        return scope;
    }
    Scope scope;
    std::string run;
    for (unsigned count = 1 + draw(drawing, 3); count != 0; --count) {
        std::string code = draw_identifier(drawing);
        std::string text = code;
        if (depth > 0 && chance(drawing, 25)) {
            const Arguments list = draw_arguments(drawing, depth - 1);
            code += list.code;
            text = with_list(text, list);
        }
        run += (run.empty() ? "" : "__") + code;
        scope.text += (scope.text.empty() ? "" : " in ") + text;
    }
    scope.code = length_prefixed(bounded(drawing, run));
    return scope;
}

Declaration draw_table(Drawing& drawing, int depth) {
    Declaration symbol{"__vtbl", "virtual function table for ", "__vtbl"};
    for (unsigned count = 1 + draw(drawing, 3), left = count; left != 0; --left) {
        const Scope scope = draw_table_class(drawing, depth);
        symbol.name += "__" + scope.code;
        symbol.decorated += (left == count ? "" : " in ") + scope.text;
        if (chance(drawing, 20)) {
            symbol.name += "__A";
            symbol.decorated += " (ambiguous)";
        }
    }
    return symbol;
}

Declaration draw_special(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 25) {
        return draw_table(drawing, depth);
    }
    if (kind < 55) {
        const Special& row = draw_row(drawing, entity_rows);
        const Entity entity = draw_entity(drawing, depth);
        return {row.prefix + entity.code, row.phrase + entity.text,
                std::string(row.prefix).substr(0, prefix_letters)};
    }
    if (kind < 65) {
        static constexpr const char* targets[] = {"avx2", "arch=haswell", "sse4.2,no-avx", "x_y"};
        const std::string target = draw_row(drawing, targets);
        const Entity entity = draw_entity(drawing, depth);
        return {"__TGT__" + target + "__" + entity.code,
                entity.text + " __attribute__((target(" + target + ")))", "__TGT"};
    }
    if (kind < 85) {
        // Without a "__" behind its leading underscores the symbol is not mangled.
        Type type = draw_type(drawing, depth);
        while (type.code.find("__") == std::string::npos) {
            type = draw_type(drawing, depth + 1);
        }
        const bool identifier = chance(drawing, 50);
        return {(identifier ? "__TID_" : "__T_") + type.code,
                (identifier ? "type identifier for " : "typeinfo for ") + text_of(type), "", false};
    }
    const Type type = draw_type(drawing, depth);
    const Entity entity = draw_entity(drawing, depth);
    return {"__VFE__" + type.code + "__" + entity.code,
            "surrogate in class " + text_of(type) + " for " + entity.text, "__VFE"};
}

Declaration draw_symbol(Drawing& drawing) {
    const int depth = 1 + static_cast<int>(draw(drawing, 5));
    const unsigned kind = draw(drawing, 100);
    if (kind < 70) {
        const Entity entity = draw_entity(drawing, depth);
        return {entity.code, entity.text, entity.name_text};
    }
    if (kind < 88) {
        return draw_special(drawing, depth);
    }
    if (kind < 94) {
        static constexpr const char* names[] = {"count", "x_y", "cache2", "J"};
        const std::string name = draw_row(drawing, names);
        const Entity entity = draw_entity(drawing, depth);
        return {"__STV__" + name + "__" + entity.code, entity.text + "::" + name, name};
    }
    if (kind < 98) {
        Scope scope = draw_scope(drawing, depth);
        while (scope.code[0] != 'Q') {
            scope = draw_scope(drawing, depth);
        }
        return {"__" + scope.code, scope.text, scope.text};
    }
    static constexpr const char* letters[] = {"t", "l", "m", "d"};
    static constexpr const char* kinds[] = {
        "unnamed type", "lambda", "lambda in member initializer", "lambda in default argument"};
    const unsigned which = draw(drawing, 4);
    const std::string name = draw_identifier(drawing);
    const std::string number = std::to_string(1 + draw(drawing, 300));
    const std::string text = name + "::[" + kinds[which] + " (instance " + number + ")]";
    return {"__" + length_prefixed(name + "__U" + letters[which] + number), text, text};
}

}  // namespace

bool names_function(const Coded& row) {
    const std::string_view code = row.code;
    return code != "ct" && code != "dt";
}

std::string operator_name_code(Drawing& drawing, const Coded& row, std::string& text) {
    text = "operator " + std::string(row.text);
    std::string code = "__" + std::string(row.code);
    if (std::string_view(row.code) == "li") {
        static constexpr const char* suffixes[] = {"_x", "_km", "s", "_a2b"};
        const std::string suffix = draw_row(drawing, suffixes);
        code += length_prefixed(suffix);
        text += suffix;
    }
    return code;
}

Entity draw_entity(Drawing& drawing, int depth) {
    const bool member = chance(drawing, 55);
    const Scope scope = member ? draw_scope(drawing, depth - 1) : Scope{};
    const Name name = draw_name(drawing, depth, scope);
    Entity entity{name.code, name.text, name.text};
    if (member) {
        entity.code += "__" + scope.code;
        entity.text = scope.text + "::" + name.text;
    }
    if (!name.function || (!member && name.identifier && chance(drawing, 2))) {
        return entity;
    }
    entity.code += member ? "" : "__";
    if (member && chance(drawing, 10)) {
        entity.code += "S";
    }
    FunctionQualifiers qualifiers;
    if (chance(drawing, member ? 25 : 4)) {
        qualifiers = draw_function_qualifiers(drawing, true);
    }
    const Parameters parameters = draw_parameters(drawing, depth);
    entity.code += qualifiers.code + "F" + parameters.code;
    entity.text += "(" + parameters.text + ")" + qualifiers.text;
    if (!name.structor && chance(drawing, 25)) {
        const Type result =
            chance(drawing, 25) ? named("v", "void") : draw_type(drawing, depth - 1);
        entity.code += "_" + result.code;
        entity.text = text_of(result) + " " + entity.text;
    }
    return entity;
}

Declaration draw_declaration(std::uint64_t seed) {
    Drawing drawing;
    drawing.engine.seed(seed);
    for (;;) {
        drawing.clash = false;
        drawing.classes.clear();
        Declaration symbol = draw_symbol(drawing);
        symbol.name = bounded(drawing, symbol.name);
        if (!drawing.clash) {
            return symbol;
        }
    }
}

}  // namespace scheme0
