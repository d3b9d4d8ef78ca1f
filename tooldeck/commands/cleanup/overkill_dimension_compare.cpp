// Dimensions: the points that define what is measured and where the dimension line runs, the text
// (override and position) and the style. The name of the anonymous block that holds the drawn
// geometry (group 2) is left out: every copy gets a block of its own, so two copies differ there by
// nature while drawing the same thing.

#include "qvad/db/entities/OdDbDimensionKinds.h"
#include "tooldeck/commands/cleanup/overkill_class_rules.h"

#include <typeinfo>
#include <vector>

namespace qvtd::overkill::rules {
namespace {

using compare::KeyHasher;
using compare::Within;

// Bit 32 only says the block is this dimension's own; 64 (ordinate along x) and 128 (text moved by
// the user) change what is drawn.
long long drawnFlags(const OdDbDimension& dimension) {
    return dimension.getInt(70, 0) & ~32LL;
}

template <class T> const T* exactly(const OdDbDimension& dimension) {
    return typeid(dimension) == typeid(T) ? static_cast<const T*>(&dimension) : nullptr;
}

// The kind's own defining points; the rotation and oblique angles of the kinds that have them; the
// leader length of the radial kinds.
struct KindData {
    std::vector<OdGePoint3d> points;
    std::vector<double> angles;
    std::vector<double> lengths;
};

KindData kindData(const OdDbDimension& dimension) {
    KindData data;
    if (const auto* d = exactly<OdDbRotatedDimension>(dimension)) {
        data.points = {d->xLine1Point(), d->xLine2Point(), d->dimLinePoint()};
        data.angles = {d->rotation(), d->oblique()};
    } else if (const auto* d = exactly<OdDbAlignedDimension>(dimension)) {
        data.points = {d->xLine1Point(), d->xLine2Point(), d->dimLinePoint()};
        data.angles = {d->oblique()};
    } else if (const auto* d = exactly<OdDb2LineAngularDimension>(dimension)) {
        data.points = {d->xLine1Start(), d->xLine1End(), d->xLine2Start(), d->xLine2End(), d->arcPoint()};
    } else if (const auto* d = exactly<OdDb3PointAngularDimension>(dimension)) {
        data.points = {d->xLine1Point(), d->xLine2Point(), d->centerPoint(), d->arcPoint()};
    } else if (const auto* d = exactly<OdDbDiametricDimension>(dimension)) {
        data.points = {d->chordPoint(), d->farChordPoint()};
        data.lengths = {d->leaderLength()};
    } else if (const auto* d = exactly<OdDbRadialDimension>(dimension)) {
        data.points = {d->center(), d->chordPoint()};
        data.lengths = {d->leaderLength()};
    } else if (const auto* d = exactly<OdDbOrdinateDimension>(dimension)) {
        data.points = {d->origin(), d->definingPoint(), d->leaderEndPoint()};
    }
    return data;
}

} // namespace

bool isDimensionKind(const OdDbEntity& entity) {
    const std::type_info& type = typeid(entity);
    return type == typeid(OdDbRotatedDimension) || type == typeid(OdDbAlignedDimension) ||
           type == typeid(OdDb2LineAngularDimension) || type == typeid(OdDb3PointAngularDimension) ||
           type == typeid(OdDbDiametricDimension) || type == typeid(OdDbRadialDimension) ||
           type == typeid(OdDbOrdinateDimension);
}

bool sameDimension(const OdDbDimension& a, const OdDbDimension& b, const Within& w) {
    if (drawnFlags(a) != drawnFlags(b) || a.textAttachment() != b.textAttachment() ||
        a.dimensionText() != b.dimensionText() || !compare::sameName(a.dimensionStyle(), b.dimensionStyle()))
        return false;
    const KindData kindA = kindData(a);
    const KindData kindB = kindData(b);
    if (!w.points(kindA.points, kindB.points) || !w.scalars(kindA.lengths, kindB.lengths) ||
        kindA.angles.size() != kindB.angles.size())
        return false;
    for (std::size_t i = 0; i < kindA.angles.size(); ++i)
        if (!w.angle(kindA.angles[i], kindB.angles[i])) return false;
    return w.point(a.textPosition(), b.textPosition()) && w.angle(a.textRotation(), b.textRotation()) &&
           w.angle(a.horizontalRotation(), b.horizontalRotation()) && w.codirectional(a.normal(), b.normal());
}

ObjectSignature dimensionSignature(const OdDbDimension& dimension) {
    ObjectSignature s;
    s.key = KeyHasher()
                .add(drawnFlags(dimension))
                .add(dimension.textAttachment())
                .add(dimension.dimensionText())
                .addName(dimension.dimensionStyle())
                .value();
    const KindData data = kindData(dimension);
    // The second defining point: chained and baseline dimensions share their first one, ordinate
    // dimensions their origin, radii of concentric circles their centre.
    if (!data.points.empty()) {
        const OdGePoint3d& p = data.points.size() > 1 ? data.points[1] : data.points.front();
        s.anchor = {p.x, p.y, p.z};
        s.anchorCount = 3;
    }
    return s;
}

} // namespace qvtd::overkill::rules
