#include "tooldeck/commands/cleanup/overkill_polyline_segments.h"

#include "qvad/ge/angle.h"
#include "qvad/ge/bulge.h"
#include "qvad/ge/ocs.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace qvtd::overkill {
namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

// The plane of a polyline's normal, worked out once per polyline rather than once per point; the
// sums below are the ones the plane conversions make, so the results do not change by a bit.
struct Plane {
    explicit Plane(const OdGeVector3d& normal) : axes(ocsAxes(normal)), unitNormal(normal.normal()) {}

    OdGeVector3d toPlane(const OdGeVector3d& v) const {
        return {v.dotProduct(axes.xAxis), v.dotProduct(axes.yAxis), v.dotProduct(axes.zAxis)};
    }
    OdGePoint3d toPlane(const OdGePoint3d& point) const {
        return OdGePoint3d::kOrigin + toPlane(point.asVector());
    }
    OdGeVector3d toWorld(const OdGeVector3d& v) const {
        return axes.xAxis * v.x + axes.yAxis * v.y + axes.zAxis * v.z;
    }
    OdGePoint3d toWorld(const OdGePoint3d& point) const {
        return OdGePoint3d::kOrigin + toWorld(point.asVector());
    }

    OcsAxes axes;
    OdGeVector3d unitNormal;
};

OdGePoint3d pointOnCircle(const OdGePoint3d& center, double radius, double angle, const Plane& plane) {
    return center + plane.toWorld(OdGeVector3d(radius * std::cos(angle), radius * std::sin(angle), 0.0));
}

PolylineSegment straightSegment(const OdGePoint3d& start, const OdGePoint3d& end) {
    PolylineSegment segment;
    segment.start = start;
    segment.end = end;
    segment.middle = start + (end - start) * 0.5;
    return segment;
}

PolylineSegment segmentBetween(const PolylineRecord& polyline, const Plane* plane, const PolylineVertex& from,
                               const PolylineVertex& to, double e) {
    if (polyline.kind == PolylineKind::ThreeD) return straightSegment(from.point, to.point);
    if (from.bulge == 0.0) return straightSegment(from.point, to.point);
    // Bulges turn in the plane of the polyline's normal, so the arc is found in that plane.
    const OdGePoint3d a = plane->toPlane(from.point);
    const OdGePoint3d b = plane->toPlane(to.point);
    const auto arc = arcFromBulge(a.convert2d(), b.convert2d(), from.bulge, OdGeTol(e));
    if (!arc) return straightSegment(from.point, to.point);

    PolylineSegment segment;
    segment.isArc = true;
    segment.start = from.point;
    segment.end = to.point;
    segment.normal = plane->unitNormal;
    segment.center = plane->toWorld(OdGePoint3d(arc->center, a.z));
    segment.radius = arc->radius;
    const double sweep = arc->sweep();
    segment.spanStart = normalizeAngle(sweep > 0.0 ? arc->startAngle : arc->endAngle);
    segment.span = std::abs(sweep);
    segment.middle =
        pointOnCircle(segment.center, segment.radius, segment.spanStart + segment.span / 2.0, *plane);
    return segment;
}

} // namespace

SplitPolyline splitPolyline(const PolylineRecord& polyline, double e) {
    const OdGeTol tol(e);
    SplitPolyline split;
    split.vertices.reserve(polyline.vertices.size());
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
    // Only arc segments need the plane, and most polylines have none.
    std::optional<Plane> plane;
    for (std::size_t i = 0; i < segmentCount; ++i) {
        const PolylineVertex& from = vertices[i];
        if (!plane && polyline.kind != PolylineKind::ThreeD && from.bulge != 0.0)
            plane.emplace(polyline.normal);
        segments.push_back(
            segmentBetween(polyline, plane ? &*plane : nullptr, from, vertices[(i + 1) % count], e));
    }
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
    const Plane plane(reference.normal);
    auto relativeAngle = [&](const OdGePoint3d& point) {
        const OdGeVector3d local = plane.toPlane(point - reference.center);
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
    const Plane plane(arc.normal);
    points.start = pointOnCircle(arc.center, arc.radius, arc.startAngle, plane);
    points.middle = pointOnCircle(arc.center, arc.radius, arc.startAngle + span / 2.0, plane);
    points.end = pointOnCircle(arc.center, arc.radius, arc.endAngle, plane);
    return true;
}

} // namespace qvtd::overkill
