// The listing pass over the assembly file.
#include "interlist/listing.h"

#include <string_view>

#include "interlist/assembly_line.h"
#include "interlist/diagnostics.h"
#include "interlist/function.h"
#include "interlist/listing_output.h"
#include "interlist/source_file.h"
#include "interlist/state.h"

// The name runs to the last quote. Without one it runs to the end of the line.
static std::string_view quoted_name(std::string_view text) {
    const std::size_t quote = text.rfind('"');
    return text.substr(0,
                       quote != std::string_view::npos ? quote : text.find_last_not_of("\r\n") + 1);
}

static void take_source_file(std::string_view line) {
    char name[buffer_size];
    copy_text(name, quoted_name(operand_text(line, directive::file)));
    new_cfile(name);
    open_cfile(name);
}

static void take_function(std::string_view line) {
    func_line = operand_number(line, directive::function).value_or(func_line);
}

void process_assy() {
    for (;;) {
        list_assembly(next_ordinary_lines(assy_input, longest_text, directive_mark));
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
