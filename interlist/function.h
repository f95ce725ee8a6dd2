// Interlisting one function: which C lines go where among its assembly lines.
#pragma once

// What a look-ahead saw of the assembly behind ASSY's position.
struct passed_assembly {
    long next = 0;         // behind the last .iline or .iendfunc met, if any
    bool met_end = false;  // the end of the file, with neither of them behind `tail`
    long tail = 0;
};

// Interlists the function whose .ifunc line has just been read: ASSY stands
// behind that line and, on return, behind the function's .iendfunc. Without a
// C file nothing is done, and the assembly is copied like any other.
void process_func();

// Looks ahead in ASSY for the next C position that is not behind curr_line, or
// the function's end; ASSY stays where it is.
//   end_line  set to the C line before which to stop, if a directive carries one
//   count     set to the number of assembly lines up to and including the last
//             .iline or .iendfunc met, passed over or not
//   passed    filled in, if not null
// Returns 1 when the function is complete (its .iendfunc or the end of the file
// was met), 0 at an .iline.
int skip_lines(unsigned* end_line, unsigned* count, passed_assembly* passed = nullptr);

// 1 when a C line holds only braces, white space and block comments. A comment
// left open carries over to the next call; code closes it.
int is_blank_line(const char* line);
