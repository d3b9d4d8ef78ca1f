#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"

// POINT: a position in world coordinates; the x-axis angle orients the point's display symbol.
class OdDbPoint : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbPoint";
    OdDbPoint() : OdDbEntity("POINT") {}

    OdGePoint3d position() const { return getPoint(10, {}, part()); }
    void setPosition(const OdGePoint3d& p) { setPoint(10, p, part()); }
    double thickness() const { return getDouble(39, 0.0, part()); }
    void setThickness(double t) { setDouble(39, t, part()); }
    // Radians; the file stores degrees.
    double ecsRotation() const { return qvad::db::degreesToRadians(getDouble(50, 0.0, part())); }
    void setEcsRotation(double a) { setDouble(50, qvad::db::radiansToDegrees(a), part()); }

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
