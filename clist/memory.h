// Memory for large inputs.
#pragma once

#include <cstddef>

namespace clist {

// Has the memory for the model of this much text come in huge pages, where the system has
// them: it is touched from one end to the other, and small pages come one by one.
void expect_text(std::size_t size);

}  // namespace clist
