#pragma once

#include "qvad/db/entities/OdDbHeavyPolyline.h"

// A POLYLINE whose vertices are first the mesh's points, then face records indexing them.
class OdDbPolyFaceMesh : public OdDbHeavyPolyline {
public:
    static constexpr std::string_view kSubclass = "AcDbPolyFaceMesh";

    int numVertices() const { return static_cast<int>(getInt(71, 0, part())); }
    int numFaces() const { return static_cast<int>(getInt(72, 0, part())); }
    std::vector<OdDbPolyFaceMeshVertex*> meshVertices() const;
    std::vector<OdDbFaceRecord*> faces() const;

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

// A POLYLINE whose vertices form an M by N grid, row by row.
class OdDbPolygonMesh : public OdDbHeavyPolyline {
public:
    static constexpr std::string_view kSubclass = "AcDbPolygonMesh";
    enum PolyMeshType {
        kSimpleMesh = 0,
        kQuadSurfaceMesh = 5,
        kCubicSurfaceMesh = 6,
        kBezierSurfaceMesh = 8
    };

    int mSize() const { return static_cast<int>(getInt(71, 0, part())); }
    int nSize() const { return static_cast<int>(getInt(72, 0, part())); }
    bool isMClosed() const { return (polylineFlags() & 1) != 0; }
    bool isNClosed() const { return (polylineFlags() & 32) != 0; }
    void setMClosed(bool closed) { setFlag(1, closed); }
    void setNClosed(bool closed) { setFlag(32, closed); }
    int mSurfaceDensity() const { return static_cast<int>(getInt(73, 0, part())); }
    int nSurfaceDensity() const { return static_cast<int>(getInt(74, 0, part())); }
    PolyMeshType polyMeshType() const;
    // The vertex in row m, column n; null when the mesh has no such vertex.
    OdDbPolygonMeshVertex* vertexAt(int m, int n) const;

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};
