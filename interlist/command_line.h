// The command line: options in clusters, long options, one or two file names.
#pragma once

// Scans the arguments, sets the options and both file names, and opens ASSY
// and LIST. Returns only when both are open: requests for help or the version
// end the program with status 0, errors with status 1.
void init(int argc, char** argv);

// Writes the usage text to standard output.
void usage();
