#pragma once

#include "qvad/db/entities/OdDbCurve.h"

// ARC: a circle part running counter-clockwise (about its normal) from the start to the end angle.
// Centre in object coordinates as stored; angles in radians (the file stores degrees).
class OdDbArc : public OdDbCurve {
public:
    static constexpr std::string_view kCircleSubclass = "AcDbCircle";
    static constexpr std::string_view kSubclass = "AcDbArc";
    OdDbArc() : OdDbCurve("ARC") {}

    OdGePoint3d center() const { return getPoint(10, {}, circlePart()); }
    void setCenter(const OdGePoint3d& p) { setPoint(10, p, circlePart()); }
    double radius() const { return getDouble(40, 0.0, circlePart()); }
    void setRadius(double r) { setDouble(40, r, circlePart()); }
    double thickness() const { return getDouble(39, 0.0, circlePart()); }
    void setThickness(double t) { setDouble(39, t, circlePart()); }
    double startAngle() const { return qvad::db::degreesToRadians(getDouble(50, 0.0, arcPart())); }
    void setStartAngle(double a) { setDouble(50, qvad::db::radiansToDegrees(a), arcPart()); }
    double endAngle() const { return qvad::db::degreesToRadians(getDouble(51, 0.0, arcPart())); }
    void setEndAngle(double a) { setDouble(51, qvad::db::radiansToDegrees(a), arcPart()); }

    OdGePoint3d centerWcs() const;
    OdGePoint3d startPointWcs() const;
    OdGePoint3d endPointWcs() const;
    // Turn from start to end, in [0, 2pi).
    double includedAngle() const;
    double length() const { return radius() * includedAngle(); }

private:
    OdGePoint3d pointWcsAt(double angle) const;
    std::string_view circlePart() const { return qvad::db::dataPart(*this, kCircleSubclass); }
    std::string_view arcPart() const { return qvad::db::dataPart(*this, kSubclass); }
};
