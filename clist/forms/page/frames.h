// The frames of a unit: the lines that its code came from, each with the frame that it was
// inlined into. Each is kept once, and a parent before its children.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "clist/annotate.h"

namespace clist::page {

struct frame_row {
    std::uint32_t function;  // index of its name
    std::uint32_t source;    // index in the source list, or none
    std::uint32_t line;
    std::uint32_t parent;  // index, or none

    friend bool operator==(const frame_row&, const frame_row&) = default;
};

class frame_table {
  public:
    explicit frame_table(const annotation& model) : model_(model) {}

    // The frame of a line of code in the function `symbol`; none where it has no line.
    std::uint32_t of(const origin& from, std::string_view symbol);

    const std::vector<frame_row>& rows() const { return rows_; }
    const std::vector<std::string_view>& names() const { return names_; }

    // The frame of the function itself that a frame was inlined into.
    std::uint32_t outermost(std::uint32_t frame) const;

  private:
    std::uint32_t call_site_of(std::uint32_t scope);
    std::uint32_t intern(const frame_row& row);
    std::uint32_t name(std::string_view function);

    struct hash {
        std::size_t operator()(const frame_row& row) const;
    };

    const annotation& model_;
    std::vector<frame_row> rows_;
    std::unordered_map<frame_row, std::uint32_t, hash> index_;
    std::vector<std::string_view> names_;
    std::unordered_map<std::string_view, std::uint32_t> name_index_;
    std::vector<std::uint32_t> call_sites_;  // by scope, as far as it was asked for
};

}  // namespace clist::page
