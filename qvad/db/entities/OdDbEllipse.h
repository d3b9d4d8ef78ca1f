#pragma once

#include "qvad/db/entities/OdDbCurve.h"

// ELLIPSE, all in world coordinates: the major axis runs from the centre to its end point, the minor
// axis is the normal crossed with it, scaled by the radius ratio. Parameters are radians; a full
// ellipse runs from 0 to 2pi.
class OdDbEllipse : public OdDbCurve {
public:
    static constexpr std::string_view kSubclass = "AcDbEllipse";
    OdDbEllipse() : OdDbCurve("ELLIPSE") {}

    OdGePoint3d center() const { return getPoint(10, {}, part()); }
    void setCenter(const OdGePoint3d& p) { setPoint(10, p, part()); }
    OdGeVector3d majorAxis() const { return getPoint(11, {}, part()).asVector(); }
    void setMajorAxis(const OdGeVector3d& v) { setPoint(11, OdGePoint3d(v.x, v.y, v.z), part()); }
    double radiusRatio() const { return getDouble(40, 1.0, part()); }
    void setRadiusRatio(double r) { setDouble(40, r, part()); }
    double startParam() const { return getDouble(41, 0.0, part()); }
    void setStartParam(double t) { setDouble(41, t, part()); }
    double endParam() const;
    void setEndParam(double t) { setDouble(42, t, part()); }

    OdGeVector3d minorAxis() const;
    OdGePoint3d pointAtParam(double t) const;
    bool isClosed() const override;

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
