// Follows statements, preprocessor lines and braces through a source text and tells what
// kind of block each opening brace begins. Macros are not expanded, so a function is
// recognised by its shape: a parameter list with a body behind it.
#include "assembly/outline.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "assembly/keyword.h"
#include "assembly/token.h"

namespace assembly {
namespace {

enum class token_kind : std::uint8_t {
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
struct statement_state {
    std::uint32_t line = 0;  // of its first token; 0 while it has none
    std::size_t at = 0;
    std::size_t tokens = 0;
    bool assigned = false;      // an "=" stands in it
    bool parameters = false;    // WORD "(" stands in it
    bool declares = false;      // and something stood before the WORD
    bool constructing = false;  // ":" stands behind its parameters
    // Of the words outside parentheses; `operator` no more once its parameters were read.
    std::uint16_t words = 0;
    std::size_t template_depth = 0;  // of angle brackets behind "template"
    std::uint32_t capture_line = 0;  // of a lambda's "[", 0 when there is none
    std::size_t capture_at = 0;
    std::size_t capture_depth = 0;
};

// What is known of a block beside what its outline tells.
struct block_state {
    std::size_t depth;
    std::size_t twin;         // the block that stands for it in the other branch of a conditional
    std::size_t suspended;    // index of the statement to go on with; at_new_statement for none
    std::size_t paren_depth;  // to go on with
};

constexpr std::size_t at_new_statement = static_cast<std::size_t>(-1);

// One `#if` that is open.
struct conditional_state {
    std::size_t block;  // the state at its beginning, for its other branches
    std::size_t paren_depth;
    statement_state statement;
    // How the deepest branch so far ended, once a branch has.
    std::optional<std::size_t> end = {};
    statement_state end_statement = {};
};

struct outline_reader {
    source_outline outline;
    std::string_view text;
    std::size_t at = 0;
    std::uint32_t line = 1;

    statement_state statement;
    // The statement that a K&R parameter declaration may belong to.
    statement_state old_style;
    token_kind previous = token_kind::none;
    std::uint16_t previous_kinds = 0;  // of the last word, if one matters
    std::uint32_t previous_line = 0;   // of the last token
    std::size_t paren_depth = 0;
    std::size_t bracket_depth = 0;

