// The answer to --toolversion.
#pragma once

#include <cstdio>

// Writes the banner line, the tool's title in 40 columns and its version, to
// `stream`; returns the result of writing the newline.
int print_banner(FILE* stream);

// Writes the banner and the build number to standard output and ends the
// program with status 0.
[[noreturn]] void report_version();
