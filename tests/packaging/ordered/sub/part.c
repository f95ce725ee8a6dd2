#include "found.h"
#include "part.h"

#if OF_THE_SOURCE != 2 || A_FLAG != 3 || !defined ANOTHER || !defined __CHAR_UNSIGNED__
#error "not compiled as the target is"
#endif

int of_part(void) {
    return part + FOUND;
}
