// The model of a listing: an assembly text's functions, and for every line of code the line
// of the source that it came from and the functions that it was inlined through. All output
// forms are made of it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/debug_info.h"
#include "assembly/label_index.h"
#include "assembly/reader.h"
#include "clist/listing.h"
#include "clist/names.h"
#include "clist/references.h"
#include "clist/source_list.h"

namespace clist {

using assembly::none;

// What a line of code is shown as. With library code told as the line that it was inlined
// into, this is that line.
struct origin {
    std::uint32_t source = none;  // index in the source list; none where there is no position
    std::uint32_t line = 0;       // 0: no line
    std::uint32_t scope = none;   // the scope that the line is in
    std::uint32_t inlined =
        none;  // the outermost scope left out: the library's, called on the line

    friend bool operator==(const origin&, const origin&) = default;
};

// One step of the way that code came: a function, and the line in it that the code is on or
// that the step before was called on.
struct frame {
    std::string_view function = {};  // as listings name it
    std::uint32_t source = none;
    std::uint32_t line = 0;
};

class annotation {
  public:
    // `input`, `options`, `sources` and `names` must outlive it. Nothing is read yet.
    annotation(const listing_input& input, const listing_options& options, source_list& sources,
               name_table& names);
    annotation(const annotation&) = delete;
    annotation& operator=(const annotation&) = delete;

    // Reads the assembly. False after an error, which is said; warnings are said too.
    bool read();

    const listing_input& input() const { return input_; }
    const assembly::assembly_file& code() const { return code_; }
    const assembly::debug_info& debug() const { return debug_; }
    const assembly::label_index& labels() const { return *labels_; }
    references& used() const { return *used_; }  // where the form shows only what is
    source_list& sources() const { return sources_; }
    name_table& names() const { return names_; }
    // What starts a comment in the listing.
    std::string_view comment() const { return comment_; }

    // Of the line of code with this index.
    origin origin_of(std::uint32_t instruction) const;
    // Its text, blanks around it not among it.
    std::string_view text_of(std::uint32_t instruction) const;
    // Has the processor fetch the source line of a position that will be shown soon.
    void prefetch_line(std::uint32_t position) const;
    // The way that code of this origin came, innermost function first. `symbol` is the
    // function that the code is in, for code that no debugging data tell of.
    void frames_of(const origin& from, std::string_view symbol, std::vector<frame>& frames) const;

    // The name of a scope's function as listings have it.
    std::string_view function_name(std::uint32_t scope) const;
    // The same without parameters and the like.
    std::string plain_function_name(std::uint32_t scope) const;
    // The source that a file number stands for; none where it stands for nothing.
    std::uint32_t source_of(std::uint32_t file) const;

    // A function's name as listings have it.
    std::string_view name_of(const assembly::function_code& function) const;

  private:
    void read_names();
    void collect_sources();

    const listing_input& input_;
    const listing_options& options_;
    source_list& sources_;
    name_table& names_;
    assembly::assembly_file code_;
    assembly::debug_info debug_;
    std::optional<assembly::label_index> labels_;
    std::unique_ptr<references> used_;
    std::string_view comment_;
    std::vector<std::uint32_t> source_of_file_;  // by file number
};

}  // namespace clist
