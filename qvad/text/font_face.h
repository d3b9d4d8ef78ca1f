#pragma once

#include "qvad/text/font_map.h"

#include <memory>
#include <string>
#include <string_view>

namespace qvad::text {

// Metrics of one glyph in units of the font's cap height, the size a drawing's text height gives.
struct GlyphMetrics {
    double advance = 0.0;
    double inkBottom = 0.0;
    double inkTop = 0.0;
    bool present = false; // false: the font has no glyph for the character
};

// One installed font opened with FreeType, measured in cap heights.
class FontFace {
public:
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    // Null when the file cannot be opened as a font.
    static std::unique_ptr<FontFace> open(const ResolvedFont& font);

    const ResolvedFont& source() const { return m_source; }
    GlyphMetrics glyph(char32_t codepoint) const;
    // Cap height in font units: OS/2 when the font records it, else the ink height of "H".
    double capHeightUnits() const { return m_capHeight; }

private:
    FontFace() = default;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
    ResolvedFont m_source;
    double m_capHeight = 1.0;
};

// The face that measures a drawing's font name, opened once per name and kept for the process. A name
// that falls back is reported once through the host print hook. Null only when no font is installed.
const FontFace* faceForDrawingFont(std::string_view drawingFontName);

// The fallback family's face, without any message. Null only when no font is installed.
const FontFace* fallbackFace();

} // namespace qvad::text
