// Ends the program in good order when a signal or a limit does: with a report, without
// an unfinished file left behind.
#pragma once

#include <sys/types.h>

#include <string>

namespace gas2interlist {

// Sees to it that a signal that ends the run is reported, and the run has status 1. A
// signal that was ignored when the program started stays ignored.
void catch_signals();

// The same for memory that cannot be had: to report that needs none, where an exception
// might.
void catch_lack_of_memory();

// Makes sure that no file opened from here on becomes a standard stream: one that is
// closed is taken by a descriptor that fails as a closed one does.
void keep_standard_streams_apart();

// A new file that is removed at the end of its scope, or by a signal, unless it was moved
// to its place. There is at most one at a time.
class unfinished_file {
  public:
    // Makes a file in `folder`, with the permissions that a new file gets. -1 when there
    // can be none, and errno says why.
    int create(const std::string& folder);
    // False on failure, and errno says why.
    bool move_to(const std::string& name);

    unfinished_file() = default;
    unfinished_file(const unfinished_file&) = delete;
    unfinished_file& operator=(const unfinished_file&) = delete;
    ~unfinished_file();
};

}  // namespace gas2interlist
