#pragma once

#include "qvad/ge/point2d.h"

// A circular arc travelled from startAngle to endAngle in the given direction, as a bulged polyline
// segment describes it. Angles are radians from the x axis about center.
struct OdGeArcSegment2d {
    OdGePoint2d center;
    double radius = 0.0;
    double startAngle = 0.0;
    double endAngle = 0.0;
    bool counterClockwise = true;

    // Signed turn from start to end: positive counter-clockwise, magnitude in [0, 2pi).
    double sweep() const;
    double length() const;
    OdGePoint2d pointAtAngle(double angle) const;
    OdGePoint2d startPoint() const { return pointAtAngle(startAngle); }
    OdGePoint2d endPoint() const { return pointAtAngle(endAngle); }
    // The point halfway along the arc.
    OdGePoint2d midPoint() const { return pointAtAngle(startAngle + sweep() / 2.0); }
};
