// The output forms of a listing, behind one interface: each writes the models of all inputs,
// of which `shown` tells what is wanted.
#pragma once

#include <deque>
#include <string_view>

#include "clist/annotate.h"
#include "clist/listing.h"
#include "clist/output.h"
#include "clist/selection.h"

namespace clist {

struct form_input {
    const std::deque<annotation>& models;
    const selection& shown;
    const listing_options& options;
};

// False when it failed for a reason of its own, which it has said.
using form_writer = bool (*)(const form_input& from, output& to);

bool write_code(const form_input& from, output& to);     // the code in its order, without noise
bool write_whole(const form_input& from, output& to);    // the same, every line kept
bool write_objects(const form_input& from, output& to);  // an object for each line of code
bool write_list(const form_input& from, output& to);     // the functions
bool write_stats(const form_input& from, output& to);    // figures of each function
bool write_classic(const form_input& from, output& to);  // the interlister's listing
bool write_page(const form_input& from, output& to);     // a page for a browser

}  // namespace clist
