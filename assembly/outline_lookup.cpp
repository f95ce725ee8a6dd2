// Finds functions in the outline of a source file.
#include <algorithm>

#include "assembly/outline.h"
#include "assembly/token.h"

namespace assembly {
namespace {

// Sources have neither this many functions on one line nor blocks as deep; a text that
// does is not worth the time.
constexpr std::size_t most_steps = 1000;

bool is_function(const source_block& block) {
    return block.kind == block_kind::function;
}

}  // namespace

bool declares(const source_outline& outline, std::size_t block, std::string_view name) {
    constexpr std::size_t longest_declaration = 4096;
    if (name.empty()) {
        return false;
    }
    const source_block& it = outline.blocks[block];
    const std::string_view header =
        outline.text.substr(it.header_at, std::min(it.open_at - it.header_at, longest_declaration));
    for (std::size_t at = header.find(name); at != std::string_view::npos;
         at = header.find(name, at + 1)) {
        const bool begins = at == 0 || !is_word_part(header[at - 1]);
        const std::size_t end = at + name.size();
        if (begins && (end == header.size() || !is_word_part(header[end]))) {
            return true;
        }
    }
    return false;
}

std::size_t function_declared_at(const source_outline& outline, std::uint32_t line,
                                 std::string_view name) {
    const std::vector<source_block>& blocks = outline.blocks;
    std::size_t found = no_block;
    const auto first =
        std::partition_point(blocks.begin(), blocks.end(),
                             [line](const source_block& it) { return it.open_line < line; });
    const auto end = first + std::min<std::ptrdiff_t>(blocks.end() - first, most_steps);
    for (auto it = first; it != end && it->header_line <= line; ++it) {
        const auto index = static_cast<std::size_t>(it - blocks.begin());
        if (!is_function(*it)) {
            continue;
        }
        if (declares(outline, index, name)) {
            return index;
        }
        if (found == no_block) {
            found = index;
        }
    }
    return found;
}

std::size_t function_around(const source_outline& outline, std::uint32_t line) {
    const std::vector<source_block>& blocks = outline.blocks;
    const auto after =
        std::partition_point(blocks.begin(), blocks.end(),
                             [line](const source_block& it) { return it.open_line <= line; });
    std::size_t block =
        after == blocks.begin() ? no_block : static_cast<std::size_t>(after - blocks.begin()) - 1;
    for (std::size_t steps = 0; block != no_block && steps < most_steps; ++steps) {
        if (is_function(blocks[block]) && blocks[block].close_line >= line) {
            return block;
        }
        block = blocks[block].parent;
    }
    return no_block;
}

}  // namespace assembly
