// The source files of a listing: what each is called in it, whose it is, and its lines.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembly/reader.h"
#include "assembly/sources.h"
#include "clist/listing.h"

namespace clist {

struct source_file {
    std::string recorded;  // the name that the compiler recorded
    std::string path;      // the same with its directory: what tells one file from another
    std::string shown;     // in listings: the last part of the name where that is unique
    bool is_own = true;    // of the project rather than a system's or library's
    bool is_used = false;  // some code of the listing comes from it

    // Where its text is found, once it was asked for.
    const assembly::assembly_file* assembly = nullptr;
    const assembly::file_entry* entry = nullptr;
    std::int64_t modified = 0;      // when the assembly was written
    bool is_compiled_here = false;  // just now, in the working directory
    bool is_looked_for = false;
    assembly::found_source found = {};
    std::vector<std::uint32_t> line_starts = {};  // once a line was asked for
};

class source_list {
  public:
    source_list(const listing_options& options, assembly::source_access access);

    // The index of the file that an entry of an input's assembly names; these live on.
    std::uint32_t add(const assembly::assembly_file& assembly, const assembly::file_entry& entry,
                      const listing_input& input);

    // To be called once all are there that `is_used`.
    void choose_shown_names();

    const source_file& operator[](std::uint32_t index) const { return files_[index]; }
    source_file& operator[](std::uint32_t index) { return files_[index]; }
    std::uint32_t size() const { return static_cast<std::uint32_t>(files_.size()); }

    // All of a file's text; empty when there is none. What there is to say of it is said
    // the first time.
    std::string_view text(std::uint32_t index);

    // One line without its end; empty when there is none. Lines count from 1.
    std::string_view line(std::uint32_t index, std::uint32_t number);
    // Has the processor fetch a line that will be asked for soon.
    void prefetch_line(std::uint32_t index, std::uint32_t number) const;

  private:
    bool is_own(const std::string& path, std::string_view directory) const;

    const listing_options& options_;
    assembly::source_access access_;
    std::deque<source_file> files_;
    std::unordered_map<std::string, std::uint32_t> by_path_;
};

}  // namespace clist
