// Puts the comments together. What is told of one scope is put together once.
#include "clist/forms/comments.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace clist {

std::string_view color_code(color what) {
    static constexpr std::array<std::string_view, 4> codes = {"\x1b[36m", "\x1b[35m", "\x1b[33m",
                                                              "\x1b[0m"};
    return codes[static_cast<std::size_t>(what)];
}

comment_lines::comment_lines(const annotation& model, const listing_options& options)
    : model_(model),
      options_(options),
      line_end_(model.code().carriage_returns ? "\r\n" : "\n"),
      inlined_(model.debug().scopes.size()) {}

static void append_number(std::string& text, std::uint32_t number) {
    std::array<char, 10> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

// The text of a source line goes into a comment of one line: a control character that some
// assembler would take for a line's end is shown as a blank.
static void append_source(std::string& text, std::string_view line) {
    const std::size_t begin = text.size();
    text += line;
    for (const char line_end : {'\r', '\0'}) {
        if (line.find(line_end) != std::string_view::npos) {
            std::replace(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), line_end,
                         ' ');
        }
    }
}

static void append_place(std::string& text, const annotation& model, std::uint32_t source,
                         std::uint32_t line) {
    text += source == none ? std::string_view("?") : model.sources()[source].shown;
    text += ':';
    append_number(text, line);
}

void comment_lines::add_inlined(std::uint32_t scope) {
    std::string& text = inlined_[scope];
    if (text.empty()) {
        const std::vector<assembly::code_scope>& scopes = model_.debug().scopes;
        text = model_.comment();
        text += " inlined: ";
        text += model_.plain_function_name(scope);
        for (std::uint32_t it = scope; scopes[it].parent != none; it = scopes[it].parent) {
            text += it == scope ? " at " : ", at ";
            append_place(text, model_, model_.source_of(scopes[it].call_file),
                         scopes[it].call_line);
            text += " in ";
            text += model_.plain_function_name(scopes[it].parent);
        }
        // Names come from the debugging data, which may say anything.
        std::replace_if(
            text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; },
            '?');
    }
    text_ += text;
}

std::string_view comment_lines::lines_of(const origin& from) {
    text_.clear();
    const auto paint = [this](color what) {
        if (options_.color) {
            text_ += color_code(what);
        }
    };
    const std::uint32_t scope = from.inlined == none ? from.scope : from.inlined;
    const bool is_inlined = scope != none && model_.debug().scopes[scope].parent != none;
    paint(is_inlined ? color::inlined : color::source);
    text_ += model_.comment();
    text_ += ' ';
    if (from.line == 0 || from.source == none) {
        text_ += "no line";
    } else {
        append_place(text_, model_, from.source, from.line);
        text_ += " | ";
        append_source(text_, model_.sources().line(from.source, from.line));
    }
    paint(color::plain);
    text_ += line_end_;
    if (is_inlined) {
        paint(color::inlined);
        add_inlined(scope);
        paint(color::plain);
        text_ += line_end_;
    }
    return text_;
}

std::string_view comment_lines::lines_before(std::uint32_t instruction) {
    const std::uint32_t position = model_.code().instructions[instruction].position;
    const std::uint32_t scope = model_.debug().scope_of[instruction];
    if (last_ && position == last_position_ && scope == last_scope_) {
        return {};
    }
    last_position_ = position;
    last_scope_ = scope;
    const origin from = model_.origin_of(instruction);
    if (from == last_) {
        return {};
    }
    last_ = from;
    if (position != none) {
        model_.prefetch_line(position + 2);
    }
    return lines_of(from);
}

}  // namespace clist
