// What the listing is made of: assembly as it stands, and blocks of C lines between two
// separators. The only routines that write to LIST, and the only place that knows how
// wide things are. A write that fails, at whatever time, ends the program with status 1:
// a short listing is never reported as success.
#pragma once

#include <string_view>

// Opens LIST under the name temp_file_name. A file that cannot be opened ends the
// program with status 1.
void begin_listing();

// Adds assembly: any number of lines, or pieces of one.
void list_assembly(std::string_view text);

// Adds the line that stands before and behind a block of C lines.
void list_separator();

// Adds a C line without its newline, as a comment line numbered `number` and as many
// more as the width makes of it.
void list_c_line(unsigned number, std::string_view text);

// Writes the rest and closes LIST, if it is open.
void end_listing();
