// Which functions and lines of code a listing shows: all, or those that were asked for by
// name, number or source line, with what they call.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "clist/annotate.h"
#include "clist/listing.h"

namespace clist {

struct selected_function {
    std::size_t model;       // index
    std::uint32_t function;  // index in the model's assembly
    std::uint32_t number;    // as the list of functions counts: from 1, through all models
};

struct selection {
    std::vector<selected_function> functions;  // in the order of the texts
    bool is_all = true;                        // nothing was left out
    // By model and index: whether a line of code is shown, in functions that are. Empty
    // where all are.
    std::vector<std::vector<bool>> lines;

    bool has_line(std::size_t model, std::uint32_t instruction) const {
        return lines.empty() || lines[model][instruction];
    }
};

// Chooses what the options ask for. Where one of them fits nothing, `error` says so and
// names what comes nearest.
selection select(const std::deque<annotation>& models, const listing_options& options,
                 std::string& error);

}  // namespace clist
