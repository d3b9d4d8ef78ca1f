#pragma once

#include "qvad/db/entities/OdDbCurve.h"

// CIRCLE: centre in the object coordinates of its normal, as the file stores it.
class OdDbCircle : public OdDbCurve {
public:
    static constexpr std::string_view kSubclass = "AcDbCircle";
    OdDbCircle() : OdDbCurve("CIRCLE") {}

    bool isClosed() const override { return true; }
    OdGePoint3d center() const { return getPoint(10, {}, part()); }
    void setCenter(const OdGePoint3d& p) { setPoint(10, p, part()); }
    double radius() const { return getDouble(40, 0.0, part()); }
    void setRadius(double r) { setDouble(40, r, part()); }
    double thickness() const { return getDouble(39, 0.0, part()); }
    void setThickness(double t) { setDouble(39, t, part()); }

    OdGePoint3d centerWcs() const;
    void setCenterWcs(const OdGePoint3d& p);

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
