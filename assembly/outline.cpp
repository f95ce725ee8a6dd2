// Follows statements, preprocessor lines and braces through a source text and tells what
// kind of block each opening brace begins. Macros are not expanded, so a function is
// recognised by its shape: a parameter list with a body behind it.
#include "assembly/outline.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "assembly/token.h"

namespace gas2interlist {
namespace {

constexpr std::array<std::string_view, 13> control_words = {
    "case", "catch", "co_return", "co_yield", "default", "do",    "else",
    "for",  "if",    "return",    "switch",   "throw",   "while",
};
constexpr std::array<std::string_view, 5> scope_words = {
    "class", "enum", "namespace", "struct", "union",
};
// Words whose parentheses are no parameter list.
constexpr std::array<std::string_view, 10> attribute_words = {
    "__asm__", "__attribute", "__attribute__", "__declspec", "__typeof__",
    "alignas", "decltype",    "explicit",      "noexcept",   "requires",
};
// Words between a function's parameters and its body.
constexpr std::array<std::string_view, 5> trailing_words = {
    "const", "noexcept", "override", "try", "volatile",
};
constexpr std::array<std::string_view, 5> access_words = {
    "private", "protected", "public", "signals", "slots",
};

bool is_one_of(std::string_view word, const auto& words) {
    return std::binary_search(words.begin(), words.end(), word);
}

enum class Token : std::uint8_t {
    none,
    word,
    number,
    literal,
    assign,
    comma,
    open_paren,
    close_paren,
    close_bracket,
    angle,
    closed_initializer,
    other,
};

// What is known of the statement being read: all that tells a function's declaration
// from anything else that a brace may follow.
struct Statement {
    std::uint32_t line = 0;  // of its first token; 0 while it has none
    std::size_t at = 0;
    std::size_t tokens = 0;
    bool control = false;  // begins with or contains if, for, return, ...
    bool scope = false;    // class, struct, namespace, ...
    bool name_space = false;
    bool assigned = false;           // an "=" stands in it
    bool parameters = false;         // WORD "(" stands in it
    bool declares = false;           // and something stood before the WORD
    bool constructing = false;       // ":" stands behind its parameters
    bool operator_name = false;      // "operator" was read, its parameters not yet
    std::size_t template_depth = 0;  // of angle brackets behind "template"
    std::uint32_t capture_line = 0;  // of a lambda's "[", 0 when there is none
    std::size_t capture_at = 0;
    std::size_t capture_depth = 0;
};

// One `#if` that is open.
struct Conditional {
    std::size_t block;  // the state at its beginning, for its other branches
    std::size_t paren_depth;
    Statement statement;
    // How the deepest branch so far ended, once a branch has.
    std::optional<std::size_t> end = {};
    Statement end_statement = {};
};

struct Lexer {
    SourceOutline outline;
    std::string_view text;
    std::size_t at = 0;
    std::uint32_t line = 1;

    Statement statement;
    // The statement that a K&R parameter declaration may belong to.
    Statement old_style;
    Token previous = Token::none;
    std::string_view previous_word;
    std::uint32_t previous_line = 0;  // of the last token
    std::size_t paren_depth = 0;
    std::size_t bracket_depth = 0;

