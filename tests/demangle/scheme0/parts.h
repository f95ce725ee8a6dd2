// The pieces that the scheme-0 encoder puts declarations together from: each holds its
// letters and what they read as, side by side. Nothing here comes from the decoder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scheme0 {

// Some letters depend on what follows them, which is known only once the piece has its
// place. Until settle() they stand as marks.
namespace mark {
inline constexpr char short_literal = '\x01';   // before a payload digit: "1" or "_1_"
inline constexpr char open_end = '\x02';        // "O" that an operator code must not follow
inline constexpr char short_index = '\x03';     // digits and "_" must not follow
inline constexpr char one_byte = '\x04';        // "6" must not follow
inline constexpr char value = '\x05';           // "L" must not follow
inline constexpr char open_reference = '\x06';  // "I" or a digit must not follow
inline constexpr char name_end = '\x07';        // "__", which may be missing where all ends
}  // namespace mark

// Replaces the marks, taking the end of `letters` as the end of what the decoder sees.
// False when a neighbour would be read as part of a marked letter.
bool settle(std::string& letters);

// What a pointer mark, a qualifier or a parenthesis has to know of the type it meets.
enum class Shape { name, bracketed, marked, qualified, function, array };

struct Type {
    std::string code;
    std::string before;  // the text before a declarator, and after it
    std::string after;
    Shape shape = Shape::name;
    bool plain = false;  // a name, or an array of names, without qualifiers
};

struct Expression {
    std::string code;
    std::string text;
    bool operation = false;  // takes parentheses as an operand
    bool greater = false;    // holds ">" outside parentheses
};

// A letter code with its text.
struct Coded {
    const char* code;
    const char* text;
};

// Template arguments: "__tm__" and the list, "<" and the texts.
struct Arguments {
    std::string code;
    std::string text;
};

// A list of parameters, without "(" and ")" in `code`.
struct Parameters {
    std::string code;
    std::string text;
};

// The qualifiers of a function in their letters, and as they read.
struct FunctionQualifiers {
    std::string code;
    std::string text;
};

std::string text_of(const Type& type);
std::string operand_text(const Expression& expression);
std::string joined(const std::vector<std::string>& items);

Type named(std::string_view code, std::string_view text);
Type marked(std::string_view code, std::string_view sign, const Type& to);
Type handle(char letter, const Type& to);     // "Hh" and "Ht"
Type bracketed(char letter, const Type& to);  // "Hi" and "Hp"
Type qualified(std::string_view code, std::string_view words, const Type& type);
Type function(const FunctionQualifiers& qualifiers, const Parameters& parameters,
              const Type& result);
Type array_of(std::string_view bound_code, std::string_view bound_text, const Type& element);
Type vector_of(unsigned size, const Type& element);

// The name with its argument list; a name that ends in "<" keeps a blank before it.
std::string with_list(const std::string& name, const Arguments& arguments);

// The length and the letters of a run.
std::string length_prefixed(std::string_view run);

// Every operator code, in the order of the tables.
extern const Coded operator_codes[];
extern const unsigned operator_code_count;

}  // namespace scheme0
