#pragma once

#include "qvad/db/entities/OdDbCurve.h"

// LINE: both end points in world coordinates.
class OdDbLine : public OdDbCurve {
public:
    static constexpr std::string_view kSubclass = "AcDbLine";
    OdDbLine() : OdDbCurve("LINE") {}

    OdGePoint3d startPoint() const { return getPoint(10, {}, part()); }
    void setStartPoint(const OdGePoint3d& p) { setPoint(10, p, part()); }
    OdGePoint3d endPoint() const { return getPoint(11, {}, part()); }
    void setEndPoint(const OdGePoint3d& p) { setPoint(11, p, part()); }
    double thickness() const { return getDouble(39, 0.0, part()); }
    void setThickness(double t) { setDouble(39, t, part()); }
    double length() const { return startPoint().distanceTo(endPoint()); }

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
