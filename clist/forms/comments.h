// The comment lines by which a listing tells where code came from.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clist/annotate.h"
#include "clist/listing.h"
#include "clist/output.h"

namespace clist {

// What is coloured, by the terminal's own codes.
enum class color : std::uint8_t { source, inlined, label, plain };
std::string_view color_code(color what);

class comment_lines {
  public:
    comment_lines(const annotation& model, const listing_options& options);

    // To be called where the next line of code stands for itself: at a function's beginning.
    void begin() { last_.reset(); }

    // The lines that stand before a line of code; none where the one before came from the
    // same place, the same way.
    //   comment ::= COMMENT " " FILE ":" LINE " | " text
    //             | COMMENT " no line"
    //   inlined ::= COMMENT " inlined: " function " at " FILE ":" LINE " in " function
    //               (", at " FILE ":" LINE " in " function)*
    // The view is good until the next call.
    std::string_view lines_before(std::uint32_t instruction);

  private:
    std::string_view lines_of(const origin& from);
    void add_inlined(std::uint32_t scope);

    const annotation& model_;
    const listing_options& options_;
    std::string line_end_;
    std::string text_;
    std::optional<origin> last_ = {};
    std::uint32_t last_position_ = none;
    std::uint32_t last_scope_ = none;
    std::vector<std::string> inlined_;  // by scope, as far as it was asked for
};

}  // namespace clist
