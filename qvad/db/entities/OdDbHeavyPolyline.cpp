#include "qvad/db/entities/OdDbHeavyPolyline.h"

#include "qvad/db/entities/OdDbPolyFaceMesh.h"
#include "qvad/ge/ocs.h"

std::vector<OdDbVertex*> OdDbHeavyPolyline::vertices() const {
    std::vector<OdDbVertex*> out;
    for (OdDbEntity* e : subEntities())
        if (auto* v = dynamic_cast<OdDbVertex*>(e)) out.push_back(v);
    return out;
}

void OdDbHeavyPolyline::setFlag(int bit, bool on) {
    int f = polylineFlags();
    int wanted = on ? (f | bit) : (f & ~bit);
    if (wanted != f) setInt(70, wanted, part());
}

OdDb2dPolyline::PolyType OdDb2dPolyline::polyType() const {
    int f = polylineFlags();
    if (f & 4) return getInt(75, 0, part()) == 5 ? k2dQuadSplinePoly : k2dCubicSplinePoly;
    if (f & 2) return k2dFitCurvePoly;
    return k2dSimplePoly;
}

void OdDb2dPolyline::setElevation(double z) {
    // Only the z of the head's point means anything; its x and y stay as they are.
    qvad::db::setPointCoordinate(*this, 10, 2, z, dataSubclass());
}

OdGePoint3d OdDb2dPolyline::vertexPositionWcs(const OdDbVertex& vertex) const {
    OdGePoint3d p = vertex.position();
    return ocsToWcs(OdGePoint3d(p.x, p.y, elevation()), normal());
}

OdDb3dPolyline::PolyType OdDb3dPolyline::polyType() const {
    if (!(polylineFlags() & 4)) return k3dSimplePoly;
    return getInt(75, 0, part()) == 5 ? k3dQuadSplinePoly : k3dCubicSplinePoly;
}

std::unique_ptr<OdDbHeavyPolyline> makeHeavyPolyline(std::span<const Tag> tags) {
    const long long flags = qvad::db::firstInteger(tags, 70);
    if (flags & 64) return std::make_unique<OdDbPolyFaceMesh>();
    if (flags & 16) return std::make_unique<OdDbPolygonMesh>();
    if (flags & 8) return std::make_unique<OdDb3dPolyline>();
    return std::make_unique<OdDb2dPolyline>();
}
