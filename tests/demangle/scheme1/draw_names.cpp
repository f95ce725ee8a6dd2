// Random names, encodings and whole declarations.
#include <array>
#include <string_view>
#include <utility>

#include "tests/demangle/scheme1/draw.h"

namespace scheme1 {

// The codes that may name an operator function; "cv" has a type of its own.
const OperatorRow operator_rows[] = {
    {"aa", "&&", ""},
    {"ad", "&", ""},
    {"an", "&", ""},
    {"aN", "&=", ""},
    {"aS", "=", ""},
    {"at", "alignof(", ")"},
    {"aw", "co_await", ""},
    {"az", "alignof(", ")"},
    {"cc", "const_cast", ""},
    {"cl", "()", ""},
    {"cm", ",", ""},
    {"co", "~", ""},
    {"da", "delete[] ", ""},
    {"dc", "dynamic_cast", ""},
    {"de", "*", ""},
    {"dl", "delete ", ""},
    {"ds", ".*", ""},
    {"dv", "/", ""},
    {"dV", "/=", ""},
    {"eo", "^", ""},
    {"eO", "^=", ""},
    {"eq", "==", ""},
    {"ge", ">=", ""},
    {"gt", ">", ""},
    {"ix", "[", "]"},
    {"le", "<=", ""},
    {"ls", "<<", ""},
    {"lS", "<<=", ""},
    {"lt", "<", ""},
    {"mi", "-", ""},
    {"mI", "-=", ""},
    {"ml", "*", ""},
    {"mL", "*=", ""},
    {"mm", "--", ""},
    {"na", "new[] ", ""},
    {"ne", "!=", ""},
    {"ng", "-", ""},
    {"nt", "!", ""},
    {"nw", "new ", ""},
    {"nx", "noexcept(", ")"},
    {"oo", "||", ""},
    {"or", "|", ""},
    {"oR", "|=", ""},
    {"pl", "+", ""},
    {"pL", "+=", ""},
    {"pm", "->*", ""},
    {"pp", "++", ""},
    {"ps", "+", ""},
    {"pt", "->", ""},
    {"qu", "?", ""},
    {"rc", "reinterpret_cast", ""},
    {"rm", "%", ""},
    {"rM", "%=", ""},
    {"rs", ">>", ""},
    {"rS", ">>=", ""},
    {"sc", "static_cast", ""},
    {"st", "sizeof(", ")"},
    {"sz", "sizeof(", ")"},
    {"te", "typeid(", ")"},
    {"ti", "typeid(", ")"},
    {"tr", "throw", ""},
    {"tw", "throw ", ""},
    {"v18alignofe", "__alignof__(", ")"},
    {"v17alignof", "__alignof__(", ")"},
    {"v19__uuidofe", "__uuidof(", ")"},
    {"v18__uuidof", "__uuidof(", ")"},
    {"v17typeide", "typeid(", ")"},
    {"v16typeid", "typeid(", ")"},
    {"v19clitypeid", "::typeid", ""},
    {"v23min", "<?", ""},
    {"v23max", ">?", ""},
    {"v18__real__", "__real(", ")"},
    {"v18__imag__", "__imag(", ")"},
    {"v19clihandle", "%", ""},
    {"v112clisafe_cast", "safe_cast", ""},
    {"v39builtinab", "builtin-operation-ab", ""},
    {"v212clisubscript", "subscript", ""},
};
const unsigned operator_count = std::size(operator_rows);

namespace {

struct Coded {
    const char* code;
    const char* text;
};

Unqualified draw_source(Drawing& drawing) {
    static constexpr std::array names = {
        "A",  "B",   "C",  "foo",    "bar",   "Zed", "x1y", "_q_9", "E",     "St",
        "T_", "N1A", "Dt", "vector", "range", "v",   "i",   "cvi",  "alloc", "basic_string_view_1"};
    const std::string name = names[draw(drawing, names.size())];
    return {fixed({source_name(name)}, name), name};
}

Unqualified tagged(Drawing& drawing, Unqualified component) {
    if (!chance(drawing, 4)) {
        return component;
    }
    std::string letters;
    std::string text = text_of(component.tree);
    for (unsigned count = 1 + draw(drawing, 2); count != 0; --count) {
        static constexpr std::array tags = {"cxx11", "v2", "__x"};
        const std::string tag = tags[draw(drawing, tags.size())];
        letters += 'B';
        letters += source_name(tag);
        text += "[abi:" + tag + "]";
    }
    component.tree = fixed({component.tree, letters}, text);
    return component;
}

Unqualified draw_lambda(Drawing& drawing, int depth) {
    const bool in_lambda = std::exchange(drawing.in_lambda, true);
    std::vector<Tree> objects = std::exchange(drawing.objects, {});
    std::vector<Name> classes = std::exchange(drawing.classes, {});
    const std::vector<Tree> parameters = draw_parameters(drawing, depth - 1);
    const bool variadic = chance(drawing, 5);
    drawing.in_lambda = in_lambda;
    drawing.objects = std::move(objects);
    drawing.classes = std::move(classes);
    const unsigned number = draw(drawing, 3);
    Pieces pieces = parameter_pieces(parameters, variadic);
    pieces.insert(pieces.begin(), "Ul");
    pieces.emplace_back("E" + sequence(number));
    const std::string text = "[lambda" + parameter_text(parameters, variadic) + " (instance " +
                             std::to_string(number + 1) + ")]";
    return {fixed(std::move(pieces), text), text};
}

Unqualified draw_unnamed(Drawing& drawing) {
    const unsigned number = draw(drawing, 4);
    const std::string text = "[unnamed type (instance " + std::to_string(number + 1) + ")]";
    return {fixed({"Ut" + sequence(number)}, text), text};
}

Name draw_scope_root(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 22) {
        return std_namespace();
    }
    if (kind < 30) {
        const Name name = abbreviation("siod"[draw(drawing, 4)]);
        return chance(drawing, 20) ? tagged(name, "cxx11") : name;
    }
    if (kind < 36) {
        const Name name = abbreviation(chance(drawing, 50) ? 'a' : 'b');
        return with_arguments(name, draw_arguments(drawing, depth - 1));
    }
    if (kind < 40) {
        return of_parameter(draw_parameter_type(drawing));
    }
    if (kind < 42 && depth > 0) {
        const Tree expression = draw_expression(drawing, depth - 1);
        return of_parameter(
            entered({"Dt", expression, "E"}, "decltype(" + text_of(expression) + ")"));
    }
    if (kind < 48) {
        return global_name({fixed({"12_GLOBAL__N_1"}, "<unnamed>"), "<unnamed>"});
    }
    return global_name(tagged(drawing, draw_source(drawing)));
}

Unqualified draw_component(Drawing& drawing, const Name& scope, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 6 && depth > 0 && !scope.unscoped) {
        return draw_lambda(drawing, depth);
    }
    if (kind < 9 && !scope.unscoped) {
        return draw_unnamed(drawing);
    }
    return tagged(drawing, draw_source(drawing));
}

