#pragma once

#include "qvad/ge/arcsegment2d.h"
#include "qvad/ge/point2d.h"
#include "qvad/ge/tol.h"

#include <optional>

// A polyline segment's bulge is the tangent of a quarter of its arc's turn: 0 is a straight segment,
// 1 a half circle, positive values turn counter-clockwise and negative ones clockwise.

// The arc of the segment from start to end; none for a straight segment (|bulge| within
// tol.equalVector()) or for coincident end points (within tol.equalPoint()), which bound no arc.
std::optional<OdGeArcSegment2d> arcFromBulge(const OdGePoint2d& start, const OdGePoint2d& end, double bulge,
                                             const OdGeTol& tol = kGeDefaultTol);

// The bulge of the segment that runs along an arc from startAngle to endAngle.
double bulgeFromArc(double startAngle, double endAngle, bool counterClockwise);
double bulgeFromArc(const OdGeArcSegment2d& arc);
