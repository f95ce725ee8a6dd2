// The checksum by which some compilers tell which text of a source they read.
#pragma once

#include <string>
#include <string_view>

namespace assembly {

// The MD5 digest of a text, as 32 small hexadecimal digits.
std::string md5_of(std::string_view text);

}  // namespace assembly
