// Names of source files put together, renamed and looked for.
#include "assembly/sources.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "assembly/md5.h"

namespace assembly {

static bool is_same_file(const std::string& one, const std::string& other) {
    std::error_code failure;
    return std::filesystem::equivalent(one, other, failure) && !failure;
}

static bool is_absolute(std::string_view name) {
    return name.starts_with('/');
}

std::string join(std::string_view directory, std::string_view name) {
    while (name.starts_with("./")) {
        name.remove_prefix(2);
    }
    std::string joined(directory == "." || is_absolute(name) ? std::string_view() : directory);
    if (!joined.empty() && !joined.ends_with('/')) {
        joined += '/';
    }
    joined += name;
    return joined;
}

static std::optional<std::string> renamed(const prefix_map& renames, const std::string& name) {
    for (const auto& [old_prefix, new_prefix] : renames) {
        if (name.starts_with(old_prefix)) {
            return new_prefix + name.substr(old_prefix.size());
        }
    }
    return std::nullopt;
}

// Some compilers name only the main file, which is file 0, as it was given.
static bool was_given_absolute(const assembly_file& assembly, const file_entry& entry,
                               const std::string& full) {
    const auto zero = assembly.files.find(0);
    return is_absolute(entry.name) ||
           (zero != assembly.files.end() && zero->second.name == full && is_absolute(full));
}

std::string compiled_name(const assembly_file& assembly, const file_entry& entry) {
    return join(assembly.compilation_directory, join(entry.directory, entry.name));
}

// A file by the one name that it can have. That it is missing is left to be told when it is
// to be listed.
static found_source read_as(const std::string& name, const source_access& access) {
    found_source found{name, access.read(name), {}};
    if (!found.file && errno != ENOENT && errno != ENOTDIR) {
        found.doubt = std::string("cannot be read: ") + std::strerror(errno);
    }
    return found;
}

// The file under its name. For a guess, `doubt` says so.
static found_source look_for(const assembly_file& assembly, const file_entry& entry,
                             const prefix_map& renames, const source_access& access) {
    const std::string& base = assembly.compilation_directory;
    const std::string written = join(entry.directory, entry.name);
    const std::string full = compiled_name(assembly, entry);
    for (const std::string& name : {written, full}) {
        if (const std::optional<std::string> other = renamed(renames, name)) {
            found_source found = read_as(*other, access);
            found.is_renamed = true;
            return found;
        }
    }
    const std::string in_base = base.ends_with('/') || base.empty() ? base : base + "/";
    const std::string brief = full.starts_with(in_base) ? full.substr(in_base.size()) : written;
    const bool is_given = was_given_absolute(assembly, entry, full);
    if (!is_given && is_absolute(base) && access.same(brief, full)) {
        return read_as(brief, access);
    }
    if (is_absolute(full) || base.empty()) {
        if (found_source found = read_as(full, access); found.file || !found.doubt.empty()) {
            return found;
        }
    }
    for (const std::string& name : {brief, full}) {
        if (is_absolute(name)) {
            continue;
        }
        found_source found = read_as(name, access);
        if (found.file) {
            found.is_guess = true;
            found.doubt =
                is_absolute(full)
                    ? "found here, though it was compiled as " + full
                    : "found here, though the assembly does not tell where it was compiled";
        }
        if (!found.doubt.empty()) {
            return found;
        }
    }
    return {is_given ? full : written, std::nullopt, {}};
}

found_source find_source(const assembly_file& assembly, const file_entry& entry,
                         const prefix_map& renames, const source_access& access,
                         std::int64_t modified) {
    found_source found = look_for(assembly, entry, renames, access);
    if (!found.file) {
        return found;
    }
    if (!entry.md5.empty()) {
        found.is_guess = false;
        found.doubt =
            md5_of(found.file->text()) == entry.md5 ? "" : "not the text that was compiled";
    } else if (found.doubt.empty() && modified != 0 && found.file->modified() > modified) {
        found.doubt = "newer than the assembly";
    }
    return found;
}

source_access system_sources() {
    return {.read = text_file::open_source, .same = is_same_file};
}

}  // namespace assembly
