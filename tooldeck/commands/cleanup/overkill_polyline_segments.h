#pragma once
// A polyline seen as the straight and arc segments it is drawn with, and the tests of whether a segment,
// a line or an arc lies on another segment within the comparison tolerance.

#include "tooldeck/commands/cleanup/overkill_records.h"

#include <cstddef>
#include <vector>

namespace qvtd::overkill {

struct PolylineSegment {
    bool isArc = false;
    OdGePoint3d start; // world coordinates, in the polyline's direction
    OdGePoint3d end;
    // Arc segments only: the circle and the span it covers, counter-clockwise about the normal in the
    // plane of the normal, whichever way the polyline runs.
    OdGePoint3d center;
    double radius = 0.0;
    OdGeVector3d normal{0, 0, 1}; // unit length
    double spanStart = 0.0;       // in [0, 2pi)
    double span = 0.0;            // in (0, 2pi)
    OdGePoint3d middle;           // halfway along the segment
};

// The segments of a polyline and the vertices left once zero-length segments are dropped.
struct SplitPolyline {
    std::vector<PolylineVertex> vertices;
    std::vector<PolylineSegment> segments;
    bool verticesRemoved = false;
};

// Splits in vertex order; a vertex equal (within e) to the one before it is dropped and hands its
// outgoing bulge and widths to that one. 3D polylines have straight segments only.
SplitPolyline splitPolyline(const PolylineRecord& polyline, double e);

// The segments of a polyline whose vertices have no zero-length segment left.
std::vector<PolylineSegment> polylineSegments(const PolylineRecord& polyline, double e);
// The same through other vertices, with the polyline's kind, normal and closed flag.
std::vector<PolylineSegment> segmentsThrough(const PolylineRecord& polyline,
                                             const std::vector<PolylineVertex>& vertices, double e);

// Whether both points lie on the straight reference segment: within e of its carrier and, measured along
// it, within its extent widened by e.
bool pointsOnStraightSegment(const PolylineSegment& reference, const OdGePoint3d& a, const OdGePoint3d& b,
                             double e);

// An arc (given by its circle, its end points and its middle point) lies on the reference arc segment:
// equal centre and radius, and its span inside the segment's span. Normals are the caller's test.
bool arcOnArcSegment(const PolylineSegment& reference, const OdGePoint3d& center, double radius,
                     const OdGePoint3d& start, const OdGePoint3d& middle, const OdGePoint3d& end, double e);

// A segment lies on the reference: a straight one on a straight one, an arc on an arc.
bool segmentCovers(const PolylineSegment& reference, const PolylineSegment& other, double e);

// The end points and the middle of a drawing arc, in world coordinates; false when its span is empty.
struct ArcPoints {
    OdGePoint3d start;
    OdGePoint3d middle;
    OdGePoint3d end;
};
bool arcPoints(const ArcRecord& arc, ArcPoints& points);

} // namespace qvtd::overkill