// What may stand after a name as its own template arguments.
Name maybe_with_arguments(Drawing& drawing, const Name& name, unsigned percent, int depth) {
    return depth > 0 && chance(drawing, percent)
               ? with_arguments(name, draw_arguments(drawing, depth))
               : name;
}

bool is_namespace(const Name& name) {
    return name.prefix->plain == "St" || name.text.ends_with("<unnamed>");
}

Unqualified draw_structor(Drawing& drawing, const Name& scope, int depth) {
    static constexpr char kinds[] = {'1', '2', '1', '2', '0', '3', '7', '8', '9', '4', '5'};
    const char kind = kinds[draw(drawing, drawing.extended ? 11 : 9)];
    Unqualified component;
    component.kind = kind;
    component.repeat = scope.repeat;
    drawing.house_form |= kind != '1' && kind != '2';
    if (chance(drawing, 35)) {
        component.tree = fixed({std::string("D") + kind}, "~" + scope.repeat);
    } else if (chance(drawing, 6) && (kind == '1' || kind == '2')) {
        component.tree = fixed({std::string("CI") + kind, type_of(draw_class(drawing, depth - 1))},
                               scope.repeat);
        // Tags would belong to the class that is inherited from.
        return component;
    } else {
        component.tree = fixed({std::string("C") + kind}, scope.repeat);
    }
    return tagged(drawing, component);
}

