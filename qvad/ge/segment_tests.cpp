#include "qvad/ge/segment_tests.h"

#include <algorithm>
#include <cmath>

namespace qvad::ge {

namespace {

double cross(const OdGePoint2d& o, const OdGePoint2d& a, const OdGePoint2d& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

// Orientation with a tolerance scaled to the operands, so collinear drawing coordinates count as such.
int side(const OdGePoint2d& o, const OdGePoint2d& a, const OdGePoint2d& b) {
    const double c = cross(o, a, b);
    const double scale = std::max(
        {std::abs(a.x - o.x), std::abs(a.y - o.y), std::abs(b.x - o.x), std::abs(b.y - o.y), 1e-300});
    if (std::abs(c) <= 1e-12 * scale * scale) return 0;
    return c > 0 ? 1 : -1;
}

bool onSegment(const OdGePoint2d& p, const OdGePoint2d& a, const OdGePoint2d& b) {
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

} // namespace

Window2d Window2d::fromCorners(const OdGePoint2d& a, const OdGePoint2d& b) {
    return {{std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
}

bool Window2d::contains(const OdGePoint2d& p) const {
    return min.x <= p.x && p.x <= max.x && min.y <= p.y && p.y <= max.y;
}

double distanceToSegment(const OdGePoint2d& p, const OdGePoint2d& a, const OdGePoint2d& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double lengthSquared = dx * dx + dy * dy;
    double t = 0.0;
    if (lengthSquared > 0.0) t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / lengthSquared, 0.0, 1.0);
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

bool segmentsIntersect(const OdGePoint2d& a, const OdGePoint2d& b, const OdGePoint2d& c,
                       const OdGePoint2d& d) {
    const int d1 = side(c, d, a), d2 = side(c, d, b), d3 = side(a, b, c), d4 = side(a, b, d);
    if (d1 * d2 < 0 && d3 * d4 < 0) return true;
    return (d1 == 0 && onSegment(a, c, d)) || (d2 == 0 && onSegment(b, c, d)) ||
           (d3 == 0 && onSegment(c, a, b)) || (d4 == 0 && onSegment(d, a, b));
}

bool segmentTouchesWindow(const OdGePoint2d& a, const OdGePoint2d& b, const Window2d& w) {
    if (w.contains(a) || w.contains(b)) return true;
    const OdGePoint2d corners[4] = {w.min, {w.max.x, w.min.y}, w.max, {w.min.x, w.max.y}};
    for (int i = 0; i < 4; ++i)
        if (segmentsIntersect(a, b, corners[i], corners[(i + 1) % 4])) return true;
    return false;
}

bool pointInPolygon(const OdGePoint2d& p, std::span<const OdGePoint2d> polygon) {
    bool inside = false;
    const std::size_t n = polygon.size();
    for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
        const OdGePoint2d& a = polygon[i];
        const OdGePoint2d& b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

bool segmentCrossesPolyline(const OdGePoint2d& a, const OdGePoint2d& b, std::span<const OdGePoint2d> polyline,
                            bool closed) {
    const std::size_t n = polyline.size();
    if (n == 1) return distanceToSegment(polyline[0], a, b) == 0.0;
    for (std::size_t i = 0; i + 1 < n; ++i)
        if (segmentsIntersect(a, b, polyline[i], polyline[i + 1])) return true;
    return closed && n > 2 && segmentsIntersect(a, b, polyline[n - 1], polyline[0]);
}

bool isSimplePolygon(std::span<const OdGePoint2d> polygon) {
    const std::size_t n = polygon.size();
    if (n < 3) return false;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 2; j < n; ++j) {
            if (i == 0 && j == n - 1) continue; // neighbours through the closing edge
            if (segmentsIntersect(polygon[i], polygon[(i + 1) % n], polygon[j], polygon[(j + 1) % n]))
                return false;
        }
    return true;
}

} // namespace qvad::ge
