// Decides which interlist directives an assembly text gets, and where: the heart of
// gas2interlist. Works on texts in memory; files are reached through assembly::source_access.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/reader.h"
#include "assembly/sources.h"

namespace gas2interlist {

// Directive lines to be written before the byte at offset `at` of the assembly, which is
// the start of a line of it: those of `interlisted_text::added` up to `added_end` that no
// insertion before has.
struct insertion {
    std::size_t at;
    std::size_t added_end;
};

// An assembly text and the lines that are added to it, in ascending order of offset.
struct interlisted_text {
    std::string_view assembly;
    std::string added = {};
    std::vector<insertion> insertions = {};
    std::vector<std::string> warnings = {};  // of what the listing may show wrong, or not at all
};

// Calls `visit` with each piece of the whole in turn. False when a call was.
bool for_each_piece(const interlisted_text& text, const auto& visit) {
    std::size_t copied = 0;
    std::size_t added = 0;
    for (const insertion& it : text.insertions) {
        if (!visit(text.assembly.substr(copied, it.at - copied)) ||
            !visit(std::string_view(text.added).substr(added, it.added_end - added))) {
            return false;
        }
        copied = it.at;
        added = it.added_end;
    }
    return visit(text.assembly.substr(copied));
}

// The whole in one piece.
std::string merged(const interlisted_text& text);

// Places the directives in the assembly `result.assembly`, or tells why there are none.
// `modified` is when the assembly was written, in nanoseconds since the epoch; 0 where
// nobody knows.
std::optional<assembly::assembly_error> place_directives(interlisted_text& result,
                                                         const assembly::prefix_map& source_map,
                                                         const assembly::source_access& sources,
                                                         std::int64_t modified = 0);

}  // namespace gas2interlist
