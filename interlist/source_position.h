// Reaching a line of the C file. Compilers emit functions in any order, so the
// file is rewound again and again; the positions of lines that were passed are
// kept in a fixed table, and a line costs the same to reach wherever it lies.
// Called by the function interlisting and by whoever opens the C file.
#pragma once

// Starts with an empty table: CFILE is another file, at its beginning.
void forget_positions();

// Makes `line` the next line to be read from CFILE and sets curr_line to it.
// Lines count from the beginning as myfgets with the full buffer reads them;
// beyond the end of the file only curr_line moves. Where the file cannot go back to the
// line, as a pipe cannot, it is given up with a warning and CFILE is null.
void go_to_line(unsigned line);

// Reads the next line into in_rec, at most `limit` - 1 characters of it. Does not
// count it: curr_line stays the line's own number until line_is_done().
void read_source_line(int limit);

// Counts the line that was read last.
void line_is_done();
