// The launcher: compiles as if clist were not there and leaves a listing beside each object.
#pragma once

#include <functional>
#include <string>

#include "clist/compile.h"
#include "clist/options.h"

namespace clist {

// Writes the listing of one source's assembly to a file. False after a message.
using listing_writer =
    std::function<bool(const arguments& command, std::size_t source, compiled& made,
                       const options& given, const std::string& file)>;

// Runs a compiler's command line; one that makes no objects takes this process over.
// Returns the exit status where the process is to end with one, and ends it by the signal
// that ended the compiler.
int launch(const options& given, const listing_writer& write_listing);

}  // namespace clist
