// The entry of scheme 1.
#include "demangle/decode_eabi.h"

#include <cstdlib>

void decode_identifier_eabi(const char* name, char* buffer, std::size_t buffer_size, int* error_out,
                            int* overflow_out, std::size_t* needed_size_out, int decorated) {
    (void)name;
    (void)decorated;
    if (buffer_size != 0) {
        buffer[0] = '\0';
    }
    *error_out = 1;
    *overflow_out = buffer_size < 1 ? 1 : 0;
    *needed_size_out = 1;
}

bool decode_is_ia64_subobject(const char* name) {
    return name == nullptr;
}
