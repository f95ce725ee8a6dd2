// File names for every tool of the tool chain: splitting and joining them, adding and
// removing extensions, temporary names, tests, renaming, listing a directory, and the
// names that stand for a stream instead of a file. The separator is "/", names compare
// case-sensitively, and a full path begins with "/".
//
// Names are NUL-terminated byte strings in no particular encoding and, unless a
// contract says otherwise, not null. No function knows the size of a caller's buffer.
// The module keeps static state and is single-threaded.
#pragma once

// Adds an extension to `name` in place, or replaces the one it has when `replace` is
// not 0. `name` must have room for the result. `ext` may be given with or without its
// point; null changes nothing. A name has an extension when no "/" follows its last
// point. Such a name keeps it when `replace` is 0; otherwise the text after the point
// becomes `ext`, and an empty `ext` takes the point away too. A name without one gets
// a point and `ext`, unless `ext` is empty.
void fn_addext(char* name, const char* ext, int replace);
