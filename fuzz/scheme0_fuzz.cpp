// Fuzzes scheme 0: any bytes as a name, decorated and plain. Beside crashes
// it looks for broken promises about buffers and flags.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/promises.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    expect_promises(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
