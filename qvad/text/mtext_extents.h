#pragma once

#include "qvad/ge/point3d.h"

#include <array>

class OdDbMText;

namespace qvad::text {

// Height and width of an MTEXT's block of lines, before it is placed by its attachment point.
struct MTextSize {
    double width = 0.0;
    double height = 0.0;
    int lineCount = 0;
};

// Lines end at \P; with a reference width, longer lines wrap at spaces and the block is that wide.
// Lines are 5/3 of the text height apart (times the spacing factor), and the block runs from the top
// of the first line's capitals to the baseline of the last.
MTextSize mtextSize(const OdDbMText& mtext);

// The block's corners in world coordinates, in the order top-left, top-right, bottom-left,
// bottom-right (as seen along the text direction), placed by the attachment point.
std::array<OdGePoint3d, 4> mtextBoundingPoints(const OdDbMText& mtext);

} // namespace qvad::text
