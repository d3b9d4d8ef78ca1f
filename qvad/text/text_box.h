#pragma once

#include "qvad/ge/point2d.h"

#include <functional>
#include <string>
#include <string_view>

class OdDbDatabase;

namespace qvad::text {

// What the box of one line of text depends on. Angles in radians.
struct SingleLineText {
    std::string textString; // as stored, with %% control codes
    double height = 0.0;
    double widthFactor = 1.0;
    double oblique = 0.0;
    int horizontalMode = 0; // 0 left, 1 center, 2 right, 3 aligned, 4 middle, 5 fit
    int verticalMode = 0;   // 0 baseline, 1 bottom, 2 middle, 3 top
    // Aligned and fitted text runs from the insertion point to the alignment point; this is their
    // distance, 0 when unknown.
    double alignedLength = 0.0;
    std::string fontFile;    // the style's font (group 3)
    std::string bigFontFile; // the style's big font (group 4)
};

// Lower-left and upper-right of the unrotated box, relative to the point the text is placed by (the
// insertion point for left, aligned and fitted text, else the alignment point), in the text's own
// coordinates. The text height is the height of capital letters.
struct TextBox {
    OdGePoint2d lowerLeft;
    OdGePoint2d upperRight;
};

TextBox textBox(const SingleLineText& text);

// The font a style without one measures with, as drawings made without styles use it.
inline constexpr std::string_view kDefaultFontFile = "txt.shx";

// The font files of a text style of the drawing; the default font when the style is missing.
struct StyleFonts {
    std::string fontFile{kDefaultFontFile};
    std::string bigFontFile;
    double widthFactor = 1.0;
    double oblique = 0.0;     // radians
    double fixedHeight = 0.0; // 0: each text has its own height
};
StyleFonts styleFonts(const OdDbDatabase* db, std::string_view styleName);

} // namespace qvad::text

namespace qvad::text {

// The drawing whose STYLE table names the fonts of texts measured through the host interface; the
// session points this at its current drawing. Without it every style measures with its default font.
using DrawingProvider = std::function<const OdDbDatabase*()>;
void setStyleDrawingProvider(DrawingProvider provider);
const OdDbDatabase* styleDrawing();

} // namespace qvad::text
