// Names of source files put together, renamed and looked for.
#include "assembly/sources.h"

#include <filesystem>
#include <system_error>

#include "assembly/text_file.h"

namespace assembly {
namespace {

std::optional<std::string> read_source(const std::string& name) {
    const std::optional<text_file> file = text_file::open_source(name);
    return file ? std::optional(std::string(file->text())) : std::nullopt;
}

bool is_same_file(const std::string& one, const std::string& other) {
    std::error_code failure;
    return std::filesystem::equivalent(one, other, failure) && !failure;
}

std::string join(std::string_view directory, std::string_view name) {
    while (name.starts_with("./")) {
        name.remove_prefix(2);
    }
    std::string joined(directory == "." || name.starts_with('/') ? std::string_view() : directory);
    if (!joined.empty() && !joined.ends_with('/')) {
        joined += '/';
    }
    joined += name;
    return joined;
}

std::optional<std::string> map_name(const prefix_map& renames, const std::string& name) {
    for (const auto& [old_prefix, new_prefix] : renames) {
        if (name.starts_with(old_prefix)) {
            return new_prefix + name.substr(old_prefix.size());
        }
    }
    return std::nullopt;
}

}  // namespace

std::string reachable_name(const assembly_file& assembly, const file_entry& entry,
                           const prefix_map& renames, const source_access& access) {
    const std::string& base = assembly.compilation_directory;
    const std::string written = join(entry.directory, entry.name);
    std::string full = join(base, written);
    for (const std::string& name : {written, full}) {
        if (std::optional<std::string> mapped = map_name(renames, name)) {
            return std::move(*mapped);
        }
    }
    const std::string in_base = base.ends_with('/') || base.empty() ? base : base + "/";
    std::string brief = full.starts_with(in_base) ? full.substr(in_base.size()) : written;
    if (brief == full || access.same(brief, full)) {
        return brief;
    }
    if (access.read(full)) {
        return full;
    }
    return access.read(brief) ? brief : written;
}

source_access system_sources() {
    return {.read = read_source, .same = is_same_file};
}

}  // namespace assembly
