// Parts of scheme-1 names: their letters, their identity and their text. Called by
// the drawing of random declarations.
#include "tests/demangle/scheme1/parts.h"

#include <algorithm>
#include <map>

namespace scheme1 {
namespace {

struct Table {
    bool compress = true;
    std::map<std::string, std::size_t, std::less<>> numbers;
    std::string out;
};

std::string base36(std::size_t number) {
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"[number % 36]);
        number /= 36;
    } while (number != 0);
    return digits;
}

void write(const Part& part, Table& table) {
    if (!part.identity.empty()) {
        if (const auto known = table.numbers.find(part.identity); known != table.numbers.end()) {
            const std::size_t number = known->second;
            table.out += number == 0 ? "S_" : "S" + base36(number - 1) + "_";
            return;
        }
    }
    for (const Piece& piece : part.pieces) {
        if (piece.part) {
            write(*piece.part, table);
        } else {
            table.out += piece.letters;
        }
    }
    if (table.compress && !part.identity.empty()) {
        table.numbers.emplace(part.identity, table.numbers.size());
    }
}

std::string plain_of(const Pieces& pieces) {
    std::string plain;
    for (const Piece& piece : pieces) {
        plain += piece.part ? piece.part->plain : piece.letters;
    }
    return plain;
}

Part part_of(Pieces pieces, std::string text) {
    Part part;
    part.plain = plain_of(pieces);
    part.pieces = std::move(pieces);
    part.before = std::move(text);
    return part;
}

Tree tree_of(Part part) {
    return std::make_shared<const Part>(std::move(part));
}

Tree entered_part(Part part) {
    part.identity = part.plain;
    return tree_of(std::move(part));
}

bool ends_in_mark(const std::string& text) {
    return text.ends_with('*') || text.ends_with('&') || text.ends_with('(');
}

// A mark, a parenthesis or a bracket stands behind one blank, but right behind a mark.
std::string spaced(const std::string& text) {
    return ends_in_mark(text) || text.ends_with(' ') ? text : text + " ";
}

// A pointer mark, alone or with its class in front.
Part marked(Part part, const Tree& type, const std::string& mark) {
    const bool wrapped = type->shape == Shape::function || type->shape == Shape::array;
    part.before = wrapped ? type->before + "(" + mark : spaced(type->before) + mark;
    part.after = wrapped ? ")" + type->after : type->after;
    part.shape = Shape::marked;
    return part;
}

}  // namespace

std::string text_of(const Tree& tree) {
    return tree->before + tree->after;
}

std::string mangle(std::string_view start, const Tree& tree) {
    Table table;
    table.out = start;
    write(*tree, table);
    return table.out;
}

std::string mangle_uncompressed(std::string_view start, const Tree& tree) {
    Table table;
    table.compress = false;
    table.out = start;
    write(*tree, table);
    return table.out;
}

Tree fixed(Pieces pieces, std::string text) {
    return tree_of(part_of(std::move(pieces), std::move(text)));
}

Tree entered(Pieces pieces, std::string text) {
    return entered_part(part_of(std::move(pieces), std::move(text)));
}

std::string source_name(std::string_view identifier) {
    return std::to_string(identifier.size()) + std::string(identifier);
}

std::string sequence(unsigned number) {
    return number == 0 ? "_" : std::to_string(number - 1) + "_";
}

std::string joined(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
        if (!item.empty()) {
            text += text.empty() ? item : ", " + item;
        }
    }
    return text;
}

Tree builtin(std::string_view code, std::string_view text) {
    return fixed({std::string(code)}, std::string(text));
}

Tree template_param(unsigned number, bool of_lambda) {
    const std::string letters = "T" + sequence(number);
    Part part = part_of({letters}, (of_lambda ? "auto:" : "T") + std::to_string(number + 1));
    if (of_lambda) {
        // The parameter of a generic lambda is another one than its surroundings'.
        part.plain = "\x02" + letters;
    }
    return entered_part(std::move(part));
}

Tree pointer(std::string_view code, const Tree& to) {
    const std::string mark = code == "P" ? "*" : code == "R" ? "&" : "&&";
    return entered_part(marked(part_of({std::string(code), to}, ""), to, mark));
}

std::string qualifier_text(std::string_view letters) {
    std::string text;
    for (const auto& [letter, word] :
         {std::pair{'K', "const"}, std::pair{'V', "volatile"}, std::pair{'r', "restrict"}}) {
        if (letters.find(letter) != std::string_view::npos) {
            text += text.empty() ? word : std::string(" ") + word;
        }
    }
    return text;
}

