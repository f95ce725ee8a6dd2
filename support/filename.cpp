// The POSIX flavour of the tool chain's file-name functions. The interlister derives
// its listing name with fn_addext; the rest serves the other tools.
#include "support/filename.h"

#include <cstring>

namespace {

// The last point of the name, when it lies in the last component; otherwise null.
char* extension_point(char* name) {
    char* const point = std::strrchr(name, '.');
    return point != nullptr && std::strchr(point, '/') == nullptr ? point : nullptr;
}

}  // namespace

void fn_addext(char* name, const char* ext, int replace) {
    if (ext == nullptr) {
        return;
    }
    char* const point = extension_point(name);
    const char* const bare_ext = *ext == '.' ? ext + 1 : ext;
    if (point == nullptr) {
        if (*ext != '\0') {
            std::strcat(name, ".");
            std::strcat(name, bare_ext);
        }
    } else if (replace != 0) {
        if (*ext == '\0') {
            *point = '\0';
        } else {
            std::strcpy(point + 1, bare_ext);
        }
    }
}
