#include "qvad/text/font_face.h"

#include "qvad/text/host_print.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <map>
#include <mutex>

namespace qvad::text {

struct FontFace::Impl {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    std::mutex mutex; // FreeType faces are not safe to load glyphs from two threads at once
};

FontFace::~FontFace() {
    if (!m_impl) return;
    if (m_impl->face) FT_Done_Face(m_impl->face);
    if (m_impl->library) FT_Done_FreeType(m_impl->library);
}

std::unique_ptr<FontFace> FontFace::open(const ResolvedFont& font) {
    if (font.file.empty()) return nullptr;
    std::unique_ptr<FontFace> result(new FontFace);
    result->m_impl = std::make_unique<Impl>();
    result->m_source = font;
    Impl& impl = *result->m_impl;
    if (FT_Init_FreeType(&impl.library) != 0) return nullptr;
    if (FT_New_Face(impl.library, font.file.c_str(), font.faceIndex, &impl.face) != 0) return nullptr;
    FT_Select_Charmap(impl.face, FT_ENCODING_UNICODE);

    double cap = 0.0;
    if (auto* os2 = static_cast<TT_OS2*>(FT_Get_Sfnt_Table(impl.face, FT_SFNT_OS2)); os2 && os2->version >= 2)
        cap = os2->sCapHeight;
    if (cap <= 0.0) {
        FT_UInt index = FT_Get_Char_Index(impl.face, 'H');
        if (index != 0 && FT_Load_Glyph(impl.face, index, FT_LOAD_NO_SCALE) == 0)
            cap = static_cast<double>(impl.face->glyph->metrics.horiBearingY);
    }
    // Fonts without capitals (symbol fonts) still need a size: take the usual share of the em.
    if (cap <= 0.0) cap = 0.7 * impl.face->units_per_EM;
    result->m_capHeight = cap;
    return result;
}

GlyphMetrics FontFace::glyph(char32_t codepoint) const {
    std::lock_guard lock(m_impl->mutex);
    GlyphMetrics metrics;
    FT_Face face = m_impl->face;
    FT_UInt index = FT_Get_Char_Index(face, codepoint);
    if (index == 0 || FT_Load_Glyph(face, index, FT_LOAD_NO_SCALE) != 0) return metrics;
    const FT_Glyph_Metrics& m = face->glyph->metrics;
    metrics.present = true;
    metrics.advance = static_cast<double>(m.horiAdvance) / m_capHeight;
    if (m.width > 0 || m.height > 0) {
        metrics.inkTop = static_cast<double>(m.horiBearingY) / m_capHeight;
        metrics.inkBottom = static_cast<double>(m.horiBearingY - m.height) / m_capHeight;
    }
    return metrics;
}

const FontFace* fallbackFace() {
    static const std::unique_ptr<FontFace> face = FontFace::open(resolveFont({}));
    return face.get();
}

const FontFace* faceForDrawingFont(std::string_view drawingFontName) {
    static std::mutex mutex;
    static std::map<std::string, std::unique_ptr<FontFace>, std::less<>> faces;
    std::string message;
    const FontFace* raw = nullptr;
    {
        std::lock_guard lock(mutex);
        if (auto it = faces.find(drawingFontName); it != faces.end()) return it->second.get();
        ResolvedFont resolved = resolveFont(drawingFontName);
        std::unique_ptr<FontFace> face = FontFace::open(resolved);
        if (resolved.fellBack) {
            std::string name = drawingFontName.empty() ? std::string("(none)") : std::string(drawingFontName);
            message = "Font " + name + " not found, using " +
                      (face ? resolved.family : std::string("no font: none is installed")) + ".";
        }
        raw = face.get();
        faces.emplace(std::string(drawingFontName), std::move(face));
    }
    // Printed outside the lock: the hook belongs to the application and may measure text itself.
    if (!message.empty()) hostPrint(message);
    return raw;
}

} // namespace qvad::text
