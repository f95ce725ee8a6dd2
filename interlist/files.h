// Opening files.
#pragma once

#include <cstdio>

// As fopen, but never with the descriptor of a standard stream: where one of these was
// closed when the program started, messages and the text of a file would meet in it.
FILE* open_file(const char* name, const char* mode);