    std::size_t block = no_block;  // innermost open one
    // Beside each block: the statement and depth to go on with, the block that stands
    // for it in the other branch of a conditional, and how deep it lies.
    std::vector<Statement> resume;
    std::vector<std::size_t> resume_depth;
    std::vector<std::size_t> twin;
    std::vector<std::size_t> depth;
    std::vector<Conditional> conditionals;
};

char peek(const Lexer& lexer, std::size_t ahead = 0) {
    return lexer.at + ahead < lexer.text.size() ? lexer.text[lexer.at + ahead] : '\0';
}

void mark_statement_end(Lexer& lexer) {
    if (lexer.outline.statement_end.size() <= lexer.line) {
        lexer.outline.statement_end.resize(lexer.line + 1);
    }
    lexer.outline.statement_end[lexer.line] = true;
}

// Moves to `end`, which may lie some lines on.
void move_to(Lexer& lexer, std::size_t end) {
    lexer.line += static_cast<std::uint32_t>(
        std::count(lexer.text.begin() + static_cast<std::ptrdiff_t>(lexer.at),
                   lexer.text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
    lexer.at = end;
}

std::string_view take_word(Lexer& lexer) {
    const std::size_t begin = lexer.at;
    lexer.at = end_of_word(lexer.text, begin);
    return lexer.text.substr(begin, lexer.at - begin);
}

// --- Statements and blocks ---

void reset_statement(Lexer& lexer) {
    lexer.statement = Statement();
    lexer.previous = Token::none;
    lexer.previous_word = {};
    lexer.bracket_depth = 0;
}

void begin_token(Lexer& lexer) {
    Statement& statement = lexer.statement;
    if (statement.line == 0) {
        statement.line = lexer.line;
        statement.at = lexer.at;
    }
    ++statement.tokens;
    lexer.previous_line = lexer.line;
}

bool is_initializer(const Lexer& lexer) {
    const Statement& statement = lexer.statement;
    if (statement.capture_line != 0 && lexer.previous != Token::assign) {
        return false;
    }
    if (statement.constructing) {
        return lexer.previous == Token::word || lexer.previous == Token::angle;
    }
    if (lexer.previous == Token::word && lexer.previous_word == "requires") {
        return true;
    }
    if (statement.line == 0) {
        return lexer.block != no_block &&
               lexer.outline.blocks[lexer.block].kind == BlockKind::initializer;
    }
    return statement.assigned || lexer.paren_depth > 0 || lexer.previous == Token::assign ||
           lexer.previous == Token::comma;
}

// Whether statements, rather than declarations, stand at this place.
bool is_in_body(const Lexer& lexer) {
    return lexer.block != no_block && lexer.outline.blocks[lexer.block].kind != BlockKind::scope;
}

BlockKind kind_of_block(const Lexer& lexer) {
    const Statement& statement = lexer.statement;
    if (is_initializer(lexer)) {
        return BlockKind::initializer;
    }
    if (statement.capture_line != 0) {
        return BlockKind::function;
    }
    // `class EXPORT(x) name {`, not `struct type* name(...) {`
    const bool is_scope =
        statement.name_space || (statement.scope && lexer.previous == Token::word &&
                                 !is_one_of(lexer.previous_word, trailing_words));
    if (statement.parameters && !statement.control && !is_scope &&
        (statement.declares || !is_in_body(lexer))) {
        return BlockKind::function;
    }
    if (statement.scope) {
        return BlockKind::scope;
    }
    if (statement.line == 0) {
        return lexer.old_style.line != 0 ? BlockKind::function : BlockKind::statement;
    }
    // extern "C" {
    return is_in_body(lexer) || lexer.previous != Token::literal ? BlockKind::statement
                                                                 : BlockKind::scope;
}

void open_block(Lexer& lexer) {
    // A brace in the first column begins a body, whatever parentheses a conditional left open.
    if (!is_in_body(lexer) && lexer.at > 0 && lexer.text[lexer.at - 1] == '\n') {
        lexer.paren_depth = 0;
    }
    const BlockKind kind = kind_of_block(lexer);
    Statement header = lexer.statement;
    if (header.capture_line != 0 && kind == BlockKind::function) {
        header.line = header.capture_line;
        header.at = header.capture_at;
    } else if (header.line == 0 && kind == BlockKind::function) {
        header = lexer.old_style;
    } else if (header.line == 0) {
        header.line = lexer.line;
        header.at = lexer.at;
    }
    lexer.outline.blocks.push_back({.header_line = header.line,
                                    .open_line = lexer.line,
                                    .close_line = 0,
                                    .header_at = header.at,
                                    .open_at = lexer.at,
                                    .parent = lexer.block,
                                    .kind = kind});
    lexer.depth.push_back(lexer.block == no_block ? 1 : lexer.depth[lexer.block] + 1);
    lexer.twin.push_back(no_block);
    // A braced list or a lambda in the midst of a statement: the statement goes on.
    const bool goes_on = kind == BlockKind::initializer || lexer.statement.capture_line != 0;
    lexer.resume.push_back(goes_on ? lexer.statement : Statement());
    lexer.resume.back().capture_line = 0;
    lexer.resume_depth.push_back(goes_on ? lexer.paren_depth : 0);
    lexer.block = lexer.outline.blocks.size() - 1;
    lexer.paren_depth = 0;
    lexer.old_style = Statement();
    if (kind != BlockKind::initializer) {
        mark_statement_end(lexer);
    }
    reset_statement(lexer);
    ++lexer.at;
}

void close_block(Lexer& lexer) {
    reset_statement(lexer);
    lexer.old_style = Statement();
    if (lexer.block == no_block) {
        ++lexer.at;
        return;
    }
    const std::size_t closed = lexer.block;
    if (lexer.outline.blocks[closed].kind != BlockKind::initializer) {
        mark_statement_end(lexer);
    }
    lexer.outline.blocks[closed].close_line = lexer.line;
    for (std::size_t one = lexer.twin[closed];
         one != no_block && lexer.outline.blocks[one].close_line == 0; one = lexer.twin[one]) {
        lexer.outline.blocks[one].close_line = lexer.line;
    }
    lexer.statement = lexer.resume[closed];
    lexer.paren_depth = lexer.resume_depth[closed];
    if (lexer.statement.line != 0) {
        lexer.previous = Token::closed_initializer;
    }
    lexer.block = lexer.outline.blocks[closed].parent;
    ++lexer.at;
}

// `int f(a, b) int a; char *b; {`: a declaration that names no parameter types goes on
// behind its semicolons.
void end_statement(Lexer& lexer) {
    ++lexer.at;
    if (lexer.paren_depth > 0) {
        return;  // for (;;)
    }
    mark_statement_end(lexer);
    const Statement& statement = lexer.statement;
    const bool ends_in_name =
        lexer.previous == Token::word || lexer.previous == Token::close_bracket;
    const bool may_be_parameter = statement.line != 0 && !statement.assigned && ends_in_name;
    if (!may_be_parameter || is_in_body(lexer)) {
        lexer.old_style = Statement();
    } else if (statement.parameters && !statement.control) {
        lexer.old_style = statement;
    }
    reset_statement(lexer);
}

void read_open_paren(Lexer& lexer) {
    begin_token(lexer);
    if (lexer.previous == Token::word && lexer.previous_word == "operator" &&
        peek(lexer, 1) == ')') {
        lexer.at += 2;  // the name "operator()"
        lexer.previous = Token::other;
        return;
    }
    Statement& statement = lexer.statement;
    if (lexer.paren_depth == 0 && !statement.parameters && !statement.assigned) {
        const bool is_list = lexer.previous == Token::word &&
                             !is_one_of(lexer.previous_word, attribute_words) &&
                             !is_one_of(lexer.previous_word, control_words);
        if (is_list || statement.operator_name) {
            statement.parameters = true;
            statement.declares = statement.tokens > 2;
        }
        statement.operator_name = false;
    }
    ++lexer.paren_depth;
    lexer.previous = Token::open_paren;
    ++lexer.at;
}

void read_open_bracket(Lexer& lexer) {
    begin_token(lexer);
    const bool is_subscript =
        (lexer.previous == Token::word && !is_one_of(lexer.previous_word, control_words)) ||
        lexer.previous == Token::close_paren || lexer.previous == Token::close_bracket;
    const bool is_attribute = peek(lexer, 1) == '[';
    if (!is_subscript && !is_attribute && lexer.bracket_depth == 0) {
        lexer.statement.capture_line = lexer.line;
        lexer.statement.capture_at = lexer.at;
        lexer.statement.capture_depth = lexer.paren_depth;
    }
    ++lexer.bracket_depth;
    lexer.previous = Token::other;
    ++lexer.at;
}

void read_colon(Lexer& lexer) {
    begin_token(lexer);
    if (peek(lexer, 1) == ':') {
        lexer.at += 2;
        lexer.previous = Token::other;
        return;
    }
    ++lexer.at;
    Statement& statement = lexer.statement;
    if (lexer.paren_depth > 0) {
        lexer.previous = Token::other;
        return;
    }
    const bool is_label =
        statement.tokens == 2 || is_one_of(lexer.previous_word, access_words) || statement.control;
    if (is_label) {
        return reset_statement(lexer);
    }
    statement.constructing = statement.parameters && !is_in_body(lexer);
    lexer.previous = Token::other;
}

void read_word(Lexer& lexer) {
    // Blank or comment lines hardly ever stand within a declaration, but between one and
    // a macro ahead of it that needs no semicolon.
    const bool is_apart = lexer.previous_line != 0 && lexer.line > lexer.previous_line + 1;
    if (is_apart && lexer.paren_depth == 0 && !lexer.statement.constructing && !is_in_body(lexer)) {
        reset_statement(lexer);
    }
    begin_token(lexer);
    const std::string_view word = take_word(lexer);
    const char next = peek(lexer);
    if (next == '"' && word.ends_with('R') && word.size() <= 3) {
        move_to(lexer, end_of_raw_string(lexer.text, lexer.at));
        lexer.previous = Token::literal;
        return;
    }
    if (next == '"' || next == '\'') {
        return;  // the prefix of a literal
    }
    if (lexer.paren_depth == 0 && lexer.statement.template_depth == 0) {
        Statement& statement = lexer.statement;
        statement.control = statement.control || is_one_of(word, control_words);
        statement.scope = statement.scope || is_one_of(word, scope_words);
        statement.name_space = statement.name_space || word == "namespace";
        statement.operator_name = statement.operator_name || word == "operator";
    }
    lexer.previous = Token::word;
    lexer.previous_word = word;
}

// --- Preprocessor lines ---

// Skips what an `#if 0` hides, up to its `#else`, `#elif` or `#endif`.
void skip_disabled(Lexer& lexer) {
    std::size_t nested = 0;
    while (lexer.at < lexer.text.size()) {
        std::size_t at = lexer.text.find_first_not_of(" \t\f\v\r", lexer.at);
        if (at != std::string_view::npos && lexer.text[at] == '#') {
            at = lexer.text.find_first_not_of(" \t", at + 1);
            const std::string_view rest =
                at == std::string_view::npos ? std::string_view() : lexer.text.substr(at);
            if (nested == 0 && (rest.starts_with("el") || rest.starts_with("endif"))) {
                return;
            }
            nested += rest.starts_with("if") ? 1 : 0;
            nested -= rest.starts_with("endif") ? 1 : 0;
        }
        move_to(lexer, end_of_line(lexer.text, lexer.at));
        if (lexer.at < lexer.text.size()) {
            move_to(lexer, lexer.at + 1);
        }
    }
}

std::size_t depth_of(const Lexer& lexer, std::size_t block) {
    return block == no_block ? 0 : lexer.depth[block];
}

// At an `#endif`, the blocks that both branches left open stand for each other.
void join_branches(Lexer& lexer, std::size_t first, std::size_t second) {
    const std::size_t first_depth = depth_of(lexer, first);
    const std::size_t second_depth = depth_of(lexer, second);
    lexer.block = first_depth > second_depth ? first : second;
    if (first_depth != second_depth) {
        return;
    }
    while (first != second && first != no_block && second != no_block) {
        if (lexer.twin[second] == no_block && first < second) {
            lexer.twin[second] = first;
        }
        first = lexer.outline.blocks[first].parent;
        second = lexer.outline.blocks[second].parent;
    }
}

// The rest of a preprocessor line: comments in it may reach over its end.
void skip_directive_rest(Lexer& lexer) {
    while (lexer.at < lexer.text.size()) {
        const char c = peek(lexer);
        if (c == '\n' && !is_spliced(lexer.text, lexer.at)) {
            return;
        }
        if (c == '/' && peek(lexer, 1) == '*') {
            move_to(lexer, end_of_block_comment(lexer.text, lexer.at));
        } else if (c == '/' && peek(lexer, 1) == '/') {
            return move_to(lexer, end_of_line(lexer.text, lexer.at));
        } else if (c == '"' || c == '\'') {
            move_to(lexer, end_of_literal(lexer.text, lexer.at));
        } else {
            move_to(lexer, lexer.at + 1);
        }
    }
}

void read_directive(Lexer& lexer) {
    ++lexer.at;
    while (peek(lexer) == ' ' || peek(lexer) == '\t') {
        ++lexer.at;
    }
    const std::string_view name = take_word(lexer);
    std::vector<Conditional>& conditionals = lexer.conditionals;
    bool is_disabled = false;
    if (name == "if" || name == "ifdef" || name == "ifndef") {
        std::string_view condition = lexer.text.substr(lexer.at);
        condition.remove_prefix(std::min(condition.find_first_not_of(" \t"), condition.size()));
        is_disabled = name == "if" && condition.starts_with("0") &&
                      (condition.size() == 1 || !is_word_part(condition[1]));
        conditionals.push_back({lexer.block, lexer.paren_depth, lexer.statement});
    } else if ((name == "else" || name.starts_with("elif")) && !conditionals.empty()) {
        Conditional& group = conditionals.back();
        if (!group.end || depth_of(lexer, lexer.block) > depth_of(lexer, *group.end)) {
            group.end = lexer.block;
            group.end_statement = lexer.statement;
        }
        lexer.block = group.block;
        lexer.paren_depth = group.paren_depth;
        lexer.statement = group.statement;
    } else if (name == "endif" && !conditionals.empty()) {
        const Conditional group = conditionals.back();
        conditionals.pop_back();
        if (group.end) {
            join_branches(lexer, *group.end, lexer.block);
            // Two forms of one declaration: it begins with the first.
            if (group.end_statement.parameters && lexer.statement.parameters) {
                lexer.statement = group.end_statement;
            }
        }
    }
    if (lexer.paren_depth == 0 && !lexer.statement.parameters) {
        reset_statement(lexer);
    }
    if (name == "error" || name == "warning" || name == "pragma") {
        move_to(lexer, end_of_line(lexer.text, lexer.at));
    } else {
        skip_directive_rest(lexer);
    }
    if (is_disabled) {
        skip_disabled(lexer);
    }
}

void read_other(Lexer& lexer, char c) {
    begin_token(lexer);
    switch (c) {
        case ')':
            lexer.paren_depth -= lexer.paren_depth > 0 ? 1 : 0;
            lexer.previous = Token::close_paren;
            break;
        case ']':
            lexer.bracket_depth -= lexer.bracket_depth > 0 ? 1 : 0;
            lexer.previous = Token::close_bracket;
            break;
        case ',':
            if (lexer.bracket_depth == 0 && lexer.paren_depth <= lexer.statement.capture_depth) {
                lexer.statement.capture_line = 0;
            }
            lexer.previous = Token::comma;
            break;
        case '=':
            if (!lexer.statement.operator_name && lexer.statement.template_depth == 0 &&
                lexer.paren_depth == 0 && lexer.bracket_depth == 0) {
                lexer.statement.assigned = true;
            }
            lexer.previous = Token::assign;
            break;
        case '<':
            if (lexer.paren_depth == 0 &&
                (lexer.statement.template_depth > 0 || lexer.previous_word == "template")) {
                ++lexer.statement.template_depth;
                lexer.previous_word = {};
            }
            lexer.previous = Token::other;
            break;
        case '>':
            lexer.statement.template_depth -=
                lexer.paren_depth == 0 && lexer.statement.template_depth > 0 ? 1 : 0;
            lexer.previous = Token::angle;
            break;
        default:
            lexer.previous = Token::other;
            break;
    }
    ++lexer.at;
}

// Reads one token or one stretch between tokens. `at_line_start` is whether only blanks
// stand before it on its line.
void read_token(Lexer& lexer, bool at_line_start) {
    const char c = peek(lexer);
    if (is_word_start(c)) {
        return read_word(lexer);
    }
    if (is_word_part(c)) {
        begin_token(lexer);
        lexer.previous = Token::number;
        return move_to(lexer, end_of_number(lexer.text, lexer.at));
    }
    switch (c) {
        case '/':
            if (peek(lexer, 1) == '*') {
                return move_to(lexer, end_of_block_comment(lexer.text, lexer.at));
            }
            if (peek(lexer, 1) == '/') {
                return move_to(lexer, end_of_line(lexer.text, lexer.at));
            }
            return read_other(lexer, c);
        case '"':
        case '\'':
            begin_token(lexer);
            lexer.previous = Token::literal;
            return move_to(lexer, end_of_literal(lexer.text, lexer.at));
        case '#':
            return at_line_start ? read_directive(lexer) : read_other(lexer, c);
        case '{':
            return open_block(lexer);
        case '}':
            return close_block(lexer);
        case ';':
            return end_statement(lexer);
        case '(':
            return read_open_paren(lexer);
        case '[':
            return read_open_bracket(lexer);
        case ':':
            return read_colon(lexer);
        case '\\':
            ++lexer.at;  // a spliced line
            return;
        default:
            return read_other(lexer, c);
    }
}

}  // namespace

SourceOutline outline_source(std::string text) {
    Lexer lexer;
    lexer.text = text;
    bool at_line_start = true;
    while (lexer.at < text.size()) {
        const char c = text[lexer.at];
        if (c == '\n') {
            at_line_start = true;
            ++lexer.line;
            ++lexer.at;
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
            ++lexer.at;
        } else {
            // A directive ends before a line's end, or before the line that ends an `#if 0`.
            const bool is_nothing = c == '#' || (c == '/' && peek(lexer, 1) == '*');
            read_token(lexer, at_line_start);
            at_line_start = at_line_start && is_nothing;
        }
    }
    for (Block& block : lexer.outline.blocks) {
        if (block.close_line == 0) {
            block.close_line = lexer.line;
        }
    }
    lexer.outline.statement_end.resize(lexer.line + 1);
    lexer.outline.text = std::move(text);
    return std::move(lexer.outline);
}

}  // namespace gas2interlist
