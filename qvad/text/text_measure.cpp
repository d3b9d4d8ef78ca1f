#include "qvad/text/text_measure.h"

#include "qvad/text/font_face.h"

#include <algorithm>

namespace qvad::text {
namespace {

GlyphMetrics glyphFromAny(char32_t cp, const FontFace* mainFont, const FontFace* bigFont) {
    for (const FontFace* face : {mainFont, bigFont}) {
        if (!face) continue;
        GlyphMetrics g = face->glyph(cp);
        if (g.present) return g;
    }
    if (const FontFace* fallback = fallbackFace()) {
        GlyphMetrics g = fallback->glyph(cp);
        if (g.present) return g;
    }
    return {1.0, 0.0, 1.0, true};
}

} // namespace

RunExtent measureRun(std::u32string_view text, const FontFace* mainFont, const FontFace* bigFont) {
    RunExtent extent;
    for (char32_t cp : text) {
        GlyphMetrics g = glyphFromAny(cp, mainFont, bigFont);
        extent.width += g.advance;
        if (g.inkTop == g.inkBottom) continue;
        extent.inkBottom = extent.hasInk ? std::min(extent.inkBottom, g.inkBottom) : g.inkBottom;
        extent.inkTop = extent.hasInk ? std::max(extent.inkTop, g.inkTop) : g.inkTop;
        extent.hasInk = true;
    }
    return extent;
}

} // namespace qvad::text
