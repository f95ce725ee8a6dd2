// Follows the scopes of the debugging data from the innermost one outwards.
#include "clist/forms/page/frames.h"

#include <limits>

namespace clist::page {

static constexpr std::uint32_t unknown = std::numeric_limits<std::uint32_t>::max() - 1;

std::size_t frame_table::hash::operator()(const frame_row& row) const {
    constexpr std::uint64_t factor = 0x9e3779b97f4a7c15;
    std::uint64_t mixed = row.function;
    for (const std::uint32_t part : {row.source, row.line, row.parent}) {
        mixed = (mixed ^ part) * factor;
        mixed ^= mixed >> 29U;
    }
    return static_cast<std::size_t>(mixed);
}

std::uint32_t frame_table::intern(const frame_row& row) {
    const auto [it, is_new] = index_.try_emplace(row, static_cast<std::uint32_t>(rows_.size()));
    if (is_new) {
        rows_.push_back(row);
    }
    return it->second;
}

std::uint32_t frame_table::name(std::string_view function) {
    const auto [it, is_new] =
        name_index_.try_emplace(function, static_cast<std::uint32_t>(names_.size()));
    if (is_new) {
        names_.push_back(function);
    }
    return it->second;
}

// The frame that what is inlined in a scope was inlined into; none for a function's own.
std::uint32_t frame_table::call_site_of(std::uint32_t scope) {
    const std::vector<assembly::code_scope>& scopes = model_.debug().scopes;
    if (call_sites_.empty()) {
        call_sites_.resize(scopes.size(), unknown);
    }
    // From the outermost scope that is not known yet inwards.
    std::vector<std::uint32_t> way;
    for (std::uint32_t at = scope; at != none && call_sites_[at] == unknown;
         at = scopes[at].parent) {
        way.push_back(at);
    }
    for (; !way.empty(); way.pop_back()) {
        const assembly::code_scope& it = scopes[way.back()];
        std::uint32_t site = none;
        if (it.parent != none) {
            const std::uint32_t source = it.call_line == 0 ? none : model_.source_of(it.call_file);
            site = intern({.function = name(model_.function_name(it.parent)),
                           .source = source,
                           .line = source == none ? 0 : it.call_line,
                           .parent = call_sites_[it.parent]});
        }
        call_sites_[way.back()] = site;
    }
    return call_sites_[scope];
}

std::uint32_t frame_table::of(const origin& from, std::string_view symbol) {
    if (from.source == none || from.line == 0) {
        return none;
    }
    const bool is_known = from.scope != none;
    return intern({.function = name(is_known ? model_.function_name(from.scope)
                                             : model_.names().readable(symbol)),
                   .source = from.source,
                   .line = from.line,
                   .parent = is_known ? call_site_of(from.scope) : none});
}

std::uint32_t frame_table::outermost(std::uint32_t frame) const {
    while (rows_[frame].parent != none) {
        frame = rows_[frame].parent;
    }
    return frame;
}

}  // namespace clist::page
