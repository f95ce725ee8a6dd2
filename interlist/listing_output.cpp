// The form of the listing.
#include "interlist/listing_output.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "interlist/diagnostics.h"
#include "interlist/files.h"
#include "interlist/output.h"
#include "interlist/state.h"

// A C line's comment begins with 8 columns, "; %3d | ". With -w both it and the
// separator are as wide as asked for; without, they differ, and listings are known so.
constexpr std::size_t prefix_width = 8;
constexpr std::size_t default_separator_width = 71;
constexpr std::size_t default_text_width = 71;

static std::size_t separator_width() {
    return cut_colm == 0 ? default_separator_width
                         : static_cast<std::size_t>(std::max(cut_colm, 1));
}

static std::size_t text_width() {
    if (cut_colm == 0) {
        return default_text_width;
    }
    const auto width = static_cast<std::size_t>(std::max(cut_colm, 0));
    return width > prefix_width ? width - prefix_width : 1;
}

[[noreturn]] static void listing_failed() {
    file_error("Failed to close", temp_file_name);
}

static void put(std::string_view text) {
    if (!add_text(list_output, text)) {
        listing_failed();
    }
}

static void fill(char with, std::size_t count) {
    if (!add_fill(list_output, with, count)) {
        listing_failed();
    }
}

void begin_listing() {
    LIST = open_file(temp_file_name, "w");
    if (LIST == nullptr) {
        file_error("Cannot open temp file", temp_file_name);
    }
    attach_output(list_output, fileno(LIST));
}

void list_assembly(std::string_view text) {
    put(text);
}

void list_separator() {
    put(";");
    fill('-', separator_width() - 1);
    put("\n");
}

// "; %3d | ": the number in at least three columns.
static void put_numbered_prefix(unsigned number) {
    std::array<char, 24> prefix{';', ' '};
    std::array<char, 12> digits{};
    const char* const digits_end =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<int>(number)).ptr;
    const auto count = static_cast<std::size_t>(digits_end - digits.data());
    char* to = prefix.data() + 2;
    to = std::fill_n(to, count < 3 ? 3 - count : 0, ' ');
    to = std::copy_n(digits.data(), count, to);
    to = std::copy_n(" | ", 3, to);
    put({prefix.data(), static_cast<std::size_t>(to - prefix.data())});
}

static void put_padded(std::string_view text, std::size_t width) {
    put(text);
    fill(' ', width - text.size());
    put("\n");
}

void list_c_line(unsigned number, std::string_view text) {
    const std::size_t width = text_width();
    put_numbered_prefix(number);
    if (text.size() <= width) {
        put_padded(text, width);
        return;
    }
    const std::string_view first = text.substr(0, width);
    put(first.substr(0, first.find_last_not_of(' ') + 1));
    put("\n");
    for (std::size_t at = width; at < text.size(); at += width) {
        put(";     | ");
        put_padded(text.substr(at, width), width);
    }
}

void end_listing() {
    if (LIST == nullptr) {
        return;
    }
    if (!flush_output(list_output) || std::fclose(LIST) != 0) {
        listing_failed();
    }
    LIST = nullptr;
}