Unqualified draw_operator(Drawing& drawing) {
    if (chance(drawing, 10)) {
        static constexpr std::array suffixes = {"_x", "_kilo", "s"};
        const std::string suffix = suffixes[draw(drawing, suffixes.size())];
        return {fixed({"li" + source_name(suffix)}, "operator \"\"" + suffix), ""};
    }
    if (drawing.extended && chance(drawing, 10)) {
        return {fixed({"ss"}, "operator <=>"), ""};
    }
    const OperatorRow& row = operator_rows[draw(drawing, operator_count)];
    drawing.house_form |= row.code[0] == 'v';
    return {fixed({row.code}, std::string("operator ") + row.text + row.closer), ""};
}

// A conversion type that holds a template parameter with arguments is the one that the
// first attempt takes the wrong way: the name needs the second, which then takes every
// conversion's arguments that way. So a declaration has either the one kind or the other.
Name draw_conversion(Drawing& drawing, const Name& scope, int depth) {
    const bool retry = drawing.retry;
    unsigned percent = 50;
    Tree type;
    if (retry) {
        const Name owner =
            with_arguments(of_parameter(draw_parameter_type(drawing)), {builtin("i", "int")});
        type = member_pointer(type_of(owner), builtin("c", "char"));
    } else {
        const std::array choices = {builtin("i", "int"), builtin("b", "bool"),
                                    pointer("P", qualified("K", builtin("c", "char"))),
                                    draw_parameter_type(drawing),
                                    pointer("R", type_of(global_name(draw_source(drawing))))};
        const unsigned choice = draw(drawing, choices.size());
        type = choices[choice];
        // Arguments right behind a class's name would be the class's own.
        percent = choice + 1 == choices.size() ? 0 : 30;
    }
    Unqualified component;
    component.tree = fixed({"cv", type}, "operator " + text_of(type));
    component.conversion = true;
    return maybe_with_arguments(drawing, member_name(scope, component), percent, depth);
}

struct FunctionName {
    Name name;
    bool of_class = false;
};

FunctionName draw_function_name(Drawing& drawing, const Name* root, int depth) {
    FunctionName function;
    const bool member = chance(drawing, 65);
    if (member) {
        Name scope;
        if (root != nullptr) {
            scope = member_name(*root, draw_source(drawing));
            if (chance(drawing, 30)) {
                scope = member_name(*root, draw_lambda(drawing, depth));
            }
        } else {
            scope = draw_class(drawing, depth - 1);
        }
        scope.kind = ' ';
        function.of_class = !is_namespace(scope);
        if (function.of_class && chance(drawing, 20) && !scope.prefix->plain.starts_with("Dt")) {
            const Unqualified structor = draw_structor(drawing, scope, depth);
            // Arguments behind an inherited class would be that class's own.
            const bool inheriting = structor.tree->plain.starts_with("CI");
            function.name = maybe_with_arguments(drawing, member_name(scope, structor),
                                                 inheriting ? 0 : 10, depth - 1);
            return function;
        }
        if (function.of_class && chance(drawing, 10)) {
            function.name = draw_conversion(drawing, scope, depth - 1);
            return function;
        }
        function.name = member_name(
            scope,
            tagged(drawing, chance(drawing, 25) ? draw_operator(drawing) : draw_source(drawing)));
    } else {
        // Behind a function, "d" and "s" would be a default argument and a string.
        const bool operation = root == nullptr && chance(drawing, 20);
        const Unqualified component =
            tagged(drawing, operation ? draw_operator(drawing) : draw_source(drawing));
        function.name = root != nullptr       ? member_name(*root, component)
                        : chance(drawing, 20) ? member_name(std_namespace(), component)
                                              : global_name(component);
    }
    function.name = maybe_with_arguments(drawing, function.name, 35, depth - 1);
    return function;
}

// A root that may be a template: neither a namespace, an abbreviation nor a decltype.
bool takes_arguments(const Name& root) {
    const char first = root.prefix->plain[0];
    return !root.has_arguments && !is_namespace(root) && first != 'S' && first != 'D';
}

