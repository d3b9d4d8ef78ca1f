// The string table of a test resource library.

#include "qvad/win32/resource_library.h"

#include <array>
#include <string>

namespace {

const std::string& longText(std::size_t length) {
    static const std::string text999(999, 'x');
    static const std::string text1200(1200, 'y');
    return length == 999 ? text999 : text1200;
}

} // namespace

extern "C" __attribute__((visibility("default"))) const QvResourceString* qvResourceStrings(unsigned* count) {
    static const std::array<QvResourceString, 5> strings{{
        {101, "Hello world"},
        {102, "Can't load QvTooldeckRes.dll"},
        {103, "\xE5\xAE\xBD\xE5\xBA\xA6"}, // two Chinese characters, three bytes each
        {999, longText(999).c_str()},
        {1200, longText(1200).c_str()},
    }};
    *count = static_cast<unsigned>(strings.size());
    return strings.data();
}
