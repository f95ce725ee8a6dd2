// Listings made within a test: what is written and what is said.
#pragma once

#include <string>
#include <vector>

#include "clist/listing.h"

struct listed {
    std::string text;
    std::string messages;
    int status = 0;
};

listed list(const std::vector<clist::listing_input>& inputs, const clist::listing_options& options);