const char* structor_suffix(char kind) {
    switch (kind) {
        case '0':
            return " [deleting]";
        case '2':
            return " [subobject]";
        case '3':
            return " [allocating]";
        case '8':
            return " [static]";
        case '9':
            return " [delegation]";
        default:
            return "";
    }
}

// Puts the signature behind the name that `entity` writes and `text` reads as.
struct Signed {
    Tree entity;
    std::string text;
    std::string qualifiers;
    char reference = ' ';
};

Encoding with_signature(Drawing& drawing, const FunctionName& function, const Signed& name,
                        int depth) {
    Pieces pieces = {name.entity};
    std::string result;
    const bool carries_result =
        function.name.has_arguments && function.name.kind == ' ' && !function.name.conversion;
    if (carries_result) {
        const Tree type =
            chance(drawing, 40) ? builtin("v", "void") : draw_object(drawing, depth - 1);
        pieces.emplace_back(type);
        result = text_of(type) + " ";
    }
    std::vector<Tree> parameters;
    bool variadic = false;
    if (!function.name.conversion) {
        parameters = draw_parameters(drawing, depth);
        variadic = chance(drawing, 8);
    }
    for (Piece& piece : parameter_pieces(parameters, variadic)) {
        pieces.push_back(std::move(piece));
    }
    std::string tail;
    if (!name.qualifiers.empty()) {
        tail += " " + qualifier_text(name.qualifiers);
    }
    tail += name.reference == 'R' ? " &" : name.reference == 'O' ? " &&" : "";
    tail += structor_suffix(function.name.kind);
    Encoding encoding;
    encoding.decorated = result + name.text + parameter_text(parameters, variadic) + tail;
    encoding.undecorated = name.text + tail;
    encoding.tree = fixed(std::move(pieces), "");
    return encoding;
}

Signed draw_qualified_entity(Drawing& drawing, const FunctionName& function) {
    Signed name;
    if (function.of_class && function.name.kind == ' ' && !function.name.unscoped) {
        name.qualifiers = chance(drawing, 40) ? "K" : chance(drawing, 8) ? "VK" : "";
        name.reference = chance(drawing, 6) ? 'R' : chance(drawing, 6) ? 'O' : ' ';
    }
    std::string letters = name.qualifiers;
    if (name.reference != ' ') {
        letters += name.reference;
    }
    name.entity = entity_of(function.name, letters);
    name.text = function.name.text;
    return name;
}

Encoding draw_function(Drawing& drawing, int depth) {
    const FunctionName function = draw_function_name(drawing, nullptr, depth);
    return with_signature(drawing, function, draw_qualified_entity(drawing, function), depth);
}

Encoding unsigned_name(const Tree& entity, const std::string& text) {
    return {fixed({entity}, text), text, text};
}

Encoding draw_data(Drawing& drawing, int depth) {
    if (chance(drawing, 8)) {
        const Unqualified binding = {fixed({"DC1a2bcE"}, "[a, bc]"), ""};
        const Name name = chance(drawing, 50)
                              ? global_name(binding)
                              : member_name(draw_class(drawing, depth - 1), binding);
        return unsigned_name(entity_of(name, ""), name.text);
    }
    Unqualified component = tagged(drawing, draw_source(drawing));
    if (chance(drawing, 15)) {
        component.tree = fixed({"L", component.tree}, text_of(component.tree));
    }
    Name name = chance(drawing, 40) ? global_name(component)
                                    : member_name(draw_class(drawing, depth - 1), component);
    name = maybe_with_arguments(drawing, name, 10, depth - 1);
    return unsigned_name(entity_of(name, ""), name.text);
}

struct Discriminator {
    std::string letters;
    std::string text;
};

Discriminator draw_discriminator(Drawing& drawing) {
    if (!chance(drawing, 30)) {
        return {};
    }
    const unsigned value = draw(drawing, 14);
    const std::string digits = std::to_string(value);
    return {value < 10 ? "_" + digits : "__" + digits + "_",
            " (instance " + std::to_string(value + 2) + ")"};
}

