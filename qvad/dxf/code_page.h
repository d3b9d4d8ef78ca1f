#pragma once
// Text in memory is UTF-8. Drawings before R2007 store text in the code page that $DWGCODEPAGE names
// and spell characters outside it as \U+XXXX; these functions move text across that boundary.

#include <string>
#include <string_view>

namespace qvad::dxf {

// The iconv name for a $DWGCODEPAGE value ("ANSI_1252" -> "CP1252"); unknown names read as CP1252,
// which accepts every byte, so no text is refused for an odd code page name.
std::string iconvName(std::string_view dwgCodePage);

bool isAscii(std::string_view text);

// Decodes bytes of the code page to UTF-8. A byte the code page does not define becomes the
// character of the same number.
std::string decodeCodePage(std::string_view bytes, std::string_view dwgCodePage);

// Encodes UTF-8 to the code page; characters it cannot hold become \U+XXXX.
std::string encodeCodePage(std::string_view utf8, std::string_view dwgCodePage);

// Replaces \U+XXXX escapes with the UTF-8 characters they name; other backslashes are left alone.
std::string decodeUnicodeEscapes(std::string_view text);
bool hasUnicodeEscape(std::string_view text);

} // namespace qvad::dxf
