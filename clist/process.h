// Runs other programs: compilers and Ninja. While they run, and as long as a scratch
// folder exists, a signal that would end clist is handed on to them and waits until
// everything is tidied up.
#pragma once

#include <csignal>
#include <string>
#include <vector>

namespace clist {

// Holds back the signals that end a program (HUP, INT, TERM, PIPE, ALRM and the like) until the
// last of these ends; then they have their usual effect.
class signal_hold {
  public:
    signal_hold();
    ~signal_hold();
    signal_hold(const signal_hold&) = delete;
    signal_hold& operator=(const signal_hold&) = delete;

  private:
    sigset_t before_{};
};

struct run_settings {
    std::string directory;                 // to run in; empty: this one
    bool output_to_error = false;          // its standard output goes to our standard error
    std::string messages_to;               // a file for both; its standard input is empty then
    std::vector<std::string> environment;  // NAME=VALUE to set, NAME to remove
};

struct run_result {
    int error = 0;   // errno where it could not be started
    int status = 0;  // exit status
    int signal = 0;  // that ended it

    bool succeeded() const { return error == 0 && status == 0 && signal == 0; }
};

// The program of a name, looked for as a shell does; empty where there is none.
std::string found_program(const std::string& name);

// Runs a program found in $PATH and waits for its end.
run_result run(const std::vector<std::string>& words, const run_settings& settings = {});

// Becomes the program. Returns errno where that fails.
int become(const std::vector<std::string>& words);

// What went wrong, for a message: "cannot run gcc: No such file or directory".
std::string failure_text(const std::string& program, const run_result& result);

// What a failed program makes of our own status: its own; 128 and the signal's number;
// 1 where it could not be started.
int status_of(const run_result& result);

// A folder for what others write, removed at its end.
class scratch_folder {
  public:
    // Throws std::system_error where none can be made.
    scratch_folder();
    ~scratch_folder();
    scratch_folder(const scratch_folder&) = delete;
    scratch_folder& operator=(const scratch_folder&) = delete;

    const std::string& path() const { return path_; }
    // The path of a file in it. Those are removed even where there is no memory left to
    // look what else lies there.
    std::string file(const std::string& name);

  private:
    signal_hold hold_;
    std::string path_;
    std::vector<std::string> files_;
};

}  // namespace clist
