#include "qvad/db/entities/OdDbPolyFaceMesh.h"

std::vector<OdDbPolyFaceMeshVertex*> OdDbPolyFaceMesh::meshVertices() const {
    std::vector<OdDbPolyFaceMeshVertex*> out;
    for (OdDbEntity* e : subEntities())
        if (auto* v = dynamic_cast<OdDbPolyFaceMeshVertex*>(e)) out.push_back(v);
    return out;
}

std::vector<OdDbFaceRecord*> OdDbPolyFaceMesh::faces() const {
    std::vector<OdDbFaceRecord*> out;
    for (OdDbEntity* e : subEntities())
        if (auto* f = dynamic_cast<OdDbFaceRecord*>(e)) out.push_back(f);
    return out;
}

OdDbPolygonMesh::PolyMeshType OdDbPolygonMesh::polyMeshType() const {
    if (!(polylineFlags() & 4)) return kSimpleMesh;
    switch (getInt(75, 0, part())) {
    case 5:
        return kQuadSurfaceMesh;
    case 8:
        return kBezierSurfaceMesh;
    default:
        return kCubicSurfaceMesh;
    }
}

OdDbPolygonMeshVertex* OdDbPolygonMesh::vertexAt(int m, int n) const {
    const int rows = mSize(), columns = nSize();
    if (m < 0 || n < 0 || m >= rows || n >= columns) return nullptr;
    std::vector<OdDbVertex*> all = vertices();
    std::size_t index =
        static_cast<std::size_t>(m) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(n);
    return index < all.size() ? dynamic_cast<OdDbPolygonMeshVertex*>(all[index]) : nullptr;
}
