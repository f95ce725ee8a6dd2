// Source files as an assembly text names them: what name leads to one, and what stands in
// it. Programs reach the file system through these functions; tests hand in texts.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assembly/reader.h"
#include "assembly/text_file.h"

namespace assembly {

// A name prefix and what it is replaced with.
using prefix_map = std::vector<std::pair<std::string, std::string>>;

// How source files are reached.
struct source_access {
    // A file, or nothing when it cannot be read; then errno tells why.
    std::function<std::optional<text_file>(const std::string& name)> read;
    // Whether both names lead to one existing file.
    std::function<bool(const std::string& one, const std::string& other)> same;
};

// The file system's source files: regular ones of at most 256 MB.
source_access system_sources();

// A name in a directory; an absolute name stays as it is, and no directory adds nothing.
std::string join(std::string_view directory, std::string_view name);

// The name of a source file where it was compiled: absolute if the assembly tells. Entries
// that share it are one file.
std::string compiled_name(const assembly_file& assembly, const file_entry& entry);

struct found_source {
    std::string name;               // to reach it by
    std::optional<text_file> file;  // nothing when it cannot be read
    // Why its text may not be what was compiled, or why there is none though there is a file;
    // empty where there is nothing to say.
    std::string doubt;
    bool is_guess = false;    // the doubt is only whether this is the file that was compiled
    bool is_renamed = false;  // by a rule of the user's
};

// Finds a source file. A name that the compiler was given as an absolute one stays so. A
// relative one stands for a file in the directory that the compiler ran in; it is kept
// where it leads to that file from the working directory, and taken for another file there
// where that one is not to be found. The first rule of `renames` that fits the written or
// the full name decides instead. `modified` is when the assembly was written, in
// nanoseconds since the epoch; 0 where nobody knows.
found_source find_source(const assembly_file& assembly, const file_entry& entry,
                         const prefix_map& renames, const source_access& access,
                         std::int64_t modified);

}  // namespace assembly
