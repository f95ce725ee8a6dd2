// A C line on its way into the listing: its tabs, its indentation, its line end.
#pragma once

// Expands the tabs of `line` (tab stops every 8 columns, as long as the line
// has at most 16376 characters) and removes the indentation of its block, in
// place; `line` lies in a buffer of 16384 bytes. `strip_count` is the number of
// blanks that lines of this block lose, 0 while that is not known; returns what
// it is from this line on. With -p the indentation stays.
int format_line(char* line, int strip_count);

// Writes `line` to LIST as one or more comment lines, numbered curr_line and cut
// to the listing's width. Removes the newlines at the end of `line`.
void output_formatted_line(char* line);
