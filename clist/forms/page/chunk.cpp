// Packs chunks with zlib and puts them where the page built in has a place for data.
#include "clist/forms/page/chunk.h"

#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <numeric>
#include <thread>
#include <vector>

#include "clist/forms/page/template.h"

namespace clist::page {

static constexpr std::string_view line_middle = "\">";
static constexpr std::string_view line_tail = "</script>\n";

static std::string gzip(std::string_view text) {
    // Of all levels the one that gives most for its time.
    constexpr int level = 5;
    constexpr int gzip_format = 15 + 16;
    constexpr int memory = 8;
    z_stream stream = {};
    if (deflateInit2(&stream, level, Z_DEFLATED, gzip_format, memory, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    std::string out(deflateBound(&stream, text.size()), '\0');
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    // zlib counts in unsigned int and does not change what it reads.
    const auto* next = reinterpret_cast<const Bytef*>(text.data());
    std::size_t left = text.size();
    std::size_t room = out.size();
    int status = Z_OK;
    while (status == Z_OK) {
        constexpr std::size_t most = std::numeric_limits<uInt>::max();
        const auto given = static_cast<uInt>(std::min(left, most));
        const auto offered = static_cast<uInt>(std::min(room, most));
        stream.next_in = const_cast<Bytef*>(next);
        stream.avail_in = given;
        stream.avail_out = offered;
        status = deflate(&stream, left == given ? Z_FINISH : Z_NO_FLUSH);
        next += given - stream.avail_in;
        left -= given - stream.avail_in;
        room -= offered - stream.avail_out;
    }
    out.resize(out.size() - room);
    deflateEnd(&stream);
    return out;
}

static void append_base64(std::string_view bytes, std::string& text) {
    constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto byte = [bytes](std::size_t at) -> std::uint32_t {
        return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
    };
    std::size_t to = text.size();
    text.resize(to + (bytes.size() + 2) / 3 * 4, '=');
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::uint32_t group = byte(at) << 16U | byte(at + 1) << 8U | byte(at + 2);
        // Three bytes are four letters; a part of three bytes is one letter more than bytes.
        const std::size_t count = std::min<std::size_t>(bytes.size() - at, 3) + 1;
        for (std::size_t i = 0; i < count; ++i) {
            text[to + i] = letters[group >> (18U - 6U * i) & 63U];
        }
        to += 4;
    }
}

std::string packed(const chunk& it) {
    std::string line(line_head);
    line += it.name;
    line += line_middle;
    append_base64(gzip(it.text), line);
    line += line_tail;
    return line;
}

static std::vector<std::string> pack(std::span<const chunk> chunks) {
    std::vector<std::string> lines(chunks.size());
    // The longest first, so that no thread is left alone with it.
    std::vector<std::size_t> order(chunks.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return chunks[a].text.size() > chunks[b].text.size();
    });
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> is_out_of_memory = false;
    const auto work = [&] {
        for (std::size_t i = next++; i < chunks.size(); i = next++) {
            try {
                lines[order[i]] = packed(chunks[order[i]]);
            } catch (const std::bad_alloc&) {
                is_out_of_memory = true;
            }
        }
    };
    {
        const std::size_t cores = std::max(std::thread::hardware_concurrency(), 1U);
        std::vector<std::jthread> others;
        for (std::size_t i = 1; i < std::min(cores, chunks.size()); ++i) {
            others.emplace_back(work);
        }
        work();
    }
    if (is_out_of_memory) {
        throw std::bad_alloc();
    }
    return lines;
}

void write(std::span<const chunk> chunks, std::span<const std::string_view> lines, output& to) {
    const std::string_view page = page_template();
    constexpr std::string_view place = "@DATA@\n";
    const std::size_t at = page.find(place);
    to.put(page.substr(0, at));
    for (const std::string& line : pack(chunks)) {
        to.put(line);
    }
    for (const std::string_view line : lines) {
        to.put(line);
    }
    to.put(page.substr(at + place.size()));
}

std::size_t own_size() {
    return page_template().size();
}

}  // namespace clist::page
