// Runs a built program the way a shell would and collects what it did: both
// output streams, the exit status, the terminating signal. Also the scratch
// folders that such tests work in. Used by every test of a whole program.
#pragma once

#include <sys/types.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// What one finished run left behind.
struct Finished {
    int status = -1;  // exit status, -1 when a signal ended the program
    int signal = 0;   // the signal that ended it, 0 when it exited
    std::string out;  // all of standard output
    std::string err;  // all of standard error
};

// What a run starts with. An empty member means "as this process has it",
// except `input`: a program always gets its own standard input, empty by default.
struct RunOptions {
    std::string input;                               // bytes on standard input
    std::string directory;                           // working directory
    std::map<std::string, std::string> set;          // environment variables to set
    std::vector<std::string> unset;                  // environment variables to remove
    std::optional<std::string> output_to;            // a file to open as standard output
    std::optional<std::string> input_from;           // a file to open as standard input
    std::optional<std::size_t> address_space_limit;  // RLIMIT_AS in bytes
    bool output_is_terminal = false;                 // standard output is one, line ends as written
    std::optional<std::string> argv0;                // invocation name, if not the path
    std::function<void()> before_start;              // runs in the child, last of all
};

// A program that has been started and not yet waited for.
struct Running {
    pid_t pid = -1;
    int out_fd = -1;
    int err_fd = -1;
    std::string input;
    int in_fd = -1;
};

// Starts `argv[0]` with the arguments after it.
Running start_program(const std::vector<std::string>& argv, const RunOptions& options = {});

// Feeds the input, collects the output and waits for the end.
Finished finish_program(Running& running);

// The two in one.
Finished run_program(const std::vector<std::string>& argv, const RunOptions& options = {});

// True if a program of that name is on PATH: tests of what users may lack ask first.
bool has_command(const std::string& name);

// A fresh folder that is removed with everything in it at the end of its scope.
class ScratchFolder {
  public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    // Writes a file into the folder and returns its full name.
    std::string write(const std::string& name, const std::string& contents) const;
    // Reads one back, byte for byte; fails the test and gives "" when it is not there.
    std::string read(const std::string& name) const;
    bool has(const std::string& name) const;

  private:
    std::string path_;
};

// Reads a whole file, byte for byte; fails the test and gives "" when it cannot.
std::string read_file(const std::string& name);
