#include "qvad/text/text_box.h"

#include "qvad/db/OdDbDatabase.h"
#include "qvad/text/font_face.h"
#include "qvad/text/text_codes.h"
#include "qvad/text/text_measure.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qvad::text {

TextBox textBox(const SingleLineText& text) {
    const FontFace* mainFont = faceForDrawingFont(text.fontFile);
    const FontFace* bigFont = text.bigFontFile.empty() ? nullptr : faceForDrawingFont(text.bigFontFile);
    RunExtent run = measureRun(displayedText(text.textString), mainFont, bigFont);

    double height = text.height;
    double width = run.width * height * text.widthFactor;
    bool spans = (text.horizontalMode == 3 || text.horizontalMode == 5) && text.alignedLength > 0.0;
    if (spans && width > 0.0) {
        // Aligned text keeps its proportions, so the height follows the width; fitted text keeps its height.
        if (text.horizontalMode == 3) height *= text.alignedLength / width;
        width = text.alignedLength;
    }
    // Capitals reach the text height; only ink beyond it (descenders, accents) widens the box.
    double bottom = run.hasInk ? std::min(0.0, run.inkBottom * height) : 0.0;
    double top = run.hasInk ? std::max(height, run.inkTop * height) : 0.0;

    double shiftX = 0.0;
    double shiftY = 0.0;
    if (!spans) {
        if (text.horizontalMode == 1 || text.horizontalMode == 4) shiftX = -width / 2.0;
        if (text.horizontalMode == 2) shiftX = -width;
    }
    if (text.horizontalMode == 4) {
        shiftY = -height / 2.0;
    } else if (text.horizontalMode != 3 && text.horizontalMode != 5) {
        if (text.verticalMode == 1) shiftY = -bottom;
        if (text.verticalMode == 2) shiftY = -height / 2.0;
        if (text.verticalMode == 3) shiftY = -height;
    }

    // Oblique letters lean right above the baseline and left below it.
    double lean = std::tan(std::clamp(text.oblique, -1.48, 1.48));
    double left = std::min(bottom * lean, top * lean);
    double right = width + std::max(bottom * lean, top * lean);
    return {{left + shiftX, bottom + shiftY}, {right + shiftX, top + shiftY}};
}

StyleFonts styleFonts(const OdDbDatabase* db, std::string_view styleName) {
    StyleFonts fonts;
    const OdDbSymbolTable* styles = db ? db->table("STYLE") : nullptr;
    const OdDbSymbolTableRecord* style = styles ? styles->find(styleName) : nullptr;
    if (!style) return fonts;
    fonts.fontFile = std::string(style->getString(3, kDefaultFontFile));
    if (fonts.fontFile.empty()) fonts.fontFile = kDefaultFontFile;
    fonts.bigFontFile = std::string(style->getString(4));
    fonts.widthFactor = style->getDouble(41, 1.0);
    fonts.oblique = style->getDouble(50, 0.0) * std::numbers::pi / 180.0;
    fonts.fixedHeight = style->getDouble(40, 0.0);
    return fonts;
}

} // namespace qvad::text

namespace qvad::text {
namespace {

DrawingProvider& provider() {
    static DrawingProvider p;
    return p;
}

} // namespace

void setStyleDrawingProvider(DrawingProvider p) {
    provider() = std::move(p);
}

const OdDbDatabase* styleDrawing() {
    return provider() ? provider()() : nullptr;
}

} // namespace qvad::text
