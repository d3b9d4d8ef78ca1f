#include "tooldeck/commands/text/txt2mtxt_join.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

namespace qvtd::txt2mtxt {

double snappedCosine(double angle) {
    const double cosine = std::cos(angle);
    return std::fabs(cosine) <= 1e-6 ? 0.0 : cosine;
}

std::vector<std::size_t> positionOrder(std::span<const double> ys) {
    // A multimap puts an equal key after the ones already there, which keeps the selection order.
    std::multimap<double, std::size_t, std::greater<double>> byY;
    for (std::size_t i = 0; i < ys.size(); ++i) byY.emplace(ys[i], i);
    std::vector<std::size_t> order;
    order.reserve(ys.size());
    for (const auto& entry : byY) order.push_back(entry.second);
    return order;
}

XExtent textExtent(const SourceText& text) {
    const double x = text.alignment[0];
    XExtent extent{x, x};
    const double along = text.boxLength * snappedCosine(text.rotation);
    if (along > 0.0)
        extent.right += along;
    else if (along < 0.0)
        extent.left += along;
    else if (std::sin(text.rotation) > 0.0)
        extent.left -= text.height;
    else
        extent.right += text.height;
    return extent;
}

JoinedText joinTexts(std::span<const SourceText> ordered, bool wordWrap,
                     const std::function<std::string(double)>& formatHeight) {
    JoinedText joined;
    if (ordered.empty()) return joined;
    const SourceText& lead = ordered.front();
    joined.contents = lead.text;
    // One text height above the alignment point, whatever the rotation: the top left of a level line.
    joined.insertion = lead.alignment;
    joined.insertion[1] += lead.height;

    double height = lead.height;
    int colour = lead.colour;
    XExtent box = textExtent(lead);
    for (const SourceText& text : ordered.subspan(1)) {
        if (wordWrap) {
            const XExtent own = textExtent(text);
            box.left = std::min(box.left, own.left);
            box.right = std::max(box.right, own.right);
        } else {
            joined.contents += "\\P";
        }
        if (text.height != height) {
            height = text.height;
            joined.contents += "\\H" + formatHeight(height) + ";";
        }
        if (text.colour != colour) {
            colour = text.colour;
            joined.contents += "\\C" + std::to_string(colour) + ";";
        }
        // Every line after the first starts with a space, also at the start of a paragraph.
        joined.contents += " " + text.text;
    }
    joined.width = wordWrap ? std::fabs(box.right - box.left) : 0.0;
    return joined;
}

} // namespace qvtd::txt2mtxt
