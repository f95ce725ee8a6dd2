// Fuzzes listings: one input is a byte of options, an assembly text and, behind a line of
// equals signs, the source file that every name in it leads to. Each form is written. With
// every line kept, nothing may be added but comments; the lines for machines must be JSON;
// and the functions must have as much code as is then shown.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "clist/annotate.h"
#include "clist/forms/forms.h"
#include "clist/listing.h"
#include "clist/operands.h"
#include "clist/selection.h"

using namespace clist;

static void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

static std::string written(form_writer write, const form_input& from) {
    static const int descriptor = memfd_create("listing", 0);
    require(lseek(descriptor, 0, SEEK_SET) == 0);
    {
        output to(descriptor);
        require(write(from, to));
        require(to.flush());
    }
    std::string text(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_CUR)), '\0');
    require(pread(descriptor, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    return text;
}

// Takes the first line off a text, its end included.
static std::string_view take_line(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    const std::string_view whole = text.substr(0, std::min(line.size() + 1, text.size()));
    text.remove_prefix(whole.size());
    return whole;
}

static void check_whole(std::string_view listing, std::string_view assembly,
                        std::string_view comment) {
    while (!listing.empty()) {
        const std::string_view line = take_line(listing);
        const std::string_view left = assembly;
        if (take_line(assembly) == line) {
            continue;
        }
        assembly = left;
        require(line.starts_with(comment) && line.substr(comment.size()).starts_with(' '));
        const std::string_view text = line.substr(comment.size() + 1);
        // Neither a line marker nor anything that ends the comment before its line.
        require(!text.empty() && !(text[0] >= '0' && text[0] <= '9'));
        require(text.find('\r') >= text.size() - std::min<std::size_t>(text.size(), 2));
        require(text.ends_with('\n'));
    }
    require(assembly.empty());
}

static std::size_t check_json(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count) {
        require(nlohmann::json::accept(take_line(text)));
    }
    return count;
}

static void check_forms(const form_input& plain, listing_options& options) {
    written(write_code, plain);
    const std::string whole = written(write_whole, plain);
    if (plain.shown.is_all && !options.color) {
        check_whole(whole, plain.models[0].code().text, plain.models[0].comment());
    }
    written(write_list, plain);
    written(write_stats, plain);
    options.json = true;
    const std::size_t count = check_json(written(write_objects, plain));
    check_json(written(write_stats, plain));
    std::string functions = written(write_list, plain);
    check_json(functions);
    std::size_t told = 0;
    for (std::string_view rest = functions; !rest.empty();) {
        told += nlohmann::json::parse(take_line(rest))["instructions"].get<std::size_t>();
    }
    require(told == count);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view given(reinterpret_cast<const char*>(data) + 1, size - 1);
    constexpr std::string_view mark = "\n====\n";
    const std::size_t at = given.find(mark);
    const bool has_source = at != std::string_view::npos;
    const std::string source(has_source ? given.substr(at + mark.size()) : std::string_view());
    const assembly::source_access access{
        .read = [&](const std::string& name) -> std::optional<assembly::text_file> {
            errno = ENOENT;
            return has_source && !name.starts_with("/no")
                       ? std::optional(assembly::text_file::of(source))
                       : std::nullopt;
        },
        .same = [](const std::string& one, const std::string& other) { return one == other; },
    };

    listing_options options;
    options.warnings = false;
    options.color = (data[0] & 1) != 0;
    options.own_sources = (data[0] & 2) != 0;
    options.mangled = (data[0] & 4) != 0;
    if ((data[0] & 8) != 0) {
        options.functions = {"*f*", "1"};
        options.context = 2;
    }
    if ((data[0] & 16) != 0) {
        options.lines = {{"a.c", 1, 5}};
    }

    listing_input input;
    input.name = "a.s";
    input.text = has_source ? given.substr(0, at + 1) : given;
    source_list sources(options, access);
    name_table names(options.mangled);
    std::deque<annotation> models;
    if (!models.emplace_back(input, options, sources, names).read()) {
        return 0;
    }
    sources.choose_shown_names();
    std::string error;
    const selection shown = select(models, options, error);
    if (error.empty()) {
        check_forms({.models = models, .shown = shown, .options = options}, options);
        if ((data[0] & 32) != 0) {
            written(write_page, {.models = models, .shown = shown, .options = options});
        }
    }
    return 0;
}
