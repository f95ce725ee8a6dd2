// What a function's symbol tells about its place in the source.
#pragma once

#include <cstddef>
#include <string_view>

namespace assembly {

// Where the mark begins by which a symbol names a part that was split off a function
// (because it is hardly ever run, or to be placed by itself); npos for a whole function.
// "f.part.0" is none of these: it is compiled as a function of its own.
std::size_t part_mark(std::string_view symbol);

// The identifier in the source that a symbol stands for; empty when it is an operator,
// a lambda or anything else that its declaration does not spell out.
std::string_view declared_name(std::string_view symbol);

}  // namespace assembly
