// The interlister's process-wide state: one assembly file, one listing and at
// most one C file are open at a time, and every concern reads and writes the
// same streams, buffers, options and counters. All of it starts zero or empty.
// Some of it is only a record of what was met: nothing in the program reads
// that, and it says so.
#pragma once

#include <cstddef>
#include <cstdio>

#include "interlist/input.h"
#include "interlist/output.h"

// The one size of every name and line buffer. Outside text longer than
// `longest_text` is refused before it is copied into one: see copy_text().
constexpr std::size_t buffer_size = 16384;
constexpr std::size_t longest_text = buffer_size - 1;

// The streams; each is null before it is opened and after it is closed. They are
// read and written only through what stands below.
extern FILE* ASSY;   // the assembly file, opened "rb"
extern FILE* LIST;   // the listing, opened "w"
extern FILE* CFILE;  // the current C file, opened "r"

extern input_stream assy_input;
extern input_stream cfile_input;
extern output_stream list_output;

extern char assy_file_name[buffer_size];       // first name on the command line
extern char temp_file_name[buffer_size];       // the listing: second name, or derived
extern char in_rec[buffer_size];               // the line being worked on, assembly or C
extern char last_symbol[buffer_size];          // operand of the last .isym: a record
extern char curr_seen_file_name[buffer_size];  // C file named by the last .ifile
extern char curr_open_file_name[buffer_size];  // C file last opened, or tried

extern int quiet_mode;          // -q, counted
extern int skip_blanks;         // -b: blank C lines are not listed
extern int preserve_sp;         // -p: indentation of C lines is kept
extern int cut_colm;            // -w: width of the listing, 0 for the default
extern int no_warnings;         // --no_warnings
extern unsigned int curr_line;  // number of the next line to be read from CFILE
extern int func_line;           // operand of the last .ifunc
extern int in_comment;          // -b: the last C line tested ended inside a block comment

// The longest source file names seen at .ifunc directives: a record.
extern int name_width;
extern int prev_name_width;

// Set when no .iline and no .iendfunc is left between ASSY's position and its
// end, so that functions which lack an .iendfunc need no look-ahead of their own.
extern bool assembly_has_no_more_positions;

extern const char* prog_name;  // the invocation name
