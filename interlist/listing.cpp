// The listing pass over the assembly file.
#include "interlist/listing.h"

#include <algorithm>
#include <cstring>

#include "interlist/diagnostics.h"
#include "interlist/function.h"
#include "interlist/listing_output.h"
#include "interlist/number.h"
#include "interlist/source_file.h"
#include "interlist/state.h"

namespace {

struct directive_row {
    std::string_view prefix;
    directive kind;
};

constexpr directive_row directive_table[] = {
    {"\t.ifile\t", directive::file},
    {"\t.iline\t", directive::line},
    {"\t.isym\t", directive::symbol},
    {"\t.ifunc\t", directive::function},
    {"\t.iendfunc\t", directive::end_of_function},
};

}  // namespace

directive directive_of(std::string_view line) {
    // Most lines are told apart here.
    if (!line.starts_with("\t.i")) {
        return directive::none;
    }
    const auto* const row =
        std::find_if(std::begin(directive_table), std::end(directive_table),
                     [=](const directive_row& each) { return line.starts_with(each.prefix); });
    return row == std::end(directive_table) ? directive::none : row->kind;
}

std::size_t directive_length(directive kind) {
    const auto* const row =
        std::find_if(std::begin(directive_table), std::end(directive_table),
                     [=](const directive_row& each) { return each.kind == kind; });
    return row == std::end(directive_table) ? 0 : row->prefix.size();
}

// The text behind a directive's prefix and the one character that stands
// before the operand: an opening quote, an underscore.
static std::string_view operand_behind_mark(std::string_view line, directive kind) {
    line = line.substr(0, line.find('\0'));
    line.remove_prefix(std::min(line.size(), directive_length(kind) + 1));
    if (line.size() > longest_text) {
        limit_error();
    }
    return line;
}

// The name runs to the last quote. Without one it runs to the end of the line.
static std::string_view quoted_name(std::string_view text) {
    const std::size_t quote = text.rfind('"');
    return text.substr(0,
                       quote != std::string_view::npos ? quote : text.find_last_not_of("\r\n") + 1);
}

static void take_source_file(std::string_view line) {
    char name[buffer_size];
    copy_text(name, quoted_name(operand_behind_mark(line, directive::file)));
    new_cfile(name);
    open_cfile(name);
}

static void take_symbol(std::string_view line) {
    const std::string_view text = operand_behind_mark(line, directive::symbol);
    copy_text(last_symbol, text.substr(0, text.find('\n')));
}

static void take_function(std::string_view line) {
    line.remove_prefix(directive_length(directive::function));
    func_line = leading_number(line).value_or(func_line);
}

// Keeps the record of the longest source file names.
static void note_name_width() {
    const char* const name =
        curr_open_file_name[0] != '\0' ? curr_open_file_name : curr_seen_file_name;
    const int length = static_cast<int>(std::strlen(name));
    if (name_width < length) {
        prev_name_width = name_width;
        name_width = length;
    }
    if (name_width - length >= 11) {
        name_width = prev_name_width;
    } else if (prev_name_width == 0) {
        prev_name_width = name_width;
    }
}

int owrite(std::string_view line) {
    const directive kind = directive_of(line);
    if (kind == directive::none) {
        list_assembly(line);
        return 1;
    }
    if (kind == directive::symbol) {
        take_symbol(line);
    }
    if (kind == directive::function && quiet_mode == 0) {
        note_name_width();
    }
    return 0;
}

void process_assy() {
    for (;;) {
        list_assembly(next_ordinary_lines(assy_input, longest_text));
        std::string_view line;
        if (!next_piece(assy_input, longest_text, line)) {
            return;
        }
        const directive kind = directive_of(line);
        if (kind == directive::function) {
            take_function(line);
        } else if (kind == directive::file) {
            take_source_file(line);
        }
        owrite(line);
        if (kind == directive::function) {
            process_func();
        }
    }
}
