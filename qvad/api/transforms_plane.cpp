// Plane geometry on points: distance, direction, polar offset and the crossing of two lines.

#include "qvad/api/host_session.h"
#include "qvad/ge/angle.h"
#include "qvad/ge/point3d.h"

#include <algorithm>
#include <cmath>

namespace {

OdGePoint3d pointOf(const qv_point p) {
    return {p[0], p[1], p[2]};
}

bool isFinite(const qv_point p) {
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

// Parameters a little outside [0, 1] still count as on the segment: an end point computed from a
// crossing carries rounding.
constexpr double kOnSegmentSlack = 1e-10;

} // namespace

extern "C" {

// Three-dimensional distance; 0 for a missing point.
QV_API qv_real qvutDistance(const qv_point from, const qv_point to) {
    if (!from || !to) return 0.0;
    return pointOf(from).distanceTo(pointOf(to));
}

// Direction of the line's projection on the XY plane, counter-clockwise from the x axis, in [0, 2pi).
QV_API qv_real qvutAngle(const qv_point from, const qv_point to) {
    if (!from || !to) return 0.0;
    return angleOf(OdGeVector2d(to[0] - from[0], to[1] - from[1]));
}

QV_API int qvutPolar(const qv_point base, qv_real angle, qv_real distance, qv_point result) {
    using namespace qvad::api;
    if (!base || !result || !isFinite(base) || !std::isfinite(angle) || !std::isfinite(distance))
        return refuse(HostError::BadArgument);
    result[0] = base[0] + distance * std::cos(angle);
    result[1] = base[1] + distance * std::sin(angle);
    result[2] = base[2];
    return QV_NORM;
}

// Lines through two pairs of points meet only when they are neither parallel nor skew; in 2D (equal
// z everywhere) skew cannot happen.
QV_API int qvdbInters(const qv_point from1, const qv_point to1, const qv_point from2, const qv_point to2,
                      int onSegments, qv_point result) {
    using namespace qvad::api;
    if (!from1 || !to1 || !from2 || !to2 || !result) return refuse(HostError::BadArgument);
    if (!isFinite(from1) || !isFinite(to1) || !isFinite(from2) || !isFinite(to2))
        return refuse(HostError::BadArgument);
    OdGePoint3d a = pointOf(from1), c = pointOf(from2);
    OdGeVector3d d1 = pointOf(to1) - a, d2 = pointOf(to2) - c, between = c - a;
    double size = std::max({d1.length(), d2.length(), between.length(), 1.0});
    OdGeVector3d normal = d1.crossProduct(d2);
    double normalSquared = normal.lengthSqrd();
    bool degenerate = d1.isZeroLength() || d2.isZeroLength();
    bool parallel = normal.length() <= 1e-12 * d1.length() * d2.length();
    if (degenerate || parallel) return QV_ERROR;
    bool skew = std::fabs(between.dotProduct(normal)) / std::sqrt(normalSquared) > 1e-9 * size;
    if (skew) return QV_ERROR;
    double t = between.crossProduct(d2).dotProduct(normal) / normalSquared;
    double u = between.crossProduct(d1).dotProduct(normal) / normalSquared;
    bool onBoth = t >= -kOnSegmentSlack && t <= 1.0 + kOnSegmentSlack && u >= -kOnSegmentSlack &&
                  u <= 1.0 + kOnSegmentSlack;
    if (onSegments && !onBoth) return QV_ERROR;
    OdGePoint3d crossing = a + d1 * t;
    result[0] = crossing.x;
    result[1] = crossing.y;
    result[2] = crossing.z;
    return QV_NORM;
}

} // extern "C"
