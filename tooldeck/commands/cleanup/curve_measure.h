#pragma once
// Lengths and enclosed areas of the curves a quantity take-off picks, worked out from their entity data
// lists. Everything is measured in the curve's own plane, in drawing units.

#include "qvad/api/qvad_api.h"

#include <optional>
#include <vector>

namespace qvtd::quantity {

struct PlanePoint {
    double x = 0.0;
    double y = 0.0;
};

// A polyline vertex; bulge is the tangent of a quarter of the arc's angle to the next vertex.
struct BulgeVertex {
    PlanePoint at;
    double bulge = 0.0;
};

struct CurveMeasure {
    double length = 0.0;
    double area = 0.0; // enclosed area; 0 for an open curve
    bool closed = false;
};

// Shoelace area, always positive; the polygon is closed implicitly.
double polygonArea(const std::vector<PlanePoint>& corners);
// Sum of the sides; closed adds the side back to the first corner.
double polygonPerimeter(const std::vector<PlanePoint>& corners, bool closed);

// Length of the straight or arc segment from a to b.
double bulgeSegmentLength(PlanePoint a, PlanePoint b, double bulge);
double polylineLength(const std::vector<BulgeVertex>& vertices, bool closed);
// Area of the closed polyline: the chord polygon plus the signed arc segments.
double polylineArea(const std::vector<BulgeVertex>& vertices);

// Perimeter of an ellipse of the two semi-axes (series exact to rounding for every ratio).
double ellipsePerimeter(double majorRadius, double minorRadius);
// Length of the elliptical arc between the two parameters (radians, end after start).
double ellipseArcLength(double majorRadius, double minorRadius, double startParameter, double endParameter);

// LINE, ARC, CIRCLE, LWPOLYLINE, ELLIPSE, SPLINE (through its fit points, else its control points) and
// HATCH (area only: boundary loops of polylines, lines and circular arcs); nothing for any other type
// or a list it cannot read.
std::optional<CurveMeasure> measureEntityData(const qv_resbuf* list);

} // namespace qvtd::quantity
