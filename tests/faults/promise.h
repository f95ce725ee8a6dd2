// What every program promises when something goes wrong, held against a run: status 0
// only with the whole output, otherwise a message; nothing that was there before is
// lost, nothing is left lying about, and the run ends by itself.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/faults/fault.h"

// One way to call a program. All names are relative to the run's own folder.
struct scenario {
    std::string name;
    std::vector<std::string> arguments;
    std::map<std::string, std::string> files;     // that are there before
    std::string input;                            // on standard input
    std::vector<std::string> outputs;             // files that the run writes
    std::vector<int> closed = {};                 // descriptors that it starts without
    std::map<std::string, std::string> set = {};  // variables of the environment
};

using snapshot = std::map<std::string, std::string>;  // all files of a folder

struct outcome {
    Finished finished;
    snapshot files;
};

// A program under test: its promises are the same in all its scenarios.
struct tested_program {
    std::string path;
    std::vector<scenario> scenarios;

    // An output that cannot be written whole stays as it was.
    bool keeps_old_outputs = false;

    // Of its allocations one in so many fails, others in other scenarios, unless
    // EVERY_ALLOCATION is in the environment.
    int allocation_step = 1;

    // True where a run with status 0 may have this outcome, which is not that of the
    // run without a fault. Null: never.
    std::function<bool(const scenario&, const fault&, const outcome& whole, const outcome&)>
        excused = nullptr;
};

// The one that this test program is built for.
const tested_program& program_under_test();