Tree qualified(std::string_view letters, const Tree& type) {
    Part part = part_of({std::string(letters), type}, "");
    const std::string words = qualifier_text(letters);
    part.before = type->shape == Shape::marked ? type->before + words : words + " " + type->before;
    part.after = type->after;
    part.shape = type->shape;
    return entered_part(std::move(part));
}

static Tree array_part(Pieces pieces, const std::string& bound_text, const Tree& element) {
    Part part = part_of(std::move(pieces), "");
    part.before = element->shape == Shape::array ? element->before : spaced(element->before);
    part.after = "[" + bound_text + "]" + element->after;
    part.shape = Shape::array;
    return entered_part(std::move(part));
}

Tree array_of(const std::string& bound, const std::string& bound_text, const Tree& element) {
    return array_part({"A" + bound + "_", element}, bound_text, element);
}

Tree array_of(const Tree& bound, const Tree& element) {
    return array_part({"A", bound, "_", element}, text_of(bound), element);
}

Tree qualified_array(std::string_view letters, const std::string& bound, const Tree& element) {
    const Tree text = array_of(bound, bound, qualified(letters, element));
    Part part = part_of({std::string(letters), array_of(bound, bound, element)}, text->before);
    part.after = text->after;
    part.shape = Shape::array;
    return entered_part(std::move(part));
}

Tree member_pointer(const Tree& owner, const Tree& member) {
    return entered_part(marked(part_of({"M", owner, member}, ""), member, text_of(owner) + "::*"));
}

Tree prefixed(std::string_view code, std::string_view text, const Tree& type) {
    Part part = part_of({std::string(code), type}, std::string(text) + type->before);
    part.after = type->after;
    part.shape = type->shape;
    return entered_part(std::move(part));
}

Tree prefixed_whole(std::string_view code, std::string_view text, const Tree& type) {
    Part inner = *type;
    inner.identity.clear();
    return prefixed(code, text, tree_of(std::move(inner)));
}

Tree expansion(const Tree& pattern) {
    return entered({"Dp", pattern}, text_of(pattern) + "...");
}

std::string parameter_text(const std::vector<Tree>& parameters, bool variadic) {
    std::vector<std::string> items;
    items.reserve(parameters.size() + 1);
    for (const Tree& parameter : parameters) {
        items.push_back(text_of(parameter));
    }
    if (variadic) {
        items.emplace_back("...");
    }
    return "(" + joined(items) + ")";
}

Pieces parameter_pieces(const std::vector<Tree>& parameters, bool variadic) {
    Pieces pieces(parameters.begin(), parameters.end());
    if (variadic) {
        pieces.emplace_back("z");
    } else if (pieces.empty()) {
        pieces.emplace_back("v");
    }
    return pieces;
}

Tree function_type(const Signature& signature) {
    Pieces pieces = {signature.qualifiers};
    if (signature.exception) {
        pieces.emplace_back(signature.exception);
    }
    pieces.emplace_back(std::string(signature.transaction_safe ? "Dx" : "") + "F" +
                        (signature.extern_c ? "Y" : ""));
    pieces.emplace_back(signature.result);
    for (Piece& piece : parameter_pieces(signature.parameters, signature.variadic)) {
        pieces.push_back(std::move(piece));
    }
    pieces.emplace_back(signature.reference == ' ' ? "E"
                                                   : std::string(1, signature.reference) + "E");
    Part part = part_of(std::move(pieces), spaced(signature.result->before));
    part.after = parameter_text(signature.parameters, signature.variadic);
    if (!signature.qualifiers.empty()) {
        part.after += " " + qualifier_text(signature.qualifiers);
    }
    part.after += signature.reference == 'R' ? " &" : signature.reference == 'O' ? " &&" : "";
    part.after += signature.transaction_safe ? " transaction_safe" : "";
    part.after += signature.exception ? text_of(signature.exception) : "";
    part.after += signature.result->after;
    part.shape = Shape::function;
    return entered_part(std::move(part));
}

static Tree listed(std::string_view open, const std::vector<Tree>& list) {
    Pieces pieces = {std::string(open)};
    std::vector<std::string> items;
    for (const Tree& item : list) {
        pieces.emplace_back(item);
        items.push_back(text_of(item));
    }
    pieces.emplace_back("E");
    return fixed(std::move(pieces), joined(items));
}

Tree arguments(const std::vector<Tree>& list) {
    return listed("I", list);
}

Tree pack(const std::vector<Tree>& list) {
    return listed("J", list);
}

Tree expression_argument(const Tree& expression) {
    const std::string text = item_text(expression);
    return fixed({"X", expression, "E"}, expression->greater ? "(" + text + ")" : text);
}

