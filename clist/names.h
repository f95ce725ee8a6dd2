// Symbols as people read them: demangled, alone and within operands.
#pragma once

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
    void append_operands(std::string_view text, std::string& line);

  private:
    bool is_mangled_;
    std::unordered_map<std::string_view, std::string> known_;  // those that are mangled
};

}  // namespace clist
