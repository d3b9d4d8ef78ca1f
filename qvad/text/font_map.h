#pragma once

#include <string>
#include <string_view>

namespace qvad::text {

// The installed font file that stands in for a font a drawing names.
struct ResolvedFont {
    std::string file;      // path of the font file
    int faceIndex = 0;     // face inside a collection (.ttc)
    std::string family;    // the installed family, for messages
    bool fellBack = false; // the named font is not installed: the fallback font measures instead
};

// The family every missing font falls back to, and the family stroke fonts are measured with.
inline constexpr std::string_view kFallbackFamily = "DejaVu Sans";

// The installed family the table maps a drawing's font file name to ("arial.ttf" -> "Liberation Sans"),
// or empty when the name is not in the table. Case and folder are ignored; a name without an extension
// is read as a stroke font, as drawings store "txt" for "txt.shx".
std::string mappedFamily(std::string_view drawingFontName);

// Finds the installed font for a drawing's font name: the table first, then an installed file of the same
// name, else the fallback family. Never fails while any font is installed; an empty file means none is.
ResolvedFont resolveFont(std::string_view drawingFontName);

} // namespace qvad::text
