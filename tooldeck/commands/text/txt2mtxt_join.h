#pragma once
// The host-free part of txt2mtxt: the order in which texts are joined and the multiline contents,
// insertion point and box width the joined texts give.

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace qvtd::txt2mtxt {

using Point3 = std::array<double, 3>;

// What the join needs of one single-line text; coordinates are in the text's own object system.
struct SourceText {
    std::string text;       // group 1
    Point3 alignment{};     // group 10
    double height = 0.0;    // group 40
    double rotation = 0.0;  // group 50, radians
    int colour = 256;       // group 62
    double boxLength = 0.0; // along the text's baseline, from the host's text box
};

struct JoinedText {
    std::string contents;
    Point3 insertion{}; // object coordinates of the lead text
    double width = 0.0;
};

// cos(angle), but exactly 0 when it is within 1e-6 of it, so that vertical text adds nothing along X.
double snappedCosine(double angle);

// Top to bottom by Y; equal Y keeps the given order. Returns indices into ys.
std::vector<std::size_t> positionOrder(std::span<const double> ys);

// The X range [left, right] a text covers, widened from its alignment X.
struct XExtent {
    double left;
    double right;
};
XExtent textExtent(const SourceText& text);

// Joins texts already in order; the first is the lead. formatHeight writes a height the way the
// host writes numbers. Word wrap runs the lines on in one box; otherwise each line is a paragraph and
// the width is 0.
JoinedText joinTexts(std::span<const SourceText> ordered, bool wordWrap,
                     const std::function<std::string(double)>& formatHeight);

} // namespace qvtd::txt2mtxt
