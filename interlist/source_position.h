// Where the lines of the C files lie. Compilers emit functions in any order and of any
// file, so files are rewound and opened again and again. The positions of lines that
// were passed are kept in one fixed table for all files, and are known again when a file
// that has not changed is opened again: a line costs the same to reach wherever it lies.
#pragma once

#include <sys/stat.h>

struct source_position {
    unsigned line = 1;  // counted from the beginning, from 1
    long position = 0;  // of its first byte in the file
};

// Turns to the file of this status. Of what is no regular file nothing is kept.
void turn_to_file(const struct stat& status);

// The last position that is known of the file and not behind `line`: that of line 1 if
// there is none.
source_position known_position(unsigned line);

// Enters a position, or leaves it out where the table has enough.
void enter_position(const source_position& at);

// Starts with an empty table, as at the start of the program.
void forget_positions();

// Positions before this one are left out: it saves most calls of enter_position().
extern long next_wanted_position;