// Names inside a function: a variable, a string, a class's member, a closure.
Encoding draw_local(Drawing& drawing, int depth) {
    const Encoding function = draw_function(drawing, depth - 1);
    const Name root = local_root(function.tree);
    std::string text = function.decorated + "::";
    std::string middle;
    const Discriminator discriminator = draw_discriminator(drawing);
    if (chance(drawing, 10)) {
        return unsigned_name(fixed({"Z", function.tree, "Es" + discriminator.letters}, ""),
                             text + "string" + discriminator.text);
    }
    if (chance(drawing, 12)) {
        const unsigned number = draw(drawing, 3);
        middle = "d" + sequence(number);
        text += "[default argument " + std::to_string(number + 1) + " (from end)]::";
    }
    if (chance(drawing, 50)) {
        const FunctionName inner = draw_function_name(drawing, &root, depth - 1);
        Signed name = draw_qualified_entity(drawing, inner);
        name.entity =
            fixed({"Z", function.tree, "E" + middle, name.entity, discriminator.letters}, "");
        name.text = text + name.text + discriminator.text;
        return with_signature(drawing, inner, name, depth - 1);
    }
    Name name = member_name(root, tagged(drawing, draw_source(drawing)));
    if (chance(drawing, 20)) {
        name = member_name(root, draw_unnamed(drawing));
    } else if (chance(drawing, 20)) {
        name = member_name(member_name(root, draw_source(drawing)), draw_source(drawing));
    }
    return unsigned_name(
        fixed({"Z", function.tree, "E" + middle, entity_of(name, ""), discriminator.letters}, ""),
        text + name.text + discriminator.text);
}

std::string offset_text(int value) {
    return std::to_string(value);
}
std::string offset_letters(int value) {
    return value < 0 ? "n" + std::to_string(-value) : std::to_string(value);
}

struct CallOffset {
    std::string letters;
    std::string text;
};

CallOffset draw_offset(Drawing& drawing) {
    const int first = static_cast<int>(draw(drawing, 200)) - 100;
    if (chance(drawing, 50)) {
        return {"h" + offset_letters(first) + "_", "(offset " + offset_text(first) + ") "};
    }
    const int second = static_cast<int>(draw(drawing, 200)) - 100;
    return {"v" + offset_letters(first) + "_" + offset_letters(second) + "_",
            "(offset " + offset_text(first) + ", virtual offset " + offset_text(second) + ") "};
}

Encoding draw_thunk(Drawing& drawing, int depth) {
    const Encoding target = draw_function(drawing, depth - 1);
    const CallOffset first = draw_offset(drawing);
    std::string letters = "T" + first.letters;
    std::string text = "Thunk for " + first.text;
    if (chance(drawing, 40)) {
        const CallOffset second = draw_offset(drawing);
        letters = "Tc" + first.letters + second.letters;
        text = "Covariant thunk for " + first.text + second.text;
    }
    text += target.decorated;
    return {fixed({letters, target.tree}, ""), text, text};
}

Encoding draw_special(Drawing& drawing, int depth) {
    static constexpr Coded of_type[] = {{"TV", "Virtual function table for "},
                                        {"TT", "Virtual table table for "},
                                        {"TI", "Typeinfo for "},
                                        {"TS", "Typeinfo name for "}};
    static constexpr Coded of_name[] = {{"TH", "Thread-local initialization routine for "},
                                        {"TW", "Thread-local wrapper routine for "},
                                        {"GV", "Initialization guard variable for "}};
    const unsigned kind = draw(drawing, 100);
    if (kind < 35) {
        const Coded& row = of_type[draw(drawing, std::size(of_type))];
        const Tree type =
            chance(drawing, 70) ? type_of(draw_class(drawing, depth)) : draw_type(drawing, depth);
        const std::string text = row.text + text_of(type);
        return {fixed({row.code, type}, ""), text, text};
    }
    if (kind < 65) {
        return draw_thunk(drawing, depth);
    }
    const Coded& row = of_name[draw(drawing, std::size(of_name))];
    const Encoding variable = draw_data(drawing, depth);
    const std::string text = row.text + variable.decorated;
    return {fixed({row.code, variable.tree}, ""), text, text};
}

