#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

// VERTEX: one point of a POLYLINE. Its flags tell which kind of polyline it belongs to and so which
// class it gets. 2D vertices are in the object coordinates of their polyline, all others in world
// coordinates.
class OdDbVertex : public OdDbEntity {
public:
    OdDbVertex() : OdDbEntity("VERTEX") {}

    OdGePoint3d position() const { return getPoint(10, {}, part()); }
    void setPosition(const OdGePoint3d& p) { setPoint(10, p, part()); }
    int vertexFlags() const { return static_cast<int>(getInt(70, 0, part())); }

protected:
    // The marker of the vertex kind, after AcDbVertex, that holds the vertex's own data.
    virtual std::string_view dataSubclass() const = 0;
    std::string_view part() const { return qvad::db::dataPart(*this, dataSubclass()); }
};

class OdDb2dVertex : public OdDbVertex {
public:
    static constexpr std::string_view kSubclass = "AcDb2dVertex";
    enum Kind { kVertex, kCurveFitVertex, kSplineFitVertex, kSplineControlVertex };

    Kind vertexType() const;
    double bulge() const { return getDouble(42, 0.0, part()); }
    void setBulge(double b) { setDouble(42, b, part()); }
    double startWidth() const { return getDouble(40, 0.0, part()); }
    void setStartWidth(double w) { setDouble(40, w, part()); }
    double endWidth() const { return getDouble(41, 0.0, part()); }
    void setEndWidth(double w) { setDouble(41, w, part()); }
    bool isTangentUsed() const { return (vertexFlags() & 2) != 0; }
    // Radians; the file stores degrees.
    double tangent() const { return qvad::db::degreesToRadians(getDouble(50, 0.0, part())); }

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

class OdDb3dPolylineVertex : public OdDbVertex {
public:
    static constexpr std::string_view kSubclass = "AcDb3dPolylineVertex";
    bool isSplineControlVertex() const { return (vertexFlags() & 16) != 0; }

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

class OdDbPolygonMeshVertex : public OdDbVertex {
public:
    static constexpr std::string_view kSubclass = "AcDbPolygonMeshVertex";

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

class OdDbPolyFaceMeshVertex : public OdDbVertex {
public:
    static constexpr std::string_view kSubclass = "AcDbPolyFaceMeshVertex";

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

// A face of a polyface mesh: up to four 1-based indices into the mesh's vertices; a negative index
// hides the edge that starts at that corner, 0 leaves the corner unused.
class OdDbFaceRecord : public OdDbVertex {
public:
    static constexpr std::string_view kSubclass = "AcDbFaceRecord";

    // corner 0..3; throws std::out_of_range for others.
    int getVertexAt(int corner) const;
    void setVertexAt(int corner, int vertexIndex);
    bool isEdgeVisibleAt(int corner) const { return getInt(71 + checked(corner), 0, part()) >= 0; }

protected:
    std::string_view dataSubclass() const override { return kSubclass; }

private:
    static int checked(int corner);
};

// The class a VERTEX with these tags belongs to.
std::unique_ptr<OdDbVertex> makeVertex(std::span<const Tag> tags);
