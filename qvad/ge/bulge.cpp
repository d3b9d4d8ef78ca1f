#include "qvad/ge/bulge.h"

#include "qvad/ge/angle.h"

#include <cmath>

std::optional<OdGeArcSegment2d> arcFromBulge(const OdGePoint2d& start, const OdGePoint2d& end, double bulge,
                                             const OdGeTol& tol) {
    const OdGeVector2d chord = end - start;
    const double chordLength = chord.length();
    if (!std::isfinite(bulge) || std::abs(bulge) <= tol.equalVector() || chordLength <= tol.equalPoint())
        return std::nullopt;

    // The centre lies on the chord's perpendicular bisector, at a signed distance (to the right of the
    // chord's direction) of c(b^2 - 1) / 4b: on the left for a counter-clockwise arc smaller than a half
    // circle, on the chord for a half circle, on the right beyond it.
    const OdGeVector2d rightOfChord = OdGeVector2d(chord.y, -chord.x) / chordLength;
    const double centreOffset = chordLength * (bulge * bulge - 1.0) / (4.0 * bulge);
    const OdGePoint2d chordMiddle = start + chord / 2.0;

    OdGeArcSegment2d arc;
    arc.center = chordMiddle + rightOfChord * centreOffset;
    arc.radius = chordLength * (1.0 + bulge * bulge) / (4.0 * std::abs(bulge));
    arc.startAngle = angleOf(start - arc.center);
    arc.endAngle = angleOf(end - arc.center);
    arc.counterClockwise = bulge > 0.0;
    return arc;
}

double bulgeFromArc(double startAngle, double endAngle, bool counterClockwise) {
    OdGeArcSegment2d arc;
    arc.startAngle = startAngle;
    arc.endAngle = endAngle;
    arc.counterClockwise = counterClockwise;
    return bulgeFromArc(arc);
}

double bulgeFromArc(const OdGeArcSegment2d& arc) {
    return std::tan(arc.sweep() / 4.0);
}
