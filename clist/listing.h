// What a listing is made of and how it is to look: the interface between the commands
// (options, compile, launcher, project) and the model of the code with its output forms.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/sources.h"
#include "clist/output.h"

namespace clist {

enum class listing_form : std::uint8_t { code, list, stats, classic, page };

// --lines FILE:FROM-TO; both ends belong to it.
struct line_range {
    std::string file;
    std::uint32_t from = 1;
    std::uint32_t to = std::numeric_limits<std::uint32_t>::max();

    friend bool operator==(const line_range&, const line_range&) = default;
};

struct listing_options {
    listing_form form = listing_form::code;
    bool json = false;
    bool all = false;
    bool mangled = false;
    bool mca = false;
    bool own_sources = false;
    bool color = false;
    bool warnings = true;
    std::string comment;                 // what starts a comment; empty: the target's own
    std::vector<std::string> functions;  // globs and decimal numbers, as given
    std::vector<line_range> lines;
    unsigned context = 0;
    assembly::prefix_map source_map;              // OLD=NEW rules
    std::vector<std::string> system_directories;  // -isystem and its like
};

// One assembly text. `text` outlives the call; all but it and the name may be empty.
struct listing_input {
    std::string name;  // how messages call it: "prog.s", "standard input", "prog.c"
    std::string_view text;
    std::string target;                // the triple; empty: told from the text
    std::string directory;             // that the compile ran in; relative sources are tried there
    std::int64_t modified = 0;         // ns since the epoch of the file at hand; 0: just compiled
    std::vector<std::string> command;  // compiler and arguments; empty for assembly at hand
};

// One listing of all inputs; numbers of functions run through all of them. What goes wrong
// it says. That the output fails it leaves to the caller to tell, by `output::flush`.
class listing {
  public:
    // The inputs and the options outlive it.
    listing(std::span<const listing_input> inputs, const listing_options& options);
    ~listing();
    listing(const listing&) = delete;
    listing& operator=(const listing&) = delete;

    // Reads the assembly and chooses what is shown. False after an error.
    bool read();
    // True if code of what was read comes from that file.
    bool comes_from(const std::string& file) const;
    // Writes what was read, once. False after an error of its own.
    bool write(output& out);

  private:
    struct parts;
    std::unique_ptr<parts> parts_;
};

// Both in one. Returns 0, or 1 after an error.
int write_listing(std::span<const listing_input> inputs, const listing_options& options,
                  output& out);

}  // namespace clist
