#include "qvad/text/mtext_extents.h"

#include "qvad/db/entities/OdDbMText.h"
#include "qvad/text/font_face.h"
#include "qvad/text/mtext_format.h"
#include "qvad/text/text_box.h"
#include "qvad/text/text_measure.h"

#include <algorithm>

namespace qvad::text {
namespace {

constexpr double kLineSpacing = 5.0 / 3.0;

struct Glyph {
    double advance;
    bool breaksHere;
};

// Greedy word wrap: a line breaks at its last space before the column is full; a word longer than the
// column stays whole on its own line.
int wrappedLineCount(const std::vector<Glyph>& glyphs, double columnWidth, double& widest) {
    int lines = 1;
    double lineWidth = 0.0;
    double widthAtBreak = -1.0;
    for (const Glyph& g : glyphs) {
        if (g.breaksHere) widthAtBreak = lineWidth;
        lineWidth += g.advance;
        if (columnWidth > 0.0 && lineWidth > columnWidth && widthAtBreak > 0.0 && !g.breaksHere) {
            widest = std::max(widest, widthAtBreak);
            lineWidth -= widthAtBreak;
            widthAtBreak = -1.0;
            ++lines;
        }
    }
    widest = std::max(widest, lineWidth);
    return lines;
}

} // namespace

MTextSize mtextSize(const OdDbMText& mtext) {
    StyleFonts fonts = styleFonts(mtext.database(), mtext.textStyle());
    const FontFace* mainFont = faceForDrawingFont(fonts.fontFile);
    const FontFace* bigFont = fonts.bigFontFile.empty() ? nullptr : faceForDrawingFont(fonts.bigFontFile);
    double height = mtext.textHeight() > 0.0 ? mtext.textHeight() : fonts.fixedHeight;
    double column = mtext.width();

    MTextSize size;
    double widest = 0.0;
    for (const MTextLine& line : parseMText(mtext.contents(), height)) {
        std::vector<Glyph> glyphs;
        for (const MTextRun& run : line.runs) {
            double scale = height * run.heightFactor * run.widthFactor * fonts.widthFactor;
            for (char32_t c : run.text) {
                RunExtent e = measureRun(std::u32string_view(&c, 1), mainFont, bigFont);
                glyphs.push_back({e.width * scale, c == U' '});
            }
        }
        size.lineCount += wrappedLineCount(glyphs, column, widest);
    }
    size.width = column > 0.0 ? column : widest;
    size.height = height * (1.0 + (size.lineCount - 1) * kLineSpacing * mtext.lineSpacingFactor());
    return size;
}

std::array<OdGePoint3d, 4> mtextBoundingPoints(const OdDbMText& mtext) {
    MTextSize size = mtextSize(mtext);
    OdGeVector3d normal = mtext.normal().normal();
    OdGeVector3d xDir = mtext.direction().normal();
    OdGeVector3d yDir = normal.crossProduct(xDir).normal();

    int attachment = std::clamp(mtext.attachment(), 1, 9);
    int column = (attachment - 1) % 3; // 0 left, 1 center, 2 right
    int row = (attachment - 1) / 3;    // 0 top, 1 middle, 2 bottom
    OdGePoint3d topLeft =
        mtext.location() - xDir * (size.width * column / 2.0) + yDir * (size.height * row / 2.0);
    OdGeVector3d across = xDir * size.width;
    OdGeVector3d down = yDir * -size.height;
    return {topLeft, topLeft + across, topLeft + down, topLeft + across + down};
}

} // namespace qvad::text

void OdDbMText::getBoundingPoints(std::vector<OdGePoint3d>& points) const {
    std::array<OdGePoint3d, 4> corners = qvad::text::mtextBoundingPoints(*this);
    points.assign(corners.begin(), corners.end());
}
