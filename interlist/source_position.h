// Where the lines of the C file lie. Compilers emit functions in any order, so the file
// is rewound again and again; the positions of lines that were passed are kept in a fixed
// table, and a line costs the same to reach wherever it lies.
#pragma once

struct source_position {
    unsigned line = 1;  // counted from the beginning, from 1
    long position = 0;  // of its first byte in the file
};

// Starts with an empty table, for another file.
void forget_positions();

// Enters a position, or leaves it out where the table has enough.
void note_position(const source_position& at);

// The last position that is known and not behind `line`: that of line 1 if there is none.
source_position known_position(unsigned line);
