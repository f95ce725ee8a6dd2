// Puts the interlister's process-wide state back to what it is at a program
// start. For tests and the fuzzer, which run the pass more than once.
#pragma once

#include <algorithm>
#include <iterator>

#include "interlist/source_position.h"
#include "interlist/state.h"

inline void clear_buffer(char (&buffer)[buffer_size]) {
    std::fill(std::begin(buffer), std::end(buffer), '\0');
}

inline void close_and_clear(FILE*& stream) {
    if (stream != nullptr) {
        std::fclose(stream);
        stream = nullptr;
    }
}

inline void start_afresh() {
    close_and_clear(ASSY);
    flush_output(list_output);
    attach_output(list_output, -1);
    close_and_clear(LIST);
    close_and_clear(CFILE);
    attach_input(assy_input, nullptr);
    attach_input(cfile_input, nullptr);
    forget_positions();
    clear_buffer(assy_file_name);
    clear_buffer(temp_file_name);
    clear_buffer(in_rec);
    clear_buffer(last_symbol);
    clear_buffer(curr_seen_file_name);
    clear_buffer(curr_open_file_name);
    quiet_mode = skip_blanks = preserve_sp = cut_colm = no_warnings = 0;
    func_line = in_comment = name_width = prev_name_width = 0;
    curr_line = 0;
    assembly_has_no_more_positions = false;
    prog_name = "interlist";
}
