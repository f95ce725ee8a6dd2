// The lines of debugging sections: read into the bytes that the assembler would make of
// them, or passed over as fast as may be, since there are more of them than of code.
#pragma once

#include <cstddef>
#include <string_view>

#include "assembly/reader.h"

namespace assembly {

// Both begin at the start of a line and give the start of the first line on which a
// directive may stand that changes the section, names a file or has no place in the text;
// the text's size when there is none.

// Passes over the lines.
std::size_t skip_data(std::string_view text, std::size_t at);

// Adds the lines' bytes to `assembly.debug[index]`, and their labels to the assembly's.
std::size_t read_data(assembly_file& assembly, std::size_t index, std::size_t at);

}  // namespace assembly
