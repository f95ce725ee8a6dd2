// Whole files, for what is neither assembly nor a source.
#pragma once

#include <cerrno>
#include <cstring>
#include <optional>
#include <string>

#include "assembly/text_file.h"

namespace clist {

// The text of a file. On failure nothing, and `error` gets the system's text.
inline std::optional<std::string> read_whole(const std::string& name, std::string& error) {
    const std::optional<assembly::text_file> file = assembly::text_file::open(name);
    if (!file) {
        error = std::strerror(errno);
        return std::nullopt;
    }
    return std::string(file->text());
}

}  // namespace clist
