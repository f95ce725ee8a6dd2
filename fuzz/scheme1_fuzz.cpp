// Fuzzes scheme 1: any bytes as a name, strict and extended, decorated
// and plain. Beside crashes it looks for broken promises about buffers and flags.
#include <cstddef>
#include <cstdint>
#include <string>

#include "demangle/decode_eabi.h"
#include "demangle/decode_id.h"
#include "fuzz/promises.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string name(reinterpret_cast<const char*>(data), size);
    decode_mangle_scheme = 1;
    for (const int extended : {0, 1}) {
        decode_extended_names = extended;
        expect_promises(name);
        decode_is_ia64_subobject(name.c_str());
    }
    return 0;
}