    std::size_t block = no_block;            // innermost open one
    std::vector<block_state> states;         // beside each block
    std::vector<statement_state> suspended;  // those in whose midst a block stands
    std::vector<conditional_state> conditionals;
};

char peek(const outline_reader& reader, std::size_t ahead = 0) {
    return reader.at + ahead < reader.text.size() ? reader.text[reader.at + ahead] : '\0';
}

void mark_statement_end(outline_reader& reader) {
    if (reader.outline.statement_end.size() <= reader.line) {
        reader.outline.statement_end.resize(std::size_t{2} * reader.line);
    }
    reader.outline.statement_end[reader.line] = true;
}

// Moves to `end`, which may lie some lines on.
void move_to(outline_reader& reader, std::size_t end) {
    const std::string_view skipped = reader.text.substr(reader.at, end - reader.at);
    for (std::size_t at = skipped.find('\n'); at != std::string_view::npos;
         at = skipped.find('\n', at + 1)) {
        ++reader.line;
    }
    reader.at = end;
}

std::string_view take_word(outline_reader& reader) {
    const std::size_t begin = reader.at;
    reader.at = end_of_word(reader.text, begin);
    return reader.text.substr(begin, reader.at - begin);
}

// --- Statements and blocks ---

void reset_statement(outline_reader& reader) {
    reader.statement = statement_state();
    reader.previous = token_kind::none;
    reader.previous_kinds = 0;
    reader.bracket_depth = 0;
}

void begin_token(outline_reader& reader) {
    statement_state& statement = reader.statement;
    if (statement.line == 0) {
        statement.line = reader.line;
        statement.at = reader.at;
    }
    ++statement.tokens;
    reader.previous_line = reader.line;
}

bool is_initializer(const outline_reader& reader) {
    const statement_state& statement = reader.statement;
    if (statement.capture_line != 0 && reader.previous != token_kind::assign) {
        return false;
    }
    if (statement.constructing) {
        return reader.previous == token_kind::word || reader.previous == token_kind::angle;
    }
    if (reader.previous == token_kind::word && (reader.previous_kinds & requires_word) != 0) {
        return true;
    }
    if (statement.line == 0) {
        return reader.block != no_block &&
               reader.outline.blocks[reader.block].kind == block_kind::initializer;
    }
    return statement.assigned || reader.paren_depth > 0 || reader.previous == token_kind::assign ||
           reader.previous == token_kind::comma;
}

// Whether statements, rather than declarations, stand at this place.
bool is_in_body(const outline_reader& reader) {
    return reader.block != no_block &&
           reader.outline.blocks[reader.block].kind != block_kind::scope;
}

block_kind kind_of_block(const outline_reader& reader) {
    const statement_state& statement = reader.statement;
    if (is_initializer(reader)) {
        return block_kind::initializer;
    }
    if (statement.capture_line != 0) {
        return block_kind::function;
    }
    // `class EXPORT(x) name {`, not `struct type* name(...) {`
    const bool is_scope =
        (statement.words & namespace_word) != 0 ||
        ((statement.words & scope_word) != 0 && reader.previous == token_kind::word &&
         (reader.previous_kinds & trailing_word) == 0);
    if (statement.parameters && (statement.words & control_word) == 0 && !is_scope &&
        (statement.declares || !is_in_body(reader))) {
        return block_kind::function;
    }
    if ((statement.words & scope_word) != 0) {
        return block_kind::scope;
    }
    if (statement.line == 0) {
        return reader.old_style.line != 0 ? block_kind::function : block_kind::statement;
    }
    // extern "C" {
    return is_in_body(reader) || reader.previous != token_kind::literal ? block_kind::statement
                                                                        : block_kind::scope;
}

std::size_t depth_of(const outline_reader& reader, std::size_t block) {
    return block == no_block ? 0 : reader.states[block].depth;
}

void open_block(outline_reader& reader) {
    // A brace in the first column begins a body, whatever parentheses a conditional left open.
    if (!is_in_body(reader) && reader.at > 0 && reader.text[reader.at - 1] == '\n') {
        reader.paren_depth = 0;
    }
    const block_kind kind = kind_of_block(reader);
    statement_state header = reader.statement;
    if (header.capture_line != 0 && kind == block_kind::function) {
        header.line = header.capture_line;
        header.at = header.capture_at;
    } else if (header.line == 0 && kind == block_kind::function) {
        header = reader.old_style;
    } else if (header.line == 0) {
        header.line = reader.line;
        header.at = reader.at;
    }
    reader.outline.blocks.push_back({.header_line = header.line,
                                     .open_line = reader.line,
                                     .close_line = 0,
                                     .header_at = header.at,
                                     .open_at = reader.at,
                                     .parent = reader.block,
                                     .kind = kind});
    block_state state{.depth = depth_of(reader, reader.block) + 1,
                      .twin = no_block,
                      .suspended = at_new_statement,
                      .paren_depth = 0};
    // A braced list or a lambda in the midst of a statement: the statement goes on.
    if (kind == block_kind::initializer || reader.statement.capture_line != 0) {
        state.suspended = reader.suspended.size();
        state.paren_depth = reader.paren_depth;
        reader.suspended.push_back(reader.statement);
        reader.suspended.back().capture_line = 0;
    }
    reader.states.push_back(state);
    reader.block = reader.outline.blocks.size() - 1;
    reader.paren_depth = 0;
    reader.old_style = statement_state();
    if (kind != block_kind::initializer) {
        mark_statement_end(reader);
    }
    reset_statement(reader);
    ++reader.at;
}

void close_block(outline_reader& reader) {
    reset_statement(reader);
    reader.old_style = statement_state();
    if (reader.block == no_block) {
        ++reader.at;
        return;
    }
    const std::size_t closed = reader.block;
    if (reader.outline.blocks[closed].kind != block_kind::initializer) {
        mark_statement_end(reader);
    }
    reader.outline.blocks[closed].close_line = reader.line;
    const block_state& state = reader.states[closed];
    for (std::size_t one = state.twin;
         one != no_block && reader.outline.blocks[one].close_line == 0;
         one = reader.states[one].twin) {
        reader.outline.blocks[one].close_line = reader.line;
    }
    reader.paren_depth = state.paren_depth;
    if (state.suspended != at_new_statement) {
        reader.statement = reader.suspended[state.suspended];
        if (reader.statement.line != 0) {
            reader.previous = token_kind::closed_initializer;
        }
    }
    reader.block = reader.outline.blocks[closed].parent;
    ++reader.at;
}

// `int f(a, b) int a; char *b; {`: a declaration that names no parameter types goes on
// behind its semicolons.
void end_statement(outline_reader& reader) {
    ++reader.at;
    if (reader.paren_depth > 0) {
        return;  // for (;;)
    }
    mark_statement_end(reader);
    const statement_state& statement = reader.statement;
    const bool ends_in_name =
        reader.previous == token_kind::word || reader.previous == token_kind::close_bracket;
    const bool may_be_parameter = statement.line != 0 && !statement.assigned && ends_in_name;
    if (!may_be_parameter || is_in_body(reader)) {
        reader.old_style = statement_state();
    } else if (statement.parameters && (statement.words & control_word) == 0) {
        reader.old_style = statement;
    }
    reset_statement(reader);
}

void read_open_paren(outline_reader& reader) {
    begin_token(reader);
    if (reader.previous == token_kind::word && (reader.previous_kinds & operator_word) != 0 &&
        peek(reader, 1) == ')') {
        reader.at += 2;  // the name "operator()"
        reader.previous = token_kind::other;
        return;
    }
    statement_state& statement = reader.statement;
    if (reader.paren_depth == 0 && !statement.parameters && !statement.assigned) {
        const bool is_list = reader.previous == token_kind::word &&
                             (reader.previous_kinds & (attribute_word | control_word)) == 0;
        if (is_list || (statement.words & operator_word) != 0) {
            statement.parameters = true;
            statement.declares = statement.tokens > 2;
        }
        statement.words &= static_cast<std::uint16_t>(~operator_word);
    }
    ++reader.paren_depth;
    reader.previous = token_kind::open_paren;
    ++reader.at;
}

void read_open_bracket(outline_reader& reader) {
    begin_token(reader);
    const bool is_subscript =
        (reader.previous == token_kind::word && (reader.previous_kinds & control_word) == 0) ||
        reader.previous == token_kind::close_paren || reader.previous == token_kind::close_bracket;
    const bool is_attribute = peek(reader, 1) == '[';
    if (!is_subscript && !is_attribute && reader.bracket_depth == 0) {
        reader.statement.capture_line = reader.line;
        reader.statement.capture_at = reader.at;
        reader.statement.capture_depth = reader.paren_depth;
    }
    ++reader.bracket_depth;
    reader.previous = token_kind::other;
    ++reader.at;
}

void read_colon(outline_reader& reader) {
    begin_token(reader);
    if (peek(reader, 1) == ':') {
        reader.at += 2;
        reader.previous = token_kind::other;
        return;
    }
    ++reader.at;
    statement_state& statement = reader.statement;
    if (reader.paren_depth > 0) {
        reader.previous = token_kind::other;
        return;
    }
    const bool is_label = statement.tokens == 2 || ((reader.previous_kinds & access_word) |
                                                    (statement.words & control_word)) != 0;
    if (is_label) {
        return reset_statement(reader);
    }
    statement.constructing = statement.parameters && !is_in_body(reader);
    reader.previous = token_kind::other;
}

void read_word(outline_reader& reader) {
    // Blank or comment lines hardly ever stand within a declaration, but between one and
    // a macro ahead of it that needs no semicolon.
    const bool is_apart = reader.previous_line != 0 && reader.line > reader.previous_line + 1;
    if (is_apart && reader.paren_depth == 0 && !reader.statement.constructing &&
        !is_in_body(reader)) {
        reset_statement(reader);
    }
    begin_token(reader);
    const std::string_view word = take_word(reader);
    const char next = peek(reader);
    if (next == '"' && word.ends_with('R') && word.size() <= 3) {
        move_to(reader, end_of_raw_string(reader.text, reader.at));
        reader.previous = token_kind::literal;
        return;
    }
    if (next == '"' || next == '\'') {
        return;  // the prefix of a literal
    }
    const std::uint16_t kinds = kinds_of(word);
    if (reader.paren_depth == 0 && reader.statement.template_depth == 0) {
        reader.statement.words |= kinds;
    }
    reader.previous = token_kind::word;
    reader.previous_kinds = kinds;
}

// --- Preprocessor lines ---

// Skips what an `#if 0` hides, up to its `#else`, `#elif` or `#endif`.
void skip_disabled(outline_reader& reader) {
    std::size_t nested = 0;
    while (reader.at < reader.text.size()) {
        std::size_t at = reader.text.find_first_not_of(" \t\f\v\r", reader.at);
        if (at != std::string_view::npos && reader.text[at] == '#') {
            at = reader.text.find_first_not_of(" \t", at + 1);
            const std::string_view rest =
                at == std::string_view::npos ? std::string_view() : reader.text.substr(at);
            if (nested == 0 && (rest.starts_with("el") || rest.starts_with("endif"))) {
                return;
            }
            nested += rest.starts_with("if") ? 1 : 0;
            nested -= rest.starts_with("endif") ? 1 : 0;
        }
        move_to(reader, end_of_logical_line(reader.text, reader.at));
        if (reader.at < reader.text.size()) {
            move_to(reader, reader.at + 1);
        }
    }
}

// At an `#endif`, the blocks that both branches left open stand for each other.
void join_branches(outline_reader& reader, std::size_t first, std::size_t second) {
    const std::size_t first_depth = depth_of(reader, first);
    const std::size_t second_depth = depth_of(reader, second);
    reader.block = first_depth > second_depth ? first : second;
    if (first_depth != second_depth) {
        return;
    }
    while (first != second && first != no_block && second != no_block) {
        if (reader.states[second].twin == no_block && first < second) {
            reader.states[second].twin = first;
        }
        first = reader.outline.blocks[first].parent;
        second = reader.outline.blocks[second].parent;
    }
}

// The rest of a preprocessor line: comments in it may reach over its end.
void skip_directive_rest(outline_reader& reader) {
    while (reader.at < reader.text.size()) {
        const char c = peek(reader);
        if (c == '\n') {
            if (!is_spliced(reader.text, reader.at)) {
                return;
            }
            ++reader.line;
            ++reader.at;
        } else if (c == '/' && peek(reader, 1) == '*') {
            move_to(reader, end_of_block_comment(reader.text, reader.at));
        } else if (c == '/' && peek(reader, 1) == '/') {
            return move_to(reader, end_of_logical_line(reader.text, reader.at));
        } else if (c == '"' || c == '\'') {
            move_to(reader, end_of_literal(reader.text, reader.at));
        } else {
            ++reader.at;
        }
    }
}

// line-directive ::= "line" number ["\"" name "\""]
void read_line_origin(outline_reader& reader) {
    const std::string_view rest =
        reader.text.substr(reader.at, end_of_logical_line(reader.text, reader.at) - reader.at);
    const std::size_t begin = rest.find('"');
    const std::size_t end = rest.rfind('"');
    if (begin < end && end != std::string_view::npos) {
        reader.outline.origins.push_back({reader.line, rest.substr(begin + 1, end - begin - 1)});
    }
}

void read_directive(outline_reader& reader) {
    ++reader.at;
    while (peek(reader) == ' ' || peek(reader) == '\t') {
        ++reader.at;
    }
    const std::string_view name = take_word(reader);
    if (name == "line") {
        read_line_origin(reader);
    }
    std::vector<conditional_state>& conditionals = reader.conditionals;
    bool is_disabled = false;
    if (name == "if" || name == "ifdef" || name == "ifndef") {
        std::string_view condition = reader.text.substr(reader.at);
        condition.remove_prefix(std::min(condition.find_first_not_of(" \t"), condition.size()));
        is_disabled = name == "if" && condition.starts_with("0") &&
                      (condition.size() == 1 || !is_word_part(condition[1]));
        conditionals.push_back({reader.block, reader.paren_depth, reader.statement});
    } else if ((name == "else" || name.starts_with("elif")) && !conditionals.empty()) {
        conditional_state& group = conditionals.back();
        if (!group.end || depth_of(reader, reader.block) > depth_of(reader, *group.end)) {
            group.end = reader.block;
            group.end_statement = reader.statement;
        }
        reader.block = group.block;
        reader.paren_depth = group.paren_depth;
        reader.statement = group.statement;
    } else if (name == "endif" && !conditionals.empty()) {
        const conditional_state group = conditionals.back();
        conditionals.pop_back();
        if (group.end) {
            join_branches(reader, *group.end, reader.block);
            // Two forms of one declaration: it begins with the first.
            if (group.end_statement.parameters && reader.statement.parameters) {
                reader.statement = group.end_statement;
            }
        }
    }
    if (reader.paren_depth == 0 && !reader.statement.parameters) {
        reset_statement(reader);
    }
    if (name == "error" || name == "warning" || name == "pragma") {
        move_to(reader, end_of_logical_line(reader.text, reader.at));
    } else {
        skip_directive_rest(reader);
    }
    if (is_disabled) {
        skip_disabled(reader);
    }
}

void read_other(outline_reader& reader, char c) {
    begin_token(reader);
    switch (c) {
        case ')':
            reader.paren_depth -= reader.paren_depth > 0 ? 1 : 0;
            reader.previous = token_kind::close_paren;
            break;
        case ']':
            reader.bracket_depth -= reader.bracket_depth > 0 ? 1 : 0;
            reader.previous = token_kind::close_bracket;
            break;
        case ',':
            if (reader.bracket_depth == 0 && reader.paren_depth <= reader.statement.capture_depth) {
                reader.statement.capture_line = 0;
            }
            reader.previous = token_kind::comma;
            break;
        case '=':
            if ((reader.statement.words & operator_word) == 0 &&
                reader.statement.template_depth == 0 && reader.paren_depth == 0 &&
                reader.bracket_depth == 0) {
                reader.statement.assigned = true;
            }
            reader.previous = token_kind::assign;
            break;
        case '<':
            if (reader.paren_depth == 0 && (reader.statement.template_depth > 0 ||
                                            (reader.previous_kinds & template_word) != 0)) {
                ++reader.statement.template_depth;
                reader.previous_kinds = 0;
            }
            reader.previous = token_kind::other;
            break;
        case '>':
            reader.statement.template_depth -=
                reader.paren_depth == 0 && reader.statement.template_depth > 0 ? 1 : 0;
            reader.previous = token_kind::angle;
            break;
        default:
            reader.previous = token_kind::other;
            break;
    }
    ++reader.at;
}

// Reads one token or one stretch between tokens. `at_line_start` is whether only blanks
// stand before it on its line.
void read_token(outline_reader& reader, bool at_line_start) {
    const char c = peek(reader);
    if (is_word_start(c)) {
        return read_word(reader);
    }
    if (is_word_part(c)) {
        begin_token(reader);
        reader.previous = token_kind::number;
        return move_to(reader, end_of_number(reader.text, reader.at));
    }
    switch (c) {
        case '/':
            if (peek(reader, 1) == '*') {
                return move_to(reader, end_of_block_comment(reader.text, reader.at));
            }
            if (peek(reader, 1) == '/') {
                return move_to(reader, end_of_logical_line(reader.text, reader.at));
            }
            return read_other(reader, c);
        case '"':
        case '\'':
            begin_token(reader);
            reader.previous = token_kind::literal;
            return move_to(reader, end_of_literal(reader.text, reader.at));
        case '#':
            return at_line_start ? read_directive(reader) : read_other(reader, c);
        case '{':
            return open_block(reader);
        case '}':
            return close_block(reader);
        case ';':
            return end_statement(reader);
        case '(':
            return read_open_paren(reader);
        case '[':
            return read_open_bracket(reader);
        case ':':
            return read_colon(reader);
        case '\\':
            ++reader.at;  // a spliced line
            return;
        default:
            return read_other(reader, c);
    }
}

}  // namespace

source_outline outline_source(std::string_view text) {
    outline_reader reader;
    reader.text = text;
    bool at_line_start = true;
    while (reader.at < text.size()) {
        const char c = text[reader.at];
        if (c == '\n') {
            at_line_start = true;
            ++reader.line;
            ++reader.at;
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
            ++reader.at;
        } else {
            // A directive ends before a line's end, or before the line that ends an `#if 0`.
            const bool is_nothing = c == '#' || (c == '/' && peek(reader, 1) == '*');
            read_token(reader, at_line_start);
            at_line_start = at_line_start && is_nothing;
        }
    }
    for (source_block& block : reader.outline.blocks) {
        if (block.close_line == 0) {
            block.close_line = reader.line;
        }
    }
    reader.outline.statement_end.resize(reader.line + 1);
    reader.outline.text = text;
    return std::move(reader.outline);
}

}  // namespace assembly
