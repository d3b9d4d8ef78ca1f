#pragma once

#include "qvad/db/entities/OdDbCurve.h"

#include <vector>

// SPLINE: a NURBS curve in world coordinates, given by control points with knots and weights, by
// fit points, or both.
class OdDbSpline : public OdDbCurve {
public:
    static constexpr std::string_view kSubclass = "AcDbSpline";
    OdDbSpline() : OdDbCurve("SPLINE") {}

    int degree() const { return static_cast<int>(getInt(71, 3, part())); }
    bool isClosed() const override { return (flags() & 1) != 0; }
    bool isPeriodic() const { return (flags() & 2) != 0; }
    bool isRational() const { return (flags() & 4) != 0; }
    bool isPlanar() const { return (flags() & 8) != 0; }
    bool isLinear() const { return (flags() & 16) != 0; }

    std::vector<double> knots() const { return qvad::db::repeatedReals(*this, 40, part()); }
    // Empty when every weight is 1.
    std::vector<double> weights() const { return qvad::db::repeatedReals(*this, 41, part()); }
    std::vector<OdGePoint3d> controlPoints() const { return qvad::db::repeatedPoints(*this, 10, part()); }
    std::vector<OdGePoint3d> fitPoints() const { return qvad::db::repeatedPoints(*this, 11, part()); }
    int numControlPoints() const { return static_cast<int>(controlPoints().size()); }
    int numFitPoints() const { return static_cast<int>(fitPoints().size()); }
    // Throws std::out_of_range for an index past the points.
    void setControlPointAt(int index, const OdGePoint3d& p) { setNthPoint(10, index, p); }
    void setFitPointAt(int index, const OdGePoint3d& p) { setNthPoint(11, index, p); }

    bool hasStartTangent() const { return findTag(12, part()) != nullptr; }
    bool hasEndTangent() const { return findTag(13, part()) != nullptr; }
    OdGeVector3d startTangent() const { return getPoint(12, {}, part()).asVector(); }
    OdGeVector3d endTangent() const { return getPoint(13, {}, part()).asVector(); }
    double knotTolerance() const { return getDouble(42, 1e-10, part()); }
    double controlPointTolerance() const { return getDouble(43, 1e-10, part()); }
    double fitTolerance() const { return getDouble(44, 1e-10, part()); }

private:
    int flags() const { return static_cast<int>(getInt(70, 0, part())); }
    void setNthPoint(int code, int index, const OdGePoint3d& p);
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
