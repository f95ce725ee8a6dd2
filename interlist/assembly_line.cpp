// Which lines of the assembly are directives, and what becomes of the others.
#include "interlist/assembly_line.h"

#include <algorithm>
#include <cstring>

#include "interlist/diagnostics.h"
#include "interlist/listing_output.h"
#include "interlist/number.h"
#include "interlist/state.h"

namespace {

struct directive_row {
    std::string_view prefix;
    directive kind;
};

}  // namespace

constexpr directive_row directive_table[] = {
    {"\t.ifile\t", directive::file},
    {"\t.iline\t", directive::line},
    {"\t.isym\t", directive::symbol},
    {"\t.ifunc\t", directive::function},
    {"\t.iendfunc\t", directive::end_of_function},
};

directive directive_of(std::string_view line) {
    // Most lines are told apart here.
    if (!line.starts_with({directive_mark.data(), directive_mark.size()})) {
        return directive::none;
    }
    const auto* const row =
        std::find_if(std::begin(directive_table), std::end(directive_table),
                     [=](const directive_row& each) { return line.starts_with(each.prefix); });
    return row == std::end(directive_table) ? directive::none : row->kind;
}

static std::size_t prefix_length(directive kind) {
    const auto* const row =
        std::find_if(std::begin(directive_table), std::end(directive_table),
                     [=](const directive_row& each) { return each.kind == kind; });
    return row == std::end(directive_table) ? 0 : row->prefix.size();
}

std::optional<int> operand_number(std::string_view line, directive kind) {
    return leading_number(line.substr(prefix_length(kind)));
}

std::string_view operand_text(std::string_view line, directive kind) {
    line = line.substr(0, line.find('\0'));
    line.remove_prefix(std::min(line.size(), prefix_length(kind) + 1));
    if (line.size() > longest_text) {
        limit_error();
    }
    return line;
}

static void take_symbol(std::string_view line) {
    const std::string_view text = operand_text(line, directive::symbol);
    copy_text(last_symbol, text.substr(0, text.find('\n')));
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
