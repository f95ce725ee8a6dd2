// Takes a compile database in as its parser meets the parts of it, so that what is wrong
// with an entry is reported with the entry's line.
#include "clist/database.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

#include "clist/words.h"

namespace clist {
namespace {

using json = nlohmann::json;

// Reads the text and counts its lines. The parser copies it, so the count lies elsewhere.
class counting_iterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    counting_iterator(const char* at, std::size_t& line) : at_(at), line_(&line) {}

    reference operator*() const { return *at_; }
    counting_iterator& operator++() {
        *line_ += *at_ == '\n' ? 1 : 0;
        ++at_;
        return *this;
    }
    counting_iterator operator++(int) {
        counting_iterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const counting_iterator& one, const counting_iterator& other) {
        return one.at_ == other.at_;
    }

  private:
    const char* at_;
    std::size_t* line_;
};

// What the parser calls. The database is an array (depth 1) of objects (depth 2), in which
// only "arguments" is an array of interest (depth 3).
struct reader {
    database& result;
    const std::size_t& line;
    std::size_t depth = 0;
    std::string field;
    database_entry entry;
    std::optional<std::string> command;
    bool has_arguments = false;

    reader(database& into, const std::size_t& counter) : result(into), line(counter) {}

    bool fail(std::size_t where, const std::string& what) {
        result.error = std::to_string(where) + ": " + what;
        return false;
    }

    bool is_in_arguments() const { return depth == 3 && field == "arguments"; }
    bool is_wanted() const {
        return depth == 2 && (field == "directory" || field == "file" || field == "command" ||
                              field == "arguments");
    }

    // Any value that is no text: an array or an object that begins, or something else.
    bool other_value(bool is_array, bool is_object) {
        if (depth == 0 && !is_array) {
            return fail(line, "not a list of compile commands");
        }
        if (depth == 1 && !is_object) {
            return fail(line, "an entry that is no object");
        }
        if (is_in_arguments() || (is_wanted() && !(is_array && field == "arguments"))) {
            return fail(line, "\"" + field + "\" holds something else than text");
        }
        return true;
    }

    bool null() { return other_value(false, false); }
    bool boolean(bool) { return other_value(false, false); }
    bool number_integer(json::number_integer_t) { return other_value(false, false); }
    bool number_unsigned(json::number_unsigned_t) { return other_value(false, false); }
    bool number_float(json::number_float_t, const std::string&) {
        return other_value(false, false);
    }
    bool binary(json::binary_t&) { return other_value(false, false); }

    bool string(std::string& text) {
        if (depth < 2) {
            return other_value(false, false);
        }
        if ((is_wanted() || is_in_arguments()) && text.find('\0') != std::string::npos) {
            return fail(line, "\"" + field + "\" holds a zero byte");
        }
        if (is_in_arguments()) {
            entry.words.push_back(text);
        } else if (is_wanted()) {
            if (field == "arguments") {
                return fail(line, "\"arguments\" is no list");
            }
            (field == "directory" ? entry.directory
             : field == "file"    ? entry.file
                                  : command.emplace()) = text;
        }
        return true;
    }

    bool start_object(std::size_t) {
        if (!other_value(false, true)) {
            return false;
        }
        if (++depth == 2) {
            entry = {};
            entry.line = line;
            command.reset();
            has_arguments = false;
        }
        return true;
    }

    bool key(std::string& name) {
        if (depth == 2) {
            field = name;
        }
        return true;
    }

    bool start_array(std::size_t) {
        if (!other_value(true, false)) {
            return false;
        }
        if (is_wanted()) {
            has_arguments = true;
            entry.words.clear();
        }
        ++depth;
        return true;
    }

    bool end_array() {
        --depth;
        return true;
    }

    bool end_object() { return --depth != 1 || end_entry(); }

    bool end_entry() {
        if (!has_arguments && command) {
            std::optional<std::vector<std::string>> words = split_command(*command);
            if (!words) {
                return fail(entry.line, "a \"command\" with a quote that is not closed");
            }
            entry.words = std::move(*words);
        }
        const char* const lacking = entry.directory.empty() ? "\"directory\""
                                    : entry.file.empty()    ? "\"file\""
                                    : entry.words.empty()   ? "\"arguments\" and \"command\""
                                                            : nullptr;
        if (lacking != nullptr) {
            return fail(entry.line, std::string("an entry without ") + lacking);
        }
        result.entries.push_back(std::move(entry));
        return true;
    }

    // The library's message has the place in it: "[...] parse error at line 2, column 3: ...".
    bool parse_error(std::size_t, const std::string&, const json::exception& failure) {
        const std::string_view message = failure.what();
        const std::string_view mark = "line ";
        const std::string_view then = ", column ";
        const std::size_t number = message.find(mark);
        const std::size_t column = message.find(then, number);
        if (number == std::string_view::npos || column == std::string_view::npos) {
            return fail(line, std::string(message));
        }
        result.error = message.substr(number + mark.size(), column - number - mark.size());
        result.error.append(":").append(message.substr(column + then.size()));
        return false;
    }
};

}  // namespace

database read_database(std::string_view text) {
    database result;
    std::size_t line = 1;
    reader handler{result, line};
    json::sax_parse(counting_iterator(text.data(), line),
                    counting_iterator(text.data() + text.size(), line), &handler);
    if (!result.error.empty()) {
        result.entries.clear();
    }
    return result;
}

}  // namespace clist
