#pragma once

#include "qvad/db/entities/OdDbVertex.h"

#include <vector>

// POLYLINE: a head entity followed by its VERTEX entities and a SEQEND. The flags decide the kind:
// 2D polyline, 3D polyline, polygon mesh or polyface mesh, each its own class below.
class OdDbHeavyPolyline : public OdDbComplexEntity {
public:
    OdDbHeavyPolyline() : OdDbComplexEntity("POLYLINE") {}

    int polylineFlags() const { return static_cast<int>(getInt(70, 0, part())); }
    // The VERTEX entities in order, without the SEQEND.
    std::vector<OdDbVertex*> vertices() const;

protected:
    virtual std::string_view dataSubclass() const = 0;
    std::string_view part() const { return qvad::db::dataPart(*this, dataSubclass()); }
    void setFlag(int bit, bool on);
};

class OdDb2dPolyline : public OdDbHeavyPolyline {
public:
    static constexpr std::string_view kSubclass = "AcDb2dPolyline";
    enum PolyType { k2dSimplePoly, k2dFitCurvePoly, k2dQuadSplinePoly, k2dCubicSplinePoly };

    PolyType polyType() const;
    bool isClosed() const { return (polylineFlags() & 1) != 0; }
    void setClosed(bool closed) { setFlag(1, closed); }
    // The plane's height: the z of the head's point, in object coordinates.
    double elevation() const { return getPoint(10, {}, part()).z; }
    void setElevation(double z);
    double thickness() const { return getDouble(39, 0.0, part()); }
    double defaultStartWidth() const { return getDouble(40, 0.0, part()); }
    double defaultEndWidth() const { return getDouble(41, 0.0, part()); }
    // A vertex of this polyline in world coordinates (vertices store x and y in the object plane).
    OdGePoint3d vertexPositionWcs(const OdDbVertex& vertex) const;

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

class OdDb3dPolyline : public OdDbHeavyPolyline {
public:
    static constexpr std::string_view kSubclass = "AcDb3dPolyline";
    enum PolyType { k3dSimplePoly, k3dQuadSplinePoly, k3dCubicSplinePoly };

    PolyType polyType() const;
    bool isClosed() const { return (polylineFlags() & 1) != 0; }
    void setClosed(bool closed) { setFlag(1, closed); }

protected:
    std::string_view dataSubclass() const override { return kSubclass; }
};

// The class a POLYLINE with these tags belongs to.
std::unique_ptr<OdDbHeavyPolyline> makeHeavyPolyline(std::span<const Tag> tags);
