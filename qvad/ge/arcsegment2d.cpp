#include "qvad/ge/arcsegment2d.h"

#include "qvad/ge/angle.h"

#include <cmath>

double OdGeArcSegment2d::sweep() const {
    return counterClockwise ? arcIncludedAngle(startAngle, endAngle)
                            : -arcIncludedAngle(endAngle, startAngle);
}

double OdGeArcSegment2d::length() const {
    return radius * std::abs(sweep());
}

OdGePoint2d OdGeArcSegment2d::pointAtAngle(double angle) const {
    return center + OdGeVector2d(std::cos(angle), std::sin(angle)) * radius;
}
