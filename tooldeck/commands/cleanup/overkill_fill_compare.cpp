// Hatches and images: a fill is its boundary and how it is filled; a picture is its definition, its
// placement and its clipping. Seed points and the pattern's expanded line table follow from these
// and are not compared.

#include "qvad/db/entities/OdDbHatch.h"
#include "qvad/db/entities/OdDbRasterImage.h"
#include "tooldeck/commands/cleanup/overkill_class_rules.h"

namespace qvtd::overkill::rules {
namespace {

using compare::KeyHasher;
using compare::Within;

bool sameVector2d(const OdGeVector2d& a, const OdGeVector2d& b, const Within& w) {
    return (a - b).length() <= w.e;
}

bool sameEdge(const HatchEdge& a, const HatchEdge& b, const Within& w) {
    if (a.type != b.type) return false;
    switch (a.type) {
    case HatchEdge::kLine:
        return w.point(a.start, b.start) && w.point(a.end, b.end);
    case HatchEdge::kCircArc:
        return a.counterClockwise == b.counterClockwise && w.point(a.center, b.center) &&
               w.scalar(a.radius, b.radius) && w.range(a.startAngle, a.endAngle, b.startAngle, b.endAngle);
    case HatchEdge::kEllipArc:
        return a.counterClockwise == b.counterClockwise && w.point(a.center, b.center) &&
               sameVector2d(a.majorAxis, b.majorAxis, w) && w.scalar(a.minorRatio, b.minorRatio) &&
               w.range(a.startAngle, a.endAngle, b.startAngle, b.endAngle);
    case HatchEdge::kSpline:
        return a.degree == b.degree && a.rational == b.rational && a.periodic == b.periodic &&
               w.scalars(a.knots, b.knots) && w.scalars(a.weights, b.weights) &&
               w.points(a.controlPoints, b.controlPoints) && w.points(a.fitPoints, b.fitPoints);
    }
    return false;
}

// Loops in the order stored; two hatches whose loops are listed in another order stay apart.
bool sameLoop(const HatchLoop& a, const HatchLoop& b, const Within& w) {
    if (a.flags != b.flags || a.closed != b.closed || !w.points(a.vertices, b.vertices) ||
        !w.scalars(a.bulges, b.bulges) || a.edges.size() != b.edges.size())
        return false;
    for (std::size_t i = 0; i < a.edges.size(); ++i)
        if (!sameEdge(a.edges[i], b.edges[i], w)) return false;
    return true;
}

// The first point of the boundary, whichever form the first loop takes.
const OdGePoint2d* firstBoundaryPoint(const std::vector<HatchLoop>& loops) {
    if (loops.empty()) return nullptr;
    const HatchLoop& loop = loops.front();
    if (loop.isPolyline()) return loop.vertices.empty() ? nullptr : &loop.vertices.front();
    if (loop.edges.empty()) return nullptr;
    const HatchEdge& edge = loop.edges.front();
    switch (edge.type) {
    case HatchEdge::kLine:
        return &edge.start;
    case HatchEdge::kCircArc:
    case HatchEdge::kEllipArc:
        return &edge.center;
    case HatchEdge::kSpline:
        return edge.controlPoints.empty() ? nullptr : &edge.controlPoints.front();
    }
    return nullptr;
}

} // namespace

bool sameHatch(const OdDbHatch& a, const OdDbHatch& b, const Within& w) {
    if (a.isSolidFill() != b.isSolidFill() || a.isGradient() != b.isGradient() ||
        a.patternType() != b.patternType() || a.hatchStyle() != b.hatchStyle() ||
        a.patternDouble() != b.patternDouble() || !compare::sameName(a.patternName(), b.patternName()))
        return false;
    // A solid fill has no pattern to scale or turn.
    if (!a.isSolidFill() &&
        (!w.scalar(a.patternScale(), b.patternScale()) || !w.angle(a.patternAngle(), b.patternAngle())))
        return false;
    if (!w.scalar(a.elevation(), b.elevation()) || !w.codirectional(a.normal(), b.normal())) return false;
    const std::vector<HatchLoop> loopsA = a.loops();
    const std::vector<HatchLoop> loopsB = b.loops();
    if (loopsA.size() != loopsB.size()) return false;
    for (std::size_t i = 0; i < loopsA.size(); ++i)
        if (!sameLoop(loopsA[i], loopsB[i], w)) return false;
    return true;
}

ObjectSignature hatchSignature(const OdDbHatch& hatch) {
    KeyHasher key;
    key.add((hatch.isSolidFill() ? 1 : 0) | (hatch.isGradient() ? 2 : 0) | (hatch.patternDouble() ? 4 : 0))
        .add(hatch.patternType())
        .add(hatch.hatchStyle())
        .addName(hatch.patternName());
    const std::vector<HatchLoop> loops = hatch.loops();
    key.add(static_cast<long long>(loops.size()));
    for (const HatchLoop& loop : loops) {
        key.add(loop.flags).add(loop.closed ? 1 : 0).add(static_cast<long long>(loop.vertices.size()));
        key.add(static_cast<long long>(loop.edges.size()));
        for (const HatchEdge& edge : loop.edges) key.add(static_cast<long long>(edge.type));
    }
    ObjectSignature s;
    s.key = key.value();
    // The boundary's first point and the elevation; the loop structure in the key makes it the same
    // point of every hatch with that key.
    const OdGePoint2d* first = firstBoundaryPoint(loops);
    s.anchor = {first ? first->x : 0.0, first ? first->y : 0.0, hatch.elevation()};
    s.anchorCount = 3;
    return s;
}

bool sameImage(const OdDbRasterImage& a, const OdDbRasterImage& b, const Within& w) {
    if (a.imageDefHandle() != b.imageDefHandle() || a.displayOptions() != b.displayOptions() ||
        a.isClipped() != b.isClipped() || a.brightness() != b.brightness() || a.contrast() != b.contrast() ||
        a.fade() != b.fade() || a.clipBoundaryType() != b.clipBoundaryType())
        return false;
    return w.point(a.insertionPoint(), b.insertionPoint()) && w.vector(a.uVector(), b.uVector()) &&
           w.vector(a.vVector(), b.vVector()) && w.point(a.imageSize(), b.imageSize()) &&
           w.points(a.clipBoundary(), b.clipBoundary());
}

ObjectSignature imageSignature(const OdDbRasterImage& image) {
    ObjectSignature s;
    s.key = KeyHasher()
                .add(static_cast<long long>(image.imageDefHandle()))
                .add(image.displayOptions())
                .add(image.isClipped() ? 1 : 0)
                .add(image.brightness())
                .add(image.contrast())
                .add(image.fade())
                .add(static_cast<long long>(image.clipBoundaryType()))
                .value();
    const OdGePoint3d p = image.insertionPoint();
    s.anchor = {p.x, p.y, p.z};
    s.anchorCount = 3;
    return s;
}

} // namespace qvtd::overkill::rules
