#include "tooldeck/commands/cleanup/overkill_polyline_segments.h"

#include "qvad/ge/angle.h"
#include "qvad/ge/bulge.h"
#include "qvad/ge/ocs.h"

#include <cmath>
#include <numbers>

namespace qvtd::overkill {
namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

OdGePoint3d pointOnCircle(const OdGePoint3d& center, double radius, double angle,
                          const OdGeVector3d& normal) {
    return center + ocsToWcs(OdGeVector3d(radius * std::cos(angle), radius * std::sin(angle), 0.0), normal);
}

PolylineSegment straightSegment(const OdGePoint3d& start, const OdGePoint3d& end) {
    PolylineSegment segment;
    segment.start = start;
    segment.end = end;
    segment.middle = start + (end - start) * 0.5;
    return segment;
}

PolylineSegment segmentBetween(const PolylineRecord& polyline, const PolylineVertex& from,
                               const PolylineVertex& to, double e) {
    if (polyline.kind == PolylineKind::ThreeD) return straightSegment(from.point, to.point);
    if (from.bulge == 0.0) return straightSegment(from.point, to.point);
    // Bulges turn in the plane of the polyline's normal, so the arc is found in that plane.
    const OdGePoint3d a = wcsToOcs(from.point, polyline.normal);
    const OdGePoint3d b = wcsToOcs(to.point, polyline.normal);
    const auto arc = arcFromBulge(a.convert2d(), b.convert2d(), from.bulge, OdGeTol(e));
    if (!arc) return straightSegment(from.point, to.point);

    PolylineSegment segment;
    segment.isArc = true;
    segment.start = from.point;
    segment.end = to.point;
    segment.normal = polyline.normal.normal();
    segment.center = ocsToWcs(OdGePoint3d(arc->center, a.z), polyline.normal);
    segment.radius = arc->radius;
    const double sweep = arc->sweep();
    segment.spanStart = normalizeAngle(sweep > 0.0 ? arc->startAngle : arc->endAngle);
    segment.span = std::abs(sweep);
    segment.middle = pointOnCircle(segment.center, segment.radius, segment.spanStart + segment.span / 2.0,
                                   polyline.normal);
    return segment;
}

} // namespace

SplitPolyline splitPolyline(const PolylineRecord& polyline, double e) {
    const OdGeTol tol(e);
    SplitPolyline split;
    for (const PolylineVertex& vertex : polyline.vertices) {
        if (!split.vertices.empty() && split.vertices.back().point.isEqualTo(vertex.point, tol)) {
            // The segment that leaves the dropped vertex now leaves the one kept in its place.
            PolylineVertex& kept = split.vertices.back();
            kept.bulge = vertex.bulge;
            kept.startWidth = vertex.startWidth;
            kept.endWidth = vertex.endWidth;
            split.verticesRemoved = true;
            continue;
        }
        split.vertices.push_back(vertex);
    }
    // A closing segment of zero length: the last vertex coincides with the first.
    if (polyline.closed && split.vertices.size() > 1 &&
        split.vertices.back().point.isEqualTo(split.vertices.front().point, tol)) {
        split.vertices.pop_back();
        split.verticesRemoved = true;
    }
    split.segments = segmentsThrough(polyline, split.vertices, e);
    return split;
}

std::vector<PolylineSegment> polylineSegments(const PolylineRecord& polyline, double e) {
    return segmentsThrough(polyline, polyline.vertices, e);
}

std::vector<PolylineSegment> segmentsThrough(const PolylineRecord& polyline,
                                             const std::vector<PolylineVertex>& vertices, double e) {
    std::vector<PolylineSegment> segments;
    const std::size_t count = vertices.size();
    if (count < 2) return segments;
    const std::size_t segmentCount = polyline.closed ? count : count - 1;
    segments.reserve(segmentCount);
    for (std::size_t i = 0; i < segmentCount; ++i)
        segments.push_back(
            segmentBetween(polyline, polyline.vertices[i], polyline.vertices[(i + 1) % count], e));
    return segments;
}

bool pointsOnStraightSegment(const PolylineSegment& reference, const OdGePoint3d& a, const OdGePoint3d& b,
                             double e) {
    const OdGeVector3d along = reference.end - reference.start;
    const double length = along.length();
    if (!(length > 0.0)) return false;
    const OdGeVector3d direction = along / length;
    for (const OdGePoint3d* point : {&a, &b}) {
        const OdGeVector3d offset = *point - reference.start;
        const double t = offset.dotProduct(direction);
        if (t < -e || t > length + e) return false;
        if ((offset - direction * t).length() > e) return false;
    }
    return true;
}

bool arcOnArcSegment(const PolylineSegment& reference, const OdGePoint3d& center, double radius,
                     const OdGePoint3d& start, const OdGePoint3d& middle, const OdGePoint3d& end, double e) {
    const OdGeTol tol(e);
    if (!reference.isArc || !reference.center.isEqualTo(center, tol)) return false;
    if (!(std::abs(reference.radius - radius) < e)) return false;

    // Angles of the three points from the segment's start, in its own plane; the other arc's own plane
    // may face the other way, so its points, not its angles, are what count.
    const double slack = e / reference.radius;
    auto relativeAngle = [&](const OdGePoint3d& point) {
        const OdGeVector3d local = wcsToOcs(point - reference.center, reference.normal);
        double angle = normalizeAngle(std::atan2(local.y, local.x) - reference.spanStart);
        if (angle > kTwoPi - slack) angle -= kTwoPi;
        return angle;
    };
    const double a = relativeAngle(start);
    const double m = relativeAngle(middle);
    const double b = relativeAngle(end);
    const double limit = reference.span + slack;
    if (a > limit || m > limit || b > limit) return false;
    // All three inside the span, yet the arc may still run the long way round through the gap: then its
    // middle is not between its ends.
    const double low = std::min(a, b);
    const double high = std::max(a, b);
    return m >= low - slack && m <= high + slack;
}

bool segmentCovers(const PolylineSegment& reference, const PolylineSegment& other, double e) {
    if (reference.isArc != other.isArc) return false;
    if (!other.isArc)
        return !reference.isArc && pointsOnStraightSegment(reference, other.start, other.end, e);
    return arcOnArcSegment(reference, other.center, other.radius, other.start, other.middle, other.end, e);
}

bool arcPoints(const ArcRecord& arc, ArcPoints& points) {
    const double span = arcIncludedAngle(arc.startAngle, arc.endAngle);
    if (!(span > 0.0) || !(arc.radius > 0.0)) return false;
    points.start = pointOnCircle(arc.center, arc.radius, arc.startAngle, arc.normal);
    points.middle = pointOnCircle(arc.center, arc.radius, arc.startAngle + span / 2.0, arc.normal);
    points.end = pointOnCircle(arc.center, arc.radius, arc.endAngle, arc.normal);
    return true;
}

} // namespace qvtd::overkill
