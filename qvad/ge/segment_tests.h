#pragma once
// Plan-view tests of straight segments against points, windows, fences and polygons: what picking and
// window selection need once every entity is reduced to chains of segments in the world XY plane.

#include "qvad/ge/point2d.h"

#include <span>

namespace qvad::ge {

struct Window2d {
    OdGePoint2d min;
    OdGePoint2d max;
    // The rectangle spanned by two corners given in any order.
    static Window2d fromCorners(const OdGePoint2d& a, const OdGePoint2d& b);
    bool contains(const OdGePoint2d& p) const;
};

double distanceToSegment(const OdGePoint2d& p, const OdGePoint2d& a, const OdGePoint2d& b);
// Touching counts as crossing, so an edge that ends on a window's border is caught.
bool segmentsIntersect(const OdGePoint2d& a, const OdGePoint2d& b, const OdGePoint2d& c,
                       const OdGePoint2d& d);
// True when any part of the segment lies inside or on the window.
bool segmentTouchesWindow(const OdGePoint2d& a, const OdGePoint2d& b, const Window2d& window);
// Even-odd rule; the polygon closes itself (last point back to the first).
bool pointInPolygon(const OdGePoint2d& p, std::span<const OdGePoint2d> polygon);
// Whether the segment crosses or touches an edge of the open polyline (closed: also its closing edge).
bool segmentCrossesPolyline(const OdGePoint2d& a, const OdGePoint2d& b, std::span<const OdGePoint2d> polyline,
                            bool closed);
// A polygon whose edges cross one another, or with fewer than three corners, cannot bound a window.
bool isSimplePolygon(std::span<const OdGePoint2d> polygon);

} // namespace qvad::ge
