#include "qvad/db/entities/OdDbVertex.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

OdDb2dVertex::Kind OdDb2dVertex::vertexType() const {
    int f = vertexFlags();
    if (f & 16) return kSplineControlVertex;
    if (f & 8) return kSplineFitVertex;
    if (f & 1) return kCurveFitVertex;
    return kVertex;
}

int OdDbFaceRecord::checked(int corner) {
    if (corner < 0 || corner > 3)
        throw std::out_of_range("a face has corners 0 to 3, not " + std::to_string(corner));
    return corner;
}

int OdDbFaceRecord::getVertexAt(int corner) const {
    return std::abs(static_cast<int>(getInt(71 + checked(corner), 0, part())));
}

void OdDbFaceRecord::setVertexAt(int corner, int vertexIndex) {
    // Keeps the edge's visibility, which the sign carries.
    int code = 71 + checked(corner);
    bool hidden = getInt(code, 0, part()) < 0;
    setInt(code, hidden ? -std::abs(vertexIndex) : std::abs(vertexIndex), part());
}

std::unique_ptr<OdDbVertex> makeVertex(std::span<const Tag> tags) {
    const long long flags = qvad::db::firstInteger(tags, 70);
    if (flags & 128) {
        if (flags & 64) return std::make_unique<OdDbPolyFaceMeshVertex>();
        return std::make_unique<OdDbFaceRecord>();
    }
    if (flags & 64) return std::make_unique<OdDbPolygonMeshVertex>();
    if (flags & 32) return std::make_unique<OdDb3dPolylineVertex>();
    return std::make_unique<OdDb2dVertex>();
}