Name std_namespace() {
    Name name;
    name.prefix = fixed({"St"}, "std");
    name.text = "std";
    name.repeat = "std";
    return name;
}

Name abbreviation(char letter) {
    struct Row {
        char letter;
        const char* text;
        const char* repeat;
    };
    static constexpr Row rows[] = {
        {'a', "std::allocator", "allocator"},
        {'b', "std::basic_string", "basic_string"},
        {'s', "std::basic_string<char, std::char_traits<char>, std::allocator<char>>",
         "basic_string"},
        {'i', "std::basic_istream<char, std::char_traits<char>>", "basic_istream"},
        {'o', "std::basic_ostream<char, std::char_traits<char>>", "basic_ostream"},
        {'d', "std::basic_iostream<char, std::char_traits<char>>", "basic_iostream"},
    };
    const Row& row = *std::find_if(std::begin(rows), std::end(rows),
                                   [&](const Row& each) { return each.letter == letter; });
    Name name;
    name.prefix = fixed({std::string("S") + letter}, row.text);
    name.text = row.text;
    name.repeat = row.repeat;
    return name;
}

Name tagged(const Name& name, std::string_view tag) {
    Name result = name;
    result.text += "[abi:" + std::string(tag) + "]";
    result.prefix = entered({name.prefix, "B" + source_name(tag)}, result.text);
    return result;
}

Name of_parameter(const Tree& parameter) {
    Name name;
    name.prefix = parameter;
    name.text = text_of(parameter);
    name.repeat = name.text;
    return name;
}

Name global_name(const Unqualified& component) {
    Name name;
    name.text = text_of(component.tree);
    name.prefix = entered({component.tree}, name.text);
    name.repeat = component.repeat;
    name.kind = component.kind;
    name.conversion = component.conversion;
    return name;
}

Name member_name(const Name& scope, const Unqualified& component) {
    Name name = global_name(component);
    const bool root = scope.text.empty();
    name.unscoped = root || scope.prefix->plain == "St";
    name.text = root ? name.text : scope.text + "::" + name.text;
    name.prefix = entered({scope.prefix, component.tree}, name.text);
    return name;
}

Name with_arguments(const Name& name, const std::vector<Tree>& list) {
    Name whole = name;
    const Tree tail = arguments(list);
    whole.text += (name.text.ends_with('<') ? " <" : "<") + text_of(tail) + ">";
    whole.prefix = entered({name.prefix, tail}, whole.text);
    whole.has_arguments = true;
    return whole;
}

Name local_root(const Tree& function) {
    Part part;
    part.plain = "\x03" + function->plain;
    Name name;
    name.prefix = tree_of(std::move(part));
    return name;
}

Tree type_of(const Name& name) {
    Part part = *name.prefix;
    if (!name.unscoped) {
        part.pieces.insert(part.pieces.begin(), "N");
        part.pieces.emplace_back("E");
        part.plain = "N" + part.plain + "E";
    }
    return tree_of(std::move(part));
}

Tree entity_of(const Name& name, std::string_view qualifiers) {
    Part part = *name.prefix;
    if (!name.unscoped) {
        part.pieces.insert(part.pieces.begin(), "N" + std::string(qualifiers));
        part.pieces.emplace_back("E");
        part.plain = "N" + std::string(qualifiers) + part.plain + "E";
    }
    part.identity.clear();
    return tree_of(std::move(part));
}

Tree bare(Pieces pieces, std::string text) {
    return fixed(std::move(pieces), std::move(text));
}

Tree operation(Pieces pieces, std::string text, bool greater) {
    Part part = part_of(std::move(pieces), std::move(text));
    part.operation = true;
    part.greater = greater;
    return tree_of(std::move(part));
}

Tree comma(const Tree& first, const Tree& second) {
    Part part = part_of({"cm", first, second}, operand_text(first) + ", " + operand_text(second));
    part.operation = true;
    part.comma = true;
    return tree_of(std::move(part));
}

Tree cast(Pieces pieces, const Tree& type, const std::string& values) {
    Part part = part_of(std::move(pieces), text_of(type) + "(" + values + ")");
    const bool ends_in_name = type->shape == Shape::name && !type->before.ends_with(')');
    part.operation = !ends_in_name;
    return tree_of(std::move(part));
}

std::string operand_text(const Tree& expression) {
    return expression->operation ? "(" + text_of(expression) + ")" : text_of(expression);
}

std::string item_text(const Tree& expression) {
    return expression->comma ? operand_text(expression) : text_of(expression);
}

}  // namespace scheme1
