// Listings of a whole project: every compile that a compile database names becomes a step
// of a Ninja file, and Ninja runs it.
#pragma once

#include <string>
#include <vector>

#include "clist/database.h"
#include "clist/options.h"

namespace clist {

// One listing of a project.
struct listing_step {
    std::string source;
    std::string name;       // of the source, from the folder that all of them lie in
    std::string output;     // the listing
    std::string directory;  // that the compile runs in
    std::vector<std::string> words;
};

// The listings to make, one for each C and C++ source and way of compiling it. Paths are
// absolute; `folder` is where the listings go, `base` is the database's folder.
std::vector<listing_step> plan_listings(const std::vector<database_entry>& entries,
                                        const std::string& base, const std::string& folder,
                                        const options& given);

// The Ninja file for them. `self` is the program that makes a listing.
std::string ninja_file(const std::vector<listing_step>& steps, const std::string& self,
                       const std::string& folder, const options& given);

// Makes the listings of a project; what clist -p does. Returns the exit status.
int list_project(const options& given);

}  // namespace clist
