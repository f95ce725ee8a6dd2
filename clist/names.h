// Symbols as people read them: demangled, alone and within operands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace clist {

class name_table {
  public:
    // With `mangled` all names stay as they are.
    explicit name_table(bool mangled) : is_mangled_(mangled) {}

    // The symbol demangled, or as it is where it is not mangled. Lives as long as the table;
    // so must the symbol.
    std::string_view readable(std::string_view symbol);

    // The name alone, without parameters and the like.
    static std::string plain(std::string_view symbol);

    // Adds the text of an assembly line to `line` with the symbols in it demangled.
    void append_operands(std::string_view text, std::string& line) {
        const std::size_t first = is_mangled_ ? std::string_view::npos : find_mangled(text, 0);
        if (first == std::string_view::npos) {
            line += text;
        } else {
            append_readable(text, first, line);
        }
    }

  private:
    static std::size_t find_mangled(std::string_view text, std::size_t from);
    void append_readable(std::string_view text, std::size_t first, std::string& line);

    bool is_mangled_;
    std::unordered_map<std::string_view, std::string> known_;  // those that are mangled
};

}  // namespace clist
