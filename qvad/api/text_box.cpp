// qvedTextBox: the extents of a single-line text given as an entity data list.

#include "qvad/text/text_box.h"

#include "qvad/api/qvad_api.h"

#include <array>
#include <cmath>
#include <exception>
#include <numbers>
#include <optional>
#include <string>

namespace {

constexpr double kDefaultHeight = 2.5;

struct TextDataList {
    std::string entityType = "TEXT";
    std::optional<std::string> text;
    std::string style = "STANDARD";
    std::optional<double> height, widthFactor, oblique;
    int horizontal = 0, vertical73 = 0, vertical74 = 0;
    std::optional<std::array<double, 3>> insertion, alignment;
};

std::array<double, 3> point(const qv_resbuf* rb) {
    return {rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]};
}

std::string stringValue(const qv_resbuf* rb) {
    return rb->resval.rstring ? rb->resval.rstring : "";
}

TextDataList readDataList(const qv_resbuf* list) {
    TextDataList d;
    for (const qv_resbuf* rb = list; rb; rb = rb->rbnext) {
        switch (rb->restype) {
        case 0:
            d.entityType = stringValue(rb);
            break;
        case 1:
            d.text = stringValue(rb);
            break;
        case 7:
            d.style = stringValue(rb);
            break;
        case 40:
            d.height = rb->resval.rreal;
            break;
        case 41:
            d.widthFactor = rb->resval.rreal;
            break;
        case 51:
            d.oblique = rb->resval.rreal;
            break;
        case 72:
            d.horizontal = rb->resval.rint;
            break;
        case 73:
            d.vertical73 = rb->resval.rint;
            break;
        case 74:
            d.vertical74 = rb->resval.rint;
            break;
        case 10:
            d.insertion = point(rb);
            break;
        case 11:
            d.alignment = point(rb);
            break;
        default:
            break; // rotation (50) and placement do not change the unrotated box
        }
    }
    return d;
}

bool isAttribute(const std::string& type) {
    return type == "ATTDEF" || type == "ATTRIB" || type == "attdef" || type == "attrib";
}

qvad::text::SingleLineText describe(const TextDataList& d) {
    qvad::text::StyleFonts style = qvad::text::styleFonts(qvad::text::styleDrawing(), d.style);
    qvad::text::SingleLineText t;
    t.textString = *d.text;
    t.height = d.height.value_or(style.fixedHeight > 0.0 ? style.fixedHeight : kDefaultHeight);
    t.widthFactor = d.widthFactor.value_or(style.widthFactor);
    // The data list gives the oblique angle in radians, as it gives every angle.
    t.oblique = d.oblique.value_or(style.oblique);
    t.horizontalMode = d.horizontal;
    // Attributes keep their field length in 73 and the vertical alignment in 74.
    t.verticalMode = isAttribute(d.entityType) ? d.vertical74 : d.vertical73;
    if (d.insertion && d.alignment)
        t.alignedLength =
            std::hypot((*d.alignment)[0] - (*d.insertion)[0], (*d.alignment)[1] - (*d.insertion)[1]);
    t.fontFile = style.fontFile;
    t.bigFontFile = style.bigFontFile;
    return t;
}

} // namespace

extern "C" QV_API int qvedTextBox(const struct qv_resbuf* text, qv_point lowerLeft, qv_point upperRight) {
    if (!text || !lowerLeft || !upperRight) return QV_ERROR;
    try {
        TextDataList d = readDataList(text);
        if (!d.text) return QV_ERROR;
        qvad::text::SingleLineText t = describe(d);
        if (!std::isfinite(t.height) || t.height < 0.0 || !std::isfinite(t.widthFactor) ||
            t.widthFactor <= 0.0)
            return QV_ERROR;
        qvad::text::TextBox box = qvad::text::textBox(t);
        lowerLeft[0] = box.lowerLeft.x;
        lowerLeft[1] = box.lowerLeft.y;
        lowerLeft[2] = 0.0;
        upperRight[0] = box.upperRight.x;
        upperRight[1] = box.upperRight.y;
        upperRight[2] = 0.0;
        return QV_NORM;
    } catch (const std::exception&) {
        return QV_ERROR;
    }
}
