// Names, finds and reads the source files of a listing.
#include "clist/source_list.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "assembly/operand.h"
#include "clist/messages.h"

namespace clist {

// Where systems keep their headers and libraries, compilers theirs among them.
static constexpr std::array<std::string_view, 9> system_prefixes = {
    "/usr/",       "/opt/",     "/Library/",  "/Applications/",   "/nix/store/",
    "/gnu/store/", "/lib/gcc/", "C:/msys64/", "C:/Program Files",
};
// A part of the path of a compiler's own headers wherever it is installed.
static constexpr std::array<std::string_view, 3> system_parts = {"/lib/gcc/", "/lib/gcc-cross/",
                                                                 "/lib/clang/"};

static bool is_inside(std::string_view path, std::string_view directory) {
    while (directory.ends_with('/')) {
        directory.remove_suffix(1);
    }
    return !directory.empty() && path.starts_with(directory) &&
           (path.size() == directory.size() || path[directory.size()] == '/');
}

source_list::source_list(const listing_options& options, assembly::source_access access)
    : options_(options), access_(std::move(access)) {}

bool source_list::is_own(const std::string& path, std::string_view directory) const {
    const std::vector<std::string>& given = options_.system_directories;
    if (std::any_of(given.begin(), given.end(), [&](const std::string& it) {
            return is_inside(path, it) || is_inside(path, assembly::join(directory, it));
        })) {
        return false;
    }
    if (is_inside(path, directory)) {
        return true;
    }
    const auto begins = [&path](std::string_view it) { return path.starts_with(it); };
    const auto holds = [&path](std::string_view it) { return path.find(it) != std::string::npos; };
    return !path.starts_with('<') &&
           std::none_of(system_prefixes.begin(), system_prefixes.end(), begins) &&
           std::none_of(system_parts.begin(), system_parts.end(), holds);
}

// Control characters would end the comment that the name stands in, and with a digit ahead
// "# 12" would be a line marker.
static std::string printable(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    const std::size_t first = name.find_first_not_of(' ');
    return first != std::string::npos && assembly::is_digit(name[first]) ? "./" + name : name;
}

static std::string last_part(const std::string& name) {
    return name.substr(name.find_last_of('/') + 1);
}

std::uint32_t source_list::add(const assembly::assembly_file& assembly,
                               const assembly::file_entry& entry, const listing_input& input) {
    const std::string& directory = assembly.compilation_directory;
    const std::string written = assembly::join(entry.directory, entry.name);
    std::string path = assembly::join(directory, written);
    const auto [it, is_new] = by_path_.try_emplace(path, size());
    if (is_new) {
        source_file& file = files_.emplace_back();
        file.recorded = entry.directory == directory ? entry.name : written;
        file.is_own = is_own(path, directory);
        file.path = std::move(path);
        file.assembly = &assembly;
        file.entry = &entry;
        file.modified = input.modified;
        file.is_compiled_here = !input.command.empty();
    }
    return it->second;
}

void source_list::choose_shown_names() {
    std::unordered_map<std::string, int> counts;
    for (const source_file& it : files_) {
        counts[last_part(it.recorded)] += it.is_used ? 1 : 0;
    }
    for (source_file& it : files_) {
        const std::string last = last_part(it.recorded);
        it.shown = printable(counts[last] <= 1 && !last.empty() ? last : it.recorded);
    }
}

// What there is to say of a source that was looked for.
static std::string remark_on(const source_file& file) {
    const assembly::found_source& found = file.found;
    if (found.file) {
        const bool is_known = found.is_guess && file.is_compiled_here;
        return is_known || found.doubt.empty() ? "" : file.recorded + ": " + found.doubt;
    }
    const std::string& sought = found.is_renamed ? found.name : file.recorded;
    if (!found.doubt.empty()) {
        return sought + ": " + found.doubt;
    }
    if (file.recorded == "<stdin>" || file.recorded == "-") {
        return "<stdin>: compiled from standard input, so its lines stay empty";
    }
    return file.recorded.starts_with('<')
               ? ""
               : sought + ": there is no such file, so its lines stay empty";
}

std::string_view source_list::text(std::uint32_t index) {
    source_file& file = files_[index];
    if (!file.is_looked_for) {
        file.is_looked_for = true;
        file.found = assembly::find_source(*file.assembly, *file.entry, options_.source_map,
                                           access_, file.modified);
        if (const std::string remark = remark_on(file); options_.warnings && !remark.empty()) {
            say(remark);
        }
    }
    return file.found.file ? file.found.file->text() : std::string_view();
}

// A bit for each of 16 characters that is a newline, the first one lowest.
static std::uint64_t newlines_among(const char* characters) {
#ifdef __SSE2__
    __m128i some;
    std::memcpy(&some, characters, sizeof some);
    const int bits = _mm_movemask_epi8(_mm_cmpeq_epi8(some, _mm_set1_epi8('\n')));
    return static_cast<unsigned>(bits);
#else
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < 16; ++i) {
        bits |= std::uint64_t{characters[i] == '\n'} << i;
    }
    return bits;
#endif
}

// Where each line begins, and behind the last one where that ends. Large sources have very
// many lines, and how many of the next 64 characters end one is nothing that the processor
// foresees: room for a few is always filled.
static std::vector<std::uint32_t> find_line_starts(std::string_view text) {
    constexpr std::size_t step = 64;
    constexpr std::size_t few = 4;
    constexpr std::size_t about = 32;  // characters in a line
    std::vector<std::uint32_t> starts(text.size() / about + step + 1);
    std::size_t count = 1;
    std::size_t at = 0;
    for (; at + step <= text.size(); at += step) {
        const char* const from = text.data() + at;
        assembly::prefetch(text, at);
        std::uint64_t newlines = newlines_among(from) | newlines_among(from + 16) << 16 |
                                 newlines_among(from + 32) << 32 | newlines_among(from + 48) << 48;
        const auto found = static_cast<std::size_t>(std::popcount(newlines));
        if (starts.size() - count < step) {
            starts.resize(starts.size() + starts.size() / 2);
        }
        std::uint32_t* const next = &starts[count];
        count += found;
        for (std::size_t i = 0; i < few || i < found; ++i) {
            next[i] = static_cast<std::uint32_t>(at + 1) +
                      static_cast<std::uint32_t>(std::countr_zero(newlines));
            newlines &= newlines - 1;
        }
    }
    starts.resize(count);
    for (; at < text.size(); ++at) {
        if (text[at] == '\n') {
            starts.push_back(static_cast<std::uint32_t>(at + 1));
        }
    }
    if (starts.back() < text.size()) {
        starts.push_back(static_cast<std::uint32_t>(text.size()));
    }
    return starts;
}

std::string_view source_list::line(std::uint32_t index, std::uint32_t number) {
    const std::string_view all = text(index);
    std::vector<std::uint32_t>& starts = files_[index].line_starts;
    if (starts.empty()) {
        starts = find_line_starts(all);
    }
    if (number == 0 || starts.size() <= number) {
        return {};
    }
    std::string_view line = all.substr(starts[number - 1], starts[number] - starts[number - 1]);
    while (line.ends_with('\n') || line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

void source_list::prefetch_line(std::uint32_t index, std::uint32_t number) const {
    const source_file& file = files_[index];
    if (number != 0 && number < file.line_starts.size() && file.found.file) {
        __builtin_prefetch(file.found.file->text().data() + file.line_starts[number - 1]);
    }
}

}  // namespace clist
