// The one C file that is open at a time: opening it, reaching a line of it, reading it.
#pragma once

// Records the name that an .ifile directive announces; returns the record.
char* new_cfile(const char* name);

// Makes `name` the current C file, at line 1, unless it is that already. A file
// that cannot be opened is warned about and leaves none open; an empty name
// ends the program with status 1.
void open_cfile(const char* name);

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
