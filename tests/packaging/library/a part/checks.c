#include "generated.h"

#if !defined checks_EXPORTS || !defined SAID_LATER || GENERATED != 7 || !defined __PIC__
#error "not compiled as the target is"
#endif

int checks(int value) {
    return value + GENERATED;
}
