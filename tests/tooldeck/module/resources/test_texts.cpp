// Texts at the edges of the 1000-byte buffer: 999 characters (fits with its terminator) and 1500.
#include "qvad/win32/resource_library.h"

#include <string>

extern "C" __attribute__((visibility("default"))) const QvResourceString* qvResourceStrings(unsigned* count) {
    static const std::string fits(999, 'a');
    static const std::string tooLong = std::string(999, 'b') + std::string(501, 'c');
    static const QvResourceString strings[] = {{1u, fits.c_str()}, {2u, tooLong.c_str()}, {3u, "short"}};
    *count = 3;
    return strings;
}
