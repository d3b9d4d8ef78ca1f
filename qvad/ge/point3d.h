#pragma once

#include "qvad/ge/point2d.h"
#include "qvad/ge/tol.h"
#include "qvad/ge/vector3d.h"

class OdGeMatrix3d;

class OdGePoint3d {
public:
    static const OdGePoint3d kOrigin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr OdGePoint3d() = default;
    constexpr OdGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    // A point of a plane's 2D coordinates lifted to the given height.
    constexpr OdGePoint3d(const OdGePoint2d& p, double zz) : x(p.x), y(p.y), z(zz) {}

    constexpr OdGePoint3d& set(double xx, double yy, double zz) {
        x = xx;
        y = yy;
        z = zz;
        return *this;
    }

    constexpr OdGePoint3d operator+(const OdGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr OdGePoint3d operator-(const OdGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr OdGeVector3d operator-(const OdGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    constexpr OdGePoint3d& operator+=(const OdGeVector3d& v) { return *this = *this + v; }
    constexpr OdGePoint3d& operator-=(const OdGeVector3d& v) { return *this = *this - v; }

    // Equality within the default tolerance, as drafters expect of geometry.
    bool operator==(const OdGePoint3d& p) const { return isEqualTo(p); }

    constexpr OdGeVector3d asVector() const { return {x, y, z}; }
    constexpr OdGePoint2d convert2d() const { return {x, y}; }

    double distanceTo(const OdGePoint3d& p) const { return (*this - p).length(); }
    bool isEqualTo(const OdGePoint3d& p, const OdGeTol& tol = kGeDefaultTol) const {
        return distanceTo(p) <= tol.equalPoint();
    }

    // Turns the point counter-clockwise about the axis through center (right-hand rule).
    OdGePoint3d& rotateBy(double angle, const OdGeVector3d& axis, const OdGePoint3d& center = kOrigin);
    OdGePoint3d& transformBy(const OdGeMatrix3d& matrix);
};
