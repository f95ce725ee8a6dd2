// Library calls that the linker wraps (--wrap) in the test programs that provoke faults:
// each does what the C library does until a test asks it to fail, and leaves a trace.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

struct Faults {
    // The allocation that fails, counting from 1 at the time it is set; 0 for none.
    // Counts malloc, calloc and realloc of the whole program.
    int failing_allocation = 0;
    // The sizes asked of malloc while `record` is set.
    bool record = false;
    std::vector<std::size_t> sizes;

    int rename_error = 0;            // not 0: rename fails with this errno
    int failing_close = 0;           // the fclose that fails, counting from 1
    int failing_write = 0;           // the fwrite that is one byte short, counting from 1
    std::size_t longest_write = 0;   // not 0: write and writev take no more at once
    bool interrupts_writes = false;  // every other one has EINTR instead
    pid_t pid = 0;                   // not 0: what getpid gives
    std::vector<std::string> trace;  // opens, reads, writes and closes, in order
    std::vector<FILE*> opened;       // what fopen gave, which the trace numbers from 1
    std::vector<int> signals;        // the signals that got a handler, in order
};

extern Faults faults;
