#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

// SOLID and TRACE: filled quadrilaterals in the object coordinates of the normal. Corners run
// 0, 1, 3, 2 around the outline (the file's order draws a bow tie otherwise); a triangle repeats
// its third corner as the fourth.
class OdDbQuadrilateral : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbTrace";

    // corner 0..3; throws std::out_of_range for others.
    OdGePoint3d getPointAt(int corner) const;
    void setPointAt(int corner, const OdGePoint3d& p);
    OdGePoint3d getPointAtWcs(int corner) const;
    double thickness() const { return getDouble(39, 0.0, part()); }
    void setThickness(double t) { setDouble(39, t, part()); }

protected:
    using OdDbEntity::OdDbEntity;
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};

class OdDbSolid : public OdDbQuadrilateral {
public:
    OdDbSolid() : OdDbQuadrilateral("SOLID") {}
};

class OdDbTrace : public OdDbQuadrilateral {
public:
    OdDbTrace() : OdDbQuadrilateral("TRACE") {}
};

// 3DFACE: three or four corners in world coordinates; bits of group 70 hide edges.
class OdDbFace : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbFace";
    OdDbFace() : OdDbEntity("3DFACE") {}

    // corner 0..3; throws std::out_of_range for others.
    OdGePoint3d getVertexAt(int corner) const;
    void setVertexAt(int corner, const OdGePoint3d& p);
    // The edge that starts at the corner.
    bool isEdgeVisibleAt(int corner) const;
    void makeEdgeInvisibleAt(int corner) { setEdgeHidden(corner, true); }
    void makeEdgeVisibleAt(int corner) { setEdgeHidden(corner, false); }

private:
    void setEdgeHidden(int corner, bool hidden);
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
