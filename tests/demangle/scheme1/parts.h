// The pieces that the scheme-1 encoder puts declarations together from. A part knows
// how it is mangled, by what identity the substitution table knows it, and how it
// reads; compression happens once, in mangle(). Nothing here comes from the decoder.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scheme1 {

struct Part;
using Tree = std::shared_ptr<const Part>;

// A run of letters as they stand in the name, or a part of its own.
struct Piece {
    Piece(const char* text) : letters(text) {}
    Piece(std::string text) : letters(std::move(text)) {}
    Piece(Tree tree) : part(std::move(tree)) {}

    std::string letters;
    Tree part;
};
using Pieces = std::vector<Piece>;

// What a pointer mark or a parenthesis has to know of the type it is put on.
enum class Shape { name, marked, function, array };

struct Part {
    Pieces pieces;
    std::string plain;     // the encoding without any compression
    std::string identity;  // what the substitution table knows it by; empty: never entered
    std::string before;    // the text, of a type what stands before a declarator
    std::string after;     // of a type what stands after a declarator
    Shape shape = Shape::name;
    bool operation = false;  // an expression that takes parentheses as an operand
    bool greater = false;    // an expression that holds ">" outside parentheses
    bool comma = false;      // a comma expression, which takes them as one of a list, too
};

std::string text_of(const Tree& tree);

// The name that the pieces make, each entered component spelled out once and then
// referred to by number, after "_Z" or whatever else comes first. The second spells
// everything out every time: a valid name too, and one without any numbers.
std::string mangle(std::string_view start, const Tree& tree);
std::string mangle_uncompressed(std::string_view start, const Tree& tree);

// A part that never enters the table, and one that does.
Tree fixed(Pieces pieces, std::string text);
Tree entered(Pieces pieces, std::string text);

std::string source_name(std::string_view identifier);
// "_" for 0, "0_" for 1, and so on, as discriminators and parameters count.
std::string sequence(unsigned number);
std::string joined(const std::vector<std::string>& items);

// Types.
Tree builtin(std::string_view code, std::string_view text);
Tree template_param(unsigned number, bool of_lambda);
Tree pointer(std::string_view code, const Tree& to);  // "P", "R" or "O"
Tree qualified(std::string_view letters, const Tree& type);
Tree array_of(const std::string& bound, const std::string& bound_text, const Tree& element);
Tree array_of(const Tree& bound, const Tree& element);
Tree qualified_array(std::string_view letters, const std::string& bound, const Tree& element);
Tree member_pointer(const Tree& owner, const Tree& member);
Tree prefixed(std::string_view code, std::string_view text, const Tree& type);
// A type that only enters the table together with what stands in front of it.
Tree prefixed_whole(std::string_view code, std::string_view text, const Tree& type);
Tree expansion(const Tree& pattern);

struct Signature {
    std::string qualifiers;  // letters
    Tree exception;          // what stands before "F", its text " noexcept" and the like
    bool transaction_safe = false;
    bool extern_c = false;
    Tree result;  // null where none is encoded
    std::vector<Tree> parameters;
    bool variadic = false;
    char reference = ' ';  // "R" or "O"
};
Tree function_type(const Signature& signature);
std::string qualifier_text(std::string_view letters);
std::string parameter_text(const std::vector<Tree>& parameters, bool variadic);
Pieces parameter_pieces(const std::vector<Tree>& parameters, bool variadic);

// Template arguments. Texts that are empty leave no comma.
Tree arguments(const std::vector<Tree>& list);
Tree pack(const std::vector<Tree>& list);
Tree expression_argument(const Tree& expression);

// One component of a name.
struct Unqualified {
    Tree tree;
    std::string repeat;  // what a constructor inside it repeats
    char kind = ' ';     // of a constructor or destructor
    bool conversion = false;
};

struct Name {
    Tree prefix;           // as it stands in front of further components
    bool unscoped = true;  // needs no "N" and "E" of its own
    std::string text;
    std::string repeat;
    char kind = ' ';
    bool conversion = false;
    bool has_arguments = false;
};

Name std_namespace();
Name abbreviation(char letter);
Name tagged(const Name& name, std::string_view tag);
Name of_parameter(const Tree& parameter);
Name global_name(const Unqualified& component);
Name member_name(const Name& scope, const Unqualified& component);
Name with_arguments(const Name& name, const std::vector<Tree>& list);
// The root of the names inside a function: no letters of its own, but its
// components are other ones than the global ones.
Name local_root(const Tree& function);
Tree type_of(const Name& name);
Tree entity_of(const Name& name, std::string_view qualifiers);

// Expressions.
Tree bare(Pieces pieces, std::string text);
Tree operation(Pieces pieces, std::string text, bool greater = false);
Tree comma(const Tree& first, const Tree& second);
// A cast to the type, in the form of a call.
Tree cast(Pieces pieces, const Tree& type, const std::string& values);
std::string operand_text(const Tree& expression);
std::string item_text(const Tree& expression);

// A whole name without "_Z", with both of its texts.
struct Encoding {
    Tree tree;
    std::string decorated;
    std::string undecorated;
};

}  // namespace scheme1
