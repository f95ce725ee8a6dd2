#include "before.h"
#include "depended.h"
#include "own.h"
#include "part.h"

int main(void) {
    return own + before + depended + part;
}
