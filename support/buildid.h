// The build-number line: one line that identifies the exact build of a tool, as a
// compact code of the date, the time, the tags and the branch it was built from.
// The interlister writes it for --toolversion.
#pragma once

#include <cstdio>

// What a build number is composed from. All texts are NUL-terminated and not null.
struct build_inputs {
    const char* date;       // as __DATE__: "Feb 19 2022", the day padded with a blank
    const char* time;       // as __TIME__: "16:54:09"; only the hour is used
    const char* build_tag;  // three characters
    const char* version1;   // first version text: "4.2.1"
    const char* version2;   // second version text: "17."
    const char* branch;     // source branch
};

// Writes `prefix`, the number of the build that this library belongs to, and a
// newline to `stream`. A null stream means standard output, a null prefix writes
// nothing before the number. The inputs are fixed when the library is compiled.
// Result: that of writing the newline, '\n' or EOF.
int buildid(FILE* stream, const char* prefix);

// The same for the build that `inputs` describes, for a tool that has a number of
// its own.
int buildid_of(const build_inputs& inputs, FILE* stream, const char* prefix);
