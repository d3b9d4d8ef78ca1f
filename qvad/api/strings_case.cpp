// Case of single characters, given as Unicode code points. The mapping comes from the C library's
// UTF-8 character tables whatever locale the program runs in, so commands behave alike everywhere.
// Values 0x80-0xFF are left alone: callers walking UTF-8 text byte by byte pass its lead and
// continuation bytes here, and changing those would break the text.

#include "qvad/api/qvad_api.h"

#include <clocale>
#include <cwctype>
#include <initializer_list>
#include <locale.h>

namespace {

constexpr int kFirstMappedAboveAscii = 0x100;
constexpr int kLastCodePoint = 0x10FFFF;

locale_t unicodeCharacters() {
    static const locale_t characters = [] {
        for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"})
            if (locale_t loaded = newlocale(LC_CTYPE_MASK, name, locale_t(0))) return loaded;
        return locale_t(0);
    }();
    return characters;
}

bool isAscii(int c) {
    return c >= 0 && c < 0x80;
}

bool isMappable(int c) {
    return c >= kFirstMappedAboveAscii && c <= kLastCodePoint && unicodeCharacters() != locale_t(0);
}

} // namespace

extern "C" {

QV_API int qvutToUpper(int c) {
    if (isAscii(c)) return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c;
    if (!isMappable(c)) return c;
    return static_cast<int>(towupper_l(static_cast<wint_t>(c), unicodeCharacters()));
}

QV_API int qvutToLower(int c) {
    if (isAscii(c)) return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
    if (!isMappable(c)) return c;
    return static_cast<int>(towlower_l(static_cast<wint_t>(c), unicodeCharacters()));
}

QV_API int qvutIsUpper(int c) {
    if (isAscii(c)) return c >= 'A' && c <= 'Z';
    if (!isMappable(c)) return 0;
    return iswupper_l(static_cast<wint_t>(c), unicodeCharacters()) != 0;
}

} // extern "C"
