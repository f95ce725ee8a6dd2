// What the tests of installed trees and packages share: running commands that must
// succeed, looking into folders, and one installed tree for each test program.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "tests/harness/program.h"

// The options of a run in another folder, with one more environment variable, or with
// something to read.
RunOptions in_folder(const std::string& folder);
RunOptions with_variable(const std::string& name, const std::string& value);
RunOptions reading(const std::string& input);

// Runs a command, which must end with status 0, and gives its standard output.
std::string output_of(const std::vector<std::string>& argv, const RunOptions& options = {});

// The same for a shell script; `arguments` are its $1, $2 and so on.
std::string shell(const std::string& script, const std::vector<std::string>& arguments = {},
                  const RunOptions& options = {});

std::vector<std::string> lines_of(const std::string& text);

// The files below a folder, links included, by their names relative to it.
std::set<std::string> files_below(const std::string& folder);

// A folder with everything installed, moved away from where it was put. It is made at
// the first call and removed at the end of the program.
const std::string& installed_tree();

// Configures and builds a project against the installed tree.
void configure(const std::string& project, const std::string& folder,
               const std::vector<std::string>& options = {});
std::string build(const std::string& folder, const std::vector<std::string>& options = {});
