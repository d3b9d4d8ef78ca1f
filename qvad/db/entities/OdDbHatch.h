#pragma once

#include "qvad/db/OdDbEntity.h"
#include "qvad/db/entities/tag_access.h"
#include "qvad/ge/point2d.h"

#include <vector>

// One edge of a hatch boundary, in the hatch's object coordinates. Angles are radians.
struct HatchEdge {
    enum Type { kLine = 1, kCircArc = 2, kEllipArc = 3, kSpline = 4 };
    Type type = kLine;
    OdGePoint2d start, end;  // line
    OdGePoint2d center;      // arc, ellipse
    double radius = 0.0;     // arc
    OdGeVector2d majorAxis;  // ellipse, relative to the centre
    double minorRatio = 1.0; // ellipse
    double startAngle = 0.0, endAngle = 0.0;
    bool counterClockwise = true;
    int degree = 0; // spline
    bool rational = false, periodic = false;
    std::vector<double> knots, weights;
    std::vector<OdGePoint2d> controlPoints, fitPoints;
};

struct HatchLoop {
    enum Flags { kExternal = 1, kPolyline = 2, kDerived = 4, kTextbox = 8, kOutermost = 16 };
    int flags = 0;
    bool isPolyline() const { return (flags & kPolyline) != 0; }
    // Polyline loops: vertices with the bulge of the segment leaving each.
    std::vector<OdGePoint2d> vertices;
    std::vector<double> bulges;
    bool closed = true;
    std::vector<HatchEdge> edges;
    std::vector<qvad::Handle> sourceObjects;
};

// HATCH: pattern or solid fill inside boundary loops lying in the plane of the normal at the
// elevation. The loops are parsed for reading; changing them is not offered.
class OdDbHatch : public OdDbEntity {
public:
    static constexpr std::string_view kSubclass = "AcDbHatch";
    enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };
    enum HatchPatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };

    OdDbHatch() : OdDbEntity("HATCH") {}

    std::string_view patternName() const { return getString(2, {}, part()); }
    bool isSolidFill() const { return getInt(70, 0, part()) != 0; }
    bool associative() const { return getInt(71, 0, part()) != 0; }
    bool isGradient() const { return getInt(450, 0, part()) != 0; }
    double elevation() const { return getPoint(10, {}, part()).z; }
    int hatchStyle() const { return static_cast<int>(getInt(75, 0, part())); }
    int patternType() const { return static_cast<int>(getInt(76, 1, part())); }
    double patternAngle() const { return qvad::db::degreesToRadians(getDouble(52, 0.0, part())); }
    double patternScale() const { return getDouble(41, 1.0, part()); }
    bool patternDouble() const { return getInt(77, 0, part()) != 0; }

    int numLoops() const { return static_cast<int>(getInt(91, 0, part())); }
    // The loops as the tags describe them; parsing stops quietly at damaged data.
    std::vector<HatchLoop> loops() const;

private:
    std::string_view part() const { return qvad::db::dataPart(*this, kSubclass); }
};
