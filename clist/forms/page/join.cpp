// Joins pages without unpacking what is in them: a chunk is a line of a page, and only the
// number of its unit, which stands in its name, has to change.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "assembly/text_file.h"
#include "clist/forms/page.h"
#include "clist/forms/page/chunk.h"
#include "clist/forms/page/columns.h"
#include "clist/messages.h"

namespace clist {

static constexpr std::size_t greatest_page = 64'000'000;

namespace {

// A line of a page that holds a chunk.
struct chunk_line {
    std::string_view name;
    std::string_view rest;  // from behind the name to the end of the line, the newline included
};

// The chunks of all pages under the names that they have in the index.
struct joined_chunks {
    std::deque<std::string> names;               // those that changed
    std::vector<std::string_view> lines;         // in threes: head, name, rest
    std::vector<std::string_view> unit_heads;    // those of them that a start page needs
    std::unordered_set<std::string_view> texts;  // that are there already
    std::vector<std::string_view> addresses;     // by unit, the page that has it
    std::size_t size = 0;

    void add(const chunk_line& line, std::string_view name);
};

}  // namespace

void joined_chunks::add(const chunk_line& line, std::string_view name) {
    const bool is_head = name.ends_with("/unit");
    for (const std::string_view part : {page::line_head, name, line.rest}) {
        size += part.size();
        lines.push_back(part);
        if (is_head) {
            unit_heads.push_back(part);
        }
    }
}

// Calls `visit` with each chunk of a page but the page's own script.
static void for_each_chunk(std::string_view text, const auto& visit) {
    for (std::size_t at = 0; at < text.size();) {
        const void* const found = std::memchr(text.data() + at, '\n', text.size() - at);
        const std::size_t end =
            found == nullptr
                ? text.size()
                : static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) + 1;
        std::string_view line = text.substr(at, end - at);
        at = end;
        if (!line.starts_with(page::line_head) || !line.ends_with("\n")) {
            continue;
        }
        line.remove_prefix(page::line_head.size());
        const std::string_view name = line.substr(0, line.find('"'));
        if (name != "script") {
            visit(chunk_line{.name = name, .rest = line.substr(name.size())});
        }
    }
}

// The number at the front of a name and the rest of it; false where there is none.
static bool read_unit_name(std::string_view name, std::uint32_t& number, std::string_view& rest) {
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    rest = name.substr(static_cast<std::size_t>(end - name.data()));
    return error == std::errc() && rest.starts_with('/');
}

// Adds a page's chunks, its units behind those that are there. False where the page has no
// units, or not one after the other, and is none of these pages.
static bool add_page(std::string_view text, std::string_view address, joined_chunks& to) {
    const std::size_t first = to.addresses.size();
    bool is_in_order = true;
    for_each_chunk(text, [&](const chunk_line& line) {
        if (line.name.starts_with("text/")) {
            if (to.texts.insert(line.name).second) {
                to.add(line, line.name);
            }
            return;
        }
        std::uint32_t number = 0;
        std::string_view part;
        if (!read_unit_name(line.name, number, part)) {
            return;
        }
        if (part == "/unit") {
            to.addresses.push_back(address);
        }
        is_in_order = is_in_order && first + number + 1 == to.addresses.size();
        to.names.push_back(std::to_string(first + number));
        to.add(line, to.names.back().append(part));
    });
    return is_in_order && to.addresses.size() > first;
}

static std::string start_of(const std::string& title, const std::vector<std::string_view>& pages) {
    std::string text;
    page::object start(text);
    start.member("title", title);
    start.column("pages", pages, [](std::string_view it) { return it; });
    start.end();
    return text;
}

bool join_pages(std::span<const joined_page> pages, const std::string& title, output& to) {
    std::deque<assembly::text_file> files;
    joined_chunks chunks;
    for (const joined_page& it : pages) {
        std::optional<assembly::text_file> file = assembly::text_file::open(it.file);
        if (!file) {
            say(it.file + ": " + std::strerror(errno));
            return false;
        }
        files.push_back(std::move(*file));
        if (!add_page(files.back().text(), it.address, chunks)) {
            say(it.file + ": no page that clist wrote");
            return false;
        }
    }
    const bool fits = chunks.size + page::own_size() < greatest_page;
    const std::string start =
        start_of(title, fits ? std::vector<std::string_view>() : chunks.addresses);
    const page::chunk chunk = {.name = "start", .text = start};
    page::write({&chunk, 1}, fits ? chunks.lines : chunks.unit_heads, to);
    return true;
}

}  // namespace clist
