// Runs the listing pass inside the test program on files in a scratch folder.
#pragma once

#include <string>
#include <vector>

#include "tests/harness/program.h"

// Starts afresh, scans `arguments` (without the program's name), runs the pass
// and closes the streams. Ends the process where the program would.
void run_pass(const std::vector<std::string>& arguments);

// The same on an assembly file of these contents; returns the listing.
// `options` stand before the file name.
std::string listing_of(const ScratchFolder& folder, const std::string& assembly,
                       std::vector<std::string> options = {});

// Opens the assembly file and the listing and sets the state as it is before
// the pass, for tests that call its functions one by one.
void begin_pass(const ScratchFolder& folder, const std::string& assembly);

// What the listing holds so far.
std::string listing_so_far();
