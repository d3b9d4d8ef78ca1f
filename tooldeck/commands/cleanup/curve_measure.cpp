#include "tooldeck/commands/cleanup/curve_measure.h"

#include <cmath>
#include <cstring>
#include <numbers>

namespace qvtd::quantity {

namespace {

double distance(PlanePoint a, PlanePoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

// The area between an arc and its chord; positive when the arc bulges to the left of a->b.
double bulgeSegmentArea(PlanePoint a, PlanePoint b, double bulge) {
    if (bulge == 0.0) return 0.0;
    double chord = distance(a, b);
    double angle = 4.0 * std::atan(bulge); // signed included angle
    double radius = chord / (2.0 * std::sin(std::fabs(angle) / 2.0));
    double segment = radius * radius * (std::fabs(angle) - std::sin(std::fabs(angle))) / 2.0;
    return angle > 0 ? segment : -segment;
}

// Twice the signed shoelace area of the chord polygon.
double signedPolygonArea(const std::vector<PlanePoint>& corners) {
    double twice = 0.0;
    for (size_t i = 0; i < corners.size(); ++i) {
        const PlanePoint& a = corners[i];
        const PlanePoint& b = corners[(i + 1) % corners.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2.0;
}

PlanePoint pointOf(const qv_resbuf* item) {
    return {item->resval.rpoint[0], item->resval.rpoint[1]};
}

struct ListWalk {
    std::vector<const qv_resbuf*> items;
    explicit ListWalk(const qv_resbuf* list) {
        for (const qv_resbuf* item = list; item; item = item->rbnext) items.push_back(item);
    }
    const qv_resbuf* first(short code) const {
        for (const qv_resbuf* item : items)
            if (item->restype == code) return item;
        return nullptr;
    }
    double real(short code, double fallback) const {
        const qv_resbuf* item = first(code);
        return item ? item->resval.rreal : fallback;
    }
    int integer(short code) const {
        const qv_resbuf* item = first(code);
        if (!item) return 0;
        return code >= 90 && code <= 99 ? item->resval.rlong : item->resval.rint;
    }
    std::vector<PlanePoint> points(short code) const {
        std::vector<PlanePoint> found;
        for (const qv_resbuf* item : items)
            if (item->restype == code) found.push_back(pointOf(item));
        return found;
    }
};

std::optional<CurveMeasure> measureLwPolyline(const ListWalk& walk) {
    std::vector<BulgeVertex> vertices;
    for (const qv_resbuf* item : walk.items) {
        if (item->restype == 10)
            vertices.push_back({pointOf(item), 0.0});
        else if (item->restype == 42 && !vertices.empty())
            vertices.back().bulge = item->resval.rreal;
    }
    if (vertices.empty()) return std::nullopt;
    CurveMeasure measure;
    measure.closed = (walk.integer(70) & 1) != 0;
    measure.length = polylineLength(vertices, measure.closed);
    if (measure.closed) measure.area = polylineArea(vertices);
    return measure;
}

std::optional<CurveMeasure> measureEllipse(const ListWalk& walk) {
    const qv_resbuf* axis = walk.first(11);
    if (!axis) return std::nullopt;
    double major = std::sqrt(axis->resval.rpoint[0] * axis->resval.rpoint[0] +
                             axis->resval.rpoint[1] * axis->resval.rpoint[1] +
                             axis->resval.rpoint[2] * axis->resval.rpoint[2]);
    double minor = major * walk.real(40, 1.0);
    double start = walk.real(41, 0.0);
    double end = walk.real(42, 2.0 * std::numbers::pi);
    while (end <= start) end += 2.0 * std::numbers::pi;
    CurveMeasure measure;
    measure.closed = std::fabs(end - start - 2.0 * std::numbers::pi) < 1e-9;
    measure.length =
        measure.closed ? ellipsePerimeter(major, minor) : ellipseArcLength(major, minor, start, end);
    if (measure.closed) measure.area = std::numbers::pi * major * minor;
    return measure;
}

std::optional<CurveMeasure> measureSpline(const ListWalk& walk) {
    std::vector<PlanePoint> points = walk.points(11);
    if (points.size() < 2) points = walk.points(10);
    if (points.size() < 2) return std::nullopt;
    CurveMeasure measure;
    measure.closed = (walk.integer(70) & 1) != 0;
    measure.length = polygonPerimeter(points, measure.closed);
    if (measure.closed) measure.area = polygonArea(points);
    return measure;
}

// Twice the signed area a boundary edge sweeps about the origin (Green's theorem); summed over a closed
// loop it gives twice the loop's signed area.
double lineEdgeSweep(PlanePoint a, PlanePoint b) {
    return a.x * b.y - b.x * a.y;
}

double arcEdgeSweep(PlanePoint centre, double radius, double from, double to) {
    return radius * centre.x * (std::sin(to) - std::sin(from)) -
           radius * centre.y * (std::cos(to) - std::cos(from)) + radius * radius * (to - from);
}

// One boundary loop of a hatch, read from items[at] (its group 92) on; at is left on the next item.
// Nothing when the loop holds an edge it cannot measure.
std::optional<double> hatchLoopArea(const std::vector<const qv_resbuf*>& items, size_t& at) {
    auto next = [&](short code) -> const qv_resbuf* {
        while (at < items.size() && items[at]->restype != code && items[at]->restype != 92) ++at;
        return at < items.size() && items[at]->restype == code ? items[at++] : nullptr;
    };
    const qv_resbuf* flags = items[at++];
    if (flags->resval.rlong & 2) {
        std::vector<BulgeVertex> vertices;
        while (at < items.size() && items[at]->restype != 92 && items[at]->restype != 97 &&
               items[at]->restype != 75) {
            if (items[at]->restype == 10)
                vertices.push_back({pointOf(items[at]), 0.0});
            else if (items[at]->restype == 42 && !vertices.empty())
                vertices.back().bulge = items[at]->resval.rreal;
            ++at;
        }
        return vertices.size() < 2 ? std::nullopt : std::optional<double>(polylineArea(vertices));
    }
    const qv_resbuf* edgeCount = next(93);
    if (!edgeCount) return std::nullopt;
    double twice = 0.0;
    for (int edge = 0; edge < edgeCount->resval.rlong; ++edge) {
        const qv_resbuf* kind = next(72);
        if (!kind) return std::nullopt;
        if (kind->resval.rint == 1) {
            const qv_resbuf* from = next(10);
            const qv_resbuf* to = next(11);
            if (!from || !to) return std::nullopt;
            twice += lineEdgeSweep(pointOf(from), pointOf(to));
        } else if (kind->resval.rint == 2) {
            const qv_resbuf* centre = next(10);
            const qv_resbuf* radius = next(40);
            const qv_resbuf* start = next(50);
            const qv_resbuf* end = next(51);
            const qv_resbuf* counterclockwise = next(73);
            if (!centre || !radius || !start || !end || !counterclockwise) return std::nullopt;
            double from = start->resval.rreal;
            double to = end->resval.rreal;
            if (counterclockwise->resval.rint) {
                while (to <= from) to += 2.0 * std::numbers::pi;
            } else {
                // A clockwise arc keeps its angles mirrored.
                from = -from;
                to = -to;
                while (to >= from) to -= 2.0 * std::numbers::pi;
            }
            twice += arcEdgeSweep(pointOf(centre), radius->resval.rreal, from, to);
        } else {
            return std::nullopt;
        }
    }
    return std::fabs(twice) / 2.0;
}

// Outer loops (flag 1) less the islands inside them; when no loop is marked outer, the loops are
// taken as separate pieces.
std::optional<CurveMeasure> measureHatch(const ListWalk& walk) {
    const std::vector<const qv_resbuf*>& items = walk.items;
    size_t at = 0;
    while (at < items.size() && items[at]->restype != 91) ++at;
    if (at == items.size()) return std::nullopt;
    long loops = items[at++]->resval.rlong;
    double outer = 0.0;
    double islands = 0.0;
    bool anyOuter = false;
    for (long loop = 0; loop < loops; ++loop) {
        while (at < items.size() && items[at]->restype != 92) ++at;
        if (at == items.size()) return std::nullopt;
        bool isOuter = (items[at]->resval.rlong & 1) != 0;
        std::optional<double> area = hatchLoopArea(items, at);
        if (!area) return std::nullopt;
        (isOuter ? outer : islands) += *area;
        anyOuter = anyOuter || isOuter;
    }
    CurveMeasure measure;
    measure.closed = true;
    measure.area = anyOuter ? outer - islands : islands;
    return measure;
}

} // namespace

double polygonArea(const std::vector<PlanePoint>& corners) {
    return std::fabs(signedPolygonArea(corners));
}

double polygonPerimeter(const std::vector<PlanePoint>& corners, bool closed) {
    double total = 0.0;
    for (size_t i = 1; i < corners.size(); ++i) total += distance(corners[i - 1], corners[i]);
    if (closed && corners.size() > 2) total += distance(corners.back(), corners.front());
    return total;
}

double bulgeSegmentLength(PlanePoint a, PlanePoint b, double bulge) {
    double chord = distance(a, b);
    if (bulge == 0.0 || chord == 0.0) return chord;
    double angle = std::fabs(4.0 * std::atan(bulge));
    double radius = chord / (2.0 * std::sin(angle / 2.0));
    return radius * angle;
}

double polylineLength(const std::vector<BulgeVertex>& vertices, bool closed) {
    double total = 0.0;
    size_t segments = closed ? vertices.size() : (vertices.empty() ? 0 : vertices.size() - 1);
    for (size_t i = 0; i < segments; ++i)
        total +=
            bulgeSegmentLength(vertices[i].at, vertices[(i + 1) % vertices.size()].at, vertices[i].bulge);
    return total;
}

double polylineArea(const std::vector<BulgeVertex>& vertices) {
    std::vector<PlanePoint> corners;
    for (const BulgeVertex& vertex : vertices) corners.push_back(vertex.at);
    double area = signedPolygonArea(corners);
    for (size_t i = 0; i < vertices.size(); ++i)
        area += bulgeSegmentArea(vertices[i].at, vertices[(i + 1) % vertices.size()].at, vertices[i].bulge);
    return std::fabs(area);
}

double ellipsePerimeter(double majorRadius, double minorRadius) {
    return ellipseArcLength(majorRadius, minorRadius, 0.0, 2.0 * std::numbers::pi);
}

double ellipseArcLength(double majorRadius, double minorRadius, double startParameter, double endParameter) {
    // Simpson's rule on the speed along the parameter; smooth, so a few thousand steps are plenty.
    constexpr int kSteps = 4096;
    auto speed = [&](double t) { return std::hypot(majorRadius * std::sin(t), minorRadius * std::cos(t)); };
    double step = (endParameter - startParameter) / kSteps;
    double sum = speed(startParameter) + speed(endParameter);
    for (int i = 1; i < kSteps; ++i) sum += speed(startParameter + i * step) * (i % 2 ? 4.0 : 2.0);
    return sum * step / 3.0;
}

std::optional<CurveMeasure> measureEntityData(const qv_resbuf* list) {
    ListWalk walk(list);
    const qv_resbuf* type = walk.first(0);
    if (!type || !type->resval.rstring) return std::nullopt;
    const char* name = type->resval.rstring;
    CurveMeasure measure;
    if (std::strcmp(name, "LINE") == 0) {
        const qv_resbuf* from = walk.first(10);
        const qv_resbuf* to = walk.first(11);
        if (!from || !to) return std::nullopt;
        double d[3];
        for (int i = 0; i < 3; ++i) d[i] = to->resval.rpoint[i] - from->resval.rpoint[i];
        measure.length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        return measure;
    }
    if (std::strcmp(name, "CIRCLE") == 0) {
        double radius = walk.real(40, 0.0);
        measure.closed = true;
        measure.length = 2.0 * std::numbers::pi * radius;
        measure.area = std::numbers::pi * radius * radius;
        return measure;
    }
    if (std::strcmp(name, "ARC") == 0) {
        double radius = walk.real(40, 0.0);
        double sweep = walk.real(51, 0.0) - walk.real(50, 0.0);
        // Angles in entity data lists are radians.
        while (sweep <= 0.0) sweep += 2.0 * std::numbers::pi;
        measure.length = radius * sweep;
        return measure;
    }
    if (std::strcmp(name, "LWPOLYLINE") == 0) return measureLwPolyline(walk);
    if (std::strcmp(name, "ELLIPSE") == 0) return measureEllipse(walk);
    if (std::strcmp(name, "SPLINE") == 0) return measureSpline(walk);
    if (std::strcmp(name, "HATCH") == 0) return measureHatch(walk);
    return std::nullopt;
}

} // namespace qvtd::quantity