Encoding draw_extended_special(Drawing& drawing, int depth) {
    switch (draw(drawing, 3)) {
        case 0: {
            const Tree derived = type_of(draw_class(drawing, depth));
            const Tree base = type_of(draw_class(drawing, depth));
            const std::string text =
                "Construction vtable for " + text_of(base) + "-in-" + text_of(derived);
            return {fixed({"TC", derived, "16_", base}, ""), text, text};
        }
        case 1: {
            const Encoding object = draw_data(drawing, depth);
            const unsigned number = draw(drawing, 4);
            const std::string text =
                "Reference temporary #" + std::to_string(number) + " for " + object.decorated;
            return {fixed({"GR", object.tree, sequence(number)}, ""), text, text};
        }
        default: {
            const Tree argument = expression_argument(draw_expression(drawing, depth - 1));
            const std::string text = "Template parameter object for " + text_of(argument);
            return {fixed({"TA", argument}, ""), text, text};
        }
    }
}

}  // namespace

Name draw_class(Drawing& drawing, int depth) {
    if (!drawing.classes.empty() && chance(drawing, 45)) {
        return drawing.classes[draw(drawing, static_cast<unsigned>(drawing.classes.size()))];
    }
    Name name = draw_scope_root(drawing, depth);
    // "std" alone names no class, and neither does an anonymous namespace.
    unsigned components = is_namespace(name) ? 1 : 0;
    components += draw(drawing, depth > 0 ? 3 : 2);
    if (takes_arguments(name)) {
        name = maybe_with_arguments(drawing, name, 25, depth - 1);
    }
    while (components-- != 0) {
        name = member_name(name, draw_component(drawing, name, depth));
        name = maybe_with_arguments(drawing, name, 30, depth - 1);
    }
    if (chance(drawing, 3) && !name.has_arguments && name.prefix->plain.find("Dt") != 0 &&
        name.prefix->plain[0] != 'T' && name.prefix->plain[0] != '\x02' && depth > 0) {
        // A closure in the initialiser of a variable: the variable's entry holds the "M".
        Name variable = member_name(name, draw_source(drawing));
        variable.prefix = entered({name.prefix, source_name(variable.repeat), "M"}, variable.text);
        name = member_name(variable, draw_lambda(drawing, depth));
    }
    drawing.classes.push_back(name);
    return name;
}

Encoding draw_encoding(Drawing& drawing, int depth) {
    const unsigned kind = draw(drawing, 100);
    if (kind < 65) {
        return draw_function(drawing, depth);
    }
    if (kind < 78 || depth <= 0) {
        return draw_data(drawing, depth);
    }
    return draw_local(drawing, depth);
}

Declaration draw_declaration(std::uint64_t seed, bool extended) {
    Drawing drawing;
    drawing.engine.seed(seed);
    drawing.extended = extended;
    drawing.retry = chance(drawing, 30);
    const int depth = 1 + static_cast<int>(draw(drawing, 9));
    Declaration declaration;
    const unsigned kind = draw(drawing, 100);
    if (kind < 5) {
        const Tree type = draw_type(drawing, depth);
        declaration.name = mangle("", type);
        declaration.uncompressed = mangle_uncompressed("", type);
        declaration.decorated = declaration.undecorated = text_of(type);
        declaration.house_form = true;
        return declaration;
    }
    const Encoding encoding = extended && kind < 15 ? draw_extended_special(drawing, depth)
                              : kind < 20           ? draw_special(drawing, depth)
                                                    : draw_encoding(drawing, depth);
    declaration.name = mangle("_Z", encoding.tree);
    declaration.uncompressed = mangle_uncompressed("_Z", encoding.tree);
    declaration.decorated = encoding.decorated;
    declaration.undecorated = encoding.undecorated;
    if (extended && chance(drawing, 5)) {
        declaration.name += ".cold";
        declaration.decorated += " [clone .cold]";
        declaration.undecorated += " [clone .cold]";
    }
    declaration.house_form = drawing.house_form;
    declaration.template_params = drawing.template_params;
    return declaration;
}

}  // namespace scheme1
