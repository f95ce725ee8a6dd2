// Source files as an assembly text names them: what name leads to one, and what stands in
// it. Programs reach the file system through these functions; tests hand in texts.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assembly/reader.h"

namespace assembly {

// A name prefix and what it is replaced with.
using prefix_map = std::vector<std::pair<std::string, std::string>>;

// How source files are reached.
struct source_access {
    // The text of a file, or nothing when it cannot be read.
    std::function<std::optional<std::string>(const std::string& name)> read;
    // Whether both names lead to one existing file.
    std::function<bool(const std::string& one, const std::string& other)> same;
};

// The file system's source files: regular ones of at most 256 MB.
source_access system_sources();

// The name to reach a source file by. Compilers name most files relative to the
// directory they ran in; that short form is kept where it leads to the same file. The
// first rule of `renames` that fits the written or the full name decides.
std::string reachable_name(const assembly_file& assembly, const file_entry& entry,
                           const prefix_map& renames, const source_access& access);

}  // namespace assembly
